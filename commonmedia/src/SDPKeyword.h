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
#include <utility>

namespace sdp {

/// Index of the row with this name, one comparison for each row; the number of rows for none.
template <const auto& kTable, std::size_t... kRow>
std::size_t RowNamed(std::string_view name, std::index_sequence<kRow...> /*rows*/) {
    std::size_t row = 0;
    static_cast<void>(((name == kTable[kRow].name || (++row, false)) || ...));
    return row;
}

/// The row of a table with this name; null for none.
template <const auto& kTable>
auto FindNamed(std::string_view name) -> decltype(&kTable[0]) {
    constexpr std::size_t rows = std::size(kTable);
    const std::size_t row = RowNamed<kTable>(name, std::make_index_sequence<rows>());
    return row == rows ? nullptr : &kTable[row];
}

/// True when FirstRow can search for every row of the table: each keyword has its "=" in second place.
template <typename Row, std::size_t N>
constexpr bool AreKeywords(const Row (&table)[N]) {
    for (const Row& row : table) {
        if (row.keyword.size() < 2 || row.keyword[1] != '=') {
            return false;
        }
    }
    return true;
}

/// One bit for a letter. Some other characters share the bit of a letter: a bit that is set means "compare".
constexpr std::uint32_t LetterBit(char c) {
    return std::uint32_t{1} << (static_cast<unsigned char>(c) % 32U);
}

/// The letters that keywords begin with, one bit each.
template <typename Row, std::size_t N>
constexpr std::uint32_t FirstLetters(const Row (&table)[N]) {
    std::uint32_t letters = 0;
    for (const Row& row : table) {
        letters |= LetterBit(row.keyword[0]);
    }
    return letters;
}

/// Length of the shortest keyword.
template <typename Row, std::size_t N>
constexpr std::size_t ShortestKeyword(const Row (&table)[N]) {
    std::size_t shortest = table[0].keyword.size();
    for (const Row& row : table) {
        shortest = std::min(shortest, row.keyword.size());
    }
    return shortest;
}

/// Index of the first row whose keyword `text` begins with, one comparison for each row; the number of rows
/// for none.
template <const auto& kTable, std::size_t... kRow>
std::size_t RowAtStart(std::string_view text, std::index_sequence<kRow...> /*rows*/) {
    std::size_t row = 0;
    static_cast<void>(((StartsWith(text, kTable[kRow].keyword) || (++row, false)) || ...));
    return row;
}

/// Index of the first row of the table, in table order, whose keyword occurs anywhere in the line; the number
/// of rows for none. Every keyword has its "=" in second place, so the line's "=" signs are the only places
/// to look, and one pass over them replaces a substring search per row.
template <const auto& kTable>
[[gnu::always_inline]] inline std::size_t FirstRow(std::string_view line) {
    static_assert(AreKeywords(kTable));
    constexpr std::size_t rows = std::size(kTable);
    constexpr std::size_t shortest = ShortestKeyword(kTable);
    constexpr std::uint32_t letters = FirstLetters(kTable);
    std::size_t best = rows;
    if (line.size() < shortest) {
        return best;
    }
    // After this part of the line an "=" leaves no room for the rest of a keyword.
    const std::string_view signs(line.data(), line.size() - shortest + 2);
    // Nearly every line has its first "=" in second place.
    std::size_t at = line[1] == '=' ? 1 : FindByte(signs, '=', 1);
    for (; at < signs.size(); at = FindByte(signs, '=', at + 1)) {
        // Most other "=" signs of a line, those of format parameters, follow a letter that begins no keyword.
        if ((letters & LetterBit(line[at - 1])) != 0) {
            best = std::min(best, RowAtStart<kTable>(After(line, at - 1), std::make_index_sequence<rows>()));
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
