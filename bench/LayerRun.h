// The measured runs of the negotiation layer over a hostile text: a negotiator answers it, or the judge
// compares it with itself.
#pragma once

#include "Inputs.h"

#include <SDPJudge.h>
#include <SDPNegotiator.h>

#include <cstddef>
#include <string>

namespace bench {

/// Returns the length of the answer, or of the reason for which there is none.
inline std::size_t RunLayer(const std::string& text) {
    SDPNegotiator call;
    call.SetLocal(Capabilities());
    call.SetSrtp(SDPNegotiator::Srtp::Wanted);
    call.Present(true);
    const SDPNegotiator::Outcome outcome = call.Answer(text);
    return outcome.isTaken ? outcome.text.size() : outcome.reason.size();
}

/// Returns the number of violations.
inline std::size_t RunJudge(const std::string& text) {
    return CheckAnswer(text, text).size() + CheckNext(text, text).size();
}

} // namespace bench
