// cmsdp call: what do two of us negotiate, and what happens then? Both sides are negotiators.
//
// Tests: tests/tool/call.cases, CallTest.cpp
#include "Fit.h"
#include "FitJson.h"
#include "FitTable.h"
#include "Scenario.h"
#include "Verbs.h"
#include "Visible.h"

#include <algorithm>

namespace cmsdp {

namespace {

using nlohmann::ordered_json;
using Streams = std::vector<SDPNegotiator::Stream>;

const char* SideName(bool isAnswerer) {
    return isAnswerer ? "answerer" : "offerer";
}

// A description inside other text: indented, in this system's line ends.
std::string Indented(const std::string& description) {
    std::string out;
    std::size_t begin = 0;
    while (begin < description.size()) {
        const std::size_t end = std::min(description.find("\r\n", begin), description.size());
        out += "  " + Visible(description.substr(begin, end - begin)) + "\n";
        begin = end + 2;
    }
    return out;
}

std::string Refusal(const Exchange& exchange) {
    return exchange.offer.empty()
               ? "no offer: " + exchange.reason
               : "refused with " + std::to_string(exchange.status) + ": " + exchange.reason;
}

std::string ExchangeAsText(const Exchange& exchange, Secrets& secrets) {
    std::string out;
    if (!exchange.offer.empty()) {
        out += "offer\n" + Indented(secrets.Hide(exchange.offer)) + "\n";
    }
    return out +
           (exchange.reason.empty() ? "answer\n" + Indented(secrets.Hide(exchange.answer))
                                    : Refusal(exchange) + "\n") +
           "\n";
}

std::string StepAsText(const StepResult& step, Secrets& secrets, const Screen& screen) {
    std::string out;
    if (!step.name.empty()) {
        out += "\nthen " + std::string(SideName(step.byAnswerer)) + ": " + step.name + "\n\n";
    }
    for (const Exchange& exchange : step.exchanges) {
        out += ExchangeAsText(exchange, secrets);
    }
    out += step.exchanges.empty() ? "no offer is needed\n\n" : "";
    const std::vector<Block> blocks =
        SideBySide(StreamBlocks(step.offerer, secrets), StreamBlocks(step.answerer, secrets));
    return blocks.empty() ? out
                          : out + RenderTable({"offerer", "answerer"}, blocks, CellWidth(screen.width, 2),
                                              screen.colour);
}

ordered_json StepAsJson(const StepResult& step, Secrets& secrets) {
    ordered_json object;
    object["then"] = step.name.empty() ? ordered_json() : ordered_json(step.name);
    object["by"] = SideName(step.byAnswerer);
    object["exchanges"] = ordered_json::array();
    for (const Exchange& exchange : step.exchanges) {
        const bool isRefused = !exchange.reason.empty();
        object["exchanges"].push_back(
            {{"offer", TextJson(exchange.offer, secrets)},
             {"answer", TextJson(exchange.answer, secrets)},
             {"status", exchange.status == 0 ? ordered_json() : ordered_json(exchange.status)},
             {"why", isRefused ? ordered_json(exchange.reason) : ordered_json()}});
    }
    object["offerer"] = StreamsJson(step.offerer, secrets);
    object["answerer"] = StreamsJson(step.answerer, secrets);
    return object;
}

bool HasStream(const Streams& streams) {
    return std::any_of(streams.begin(), streams.end(), [](const SDPNegotiator::Stream& stream) {
        return IsAgreed(stream) && stream.media != SDPNegotiator::Media::FloorControl;
    });
}

std::string AsText(const std::vector<StepResult>& steps, Secrets& secrets, const Screen& screen) {
    std::string out;
    for (const StepResult& step : steps) {
        out += StepAsText(step, secrets, screen);
    }
    return out;
}

std::string AsJson(const std::vector<StepResult>& steps, Secrets& secrets) {
    ordered_json root;
    root["schema"] = "cmsdp.call/2";
    root["negotiated"] = HasStream(steps.back().offerer) && HasStream(steps.back().answerer);
    root["steps"] = ordered_json::array();
    for (const StepResult& step : steps) {
        root["steps"].push_back(StepAsJson(step, secrets));
    }
    return Written(root);
}

void JudgeSide(Outcome& outcome, const Streams& streams, const char* whose, const CommandLine& line) {
    const std::string missing = MissingOf(streams, line.require);
    if (!missing.empty()) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back(std::string(whose) + ": required and not negotiated: " + missing);
    }
}

// The exit status is that of the call as it stands after the last step.
void JudgeCall(Outcome& outcome, const std::vector<StepResult>& steps, const CommandLine& line) {
    for (const StepResult& step : steps) {
        for (const Exchange& exchange : step.exchanges) {
            if (!exchange.reason.empty()) {
                const bool isOfferMissing = exchange.offer.empty();
                outcome.notes.push_back(std::string(SideName(step.byAnswerer != !isOfferMissing)) + ": " +
                                        Refusal(exchange));
            }
        }
    }
    const StepResult& last = steps.back();
    if (!HasStream(last.offerer) || !HasStream(last.answerer)) {
        outcome.status = kNothingNegotiated;
        outcome.notes.emplace_back("nothing was negotiated");
    }
    JudgeSide(outcome, last.offerer, "offerer", line);
    JudgeSide(outcome, last.answerer, "answerer", line);
}

} // namespace

Outcome RunCall(const CommandLine& line, const Screen& screen) {
    const Capabilities offererSide = SideOf(line.offerer);
    const Capabilities answererSide = SideOf(line.answerer, BuiltInAnswerer());
    SDPNegotiator offerer = NegotiatorOf(offererSide, line.offerer.value_or("the built-in set"));
    SDPNegotiator answerer = NegotiatorOf(answererSide, line.answerer.value_or("the built-in set"));
    PresentIfAble(offerer, offererSide);
    std::vector<PlannedStep> scenario;
    for (const std::string& words : line.then) {
        scenario.push_back(ParseStep(words));
    }
    const std::vector<StepResult> steps = PlayCall(offerer, answerer, scenario);

    Outcome outcome;
    Secrets secrets(line.showSecrets);
    outcome.text = line.json ? AsJson(steps, secrets) : AsText(steps, secrets, screen);
    JudgeCall(outcome, steps, line);
    NoteHidden(outcome, secrets);
    return outcome;
}

} // namespace cmsdp
