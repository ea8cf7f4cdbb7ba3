// What happens in a call after it came up: wishes of its sides, one after the other.
//
// Tests: tests/tool/call.cases, CallTest.cpp
#pragma once

#include "SDPNegotiator.h"

#include <string>
#include <vector>

namespace cmsdp {

/// One wish of one side, as --then names it.
struct PlannedStep {
    std::string name;        ///< "hold"
    bool byAnswerer = false; ///< the side of the first answer wishes it, otherwise that of the first offer
    bool (*wish)(SDPNegotiator& call) = nullptr; ///< false: there were no random numbers for it
};

/// Reads "hold", which the offerer wishes, or "answerer:hold". Throws ToolError(kUsage) for other words.
PlannedStep ParseStep(const std::string& words);

/// What became of one offer.
struct Exchange {
    std::string offer;
    std::string answer; ///< empty: it was refused
    int status = 0;     ///< of the refusal
    std::string reason; ///< why it was refused, or why there is no offer
};

/// One step and what both sides start with after it.
struct StepResult {
    std::string name; ///< empty: the call came up
    bool byAnswerer = false;
    std::vector<Exchange> exchanges; ///< none: no offer was needed
    std::vector<SDPNegotiator::Stream> offerer;
    std::vector<SDPNegotiator::Stream> answerer;
};

/// Lets two sides set up a call and go through the steps.
std::vector<StepResult> PlayCall(SDPNegotiator& offerer, SDPNegotiator& answerer,
                                 const std::vector<PlannedStep>& steps);

} // namespace cmsdp
