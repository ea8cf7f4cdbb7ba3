// What to start, as a table: one block per section.
//
// Tests: tests/tool/call.cases
#pragma once

#include "Redact.h"
#include "SDPNegotiator.h"
#include "Table.h"

#include <vector>

namespace cmsdp {

/// One block per stream. The rows are the same for every medium, so that two sides can be shown beside each
/// other.
std::vector<Block> StreamBlocks(const std::vector<SDPNegotiator::Stream>& streams, Secrets& secrets);

} // namespace cmsdp
