// The words of an m= line as they were meant: medium, port, transport, formats.
#pragma once

#include <string_view>
#include <vector>

namespace explain {

/// The words of the value of an m= line, in their places: words without a blank between them are parted
/// ("audio5004", "5004/RTP/AVP", "UDP/BFCP*"), a transport before the port comes after it, and a missing one
/// is the usual one. Views of the text, or of constants.
std::vector<std::string_view> MediaWords(std::string_view value);

} // namespace explain
