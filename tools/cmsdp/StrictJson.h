// JSON as a document that a person wrote: a member that occurs twice is an error, and a syntax error is named
// by line and column. The text itself is never repeated in a message, because it can hold a key.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace cmsdp {

/// Parses a JSON text. `name` begins every message. Throws ToolError(kLocalFile).
nlohmann::json ParseStrictJson(const std::string& text, const std::string& name);

/// The JSON path of a member: "$.video.main", or $["two words"] where a dot would not be clear.
std::string MemberPath(const std::string& object, const std::string& member);

/// The JSON path of an element: "$.audio.codecs[2]".
std::string ElementPath(const std::string& array, std::size_t index);

} // namespace cmsdp
