// The negotiation layer as the command uses it: one side of a call as a negotiator, and its streams in words.
//
// Tests: tests/tool/fit.cases
#pragma once

#include "Capabilities.h"
#include "SDPNegotiator.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cmsdp {

/// A negotiator with the wishes of a local file. `whose` begins each message: "the local file".
/// With floor control on or "auto" its offers present slides. Throws ToolError(kLocalFile) for what no strict
/// reader takes in a description.
SDPNegotiator NegotiatorOf(const Capabilities& side, const std::string& whose);

/// Makes the negotiator offer slides with floor control where the side has both.
void PresentIfAble(SDPNegotiator& call, const Capabilities& side);

/// "start", "held", "declined by them", "declined by us", "no common codec", "no usable key", "no address".
const char* StateInWords(SDPNegotiator::State state);

/// "audio", "main_video", "presentation" or "floor_control", the names of --require; empty for a section that
/// serves none of them.
std::string NameOf(const SDPNegotiator::Stream& stream);

/// The changes against the agreement before, a word each: "started", "stopped", "direction", "address",
/// "codec", "keys", "limits", "control". `changes` is a set of SDPNegotiator::Change.
std::vector<std::string> ChangesInWords(std::uint32_t changes);

/// Whether the stream is agreed: it runs, or it is held.
bool IsAgreed(const SDPNegotiator::Stream& stream);

/// The required streams that are not agreed, "main_video, presentation"; empty when all are.
std::string MissingOf(const std::vector<SDPNegotiator::Stream>& streams,
                      const std::vector<std::string>& required);

} // namespace cmsdp
