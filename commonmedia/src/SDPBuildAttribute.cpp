// Stage: build, the lines that sections share: bandwidth, direction, RTCP (RFC 4566, 3890, 3605).
// Input: MyLocalSDP, the sections held. Output: one line or none.
// Touches nothing but the text that it appends to.
// The direction comes from the table that the parser reads.
// Test: tests/unit/SDPBuildAttributeTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"

#include <algorithm>

namespace {

/// Audio's share of the whole budget, bit/s. Video gets the rest.
constexpr std::int32_t kAudioShare = 64000;

} // namespace

void SDPHandler::Build::Bandwidth() {
    // [B04] Only 0 means no limit. The division rounds toward zero, so a budget below one kilobit is written
    // as 0 and a larger negative one keeps its sign: a wrong configuration stays visible on the wire.
    if (m_local.iMaxBandwidth != 0) {
        m_out << "b=AS:" << m_local.iMaxBandwidth / 1000 << "\r\n";
    }
}

std::string SDPHandler::AddBandwidth() const {
    return Build::Lines(*this, &Build::Bandwidth);
}

void SDPHandler::Build::BandwidthTIAS(bool isVideo) {
    if (m_local.iMaxBandwidth < kAudioShare) {
        return;
    }
    // [B05] Main and presentation video each get the full rest; "b=AS:" limits their sum.
    const std::int32_t bandwidth = isVideo ? m_local.iMaxBandwidth - kAudioShare : kAudioShare;
    if (bandwidth >= 1) {
        m_out << "b=TIAS:" << bandwidth << "\r\n";
    }
}

std::string SDPHandler::AddBandwidthTIAS(bool IsVideo) const {
    return Build::Lines(*this, &Build::BandwidthTIAS, IsVideo);
}

void SDPHandler::Build::Directional(MediaType media, VIDEOTYPE role) {
    bool sends = true;
    bool receives = true;
    if (!m_sections.empty()) {
        const auto match = std::find_if(m_sections.begin(), m_sections.end(), [&](const MediaSession* ms) {
            return ms->eMedia == media && ms->eContent == role;
        });
        // [B20] A section that the far end does not have gets no direction line.
        if (match == m_sections.end()) {
            return;
        }
        sends = (*match)->iPort != 0 && (*match)->fSend;
        receives = (*match)->iPort != 0 && (*match)->fRecv;
    }
    // [B19] A muted camera never sends, whatever the far end would accept.
    if (media == MEDIA_VIDEO && role == VIDEOTYPE_MAIN && m_local.fVideoTxMuted) {
        sends = false;
    }
    for (const sdp::Direction& direction : sdp::kDirections) {
        if (direction.sends == sends && direction.receives == receives) {
            m_out << direction.keyword << "\r\n";
        }
    }
}

std::string SDPHandler::AddDirectional(MediaType m, VIDEOTYPE v) const {
    return Build::Lines(*this, &Build::Directional, m, v);
}

void SDPHandler::Build::RTCPAttribute(std::int32_t port) {
    // [B25] Every address is written as IP4, an IPv6 one included, here and in every "c=" and "o=" line.
    m_out << "a=rtcp:" << port << " IN IP4 " << m_local.strDefaultIPAddr << "\r\n";
}

std::string SDPHandler::AddRTCPAttribute(int port) const {
    return Build::Lines(*this, &Build::RTCPAttribute, port);
}
