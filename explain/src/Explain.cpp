// Stage: the whole explanation.
// Input: everything that decides how the call comes up. Output: lines and findings.
// Touches nothing.
// Test: tests/explain/LawTest.cpp, tests/explain/judge_cases.py
#include "SDPExplain.h"

#include "Maker.h"

#include <algorithm>

namespace explain {

namespace {

/// A finding that the negotiation layer ends says so.
void NameRepairs(std::vector<ExplainFinding>& findings, const ExplainInput& input) {
    const auto repairs = NeededRepairs(input);
    for (ExplainFinding& finding : findings) {
        for (const auto& repair : repairs) {
            const bool isMet = !finding.ledger.empty() && finding.field == nullptr &&
                               repair.first.find(finding.ledger) != std::string_view::npos;
            if (isMet && finding.repair.empty()) {
                finding.repair = repair.second;
            }
        }
    }
}

std::vector<ExplainFinding> FindingsOf(const ExplainInput& input, bool isBrief, OurTexts& texts,
                                       std::size_t& untried) {
    const Reading reading = Read(input.remote);
    State state;
    Run(input, state, nullptr, &texts);
    Maker maker(input, reading, state, texts, isBrief);
    std::size_t skipped = 0;
    for (Suspect& suspect : SuspectsOf(input, reading, state, isBrief, skipped)) {
        maker.Take(std::move(suspect));
    }
    std::vector<ExplainFinding> findings = maker.Finish();
    untried = maker.untried + skipped;
    if (!isBrief) {
        NameRepairs(findings, input);
    }
    for (ExplainFinding& judged : JudgedFindings(input)) {
        const auto place = std::upper_bound(
            findings.begin(), findings.end(), judged,
            [](const ExplainFinding& a, const ExplainFinding& b) { return a.severity > b.severity; });
        findings.insert(place, std::move(judged));
    }
    return findings;
}

} // namespace

} // namespace explain

Explanation Explain(const ExplainInput& input) {
    Explanation explanation;
    explanation.lines = ExplainLines(input);
    explain::OurTexts texts;
    explanation.findings = explain::FindingsOf(input, false, texts, explanation.untried);
    return explanation;
}

std::vector<ExplainFinding> ExplainFindings(const ExplainInput& input) {
    return ExplainCounter().Findings(input);
}

struct ExplainCounter::Kept {
    explain::OurTexts texts;
};

ExplainCounter::ExplainCounter() : m_kept(std::make_unique<Kept>()) {}
ExplainCounter::~ExplainCounter() = default;

std::vector<ExplainFinding> ExplainCounter::Findings(const ExplainInput& input) {
    std::size_t untried = 0;
    std::vector<ExplainFinding> findings = explain::FindingsOf(input, true, m_kept->texts, untried);
    for (ExplainFinding& finding : findings) {
        finding.what.clear(); // Those of the judge have sentences.
        finding.acted.clear();
        finding.comes.clear();
    }
    return findings;
}
