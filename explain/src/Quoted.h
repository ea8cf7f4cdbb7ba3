// Text of the far end in a sentence: printable, short, without keys.
#pragma once

#include <string>
#include <string_view>

namespace explain {

/// A line in quotes for a sentence: printable, short, key text as "***".
std::string Quoted(std::string_view line);
/// A value of the far end for a sentence: printable, short, and "***" where it could be key text.
std::string Shown(std::string_view value);

} // namespace explain
