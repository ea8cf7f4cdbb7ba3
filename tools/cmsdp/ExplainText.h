// Findings, line verdicts, pairs and differences as text and as JSON.
//
// Tests: tests/tool/explain_outputs.py
#pragma once

#include "SDPExplain.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace cmsdp {

/// A finding is three lines of at most 240 characters: what was found, the rule that acted, what comes of
/// it; a longer one is cut after a sentence. Findings are parted by an empty line.
std::string FindingsText(const std::vector<ExplainFinding>& findings);

/// The three lines of one finding; `topics` are those that it is about, "slides, encryption.slides".
std::string FindingText(const ExplainFinding& finding, const std::string& topics);

/// Each line with its number and verdict, and below it what it set or why it set nothing.
std::string LinesText(const ExplainInput& input, const std::vector<ExplainedLine>& lines);

/// The same as JSON.
std::string ExplanationJson(const Explanation& explanation, const std::vector<ExplainFinding>& findings);

/// The parts of that JSON.
nlohmann::ordered_json FindingsJson(const std::vector<ExplainFinding>& findings);
nlohmann::ordered_json LinesJson(const std::vector<ExplainedLine>& lines);

/// JSON as it is printed: indented, ASCII; bytes that are no UTF-8 become U+FFFD.
std::string AsText(const nlohmann::ordered_json& root);

/// The pairs of remote formats and one local codec.
std::string PairsText(const std::vector<ExplainPair>& pairs);

} // namespace cmsdp
