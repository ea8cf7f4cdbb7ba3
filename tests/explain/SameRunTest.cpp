// A run that takes from another one what is the same in both has the same facts as a run of its own.
#include "State.h"

#include "Texts.h"

#include <gtest/gtest.h>

namespace {

using support::AllTexts;
using support::NamedText;
using support::Side;

std::string FactsOf(const explain::State& state) {
    std::string text;
    for (const explain::Fact& fact : state.Facts()) {
        explain::Append(text, {ExplainTopicName(fact.topic), " ", static_cast<int>(fact.about), " ",
                               static_cast<int>(fact.which), fact.isDead ? " dead" : "",
                               fact.isHard ? " hard " : " ", fact.hidden, " ", state.ClauseOf(fact), "\n"});
    }
    return text;
}

// Every fifteenth line is deleted or doubled in turn: some changes make no difference, some make all.
TEST(SameRun, HasTheFactsOfARunOfItsOwn) {
    std::size_t same = 0;
    std::size_t other = 0;
    for (const NamedText& named : AllTexts()) {
        const ExplainInput input = Side(named.text);
        explain::State known;
        explain::Run(input, known);
        const std::vector<ExplainedLine> lines = ExplainLines(input);
        for (std::size_t i = 0; i < lines.size(); i += 15) {
            const std::size_t end = i + 1 < lines.size() ? lines[i + 1].offset : input.remote.size();
            const std::size_t length = end - lines[i].offset;
            ExplainInput changed = input;
            if (i % 2 == 0) {
                changed.remote.erase(lines[i].offset, length);
            } else {
                changed.remote.insert(end, input.remote, lines[i].offset, length);
            }
            explain::State alone;
            explain::Run(changed, alone);
            explain::State after;
            explain::Run(changed, after, &known);
            EXPECT_EQ(FactsOf(after), FactsOf(alone)) << named.name << ":" << lines[i].number;
            EXPECT_EQ(after.ourSections.size(), alone.ourSections.size());
            (after.same == &known ? same : other) += 1;
        }
    }
    EXPECT_GT(same, 0U);
    EXPECT_GT(other, 0U);
}

} // namespace
