// Stage: the facts about keys: of the far end, and of our text against it.
// Input: the far end's sections, our sections. Output: clauses.
// Touches the state's facts. Key text is compared by its hash and never part of a clause.
// Test: tests/explain/judge_cases.py
#include "State.h"

#include "Reading.h"
#include "SDPTransport.h"

#include <algorithm>
#include <array>
#include <functional>

namespace explain {

const ExplainTopic kEncryptionTopics[baseSDP::SRTP_MAX] = {
    ExplainTopic::EncryptionAudio, ExplainTopic::EncryptionMain, ExplainTopic::EncryptionSlides};

namespace {

using Topic = ExplainTopic;
using CryptoParams = Quor::media::rtp::CryptoParams;

std::size_t HashOf(const unsigned char* bytes, std::size_t length) {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes), length});
}

bool IsZero(const unsigned char* bytes, int length) {
    return std::all_of(bytes, bytes + length, [](unsigned char byte) { return byte == 0; });
}

void AddTheirKey(State& state, const ExplainInput& input, const MediaSession* section,
                 baseSDP::SRTP_M_LINE stream) {
    const char* const name = kStreamNames[stream];
    const Topic topic = kEncryptionTopics[stream];
    if (section == nullptr || section->cryptoAlgo == CryptoParams::CRYPTO_NONE) {
        state.Say({topic, About::Suite, 0, true, true, section == nullptr || !input.srtp},
                  {"no suite is read for ", name, ", so it is not encrypted"});
        state.Say({topic, About::Key, 0, true, true, true}, {"there is no key for ", name});
        return;
    }
    state.Say({topic, About::Suite, 0, false, true},
              {name, " has the suite ", SuiteName(section->cryptoAlgo)});
    Fact key{topic, About::Key, 0, IsZero(section->bufSRTPKey, baseSDP::kKeyLength), true};
    key.hidden = HashOf(section->bufSRTPKey, baseSDP::kKeyLength) ^
                 (HashOf(section->bufSRTPSalt, baseSDP::kSaltLength) * 3);
    if (key.isDead) {
        state.Say(key, {"the key of ", name, " is all zero, so there is no key"});
    } else {
        state.Say(key, {name, " is decrypted with the key of tag ", section->iCryptoTag});
    }
}

void AddOurKey(State& state, const ExplainInput& input, const MediaSession* section,
               baseSDP::SRTP_M_LINE stream) {
    const char* const name = kStreamNames[stream];
    const char* const text = input.remoteAnswers ? "our offer" : "our answer";
    const OurSection* const ours = OurStream(state, stream);
    Fact fact{kEncryptionTopics[stream], About::OurKey, 0, false, true};
    if (section == nullptr && !input.remoteAnswers) {
        state.Say(fact, {"the far end has no section for ", name});
        return;
    }
    if (ours == nullptr) {
        state.Say(fact, {text, " has no section for ", name});
        return;
    }
    const bool saysSecure = negotiation::IsSavp(Upper(ours->transport));
    const bool isTheirs = section != nullptr && section->cryptoAlgo != CryptoParams::CRYPTO_NONE;
    const bool isOtherSuite = isTheirs && ours->hasKey && ours->suite != SuiteName(section->cryptoAlgo);
    fact.isDead = saysSecure != ours->hasKey || isOtherSuite || (isTheirs && !ours->hasKey) ||
                  (ours->hasKey && ours->suite.empty());
    std::array<Piece, 2> offered = {"", ""};
    if (section != nullptr && !input.remoteAnswers) {
        const std::string_view transport = TransportOf(*section);
        const bool wantsSecure = negotiation::IsSavp(Upper(transport));
        fact.isDead = fact.isDead || wantsSecure != saysSecure;
        if (wantsSecure != saysSecure) {
            offered = {" to an offer of ", AsShown(transport)};
        }
    }
    if (ours->hasKey) {
        state.Say(fact, {text, " says ", ours->transport, " for ", name, " with ",
                         ours->suite.empty() ? "no suite name" : ours->suite, " under tag ", ours->tag,
                         offered[0], offered[1]});
    } else {
        state.Say(fact,
                  {text, " says ", ours->transport, " for ", name, " without a key", offered[0], offered[1]});
    }
}

void AddKey(State& state, const ExplainInput& input, const Sections& sections, baseSDP::SRTP_M_LINE stream) {
    const MediaSession* const section = SectionOfStream(sections, stream);
    AddTheirKey(state, input, section, stream);
    AddOurKey(state, input, section, stream);
}

} // namespace

void AddAudioKey(State& state, const ExplainInput& input, const Sections& sections) {
    AddKey(state, input, sections, baseSDP::SRTP_AUDIO);
}

void AddMainKey(State& state, const ExplainInput& input, const Sections& sections) {
    AddKey(state, input, sections, baseSDP::SRTP_VIDEO);
}

void AddSlidesKey(State& state, const ExplainInput& input, const Sections& sections) {
    AddKey(state, input, sections, baseSDP::SRTP_VIDEO_PRESO);
}

} // namespace explain
