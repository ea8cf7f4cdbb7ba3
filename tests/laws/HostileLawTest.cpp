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
    std::vector<HostileText> texts = ShortHostileTexts();
    texts.push_back({"a rich one", [](std::size_t) { return std::string(kRichText); }});
    for (const Switches& switches : AllSwitches()) {
        SDPHandler h;
        Begin(h, switches);
        const std::string before = Settings(h);
        for (const HostileText& hostile : texts) {
            ParseInto(h, hostile.make(0));
            EXPECT_TEXT(Settings(h), before) << hostile.name;
            h.GetLocalSDP();
            h.ResetRemoteSDP();
            EXPECT_TEXT(Settings(h), before) << hostile.name;
        }
    }
}

TEST(LawHostile, AGoodTextAfterEachHostileOne) {
    for (const Switches& switches : AllSwitches()) {
        for (const HostileText& hostile : ShortHostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.make(0));
            used.GetLocalSDP();
            ExpectLikeFresh(used, switches, kRichText, hostile.name);
            ParseInto(used, hostile.make(0));
            ExpectLikeFresh(used, switches, kAddressless, hostile.name);
        }
    }
}

TEST(LawHostile, AGoodTextAfterAllOfThem) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler used;
        Begin(used, switches);
        for (const HostileText& hostile : ShortHostileTexts()) {
            ParseInto(used, hostile.make(0));
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
        for (const HostileText& hostile : ShortHostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.make(0));
            EXPECT_TEXT(ParseInto(used, kRichText), expected) << hostile.name;
        }
    }
}

TEST(LawHostile, AnOfferAfterAHostileTextIsTheOneOfAFreshHandler) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler fresh;
        Begin(fresh, switches);
        const std::string expected = fresh.GetLocalSDP();
        for (const HostileText& hostile : ShortHostileTexts()) {
            SDPHandler used;
            Begin(used, switches);
            ParseInto(used, hostile.make(0));
            used.ResetRemoteSDP();
            EXPECT_TEXT(used.GetLocalSDP(), expected) << hostile.name;
        }
    }
}

} // namespace
