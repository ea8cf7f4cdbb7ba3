// Stage: none; a call as JSON.
// Input: calls, one of them evaluated. Output: the list of calls and the steps of that one.
// Touches nothing.
// Key text becomes "***" in the descriptions, too.
// Test: tests/tool/calls.cases
#include "ExplainText.h"
#include "Findings.h"
#include "Redact.h"
#include "TimelineText.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace cmsdp {

namespace {

using Json = nlohmann::ordered_json;

std::string Hidden(const std::string& text) {
    return Secrets(false).Hide(text);
}

Json Texts(const std::vector<std::string>& texts) {
    Json list = Json::array();
    for (const std::string& text : texts) {
        list.push_back(Hidden(text));
    }
    return list;
}

Json StepNumber(const std::optional<std::size_t>& index) {
    return index ? Json(*index + 1) : Json();
}

Json TextOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(Hidden(text));
}

// Captures count microseconds at best; what is beyond is the error of a difference ("0.30000000000000004").
Json SecondsJson(double seconds) {
    constexpr double perSecond = 1e6;
    return std::round(seconds * perSecond) / perSecond;
}

Json CallJson(const Call& call, std::size_t number) {
    Json entry;
    entry["number"] = number;
    entry["call_id"] = Hidden(call.id);
    entry["caller"] = TextOrNull(call.callerName);
    entry["caller_address"] = TextOrNull(call.caller);
    entry["callee"] = TextOrNull(call.calleeName);
    entry["callee_address"] = TextOrNull(call.callee);
    entry["start_s"] = call.start == 0 ? Json() : SecondsJson(call.start);
    entry["steps"] = call.steps.size();
    entry["notes"] = Texts(call.notes);
    return entry;
}

Json StepJson(const Call& call, std::size_t index, const CommandLine& line, const Capabilities& receiver) {
    const Step& step = call.steps[index];
    Json entry;
    entry["number"] = index + 1;
    entry["seconds"] = step.seconds ? SecondsJson(*step.seconds) : Json();
    entry["from"] = SideName(step.from);
    entry["kind"] = StepKindName(step.kind);
    entry["again"] = step.isReOffer;
    entry["status"] = step.status == 0 ? Json() : Json(step.status);
    entry["message"] = Hidden(step.message);
    entry["sender"] = TextOrNull(step.sender);
    entry["receiver"] = TextOrNull(step.receiver);
    entry["repeats"] = step.repeats;
    entry["partner"] = StepNumber(step.partner);
    entry["previous"] = StepNumber(step.previous);
    entry["notes"] = Texts(step.notes);
    entry["text"] = TextOrNull(step.text);
    entry["read_by"] = step.isEvaluated ? Json(SideName(OtherSide(step.from))) : Json();
    entry["changes"] = Texts(AskedPhrases(line, step.changes));
    entry["findings"] = FindingsJson(Asked(line, step.findings));
    entry["not_examined"] = step.untried;
    entry["lines"] = step.isEvaluated && line.lines
                         ? LinesJson(ExplainLines(InputOfStep(call, index, receiver)))
                         : Json::array();
    return entry;
}

} // namespace

std::string TimelineJson(const std::vector<Call>& calls, std::size_t shown, const CommandLine& line,
                         const Capabilities& receiver) {
    Json root;
    root["schema"] = "cmsdp.timeline/1";
    root["calls"] = Json::array();
    for (std::size_t i = 0; i < calls.size(); ++i) {
        root["calls"].push_back(CallJson(calls[i], i + 1));
    }
    root["call"] = shown + 1;
    root["steps"] = Json::array();
    for (std::size_t i = 0; i < calls[shown].steps.size(); ++i) {
        root["steps"].push_back(StepJson(calls[shown], i, line, receiver));
    }
    return AsText(root);
}

} // namespace cmsdp
