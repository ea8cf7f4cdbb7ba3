// Stage: build, the floor control channel of the presentation and the rejected sections (RFC 4583, 3264).
// Input: MyLocalSDP, the sections held. Output: an "m=application" section, "m=" lines at port 0.
// Touches nothing but the text that it appends to.
// The "m=" line alone makes a section a floor control section; its attributes only give the role.
// Test: tests/unit/SDPBuildPresentationTest.cpp
#include "SDPBuild.h"

#include "SDPTables.h"
#include "SDPText.h"

#include <algorithm>

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
