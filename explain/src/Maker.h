// Suspects to findings: each edit is tried, and what it changes becomes the consequence.
//
// An edit is proposed as a cure only when its suspect is not found again in the edited text, and when no
// finding is opened there that is worse than the one it ends.
#pragma once

#include "BriefRun.h"
#include "Suspect.h"

#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace explain {

/// The suspects of a text in the order in which they are examined.
/// `skipped` becomes the number of those that were not made, because their rule has made too many.
/// With `isBrief` their sentences may be incomplete.
std::vector<Suspect> SuspectsOf(const ExplainInput& input, const Reading& reading, const State& state,
                                bool isBrief, std::size_t& skipped);

/// What the edit of a suspect changes, without the topics on which it only takes something away.
Effects Counted(const Suspect& suspect, Effects effects);
/// Whether the edited text has no suspect of the same rule and the same words at the same place.
bool IsEnded(const Suspect& suspect, const Reading& reading, const ExplainInput& cured, const State& then);

/// Examines suspects one by one (Maker.cpp) and checks their cures (MakerCures.cpp).
class Maker {
public:
    /// A brief maker writes no sentences and checks no cures.
    Maker(const ExplainInput& input, const Reading& reading, const State& state, OurTexts& texts,
          bool isBrief);

    /// Examines the next suspect.
    void Take(Suspect suspect);
    /// Ends the examination: the findings, most harmful first.
    std::vector<ExplainFinding> Finish();
    /// Suspicious places beyond kExplainTrials, not examined.
    std::size_t untried = 0;

private:
    /// A finding before it is written: what a suspect does on one topic.
    struct Weight {
        ExplainTopic topic;
        ExplainSeverity severity;
        int rank;
    };
    struct Ranked {
        ExplainFinding finding;
        int rank;
        std::size_t suspect; ///< index of the suspect that it comes from
    };
    using Place = std::tuple<std::string_view, std::string_view, std::size_t, ExplainTopic>;

    static std::vector<Weight> Weigh(const Suspect& suspect, const Effects& effects);
    Effects Try(Suspect& suspect);
    ExplainFinding FindingOf(const Suspect& suspect, const Effects& effects, const Weight& weight) const;
    Place PlaceOf(const Suspect& suspect, const Reading& reading, const ExplainCure& cure,
                  ExplainTopic topic) const;
    bool OpensWorse(const Suspect& suspect, ExplainSeverity severity);
    void DropBadCures();

    const ExplainInput& m_input;
    const Reading& m_reading;
    const State& m_state;
    OurTexts& m_texts;
    std::vector<Suspect> m_suspects;
    std::vector<Ranked> m_found;
    std::optional<BriefRuns> m_brief; ///< of a brief maker
    std::size_t m_tried = 0;
    std::size_t m_mostTrials; ///< kExplainTrials, and fewer for a text of more than 32 KiB
    std::size_t m_allowance;  ///< runs that are left for finding what cures open
};

} // namespace explain
