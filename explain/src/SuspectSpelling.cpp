// Stage: suspects in how a line is spelled, and in lines that were wrapped.
// Input: lines. Output: suspects with the spelling that was meant.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Misspelling.h"
#include "Suspect.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

namespace explain {

namespace {

constexpr Rule kSpelling = {"E05", "", ExplainSeverity::Error, 20, ""};
constexpr Rule kWrapped = {
    "E164", "", ExplainSeverity::Error, 6,
    "Each CR LF ends a line, and no line goes on in the next one (RFC 4566, 5), so the "
    "rest of a wrapped line is one that no row takes."};

struct RowSentence {
    SDPRow row;
    const char* ledger;
    const char* acted;
};
constexpr RowSentence kRowSentences[] = {
    {SDPRow::Connection, "",
     "The address is the third word of a connection line as it stands; a line of fewer words is dropped."},
    {SDPRow::Media, "P06",
     "Medium and formats are words between blanks and compared letter for letter: \"Audio\" is not "
     "\"audio\", and \"09\" is not \"9\" (P06, X12)."},
    {SDPRow::Rtpmap, "X03",
     "Payload and encoding name are compared letter for letter (\"H264/9000\", \"G7221/16000\", "
     "\"telephone-event/8000\", X03); a line whose first word is shorter than a=rtpmap: is dropped (G01, "
     "P22)."},
    {SDPRow::Fmtp, "P09",
     "The payload stands from offset 7 to the first blank, parameters are cut at ';' and not trimmed, names "
     "are compared letter for letter, and a number is digits alone (P09, P20, X01, G18)."},
    {SDPRow::Crypto, "P11",
     "Words are cut at blanks and compared letter for letter, so the suite is unknown or its key is missed "
     "(P11, P19)."},
    {SDPRow::Ice, "P13",
     "The line is kept whole, spelled as it is, and its name is compared letter for letter (P13, P04)."},
    {SDPRow::Candidate, "P13", "The line is kept whole, as it is, when it begins with a=candidate: (P13)."},
    {SDPRow::Content, "G18",
     "Only \"a=content:main\" and \"a=content:slides\" are recognised, letter for letter."},
    {SDPRow::Bandwidth, "G18",
     "The value is all text after \"AS:\" or \"TIAS:\", and it counts only when it is a number, digits alone "
     "(G18); at session level it replaces the sum of the sections all the same (X09)."},
    {SDPRow::FloorControl, "G18", "The role is compared whole with \"s-only\", letter for letter."},
    {SDPRow::ConferenceId, "G18",
     "A number is decimal digits and nothing else; any other text leaves the value at 0 (G18)."},
    {SDPRow::UserId, "G18",
     "A number is decimal digits and nothing else; any other text leaves the value at 0 (G18)."},
    {SDPRow::Direction, "P14",
     "Only a=sendrecv, a=sendonly, a=recvonly and a=inactive are recognised, letter for letter; others are "
     "ignored."},
};

} // namespace

/// A line without type and "=" after one that something is read from: the rest of it. It is not quoted,
/// because it may be the rest of a key.
void FindWrapped(Scene& scene) {
    const Reading& reading = scene.reading;
    for (std::size_t i = 1; i < reading.lines.size(); ++i) {
        const TextLine& line = reading.lines[i];
        const TextLine& before = reading.lines[i - 1];
        const std::string_view rest = Trimmed(line.text);
        const bool isRest = line.meant == SDPRow::None && rest.size() > 1 && LacksType(rest);
        if (!isRest || before.meant == SDPRow::None || before.end != "\r\n") {
            continue;
        }
        const std::string_view start = Trimmed(before.text);
        const std::size_t end =
            before.offset + static_cast<std::size_t>(start.data() - before.text.data()) + start.size();
        const std::size_t next = line.offset + static_cast<std::size_t>(rest.data() - line.text.data());
        const bool isParameter = !start.empty() && start.back() == ';';
        Blame(scene, kWrapped, line,
              {"Line ", line.number, " has no type and looks like the rest of line ", before.number, ", ",
               InQuotes(before.text), "."},
              {"join line ", line.number, " to line ", before.number},
              {{end, next - end, isParameter ? "" : " "}})
            .lines.push_back(before.number);
    }
}

void FindMisspelled(Scene& scene) {
    for (const TextLine& line : scene.reading.lines) {
        if (IsCanonical(line) || line.meant == SDPRow::Crypto) {
            continue; // Crypto lines are examined with the others of their section.
        }
        const std::string canonical = Canonical(line, scene.reading);
        const SDPRow row =
            line.parsedLine == kNowhere ? line.meant : scene.reading.parsedLines[line.parsedLine].row;
        const bool isTaken =
            row == line.meant || row == SDPRow::None || row == SDPRow::Direction || line.text.find('=') != 1;
        // Blanks round the attributes that no row reads matter to nobody.
        const bool isRead = row != SDPRow::Direction || line.meant != SDPRow::Direction ||
                            sdp::FirstKeyword<sdp::kDirections>(line.text) != nullptr ||
                            sdp::FirstKeyword<sdp::kDirections>(canonical) != nullptr;
        if (canonical == line.text || !isTaken || !isRead) {
            continue;
        }
        for (const RowSentence& sentence : kRowSentences) {
            if (sentence.row == line.meant) {
                const Misspelling found = MisspellingOf(line.meant, line.text, canonical);
                Suspect& suspect = Blame(scene, kSpelling, line, {LineWords(line), " ", found.words, "."},
                                         {"write line ", line.number, " as ", InQuotes(canonical)},
                                         {ReplaceLine(line, canonical)});
                suspect.SayActed({*found.acted != '\0' ? found.acted : sentence.acted});
                suspect.ledger = *found.ledger != '\0' ? found.ledger : sentence.ledger;
                suspect.isTakenAway = true;
            }
        }
    }
}

} // namespace explain
