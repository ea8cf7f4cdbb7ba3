// Stage: none; the records between reading and writing.
// Input: field values. Output: fresh, copied and wiped records.
// Touches only the record it is called on.
// Their text form is in SDPDump.cpp.
// Test: tests/unit/SDPTest.cpp
#include "SDP.h"

#include "SDPSecrecy.h"

#include <cstring>

// [M05] A stream of its own has no role; the description that contains it sets one.
VideoParms::VideoParms() = default;

void VideoParms::Reset() {
    *this = VideoParms();
}

baseSDP::baseSDP() {
    Reset();
}

baseSDP& baseSDP::operator=(const baseSDP& other) {
    // [M01] The BFCP identity is not copied: it belongs to the side that owns the record.
    eAudioCodec = other.eAudioCodec;
    iAudioRTPPort = other.iAudioRTPPort;
    iVideoPresoControlPort = other.iVideoPresoControlPort;
    iMaxBandwidth = other.iMaxBandwidth;
    m_VideoMain = other.m_VideoMain;
    m_VideoPreso = other.m_VideoPreso;
    // A record may be assigned to itself, which memcpy does not allow.
    std::memmove(bufSRTPKey, other.bufSRTPKey, sizeof bufSRTPKey);
    std::memmove(bufSRTPSalt, other.bufSRTPSalt, sizeof bufSRTPSalt);
    std::memmove(cryptoAlgo, other.cryptoAlgo, sizeof cryptoAlgo);
    return *this;
}

baseSDP::~baseSDP() {
    // [G17] Freed memory never holds key material.
    sdp::Wipe(bufSRTPKey);
    sdp::Wipe(bufSRTPSalt);
}

void baseSDP::Reset() {
    eAudioCodec = PAYLOAD_UNKNOWN;
    iAudioRTPPort = 0;
    iVideoPresoControlPort = 0;
    iBfcpConfid = 0;
    iBfcpUserid = 0;
    fBfcpIsServer = false;
    iMaxBandwidth = 0;
    m_VideoMain.Reset();
    m_VideoMain.eVideoType = VIDEOTYPE_MAIN;
    m_VideoPreso.Reset();
    m_VideoPreso.eVideoType = VIDEOTYPE_PRESO;
    sdp::Wipe(bufSRTPKey);
    sdp::Wipe(bufSRTPSalt);
    for (auto& suite : cryptoAlgo) {
        suite = Quor::media::rtp::CryptoParams::CRYPTO_NONE;
    }
}

void baseSDP::setSRTPSalt(SRTP_M_LINE n, const unsigned char* salt) {
    // [G12] An index that names no stream changes nothing.
    if (n >= SRTP_AUDIO && n < SRTP_MAX) {
        std::memcpy(bufSRTPSalt[n], salt, kSaltLength);
    }
}

void baseSDP::setSRTPKey(SRTP_M_LINE n, const unsigned char* key) {
    if (n >= SRTP_AUDIO && n < SRTP_MAX) {
        std::memcpy(bufSRTPKey[n], key, kKeyLength);
    }
}

LocalSDP::LocalSDP() {
    LocalSDP::Reset();
}

void LocalSDP::Reset() {
    baseSDP::Reset();
    strMyIPAddr.clear();
    strOExtension.clear();
    strDefaultIPAddr.clear();
    iVideoPayloadMode0 = 0;
    iVideoPayloadMode1 = 0;
    fVideoTxMuted = false;
    listAudioCodecPriority.clear();
}

RemoteSDP::RemoteSDP() {
    Reset();
}

void RemoteSDP::Reset() {
    baseSDP::Reset();
    strAudioIPAddr.clear();
    iAudioPayload = 0;
    iDTMFPayload = 0;
    fAudioSend = false;
    fAudioRecv = false;
    fIsAudioValid = false;
}

// [G15] Fields that no line sets have initial values too, so that a copy contains no uninitialised memory.
MediaSession::MediaSession() = default;

MediaSession& MediaSession::operator=(const MediaSession& other) {
    if (this != &other) {
        // A shorter key text would leave bytes of the old one, in its place or in freed memory.
        sdp::Wipe(strBase64Key);
        MediaSessionFields::operator=(other);
    }
    return *this;
}

MediaSession::~MediaSession() {
    // [M04] The payload formats stay alive for copies of the section, which share them; the handler deletes
    // them before the section.
    sdp::Wipe(bufSRTPKey);
    sdp::Wipe(bufSRTPSalt);
    sdp::Wipe(strBase64Key);
}
