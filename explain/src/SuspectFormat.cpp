// Stage: suspects in formats: what an m= line lists, its rtpmap and fmtp lines, and G.722.1.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;
constexpr Rule kBitRate = {
    "E42", "X01", ExplainSeverity::Error, 13,
    "A format is G.722.1 only when a parameter of its fmtp line begins with bitrate=32000 (X01)."};
constexpr Rule kOtherBitRate = {"E54", "X01", ExplainSeverity::Note, 57,
                                "G.722.1 is taken at 32 kbit/s only: a parameter of the fmtp line has to "
                                "begin with bitrate=32000 (X01)."};
constexpr Rule kUnlisted = {
    "E43", "", ExplainSeverity::Error, 21,
    "An rtpmap or fmtp line for a payload that the m= line of its section does not list is dropped."};
constexpr Rule kNoName = {
    "E44", "X03", ExplainSeverity::Error, 14,
    "A format outside of 0, 9 and 18 is known by the name in its rtpmap line alone (X03, X12)."};
constexpr Rule kWrongClock = {"E96", "X01", ExplainSeverity::Error, 13,
                              "G.722.1 is known at 16000 Hz alone, by the name G7221/16000."};
constexpr Rule kOtherClock = {"E57", "", ExplainSeverity::Note, 56,
                              "G.722.1 is known at 16000 Hz alone, by the name G7221/16000; at another clock "
                              "rate it is another codec."};

void AddBitRate(Scene& scene, const MeantSection& section, std::string_view payload) {
    const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload);
    const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
    const bool hasCodec = scene.state.record.eAudioCodec != PAYLOAD_UNKNOWN;
    if (Upper(rtpmap->text).find("G7221/16000") == std::string::npos &&
        rtpmap->text.find('/') != std::string_view::npos) {
        Blame(scene, hasCodec ? kOtherClock : kWrongClock, *rtpmap,
              {LineWords(*rtpmap), " names G.722.1 at another clock rate."},
              {"offer G7221/16000 under payload ", AsShown(payload)},
              {ReplaceLine(*rtpmap, "a=rtpmap:" + std::string(payload) + " G7221/16000"),
               fmtp == nullptr ? InsertAfter(*rtpmap, "a=fmtp:" + std::string(payload) + " bitrate=32000")
                               : ReplaceLine(*fmtp, "a=fmtp:" + std::string(payload) + " bitrate=32000")});
        return;
    }
    const std::string text = "a=fmtp:" + std::string(payload) + " bitrate=32000";
    if (fmtp == nullptr) {
        Blame(scene, kBitRate, *rtpmap, {LineWords(*rtpmap), " has no fmtp line with a bit rate."},
              {"insert ", InQuotes(text), " after line ", rtpmap->number}, {InsertAfter(*rtpmap, text)});
    } else {
        const std::string canonical = Canonical(*fmtp, scene.reading);
        if (canonical != fmtp->text && canonical.find("bitrate=32000") != std::string::npos) {
            return; // The spelling is blamed.
        }
        const std::size_t at = fmtp->text.find("bitrate=");
        const bool isOther = at != std::string_view::npos && IsDigits(fmtp->text.substr(at + 8)) &&
                             fmtp->text.substr(at + 8) != "32000";
        Blame(scene, isOther && hasCodec ? kOtherBitRate : kBitRate, *fmtp,
              {LineWords(*fmtp), " has no parameter that begins with bitrate=32000."},
              {"write line ", fmtp->number, " as ", InQuotes(text)}, {ReplaceLine(*fmtp, text)});
    }
}

bool IsPayload(const std::string& format) {
    constexpr std::size_t longest = 3;
    constexpr int most = 127;
    return IsDigits(format) && format.size() <= longest && std::stoi(format) <= most;
}

/// The formats of an m= line as it was meant to be spelled.
std::vector<std::string> FormatsMeant(const Scene& scene, const TextLine& media) {
    const std::string line = Canonical(media, scene.reading);
    const std::vector<std::string_view> words = WordsOf(line);
    std::vector<std::string> formats;
    for (std::size_t i = 3; i < words.size(); ++i) {
        formats.emplace_back(words[i]);
    }
    return formats;
}

/// A rtpmap line for a payload that the section does not list: listed under a number without a name, if any.
void AddUnlisted(Scene& scene, const MeantSection& section, const TextLine& media, std::size_t index,
                 SDPRow row) {
    const TextLine& line = scene.reading.lines[index];
    const std::string_view payload = PayloadWordOf(line.text);
    const auto& lines = row == SDPRow::Rtpmap ? section.rtpmap : section.fmtp;
    const auto blame = [&](Pieces cureWords, std::vector<ExplainTextChange> changes) {
        Blame(scene, kUnlisted, line,
              {LineWords(line), " is for payload ", AsShown(payload), ", which line ", media.number, ", ",
               InQuotes(media.text), ", does not list."},
              cureWords, std::move(changes))
            .lines.push_back(media.number);
    };
    if (payload.empty()) {
        return; // The spelling of the line is blamed, or it has no value at all.
    }
    const std::vector<std::string> meant = FormatsMeant(scene, media);
    if (std::find(meant.begin(), meant.end(), payload) != meant.end()) {
        return; // The spelling of the m= line is blamed.
    }
    constexpr std::size_t most = 16;
    std::size_t tried = 0;
    for (const std::string& format : meant) {
        const bool isStatic = (row == SDPRow::Rtpmap && format.size() < 2) || !IsPayload(format);
        if (lines.count(format) == 0 && !isStatic && ++tried <= most) {
            blame({"write payload ", format, " in line ", line.number},
                  {ReplaceLine(line, WithPayload(line, format))});
        }
    }
    if (row == SDPRow::Rtpmap && IsPayload(std::string(payload))) {
        blame({"list payload ", payload, " in line ", media.number},
              {ReplaceLine(media, WithFormat(media, {}, payload))});
    }
}

/// The name that the parameters of a payload belong to; empty when nothing tells.
const char* NameByParameters(const MeantSection& section, const TextLine* fmtp) {
    const std::string_view text = fmtp == nullptr ? std::string_view() : fmtp->text;
    const auto has = [&](std::string_view word) { return text.find(word) != std::string_view::npos; };
    if (section.media == "video") {
        return has(sdp::kProfileLevelId) || has(sdp::kPacketizationMode) ? sdp::kH264Name : "";
    }
    return has("bitrate=") ? "G7221/16000" : has(" 0-1") ? "telephone-event/8000" : "";
}

/// Whether an rtpmap line of this name is for a payload that the section does not list.
bool HasUnlisted(const Scene& scene, const MeantSection& section, const std::string& name) {
    return std::any_of(section.rtpmap.begin(), section.rtpmap.end(), [&](const auto& entry) {
        return section.listed.count(entry.first) == 0 &&
               scene.reading.lines[entry.second].text.find(name) != std::string_view::npos;
    });
}

void AddNameless(Scene& scene, const MeantSection& section, std::string_view payload) {
    const TextLine& media = scene.reading.lines[section.line];
    const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload);
    const TextLine* const bare = LineOf(scene.reading, section.rtpmap, payload);
    const std::string name = NameByParameters(section, fmtp);
    if (name.empty()) {
        return;
    }
    if (bare == nullptr && HasUnlisted(scene, section, name)) {
        return; // The number in that line is blamed.
    }
    const std::string rtpmap = "a=rtpmap:" + std::string(payload) + " " + name;
    if (bare != nullptr && !WordOf(Canonical(*bare, scene.reading), 1).empty()) {
        return; // The spelling of the line is blamed.
    }
    if (bare != nullptr) {
        Blame(scene, kNoName, *bare, {LineWords(*bare), " gives payload ", AsShown(payload), " no name."},
              {"write line ", bare->number, " as ", InQuotes(rtpmap)}, {ReplaceLine(*bare, rtpmap)});
        return;
    }
    Blame(scene, kNoName, media,
          {LineWords(media), " lists payload ", AsShown(payload), ", which has no rtpmap line."},
          {"insert ", InQuotes(rtpmap), " after line ", media.number}, {InsertAfter(media, rtpmap)})
        .lines.push_back(fmtp->number);
}

} // namespace

void FindUnlisted(Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 8;
    const TextLine& media = scene.reading.lines[section.line];
    std::size_t count = 0;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const SDPRow row = scene.reading.lines[i].meant;
        if ((row == SDPRow::Rtpmap || row == SDPRow::Fmtp) &&
            section.listed.count(PayloadOf(scene.reading.lines[i].text)) == 0 && ++count <= most) {
            AddUnlisted(scene, section, media, i, row);
        }
    }
}

void FindNameless(Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 32;
    for (std::size_t i = 0; i < section.formats.size() && i < most; ++i) {
        if (NameOf(scene, section, section.formats[i]).empty()) {
            AddNameless(scene, section, section.formats[i]);
        }
    }
}

void FindAudioFormats(Scene& scene) {
    bool isFirst = true;
    for (const MeantSection& section : scene.reading.sections) {
        if (section.media != "audio" || section.formats.empty()) {
            continue;
        }
        constexpr std::size_t most = 32;
        for (std::size_t i = 0; i < section.formats.size() && i < most; ++i) {
            const std::string name = NameOf(scene, section, section.formats[i]);
            FindStatic(scene, section, section.formats[i], name, isFirst);
            if (name == "G7221") {
                AddBitRate(scene, section, section.formats[i]);
            }
        }
        FindNameless(scene, section);
        FindUnlisted(scene, section);
        if (isFirst) {
            FindTones(scene, section);
            FindChoice(scene, section);
        }
        isFirst = false;
    }
}

} // namespace explain
