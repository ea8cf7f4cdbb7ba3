// Which findings and phrases the user asked for: --about and --top.
//
// Tests: tests/tool/calls.cases
#pragma once

#include "CommandLine.h"
#include "SDPExplain.h"

#include <string>
#include <vector>

namespace cmsdp {

/// Throws ToolError(kUsage) when --about names no topic.
void CheckTopic(const CommandLine& line);

/// The findings of the topic of --about, and of these with --top the first.
std::vector<ExplainFinding> Asked(const CommandLine& line, const std::vector<ExplainFinding>& findings);

/// The phrases of the topic of --about; a phrase begins with its topic, as in "dtmf: ...".
std::vector<std::string> AskedPhrases(const CommandLine& line, const std::vector<std::string>& phrases);

} // namespace cmsdp
