// The text operations that parse and build share: words and numbers.
#include "SDPText.h"

#include "Exact.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::Exact;

std::string RandomText(std::minstd_rand& random, std::size_t longest, std::string_view alphabet) {
    std::string text(random() % (longest + 1), '\0');
    for (char& c : text) {
        c = alphabet[random() % alphabet.size()];
    }
    return text;
}

std::vector<std::string> WordsOf(std::string_view text) {
    const Exact exact(text);
    sdp::Words cut(exact.View());
    std::vector<std::string> words;
    for (std::string_view word = cut.Next(); !word.empty(); word = cut.Next()) {
        words.emplace_back(word);
    }
    EXPECT_EQ(cut.Left(), 0U);
    return words;
}

TEST(SDPText, AfterDropsBytesAtTheFront) {
    static_assert(sdp::After("a=rtpmap", 2) == "rtpmap");
    EXPECT_EQ(sdp::After("a=rtpmap", 0), "a=rtpmap");
    EXPECT_EQ(sdp::After("a=rtpmap", 7), "p");
    EXPECT_EQ(sdp::After("a=rtpmap", 8), "");
    EXPECT_EQ(sdp::After("", 0), "");
    const std::string_view text = "abc";
    EXPECT_EQ(sdp::After(text, 3).data(), text.data() + 3);
}

TEST(SDPText, WordsAreBetweenRunsOfWhiteSpace) {
    using Expected = std::vector<std::string>;
    EXPECT_EQ(WordsOf("m=audio 5000 RTP/AVP 0"), (Expected{"m=audio", "5000", "RTP/AVP", "0"}));
    EXPECT_EQ(WordsOf(" \t a\r\nb \v\f c "), (Expected{"a", "b", "c"}));
    EXPECT_EQ(WordsOf("a"), (Expected{"a"}));
    EXPECT_EQ(WordsOf("a "), (Expected{"a"}));
    EXPECT_EQ(WordsOf(" a"), (Expected{"a"}));
    EXPECT_EQ(WordsOf("a=crypto:1 AES_CM_128_HMAC_SHA1_32 x"),
              (Expected{"a=crypto:1", "AES_CM_128_HMAC_SHA1_32", "x"}));
    EXPECT_EQ(WordsOf(""), Expected{});
    EXPECT_EQ(WordsOf(std::string_view()), Expected{});
    EXPECT_EQ(WordsOf(" \t "), Expected{});
    EXPECT_EQ(WordsOf("                                        "), Expected{});
}

TEST(SDPText, WordKeepsZeroAndHighBytes) {
    EXPECT_EQ(WordsOf(std::string_view("a\0b \xA0", 5)),
              (std::vector<std::string>{std::string("a\0b", 3), "\xA0"}));
    EXPECT_EQ(WordsOf("\x08 \x0E \x1F \x7F \x85"),
              (std::vector<std::string>{"\x08", "\x0E", "\x1F", "\x7F", "\x85"}));
}

TEST(SDPText, WordsTellHowManyBytesAreLeft) {
    sdp::Words words(" first  second ");
    EXPECT_EQ(words.Left(), 15U);
    EXPECT_EQ(words.Next(), "first");
    EXPECT_EQ(words.Left(), 9U);
    EXPECT_EQ(words.Next(), "second");
    EXPECT_EQ(words.Left(), 1U);
    EXPECT_EQ(words.Next(), "");
    EXPECT_EQ(words.Left(), 0U);
    EXPECT_EQ(sdp::Words("").Left(), 0U);
}

TEST(SDPText, NoWordFollowsTheLast) {
    for (const char* text : {"", " ", "a", "a ", "a=twenty-one-letters.", "a=twenty-one-letters. "}) {
        sdp::Words words(text);
        words.Next();
        for (int again = 0; again < 3; ++again) {
            EXPECT_EQ(words.Next(), "") << text;
            EXPECT_EQ(words.Left(), 0U) << text;
        }
    }
}

TEST(SDPText, WordIsAPieceOfTheLine) {
    const std::string_view line = "a=rtpmap:97 H264/90000";
    sdp::Words words(line);
    EXPECT_EQ(words.Next().data(), line.data());
    EXPECT_EQ(words.Next().data(), line.data() + 12);
}

TEST(SDPText, WordEndsWithTheLine) {
    // The letters after the view belong to no word.
    sdp::Words words(std::string_view("one twothree", 7));
    EXPECT_EQ(words.Next(), "one");
    EXPECT_EQ(words.Next(), "two");
    EXPECT_EQ(words.Next(), "");
}

TEST(SDPText, WordsOfEveryLengthAreCut) {
    for (std::size_t first = 1; first < 40; ++first) {
        for (std::size_t blanks = 1; blanks < 20; ++blanks) {
            for (std::size_t second = 1; second < 40; ++second) {
                const std::string firstText(first, 'x');
                const std::string secondText(second, 'y');
                ASSERT_EQ(WordsOf(firstText + std::string(blanks, ' ') + secondText),
                          (std::vector<std::string>{firstText, secondText}))
                    << first << ' ' << blanks << ' ' << second;
            }
        }
    }
}

TEST(SDPText, WordsAreCutOneByteAfterTheOther) {
    std::minstd_rand random(3);
    for (int count = 0; count < 3000; ++count) {
        const std::string lineText =
            RandomText(random, 70, "   \t\r\n\v\fabcdefghijklmnopqrstuvwxyz0123456789=:/");
        std::vector<std::string> expected;
        bool isInWord = false;
        for (const char c : lineText) {
            const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
            if (!isBlank && !isInWord) {
                expected.emplace_back();
            }
            if (!isBlank) {
                expected.back() += c;
            }
            isInWord = !isBlank;
        }
        ASSERT_EQ(WordsOf(lineText), expected) << lineText;
    }
}

TEST(SDPText, StartsWithComparesTheWholeStart) {
    EXPECT_TRUE(sdp::StartsWith("bitrate=32000", "bitrate="));
    EXPECT_TRUE(sdp::StartsWith("bitrate", "bitrate"));
    EXPECT_TRUE(sdp::StartsWith("bitrate", ""));
    EXPECT_FALSE(sdp::StartsWith("bitrat", "bitrate"));
    EXPECT_FALSE(sdp::StartsWith(" bitrate", "bitrate"));
}

TEST(SDPText, StartIsNotReadAfterTheText) {
    EXPECT_FALSE(sdp::StartsWith(std::string_view("bitrate=", 7), "bitrate="));
    EXPECT_TRUE(sdp::StartsWith(std::string_view("bitrate=", 8), "bitrate="));
    EXPECT_FALSE(sdp::StartsWith(std::string_view("bit\0rate", 8), "bit\1rate"));
    EXPECT_FALSE(sdp::StartsWith(Exact("bit").View(), "bitrate"));
    EXPECT_FALSE(sdp::StartsWith(std::string_view(), "b"));
}

TEST(SDPText, ContainsFindsATextAnywhere) {
    EXPECT_TRUE(sdp::Contains("UDP/BFCP *", "BFCP"));
    EXPECT_TRUE(sdp::Contains("BFCP", "BFCP"));
    EXPECT_FALSE(sdp::Contains("UDP/bfcp", "BFCP"));
    EXPECT_FALSE(sdp::Contains("BFC", "BFCP"));
    EXPECT_FALSE(sdp::Contains("", "BFCP"));
}

TEST(SDPText, FindTellsWhereATextFirstStands) {
    EXPECT_EQ(sdp::Find("a=fmtp:97 a=fmtp:", "a=fmtp:"), 0U);
    EXPECT_EQ(sdp::Find("xa=fmtp:97", "a=fmtp:"), 1U);
    EXPECT_EQ(sdp::Find("a=fmtp:", "a=fmtp:"), 0U);
    EXPECT_EQ(sdp::Find("a=fmtp", "a=fmtp:"), std::string_view::npos);
    EXPECT_EQ(sdp::Find("", "a=fmtp:"), std::string_view::npos);
}

TEST(SDPText, TextAfterTakesTheFirstOccurrence) {
    EXPECT_EQ(sdp::TextAfter("b=AS:384", "AS:"), "384");
    EXPECT_EQ(sdp::TextAfter("AS:1 AS:2", "AS:"), "1 AS:2");
    EXPECT_EQ(sdp::TextAfter("x AS:", "AS:"), "");
    EXPECT_EQ(sdp::TextAfter("AS:", "AS:"), "");
    EXPECT_EQ(sdp::TextAfter("AAS:AS:", "AS:"), "AS:");
    EXPECT_EQ(sdp::TextAfter("b=CT:384", "AS:"), std::nullopt);
    EXPECT_EQ(sdp::TextAfter("", "AS:"), std::nullopt);
}

TEST(SDPText, TenCharactersAreDigits) {
    static_assert(sdp::IsDigit('0') && sdp::IsDigit('9') && !sdp::IsDigit('a'));
    for (int c = 0; c < 256; ++c) {
        EXPECT_EQ(sdp::IsDigit(static_cast<char>(c)), c >= 0x30 && c <= 0x39) << c;
    }
}

TEST(SDPText, DigitsEndAtAnyOtherCharacter) {
    EXPECT_EQ(sdp::Digits("5000"), "5000");
    EXPECT_EQ(sdp::Digits("0123456789/0123456789"), "0123456789");
    EXPECT_EQ(sdp::Digits("0123456789:"), "0123456789");
    EXPECT_EQ(sdp::Digits("42=43"), "42");
    EXPECT_EQ(sdp::Digits("4 2"), "4");
    EXPECT_EQ(sdp::Digits(std::string_view("4\0002", 3)), "4");
    for (const char* text : {"", " 4", "-4", "+4", "x4", "=4"}) {
        EXPECT_EQ(sdp::Digits(text), "") << text;
    }
    EXPECT_EQ(sdp::Digits(std::string_view()), "");
    EXPECT_EQ(sdp::Digits(std::string_view("1234", 2)), "12");
    EXPECT_EQ(sdp::Digits(Exact("1234").View()), "1234");
    const std::string_view text = "12x";
    EXPECT_EQ(sdp::Digits(text).data(), text.data());
}

TEST(SDPText, NumberReadsASignAndDigits) {
    EXPECT_EQ(sdp::Number("5000"), 5000);
    EXPECT_EQ(sdp::Number("5000/2"), 5000);
    EXPECT_EQ(sdp::Number("5000 1"), 5000);
    EXPECT_EQ(sdp::Number("-12x"), -12);
    EXPECT_EQ(sdp::Number("+12"), 12);
    EXPECT_EQ(sdp::Number("-0"), 0);
    EXPECT_EQ(sdp::Number("12-5"), 12);
    EXPECT_EQ(sdp::Number("0x10"), 0);
    EXPECT_EQ(sdp::Number("0010"), 10);
}

TEST(SDPText, NumberWithoutDigitsIsZero) {
    for (const char* text : {"", " ", "-", "+", "abc", "--1", "+-1", "-+1", "++1", "- 1", ":1", "/1"}) {
        EXPECT_EQ(sdp::Number(text), 0) << text;
    }
    EXPECT_EQ(sdp::Number(std::string_view()), 0);
    EXPECT_EQ(sdp::Number(std::string_view("\0005", 2)), 0);
    EXPECT_EQ(sdp::Number(std::string_view("4\0005", 3)), 4);
}

TEST(SDPText, NumberSkipsWhiteSpaceInFront) {
    for (const char* text : {" 7", "\t7", "\n7", "\v7", "\f7", "\r7", " \t 7 8"}) {
        EXPECT_EQ(sdp::Number(text), 7) << text;
    }
    EXPECT_EQ(sdp::Number(" -7"), -7);
    EXPECT_EQ(sdp::Number("- 7"), 0);
    EXPECT_EQ(sdp::Number(" "), 0);
}

TEST(SDPText, NumberEndsWithTheText) {
    // The digits after the view belong to no number.
    EXPECT_EQ(sdp::Number(std::string_view("12345").substr(0, 0)), 0);
    EXPECT_EQ(sdp::Number(std::string_view("12345", 3)), 123);
    EXPECT_EQ(sdp::Number(std::string_view("-12345", 1)), 0);
    EXPECT_EQ(sdp::Number(std::string_view("-12345", 2)), -1);
    EXPECT_EQ(sdp::Number(std::string_view("0000000000000000012345", 18)), 1);
    EXPECT_EQ(sdp::Number(std::string_view("0000000000000000012345", 19)), 12);
    EXPECT_EQ(sdp::Number(Exact("127").View()), 127);
    EXPECT_EQ(sdp::Number(Exact("-").View()), 0);
    EXPECT_EQ(sdp::Number(Exact("000000000000000127").View()), 127);
    EXPECT_EQ(sdp::Number(Exact("0000000000000000127").View()), 127);
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
    EXPECT_EQ(sdp::Number("999999999999999999"), -1486618625);
    EXPECT_EQ(sdp::Number("-999999999999999999"), 1486618625);
    EXPECT_EQ(sdp::Number("123456789012345678"), -1506741426);
    EXPECT_EQ(sdp::Number("123456789012345678x"), -1506741426);
    EXPECT_EQ(sdp::Number("1000000000000000000"), -1486618624);
    EXPECT_EQ(sdp::Number("1234567890123456789"), 2112454933);
    EXPECT_EQ(sdp::Number("-1234567890123456789"), -2112454933);
    EXPECT_EQ(sdp::Number("+1234567890123456789/2"), 2112454933);
    EXPECT_EQ(sdp::Number("9223372036854775799"), -9);
    // 2^63 - 1 and everything above it narrow to -1; -2^63 and everything below it narrow to 0.
    EXPECT_EQ(sdp::Number("9223372036854775806"), -2);
    EXPECT_EQ(sdp::Number("9223372036854775807"), -1);
    EXPECT_EQ(sdp::Number("9223372036854775808"), -1);
    EXPECT_EQ(sdp::Number("9223372036854775809"), -1);
    EXPECT_EQ(sdp::Number("9223372036854775810"), -1);
    EXPECT_EQ(sdp::Number("9999999999999999999"), -1);
    EXPECT_EQ(sdp::Number("10000000000000000000"), -1);
    EXPECT_EQ(sdp::Number("18446744073709551616"), -1);
    EXPECT_EQ(sdp::Number("18446744073709551623"), -1);
    EXPECT_EQ(sdp::Number("+99999999999999999999"), -1);
    EXPECT_EQ(sdp::Number("99999999999999999999999999999999"), -1);
    EXPECT_EQ(sdp::Number("-9223372036854775806"), 2);
    EXPECT_EQ(sdp::Number("-9223372036854775807"), 1);
    EXPECT_EQ(sdp::Number("-9223372036854775808"), 0);
    EXPECT_EQ(sdp::Number("-9223372036854775809"), 0);
    EXPECT_EQ(sdp::Number("-18446744073709551617"), 0);
    EXPECT_EQ(sdp::Number("-99999999999999999999999999999999"), 0);
}

TEST(SDPText, ZerosInFrontOfANumberDoNotCount) {
    EXPECT_EQ(sdp::Number("0000000000000000000000000005"), 5);
    EXPECT_EQ(sdp::Number("-0000000000000000000000000005"), -5);
    EXPECT_EQ(sdp::Number("00000000000000000000000000"), 0);
    EXPECT_EQ(sdp::Number("0000000009223372036854775806"), -2);
    EXPECT_EQ(sdp::Number("-0000000009223372036854775807"), 1);
}

TEST(SDPText, NumberIsTheNarrowedNumberOfTheCLibrary) {
    std::minstd_rand random(5);
    for (int count = 0; count < 8000; ++count) {
        const std::string text = (random() % 3 == 0 ? RandomText(random, 1, "+-") : std::string()) +
                                 RandomText(random, 25, "00123456789") + RandomText(random, 1, "x- /0");
        const auto expected =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(std::strtoll(text.c_str(), nullptr, 10)));
        ASSERT_EQ(sdp::Number(Exact(text).View()), expected) << text;
    }
}

TEST(SDPText, HexNumberReadsAsTheCLibraryDoes) {
    constexpr std::uint64_t most = 0xFFFFFFFFFFFFFFFFU;
    struct {
        const char* text;
        std::uint64_t number;
    } const cases[] = {
        {"1f", 0x1F},
        {"1F", 0x1F},
        {"0d", 0x0D},
        {"001f", 0x1F},
        {"aBcDeF", 0xABCDEF},
        {"0123456789abcdef", 0x0123456789ABCDEF},
        {"1f;x", 0x1F},
        {"1f 2", 0x1F},
        {"14h", 0x14},
        {"1=2", 0x1},
        {" 1f", 0x1F},
        {" \t\n\v\f\r1f", 0x1F},
        {"+1f", 0x1F},
        {"  +1f", 0x1F},
        {"-1", most},
        {"-1f", 0xFFFFFFFFFFFFFFE1},
        {" -0x1f", 0xFFFFFFFFFFFFFFE1},
        {"-0", 0},
        {"0x1f", 0x1F},
        {"0X1F", 0x1F},
        {" +0x1f", 0x1F},
        {"0x0x1f", 0},
        {"00x1f", 0},
        {"0x", 0},
        {"0X", 0},
        {"-0x", 0},
        {"0xg", 0},
        {"0x 1", 0},
        {"0x-1", 0},
        {"x1f", 0},
        {"", 0},
        {" ", 0},
        {"-", 0},
        {"+", 0},
        {"--1", 0},
        {"+-1", 0},
        {"- 1", 0},
        {"g", 0},
        {"/0", 0},
        {":0", 0},
        {"@1", 0},
        {"`1", 0},
        {"\xA0"
         "1",
         0},
        {"\x08"
         "1",
         0},
        {"10000001F", 0x10000001F},
        {"7FFFFFFFFFFFFFFF", 0x7FFFFFFFFFFFFFFF},
        {"8000000000000000", 0x8000000000000000},
        {"-8000000000000000", 0x8000000000000000},
        {"-8000000000000001", 0x7FFFFFFFFFFFFFFF},
        {"FFFFFFFFFFFFFFFE", 0xFFFFFFFFFFFFFFFE},
        {"FFFFFFFFFFFFFFFF", most},
        {"-FFFFFFFFFFFFFFFF", 1},
        {"10000000000000000", most},
        {"-10000000000000000", most},
        {"1000000000000001F", most},
        {"0x10000000000000000", most},
        {"FFFFFFFFFFFFFFFFFFFFFF", most},
        {"10000000000000000;", most},
        {"1000000000000000;0", 0x1000000000000000},
        {"0000000000000000000000001F", 0x1F},
        {"-0x0000000000000000000000001", most},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(sdp::HexNumber(Exact(one.text).View()), one.number) << one.text;
        EXPECT_EQ(std::strtoull(one.text, nullptr, 16), one.number) << one.text;
    }
}

TEST(SDPText, HexNumberEndsWithTheText) {
    // The digits after the view belong to no number.
    EXPECT_EQ(sdp::HexNumber(std::string_view()), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("1f").substr(0, 0)), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("1f", 1)), 1U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("0x1f", 1)), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("0x1f", 2)), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("0x1f", 3)), 1U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("-1", 1)), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view(" 1", 1)), 0U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("1\0f", 3)), 1U);
    EXPECT_EQ(sdp::HexNumber(std::string_view("\0"
                                              "1",
                                              2)),
              0U);
}

TEST(SDPText, HexNumberOfAnyTextIsThatOfTheCLibrary) {
    std::minstd_rand random(9);
    for (int count = 0; count < 8000; ++count) {
        const std::string text =
            RandomText(random, 1, " \t") + RandomText(random, 1, "+-") + (random() % 2 == 0 ? "0x" : "") +
            RandomText(random, 20, "00123456789abcdefABCDEFff") + RandomText(random, 2, "gGxX-+ 0f");
        ASSERT_EQ(sdp::HexNumber(Exact(text).View()), std::strtoull(text.c_str(), nullptr, 16)) << text;
    }
    for (int count = 0; count < 8000; ++count) {
        const std::string text = RandomText(random, 8, " \t\r+-00xX1fFgG");
        ASSERT_EQ(sdp::HexNumber(Exact(text).View()), std::strtoull(text.c_str(), nullptr, 16)) << text;
    }
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

} // namespace
