// Stage: suspects that concern the line as such: its end, the row that takes it, its spelling.
// Input: the lines of the text. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPLines.h"
#include "SDPTables.h"

#include <algorithm>
#include <cctype>

namespace explain {

namespace {

constexpr Rule kBareLf = {
    "E01", "P03", ExplainSeverity::Error, 1,
    "Only CR LF ends a line, so the lines are read as one, and only the first of them counts (P03)."};
constexpr Rule kFurtherCr = {"E167", "P03", ExplainSeverity::Error, 1,
                             "Only CR LF ends a line, so the CR before it is part of the line and of the "
                             "value at its end (P03)."};
constexpr Rule kCut = {"E02", "P02", ExplainSeverity::Error, 2,
                       "Text after the last CR LF is no line and is dropped (P02)."};
constexpr Rule kMisread = {"E03", "P01", ExplainSeverity::Error, 3, ""};
constexpr Rule kDirectionInside = {"E04", "P01", ExplainSeverity::Error, 4,
                                   "A direction is searched anywhere in an attribute line, so it becomes the "
                                   "direction of the section (P01)."};
constexpr Rule kTwoBodies = {"E06", "", ExplainSeverity::Warning, 5,
                             "The text is read as one description, so the lines of the second one change or "
                             "add to the sections of the first."};

/// Offset in a line after which it has nothing but CRs.
std::size_t EndOf(const TextLine& line) {
    return line.text.find_last_not_of('\r') + 1;
}

/// Whether the line ends in CR CR LF and has no other lone CR.
bool HasFurtherCr(const TextLine& line) {
    return line.end == "\r\n" && line.text.find('\r') == EndOf(line);
}

/// Edits that end each editor line of a range with CR LF, lone CRs included.
std::vector<ExplainTextChange> EndWithCrLf(const Reading& reading, std::size_t first, std::size_t last) {
    std::vector<ExplainTextChange> changes;
    for (std::size_t i = first; i < last; ++i) {
        const TextLine& line = reading.lines[i];
        for (std::size_t at = line.text.find('\r'); at != std::string_view::npos;
             at = line.text.find('\r', at + 1)) {
            const bool isFurther = at >= EndOf(line) && line.end == "\r\n";
            changes.push_back({line.offset + at, 1, isFurther ? "" : "\r\n"});
        }
        if (line.end != "\r\n") {
            changes.push_back({line.offset + line.text.size(), line.end.size(), "\r\n"});
        }
    }
    return changes;
}

std::string Through(const Reading& reading, std::size_t first, std::size_t last) {
    return std::to_string(reading.lines[first].number) +
           (last - first > 1 ? " to " + std::to_string(reading.lines[last - 1].number) : "");
}

const char* LineOrLines(std::size_t first, std::size_t last) {
    return last - first > 1 ? "lines " : "line ";
}

void AddJoined(Scene& scene, const Rule& rule, std::size_t first, std::size_t last, Pieces what) {
    Suspect& suspect =
        Blame(scene, rule, scene.reading.lines[first], what,
              {"end ", LineOrLines(first, last), Through(scene.reading, first, last), " with CR LF"},
              EndWithCrLf(scene.reading, first, last));
    suspect.isTakenAway = true;
    constexpr std::size_t named = 8;
    for (std::size_t i = first + 1; i < last && i < first + named; ++i) {
        suspect.lines.push_back(scene.reading.lines[i].number);
    }
}

/// A line of the component that is several lines of an editor, or has a CR in it.
void AddEnd(Scene& scene, const ParsedLine& parsed) {
    const std::vector<TextLine>& lines = scene.reading.lines;
    const TextLine& line = lines[parsed.first];
    const std::size_t end = parsed.first + parsed.count;
    if (parsed.count == 1 && HasFurtherCr(line)) {
        AddJoined(scene, kFurtherCr, parsed.first, end,
                  {LineWords(line), " ends in CR CR LF and not in CR LF."});
    } else if (parsed.count == 1) {
        AddJoined(scene, kBareLf, parsed.first, end,
                  {LineWords(line), " ends in LF or CR alone and not in CR LF."});
    } else {
        AddJoined(scene, kBareLf, parsed.first, end,
                  {LineWords(line), " ends in LF or CR alone and not in CR LF, so it is one line with line ",
                   lines[end - 1].number, ", ", InQuotes(lines[parsed.first + 1].text), "."});
    }
}

bool HasLoneCr(const ParsedLine& parsed) {
    return parsed.text.find('\r') != std::string_view::npos;
}

void FindTail(Scene& scene, std::size_t tail) {
    const Reading& reading = scene.reading;
    if (tail == reading.lines.size()) {
        return;
    }
    const TextLine& line = reading.lines[tail];
    if (tail + 1 == reading.lines.size() && line.end.empty() &&
        line.text.find('\r') == std::string_view::npos) {
        AddCutLine(scene, kCut, line);
        return;
    }
    AddJoined(scene, kCut, tail, reading.lines.size(),
              {"Lines ", Through(reading, tail, reading.lines.size()),
               " do not end in CR LF but in LF or CR alone, up to the end of the text."});
}

std::size_t KeywordIn(const ParsedLine& parsed) {
    return parsed.text.find(sdp::kLineRows[static_cast<std::size_t>(parsed.row)].keyword);
}

/// The line without what made another row take it.
std::string WithoutKeyword(const TextLine& line, std::string_view keyword) {
    const std::string_view text = line.text;
    const std::size_t at = text.find(keyword);
    if (line.meant == SDPRow::Fmtp) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        const std::size_t before = text.rfind(';', at);
        const std::size_t begin = before == std::string_view::npos || before < blank ? blank + 1 : before;
        const std::size_t end = std::min(text.find(';', at), text.size());
        const bool isFirst = begin == blank + 1;
        return std::string(text.substr(0, begin)) +
               std::string(Trimmed(text.substr(std::min(end + (isFirst ? 1 : 0), text.size()))));
    }
    const std::size_t equals = at + keyword.size() - 1;
    return std::string(text.substr(0, equals)) + std::string(text.substr(equals + 1));
}

bool IsWanted(const TextLine& line) {
    return line.meant != SDPRow::None && line.meant != SDPRow::Direction;
}

void AddMisread(Scene& scene, const TextLine& line, const ParsedLine& parsed) {
    const std::string_view keyword = sdp::kLineRows[static_cast<std::size_t>(parsed.row)].keyword;
    const bool canDelete =
        !IsWanted(line) && line.text.substr(0, 2) != "s=" && line.text.substr(0, 2) != "o=";
    Suspect& suspect =
        Blame(scene, kMisread, line,
              {LineWords(line), " contains \"", keyword, "\" at column ", KeywordIn(parsed) + 1, "."},
              {canDelete ? "delete" : "take \"", canDelete ? "" : keyword,
               canDelete ? " line " : "\" out of line ", line.number},
              {canDelete ? DeleteLine(line) : ReplaceLine(line, WithoutKeyword(line, keyword))});
    const std::size_t words = WordsOf(line.text, 4).size();
    const std::string then =
        parsed.row == SDPRow::Connection ? (words > 2 ? ", whose third word becomes the address,"
                                                      : " of fewer than three words, which is dropped,")
        : parsed.row == SDPRow::Media    ? (words > 3 ? " that opens a section, to which belongs " +
                                                         AfterWords(scene.reading, line.number - 1) + ","
                                                      : " of fewer than four words, which is dropped,")
                                         : "";
    suspect.SayActed({"The first keyword found anywhere in a line takes it (P01), so it is read as ",
                      RowWords(parsed.row), then, " and not as ", RowWords(line.meant), "."});
    suspect.isTakenAway = true;
}

void AddInside(Scene& scene, const TextLine& line) {
    const sdp::Direction* const direction = sdp::FirstKeyword<sdp::kDirections>(line.text);
    if (direction == nullptr || HasDirectionName(line)) {
        return;
    }
    Blame(scene, kDirectionInside, line,
          {LineWords(line), " is another attribute and contains \"", direction->keyword, "\"."},
          {"delete line ", line.number}, {DeleteLine(line)})
        .isTakenAway = true;
}

} // namespace

void FindLineEnds(Scene& scene) {
    const Reading& reading = scene.reading;
    std::size_t joined = 0;
    std::size_t next = 0;
    constexpr std::size_t most = 12;
    for (const ParsedLine& parsed : reading.parsedLines) {
        next = parsed.first + parsed.count;
        if ((parsed.count > 1 || HasLoneCr(parsed)) && parsed.count != 0 && ++joined <= most) {
            AddEnd(scene, parsed);
        }
    }
    FindTail(scene, next);
    FindWrapped(scene);
    if (joined > 1) {
        const bool isFurther =
            std::all_of(reading.lines.begin(), reading.lines.end(), [](const TextLine& line) {
                return line.text.find('\r') == std::string_view::npos ? line.end == "\r\n"
                                                                      : HasFurtherCr(line);
            });
        AddJoined(scene, isFurther ? kFurtherCr : kBareLf, 0, reading.lines.size(),
                  {joined, isFurther ? " lines end in CR CR LF." : " lines end in LF or CR alone."});
    }
}

void FindMisread(Scene& scene) {
    const Reading& reading = scene.reading;
    std::size_t bodies = 0;
    for (const TextLine& line : reading.lines) {
        bodies += BeginsWith(line.text, "v=") ? 1 : 0;
        if (bodies == 2 && BeginsWith(line.text, "v=")) {
            Blame(scene, kTwoBodies, line, {LineWords(line), " begins a second description."},
                  {"delete the text from line ", line.number, " on"},
                  {{line.offset, reading.text.size() - line.offset, {}}})
                .isTakenAway = true;
        }
        if (line.parsedLine == kNowhere) {
            continue;
        }
        const ParsedLine& parsed = reading.parsedLines[line.parsedLine];
        if (parsed.count != 1) {
            continue;
        }
        if (parsed.row != line.meant && parsed.row != SDPRow::None && parsed.row != SDPRow::Direction) {
            AddMisread(scene, line, parsed);
        } else if (parsed.row == SDPRow::Direction) {
            AddInside(scene, line);
        }
    }
}

} // namespace explain
