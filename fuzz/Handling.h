// One text through one handler, with every law that holds for any text and any side.
#pragma once

#include "Keys.h"
#include "Side.h"

#include <string>

namespace fuzz {

struct Handled {
    std::string record; ///< RecordText of what was read
    std::string answer; ///< what the handler wrote afterwards
};

/// Reads the text with a new handler of the side, answers it, dumps everything, and reads a good text.
///
/// Nothing is thrown; parsing and answering stay in their budgets; extracting twice and parsing twice give
/// the same; the record depends on text and codecs only; the description has whole lines and reads back; no
/// key that `watch` knows, and none of the side's own, stands in a dump or in the trace.
Handled CheckHandling(const Side& side, const std::string& text, Watch watch);

} // namespace fuzz
