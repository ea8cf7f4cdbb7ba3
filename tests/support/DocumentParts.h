// What the steps of documents show of a handler besides its descriptions: one part of a description, and a
// section that it keeps. Tests: DocumentTest.cpp.
#pragma once

#include "Describe.h"
#include "Document.h"
#include "Expect.h"
#include "Fields.h"

#include <SDPHandler.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace documents {

struct PartRow {
    const char* name;
    std::string (*write)(SDPHandler&);
};

inline constexpr PartRow kParts[] = {
    {"session", [](SDPHandler& h) { return h.AddOfferPreamble(); }},
    {"origin", [](SDPHandler& h) { return h.AddO(); }},
    {"connection", [](SDPHandler& h) { return h.AddC(); }},
    {"bandwidth", [](SDPHandler& h) { return h.AddBandwidth(); }},
    {"bandwidth-audio", [](SDPHandler& h) { return h.AddBandwidthTIAS(false); }},
    {"bandwidth-video", [](SDPHandler& h) { return h.AddBandwidthTIAS(true); }},
    {"audio", [](SDPHandler& h) { return h.AddAudio(); }},
    {"main", [](SDPHandler& h) { return h.AddVideo(h.MyLocalSDP.m_VideoMain); }},
    {"presentation", [](SDPHandler& h) { return h.AddVideo(h.MyLocalSDP.m_VideoPreso); }},
    {"mode-1", [](SDPHandler& h) { return h.AddH264Profile(h.MyLocalSDP.m_VideoMain); }},
    {"mode-0", [](SDPHandler& h) { return h.AddH264ProfilePacketization0(h.MyLocalSDP.m_VideoMain); }},
    {"application", [](SDPHandler& h) { return h.AddApplication(); }},
    {"floor-control", [](SDPHandler& h) { return h.AddFloorControl(); }},
    {"rejected", [](SDPHandler& h) { return h.AddUnsupported(); }},
    {"crypto-audio", [](SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_AUDIO); }},
    {"crypto-main", [](SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_VIDEO); }},
    {"crypto-presentation", [](SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO); }},
    {"direction-audio", [](SDPHandler& h) { return h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN); }},
    {"direction-main", [](SDPHandler& h) { return h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN); }},
    {"direction-presentation", [](SDPHandler& h) { return h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO); }},
};

/// The part of a description that a name stands for, or null.
inline const PartRow* FindPart(const std::string& name) {
    for (const PartRow& row : kParts) {
        if (name == row.name) {
            return &row;
        }
    }
    return nullptr;
}

/// Every field of a section as lines "field = value", in the order of SDP.h. A format has a line of its own
/// and one for each parameter, and so has a candidate.
inline std::vector<std::string> AllSectionLines(const MediaSession& section) {
    std::vector<std::string> lines;
    const auto add = [&lines](const std::string& name, const std::string& value) {
        lines.push_back(name + " =" + (value.empty() ? "" : " ") + EndVisible(support::MakeVisible(value)));
    };
    support::ForEachField(section, [&add](const std::string& name, const auto& field) {
        using Field = std::decay_t<decltype(field)>;
        if constexpr (std::is_same_v<Field, std::string>) {
            add(name, field);
        } else if constexpr (std::is_same_v<Field, std::vector<std::string>>) {
            for (const std::string& candidate : field) {
                add("candidate", candidate);
            }
        } else if constexpr (std::is_same_v<Field, std::vector<RtpMap*>>) {
            for (const RtpMap* const format : field) {
                add("format", format->strPayload + (format->strEncodingName.empty() ? "" : " ") +
                                  format->strEncodingName);
                for (const std::string& parameter : format->vecFmtpParms) {
                    add("parameter", parameter);
                }
            }
        } else if constexpr (std::is_pointer_v<Field>) {
            add(name, support::DescribeRow(field, sizeof field - 1, sizeof field));
        } else {
            add(name, std::to_string(static_cast<std::int32_t>(field)));
        }
    });
    return lines;
}

/// Those of the lines that a new section does not have.
inline std::vector<std::string> SectionLines(const MediaSession& section) {
    const std::vector<std::string> fresh = AllSectionLines(MediaSession());
    std::vector<std::string> lines = AllSectionLines(section);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [&fresh](const std::string& line) {
                                   return std::find(fresh.begin(), fresh.end(), line) != fresh.end();
                               }),
                lines.end());
    return lines;
}

} // namespace documents
