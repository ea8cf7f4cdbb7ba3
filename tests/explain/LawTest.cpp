// The laws of explanations over every capture and every prepared negotiation: what a verdict promises, what a
// cure promises, and that no key is ever said.
#include "Texts.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using support::AllTexts;
using support::Digest;
using support::NamedText;
using support::Side;

/// The text without the lines for which `isGone` holds, line ends included.
template <typename Gone>
std::string Without(const ExplainInput& input, const std::vector<ExplainedLine>& lines, Gone isGone) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t end = i + 1 < lines.size() ? lines[i + 1].offset : input.remote.size();
        if (!isGone(lines[i])) {
            text += input.remote.substr(lines[i].offset, end - lines[i].offset);
        }
    }
    return text;
}

TEST(ExplainLaw, LinesThatChangeNothingCanBeDeleted) {
    for (const NamedText& named : AllTexts()) {
        for (const bool srtp : {false, true}) {
            ExplainInput input = Side(named.text);
            input.srtp = srtp;
            const std::string before = Digest(input);
            input.remote = Without(input, ExplainLines(input), [](const ExplainedLine& line) {
                return line.verdict == ExplainVerdict::Ignored || line.verdict == ExplainVerdict::Dropped;
            });
            EXPECT_EQ(Digest(input), before) << named.name;
        }
    }
}

TEST(ExplainLaw, ALineThatIsUsedCannotBeDeleted) {
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        const std::string before = Digest(input);
        for (const ExplainedLine& used : lines) {
            if (used.verdict == ExplainVerdict::Used) {
                ExplainInput without = input;
                without.remote = Without(
                    input, lines, [&](const ExplainedLine& line) { return line.number == used.number; });
                EXPECT_NE(Digest(without), before) << named.name << ":" << used.number;
            }
        }
    }
}

/// Rule, place and topic of a finding, so that the same finding is known in two texts.
std::string IdentityOf(const ExplainInput& input, const ExplainFinding& finding) {
    std::string place = finding.field == nullptr ? "" : std::string(finding.field->file);
    if (finding.field == nullptr && !finding.lines.empty()) {
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        const ExplainedLine& line = lines[std::min(finding.lines[0], lines.size()) - 1];
        place = input.remote.substr(line.offset, line.length);
    }
    return std::string(finding.id) + "/" + ExplainTopicName(finding.topic) + "/" + place;
}

std::size_t CountOf(const ExplainInput& input, const std::string& identity) {
    std::size_t count = 0;
    for (const ExplainFinding& finding : Explain(input).findings) {
        count += IdentityOf(input, finding) == identity ? 1 : 0;
    }
    return count;
}

// Each cure is an explanation of its own, so of each text the first one is tried.
TEST(ExplainLaw, ACureEndsItsFinding) {
    constexpr std::size_t most = 1;
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        std::set<std::string> tried;
        for (const ExplainFinding& finding : Explain(input).findings) {
            const bool hasCure = !finding.cure.text.empty() || !finding.cure.local.empty();
            if (finding.severity == ExplainSeverity::Note || !hasCure || tried.size() == most ||
                !tried.insert(finding.cure.words).second) {
                continue;
            }
            const std::string identity = IdentityOf(input, finding);
            EXPECT_LT(CountOf(ExplainCured(input, finding.cure), identity), CountOf(input, identity))
                << named.name << ": " << finding.what << " Cure: " << finding.cure.words;
        }
    }
}

std::string AllWords(const Explanation& explanation) {
    std::string words;
    for (const ExplainFinding& finding : explanation.findings) {
        words += finding.what + finding.acted + finding.comes + finding.cure.words + "\n";
    }
    for (const ExplainedLine& line : explanation.lines) {
        words += line.before + line.after + line.why + "\n";
    }
    return words;
}

TEST(ExplainLaw, NoKeyIsSaid) {
    constexpr std::size_t window = 8;
    for (const NamedText& named : AllTexts()) {
        const std::string words = AllWords(Explain(Side(named.text)));
        for (std::size_t at = named.text.find("inline:"); at != std::string::npos;
             at = named.text.find("inline:", at + 1)) {
            const std::string key = named.text.substr(at + 7, 40);
            for (std::size_t i = 0; key.size() == 40 && i + window <= key.size(); ++i) {
                EXPECT_EQ(words.find(key.substr(i, window)), std::string::npos) << named.name;
            }
        }
    }
}

} // namespace
