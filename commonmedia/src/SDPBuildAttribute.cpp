// Stage: build, the lines that sections share: bandwidth, direction, RTCP (RFC 4566, 3890, 3605).
// Input: MyLocalSDP, the sections held. Output: one line or none.
// Touches nothing but the text at whose end it writes.
// Directions are read off the parser's table, backward.
// Test: tests/unit/SDPBuildAttributeTest.cpp
#include "SDPHandler.h"

#include "SDPTables.h"
#include "SDPWriter.h"

namespace {

/// What audio is given of the whole budget, bit/s. Video gets the rest.
constexpr std::int32_t kAudioShare = 64000;

} // namespace

void SDPHandler::WriteBandwidth(sdp::Writer& sdp) const {
    // [B04] Only 0 means no limit. The division cuts toward zero, so less than a kilobit is written as 0 and
    // a larger negative budget keeps its sign: what the application asked for stays visible on the wire.
    if (MyLocalSDP.iMaxBandwidth != 0) {
        sdp << "b=AS:" << MyLocalSDP.iMaxBandwidth / 1000 << "\r\n";
    }
}

void SDPHandler::WriteBandwidthTIAS(sdp::Writer& sdp, bool IsVideo) const {
    if (MyLocalSDP.iMaxBandwidth < kAudioShare) {
        return;
    }
    // [B05] Main and presentation video are each given the full rest; "b=AS:" bounds their sum.
    const std::int32_t iBandwidth = IsVideo ? MyLocalSDP.iMaxBandwidth - kAudioShare : kAudioShare;
    if (iBandwidth >= 1) {
        sdp << "b=TIAS:" << iBandwidth << "\r\n";
    }
}

void SDPHandler::WriteDirectional(sdp::Writer& sdp, MediaType m, VIDEOTYPE v) const {
    bool fSend = true;
    bool fRecv = true;
    if (!vecRemoteMediaSession.empty()) {
        const MediaSession* match = nullptr;
        for (const MediaSession* const ms : vecRemoteMediaSession) {
            if (ms->eMedia == m && ms->eContent == v) {
                match = ms;
                break;
            }
        }
        // [B20] A section that the far end does not have gets no direction at all.
        if (match == nullptr) {
            return;
        }
        fSend = match->iPort != 0 && match->fSend;
        fRecv = match->iPort != 0 && match->fRecv;
    }
    // [B19] A muted camera never sends: the flag is taken away, whatever the far end would accept.
    if (m == MEDIA_VIDEO && v == VIDEOTYPE_MAIN && MyLocalSDP.fVideoTxMuted) {
        fSend = false;
    }
    // The table read backward: the line that says of its writer what is true of this side.
    for (const sdp::Direction& direction : sdp::kDirections) {
        if (direction.fSends == fSend && direction.fReceives == fRecv) {
            sdp << direction.keyword << "\r\n";
        }
    }
}

void SDPHandler::WriteRTCPAttribute(sdp::Writer& sdp, int port) const {
    // [B25] An address is always written as IP4, an IPv6 one included, here and in every "c=" and "o=" line.
    sdp << "a=rtcp:" << port << " IN IP4 " << MyLocalSDP.strDefaultIPAddr << "\r\n";
}
