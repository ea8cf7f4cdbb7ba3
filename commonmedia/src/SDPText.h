// Text helpers of the component: words and numbers. They return views, not copies, and throw nothing.
// Test: tests/unit/SDPTextTest.cpp
#pragma once

#include "SDPSearch.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

namespace sdp {

/// The text after its first `length` bytes. Precondition: text.size() >= length.
constexpr std::string_view After(std::string_view text, std::size_t length) noexcept {
    text.remove_prefix(length);
    return text;
}

/// The words of a line, which white space separates, in order. An empty word means that no word is left.
class Words {
public:
    explicit Words(std::string_view line) noexcept : m_line(line) {}

    std::string_view Next() noexcept {
        const std::size_t begin = FindNoBlank(m_line, m_at);
        m_at = FindBlank(m_line, begin);
        return {m_line.data() + begin, m_at - begin};
    }

    /// Number of bytes after the last word that Next returned.
    std::size_t Left() const noexcept { return m_line.size() - m_at; }

private:
    std::string_view m_line;
    std::size_t m_at = 0;
};

inline bool StartsWith(std::string_view text, std::string_view start) noexcept {
    return text.size() >= start.size() && std::memcmp(text.data(), start.data(), start.size()) == 0;
}

constexpr bool Contains(std::string_view text, std::string_view needle) {
    return text.find(needle) != std::string_view::npos;
}

/// Offset of the first `what`; npos for none. Usually the text begins with it, and nothing is searched.
inline std::size_t Find(std::string_view text, std::string_view what) {
    return StartsWith(text, what) ? 0 : text.find(what);
}

/// The text after the first `keyword` in `line`; nothing when the keyword does not occur.
inline std::optional<std::string_view> TextAfter(std::string_view line, std::string_view keyword) {
    const std::size_t at = Find(line, keyword);
    return at == std::string_view::npos ? std::nullopt : std::optional(After(line, at + keyword.size()));
}

/// The lower 32 bits.
constexpr std::int32_t Narrow(std::uint64_t number) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}

/// [G06] Sums and products wrap in 32 bits instead of being undefined: the RTCP port after the largest number
/// is the smallest number, which no far end accepts as a port.
constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return Narrow(static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) + static_cast<std::uint32_t>(b));
}
constexpr std::int32_t WrappingMultiply(std::int32_t a, std::int32_t b) {
    return Narrow(static_cast<std::uint64_t>(static_cast<std::uint32_t>(a)) * static_cast<std::uint32_t>(b));
}

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// The digits that a text begins with.
inline std::string_view Digits(std::string_view text) noexcept {
    std::size_t length = 0;
    while (length < text.size() && IsDigit(text[length])) {
        ++length;
    }
    return {text.data(), length};
}

/// Removes the white space and the sign that a number may begin with. True for "-".
inline bool TakeSign(std::string_view& text) {
    text.remove_prefix(FindNoBlank(text));
    const bool isNegative = StartsWith(text, "-");
    if (isNegative || StartsWith(text, "+")) {
        text.remove_prefix(1);
    }
    return isNegative;
}

/// The number at the start of a text, read as atoi reads it: white space, a sign, digits; 0 without digits.
inline std::int32_t Number(std::string_view text) {
    const bool isNegative = TakeSign(text);
    // [G04] Digits saturate at 64 bits and the result is narrowed to 32, as the C library does where a long
    // has 64 bits: "4294967295" reads -1, "9999999999" reads 1410065407, and twenty nines read -1 again.
    std::int64_t number = 0;
    for (const char c : text) {
        if (!IsDigit(c)) {
            break;
        }
        if (__builtin_mul_overflow(number, 10, &number) || __builtin_add_overflow(number, c - '0', &number)) {
            return isNegative ? 0 : -1;
        }
    }
    return Narrow(static_cast<std::uint64_t>(isNegative ? -number : number));
}

/// The number at the start of a text, read as strtoul reads base 16: white space, a sign, "0x", digits; 0
/// without digits, the largest number for digits that do not fit 64 bits.
inline std::uint64_t HexNumber(std::string_view text) {
    const bool isNegative = TakeSign(text);
    if (StartsWith(text, "0x") || StartsWith(text, "0X")) {
        text.remove_prefix(2);
    }
    std::uint64_t number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number, 16).ec ==
        std::errc::result_out_of_range) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return isNegative ? 0 - number : number;
}

} // namespace sdp
