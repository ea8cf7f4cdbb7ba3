// Stage: none; string and number helpers for every stage.
// Input: texts and numbers. Output: parts of a text, yes or no, decimal text.
// Touches only its arguments.
// split() is for parts that are kept; a reader that only looks at them uses views.
// Test: tests/unit/VideoUtilsTest.cpp
#include "VideoUtils.h"

#include "SDPText.h"

#include <algorithm>

void VideoUtils::split(std::vector<std::string>& out, std::string_view text, std::string_view separator) {
    // [G07] Empty parts count, so that "a;;b" has three; an empty text has no part, so that a missing value
    // and an empty list are the same.
    if (text.empty()) {
        return;
    }
    if (separator.empty()) {
        out.emplace_back(text);
        return;
    }
    // Estimating the number of parts saves 9 % of a parse, because the vector need not grow. Six is the
    // least: smaller blocks would compete with the parts for the small blocks that the allocator keeps ready.
    constexpr std::size_t usualParts = 6;
    constexpr std::size_t usualLength = 16; // bytes
    out.reserve(out.size() + std::max(usualParts, 1 + text.size() / usualLength));
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
    // [G18] Digits only: with a sign, a blank or a fraction the far end means something else, and the
    // previous value is kept.
    return !text.empty() && sdp::Digits(text).size() == text.size();
}

std::string VideoUtils::ConvertInt(int number) {
    return std::to_string(number);
}

std::string VideoUtils::ConvertUInt(unsigned int number) {
    return std::to_string(number);
}
