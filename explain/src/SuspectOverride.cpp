// Stage: suspects in lines that a later line of their section overrides.
// Input: the lines of the text and the sections they were meant for. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <map>

namespace explain {

namespace {

constexpr Rule kOverridden = {
    "E13", "", ExplainSeverity::Error, 14,
    "Of several such lines in one section the last one stands, so it replaces the earlier one."};
constexpr Rule kTwoFormats = {
    "E14", "P08", ExplainSeverity::Error, 12,
    "The last fmtp line of a payload replaces the earlier ones, whose parameters are lost (P08)."};

/// What a line sets, so that two lines of one key compete: its row, and which of several things. A line
/// that competes with none has no row.
using Key = std::pair<SDPRow, std::string_view>;
constexpr Key kNoKey = {SDPRow::None, ""};

Key KeyOf(const TextLine& line) {
    switch (line.meant) {
    case SDPRow::Rtpmap:
    case SDPRow::Fmtp:
        return {line.meant, PayloadOf(line.text)};
    case SDPRow::Direction:
        return IsDirection(line) ? Key{line.meant, ""} : kNoKey;
    case SDPRow::Bandwidth: {
        const bool isTias = line.text.find("TIAS:") != std::string_view::npos;
        const bool isRead =
            line.section == kNowhere ? line.text.find("AS:") != std::string_view::npos : isTias;
        return isRead ? Key{line.meant, ""} : kNoKey;
    }
    case SDPRow::Connection:
    case SDPRow::Content:
    case SDPRow::FloorControl:
    case SDPRow::ConferenceId:
    case SDPRow::UserId:
        return {line.meant, ""};
    case SDPRow::Ice: {
        const std::string_view name = line.text.substr(0, line.text.find(':'));
        return name == "a=ice-ufrag" || name == "a=ice-pwd" ? Key{line.meant, name} : kNoKey;
    }
    default:
        return kNoKey;
    }
}

void AddOverridden(Scene& scene, const TextLine& earlier, const TextLine& later) {
    if (later.meant == SDPRow::Fmtp) {
        const auto payload = PayloadOf(later.text);
        const std::size_t after =
            static_cast<std::size_t>(payload.data() - later.text.data()) + payload.size();
        Suspect& suspect =
            Blame(scene, kTwoFormats, later,
                  {"Lines ", earlier.number, " and ", later.number, " are fmtp lines of payload ",
                   AsShown(payload), ", ", InQuotes(later.text), " the last."},
                  {"join line ", later.number, " to line ", earlier.number},
                  {ReplaceLine(earlier, std::string(earlier.text) + ";" +
                                            std::string(Trimmed(later.text.substr(after)))),
                   DeleteLine(later)});
        suspect.lines = {earlier.number, later.number};
        return;
    }
    Suspect& suspect =
        Blame(scene, kOverridden, later,
              {LineWords(later), " comes after line ", earlier.number, ", ", InQuotes(earlier.text), "."},
              {"delete line ", later.number}, {DeleteLine(later)});
    suspect.lines = {later.number, earlier.number};
    suspect.isTakenAway = true;
    const MeantSection* const section = scene.reading.SectionOf(later);
    if (later.meant == SDPRow::Rtpmap && section != nullptr &&
        section->listed.size() < section->formats.size()) {
        suspect.SayActed(
            {"When an m= line (line ", scene.reading.lines[section->line].number,
             ") lists a payload twice, rtpmap and fmtp lines reach its first entry only, and the "
             "last of them stands (P07)."});
    }
}

} // namespace

void FindOverridden(Scene& scene) {
    std::map<Key, const TextLine*> last;
    std::size_t section = kNowhere;
    for (const TextLine& line : scene.reading.lines) {
        if (line.section != section) {
            last.clear();
            section = line.section;
        }
        const Key key = KeyOf(line);
        if (key == kNoKey) {
            continue;
        }
        const TextLine*& earlier = last[key];
        if (earlier != nullptr && Trimmed(earlier->text) != Trimmed(line.text)) {
            AddOverridden(scene, *earlier, line);
        }
        earlier = &line;
    }
}

} // namespace explain
