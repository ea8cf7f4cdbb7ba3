// Header fields of SIP messages and of the parts of a body (RFC 3261, 7.3; RFC 2045).
//
// Tests: tests/tool/SipMessageTest.cpp
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

struct SipHeader {
    std::string name;  ///< in lower case and never compact: "call-id" for "i"
    std::string value; ///< unfolded, without blanks at both ends
};

struct SipHeaders {
    std::vector<SipHeader> list;
    std::size_t end = 0; ///< offset after the empty line; the length of the text without one

    /// The value of the first header of that name; empty without one.
    const std::string& operator[](std::string_view name) const;
    bool Has(std::string_view name) const;
};

/// Reads the headers at the start of a text. Lines end in CR LF or in LF; a line that begins with a blank
/// continues the one before it. A line without a colon is skipped.
SipHeaders ReadSipHeaders(std::string_view text);

/// The line at the offset, without its end; the offset moves past the end.
std::string_view TakeLine(std::string_view text, std::size_t& at);

/// The value of a parameter, "tag" of "<sip:a@b>;tag=1": quotes taken off, the name in any letter case. What
/// is between angle brackets or quotes is no parameter. Empty without one.
std::string HeaderParameter(std::string_view value, std::string_view name);

/// The URI of a From or To value: what is between the angle brackets, or the value up to its parameters.
std::string HeaderUri(std::string_view value);

std::string LowerCase(std::string_view text);

} // namespace cmsdp
