// What each verb takes and what its help says: the declarations of the command line.
//
// Tests: tests/tool/exit-status.cases, help.cases, pages.py
#pragma once

#include "CommandLine.h"

#include <CLI/CLI.hpp>

namespace cmsdp {

void DeclareOffer(CLI::App& verb, CommandLine& line);
void DeclareAnswer(CLI::App& verb, CommandLine& line);
void DeclareInspect(CLI::App& verb, CommandLine& line);
void DeclareCall(CLI::App& verb, CommandLine& line);
void DeclareCheck(CLI::App& verb, CommandLine& line);
void DeclareCapabilities(CLI::App& verb, CommandLine& line);
void DeclareExplain(CLI::App& verb, CommandLine& line);
void DeclareWhyNot(CLI::App& verb, CommandLine& line);
void DeclareDiff(CLI::App& verb, CommandLine& line);
void DeclareSurvey(CLI::App& verb, CommandLine& line);
void DeclareRedact(CLI::App& verb, CommandLine& line);
void DeclareHelp(CLI::App& verb, CommandLine& line);
void DeclareVersion(CLI::App& verb, CommandLine& line);

/// --local FILE.
void AddLocal(CLI::App& verb, CommandLine& line);

/// --nth N.
CLI::Option* AddNth(CLI::App& verb, CommandLine& line);

/// The operand REMOTE. The verb then reads it, from standard input where it is left out or "-".
void AddRemote(CLI::App& verb, CommandLine& line, const char* what);

/// What the declaration says of a verb: a page without examples.
HelpPage PageOf(const CLI::App& verb);

} // namespace cmsdp
