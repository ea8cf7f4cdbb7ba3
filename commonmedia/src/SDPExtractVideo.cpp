// Stage: extract, one video section to one stream, and H.264 levels in both directions (RFC 6184, 8.1).
// Input: a section and its formats. Output: VideoParms, the stream's key rows, level names and digits.
// Touches the record only.
// Nothing is reset on the way: what a format does not name keeps the value it had.
// Test: tests/unit/SDPExtractVideoTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

#include <cstring>

namespace {

struct H264Key {
    std::string_view strName;
    std::int32_t VideoParms::*field; ///< null for the level, which is no number
};

constexpr H264Key kH264Keys[] = {
    {"profile-level-id", nullptr},                               // profile-level-id=42801f
    {"max-mbps", &VideoParms::iFmtpMaxMbps},                     // max-mbps=108000
    {"max-fs", &VideoParms::iFmtpMaxFrameSize},                  // max-fs=3600
    {"max-br", &VideoParms::iFmtpMaxBitRate},                    // max-br=2000
    {"packetization-mode", &VideoParms::iFmtpPacketizationMode}, // packetization-mode=1
};

/// The key that a parameter's name contains; null for none. The name is searched, not compared, because the
/// blank that "; " leaves stands in front of it. No key contains another, so a name that is a key contains no
/// other one and needs no search.
const H264Key* FindKey(std::string_view name) {
    if (const H264Key* const key = sdp::FindNamed<kH264Keys>(sdp::Behind(name, sdp::FindNoBlank(name)))) {
        return key;
    }
    for (const H264Key& key : kH264Keys) {
        if (sdp::Contains(name, key.strName)) {
            return &key;
        }
    }
    return nullptr;
}

/// Whether a text is what a table's slot holds. A slot ends where its zeros begin, so its length can be asked
/// for without counting: most rows differ there already, or in their first character.
template <std::size_t N>
bool IsInSlot(const std::string& text, const char (&slot)[N]) {
    return !text.empty() && text[0] == slot[0] && text.size() < N && slot[text.size()] == '\0' &&
           slot[text.size() - 1] != '\0' && std::memcmp(text.data(), slot, text.size()) == 0;
}

/// Characters of profile-level-id in front of the level: profile and constraint bytes, not examined.
constexpr std::size_t kProfileLength = 4;

} // namespace

void SDPHandler::GetVideoRTPData(RemoteSDP& ParsedSDP, VideoParms& cVideoParms,
                                 const MediaSession* ms) const {
    VideoParms& rs = cVideoParms;
    const SRTP_M_LINE eSrtp =
        ms->eContent == VIDEOTYPE_PRESO ? baseSDP::SRTP_VIDEO_PRESO : baseSDP::SRTP_VIDEO;
    rs.eVideoCodec = PAYLOAD_H264;
    ParsedSDP.setSRTPKey(eSrtp, ms->bufSRTPKey);
    ParsedSDP.setSRTPSalt(eSrtp, ms->bufSRTPSalt);
    ParsedSDP.cryptoAlgo[eSrtp] = ms->cryptoAlgo;
    rs.iVideoRTPPort = ms->iPort;
    rs.fVideoRecv = ms->iPort != 0 && ms->fRecv;
    rs.fVideoSend = ms->iPort != 0 && ms->fSend;
    rs.strVideoIPAddr = ms->strIPAddr.empty() ? strSessionIPAddr : ms->strIPAddr;
    for (const RtpMap* const rm : ms->vecRtpMap) {
        // [X03] The clock rate is compared short by its last digit. "H264/90000" contains it, and "H264/9000"
        // passes as well: turning it away would cost the stream for a typing error of the far end.
        if (sdp::Find(rm->strEncodingName, "H264/9000") == std::string_view::npos) {
            continue;
        }
        rs.iVideoPayload = sdp::Number(rm->strPayload);
        LoadH264Parms(rs, rm);
        // [X04] The first format with a packetization mode ends the search. Without one every format is
        // loaded over the one before it, and the last payload stands.
        if (rs.iFmtpPacketizationMode != 0) {
            break;
        }
    }
    rs.eVideoType = ms->eContent;
    rs.fIsVideoValid = true;
}

void SDPHandler::LoadH264Parms(VideoParms& rs, const RtpMap* rm) const {
    for (const std::string& parm : rm->vecFmtpParms) {
        // [G08] A parameter without "=", an empty one included, has no value and is passed over.
        const std::string_view text(parm);
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const H264Key* const key = FindKey(std::string_view(text.data(), equals));
        if (key == nullptr) {
            continue;
        }
        // A value ends at another "=".
        const std::string_view valueAndMore = sdp::Behind(text, equals + 1);
        if (key->field != nullptr) {
            const std::string_view digits = sdp::Digits(valueAndMore);
            const std::string_view more = sdp::Behind(valueAndMore, digits.size());
            if (!digits.empty() && (more.empty() || more.front() == '=')) {
                rs.*key->field = sdp::Number(digits);
            }
        } else if (sdp::FindByte(valueAndMore, '=') >= kProfileLength) {
            rs.strVideoLevel = ConvertVideoLevel(sdp::Behind(valueAndMore, kProfileLength));
        }
    }
}

std::string SDPHandler::ConvertVideoLevel(std::string_view strLevel) const {
    // [G13] The number is compared as it was read, not narrowed: digits that do not fit an int name no level.
    const std::uint64_t iLevel = sdp::HexNumber(strLevel);
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        if (static_cast<std::uint64_t>(sdp::__iH264Profile[row]) == iLevel) {
            return sdp::__H264Profile[row];
        }
    }
    // [X06] An unknown remote level is taken for 1.3, so that little is sent to a decoder nobody knows; an
    // unknown local name is written as level 2. The two differ on purpose.
    return "1.3";
}

std::string SDPHandler::ReverseConvertVideoLevel(const std::string& strLevel) const {
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        if (IsInSlot(strLevel, sdp::__H264Profile[row])) {
            return sdp::__strH264Profile2[row];
        }
    }
    return "14";
}
