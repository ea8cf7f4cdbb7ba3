// A sentence as its pieces: {LineWords(line), " has a suffix after its address."}.
//
// The pieces are put together only where the sentence is wanted, so a run that counts findings writes none.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace explain {

/// A piece of a sentence: a text, which is not copied and has to outlive the piece, or a number.
struct Piece {
    enum class Kind : unsigned char {
        Words,
        Number,
        Quote, ///< Quoted(text)
        Value, ///< Shown(text)
        Line   ///< line `number` and its text: "Line 7, "a=sendonly","
    };
    template <typename Type>
    static constexpr bool kIsNumber =
        std::is_integral_v<Type> && !std::is_same_v<Type, bool> && !std::is_same_v<Type, char>;

    Piece(std::string_view words) : text(words) {}
    Piece(const std::string& words) : text(words) {}
    Piece(const char* words) : text(words) {}
    template <typename Number, typename = std::enable_if_t<kIsNumber<Number>>>
    Piece(Number value) : number(static_cast<long long>(value)), kind(Kind::Number) {}
    Piece(Kind how, std::string_view words, long long value = 0) : text(words), number(value), kind(how) {}

    /// Whether both are words, and one is no beginning of the other: all texts with them differ.
    bool BeginsOtherwise(const Piece& other) const {
        const std::size_t length = text.size() < other.text.size() ? text.size() : other.text.size();
        return kind == Kind::Words && other.kind == Kind::Words &&
               text.substr(0, length) != other.text.substr(0, length);
    }
    /// Equal pieces have equal words; unequal pieces may have equal words too.
    bool operator==(const Piece& other) const {
        return kind == other.kind && number == other.number && text.size() == other.text.size() &&
               (text.data() == other.text.data() || text == other.text);
    }

    std::string_view text;
    long long number = 0;
    Kind kind = Kind::Words;
};
using Pieces = std::initializer_list<Piece>;

/// A line of the far end in quotes: printable, short, key text as "***".
inline Piece InQuotes(std::string_view line) {
    return {Piece::Kind::Quote, line};
}
/// A value of the far end: printable, short, and "***" where it could be key text.
inline Piece AsShown(std::string_view value) {
    return {Piece::Kind::Value, value};
}

void Append(std::string& text, const Piece* pieces, std::size_t count);
void Append(std::string& text, Pieces pieces);
std::string Joined(Pieces pieces);

} // namespace explain
