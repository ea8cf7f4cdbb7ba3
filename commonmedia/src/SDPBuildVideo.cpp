// Stage: build, one video section with its H.264 parameters, label and content (RFC 6184, 4574, 4796).
// Input: a stream's VideoParms, MyLocalSDP, the SRTP switch, the sections held. Output: an "m=video" section.
// Touches nothing but the text at whose end it writes.
// The mode-1 format carries the stream; mode 0 is the fallback for far ends that know nothing else.
// Test: tests/unit/SDPBuildVideoTest.cpp
#include "SDPHandler.h"

#include "SDPTables.h"
#include "SDPText.h"
#include "SDPWriter.h"

namespace {

/// One of the two "a=fmtp:" lines. They differ in payload and in the parameters of the packetization.
void WriteFormatParameters(sdp::Writer& sdp, std::int32_t iPayload, std::string_view levelDigits,
                           const VideoParms& parms, std::string_view packetization) {
    // Baseline profile, no constraint
    sdp << "a=fmtp:" << iPayload << " profile-level-id=4200" << levelDigits;
    if (parms.iFmtpMaxBitRate != 0) {
        sdp << ";max-br=" << parms.iFmtpMaxBitRate;
    }
    if (parms.iFmtpMaxMbps != 0) {
        sdp << ";max-mbps=" << parms.iFmtpMaxMbps;
    }
    if (parms.iFmtpMaxFrameSize != 0) {
        // [B12] The frame size is written odd, one higher when it is even: the far end may send one
        // macroblock more than the application asked for.
        sdp << ";max-fs=" << (parms.iFmtpMaxFrameSize | 1);
    }
    sdp << packetization << ";level-asymmetry-allowed=1\r\n";
}

} // namespace

void SDPHandler::WriteVideo(sdp::Writer& sdp, const VideoParms& parms) const {
    if (parms.eVideoCodec == 0) {
        return;
    }
    const SRTP_M_LINE eSrtp =
        parms.eVideoType == VIDEOTYPE_PRESO ? baseSDP::SRTP_VIDEO_PRESO : baseSDP::SRTP_VIDEO;
    const bool fSecure = UseSecureParms(eSrtp);
    const bool fMode1 = (parms.eVideoCodec & PAYLOAD_H264) != 0;
    const bool fAnyMode = (parms.eVideoCodec & sdp::kAnyH264) != 0;

    sdp << "m=video " << parms.iVideoRTPPort << (fSecure ? " RTP/SAVP " : " RTP/AVP ");
    if (fMode1) {
        sdp << MyLocalSDP.iVideoPayloadMode1;
    }
    // [B24] The mode-0 payload is listed with mode 1 as well, whether or not the codec set has its bit.
    // [B10] Each format brings its blank although the profile ended in one: mode 0 alone stands behind two.
    if (fAnyMode) {
        sdp << " " << MyLocalSDP.iVideoPayloadMode0;
    }
    // [B23] A codec set without H.264 lists no format: the line ends behind the profile's blank.
    sdp << "\r\n";
    if (fMode1) {
        // [B11] Bandwidth and keys belong to mode 1. A section of mode 0 alone says SAVP and carries neither.
        WriteBandwidthTIAS(sdp, true);
        if (fSecure) {
            WriteCrypto(sdp, eSrtp);
        }
        WriteRTPMap(sdp, PAYLOAD_H264);
        WriteH264Profile(sdp, parms);
    }
    if (fAnyMode) {
        WriteRTPMap(sdp, PAYLOAD_H264_PACKETIZATION_0);
        WriteH264ProfilePacketization0(sdp, parms);
        WriteDirectional(sdp, MEDIA_VIDEO, parms.eVideoType);
        if (parms.iVideoRTPPort != 0) {
            WriteRTCPAttribute(sdp, sdp::WrappingAdd(parms.iVideoRTPPort, 1));
        }
    }
    WriteLabel(sdp, parms.eVideoType);
    WriteContent(sdp, parms.eVideoType);
}

void SDPHandler::WriteLabel(sdp::Writer& sdp, VIDEOTYPE v) const {
    sdp << "a=label:";
    if (v == VIDEOTYPE_PRESO) {
        sdp << "9\r\n";
    } else if (v == VIDEOTYPE_MAIN) {
        sdp << "8\r\n";
    }
    // [B09] A stream without a role leaves the bare prefix, here and in the content line.
}

void SDPHandler::WriteContent(sdp::Writer& sdp, VIDEOTYPE v) const {
    sdp << "a=content:";
    if (v == VIDEOTYPE_PRESO) {
        sdp << "slides\r\n";
    } else if (v == VIDEOTYPE_MAIN) {
        sdp << "main\r\n";
    }
}

void SDPHandler::WriteH264Profile(sdp::Writer& sdp, const VideoParms& parms) const {
    WriteFormatParameters(sdp, MyLocalSDP.iVideoPayloadMode1, ReverseConvertVideoLevel(parms.strVideoLevel),
                          parms, ";packetization-mode=1;max-rcmd-nalu-size=32000");
}

void SDPHandler::WriteH264ProfilePacketization0(sdp::Writer& sdp, const VideoParms& parms) const {
    WriteFormatParameters(sdp, MyLocalSDP.iVideoPayloadMode0, ReverseConvertVideoLevel(parms.strVideoLevel),
                          parms, ";packetization-mode=0;max-rcmd-nalu-size=0");
}
