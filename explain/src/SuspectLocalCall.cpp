// Stage: suspects in the local fields that concern the whole call: bandwidth, floor control, the number of
// sections served.
// Input: the local record and the switches. Output: suspects that blame a field.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;
constexpr Rule kBandwidth = {
    "E123", "B04", ExplainSeverity::Warning, 11,
    "The budget is in bit/s: b=AS is a thousandth of it, cut (B04), and a section has b=TIAS only from 64000 "
    "bit/s on, audio's share; video gets the rest (B05)."};
constexpr Rule kSmallBudget = {"E138", "B05", ExplainSeverity::Note, 29,
                               "Audio gets 64000 bit/s of the budget and each video section the rest (B05)."};
constexpr Rule kNoBudget = {"E136", "B04", ExplainSeverity::Note, 30,
                            "A budget of 0 means no limit and writes no b= line (B04)."};
constexpr Rule kFloorUnasked = {
    "E129", "B15", ExplainSeverity::Error, 48,
    "With floor control on our answer has slides and an m=application line, offered or not; without a floor "
    "control section in the offer that line has no port (B15)."};
constexpr Rule kFloorOff = {"E130", "", ExplainSeverity::Error, 5,
                            "Slides and their floor control are written only with floor control on."};
constexpr Rule kFloorPort = {
    "E131", "", ExplainSeverity::Error, 6,
    "The port of the m=application line is this one, and port 0 declines floor control."};
constexpr Rule kOwnIds = {"E146", "B17", ExplainSeverity::Note, 44,
                          "Our text always writes floor 2, stream 9, conference 15 and user 15 (B17)."};
constexpr Rule kServed = {"E132", "B18", ExplainSeverity::Error, 25,
                          "Each remote section beyond the number served is repeated at port 0 at the end of "
                          "the answer, also when one of ours answers it (B18)."};
constexpr Rule kUnasked = {"E133", "B20", ExplainSeverity::Error, 47,
                           "Each section that the local record has is written, offered or not (B20); an "
                           "answer may have only the sections of its offer (RFC 3264, 6)."};

void FindBudget(Scene& scene) {
    const std::int32_t budget = scene.input.local.iMaxBandwidth;
    if (budget == 0) {
        BlameField(scene, kNoBudget, "max_bandwidth_bit_per_s",
                   {"iMaxBandwidth (max_bandwidth_bit_per_s) is 0."},
                   {"set max_bandwidth_bit_per_s to the budget in bit/s"}, 1064000)
            .Know(Topic::Bandwidth, {"Our text has no b= line, so the far end takes us as not limited."});
    }
    constexpr std::int32_t leastForVideo = 128000;
    if (budget > sdp::kAudioShare && budget < sdp::kAudioShare + leastForVideo) {
        BlameField(scene, kSmallBudget, "max_bandwidth_bit_per_s",
                   {"iMaxBandwidth (max_bandwidth_bit_per_s) is ", budget, " bit/s."},
                   {"set max_bandwidth_bit_per_s to 1064000"}, 1064000)
            .Know(Topic::Bandwidth, {"Our text leaves video ", budget - sdp::kAudioShare,
                                     " bit/s, so the far end sends a poor picture."});
    }
    if (budget == 0 || budget > sdp::kAudioShare) {
        return;
    }
    BlameField(scene, kBandwidth, "max_bandwidth_bit_per_s",
               {"iMaxBandwidth (max_bandwidth_bit_per_s) is ", budget, " bit/s",
                budget < 0                  ? ", a negative number."
                : budget < sdp::kAudioShare ? ", which looks like kbit/s."
                                            : ", the share of audio alone."},
               {"set max_bandwidth_bit_per_s to ",
                budget < 0 || budget == sdp::kAudioShare ? 1064000 : std::min(budget, 2147483) * 1000},
               budget < 0 || budget == sdp::kAudioShare ? 1064000 : budget * 1000)
        .Know(Topic::Bandwidth,
              {"Our text says b=AS:", budget / 1000,
               budget < sdp::kAudioShare ? " and has no b=TIAS lines."
                                         : " and has no limit for video, which gets nothing."});
}

void FindOwnFloor(Scene& scene) {
    bool hasFloor = false;
    bool hasSlides = false;
    for (const TextLine& line : scene.reading.lines) {
        hasFloor = hasFloor || (line.meant == SDPRow::Media && negotiation::IsBfcp(Upper(line.text)));
        hasSlides = hasSlides || line.text.find("a=content:slides") != std::string_view::npos;
    }
    const bool isOn = scene.input.floorControl;
    if (isOn && !hasFloor && !scene.input.remoteAnswers && !scene.input.floorControlIfOffered) {
        BlameField(
            scene, kFloorUnasked, "floor_control.enabled",
            {"SetBfcpSupport (floor_control.enabled) is on, and the far end has no floor control section."},
            {"set floor_control.enabled to false"}, 0);
    } else if (!isOn && (hasFloor || hasSlides)) {
        Suspect& suspect = BlameField(scene, kFloorOff, "floor_control.enabled",
                                      {"SetBfcpSupport (floor_control.enabled) is off."},
                                      {"set floor_control.enabled to true"}, 1);
        suspect.Know(Topic::Slides, {"Our text has no slides section (presentation) and no "
                                     "floor control, so slides are not received."});
        suspect.Know(Topic::Floor, {"Our text has no floor control section, so no floor can be asked for."});
    }
    const std::int32_t port = scene.input.local.iVideoPresoControlPort;
    if (isOn && (port <= 0 || port > 65535)) {
        BlameField(scene, kFloorPort, "floor_control.port",
                   {"iVideoPresoControlPort (floor_control.port) is ", port, "."},
                   {"set floor_control.port to a port from 1 to 65535"}, 16390)
            .Know(Topic::Floor, {"Our text declines floor control or names no port: ", port, "."});
    }
    const std::pair<const char*, std::int32_t> ids[] = {
        {"floor_control.conference_id", scene.input.local.iBfcpConfid},
        {"floor_control.user_id", scene.input.local.iBfcpUserid}};
    for (const auto& id : ids) {
        constexpr std::int32_t written = 15;
        if (isOn && hasFloor && id.second != 0 && id.second != written) {
            BlameField(scene, kOwnIds, id.first,
                       {LocalField(id.first)->record, " (", id.first, ") is ", id.second, "."},
                       {"set ", id.first, " to 15"}, written)
                .Know(Topic::Floor, {"Our text says 15 and not ", id.second, ", whatever is set here."});
        }
    }
}

void FindServed(Scene& scene) {
    const std::size_t sections = scene.state.sections.size();
    if (scene.input.remoteAnswers || sections <= scene.input.servedSections) {
        return;
    }
    const std::string count = std::to_string(scene.input.servedSections);
    Suspect& suspect = BlameField(scene, kServed, "served_sections",
                                  {"SetMaxSupportedSessions (served_sections) is ", count,
                                   ", and the far end has ", sections, " sections."},
                                  {"set served_sections to ", sections},
                                  static_cast<std::int32_t>(std::min<std::size_t>(sections, 1000000)));
    suspect.SayActed({"Of the far end's sections ", count,
                      " are served; each one after them is repeated at port 0 at the end of the answer, also "
                      "when one of ours answers it (B18)."});
}

/// Whether the far end meant a section of this kind, opened or not: then its line is blamed.
bool IsMeant(const Scene& scene, std::string_view media, bool isSlides) {
    return std::any_of(
        scene.reading.sections.begin(), scene.reading.sections.end(),
        [&](const MeantSection& section) { return section.media == media && section.isSlides == isSlides; });
}

void FindUnasked(Scene& scene) {
    const RemoteSDP& record = scene.state.record;
    if (scene.input.remoteAnswers || scene.state.sections.empty()) {
        return;
    }
    if (!record.m_VideoMain.fIsVideoValid && !IsMeant(scene, "video", false) &&
        OurStream(scene.state, baseSDP::SRTP_VIDEO) != nullptr) {
        BlameField(
            scene, kUnasked, "video.main.codecs",
            {"m_VideoMain.eVideoCodec (video.main.codecs) is set, and the far end offers no main video."},
            {"empty video.main.codecs for this call"}, 0)
            .Know(Topic::Call, {"Our answer has an m=video section that nobody offered."});
    }
    const bool hasFloor = std::any_of(scene.reading.sections.begin(), scene.reading.sections.end(),
                                      [](const MeantSection& section) { return section.IsFloor(); });
    if (hasFloor && !record.m_VideoPreso.fIsVideoValid &&
        OurStream(scene.state, baseSDP::SRTP_VIDEO_PRESO) != nullptr) {
        BlameField(scene, kUnasked, "video.presentation.codecs",
                   {"m_VideoPreso.eVideoCodec (video.presentation.codecs) is set, and the far end offers no "
                    "slides."},
                   {"empty video.presentation.codecs for this call"}, 0)
            .Know(Topic::Call, {"Our answer has a slides section that nobody offered."});
    }
    if (!record.fIsAudioValid && !IsMeant(scene, "audio", false) &&
        OurStream(scene.state, baseSDP::SRTP_AUDIO) != nullptr) {
        BlameField(scene, kUnasked, "audio.priority",
                   {"listAudioCodecPriority (audio.priority) is set, and the far end offers no audio."},
                   {"empty audio.priority for this call"}, 0)
            .Know(Topic::Call, {"Our answer has an m=audio section that nobody offered."});
    }
}

} // namespace

void FindLocalCall(Scene& scene) {
    FindLocalSrtp(scene);
    FindLocalAddress(scene);
    FindBudget(scene);
    FindOwnFloor(scene);
    FindServed(scene);
    FindUnasked(scene);
    FindOverlap(scene);
}

} // namespace explain
