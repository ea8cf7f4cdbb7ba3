// Stage: none; a call as a picture and as a list.
// Input: the steps of a call. Output: SVG with an arrow for each step, and a list that says the same in
// words. Touches nothing. The picture is 360 units wide, so that its letters can be read on a phone.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

#include "Redact.h"
#include "TimelineText.h"
#include "Words.h"

#include <algorithm>
#include <cstdio>

namespace cmsdp {

namespace {

constexpr int kTop = 40;
constexpr int kRow = 42;
constexpr int kCaller = 62; // x of the lifelines
constexpr int kCallee = 348;
constexpr std::size_t kMostSteps = 500;
constexpr std::size_t kMostLetters = 44;

std::string SecondsOf(const Step& step) {
    char words[64] = "";
    if (step.seconds) {
        std::snprintf(words, sizeof words, "%.3f s", *step.seconds);
    }
    return words;
}

// Keys are hidden first: the rest of a cut key would not be known for one.
std::string Fitting(const std::string& whole) {
    const std::string text = Secrets(false).Hide(whole);
    return text.size() > kMostLetters ? text.substr(0, kMostLetters - 3) + "..." : text;
}

// The description of a step; null for a step without one.
const PageText* TextOf(const PageData& page, std::size_t step) {
    for (const PageExchange& exchange : page.exchanges) {
        for (const std::optional<PageText>* const text : {&exchange.offer, &exchange.answer}) {
            if (*text && (*text)->step == step + 1) {
                return &**text;
            }
        }
    }
    return nullptr;
}

// "error", "warning", "note"; "good" for a description without findings and "plain" for other steps.
std::string WorstOf(const Step& step) {
    if (!step.isEvaluated) {
        return "plain";
    }
    const auto worst = std::max_element(
        step.findings.begin(), step.findings.end(),
        [](const ExplainFinding& one, const ExplainFinding& other) { return one.severity < other.severity; });
    return worst == step.findings.end() ? "good" : ExplainSeverityName(worst->severity);
}

std::string KindOf(const Step& step) {
    return (step.isReOffer ? std::string("re-") : std::string()) + StepKindName(step.kind);
}

// Below the arrow: what came of the description.
std::string ResultOf(const Step& step) {
    if (!step.isEvaluated) {
        return "";
    }
    const std::string changes = step.previous ? CountOf(step.changes.size(), "change") + ", " : "";
    return changes + CountOf(step.findings.size(), "finding");
}

void WriteStep(Markup& out, const Step& step, std::size_t index) {
    const std::string y = std::to_string(kTop + kRow * static_cast<int>(index) + 20);
    const bool toRight = step.from == Side::Caller;
    const std::string middle = std::to_string((kCaller + kCallee) / 2);
    const std::string head = "M " + std::to_string(toRight ? kCallee : kCaller) + " " + y +
                             (toRight ? " l -9 -5 v 10 z" : " l 9 -5 v 10 z");
    out.Open("a", {{"href", "s" + std::to_string(index + 1)}, {"class", WorstOf(step)}});
    out.Element("text", {{"x", "2"}, {"y", y}, {"class", "time"}}, SecondsOf(step));
    out.Element("text", {{"x", middle}, {"y", y}, {"dy", "-6"}, {"text-anchor", "middle"}},
                Fitting(std::to_string(index + 1) + " " + KindOf(step) + ": " + step.message));
    out.Void("line", {{"class", "flow"},
                      {"x1", std::to_string(kCaller)},
                      {"x2", std::to_string(kCallee)},
                      {"y1", y},
                      {"y2", y}});
    out.Void("path", {{"class", "head"}, {"d", head}});
    out.Element("text", {{"x", middle}, {"y", y}, {"dy", "13"}, {"text-anchor", "middle"}, {"class", "time"}},
                ResultOf(step));
    out.Close();
}

void WriteLifeline(Markup& out, int at, const char* anchor, Side side, const std::string& address,
                   int height) {
    const std::string x = std::to_string(at);
    const std::string label = anchor[0] == 's' ? "2" : "358";
    out.Element("text", {{"x", label}, {"y", "12"}, {"text-anchor", anchor}, {"class", "side"}},
                SideName(side));
    out.Element("text", {{"x", label}, {"y", "25"}, {"text-anchor", anchor}, {"class", "time"}},
                Fitting(address));
    out.Void("line", {{"class", "life"}, {"x1", x}, {"x2", x}, {"y1", "32"}, {"y2", std::to_string(height)}});
}

void WritePicture(Markup& out, const Call& call, std::size_t shown) {
    const int height = kTop + kRow * static_cast<int>(shown);
    out.Open("svg", {{"class", "timeline"},
                     {"viewBox", "0 0 360 " + std::to_string(height)},
                     {"role", "group"},
                     {"aria-label", "The steps of the call as arrows between caller and callee"}});
    WriteLifeline(out, kCaller, "start", Side::Caller, call.caller, height);
    WriteLifeline(out, kCallee, "end", Side::Callee, call.callee, height);
    for (std::size_t i = 0; i < shown; ++i) {
        WriteStep(out, call.steps[i], i);
    }
    out.Close();
}

void WriteSentences(Markup& out, const char* title, const std::vector<std::string>& sentences) {
    if (sentences.empty()) {
        return;
    }
    out.Element("p", title).Open("ul");
    for (const std::string& sentence : sentences) {
        out.Element("li", sentence);
    }
    out.Close();
}

void WriteInWords(Markup& out, const PageData& page, std::size_t index) {
    const Step& step = page.call->steps[index];
    out.Open("li", {{"id", "s" + std::to_string(index + 1)}, {"class", WorstOf(step)}});
    out.Open("p").Text(StepHead(step, index + 1));
    if (const PageText* const text = TextOf(page, index)) {
        out.Text(" ").Element("a", {{"href", "t" + std::to_string(text->number)}}, "text and findings");
    }
    out.Close();
    WriteSentences(out, "Notes:", step.notes);
    if (step.isEvaluated && step.previous) {
        const std::string against = "Against step " + std::to_string(*step.previous + 1) + ":";
        const std::vector<std::string> nothing = {"nothing changes for the engine"};
        WriteSentences(out, against.c_str(), step.changes.empty() ? nothing : step.changes);
    }
    out.Close();
}

} // namespace

void WriteTimeline(Markup& out, const PageData& page) {
    const Call& call = *page.call;
    const std::size_t shown = std::min(call.steps.size(), kMostSteps);
    out.Open("section", {{"id", "timeline"}}).Element("h2", "Timeline");
    WritePicture(out, call, shown);
    out.Open("ol", {{"class", "steps"}});
    for (std::size_t i = 0; i < shown; ++i) {
        WriteInWords(out, page, i);
    }
    out.Close();
    if (shown < call.steps.size()) {
        out.Element("p", std::to_string(call.steps.size() - shown) + " more steps are not shown.");
    }
    out.Close();
}

} // namespace cmsdp
