// Words of the far end that our texts repeat, and those that no strict reader takes.
#include "Call.h"

#include "SDPJudge.h"

using namespace call;

namespace {

/// The answer of a side without SRTP, which has to be one that the judge takes.
std::string Answer(const std::string& offer) {
    SDPNegotiator side = Side(Local());
    const auto answer = side.Answer(offer);
    if (!answer.isTaken) {
        return std::string(answer.reason);
    }
    for (const JudgeViolation& violation : CheckAnswer(offer, answer.text)) {
        ADD_FAILURE() << violation.rule->id << " " << violation.particulars;
    }
    return answer.text.substr(answer.text.find("t="));
}

constexpr std::string_view kAudio = "m=audio 5004 RTP/AVP 0\n"
                                    "a=rtpmap:0 PCMU/8000\n"
                                    "a=sendrecv\n"
                                    "a=rtcp:5005 IN IP4 192.0.2.1\n";

TEST(Repeat, AMediumThatIsNoWordRefusesTheOffer) {
    constexpr std::string_view reason = "an m= line has no medium that an answer could name";
    const std::string audio = "m=audio 30000 RTP/AVP 0\n";
    EXPECT_EQ(Answer(Far(audio + "m=vi;deo 30002 RTP/AVP 31\n")), reason);
    EXPECT_EQ(Answer(Far(audio + std::string("m=a\0b 30002 RTP/AVP 31\n", 24))), reason);
    EXPECT_EQ(Answer(Far(audio + "m=\n")), reason);
}

TEST(Repeat, ATransportThatIsNoWordCostsItsSection) {
    EXPECT_TEXT(Answer(Far("m=audio 30000 RTP/AVP 0\n"
                           "m=video 30002 RTP//AVP 31\n"
                           "m=video 30004 RTP/AVP/ 31\n"
                           "m=video 30006 /RTP/AVP 31\n"
                           "m=text 30008 RTP/AVP;x 98\n" +
                           std::string("m=image 30010 udp\0tl t38\n", 25) + "m=video 30012\nm=video\n")),
                Text("t=0 0\n" + std::string(kAudio) +
                     "m=video 0 RTP/AVP 31\n"
                     "m=video 0 RTP/AVP 31\n"
                     "m=video 0 RTP/AVP 31\n"
                     "m=text 0 RTP/AVP 98\n"
                     "m=image 0 RTP/AVP 0\n"
                     "m=video 0 RTP/AVP 0\n"
                     "m=video 0 RTP/AVP 0\n"));
    EXPECT_EQ(Answer(Far("m=audio 30000 RTP/;AVP 0\n")),
              "this side serves no section of this medium and transport");
}

TEST(Repeat, ARejectedSectionListsEachFormatOnce) {
    EXPECT_TEXT(Answer(Far("m=audio 30000 RTP/AVP 0\n"
                           "m=text 30002 RTP/AVP 98 98 200 098 x 99\n"
                           "m=message 30004 TCP/MSRP b a b \"c\" 5\n"
                           "m=video 30006 RTP/AVP 300\n"
                           "m=image 30008 udptl\n")),
                Text("t=0 0\n" + std::string(kAudio) +
                     "m=text 0 RTP/AVP 98 99\n"
                     "m=message 0 TCP/MSRP b a 5\n"
                     "m=video 0 RTP/AVP 0\n"
                     "m=image 0 udptl 0\n"));
}

TEST(Repeat, TimesAreTwoNumbersOrZero) {
    const std::string head = "v=0\r\no=far 7 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\n";
    const std::string tail = "m=audio 30000 RTP/AVP 0\r\n";
    const std::string audio = Text(kAudio);
    EXPECT_TEXT(Answer(head + "t= 3724394400  3724398000 \r\nt=1 2\r\n" + tail),
                "t=3724394400 3724398000\r\nt=1 2\r\n" + audio);
    EXPECT_TEXT(Answer(head + "t=now later\r\nt=1 2 3\r\nt=5\r\n" + tail), "t=0 0\r\n" + audio);
    EXPECT_TEXT(Answer(head + tail), "t=0 0\r\n" + audio);
}

constexpr std::string_view kSlides = "m=video 30004 RTP/AVP 97\n"
                                     "a=rtpmap:97 H264/90000\n"
                                     "a=fmtp:97 packetization-mode=1\n"
                                     "a=content:slides\n";

/// The lines of an answer that begin with a keyword.
std::string LinesWith(std::string_view keyword, const std::string& text) {
    std::string lines;
    for (std::size_t at = 0; at < text.size(); at = text.find("\r\n", at) + 2) {
        if (text.compare(at, keyword.size(), keyword) == 0) {
            lines += text.substr(at, text.find("\r\n", at) + 2 - at);
        }
    }
    return lines;
}

std::string LabelsOf(const std::string& main, const std::string& slides) {
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    return LinesWith("a=label:", Answer(Far(video + main + std::string(kSlides) + slides)));
}

TEST(Repeat, LabelsAreWordsAndNoTwoAreOne) {
    EXPECT_TEXT(LabelsOf("", ""), "a=label:8\r\na=label:9\r\n");
    EXPECT_TEXT(LabelsOf("a=label:1\n", "a=label:two words\n"), "a=label:1\r\na=label:9\r\n");
    EXPECT_TEXT(LabelsOf("a=label:1\n", "a=label:1\n"), "a=label:1\r\na=label:9\r\n");
    EXPECT_TEXT(LabelsOf("a=label:9\n", ""), "a=label:9\r\na=label:8\r\n");
}

std::string FloorOf(const std::string& lines) {
    const std::string text = Answer(Far(std::string(kSlides) + "m=application 30006 UDP/BFCP *\n" + lines));
    return text.substr(text.find("m=application"));
}

TEST(Repeat, IdsOfFloorControlAreNumbers) {
    EXPECT_TEXT(FloorOf("a=floorctrl:s-only\na=confid:4294967295\na=userid:23\na=floorid:1 mstrm:10 11\n"),
                "m=application 5010 UDP/BFCP *\r\n"
                "a=floorctrl:c-only\r\n"
                "a=floorid:1 mstrm:10 11\r\n"
                "a=confid:4294967295\r\n"
                "a=userid:23\r\n");
    EXPECT_TEXT(FloorOf("a=floorctrl:s-only\na=confid:-4\na=userid:12345678901\na=floorid:7 mstrm\n"),
                "m=application 5010 UDP/BFCP *\r\n"
                "a=floorctrl:c-only\r\n"
                "a=floorid:7\r\n"
                "a=confid:15\r\n"
                "a=userid:15\r\n");
    EXPECT_TEXT(FloorOf("a=floorctrl:s-only\na=confid:4 6\na=userid:5\na=floorid:x mstrm:10\n"),
                "m=application 5010 UDP/BFCP *\r\n"
                "a=floorctrl:c-only\r\n"
                "a=floorid:2 mstrm:9\r\n"
                "a=confid:4\r\n"
                "a=userid:5\r\n");
}

TEST(Repeat, FormatsOfFloorControlAreTheFarEnds) {
    const std::string text = Answer(Far(std::string(kSlides) + "m=application 30006 UDP/BFCP 9 x\n"));
    EXPECT_TEXT(LinesWith("m=application", text), "m=application 5010 UDP/BFCP 9 x\r\n");
    EXPECT_TEXT(
        LinesWith("m=application", Answer(Far(std::string(kSlides) + "m=application 30006 UDP/BFCP (\n"))),
        "m=application 0 UDP/BFCP 0\r\n");
}

/// An attribute of the far end's and what the answer has of it.
struct Row {
    std::string written;
    std::string answered;
};

TEST(Repeat, MainVideoIsCalledAsTheFarEndCallsIt) {
    const Row rows[] = {
        {"", "a=content:main\r\n"},
        {"a=content:speaker,main\n", "a=content:main\r\n"},
        {"a=content:speaker,alt\n", "a=content:speaker\r\n"},
        {"a=content:(\n", "a=content:main\r\n"},
        {"a=content:slideshow\n", "a=content:slideshow\r\n"},
        {"a=content:alt,slides\n", "a=content:slides\r\n"},
    };
    for (const Row& row : rows) {
        const std::string answer =
            Answer(Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n" + row.written));
        EXPECT_TEXT(LinesWith("a=content:", answer), row.answered) << row.written;
    }
}

TEST(Repeat, AFloorNamesItsStreamsInWords) {
    const Row rows[] = {
        {"2", "2"},
        {"2 mstrm:9", "2 mstrm:9"},
        {"2 mstrm:9 10", "2 mstrm:9 10"},
        {"2 mstrm:9 1;0", "2"},
        {"2 mstrm:", "2"},
        {"2 :9", "2"},
        {"2 mstrm:\x7F", "2"},
        {"2  mstrm:9", "2"},
        {"12345678901", "2 mstrm:9"},
        {"two", "2 mstrm:9"},
        {"", "2 mstrm:9"},
    };
    for (const Row& row : rows) {
        const std::string answer =
            Answer(Far("m=video 30004 RTP/AVP 97\na=rtpmap:97 H264/90000\na=content:slides\n"
                       "m=application 30006 UDP/BFCP *\na=floorctrl:c-only\na=floorid:" +
                       row.written + "\n"));
        EXPECT_TEXT(LinesWith("a=floorid:", answer), "a=floorid:" + row.answered + "\r\n") << row.written;
    }
}

} // namespace
