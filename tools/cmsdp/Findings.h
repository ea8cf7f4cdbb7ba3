// Which findings the user asked for: --about and --top.
//
// Tests: tests/tool/TimelineTest.cpp
#pragma once

#include "CommandLine.h"
#include "SDPExplain.h"

#include <vector>

namespace cmsdp {

/// Throws ToolError(kUsage) when --about names no topic.
void CheckTopic(const CommandLine& line);

/// The findings of the topic of --about, and of these with --top the first.
std::vector<ExplainFinding> Asked(const CommandLine& line, const std::vector<ExplainFinding>& findings);

} // namespace cmsdp
