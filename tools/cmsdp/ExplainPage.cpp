// Stage: none; what a page shows.
// Input: the command line, and a description or a call. Output: the page as the outcome's text.
// Touches nothing.
// Explain and the call decide which text is shown beside which one; nothing is judged here.
// Test: tests/tool/PageTest.cpp
#include "ExplainPage.h"

#include "Findings.h"
#include "Page.h"
#include "TimelineText.h"
#include "Verbs.h"

#include <filesystem>

namespace cmsdp {

namespace {

std::string BaseName(const std::string& file) {
    return file == "-" ? "standard input"
                       : std::filesystem::path(file).lexically_normal().filename().string();
}

// A page takes the place of no file that was read for it.
void CheckTarget(const CommandLine& line) {
    const std::string inputs[] = {line.pcap.value_or(line.remote.name), line.local.value_or(""),
                                  line.before.value_or(""), line.ourOffer.value_or("")};
    for (const std::string& input : inputs) {
        std::error_code error;
        if (!input.empty() && *line.html != "-" && std::filesystem::equivalent(*line.html, input, error)) {
            throw ToolError(kUsage, "--html " + Quoted(*line.html) +
                                        " names a file that is read; name another one for the page");
        }
    }
}

void Finish(Outcome& outcome, const CommandLine& line, PageData& page) {
    CheckTarget(line);
    NumberPage(page);
    outcome.text = PageOf(page);
    outcome.file = *line.html == "-" ? "" : *line.html;
}

// Our own text beside the far end's: the one that was given, otherwise the one that SDPHandler writes.
PageText OurText(const CommandLine& line, const ExplainInput& input, const PageText& theirs) {
    std::string text = input.remoteAnswers ? input.ourOffer : theirs.report->answer;
    std::string origin = "written by SDPHandler";
    if (line.ourOffer) {
        origin = BaseName(*line.ourOffer);
    } else if (input.remoteAnswers) {
        SDPHandler handler;
        Prepare(handler, SideOf(line.local));
        text = handler.GetLocalSDP();
    }
    PageText ours = ShownForPage(input, text, !input.remoteAnswers);
    ours.title = input.remoteAnswers ? "Our offer" : "Our answer";
    ours.origin = origin + "; the verdicts are those of a reader like this side";
    return ours;
}

// The description of a step, read by its receiver when it was evaluated.
PageText TextOfStep(const Call& call, std::size_t index, const Capabilities& receiver) {
    const Step& step = call.steps[index];
    const ExplainInput input = InputOfStep(call, index, receiver);
    PageText text;
    if (step.isEvaluated) {
        text = ReadForPage(input, receiver, step.findings, step.untried);
    } else {
        text = ShownForPage(InputOf(receiver), step.text, step.kind == StepKind::Answer);
    }
    text.title = std::string("The ") + SideName(step.from) + "'s " + StepKindName(step.kind);
    text.origin = StepHead(step, index + 1);
    text.reading = text.title + ", read by the " + SideName(OtherSide(step.from));
    text.reader = SideName(OtherSide(step.from));
    text.writer = SideName(step.from);
    text.readerIsLeft = step.from == Side::Callee;
    text.step = index + 1;
    return text;
}

// Every offer with its answer, and answers whose offer was not seen.
std::vector<PageExchange> ExchangesOf(const Call& call, const Capabilities& receiver) {
    std::vector<PageExchange> exchanges;
    for (std::size_t i = 0; i < call.steps.size(); ++i) {
        const Step& step = call.steps[i];
        PageExchange exchange;
        if (step.kind == StepKind::Offer) {
            exchange.title = "step " + std::to_string(i + 1);
            exchange.offer = TextOfStep(call, i, receiver);
            if (step.partner) {
                exchange.title =
                    "steps " + std::to_string(i + 1) + " and " + std::to_string(*step.partner + 1);
                exchange.answer = TextOfStep(call, *step.partner, receiver);
            }
        } else if (step.kind == StepKind::Answer &&
                   (!step.partner || call.steps[*step.partner].partner != i)) {
            exchange.title = "step " + std::to_string(i + 1);
            exchange.answer = TextOfStep(call, i, receiver);
        } else {
            continue;
        }
        exchanges.push_back(std::move(exchange));
    }
    return exchanges;
}

} // namespace

void MakePage(Outcome& outcome, const CommandLine& line, const ExplainInput& input) {
    const Explanation explanation = Explain(input);
    PageText theirs =
        ReadForPage(input, SideOf(line.local), Asked(line, explanation.findings), explanation.untried);
    theirs.title = input.remoteAnswers ? "The far end's answer" : "The far end's offer";
    theirs.origin = BaseName(line.remote.name);
    theirs.reading = theirs.title + ", read by this side";
    theirs.reader = "this side";
    theirs.writer = "far end";

    PageData page;
    page.title = BaseName(line.remote.name);
    page.notes = outcome.notes;
    PageExchange exchange;
    PageText ours = OurText(line, input, theirs);
    if (input.remoteAnswers) {
        std::swap(ours, theirs);
    }
    exchange.offer = std::move(theirs);
    exchange.answer = std::move(ours);
    page.exchanges.push_back(std::move(exchange));
    Finish(outcome, line, page);
}

void MakePage(Outcome& outcome, const CommandLine& line, const std::vector<Call>& calls, std::size_t shown,
              const Capabilities& receiver) {
    Call call = calls[shown];
    for (Step& step : call.steps) {
        step.findings = Asked(line, step.findings);
    }
    PageData page;
    page.title = BaseName(line.pcap ? *line.pcap : line.remote.name) + ", call " + std::to_string(shown + 1) +
                 " of " + std::to_string(calls.size());
    page.notes = outcome.notes;
    page.notes.insert(page.notes.end(), call.notes.begin(), call.notes.end());
    page.call = &call;
    page.exchanges = ExchangesOf(call, receiver);
    Finish(outcome, line, page);
}

} // namespace cmsdp
