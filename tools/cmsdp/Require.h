// --require: which streams have to be negotiated.
//
// Tests: tests/tool/require.cases
#pragma once

#include "Report.h"

#include <string>
#include <vector>

namespace cmsdp {

/// The names between the commas of "audio,main_video". Throws ToolError(kUsage) for a name that is none.
std::vector<std::string> ParseRequired(const std::string& list);

/// The required streams that the report does not have, "main_video, presentation"; empty when it has all.
std::string MissingOf(const Report& report, const std::vector<std::string>& required);

} // namespace cmsdp
