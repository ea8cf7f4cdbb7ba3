// One side of a call with any capabilities: every codec set, any number as a port, texts that look like
// lines. The application's texts contain no CR or LF, because they are written into a description unchanged.
#pragma once

#include "Input.h"

#include <SDPHandler.h>

#include <cstdint>
#include <string>

namespace fuzz {

struct Side {
    LocalSDP local;
    bool usesSrtp = false;
    bool usesBfcp = false;
    std::uint32_t served = 2; ///< remote sections that are answered; the rest is declined
    bool isTraced = false;    ///< a trace sink is installed while the handler works
    bool plantsKeys = false;  ///< the far end's keys are replaced by known random ones
    /// The application's texts are plain addresses and names, so a second handler must read back what this
    /// side writes.
    bool isPlain = true;
};

/// The number of bytes that AnySide takes from the start of an input.
constexpr std::size_t kSideBytes = 12;

/// Numbers at the limits of their types, and some that real endpoints use.
extern const std::int32_t kNumbers[16];

/// A side that the input chooses; its keys are made from `secret`.
Side AnySide(Input& input, std::uint64_t secret);

/// A side with all codecs, both video streams, floor control and SRTP.
Side WholeSide(std::uint64_t secret);

/// Gives the side's capabilities and switches to a handler.
void Prepare(SDPHandler& handler, const Side& side);

} // namespace fuzz
