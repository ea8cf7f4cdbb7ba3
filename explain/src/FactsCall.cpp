// Stage: the facts about keys, ICE and the shape of our text against the far end's.
// Input: the far end's sections, our sections. Output: clauses.
// Touches the state's facts. Key text is compared by its hash and never part of a clause.
// Test: tests/explain/judge_cases.py
#include "State.h"

#include "Reading.h"
#include "SDPTables.h"

#include <algorithm>
#include <functional>

namespace explain {

namespace {

using Topic = ExplainTopic;
using CryptoParams = Quor::media::rtp::CryptoParams;

constexpr Topic kEncryption[baseSDP::SRTP_MAX] = {Topic::EncryptionAudio, Topic::EncryptionMain,
                                                  Topic::EncryptionSlides};
constexpr std::size_t kSectionsSaid = 16;

std::size_t HashOf(const unsigned char* bytes, std::size_t length) {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes), length});
}

bool IsZero(const unsigned char* bytes, int length) {
    return std::all_of(bytes, bytes + length, [](unsigned char byte) { return byte == 0; });
}

void AddTheirKey(State& state, const MediaSession* section, baseSDP::SRTP_M_LINE stream) {
    const std::string name = kStreamNames[stream];
    Fact suite{kEncryption[stream],
               "suite",
               "no suite is read for " + name + ", so it is not encrypted",
               true,
               true,
               0};
    Fact key{kEncryption[stream], "key", "there is no key for " + name, true, true, 0};
    if (section != nullptr && section->cryptoAlgo != CryptoParams::CRYPTO_NONE) {
        suite.clause = name + " has the suite " + SuiteName(section->cryptoAlgo);
        suite.isDead = false;
        key.isDead = IsZero(section->bufSRTPKey, baseSDP::kKeyLength);
        key.clause = key.isDead
                         ? "the key of " + name + " is all zero, so there is no key"
                         : name + " is decrypted with the key of tag " + std::to_string(section->iCryptoTag);
        key.hidden = HashOf(section->bufSRTPKey, baseSDP::kKeyLength) ^
                     (HashOf(section->bufSRTPSalt, baseSDP::kSaltLength) * 3);
    }
    state.facts.push_back(std::move(suite));
    state.facts.push_back(std::move(key));
}

void AddOurKey(State& state, const ExplainInput& input, const MediaSession* section,
               baseSDP::SRTP_M_LINE stream) {
    const std::string name = kStreamNames[stream];
    const std::string text = input.remoteAnswers ? "our offer" : "our answer";
    const OurSection* const ours = OurStream(state, stream);
    Fact fact{kEncryption[stream], "ours", text + " has no section for " + name, false, true, 0};
    if (section == nullptr && !input.remoteAnswers) {
        fact.clause = "the far end has no section for " + name;
    } else if (ours != nullptr) {
        const bool saysSecure = Upper(ours->transport).find("SAVP") != std::string::npos;
        const bool isTheirs = section != nullptr && section->cryptoAlgo != CryptoParams::CRYPTO_NONE;
        const bool isOtherSuite = isTheirs && ours->hasKey && ours->suite != SuiteName(section->cryptoAlgo);
        fact.clause = text + " says " + ours->transport + " for " + name +
                      (!ours->hasKey ? " without a key"
                                     : " with " + (ours->suite.empty() ? "no suite name" : ours->suite) +
                                           " under tag " + ours->tag);
        fact.isDead = saysSecure != ours->hasKey || isOtherSuite || (isTheirs && !ours->hasKey) ||
                      (ours->hasKey && ours->suite.empty());
        if (section != nullptr && !input.remoteAnswers) {
            const bool wantsSecure = Upper(TransportOf(*section)).find("SAVP") != std::string::npos;
            fact.isDead = fact.isDead || wantsSecure != saysSecure;
            fact.clause += wantsSecure != saysSecure ? " to an offer of " + Shown(TransportOf(*section)) : "";
        }
    }
    state.facts.push_back(std::move(fact));
}

std::size_t KindOf(const MediaSession& section) {
    return section.eMedia == MEDIA_AUDIO         ? 1
           : section.eMedia == MEDIA_VIDEO       ? 2
           : section.eMedia == MEDIA_APPLICATION ? 3
                                                 : 0;
}

void AddIce(State& state, const RemoteSections& sections) {
    // Counted by kind, so that a section more or less before them does not change what is said of the others.
    constexpr const char* kKinds[] = {"other", "audio", "video", "application"};
    std::size_t counts[std::size(kKinds)] = {};
    for (std::size_t i = 0; i < sections.size() && i < kSectionsSaid; ++i) {
        const MediaSession& section = *sections[i];
        const std::size_t kind = KindOf(section);
        const std::string name = std::string(kKinds[kind]) + " section " + std::to_string(++counts[kind]);
        const bool hasUser = !section.striceufrag.empty();
        const bool hasPassword = !section.stricepwd.empty();
        std::size_t hash =
            std::hash<std::string>()(section.striceufrag) ^ (std::hash<std::string>()(section.stricepwd) * 3);
        for (const std::string& candidate : section.vecCandidate) {
            hash = hash * 31 ^ std::hash<std::string>()(candidate);
        }
        state.facts.push_back(
            {Topic::Ice, name,
             name + " has " + (hasUser ? "a" : "no") + " user fragment, " + (hasPassword ? "a" : "no") +
                 " password and " + std::to_string(section.vecCandidate.size()) + " candidates for ICE",
             hasUser != hasPassword || (!hasUser && !section.vecCandidate.empty()), true, hash});
    }
}

std::string MediaOf(const MediaSession& section) {
    const std::vector<std::string_view> words = WordsOf(section.strFullMLine, 1);
    return words.empty() ? std::string()
                         : std::string(words[0].substr(std::min<std::size_t>(2, words[0].size())));
}

void AddShape(State& state, const RemoteSections& sections) {
    std::size_t malformed = 0;
    std::size_t wrong = kNowhere;
    for (std::size_t i = 0; i < state.ourSections.size(); ++i) {
        const OurSection& ours = state.ourSections[i];
        malformed += ours.hasPort && !ours.formats.empty() ? 0 : 1;
        if (i < sections.size()) {
            const bool isSame =
                MediaOf(*sections[i]) == ours.media &&
                (sections[i]->eContent == VIDEOTYPE_PRESO) ==
                    (ours.isSlides || (ours.port == "0" && sections[i]->eContent == VIDEOTYPE_PRESO));
            wrong = wrong == kNowhere && !isSame ? i : wrong;
            if (i < kSectionsSaid) {
                const bool isOther = isSame && ours.transport != TransportOf(*sections[i]);
                const std::string number = std::to_string(i + 1);
                state.facts.push_back({Topic::Call, "transport " + number,
                                       isOther ? "section " + number + ", offered as " +
                                                     Shown(TransportOf(*sections[i])) + ", is answered as " +
                                                     ours.transport
                                               : "section " + number + " is answered with its own transport",
                                       isOther, false, 0});
            }
        }
    }
    const auto place = [&](std::size_t i) {
        return "section " + std::to_string(i + 1) + ", offered as " + Shown(MediaOf(*sections[i]));
    };
    const std::size_t count = state.ourSections.size();
    state.facts.push_back({Topic::Call, "count",
                           "our answer has " + std::to_string(count) + " sections for the " +
                               std::to_string(sections.size()) + " of the offer",
                           count != sections.size(), true, 0});
    state.facts.push_back({Topic::Call, "order",
                           wrong == kNowhere
                               ? "our sections stand in the offer's order"
                               : place(wrong) + ", is answered as " + state.ourSections[wrong].media,
                           wrong != kNowhere, true, 0});
    state.facts.push_back(
        {Topic::Call, "malformed",
         malformed == 0
             ? "our m= lines are well formed"
             : "our answer has an m= line without a port or without a format, which strict readers refuse",
         malformed != 0, true, 0});
}

/// A section that is answered by one of ours and rejected as surplus as well.
void AddRejection(State& state, const ExplainInput& input, const RemoteSections& sections) {
    const auto add = [&](Topic topic, const char* name, const MediaSession* section, bool isAnswered) {
        const std::size_t place = PlaceOf(sections, section);
        const bool isRejected = place != kNowhere && place >= input.servedSections && section->iPort != 0;
        state.facts.push_back(
            {topic, std::string("served") + name,
             !isRejected  ? std::string(name) + " is not rejected by our answer"
             : isAnswered ? "our answer accepts " + std::string(name) + " and rejects it again at port 0"
                          : "our answer rejects " + std::string(name) + " at port 0",
             isRejected, true, 0});
        Fact call = state.facts.back();
        call.topic = Topic::Call;
        state.facts.push_back(std::move(call));
    };
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        constexpr Topic topics[] = {Topic::AudioReceive, Topic::MainReceive, Topic::Slides};
        const OurSection* const ours = OurStream(state, stream);
        add(topics[stream], kStreamNames[stream], SectionOfStream(sections, stream),
            ours != nullptr && ours->port != "0");
    }
    const auto floor = std::find_if(sections.begin(), sections.end(),
                                    [](const MediaSession* section) { return sdp::IsBfcp(*section); });
    add(Topic::Floor, "floor control", floor == sections.end() ? nullptr : *floor, input.floorControl);
}

} // namespace

void AddSecurityFacts(State& state, const ExplainInput& input, const RemoteSections& sections) {
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        const MediaSession* const section = SectionOfStream(sections, stream);
        AddTheirKey(state, section, stream);
        AddOurKey(state, input, section, stream);
    }
    AddIce(state, sections);
}

void AddCallFacts(State& state, const ExplainInput& input, const RemoteSections& sections) {
    state.facts.push_back(
        {Topic::Call, "sections",
         sections.empty() ? "no section of the far end is read" : "sections of the far end are read",
         sections.empty(), true, 0});
    const char* const text = input.remoteAnswers ? "our offer" : "our answer";
    state.facts.push_back(
        {Topic::Call, "text",
         state.ours.empty() ? std::string(text) + " is empty" : std::string(text) + " is written",
         state.ours.empty(), true, 0});
    const bool hasAddress = !input.local.strDefaultIPAddr.empty();
    state.facts.push_back({Topic::Call, "address",
                           std::string(text) + (hasAddress ? " has an address" : " has no address"),
                           !hasAddress, true, 0});
    if (!input.remoteAnswers && !sections.empty()) {
        AddRejection(state, input, sections);
        AddShape(state, sections);
    }
}

} // namespace explain
