// One SIP message: what a timeline needs of its headers, and the description in its body.
//
// Tests: tests/tool/SipMessageTest.cpp
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

struct SipMessage {
    std::optional<double> time; ///< seconds since 1970
    std::string sender;         ///< "192.0.2.1:5060", "[2001:db8::1]:5060"; empty where it is not known
    std::string receiver;
    bool isOfStream = false; ///< it came over TCP
    std::string place;       ///< where it is in the input: "frame 12" of a capture, "44" for a line of a text

    std::string method; ///< of a request; empty for a response
    int status = 0;     ///< of a response; 0 for a request
    std::string reason; ///< reason phrase of a response
    std::string callId;
    std::uint32_t cseq = 0;
    std::string cseqMethod; ///< the method of the request, in responses too
    std::string fromTag;
    std::string toTag; ///< empty outside of a dialog
    std::string fromUri;
    std::string toUri;
    std::string replaces; ///< Call-ID of the call that an INVITE takes over (RFC 3891, 6.1)
    std::string warning;  ///< value of the Warning header (RFC 3261, 20.43)

    bool hasDescription = false;
    std::string description;        ///< the body of type application/sdp, byte for byte
    std::string unread;             ///< why a body that may hold a description is not read; also a note
    bool isCut = false;             ///< the capture does not hold all of the body, or of the headers
    std::vector<std::string> notes; ///< sentences on a body that is not as its headers say
};

/// How the end of a body is found.
enum class BodyEnd {
    Cut,      ///< the capture holds the beginning of the message, which may end anywhere
    Datagram, ///< RFC 3261, 18.3: Content-Length, or without it all that follows the headers
    Paste     ///< a text file: Content-Length where it fits, otherwise the last line of a description
};

/// Reads a message that fills the text. Lines end in CR LF or in LF. None when the text does not begin with a
/// request line or a status line, or has no Call-ID or CSeq header.
std::optional<SipMessage> ParseSipMessage(std::string_view text, BodyEnd end);

/// Whether a line is a request line or a status line (RFC 3261, 7.1 and 7.2).
bool IsSipStartLine(std::string_view line);

} // namespace cmsdp
