// Stage: build, capabilities to the whole text: offer, answer, session block (RFC 4566, 5).
// Input: MyLocalSDP, the switches, the sections held. Output: lines that end in CR LF.
// Touches the session version and nothing else.
// The order of the lines is the order of the calls.
// Test: tests/unit/SDPBuildTest.cpp
#include "SDPHandler.h"

#include "SDPWriter.h"

namespace {

/// Room for a description of every section with its keys; only unusual texts of the application exceed it.
constexpr std::size_t kUsualLength = 2048;

} // namespace

std::string SDPHandler::GetLocalSDP() {
    return IsOffer() ? GetOffer() : GetAnswer();
}

std::string SDPHandler::GetOffer() {
    if (MyLocalSDP.strDefaultIPAddr.empty()) {
        return {};
    }
    sdp::Writer sdp(kUsualLength);
    WriteDescription(sdp);
    return sdp.Take();
}

std::string SDPHandler::GetAnswer() {
    if (vecRemoteMediaSession.empty()) {
        return {};
    }
    // [B03] The sections keep this side's order whatever the order of the offer, against RFC 3264, 6. A far
    // end that matches by position needs to offer in this order; one that matches by media does not care.
    sdp::Writer sdp(kUsualLength);
    WriteDescription(sdp);
    if (vecRemoteMediaSession.size() > m_iMaxSupportedSessions) {
        WriteUnsupported(sdp);
    }
    return sdp.Take();
}

void SDPHandler::WriteDescription(sdp::Writer& sdp) {
    WriteOfferPreamble(sdp);
    WriteAudio(sdp);
    WriteVideo(sdp, MyLocalSDP.m_VideoMain);
    if (m_fBfcpSupported) {
        WriteVideo(sdp, MyLocalSDP.m_VideoPreso);
        WriteApplication(sdp);
        WriteFloorControl(sdp);
    }
}

void SDPHandler::WriteOfferPreamble(sdp::Writer& sdp) {
    sdp << "v=0\r\n";
    WriteO(sdp);
    sdp << "s=-\r\n";
    WriteC(sdp);
    WriteBandwidth(sdp);
    sdp << "t=0 0\r\n";
}

void SDPHandler::WriteO(sdp::Writer& sdp) {
    sdp << "o=Quillmarshorizon";
    if (!MyLocalSDP.strOExtension.empty()) {
        sdp << "-" << MyLocalSDP.strOExtension;
    }
    ++m_iSessionVersion;
    // [B02] The id is written unsigned and the version signed, so a version in its upper half reads negative.
    // Far ends compare the texts for change only (RFC 3264, 8).
    sdp << " " << static_cast<std::uint32_t>(m_iSessionID) << " "
        << static_cast<std::int32_t>(m_iSessionVersion) << " IN IP4 "
        << (MyLocalSDP.strMyIPAddr.empty() ? MyLocalSDP.strDefaultIPAddr : MyLocalSDP.strMyIPAddr) << "\r\n";
}

void SDPHandler::WriteC(sdp::Writer& sdp) const {
    // [B01] Media flows to the default address even when the origin names another: the own address may be one
    // that the far end cannot reach.
    sdp << "c=IN IP4 " << MyLocalSDP.strDefaultIPAddr << "\r\n";
}
