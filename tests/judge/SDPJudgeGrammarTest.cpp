// The grammar of lines, each beside the nearest text that is none.
#include "Alone.h"

using namespace judged;

namespace {

/// An audio text whose first lines are others.
std::string Session(const std::string& origin, const std::string& afterTimes) {
    return "v=0\r\n" + origin + "\r\ns=-\r\nc=IN IP4 192.0.2.1\r\nt=0 0\r\n" + afterTimes +
           "m=audio 5004 RTP/AVP 0\r\n";
}

const std::string kMedia = "J06 line 1, other 0, section 0: The line is not medium, port, transport and "
                           "formats between single blanks.\n";
const std::string kOrigin = "o=- 1 1 IN IP4 192.0.2.1";

/// The faults of the "m=" line alone.
std::string MediaFaults(const std::string& media) {
    const std::string found = Faults(media + "\r\n");
    const std::size_t own = found.find("section 0");
    return own == std::string::npos ? "" : found.substr(found.rfind('\n', own) + 1);
}

} // namespace

TEST(JudgeGrammar, ALineIsASmallLetterAndAValue) {
    const std::string wrong =
        "J01 line 7, other 0, section 0: This line is not a small letter, '=' and a value.";
    const JudgedLine rows[] = {
        {"a=x", ""},    {"a=", wrong},    {"A=x", wrong}, {"{=x", wrong},
        {"1=x", wrong}, {"words", wrong}, {"", wrong},    {"=", wrong},
    };
    ExpectFaults(rows);
}

TEST(JudgeGrammar, LinesHaveAnOrder) {
    EXPECT_TEXT(Faults(Session(kOrigin, "r=604800 3600 0 90000\r\nt=1 2\r\nr=7d 1h 0\r\na=x\r\n")), "");
    EXPECT_TEXT(Faults(Session(kOrigin, "a=x\r\nr=604800 3600 0 90000\r\n")),
                "J02 line 7, other 0, section -1: A line r= has no place here.\n");
    EXPECT_TEXT(Faults(Session(kOrigin, "x=y\r\n")),
                "J02 line 6, other 0, section -1: A line x= has no place here.\n");
}

TEST(JudgeGrammar, AnOriginHasSixFields) {
    const std::string fields =
        "J03 line 2, other 0, section -1: The line has not six fields between single blanks.\n";
    const std::string number =
        "J03 line 2, other 0, section -1: The id or the version is no number of 63 bits.\n";
    EXPECT_TEXT(Faults(Session("o=a 18446744073709551609 9223372036854775807 IN IP4 192.0.2.1", "")), "");
    EXPECT_TEXT(Faults(Session("o=a 1 9223372036854775808 IN IP4 192.0.2.1", "")), number);
    EXPECT_TEXT(Faults(Session("o=a x 1 IN IP4 192.0.2.1", "")), number);
    EXPECT_TEXT(Faults(Session("o=a 99999999999999999999 1 IN IP4 192.0.2.1", "")), number);
    EXPECT_TEXT(Faults(Session("o= 1 1 IN IP4 192.0.2.1", "")), fields);
    EXPECT_TEXT(Faults(Session("o=a 1 1 IN IP4", "")), fields);
}

TEST(JudgeGrammar, ASectionHasOneLabel) {
    EXPECT_TEXT(Faults(AudioText("a=label:8\r\n")), "");
    EXPECT_TEXT(Faults(AudioText("a=label:8\r\na=label:9\r\na=label:8\r\n")),
                "J18 line 8, other 0, section 0: Line 7 has one too.\n");
}

TEST(JudgeGrammar, ABandwidthIsATypeAndANumber) {
    const std::string form =
        "J09 line 7, other 0, section 0: The line is not a type, ':' and a plain number.";
    const std::string zero =
        "J10 line 7, other 0, section 0: The budget is zero, and the media is neither declined nor inactive.";
    const JudgedLine rows[] = {
        {"b=AS:1", ""},     {"b=AS:0", zero}, {"b=TIAS:0", zero}, {"b=RS:0", ""},  {"b=AS", form},
        {"b=AS:1:2", form}, {"b=:1", form},   {"b=AS:-1", form},  {"b=AS:", form}, {"b=A S:1", form},
    };
    ExpectFaults(rows);
    EXPECT_TEXT(Faults(AudioText("b=AS:0\r\na=inactive\r\n")), "");
}

TEST(JudgeGrammar, AMediaLineHasFourWords) {
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP/AVP 0"), "");
    EXPECT_TEXT(MediaFaults("m=audio 0/2 RTP/AVP 0"), "");
    EXPECT_TEXT(MediaFaults("m=audio 0/2/3 RTP/AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0/x RTP/AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio x RTP/AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0  RTP/AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP/AVP"), kMedia);
    EXPECT_TEXT(MediaFaults("m=au:dio 0 RTP/AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0 udptl 0"), "");
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP//AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP/AVP/ 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP;AVP 0"), kMedia);
    EXPECT_TEXT(MediaFaults("m=audio 0 RTP/AVP 128"),
                "J07 line 1, other 0, section 0: Format '128' is no payload type.\n");
    EXPECT_TEXT(MediaFaults("m=text 0 TCP/MSRP 128 x"), "");
}

TEST(JudgeGrammar, ADirectionHasNoValue) {
    EXPECT_TEXT(Faults(AudioText("a=inactive:x\r\nb=AS:0\r\n")),
                "J02 line 8, other 0, section 0: A line b= has no place here.\n"
                "J10 line 8, other 0, section 0: The budget is zero, and the media is neither declined nor "
                "inactive.\n");
}
