// Notes: what surprises in a description and what comes of it. Each names the line of the input, the ID of
// the behaviour in commonmedia/DELIBERATE.md (where none acts, the setting of this side or the clause), and
// the consequence. The rules are in tables, one row each,
// in NotesOnLines.cpp, NotesOnStreams.cpp and NotesOnKeys.cpp; NotesOnAnswer.cpp compares our answer with the
// offer.
//
// Tests: tests/tool/notes.cases, NotesTest.cpp
#pragma once

#include "Capabilities.h"
#include "Reading.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace cmsdp {

struct Note {
    std::uint32_t line = 0;  ///< of the input
    const char* id = "";     ///< of the ledger; a member of the local file; a clause
    std::string text;        ///< empty: nothing to say
    bool isOfAnswer = false; ///< the line is one of our answer
};

/// "line 9, P11: the key of ...".
std::string InWords(const Note& note);

/// A stream that has a section, as its rules see it.
struct StreamView {
    const Reading& reading;
    const Capabilities& side;
    const Section& section;
    baseSDP::SRTP_M_LINE stream;
    const VideoParms* video; ///< null for audio
    bool answers;            ///< we answer the text; otherwise it answers our offer
};

/// One thing that is worth a note, and an example of the line that shows it.
struct NoteRule {
    const char* example;
    Note (*look)(const StreamView&); ///< returns a note without text when there is nothing to say
};

/// What the rules of a table say of a stream, in the order of the table.
template <std::size_t N>
std::vector<std::string> NotesBy(const NoteRule (&rules)[N], const StreamView& view) {
    std::vector<std::string> notes;
    for (const NoteRule& rule : rules) {
        const Note note = rule.look(view);
        if (!note.text.empty()) {
            notes.push_back(InWords(note));
        }
    }
    return notes;
}

/// Notes on single lines; the last one counts those that are not shown.
std::vector<std::string> NotesOnLines(const Reading& reading);

/// Notes on a stream that is negotiated: format, address, direction.
std::vector<std::string> NotesOnStream(const StreamView& view);

/// Notes on a stream that is negotiated: SRTP.
std::vector<std::string> NotesOnKeys(const StreamView& view);

/// What our answer does to the sections of the offer.
struct AnswerNotes {
    std::vector<std::string> whole;                 ///< on the answer as a whole
    std::vector<std::vector<std::string>> byStream; ///< on each of the streams asked for
    std::vector<std::string> lost; ///< why the answer declines each of them or moves it; empty: it does not
};
/// `streams`: sections of the offer, null for a stream without one. `served`: how many sections are served.
AnswerNotes NotesOnAnswer(const std::string& answer, const std::vector<const Section*>& streams,
                          std::size_t served);

} // namespace cmsdp
