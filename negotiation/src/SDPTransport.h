// What the name of a transport says of a section, in capital letters: "RTP/SAVP", "UDP/TLS/RTP/SAVPF".
//
// The name alone is asked. Which transports a section is answered with is decided in SDPSections.h.
// Test: tests/negotiation/SDPTransportTest.cpp
#pragma once

#include <string_view>

namespace negotiation {

/// Whether it is a secure profile of RTP (RFC 3711, RFC 5124), whatever its keys come by.
inline bool IsSavp(std::string_view transport) {
    return transport.find("SAVP") != std::string_view::npos;
}

/// Whether keys come by a handshake of DTLS on the media path (RFC 5764).
inline bool IsDtls(std::string_view transport) {
    return transport.find("TLS") != std::string_view::npos;
}

/// Whether it carries floor control (RFC 4583, 3).
inline bool IsBfcp(std::string_view transport) {
    return transport.find("BFCP") != std::string_view::npos;
}

} // namespace negotiation
