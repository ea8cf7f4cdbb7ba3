// Standard output and standard error, and what may be known about them.
//
// Tests: tests/tool/OutputTest.cpp
#pragma once

#include "Verbs.h"

#include <string>

namespace cmsdp {

/// Whether standard output is a terminal, and whether it wants colour: never while NO_COLOR is set and not
/// empty, and never on a terminal that calls itself dumb.
Screen LookAtScreen();

/// Writes everything and closes standard output, so that a full disk or a closed pipe is not missed. Throws
/// ToolError(kFailed). An empty text touches nothing.
void WriteOutput(const std::string& text);

/// The same for a named file, which is replaced; an empty name is standard output.
void WriteOutput(const std::string& text, const std::string& file);

/// Writes a part of what follows and leaves standard output open. Throws ToolError(kFailed).
void WritePart(const std::string& text);

/// One line "cmsdp: ..." on standard error, keys hidden and every byte printable.
void Complain(const std::string& message);

} // namespace cmsdp
