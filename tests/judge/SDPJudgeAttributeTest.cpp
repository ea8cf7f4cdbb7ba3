// The forms of attributes and addresses, each beside the nearest text that is none.
#include "Alone.h"

using namespace judged;

namespace {

const std::string kAddress = "J05 line 7, other 0, section 0: The address is none of ";
const std::string kForm = " line 7, other 0, section 0: Attribute ";

std::string Wrong(const std::string& rule, const std::string& name, const std::string& example) {
    return rule + kForm + "'" + name + "' is not written as in " + example + ".";
}

} // namespace

TEST(JudgeAttribute, AnAddressFitsItsType) {
    const JudgedLine rows[] = {
        {"c=IN IP4 192.0.2.9", ""},
        {"c=IN IP4 224.2.1.1/127", ""},
        {"c=IN IP4 192.0.2", kAddress + "IP4."},
        {"c=IN IP4 192.0.2.256", kAddress + "IP4."},
        {"c=IN IP6 192.0.2.9", kAddress + "IP6."},
        {"c=IN IP6 2001:db8::1", ""},
        {"c=IN IP6 2001:db8:::1", kAddress + "IP6."},
        {"c=IN IP4 2001:db8::1", kAddress + "IP4."},
        {"c=IN IP4 media-7.example.net", ""},
        {"c=IN IP4 media_7.example.net", kAddress + "IP4."},
    };
    ExpectFaults(rows);
}

TEST(JudgeAttribute, NumbersAndWords) {
    const JudgedLine rows[] = {
        {"a=fmtp:0 x", ""},
        {"a=fmtp:0 ", Wrong("J12", "fmtp", "a=fmtp:101 0-15")},
        {"a=rtpmap:0 PCMU/8000", ""},
        {"a=rtpmap:0 PCMU/8000/1", ""},
        {"a=rtpmap:0 PCMU/8000/1/2", Wrong("J12", "rtpmap", "a=rtpmap:97 H264/90000")},
        {"a=rtpmap:0 PCMU/0", Wrong("J12", "rtpmap", "a=rtpmap:97 H264/90000")},
        {"a=rtpmap:0 PC(MU/8000", Wrong("J12", "rtpmap", "a=rtpmap:97 H264/90000")},
        {"a=rtcp:65535", ""},
        {"a=rtcp:65536", Wrong("J08", "rtcp", "a=rtcp:5005 IN IP4 192.0.2.1")},
        {"a=rtcp:5005 IN IP4", Wrong("J08", "rtcp", "a=rtcp:5005 IN IP4 192.0.2.1")},
        {"a=floorctrl:c-only s-only c-s", ""},
        {"a=floorctrl:c-only both", Wrong("J08", "floorctrl", "a=floorctrl:c-only")},
        {"a=floorid:2", ""},
        {"a=floorid:2 mstrm:9", ""},
        {"a=floorid:2 mstrm", Wrong("J08", "floorid", "a=floorid:2 mstrm:9")},
        {"a=floorid:12345678901", Wrong("J08", "floorid", "a=floorid:2 mstrm:9")},
        {"a=ptime:18446744073709551616", Wrong("J08", "ptime", "a=ptime:20")},
        {"a=content:main,,speaker", Wrong("J08", "content", "a=content:main,speaker")},
        {"a=mid:\x7F", Wrong("J08", "mid", "a=mid:audio")},
    };
    ExpectFaults(rows);
}

TEST(JudgeAttribute, IceNamesAndPasswordsHaveTheirLength) {
    const std::string password = Wrong("J08", "ice-pwd", "a=ice-pwd:asd88fgpdd777uzjYhagZg");
    const std::string named = "J16 line 6, other 0, section 0: There is a=ice-ufrag without the other one.\n";
    const std::string name = Wrong("J08", "ice-ufrag", "a=ice-ufrag:8hhY");
    const auto both = [](std::size_t nameLength, std::size_t passwordLength) {
        return Faults(AudioText("a=ice-pwd:" + std::string(passwordLength, 'p') +
                                "\r\na=ice-ufrag:" + std::string(nameLength, 'n') + "\r\n"));
    };
    EXPECT_TEXT(both(4, 22), "");
    EXPECT_TEXT(both(256, 256), "");
    EXPECT_TEXT(both(4, 21), password + "\n");
    EXPECT_TEXT(both(4, 257), password + "\n");
    EXPECT_TEXT(both(3, 22), "J08 line 8" + name.substr(10) + "\n");
    EXPECT_TEXT(both(257, 22), "J08 line 8" + name.substr(10) + "\n");
    EXPECT_TEXT(Faults(AudioText("a=ice-ufrag:8hhY\r\n")), named);
    EXPECT_TEXT(Faults(AudioText("a=ice-pwd:asd88fgpdd777uzjYhagZg\r\n")),
                "J16 line 6, other 0, section 0: There is a=ice-pwd without the other one.\n");
}

TEST(JudgeAttribute, AnAttributeHasANameAndBehindAColonAValue) {
    const JudgedLine rows[] = {
        {"a=x", ""},
        {"a=x-free:form of (any) kind", ""},
        {"a=label:", "J08 line 7, other 0, section 0: Attribute 'label' has a colon without a value."},
        {"a=:", "J08 line 7, other 0, section 0: The attribute has no name."},
        {"a=:8", "J08 line 7, other 0, section 0: The attribute has no name."},
        {"a=two words:", "J08 line 7, other 0, section 0: The attribute has no name."},
    };
    ExpectFaults(rows);
}

TEST(JudgeAttribute, ACryptoLineHasTagSuiteAndKey) {
    const std::string key = "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl";
    const std::string wrong = Wrong("J13", "crypto", "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:WVNf...");
    const JudgedLine rows[] = {
        {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 " + key, ""},
        {"a=crypto:123456789 AES_CM_128_HMAC_SHA1_80 " + key + "|2^20|1:4 KDR=1", ""},
        {"a=crypto:1234567890 AES_CM_128_HMAC_SHA1_80 " + key, wrong},
        {"a=crypto:one AES_CM_128_HMAC_SHA1_80 " + key, wrong},
        {"a=crypto:1 AES(CM) " + key, wrong},
        {"a=crypto:1 AES_CM_128_HMAC_SHA1_80", wrong},
        {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 uri:x", wrong},
        {"a=crypto:1 AES_CM_128_HMAC_SHA1_80  " + key, wrong},
    };
    ExpectFaults(rows);
}

TEST(JudgeAttribute, AKeyHasTheLengthOfItsSuite) {
    const auto line = [](const char* suite, const std::string& key) {
        return "a=crypto:1 " + std::string(suite) + " inline:" + key;
    };
    const auto wrong = [](const char* suite, const char* length) {
        return "J14 line 7, other 0, section 0: The key of " + std::string(suite) + " does not decode to " +
               length + " bytes.";
    };
    const std::string digits(60, 'k');
    const JudgedLine rows[] = {
        {line("AES_CM_128_HMAC_SHA1_80", digits.substr(0, 40)), ""},
        {line("AES_CM_128_HMAC_SHA1_80", digits.substr(0, 41)), ""}, // the bits of one digit make no byte
        {line("AES_CM_128_HMAC_SHA1_80", digits.substr(0, 38) + "+/"), ""},
        {line("AES_CM_128_HMAC_SHA1_80", digits.substr(0, 39) + "*"), wrong("AES_CM_128_HMAC_SHA1_80", "30")},
        {line("AES_CM_128_HMAC_SHA1_80", digits.substr(0, 39)), wrong("AES_CM_128_HMAC_SHA1_80", "30")},
        {line("AES_192_CM_HMAC_SHA1_32", digits.substr(0, 51)), ""},
        {line("AES_192_CM_HMAC_SHA1_32", digits.substr(0, 51) + "="), ""},
        {line("AES_192_CM_HMAC_SHA1_32", digits.substr(0, 51) + "=="),
         wrong("AES_192_CM_HMAC_SHA1_32", "38")},
        {line("AEAD_AES_128_GCM", digits.substr(0, 38) + "=="), ""},
        {line("AEAD_AES_128_GCM", digits.substr(0, 38) + "="), wrong("AEAD_AES_128_GCM", "28")},
        {line("ANOTHER_SUITE", "k"), ""},
        {line("ANOTHER_SUITE", "AAAA"), "J14 line 7, other 0, section 0: Every bit of key and salt is zero."},
    };
    ExpectFaults(rows);
}
