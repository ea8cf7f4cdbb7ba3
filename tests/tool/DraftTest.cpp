// Lines of a draft and their numbers in the input.
#include "Draft.h"
#include "Expect.h"

namespace {

using cmsdp::Draft;
using cmsdp::DraftLine;

std::string Shown(const Draft& draft) {
    std::string out;
    cmsdp::ForEachLine(draft, [&out](const DraftLine& line) {
        out +=
            std::to_string(line.number) + '[' + std::string(line.text) + "][" + std::string(line.end) + ']';
    });
    return out;
}

TEST(Draft, KnowsItsLinesAndTheirEnds) {
    EXPECT_TEXT(Shown(Draft::Of("a\r\nb\n\r\n\n")), "1[a][\r\n]2[b][\n]3[][\r\n]4[][\n]");
    EXPECT_TEXT(Shown(Draft::Of("a\nb")), "1[a][\n]2[b][]");
    EXPECT_TEXT(Shown(Draft::Of("a\r\nb\r")), "1[a][\r\n]2[b][\r]");
    EXPECT_TEXT(Shown(Draft::Of("")), "");
}

TEST(Draft, KeepsTheNumbersOfTheInput) {
    Draft draft;
    draft.Add("v=0", "\r\n", 7);
    draft.Add("", "", 8);
    draft.Add("s=-", "\r\n", 9);
    EXPECT_TEXT(Shown(draft), "7[v=0][\r\n]9[s=-][\r\n]");
    EXPECT_EQ(draft.NumberAt(0), 7U);
    EXPECT_EQ(draft.NumberAt(4), 7U);
    EXPECT_EQ(draft.NumberAt(5), 9U);
    EXPECT_EQ(draft.NumberAt(1000), 0U);
}

TEST(Draft, ChangesLines) {
    Draft draft = Draft::Of("xa\r\nb\nxc");
    const auto dropX = [](std::string_view line) {
        return line.substr(line.compare(0, 1, "x") == 0 ? 1 : 0);
    };
    EXPECT_EQ(cmsdp::ChangeLines(draft, dropX), 2U);
    EXPECT_TEXT(Shown(draft), "1[a][\r\n]2[b][\n]3[c][]");
    EXPECT_EQ(cmsdp::ChangeLines(draft, dropX), 0U);
}

} // namespace
