// The words that the user typed.
//
// Tests: tests/tool/StatusTest.cpp, HelpTest.cpp
#pragma once

#include "RemoteText.h"

#include <optional>
#include <string>

namespace cmsdp {

enum class Verb { kHelp, kOffer, kAnswer, kInspect, kCall, kCheck, kCapabilities };

struct CommandLine {
    Verb verb = Verb::kHelp;
    std::string help; ///< kHelp: the text to print
    std::optional<std::string> local;
    std::optional<std::string> offerer;
    std::optional<std::string> answerer;
    RemoteSource remote;
    std::string checkedOffer;
    std::string checkedAnswer;
    bool json = false;
    bool showSecrets = false;
};

/// Throws ToolError(kUsage) for words that make no command.
CommandLine ParseCommandLine(int argc, const char* const* argv);

} // namespace cmsdp
