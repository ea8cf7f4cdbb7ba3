// After any hostile text a handler reads and answers a good text as a new handler does. Only the session
// address may be kept.
#include "Law.h"

#include "HostileTexts.h"

#include <string>

using namespace support;

namespace {

void StartFull(SDPHandler& h) {
    LocalSDP local = PresentationLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.SetBfcpSupport(true);
    h.m_bSRTP = true;
}

// Compares a used handler with a new one.
void ExpectLikeFresh(SDPHandler& used, const std::string& text, const std::string& name) {
    SDPHandler fresh;
    StartFull(fresh);
    fresh.strSessionIPAddr = used.strSessionIPAddr;
    fresh.m_iSessionVersion = used.m_iSessionVersion;
    EXPECT_TEXT(ParseInto(used, text), ParseInto(fresh, text)) << name;
    EXPECT_TEXT(used.GetLocalSDP(), fresh.GetLocalSDP()) << name;
}

TEST(LawHostile, AGoodTextAfterEachHostileOne) {
    for (const Hostile& hostile : HostileTexts()) {
        SDPHandler used;
        StartFull(used);
        ParseInto(used, hostile.text);
        used.GetLocalSDP();
        ExpectLikeFresh(used, kRichText, hostile.name);
        ParseInto(used, hostile.text);
        ExpectLikeFresh(used, kAddressless, hostile.name);
    }
}

TEST(LawHostile, AGoodTextAfterAllOfThem) {
    SDPHandler used;
    StartFull(used);
    for (const Hostile& hostile : HostileTexts()) {
        ParseInto(used, hostile.text);
    }
    ExpectLikeFresh(used, kRichText, "all");
    ExpectLikeFresh(used, kAddressless, "all");
}

TEST(LawHostile, AGoodTextWithAnAddressNeedsNoAllowance) {
    SDPHandler fresh;
    StartFull(fresh);
    const std::string expected = ParseInto(fresh, kRichText);
    for (const Hostile& hostile : HostileTexts()) {
        SDPHandler used;
        StartFull(used);
        ParseInto(used, hostile.text);
        EXPECT_TEXT(ParseInto(used, kRichText), expected) << hostile.name;
    }
}

TEST(LawHostile, AnOfferAfterAHostileTextIsTheOneOfAFreshHandler) {
    SDPHandler fresh;
    StartFull(fresh);
    const std::string expected = fresh.GetLocalSDP();
    for (const Hostile& hostile : HostileTexts()) {
        SDPHandler used;
        StartFull(used);
        ParseInto(used, hostile.text);
        used.ResetRemoteSDP();
        EXPECT_TEXT(used.GetLocalSDP(), expected) << hostile.name;
    }
}

} // namespace
