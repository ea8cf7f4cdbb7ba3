// The text that a description is written into.
//
//     out << "m=audio " << port << " RTP/AVP";
//
// A std::string that grows leaves its old bytes, keys included, in freed memory, and each of some hundred
// short texts would cost a library call. Here texts are copied in place while there is room, and memory that
// the text leaves is wiped.
// Test: tests/unit/SDPWriterTest.cpp
#pragma once

#include "SDPSecrecy.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace sdp {

class Writer {
public:
    /// @param room  bytes reserved; a longer text grows
    explicit Writer(std::size_t room) : m_text(room, '\0') {}
    ~Writer() { Wipe(m_text); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    Writer& operator<<(std::string_view text) {
        m_length += text.copy(Room(text.size()), text.size());
        return *this;
    }

    /// The length of a literal is known at compile time, so that it is copied by a few moves.
    template <std::size_t N>
    Writer& operator<<(const char (&literal)[N]) {
        std::memcpy(Room(N), literal, N);
        m_length += N - 1;
        return *this;
    }

    Writer& operator<<(std::int32_t number) { return Append(number); }
    Writer& operator<<(std::uint32_t number) { return Append(number); }

    /// The text written so far; the writer is empty afterwards.
    std::string Take() {
        m_text.resize(std::exchange(m_length, 0));
        return std::exchange(m_text, std::string());
    }

private:
    template <typename Integer>
    Writer& Append(Integer number) {
        constexpr std::size_t longest = std::numeric_limits<Integer>::digits10 + 2;
        char* const at = Room(longest);
        m_length += static_cast<std::size_t>(std::to_chars(at, at + longest, number).ptr - at);
        return *this;
    }

    /// The end of the text, with room for `length` bytes.
    char* Room(std::size_t length) {
        if (m_text.size() - m_length < length) {
            Grow(length);
        }
        return &m_text[m_length];
    }

    void Grow(std::size_t length) {
        std::string larger(std::max(m_text.size() * 2, m_length + length), '\0');
        std::memcpy(&larger[0], m_text.data(), m_length);
        Wipe(m_text);
        m_text.swap(larger);
    }

    std::string m_text;       ///< the text, then unused room
    std::size_t m_length = 0; ///< bytes written
};

} // namespace sdp
