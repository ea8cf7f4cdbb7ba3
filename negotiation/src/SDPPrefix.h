// Which row of a table does a line begin with?
//
// Every line of a text is compared with every row, so the first eight bytes are compared as one number.
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

template <const auto& kTable>
constexpr auto PrefixesOf() {
    std::array<Prefix, std::size(kTable)> prefixes{};
    for (std::size_t row = 0; row < prefixes.size(); ++row) {
        prefixes[row] = PrefixOf(kTable[row].keyword);
    }
    return prefixes;
}

/// Index of the first row whose keyword `line` begins with; the number of rows for none.
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
    for (std::size_t row = 0; row < kPrefixes.size(); ++row) {
        if ((start & kPrefixes[row].mask) == kPrefixes[row].bytes &&
            (kTable[row].keyword.size() <= kPrefixLength || sdp::StartsWith(line, kTable[row].keyword))) {
            return row;
        }
    }
    return kPrefixes.size();
}

} // namespace negotiation
