// Stage: build, the whole text, and its parts without media (RFC 4566, 5; RFC 4583; RFC 3264, 6).
// Input: MyLocalSDP, the switches, the sections held. Output: lines that end in CR LF.
// Touches the session version and nothing else.
// The order of the lines is the order of the calls.
// Tests: tests/unit/SDPBuildTest.cpp, tests/unit/SDPBuildPresentationTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"
#include "SDPText.h"

#include <algorithm>
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

void SDPHandler::Build::Application() {
    m_out << "m=application ";
    if (m_sections.empty()) {
        m_out << m_local.iVideoPresoControlPort;
    } else {
        // [B16] The first floor control section gives the port, the last one the role below.
        const auto first = std::find_if(m_sections.begin(), m_sections.end(),
                                        [](const MediaSession* ms) { return sdp::IsBfcp(*ms); });
        // [B15] A far end without floor control is answered with a line that has no port at all.
        if (first != m_sections.end()) {
            m_out << ((*first)->iPort == 0 ? 0 : m_local.iVideoPresoControlPort);
        }
    }
    m_out << " UDP/BFCP *\r\n";
}

std::string SDPHandler::AddApplication() const {
    return Build::Lines(*this, &Build::Application);
}

void SDPHandler::Build::FloorControl() {
    if (m_sections.empty()) {
        m_out << "a=floorctrl:c-s\r\n";
    }
    std::string_view role;
    for (const MediaSession* const ms : m_sections) {
        if (sdp::IsBfcp(*ms)) {
            role = sdp::IsFloorServer(*ms) ? "a=floorctrl:c-only\r\n" : "a=floorctrl:s-only\r\n";
        }
    }
    m_out << role;
    // [B17] One floor, one conference, one user: the ids are this client's constants, not the record's. Floor
    // 2 controls the stream labelled 9, the presentation.
    m_out << "a=floorid:2 mstrm:9\r\n"
             "a=confid:15\r\n"
             "a=userid:15\r\n";
}

std::string SDPHandler::AddFloorControl() const {
    return Build::Lines(*this, &Build::FloorControl);
}

void SDPHandler::Build::Unsupported() {
    // [B18] Every section beyond the number served is declined by repeating it at port 0 (RFC 3264, 6).
    for (std::size_t i = m_handler.m_iMaxSupportedSessions; i < m_sections.size(); ++i) {
        const MediaSession& ms = *m_sections[i];
        sdp::Words words(ms.strFullMLine);
        const std::string_view media = words.Next();
        // [G10] A section without a word has nothing to repeat; the parser makes no such section.
        if (media.empty()) {
            continue;
        }
        words.Next(); // The port, which is replaced.
        m_out << media << " 0";
        for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
            m_out << " " << word;
        }
        m_out << "\r\n";
        if (!ms.strIPAddr.empty()) {
            m_out << "c=IN IP4 " << ms.strIPAddr << "\r\n";
        }
    }
}

std::string SDPHandler::AddUnsupported() const {
    return Build::Lines(*this, &Build::Unsupported);
}
