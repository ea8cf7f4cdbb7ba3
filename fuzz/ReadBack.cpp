#include "Judged.h"
#include "Laws.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr std::int32_t kH264Bits = PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0;

void Want(const char* what, std::int64_t expected, std::int64_t actual, const std::string& text) {
    if (IsInForce("what we write reads back") && expected != actual) {
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

/// Which checks a side allows. The application's texts are written unchanged: one with "=" in it is read as a
/// line of its own. Without a role a stream leaves its line open, and without a format it opens no section,
/// so its content line changes the section before it. A payload number of both modes names one format only.
struct Scope {
    explicit Scope(const Side& side) {
        const LocalSDP& local = side.local;
        for (const std::string* const text :
             {&local.strDefaultIPAddr, &local.strMyIPAddr, &local.strOExtension}) {
            isRead = isRead && text->find('=') == std::string::npos;
        }
        hasVideo = isRead && local.iVideoPayloadMode0 != local.iVideoPayloadMode1;
        for (const VideoParms* const stream : {&local.m_VideoMain, &local.m_VideoPreso}) {
            const bool isWritten =
                stream->eVideoCodec != 0 && (stream == &local.m_VideoMain || side.usesBfcp);
            const bool hasRole =
                stream->eVideoType == VIDEOTYPE_MAIN || stream->eVideoType == VIDEOTYPE_PRESO;
            const bool hasFormat = (stream->eVideoCodec & kH264Bits) != 0;
            isRead = isRead && (!isWritten || hasRole);
            hasVideo = hasVideo && (!isWritten || (hasRole && (hasFormat || stream == &local.m_VideoMain)));
            if (isWritten && hasFormat) {
                ++streams;
                const VideoParms*& first = stream->eVideoType == VIDEOTYPE_PRESO ? preso : main;
                first = first == nullptr ? stream : first;
            }
        }
    }

    bool isRead = true;    ///< every line is read as it was meant
    bool hasVideo = false; ///< and so are the video sections
    std::size_t streams = 0;
    const VideoParms* main = nullptr; ///< the stream that the far end takes for main video
    const VideoParms* preso = nullptr;
};

void WantVideo(const VideoParms& ours, const LocalSDP& local, const std::string& address,
               const VideoParms& theirs, const std::string& text) {
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
    RequireSame("our address reads back", "ours", address, "theirs", theirs.strVideoIPAddr);
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

void WantOfferedVideo(const Side& side, const Scope& scope, const RemoteSDP& far, const std::string& text) {
    const auto hasKey = [](const VideoParms* stream) {
        return stream != nullptr && (stream->eVideoCodec & PAYLOAD_H264) != 0;
    };
    Want("main fIsVideoValid", scope.main != nullptr, far.m_VideoMain.fIsVideoValid, text);
    Want("preso fIsVideoValid", scope.preso != nullptr, far.m_VideoPreso.fIsVideoValid, text);
    if (scope.main != nullptr) {
        // With a muted camera the section is "recvonly": the far end sends and does not receive.
        const bool isUp = scope.main->iVideoRTPPort != 0;
        Want("main fVideoSend", isUp, far.m_VideoMain.fVideoSend, text);
        Want("main fVideoRecv", isUp && !side.local.fVideoTxMuted, far.m_VideoMain.fVideoRecv, text);
    }
    if (scope.preso != nullptr) {
        const bool isUp = scope.preso->iVideoRTPPort != 0;
        Want("preso fVideoSend", isUp, far.m_VideoPreso.fVideoSend, text);
        Want("preso fVideoRecv", isUp, far.m_VideoPreso.fVideoRecv, text);
    }
    WantKey(side, far, baseSDP::SRTP_VIDEO, hasKey(scope.main), text);
    WantKey(side, far, baseSDP::SRTP_VIDEO_PRESO, hasKey(scope.preso), text);
}

void WantOffer(const Side& side, const Scope& scope, const RemoteSDP& far, const std::string& text) {
    const LocalSDP& local = side.local;
    const bool hasAudio = !local.listAudioCodecPriority.empty();
    Want("sections", static_cast<std::int64_t>(hasAudio + scope.streams + side.usesBfcp),
         static_cast<std::int64_t>(Read(text).sections.size()), text);
    Want("fIsAudioValid", hasAudio, far.fIsAudioValid, text);
    const std::int32_t codec = hasAudio ? FirstCodec(local) : PAYLOAD_UNKNOWN;
    Want("eAudioCodec", codec, far.eAudioCodec, text);
    const bool canFlow = local.iAudioRTPPort != 0 && codec != PAYLOAD_UNKNOWN;
    Want("fAudioSend", canFlow, far.fAudioSend, text);
    Want("fAudioRecv", canFlow, far.fAudioRecv, text);
    WantKey(side, far, baseSDP::SRTP_AUDIO, hasAudio, text);
    if (side.usesBfcp) {
        Want("iVideoPresoControlPort", local.iVideoPresoControlPort, far.iVideoPresoControlPort, text);
        Want("iBfcpConfid", 15, far.iBfcpConfid, text);
        Want("iBfcpUserid", 15, far.iBfcpUserid, text);
    }
    Want("fBfcpIsServer", 0, far.fBfcpIsServer, text);
    Want("iMaxBandwidth", local.iMaxBandwidth < 0 ? 0 : local.iMaxBandwidth / 1000 * 1000, far.iMaxBandwidth,
         text);
    if (scope.hasVideo) {
        WantOfferedVideo(side, scope, far, text);
    }
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
    reader.ParseTheSDP(text, far);
    Judged("far record", far);
    const Reading reading = Read(text);
    RequireSame("what we write opens its sections", "opened", HeldText(reading), "held",
                HeldText(Judged("far handler", reader)));
    const Scope scope(side);
    if (!scope.isRead) {
        return;
    }
    const LocalSDP& local = side.local;
    if (side.isPlain) {
        RequireSame("our address is written as it is", "ours", local.strDefaultIPAddr, "written",
                    reading.address);
    }
    if (!local.listAudioCodecPriority.empty()) {
        Reached("our audio was read back");
        Want("fIsAudioValid", 1, far.fIsAudioValid, text);
        Want("iAudioRTPPort", local.iAudioRTPPort, far.iAudioRTPPort, text);
        Want("iDTMFPayload", 101, far.iDTMFPayload, text);
        RequireSame("our address reads back", "ours", reading.address, "theirs", far.strAudioIPAddr);
    }
    if (scope.hasVideo && scope.main != nullptr) {
        Reached("our main video was read back");
        WantVideo(*scope.main, local, reading.address, far.m_VideoMain, text);
    }
    if (scope.hasVideo && scope.preso != nullptr) {
        Reached("our presentation was read back");
        WantVideo(*scope.preso, local, reading.address, far.m_VideoPreso, text);
    }
    if (isOffer) {
        Reached("our offer was read back");
        WantOffer(side, scope, far, text);
    }
}

} // namespace fuzz
