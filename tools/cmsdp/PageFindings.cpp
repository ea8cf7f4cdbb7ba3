// Stage: none; findings, cures and the table of formats.
// Input: findings and pairs of a description. Output: one article for each finding, one row for each pair.
// Touches nothing.
// Every sentence is explain's.
// Test: tests/tool/PageTest.cpp
#include "Page.h"

#include "Names.h"

namespace cmsdp {

namespace {

constexpr std::size_t kMostLinks = 8;
constexpr std::size_t kMostPairs = 400;

void WriteBlame(Markup& out, const PageText& text, const ExplainFinding& finding) {
    if (finding.field != nullptr) {
        out.Open("p").Text("Local field ").Element("code", finding.field->file).Close();
    }
    if (finding.lines.empty()) {
        return;
    }
    out.Open("p", {{"class", "links"}});
    for (std::size_t i = 0; i < finding.lines.size() && i < kMostLinks; ++i) {
        const std::string words = "line " + std::to_string(finding.lines[i]);
        if (finding.lines[i] <= kMostPageLines) {
            out.Element("a", {{"href", LineAnchor(text, finding.lines[i])}}, words).Text(" ");
        } else {
            out.Text(words + " ");
        }
    }
    if (finding.lines.size() > kMostLinks) {
        out.Text("and " + std::to_string(finding.lines.size() - kMostLinks) + " more");
    }
    out.Close();
}

void WriteSentence(Markup& out, const char* label, std::string_view sentence) {
    if (!sentence.empty()) {
        out.Open("p").Element("strong", label).Text(" ").Text(sentence).Close();
    }
}

void WriteFinding(Markup& out, const PageText& text, std::size_t index) {
    const ExplainFinding& finding = text.findings[index];
    const std::string anchor = FindingAnchor(text, index);
    const char* const severity = ExplainSeverityName(finding.severity);
    out.Open("article", {{"id", anchor}, {"class", std::string("finding ") + severity + " " + anchor}});
    out.Open("h3").Text(finding.id).Text(" ").Text(ExplainTopicName(finding.topic)).Text(" ");
    out.Element("span", {{"class", "state"}}, severity).Close();
    WriteBlame(out, text, finding);
    WriteSentence(out, "Found:", finding.what);
    WriteSentence(out, "Rule:", finding.acted);
    WriteSentence(out, "Effect:", finding.comes);
    WriteSentence(out, "Cure:", finding.cure.words);
    WriteSentence(out, "The negotiation layer repairs it:", finding.repair);
    WriteSentence(out, "Documented as", finding.ledger);
    out.Close();
}

} // namespace

void WriteFindings(Markup& out, const PageText& text) {
    out.Open("div", {{"class", "findings"}});
    if (text.findings.empty()) {
        out.Element("p", "Nothing is found.");
    }
    for (std::size_t i = 0; i < text.findings.size(); ++i) {
        WriteFinding(out, text, i);
    }
    if (text.untried != 0) {
        out.Element("p", std::to_string(text.untried) + " more places were not examined.");
    }
    out.Close();
}

void WriteWhyNot(Markup& out, const PageText& text) {
    if (text.pairs.empty()) {
        out.Element("p", "No format is compared with a codec of its medium.");
        return;
    }
    out.Open("table").Open("thead").Open("tr");
    for (const char* const title : {"Line", "Format", "Codec", "Why"}) {
        out.Element("th", {{"scope", "col"}}, title);
    }
    out.Close().Close().Open("tbody");
    for (std::size_t i = 0; i < text.pairs.size() && i < kMostPairs; ++i) {
        const ExplainPair& pair = text.pairs[i];
        out.Open("tr", {{"class", pair.isMatch ? "match" : ""}}).Open("td");
        out.Element("a", {{"href", pair.line <= kMostPageLines ? LineAnchor(text, pair.line) : "top"}},
                    std::to_string(pair.line));
        out.Close();
        out.Element("td", pair.format + (pair.encoding.empty() ? "" : " " + pair.encoding));
        out.Element("td", NameOf(CodecNames(), pair.codec));
        out.Element("td", pair.isMatch ? "match" : pair.firstFault).Close();
    }
    out.Close().Close();
    if (text.pairs.size() > kMostPairs) {
        out.Element("p", std::to_string(text.pairs.size() - kMostPairs) + " more rows are not shown.");
    }
}

} // namespace cmsdp
