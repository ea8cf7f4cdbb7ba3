// cmsdp explain --html: which descriptions a page shows, and where it is written.
//
// Tests: tests/tool/PageTest.cpp
#pragma once

#include "CommandLine.h"
#include "Outcome.h"
#include "Timeline.h"

#include <cstddef>
#include <vector>

namespace cmsdp {

/// Makes the page of one description, beside it our own text, the outcome's text. `input` is what explain
/// reads.
void MakePage(Outcome& outcome, const CommandLine& line, const ExplainInput& input);

/// The same of the call with the index `shown`, which was evaluated.
void MakePage(Outcome& outcome, const CommandLine& line, const std::vector<Call>& calls, std::size_t shown,
              const Capabilities& receiver);

} // namespace cmsdp
