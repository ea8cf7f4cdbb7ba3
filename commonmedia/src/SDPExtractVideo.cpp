// Stage: extract, one video section to one stream (RFC 6184, 8.1).
// Input: a section and its formats. Output: VideoParms, the stream's key rows.
// Touches the record only.
// Nothing is reset on the way: what a format does not name keeps the value that it had.
// Test: tests/unit/SDPExtractVideoTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "VideoUtils.h"

#include <iterator>

namespace {

/// The first parameter in table order whose name occurs in `name`; null for none. The name is searched
/// because the blank that "; " leaves precedes it. Usually the rest of it equals a parameter's name, which
/// contains no other one and needs no search.
const sdp::H264Parameter* FindParameter(std::string_view name) {
    if (const auto* const row =
            sdp::FindNamed<sdp::kH264Parameters>(sdp::After(name, sdp::FindNoBlank(name)))) {
        return row;
    }
    for (const sdp::H264Parameter& row : sdp::kH264Parameters) {
        if (sdp::Contains(name, row.name)) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

void SDPHandler::GetVideoRTPData(RemoteSDP& ParsedSDP, VideoParms& rs, const MediaSession* ms) const {
    const SRTP_M_LINE stream =
        ms->eContent == VIDEOTYPE_PRESO ? baseSDP::SRTP_VIDEO_PRESO : baseSDP::SRTP_VIDEO;
    rs.eVideoCodec = PAYLOAD_H264;
    ParsedSDP.setSRTPKey(stream, ms->bufSRTPKey);
    ParsedSDP.setSRTPSalt(stream, ms->bufSRTPSalt);
    ParsedSDP.cryptoAlgo[stream] = ms->cryptoAlgo;
    rs.iVideoRTPPort = ms->iPort;
    rs.fVideoRecv = ms->iPort != 0 && ms->fRecv;
    rs.fVideoSend = ms->iPort != 0 && ms->fSend;
    rs.strVideoIPAddr = ms->strIPAddr.empty() ? strSessionIPAddr : ms->strIPAddr;
    // [X03] The last digit of the clock rate is not compared, so "H264/9000" passes as well: refusing it
    // would cost the stream for a typing error of the far end.
    constexpr std::string_view name(sdp::kH264Name, std::size(sdp::kH264Name) - 2);
    for (const RtpMap* const rm : ms->vecRtpMap) {
        if (sdp::Find(rm->strEncodingName, name) == std::string_view::npos) {
            continue;
        }
        rs.iVideoPayload = sdp::Number(rm->strPayload);
        LoadH264Parms(rs, rm);
        // [X04] The first format with a packetization mode ends the search. Without one each format's
        // parameters overwrite those before it, and the last payload type counts.
        if (rs.iFmtpPacketizationMode != 0) {
            break;
        }
    }
    rs.eVideoType = ms->eContent;
    rs.fIsVideoValid = true;
}

void SDPHandler::LoadH264Parms(VideoParms& rs, const RtpMap* rm) const {
    // Characters of profile-level-id before the level: profile and constraint bytes, which are not examined.
    constexpr std::size_t profileLength = 4;
    for (const std::string& parm : rm->vecFmtpParms) {
        // [G08] A parameter without "=", an empty one included, has no value and is skipped.
        const std::string_view text(parm);
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const sdp::H264Parameter* const row = FindParameter(text.substr(0, equals));
        if (row == nullptr) {
            continue;
        }
        // A second "=" ends the value.
        const std::string_view valueAndMore = sdp::After(text, equals + 1);
        if (row->field != nullptr) {
            const std::string_view digits = sdp::Digits(valueAndMore);
            const std::string_view more = sdp::After(valueAndMore, digits.size());
            if (!digits.empty() && (more.empty() || more.front() == '=')) {
                rs.*row->field = sdp::Number(digits);
            }
        } else if (sdp::FindByte(valueAndMore, '=') >= profileLength) {
            rs.strVideoLevel = ConvertVideoLevel(sdp::After(valueAndMore, profileLength));
        }
    }
}
