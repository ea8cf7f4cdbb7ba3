// Capabilities of a typical endpoint and its keys.
//
// The near endpoint is 192.0.2.1, its peer 192.0.2.2. Keys are readable text, so a record with the wrong row
// is easy to see; the base64 texts below are written in the descriptions.
#pragma once

#include <SDP.h>

#include <cstring>
#include <string>

namespace support {

using CRYPTO_PROFILE = Quor::media::rtp::CryptoParams::CRYPTO_PROFILE;
inline constexpr CRYPTO_PROFILE kSuiteNone = Quor::media::rtp::CryptoParams::CRYPTO_NONE;
inline constexpr CRYPTO_PROFILE kSuite32 = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
inline constexpr CRYPTO_PROFILE kSuite80 = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80;
inline constexpr CRYPTO_PROFILE kSuite256 = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80;
inline constexpr CRYPTO_PROFILE kSuiteGcm128 = Quor::media::rtp::CryptoParams::CRYPTO_AEAD_AES_GCM_128;
inline constexpr CRYPTO_PROFILE kSuiteGcm256 = Quor::media::rtp::CryptoParams::CRYPTO_AEAD_AES_GCM_256;

inline constexpr PayloadType_t kNoCodec = PayloadType_t(0);
inline constexpr PayloadType_t kAllAudio =
    PayloadType_t(PAYLOAD_G711U | PAYLOAD_G729 | PAYLOAD_G7221 | PAYLOAD_G722);
inline constexpr PayloadType_t kBothModes = PayloadType_t(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);

// The inline texts of the keys that GiveKeys("near") and GiveKeys("away") write:
//     near audio   bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0   "near audio key 1" + "near audiosalt"
//     near video   bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0   "near video key 1" + "near videosalt"
//     near slide   bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0   "near slide key 1" + "near slidesalt"
//     away audio   YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0   "away audio key 1" + "away audiosalt"
//     away video   YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0   "away video key 1" + "away videosalt"
//     away slide   YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0   "away slide key 1" + "away slidesalt"

inline void WriteKey(unsigned char* key, unsigned char* salt, const std::string& who,
                     const std::string& stream) {
    std::memcpy(key, (who + " " + stream + " key 1").data(), baseSDP::kKeyLength);
    std::memcpy(salt, (who + " " + stream + "salt").data(), baseSDP::kSaltLength);
}

/// Fills all three key rows; `who` is "near" or "away".
inline void GiveKeys(LocalSDP& local, const std::string& who, CRYPTO_PROFILE suite) {
    const char* const streams[baseSDP::SRTP_MAX] = {"audio", "video", "slide"};
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        WriteKey(local.bufSRTPKey[n], local.bufSRTPSalt[n], who, streams[n]);
        local.cryptoAlgo[n] = suite;
    }
}

/// Four audio codecs, no video, no bandwidth limit.
inline LocalSDP AudioLocal() {
    LocalSDP local;
    local.strDefaultIPAddr = "192.0.2.1";
    local.eAudioCodec = kAllAudio;
    local.listAudioCodecPriority = {PAYLOAD_G7221, PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729};
    local.iAudioRTPPort = 16384;
    local.m_VideoMain.eVideoCodec = kNoCodec;
    local.m_VideoPreso.eVideoCodec = kNoCodec;
    local.iVideoPayloadMode1 = 97;
    local.iVideoPayloadMode0 = 126;
    return local;
}

/// AudioLocal, a camera in both packetization modes, and a limit of 1 Mbit/s.
inline LocalSDP VideoLocal() {
    LocalSDP local = AudioLocal();
    local.iMaxBandwidth = 1000000;
    local.m_VideoMain.eVideoCodec = kBothModes;
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "3.1";
    local.m_VideoMain.iFmtpMaxMbps = 108000;
    local.m_VideoMain.iFmtpMaxFrameSize = 3600;
    return local;
}

/// VideoLocal and a shared screen with its floor control channel. SetBfcpSupport switches it on.
inline LocalSDP PresentationLocal() {
    LocalSDP local = VideoLocal();
    local.m_VideoPreso.eVideoCodec = kBothModes;
    local.m_VideoPreso.iVideoRTPPort = 16388;
    local.m_VideoPreso.strVideoLevel = "4";
    local.m_VideoPreso.iFmtpMaxBitRate = 1500;
    local.iVideoPresoControlPort = 16390;
    return local;
}

/// The same endpoint at 192.0.2.2 with ports 4000 higher and payload numbers of its own.
inline LocalSDP Away(LocalSDP local) {
    local.strDefaultIPAddr = "192.0.2.2";
    local.iAudioRTPPort += 4000;
    local.m_VideoMain.iVideoRTPPort += 4000;
    local.m_VideoPreso.iVideoRTPPort += 4000;
    local.iVideoPresoControlPort += 4000;
    local.iVideoPayloadMode1 = 109;
    local.iVideoPayloadMode0 = 110;
    return local;
}

} // namespace support
