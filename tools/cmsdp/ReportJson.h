// A report as JSON for scripts: a `schema` member, units in the names, members in a fixed order.
//
// Tests: tests/tool/inspect.cases
#pragma once

#include "Redact.h"
#include "Report.h"

#include <string>

namespace cmsdp {

// Each text is ASCII only and ends in a line end; bytes that are no UTF-8 become U+FFFD.

/// Of `cmsdp inspect`.
std::string InspectJson(const Report& report, Secrets& secrets);

/// Of `cmsdp answer`: the same and the answer; null in its place when there is none.
std::string AnswerJson(const Report& report, Secrets& secrets);

} // namespace cmsdp
