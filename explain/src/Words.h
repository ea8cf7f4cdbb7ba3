// Words of a line and small questions about them: no rule of the component is here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace explain {

inline constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

/// Text without white space at either end.
std::string_view Trimmed(std::string_view text);
/// The words of a text, cut at white space; at most `most`.
std::vector<std::string_view> WordsOf(std::string_view text, std::size_t most = kNowhere);
/// The word after `index` others; empty without one.
std::string_view WordOf(std::string_view text, std::size_t index);
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);
/// Inline, so that the comparison with a constant is a few instructions: every finder asks it of every line.
inline bool BeginsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && text.compare(0, start.size(), start) == 0;
}
/// Letters and digits alone, lower case: "H.264" and "h264" are one name to their writers.
std::string Squeezed(std::string_view name);
bool IsDigits(std::string_view text);
/// Whether digits are more than the record's 32 bits hold (G04).
bool IsOver32Bits(std::string_view digits);
/// Four decimal numbers up to 255 with dots between.
bool IsIpv4(std::string_view text);
/// An IPv4 address of one end: not 0.0.0.0 and its like, no multicast or broadcast address.
bool IsUnicast(std::string_view text);
/// A loopback, private or link-local IPv4 address.
bool IsPrivate(std::string_view address);
/// "a=fmtp:97 x" and "a=rtpmap:97 x": the digits after the keyword's colon; empty without any.
std::string_view PayloadOf(std::string_view line);
/// The value after the first ':' of an attribute, trimmed.
std::string_view ValueOf(std::string_view line);

} // namespace explain
