// One text through one handler, with every law that holds for any text and any side.
#pragma once

#include "Keys.h"
#include "Reading.h"
#include "Side.h"

#include <string>

namespace fuzz {

struct Handled {
    std::string record; ///< RecordText of the record that was read
    std::string answer; ///< what the handler wrote afterwards
};

/// Reads the text with a handler of the side, which may have read others before. Requires that parsing keeps
/// its budget, that the handler holds the sections of the text, that extracting twice and parsing twice give
/// the same result, that the record depends on text and codecs only, and that no setting changes. Returns the
/// record.
std::string CheckReading(SDPHandler& handler, const Side& side, const std::string& text);

/// Writes a description after a text of that length with this reading. Requires that writing keeps its budget
/// and changes nothing but the version, and what CheckDescription requires. Returns the description.
std::string CheckWriting(SDPHandler& handler, const Side& side, const Reading& remote, std::size_t length);

/// Reads the text with a new handler of the side, answers it, dumps all records, and then reads a good text.
/// Requires what CheckReading and CheckWriting require, and that no dump and no trace contains a key of
/// `watch` or of the side.
Handled CheckHandling(const Side& side, const std::string& text, Watch watch);

} // namespace fuzz
