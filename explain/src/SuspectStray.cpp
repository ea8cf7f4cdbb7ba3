// Stage: suspects in lines of a neighbouring section: one section has two of a kind, the next one has none.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>
#include <map>

namespace explain {

namespace {

constexpr Rule kStray = {"E16", "", ExplainSeverity::Error, 15,
                         "A line changes only the section that was opened last, so it replaces the value of "
                         "that section, and the section that it is for has none."};
constexpr Rule kStrayIce = {
    "E161", "P13", ExplainSeverity::Error, 11,
    "User fragment and password count for the section that was opened last and replace "
    "its own (P13); the section that they are for has none."};
constexpr Rule kStrayCandidate = {
    "E160", "P13", ExplainSeverity::Error, 15,
    "A candidate is kept for the section that was opened last, whatever its port "
    "(P13), so an ICE agent checks it for the wrong stream."};
constexpr Rule kStrayKey = {"E17", "", ExplainSeverity::Error, 8,
                            "A crypto line counts for the section that was opened last, so the section that "
                            "it is for has no suite and no key."};

/// The lines of one kind in a section: kind and payload or tag, first and last of them.
struct Kind {
    std::size_t first = 0;
    std::size_t last = 0;
};
using Kinds = std::map<std::string, Kind>;

/// "k1" for "a=crypto:1 ...": lines with one key set one value. Empty for lines that may be anywhere.
std::string KindOf(const TextLine& line) {
    switch (line.meant) {
    case SDPRow::Connection:
        return "c";
    case SDPRow::Bandwidth:
        return line.text.find("TIAS:") == std::string_view::npos ? "" : "b";
    case SDPRow::Direction:
        return IsDirection(line) ? "d" : "";
    case SDPRow::Rtpmap:
        return "r" + std::string(PayloadOf(line.text));
    case SDPRow::Fmtp:
        return "f" + std::string(PayloadOf(line.text));
    case SDPRow::Ice:
        return BeginsWith(line.text, "a=ice-ufrag:") ? "u" : BeginsWith(line.text, "a=ice-pwd:") ? "p" : "";
    case SDPRow::Crypto: {
        const std::vector<std::string_view> words = WordsOf(line.text, 1);
        return "k" + std::string(words.empty() ? std::string_view() : ValueOf(words[0]));
    }
    default:
        return {};
    }
}

Kinds KindsOf(const Reading& reading, const MeantSection& section) {
    Kinds kinds;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const std::string kind = KindOf(reading.lines[i]);
        if (!kind.empty()) {
            kinds.emplace(kind, Kind{i, i}).first->second.last = i;
        }
    }
    return kinds;
}

/// Whether a section could use a line of this kind and has none.
bool Wants(const MeantSection& section, const Kinds& kinds, const std::string& kind) {
    if (section.IsDeclined() || !section.IsStream()) {
        return false;
    }
    if (kind[0] == 'k') {
        return !section.hasCrypto && section.IsSecure();
    }
    if (kind[0] == 'r' || kind[0] == 'f') {
        return kinds.count(kind) == 0 && section.listed.count(std::string_view(kind).substr(1)) != 0;
    }
    return kinds.count(kind) == 0;
}

/// A line that is for a neighbour of its section.
struct Stray {
    std::size_t line;  ///< index
    std::size_t other; ///< index of the line of its kind that is the section's own
    const MeantSection* target;
    bool isTargetNext;
};

/// Whether this line and the ones after it, up to the end of the section, are each the second of their kind.
bool IsAtTail(const Kinds& kinds, const MeantSection& section, std::size_t index) {
    std::size_t lasts = 0;
    for (const auto& entry : kinds) {
        lasts += entry.second.last >= index && entry.second.first < entry.second.last ? 1 : 0;
    }
    return lasts == section.last - index + 1;
}

/// Whether only lines that may be between an m= line and its attributes, or that are the first of two of
/// their kind, come before this line.
bool IsAtHead(const Reading& reading, const Kinds& kinds, const MeantSection& section, std::size_t index) {
    std::size_t others = 0;
    for (std::size_t i = section.line + 1; i < index; ++i) {
        const SDPRow row = reading.lines[i].meant;
        others += row != SDPRow::Connection && row != SDPRow::Bandwidth ? 1 : 0;
    }
    for (const auto& entry : kinds) {
        const bool isBefore = entry.second.first < index && entry.second.first < entry.second.last;
        others -= isBefore && entry.first[0] != 'c' && entry.first[0] != 'b' ? 1 : 0;
    }
    return others == 0;
}

/// The lines of a section that are for the one before or after it.
std::vector<Stray> StraysOf(const Reading& reading, const std::vector<Kinds>& kinds, std::size_t index) {
    const MeantSection& own = reading.sections[index];
    std::vector<Stray> strays;
    for (const auto& entry : kinds[index]) {
        const Kind& kind = entry.second;
        if (kind.first == kind.last) {
            continue;
        }
        const bool isKey = entry.first[0] == 'k';
        if (index + 1 < kinds.size() && Wants(reading.sections[index + 1], kinds[index + 1], entry.first) &&
            (isKey || IsAtTail(kinds[index], own, kind.last))) {
            strays.push_back({kind.last, kind.first, &reading.sections[index + 1], true});
        } else if (index > 0 && Wants(reading.sections[index - 1], kinds[index - 1], entry.first) &&
                   (isKey || IsAtHead(reading, kinds[index], own, kind.first))) {
            strays.push_back({kind.first, kind.last, &reading.sections[index - 1], false});
        }
    }
    std::sort(strays.begin(), strays.end(), [](const Stray& a, const Stray& b) { return a.line < b.line; });
    return strays;
}

/// Lines that move together: one, or user fragment and password, which are of use together only.
void AddStrays(Scene& scene, const std::vector<Stray>& strays) {
    const Stray& first = strays.front();
    const TextLine& line = scene.reading.lines[first.line];
    const TextLine& other = scene.reading.lines[first.other];
    const TextLine& media = scene.reading.lines[first.target->line];
    const TextLine& after = first.isTargetNext ? media : scene.reading.lines[first.target->last];
    const bool isPair = strays.size() > 1;
    const std::string second =
        isPair ? std::to_string(scene.reading.lines[strays.back().line].number) : std::string();
    std::vector<ExplainTextChange> changes;
    for (const Stray& stray : strays) {
        const TextLine& moved = scene.reading.lines[stray.line];
        changes.push_back(DeleteLine(moved));
        changes.push_back(InsertAfter(after, std::string(Trimmed(moved.text))));
    }
    Suspect& suspect = Blame(scene,
                             line.meant == SDPRow::Crypto ? kStrayKey
                             : line.meant == SDPRow::Ice  ? kStrayIce
                                                          : kStray,
                             line,
                             {LineWords(line), isPair ? " and line " : "", second,
                              isPair ? " are the second of their kind in their section, beside line "
                                     : " is the second of its kind in its section, beside line ",
                              other.number, ", and the section of line ", media.number, ", ",
                              InQuotes(media.text), ", has none."},
                             {isPair ? "move lines " : "move line ", line.number, isPair ? " and " : "",
                              second, " after line ", after.number},
                             std::move(changes));
    for (std::size_t i = 1; i < strays.size(); ++i) {
        suspect.lines.push_back(scene.reading.lines[strays[i].line].number);
    }
    suspect.lines.push_back(media.number);
    suspect.isTakenAway = true;
}

/// Whether a candidate is one for the RTP or the RTCP port of a section (RFC 8839, 5.1).
bool IsPortOf(const TextLine& candidate, const MeantSection& section) {
    constexpr std::size_t portWord = 5;
    const std::vector<std::string_view> words = WordsOf(candidate.text, portWord + 1);
    if (words.size() <= portWord || !IsDigits(words[portWord]) || words[portWord].size() > 5 ||
        !IsDigits(section.port) || section.port.size() > 5) {
        return false;
    }
    const int distance = std::stoi(std::string(words[portWord])) - std::stoi(section.port);
    return distance == 0 || distance == 1;
}

std::vector<std::size_t> CandidatesOf(const Reading& reading, const MeantSection& section) {
    std::vector<std::size_t> lines;
    for (std::size_t i = section.line; i <= section.last; ++i) {
        if (reading.lines[i].meant == SDPRow::Candidate) {
            lines.push_back(i);
        }
    }
    return lines;
}

/// Candidates of one section that have the ports of another, which has none.
void FindStrayCandidates(Scene& scene, const MeantSection& own, const MeantSection& other) {
    const Reading& reading = scene.reading;
    std::vector<std::size_t> strays;
    for (const std::size_t i : CandidatesOf(reading, own)) {
        if (IsPortOf(reading.lines[i], other) && !IsPortOf(reading.lines[i], own)) {
            strays.push_back(i);
        }
    }
    constexpr std::size_t most = 8;
    if (strays.empty() || strays.size() > most || !CandidatesOf(reading, other).empty()) {
        return;
    }
    const TextLine& line = reading.lines[strays.front()];
    const TextLine& media = reading.lines[other.line];
    std::vector<ExplainTextChange> changes;
    for (const std::size_t i : strays) {
        changes.push_back(DeleteLine(reading.lines[i]));
        changes.push_back(InsertAfter(media, std::string(Trimmed(reading.lines[i].text))));
    }
    Suspect& suspect = Blame(
        scene, kStrayCandidate, line,
        {LineWords(line), " stands in the section of line ", reading.lines[own.line].number,
         " and has the port of line ", media.number, ", ", InQuotes(media.text), ", which has no candidate."},
        {strays.size() == 1 ? "move line " : "move the candidates from line ", line.number,
         strays.size() == 1 ? " after line " : " on after line ", media.number},
        std::move(changes));
    suspect.lines.push_back(media.number);
    suspect.isTakenAway = true;
}

} // namespace

void FindStrays(Scene& scene) {
    const Reading& reading = scene.reading;
    constexpr std::size_t most = 32;
    constexpr std::size_t mostWithIce = 8;
    if (reading.hasCandidate && reading.sections.size() <= mostWithIce) {
        for (const MeantSection& own : reading.sections) {
            for (const MeantSection& other : reading.sections) {
                if (&own != &other) {
                    FindStrayCandidates(scene, own, other);
                }
            }
        }
    }
    std::vector<Kinds> kinds;
    for (std::size_t i = 0; i < reading.sections.size() && i < most; ++i) {
        kinds.push_back(KindsOf(reading, reading.sections[i]));
    }
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        std::vector<Stray> pair;
        for (const Stray& stray : StraysOf(reading, kinds, i)) {
            const bool isIce = reading.lines[stray.line].meant == SDPRow::Ice;
            if (isIce && (pair.empty() || pair.front().target == stray.target)) {
                pair.push_back(stray);
            } else {
                AddStrays(scene, {stray});
            }
        }
        if (!pair.empty()) {
            AddStrays(scene, pair);
        }
    }
}

} // namespace explain
