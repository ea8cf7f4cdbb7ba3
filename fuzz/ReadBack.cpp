#include "Laws.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr std::int32_t kH264Bits = PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0;

void Want(const char* what, std::int64_t expected, std::int64_t actual, const std::string& text) {
    if (expected != actual) {
        Broken("what we write reads back", what, std::to_string(actual), "expected, from this text",
               std::to_string(expected) + "\n" + text);
    }
}

/// Negative limits are written but not read, because a sign is not accepted.
std::int32_t ReadLimit(std::int32_t written) {
    return written > 0 ? written : 0;
}

std::string ReadLevel(const std::string& name) {
    static const char* const names[] = {"1", "1.b", "1.1", "1.2", "1.3", "2",   "2.1", "2.2",
                                        "3", "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};
    const bool isKnown =
        std::any_of(std::begin(names), std::end(names), [&](const char* n) { return name == n; });
    return isKnown ? name : "2";
}

void WantVideo(const VideoParms& ours, const LocalSDP& local, const VideoParms& theirs,
               const std::string& text) {
    const bool hasMode1 = (ours.eVideoCodec & PAYLOAD_H264) != 0;
    Want("fIsVideoValid", 1, theirs.fIsVideoValid, text);
    Want("iVideoRTPPort", ours.iVideoRTPPort, theirs.iVideoRTPPort, text);
    Want("iVideoPayload", hasMode1 ? local.iVideoPayloadMode1 : local.iVideoPayloadMode0,
         theirs.iVideoPayload, text);
    Want("iFmtpPacketizationMode", hasMode1 ? 1 : 0, theirs.iFmtpPacketizationMode, text);
    Want("iFmtpMaxMbps", ReadLimit(ours.iFmtpMaxMbps), theirs.iFmtpMaxMbps, text);
    Want("iFmtpMaxBitRate", ReadLimit(ours.iFmtpMaxBitRate), theirs.iFmtpMaxBitRate, text);
    Want("iFmtpMaxFrameSize", ours.iFmtpMaxFrameSize == 0 ? 0 : ReadLimit(ours.iFmtpMaxFrameSize | 1),
         theirs.iFmtpMaxFrameSize, text);
    RequireSame("our level reads back", "ours", ReadLevel(ours.strVideoLevel), "theirs",
                theirs.strVideoLevel);
    RequireSame("our address reads back", "ours", local.strDefaultIPAddr, "theirs", theirs.strVideoIPAddr);
}

/// The codec that a far end with all codecs chooses: the first audio codec of our list.
std::int32_t FirstCodec(const LocalSDP& local) {
    for (const int codec : local.listAudioCodecPriority) {
        const bool hasAudio = codec == PAYLOAD_G711U || codec == PAYLOAD_G729 || codec == PAYLOAD_G7221 ||
                              codec == PAYLOAD_G722;
        if (hasAudio && (local.eAudioCodec & codec) != 0) {
            return codec;
        }
    }
    return PAYLOAD_UNKNOWN;
}

void WantKey(const Side& side, const RemoteSDP& far, baseSDP::SRTP_M_LINE n, bool hasLine,
             const std::string& text) {
    const auto suite = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    static const unsigned char none[baseSDP::kKeyLength] = {};
    // The far end reads one suite only.
    const bool isRead = hasLine && side.usesSrtp && side.local.cryptoAlgo[n] == suite;
    Want("cryptoAlgo", isRead ? suite : 0, far.cryptoAlgo[n], text);
    Want("key", 0,
         std::memcmp(isRead ? side.local.bufSRTPKey[n] : none, far.bufSRTPKey[n], baseSDP::kKeyLength), text);
    Want("salt", 0,
         std::memcmp(isRead ? side.local.bufSRTPSalt[n] : none, far.bufSRTPSalt[n], baseSDP::kSaltLength),
         text);
}

void WantOffer(const Side& side, const RemoteSDP& far, const std::string& text) {
    const LocalSDP& local = side.local;
    const bool hasMain = (local.m_VideoMain.eVideoCodec & kH264Bits) != 0;
    const bool hasPreso = side.usesBfcp && (local.m_VideoPreso.eVideoCodec & kH264Bits) != 0;
    const bool hasAudio = !local.listAudioCodecPriority.empty();
    Want("fIsAudioValid", hasAudio, far.fIsAudioValid, text);
    const std::int32_t codec = hasAudio ? FirstCodec(local) : PAYLOAD_UNKNOWN;
    Want("eAudioCodec", codec, far.eAudioCodec, text);
    const bool canFlow = local.iAudioRTPPort != 0 && codec != PAYLOAD_UNKNOWN;
    Want("fAudioSend", canFlow, far.fAudioSend, text);
    Want("fAudioRecv", canFlow, far.fAudioRecv, text);
    Want("main fIsVideoValid", hasMain, far.m_VideoMain.fIsVideoValid, text);
    Want("preso fIsVideoValid", hasPreso, far.m_VideoPreso.fIsVideoValid, text);
    if (hasMain) {
        // With a muted camera the section is "recvonly": the far end sends and does not receive.
        const bool isUp = local.m_VideoMain.iVideoRTPPort != 0;
        Want("main fVideoSend", isUp, far.m_VideoMain.fVideoSend, text);
        Want("main fVideoRecv", isUp && !local.fVideoTxMuted, far.m_VideoMain.fVideoRecv, text);
    }
    WantKey(side, far, baseSDP::SRTP_AUDIO, hasAudio, text);
    WantKey(side, far, baseSDP::SRTP_VIDEO, (local.m_VideoMain.eVideoCodec & PAYLOAD_H264) != 0, text);
    WantKey(side, far, baseSDP::SRTP_VIDEO_PRESO,
            side.usesBfcp && (local.m_VideoPreso.eVideoCodec & PAYLOAD_H264) != 0, text);
    if (side.usesBfcp) {
        Want("iVideoPresoControlPort", local.iVideoPresoControlPort, far.iVideoPresoControlPort, text);
        Want("iBfcpConfid", 15, far.iBfcpConfid, text);
        Want("iBfcpUserid", 15, far.iBfcpUserid, text);
    }
    Want("fBfcpIsServer", 0, far.fBfcpIsServer, text);
    Want("iMaxBandwidth", local.iMaxBandwidth < 0 ? 0 : local.iMaxBandwidth / 1000 * 1000, far.iMaxBandwidth,
         text);
}

} // namespace

void CheckReadsBack(const Side& side, const std::string& text, bool isOffer) {
    if (text.empty()) {
        return;
    }
    SDPHandler reader;
    reader.MyLocalSDP.eAudioCodec =
        PayloadType_t(PAYLOAD_G711U | PAYLOAD_G729 | PAYLOAD_G7221 | PAYLOAD_G722);
    RemoteSDP far;
    Require(reader.ParseTheSDP(text, far) == 0, "what we write is read", text, text);
    const LocalSDP& local = side.local;
    // A video section without a format opens no section at the far end, and its content line then changes the
    // section before it. A payload number shared by both modes names one format only.
    const std::int32_t preso = side.usesBfcp ? local.m_VideoPreso.eVideoCodec : 0;
    if (!side.isPlain || local.iVideoPayloadMode0 == local.iVideoPayloadMode1 ||
        local.m_VideoMain.eVideoType != VIDEOTYPE_MAIN || local.m_VideoPreso.eVideoType != VIDEOTYPE_PRESO ||
        (preso != 0 && (preso & kH264Bits) == 0)) {
        return;
    }
    if (!local.listAudioCodecPriority.empty()) {
        Want("fIsAudioValid", 1, far.fIsAudioValid, text);
        Want("iAudioRTPPort", local.iAudioRTPPort, far.iAudioRTPPort, text);
        Want("iDTMFPayload", 101, far.iDTMFPayload, text);
        RequireSame("our address reads back", "ours", local.strDefaultIPAddr, "theirs", far.strAudioIPAddr);
    }
    if ((local.m_VideoMain.eVideoCodec & kH264Bits) != 0) {
        WantVideo(local.m_VideoMain, local, far.m_VideoMain, text);
    }
    if ((preso & kH264Bits) != 0) {
        WantVideo(local.m_VideoPreso, local, far.m_VideoPreso, text);
    }
    if (isOffer) {
        WantOffer(side, far, text);
    }
}

} // namespace fuzz
