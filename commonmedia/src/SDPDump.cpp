// Stage: none; the records as texts for people.
// Input: a record. Output: a dump, one field a line.
// Touches nothing.
// Dumps end up in logs and from there in public reports: fields that hold keys are left out, and key text
// that strayed into another field is masked.
// Test: tests/unit/SDPDumpTest.cpp
#include "SDP.h"

#include "SDPText.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
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

/// [G14] A far end that ends lines in LF alone can carry a crypto line into any field; the key text of such
/// a line is masked before it reaches a log. The key method counts in any case (RFC 5234, 2.3).
std::string Masked(const std::string& diag) {
    constexpr std::string_view method = "inline:";
    const auto same = [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a - 'A' + 'a' == b); };
    std::string masked;
    auto shown = diag.begin();
    while (true) {
        const auto found = std::search(shown, diag.end(), method.begin(), method.end(), same);
        if (found == diag.end()) {
            return masked.append(shown, found);
        }
        const auto key = found + method.size();
        masked.append(shown, key).append("***");
        shown = std::find_if(key, diag.end(), sdp::IsBlank);
    }
}

} // namespace

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

std::string MediaSession::ToDiag() const {
    std::string diag;
    // [M02] The dump begins with the content line: a line for the media kind in front of it would shift what
    // reads traces by position.
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
