// Tables of keywords and of names: which row of a table does a line or a word belong to?
//
// A row of a keyword table has a member `keyword`, a row of a name table a member `strName`. The tables are
// known when the program is compiled, so a search is spelled out row by row with constants to compare with.
// Test: tests/unit/SDPKeywordTest.cpp
#pragma once

#include "SDPSearch.h"
#include "SDPText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>

namespace sdp {

/// The row that has this name, one comparison for each row.
template <const auto& kTable, std::size_t... kRow>
std::size_t RowNamed(std::string_view name, std::index_sequence<kRow...> /*rows*/) {
    std::size_t row = 0;
    static_cast<void>(((name == kTable[kRow].strName || (++row, false)) || ...));
    return row;
}

/// The row of a table that has this name; null for none.
template <const auto& kTable>
auto FindNamed(std::string_view name) -> decltype(&kTable[0]) {
    constexpr std::size_t rows = std::size(kTable);
    const std::size_t row = RowNamed<kTable>(name, std::make_index_sequence<rows>());
    return row == rows ? nullptr : &kTable[row];
}

/// One bit for a letter. Other characters share the bits of letters, which costs a comparison and no more.
constexpr std::uint32_t LetterBit(char c) {
    return std::uint32_t{1} << (static_cast<unsigned char>(c) % 32U);
}

/// True when FirstKeyword can search for every row of the table: each keyword has its "=" in second place.
template <typename Row, std::size_t N>
constexpr bool AreKeywords(const Row (&table)[N]) {
    for (const Row& row : table) {
        if (row.keyword.size() < 2 || row.keyword[1] != '=') {
            return false;
        }
    }
    return true;
}

/// The first row whose keyword stands at the start of `here`, one comparison for each row.
template <const auto& kTable, std::size_t... kRow>
std::size_t RowAtStart(std::string_view here, std::index_sequence<kRow...> /*rows*/) {
    std::size_t row = 0;
    static_cast<void>(((StartsWith(here, kTable[kRow].keyword) || (++row, false)) || ...));
    return row;
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

/// The lengths of the shortest and of the longest keyword.
template <typename Row, std::size_t N>
constexpr std::pair<std::size_t, std::size_t> KeywordLengths(const Row (&table)[N]) {
    std::pair<std::size_t, std::size_t> lengths(table[0].keyword.size(), 0);
    for (const Row& row : table) {
        lengths.first = std::min(lengths.first, row.keyword.size());
        lengths.second = std::max(lengths.second, row.keyword.size());
    }
    return lengths;
}

/// RowAtStart where the table is known and `here` has kRoom bytes at least; the number of rows when no
/// keyword stands there.
template <const auto& kTable, std::size_t kRoom = 1>
std::size_t RowAt(std::string_view here) {
    static_assert(AreKeywords(kTable));
    constexpr std::size_t rows = std::size(kTable);
    constexpr std::size_t longest = KeywordLengths(kTable).second;
    constexpr std::uint32_t letters = FirstLetters(kTable);
    if ((letters & LetterBit(here[0])) == 0) {
        return rows;
    }
    // A start of known length spares every row its look at the length. No keyword holds a zero byte.
    char padded[longest];
    if constexpr (kRoom < longest) {
        if (here.size() < longest) {
            std::memset(padded, 0, longest);
            here.copy(padded, longest);
            here = std::string_view(padded, longest);
        }
    }
    return RowAtStart<kTable>({here.data(), longest}, std::make_index_sequence<rows>());
}

/// The first row of the table, in table order, whose keyword occurs anywhere in the line; null for none.
/// Every keyword has its "=" in second place, so the line's "=" signs are the only places to look, and one
/// pass over them replaces a substring search per row.
template <const auto& kTable>
[[gnu::always_inline]] inline auto FirstKeyword(std::string_view line) -> decltype(&kTable[0]) {
    constexpr std::size_t rows = std::size(kTable);
    constexpr std::size_t shortest = KeywordLengths(kTable).first;
    if (line.size() < shortest) {
        return nullptr;
    }
    // An "=" that leaves no room for the rest of a keyword needs no look.
    const std::size_t places = line.size() - shortest + 2;
    std::size_t best = rows;
    // Nearly every line has its first "=" where it belongs.
    std::size_t at = line[1] == '=' ? 1 : FindByte(line, '=', 1);
    for (; at < places; at = FindByte(line, '=', at + 1)) {
        best = std::min(best, RowAt<kTable, shortest>(Behind(line, at - 1)));
    }
    return best == rows ? nullptr : &kTable[best];
}

} // namespace sdp
