// Stage: build, capabilities to the whole text: offer, answer, session block (RFC 4566, 5).
// Input: MyLocalSDP, the switches, the sections held. Output: lines that end in CR LF.
// Touches the session version and nothing else.
// The order of the lines is the order of the calls.
// Test: tests/unit/SDPBuildTest.cpp
#include "SDPHandler.h"

#include "SDPText.h"

std::string SDPHandler::GetLocalSDP() {
    return IsOffer() ? GetOffer() : GetAnswer();
}

std::string SDPHandler::GetOffer() {
    std::string sdp;
    if (!MyLocalSDP.strDefaultIPAddr.empty()) {
        WriteDescription(sdp);
    }
    return sdp;
}

std::string SDPHandler::GetAnswer() {
    std::string sdp;
    if (vecRemoteMediaSession.empty()) {
        return sdp;
    }
    // [B03] The sections keep this side's order whatever the order of the offer, against RFC 3264, 6. A far
    // end that matches by position needs to offer in this order; one that matches by media does not care.
    WriteDescription(sdp);
    if (vecRemoteMediaSession.size() > m_iMaxSupportedSessions) {
        WriteUnsupported(sdp);
    }
    return sdp;
}

void SDPHandler::WriteDescription(std::string& sdp) {
    ReserveDescription(sdp);
    WriteOfferPreamble(sdp);
    WriteAudio(sdp);
    WriteVideo(sdp, MyLocalSDP.m_VideoMain);
    if (m_fBfcpSupported) {
        WriteVideo(sdp, MyLocalSDP.m_VideoPreso);
        WriteApplication(sdp);
        WriteFloorControl(sdp);
    }
}

void SDPHandler::ReserveDescription(std::string& sdp) const {
    // Room for the longest fixed lines and for every text of varying length. A text that grows after its keys
    // were written would leave them behind in freed memory.
    constexpr std::size_t fixedLines = 2048;
    constexpr std::size_t linesPerCodec = 64;
    constexpr std::size_t defaultAddresses = 4;
    std::size_t length = fixedLines + MyLocalSDP.strOExtension.size() + MyLocalSDP.strMyIPAddr.size() +
                         (defaultAddresses + 1) * MyLocalSDP.strDefaultIPAddr.size() +
                         linesPerCodec * MyLocalSDP.listAudioCodecPriority.size();
    for (std::size_t i = m_iMaxSupportedSessions; i < vecRemoteMediaSession.size(); ++i) {
        constexpr std::size_t addressLine = 16;
        length += addressLine + vecRemoteMediaSession[i]->strFullMLine.size() +
                  vecRemoteMediaSession[i]->strIPAddr.size();
    }
    sdp.reserve(length);
}

void SDPHandler::WriteOfferPreamble(std::string& sdp) {
    sdp += "v=0\r\n";
    WriteO(sdp);
    sdp += "s=-\r\n";
    WriteC(sdp);
    WriteBandwidth(sdp);
    sdp += "t=0 0\r\n";
}

void SDPHandler::WriteO(std::string& sdp) {
    sdp += "o=Quillmarshorizon";
    if (!MyLocalSDP.strOExtension.empty()) {
        sdp += '-';
        sdp += MyLocalSDP.strOExtension;
    }
    // [B02] The id is written unsigned and the version signed, so a version in its upper half reads negative.
    // Far ends compare the texts for change only (RFC 3264, 8).
    sdp += ' ';
    sdp::AppendNumber(sdp, static_cast<std::uint32_t>(m_iSessionID));
    ++m_iSessionVersion;
    sdp += ' ';
    sdp::AppendNumber(sdp, static_cast<std::int32_t>(m_iSessionVersion));
    sdp += " IN IP4 ";
    sdp += MyLocalSDP.strMyIPAddr.empty() ? MyLocalSDP.strDefaultIPAddr : MyLocalSDP.strMyIPAddr;
    sdp += "\r\n";
}

void SDPHandler::WriteC(std::string& sdp) const {
    // [B01] Media flows to the default address even when the origin names another: the own address may be one
    // that the far end cannot reach.
    sdp += "c=IN IP4 ";
    sdp += MyLocalSDP.strDefaultIPAddr;
    sdp += "\r\n";
}

std::string SDPHandler::AddOfferPreamble() {
    std::string sdp;
    WriteOfferPreamble(sdp);
    return sdp;
}

std::string SDPHandler::AddO() {
    std::string sdp;
    WriteO(sdp);
    return sdp;
}
