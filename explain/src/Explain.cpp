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

} // namespace

} // namespace explain

Explanation Explain(const ExplainInput& input) {
    using namespace explain;
    const Reading reading = Read(input.remote);
    const State state = RunState(input);
    Maker maker(input, reading, state);
    std::size_t skipped = 0;
    for (Suspect& suspect : SuspectsOf(input, reading, state, skipped)) {
        maker.Take(std::move(suspect));
    }
    Explanation explanation;
    explanation.lines = ExplainLines(input);
    explanation.findings = maker.Finish();
    NameRepairs(explanation.findings, input);
    for (ExplainFinding& judged : JudgedFindings(input)) {
        explanation.findings.push_back(std::move(judged));
    }
    std::stable_sort(
        explanation.findings.begin(), explanation.findings.end(),
        [](const ExplainFinding& a, const ExplainFinding& b) { return a.severity > b.severity; });
    explanation.untried = maker.untried + skipped;
    return explanation;
}
