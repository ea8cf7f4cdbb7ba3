// Stage: none; the records between reading and writing.
// Input: field values. Output: fresh, copied and wiped records, and dumps of them for people.
// Touches only the record it is called on.
// Dumps never hold keys: they end up in logs and from there in public reports.
// Test: tests/unit/SDPTest.cpp
#include "SDP.h"

#include "SDPText.h"
#include "SDPWipe.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

/// [M03] A piece of a dump ends after 999 bytes, its line end included, so that one long attribute cannot
/// flood a log.
template <typename... Values>
void AppendPiece(std::string& diag, const char* format, Values... values) {
    char piece[1000];
    const int length = std::snprintf(piece, sizeof piece, format, values...);
    diag.append(piece, std::min(static_cast<std::size_t>(std::max(length, 0)), sizeof piece - 1));
}

const char* TrueOrFalse(bool fFlag) {
    return fFlag ? "true" : "false";
}

/// Whether the text ends in "inline:", in whatever case (RFC 4568, 9.2; RFC 5234, 2.3).
bool EndsInKeyMethod(std::string_view text) {
    constexpr std::string_view method = "inline:";
    if (text.size() < method.size()) {
        return false;
    }
    const std::string_view end = text.substr(text.size() - method.size());
    return std::equal(end.begin(), end.end(), method.begin(),
                      [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b); });
}

/// [G14] A far end that ends lines in LF alone can carry a crypto line into any field; the key text of such
/// a line is masked before it reaches a log.
std::string Masked(const std::string& diag) {
    std::string masked;
    std::size_t shown = 0;
    for (std::size_t colon = diag.find(':'); colon != std::string::npos; colon = diag.find(':', colon + 1)) {
        if (colon < shown || !EndsInKeyMethod(std::string_view(diag).substr(0, colon + 1))) {
            continue;
        }
        masked.append(diag, shown, colon + 1 - shown).append("***");
        shown = colon + 1 + sdp::FindBlank(std::string_view(diag).substr(colon + 1));
    }
    return masked.append(diag, shown);
}

} // namespace

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

std::string VideoParms::ToDiag() const {
    std::string diag;
    AppendPiece(diag, "iFmtpMaxMbps: %d\n", iFmtpMaxMbps);
    AppendPiece(diag, "iFmtpMaxFrameSize: %d\n", iFmtpMaxFrameSize);
    AppendPiece(diag, "iFmtpMaxBitRate: %d\n", iFmtpMaxBitRate);
    AppendPiece(diag, "eVideoCodec: %d\n", eVideoCodec);
    AppendPiece(diag, "eVideoType: %d\n", eVideoType);
    AppendPiece(diag, "iVideoRTPPort: %d\n", iVideoRTPPort);
    AppendPiece(diag, "strVideoLevel: %s\n", strVideoLevel.c_str());
    AppendPiece(diag, "strVideoIPAddr: %s\n", strVideoIPAddr.c_str());
    AppendPiece(diag, "iVideoPayload: %d\n", iVideoPayload);
    AppendPiece(diag, "iFmtpPacketizationMode: %d\n", iFmtpPacketizationMode);
    AppendPiece(diag, "fVideoSend: %s\n", TrueOrFalse(fVideoSend));
    AppendPiece(diag, "fVideoRecv: %s\n", TrueOrFalse(fVideoRecv));
    AppendPiece(diag, "fIsVideoValid: %s\n", TrueOrFalse(fIsVideoValid));
    return Masked(diag);
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

std::string baseSDP::ToDiag() const {
    std::string diag;
    AppendPiece(diag, "eAudioCodec: %d\n", eAudioCodec);
    AppendPiece(diag, "iAudioRTPPort: %d\n", iAudioRTPPort);
    AppendPiece(diag, "iVideoPresoControlPort: %d\n", iVideoPresoControlPort);
    AppendPiece(diag, "iBfcpConfid: %d\n", iBfcpConfid);
    AppendPiece(diag, "iBfcpUserid: %d\n", iBfcpUserid);
    AppendPiece(diag, "fBfcpIsServer: %s\n", TrueOrFalse(fBfcpIsServer));
    AppendPiece(diag, "iMaxBandwidth: %d\n", iMaxBandwidth);
    diag += "m_VideoMain:\n" + m_VideoMain.ToDiag();
    diag += "m_VideoPreso:\n" + m_VideoPreso.ToDiag();
    for (int n = 0; n < SRTP_MAX; ++n) {
        AppendPiece(diag, "cryptoAlgo[%d]: %d\n", n, cryptoAlgo[n]);
    }
    return diag;
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

LocalSDP& LocalSDP::operator=(const LocalSDP& other) {
    baseSDP::operator=(other);
    strMyIPAddr = other.strMyIPAddr;
    strOExtension = other.strOExtension;
    strDefaultIPAddr = other.strDefaultIPAddr;
    iVideoPayloadMode0 = other.iVideoPayloadMode0;
    iVideoPayloadMode1 = other.iVideoPayloadMode1;
    fVideoTxMuted = other.fVideoTxMuted;
    listAudioCodecPriority = other.listAudioCodecPriority;
    return *this;
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

std::string LocalSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendPiece(diag, "strMyIPAddr: %s\n", strMyIPAddr.c_str());
    AppendPiece(diag, "strOExtension: %s\n", strOExtension.c_str());
    AppendPiece(diag, "strDefaultIPAddr: %s\n", strDefaultIPAddr.c_str());
    AppendPiece(diag, "iVideoPayloadMode0: %d\n", iVideoPayloadMode0);
    AppendPiece(diag, "iVideoPayloadMode1: %d\n", iVideoPayloadMode1);
    AppendPiece(diag, "fVideoTxMuted: %s\n", TrueOrFalse(fVideoTxMuted));
    diag += "listAudioCodecPriority:";
    for (const int eCodec : listAudioCodecPriority) {
        AppendPiece(diag, " %d", eCodec);
    }
    diag += "\n";
    return Masked(diag);
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

std::string RemoteSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendPiece(diag, "strAudioIPAddr: %s\n", strAudioIPAddr.c_str());
    AppendPiece(diag, "iAudioPayload: %d\n", iAudioPayload);
    AppendPiece(diag, "iDTMFPayload: %d\n", iDTMFPayload);
    AppendPiece(diag, "fAudioSend: %s\n", TrueOrFalse(fAudioSend));
    AppendPiece(diag, "fAudioRecv: %s\n", TrueOrFalse(fAudioRecv));
    AppendPiece(diag, "fIsAudioValid: %s\n", TrueOrFalse(fIsAudioValid));
    return Masked(diag);
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

std::string MediaSession::ToDiag() const {
    std::string diag;
    // [M02] The dump begins with the content line. The media kind is left out, so that traces of all
    // versions can be compared line by line.
    AppendPiece(diag, "eContent: %d\n", eContent);
    AppendPiece(diag, "iPort: %d\n", iPort);
    AppendPiece(diag, "strIPAddr: %s\n", strIPAddr.c_str());
    for (std::size_t k = 0; k < vecRtpMap.size(); ++k) {
        const RtpMap& rm = *vecRtpMap[k];
        AppendPiece(diag, "\tRtpMap[%ld]: Payload-%s EncodingName-%s\n", static_cast<long>(k),
                    rm.strPayload.c_str(), rm.strEncodingName.c_str());
        for (const std::string& parm : rm.vecFmtpParms) {
            AppendPiece(diag, "\t\tFmtp Parm-%s\n", parm.c_str());
        }
    }
    AppendPiece(diag, "fRecv: %s\n", TrueOrFalse(fRecv));
    AppendPiece(diag, "fSend: %s\n", TrueOrFalse(fSend));
    AppendPiece(diag, "strVideoLevel: %s\n", strVideoLevel.c_str());
    AppendPiece(diag, "strMaxBandwidth: %s\n", strMaxBandwidth.c_str());
    AppendPiece(diag, "iBfcpConfid: %d\n", iBfcpConfid);
    AppendPiece(diag, "iBfcpUserid: %d\n", iBfcpUserid);
    AppendPiece(diag, "strFloorctrl: %s\n", strFloorctrl.c_str());
    diag += "\n\n";
    return Masked(diag);
}
