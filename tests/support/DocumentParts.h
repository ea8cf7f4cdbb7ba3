// What the steps of documents show of a handler besides its descriptions: one part of a description, and a
// section that it keeps. Tests: DocumentTest.cpp.
#pragma once

#include "Describe.h"
#include "Expect.h"

#include <SDPHandler.h>

#include <cstddef>
#include <string>
#include <vector>

namespace documents {

struct PartRow {
    const char* name;
    std::string (*write)(const SDPHandler&);
};

inline constexpr PartRow kParts[] = {
    {"bandwidth", [](const SDPHandler& h) { return h.AddBandwidth(); }},
    {"audio", [](const SDPHandler& h) { return h.AddAudio(); }},
    {"application", [](const SDPHandler& h) { return h.AddApplication(); }},
    {"floor-control", [](const SDPHandler& h) { return h.AddFloorControl(); }},
    {"crypto-audio", [](const SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_AUDIO); }},
    {"crypto-main", [](const SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_VIDEO); }},
    {"crypto-presentation", [](const SDPHandler& h) { return h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO); }},
    {"direction-audio", [](const SDPHandler& h) { return h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN); }},
    {"direction-main", [](const SDPHandler& h) { return h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN); }},
    {"direction-presentation",
     [](const SDPHandler& h) { return h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO); }},
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

/// Every field of a section as a line "field = value", in the order of SDP.h, the payload formats at the end.
inline std::vector<std::string> AllSectionLines(const MediaSession& section) {
    std::vector<std::string> lines;
    const auto text = [&](const std::string& name, const std::string& value) {
        std::string line = name + " = " + support::MakeVisible(value);
        if (line.back() == ' ' && !value.empty()) {
            line.replace(line.size() - 1, 1, "\\x20");
        }
        lines.push_back(line);
    };
    const auto number = [&](const std::string& name, int value) { text(name, std::to_string(value)); };
    number("eMedia", section.eMedia);
    number("eContent", section.eContent);
    number("iPort", section.iPort);
    text("strIPAddr", section.strIPAddr);
    number("fSend", section.fSend ? 1 : 0);
    number("fRecv", section.fRecv ? 1 : 0);
    text("strFullMLine", section.strFullMLine);
    text("strVideoLevel", section.strVideoLevel);
    text("strMaxBandwidth", section.strMaxBandwidth);
    number("iVideoLabel", section.iVideoLabel);
    number("cryptoAlgo", section.cryptoAlgo);
    number("iCryptoTag", section.iCryptoTag);
    text("strBase64Key", section.strBase64Key);
    text("key", support::DescribeRow(section.bufSRTPKey, baseSDP::kKeyLength, sizeof section.bufSRTPKey));
    text("salt", support::DescribeRow(section.bufSRTPSalt, baseSDP::kSaltLength, sizeof section.bufSRTPSalt));
    number("iBfcpConfid", section.iBfcpConfid);
    number("iBfcpUserid", section.iBfcpUserid);
    number("iBfcpFloorid", section.iBfcpFloorid);
    text("strFloorctrl", section.strFloorctrl);
    text("striceufrag", section.striceufrag);
    text("stricepwd", section.stricepwd);
    for (const std::string& candidate : section.vecCandidate) {
        text("candidate", candidate);
    }
    for (const RtpMap* const format : section.vecRtpMap) {
        text("format",
             format->strPayload + (format->strEncodingName.empty() ? "" : " ") + format->strEncodingName);
        for (const std::string& parameter : format->vecFmtpParms) {
            text("parameter", parameter);
        }
    }
    return lines;
}

/// Those of the lines that a new section does not have.
inline std::vector<std::string> SectionLines(const MediaSession& section) {
    const std::vector<std::string> fresh = AllSectionLines(MediaSession());
    std::vector<std::string> lines = AllSectionLines(section);
    for (std::size_t i = fresh.size(); i-- > 0;) {
        if (lines[i] == fresh[i]) {
            lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    return lines;
}

} // namespace documents
