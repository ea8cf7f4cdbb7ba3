// A report as rows that a person reads at a glance: words for directions, a unit after every number.
//
// Tests: tests/tool/inspect.cases
#pragma once

#include "Redact.h"
#include "Report.h"
#include "Table.h"

#include <vector>

namespace cmsdp {

/// The rows of a report, the same rows in the same order for every report. All text is printable ASCII.
std::vector<Block> ReportBlocks(const Report& report, Secrets& secrets);

} // namespace cmsdp
