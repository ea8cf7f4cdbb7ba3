// What a strict far end makes of the component's own answer, and what --fit does about it.
//
// Tests: tests/tool/fit.cases
#pragma once

#include "Capabilities.h"
#include "SDPNegotiator.h"

#include <optional>
#include <string>
#include <vector>

namespace cmsdp {

/// What the judge says of an answer, a note for each rule and section: "J20, B03, B18: ...; far ends that
/// match sections by their place refuse the whole answer".
std::vector<std::string> NotesOfJudge(const std::string& offer, const std::string& answer);

/// What the negotiation layer does with a remote text.
struct FitView {
    std::string why; ///< why it refuses the text, or cannot be used; empty: it takes it
    std::vector<SDPNegotiator::Repair> repairs;
    std::vector<SDPNegotiator::Stream> streams;
};

/// Gives the text to a negotiator of this side, as an offer or as the answer to an offer of ours.
FitView FitOf(const Capabilities& side, const std::string& text, bool isAnswer);

/// The view as sentences: repairs with their IDs, then each section, kept in its place or rejected.
std::vector<std::string> InWords(const FitView& view);

} // namespace cmsdp
