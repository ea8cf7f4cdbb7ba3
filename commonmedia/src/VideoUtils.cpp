// Stage: none; string and number helpers for every stage.
// Input: texts and numbers. Output: pieces, yes or no, decimal text.
// Touches only what it is handed.
// Where pieces are kept, split() copies each straight into the list; elsewhere views are cut.
// Test: tests/unit/VideoUtilsTest.cpp
#include "VideoUtils.h"

#include <algorithm>

void VideoUtils::split(std::vector<std::string>& out, std::string_view text, std::string_view separator) {
    // [G07] An empty piece is a piece, so that "a;;b" keeps its positions; an empty text has none, so that an
    // absent value and an empty list are the same.
    if (text.empty()) {
        return;
    }
    if (separator.empty()) {
        out.emplace_back(text);
        return;
    }
    // A guess at the number of pieces spares the vector its steps of growth. It is never below six: the
    // allocator keeps few small blocks at hand, and the pieces themselves need those.
    constexpr std::size_t usualPieces = 6;
    constexpr std::size_t usualPiece = 16; // bytes
    out.reserve(out.size() + std::max(usualPieces, 1 + text.size() / usualPiece));
    while (true) {
        const std::size_t end = separator.size() == 1 ? text.find(separator[0]) : text.find(separator);
        out.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + separator.size());
    }
}

bool VideoUtils::IsNumber(std::string_view text) noexcept {
    // [G18] Digits only: a sign, a blank or a fraction means that the far end meant something else, and the
    // value before it stands.
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
    }
    return !text.empty();
}

std::string VideoUtils::ConvertInt(int number) {
    return std::to_string(number);
}

std::string VideoUtils::ConvertUInt(unsigned int number) {
    return std::to_string(number);
}
