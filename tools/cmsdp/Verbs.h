// The verbs: one question each. A verb reads files and returns text; it prints nothing.
//
// Tests: tests/tool/offer.cases, answer.cases, inspect.cases, call.cases, check.cases, explain_outputs.py,
// local-file.cases
#pragma once

#include "Capabilities.h"
#include "CommandLine.h"
#include "Outcome.h"
#include "Redact.h"
#include "Report.h"

#include <cstddef>
#include <optional>
#include <string>

namespace cmsdp {

/// What is known about standard output.
struct Screen {
    bool terminal = false;
    bool colour = false;
    std::size_t width = 79; ///< columns that a table may fill
};

Outcome RunOffer(const CommandLine& line, const Screen& screen);
Outcome RunAnswer(const CommandLine& line, const Screen& screen);
Outcome RunFittedOffer(const CommandLine& line, const Screen& screen);  ///< cmsdp offer --fit
Outcome RunFittedAnswer(const CommandLine& line, const Screen& screen); ///< cmsdp answer --fit
Outcome RunInspect(const CommandLine& line, const Screen& screen);
Outcome RunCall(const CommandLine& line, const Screen& screen);
Outcome RunCheck(const CommandLine& line, const Screen& screen);
Outcome RunExplain(const CommandLine& line, const Screen& screen);
/// cmsdp explain of a call: --pcap, a folder, or the SIP messages `text`. `notes` are those on the text.
Outcome RunExplainCall(const CommandLine& line, const std::string& text, std::vector<std::string> notes);
Outcome RunWhyNot(const CommandLine& line, const Screen& screen);
Outcome RunDiff(const CommandLine& line, const Screen& screen);
Outcome RunSurvey(const CommandLine& line, const Screen& screen);
Outcome RunRedact(const CommandLine& line, const Screen& screen);
Outcome RunCapabilities(const CommandLine& line, const Screen& screen);
Outcome RunVersion(const CommandLine& line, const Screen& screen);
/// Writes CommandLine::help.
Outcome RunHelp(const CommandLine& line, const Screen& screen);

/// The side a local file describes, or the built-in one.
Capabilities SideOf(const std::optional<std::string>& file,
                    const Capabilities& builtIn = BuiltInCapabilities());

/// A description as it goes to standard output: its own bytes, or harmless ones on a terminal.
std::string DescriptionFor(const Screen& screen, const std::string& description);

/// Adds what a report means for the exit status: 1 with a note when no stream came up, or when one that
/// --require names did not. `whose` begins the notes: "", or "answerer: ".
void Judge(Outcome& outcome, const Report& report, const CommandLine& line, Secrets& secrets,
           const std::string& whose = "");

/// Says that keys are hidden, if any are.
void NoteHidden(Outcome& outcome, const Secrets& secrets);

} // namespace cmsdp
