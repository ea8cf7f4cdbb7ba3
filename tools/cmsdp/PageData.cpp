// Stage: none; what a page shows of a description.
// Input: an ExplainInput. Output: its lines, findings, pairs and streams, keys hidden.
// Touches nothing.
// Sentences and verdicts are explain's; the streams are those of `cmsdp inspect`.
// Test: tests/tool/PageTest.cpp
#include "PageData.h"

#include "Draft.h"
#include "Redact.h"

#include "SDPHandler.h"

namespace cmsdp {

namespace {

// The record that the media engine gets, and the verdict on each stream. An answer that was sent decides
// which streams come up, and is judged by explain; of the one that would be written, the verdict is part of
// the report.
Report ReportOf(const ExplainInput& input, const Capabilities& side) {
    SDPHandler handler;
    Prepare(handler, side);
    if (!input.before.empty()) {
        RemoteSDP earlier;
        handler.ParseTheSDP(input.before, earlier);
    }
    if (input.remoteAnswers) {
        handler.GetLocalSDP(); // the offer that the text answers
    }
    const Draft draft = Draft::Of(input.remote);
    Report report = ReadInto(handler, side, draft, input.remoteAnswers, input.ourAnswer);
    if (input.remoteAnswers || input.ourAnswer.empty()) {
        JudgeAnswer(report, side, draft, input.remoteAnswers);
    }
    return report;
}

} // namespace

PageText ReadForPage(const ExplainInput& input, const Capabilities& side,
                     std::vector<ExplainFinding> findings, std::size_t untried) {
    PageText page;
    page.text = Secrets(false).Hide(input.remote);
    page.lines = ExplainLines(input);
    page.findings = std::move(findings);
    page.untried = untried;
    page.pairs = ExplainWhyNot(input);
    page.report = ReportOf(input, side);
    page.isRead = true;
    return page;
}

PageText ShownForPage(const ExplainInput& input, const std::string& text, bool answers) {
    ExplainInput mirrored = input;
    mirrored.remote = text;
    mirrored.remoteAnswers = answers;
    mirrored.ourOffer = answers ? input.remote : "";
    mirrored.ourAnswer = answers ? "" : input.remote;
    mirrored.before.clear();
    PageText page;
    page.text = Secrets(false).Hide(text);
    page.lines = ExplainLines(mirrored);
    return page;
}

void NumberPage(PageData& page) {
    std::size_t texts = 0;
    std::size_t findings = 1;
    for (PageExchange& exchange : page.exchanges) {
        for (std::optional<PageText>* text : {&exchange.offer, &exchange.answer}) {
            if (*text) {
                (*text)->number = ++texts;
                (*text)->firstFinding = findings;
                findings += (*text)->findings.size();
            }
        }
    }
}

} // namespace cmsdp
