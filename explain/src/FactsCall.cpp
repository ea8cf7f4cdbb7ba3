// Stage: the facts about ICE and the shape of our text against the far end's.
// Input: the far end's sections, our sections. Output: clauses.
// Touches the state's facts. The credentials of ICE are compared by their hash and never part of a clause.
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

constexpr std::size_t kSectionsSaid = 16;

std::size_t KindOf(const MediaSession& section) {
    return section.eMedia == MEDIA_AUDIO         ? 1
           : section.eMedia == MEDIA_VIDEO       ? 2
           : section.eMedia == MEDIA_APPLICATION ? 3
                                                 : 0;
}

std::string_view MediaOf(const MediaSession& section) {
    const std::string_view word = WordOf(section.strFullMLine, 0);
    return word.substr(std::min<std::size_t>(2, word.size()));
}

/// "audio", "slides": what a section of the far end is.
Piece OfferedKind(const MediaSession& section) {
    return section.eMedia == MEDIA_UNKNOWN       ? Piece("a medium that is not known")
           : section.eContent == VIDEOTYPE_PRESO ? Piece("slides")
                                                 : AsShown(MediaOf(section));
}

void AddTransport(State& state, const MediaSession& section, std::size_t i) {
    const OurSection& ours = state.ours->sections[i];
    const std::string_view transport = TransportOf(section);
    const bool isOther = ours.transport != transport;
    const Fact fact{Topic::Call, About::Transport, static_cast<unsigned char>(i), isOther};
    if (isOther) {
        state.Say(fact, {"section ", i + 1, ", offered as ", AsShown(transport), ", is answered as ",
                         ours.transport});
    } else {
        state.Say(fact, {"section ", i + 1, " is answered with its own transport"});
    }
}

void AddShape(State& state, const Sections& sections) {
    std::size_t malformed = 0;
    std::size_t wrong = kNowhere;
    for (std::size_t i = 0; i < state.ours->sections.size(); ++i) {
        const OurSection& ours = state.ours->sections[i];
        malformed += ours.hasPort && !ours.formats.empty() ? 0 : 1;
        if (i >= sections.size()) {
            continue;
        }
        const bool isSlides = sections[i]->eContent == VIDEOTYPE_PRESO;
        const bool isSame = MediaOf(*sections[i]) == ours.media &&
                            isSlides == (ours.isSlides || (ours.port == "0" && isSlides));
        wrong = wrong == kNowhere && !isSame ? i : wrong;
        // Sections of different kinds have no transport to compare.
        if (isSame && i < kSectionsSaid) {
            AddTransport(state, *sections[i], i);
        }
    }
    const std::size_t count = state.ours->sections.size();
    state.Say({Topic::Call, About::Count, 0, count != sections.size(), true},
              {"our answer has ", count, count == 1 ? " section" : " sections", " for the ", sections.size(),
               " of the offer"});
    if (wrong == kNowhere) {
        state.Say({Topic::Call, About::Order, 0, false, true}, {"our sections stand in the offer's order"});
    } else {
        state.Say({Topic::Call, About::Order, 0, true, true},
                  {"section ", wrong + 1, ", offered as ", OfferedKind(*sections[wrong]), ", is answered as ",
                   state.ours->sections[wrong].isSlides           ? "slides"
                   : sections[wrong]->eContent == VIDEOTYPE_PRESO ? "main video"
                                                                  : state.ours->sections[wrong].media});
    }
    state.Say(
        {Topic::Call, About::Malformed, 0, malformed != 0, true},
        {malformed == 0
             ? "our m= lines are well formed"
             : "our answer has an m= line without a port or without a format, which strict readers refuse"});
}

/// A section that is answered by one of ours and rejected as surplus as well.
void AddRejection(State& state, const ExplainInput& input, const Sections& sections) {
    using Topics = std::initializer_list<Topic>;
    const auto add = [&](Topics topics, unsigned char which, const char* name, const MediaSession* section,
                         bool isAnswered) {
        const std::size_t place = PlaceOf(sections, section);
        Fact fact{Topic::Call, About::Served, which, false, true};
        fact.isDead = place != kNowhere && place >= input.servedSections && section->iPort != 0;
        for (const Topic topic : topics) {
            fact.topic = topic;
            if (!fact.isDead) {
                state.Say(fact, {name, " is not rejected by our answer"});
            } else if (isAnswered) {
                state.Say(fact, {"our answer accepts ", name, " and rejects it again at port 0"});
            } else {
                state.Say(fact, {"our answer rejects ", name, " at port 0"});
            }
        }
    };
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        static constexpr Topics kTopics[] = {
            {Topic::AudioReceive, Topic::AudioSend, Topic::Dtmf, Topic::Call},
            {Topic::MainReceive, Topic::MainSend, Topic::Call},
            {Topic::Slides, Topic::Call}};
        const OurSection* const ours = OurStream(state, stream);
        const MediaSession* const section = SectionOfStream(sections, stream);
        const bool isAnswered = ours != nullptr && ours->port != "0";
        add(kTopics[stream], static_cast<unsigned char>(stream), kStreamNames[stream], section, isAnswered);
        const bool isSecure = section != nullptr && section->cryptoAlgo != CryptoParams::CRYPTO_NONE;
        // The key of a section that is not rejected is told by other facts.
        if (input.srtp && isSecure && PlaceOf(sections, section) >= input.servedSections) {
            add({kEncryptionTopics[stream]}, static_cast<unsigned char>(stream), kStreamNames[stream],
                section, isAnswered);
        }
    }
    const auto floor = std::find_if(sections.begin(), sections.end(),
                                    [](const MediaSession* section) { return sdp::IsBfcp(*section); });
    add({Topic::Floor, Topic::Call}, baseSDP::SRTP_MAX, "floor control",
        floor == sections.end() ? nullptr : *floor, input.floorControl);
}

} // namespace

void AddIce(State& state, const ExplainInput& /*input*/, const Sections& sections) {
    // Counted by kind, so that a section more or less before them does not change what is said of the others.
    constexpr const char* kKinds[] = {"other", "audio", "video", "application"};
    std::size_t counts[std::size(kKinds)] = {};
    for (std::size_t i = 0; i < sections.size() && i < kSectionsSaid; ++i) {
        const MediaSession& section = *sections[i];
        const std::size_t kind = KindOf(section);
        const std::size_t number = ++counts[kind];
        const bool hasUser = !section.striceufrag.empty();
        const bool hasPassword = !section.stricepwd.empty();
        Fact fact{Topic::Ice, About::Ice, static_cast<unsigned char>(kind * (kSectionsSaid + 1) + number),
                  hasUser != hasPassword || (!hasUser && !section.vecCandidate.empty()), true};
        fact.isIdle = !hasUser && !hasPassword && section.vecCandidate.empty();
        fact.hidden =
            std::hash<std::string>()(section.striceufrag) ^ (std::hash<std::string>()(section.stricepwd) * 3);
        for (const std::string& candidate : section.vecCandidate) {
            fact.hidden = fact.hidden * 31 ^ std::hash<std::string>()(candidate);
        }
        state.Say(fact, {kKinds[kind], " section ", number, " has ", hasUser ? "a" : "no", " user fragment, ",
                         hasPassword ? "a" : "no", " password and ", section.vecCandidate.size(),
                         section.vecCandidate.size() == 1 ? " candidate for ICE" : " candidates for ICE"});
    }
}

void AddCall(State& state, const ExplainInput& input, const Sections& sections) {
    state.Say({Topic::Call, About::Sections, 0, sections.empty(), true},
              {sections.empty() ? "no section of the far end is read" : "sections of the far end are read"});
    const char* const text = input.remoteAnswers ? "our offer" : "our answer";
    state.Say({Topic::Call, About::Text, 0, state.ours->text.empty(), true},
              {text, state.ours->text.empty() ? " is empty" : " is written"});
    const bool hasAddress = !input.local.strDefaultIPAddr.empty();
    state.Say({Topic::Call, About::Address, 0, !hasAddress, true},
              {text, hasAddress ? " has an address" : " has no address"});
    if (!input.remoteAnswers && !sections.empty()) {
        AddRejection(state, input, sections);
        AddShape(state, sections);
    }
}

} // namespace explain
