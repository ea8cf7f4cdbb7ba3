// EXPECT_TEXT(actual, expected): compares two whole texts. A failure prints both line by line with every
// control byte visible and marks the first line that differs, so that a missing "\r" or a doubled blank can
// be read off the log. Tests: tests/support/ExpectTest.cpp.
#ifndef COMMONMEDIA_TESTS_SUPPORT_EXPECT_H
#define COMMONMEDIA_TESTS_SUPPORT_EXPECT_H

#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

namespace support {

// The lines of a text, each with its own line end; a last line without one stays as it is.
inline std::vector<std::string> CutLines(const std::string& strText) {
    std::vector<std::string> vecLines;
    std::size_t begin = 0;
    while (begin < strText.size()) {
        const std::size_t feed = strText.find('\n', begin);
        const std::size_t end = feed == std::string::npos ? strText.size() : feed + 1;
        vecLines.push_back(strText.substr(begin, end - begin));
        begin = end;
    }
    return vecLines;
}

// The text with every byte outside printable ASCII written as an escape, the backslash included, so that two
// different texts never look the same.
inline std::string MakeVisible(const std::string& strText) {
    static const char* const digits = "0123456789abcdef";
    std::string strVisible;
    for (const char c : strText) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '\r':
            strVisible += "\\r";
            break;
        case '\n':
            strVisible += "\\n";
            break;
        case '\t':
            strVisible += "\\t";
            break;
        case '\\':
            strVisible += "\\\\";
            break;
        default:
            if (byte >= 0x20 && byte < 0x7f) {
                strVisible += c;
            } else {
                strVisible += "\\x";
                strVisible += digits[byte >> 4U];
                strVisible += digits[byte & 0xfU];
            }
        }
    }
    return strVisible;
}

inline void PrintLines(std::ostream& out, const std::vector<std::string>& vecLines,
                       std::size_t firstDifferent) {
    for (std::size_t i = 0; i < vecLines.size(); ++i) {
        out << (i == firstDifferent ? "  >> " : "     ") << (i + 1) << ": " << MakeVisible(vecLines[i])
            << '\n';
    }
    if (firstDifferent >= vecLines.size()) {
        out << "  >> (the text ends here)\n";
    }
}

inline ::testing::AssertionResult SameText(const char* actualName, const char* expectedName,
                                           const std::string& strActual, const std::string& strExpected) {
    if (strActual == strExpected) {
        return ::testing::AssertionSuccess();
    }
    const std::vector<std::string> vecActual = CutLines(strActual);
    const std::vector<std::string> vecExpected = CutLines(strExpected);
    std::size_t different = 0;
    while (different < vecActual.size() && different < vecExpected.size() &&
           vecActual[different] == vecExpected[different]) {
        ++different;
    }
    std::ostringstream out;
    out << "The texts differ first in line " << (different + 1) << ".\n";
    out << "expected: " << expectedName << " (" << strExpected.size() << " bytes)\n";
    PrintLines(out, vecExpected, different);
    out << "actual: " << actualName << " (" << strActual.size() << " bytes)\n";
    PrintLines(out, vecActual, different);
    return ::testing::AssertionFailure() << out.str();
}

} // namespace support

#define EXPECT_TEXT(actual, expected) EXPECT_PRED_FORMAT2(::support::SameText, actual, expected)
#define ASSERT_TEXT(actual, expected) ASSERT_PRED_FORMAT2(::support::SameText, actual, expected)

#endif
