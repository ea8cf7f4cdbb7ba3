// Two texts of one side, and what is not judged because a line says too little.
#include "Alone.h"

using namespace judged;

namespace {

std::string Text(const std::string& origin, const std::string& times = "t=0 0") {
    return "v=0\r\n" + origin + "\r\ns=-\r\nc=IN IP4 192.0.2.1\r\n" + times + "\r\nm=audio 0 RTP/AVP 0\r\n";
}

std::string Next(const std::string& previous, const std::string& next) {
    return Written(CheckNext(previous, next));
}

const std::string kOne = "o=- 1 1 IN IP4 192.0.2.1";
const std::string kTwo = "o=- 1 2 IN IP4 192.0.2.1";

} // namespace

TEST(Judge, TheVersionGrowsByOneWhenTheTextChangesAndOnlyThen) {
    EXPECT_TEXT(Next(Text(kOne), Text(kOne)), "");
    EXPECT_TEXT(Next(Text(kOne), Text(kTwo, "t=1 2")), "");
    EXPECT_TEXT(Next(Text(kOne), Text(kTwo)),
                "J51 line 2, other 2, section -1: The text is the same, the version went from 1 to 2.\n");
    EXPECT_TEXT(Next(Text(kOne), Text(kOne, "t=1 2")),
                "J51 line 2, other 2, section -1: The text changed, the version went from 1 to 1.\n");
    EXPECT_TEXT(Next(Text(kOne), Text("o=a 1 2 IN IP4 192.0.2.1")),
                "J50 line 2, other 2, section -1: Another field than the version changed.\n");
}

TEST(Judge, AnOriginThatIsNotWholeIsNotCompared) {
    const std::string fields =
        "J03 line 2, other 0, section -1: The line has not six fields between single blanks.\n";
    const std::string number =
        "J03 line 2, other 0, section -1: The id or the version is no number of 63 bits.\n";
    EXPECT_TEXT(Next(Text("o=- 1 7"), Text(kOne)), "");
    EXPECT_TEXT(Next(Text(kOne), Text("o=- 1 7")), fields);
    EXPECT_TEXT(Next(Text("o=- 1 x IN IP4 192.0.2.1"), Text(kOne)), "");
    EXPECT_TEXT(Next(Text(kOne), Text("o=- 1 x IN IP4 192.0.2.1")), number);
    EXPECT_TEXT(Next("s=-\r\n", Text(kOne)), "");
}

TEST(Judge, TimesOfTheOfferThatAreNoNumbersAreNotCompared) {
    const std::string answer = Text(kOne);
    EXPECT_TEXT(Written(CheckAnswer(Text(kTwo, "t=1 2"), answer)),
                "J39 line 5, other 5, section -1: The times differ from those offered.\n");
    for (const char* const times : {"t=1", "t=a 2", "t=1 b", "t=1 2 3"}) {
        EXPECT_TEXT(Written(CheckAnswer(Text(kTwo, times), answer)), "");
    }
}

TEST(Judge, ARunningStreamMayBecomeAnotherRegisteredMedium) {
    const std::string head = Text(kOne).substr(0, Text(kOne).find("m="));
    const std::string next = Text(kTwo).substr(0, Text(kTwo).find("m="));
    const std::string before = head + "m=audio 5004 RTP/AVP 97\r\na=rtpmap:97 G722/8000\r\n";
    EXPECT_TEXT(Next(before, next + "m=video 5004 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"), "");
    EXPECT_TEXT(Next(before, next + "m=image 5004 udptl t38\r\n"), "");
    EXPECT_TEXT(Next(before, next + "m=picture 5004 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"),
                "J53 line 6, other 6, section 0: The medium was 'audio' and is 'picture'.\n");
}

TEST(Judge, AFormatThatWasNotListedMayGetAnyMeaning) {
    const std::string head = Text(kOne).substr(0, Text(kOne).find("m="));
    const std::string next =
        Text(kTwo).substr(0, Text(kTwo).find("m=")) + "m=audio 5004 RTP/AVP 97\r\na=rtpmap:97 PCMU/8000\r\n";
    EXPECT_TEXT(Next(head + "m=audio 5004 RTP/AVP 0\r\na=rtpmap:97 G722/8000\r\n", next), "");
    EXPECT_TEXT(Next(head + "m=audio 5004 RTP/AVP 97\r\na=rtpmap:97 G722/8000\r\n", next),
                "J54 line 6, other 6, section 0: Format '97' was 'g722/8000' and is 'pcmu/8000'.\n");
    EXPECT_TEXT(Next(head + "m=audio 5004 RTP/AVP 97\r\na=rtpmap:97 pcmu/8000/1\r\n", next), "");
}
