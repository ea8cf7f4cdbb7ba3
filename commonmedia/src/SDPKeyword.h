// Tables of keywords and of names: finds the row of a line or of a word.
//
// A row of a keyword table has a member `keyword`, a row of a name table a member `name`. The tables are
// known at compile time, so a search is unrolled into comparisons with constants: without that, reading a
// description takes half as many instructions again.
// Test: tests/unit/SDPKeywordTest.cpp
#pragma once

#include "SDPSearch.h"
#include "SDPText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace sdp {

/// Index of the first row, from kRow on, for which `matches(row)` is true; the number of rows for none.
template <const auto& kTable, std::size_t kRow = 0, typename Matches>
[[gnu::always_inline]] inline std::size_t FirstMatch(Matches matches) {
    if constexpr (kRow == std::size(kTable)) {
        return kRow;
    } else {
        return matches(kTable[kRow]) ? kRow : FirstMatch<kTable, kRow + 1>(matches);
    }
}

/// The row of a table with this name; null for none.
template <const auto& kTable>
[[gnu::always_inline]] inline auto FindNamed(std::string_view name) -> decltype(&kTable[0]) {
    const std::size_t row = FirstMatch<kTable>([name](const auto& named) { return name == named.name; });
    return row == std::size(kTable) ? nullptr : &kTable[row];
}

/// One bit for a letter. Some other characters share the bit of a letter: a bit that is set means "compare".
constexpr std::uint32_t LetterBit(char c) {
    return std::uint32_t{1} << (static_cast<unsigned char>(c) % 32U);
}

/// What the keywords of a table have in common.
struct Keywords {
    bool isSignSecond = true;        ///< each has its "=" in second place
    std::uint32_t firstLetters = 0;  ///< the bits of the letters that they begin with
    std::size_t shortest = SIZE_MAX; ///< length of the shortest
};
template <typename Row, std::size_t N>
constexpr Keywords Examine(const Row (&table)[N]) {
    Keywords all;
    for (const Row& row : table) {
        all.isSignSecond = all.isSignSecond && row.keyword.size() >= 2 && row.keyword[1] == '=';
        all.firstLetters |= LetterBit(row.keyword.empty() ? '\0' : row.keyword[0]);
        all.shortest = std::min(all.shortest, row.keyword.size());
    }
    return all;
}

/// Index of the first row of the table, in table order, whose keyword occurs anywhere in the line; the number
/// of rows for none. Every keyword has its "=" in second place, so the line's "=" signs are the only places
/// to look, and one pass over them replaces a substring search per row.
template <const auto& kTable>
[[gnu::always_inline]] inline std::size_t FirstRow(std::string_view line) {
    constexpr Keywords keywords = Examine(kTable);
    static_assert(keywords.isSignSecond);
    std::size_t best = std::size(kTable);
    if (line.size() < keywords.shortest) {
        return best;
    }
    // After this part of the line an "=" leaves no room for the rest of a keyword.
    const std::string_view signs(line.data(), line.size() - keywords.shortest + 2);
    // Nearly every line has its first "=" in second place.
    std::size_t at = line[1] == '=' ? 1 : FindByte(signs, '=', 1);
    for (; at < signs.size(); at = FindByte(signs, '=', at + 1)) {
        // Most other "=" signs of a line, those of format parameters, follow a letter that begins no keyword.
        if ((keywords.firstLetters & LetterBit(line[at - 1])) != 0) {
            const std::string_view text = After(line, at - 1);
            best = std::min(
                best, FirstMatch<kTable>([text](const auto& row) { return StartsWith(text, row.keyword); }));
        }
    }
    return best;
}

/// The first row of the table, in table order, whose keyword occurs anywhere in the line; null for none.
template <const auto& kTable>
inline auto FirstKeyword(std::string_view line) -> decltype(&kTable[0]) {
    const std::size_t row = FirstRow<kTable>(line);
    return row == std::size(kTable) ? nullptr : &kTable[row];
}

} // namespace sdp
