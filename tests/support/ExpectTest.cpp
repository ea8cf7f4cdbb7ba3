// EXPECT_TEXT itself: which texts it accepts, and what a failure prints.
#include "Expect.h"

#include <string>

namespace {

std::string MessageOf(const std::string& actual, const std::string& expected) {
    return ::support::SameText("a", "e", actual, expected).message();
}

TEST(Expect, EqualTextsPass) {
    EXPECT_TRUE(::support::SameText("a", "e", "v=0\r\n", "v=0\r\n"));
    EXPECT_TRUE(::support::SameText("a", "e", "", ""));
    EXPECT_TEXT(std::string("one\r\ntwo"), "one\r\ntwo");
}

TEST(Expect, AnyDifferentByteFails) {
    EXPECT_FALSE(::support::SameText("a", "e", "v=0\r\n", "v=0\n"));
    EXPECT_FALSE(::support::SameText("a", "e", "v=0", "v=0 "));
    EXPECT_FALSE(::support::SameText("a", "e", std::string("x\0", 2), "x"));
}

TEST(Expect, FailurePrintsBothTextsAndMarksTheFirstDifferentLine) {
    EXPECT_EQ(MessageOf("v=0\r\ns=-\n", "v=0\r\ns=-\r\n"), "The texts differ first in line 2.\n"
                                                           "expected: e (10 bytes)\n"
                                                           "     1: v=0\\r\\n\n"
                                                           "  >> 2: s=-\\r\\n\n"
                                                           "actual: a (9 bytes)\n"
                                                           "     1: v=0\\r\\n\n"
                                                           "  >> 2: s=-\\n\n");
}

TEST(Expect, FailureShowsWhereAShorterTextEnds) {
    EXPECT_EQ(MessageOf("", "v=0\r\n"), "The texts differ first in line 1.\n"
                                        "expected: e (5 bytes)\n"
                                        "  >> 1: v=0\\r\\n\n"
                                        "actual: a (0 bytes)\n"
                                        "  >> (the text ends here)\n");
}

TEST(Expect, ControlBytesAreVisible) {
    EXPECT_EQ(::support::MakeVisible(std::string("a\tb\\c\0d\x7f\xc3", 9)), "a\\tb\\\\c\\x00d\\x7f\\xc3");
}

} // namespace
