// Stage: build, capabilities to the whole text: offer, answer, session block (RFC 4566, 5).
// Input: MyLocalSDP, the switches, the sections held. Output: lines that end in CR LF.
// Touches the session version and nothing else.
// The order of the lines is the order of the calls.
// Test: tests/unit/SDPBuildTest.cpp
#include "SDPBuild.h"

#include <cstdint>

std::string SDPHandler::GetLocalSDP() {
    return IsOffer() ? GetOffer() : GetAnswer();
}

std::string SDPHandler::GetOffer() {
    if (MyLocalSDP.strDefaultIPAddr.empty()) {
        return {};
    }
    Build build(*this, Build::kDescriptionRoom);
    ++m_iSessionVersion;
    build.Description();
    return build.Take();
}

std::string SDPHandler::GetAnswer() {
    if (vecRemoteMediaSession.empty()) {
        return {};
    }
    Build build(*this, Build::kDescriptionRoom);
    ++m_iSessionVersion;
    // [B03] The sections keep this side's order whatever the order of the offer, against RFC 3264, 6. A far
    // end that matches sections by position has to offer in this order; one that matches by media need not.
    build.Description();
    build.Unsupported();
    return build.Take();
}

void SDPHandler::Build::Description() {
    OfferPreamble();
    Audio();
    Video(m_local.m_VideoMain);
    if (m_handler.m_fBfcpSupported) {
        Video(m_local.m_VideoPreso);
        Application();
        FloorControl();
    }
}

void SDPHandler::Build::OfferPreamble() {
    m_out << "v=0\r\n";
    O();
    m_out << "s=-\r\n";
    C();
    Bandwidth();
    m_out << "t=0 0\r\n";
}

std::string SDPHandler::AddOfferPreamble() {
    ++m_iSessionVersion;
    return Build::Lines(*this, &Build::OfferPreamble);
}

void SDPHandler::Build::O() {
    m_out << "o=Quillmarshorizon";
    if (!m_local.strOExtension.empty()) {
        m_out << "-" << m_local.strOExtension;
    }
    // [B02] The id is written unsigned and the version signed, so versions from 2147483648 read negative. Far
    // ends only look whether the text has changed (RFC 3264, 8).
    m_out << " " << static_cast<std::uint32_t>(m_handler.m_iSessionID) << " "
          << static_cast<std::int32_t>(m_handler.m_iSessionVersion) << " IN IP4 "
          << (m_local.strMyIPAddr.empty() ? m_local.strDefaultIPAddr : m_local.strMyIPAddr) << "\r\n";
}

std::string SDPHandler::AddO() {
    ++m_iSessionVersion;
    return Build::Lines(*this, &Build::O);
}

void SDPHandler::Build::C() {
    // [B01] Media goes to the default address even when the origin line names another: the far end may be
    // unable to reach the own address.
    m_out << "c=IN IP4 " << m_local.strDefaultIPAddr << "\r\n";
}

std::string SDPHandler::AddC() const {
    return Build::Lines(*this, &Build::C);
}
