// Searches at every offset of texts of every length; bytes outside of a text have no effect.
// This file is built twice: as every test is, and alone without SSE2.
#include "SDPSearch.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#if defined(COMMONMEDIA_SEARCH_PORTABLE) && defined(__SSE2__)
#error "This program is there to test the way that needs no SSE2."
#endif

namespace {

constexpr std::size_t kLongest = 70;
constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// Bytes in an allocation of exactly their size: the address sanitizer sees a read before or after them.
using Exact = std::vector<char>;

std::string_view View(const Exact& bytes) {
    return {bytes.data(), bytes.size()};
}

Exact ExactOf(std::string_view text) {
    return Exact(text.begin(), text.end());
}

const auto kFindEquals = [](std::string_view text, std::size_t at) { return sdp::FindByte(text, '=', at); };
const auto kFindEqualsOrReturn = [](std::string_view text, std::size_t at) {
    return sdp::FindEither(text, '=', '\r', at);
};
const auto kFindBlank = [](std::string_view text, std::size_t at) { return sdp::FindBlank(text, at); };
const auto kFindNoBlank = [](std::string_view text, std::size_t at) { return sdp::FindNoBlank(text, at); };

/// One matching byte at every offset of texts of every length, searched from every offset.
template <typename Search>
void ExpectFoundAtEveryPlace(Search search, char wanted, char other) {
    for (std::size_t length = 0; length <= kLongest; ++length) {
        Exact bytes(length, other);
        for (std::size_t at = 0; at <= length; ++at) {
            ASSERT_EQ(search(View(bytes), at), length) << "from " << at;
        }
        for (std::size_t place = 0; place < length; ++place) {
            bytes[place] = wanted;
            for (std::size_t at = 0; at <= length; ++at) {
                ASSERT_EQ(search(View(bytes), at), at <= place ? place : length)
                    << int{wanted} << " at " << place << " of " << length << " from " << at;
            }
            bytes[place] = other;
        }
    }
}

/// A text of `other` only, between two matching bytes.
template <typename Search>
void ExpectNothingFoundOutside(Search search, char wanted, char other) {
    constexpr std::size_t margin = 40;
    for (std::size_t length = 0; length <= kLongest; ++length) {
        std::string around(margin + length + margin, wanted);
        around.replace(margin, length, length, other);
        const std::string_view text = std::string_view(around).substr(margin, length);
        for (std::size_t at = 0; at <= length; ++at) {
            ASSERT_EQ(search(text, at), length) << "from " << at;
        }
    }
}

/// Texts of every length of one byte that does not match.
template <typename Search>
void ExpectNeverFound(Search search, char other) {
    for (std::size_t length = 0; length <= kLongest; ++length) {
        const Exact bytes(length, other);
        ASSERT_EQ(search(View(bytes), 0), length) << int{other};
        ASSERT_EQ(search(View(bytes), length / 2), length) << int{other};
    }
}

template <typename Is>
std::size_t Naive(std::string_view text, std::size_t at, Is is) {
    while (at < text.size() && !is(text[at])) {
        ++at;
    }
    return at;
}

/// Texts with many matching bytes, from every offset, compared with a search byte by byte.
template <typename Search, typename Is>
void ExpectAsNaive(Search search, Is is, std::string_view alphabet) {
    std::minstd_rand random(7);
    for (int count = 0; count < 700; ++count) {
        Exact bytes(random() % (kLongest + 1));
        for (char& c : bytes) {
            c = alphabet[random() % alphabet.size()];
        }
        for (std::size_t at = 0; at <= bytes.size(); ++at) {
            ASSERT_EQ(search(View(bytes), at), Naive(View(bytes), at, is))
                << ::testing::PrintToString(bytes) << " from " << at;
        }
    }
}

TEST(SDPSearch, SixCharactersAreWhiteSpace) {
    static_assert(sdp::IsBlank(' ') && !sdp::IsBlank('x'));
    for (int c = 0; c < 256; ++c) {
        const bool isExpected = c == 32 || c == 9 || c == 10 || c == 11 || c == 12 || c == 13;
        EXPECT_EQ(sdp::IsBlank(static_cast<char>(c)), isExpected) << c;
    }
}

TEST(SDPSearch, BitOfSixteenStandsForItsByte) {
    static_assert(sdp::SixteenBytes::kSize == 16);
    const Exact bytes = ExactOf("a=b \t=\r=\n= \v\f=zz");
    const sdp::SixteenBytes sixteen(bytes.data());
    EXPECT_EQ(sixteen.Equal('='), 0x22A2U);
    EXPECT_EQ(sixteen.Equal('a'), 0x0001U);
    EXPECT_EQ(sixteen.Equal('z'), 0xC000U);
    EXPECT_EQ(sixteen.Equal('y'), 0x0000U);
    EXPECT_EQ(sixteen.Blank(), 0x1D58U);
}

TEST(SDPSearch, SixteenBytesGiveEveryPatternOfBits) {
    Exact bytes(16);
    for (unsigned pattern = 0; pattern <= 0xFFFFU; ++pattern) {
        for (unsigned n = 0; n < 16; ++n) {
            bytes[n] = (pattern >> n & 1U) != 0 ? '\r' : 'x';
        }
        const sdp::SixteenBytes sixteen(bytes.data());
        ASSERT_EQ(sixteen.Equal('\r'), pattern);
        ASSERT_EQ(sixteen.Blank(), pattern);
    }
}

TEST(SDPSearch, SixteenBytesKnowEveryByteAtEveryPlace) {
    for (unsigned n = 0; n < 16; ++n) {
        for (int c = 0; c < 256; ++c) {
            Exact bytes(16, 'x');
            bytes[n] = static_cast<char>(c);
            const sdp::SixteenBytes sixteen(bytes.data());
            const unsigned bit = 1U << n;
            const bool isBlank = c == 32 || (c >= 9 && c <= 13);
            ASSERT_EQ(sixteen.Equal('='), c == 0x3D ? bit : 0U) << c << " at " << n;
            ASSERT_EQ(sixteen.Equal('\xBD'), c == 0xBD ? bit : 0U) << c << " at " << n;
            ASSERT_EQ(sixteen.Equal('\0'), c == 0 ? bit : 0U) << c << " at " << n;
            ASSERT_EQ(sixteen.Blank(), isBlank ? bit : 0U) << c << " at " << n;
        }
    }
}

TEST(SDPSearch, SixteenBytesStandAtAnyAddress) {
    for (std::size_t before = 0; before < 16; ++before) {
        const Exact bytes = ExactOf(std::string(before, '=') + "=xxxxxxxxxxxxx==");
        const sdp::SixteenBytes sixteen(bytes.data() + before);
        EXPECT_EQ(sixteen.Equal('='), 0xC001U) << before;
    }
}

TEST(SDPSearch, ByteIsFoundAtEveryPlaceOfEveryLength) {
    ExpectFoundAtEveryPlace(kFindEquals, '=', 'x');
    ExpectFoundAtEveryPlace(
        [](std::string_view text, std::size_t at) { return sdp::FindByte(text, '\xBD', at); }, '\xBD', '=');
}

TEST(SDPSearch, EitherByteIsFoundAtEveryPlaceOfEveryLength) {
    ExpectFoundAtEveryPlace(kFindEqualsOrReturn, '=', 'x');
    ExpectFoundAtEveryPlace(kFindEqualsOrReturn, '\r', 'x');
}

TEST(SDPSearch, BlankIsFoundAtEveryPlaceOfEveryLength) {
    for (const char blank : kBlanks) {
        ExpectFoundAtEveryPlace(kFindBlank, blank, 'x');
    }
}

TEST(SDPSearch, ByteThatIsNoBlankIsFoundAtEveryPlaceOfEveryLength) {
    for (const char blank : kBlanks) {
        ExpectFoundAtEveryPlace(kFindNoBlank, 'x', blank);
    }
}

TEST(SDPSearch, BytesBesideATextAreNotFound) {
    ExpectNothingFoundOutside(kFindEquals, '=', 'x');
    ExpectNothingFoundOutside(kFindEqualsOrReturn, '=', 'x');
    ExpectNothingFoundOutside(kFindEqualsOrReturn, '\r', 'x');
    ExpectNothingFoundOutside(kFindBlank, ' ', 'x');
    ExpectNothingFoundOutside(kFindNoBlank, 'x', ' ');
}

TEST(SDPSearch, OnlyTheBytesAskedForAreFound) {
    for (int c = 0; c < 256; ++c) {
        const auto byte = static_cast<char>(c);
        const bool isBlank = c == 32 || (c >= 9 && c <= 13);
        if (c != 0x3D) {
            ExpectNeverFound(kFindEquals, byte);
        }
        if (c != 0x3D && c != 0x0D) {
            ExpectNeverFound(kFindEqualsOrReturn, byte);
        }
        if (isBlank) {
            ExpectNeverFound(kFindNoBlank, byte);
        } else {
            ExpectNeverFound(kFindBlank, byte);
        }
    }
}

TEST(SDPSearch, NeighboursInTheAlphabetAreOtherBytes) {
    EXPECT_EQ(sdp::FindByte("<><><><><><><><=>>=", '='), 15U);
    EXPECT_EQ(sdp::FindByte("<><><><>", '='), 8U);
    EXPECT_EQ(sdp::FindByte(std::string_view("\0\1\0\1\0\1\0\1\2", 9), '\2'), 8U);
    EXPECT_EQ(sdp::FindByte(std::string_view("abcdefghijklmnopqrstuvwxyz\0\0", 28), '\0'), 26U);
    EXPECT_EQ(sdp::FindByte("\xBD\xBD\xBD\xBD\xBD\xBD\xBD=", '='), 7U);
    EXPECT_EQ(sdp::FindEither("<>\x0C\x0E\xBD\x8D<>\x0C\x0E\xBD\x8D<>\x0C\x0E\xBD\r", '=', '\r'), 17U);
    EXPECT_EQ(sdp::FindBlank("\x01\x02\x03\x04\x05\x06\x07\x08 "), 8U);
    EXPECT_EQ(sdp::FindBlank("\x08\x0E\x1F!\x7F\x80\x85\x89\x8D\xA0\xFF\x08\x0E\x1F!\x7F\x80\x85\t"), 18U);
    EXPECT_EQ(sdp::FindNoBlank(" \t\n\v\f\r\x08"), 6U);
    EXPECT_EQ(sdp::FindNoBlank(" \t\n\v\f\r\xA0"), 6U);
    EXPECT_EQ(sdp::FindNoBlank(std::string_view(" \0 ", 3)), 1U);
}

TEST(SDPSearch, FirstOfSeveralIsFound) {
    EXPECT_EQ(sdp::FindByte("a=b=c=d=e=f=g=", '='), 1U);
    EXPECT_EQ(sdp::FindByte("........========", '='), 8U);
    EXPECT_EQ(sdp::FindByte("a=rtpmap:97 H264/90000=", '=', 2), 22U);
    EXPECT_EQ(sdp::FindEither("v=0\r\ns=-\r\n", '=', '\r'), 1U);
    EXPECT_EQ(sdp::FindEither("v=0\r\ns=-\r\n", '=', '\r', 2), 3U);
    EXPECT_EQ(sdp::FindEither("v=0\r\ns=-\r\n", '=', '\r', 4), 6U);
    EXPECT_EQ(sdp::FindEither("v=0\r\ns=-\r\n", '=', '\r', 9), 10U);
    EXPECT_EQ(sdp::FindBlank("m=audio 5000 RTP/AVP 0"), 7U);
    EXPECT_EQ(sdp::FindBlank("m=audio 5000 RTP/AVP 0", 8), 12U);
    EXPECT_EQ(sdp::FindBlank("m=audio 5000 RTP/AVP 0", 13), 20U);
    EXPECT_EQ(sdp::FindBlank("m=audio 5000 RTP/AVP 0", 21), 22U);
    EXPECT_EQ(sdp::FindNoBlank("a  b", 1), 3U);
}

TEST(SDPSearch, NothingIsFoundInNoText) {
    for (const std::string_view none : {std::string_view(), std::string_view("")}) {
        EXPECT_EQ(sdp::FindByte(none, '='), 0U);
        EXPECT_EQ(sdp::FindByte(none, '\0'), 0U);
        EXPECT_EQ(sdp::FindEither(none, '=', '\r'), 0U);
        EXPECT_EQ(sdp::FindBlank(none), 0U);
        EXPECT_EQ(sdp::FindNoBlank(none), 0U);
    }
}

TEST(SDPSearch, NothingIsFoundAfterTheEnd) {
    EXPECT_EQ(sdp::FindByte("=", '=', 1), 1U);
    EXPECT_EQ(sdp::FindByte("================", '=', 16), 16U);
    EXPECT_EQ(sdp::FindByte("=================", '=', 17), 17U);
    EXPECT_EQ(sdp::FindEither("\r===============", '=', '\r', 16), 16U);
    EXPECT_EQ(sdp::FindBlank("                ", 16), 16U);
    EXPECT_EQ(sdp::FindNoBlank("xxxxxxxxxxxxxxxx", 16), 16U);
}

// The last bytes of a text are looked at together with some in front of them, which the search has passed.
TEST(SDPSearch, PassedBytesAreNotFoundAgain) {
    EXPECT_EQ(sdp::FindByte("0123456789=12345678=", '=', 10), 10U);
    EXPECT_EQ(sdp::FindByte("0123456789=12345678=", '=', 11), 19U);
    EXPECT_EQ(sdp::FindByte("0123456789=123456789", '=', 11), 20U);
    EXPECT_EQ(sdp::FindByte("0123=56789=123456789", '=', 5), 10U);
    EXPECT_EQ(sdp::FindByte("===============x", '=', 15), 16U);
    EXPECT_EQ(sdp::FindByte("===============x", '=', 14), 14U);
    EXPECT_EQ(sdp::FindByte("x===============x", '=', 16), 17U);
    EXPECT_EQ(sdp::FindByte("xxxxxxxxxxxxxxxx===============x", '=', 31), 32U);
    EXPECT_EQ(sdp::FindByte("xxxxxxxxxxxxxxx=x", '=', 0), 15U);
    EXPECT_EQ(sdp::FindByte("xxxxxxxxxxxxxxxx=", '=', 0), 16U);
    EXPECT_EQ(sdp::FindByte("xxxxxxxxxxxxxxxx=", '=', 1), 16U);
    EXPECT_EQ(sdp::FindEither("=\r=\r=\r=\r=\r=\r=\r=\r=x", '=', '\r', 17), 18U);
    EXPECT_EQ(sdp::FindBlank("   a               b", 19), 20U);
}

TEST(SDPSearch, FirstIsFoundByWhatTellsIt) {
    const auto bits = [](sdp::SixteenBytes bytes) { return bytes.Equal('7'); };
    const auto is = [](char c) { return c == '7'; };
    EXPECT_EQ(sdp::FindFirst("0123456789", 0, bits, is), 7U);
    EXPECT_EQ(sdp::FindFirst("0123456789", 8, bits, is), 10U);
    EXPECT_EQ(sdp::FindFirst("01234567890123456789", 0, bits, is), 7U);
    EXPECT_EQ(sdp::FindFirst("01234567890123456789", 8, bits, is), 17U);
    EXPECT_EQ(sdp::FindFirst("01234567890123456789", 18, bits, is), 20U);
}

TEST(SDPSearch, EverySearchIsOneByteAfterTheOther) {
    const auto isBlank = [](char c) { return kBlanks.find(c) != std::string_view::npos; };
    ExpectAsNaive(
        kFindEquals, [](char c) { return c == '='; }, "=xxxxxxxxxxxxxxxxxxxxxxxx<>\xBD");
    ExpectAsNaive(
        kFindEqualsOrReturn, [](char c) { return c == '=' || c == '\r'; },
        "=\rxxxxxxxxxxxxxxxxxxxxx<>\xBD\n\f");
    ExpectAsNaive(kFindBlank, isBlank, " \t\n\v\f\rxxxxxxxxxxxxxxxxxxxxxxxxxxxx\x08\x0E\x1F!\x89\xA0");
    ExpectAsNaive(
        kFindNoBlank, [isBlank](char c) { return !isBlank(c); }, "    \t\t\t\n\n\v\f\r\rx");
}

} // namespace
