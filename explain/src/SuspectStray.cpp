// Stage: suspects in lines of a neighbouring section: one section has two of a kind, the next one has none.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <map>

namespace explain {

namespace {

constexpr Rule kStray = {"E16", "", ExplainSeverity::Error, 15,
                         "A line changes only the section that was opened last, so it replaces the value of "
                         "that section, and the section that it is for has none."};
constexpr Rule kStrayKey = {"E17", "", ExplainSeverity::Error, 8,
                            "A crypto line counts for the section that was opened last, so the section that "
                            "it is for has no suite and no key."};

/// The lines of one kind in a section: kind and payload or tag, first and last of them.
struct Kind {
    std::size_t first = 0;
    std::size_t last = 0;
};
using Kinds = std::map<std::string, Kind>;

/// "k1" for "a=crypto:1 ...": lines with one key set one value. Empty for lines that may stand anywhere.
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
    const bool isMedia = section.media == "audio" || section.media == "video";
    if (section.port == "0" || !isMedia) {
        return false;
    }
    if (kind[0] == 'k') {
        return !section.hasCrypto && section.transport.find("SAVP") != std::string::npos;
    }
    if (kind[0] == 'r' || kind[0] == 'f') {
        return kinds.count(kind) == 0 && section.listed.count(std::string_view(kind).substr(1)) != 0;
    }
    return kinds.count(kind) == 0;
}

/// Whether only lines that may stand between an m= line and its attributes come before this line.
bool IsAtHead(const Reading& reading, const MeantSection& section, std::size_t index) {
    for (std::size_t i = section.line + 1; i < index; ++i) {
        const SDPRow row = reading.lines[i].meant;
        if (row != SDPRow::Connection && row != SDPRow::Bandwidth) {
            return false;
        }
    }
    return true;
}

void AddStray(Scene& scene, std::size_t index, const TextLine& other, const MeantSection& target,
              bool isTargetNext) {
    const TextLine& line = scene.reading.lines[index];
    const TextLine& media = scene.reading.lines[target.line];
    const TextLine& after = isTargetNext ? media : scene.reading.lines[target.last];
    Suspect& suspect =
        Blame(scene, line.meant == SDPRow::Crypto ? kStrayKey : kStray, line,
              {LineWords(line), " is the second of its kind in its section, beside line ", other.number,
               ", and the section of line ", media.number, ", ", InQuotes(media.text), ", has none."},
              {"move line ", line.number, " behind line ", after.number},
              {DeleteLine(line), InsertAfter(after, std::string(Trimmed(line.text)))});
    suspect.lines.push_back(media.number);
    suspect.isTakenAway = true;
}

} // namespace

void FindStrays(Scene& scene) {
    const Reading& reading = scene.reading;
    constexpr std::size_t most = 32;
    std::vector<Kinds> kinds;
    for (std::size_t i = 0; i < reading.sections.size() && i < most; ++i) {
        kinds.push_back(KindsOf(reading, reading.sections[i]));
    }
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const MeantSection& own = reading.sections[i];
        for (const auto& entry : kinds[i]) {
            const Kind& kind = entry.second;
            if (kind.first == kind.last) {
                continue;
            }
            const bool isKey = entry.first[0] == 'k';
            if (i + 1 < kinds.size() && (isKey || kind.last == own.last) &&
                Wants(reading.sections[i + 1], kinds[i + 1], entry.first)) {
                AddStray(scene, kind.last, reading.lines[kind.first], reading.sections[i + 1], true);
            } else if (i > 0 && (isKey || IsAtHead(reading, own, kind.first)) &&
                       Wants(reading.sections[i - 1], kinds[i - 1], entry.first)) {
                AddStray(scene, kind.first, reading.lines[kind.last], reading.sections[i - 1], false);
            }
        }
    }
}

} // namespace explain
