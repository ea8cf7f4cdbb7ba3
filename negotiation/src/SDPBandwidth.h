// What a far end can take in all.
//
// Test: tests/negotiation/SDPBandwidthTest.cpp
#pragma once

#include "SDPChoice.h"

#include <array>
#include <cstdint>

namespace negotiation {

/// The bandwidth of a far end, bit/s, by its own lines (RFC 4566, 5.8; RFC 3890): the session's, otherwise
/// the sum of the media sections that are taken; 0, not limited, when one of these has none.
std::int32_t BandwidthOf(const Description& description, const std::array<Taken, kRoles>& taken,
                         Repairs& repairs);

} // namespace negotiation
