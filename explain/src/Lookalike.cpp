// Stage: none; signs that stand for an ASCII character.
// Input: a line. Output: the line in ASCII signs.
// Touches nothing. Bytes that stand for no ASCII character are left as they are.
// Test: tests/explain/judge_cases.py
#include "Lookalike.h"

#include "Words.h"

#include <algorithm>
#include <iterator>

namespace explain {

namespace {

struct Sign {
    std::string_view bytes;
    std::string_view meant;
};

/// Longer spellings first: one byte of Windows-1252 may be the last one of a UTF-8 sequence.
constexpr Sign kSigns[] = {
    {"\xE2\x80\x8B", ""},   // zero width space
    {"\xEF\xBB\xBF", ""},   // byte order mark
    {"\xE2\x80\xAF", " "},  // narrow no-break space
    {"\xE2\x80\x83", " "},  // em space
    {"\xE2\x80\x89", " "},  // thin space
    {"\xE2\x80\x90", "-"},  // hyphen
    {"\xE2\x80\x91", "-"},  // no-break hyphen
    {"\xE2\x80\x93", "-"},  // en dash
    {"\xE2\x80\x94", "-"},  // em dash
    {"\xE2\x88\x92", "-"},  // minus
    {"\xE2\x80\x98", "'"},  // quotes of a word processor
    {"\xE2\x80\x99", "'"},  //
    {"\xE2\x80\x9C", "\""}, //
    {"\xE2\x80\x9D", "\""}, //
    {"\xEF\xBC\x9A", ":"},  // colon of East Asian width
    {"\xEF\xBC\x9D", "="},  // equals sign of East Asian width
    {"\xC2\xA0", " "},      // no-break space
    {"\xA0", " "},          // Windows-1252: no-break space
    {"\x91", "'"},          // Windows-1252: quotes
    {"\x92", "'"},          //
    {"\x93", "\""},         //
    {"\x94", "\""},         //
    {"\x96", "-"},          // Windows-1252: dashes
    {"\x97", "-"},          //
};

/// Bytes of the UTF-8 sequence that begins with this byte; 1 for one that begins none.
std::size_t LengthOf(unsigned char first) {
    return first < 0xC0U ? 1 : first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
}

const Sign* SignAt(std::string_view text, std::size_t at) {
    const auto* const sign = std::find_if(std::begin(kSigns), std::end(kSigns), [&](const Sign& each) {
        return text.compare(at, each.bytes.size(), each.bytes) == 0;
    });
    return sign == std::end(kSigns) ? nullptr : sign;
}

} // namespace

bool HasForeign(std::string_view text) {
    unsigned char all = 0; // Without a branch for each byte: most texts have no such byte.
    for (const char c : text) {
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    }
    return all > 0x7FU;
}

bool HasLookalike(std::string_view text) {
    return HasForeign(text) && WithoutLookalikes(text) != text;
}

std::string WithoutLookalikes(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size();) {
        const bool isAscii = static_cast<signed char>(text[at]) >= 0;
        const Sign* const sign = isAscii ? nullptr : SignAt(text, at);
        const std::size_t length =
            sign != nullptr ? sign->bytes.size() : LengthOf(static_cast<unsigned char>(text[at]));
        plain += sign != nullptr ? sign->meant : text.substr(at, length);
        at += length;
    }
    return plain;
}

} // namespace explain
