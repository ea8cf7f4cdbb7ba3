// Stage: build, one video section with its H.264 parameters, label and content (RFC 6184, 4574, 4796).
// Input: a stream's VideoParms, MyLocalSDP, the SRTP switch, the sections held. Output: an "m=video" section.
// Touches nothing but the text that it appends to.
// The stream uses the mode-1 format; mode 0 is the fallback for far ends that support nothing else.
// Test: tests/unit/SDPBuildVideoTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"
#include "SDPText.h"

void SDPHandler::Build::Video(const VideoParms& parms) {
    if (parms.eVideoCodec == 0) {
        return;
    }
    const SRTP_M_LINE stream =
        parms.eVideoType == VIDEOTYPE_PRESO ? baseSDP::SRTP_VIDEO_PRESO : baseSDP::SRTP_VIDEO;
    const bool isSecure = m_handler.UseSecureParms(stream);
    const bool hasMode1 = (parms.eVideoCodec & PAYLOAD_H264) != 0;
    const bool hasAnyMode = (parms.eVideoCodec & sdp::kAnyH264) != 0;
    const std::string levelDigits = m_handler.ReverseConvertVideoLevel(parms.strVideoLevel);

    m_out << "m=video " << parms.iVideoRTPPort << (isSecure ? " RTP/SAVP " : " RTP/AVP ");
    if (hasMode1) {
        m_out << m_local.iVideoPayloadMode1;
    }
    // [B24] The mode-0 payload is listed with mode 1 as well, whether or not the codec set has its bit.
    // [B10] The profile ends in a blank and mode 0 begins with one, so mode 0 alone follows two blanks.
    if (hasAnyMode) {
        m_out << " " << m_local.iVideoPayloadMode0;
    }
    // [B23] A codec set without H.264 lists no format: the line ends after the profile's blank.
    m_out << "\r\n";
    if (hasMode1) {
        // [B11] Bandwidth and keys belong to mode 1. A section of mode 0 alone says SAVP and has neither.
        BandwidthTIAS(true);
        if (isSecure) {
            Crypto(stream);
        }
        RTPMap(PAYLOAD_H264);
        H264Parameters(parms, levelDigits, true);
    }
    if (hasAnyMode) {
        RTPMap(PAYLOAD_H264_PACKETIZATION_0);
        H264Parameters(parms, levelDigits, false);
        Directional(MEDIA_VIDEO, parms.eVideoType);
        if (parms.iVideoRTPPort != 0) {
            RTCPAttribute(sdp::WrappingAdd(parms.iVideoRTPPort, 1));
        }
    }
    Label(parms.eVideoType);
    Content(parms.eVideoType);
}

std::string SDPHandler::AddVideo(const VideoParms& parms) const {
    return Build::Lines(*this, &Build::Video, parms);
}

void SDPHandler::Build::H264Parameters(const VideoParms& parms, std::string_view levelDigits, bool isMode1) {
    // Baseline profile, no constraint
    m_out << "a=fmtp:" << (isMode1 ? m_local.iVideoPayloadMode1 : m_local.iVideoPayloadMode0) << " "
          << sdp::kProfileLevelId << "=4200" << levelDigits;
    for (const sdp::H264Parameter* const limit : sdp::kWrittenLimits) {
        const std::int32_t value = parms.*limit->field;
        if (value != 0) {
            m_out << ";" << limit->name << "=" << (limit->isMadeOdd ? value | 1 : value);
        }
    }
    m_out << ";" << sdp::kPacketizationMode
          << (isMode1 ? "=1;max-rcmd-nalu-size=32000" : "=0;max-rcmd-nalu-size=0")
          << ";level-asymmetry-allowed=1\r\n";
}

std::string SDPHandler::AddH264Profile(const VideoParms& parms) const {
    return Build::Lines(*this, &Build::H264Parameters, parms, ReverseConvertVideoLevel(parms.strVideoLevel),
                        true);
}

std::string SDPHandler::AddH264ProfilePacketization0(const VideoParms& parms) const {
    return Build::Lines(*this, &Build::H264Parameters, parms, ReverseConvertVideoLevel(parms.strVideoLevel),
                        false);
}

void SDPHandler::Build::Label(VIDEOTYPE role) {
    m_out << "a=label:";
    if (const sdp::VideoRole* const row = sdp::FindRow(sdp::kVideoRoles, &sdp::VideoRole::role, role)) {
        m_out << row->label << "\r\n";
    }
    // [B09] A stream without a role leaves the bare prefix, here and in the content line.
}

std::string SDPHandler::AddLabel(VIDEOTYPE v) const {
    return Build::Lines(*this, &Build::Label, v);
}

void SDPHandler::Build::Content(VIDEOTYPE role) {
    if (const sdp::VideoRole* const row = sdp::FindRow(sdp::kVideoRoles, &sdp::VideoRole::role, role)) {
        m_out << row->keyword << "\r\n";
    } else {
        m_out << "a=content:";
    }
}

std::string SDPHandler::AddContent(VIDEOTYPE v) const {
    return Build::Lines(*this, &Build::Content, v);
}
