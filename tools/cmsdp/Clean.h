// The steps that turn a paste back into the description that was pasted. Logs, mails, browsers and editors
// change a text; the component reads bytes and would read the changed text, wrongly and without a word.
//
// Each step is a row of the table in Clean.cpp. A step that changes something leaves a note that says what
// was done and what a far end that really sends such a text would get. What belongs to no description stays
// in the draft until the cut around the description, which has a note of its own: nothing is lost silently.
//
// Tests: tests/tool/pasted-texts.cases
#pragma once

#include "Draft.h"
#include "Words.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cmsdp {

/// Runs all steps on the draft; adds their notes, which point to --exact where the reader of the text, who
/// takes `lineEnd` for the end of a line, reads it uncleaned as well. `nth` chooses one of several
/// descriptions, counted from 1; a note says so if the verb `hasNth`. Returns how many descriptions the input
/// holds, 0 when no line of it is "v=0"; when that is less than `nth` the draft holds all of them.
std::size_t Clean(Draft& draft, std::size_t nth, std::vector<std::string>& notes, LineEnd lineEnd,
                  bool hasNth = true);

/// Runs the steps that come before the cut, so that what is around and between descriptions stays. Their
/// notes do not point to --exact. Returns how many descriptions the draft then holds.
std::size_t CleanUncut(Draft& draft, std::vector<std::string>& notes);

// The steps. Each returns how many lines it changed; for the steps that decode a whole text, 1 or 0.

// CleanDecode.cpp: what a transport or a program made of the text
std::size_t DecodeUtf16(Draft& draft);
std::size_t DropByteOrderMark(Draft& draft);
std::size_t TakeFromJson(Draft& draft);
std::size_t EndLinesAtEscapes(Draft& draft);
std::size_t DecodeQuotedPrintable(Draft& draft);

/// The text with line ends for those that are written out as escapes, and quotes for "\\\""; the last line
/// gets an end, too.
std::string WithLineEnds(std::string_view text);

/// Where a text with escapes, which begins at `begin`, ends in its line: at the quote that encloses it, or at
/// the end of the line.
std::size_t EndOfEscaped(std::string_view line, std::size_t begin);

/// A line without its "=XX" (RFC 2045, 6.7); what is no such byte stays as it is.
std::string DecodedQuotedLine(std::string_view line);

// CleanLines.cpp: what was put around every line
std::size_t EndLinesAtCr(Draft& draft);
std::size_t EndLinesAtBreaks(Draft& draft);
std::size_t DropHtmlBreaks(Draft& draft);
std::size_t DropQuoting(Draft& draft);
std::size_t DropLogPrefix(Draft& draft);
std::size_t DropIndentation(Draft& draft);
std::size_t DropTrailingBlanks(Draft& draft);
std::size_t EndLinesInCrLf(Draft& draft);
std::size_t EndLastLine(Draft& draft);

/// How long the prefix of a log is at the start of this line, where any number may stand for a number, any
/// level for a level and blanks for blanks: times, counters and levels differ from line to line. A word with
/// a digit in it may be another such word, or any word as long ("7f" and "ab"). 0 when the line does not
/// begin so; a line that ends within the blanks at the end of the prefix has the prefix.
std::size_t LogPrefixLength(std::string_view prefix, std::string_view line);

/// A description inside a longer text.
struct Body {
    std::size_t begin = 0; ///< offset of its "v=0" line
    std::size_t end = 0;   ///< offset after its last line
    std::uint32_t firstLine = 0;
    std::uint32_t lastLine = 0;
};

/// The descriptions of a text: each begins at a line "v=0" and ends after the last line of the form
/// "letter=..." in front of the next one, and at the latest in front of a line that begins another part of a
/// message: "SIP/2.0 200 OK", "--boundary", or a line of another form after an empty one.
std::vector<Body> FindBodies(const Draft& draft);

/// "the input holds 2 descriptions, in lines 1 to 9 and 12 to 20"
std::string BodiesInWords(const std::vector<Body>& bodies);

} // namespace cmsdp
