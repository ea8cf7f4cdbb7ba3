// Small cuts of text that several files of the command need.
//
// Tests: tests/tool/WordsTest.cpp
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// White space of the C locale.
constexpr bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The words of a line, empty ones never.
std::vector<std::string_view> WordsOf(std::string_view line);

/// Whether the line begins, after blanks, with a small letter and "=" (RFC 4566, 5).
bool LooksLikeSdp(std::string_view line);

/// "a, b, c"; of a longer list the first `most` and how many there are besides.
std::string Listed(const std::vector<std::string>& pieces, std::size_t most);

/// A word of the far end for a table or a message, cut when it is very long.
std::string Short(std::string_view word);

/// A text in quotes for a message, cut when it is long.
std::string Quoted(std::string_view text);

} // namespace cmsdp
