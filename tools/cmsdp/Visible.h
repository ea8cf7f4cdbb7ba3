// Text that a terminal cannot be fooled with. A far end writes what it likes into a description: escape
// sequences that repaint the screen, bidirectional marks that turn an address round, bytes that are no UTF-8.
//
// Tests: tests/tool/VisibleTest.cpp
#pragma once

#include <string>
#include <string_view>

namespace cmsdp {

/// One line for tables and messages: every byte outside printable ASCII becomes \xNN, and a backslash
/// two, so that different texts never look the same.
std::string Visible(std::string_view text);

/// One line that stays as it is when it is made visible twice: every byte outside printable ASCII becomes
/// \xNN, a backslash stays one.
std::string VisibleBytes(std::string_view text);

/// A description for a terminal: lines stay lines, a backslash stays one, every other byte outside printable
/// ASCII becomes \xNN.
std::string VisibleLines(std::string_view text);

} // namespace cmsdp
