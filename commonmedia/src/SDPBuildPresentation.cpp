// Stage: build, the floor control channel of the presentation and the rejected sections (RFC 4583, 3264).
// Input: MyLocalSDP, the sections held. Output: an "m=application" section, "m=" lines at port 0.
// Touches nothing but the text at whose end it writes.
// A floor control section is told by its "m=" line; its attributes only give the role.
// Test: tests/unit/SDPBuildPresentationTest.cpp
#include "SDPHandler.h"

#include "SDPTables.h"
#include "SDPText.h"
#include "SDPWriter.h"

#include <algorithm>

void SDPHandler::WriteApplication(sdp::Writer& sdp) const {
    sdp << "m=application ";
    if (vecRemoteMediaSession.empty()) {
        sdp << MyLocalSDP.iVideoPresoControlPort;
    } else {
        // [B16] The first floor control section gives the port, the last one the role below.
        const auto first = std::find_if(vecRemoteMediaSession.begin(), vecRemoteMediaSession.end(),
                                        [](const MediaSession* ms) { return sdp::IsBfcp(*ms); });
        // [B15] A far end without floor control is answered with a line that has no port at all.
        if (first != vecRemoteMediaSession.end()) {
            sdp << ((*first)->iPort == 0 ? 0 : MyLocalSDP.iVideoPresoControlPort);
        }
    }
    sdp << " UDP/BFCP *\r\n";
}

void SDPHandler::WriteFloorControl(sdp::Writer& sdp) const {
    if (vecRemoteMediaSession.empty()) {
        sdp << "a=floorctrl:c-s\r\n";
    }
    std::string_view role;
    for (const MediaSession* const ms : vecRemoteMediaSession) {
        if (sdp::IsBfcp(*ms)) {
            role = ms->strFloorctrl == "s-only" ? "a=floorctrl:c-only\r\n" : "a=floorctrl:s-only\r\n";
        }
    }
    sdp << role;
    // [B17] One floor, one conference, one user: the ids are this client's constants, not the record's. Floor
    // 2 governs the stream labelled 9, the presentation.
    sdp << "a=floorid:2 mstrm:9\r\n"
           "a=confid:15\r\n"
           "a=userid:15\r\n";
}

void SDPHandler::WriteUnsupported(sdp::Writer& sdp) const {
    // [B18] Every section beyond the number served is declined by repeating it at port 0 (RFC 3264, 6).
    for (std::size_t i = m_iMaxSupportedSessions; i < vecRemoteMediaSession.size(); ++i) {
        const MediaSession& ms = *vecRemoteMediaSession[i];
        sdp::Words words(ms.strFullMLine);
        const std::string_view media = words.Next();
        // [G10] A section without a word has nothing to repeat; none comes out of a parse.
        if (media.empty()) {
            continue;
        }
        words.Next(); // The port, which is replaced.
        sdp << media << " 0";
        for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
            sdp << " " << word;
        }
        sdp << "\r\n";
        if (!ms.strIPAddr.empty()) {
            sdp << "c=IN IP4 " << ms.strIPAddr << "\r\n";
        }
    }
}
