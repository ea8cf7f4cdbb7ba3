// Stage: none; the records between reading and writing.
// Input: field values. Output: fresh, copied and wiped records.
// Touches only the record it is called on.
// What they look like as text is in SDPDump.cpp.
// Test: tests/unit/SDPTest.cpp
#include "SDP.h"

#include "SDPWipe.h"

#include <cstring>

VideoParms::VideoParms() {
    Reset();
}

void VideoParms::Reset() {
    iFmtpMaxMbps = 0;
    iFmtpMaxFrameSize = 0;
    iFmtpMaxBitRate = 0;
    eVideoCodec = PAYLOAD_UNKNOWN;
    // [M05] A stream by itself has no role; the description that holds it gives it one.
    eVideoType = VIDEOTYPE_UNKNOWN;
    iVideoRTPPort = 0;
    strVideoLevel.clear();
    strVideoIPAddr.clear();
    iVideoPayload = 0;
    iFmtpPacketizationMode = 0;
    fVideoSend = false;
    fVideoRecv = false;
    fIsVideoValid = false;
}

baseSDP::baseSDP() {
    Reset();
}

baseSDP& baseSDP::operator=(const baseSDP& other) {
    // [M01] The BFCP identity belongs to the side that holds the record, not to the capabilities: it is not
    // carried over.
    eAudioCodec = other.eAudioCodec;
    iAudioRTPPort = other.iAudioRTPPort;
    iVideoPresoControlPort = other.iVideoPresoControlPort;
    iMaxBandwidth = other.iMaxBandwidth;
    m_VideoMain = other.m_VideoMain;
    m_VideoPreso = other.m_VideoPreso;
    // memmove, because a record may be assigned to itself.
    std::memmove(bufSRTPKey, other.bufSRTPKey, sizeof bufSRTPKey);
    std::memmove(bufSRTPSalt, other.bufSRTPSalt, sizeof bufSRTPSalt);
    std::memmove(cryptoAlgo, other.cryptoAlgo, sizeof cryptoAlgo);
    return *this;
}

baseSDP::~baseSDP() {
    // [G17] Key material does not outlive its record in freed memory.
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
    for (auto& eAlgo : cryptoAlgo) {
        eAlgo = Quor::media::rtp::CryptoParams::CRYPTO_NONE;
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

// [G15] Fields that no line of the description sets start at zero, so that a copy never carries what the
// memory held before.
MediaSession::MediaSession()
    : eMedia(MEDIA_UNKNOWN), eContent(VIDEOTYPE_UNKNOWN), iPort(0), fSend(true), fRecv(true), iVideoLabel(0),
      bufSRTPKey(), bufSRTPSalt(), cryptoAlgo(Quor::media::rtp::CryptoParams::CRYPTO_NONE), iCryptoTag(0),
      iBfcpConfid(0), iBfcpUserid(0), iBfcpFloorid(0) {}

MediaSession& MediaSession::operator=(const MediaSession& other) {
    if (this == &other) {
        return *this;
    }
    // A key text that another one replaces would stay behind it, or in the memory that it leaves.
    sdp::Wipe(strBase64Key);
    eMedia = other.eMedia;
    eContent = other.eContent;
    iPort = other.iPort;
    strIPAddr = other.strIPAddr;
    vecRtpMap = other.vecRtpMap;
    fSend = other.fSend;
    fRecv = other.fRecv;
    strFullMLine = other.strFullMLine;
    strVideoLevel = other.strVideoLevel;
    strMaxBandwidth = other.strMaxBandwidth;
    iVideoLabel = other.iVideoLabel;
    std::memcpy(bufSRTPKey, other.bufSRTPKey, sizeof bufSRTPKey);
    std::memcpy(bufSRTPSalt, other.bufSRTPSalt, sizeof bufSRTPSalt);
    cryptoAlgo = other.cryptoAlgo;
    iCryptoTag = other.iCryptoTag;
    strBase64Key = other.strBase64Key;
    iBfcpConfid = other.iBfcpConfid;
    iBfcpUserid = other.iBfcpUserid;
    iBfcpFloorid = other.iBfcpFloorid;
    strFloorctrl = other.strFloorctrl;
    striceufrag = other.striceufrag;
    stricepwd = other.stricepwd;
    vecCandidate = other.vecCandidate;
    return *this;
}

MediaSession::~MediaSession() {
    // [M04] The payload formats stay alive: the handler deletes them before their section, because a copy of
    // a section shares them.
    sdp::Wipe(bufSRTPKey);
    sdp::Wipe(bufSRTPSalt);
    sdp::Wipe(strBase64Key);
}
