// What several verbs share, and the verbs that read nothing.
//
// Tests: tests/tool/CapabilitiesTest.cpp, require.cases
#include "Verbs.h"

#include "Help.h"
#include "Require.h"
#include "Visible.h"

namespace cmsdp {

Capabilities SideOf(const std::optional<std::string>& file, const Capabilities& builtIn) {
    return file ? ReadCapabilities(*file, builtIn) : builtIn;
}

std::string DescriptionFor(const Screen& screen, const std::string& description) {
    return screen.terminal ? VisibleLines(description) : description;
}

void Judge(Outcome& outcome, const Report& report, const CommandLine& line, Secrets& secrets,
           const std::string& whose) {
    if (!AnythingNegotiated(report)) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back(whose + secrets.Hide(WhyNothing(report)));
    }
    const std::string missing = MissingOf(report, line.require);
    if (!missing.empty()) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back(whose + "required and not negotiated: " + missing);
    }
}

void NoteHidden(Outcome& outcome, const Secrets& secrets) {
    if (secrets.hidden()) {
        outcome.notes.emplace_back(kHiddenNote);
    }
}

Outcome RunCapabilities(const CommandLine& /*line*/, const Screen& /*screen*/) {
    Outcome outcome;
    outcome.text = CapabilitiesJson(BuiltInCapabilities());
    return outcome;
}

Outcome RunVersion(const CommandLine& /*line*/, const Screen& /*screen*/) {
    Outcome outcome;
    outcome.text = std::string(kVersion) + "\n";
    return outcome;
}

Outcome RunHelp(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    outcome.text = line.help;
    return outcome;
}

} // namespace cmsdp
