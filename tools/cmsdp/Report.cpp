// Verdicts from the record, and reasons from the record, the text and what this side can do. Reasons of the
// far end stand before reasons of this side.
//
// Tests: tests/tool/ReportTest.cpp
#include "Report.h"

#include "Names.h"
#include "ReportSecurity.h"

#include <algorithm>

namespace cmsdp {

namespace {

bool HasBit(PayloadType_t set, std::int32_t bit) {
    return (static_cast<std::int32_t>(set) & bit) != 0;
}

// What AddAudio would list, in words: bits of the set that the priority list names.
std::string AudioTaken(const LocalSDP& local) {
    static const NameTable inWords = {{"G722 (9)", PAYLOAD_G722},
                                      {"G7221/16000 with bitrate=32000 in front", PAYLOAD_G7221},
                                      {"PCMU (0)", PAYLOAD_G711U},
                                      {"G729 (18)", PAYLOAD_G729}};
    std::string taken;
    for (const NamedValue& row : inWords) {
        if (HasBit(local.eAudioCodec, row.value)) {
            taken += (taken.empty() ? "" : ", ") + std::string(row.name);
        }
    }
    return taken.empty() ? "no audio codec" : taken;
}

std::string NoCommonCodec(const SeenSection* section, const std::string& taken) {
    const std::string listed = section == nullptr ? "no codec" : CodecsInWords(*section);
    return "no codec in common: the far end lists " + listed + "; this side takes " + taken;
}

std::string WhyNoAudio(const Report& report, const Capabilities& c, const SeenSection* section) {
    const RemoteSDP& record = report.record;
    const auto& priority = c.local.listAudioCodecPriority;
    if (!record.fIsAudioValid) {
        return "the far end has no audio section";
    }
    if (record.iAudioRTPPort == 0) {
        return "the far end declines it with port 0";
    }
    if (record.eAudioCodec == PAYLOAD_UNKNOWN) {
        return NoCommonCodec(section, AudioTaken(c.local));
    }
    if (priority.empty()) {
        return "this side has no audio section: audio.priority is empty";
    }
    if (std::find(priority.begin(), priority.end(), record.eAudioCodec) == priority.end()) {
        return "audio.priority of this side does not list " + NameOf(CodecNames(), record.eAudioCodec);
    }
    return c.local.iAudioRTPPort == 0 ? "this side declines it with port 0" : "";
}

std::string WhyNoVideo(const VideoParms& remote, const VideoParms& local, const SeenSection* section,
                       const std::string& missing) {
    constexpr std::int32_t h264 = PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0;
    if (!remote.fIsVideoValid) {
        return missing;
    }
    if (remote.iVideoRTPPort == 0) {
        return "the far end declines it with port 0";
    }
    if (!HasVideoCodec(remote)) {
        return NoCommonCodec(section, "H264/90000");
    }
    if (!HasBit(local.eVideoCodec, h264)) {
        return "this side lists no H.264 for it";
    }
    return local.iVideoRTPPort == 0 ? "this side declines it with port 0" : "";
}

std::string WhyNoFloorControl(const Report& report, const Capabilities& c, const SeenSection* section) {
    if (section == nullptr) {
        return "the far end has no BFCP section";
    }
    if (report.record.iVideoPresoControlPort == 0) {
        return "the far end declines it with port 0";
    }
    if (!report.answersFloorControl) {
        return "floor_control.enabled is false on this side";
    }
    return c.local.iVideoPresoControlPort == 0 ? "this side declines it with port 0" : "";
}

void Conclude(Finding& finding, std::string why) {
    finding.negotiated = why.empty();
    finding.why = std::move(why);
}

void ConcludePresentation(Report& report, const Capabilities& c, const SeenSection* section) {
    std::string why = WhyNoVideo(report.record.m_VideoPreso, c.local.m_VideoPreso, section,
                                 "the far end has no video section marked a=content:slides");
    if (why.empty() && !report.answersFloorControl) {
        why = c.floorControl == FloorControl::kOff
                  ? "floor_control.enabled is false on this side, which then has no presentation"
                  : "the far end has no BFCP section, and floor_control.enabled of this side is \"auto\", "
                    "which "
                    "then has no presentation";
    }
    Conclude(report.presentation, std::move(why));
}

// Far ends that share a screen as an unmarked second video are common, and the reader sees two videos.
void NoteSpareVideo(Report& report, const RemoteLook& look) {
    const auto unmarked = std::count_if(look.sections.begin(), look.sections.end(), [](const SeenSection& s) {
        return s.media == "video" && !s.slides && !s.declined;
    });
    if (unmarked > 1) {
        report.presentation.notes.push_back(
            std::to_string(unmarked) + " video sections are not marked a=content:slides; the first is main " +
            "video, the others are not taken");
    }
}

void NoteSpareFloorControl(Report& report, const RemoteLook& look) {
    const auto count = std::count_if(look.sections.begin(), look.sections.end(),
                                     [](const SeenSection& s) { return s.floorControl; });
    if (count > 1) {
        report.floorControl.notes.push_back("the far end has " + std::to_string(count) +
                                            " BFCP sections; the last one stands");
    }
}

} // namespace

bool HasVideoCodec(const VideoParms& video) {
    return video.fIsVideoValid && video.iVideoPayload != 0;
}

Report ReadInto(SDPHandler& handler, const Capabilities& capabilities, const std::string& text) {
    Report report;
    handler.ParseTheSDP(text, report.record);
    report.answersFloorControl = SettleFloorControl(handler, capabilities);
    const RemoteLook look = LookAt(text);
    const SeenSection* const audio = FindAudio(look);
    const SeenSection* const mainVideo = FindVideo(look, false);
    const SeenSection* const slides = FindVideo(look, true);

    Conclude(report.audio, WhyNoAudio(report, capabilities, audio));
    Conclude(report.mainVideo,
             WhyNoVideo(report.record.m_VideoMain, capabilities.local.m_VideoMain, mainVideo,
                        slides == nullptr ? "the far end has no video section"
                                          : "the far end has no video section but the presentation"));
    ConcludePresentation(report, capabilities, slides);
    Conclude(report.floorControl, WhyNoFloorControl(report, capabilities, FindFloorControl(look)));

    NoteSecurity(report.audio, report.record, baseSDP::SRTP_AUDIO, capabilities, audio);
    NoteSecurity(report.mainVideo, report.record, baseSDP::SRTP_VIDEO, capabilities, mainVideo);
    NoteSecurity(report.presentation, report.record, baseSDP::SRTP_VIDEO_PRESO, capabilities, slides);
    NoteSpareVideo(report, look);
    NoteSpareFloorControl(report, look);
    report.notes = look.notes;
    return report;
}

bool AnythingNegotiated(const Report& report) {
    return report.audio.negotiated || report.mainVideo.negotiated || report.presentation.negotiated;
}

std::string WhyNothing(const Report& report) {
    return "nothing was negotiated: audio: " + report.audio.why + "; main video: " + report.mainVideo.why +
           "; presentation: " + report.presentation.why;
}

} // namespace cmsdp
