// Reasons from the record, the sections and what this side can do. Reasons of the far end come before reasons
// of this side. A reason says what was found, what is taken, and the ID of the behaviour where there is one.
//
// Tests: tests/tool/reasons.cases
#include "Reasons.h"

#include "Names.h"
#include "SDPTables.h"
#include "VideoUtils.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr const char* kDeclinedHere = "this side declines it with port 0";

bool HasBit(PayloadType_t set, std::int32_t bit) {
    return (static_cast<std::int32_t>(set) & bit) != 0;
}

// "(line 4, P05)": where a reason comes from. An empty ID is left out.
std::string PlaceOf(std::uint32_t line, const char* id) {
    return " (line " + std::to_string(line) + (*id == '\0' ? "" : ", ") + id + ")";
}

// A stream whose port reads as 0. Any other number than zero in view is named with what makes it one.
std::string Declined(const Section* section) {
    const std::vector<std::string_view> words =
        section == nullptr ? std::vector<std::string_view>() : WordsOf(section->session->strFullMLine);
    const std::string_view port = words.size() < 2 ? "0" : words[1];
    if (port.find_first_not_of('0') == std::string_view::npos) {
        return "the far end declines it with port 0";
    }
    const bool hasDigits = port.find_first_of("0123456789") != std::string_view::npos;
    return "its port " + Quoted(port) + " is read as 0, with which a far end declines" +
           PlaceOf(section->line, hasDigits ? "G04" : "G18");
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

std::string InCapitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

// "; letter case counts" when a format's name differs by its letter case alone. `id` is that of the ledger.
std::string LetterCase(const Section& section, const RtpMap& format, std::string_view name, const char* id) {
    return InCapitals(format.strEncodingName) == name && format.strEncodingName != name
               ? "; letter case counts" + PlaceOf(LineOf(section, SDPRow::Rtpmap, format.strPayload), id)
               : "";
}

// "; payload type 104 has ..." for a format whose name is right and whose parameters are not.
std::string OtherParameters(const Section& section, const RtpMap& format, const sdp::AudioFormat& codec) {
    if (format.strEncodingName != codec.name || !VideoUtils::IsNumber(format.strPayload)) {
        return {};
    }
    std::vector<std::string> parameters;
    for (const std::string& parameter : format.vecFmtpParms) {
        parameters.push_back(Quoted(parameter));
    }
    constexpr std::size_t most = 4;
    return "; payload type " + format.strPayload + " has " +
           (parameters.empty() ? "no parameter" : "the parameters " + Listed(parameters, most)) +
           ", none of which begins with " + std::string(codec.parameters) +
           PlaceOf(LineOf(section, SDPRow::Fmtp, format.strPayload), "X01");
}

// What keeps a format from being G.722.1; empty when no format is nearly that.
std::string NearCodec(const Section* section) {
    const sdp::AudioFormat& codec = sdp::FindAudioCodec(PAYLOAD_G7221)->format;
    std::string near;
    for (std::size_t i = 0; near.empty() && section != nullptr && i < section->session->vecRtpMap.size();
         ++i) {
        const RtpMap& format = *section->session->vecRtpMap[i];
        near = OtherParameters(*section, format, codec) + LetterCase(*section, format, codec.name, "");
    }
    return near;
}

// The same for H.264.
std::string NearVideo(const Section* section) {
    std::string near;
    for (std::size_t i = 0; near.empty() && section != nullptr && i < section->session->vecRtpMap.size();
         ++i) {
        near = LetterCase(*section, *section->session->vecRtpMap[i], sdp::kH264Name, "X03");
    }
    return near;
}

// A video section that is declined and not marked may have been the presentation.
bool DeclinesUnmarkedVideo(const Reading& reading) {
    const Section* const main = FindVideo(reading, VIDEOTYPE_MAIN);
    return std::any_of(reading.sections.begin(), reading.sections.end(), [main](const Section& section) {
        return &section != main && section.session->eMedia == MEDIA_VIDEO && section.session->iPort == 0;
    });
}

// Why a stream has no section: the "m=" line of its kind that opened none, otherwise `missing`.
std::string NoSection(const Reading& reading, std::string_view begin, const std::string& missing) {
    const auto found =
        std::find_if(reading.lines.begin(), reading.lines.end(), [begin](const ReadLine& line) {
            return line.row == SDPRow::Media && !line.opens && sdp::StartsWith(Trimmed(line.text), begin);
        });
    return found == reading.lines.end()
               ? missing
               : "the far end's m= line for it has fewer than four words and opens no section" +
                     PlaceOf(found->number, "P05");
}

std::string MissingMain(const Reading& reading) {
    return NoSection(reading, "m=video",
                     FindVideo(reading, VIDEOTYPE_PRESO) == nullptr
                         ? "the far end has no video section"
                         : "the far end has no video section but the presentation");
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
    const Section* const section = FindVideo(reading, role);
    if (remote.iVideoRTPPort == 0) {
        return Declined(section);
    }
    if (!HasVideoCodec(reading, role)) {
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
        return NoSection(reading, "m=audio", "the far end has no audio section");
    }
    const Section* const section = FindAudio(reading);
    if (record.iAudioRTPPort == 0) {
        return Declined(section);
    }
    if (record.eAudioCodec == PAYLOAD_UNKNOWN) {
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
                 "then has no presentation";
}

std::string WhyNoFloorControl(const Reading& reading, const Capabilities& side, bool answers) {
    if (FindFloorControl(reading) == nullptr) {
        return "the far end has no BFCP section";
    }
    if (reading.record.iVideoPresoControlPort == 0) {
        return Declined(FindLastFloorControl(reading));
    }
    if (!answers) {
        return "floor_control.enabled is false on this side";
    }
    return side.local.iVideoPresoControlPort == 0 ? kDeclinedHere : "";
}

} // namespace cmsdp
