// Any bytes as a text with SIP messages, shown as a timeline.
//
// Byte 0 chooses the options; the rest is the text. Steps are paired consistently, each description is in
// the input, and neither the text nor the JSON shows a key.
#include "Cost.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <SipHeaders.h>
#include <Timeline.h>
#include <TimelineText.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace fuzz {

namespace {

using cmsdp::Call;
using cmsdp::Step;
using cmsdp::StepKind;

/// A step has texts of its own, and a message is remembered by its description.
constexpr Budget kCalls = {"calls", 65536, 256, 65536, 1024};

/// Explaining costs far more than reading, so long calls are shown without it.
constexpr std::size_t kMostExplained = 3;

bool IsDescription(const Step& step) {
    return step.kind == StepKind::Offer || step.kind == StepKind::Answer;
}

void CheckStep(const Call& call, std::size_t index, const std::string& text) {
    const Step& step = call.steps[index];
    Reached(step.kind == StepKind::Offer ? "an offer"
            : IsDescription(step)        ? "an answer"
                                         : "another message");
    Require(IsDescription(step) || step.text.empty(), "only offers and answers describe", step.text, text);
    const bool isDecoded = cmsdp::LowerCase(text).find("transfer-encoding") != std::string::npos;
    Require(isDecoded || text.find(step.text) != std::string::npos, "a description is in the input",
            step.text, text);
    if (step.partner && step.kind == StepKind::End) {
        Require(IsDescription(call.steps.at(*step.partner)), "a branch has a description", step.message,
                text);
    } else if (step.partner) {
        Require(*step.partner < call.steps.size(), "the partner is a step", step.message, text);
        const Step& partner = call.steps[*step.partner];
        Require(IsDescription(partner), "the partner has a description", partner.message, text);
        Require(partner.from != step.from, "the partner is of the other side", partner.message, text);
        Require((partner.kind == StepKind::Offer) == (step.kind != StepKind::Offer),
                "an offer has an answer, anything else an offer", partner.message, text);
    }
    if (step.previous) {
        Require(*step.previous < index, "the previous step comes before", step.message, text);
        const Step& previous = call.steps[*step.previous];
        Require(IsDescription(previous) && previous.from == step.from,
                "the previous step is a description of the same side", previous.message, text);
    }
}

void CheckShown(std::vector<Call> calls, std::size_t shown, const cmsdp::CommandLine& line,
                const Watch& watch) {
    const cmsdp::Capabilities side = cmsdp::BuiltInCapabilities();
    if (calls[shown].steps.size() <= kMostExplained) {
        cmsdp::Evaluate(calls[shown], side, std::nullopt);
    }
    const std::string text = cmsdp::TimelineText(calls, shown, line, side);
    const auto isShowable = [](char c) { return (c >= ' ' && c < '\x7f') || c == '\n'; };
    Require(std::all_of(text.begin(), text.end(), isShowable), "a timeline is printable", text, "");
    watch.Check("the timeline", text);
    const std::string json = cmsdp::TimelineJson(calls, shown, line, side);
    Require(nlohmann::json::accept(json), "a timeline as JSON is JSON", json, "");
    watch.Check("the timeline as JSON", json);
}

void Run(Input input, std::uint64_t secret) {
    const Key theirs(secret ^ 0xca11U);
    Watch watch;
    watch.Add(theirs);
    const std::uint8_t options = input.Byte();
    cmsdp::CommandLine line;
    line.lines = (options & 1U) != 0;
    line.call = (options & 2U) != 0 ? 1 : 0;
    const std::string text = PlantInWords(input.Rest(), theirs);
    std::vector<std::string> notes;
    const Meter meter;
    std::vector<Call> calls = cmsdp::CallsOfSipText(text, true, notes);
    CheckCost(kCalls, meter.Read(), text.size());
    for (const Call& call : calls) {
        for (std::size_t i = 0; i < call.steps.size(); ++i) {
            CheckStep(call, i, text);
        }
    }
    if (!calls.empty()) {
        CheckShown(std::move(calls), 0, line, watch);
    }
}

} // namespace

} // namespace fuzz

void FuzzCalls(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
