// Our texts: the component's sections, put into the session's slots and fitted to them.
//
// Test: tests/negotiation/shape.cases
#pragma once

#include "SDPSession.h"
#include "SDPWriter.h"

#include <array>
#include <string_view>

namespace negotiation {

/// How one section of the component's text is rewritten.
struct Plan {
    const Slot* slot =
        nullptr; ///< null: the role has no section; transport, numbers, way and ids are its own
    std::int32_t port = 0;
    /// Crypto lines in the order they are written; an empty tag ends them.
    struct Crypto {
        std::string_view tag;
        std::size_t suite = 0; ///< index in kBothSuites
        SecretText key;        ///< as the line has it (RFC 4568, 6.1)
    };
    std::array<Crypto, kBothSuites.size()> crypto;
};
using Plans = std::array<Plan, kRoles>;

/// The text of a key in a crypto line, 40 characters.
SecretText TextOf(const Key& key);

/// Writes everything after the "o=" line: the session's lines, and a section per slot in order. A slot
/// without a plan is written at port 0 with its formats.
/// @param component  the component's text: the roles that have a plan, in its order
void WriteBody(sdp::Writer& body, std::string_view component, const Session& session, const Plans& plans);

/// The origin's user name in the component's text, "Quillmarshorizon-x".
std::string_view OriginUser(std::string_view component);

/// "IP4" or "IP6", whichever an address is (RFC 4566, 5.7).
std::string_view AddressType(std::string_view address);

} // namespace negotiation
