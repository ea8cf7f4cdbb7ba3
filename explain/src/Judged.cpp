// Stage: what the negotiation layer and its judge know of the same texts.
// Input: everything that decides how the call comes up. Output: violations as findings, repairs by ledger
// row. Touches nothing; a negotiator of its own reads the text.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPJudge.h"
#include "SDPNegotiator.h"

namespace explain {

std::vector<ExplainFinding> JudgedFindings(const ExplainInput& input) {
    const bool isTheirs = input.remoteAnswers && !input.ourOffer.empty();
    if (!isTheirs && input.ourAnswer.empty()) {
        return {};
    }
    std::vector<ExplainFinding> findings;
    const bool isEmpty = isTheirs && Read(input.remote).sections.empty();
    for (const JudgeViolation& violation :
         isTheirs ? CheckAnswer(input.ourOffer, input.remote) : CheckAnswer(input.remote, input.ourAnswer)) {
        ExplainFinding finding;
        finding.id = violation.rule->id;
        finding.topic = ExplainTopic::Call;
        finding.severity = ExplainSeverity::Warning;
        const std::size_t line = isTheirs ? violation.line : violation.otherLine;
        if (line != 0) {
            finding.lines.push_back(line);
        }
        finding.what = (isTheirs ? "" : "In our answer: ") + violation.particulars;
        finding.acted = std::string(violation.rule->sentence) + " (" + violation.rule->clause + ")";
        finding.comes =
            isTheirs ? "This side takes the answer all the same; a strict element on its way may refuse it."
                     : "A strict far end refuses our answer.";
        if (isTheirs && isEmpty) {
            finding.severity = ExplainSeverity::Error;
            finding.comes = "The answer has no section, so no stream comes up.";
        }
        findings.push_back(std::move(finding));
    }
    return findings;
}

std::vector<std::pair<std::string_view, std::string_view>> NeededRepairs(const ExplainInput& input) {
    SDPNegotiator call;
    LocalSDP local = input.local;
    // A repair concerns the far end's text; a local fault must not keep it from being read.
    local.strDefaultIPAddr = "192.0.2.1";
    local.iMaxBandwidth = 0;
    if (!call.SetLocal(local).isTaken) {
        return {};
    }
    call.SetSrtp(input.srtp ? SDPNegotiator::Srtp::Wanted : SDPNegotiator::Srtp::Off);
    if (input.remoteAnswers) {
        call.Offer();
        call.Accept(input.remote);
    } else {
        call.Answer(input.remote);
    }
    std::vector<std::pair<std::string_view, std::string_view>> repairs;
    for (const SDPNegotiator::Repair& repair : call.Repairs()) {
        repairs.emplace_back(repair.ledger, repair.id);
    }
    return repairs;
}

} // namespace explain
