// Stage: suspects in how a line is spelled, and in lines that were wrapped.
// Input: lines. Output: suspects with the spelling that was meant.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Lookalike.h"
#include "Suspect.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

#include <algorithm>
#include <cctype>

namespace explain {

namespace {

constexpr Rule kSpelling = {"E05", "", ExplainSeverity::Error, 20, ""};
constexpr Rule kWrapped = {
    "E164", "", ExplainSeverity::Error, 6,
    "Each CR LF ends a line, and no line goes on in the next one (RFC 4566, 5), so the "
    "rest of a wrapped line is one that no row takes."};

/// Whether a line begins with signs of quoted text, "> m=audio", which its type letter follows.
bool HasSigns(std::string_view text) {
    const std::string_view start = Trimmed(text);
    return !start.empty() && std::isalpha(static_cast<unsigned char>(start[0])) == 0;
}

/// Whether "=" does not come after the first letter, as in "rtpmap:0 PCMU/8000" and "m:audio 5004".
bool LacksType(std::string_view text) {
    const std::string_view start = Trimmed(text);
    return start.size() > 2 && Trimmed(start.substr(1)).substr(0, 1) != "=";
}

/// Whether a media line lacks its transport, or has it before its port.
bool IsTransportElsewhere(std::string_view text, std::string_view canonical) {
    return BeginsWith(canonical, "m=") && WordOf(canonical, 2) != Upper(WordOf(text, 2)) &&
           IsDigits(WordOf(text, 2)) && WordOf(text, 0) == WordOf(canonical, 0) &&
           WordOf(text, 1).find_first_of(",;") == std::string_view::npos;
}

/// Whether a media line has names in place of payload numbers.
bool HasNames(std::string_view text, std::string_view canonical) {
    const std::vector<std::string_view> words = WordsOf(text);
    return BeginsWith(canonical, "m=") && words.size() == WordsOf(canonical).size() && words.size() > 3 &&
           std::any_of(words.begin() + 3, words.end(), [](std::string_view word) {
               return std::isalpha(static_cast<unsigned char>(word[0]));
           });
}

std::string WithoutBlanks(std::string_view text) {
    std::string bare(text);
    bare.erase(std::remove_if(bare.begin(), bare.end(), [](char c) { return c == ' ' || c == '\t'; }),
               bare.end());
    return bare;
}

/// What an attribute has where the colon after its name belongs; null for a colon.
const char* ColonWords(std::string_view text, std::string_view canonical) {
    const std::size_t colon = canonical.find(':');
    if (!BeginsWith(canonical, "a=") || colon >= text.size()) {
        return nullptr;
    }
    const std::string_view name = text.substr(0, colon);
    if (text[colon] == ' ' && text.find(':') != colon + 1 && name == canonical.substr(0, colon)) {
        return "has a blank in place of its colon";
    }
    if (text[colon] != ':' && text[colon] != ' ' && Lower(name) == canonical.substr(0, colon)) {
        return IsDigits(text.substr(colon, 1)) ? "has no colon after its name"
                                               : "has another sign in place of its colon";
    }
    return nullptr;
}

/// How two spellings differ, for a sentence.
const char* DifferenceWords(std::string_view text, std::string_view canonical) {
    if (HasLookalike(text)) {
        return "has a character that only looks like a blank, a dash or a quote";
    }
    if (Lower(text) == Lower(canonical)) {
        return "differs in letter case from what the component compares";
    }
    if (LacksType(text) && !HasSigns(text)) {
        return "does not begin with its letter and \"=\"";
    }
    if (HasSigns(text)) {
        return "has signs before its first letter, as quoted or numbered text has";
    }
    if (IsTransportElsewhere(text, canonical)) {
        return BeginsWith(Upper(WordOf(text, 1)), WordOf(canonical, 2)) ? "has its transport before its port"
                                                                        : "has no transport after its port";
    }
    if (HasNames(text, canonical)) {
        return "has names where payload numbers belong";
    }
    if (Trimmed(text) == canonical) {
        return text[0] == canonical[0] ? "has a blank at its end" : "begins with a blank";
    }
    const bool isBlankAlone = WithoutBlanks(text) == WithoutBlanks(canonical);
    if (text.find("; ") != std::string_view::npos && isBlankAlone) {
        return "has a blank after ';'";
    }
    if (const char* const words = ColonWords(text, canonical)) {
        return words;
    }
    if (isBlankAlone) {
        return text.size() < canonical.size() ? "lacks a blank between two words"
                                              : "has a blank that does not belong there";
    }
    return text.find(',') != std::string_view::npos && canonical.find(',') == std::string_view::npos
               ? "has a comma where a blank or ';' belongs"
               : "is not spelled as the component compares it";
}

constexpr const char* kTypeActed =
    "A line has a letter and \"=\" at its start (RFC 4566, 5); without them no keyword is found, and no row "
    "takes the line.";
constexpr const char* kSignsActed =
    "The keyword is found anywhere in the line (P01), and words and values are counted from the start of the "
    "line, so the first word is not the medium, the payload or the type that was meant (P06, P20, P22).";

constexpr const char* kNamesActed =
    "The formats of an m= line are payload numbers: 0, 9 and 18 are known by the number alone, any other by "
    "its number and an rtpmap line, and a name in their place is no format (X12).";
constexpr const char* kPlacesActed =
    "Medium, port, transport and formats of an m= line are told apart by their place alone (RFC 4566, 5.14), "
    "so each word after the missing one stands in the place of another.";

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
                Suspect& suspect = Blame(scene, kSpelling, line,
                                         {LineWords(line), " ", DifferenceWords(line.text, canonical), "."},
                                         {"write line ", line.number, " as ", InQuotes(canonical)},
                                         {ReplaceLine(line, canonical)});
                suspect.SayActed({HasSigns(line.text)                          ? kSignsActed
                                  : IsTransportElsewhere(line.text, canonical) ? kPlacesActed
                                  : HasNames(line.text, canonical)             ? kNamesActed
                                  : LacksType(line.text)                       ? kTypeActed
                                                                               : sentence.acted});
                suspect.ledger = sentence.ledger;
                suspect.isTakenAway = true;
            }
        }
    }
}

} // namespace explain
