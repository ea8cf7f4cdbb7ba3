// Formats only: every word about the call comes from the library.
//
// Tests: tests/tool/explain_outputs.py
#include "ExplainText.h"

#include "Names.h"
#include "Redact.h"
#include "Visible.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace cmsdp {

namespace {

constexpr std::size_t kWidth = 240;

/// A text of at most `most` bytes. A longer one ends after a sentence or a phrase, whichever is later, and
/// without either after a word.
std::string Cut(const std::string& text, std::size_t most) {
    constexpr std::string_view dots = "...";
    constexpr std::string_view comma = ", ";
    if (text.size() <= most) {
        return text;
    }
    const std::size_t sentence = most == 0 ? std::string::npos : text.rfind(". ", most - 1);
    const std::size_t room = most - std::min(most, dots.size() + comma.size());
    const std::size_t phrase = text.rfind(comma, room);
    if (phrase != std::string::npos && (sentence == std::string::npos || phrase > sentence)) {
        return text.substr(0, phrase + comma.size()).append(dots);
    }
    return sentence != std::string::npos ? text.substr(0, sentence + 1)
                                         : text.substr(0, std::min(text.rfind(' ', room), room)).append(dots);
}

std::string Line(const std::string& text) {
    return Cut(Visible(text), kWidth) + "\n";
}

/// ID, topics and severity, and the place where the first sentence does not name it.
std::string Head(const ExplainFinding& finding, const std::string& topics) {
    std::string head =
        std::string(finding.id) + " " + topics + " " + ExplainSeverityName(finding.severity) + ": ";
    if (finding.field != nullptr) {
        const std::string_view field = finding.field->file;
        return finding.what.find(field) == std::string::npos ? head.append(field).append(": ") : head;
    }
    const std::string line = finding.lines.empty() ? "" : "line " + std::to_string(finding.lines[0]);
    const bool isNamed =
        finding.what.compare(0, 4, "Line") == 0 || finding.what.find(line + " ") != std::string::npos;
    return isNamed || line.empty() ? head : head + line + ": ";
}

using Json = nlohmann::ordered_json;

template <typename Text>
Json OrNull(const Text& text) {
    return text.empty() ? Json() : Json(text);
}

template <typename Item>
Json ListOf(const std::vector<Item>& items, Json (*toJson)(const Item&)) {
    Json list = Json::array();
    for (const Item& item : items) {
        list.push_back(toJson(item));
    }
    return list;
}

Json FindingJson(const ExplainFinding& finding) {
    return {
        {"id", finding.id},
        {"topic", ExplainTopicName(finding.topic)},
        {"severity", ExplainSeverityName(finding.severity)},
        {"lines", finding.lines},
        {"record_field", finding.field == nullptr ? Json() : Json(finding.field->record)},
        {"local_field", finding.field == nullptr ? Json() : Json(finding.field->file)},
        {"what", finding.what},
        {"rule", finding.acted},
        {"consequence", finding.comes},
        {"ledger", OrNull(finding.ledger)},
        {"repair", OrNull(finding.repair)},
        {"cure", OrNull(finding.cure.words)},
    };
}

Json LineJson(const ExplainedLine& line) {
    return {
        {"number", line.number},
        {"verdict", ExplainVerdictName(line.verdict)},
        {"field", OrNull(line.field)},
        {"column", line.column},
        {"before", line.before},
        {"after", line.after},
        {"why", line.why},
        {"by_line", line.byLine},
        {"ledger", OrNull(line.ledger)},
        {"clause", line.clause},
    };
}

} // namespace

std::string FindingText(const ExplainFinding& finding, const std::string& topics) {
    const std::string cure =
        (finding.cure.words.empty() ? "" : " Cure: " + finding.cure.words + ".") +
        (finding.repair.empty() ? ""
                                : " The negotiation layer repairs it: " + std::string(finding.repair) + ".");
    constexpr std::size_t least = 3; // the dots of a text that is cut
    const std::string comes =
        cure.size() + least <= kWidth ? Cut(finding.comes, kWidth - cure.size()) : finding.comes;
    return Line(Head(finding, topics) + finding.what) + Line(finding.acted) + Line(comes + cure);
}

std::string FindingsText(const std::vector<ExplainFinding>& findings) {
    std::string text;
    for (const ExplainFinding& finding : findings) {
        text += (text.empty() ? "" : "\n") + FindingText(finding, ExplainTopicName(finding.topic));
    }
    return text;
}

std::string LinesText(const ExplainInput& input, const std::vector<ExplainedLine>& lines) {
    std::string text;
    for (const ExplainedLine& line : lines) {
        const std::string number = std::to_string(line.number);
        std::string row = std::string(number.size() < 4 ? 4 - number.size() : 0, ' ') + number + "  ";
        const std::string verdict =
            std::string(ExplainVerdictName(line.verdict)) +
            (line.verdict == ExplainVerdict::Overridden || line.verdict == ExplainVerdict::Joined
                 ? " by " + std::to_string(line.byLine)
                 : "");
        row += verdict + std::string(verdict.size() < 16 ? 16 - verdict.size() : 1, ' ');
        Secrets secrets(false);
        row += secrets.Hide(std::string_view(input.remote).substr(line.offset, line.length));
        text += Line(row);
        std::string detail;
        if (!line.field.empty()) {
            detail = std::string(line.field) + ": \"" + line.before + "\" to \"" + line.after + "\"";
        }
        detail += (detail.empty() || line.why.empty() ? "" : "; ") + line.why;
        detail += line.ledger.empty() ? "" : " (" + std::string(line.ledger) + ")";
        text += detail.empty() ? "" : Line(std::string(22, ' ') + detail);
    }
    return text;
}

nlohmann::ordered_json FindingsJson(const std::vector<ExplainFinding>& findings) {
    return ListOf(findings, FindingJson);
}

nlohmann::ordered_json LinesJson(const std::vector<ExplainedLine>& lines) {
    return ListOf(lines, LineJson);
}

std::string ExplanationJson(const Explanation& explanation, const std::vector<ExplainFinding>& findings) {
    nlohmann::ordered_json root;
    root["schema"] = "cmsdp.explain/1";
    root["findings"] = FindingsJson(findings);
    root["not_examined"] = explanation.untried;
    root["lines"] = LinesJson(explanation.lines);
    return AsText(root);
}

std::string AsText(const nlohmann::ordered_json& root) {
    return root.dump(2, ' ', true, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::string PairsText(const std::vector<ExplainPair>& pairs) {
    std::string text;
    for (const ExplainPair& pair : pairs) {
        text += Line("line " + std::to_string(pair.line) + ", payload " + pair.format +
                     (pair.encoding.empty() ? "" : " " + pair.encoding) + ": " +
                     (pair.isMatch ? "is " + NameOf(CodecNames(), pair.codec) + "." : pair.firstFault));
    }
    return text;
}

} // namespace cmsdp
