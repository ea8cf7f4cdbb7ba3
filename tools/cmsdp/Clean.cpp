// The table of the cleaning steps, in the order in which they run: first whatever encodes the whole text,
// then what is around each line, then what is around the description, then the line ends.
//
// Tests: tests/tool/pasted-texts.cases
#include "Clean.h"

#include "SDPLines.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

struct Step {
    const char* example; // of an input that the step changes
    std::size_t (*clean)(Draft&);
    const char* done;    // what was done; a "#" stands for the number of lines
    const char* really;  // what a far end gets that sends such a text
    bool leaves = false; // lines that it does not change may be read all the same, and are counted
};

constexpr Step kBeforeTheCut[] = {
    {"\xff\xfev\0=\0", DecodeUtf16, "the text was UTF-16 and was read as UTF-8",
     "a far end that sends this is not understood: no line of it ends in the bytes CR LF (P03)"},
    {"\xef\xbb\xbfv=0", DropByteOrderMark, "the byte-order mark in front was dropped",
     "a far end that sends it loses its first line and nothing else"},
    {R"({"type": "offer", "sdp": "v=0\r\n..."})", TakeFromJson,
     "the text was taken out of a JSON value, and lines are counted in it",
     "a far end that sends this is not understood: its line ends are escapes (P03)"},
    {R"(v=0\r\no=- 1 1 IN IP4 192.0.2.1\r\n)", EndLinesAtEscapes,
     "line ends that were written out as escapes were read as line ends, and lines are counted by them",
     "a far end that sends this is not understood: its line ends are escapes (P03)"},
    {"v=0\rs=-\r", EndLinesAtCr, "CR alone was read as a line end after #",
     "a far end that sends this is not understood: only CR LF ends a line (P03)"},
    {"v=0<br>s=-<br>", EndLinesAtBreaks, "the mark <br> was read as a line end after #",
     "a far end that sends this has these lines joined to one (P03)"},
    {"v=0<br>", DropHtmlBreaks, "the mark <br> was dropped from #",
     "a far end that sends it has it read as part of each value, addresses included"},
    {"> v=0", DropQuoting, "quoting was dropped from #",
     "a far end that sends this has sections of unknown kind only (P06)"},
    {"v=3D0", DecodeQuotedPrintable, "quoted-printable was decoded in # from \"v=3D0\" on",
     "a far end that sends this has sections of unknown kind only (P06)"},
    {"2026-05-01 12:00:00.123 [DEBUG] v=0", DropLogPrefix, "the log prefix was dropped from #",
     "a far end that sends this has sections of unknown kind only (P06), and a keyword in the prefix "
     "decides what each line is taken for (P01)",
     true},
    {"    v=0", DropIndentation, "indentation was dropped from #",
     "a far end that sends this loses its format parameters (G03, P20)"},
    {"b=TIAS:64000  ", DropTrailingBlanks, "trailing blanks were dropped from #",
     "a far end that sends them loses the number or the name in front of them (G18)"},
};

constexpr Step kAfterTheCut[] = {
    {"v=0\n", EndLinesInCrLf, "LF alone was read as CR LF at the end of #",
     "a far end that sends LF alone has each such line joined to the next one, and without any CR LF it is "
     "not understood (P03)"},
    {"a=sendrecv", EndLastLine, "the last line had no line end and was read as if it had one",
     "a far end that sends this loses that line (P02)"},
};

std::string CountedLines(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " line" : " lines");
}

// Lines of no description that hold a keyword all the same, from "v=0" on where there is that line.
std::size_t LinesLeft(const Draft& draft) {
    std::size_t count = 0;
    bool begun = FindBodies(draft).empty();
    ForEachLine(draft, [&](const DraftLine& line) {
        begun = begun || Trimmed(line.text) == kFirstLine;
        count += begun && !LooksLikeSdp(line.text) && sdp::RowOf(line.text) != SDPRow::None ? 1 : 0;
    });
    return count;
}

// What a note ends in: --exact reads what it was given, and refuses a text without any line of a description.
const char* EndOfNote(bool exactReads) {
    return exactReads ? "; --exact keeps it" : "";
}

std::string NoteOf(const Step& step, std::size_t count, std::size_t left, bool exactReads) {
    std::string done = step.done;
    const std::size_t mark = done.find('#');
    if (mark != std::string::npos) {
        done.replace(mark, 1, CountedLines(count));
    }
    if (left != 0) {
        done += ", and " + CountedLines(left) + " without it, which " + (left == 1 ? "holds" : "hold") +
                " a keyword, " + (left == 1 ? "is" : "are") + " left as " +
                (left == 1 ? "it is" : "they are");
    }
    return done + "; " + step.really + EndOfNote(exactReads);
}

template <std::size_t N>
void RunSteps(const Step (&steps)[N], Draft& draft, bool exactReads, std::vector<std::string>& notes) {
    for (const Step& step : steps) {
        const std::size_t count = step.clean(draft);
        if (count != 0) {
            notes.push_back(NoteOf(step, count, step.leaves ? LinesLeft(draft) : 0, exactReads));
        }
    }
}

bool IsBlankText(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsBlank);
}

void Cut(Draft& draft, const Body& body) {
    const auto lineOf = [&draft](std::size_t offset) {
        return std::count(draft.text.begin(), draft.text.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
    };
    const auto first = lineOf(body.begin);
    Draft cut = Draft::Of(draft.text.substr(body.begin, body.end - body.begin));
    std::copy_n(draft.numbers.begin() + first, cut.numbers.size(), cut.numbers.begin());
    draft = std::move(cut);
}

// "2 lines in front of "v=0" and 1 line after the description were cut"; empty when only blanks are cut.
std::string CutInWords(const Draft& draft, const Body& body) {
    const std::string_view text = draft.text;
    const std::size_t before =
        IsBlankText(text.substr(0, body.begin)) ? 0 : body.firstLine - draft.numbers[0];
    const std::size_t after = IsBlankText(text.substr(body.end)) ? 0 : draft.numbers.back() - body.lastLine;
    std::string words = before == 0 ? "" : CountedLines(before) + " in front of \"v=0\"";
    words += before != 0 && after != 0 ? " and " : "";
    words += after == 0 ? "" : CountedLines(after) + " after the description";
    return words.empty() ? "" : words + (before + after == 1 ? " was cut" : " were cut");
}

// Headers of a SIP message hold "c=" and "m=" (`realm=`), so what is around the description must not
// reach the component.
void CutAround(Draft& draft, const std::vector<Body>& bodies, std::size_t nth, bool hasNth, bool exactReads,
               std::vector<std::string>& notes) {
    const std::string cut = CutInWords(draft, bodies[0]);
    if (bodies.size() > 1) {
        notes.push_back(BodiesInWords(bodies) + "; number " + std::to_string(nth) + " is read" +
                        (hasNth ? ", --nth picks another" : "") +
                        "; a far end that sends them as one text has their sections taken together");
    } else if (cut.empty()) {
        return;
    } else {
        notes.push_back(cut + "; a far end that sends this has keywords in it read, too (P01)" +
                        EndOfNote(exactReads));
    }
    Cut(draft, bodies[nth - 1]);
}

// A line of a message that is no part of the description in front of it (RFC 3261, 7; RFC 2046, 5.1.1).
bool BeginsAnotherPart(std::string_view line, bool isAfterBlank) {
    constexpr std::string_view version = "SIP/2.0";
    const std::string_view text = Trimmed(line);
    const bool isStartLine =
        sdp::StartsWith(text, version) ||
        (text.size() > version.size() && text.substr(text.size() - version.size()) == version);
    return isStartLine || sdp::StartsWith(text, "--") ||
           (isAfterBlank && !text.empty() && !LooksLikeSdp(line));
}

} // namespace

std::size_t Clean(Draft& draft, std::size_t nth, std::vector<std::string>& notes, LineEnd lineEnd,
                  bool hasNth) {
    const bool exactReads = HoldsSdpLine(draft.text, lineEnd);
    RunSteps(kBeforeTheCut, draft, exactReads, notes);
    const std::vector<Body> bodies = FindBodies(draft);
    if (nth > 1 && nth > bodies.size()) {
        return bodies.size();
    }
    if (!bodies.empty()) {
        CutAround(draft, bodies, nth, hasNth, exactReads, notes);
    }
    RunSteps(kAfterTheCut, draft, exactReads, notes);
    return bodies.size();
}

std::size_t CleanUncut(Draft& draft, std::vector<std::string>& notes) {
    RunSteps(kBeforeTheCut, draft, false, notes);
    return FindBodies(draft).size();
}

std::vector<Body> FindBodies(const Draft& draft) {
    std::vector<Body> bodies;
    bool isOpen = false;
    bool isAfterBlank = false;
    ForEachLine(draft, [&](const DraftLine& line) {
        if (Trimmed(line.text) == kFirstLine) {
            isOpen = true;
            bodies.emplace_back();
            bodies.back().begin = static_cast<std::size_t>(line.text.data() - draft.text.data());
            bodies.back().firstLine = line.number;
        }
        isOpen = isOpen && !BeginsAnotherPart(line.text, isAfterBlank);
        isAfterBlank = Trimmed(line.text).empty();
        if (isOpen && LooksLikeSdp(line.text)) {
            bodies.back().end =
                static_cast<std::size_t>(line.end.data() + line.end.size() - draft.text.data());
            bodies.back().lastLine = line.number;
        }
    });
    return bodies;
}

std::string BodiesInWords(const std::vector<Body>& bodies) {
    constexpr std::size_t most = 8;
    std::vector<std::string> places;
    places.reserve(bodies.size());
    for (const Body& body : bodies) {
        places.push_back(std::to_string(body.firstLine) + " to " + std::to_string(body.lastLine));
    }
    return "the input holds " + std::to_string(bodies.size()) + " descriptions, in lines " +
           Listed(places, most);
}

} // namespace cmsdp
