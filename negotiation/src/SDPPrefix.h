// Which row of a table does a line begin with?
//
// Every line of a text is asked, so the rows that can match are told by its first and third byte ("a=" is the
// same in most), and their first eight bytes are compared as one number.
// Test: tests/negotiation/SDPPrefixTest.cpp
#pragma once

#include "SDPText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

namespace negotiation {

/// The first bytes of a keyword as a number, and the bits that they take.
struct Prefix {
    std::uint64_t bytes = 0;
    std::uint64_t mask = 0;
};

inline constexpr std::size_t kPrefixLength = sizeof(std::uint64_t);

/// The prefix of a keyword, first byte lowest.
constexpr Prefix PrefixOf(std::string_view keyword) {
    Prefix prefix;
    for (std::size_t at = 0; at < std::min(keyword.size(), kPrefixLength); ++at) {
        prefix.bytes |= std::uint64_t{static_cast<unsigned char>(keyword[at])} << (8 * at);
        prefix.mask |= std::uint64_t{0xFF} << (8 * at);
    }
    return prefix;
}

/// A table prepared for searches. In a set of rows bit n stands for row n.
template <std::size_t kRows>
struct Prefixes {
    static_assert(kRows <= 32);
    static constexpr std::size_t kLetters = 32;

    std::array<Prefix, kRows> rows{};
    std::array<std::uint32_t, kLetters> first{}; ///< rows whose keyword can have this first byte
    std::array<std::uint32_t, kLetters> third{};

    static constexpr std::size_t Letter(char c) { return static_cast<unsigned char>(c) % kLetters; }
};

template <const auto& kTable>
constexpr auto PrefixesOf() {
    Prefixes<std::size(kTable)> prefixes;
    for (std::size_t row = 0; row < std::size(kTable); ++row) {
        const std::string_view keyword = kTable[row].keyword;
        const std::uint32_t bit = std::uint32_t{1} << row;
        prefixes.rows[row] = PrefixOf(keyword);
        prefixes.first[prefixes.Letter(keyword[0])] |= bit;
        for (std::size_t letter = 0; letter < prefixes.kLetters; ++letter) {
            const bool canBe = keyword.size() < 3 || prefixes.Letter(keyword[2]) == letter;
            prefixes.third[letter] |= canBe ? bit : 0;
        }
    }
    return prefixes;
}

/// Index of the first row whose keyword `line` begins with; the number of rows for none. A keyword has two
/// bytes at least.
template <const auto& kTable>
std::size_t RowAt(std::string_view line) {
    static constexpr auto kPrefixes = PrefixesOf<kTable>();
    std::uint64_t start = 0;
    if (line.size() >= kPrefixLength) {
        std::memcpy(&start, line.data(), kPrefixLength);
    } else {
        std::memcpy(&start, line.data(), line.size());
    }
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    start = __builtin_bswap64(start);
#endif
    std::uint32_t rows =
        kPrefixes.first[start % kPrefixes.kLetters] & kPrefixes.third[(start >> 16U) % kPrefixes.kLetters];
    for (; rows != 0; rows &= rows - 1) {
        const auto row = static_cast<std::size_t>(__builtin_ctz(rows));
        if ((start & kPrefixes.rows[row].mask) == kPrefixes.rows[row].bytes &&
            (kTable[row].keyword.size() <= kPrefixLength || sdp::StartsWith(line, kTable[row].keyword))) {
            return row;
        }
    }
    return std::size(kTable);
}

} // namespace negotiation
