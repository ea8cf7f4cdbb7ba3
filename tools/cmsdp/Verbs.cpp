// What several verbs share, and the smallest verb: cmsdp capabilities, what can we do?
//
// Tests: tests/tool/CapabilitiesTest.cpp
#include "Verbs.h"

#include "Visible.h"

namespace cmsdp {

Capabilities SideOf(const std::optional<std::string>& file) {
    return file ? ReadCapabilities(*file) : BuiltInCapabilities();
}

std::string DescriptionFor(const Screen& screen, const std::string& description) {
    return screen.terminal ? VisibleLines(description) : description;
}

Outcome RunCapabilities() {
    Outcome outcome;
    outcome.text = CapabilitiesJson(BuiltInCapabilities());
    return outcome;
}

} // namespace cmsdp
