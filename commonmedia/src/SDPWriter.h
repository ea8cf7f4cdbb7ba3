// The text that a description is written into: appended piece by piece, wiped wherever it moves from.
//
//     sdp << "m=audio " << iPort << " RTP/AVP";
//
// A std::string that grows leaves its old bytes, keys included, in freed memory, and pays a library call for
// each of some hundred short pieces. Pieces here are copied in place while there is room.
// Test: tests/unit/SDPWriterTest.cpp
#pragma once

#include "SDPWipe.h"

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
    /// @param room  bytes held ready; the text grows beyond them when it must
    explicit Writer(std::size_t room) : m_text(room, '\0') {}
    ~Writer() { Wipe(m_text); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    Writer& operator<<(std::string_view piece) {
        m_length += piece.copy(Room(piece.size()), piece.size());
        return *this;
    }

    /// A literal's length is known when the program is compiled, which makes its copy a few moves.
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

    /// Where the next piece goes, with room for `length` bytes.
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

    std::string m_text;       ///< as long as the room
    std::size_t m_length = 0; ///< bytes written
};

} // namespace sdp
