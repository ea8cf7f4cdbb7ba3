// A report as JSON for scripts: a `schema` member, units in the names, members in a fixed order.
//
// Tests: tests/tool/InspectJsonTest.cpp
#pragma once

#include "Redact.h"
#include "Report.h"

#include <string>

namespace cmsdp {

/// The text, ASCII only and with a line end. Bytes that are no UTF-8 stand as U+FFFD.
std::string ReportJson(const Report& report, Secrets& secrets);

} // namespace cmsdp
