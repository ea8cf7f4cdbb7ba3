// Searches in text: a byte, one of two, white space. Each returns the length of the text when nothing
// matches.
//
// Words and lines are so short that a call of memchr for each costs more than it saves. Where a text has
// sixteen bytes, they are compared at once, which gives sixteen bits, one for each byte.
// Test: tests/unit/SDPSearchTest.cpp
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace sdp {

/// White space of the C locale.
constexpr bool IsBlank(char c) noexcept {
    return static_cast<unsigned char>(c) <= ' ' && (c == ' ' || (c >= '\t' && c <= '\r'));
}

/// Sixteen bytes of a text at once. In each result bit n is set when byte n matches.
class SixteenBytes {
public:
    static constexpr std::size_t kSize = 16;

    explicit SixteenBytes(const char* at) noexcept { std::memcpy(&m_bytes, at, kSize); }

    unsigned Equal(char c) const noexcept { return Bits(m_bytes == static_cast<unsigned char>(c)); }
    unsigned Blank() const noexcept { return Bits((m_bytes == ' ') | (m_bytes - '\t' <= '\r' - '\t')); }

private:
    using Bytes = unsigned char __attribute__((vector_size(kSize)));

    /// One bit for each byte of a comparison's result, whose bytes are all ones or zero.
    template <typename Marks>
    static unsigned Bits(Marks marks) noexcept {
#if defined(__SSE2__)
        return static_cast<unsigned>(_mm_movemask_epi8(reinterpret_cast<__m128i>(marks)));
#else
        constexpr Bytes weights = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
        const Bytes weighed = reinterpret_cast<Bytes>(marks) & weights;
        std::uint64_t halves[2];
        std::memcpy(halves, &weighed, sizeof halves);
        // The highest byte of the product is the sum of the eight bytes.
        constexpr std::uint64_t ones = 0x0101010101010101U;
        return static_cast<unsigned>((halves[0] * ones) >> 56U | ((halves[1] * ones) >> 56U) << 8U);
#endif
    }

    Bytes m_bytes;
};

/// Offset of the first match at or after `at`. Always inlined: a call costs as much as most searches.
/// @param at       at most the length of the text
/// @param bits     marks the matches among sixteen bytes
/// @param matches  true for a byte that matches
template <typename Bits, typename Matches>
[[gnu::always_inline]] inline std::size_t FindFirst(std::string_view text, std::size_t at, Bits bits,
                                                    Matches matches) noexcept {
    constexpr std::size_t size = SixteenBytes::kSize;
    if (text.size() >= size) {
        const std::size_t last = text.size() - size;
        for (; at <= last; at += size) {
            if (const unsigned found = bits(SixteenBytes(text.data() + at))) {
                return at + static_cast<std::size_t>(__builtin_ctz(found));
            }
        }
        // Fewer than sixteen remain: they are compared with bytes before them, which are shifted out.
        const unsigned found = bits(SixteenBytes(text.data() + last)) >> (at - last);
        return found == 0 ? text.size() : at + static_cast<std::size_t>(__builtin_ctz(found));
    }
    while (at < text.size() && !matches(text[at])) {
        ++at;
    }
    return at;
}

/// Offset of the first `c` at or after `at`.
[[gnu::always_inline]] inline std::size_t FindByte(std::string_view text, char c,
                                                   std::size_t at = 0) noexcept {
    return FindFirst(
        text, at, [c](SixteenBytes bytes) { return bytes.Equal(c); }, [c](char b) { return b == c; });
}

/// Offset of the first `a` or `b` at or after `at`.
inline std::size_t FindEither(std::string_view text, char a, char b, std::size_t at = 0) noexcept {
    return FindFirst(
        text, at, [a, b](SixteenBytes bytes) { return bytes.Equal(a) | bytes.Equal(b); },
        [a, b](char c) { return c == a || c == b; });
}

/// Offset of the first white space at or after `at`.
inline std::size_t FindBlank(std::string_view text, std::size_t at = 0) noexcept {
    return FindFirst(
        text, at, [](SixteenBytes bytes) { return bytes.Blank(); }, IsBlank);
}

/// Offset of the first byte at or after `at` that is no white space. Usually the byte at `at` matches.
inline std::size_t FindNoBlank(std::string_view text, std::size_t at = 0) noexcept {
    while (at < text.size() && IsBlank(text[at])) {
        ++at;
    }
    return at;
}

} // namespace sdp
