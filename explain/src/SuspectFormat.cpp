// Stage: suspects in formats: what an m= line lists, its rtpmap and fmtp lines, the choice of the codec.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/FormatSuspectTest.cpp
#include "Suspect.h"

#include "H264Level.h"
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
    "E43", "", ExplainSeverity::Error, 12,
    "An rtpmap or fmtp line for a payload that the m= line of its section does not list is dropped."};
constexpr Rule kNoName = {
    "E44", "X03", ExplainSeverity::Error, 14,
    "A format outside of 0, 9 and 18 is known by the name in its rtpmap line alone (X03, X12)."};
constexpr Rule kNoCommon = {
    "E45", "X07", ExplainSeverity::Warning, 58,
    "A section without a common codec is still valid, has no codec and carries nothing (X07)."};
constexpr Rule kOtherRate = {"E46", "X02", ExplainSeverity::Error, 20,
                             "Tones are recognised by the name telephone-event/8000 alone, so events of "
                             "another clock rate are not taken (X02; RFC 4733)."};
constexpr Rule kNoTones = {"E47", "B07", ExplainSeverity::Note, 62,
                           "Tones need a format telephone-event/8000 in the far end's text; our own text "
                           "lists payload 101 in any case (B07)."};
constexpr Rule kTheirOrder = {
    "E48", "", ExplainSeverity::Note, 61,
    "The far end's order decides: the first format that this side also has is chosen (RFC 3264, 6.1)."};
constexpr Rule kManyTones = {
    "E49", "X02", ExplainSeverity::Warning, 40,
    "Of several telephone-event/8000 formats the one listed last gives the payload of the tones (X02)."};
constexpr Rule kMixed = {"E50", "X04", ExplainSeverity::Error, 41,
                         "Without a packetization mode other than 0 each H.264 format is read over the one "
                         "before it, and the last payload stands (X04)."};
constexpr Rule kLevel = {"E51", "X06", ExplainSeverity::Warning, 20,
                         "A level that is not in the table reads as 1.3 (X06), level 1b is FF alone (X05), "
                         "and all digits after the fourth are one number (G13)."};
constexpr Rule kMode = {"E52", "X04", ExplainSeverity::Note, 62,
                        "The first H.264 format with a packetization mode other than 0 is chosen; without "
                        "one it is mode 0 (X04; RFC 6184, 8.1)."};
constexpr Rule kInterleaved = {"E55", "X04", ExplainSeverity::Error, 20,
                               "Any packetization mode other than 0 ends the search for a format, also the "
                               "interleaved mode 2, which this side does not have (X04)."};
constexpr Rule kOtherClock = {"E57", "", ExplainSeverity::Note, 56,
                              "G.722.1 is known at 16000 Hz alone, by the name G7221/16000; at another clock "
                              "rate it is another codec."};
constexpr Rule kProfile = {"E56", "", ExplainSeverity::Note, 64,
                           "The first four digits of profile-level-id, profile and constraints, are not "
                           "examined; our text always says baseline, 4200."};
constexpr Rule kNoLevel = {
    "E53", "", ExplainSeverity::Note, 63,
    "Level and limits come from the fmtp line of the chosen format alone; what it does not name is not set."};

constexpr std::string_view kStaticNames[][2] = {{"0", "PCMU"}, {"9", "G722"}, {"18", "G729"}};

/// The name in the last rtpmap line of a payload, without clock rate, upper case; empty without one.
std::string NameOf(const Scene& scene, const MeantSection& section, std::string_view payload) {
    const auto found = section.rtpmap.find(payload);
    if (found == section.rtpmap.end()) {
        return {};
    }
    const std::vector<std::string_view> words = WordsOf(scene.reading.lines[found->second].text, 3);
    return words.size() < 2 ? std::string() : Upper(words[1].substr(0, words[1].find('/')));
}

const TextLine* LineOf(const Scene& scene, const std::unordered_map<std::string_view, std::size_t>& lines,
                       std::string_view payload) {
    const auto found = lines.find(payload);
    return found == lines.end() ? nullptr : &scene.reading.lines[found->second];
}

/// "VP8/90000 (line 10), payload 34": what a section lists.
std::string NamesIn(const Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 5;
    std::string names;
    std::size_t count = 0;
    for (const std::string_view format : section.formats) {
        const TextLine* const line = LineOf(scene, section.rtpmap, format);
        if (++count > most) {
            return names + " and more";
        }
        const std::vector<std::string_view> words =
            line == nullptr ? std::vector<std::string_view>() : WordsOf(line->text, 3);
        names += names.empty() ? "" : ", ";
        names += words.size() < 2 ? "payload " + Shown(format)
                                  : Shown(words[1]) + " (line " + std::to_string(line->number) + ")";
    }
    return names;
}

/// The m= line with one format replaced, added at its end (`from` empty) or removed (`to` empty).
std::string WithFormat(const TextLine& line, std::string_view from, std::string_view to) {
    const std::vector<std::string_view> words = WordsOf(line.text);
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = i >= 3 && words[i] == from ? to : words[i];
        text += word.empty() ? std::string() : (i == 0 ? "" : " ") + std::string(word);
    }
    return from.empty() ? text + " " + std::string(to) : text;
}

/// The line with another payload after its colon.
std::string WithPayload(const TextLine& line, std::string_view payload) {
    const std::string_view old = PayloadOf(line.text);
    const auto at = static_cast<std::size_t>(old.data() - line.text.data());
    return std::string(line.text.substr(0, at)) + std::string(payload) +
           std::string(line.text.substr(at + old.size()));
}

void AddRenamed(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                const std::string& name) {
    for (const auto& row : kStaticNames) {
        const TextLine* const rtpmap = LineOf(scene, section.rtpmap, payload);
        if (payload != row[0] || name.empty() || name == row[1] || rtpmap == nullptr) {
            continue;
        }
        const std::string free = FreePayload(section);
        std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, payload, free)),
                                                  ReplaceLine(*rtpmap, WithPayload(*rtpmap, free))};
        if (const TextLine* const fmtp = LineOf(scene, section.fmtp, payload)) {
            changes.push_back(ReplaceLine(*fmtp, WithPayload(*fmtp, free)));
        }
        Suspect& suspect = Blame(
            scene, kRenamed, *rtpmap,
            LineWords(*rtpmap) + " gives the static payload " + std::string(payload) + " another meaning.",
            "give the format the dynamic payload " + free + " in place of " + std::string(payload),
            std::move(changes));
        suspect.isTakenAway = true;
    }
}

void AddByNumber(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                 const std::string& name) {
    for (const auto& row : kStaticNames) {
        const TextLine* const rtpmap = LineOf(scene, section.rtpmap, payload);
        if (name != row[1] || payload == row[0] || rtpmap == nullptr || section.listed.count(row[0]) != 0) {
            continue;
        }
        Blame(scene, kByNumber, *rtpmap,
              LineWords(*rtpmap) + " names " + name + " under payload " + std::string(payload) + " and not " +
                  std::string(row[0]) + ".",
              "use payload " + std::string(row[0]) + " in lines " + std::to_string(media.number) + " and " +
                  std::to_string(rtpmap->number),
              {ReplaceLine(media, WithFormat(media, payload, row[0])),
               ReplaceLine(*rtpmap, WithPayload(*rtpmap, row[0]))});
    }
}

void AddBitRate(Scene& scene, const MeantSection& section, std::string_view payload) {
    const TextLine* const fmtp = LineOf(scene, section.fmtp, payload);
    const TextLine* const rtpmap = LineOf(scene, section.rtpmap, payload);
    if (Upper(rtpmap->text).find("G7221/16000") == std::string::npos &&
        rtpmap->text.find('/') != std::string_view::npos) {
        Blame(scene, kOtherClock, *rtpmap, LineWords(*rtpmap) + " names G.722.1 at another clock rate.",
              "offer G7221/16000 under payload " + Shown(payload),
              {ReplaceLine(*rtpmap, "a=rtpmap:" + std::string(payload) + " G7221/16000"),
               fmtp == nullptr ? InsertAfter(*rtpmap, "a=fmtp:" + std::string(payload) + " bitrate=32000")
                               : ReplaceLine(*fmtp, "a=fmtp:" + std::string(payload) + " bitrate=32000")});
        return;
    }
    const std::string text = "a=fmtp:" + std::string(payload) + " bitrate=32000";
    if (fmtp == nullptr) {
        Blame(scene, kBitRate, *rtpmap, LineWords(*rtpmap) + " has no fmtp line with a bit rate.",
              "insert " + Quoted(text) + " after line " + std::to_string(rtpmap->number),
              {InsertAfter(*rtpmap, text)});
    } else {
        const std::string canonical = Canonical(*fmtp, scene.reading);
        if (canonical != fmtp->text && canonical.find("bitrate=32000") != std::string::npos) {
            return; // The spelling is blamed.
        }
        const std::size_t at = fmtp->text.find("bitrate=");
        const bool isOther = at != std::string_view::npos && IsDigits(fmtp->text.substr(at + 8)) &&
                             fmtp->text.substr(at + 8) != "32000";
        Blame(scene, isOther ? kOtherBitRate : kBitRate, *fmtp,
              LineWords(*fmtp) + " has no parameter that begins with bitrate=32000.",
              "write line " + std::to_string(fmtp->number) + " as " + Quoted(text),
              {ReplaceLine(*fmtp, text)});
    }
}

/// A rtpmap line for a payload that the section does not list: listed under a number without a name, if any.
void AddUnlisted(Scene& scene, const MeantSection& section, const TextLine& media, std::size_t index,
                 SDPRow row) {
    const TextLine& line = scene.reading.lines[index];
    const std::string_view payload = PayloadOf(line.text);
    const auto& lines = row == SDPRow::Rtpmap ? section.rtpmap : section.fmtp;
    const std::string number = std::to_string(line.number);
    const std::string what = LineWords(line) + " is for payload " + Shown(payload) + ", which line " +
                             std::to_string(media.number) + ", " + Quoted(media.text) + ", does not list.";
    constexpr std::size_t most = 16;
    std::size_t tried = 0;
    for (const std::string_view format : section.formats) {
        const bool isStatic = row == SDPRow::Rtpmap && format.size() < 2;
        if (lines.count(format) == 0 && !isStatic && ++tried <= most) {
            Blame(scene, kUnlisted, line, what, "write payload " + std::string(format) + " in line " + number,
                  {ReplaceLine(line, WithPayload(line, format))})
                .lines.push_back(media.number);
        }
    }
    if (row == SDPRow::Rtpmap && !payload.empty()) {
        Blame(scene, kUnlisted, line, what,
              "list payload " + std::string(payload) + " in line " + std::to_string(media.number),
              {ReplaceLine(media, WithFormat(media, {}, payload))})
            .lines.push_back(media.number);
    }
}

void AddNoName(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload) {
    const TextLine* const fmtp = LineOf(scene, section.fmtp, payload);
    const std::string text = fmtp == nullptr ? "" : std::string(fmtp->text);
    const char* const name = section.media == "video"                     ? "H264/90000"
                             : text.find("bitrate=") != std::string::npos ? "G7221/16000"
                             : text.find(" 0-1") != std::string::npos     ? "telephone-event/8000"
                                                                          : nullptr;
    const bool isTold = section.media != "video" || text.find("profile-level-id") != std::string::npos ||
                        text.find("packetization-mode") != std::string::npos;
    if (name == nullptr || !isTold) {
        return;
    }
    const std::string rtpmap = "a=rtpmap:" + std::string(payload) + " " + name;
    Suspect& suspect =
        Blame(scene, kNoName, media,
              LineWords(media) + " lists payload " + Shown(payload) + ", which has no rtpmap line.",
              "insert " + Quoted(rtpmap) + " after line " + std::to_string(media.number),
              {InsertAfter(media, rtpmap)});
    suspect.lines.push_back(fmtp->number);
}

void FindUnlisted(Scene& scene, const MeantSection& section, const TextLine& media) {
    constexpr std::size_t most = 8;
    std::size_t count = 0;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const SDPRow row = scene.reading.lines[i].meant;
        if ((row == SDPRow::Rtpmap || row == SDPRow::Fmtp) &&
            section.listed.count(PayloadOf(scene.reading.lines[i].text)) == 0 && ++count <= most) {
            AddUnlisted(scene, section, media, i, row);
        }
    }
}

void AddTones(Scene& scene, const MeantSection& section, const TextLine& media) {
    const TextLine* other = nullptr;
    std::vector<std::string_view> good;
    for (const std::string_view format : section.formats) {
        if (NameOf(scene, section, format) == "TELEPHONE-EVENT") {
            const TextLine* const line = LineOf(scene, section.rtpmap, format);
            if (Lower(line->text).find("telephone-event/8000") != std::string::npos) {
                good.push_back(format);
            } else {
                other = line;
            }
        }
    }
    if (good.empty() && other != nullptr) {
        const std::string text = "a=rtpmap:" + std::string(PayloadOf(other->text)) + " telephone-event/8000";
        Blame(scene, kOtherRate, *other, LineWords(*other) + " has another clock rate than 8000.",
              "write line " + std::to_string(other->number) + " as " + Quoted(text),
              {ReplaceLine(*other, text)});
    } else if (good.size() > 1) {
        const TextLine* const line = LineOf(scene, section.rtpmap, good.back());
        Blame(scene, kManyTones, *line,
              LineWords(*line) + " is one of " + std::to_string(good.size()) +
                  " telephone-event/8000 formats.",
              "take payload " + Shown(good.back()) + " out of line " + std::to_string(media.number),
              {ReplaceLine(media, WithFormat(media, good.back(), {}))})
            .lines.push_back(media.number);
    } else if (good.empty()) {
        const std::string free = section.listed.count("101") == 0 ? "101" : FreePayload(section);
        Blame(scene, kNoTones, media, LineWords(media) + " lists no telephone-event format.",
              "list payload " + free + " in line " + std::to_string(media.number) +
                  " and insert its rtpmap line",
              {ReplaceLine(media, WithFormat(media, {}, free)),
               InsertAfter(media, "a=rtpmap:" + free + " telephone-event/8000")})
            .known.emplace_back(Topic::Dtmf, "Tones have no payload, so none are sent to the far end.");
    }
}

/// Common codecs behind the first, and a text without a common codec.
void AddChoice(Scene& scene, const MeantSection& section, const TextLine& media) {
    const std::int32_t mask = scene.input.local.eAudioCodec;
    if (scene.state.record.eAudioCodec == PAYLOAD_UNKNOWN) {
        const bool hasStatic = (mask & PAYLOAD_G711U) != 0;
        const std::string format = hasStatic ? "0" : (mask & PAYLOAD_G722) != 0 ? "9" : "18";
        Blame(scene, kNoCommon, media,
              LineWords(media) + " lists " + NamesIn(scene, section) + ", no codec that this side has.",
              "list payload " + format + " in line " + std::to_string(media.number),
              {ReplaceLine(media, WithFormat(media, {}, format))});
        return;
    }
    for (const std::string_view better : {std::string_view("9"), std::string_view("104")}) {
        const bool isWide =
            scene.state.record.eAudioCodec == PAYLOAD_G7221 || scene.state.record.eAudioCodec == PAYLOAD_G722;
        for (const std::string_view format : section.formats) {
            const bool isBetter =
                format == better || (better == "104" && NameOf(scene, section, format) == "G7221");
            if (isBetter && !isWide && format != section.formats.front()) {
                std::string text = WithFormat(media, format, {});
                const std::vector<std::string_view> words = WordsOf(text, 4);
                text.insert(static_cast<std::size_t>(words[3].data() - std::string_view(text).data()),
                            std::string(format) + " ");
                Blame(scene, kTheirOrder, media,
                      LineWords(media) + " lists payload " + Shown(section.formats.front()) + " before " +
                          Shown(format) + ".",
                      "list payload " + Shown(format) + " first in line " + std::to_string(media.number),
                      {ReplaceLine(media, std::move(text))});
                return;
            }
        }
    }
}

std::string LevelDigits(const TextLine& fmtp) {
    const std::size_t at = Lower(fmtp.text).find("profile-level-id");
    const std::size_t equals = at == std::string::npos ? at : fmtp.text.find('=', at);
    if (equals == std::string::npos) {
        return {};
    }
    const std::string_view value =
        Trimmed(fmtp.text.substr(equals + 1, fmtp.text.find(';', equals) - equals - 1));
    return std::string(value);
}

void AddLevel(Scene& scene, const TextLine& fmtp, Topic topic) {
    const std::string value = LevelDigits(fmtp);
    if (value.size() < 4) {
        return;
    }
    const bool isHex = value.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    const long level = isHex && value.size() >= 6 ? std::stol(value.substr(4, 2), nullptr, 16) : -1;
    const bool isLevel1b =
        level == 11 && (std::stol(value.substr(2, 2), nullptr, 16) & 0x10) != 0 && value.substr(0, 2) != "64";
    std::string digits;
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        const int known = sdp::__iH264Profile[row];
        digits = known <= level && known != 255 ? sdp::__strH264Profile2[row] : digits;
    }
    if (isLevel1b) {
        digits = "FF";
    }
    if (digits.empty() || value.size() < 6) {
        digits = "1F";
    }
    const std::string exact = (isHex ? value.substr(0, 4) : "4200") + digits;
    if (value.substr(0, 2) != "42") {
        Blame(scene, kProfile, fmtp, LineWords(fmtp) + " has a profile other than baseline.", "", {})
            .known.emplace_back(topic,
                                "The far end may send a profile that this side did not offer to decode.");
    }
    if (Upper(exact) != Upper(value)) {
        std::string text(fmtp.text);
        text.replace(text.find(value), value.size(), exact);
        Blame(scene, kLevel, fmtp,
              LineWords(fmtp) + " has the profile-level-id " + Shown(value) + ", whose level" +
                  (level > 0 ? " " + std::to_string(level / 10) + "." + std::to_string(level % 10) : "") +
                  " is not in the table" + (isLevel1b ? " in this form (1b)." : "."),
              "write profile-level-id=" + exact + " in line " + std::to_string(fmtp.number),
              {ReplaceLine(fmtp, std::move(text))});
    }
}

void AddModes(Scene& scene, const MeantSection& section, const TextLine& media,
              const std::vector<std::string_view>& h264, Topic topic) {
    const VideoParms& stream =
        topic == Topic::Slides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
    if (stream.iFmtpPacketizationMode == 0 && h264.size() > 1) {
        std::string text(media.text);
        for (std::size_t i = 1; i < h264.size() && i < 16; ++i) {
            TextLine changed = media;
            changed.text = text;
            text = WithFormat(changed, h264[i], {});
        }
        Blame(scene, kMixed, media,
              LineWords(media) + " lists several H.264 formats, none with packetization-mode=1.",
              "list H.264 payload " + Shown(h264.front()) + " alone in line " + std::to_string(media.number),
              {ReplaceLine(media, std::move(text))});
    }
    const TextLine* const fmtp = LineOf(scene, section.fmtp, h264.back());
    const TextLine& blamed = fmtp != nullptr ? *fmtp : *LineOf(scene, section.rtpmap, h264.back());
    const std::string number = std::to_string(blamed.number);
    const std::string payload(h264.back());
    const auto insert = [&](const std::string& parameter) {
        return fmtp != nullptr ? ReplaceLine(*fmtp, std::string(Trimmed(fmtp->text)) + ";" + parameter)
                               : InsertAfter(blamed, "a=fmtp:" + payload + " " + parameter);
    };
    if (stream.iFmtpPacketizationMode > 1 && fmtp != nullptr) {
        const std::size_t at = fmtp->text.find("packetization-mode=");
        if (at != std::string_view::npos) {
            std::string text(fmtp->text);
            text.replace(at + 19, 1, "1");
            Blame(scene, kInterleaved, *fmtp,
                  LineWords(*fmtp) + " has a packetization mode that is neither 0 nor 1.",
                  "write packetization-mode=1 in line " + number, {ReplaceLine(*fmtp, text)});
        }
    }
    if (stream.iFmtpPacketizationMode == 0) {
        Blame(scene, kMode, blamed, LineWords(blamed) + " does not say packetization-mode=1.",
              "add packetization-mode=1 for payload " + Shown(payload), {insert("packetization-mode=1")})
            .known.emplace_back(topic,
                                "The picture is sent in packetization mode 0, one NAL unit in each packet.");
    }
    if (stream.strVideoLevel.empty()) {
        Blame(scene, kNoLevel, blamed, LineWords(blamed) + " gives no profile-level-id.",
              "add profile-level-id=42801f for payload " + Shown(payload),
              {insert("profile-level-id=42801f")})
            .known.emplace_back(
                topic, "The level of the picture is not known, so the far end's decoder sets no limit.");
    }
}

void FindPicture(Scene& scene, const MeantSection& section, const TextLine& media, Topic topic) {
    std::vector<std::string_view> h264;
    for (const std::string_view format : section.formats) {
        if (NameOf(scene, section, format) == "H264") {
            h264.push_back(format);
            if (const TextLine* const fmtp = LineOf(scene, section.fmtp, format)) {
                AddLevel(scene, *fmtp, topic);
            }
        }
    }
    const VideoParms& stream =
        topic == Topic::Slides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
    if (stream.fIsVideoValid && stream.iVideoPayload == 0) {
        const std::string free = FreePayload(section);
        Blame(scene, kNoCommon, media,
              LineWords(media) + " lists " + NamesIn(scene, section) + ", and no H264/90000.",
              "list an H.264 format in line " + std::to_string(media.number),
              {ReplaceLine(media, WithFormat(media, {}, free)),
               InsertAfter(media, "a=rtpmap:" + free + " H264/90000\r\na=fmtp:" + free +
                                      " profile-level-id=42801f;packetization-mode=1")});
    }
    if (!h264.empty()) {
        AddModes(scene, section, media, h264, topic);
    }
}

} // namespace

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
            if (name == "G7221") {
                AddBitRate(scene, section, section.formats[i]);
            } else if (name.empty()) {
                AddNoName(scene, section, media, section.formats[i]);
            }
        }
        FindUnlisted(scene, section, media);
        if (isFirst) {
            AddTones(scene, section, media);
            AddChoice(scene, section, media);
        }
        isFirst = false;
    }
}

void FindVideoFormats(Scene& scene) {
    constexpr std::size_t most = 16;
    std::size_t count = 0;
    for (const MeantSection& section : scene.reading.sections) {
        if (section.media != "video" || section.formats.empty() || ++count > most) {
            continue;
        }
        const TextLine& media = scene.reading.lines[section.line];
        for (std::size_t i = 0; i < section.formats.size() && i < most; ++i) {
            if (section.rtpmap.count(section.formats[i]) == 0) {
                AddNoName(scene, section, media, section.formats[i]);
            }
        }
        FindUnlisted(scene, section, media);
        bool isSlides = false;
        for (std::size_t i = section.line; i <= section.last; ++i) {
            isSlides =
                isSlides || scene.reading.lines[i].text.find("a=content:slides") != std::string_view::npos;
        }
        FindPicture(scene, section, media, isSlides ? Topic::Slides : Topic::MainPicture);
    }
}

} // namespace explain
