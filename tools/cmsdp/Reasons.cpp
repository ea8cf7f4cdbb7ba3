// Reasons from the record, the sections and what this side can do. Reasons of the far end come before reasons
// of this side. A reason says what was found, what is taken, and the ID of the behaviour where there is one.
//
// Tests: tests/tool/ReportTest.cpp
#include "Reasons.h"

#include "Names.h"
#include "SDPTables.h"
#include "VideoUtils.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr const char* kDeclined = "the far end declines it with port 0";
constexpr const char* kDeclinedHere = "this side declines it with port 0";

bool HasBit(PayloadType_t set, std::int32_t bit) {
    return (static_cast<std::int32_t>(set) & bit) != 0;
}

// The codecs of the set in words; those of the component's table that a payload type tells, or name and
// parameters.
std::string AudioTaken(const LocalSDP& local) {
    std::string taken;
    for (const sdp::AudioCodec& row : sdp::kAudioCodecs) {
        if (!HasBit(local.eAudioCodec, row.codec)) {
            continue;
        }
        const std::string name(row.format.name);
        taken += taken.empty() ? "" : ", ";
        taken += row.isStatic ? name.substr(0, name.find('/')) + " (" + std::string(row.format.payload) + ")"
                              : name + " with " + std::string(row.format.parameters) + " in front";
    }
    return taken.empty() ? "no audio codec" : taken;
}

std::string NoCommonCodec(const Section* section, const std::string& taken) {
    const std::string listed = section == nullptr ? "no codec" : CodecsInWords(*section);
    return "no codec in common: the far end lists " + listed + "; this side takes " + taken;
}

// "; G7221/16000 (104) has ..." for a format whose name is right and whose parameters are not.
std::string NearCodec(const Section* section) {
    const sdp::AudioCodec* const codec = sdp::FindAudioCodec(PAYLOAD_G7221);
    for (std::size_t i = 0; section != nullptr && i < section->session->vecRtpMap.size(); ++i) {
        const RtpMap& format = *section->session->vecRtpMap[i];
        if (format.strEncodingName != codec->format.name || !VideoUtils::IsNumber(format.strPayload)) {
            continue;
        }
        std::vector<std::string> parameters;
        for (const std::string& parameter : format.vecFmtpParms) {
            parameters.push_back(Quoted(parameter));
        }
        constexpr std::size_t most = 4;
        return "; payload type " + format.strPayload + " has " +
               (parameters.empty() ? "no parameter" : "the parameters " + Listed(parameters, most)) +
               ", none of which begins with " + std::string(codec->format.parameters) + " (X01)";
    }
    return {};
}

// "; letter case counts (X03)" when a name differs from that of H.264 by its letter case alone.
std::string NearVideo(const Section* section) {
    const auto upper = [](std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
        return text;
    };
    const bool near =
        section != nullptr && std::any_of(section->session->vecRtpMap.begin(),
                                          section->session->vecRtpMap.end(), [&upper](const RtpMap* format) {
                                              return upper(format->strEncodingName) == sdp::kH264Name;
                                          });
    return near ? "; letter case counts (X03)" : "";
}

// A video section that is declined and not marked may have been the presentation.
bool DeclinesUnmarkedVideo(const Reading& reading) {
    const Section* const main = FindVideo(reading, VIDEOTYPE_MAIN);
    return std::any_of(reading.sections.begin(), reading.sections.end(), [main](const Section& section) {
        return &section != main && section.session->eMedia == MEDIA_VIDEO && section.session->iPort == 0;
    });
}

// An "m=" line of the kind that opened no section.
bool HasShortLine(const Reading& reading, std::string_view begin) {
    return std::any_of(reading.lines.begin(), reading.lines.end(), [begin](const ReadLine& line) {
        return line.row == SDPRow::Media && !line.opens && sdp::StartsWith(Trimmed(line.text), begin);
    });
}

constexpr const char* kShortLine =
    "the far end's m= line for it has fewer than four words and opens no section (P05)";

std::string MissingMain(const Reading& reading) {
    if (HasShortLine(reading, "m=video")) {
        return kShortLine;
    }
    return FindVideo(reading, VIDEOTYPE_PRESO) == nullptr
               ? "the far end has no video section"
               : "the far end has no video section but the presentation";
}

std::string MissingPresentation(const Reading& reading) {
    const std::string missing = "the far end has no video section marked a=content:slides";
    return DeclinesUnmarkedVideo(reading)
               ? missing + "; it declines an unmarked one with port 0, which may be the presentation"
               : missing;
}

const VideoParms& ParmsOf(const baseSDP& record, VideoType_t role) {
    return role == VIDEOTYPE_PRESO ? record.m_VideoPreso : record.m_VideoMain;
}

std::string WhyNoVideo(const Reading& reading, const Capabilities& side, VideoType_t role,
                       const std::string& missing) {
    const VideoParms& remote = ParmsOf(reading.record, role);
    const VideoParms& local = ParmsOf(side.local, role);
    if (!remote.fIsVideoValid) {
        return missing;
    }
    if (remote.iVideoRTPPort == 0) {
        return kDeclined;
    }
    if (!HasVideoCodec(reading, role)) {
        const Section* const section = FindVideo(reading, role);
        return NoCommonCodec(section, std::string(sdp::kH264Name)) + NearVideo(section);
    }
    if (!HasBit(local.eVideoCodec, sdp::kAnyH264)) {
        return "this side lists no H.264 for it";
    }
    return local.iVideoRTPPort == 0 ? kDeclinedHere : "";
}

} // namespace

bool HasVideoCodec(const Reading& reading, VideoType_t role) {
    const VideoParms& video = ParmsOf(reading.record, role);
    const Section* const section = FindVideo(reading, role);
    if (!video.fIsVideoValid || video.iVideoPayload != 0 || section == nullptr) {
        return video.fIsVideoValid && video.iVideoPayload != 0;
    }
    const auto& formats = section->session->vecRtpMap;
    return std::any_of(formats.begin(), formats.end(), [](const RtpMap* format) {
        return format->strPayload == "0" && sdp::Contains(format->strEncodingName, sdp::kH264Name);
    });
}

std::string WhyNoAudio(const Reading& reading, const Capabilities& side) {
    const RemoteSDP& record = reading.record;
    const auto& priority = side.local.listAudioCodecPriority;
    if (!record.fIsAudioValid) {
        return HasShortLine(reading, "m=audio") ? kShortLine : "the far end has no audio section";
    }
    if (record.iAudioRTPPort == 0) {
        return kDeclined;
    }
    if (record.eAudioCodec == PAYLOAD_UNKNOWN) {
        const Section* const section = FindAudio(reading);
        const bool near = HasBit(side.local.eAudioCodec, PAYLOAD_G7221);
        return NoCommonCodec(section, AudioTaken(side.local)) + (near ? NearCodec(section) : "");
    }
    if (priority.empty()) {
        return "this side has no audio section: audio.priority is empty";
    }
    if (std::find(priority.begin(), priority.end(), record.eAudioCodec) == priority.end()) {
        return "audio.priority of this side does not list " + NameOf(CodecNames(), record.eAudioCodec);
    }
    return side.local.iAudioRTPPort == 0 ? kDeclinedHere : "";
}

std::string WhyNoMainVideo(const Reading& reading, const Capabilities& side) {
    return WhyNoVideo(reading, side, VIDEOTYPE_MAIN, MissingMain(reading));
}

std::string WhyNoPresentation(const Reading& reading, const Capabilities& side, bool answers) {
    std::string why = WhyNoVideo(reading, side, VIDEOTYPE_PRESO, MissingPresentation(reading));
    if (!why.empty() || answers) {
        return why;
    }
    return side.floorControl == FloorControl::kOff
               ? "floor_control.enabled is false on this side, which then has no presentation"
               : "the far end has no BFCP section, and floor_control.enabled of this side is \"auto\", which "
                 "then "
                 "has no presentation";
}

std::string WhyNoFloorControl(const Reading& reading, const Capabilities& side, bool answers) {
    if (FindFloorControl(reading) == nullptr) {
        return "the far end has no BFCP section";
    }
    if (reading.record.iVideoPresoControlPort == 0) {
        return kDeclined;
    }
    if (!answers) {
        return "floor_control.enabled is false on this side";
    }
    return side.local.iVideoPresoControlPort == 0 ? kDeclinedHere : "";
}

} // namespace cmsdp
