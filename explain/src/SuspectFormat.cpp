// Stage: suspects in formats: what an m= line lists, its rtpmap and fmtp lines, the names of audio codecs.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kRenamed = {"E40", "X12", ExplainSeverity::Error, 6,
                           "Payloads 0, 9 and 18 are G.711 mu-law, G.722 and G.729 by their number alone; an "
                           "rtpmap line for them is not read (X12)."};
constexpr Rule kByNumber = {"E41", "X12", ExplainSeverity::Error, 12,
                            "G.711 mu-law, G.722 and G.729 are recognised by the payload numbers 0, 9 and 18 "
                            "alone, not by a name under another number (X12)."};
constexpr Rule kBitRate = {
    "E42", "X01", ExplainSeverity::Error, 13,
    "A format is G.722.1 only when a parameter of its fmtp line begins with bitrate=32000 (X01)."};
constexpr Rule kOtherBitRate = {"E54", "X01", ExplainSeverity::Note, 57,
                                "G.722.1 is taken at 32 kbit/s only: a parameter of the fmtp line has to "
                                "begin with bitrate=32000 (X01)."};
constexpr Rule kUnlisted = {
    "E43", "", ExplainSeverity::Error, 21,
    "An rtpmap or fmtp line for a payload that the m= line of its section does not list is dropped."};
constexpr Rule kStaticClock = {
    "E174", "X12", ExplainSeverity::Note, 58,
    "Payloads 0, 9 and 18 are G.711 mu-law, G.722 and G.729 at 8000 Hz by their number "
    "alone; an rtpmap line for them is not read (X12)."};
constexpr Rule kAnnexB = {"E175", "", ExplainSeverity::Note, 59,
                          "The format parameters of G.729 are not read (RFC 4856, 2.1.9 has annexb)."};
constexpr Rule kNoName = {
    "E44", "X03", ExplainSeverity::Error, 14,
    "A format outside of 0, 9 and 18 is known by the name in its rtpmap line alone (X03, X12)."};
constexpr Rule kWrongClock = {"E96", "X01", ExplainSeverity::Error, 13,
                              "G.722.1 is known at 16000 Hz alone, by the name G7221/16000."};
constexpr Rule kOtherClock = {"E57", "", ExplainSeverity::Note, 56,
                              "G.722.1 is known at 16000 Hz alone, by the name G7221/16000; at another clock "
                              "rate it is another codec."};

/// "PCMU" of "PCMU/8000".
std::string_view NameOfCodec(const sdp::AudioCodec& codec) {
    return codec.format.name.substr(0, codec.format.name.find('/'));
}

void AddRenamed(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                const std::string& name) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        if (!codec.isStatic || payload != codec.format.payload || name.empty() ||
            name == NameOfCodec(codec) || rtpmap == nullptr) {
            continue;
        }
        const std::string free = FreePayload(section);
        std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, payload, free)),
                                                  ReplaceLine(*rtpmap, WithPayload(*rtpmap, free))};
        if (const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload)) {
            changes.push_back(ReplaceLine(*fmtp, WithPayload(*fmtp, free)));
        }
        Suspect& suspect = Blame(
            scene, kRenamed, *rtpmap,
            {LineWords(*rtpmap), " gives the static payload ", payload, " another meaning."},
            {"give the format the dynamic payload ", free, " in place of ", payload}, std::move(changes));
        suspect.isTakenAway = true;
    }
}

/// A static payload whose rtpmap line gives another clock rate, or G.729 with Annex B.
void AddStaticNotes(Scene& scene, const MeantSection& section, std::string_view payload) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const bool isChosen = codec.isStatic && payload == codec.format.payload &&
                              scene.state.record.eAudioCodec == codec.codec;
        if (!isChosen) {
            continue;
        }
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload);
        const std::string_view name = rtpmap == nullptr ? std::string_view() : WordOf(rtpmap->text, 1);
        const bool isName =
            BeginsWith(Upper(name), codec.format.name.substr(0, codec.format.name.find('/') + 1));
        // G722/16000 is what the codec does and an old error for its RTP clock (RFC 3551, 4.5.2).
        if (isName && !BeginsWith(Upper(name), codec.format.name) && Upper(name) != "G722/16000") {
            Blame(scene, kStaticClock, *rtpmap,
                  {LineWords(*rtpmap), " gives payload ", payload, " another clock rate than 8000."}, {}, {})
                .Know(Topic::AudioCodec, {"This side sends and plays payload ", payload,
                                          " at 8000 Hz, so speech is too slow, too fast or noise."});
        }
        if (codec.codec == PAYLOAD_G729 && fmtp != nullptr &&
            Lower(fmtp->text).find("annexb=yes") != std::string::npos) {
            Blame(scene, kAnnexB, *fmtp, {LineWords(*fmtp), " says that the far end uses Annex B."}, {}, {})
                .Know(Topic::AudioCodec,
                      {"Our text says annexb=no, so a far end that sends comfort noise frames "
                       "of Annex B all the same is heard with gaps."});
        }
    }
}

void AddByNumber(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                 const std::string& name) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        const std::string number(codec.format.payload);
        if (!codec.isStatic || name != NameOfCodec(codec) || payload == number || rtpmap == nullptr ||
            section.listed.count(number) != 0) {
            continue;
        }
        Blame(scene, kByNumber, *rtpmap,
              {LineWords(*rtpmap), " names ", name, " under payload ", payload, " and not ", number, "."},
              {"use payload ", number, " in lines ", media.number, " and ", rtpmap->number},
              {ReplaceLine(media, WithFormat(media, payload, number)),
               ReplaceLine(*rtpmap, WithPayload(*rtpmap, number))});
    }
}

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
        const TextLine& media = scene.reading.lines[section.line];
        if (section.media != "audio" || section.formats.empty()) {
            continue;
        }
        constexpr std::size_t most = 32;
        for (std::size_t i = 0; i < section.formats.size() && i < most; ++i) {
            const std::string name = NameOf(scene, section, section.formats[i]);
            AddRenamed(scene, section, media, section.formats[i], name);
            AddByNumber(scene, section, media, section.formats[i], name);
            if (isFirst) {
                AddStaticNotes(scene, section, section.formats[i]);
            }
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
