// Stage: the pieces of a sentence to its text.
// Input: words, numbers, lines and values of the far end. Output: text without key text.
// Touches nothing.
// Test: tests/explain/judge_cases.py
#include "Pieces.h"

#include "Reading.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace explain {

namespace {

void AppendNumber(std::string& text, long long number) {
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number);
    text.append(digits, end.ptr);
}

void AppendPiece(std::string& text, const Piece& piece) {
    switch (piece.kind) {
    case Piece::Kind::Words:
        text += piece.text;
        break;
    case Piece::Kind::Number:
        AppendNumber(text, piece.number);
        break;
    case Piece::Kind::Quote:
        text += Quoted(piece.text);
        break;
    case Piece::Kind::Value:
        text += Shown(piece.text);
        break;
    case Piece::Kind::Line:
        Append(text, {"Line ", piece.number, ", ", InQuotes(piece.text), ","});
        break;
    }
}

} // namespace

void Append(std::string& text, const Piece* pieces, std::size_t count) {
    std::for_each(pieces, pieces + count, [&text](const Piece& piece) { AppendPiece(text, piece); });
}

void Append(std::string& text, Pieces pieces) {
    Append(text, pieces.begin(), pieces.size());
}

std::string Joined(Pieces pieces) {
    std::string text;
    Append(text, pieces);
    return text;
}

} // namespace explain
