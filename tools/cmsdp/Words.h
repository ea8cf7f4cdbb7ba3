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

constexpr bool IsBase64(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/';
}

/// Characters of the shortest key text: key and salt of a 128-bit suite in base64 (RFC 4568, 6.1), padding
/// included where the salt has 12 bytes (RFC 7714, 12).
constexpr std::size_t kKeyText = 40;

/// How long the base64 text is that begins here, with at most two "=" after it.
std::size_t Base64Length(std::string_view text);

/// The words of a line, empty ones never.
std::vector<std::string_view> WordsOf(std::string_view line);

/// The text without white space at both ends.
std::string_view Trimmed(std::string_view text);

/// The text without white space at its end.
std::string_view TrimmedAtEnd(std::string_view text);

/// Whether the line begins, after blanks, with a small letter and "=" (RFC 4566, 5).
bool LooksLikeSdp(std::string_view line);

/// What the reader of a text takes for the end of a line.
enum class LineEnd {
    CrLf, ///< the component
    Any   ///< LF and CR alone, too: the negotiation layer, repair R01
};

/// The bytes of base64 text. Characters outside of the alphabet, such as line ends, are skipped (RFC
/// 2045, 6.8).
std::string FromBase64(std::string_view text);

/// Whether any line looks like a line of a description (RFC 4566, 5).
bool HoldsSdpLine(std::string_view text, LineEnd end = LineEnd::CrLf);

/// "a, b, c"; of a longer list the first `most` and how many there are besides.
std::string Listed(const std::vector<std::string>& pieces, std::size_t most);

/// A word of the far end for a table or a message, cut when it is very long. Of a base64 text that is long
/// enough for a key the cut leaves as many characters as a key has, so that it is still known for one.
std::string Short(std::string_view word);

/// A text in quotes for a message, cut in the same way when it is long.
std::string Quoted(std::string_view text);

} // namespace cmsdp
