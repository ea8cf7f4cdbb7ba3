// SIP messages in a text: how a log or a program wrote them down, and which of them is the only one.
//
// Tests: tests/tool/calls.cases, SipLogTest.cpp
#pragma once

#include "SipMessage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// Offsets of the lines that begin a SIP message, and the end of the text.
std::vector<std::size_t> CutsOfSipText(std::string_view text);

/// The message of a text with one SIP message; lines of a log may be around it. None when there are several,
/// or none with a Call-ID and a CSeq header.
std::optional<SipMessage> OnlySipMessage(std::string_view text);

/// The text with each SIP message at the start of a line: without the prefix that a log put in front of the
/// lines, with line ends for those that are written out ("\r\n"), and without the dot that some programs
/// print for CR. A text in which a line begins a message already stays as it is, and so does one in which
/// nothing of this makes a message with a Call-ID and a CSeq header. Adds a note on what was done, which
/// points to --exact if the verb `hasExact`.
std::string WithoutSipLog(std::string text, bool hasExact, std::vector<std::string>& notes);

} // namespace cmsdp
