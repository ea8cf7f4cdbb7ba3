// Stage: none; the records as texts for people.
// Input: a record. Output: a dump, one field per line.
// Touches nothing.
// Fields that hold keys are left out. Key text in any other field is masked in the dumps of the four records
// of the application; the dump of a section shows its fields exactly, and CommonMediaTrace masks it.
// Test: tests/unit/SDPDumpTest.cpp
#include "SDP.h"

#include "SDPSecrecy.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace {

/// [M03] A line ends after 999 bytes, its line end included, so that one long attribute cannot fill a log.
constexpr std::size_t kLongestLine = 999;

template <typename... Parts>
void AppendLine(std::string& diag, const Parts&... parts) {
    const std::size_t begin = diag.size();
    (diag.append(parts), ...);
    diag.resize(std::min(diag.size(), begin + kLongestLine));
}

/// What a dump shows of a field: a zero byte ends the text, as it would end the trace.
std::string_view Shown(const std::string& text) {
    const std::string_view shown = std::string_view(text).substr(0, kLongestLine);
    return shown.substr(0, shown.find('\0'));
}

std::string_view TrueOrFalse(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

std::string VideoParms::ToDiag() const {
    std::string diag;
    AppendLine(diag, "iFmtpMaxMbps: ", std::to_string(iFmtpMaxMbps), "\n");
    AppendLine(diag, "iFmtpMaxFrameSize: ", std::to_string(iFmtpMaxFrameSize), "\n");
    AppendLine(diag, "iFmtpMaxBitRate: ", std::to_string(iFmtpMaxBitRate), "\n");
    AppendLine(diag, "eVideoCodec: ", std::to_string(eVideoCodec), "\n");
    AppendLine(diag, "eVideoType: ", std::to_string(eVideoType), "\n");
    AppendLine(diag, "iVideoRTPPort: ", std::to_string(iVideoRTPPort), "\n");
    AppendLine(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendLine(diag, "strVideoIPAddr: ", Shown(strVideoIPAddr), "\n");
    AppendLine(diag, "iVideoPayload: ", std::to_string(iVideoPayload), "\n");
    AppendLine(diag, "iFmtpPacketizationMode: ", std::to_string(iFmtpPacketizationMode), "\n");
    AppendLine(diag, "fVideoSend: ", TrueOrFalse(fVideoSend), "\n");
    AppendLine(diag, "fVideoRecv: ", TrueOrFalse(fVideoRecv), "\n");
    AppendLine(diag, "fIsVideoValid: ", TrueOrFalse(fIsVideoValid), "\n");
    return sdp::Masked(std::move(diag));
}

std::string baseSDP::ToDiag() const {
    std::string diag;
    AppendLine(diag, "eAudioCodec: ", std::to_string(eAudioCodec), "\n");
    AppendLine(diag, "iAudioRTPPort: ", std::to_string(iAudioRTPPort), "\n");
    AppendLine(diag, "iVideoPresoControlPort: ", std::to_string(iVideoPresoControlPort), "\n");
    AppendLine(diag, "iBfcpConfid: ", std::to_string(iBfcpConfid), "\n");
    AppendLine(diag, "iBfcpUserid: ", std::to_string(iBfcpUserid), "\n");
    AppendLine(diag, "fBfcpIsServer: ", TrueOrFalse(fBfcpIsServer), "\n");
    AppendLine(diag, "iMaxBandwidth: ", std::to_string(iMaxBandwidth), "\n");
    diag += "m_VideoMain:\n" + m_VideoMain.ToDiag();
    diag += "m_VideoPreso:\n" + m_VideoPreso.ToDiag();
    for (int n = 0; n < SRTP_MAX; ++n) {
        AppendLine(diag, "cryptoAlgo[", std::to_string(n), "]: ", std::to_string(cryptoAlgo[n]), "\n");
    }
    return diag;
}

std::string LocalSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendLine(diag, "strMyIPAddr: ", Shown(strMyIPAddr), "\n");
    AppendLine(diag, "strOExtension: ", Shown(strOExtension), "\n");
    AppendLine(diag, "strDefaultIPAddr: ", Shown(strDefaultIPAddr), "\n");
    AppendLine(diag, "iVideoPayloadMode0: ", std::to_string(iVideoPayloadMode0), "\n");
    AppendLine(diag, "iVideoPayloadMode1: ", std::to_string(iVideoPayloadMode1), "\n");
    AppendLine(diag, "fVideoTxMuted: ", TrueOrFalse(fVideoTxMuted), "\n");
    diag += "listAudioCodecPriority:";
    for (const int codec : listAudioCodecPriority) {
        AppendLine(diag, " ", std::to_string(codec));
    }
    diag += "\n";
    return sdp::Masked(std::move(diag));
}

std::string RemoteSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendLine(diag, "strAudioIPAddr: ", Shown(strAudioIPAddr), "\n");
    AppendLine(diag, "iAudioPayload: ", std::to_string(iAudioPayload), "\n");
    AppendLine(diag, "iDTMFPayload: ", std::to_string(iDTMFPayload), "\n");
    AppendLine(diag, "fAudioSend: ", TrueOrFalse(fAudioSend), "\n");
    AppendLine(diag, "fAudioRecv: ", TrueOrFalse(fAudioRecv), "\n");
    AppendLine(diag, "fIsAudioValid: ", TrueOrFalse(fIsAudioValid), "\n");
    return sdp::Masked(std::move(diag));
}

std::string MediaSession::ToDiag() const {
    std::string diag;
    constexpr std::size_t usualLength = 400;
    diag.reserve(usualLength);
    // [M02] The dump begins with the content line: a line for the media kind before it would move every line
    // for programs that read traces by position.
    AppendLine(diag, "eContent: ", std::to_string(eContent), "\n");
    AppendLine(diag, "iPort: ", std::to_string(iPort), "\n");
    AppendLine(diag, "strIPAddr: ", Shown(strIPAddr), "\n");
    for (std::size_t k = 0; k < vecRtpMap.size(); ++k) {
        const RtpMap& rm = *vecRtpMap[k];
        AppendLine(diag, "\tRtpMap[", std::to_string(k), "]: Payload-", Shown(rm.strPayload),
                   " EncodingName-", Shown(rm.strEncodingName), "\n");
        for (const std::string& parm : rm.vecFmtpParms) {
            AppendLine(diag, "\t\tFmtp Parm-", Shown(parm), "\n");
        }
    }
    AppendLine(diag, "fRecv: ", TrueOrFalse(fRecv), "\n");
    AppendLine(diag, "fSend: ", TrueOrFalse(fSend), "\n");
    AppendLine(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendLine(diag, "strMaxBandwidth: ", Shown(strMaxBandwidth), "\n");
    AppendLine(diag, "iBfcpConfid: ", std::to_string(iBfcpConfid), "\n");
    AppendLine(diag, "iBfcpUserid: ", std::to_string(iBfcpUserid), "\n");
    AppendLine(diag, "strFloorctrl: ", Shown(strFloorctrl), "\n");
    diag += "\n\n";
    return diag;
}
