// Stage: suspects in the order of the sections, and in several sections of one kind.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kOrder = {"E24", "B03", ExplainSeverity::Error, 30,
                         "An answer has audio, main video, slides, floor control in this order, whatever the "
                         "order of the offer (B03; RFC 3264, 6 wants the offer's)."};
constexpr Rule kStreamOrder = {"E165", "B03", ExplainSeverity::Note, 63, kOrder.acted};
constexpr const char* kOtherPlace =
    "The far end matches sections by their place, so each end may send one stream to the port of another.";
constexpr Rule kSecond = {"E25", "X08", ExplainSeverity::Error, 22, ""};
constexpr Rule kFirst = {"E98", "X08", ExplainSeverity::Error, 21,
                         "Of several sections of one kind the first one fills the record, usable or not, and "
                         "no later one is tried in its place (X08)."};

int RankOf(const MeantSection& section, bool isSlides) {
    return section.media == "audio"         ? 0
           : section.media == "video"       ? (isSlides ? 2 : 1)
           : section.media == "application" ? 3
                                            : 4;
}

/// Which ways media flow in a section, as its last direction line says.
struct Ways {
    bool sends = true;
    bool receives = true;
    std::size_t line = 0; ///< number of that line; 0 without one
};

Ways WaysOf(const Reading& reading, const MeantSection& section) {
    Ways ways;
    for (std::size_t i = section.line; i <= section.last; ++i) {
        const TextLine& line = reading.lines[i];
        const sdp::Direction* const direction =
            line.meant == SDPRow::Direction ? sdp::FirstKeyword<sdp::kDirections>(line.text) : nullptr;
        ways = direction == nullptr ? ways : Ways{direction->sends, direction->receives, line.number};
    }
    return ways;
}

bool ListsH264(const Scene& scene, const MeantSection& section) {
    return std::any_of(section.formats.begin(), section.formats.end(),
                       [&](std::string_view format) { return NameOf(scene, section, format) == "H264"; });
}

/// What the first section of a kind lacks and a later one has; empty for nothing.
std::string LackWords(const Scene& scene, const MeantSection& first, const MeantSection& later) {
    if (first.media == "application" || later.IsDeclined()) {
        return {};
    }
    if (first.IsDeclined()) {
        return "has port 0";
    }
    const bool hasCodec =
        first.media == "audio" ? scene.state.record.eAudioCodec != PAYLOAD_UNKNOWN : ListsH264(scene, first);
    const bool hasLater = first.media == "audio" ? scene.state.ours->read.eAudioCodec != PAYLOAD_UNKNOWN
                                                 : ListsH264(scene, later);
    if (!hasCodec && hasLater) {
        return "lists no codec that this side has";
    }
    if (scene.input.srtp && !first.IsSecure() && later.IsSecure() && later.hasCrypto) {
        return "is not secure";
    }
    const Ways own = WaysOf(scene.reading, first);
    const Ways better = WaysOf(scene.reading, later);
    const bool hasMore = (better.sends || !own.sends) && (better.receives || !own.receives) &&
                         (own.sends != better.sends || own.receives != better.receives);
    if (!hasMore) {
        return {};
    }
    const char* const way = own.sends ? "is sendonly" : own.receives ? "is recvonly" : "is inactive";
    return Joined({way, " (line ", own.line, ")"});
}

/// The first section of a kind, when it cannot be used and a later one could.
void AddFirst(Scene& scene, const MeantSection& first, const MeantSection& later) {
    const std::string lack = LackWords(scene, first, later);
    if (lack.empty()) {
        return;
    }
    const TextLine& line = scene.reading.lines[first.line];
    const TextLine& second = scene.reading.lines[later.line];
    Suspect& suspect =
        Blame(scene, kFirst, line,
              {LineWords(line), " ", lack, " and is the first section of its kind, before line ",
               second.number, ", ", InQuotes(second.text), "."},
              {"delete the section that begins with line ", line.number},
              {{line.offset, SectionText(scene.reading, first).size(), {}}});
    suspect.lines.push_back(second.number);
}

/// A section and the place of its kind in our answers.
using Rank = std::pair<int, std::size_t>;

std::vector<Rank> RanksOf(const std::vector<MeantSection>& sections) {
    std::vector<Rank> ranks;
    int highest = 0;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        // A medium that is not known has no place of its own; it stays after the section before it.
        const int rank = RankOf(sections[i], sections[i].isSlides);
        highest = rank == 4 ? highest : std::max(highest, rank);
        ranks.emplace_back(rank == 4 ? highest : rank, i);
    }
    return ranks;
}

/// The sections in this order, each with CR LF at its end.
std::string InOrder(const Reading& reading, const std::vector<Rank>& ranks) {
    std::string text;
    for (const Rank& rank : ranks) {
        text += SectionText(reading, reading.sections[rank.second]);
        text += text.substr(text.size() - 2) == "\r\n" ? "" : "\r\n";
    }
    return text;
}

/// Whether our answer has a section of another kind in the place of one of the far end's.
bool IsOrderBroken(const State& state) {
    const FactRange facts = state.Facts(Part::Call);
    return std::any_of(facts.begin(), facts.end(), [](const Fact& fact) {
        return fact.topic == Topic::Call && fact.about == About::Order && fact.isDead;
    });
}

/// What the order does to each stream that is in another place of our answer.
void KnowStreams(Suspect& suspect, const std::vector<MeantSection>& sections,
                 const std::vector<Rank>& sorted) {
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (const Topic topic : TopicsOf(sections[i], sections[i].isSlides)) {
            const bool isFlow = topic != Topic::AudioCodec && topic != Topic::MainPicture;
            if (sorted[i].second != i && isFlow) {
                suspect.Know(topic, {kOtherPlace});
            }
        }
    }
}

void FindOrder(Scene& scene) {
    const std::vector<MeantSection>& sections = scene.reading.sections;
    constexpr std::size_t most = 64;
    if (sections.size() < 2 || sections.size() > most) {
        return;
    }
    std::vector<Rank> ranks = RanksOf(sections);
    const auto wrong = std::is_sorted_until(ranks.begin(), ranks.end());
    if (wrong == ranks.end()) {
        return;
    }
    const TextLine& later = scene.reading.lines[sections[wrong->second].line];
    const auto before =
        std::find_if(ranks.begin(), wrong, [&](const Rank& rank) { return rank.first > wrong->first; });
    const TextLine& line = scene.reading.lines[sections[before->second].line];
    std::stable_sort(ranks.begin(), ranks.end());
    const std::size_t first = scene.reading.lines[sections.front().line].offset;
    const auto blame = [&](const Rule& rule, std::vector<ExplainTextChange> changes) -> Suspect& {
        return Blame(scene, rule, line,
                     {LineWords(line), " stands before line ", later.number, ", ", InQuotes(later.text), "."},
                     {"offer audio, main video, slides and floor control in this order"}, std::move(changes));
    };
    Suspect& suspect =
        blame(kOrder, {{first, scene.reading.text.size() - first, InOrder(scene.reading, ranks)}});
    suspect.lines.push_back(later.number);
    if (IsOrderBroken(scene.state)) {
        suspect.Know(Topic::Call, {kOtherPlace});
        KnowStreams(blame(kStreamOrder, {}), sections, ranks);
    }
}

void AddSecond(Scene& scene, const MeantSection& section, const MeantSection& firstSection) {
    const TextLine& line = scene.reading.lines[section.line];
    const TextLine& first = scene.reading.lines[firstSection.line];
    const bool isAudio = section.media == "audio";
    const bool isFloor = section.media == "application";
    Suspect& suspect = Blame(scene, kSecond, line,
                             {LineWords(line), " is the second ",
                              isAudio   ? "audio"
                              : isFloor ? "floor control"
                                        : "video",
                              " section of its kind, after line ", first.number, "."},
                             {"delete the section that begins with line ", line.number},
                             {{line.offset, SectionText(scene.reading, section).size(), {}}});
    suspect.lines.push_back(first.number);
    suspect.SayActed(
        {isAudio   ? "The record is filled from the first audio section, the answer takes its codec "
                     "from the last one that has a common codec (X08)."
         : isFloor ? "Each floor control section overwrites the one before it in the record, so "
                     "the last one stands; the first one gives the port of the answer (X11, B16)."
                   : "The first video section of a kind is taken; a further one is not read, and "
                     "it takes a place in the answer."});
    suspect.isTakenAway = true;
}

} // namespace

void FindSections(Scene& scene) {
    const MeantSection* first[4] = {};
    std::size_t compared = 0;
    for (const MeantSection& section : scene.reading.sections) {
        const int rank = RankOf(section, section.isSlides);
        const bool isKind = rank < 3 || section.IsFloor();
        if (section.formats.empty() || !isKind) {
            continue;
        }
        if (first[rank] != nullptr) {
            if (++compared <= kExplainTrials / 4) { // Each comparison reads the first section again.
                AddFirst(scene, *first[rank], section);
            }
            AddSecond(scene, section, *first[rank]);
        } else {
            first[rank] = &section;
        }
    }
    FindOrder(scene);
}

} // namespace explain
