// The body of a SIP message: the description in it, or why it cannot be read.
//
// Tests: tests/tool/SipMessageTest.cpp
#pragma once

#include "SipHeaders.h"

#include <string>
#include <string_view>

namespace cmsdp {

struct SipBody {
    bool hasDescription = false;
    std::string description; ///< of type application/sdp, decoded
    std::string unread;      ///< why a body that may hold a description is not read; empty otherwise
    std::string note;        ///< a sentence on a description that was read all the same; may be empty
};

/// Finds the first description of a body, in multipart bodies to a bounded depth (RFC 2046, 5.1; RFC 5621,
/// 3.1). base64 and quoted-printable are decoded, other encodings are not read.
SipBody ReadSipBody(std::string_view body, const SipHeaders& headers);

} // namespace cmsdp
