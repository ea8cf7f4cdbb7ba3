// The verbs: one question each. A verb reads files and returns text; it prints nothing.
//
// Tests: tests/tool/OfferTest.cpp, AnswerTest.cpp, InspectTest.cpp, CallTest.cpp, CheckTest.cpp,
// CapabilitiesTest.cpp
#pragma once

#include "Capabilities.h"
#include "CommandLine.h"
#include "Outcome.h"

#include <optional>
#include <string>

namespace cmsdp {

/// What is known about standard output.
struct Screen {
    bool terminal = false;
    bool colour = false;
};

Outcome RunOffer(const CommandLine& line, const Screen& screen);
Outcome RunAnswer(const CommandLine& line, const Screen& screen);
Outcome RunInspect(const CommandLine& line, const Screen& screen);
Outcome RunCall(const CommandLine& line, const Screen& screen);
Outcome RunCheck(const CommandLine& line);
Outcome RunCapabilities();

/// The side a local file describes, or the built-in one.
Capabilities SideOf(const std::optional<std::string>& file);

/// A description as it goes to standard output: its own bytes, or harmless ones on a terminal.
std::string DescriptionFor(const Screen& screen, const std::string& description);

} // namespace cmsdp
