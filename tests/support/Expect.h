// EXPECT_TEXT(actual, expected): compares two whole texts. A failure prints both line by line with every
// control byte visible and marks the first line that differs, so a missing "\r" or a doubled blank is easy to
// see. Tests: tests/support/ExpectTest.cpp.
#ifndef COMMONMEDIA_TESTS_SUPPORT_EXPECT_H
#define COMMONMEDIA_TESTS_SUPPORT_EXPECT_H

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace support {

// The lines of a text, each with its line end; the last line may have none.
inline std::vector<std::string> CutLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t feed = text.find('\n', begin);
        const std::size_t end = feed == std::string::npos ? text.size() : feed + 1;
        lines.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

// The text with every byte outside printable ASCII, and the backslash, escaped: two different texts never
// look the same.
inline std::string MakeVisible(const std::string& text) {
    static const char* const digits = "0123456789abcdef";
    std::string visible;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '\r':
            visible += "\\r";
            break;
        case '\n':
            visible += "\\n";
            break;
        case '\t':
            visible += "\\t";
            break;
        case '\\':
            visible += "\\\\";
            break;
        default:
            if (byte >= 0x20 && byte < 0x7f) {
                visible += c;
            } else {
                visible += "\\x";
                visible += digits[byte >> 4U];
                visible += digits[byte & 0xfU];
            }
        }
    }
    return visible;
}

inline void PrintLines(std::ostream& out, const std::vector<std::string>& lines, std::size_t firstDifferent) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        out << (i == firstDifferent ? "  >> " : "     ") << (i + 1) << ": " << MakeVisible(lines[i]) << '\n';
    }
    if (firstDifferent >= lines.size()) {
        out << "  >> (the text ends here)\n";
    }
}

inline ::testing::AssertionResult SameText(const char* actualName, const char* expectedName,
                                           const std::string& actualText, const std::string& expectedText) {
    if (actualText == expectedText) {
        return ::testing::AssertionSuccess();
    }
    const std::vector<std::string> actualLines = CutLines(actualText);
    const std::vector<std::string> expectedLines = CutLines(expectedText);
    std::size_t different = 0;
    while (different < actualLines.size() && different < expectedLines.size() &&
           actualLines[different] == expectedLines[different]) {
        ++different;
    }
    std::ostringstream out;
    out << "The texts differ first in line " << (different + 1) << ".\n";
    out << "expected: " << expectedName << " (" << expectedText.size() << " bytes)\n";
    PrintLines(out, expectedLines, different);
    out << "actual: " << actualName << " (" << actualText.size() << " bytes)\n";
    PrintLines(out, actualLines, different);
    return ::testing::AssertionFailure() << out.str();
}

/// `text` with its one occurrence of `what` replaced. The test fails unless `what` occurs exactly once.
inline std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    if (at == std::string::npos || text.find(what, at + 1) != std::string::npos) {
        ADD_FAILURE() << "occurs not just once: " << MakeVisible(what);
        return text;
    }
    return text.replace(at, what.size(), with);
}

/// `text` with each replacement made in turn: Replaced(kDump, {{"iPort: 0", "iPort: -1"}}).
inline std::string Replaced(std::string text,
                            std::initializer_list<std::pair<std::string, std::string>> replacements) {
    for (const auto& [what, with] : replacements) {
        text = Replaced(std::move(text), what, with);
    }
    return text;
}

} // namespace support

#define EXPECT_TEXT(actual, expected) EXPECT_PRED_FORMAT2(::support::SameText, actual, expected)
#define ASSERT_TEXT(actual, expected) ASSERT_PRED_FORMAT2(::support::SameText, actual, expected)

#endif
