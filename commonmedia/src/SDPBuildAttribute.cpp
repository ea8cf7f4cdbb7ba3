// Stage: build, lines that sections share (RFC 4566, 3890, 3605, 4568), and whether a section is secure.
// Input: MyLocalSDP, the SRTP switch, the sections held. Output: one line or none; yes or no.
// Touches nothing but the text that it appends to; the key text in between is wiped.
// The secure test and the crypto line match sections by different rules, see kStreams.
// Tests: tests/unit/SDPBuildAttributeTest.cpp, tests/unit/SDPBuildSecurityTest.cpp
#include "SDPBuild.h"

#include "SDPSecrecy.h"
#include "SDPTables.h"

#include <algorithm>

namespace {

bool IsStream(baseSDP::SRTP_M_LINE n) {
    return n >= baseSDP::SRTP_AUDIO && n < baseSDP::SRTP_MAX;
}

/// The first secure section of the stream; null when there is none.
const MediaSession* FindSecure(const std::vector<MediaSession*>& sections, const sdp::StreamMatch& stream,
                               bool anyContent) {
    for (const MediaSession* const ms : sections) {
        if (ms->cryptoAlgo != sdp::CryptoParams::CRYPTO_NONE && ms->eMedia == stream.media &&
            (anyContent || ms->eContent == stream.content)) {
            return ms;
        }
    }
    return nullptr;
}

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
    if (m_local.iMaxBandwidth < sdp::kAudioShare) {
        return;
    }
    // [B05] Main and presentation video each get the full rest; "b=AS:" limits their sum.
    const std::int32_t bandwidth = isVideo ? m_local.iMaxBandwidth - sdp::kAudioShare : sdp::kAudioShare;
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

bool SDPHandler::IsRemoteSecure(SRTP_M_LINE n) const {
    return IsStream(n) && FindSecure(vecRemoteMediaSession, sdp::kStreams[n],
                                     sdp::kStreams[n].isSecureByAnyContent) != nullptr;
}

bool SDPHandler::UseSecureParms(SRTP_M_LINE n) const {
    return m_bSRTP && (vecRemoteMediaSession.empty() || IsRemoteSecure(n));
}

void SDPHandler::Build::Crypto(SRTP_M_LINE n) {
    // [B22] Without a local suite there is no line, although the profile may say SAVP.
    if (!IsStream(n) || m_local.cryptoAlgo[n] == sdp::CryptoParams::CRYPTO_NONE) {
        return;
    }
    std::int32_t tag = 1;
    if (!m_sections.empty()) {
        const MediaSession* const ms =
            FindSecure(m_sections, sdp::kStreams[n], sdp::kStreams[n].isTagOfAnyContent);
        if (ms == nullptr) {
            return;
        }
        tag = ms->iCryptoTag;
    }
    // [B21] The tag is the far end's (RFC 4568, 5.1.2), the suite this side's own, whatever suite the far end
    // offered with that tag.
    m_out << "a=crypto:" << tag << " ";
    if (const auto* const suite = sdp::FindRow(sdp::kSuites, &sdp::Suite::profile, m_local.cryptoAlgo[n])) {
        m_out << suite->name;
    }
    std::string keyText;
    const sdp::WipedAtEnd wiped(keyText);
    GetSRTPKey(keyText, m_local.bufSRTPKey[n], m_local.bufSRTPSalt[n]);
    m_out << " inline:" << keyText << "\r\n";
}

std::string SDPHandler::AddCrypto(SRTP_M_LINE n) const {
    return Build::Lines(*this, &Build::Crypto, n);
}
