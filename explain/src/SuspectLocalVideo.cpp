// Stage: suspects in the local video fields.
// Input: the local record. Output: suspects that blame a field.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kNoVideo = {"E104", "", ExplainSeverity::Error, 6,
                           "With an empty codec set (0) no video section of this kind is written."};
constexpr Rule kNotH264 = {"E105", "B23", ExplainSeverity::Error, 6,
                           "A codec set without an H.264 bit writes an m=video line without a format (B23; "
                           "RFC 4566, 5.14 wants one)."};
constexpr Rule kMode0 = {"E106", "B11", ExplainSeverity::Error, 12,
                         "A section of packetization mode 0 alone has neither b=TIAS nor a crypto line, also "
                         "where it says RTP/SAVP (B11), and two blanks before its format (B10)."};
constexpr Rule kVideoLevel = {
    "E107", "X06", ExplainSeverity::Warning, 10,
    "A level name that is not in the table is written as level 2, profile-level-id=420014 (X06)."};
constexpr Rule kVideoRole = {
    "E108", "B09", ExplainSeverity::Error, 8,
    "Label and content of a section follow eVideoType alone: main is a=content:main, presentation "
    "a=content:slides, anything else a bare a=label: and a=content: without line ends (B09)."};
constexpr Rule kMuted = {"E109", "B19", ExplainSeverity::Warning, 6,
                         "Muted main video is never sent: our text says a=recvonly, or a=inactive where the "
                         "far end would not send either (B19)."};
constexpr Rule kSamePayload = {"E110", "", ExplainSeverity::Error, 9,
                               "Both packetization modes are written with the payload numbers of the record, "
                               "so one number is described twice and differently."};
constexpr Rule kPayloadRange = {
    "E111", "", ExplainSeverity::Error, 10,
    "Payload numbers are written as they are; dynamic ones are 96 to 127 (RFC 3551, 6)."};
constexpr Rule kLowVideoLevel = {
    "E112", "", ExplainSeverity::Note, 50,
    "The level and its limits in our text are what the far end may send us at most (RFC 6184, 8.1)."};

constexpr Rule kLevel1b = {
    "E158", "X05", ExplainSeverity::Warning, 11,
    "Level 1b is written as the digits FF, a private code (255) that no RFC has: others "
    "write it as 0B with constraint_set3_flag (X05; RFC 6184, 8.1)."};

struct VideoField {
    const char* file;
    const char* record;
    const char* name;
    VideoParms baseSDP::*stream;
    Topic carries;
    Topic receives;
    VideoType_t role;
};

bool IsLevelName(const std::string& level) {
    return std::any_of(std::begin(sdp::__H264Profile), std::end(sdp::__H264Profile),
                       [&](const char* name) { return level == name; });
}

void FindVideoCodecs(Scene& scene, const VideoField& field, const VideoParms& video) {
    const std::string file = std::string(field.file) + ".codecs";
    const std::string record = std::string(field.record) + ".eVideoCodec";
    const std::string name = record + " (" + file + ")";
    const bool isSecure = scene.input.srtp;
    const bool isAsked = scene.input.remoteAnswers ||
                         std::any_of(scene.reading.sections.begin(), scene.reading.sections.end(),
                                     [](const MeantSection& section) { return section.media == "video"; });
    if (video.eVideoCodec == 0 && isAsked) {
        BlameField(scene, kNoVideo, file, {name, " is empty."},
                   {"put H264_MODE_1 and H264_MODE_0 into ", file}, sdp::kAnyH264);
    } else if (video.eVideoCodec != 0 && (video.eVideoCodec & sdp::kAnyH264) == 0) {
        BlameField(scene, kNotH264, file,
                   {name, " holds ", video.eVideoCodec == PAYLOAD_VP8 ? "VP8 alone" : "no H.264 mode", "."},
                   {"put H264_MODE_1 and H264_MODE_0 into ", file}, sdp::kAnyH264)
            .Know(field.carries, {"Our section for ", field.name,
                                  " lists no format, so the far end declines it or refuses the text."});
    } else if (video.eVideoCodec != 0 && (video.eVideoCodec & PAYLOAD_H264) == 0) {
        Suspect& suspect = BlameField(scene, kMode0, file, {name, " holds H264_MODE_0 alone."},
                                      {"add H264_MODE_1 to ", file}, sdp::kAnyH264);
        if (isSecure) {
            suspect.Know(
                field.role == VIDEOTYPE_MAIN ? Topic::EncryptionMain : Topic::EncryptionSlides,
                {"Our section for ", field.name,
                 " says RTP/SAVP and has no key, so the far end declines it or sends in the clear."});
        }
    }
}

void FindVideoLevel(Scene& scene, const VideoField& field, const VideoParms& video) {
    const std::string file = std::string(field.file) + ".level";
    const std::string name = std::string(field.record) + ".strVideoLevel (" + file + ")";
    const Pieces words = {"set ", file, " to \"3.1\""};
    if (!IsLevelName(video.strVideoLevel)) {
        BlameField(scene, kVideoLevel, file,
                   {name, " is \"", AsShown(video.strVideoLevel), "\", which is the name of no level."},
                   {"set ", file, " to the name of a level, such as \"3.1\""}, 0, "3.1")
            .Know(field.receives,
                  {"Our text promises level 2, so the far end sends a picture of 352 x 288 or so."});
    } else if (video.strVideoLevel == "1.b") {
        BlameField(scene, kLevel1b, file, {name, " is \"1.b\"."}, words, 0, "3.1")
            .Know(field.receives,
                  {"Our text says profile-level-id=4200FF, from which the far end takes a level "
                   "that we did not mean, or none."});
    } else if (video.strVideoLevel < "3") {
        BlameField(scene, kLowVideoLevel, file, {name, " is \"", video.strVideoLevel, "\", a low level."},
                   words, 0, "3.1")
            .Know(field.receives,
                  {"Our text asks for a picture of this low level, so the far end sends a small one."});
    }
}

void FindVideoRole(Scene& scene, const VideoField& field, const VideoParms& video) {
    if (video.eVideoType == field.role) {
        return;
    }
    const bool isMain = video.eVideoType == VIDEOTYPE_MAIN;
    const bool isSwapped = isMain || video.eVideoType == VIDEOTYPE_PRESO;
    Suspect& suspect =
        BlameField(scene, kVideoRole, std::string(field.file) + ".role",
                   {field.record, ".eVideoType (", field.file, ".role) is ",
                    isMain      ? "main."
                    : isSwapped ? "presentation."
                                : "no role."},
                   {"set ", field.file, ".role to ", field.role == VIDEOTYPE_MAIN ? "main" : "presentation"},
                   field.role);
    const std::string comes =
        isSwapped ? std::string("Our text marks ") + field.name +
                        (isMain ? " as a=content:main" : " as a=content:slides") +
                        ", so the far end takes it for the other stream."
                  : "Our text has bare a=label: and a=content: prefixes, which run into the next line.";
    suspect.Know(field.carries, {comes});
    suspect.Know(Topic::Call, {comes});
}

void FindVideo(Scene& scene, const VideoField& field) {
    const VideoParms& video = scene.input.local.*field.stream;
    const std::string file(field.file);
    FindVideoCodecs(scene, field, video);
    if (video.eVideoCodec == 0) {
        return;
    }
    FindLocalPort(scene, file + ".port", std::string(field.record) + ".iVideoRTPPort", video.iVideoRTPPort,
                  field.name, field.receives);
    FindVideoLevel(scene, field, video);
    FindLocalLimits(scene, field.file, field.record, video, field.receives);
    FindVideoRole(scene, field, video);
}

constexpr VideoField kVideo[] = {
    {"video.main", "m_VideoMain", "main video", &baseSDP::m_VideoMain, Topic::MainPicture, Topic::MainReceive,
     VIDEOTYPE_MAIN},
    {"video.presentation", "m_VideoPreso", "slides", &baseSDP::m_VideoPreso, Topic::Slides, Topic::Slides,
     VIDEOTYPE_PRESO},
};

void FindPayloads(Scene& scene) {
    const LocalSDP& local = scene.input.local;
    const std::string text = scene.input.remoteAnswers ? "offer" : "answer";
    if (local.iVideoPayloadMode0 == local.iVideoPayloadMode1) {
        const std::string number = std::to_string(local.iVideoPayloadMode0);
        Suspect& suspect = BlameField(
            scene, kSamePayload, "video.payload_type_mode_0",
            {"iVideoPayloadMode0 (video.payload_type_mode_0) and iVideoPayloadMode1 are both ", number, "."},
            {"set video.payload_type_mode_0 to another number"}, number == "126" ? 125 : 126);
        const std::string comes =
            "Our " + text + " lists payload " + number +
            " twice, once for each packetization mode, so the far end cannot tell them apart.";
        for (const Topic topic : {Topic::MainReceive, Topic::MainPicture, Topic::Slides, Topic::Call}) {
            suspect.Know(topic, {comes});
        }
    }
    for (const bool isMode1 : {true, false}) {
        const std::int32_t payload = isMode1 ? local.iVideoPayloadMode1 : local.iVideoPayloadMode0;
        if (payload >= 96 && payload <= 127) {
            continue;
        }
        const std::string file = isMode1 ? "video.payload_type_mode_1" : "video.payload_type_mode_0";
        Suspect& suspect = BlameField(
            scene, kPayloadRange, file,
            {isMode1 ? "iVideoPayloadMode1 (" : "iVideoPayloadMode0 (", file, ") is ", payload, "."},
            {"set ", file, " to a number from 96 to 127"}, isMode1 ? 97 : 126);
        for (const Topic topic : {Topic::MainReceive, Topic::MainPicture, Topic::Slides}) {
            suspect.Know(topic, {"Our ", text,
                                 " uses a number that the far end takes for another format or refuses."});
        }
    }
}

} // namespace

void FindLocalVideo(Scene& scene) {
    for (const VideoField& field : kVideo) {
        if (field.role == VIDEOTYPE_MAIN || scene.input.floorControl) {
            FindVideo(scene, field);
        }
    }
    if (scene.input.local.fVideoTxMuted) {
        BlameField(scene, kMuted, "video.muted", {"fVideoTxMuted (video.muted) is set."},
                   {"set video.muted to false"}, 0);
    }
    FindPayloads(scene);
}

} // namespace explain
