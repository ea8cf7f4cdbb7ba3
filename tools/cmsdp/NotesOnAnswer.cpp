// What our own answer does to the sections of an offer. RFC 3264, 6 matches the two by their place: one "m="
// line for each of the offer's, in its order.
//
// Tests: tests/tool/notes.cases, NotesTest.cpp
#include "Notes.h"

#include "SDPTables.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

// An "m=" line of our answer.
struct AnswerLine {
    const MediaSession* session = nullptr; // null: a line that opens nothing when it is read
    std::string_view text;
    std::uint32_t number = 0;
};

std::vector<AnswerLine> MediaLines(const Reading& answer) {
    std::vector<AnswerLine> lines;
    for (const ReadLine& line : answer.lines) {
        if (line.row == SDPRow::Media) {
            lines.push_back(
                {line.opens ? answer.sections[line.section - 1].session : nullptr, line.text, line.number});
        }
    }
    return lines;
}

bool IsSameKind(const MediaSession& a, const MediaSession& b) {
    return a.eMedia == b.eMedia && a.eContent == b.eContent && sdp::IsBfcp(a) == sdp::IsBfcp(b);
}

// The line of the answer that accepts a section like this one; the number of lines when there is none.
std::size_t AcceptedAt(const std::vector<AnswerLine>& lines, const MediaSession& offered) {
    const auto found = std::find_if(lines.begin(), lines.end(), [&offered](const AnswerLine& line) {
        return line.session != nullptr && line.session->iPort != 0 && IsSameKind(*line.session, offered);
    });
    return static_cast<std::size_t>(found - lines.begin());
}

std::string KindAt(const std::vector<AnswerLine>& lines, std::size_t place) {
    if (place >= lines.size()) {
        return "nothing";
    }
    return lines[place].session == nullptr ? "a line that opens no section" : NameOf(lines[place].session);
}

// A stream whose section has no place in the text was never offered there, and nothing moves it.
Note AnotherPlace(const std::vector<AnswerLine>& lines, const Section& offered) {
    const std::size_t place = AcceptedAt(lines, *offered.session);
    return place == lines.size() || !offered.place || place == *offered.place
               ? Note{}
               : Note{offered.line, "B03",
                      "section " + std::to_string(*offered.place + 1) + " of the offer is section " +
                          std::to_string(place + 1) + " of our answer, which has " +
                          KindAt(lines, *offered.place) +
                          " in its place; the far end matches sections by their place"};
}

// Why the far end does not find the stream where it offered it; empty when it does.
std::string WhyLost(const std::vector<AnswerLine>& lines, const Section& offered) {
    if (AcceptedAt(lines, *offered.session) == lines.size()) {
        return "our own answer declines it";
    }
    const Note moved = AnotherPlace(lines, offered);
    return moved.text.empty() ? "" : InWords(moved);
}

// Sections that are not served are repeated at port 0, also those that our own sections answered.
Note RejectedAsWell(const std::vector<AnswerLine>& lines, const Section& offered, std::size_t served) {
    return offered.index >= served && AcceptedAt(lines, *offered.session) != lines.size()
               ? Note{offered.line, "B18",
                      "our answer accepts this section and rejects a copy of it at port 0, because it comes "
                      "after the sections that are served"}
               : Note{};
}

Note LineWithoutPort(const std::vector<AnswerLine>& lines) {
    const auto found = std::find_if(lines.begin(), lines.end(), [](const AnswerLine& line) {
        return line.session == nullptr && sdp::StartsWith(line.text, "m=application");
    });
    return found == lines.end()
               ? Note{}
               : Note{found->number, "B15",
                      "the m=application line has no port, because the offer has no floor control; strict "
                      "far ends refuse the whole answer",
                      true};
}

void Add(std::vector<std::string>& notes, const Note& note) {
    if (!note.text.empty()) {
        notes.push_back(InWords(note));
    }
}

} // namespace

AnswerNotes NotesOnAnswer(const std::string& answer, const std::vector<const Section*>& streams,
                          std::size_t served) {
    SDPHandler reader;
    const Draft draft = Draft::Of(answer);
    const Reading read = ReadWith(reader, draft);
    const std::vector<AnswerLine> lines = MediaLines(read);
    AnswerNotes notes;
    Add(notes.whole, LineWithoutPort(lines));
    for (const Section* section : streams) {
        notes.byStream.emplace_back();
        notes.lost.push_back(section == nullptr ? "" : WhyLost(lines, *section));
        if (section != nullptr) {
            Add(notes.byStream.back(), RejectedAsWell(lines, *section, served));
        }
    }
    return notes;
}

} // namespace cmsdp
