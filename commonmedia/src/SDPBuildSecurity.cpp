// Stage: build, whether a section is secure, and its "a=crypto:" line (RFC 4568, 9).
// Input: the SRTP switch, the local suites and keys, the sections held. Output: yes or no, one line.
// Touches nothing but the text that it appends to; the key text in between is wiped.
// The secure test and the crypto line match sections by different rules, see kStreams.
// Test: tests/unit/SDPBuildSecurityTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"
#include "SDPWipe.h"

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

bool SDPHandler::IsRemoteSecure(SRTP_M_LINE n) const {
    return IsStream(n) && FindSecure(vecRemoteMediaSession, sdp::kStreams[n],
                                     sdp::kStreams[n].isSecureByAnyContent) != nullptr;
}

bool SDPHandler::UseSecureParms(SRTP_M_LINE n) const {
    return m_bSRTP && (vecRemoteMediaSession.empty() || IsRemoteSecure(n));
}

void SDPHandler::Build::Crypto(SRTP_M_LINE n) {
    // [B22] Without a local suite there is no line, although the profile may say SAVP: the application asked
    // for SRTP and named no suite.
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
