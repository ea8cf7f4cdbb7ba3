// Is a text an address, and one that can be sent to?
//
// Test: tests/negotiation/SDPAddressTest.cpp
#pragma once

#include <string_view>

namespace negotiation {

/// Whether a text is an IPv4 address, an IPv6 address or a host name (RFC 4566, 9). A host name is not looked
/// up.
bool IsAddress(std::string_view text) noexcept;

/// Whether an address is the unspecified one, in any spelling: "0.0.0.0" or "::". It is no place to send to
/// and says that a stream is on hold (RFC 3264, 8.4).
bool IsNowhere(std::string_view address) noexcept;

} // namespace negotiation
