// SIP messages put in order: calls, and in each call the offers, answers and refusals.
//
// Tests: tests/tool/captures.py
#pragma once

#include "SipMessage.h"
#include "Timeline.h"

#include <vector>

namespace cmsdp {

/// The calls among the messages, in the order in which they begin: every Call-ID with an INVITE or one of its
/// responses. Other messages are left out. Messages are in the order in which they were sent.
std::vector<Call> CallsOf(const std::vector<SipMessage>& messages);

} // namespace cmsdp
