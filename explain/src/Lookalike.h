// Signs that only look like a blank, a dash, a quote or a colon: word processors, chats and web pages put
// them in the place of those that a description has.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// Whether a byte is beyond ASCII; a text without one has no such sign.
bool HasForeign(std::string_view text);
/// Whether one of these signs is in the text, in UTF-8 or in Windows-1252.
bool HasLookalike(std::string_view text);
/// The text with the ASCII character that each of these signs stands for.
std::string WithoutLookalikes(std::string_view text);

} // namespace explain
