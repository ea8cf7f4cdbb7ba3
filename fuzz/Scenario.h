// A valid description that the input chooses, and the record that parsing it must give. The record is filled
// while the text is generated, so it does not depend on any reader.
#pragma once

#include "Input.h"
#include "Keys.h"

#include <SDP.h>

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

struct Scenario {
    std::vector<std::string> lines; ///< without line ends
    std::size_t firstMedia = 0; ///< the first line that begins a section; the number of lines when none does
    RemoteSDP wanted;
    Watch keys; ///< every key of the far end
};

/// @param codecs  the local audio codecs, which decide with the far end's order
Scenario MakeScenario(Input& input, std::uint64_t secret, std::int32_t codecs);

/// The lines as one text, each ended by CR LF.
std::string Join(const std::vector<std::string>& lines);

} // namespace fuzz
