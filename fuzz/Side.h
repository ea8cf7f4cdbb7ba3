// One side of a call with any capabilities: every codec mask, any number in any port, texts that look like
// lines. Texts of the application hold no CR or LF: they are written into a description as they are.
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
    bool isTraced = false;   ///< a trace sink is installed while the handler works
    bool plantsKeys = false; ///< the far end's keys are replaced by known random ones
    /// The texts are addresses and names, so that what this side writes has one reading.
    bool isPlain = true;
};

/// Bytes that AnySide takes from the front of an input.
constexpr std::size_t kSideBytes = 12;

/// The numbers that break readers, beside some that real endpoints use.
extern const std::int32_t kNumbers[16];

/// Any side; its keys are made from `secret`.
Side AnySide(Input& input, std::uint64_t secret);

/// A side with all codecs, both videos, floor control and SRTP.
Side WholeSide(std::uint64_t secret);

/// Hands everything to a handler.
void Prepare(SDPHandler& handler, const Side& side);

} // namespace fuzz
