// Stage: none; the records as texts for people.
// Input: a record. Output: a dump, one field a line.
// Touches nothing.
// Dumps end up in logs and from there in public reports: fields that hold keys are left out, and key text
// that strayed into another field is masked where it stands directly behind "inline:".
// Test: tests/unit/SDPDumpTest.cpp
#include "SDP.h"

#include "SDPSearch.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace {

/// [M03] A piece of a dump ends after 999 bytes, its line end included, so that one long attribute cannot
/// flood a log.
constexpr std::size_t kLongestPiece = 999;

class Piece {
public:
    void Append(std::string_view part) {
        const std::size_t shown = std::min(part.size(), kLongestPiece - m_length);
        std::memcpy(m_bytes + m_length, part.data(), shown);
        m_length += shown;
    }
    operator std::string_view() const { return {m_bytes, m_length}; }

private:
    char m_bytes[kLongestPiece];
    std::size_t m_length = 0;
};

template <typename... Parts>
void AppendPiece(std::string& diag, const Parts&... parts) {
    Piece piece;
    (piece.Append(parts), ...);
    diag.append(std::string_view(piece));
}

/// A zero byte ends what is shown of a text, because it would end the trace.
std::string_view Shown(const std::string& text) {
    const std::string_view piece = std::string_view(text).substr(0, kLongestPiece);
    return piece.substr(0, piece.find('\0'));
}

std::string_view TrueOrFalse(bool fFlag) {
    return fFlag ? "true" : "false";
}

/// A number as text. It lives as long as the expression that holds it.
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

/// [G14] A far end that ends lines in LF alone can carry a crypto line into any field; the key text of such
/// a line is masked before it reaches a log. The key method counts in any case (RFC 5234, 2.3).
std::string Masked(std::string diag) {
    constexpr std::string_view method = "inline";
    constexpr char lower = 0x20; // the bit that makes a letter small
    const auto same = [](char a, char b) { return a == (b | lower); };
    std::string masked;
    std::size_t shown = 0;
    for (std::size_t colon = sdp::FindByte(diag, ':'); colon < diag.size();
         colon = sdp::FindByte(diag, ':', std::max(colon + 1, shown))) {
        if (colon >= shown + method.size() && same(method.back(), diag[colon - 1]) &&
            std::equal(method.begin(), method.end(), &diag[colon - method.size()], same)) {
            masked.append(diag, shown, colon + 1 - shown).append("***");
            shown = sdp::FindBlank(diag, colon + 1);
        }
    }
    return shown == 0 ? std::move(diag) : masked.append(diag, shown);
}

} // namespace

std::string VideoParms::ToDiag() const {
    std::string diag;
    AppendPiece(diag, "iFmtpMaxMbps: ", Decimal(iFmtpMaxMbps), "\n");
    AppendPiece(diag, "iFmtpMaxFrameSize: ", Decimal(iFmtpMaxFrameSize), "\n");
    AppendPiece(diag, "iFmtpMaxBitRate: ", Decimal(iFmtpMaxBitRate), "\n");
    AppendPiece(diag, "eVideoCodec: ", Decimal(eVideoCodec), "\n");
    AppendPiece(diag, "eVideoType: ", Decimal(eVideoType), "\n");
    AppendPiece(diag, "iVideoRTPPort: ", Decimal(iVideoRTPPort), "\n");
    AppendPiece(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendPiece(diag, "strVideoIPAddr: ", Shown(strVideoIPAddr), "\n");
    AppendPiece(diag, "iVideoPayload: ", Decimal(iVideoPayload), "\n");
    AppendPiece(diag, "iFmtpPacketizationMode: ", Decimal(iFmtpPacketizationMode), "\n");
    AppendPiece(diag, "fVideoSend: ", TrueOrFalse(fVideoSend), "\n");
    AppendPiece(diag, "fVideoRecv: ", TrueOrFalse(fVideoRecv), "\n");
    AppendPiece(diag, "fIsVideoValid: ", TrueOrFalse(fIsVideoValid), "\n");
    return Masked(std::move(diag));
}

std::string baseSDP::ToDiag() const {
    std::string diag;
    AppendPiece(diag, "eAudioCodec: ", Decimal(eAudioCodec), "\n");
    AppendPiece(diag, "iAudioRTPPort: ", Decimal(iAudioRTPPort), "\n");
    AppendPiece(diag, "iVideoPresoControlPort: ", Decimal(iVideoPresoControlPort), "\n");
    AppendPiece(diag, "iBfcpConfid: ", Decimal(iBfcpConfid), "\n");
    AppendPiece(diag, "iBfcpUserid: ", Decimal(iBfcpUserid), "\n");
    AppendPiece(diag, "fBfcpIsServer: ", TrueOrFalse(fBfcpIsServer), "\n");
    AppendPiece(diag, "iMaxBandwidth: ", Decimal(iMaxBandwidth), "\n");
    diag += "m_VideoMain:\n" + m_VideoMain.ToDiag();
    diag += "m_VideoPreso:\n" + m_VideoPreso.ToDiag();
    for (int n = 0; n < SRTP_MAX; ++n) {
        AppendPiece(diag, "cryptoAlgo[", Decimal(n), "]: ", Decimal(cryptoAlgo[n]), "\n");
    }
    return diag;
}

std::string LocalSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendPiece(diag, "strMyIPAddr: ", Shown(strMyIPAddr), "\n");
    AppendPiece(diag, "strOExtension: ", Shown(strOExtension), "\n");
    AppendPiece(diag, "strDefaultIPAddr: ", Shown(strDefaultIPAddr), "\n");
    AppendPiece(diag, "iVideoPayloadMode0: ", Decimal(iVideoPayloadMode0), "\n");
    AppendPiece(diag, "iVideoPayloadMode1: ", Decimal(iVideoPayloadMode1), "\n");
    AppendPiece(diag, "fVideoTxMuted: ", TrueOrFalse(fVideoTxMuted), "\n");
    diag += "listAudioCodecPriority:";
    for (const int eCodec : listAudioCodecPriority) {
        AppendPiece(diag, " ", Decimal(eCodec));
    }
    diag += "\n";
    return Masked(std::move(diag));
}

std::string RemoteSDP::ToDiag() const {
    std::string diag = baseSDP::ToDiag();
    AppendPiece(diag, "strAudioIPAddr: ", Shown(strAudioIPAddr), "\n");
    AppendPiece(diag, "iAudioPayload: ", Decimal(iAudioPayload), "\n");
    AppendPiece(diag, "iDTMFPayload: ", Decimal(iDTMFPayload), "\n");
    AppendPiece(diag, "fAudioSend: ", TrueOrFalse(fAudioSend), "\n");
    AppendPiece(diag, "fAudioRecv: ", TrueOrFalse(fAudioRecv), "\n");
    AppendPiece(diag, "fIsAudioValid: ", TrueOrFalse(fIsAudioValid), "\n");
    return Masked(std::move(diag));
}

std::string MediaSession::ToDiag() const {
    std::string diag;
    constexpr std::size_t usual = 400;
    diag.reserve(usual);
    // [M02] The dump begins with the content line: a line for the media kind in front of it would shift what
    // reads traces by position.
    AppendPiece(diag, "eContent: ", Decimal(eContent), "\n");
    AppendPiece(diag, "iPort: ", Decimal(iPort), "\n");
    AppendPiece(diag, "strIPAddr: ", Shown(strIPAddr), "\n");
    for (std::size_t k = 0; k < vecRtpMap.size(); ++k) {
        const RtpMap& rm = *vecRtpMap[k];
        AppendPiece(diag, "\tRtpMap[", Decimal(static_cast<std::int64_t>(k)), "]: Payload-",
                    Shown(rm.strPayload), " EncodingName-", Shown(rm.strEncodingName), "\n");
        for (const std::string& parm : rm.vecFmtpParms) {
            AppendPiece(diag, "\t\tFmtp Parm-", Shown(parm), "\n");
        }
    }
    AppendPiece(diag, "fRecv: ", TrueOrFalse(fRecv), "\n");
    AppendPiece(diag, "fSend: ", TrueOrFalse(fSend), "\n");
    AppendPiece(diag, "strVideoLevel: ", Shown(strVideoLevel), "\n");
    AppendPiece(diag, "strMaxBandwidth: ", Shown(strMaxBandwidth), "\n");
    AppendPiece(diag, "iBfcpConfid: ", Decimal(iBfcpConfid), "\n");
    AppendPiece(diag, "iBfcpUserid: ", Decimal(iBfcpUserid), "\n");
    AppendPiece(diag, "strFloorctrl: ", Shown(strFloorctrl), "\n");
    diag += "\n\n";
    return Masked(std::move(diag));
}
