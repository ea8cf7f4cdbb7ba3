// Stage: none; a description line by line.
// Input: a text and the verdict on each of its lines. Output: a list with links to the findings.
// Touches nothing.
// The verdict is shown as a word and as a colour: a colour alone is lost in print and to many readers.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

#include <algorithm>
#include <map>

namespace cmsdp {

namespace {

using FindingsByLine = std::map<std::size_t, std::vector<std::size_t>>; // line number, indexes of findings

FindingsByLine FindingsOf(const PageText& text) {
    constexpr std::size_t mostLinks = 8;
    FindingsByLine found;
    for (std::size_t i = 0; i < text.findings.size(); ++i) {
        for (const std::size_t line : text.findings[i].lines) {
            if (line <= kMostPageLines && found[line].size() < mostLinks) {
                found[line].push_back(i);
            }
        }
    }
    return found;
}

// "overridden by 9"
std::string VerdictOf(const ExplainedLine& line) {
    const bool hasOther =
        line.verdict == ExplainVerdict::Overridden || line.verdict == ExplainVerdict::Joined;
    return ExplainVerdictName(line.verdict) + (hasOther ? " by " + std::to_string(line.byLine) : "");
}

std::string DetailOf(const ExplainedLine& line) {
    std::string detail;
    if (!line.field.empty()) {
        detail = std::string(line.field) + ": \"" + line.before + "\" to \"" + line.after + "\"";
    }
    detail += (detail.empty() || line.why.empty() ? "" : "; ") + line.why;
    for (const std::string_view source : {line.ledger, line.clause}) {
        detail += source.empty() ? "" : " (" + std::string(source) + ")";
    }
    return detail;
}

void WriteLine(Markup& out, const PageText& text, const ExplainedLine& line, std::string_view words,
               const std::vector<std::size_t>& findings) {
    std::string classes = ExplainVerdictName(line.verdict);
    for (const std::size_t index : findings) {
        classes += " " + FindingAnchor(text, index);
    }
    out.Open("li", {{"id", LineAnchor(text, line.number)}, {"class", classes}});
    out.Element("span", {{"class", "number"}}, std::to_string(line.number));
    out.Text(" ").Element("code", words).Text(" ");
    out.Element("span", {{"class", "verdict"}}, VerdictOf(line));
    for (const std::size_t index : findings) {
        const ExplainFinding& finding = text.findings[index];
        out.Text(" ").Element(
            "a", {{"class", ExplainSeverityName(finding.severity)}, {"href", FindingAnchor(text, index)}},
            finding.id);
    }
    const std::string detail = DetailOf(line);
    if (!detail.empty()) {
        out.Element("p", detail);
    }
    out.Close();
}

} // namespace

void WriteLines(Markup& out, const PageText& text) {
    const FindingsByLine findings = FindingsOf(text);
    const std::vector<std::size_t> none;
    out.Open("ol", {{"class", "sdp"}});
    std::size_t at = 0;
    for (const ExplainedLine& line : text.lines) {
        if (line.number > kMostPageLines) {
            out.Element("li",
                        std::to_string(text.lines.size() - kMostPageLines) + " more lines are not shown");
            break;
        }
        // Hiding a key keeps every line end, so the lines are found by counting.
        const std::size_t feed = std::min(text.text.find('\n', at), text.text.size());
        std::string_view words = std::string_view(text.text).substr(at, feed - at);
        if (!words.empty() && words.back() == '\r') {
            words.remove_suffix(1);
        }
        at = std::min(feed + 1, text.text.size());
        const auto found = findings.find(line.number);
        WriteLine(out, text, line, words, found == findings.end() ? none : found->second);
    }
    out.Close();
}

} // namespace cmsdp
