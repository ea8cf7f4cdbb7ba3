// A mistake for each law of the targets that call the component: the law alone is in force, and must report
// it.
#include "Inputs.h"

#include <Cost.h>
#include <Judged.h>
#include <Keys.h>
#include <Targets.h>

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzz::Mistake;

/// Changes every result of this name.
template <typename T>
Mistake In(const char* name, void (*change)(T&)) {
    return [name, change](std::string_view what, const std::type_info& type, void* result) {
        if (what == name && type == typeid(T)) {
            change(*static_cast<T*>(result));
        }
    };
}

Mistake Replaced(const char* what, const char* with) {
    return [what, with](std::string_view name, const std::type_info&, void* result) {
        if (name == "description" || name == "text of a life") {
            auto& text = *static_cast<std::string*>(result);
            const std::size_t at = text.find(what);
            if (at != std::string::npos) {
                text.replace(at, std::string_view(what).size(), with);
            }
        }
    };
}

void Longer(std::string& text) {
    text += "x";
}

void Other(bool& isDecoded) {
    isDecoded = !isDecoded;
}

void OtherByte(unsigned char& byte) {
    byte ^= 1U;
}

void OtherPort(RemoteSDP& remote) {
    ++remote.iAudioRTPPort;
}

void OtherSection(SDPHandler& handler) {
    if (!handler.vecRemoteMediaSession.empty()) {
        ++handler.vecRemoteMediaSession.back()->iPort;
    }
}

void FewerSections(SDPHandler& handler) {
    if (!handler.vecRemoteMediaSession.empty()) {
        delete handler.vecRemoteMediaSession.back();
        handler.vecRemoteMediaSession.pop_back();
    }
}

void OtherAddress(SDPHandler& handler) {
    handler.strSessionIPAddr += "x";
}

/// What a text that turns floor control on for good would do.
void FloorControlOn(SDPHandler& handler) {
    handler.SetBfcpSupport(true);
}

/// A dump that ends in the key of the audio stream.
Mistake LeakedKey() {
    auto key = std::make_shared<std::string>();
    return [key](std::string_view what, const std::type_info&, void* result) {
        if (what == "handler") {
            const LocalSDP& local = static_cast<SDPHandler*>(result)->MyLocalSDP;
            *key = fuzz::Key(local.bufSRTPKey[0], local.bufSRTPSalt[0]).text;
        } else if (what == "dump") {
            *static_cast<std::string*>(result) += key->substr(0, 8);
        }
    };
}

struct Fuzzed {
    replay::Target target;
    const char* folder; ///< of the target's inputs
};
constexpr Fuzzed kParse = {FuzzParse, "parse"};
constexpr Fuzzed kLife = {FuzzLife, "life"};
constexpr Fuzzed kKey = {FuzzKey, "key"};
constexpr Fuzzed kFormat = {FuzzFormat, "format"};
constexpr Fuzzed kGrammar = {FuzzGrammar, "grammar"};

struct Row {
    std::string law;
    Fuzzed fuzzed;
    Mistake mistake;
};

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        {"allocations stay in their budget", kParse,
         In<fuzz::Cost>("cost", [](fuzz::Cost& cost) { cost.bytes += 1U << 24U; })},
        {"steps stay in their budget", kParse,
         In<fuzz::Cost>("cost", [](fuzz::Cost& cost) { cost.steps += 1U << 24U; })},
        {"the result is 1 for an empty text and 0 otherwise", kParse,
         In<int>("result", [](int& result) { result = 2; })},
        {"an empty text leaves the record", kParse, In("record", OtherPort)},
        {"a text without a whole line resets the record", kParse, In("record", OtherPort)},
        {"the handler holds what the text opens", kParse, In("handler", OtherAddress)},
        {"reading changes no setting", kParse, In("handler", FloorControlOn)},
        {"the record depends on text and codecs only", kParse, In("another side's record", OtherPort)},
        {"extraction twice gives the same", kParse, In("extracted record", OtherPort)},
        {"parsing twice gives the same", kParse, In("handler that read twice", OtherSection)},
        {"writing changes the version alone", kParse, In("handler that wrote", FloorControlOn)},
        {"a bare label belongs to a stream without a role", kParse,
         Replaced("t=0 0", "a=label:a=content:t=0 0")},
        {"every line ends in CR LF", kParse, Replaced("\r\n", "\n")},
        {"no line is empty", kParse, Replaced("\r\n", "\r\n\r\n")},
        {"no rtpmap line is bare", kParse, Replaced("t=0 0", "a=rtpmap:\r\nt=0 0")},
        {"the session lines come first", kParse, Replaced("s=-", "i=-")},
        {"a line begins with its type", kParse, Replaced("t=0 0", "t0 0")},
        {"the session lines end with t=", kParse, Replaced("t=0 0", "t=1 0")},
        {"surplus sections are declined at the end", kParse, In("description", Longer)},
        {"what we write opens its sections", kParse, In("far handler", FewerSections)},
        {"our address is written as it is", kParse, Replaced("c=IN IP4 ", "c=IN IP4 x")},
        {"our address reads back", kParse,
         In<RemoteSDP>("far record", [](RemoteSDP& far) { far.strAudioIPAddr += "x"; })},
        {"our level reads back", kParse,
         In<RemoteSDP>("far record", [](RemoteSDP& far) { far.m_VideoMain.strVideoLevel += "x"; })},
        {"what we write reads back", kParse, In("far record", OtherPort)},
        {"no part of a key leaves the component", kParse, LeakedKey()},
        {"a used handler has the settings of its side", kParse, In("used handler", FloorControlOn)},
        {"a good text is read", kParse, In("used handler after a good text", FewerSections)},
        {"a used handler reads as a fresh one does", kParse, In("used record", OtherPort)},
        {"a used handler holds what a fresh one does", kParse,
         In("used handler after a good text", OtherSection)},
        {"a used handler answers as a fresh one does", kParse, In("used answer", Longer)},
        {"the state is that of the model", kLife, In("handler of a life", FloorControlOn)},
        {"an old handler reads as a fresh one", kLife, In("record of a life", OtherPort)},
        {"an old handler holds what a fresh one does", kLife, In("handler of a life", OtherSection)},
        {"extraction gives what a fresh handler reads", kLife, In("record of a life", OtherPort)},
        {"an old handler writes as a fresh one", kLife, In("text of a life", Longer)},
        {"no address, no offer", kLife, In("text of a life", Longer)},
        {"the origin line follows the counters", kLife, Replaced(" IN IP4 ", " IN IP4 x")},
        {"a key is written as base64", kKey, In("key text", Longer)},
        {"a key that is written is read", kKey, In("decoded own text", Other)},
        {"a key comes back", kKey, In("own key", OtherByte)},
        {"base64 is read and nothing else", kKey, In("decoded", Other)},
        {"a text that is no key changes no byte", kKey, In("key", OtherByte)},
        {"a crypto line is read as the model reads it", kKey,
         In<SDPHandler>("handler",
                        [](SDPHandler& handler) { ++handler.vecRemoteMediaSession.back()->iCryptoTag; })},
        {"our answer takes the tag", kKey, In("crypto line", Longer)},
        {"the record holds the section's key", kKey,
         In<RemoteSDP>("record", [](RemoteSDP& remote) { remote.bufSRTPKey[0][0] ^= 1U; })},
        {"digits name a level", kFormat, In("level", Longer)},
        {"a level's digits name it again", kFormat,
         In<std::string>("digits", [](std::string& digits) { digits = "15"; })},
        {"two sections are opened", kFormat, In("handler", FewerSections)},
        {"formats carry what their lines say", kFormat,
         In<SDPHandler>("handler",
                        [](SDPHandler& handler) {
                            handler.vecRemoteMediaSession.front()->vecRtpMap.front()->strPayload += "x";
                        })},
        {"the record holds what the formats say", kFormat, In("record", OtherPort)},
        {"a valid description gives the generator's record", kGrammar, In("record of a valid text", Longer)},
        {"a harmless mutation changes neither record nor answer", kGrammar,
         In("answer to a mutated text", Longer)},
    };
    return rows;
}

void ReplayWithMistake(const Row& row) {
    fuzz::EnforceOnly(row.law);
    fuzz::SetMistake(row.mistake);
    const auto& [target, folder] = row.fuzzed;
    target(nullptr, 0);
    replay::Call(target, std::string(12, '\0') + "v=0");
    replay::Replay(replay::InputsOf("seeds", folder), target);
}

TEST(MistakesDeathTest, EachLawReportsItsMistake) {
    for (const Row& row : Rows()) {
        EXPECT_DEATH(ReplayWithMistake(row), "LAW BROKEN: " + row.law + "\n");
    }
}

TEST(Mistakes, NoLawIsWithoutAMistake) {
    fuzz::Laws().clear();
    for (const auto& [target, folder] : {kParse, kLife, kKey, kFormat, kGrammar}) {
        replay::Replay(replay::InputsOf("seeds", folder), target);
    }
    std::map<std::string, int> rows;
    for (const Row& row : Rows()) {
        ++rows[row.law];
    }
    for (const auto& [law, uses] : fuzz::Laws()) {
        EXPECT_EQ(rows[law], 1) << law << ", used " << uses << " times";
    }
    EXPECT_EQ(fuzz::Laws().size(), Rows().size());
}

} // namespace
