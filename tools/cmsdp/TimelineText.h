// Calls as text and as JSON. Every word of the far end is printable here, and key text is "***".
//
// Tests: tests/tool/calls.cases
#pragma once

#include "CommandLine.h"
#include "Timeline.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cmsdp {

/// "step 2, 0.120 s: the callee answers step 1, 200 OK to INVITE". `number` counts from 1.
std::string StepHead(const Step& step, std::size_t number);

/// All calls, one line each, then the steps of the call with the index `shown`, which was evaluated.
/// `receiver` is what it was evaluated with.
std::string TimelineText(const std::vector<Call>& calls, std::size_t shown, const CommandLine& line,
                         const Capabilities& receiver);

/// The same as JSON.
std::string TimelineJson(const std::vector<Call>& calls, std::size_t shown, const CommandLine& line,
                         const Capabilities& receiver);

} // namespace cmsdp
