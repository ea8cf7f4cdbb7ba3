// Stage: a call that was read, explained step by step.
// Input: a call and what the receiver can do. Output: for each description its changes and findings.
// Touches nothing.
// Every sentence about a description is explain's; this decides with which texts it compares the one that is
// read.
// Tests: tests/tool/calls.cases, TimelineTest.cpp
#include "Timeline.h"

#include "Agreements.h"
#include "Outcome.h"
#include "Words.h"

namespace cmsdp {

namespace {

// "a; b; c", at most four.
std::string Joined(const std::vector<std::string>& phrases) {
    constexpr std::size_t most = 4;
    std::string text;
    for (std::size_t i = 0; i < phrases.size() && i < most; ++i) {
        text += (i == 0 ? "" : "; ") + phrases[i];
    }
    return text + (phrases.size() > most ? "; and " + std::to_string(phrases.size() - most) + " more" : "");
}

// A text of which the capture holds the beginning alone is compared with nothing.
void LeaveCut(const Call& call, Step& step) {
    if (step.previous && call.steps[*step.previous].isCut) {
        step.previous.reset();
    }
    if (step.kind == StepKind::Answer && step.partner && call.steps[*step.partner].isCut) {
        step.notes.push_back("the offer of step " + std::to_string(*step.partner + 1) +
                             " is cut; the one that the local file makes is taken for it");
    }
}

} // namespace

const char* SideName(Side side) {
    return side == Side::Caller ? "caller" : "callee";
}

Side OtherSide(Side side) {
    return side == Side::Caller ? Side::Callee : Side::Caller;
}

const char* StepKindName(StepKind kind) {
    static constexpr const char* names[] = {"offer", "answer", "refusal", "challenge", "cancel", "end"};
    return names[static_cast<std::size_t>(kind)];
}

Side SideNamed(const Call& call, const std::string& name) {
    for (const Side side : {Side::Caller, Side::Callee}) {
        const std::string& address = side == Side::Caller ? call.caller : call.callee;
        if (name == SideName(side) || (!address.empty() && (name == address || name == HostOf(address)))) {
            return side;
        }
    }
    const std::string addresses = call.caller.empty()
                                      ? " or callee"
                                      : ", callee, " + HostOf(call.caller) + " or " + HostOf(call.callee);
    throw ToolError(kUsage, "--we: " + Quoted(name) + " is no side of the call; name caller" + addresses);
}

ExplainInput InputOf(const Capabilities& side) {
    ExplainInput input;
    input.local = side.local;
    // An assignment leaves the floor control ids of the record as they are.
    input.local.iBfcpConfid = side.local.iBfcpConfid;
    input.local.iBfcpUserid = side.local.iBfcpUserid;
    input.srtp = side.srtp;
    input.floorControl = side.floorControl != FloorControl::kOff;
    input.floorControlIfOffered = side.floorControl == FloorControl::kAuto;
    input.servedSections = side.servedSections;
    return input;
}

ExplainInput InputOfStep(const Call& call, std::size_t step, const Capabilities& receiver) {
    const Step& read = call.steps[step];
    ExplainInput input = InputOf(receiver);
    input.remote = read.text;
    input.remoteAnswers = read.kind == StepKind::Answer;
    if (read.previous && !call.steps[*read.previous].isCut) {
        input.before = call.steps[*read.previous].text;
    }
    if (read.partner && !call.steps[*read.partner].isCut) {
        (input.remoteAnswers ? input.ourOffer : input.ourAnswer) = call.steps[*read.partner].text;
    }
    return input;
}

void Evaluate(Call& call, const Capabilities& receiver, std::optional<Side> we) {
    for (std::size_t i = 0; i < call.steps.size(); ++i) {
        Step& step = call.steps[i];
        const bool isRead = step.kind == StepKind::Offer || step.kind == StepKind::Answer;
        if (!isRead || step.isCut || (we && *we == step.from)) {
            continue;
        }
        LeaveCut(call, step);
        const ExplainInput input = InputOfStep(call, i, receiver);
        std::vector<std::string> changes =
            step.previous ? ExplainDifference(input, input.before, input.remote) : ExplainStart(input);
        if (!step.isIgnored) {
            step.changes = std::move(changes);
        } else if (!changes.empty()) {
            step.notes.push_back("if this text counted: " + Joined(changes));
        }
        Explanation explanation = Explain(input);
        step.findings = std::move(explanation.findings);
        step.untried = explanation.untried;
        step.isEvaluated = true;
    }
}

} // namespace cmsdp
