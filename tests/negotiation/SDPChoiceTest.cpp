#include "SDPChoice.h"
#include "Parts.h"

using namespace call;
using namespace negotiation;

namespace {

/// The verdict on each section of an offer.
std::string Verdicts(std::string_view sections, Srtp srtp = Srtp::Off) {
    Given given(sections);
    Wishes wishes;
    wishes.local = Local();
    wishes.srtp = srtp;
    std::string all;
    for (const Verdict& verdict : Choose(given.description, wishes, Session(), given.repairs).verdicts) {
        all += (verdict.reason.empty() ? "taken" : std::string(verdict.reason)) + "\n";
    }
    return all;
}

constexpr std::string_view kVideo = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
constexpr std::string_view kSlidesSection =
    "m=video 30004 RTP/AVP 97\na=rtpmap:97 H264/90000\na=content:slides\n";

TEST(Choice, TheFirstSectionOfEachRoleIsTaken) {
    EXPECT_TEXT(Verdicts("m=audio 0 RTP/AVP 0\nm=audio 30000 RTP/AVP 8\nm=audio 30002 RTP/AVP 0\n"
                         "m=audio 30004 RTP/AVP 9\nm=text 30006 RTP/AVP 98\n" +
                         std::string(kVideo) + std::string(kVideo) + std::string(kSlidesSection) +
                         "m=application 30008 UDP/BFCP *\n"),
                "the far end's section has port 0\n"
                "this side supports no format of the section\n"
                "taken\n"
                "another section of this kind is taken\n"
                "this side serves no section of this medium and transport\n"
                "taken\n"
                "another section of this kind is taken\n"
                "taken\n"
                "taken\n");
}

TEST(Choice, FloorControlComesWithSlidesAndAFormat) {
    EXPECT_TEXT(Verdicts("m=application 30008 UDP/BFCP *\n" + std::string(kVideo)),
                "floor control without slides is not taken\ntaken\n");
    EXPECT_TEXT(Verdicts("m=application 30008 UDP/BFCP\n" + std::string(kSlidesSection)),
                "this side supports no format of the section\ntaken\n");
    EXPECT_TEXT(Verdicts("m=application 30008 UDP/BFCP \"\"\n" + std::string(kSlidesSection)),
                "this side supports no format of the section\ntaken\n");
}

TEST(Choice, WithSrtpWantedASecureSectionReplacesAPlainOne) {
    constexpr std::string_view key =
        "AES_CM_128_HMAC_SHA1_80 inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\n";
    const std::string plain = "m=audio 30000 RTP/AVP 0\n";
    const std::string secure = "m=audio 30002 RTP/SAVP 0\na=crypto:1 " + std::string(key);
    const std::string keyless = "m=audio 30004 RTP/SAVP 0\n";
    EXPECT_TEXT(Verdicts(plain + secure, Srtp::Wanted), "another section of this kind is taken\ntaken\n");
    EXPECT_TEXT(Verdicts(plain + keyless, Srtp::Wanted),
                "taken\nno crypto line of the section can be used\n");
    EXPECT_TEXT(Verdicts(secure + secure, Srtp::Wanted), "taken\nanother section of this kind is taken\n");
    EXPECT_TEXT(Verdicts(plain + secure, Srtp::Off), "taken\nthe section is secure, and SRTP is off here\n");
    EXPECT_TEXT(Verdicts(plain + secure, Srtp::Required),
                "the section is not secure, and SRTP is required here\ntaken\n");
}

TEST(Choice, AnOfferWithEveryPortZeroIsAHold) {
    EXPECT_TEXT(Verdicts("m=audio 0 RTP/AVP 0\nm=text 0 RTP/AVP 98\n"),
                "the far end holds all streams at port 0\nthe far end holds all streams at port 0\n");
}

} // namespace
