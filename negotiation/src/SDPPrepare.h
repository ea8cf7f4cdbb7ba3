// The copy of a far end's text that the component reads.
//
// Test: tests/negotiation/SDPPrepareTest.cpp
#pragma once

#include "SDPChoice.h"
#include "SDPWriter.h"

namespace negotiation {

/// The direction that a section is written with, its writer's view; sendrecv without a line (RFC 4566, 6).
Way WayOf(const Description& description, const Section& section, Repairs& repairs);

/// The address of a block's "c=" line without a TTL (RFC 4566, 5.7); empty for a word that is no address.
/// @param otherwise  the address when there is no such line: for a section, that of the session
std::string_view AddressOf(Lines lines, std::string_view otherwise = {});

/// The attribute that says a direction, "a=sendonly".
std::string_view KeywordOf(Way way);

/// Writes an H.264 format: the end of the "m=" line, its rtpmap and its fmtp line. Known parameters are
/// written once, unknown ones and numbers that are no number of 32 bits are not.
void WriteVideoFormat(sdp::Writer& text, const Format& format, Repairs& repairs);

/// Writes the sections that are taken, repaired, in the component's order and under its payload numbers.
void WritePrepared(sdp::Writer& text, const Description& description, const std::array<Taken, kRoles>& taken,
                   Repairs& repairs);

} // namespace negotiation
