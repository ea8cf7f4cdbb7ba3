// Columns, broken lines and colour.
#include "Table.h"
#include "Expect.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Block;
using cmsdp::Cell;
using cmsdp::Mood;
using cmsdp::RenderTable;
using cmsdp::SideBySide;

Cell Plain(const char* text) {
    return {text, Mood::kPlain};
}

TEST(Table, OneColumn) {
    const std::vector<Block> blocks = {{"audio", {{"codec", {Plain("G.722")}}, {"port", {Plain("5004")}}}},
                                       {"video", {{"codec", {Plain("H.264")}}}}};
    EXPECT_TEXT(RenderTable({}, blocks, 20, false), "audio\n"
                                                    "  codec          G.722\n"
                                                    "  port           5004\n"
                                                    "\n"
                                                    "video\n"
                                                    "  codec          H.264\n");
}

TEST(Table, ARowOfEmptyCellsIsLeftOut) {
    EXPECT_TEXT(RenderTable({}, {{"audio", {{"key", {Plain("")}}, {"port", {Plain("1")}}}}}, 20, false),
                "audio\n"
                "  port           1\n");
}

TEST(Table, LongCellsAreBrokenAtBlanksAndLineFeeds) {
    EXPECT_TEXT(RenderTable({}, {{"audio", {{"why", {Plain("one two three\nfour")}}}}}, 8, false),
                "audio\n"
                "  why            one two\n"
                "                 three\n"
                "                 four\n");
}

TEST(Table, AWordThatIsTooLongKeepsItsLine) {
    EXPECT_TEXT(RenderTable({}, {{"audio", {{"why", {Plain("a verylongword b")}}}}}, 6, false),
                "audio\n"
                "  why            a\n"
                "                 verylongword\n"
                "                 b\n");
}

TEST(Table, TwoColumnsWithoutBlanksAtLineEnds) {
    const std::vector<Block> left = {{"audio", {{"state", {Plain("yes")}}, {"why", {Plain("")}}}}};
    const std::vector<Block> right = {{"audio", {{"state", {Plain("")}}, {"why", {Plain("port 0 here")}}}}};
    EXPECT_TEXT(RenderTable({"offerer", "answerer"}, SideBySide(left, right), 8, false),
                "                 offerer   answerer\n"
                "\n"
                "audio\n"
                "  state          yes\n"
                "  why                      port 0\n"
                "                           here\n");
}

TEST(Table, ColourChangesNoColumn) {
    const std::vector<Block> left = {{"audio", {{"state", {{"up", Mood::kGood}}}}}};
    const std::vector<Block> right = {{"audio", {{"state", {{"down", Mood::kBad}}}}}};
    EXPECT_TEXT(RenderTable({"a", "b"}, SideBySide(left, right), 4, true),
                "                 \x1b[1ma\x1b[0m     \x1b[1mb\x1b[0m\n"
                "\n"
                "\x1b[1maudio\x1b[0m\n"
                "  state          \x1b[32mup\x1b[0m    \x1b[33mdown\x1b[0m\n");
}

} // namespace
