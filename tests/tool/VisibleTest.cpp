// Bytes that could fool a terminal, and what is shown in their place.
#include "Visible.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Visible;
using cmsdp::VisibleLines;

TEST(Visible, LeavesPrintableAsciiAlone) {
    EXPECT_EQ(Visible(" !\"#$%&'()*+,-./09:;<=>?@AZ[]^_`az{|}~"), " !\"#$%&'()*+,-./09:;<=>?@AZ[]^_`az{|}~");
}

TEST(Visible, EscapesControlBytes) {
    EXPECT_EQ(Visible(std::string("a\0b\t\r\n\x1b[31m\x7f", 12)), R"(a\x00b\x09\x0d\x0a\x1b[31m\x7f)");
}

TEST(Visible, EscapesTheBackslashSoThatTextsStayDifferent) {
    EXPECT_EQ(Visible(R"(\x1b)"), R"(\\x1b)");
    EXPECT_EQ(Visible("\x1b"), R"(\x1b)");
}

TEST(Visible, EscapesBidirectionalMarksAndOtherUtf8) {
    EXPECT_EQ(Visible("\xe2\x80\xae"
                      "10.0.0.1"),
              R"(\xe2\x80\xae10.0.0.1)");
    EXPECT_EQ(Visible("\xc3\xbc"), R"(\xc3\xbc)");
}

TEST(Visible, EscapesBytesThatAreNoUtf8) {
    EXPECT_EQ(Visible("\x80\x9b\xc0\xff"), R"(\x80\x9b\xc0\xff)");
}

TEST(VisibleLines, KeepsCrLfAndNothingElse) {
    EXPECT_EQ(VisibleLines("v=0\r\ns=\x1b[2J\r\r\n\n"), "v=0\r\ns=\\x1b[2J\\x0d\r\n\\x0a");
}

TEST(VisibleLines, KeepsTheBackslash) {
    EXPECT_EQ(VisibleLines("s=a\\b\r\n"), "s=a\\b\r\n");
}

TEST(VisibleLines, EscapesACrAtTheEnd) {
    EXPECT_EQ(VisibleLines("s=a\r"), "s=a\\x0d");
}

} // namespace
