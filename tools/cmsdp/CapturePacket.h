// The SIP messages of one packet, as tshark writes it.
//
// Tests: tests/tool/captures.py
#pragma once

#include "SipMessage.h"

#include <nlohmann/json_fwd.hpp>

#include <vector>

namespace cmsdp {

/// Adds the SIP messages of a packet with a member "layers", with time, addresses and the number of the
/// frame.
void AddMessages(const nlohmann::json& packet, std::vector<SipMessage>& messages);

} // namespace cmsdp
