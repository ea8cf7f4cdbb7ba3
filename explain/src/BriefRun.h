// Runs of an edited text whose findings are counted only: of the lines that are read, and where the edit
// touches one section, of that section alone.
#pragma once

#include "Effects.h"
#include "Reading.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace explain {

class BriefRuns {
public:
    /// `known` is the run of the input as it is. All have to outlive the runs.
    BriefRuns(const ExplainInput& input, const Reading& reading, const State& known, OurTexts& texts);

    /// What an edit of the remote text changes.
    Effects EffectsOf(const ExplainCure& cure);
    /// The edited text without lines that nothing reads; a run of it is as one of the edited text.
    std::string Lean(const ExplainCure& cure) const { return Edited(cure, 0, m_input.remote.size()); }

private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    void FindIdle(const Reading& reading);
    void FindSections(const Reading& reading);
    std::string Edited(const ExplainCure& cure, std::size_t begin, std::size_t end) const;
    std::size_t SectionOf(const ExplainCure& cure) const;
    bool MayChangeAnswer(const ExplainCure& cure, std::size_t place) const;
    bool RunSection(const ExplainCure& cure, State& state) const;
    void TakeRecord(std::size_t place, const RemoteSDP& alone, RemoteSDP& record) const;

    const ExplainInput& m_input;
    const State& m_known;
    OurTexts& m_texts;
    ExplainInput m_edited;         ///< with the text of the edit that is tried
    std::vector<Range> m_idle;     ///< lines that change nothing, with their ends
    std::vector<Range> m_sections; ///< of the far end's sections; empty when one is not found in the text
    std::string m_session;         ///< the lines before the first section
};

} // namespace explain
