// The string and number operations of the code base.
#include "VideoUtils.h"

#include "Expect.h"

#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

Pieces Split(std::string_view text, std::string_view separator) {
    Pieces pieces;
    VideoUtils::split(pieces, text, separator);
    return pieces;
}

TEST(VideoUtils, ClassIsNeverInstantiated) {
    static_assert(!std::is_default_constructible_v<VideoUtils>);
}

TEST(VideoUtils, SplitGivesThePiecesInOrder) {
    EXPECT_EQ(Split("a;b;c", ";"), (Pieces{"a", "b", "c"}));
    EXPECT_EQ(Split("profile-level-id=42801f;packetization-mode=1;max-mbps=108000", ";"),
              (Pieces{"profile-level-id=42801f", "packetization-mode=1", "max-mbps=108000"}));
}

TEST(VideoUtils, SplitOfATextWithoutSeparatorIsThatText) {
    EXPECT_EQ(Split("0-15", ";"), (Pieces{"0-15"}));
    EXPECT_EQ(Split(" ", ";"), (Pieces{" "}));
}

TEST(VideoUtils, SplitKeepsEmptyPieces) {
    EXPECT_EQ(Split("a;;b", ";"), (Pieces{"a", "", "b"}));
    EXPECT_EQ(Split(";a", ";"), (Pieces{"", "a"}));
    EXPECT_EQ(Split("a;", ";"), (Pieces{"a", ""}));
    EXPECT_EQ(Split(";", ";"), (Pieces{"", ""}));
    EXPECT_EQ(Split(";;", ";"), (Pieces{"", "", ""}));
}

TEST(VideoUtils, SplitOfAnEmptyTextHasNoPieces) {
    EXPECT_EQ(Split("", ";"), Pieces{});
    EXPECT_EQ(Split("", ""), Pieces{});
}

TEST(VideoUtils, SplitAppendsToWhatTheVectorHeld) {
    Pieces pieces = {"held"};
    VideoUtils::split(pieces, "a=1", "=");
    EXPECT_EQ(pieces, (Pieces{"held", "a", "1"}));
    VideoUtils::split(pieces, "", "=");
    EXPECT_EQ(pieces, (Pieces{"held", "a", "1"}));
}

TEST(VideoUtils, SplitKeepsBlanks) {
    EXPECT_EQ(Split("a; b ;\tc", ";"), (Pieces{"a", " b ", "\tc"}));
}

TEST(VideoUtils, SplitTakesTheSeparatorAsAWhole) {
    EXPECT_EQ(Split("a\r\nb\rc\nd\r\n", "\r\n"), (Pieces{"a", "b\rc\nd", ""}));
    EXPECT_EQ(Split("a--b---c", "--"), (Pieces{"a", "b", "-c"}));
}

TEST(VideoUtils, SplitWithAnEmptySeparatorSeparatesNothing) {
    EXPECT_EQ(Split("a;b", ""), (Pieces{"a;b"}));
}

TEST(VideoUtils, SplitKeepsZeroBytes) {
    EXPECT_EQ(Split(std::string_view("a\0b;c", 5), ";"), (Pieces{std::string("a\0b", 3), "c"}));
}

TEST(VideoUtils, DecimalDigitsAreANumber) {
    for (const char* text : {"0", "1", "12", "9", "007", "1234567890", "99999999999999999999"}) {
        EXPECT_TRUE(VideoUtils::IsNumber(text)) << text;
    }
}

TEST(VideoUtils, AnythingElseIsNone) {
    for (const char* text : {"", " ", "-1", "+1", " 1", "1 ", "1\r", "1.5", "0x10", "abc", "1a", "a1", "1 2",
                             "/", ":", "\xB2", "1\xC2\xB2"}) {
        EXPECT_FALSE(VideoUtils::IsNumber(text)) << text;
    }
    EXPECT_FALSE(VideoUtils::IsNumber(std::string_view("1\0", 2)));
}

TEST(VideoUtils, SignedNumbersAreWrittenInDecimal) {
    EXPECT_EQ(VideoUtils::ConvertInt(0), "0");
    EXPECT_EQ(VideoUtils::ConvertInt(16385), "16385");
    EXPECT_EQ(VideoUtils::ConvertInt(-1), "-1");
    EXPECT_EQ(VideoUtils::ConvertInt(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(VideoUtils::ConvertInt(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(VideoUtils, UnsignedNumbersAreWrittenInDecimal) {
    EXPECT_EQ(VideoUtils::ConvertUInt(0U), "0");
    EXPECT_EQ(VideoUtils::ConvertUInt(123456U), "123456");
    EXPECT_EQ(VideoUtils::ConvertUInt(2147483648U), "2147483648");
    EXPECT_EQ(VideoUtils::ConvertUInt(static_cast<unsigned int>(-1)), "4294967295");
}

} // namespace
