// Stage: suspects in H.264 formats: packetization modes, names, a section without H.264.
// Input: the video sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Picture.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kMixed = {"E50", "X04", ExplainSeverity::Error, 41,
                         "Without a packetization mode other than 0 each H.264 format is read over the one "
                         "before it, and the last payload stands (X04)."};
constexpr Rule kMode = {"E52", "X04", ExplainSeverity::Note, 62,
                        "The first H.264 format with a packetization mode other than 0 is chosen; without "
                        "one it is mode 0 (X04; RFC 6184, 8.1)."};
constexpr Rule kInterleaved = {"E55", "X04", ExplainSeverity::Error, 20,
                               "Any packetization mode other than 0 ends the search for a format, also the "
                               "interleaved mode 2, which this side does not have (X04)."};
constexpr Rule kContainingName = {"E170", "X03", ExplainSeverity::Error, 12,
                                  "A format is H.264 when H264/9000 stands anywhere in its name (X03), and "
                                  "the first one with a packetization "
                                  "mode other than 0 is chosen (X04)."};

/// The part of the name that the component searches for: without the last digit of the clock rate [X03].
constexpr std::string_view kH264Part(sdp::kH264Name, std::size(sdp::kH264Name) - 2);

/// Whether a packetization mode is in the fmtp line of a payload that the section does not list; then the
/// number in that line is blamed.
bool HasUnlistedMode(const Scene& scene, const MeantSection& section) {
    return std::any_of(section.fmtp.begin(), section.fmtp.end(), [&](const auto& entry) {
        return section.listed.count(entry.first) == 0 &&
               scene.reading.lines[entry.second].text.find("packetization-mode=") != std::string_view::npos;
    });
}

/// Whether a line of the section gives a packetization mode other than 0, read or replaced by a later one.
bool HasMode(const Scene& scene, const MeantSection& section) {
    constexpr std::string_view name = "packetization-mode=";
    const auto first = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.line);
    const auto last = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.last) + 1;
    return std::any_of(first, last, [name](const TextLine& line) {
        const std::size_t at = line.meant == SDPRow::Fmtp ? line.text.find(name) : std::string_view::npos;
        const std::string_view digit =
            at == std::string_view::npos ? std::string_view() : line.text.substr(at + name.size(), 1);
        return !digit.empty() && digit != "0";
    });
}

Picture PictureOf(const Scene& scene, const MeantSection& section, const VideoParms& stream,
                  const std::vector<std::string_view>& h264, Topic topic) {
    const std::string chosen = std::to_string(stream.iVideoPayload);
    const bool isListed = std::find(h264.begin(), h264.end(), chosen) != h264.end();
    std::string payload(isListed ? std::string_view(chosen) : h264.back());
    const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload);
    const TextLine& line = fmtp != nullptr ? *fmtp : *LineOf(scene.reading, section.rtpmap, payload);
    return {stream, topic, std::move(payload), fmtp, line};
}

/// Several formats without a packetization mode.
void AddMixed(Scene& scene, const MeantSection& section, const TextLine& media,
              const std::vector<std::string_view>& h264) {
    constexpr std::size_t most = 16;
    std::string text(media.text);
    for (std::size_t i = 1; i < h264.size() && i < most; ++i) {
        TextLine changed = media;
        changed.text = text;
        text = WithFormat(changed, h264[i], {});
    }
    const std::size_t last = LineOf(scene.reading, section.rtpmap, h264.back())->number;
    Blame(scene, kMixed, media,
          {LineWords(media), " lists several H.264 formats, none with packetization-mode=1; payload ",
           AsShown(h264.back()), " (line ", last, ") is the last."},
          {"list H.264 payload ", AsShown(h264.front()), " alone in line ", media.number},
          {ReplaceLine(media, std::move(text))});
}

/// A mode beyond 1.
void AddInterleaved(Scene& scene, const TextLine& fmtp) {
    constexpr std::string_view name = "packetization-mode=";
    const std::size_t at = fmtp.text.find(name);
    if (at != std::string_view::npos) {
        std::string text(fmtp.text);
        text.replace(at + name.size(), 1, "1");
        Blame(scene, kInterleaved, fmtp,
              {LineWords(fmtp), " has a packetization mode that is neither 0 nor 1."},
              {"write packetization-mode=1 in line ", fmtp.number}, {ReplaceLine(fmtp, text)});
    }
}

void AddMode0(Scene& scene, const Picture& picture) {
    constexpr std::string_view name = "packetization-mode=";
    const std::string canonical =
        picture.fmtp == nullptr ? std::string() : Canonical(*picture.fmtp, scene.reading);
    const std::size_t at = canonical.find(name);
    if (at != std::string::npos && canonical == picture.fmtp->text && canonical[at + name.size()] == '1') {
        return; // It is said, and read from another format than the one that is sent.
    }
    const bool isWord =
        at != std::string::npos && !IsDigits(std::string_view(canonical).substr(at + name.size(), 1));
    Suspect& suspect = Blame(scene, kMode, picture.line,
                             {LineWords(picture.line), isWord ? " has a packetization mode that is no number."
                                                              : " does not say packetization-mode=1."},
                             {"add packetization-mode=1 for payload ", AsShown(picture.payload)},
                             {picture.With("packetization-mode=1")});
    if (isWord) {
        suspect.SayActed({"A packetization mode is a number of decimal digits (G18); any other value is "
                          "dropped, and without one it is mode 0 (RFC 6184, 8.1)."});
        suspect.ledger = "G18";
    }
    suspect.Know(picture.topic,
                 {"The picture is sent in packetization mode 0, one NAL unit in each packet."});
}

void AddModes(Scene& scene, const MeantSection& section, const TextLine& media,
              const std::vector<std::string_view>& h264, Topic topic) {
    const VideoParms& stream =
        topic == Topic::Slides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
    if (stream.iFmtpPacketizationMode == 0 && h264.size() > 1 && !HasUnlistedMode(scene, section) &&
        !HasMode(scene, section)) {
        AddMixed(scene, section, media, h264);
    }
    const Picture picture = PictureOf(scene, section, stream, h264, topic);
    if (stream.iFmtpPacketizationMode > 1 && picture.fmtp != nullptr) {
        AddInterleaved(scene, *picture.fmtp);
    }
    if (stream.iFmtpPacketizationMode == 0 && stream.fIsVideoValid) {
        AddMode0(scene, picture);
    }
    if (stream.strVideoLevel.empty() && stream.fIsVideoValid) {
        FindMissingLevel(scene, picture);
    }
}

/// A format whose name contains that of H.264 and is another one: "FEC-H264/90000".
void AddContainingName(Scene& scene, const MeantSection& section, const TextLine& media,
                       std::string_view format, Topic topic) {
    const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, format);
    const std::string_view name = rtpmap == nullptr ? std::string_view() : WordOf(rtpmap->text, 1);
    const std::size_t at = name.find(kH264Part);
    const bool isType = at != std::string_view::npos && Lower(name.substr(0, at)) == "video/";
    if (at == std::string_view::npos || at == 0 || isType || IsFull(scene, kContainingName)) {
        return;
    }
    std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, format, {}))};
    for (const FormatLines* const lines : {&section.rtpmap, &section.fmtp}) {
        if (const TextLine* const line = LineOf(scene.reading, *lines, format)) {
            changes.push_back(DeleteLine(*line));
        }
    }
    Suspect& suspect =
        Blame(scene, kContainingName, *rtpmap,
              {LineWords(*rtpmap), " gives payload ", AsShown(format), " a name that contains ", kH264Part,
               " and is another one."},
              {"take payload ", AsShown(format), " out of line ", media.number, ", and its lines"},
              std::move(changes));
    suspect.lines.push_back(media.number);
    const VideoParms& stream =
        topic == Topic::Slides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
    if (std::to_string(stream.iVideoPayload) == format) {
        suspect.Know(topic, {"H.264 is sent as payload ", AsShown(format), ", which the far end decodes as ",
                             AsShown(name), "."});
    }
}

void FindPicture(Scene& scene, const MeantSection& section, const TextLine& media, Topic topic) {
    std::vector<std::string_view> h264;
    for (const std::string_view format : section.formats) {
        AddContainingName(scene, section, media, format, topic);
        if (NameOf(scene, section, format) == "H264") {
            h264.push_back(format);
            if (const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, format)) {
                FindLevel(scene, *fmtp, topic);
            }
        }
    }
    const VideoParms& stream =
        topic == Topic::Slides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
    if (stream.fIsVideoValid && stream.iVideoPayload == 0) {
        const std::string free = FreePayload(section);
        Blame(scene, kNoCommonFormat, media,
              {LineWords(media), " lists ", NamesIn(scene, section), ", and no H264/90000."},
              {"list an H.264 format in line ", media.number},
              {ReplaceLine(media, WithFormat(media, {}, free)),
               InsertAfter(media, "a=rtpmap:" + free + " H264/90000\r\na=fmtp:" + free +
                                      " profile-level-id=42801f;packetization-mode=1")});
    }
    if (!h264.empty()) {
        AddModes(scene, section, media, h264, topic);
    }
}

} // namespace

void FindVideoFormats(Scene& scene) {
    constexpr std::size_t most = 16;
    std::size_t count = 0;
    for (const MeantSection& section : scene.reading.sections) {
        if (section.media != "video" || section.formats.empty() || section.IsDeclined() || ++count > most) {
            continue;
        }
        const TextLine& media = scene.reading.lines[section.line];
        FindNameless(scene, section);
        FindUnlisted(scene, section);
        FindPicture(scene, section, media, section.isSlides ? Topic::Slides : Topic::MainPicture);
    }
}

} // namespace explain
