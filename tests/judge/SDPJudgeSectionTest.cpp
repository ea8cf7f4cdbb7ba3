// One section that answers another.
#include "Alone.h"

using namespace judged;

TEST(JudgeSection, ATransportThatIsNoWordCanOnlyBeRejected) {
    EXPECT_TEXT(Answer("m=audio 5004 RTP//AVP 0\r\n", "m=audio 0 RTP/AVP 0\r\n"), "");
    EXPECT_TEXT(Answer("m=audio 5004 RTP//AVP 0\r\n", "m=audio 5004 RTP/AVP 0\r\n"),
                "J22 line 6, other 6, section 0: The transport is 'RTP/AVP', offered is 'RTP//AVP'.\n");
    EXPECT_TEXT(Answer("m=audio 5004 RTP/AVPF 0\r\n", "m=audio 0 RTP/AVP 0\r\n"),
                "J22 line 6, other 6, section 0: The transport is 'RTP/AVP', offered is 'RTP/AVPF'.\n");
}

TEST(JudgeSection, ASecureSectionHasItsKeyInOneLineOrByKeyManagement) {
    const std::string secure = "m=audio 5004 RTP/SAVP 0\r\n";
    const auto line = [](const std::string& tag, char key) {
        return "a=crypto:" + tag + " AES_CM_128_HMAC_SHA1_80 inline:" + std::string(40, key) + "\r\n";
    };
    EXPECT_TEXT(Answer(secure + line("1", 'k'), secure + line("1", 'm')), "");
    EXPECT_TEXT(Answer(secure + line("01", 'k'), secure + line("1", 'm')), "");
    EXPECT_TEXT(Answer(secure, secure + "a=key-mgmt:mikey AAAA\r\n"), "");
    EXPECT_TEXT(Answer(secure, secure), "J30 line 6, other 6, section 0: The section has no crypto line.\n");
    EXPECT_TEXT(Answer(secure + line("x", 'k'), secure + line("x", 'm')),
                "J13 line 7, other 0, section 0: Attribute 'crypto' is not written as in "
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:WVNf....\n"
                "J31 line 7, other 6, section 0: The tag was not offered in this section.\n");
}

TEST(JudgeSection, ValuesOfContentHaveNoLetterCase) {
    const std::string video = "m=video 5004 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";
    EXPECT_TEXT(Answer(video + "a=content:slIdes\r\n", video + "a=content:slides\r\n"), "");
    EXPECT_TEXT(Answer(video + "a=content:main\r\n", video + "a=content:slides\r\n"),
                "J36 line 8, other 8, section 0: The content is 'slides', offered is 'main'.\n");
}

TEST(JudgeSection, RolesOfFloorControl) {
    const std::string floor = "m=application 5004 UDP/BFCP *\r\n";
    const std::string server = "a=confid:1\r\na=userid:2\r\na=floorid:3\r\n";
    EXPECT_TEXT(Answer(floor, floor + server), "");
    EXPECT_TEXT(Answer(floor + "a=floorctrl:\r\n", floor + server), "");
    EXPECT_TEXT(Answer(floor + "a=floorctrl:s-only\r\n", floor + server),
                "J34 line 6, other 7, section 0: The role 's-only' answers none of those offered.\n");
    EXPECT_TEXT(Answer(floor, floor + "a=floorctrl:c-only\r\n"),
                "J34 line 7, other 6, section 0: The role 'c-only' answers none of those offered.\n");
    EXPECT_TEXT(
        Answer(floor + "a=floorctrl:s-only\r\n" + server, floor + "a=floorctrl:c-only\r\na=confid:1\r\n"),
        "");
    EXPECT_TEXT(Answer(floor + "a=floorctrl:s-only\r\na=confid:x\r\n",
                       floor + "a=floorctrl:c-only\r\na=confid:1\r\n"),
                "");
    EXPECT_TEXT(
        Answer(floor + "a=floorctrl:s-only\r\n" + server, floor + "a=floorctrl:c-only\r\na=confid:9\r\n"),
        "J35 line 8, other 8, section 0: This client changes a=confid.\n");
}

TEST(JudgeSection, TheRoleOfAConnectionAnswersTheOffered) {
    const std::string section = "m=audio 5004 RTP/AVP 0\r\n";
    EXPECT_TEXT(Answer(section + "a=setup:actpass\r\n", section + "a=setup:active\r\n"), "");
    EXPECT_TEXT(Answer(section + "a=setup:active\r\n", section + "a=setup:active\r\n"),
                "J38 line 7, other 7, section 0: The role is 'active', offered is 'active'.\n");
    EXPECT_TEXT(Answer(section + "a=setup:active\r\n", section), "");
    EXPECT_TEXT(Answer(section, section + "a=setup:active\r\n"), "");
    EXPECT_TEXT(Answer(section + "a=setup:other\r\n", section + "a=setup:active\r\n"), "");
}

TEST(JudgeSection, WordsThatDoNotPrintAreToldByTheirLength) {
    EXPECT_TEXT(
        Answer("m=audio 5004 RTP/AVP 0\r\n", "m=au\x7F 5004 RTP/AVP 0\r\n"),
        "J06 line 6, other 0, section 0: The line is not medium, port, transport and formats between single "
        "blanks.\nJ21 line 6, other 6, section 0: The medium is a word of 3 bytes, offered is 'audio'.\n");
    EXPECT_TEXT(Answer("m=audio 5004 RTP/AVP 0\r\n", "m=" + std::string(25, 'a') + " 5004 RTP/AVP 0\r\n"),
                "J21 line 6, other 6, section 0: The medium is a word of 25 bytes, offered is 'audio'.\n");
    EXPECT_TEXT(Answer("m=\xE4 5004 RTP/AVP 0\r\n", "m=audio 5004 RTP/AVP 0\r\n"),
                "J21 line 6, other 6, section 0: The medium is 'audio', offered is a word of 1 bytes.\n");
}
