// Shared by the tests: a handler with the capabilities of Locals.h, and remote sections made by hand.
#pragma once

#include "Locals.h"

#include <SDPHandler.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// Gives a handler its capabilities and a fixed session id.
inline void Start(SDPHandler& handler, const LocalSDP& local, std::int32_t sessionID = 1000) {
    handler.InitializeLocalSDP(local);
    handler.m_iSessionID = sessionID;
}

/// Opens a remote section as an "m=" line would; the handler owns it.
inline MediaSession& AddSection(SDPHandler& handler, MediaType media, std::int32_t port) {
    auto section = std::make_unique<MediaSession>();
    section->eMedia = media;
    section->iPort = port;
    if (media == MEDIA_VIDEO) {
        section->eContent = VIDEOTYPE_MAIN;
    }
    handler.vecRemoteMediaSession.push_back(section.get());
    return *section.release();
}

/// Adds a payload format to a section; the owner of the section frees it.
inline RtpMap& AddFormat(MediaSession& section, std::string payload, std::string encoding = "",
                         std::vector<std::string> parms = {}) {
    auto format = std::make_unique<RtpMap>();
    format->strPayload = std::move(payload);
    format->strEncodingName = std::move(encoding);
    format->vecFmtpParms = std::move(parms);
    section.vecRtpMap.push_back(format.get());
    return *format.release();
}

/// A payload format of a remote section: number, name, parameters.
struct Format {
    std::string payload;
    std::string encoding;
    std::vector<std::string> parms;
};

inline void AddFormats(MediaSession& section, const std::vector<Format>& formats) {
    for (const Format& format : formats) {
        AddFormat(section, format.payload, format.encoding, format.parms);
    }
}

/// A remote floor control section.
inline MediaSession& AddBfcpSection(SDPHandler& handler, std::int32_t port, std::string floorctrl = "") {
    MediaSession& section = AddSection(handler, MEDIA_APPLICATION, port);
    section.strFullMLine = "m=application " + std::to_string(port) + " UDP/BFCP *";
    section.strFloorctrl = std::move(floorctrl);
    return section;
}

/// Sets the fields that a usable "a=crypto:" line sets.
inline void Secure(MediaSession& section, const std::string& stream, std::int32_t tag = 1) {
    WriteKey(section.bufSRTPKey, section.bufSRTPSalt, "away", stream);
    section.cryptoAlgo = kSuite32;
    section.iCryptoTag = tag;
}

} // namespace support
