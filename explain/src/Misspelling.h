// How a line differs from the spelling that its writer meant, for a sentence.
#pragma once

#include "SDPLineObserver.h"

#include <string>
#include <string_view>

namespace explain {

struct Misspelling {
    std::string words;       ///< "has a blank at its end"
    const char* acted = "";  ///< what the component does with such a line; empty: what its row says
    const char* ledger = ""; ///< the row that acts; empty: that of the line's row
};

/// Whether "=" does not come after the first letter, as in "rtpmap:0 PCMU/8000" and "m:audio 5004".
bool LacksType(std::string_view text);
/// How a line of this row differs from Canonical(line).
Misspelling MisspellingOf(SDPRow row, std::string_view text, std::string_view canonical);

} // namespace explain
