// The text operations that parse and build share: words, keywords and numbers.
#include "SDPText.h"

#include "Expect.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Row {
    std::string_view keyword;
};

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    for (std::string_view word = sdp::NextWord(text); !word.empty(); word = sdp::NextWord(text)) {
        words.emplace_back(word);
    }
    return words;
}

TEST(SDPText, SixCharactersAreWhiteSpace) {
    for (int c = 0; c < 256; ++c) {
        const bool fExpected = c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
        EXPECT_EQ(sdp::IsBlank(static_cast<char>(c)), fExpected) << c;
    }
}

TEST(SDPText, WordsStandBetweenRunsOfWhiteSpace) {
    EXPECT_EQ(Words("m=audio 5000 RTP/AVP 0"), (std::vector<std::string>{"m=audio", "5000", "RTP/AVP", "0"}));
    EXPECT_EQ(Words(" \t a\r\nb \v\f c "), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(Words(""), std::vector<std::string>{});
    EXPECT_EQ(Words(" \t "), std::vector<std::string>{});
}

TEST(SDPText, WordKeepsZeroAndHighBytes) {
    EXPECT_EQ(Words(std::string_view("a\0b \xA0", 5)),
              (std::vector<std::string>{std::string("a\0b", 3), "\xA0"}));
}

TEST(SDPText, CuttingAWordLeavesTheRestUntouched) {
    std::string_view rest = " first  second ";
    EXPECT_EQ(sdp::NextWord(rest), "first");
    EXPECT_EQ(rest, "  second ");
    EXPECT_EQ(sdp::NextWord(rest), "second");
    EXPECT_EQ(rest, " ");
    EXPECT_EQ(sdp::NextWord(rest), "");
    EXPECT_EQ(rest, "");
}

/// A text of `length` letters with `c` at one place.
std::string LettersWith(std::size_t length, std::size_t at, char c) {
    std::string text(length, 'x');
    text[at] = c;
    return text;
}

TEST(SDPText, ByteIsFoundAtEveryPlaceOfEveryLength) {
    for (std::size_t length = 0; length < 40; ++length) {
        EXPECT_EQ(sdp::FindByte(std::string(length, 'x'), '='), std::string_view::npos) << length;
        for (std::size_t at = 0; at < length; ++at) {
            EXPECT_EQ(sdp::FindByte(LettersWith(length, at, '='), '='), at) << length;
        }
    }
}

TEST(SDPText, ByteIsFoundBesideItsNeighboursInTheAlphabet) {
    EXPECT_EQ(sdp::FindByte("<><><><><><><><=>>=", '='), 15U);
    EXPECT_EQ(sdp::FindByte(std::string_view("\0\1\0\1\0\1\0\1\2", 9), '\2'), 8U);
    EXPECT_EQ(sdp::FindByte("\xBD\xBD\xBD\xBD\xBD\xBD\xBD=", '='), 7U);
}

TEST(SDPText, FirstOfSeveralBytesIsFound) {
    EXPECT_EQ(sdp::FindByte("a=b=c=d=e=f=g=", '='), 1U);
    EXPECT_EQ(sdp::FindByte("........========", '='), 8U);
}

TEST(SDPText, BlankIsFoundAtEveryPlaceOfEveryLength) {
    for (const char blank : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        for (std::size_t length = 0; length < 40; ++length) {
            EXPECT_EQ(sdp::FindBlank(std::string(length, 'x')), length);
            for (std::size_t at = 0; at < length; ++at) {
                EXPECT_EQ(sdp::FindBlank(LettersWith(length, at, blank)), at) << length;
            }
        }
    }
}

TEST(SDPText, ControlCharactersAreNoBlanks) {
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            EXPECT_EQ(sdp::FindBlank(LettersWith(length, at, '\x1f')), length) << at;
            EXPECT_EQ(sdp::FindBlank(LettersWith(length, at, '\x80')), length) << at;
            EXPECT_EQ(sdp::FindBlank(LettersWith(length, at, '!')), length) << at;
        }
    }
    EXPECT_EQ(sdp::FindBlank("\x01\x02\x03\x04\x05\x06\x07\x08 "), 8U);
    EXPECT_EQ(sdp::FindBlank("ab\x01"
                             "cd\x02 gh"),
              6U);
}

TEST(SDPText, LineEndsInBothItsBytes) {
    EXPECT_EQ(sdp::FindLineEnd("v=0\r\ns=-\r\n"), 3U);
    EXPECT_EQ(sdp::FindLineEnd("v=0\rs=-\ns\r\r\n"), 10U);
    EXPECT_EQ(sdp::FindLineEnd("\r\n"), 0U);
    EXPECT_EQ(sdp::FindLineEnd("v=0\r"), std::string_view::npos);
    EXPECT_EQ(sdp::FindLineEnd("v=0\n\r"), std::string_view::npos);
    EXPECT_EQ(sdp::FindLineEnd("v=0\n"), std::string_view::npos);
    EXPECT_EQ(sdp::FindLineEnd(""), std::string_view::npos);
}

TEST(SDPText, LineEndIsNotReadBeyondTheText) {
    EXPECT_EQ(sdp::FindLineEnd(std::string_view("v=0\r\n", 4)), std::string_view::npos);
}

TEST(SDPText, StartsWithComparesTheWholeStart) {
    EXPECT_TRUE(sdp::StartsWith("bitrate=32000", "bitrate="));
    EXPECT_TRUE(sdp::StartsWith("bitrate", "bitrate"));
    EXPECT_TRUE(sdp::StartsWith("bitrate", ""));
    EXPECT_FALSE(sdp::StartsWith("bitrat", "bitrate"));
    EXPECT_FALSE(sdp::StartsWith(" bitrate", "bitrate"));
}

TEST(SDPText, ContainsFindsATextAnywhere) {
    EXPECT_TRUE(sdp::Contains("UDP/BFCP *", "BFCP"));
    EXPECT_TRUE(sdp::Contains("BFCP", "BFCP"));
    EXPECT_FALSE(sdp::Contains("UDP/bfcp", "BFCP"));
    EXPECT_FALSE(sdp::Contains("BFC", "BFCP"));
}

TEST(SDPText, TextAfterTakesTheFirstOccurrence) {
    EXPECT_EQ(sdp::TextAfter("b=AS:384", "AS:"), "384");
    EXPECT_EQ(sdp::TextAfter("AS:1 AS:2", "AS:"), "1 AS:2");
    EXPECT_EQ(sdp::TextAfter("x AS:", "AS:"), "");
    EXPECT_EQ(sdp::TextAfter("b=CT:384", "AS:"), std::nullopt);
}

TEST(SDPText, NumberReadsASignAndDigitsBehindWhiteSpace) {
    EXPECT_EQ(sdp::Number("5000"), 5000);
    EXPECT_EQ(sdp::Number("5000/2"), 5000);
    EXPECT_EQ(sdp::Number("-12x"), -12);
    EXPECT_EQ(sdp::Number("+12"), 12);
    EXPECT_EQ(sdp::Number(" \t\r\n\v\f7"), 7);
    EXPECT_EQ(sdp::Number("0x10"), 0);
    EXPECT_EQ(sdp::Number("0010"), 10);
}

TEST(SDPText, NumberWithoutDigitsIsZero) {
    for (const char* text : {"", " ", "-", "+", "abc", "--1", "+-1", "- 1", ":1", "/1"}) {
        EXPECT_EQ(sdp::Number(text), 0) << text;
    }
    EXPECT_EQ(sdp::Number(std::string_view("\0005", 2)), 0);
    EXPECT_EQ(sdp::Number(std::string_view("4\0005", 3)), 4);
}

TEST(SDPText, NumberAtTheEdgesOf32Bits) {
    EXPECT_EQ(sdp::Number("2147483647"), 2147483647);
    EXPECT_EQ(sdp::Number("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(sdp::Number("2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(sdp::Number("4294967295"), -1);
    EXPECT_EQ(sdp::Number("4294967296"), 0);
    EXPECT_EQ(sdp::Number("4294967297"), 1);
    EXPECT_EQ(sdp::Number("-2147483649"), 2147483647);
    EXPECT_EQ(sdp::Number("-4294967297"), -1);
}

TEST(SDPText, NumberAtTheEdgesOf64Bits) {
    // 2^63 - 1 and everything above it narrow to -1; -2^63 and everything below it narrow to 0.
    EXPECT_EQ(sdp::Number("9223372036854775806"), -2);
    EXPECT_EQ(sdp::Number("9223372036854775807"), -1);
    EXPECT_EQ(sdp::Number("9223372036854775808"), -1);
    EXPECT_EQ(sdp::Number("9223372036854775809"), -1);
    EXPECT_EQ(sdp::Number("18446744073709551616"), -1);
    EXPECT_EQ(sdp::Number("99999999999999999999999999999999"), -1);
    EXPECT_EQ(sdp::Number("-9223372036854775807"), 1);
    EXPECT_EQ(sdp::Number("-9223372036854775808"), 0);
    EXPECT_EQ(sdp::Number("-9223372036854775809"), 0);
    EXPECT_EQ(sdp::Number("-99999999999999999999999999999999"), 0);
}

TEST(SDPText, NarrowingKeepsTheLower32Bits) {
    static_assert(sdp::Narrow(5) == 5);
    static_assert(sdp::Narrow(0x80000000U) == std::numeric_limits<std::int32_t>::min());
    static_assert(sdp::Narrow(0xFFFFFFFFU) == -1);
    EXPECT_EQ(sdp::Narrow(0x100000007U), 7);
}

TEST(SDPText, SumsWrapIn32Bits) {
    EXPECT_EQ(sdp::WrappingAdd(16384, 1), 16385);
    EXPECT_EQ(sdp::WrappingAdd(-5, 3), -2);
    EXPECT_EQ(sdp::WrappingAdd(2147483647, 1), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(sdp::WrappingAdd(2000000000, 2000000000), -294967296);
    EXPECT_EQ(sdp::WrappingAdd(std::numeric_limits<std::int32_t>::min(), -1), 2147483647);
}

TEST(SDPText, ProductsWrapIn32Bits) {
    EXPECT_EQ(sdp::WrappingMultiply(512, 1000), 512000);
    EXPECT_EQ(sdp::WrappingMultiply(-3, 1000), -3000);
    EXPECT_EQ(sdp::WrappingMultiply(2147483, 1000), 2147483000);
    EXPECT_EQ(sdp::WrappingMultiply(2147484, 1000), -2147483296);
    EXPECT_EQ(sdp::WrappingMultiply(4294968, 1000), 704);
    EXPECT_EQ(sdp::WrappingMultiply(-1, -1), 1);
}

TEST(SDPText, AKeywordHasItsEqualsSignInSecondPlace) {
    static constexpr Row kGood[] = {{"c="}, {"a=rtpmap"}};
    static constexpr Row kShort[] = {{"c="}, {"a"}};
    static constexpr Row kOther[] = {{"rtpmap"}, {"c="}};
    static_assert(sdp::AreKeywords(kGood));
    static_assert(!sdp::AreKeywords(kShort));
    static_assert(!sdp::AreKeywords(kOther));
}

constexpr Row kThree[] = {{"c="}, {"a=ice"}, {"a="}};
constexpr Row kTwo[] = {{"c="}, {"a=ice"}};

TEST(SDPText, FirstKeywordIsFirstInTableOrderWhereverItStands) {
    EXPECT_EQ(sdp::FirstKeyword<kThree>("c=IN"), &kThree[0]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("a=x c=IN"), &kThree[0]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("a=x a=ice-pwd"), &kThree[1]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("a=ice"), &kThree[1]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("a=ic"), &kThree[2]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("==a=="), &kThree[2]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("xc="), &kThree[0]);
    EXPECT_EQ(sdp::FirstKeyword<kThree>("b=1 a="), &kThree[2]);
}

TEST(SDPText, NoKeywordIsNoRow) {
    for (const char* line : {"", "=", "c", "C=", "a=ic", "v=0", "=c", "c =", "ice", "=ice"}) {
        EXPECT_EQ(sdp::FirstKeyword<kTwo>(line), nullptr) << line;
    }
    EXPECT_EQ(sdp::FirstKeyword<kTwo>(std::string_view()), nullptr);
}

TEST(SDPText, KeywordCutShortByTheEndOfTheLineIsNone) {
    // The bytes behind the view would complete the keyword.
    EXPECT_EQ(sdp::FirstKeyword<kTwo>(std::string_view("x a=ice", 6)), nullptr);
    EXPECT_EQ(sdp::FirstKeyword<kTwo>(std::string_view("x a=ice", 7)), &kTwo[1]);
}

} // namespace
