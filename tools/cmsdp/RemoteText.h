// The far end's description as bytes, from a file or a pipe, with the damage of a paste repaired.
//
// Tests: tests/tool/RemoteTextTest.cpp
#pragma once

#include <string>
#include <vector>

namespace cmsdp {

/// Reads a remote description. `name` is a file, or "-" for standard input.
///
/// Repaired, each with a note, unless `exact`: a UTF-8 byte-order mark in front is dropped, a bare LF becomes
/// CR LF, and a last line without a line end gets one. Throws ToolError(kRemoteText) when the text cannot be
/// read, or when no line of it begins, after blanks, with a small letter and "=".
std::string ReadRemoteText(const std::string& name, bool exact, std::vector<std::string>& notes);

/// The repairs alone.
std::string RepairRemoteText(std::string text, std::vector<std::string>& notes);

/// Whether any line that ends in CR LF looks like a line of a description (RFC 4566, 5).
bool HoldsSdpLine(const std::string& text);

} // namespace cmsdp
