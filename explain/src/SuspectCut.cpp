// Stage: suspects in a last line without its end: a text that was cut, often in the middle of a word.
// Input: the last line. Output: a suspect with the end, and with the rest of the word where that is known.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPTables.h"

#include <algorithm>
#include <iterator>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kCutWord = {
    "E178", "", ExplainSeverity::Error, 2,
    "Text after the last CR LF is no line and is dropped (P02); one that ends within a word was cut on its "
    "way, as by a Content-Length that is too small (RFC 3261, 18.3)."};

/// Whether one text is a part of the other from its start on, and no less than `least` characters of it.
bool IsStartOf(std::string_view start, std::string_view whole, std::size_t least) {
    return start.size() >= least && start.size() < whole.size() && BeginsWith(whole, start);
}

/// "a=inactive" of "a=inact": the direction that the line is the start of; empty when it is none, or of two.
std::string WholeDirection(std::string_view line) {
    constexpr std::size_t least = 5;
    std::string whole;
    for (const sdp::Direction& direction : sdp::kDirections) {
        if (IsStartOf(line, direction.keyword, least)) {
            if (!whole.empty()) {
                return {};
            }
            whole = direction.keyword;
        }
    }
    return whole;
}

/// "a=rtpmap:96 H264/90000" of "a=rtpmap:96 H264/90".
std::string WholeRtpmap(std::string_view line) {
    constexpr std::size_t least = 4;
    const std::string_view name = WordOf(line, 1);
    std::vector<std::string_view> names = {sdp::kH264Name, sdp::kTelephoneEvent.name};
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        if (!codec.isStatic) {
            names.push_back(codec.format.name);
        }
    }
    for (const std::string_view whole : names) {
        if (IsStartOf(name, whole, least)) {
            return std::string(line) + std::string(whole.substr(name.size()));
        }
    }
    return {};
}

/// "a=content:slides" of "a=content:sl": the value that counts, when the line is the start of it.
std::string WholeValue(std::string_view line, std::string_view whole) {
    const std::size_t least = whole.find(':') + 2;
    return IsStartOf(line, whole, least) ? std::string(whole) : std::string();
}

/// The line with the rest of its last word; empty where nothing is missing, or nobody can tell what.
std::string Whole(const TextLine& line) {
    switch (line.meant) {
    case SDPRow::Direction:
        return WholeDirection(line.text);
    case SDPRow::Rtpmap:
        return WholeRtpmap(line.text);
    case SDPRow::Content:
        return WholeValue(line.text, "a=content:slides");
    case SDPRow::FloorControl:
        return WholeValue(line.text, "a=floorctrl:s-only");
    default:
        return {};
    }
}

/// Whether an earlier line of the section is a crypto line.
bool HasEarlierCrypto(const Reading& reading, const MeantSection& section) {
    const auto first = reading.lines.begin() + static_cast<std::ptrdiff_t>(section.line);
    const auto last = reading.lines.begin() + static_cast<std::ptrdiff_t>(section.last);
    return std::any_of(first, last, [](const TextLine& line) { return line.meant == SDPRow::Crypto; });
}

/// Whether a format parameter line gives a whole profile-level-id: "42e01f".
bool HasLevel(std::string_view line) {
    constexpr std::string_view name = "profile-level-id=";
    constexpr std::size_t digits = 6;
    const std::size_t at = line.find(name);
    return at != std::string_view::npos && line.size() >= at + name.size() + digits;
}

/// A section whose m= line is the last one.
void KnowCutSection(Suspect& suspect, const MeantSection& section) {
    std::vector<Topic> topics = TopicsOf(section, false);
    if (section.media == "video") {
        topics.push_back(Topic::Slides); // Its content line is cut off, too.
    }
    for (const Topic topic : topics) {
        suspect.Know(topic, {"The m= line of the ", AsShown(section.media),
                             " section has no end, so the section is not opened and does not come up."});
    }
}

/// What is lost with a line whose end alone mends nothing: what came after it is not there either.
void KnowLost(const Scene& scene, Suspect& suspect, const TextLine& line) {
    const MeantSection* const section = scene.reading.SectionOf(line);
    if (section == nullptr) {
        return;
    }
    if (line.meant == SDPRow::Media) {
        KnowCutSection(suspect, *section);
    } else if (line.meant == SDPRow::Crypto && scene.input.srtp &&
               !HasEarlierCrypto(scene.reading, *section)) {
        suspect.Know(EncryptionOf(*section, section->isSlides),
                     {"The section has no suite and no key without the line, so it is not encrypted or the "
                      "far end refuses it."});
    } else if (line.meant == SDPRow::Fmtp && section->media == "video" && !HasLevel(line.text) &&
               NameOf(scene, *section, PayloadOf(line.text)) == "H264") {
        suspect.Know(section->isSlides ? Topic::Slides : Topic::MainPicture,
                     {"The level and the packetization mode of payload ", AsShown(PayloadOf(line.text)),
                      " are lost with the line."});
    }
}

} // namespace

void AddCutLine(Scene& scene, const Rule& rule, const TextLine& line) {
    const std::string whole = Whole(line);
    std::string what = Joined({LineWords(line), " is the last line and has no CR LF at its end"});
    std::string cureWords = Joined({"end line ", line.number, " with CR LF"});
    if (!whole.empty()) {
        Append(what, {", and it looks like the start of ", InQuotes(whole)});
        cureWords = Joined({"write line ", line.number, " as ", InQuotes(whole), " and end it with CR LF"});
    }
    Suspect& suspect = Blame(scene, rule, line, {what, "."}, {cureWords},
                             {ReplaceLine(line, (whole.empty() ? std::string(line.text) : whole) + "\r\n")});
    suspect.isTakenAway = true;
    KnowLost(scene, suspect, line);
    constexpr std::size_t words = 4; // of an m= line that opens a section
    const bool isOpened = line.meant == SDPRow::Media && WordsOf(line.text, words).size() == words;
    if (!whole.empty() || (!suspect.known.empty() && !isOpened)) {
        suspect.rule = &kCutWord; // Its end alone does not mend it.
    }
}

} // namespace explain
