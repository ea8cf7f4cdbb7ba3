// Stage: none; the records as texts for people.
// Input: a record. Output: a dump, one field per line.
// Touches nothing.
// Fields that hold keys are left out. Key text in any other field is masked in the dumps of the four records
// of the application; the dump of a section shows its fields exactly, and CommonMediaTrace masks it.
// Test: tests/unit/SDPDumpTest.cpp
#include "SDP.h"

#include "SDPMask.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace {

/// [M03] A line of a dump ends after 999 bytes, its line end included, so that one long attribute cannot fill
/// a log.
constexpr std::size_t kLongestLine = 999;

class Line {
public:
    void Append(std::string_view part) {
        const std::size_t shown = std::min(part.size(), kLongestLine - m_length);
        std::memcpy(m_bytes + m_length, part.data(), shown);
        m_length += shown;
    }
    operator std::string_view() const { return {m_bytes, m_length}; }

private:
    char m_bytes[kLongestLine];
    std::size_t m_length = 0;
};

template <typename... Parts>
void AppendLine(std::string& diag, const Parts&... parts) {
    Line line;
    (line.Append(parts), ...);
    diag.append(std::string_view(line));
}

/// What a dump shows of a field: a zero byte ends the text, as it would end the trace.
std::string_view Shown(const std::string& text) {
    const std::string_view shown = std::string_view(text).substr(0, kLongestLine);
    return shown.substr(0, shown.find('\0'));
}

std::string_view TrueOrFalse(bool flag) {
    return flag ? "true" : "false";
}

/// A number as text; the text is valid as long as the object.
class Decimal {
public:
    explicit Decimal(std::int64_t number)
        : m_length(static_cast<std::size_t>(std::to_chars(m_digits, m_digits + sizeof m_digits, number).ptr -
                                            m_digits)) {}
    operator std::string_view() const { return {m_digits, m_length}; }

private:
    char m_digits[std::numeric_limits<std::int64_t>::digits10 + 2];
    std::size_t m_length;
};

} // namespace

std::string VideoParms::ToDiag() const {
    std::string diag;
    AppendLine(diag, "iFmtpMaxMbps: ", Decimal(iFmtpMaxMbps), "\n");
    AppendLine(diag, "iFmtpMaxFrameSize: ", Decimal(iFmtpMaxFrameSize), "\n");
    AppendLine(diag, "iFmtpMaxBitRate: ", Decimal(iFmtpMaxBitRate), "\n");
    AppendLine(diag, "eVideoCodec: ", Decimal(eVideoCodec), "\n");
    AppendLine(diag, "eVideoType: ", Decimal(eVideoType), "\n");
    AppendLine(diag, "iVideoRTPPort: ", Decimal(iVideoRTPPort), "\n");
    AppendLine(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendLine(diag, "strVideoIPAddr: ", Shown(strVideoIPAddr), "\n");
    AppendLine(diag, "iVideoPayload: ", Decimal(iVideoPayload), "\n");
    AppendLine(diag, "iFmtpPacketizationMode: ", Decimal(iFmtpPacketizationMode), "\n");
    AppendLine(diag, "fVideoSend: ", TrueOrFalse(fVideoSend), "\n");
    AppendLine(diag, "fVideoRecv: ", TrueOrFalse(fVideoRecv), "\n");
    AppendLine(diag, "fIsVideoValid: ", TrueOrFalse(fIsVideoValid), "\n");
    return sdp::Masked(std::move(diag));
}

std::string baseSDP::ToDiag() const {
    std::string diag;
    AppendLine(diag, "eAudioCodec: ", Decimal(eAudioCodec), "\n");
    AppendLine(diag, "iAudioRTPPort: ", Decimal(iAudioRTPPort), "\n");
    AppendLine(diag, "iVideoPresoControlPort: ", Decimal(iVideoPresoControlPort), "\n");
    AppendLine(diag, "iBfcpConfid: ", Decimal(iBfcpConfid), "\n");
    AppendLine(diag, "iBfcpUserid: ", Decimal(iBfcpUserid), "\n");
    AppendLine(diag, "fBfcpIsServer: ", TrueOrFalse(fBfcpIsServer), "\n");
    AppendLine(diag, "iMaxBandwidth: ", Decimal(iMaxBandwidth), "\n");
    diag += "m_VideoMain:\n" + m_VideoMain.ToDiag();
    diag += "m_VideoPreso:\n" + m_VideoPreso.ToDiag();
    for (int n = 0; n < SRTP_MAX; ++n) {
        AppendLine(diag, "cryptoAlgo[", Decimal(n), "]: ", Decimal(cryptoAlgo[n]), "\n");
    }
    return diag;
}

std::string LocalSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendLine(diag, "strMyIPAddr: ", Shown(strMyIPAddr), "\n");
    AppendLine(diag, "strOExtension: ", Shown(strOExtension), "\n");
    AppendLine(diag, "strDefaultIPAddr: ", Shown(strDefaultIPAddr), "\n");
    AppendLine(diag, "iVideoPayloadMode0: ", Decimal(iVideoPayloadMode0), "\n");
    AppendLine(diag, "iVideoPayloadMode1: ", Decimal(iVideoPayloadMode1), "\n");
    AppendLine(diag, "fVideoTxMuted: ", TrueOrFalse(fVideoTxMuted), "\n");
    diag += "listAudioCodecPriority:";
    for (const int codec : listAudioCodecPriority) {
        AppendLine(diag, " ", Decimal(codec));
    }
    diag += "\n";
    return sdp::Masked(std::move(diag));
}

std::string RemoteSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendLine(diag, "strAudioIPAddr: ", Shown(strAudioIPAddr), "\n");
    AppendLine(diag, "iAudioPayload: ", Decimal(iAudioPayload), "\n");
    AppendLine(diag, "iDTMFPayload: ", Decimal(iDTMFPayload), "\n");
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
    AppendLine(diag, "eContent: ", Decimal(eContent), "\n");
    AppendLine(diag, "iPort: ", Decimal(iPort), "\n");
    AppendLine(diag, "strIPAddr: ", Shown(strIPAddr), "\n");
    for (std::size_t k = 0; k < vecRtpMap.size(); ++k) {
        const RtpMap& rm = *vecRtpMap[k];
        AppendLine(diag, "\tRtpMap[", Decimal(static_cast<std::int64_t>(k)), "]: Payload-",
                   Shown(rm.strPayload), " EncodingName-", Shown(rm.strEncodingName), "\n");
        for (const std::string& parm : rm.vecFmtpParms) {
            AppendLine(diag, "\t\tFmtp Parm-", Shown(parm), "\n");
        }
    }
    AppendLine(diag, "fRecv: ", TrueOrFalse(fRecv), "\n");
    AppendLine(diag, "fSend: ", TrueOrFalse(fSend), "\n");
    AppendLine(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendLine(diag, "strMaxBandwidth: ", Shown(strMaxBandwidth), "\n");
    AppendLine(diag, "iBfcpConfid: ", Decimal(iBfcpConfid), "\n");
    AppendLine(diag, "iBfcpUserid: ", Decimal(iBfcpUserid), "\n");
    AppendLine(diag, "strFloorctrl: ", Shown(strFloorctrl), "\n");
    diag += "\n\n";
    return diag;
}
