// cmsdp check: would a strict reader take this answer? Every rule is the judge's (SDPJudge.h); the verb reads
// two files byte for byte and words the violations. A log or a SIP message with a description in it was never
// sent as a description, so these are cleaned.
//
// Tests: tests/tool/check.cases
#include "Clean.h"
#include "RemoteText.h"
#include "SDPJudge.h"
#include "SipText.h"
#include "Timeline.h"
#include "Verbs.h"
#include "Words.h"

#include <nlohmann/json.hpp>

namespace cmsdp {

namespace {

using nlohmann::ordered_json;

// J24, line 6 (offer line 6), RFC 3264, 6.1: An accepted section ... Format '8' was not offered ...
std::string Line(const JudgeViolation& violation) {
    std::string text = violation.rule->id;
    text += violation.line == 0 ? ", whole text" : ", line " + std::to_string(violation.line);
    if (violation.otherLine != 0) {
        text += " (offer line " + std::to_string(violation.otherLine) + ")";
    }
    return text + ", " + violation.rule->clause + ": " + violation.rule->sentence + " " +
           violation.particulars + "\n";
}

ordered_json NumberOrNull(std::size_t number) {
    return number == 0 ? ordered_json(nullptr) : ordered_json(number);
}

ordered_json Entry(const JudgeViolation& violation) {
    ordered_json entry;
    entry["rule"] = violation.rule->id;
    entry["clause"] = violation.rule->clause;
    entry["sentence"] = violation.rule->sentence;
    entry["particulars"] = violation.particulars;
    entry["line"] = NumberOrNull(violation.line);
    entry["offer_line"] = NumberOrNull(violation.otherLine);
    entry["section"] = violation.section == JudgeViolation::kSession ? ordered_json(nullptr)
                                                                     : ordered_json(violation.section);
    return entry;
}

std::string Json(const std::vector<JudgeViolation>& violations) {
    ordered_json root;
    root["schema"] = "cmsdp.check/1";
    root["violations"] = ordered_json::array();
    for (const JudgeViolation& violation : violations) {
        root["violations"].push_back(Entry(violation));
    }
    return root.dump(2) + "\n";
}

std::string Lines(const std::vector<JudgeViolation>& violations) {
    std::string text;
    for (const JudgeViolation& violation : violations) {
        text += Line(violation);
    }
    return text;
}

std::string ReadChecked(const std::string& name, std::vector<std::string>& notes) {
    std::string text = ReadDescription(name);
    RemoteSource source;
    source.name = name;
    source.verb = "check";
    if (OnlySipMessage(text) || HoldsSipMessages(text)) {
        return CleanedPaste(source, std::move(text), notes);
    }
    Draft draft = Draft::Of(text);
    std::vector<std::string> steps;
    if (!HoldsSdpLine(text, LineEnd::Any)) {
        Clean(draft, 1, steps, LineEnd::CrLf, source.hasNth);
    }
    if (!HoldsSdpLine(draft.text)) {
        return text;
    }
    notes.insert(notes.end(), steps.begin(), steps.end());
    return draft.text;
}

} // namespace

Outcome RunCheck(const CommandLine& line, const Screen& /*screen*/) {
    if (line.checkedOffer == "-" && line.checkedAnswer == "-") {
        throw ToolError(kUsage, "OFFER and ANSWER cannot both be standard input; see cmsdp check --help");
    }
    Outcome outcome;
    const std::string offer = ReadChecked(line.checkedOffer, outcome.notes);
    const std::string answer = ReadChecked(line.checkedAnswer, outcome.notes);
    const std::vector<JudgeViolation> violations = CheckAnswer(offer, answer);
    outcome.text = line.json ? Json(violations) : Lines(violations);
    outcome.status = violations.empty() ? kDone : kNothingNegotiated;
    return outcome;
}

} // namespace cmsdp
