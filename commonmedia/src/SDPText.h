// Text helpers of the component: words, numbers and keywords, cut without copying and without exceptions.
//
// Test: tests/unit/SDPTextTest.cpp
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace sdp {

/// White space of the C locale.
constexpr bool IsBlank(char c) noexcept {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Eight bytes of a text at once. Names, values and words are so short that a call of memchr costs more than
/// it saves; looking at eight bytes in a few instructions is what is left.
class EightBytes {
public:
    static constexpr std::size_t kSize = 8;

    explicit EightBytes(const char* at) noexcept {
        std::memcpy(&m_bytes, at, sizeof m_bytes);
        if constexpr (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__) {
            m_bytes = __builtin_bswap64(m_bytes); // the first byte is the lowest
        }
    }

    /// Index of the first byte that equals `byte`; kSize when none does.
    std::size_t Find(char byte) const noexcept {
        return FirstBelow(m_bytes ^ (kOnes * static_cast<unsigned char>(byte)), 1);
    }
    /// Index of the first byte that is a blank or a control character; kSize when none is.
    std::size_t FindUpToBlank() const noexcept { return FirstBelow(m_bytes, ' ' + 1); }

private:
    static constexpr std::uint64_t kOnes = 0x0101010101010101U;
    static constexpr std::uint64_t kHighs = 0x8080808080808080U;

    /// Subtracting borrows into the high bit of each byte below the limit. Bytes above the first of them may
    /// be marked by its borrow; the first is exact, and bytes from 0x80 up are never marked.
    static std::size_t FirstBelow(std::uint64_t bytes, std::uint64_t limit) noexcept {
        const std::uint64_t marks = (bytes - kOnes * limit) & ~bytes & kHighs;
        return marks == 0 ? kSize : static_cast<std::size_t>(__builtin_ctzll(marks)) / kSize;
    }

    std::uint64_t m_bytes = 0;
};

/// Where the first `byte` stands; npos when it does not.
inline std::size_t FindByte(std::string_view text, char byte) noexcept {
    std::size_t at = 0;
    for (; at + EightBytes::kSize <= text.size(); at += EightBytes::kSize) {
        const std::size_t found = EightBytes(text.data() + at).Find(byte);
        if (found != EightBytes::kSize) {
            return at + found;
        }
    }
    for (; at < text.size(); ++at) {
        if (text[at] == byte) {
            return at;
        }
    }
    return std::string_view::npos;
}

/// Where the first white space stands; the length of the text when there is none.
inline std::size_t FindBlank(std::string_view text) noexcept {
    std::size_t at = 0;
    while (at + EightBytes::kSize <= text.size()) {
        const std::size_t found = EightBytes(text.data() + at).FindUpToBlank();
        at += found;
        if (found != EightBytes::kSize) {
            if (IsBlank(text[at])) {
                return at;
            }
            ++at; // a control character, part of the word
        }
    }
    while (at < text.size() && !IsBlank(text[at])) {
        ++at;
    }
    return at;
}

/// Where the next CR LF stands; npos when there is none.
inline std::size_t FindLineEnd(std::string_view text) {
    std::size_t at = text.find('\r');
    while (at != std::string_view::npos && (at + 1 == text.size() || text[at + 1] != '\n')) {
        at = text.find('\r', at + 1);
    }
    return at;
}

/// Cuts the next word, free of white space, off the front of `rest`. Empty when no word is left.
inline std::string_view NextWord(std::string_view& rest) {
    while (!rest.empty() && IsBlank(rest.front())) {
        rest.remove_prefix(1);
    }
    const std::string_view word(rest.data(), FindBlank(rest));
    rest.remove_prefix(word.size());
    return word;
}

inline bool StartsWith(std::string_view text, std::string_view start) noexcept {
    return text.size() >= start.size() && std::memcmp(text.data(), start.data(), start.size()) == 0;
}

constexpr bool Contains(std::string_view text, std::string_view needle) {
    return text.find(needle) != std::string_view::npos;
}

/// The text behind the first `keyword` in `line`; nothing when the keyword does not occur.
constexpr std::optional<std::string_view> TextAfter(std::string_view line, std::string_view keyword) {
    const std::size_t at = line.find(keyword);
    return at == std::string_view::npos ? std::nullopt : std::optional(line.substr(at + keyword.size()));
}

/// Narrows to 32 bits by dropping the upper ones.
constexpr std::int32_t Narrow(std::uint64_t number) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

/// [G06] Sums and products wrap in 32 bits instead of being undefined: the RTCP port behind the largest port
/// is the smallest number, which no far end takes for a port.
constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return Narrow(static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrappingMultiply(std::int32_t a, std::int32_t b) {
    return Narrow(static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) * static_cast<std::uint32_t>(b));
}

/// The number at the start of `text`, read as atoi reads it: white space, a sign, digits; 0 without digits.
inline std::int32_t Number(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && IsBlank(text[at])) {
        ++at;
    }
    const bool fNegative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
        ++at;
    }
    // [G04] Digits saturate at 64 bits and the result is narrowed to 32, as the C library does where a long
    // has 64 bits: "4294967295" reads -1, "9999999999" reads 1410065407, and twenty nines read -1 again.
    const std::uint64_t limit = std::uint64_t{std::numeric_limits<std::int64_t>::max()} + (fNegative ? 1 : 0);
    std::uint64_t magnitude = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        const auto digit = static_cast<std::uint64_t>(text[at] - '0');
        magnitude = magnitude > limit / 10 ? limit : std::min(magnitude * 10 + digit, limit);
    }
    return Narrow(fNegative ? 0 - magnitude : magnitude);
}

/// True when FirstKeyword can search for every row of the table: each keyword is a letter and "=" at least.
template <typename Row, std::size_t N>
constexpr bool AreKeywords(const Row (&table)[N]) {
    for (const Row& row : table) {
        if (row.keyword.size() < 2 || row.keyword[1] != '=') {
            return false;
        }
    }
    return true;
}

/// The first row whose keyword stands at the start of `here`; the number of rows when none does. Spelled out
/// row by row when the program is compiled, so that each comparison has a constant to compare with.
template <const auto& kTable, std::size_t... kRow>
std::size_t RowAtStart(std::string_view here, std::index_sequence<kRow...> /*rows*/) {
    std::size_t row = 0;
    static_cast<void>(((StartsWith(here, kTable[kRow].keyword) || (++row, false)) || ...));
    return row;
}

template <const auto& kTable, std::size_t... kRow>
bool IsFirstLetter(char c, std::index_sequence<kRow...> /*rows*/) {
    return ((c == kTable[kRow].keyword[0]) || ...);
}

/// The first row of the table, in table order, whose keyword occurs anywhere in the line; null for none.
/// Every keyword has its "=" in second place, so the line's "=" signs are the only places to look, and one
/// pass over them replaces a substring search per row.
template <const auto& kTable>
auto FirstKeyword(std::string_view line) -> decltype(&kTable[0]) {
    static_assert(AreKeywords(kTable));
    constexpr std::size_t rows = std::size(kTable);
    constexpr auto indices = std::make_index_sequence<rows>();
    std::size_t best = rows;
    // Nearly every line has its first "=" where it belongs; the search is for what comes behind.
    std::size_t at = line.size() > 1 && line[1] == '=' ? 1 : line.find('=', 1);
    for (; at != std::string_view::npos && best > 0; at = line.find('=', at + 1)) {
        if (IsFirstLetter<kTable>(line[at - 1], indices)) {
            best = std::min(best, RowAtStart<kTable>(line.substr(at - 1), indices));
        }
    }
    return best == rows ? nullptr : &kTable[best];
}

} // namespace sdp
