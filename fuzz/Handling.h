// One text through one handler, with every law that holds for any text and any side.
#pragma once

#include "Keys.h"
#include "Side.h"

#include <string>

namespace fuzz {

struct Handled {
    std::string record; ///< RecordText of the record that was read
    std::string answer; ///< what the handler wrote afterwards
};

/// Reads the text with a new handler of the side, answers it, dumps all records, and then reads a good text.
///
/// Requires that nothing is thrown, that parsing and answering keep their budgets, that extracting twice and
/// parsing twice give the same result, that the record depends on text and codecs only, that the description
/// has whole lines and reads back, and that no dump and no trace contains a key of `watch` or of the side.
Handled CheckHandling(const Side& side, const std::string& text, Watch watch);

} // namespace fuzz
