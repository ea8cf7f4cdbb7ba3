// Cuts of text.
#include "Words.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Listed;
using cmsdp::LooksLikeSdp;
using cmsdp::Quoted;
using cmsdp::Short;
using cmsdp::WordsOf;

using Words = std::vector<std::string_view>;

TEST(WordsOf, CutsAtRunsOfWhiteSpace) {
    EXPECT_EQ(WordsOf(" m=audio\t5004 \v\f RTP/AVP\n0\r"), (Words{"m=audio", "5004", "RTP/AVP", "0"}));
}

TEST(WordsOf, FindsNoneInBlanks) {
    EXPECT_EQ(WordsOf(""), Words{});
    EXPECT_EQ(WordsOf(" \t\r\n"), Words{});
}

TEST(LooksLikeSdp, ASmallLetterAndAnEqualsSignBehindBlanks) {
    EXPECT_TRUE(LooksLikeSdp("v=0"));
    EXPECT_TRUE(LooksLikeSdp(" \tz="));
    EXPECT_FALSE(LooksLikeSdp(""));
    EXPECT_FALSE(LooksLikeSdp("v"));
    EXPECT_FALSE(LooksLikeSdp("V=0"));
    EXPECT_FALSE(LooksLikeSdp("[12:00] v=0"));
}

TEST(Listed, NamesThePiecesAndCountsTheRest) {
    EXPECT_EQ(Listed({}, 2), "");
    EXPECT_EQ(Listed({"a", "b"}, 2), "a, b");
    EXPECT_EQ(Listed({"a", "b", "c", "d"}, 2), "a, b and 2 more");
}

TEST(Quoted, CutsBehindFortyBytes) {
    EXPECT_EQ(Quoted("short"), "\"short\"");
    EXPECT_EQ(Quoted("1234567890123456789012345678901234567890"),
              "\"1234567890123456789012345678901234567890\"");
    EXPECT_EQ(Quoted("1234567890123456789012345678901234567890x"),
              "\"1234567890123456789012345678901234567890...\"");
}

TEST(Short, CutsBehindAHundredBytes) {
    EXPECT_EQ(Short(std::string(100, 'x')), std::string(100, 'x'));
    EXPECT_EQ(Short(std::string(101, 'x')), std::string(100, 'x') + "...");
}

} // namespace
