// Stage: build, whether a section is secure, and its "a=crypto:" line (RFC 4568, 9).
// Input: the SRTP switch, the local suites and keys, the sections held. Output: yes or no, one line.
// Touches nothing but the text at whose end it writes; the key text in between is wiped.
// The secure test and the crypto line match sections by different rules, kStreams.
// Test: tests/unit/SDPBuildSecurityTest.cpp
#include "SDPHandler.h"

#include "SDPTables.h"
#include "SDPWipe.h"
#include "SDPWriter.h"

namespace {

bool IsStream(baseSDP::SRTP_M_LINE n) {
    return n >= baseSDP::SRTP_AUDIO && n < baseSDP::SRTP_MAX;
}

/// The first secure section of the stream; null when there is none.
const MediaSession* FindSecure(const std::vector<MediaSession*>& sections, const sdp::StreamMatch& stream,
                               bool fAnyContent) {
    for (const MediaSession* const ms : sections) {
        if (ms->cryptoAlgo != sdp::CryptoParams::CRYPTO_NONE && ms->eMedia == stream.eMedia &&
            (fAnyContent || ms->eContent == stream.eContent)) {
            return ms;
        }
    }
    return nullptr;
}

} // namespace

bool SDPHandler::IsRemoteSecure(SRTP_M_LINE n) const {
    return IsStream(n) &&
           FindSecure(vecRemoteMediaSession, sdp::kStreams[n], sdp::kStreams[n].fSecureAnyContent) != nullptr;
}

bool SDPHandler::UseSecureParms(SRTP_M_LINE n) const {
    return m_bSRTP && (vecRemoteMediaSession.empty() || IsRemoteSecure(n));
}

void SDPHandler::WriteCrypto(sdp::Writer& sdp, SRTP_M_LINE n) const {
    // [B22] Without a local suite there is no line, although the profile may say SAVP: the application has
    // asked for SRTP and not said which.
    if (!IsStream(n) || MyLocalSDP.cryptoAlgo[n] == sdp::CryptoParams::CRYPTO_NONE) {
        return;
    }
    std::int32_t iTag = 1;
    if (!vecRemoteMediaSession.empty()) {
        const MediaSession* const ms =
            FindSecure(vecRemoteMediaSession, sdp::kStreams[n], sdp::kStreams[n].fCryptoAnyContent);
        if (ms == nullptr) {
            return;
        }
        iTag = ms->iCryptoTag;
    }
    // [B21] The tag is the far end's (RFC 4568, 5.1.2), the suite this side's own, whatever the far end
    // offered under that tag.
    sdp << "a=crypto:" << iTag << " ";
    for (const sdp::Suite& suite : sdp::kSuites) {
        if (suite.eProfile == MyLocalSDP.cryptoAlgo[n]) {
            sdp << suite.strName;
        }
    }
    std::string strKey;
    const sdp::WipedAtEnd wiped(strKey);
    GetSRTPKey(strKey, MyLocalSDP.bufSRTPKey[n], MyLocalSDP.bufSRTPSalt[n]);
    sdp << " inline:" << strKey << "\r\n";
}
