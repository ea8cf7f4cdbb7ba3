// The two outcomes that all others are compared with, and the comparison itself.
#include "Hostile.h"

namespace {

using namespace hostile;

TEST(HostileBase, DifferenceShowsWhatWentAndWhatCame) {
    EXPECT_TEXT(Difference("a\nb\nc\n", "a\nb\nc\n"), "");
    EXPECT_TEXT(Difference("a\nb\nc\n", "a\nx\ny\nc\nd\n"), "-b\n+x\n+y\n+d\n");
    EXPECT_TEXT(Difference("a\nb\n", ""), "-a\n-b\n");
    EXPECT_TEXT(Difference("", "a\n"), "+a\n");
}

TEST(HostileBase, KeyWindowsAreFoundInAnyForm) {
    EXPECT_EQ(KeyWindows("no key in here, and no audio"), std::vector<std::string>());
    EXPECT_EQ(KeyWindows("away audio key 1").size(), 9U);
    EXPECT_EQ(KeyWindows("...bmVhciB2..."), std::vector<std::string>({"bmVhciB2"}));
}

} // namespace
