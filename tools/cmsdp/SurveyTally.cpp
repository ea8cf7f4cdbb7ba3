// Counts and shares; a description counts once in each row.
//
// Tests: tests/tool/survey.cases
#include "SurveyTally.h"

#include "Visible.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace cmsdp {

namespace {

// Names that differ in their digits alone are one far end: call ids, versions, session numbers.
std::string WithoutNumbers(const std::string& text) {
    std::string out;
    for (const char c : text) {
        const bool isDigit = c >= '0' && c <= '9';
        if (!isDigit) {
            out += c;
        } else if (out.empty() || out.back() != '#') {
            out += '#';
        }
    }
    return out;
}

std::string FarEnd(const SurveyResult& result) {
    std::string name;
    const auto add = [&name](const char* start, const std::string& value) {
        name += value.empty() ? "" : (name.empty() ? "" : " ") + (start + WithoutNumbers(value));
    };
    add("o=", result.origin);
    add("s=", result.session);
    add("a=tool:", result.tool);
    return name.empty() ? "without a name" : name;
}

std::string Share(std::size_t count, std::size_t all) {
    char text[32];
    static_cast<void>(std::snprintf(text, sizeof text, "%8zu %5.1f %%", count,
                                    100.0 * static_cast<double>(count) / static_cast<double>(all)));
    return text;
}

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

constexpr std::size_t kMostKinds = 10000;
constexpr std::size_t kMostFarEnds = 40;

} // namespace

void SurveyTally::Count(Entries& entries, const Kind& kind, const std::string& example) {
    auto found = entries.find(kind);
    if (found == entries.end()) {
        const Kind made = entries.size() >= kMostKinds ? Kind{"others", "", ""} : kind;
        found = entries.emplace(made, Entry()).first;
    }
    if (found->second.count++ == 0) {
        found->second.example = example;
    }
}

void SurveyTally::CountOnce(Entries& entries, std::vector<Kind>& kinds, const std::string& example) {
    std::sort(kinds.begin(), kinds.end());
    kinds.erase(std::unique(kinds.begin(), kinds.end()), kinds.end());
    for (const Kind& kind : kinds) {
        Count(entries, kind, example);
    }
}

void SurveyTally::Add(const SurveyResult& result) {
    if (!result.unread.empty()) {
        ++m_unread;
        return;
    }
    ++m_read;
    const bool isAgreed = std::any_of(result.streams.begin(), result.streams.end(),
                                      [](const SurveyStream& stream) { return stream.isAgreed; });
    m_agreed += isAgreed ? 1 : 0;
    std::vector<Kind> findings;
    for (const SurveyFinding& finding : result.findings) {
        findings.emplace_back(finding.id, ExplainTopicName(finding.topic),
                              ExplainSeverityName(finding.severity));
    }
    CountOnce(m_findings, findings, result.name);
    std::vector<Kind> streams;
    for (const SurveyStream& stream : result.streams) {
        streams.emplace_back(stream.stream.empty() ? "other" : std::string_view(stream.stream), stream.state,
                             "");
    }
    CountOnce(m_streams, streams, result.name);
    if (!result.refused.empty()) {
        Count(m_refused, {result.refused, "", ""}, result.name);
    }
    Count(m_farEnds, {FarEnd(result), "", ""}, result.name);
}

std::string SurveyTally::Table() const {
    using Row = std::pair<std::string, Entry>;
    std::string table =
        "descriptions " + std::to_string(m_read) + ", not read " + std::to_string(m_unread) + "\n";
    const auto add = [&](const char* title, const Entries& entries, std::size_t most) {
        std::vector<Row> rows;
        std::size_t width = 0;
        for (const auto& [key, entry] : entries) {
            const auto& [first, second, third] = key;
            rows.emplace_back(Visible(Padded(first, second.empty() ? 0 : 14) + (second.empty() ? "" : " ") +
                                      Padded(second, third.empty() ? 0 : 20) + (third.empty() ? "" : " ") +
                                      third),
                              entry);
        }
        std::stable_sort(rows.begin(), rows.end(),
                         [](const Row& a, const Row& b) { return a.second.count > b.second.count; });
        for (const Row& row : rows) {
            width = std::max(width, std::min<std::size_t>(row.first.size(), 60));
        }
        table += rows.empty() ? "" : std::string("\n") + title + "\n";
        for (std::size_t i = 0; i < rows.size() && i < most; ++i) {
            table += "  " + Padded(rows[i].first, width) + Share(rows[i].second.count, m_read) + "  " +
                     Visible(rows[i].second.example) + "\n";
        }
        if (rows.size() > most) {
            table += "  and " + std::to_string(rows.size() - most) + " more\n";
        }
    };
    add("streams", m_streams, kMostKinds);
    add("refused", m_refused, kMostKinds);
    add("findings", m_findings, kMostKinds);
    add("far ends", m_farEnds, kMostFarEnds);
    return table;
}

} // namespace cmsdp
