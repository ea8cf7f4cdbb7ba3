// After any hostile text a handler reads and answers a good text as a new handler does. Only the session
// address may be kept.
#include "Law.h"

#include "HostileTexts.h"

#include <string>
#include <vector>

using namespace support;

namespace {

void Begin(SDPHandler& h, const Switches& switches) {
    LocalSDP local = PresentationLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    Set(h, switches);
}

// Compares a used handler with a new one.
void ExpectLikeFresh(SDPHandler& used, const Switches& switches, const std::string& text,
                     const std::string& name) {
    SDPHandler fresh;
    Begin(fresh, switches);
    fresh.strSessionIPAddr = used.strSessionIPAddr;
    fresh.m_iSessionVersion = used.m_iSessionVersion;
    EXPECT_TEXT(ParseInto(used, text), ParseInto(fresh, text)) << name;
    EXPECT_TEXT(used.GetLocalSDP(), fresh.GetLocalSDP()) << name;
}

TEST(LawHostile, NoTextChangesASetting) {
    std::vector<Hostile> texts = HostileTexts();
    texts.push_back({"a rich one", kRichText});
    for (const Switches& switches : AllSwitches()) {
        SDPHandler h;
        Begin(h, switches);
        const std::string before = Settings(h);
        for (const Hostile& hostile : texts) {
            ParseInto(h, hostile.text);
            EXPECT_TEXT(Settings(h), before) << hostile.name;
            h.GetLocalSDP();
            h.ResetRemoteSDP();
            EXPECT_TEXT(Settings(h), before) << hostile.name;
        }
    }
}

TEST(LawHostile, AGoodTextAfterEachHostileOne) {
    for (const Switches& switches : AllSwitches()) {
        for (const Hostile& hostile : HostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.text);
            used.GetLocalSDP();
            ExpectLikeFresh(used, switches, kRichText, hostile.name);
            ParseInto(used, hostile.text);
            ExpectLikeFresh(used, switches, kAddressless, hostile.name);
        }
    }
}

TEST(LawHostile, AGoodTextAfterAllOfThem) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler used;
        Begin(used, switches);
        for (const Hostile& hostile : HostileTexts()) {
            ParseInto(used, hostile.text);
        }
        ExpectLikeFresh(used, switches, kRichText, "all");
        ExpectLikeFresh(used, switches, kAddressless, "all");
    }
}

TEST(LawHostile, AGoodTextWithAnAddressNeedsNoAllowance) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler fresh;
        Begin(fresh, switches);
        const std::string expected = ParseInto(fresh, kRichText);
        for (const Hostile& hostile : HostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.text);
            EXPECT_TEXT(ParseInto(used, kRichText), expected) << hostile.name;
        }
    }
}

TEST(LawHostile, AnOfferAfterAHostileTextIsTheOneOfAFreshHandler) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler fresh;
        Begin(fresh, switches);
        const std::string expected = fresh.GetLocalSDP();
        for (const Hostile& hostile : HostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.text);
            used.ResetRemoteSDP();
            EXPECT_TEXT(used.GetLocalSDP(), expected) << hostile.name;
        }
    }
}

} // namespace
