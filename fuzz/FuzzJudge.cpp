// Any bytes as two descriptions, the second of which is judged.
//
// The first zero byte separates them. Key texts are replaced by a key that no input contains.
#include "Cost.h"
#include "Input.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <SDPJudge.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using Violations = std::vector<JudgeViolation>;

constexpr fuzz::Budget kBudget = {"judging two texts", 32768, 512, 16384, 256};

/// One line that holds everything that a violation says.
std::string Written(const JudgeViolation& violation) {
    return std::string(violation.rule->id) + " line " + std::to_string(violation.line) + ", other " +
           std::to_string(violation.otherLine) + ", section " + std::to_string(violation.section) + ": " +
           violation.particulars;
}

/// The bytes before and after the first zero byte; a text is judged beside itself when there is none.
std::pair<std::string, std::string> Texts(fuzz::Input& input, const fuzz::Key& key) {
    const std::string bytes = input.Rest();
    const std::size_t end = bytes.find('\0');
    if (end == std::string::npos) {
        const std::string text = fuzz::Plant(bytes, key);
        return {text, text};
    }
    return {fuzz::Plant(bytes.substr(0, end), key), fuzz::Plant(bytes.substr(end + 1), key)};
}

std::size_t LinesOf(const std::string& text) {
    const auto ends = std::count_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; });
    return static_cast<std::size_t>(ends) + 1;
}

/// Each violation names a rule of the table and places that exist, in words that can be printed.
void CheckEach(const Violations& found, const std::string& other, const std::string& judged,
               const fuzz::Watch& watch) {
    const std::vector<JudgeRule>& rules = JudgeRules();
    std::size_t line = 0;
    for (const JudgeViolation& violation : found) {
        const bool isRule = violation.rule >= rules.data() && violation.rule < rules.data() + rules.size();
        fuzz::Require(isRule, "a violation names a rule of the table", violation.particulars, judged);
        const std::string text = Written(violation);
        fuzz::Require(violation.line >= line && violation.line <= LinesOf(judged),
                      "violations are in the order of their lines", text, judged);
        fuzz::Require(violation.otherLine <= LinesOf(other), "the other line exists", text, other);
        fuzz::Require(violation.section >= JudgeViolation::kSession, "the section exists", text, judged);
        const bool prints =
            std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F; });
        fuzz::Require(prints && text.back() == '.', "particulars are a printable sentence", text, judged);
        watch.Check("a violation", text);
        line = violation.line;
    }
}

/// What is wrong with a text alone is wrong beside every other text.
void CheckGrammarStays(const Violations& alone, const Violations& beside, const std::string& judged) {
    std::vector<std::string> all;
    for (const JudgeViolation& violation : beside) {
        all.push_back(Written(violation));
    }
    std::sort(all.begin(), all.end());
    for (const JudgeViolation& violation : alone) {
        const std::string text = Written(violation);
        fuzz::Require(std::binary_search(all.begin(), all.end(), text),
                      "a fault of the text does not depend on the other text", text, judged);
    }
}

/// A text that follows itself has its own faults and no other.
void CheckFollowsItself(const Violations& alone, const std::string& text) {
    const Violations twice = CheckNext(text, text);
    fuzz::Require(twice.size() == alone.size(), "a text may follow itself",
                  twice.size() == alone.size() ? "" : Written(twice.back()), text);
}

void Run(fuzz::Input input, std::uint64_t secret) {
    const fuzz::Key key(secret);
    fuzz::Watch watch;
    watch.Add(key);
    const auto [other, judged] = Texts(input, key);
    const fuzz::Meter meter;
    const Violations answer = CheckAnswer(other, judged);
    const Violations next = CheckNext(other, judged);
    fuzz::CheckCost(kBudget, meter.Read(), other.size() + judged.size());
    CheckEach(answer, other, judged, watch);
    CheckEach(next, other, judged, watch);
    const Violations alone = CheckNext("", judged);
    fuzz::Reached(alone.empty() ? "a text without a fault" : "a text with a fault");
    if (answer.size() > alone.size()) {
        fuzz::Reached("an answer that does not fit its offer");
    }
    CheckGrammarStays(alone, answer, judged);
    CheckGrammarStays(alone, next, judged);
    CheckFollowsItself(alone, judged);
}

} // namespace

void FuzzJudge(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, Run);
}
