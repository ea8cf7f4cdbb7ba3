// cmsdp redact: a description that others may read.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Originals.h"
#include "Outcome.h"
#include "RemoteText.h"
#include "Replacements.h"
#include "Unreadable.h"
#include "Verbs.h"

#include <set>

namespace cmsdp {

namespace {

std::string ReadBytes(const std::string& name) {
    std::string text = ReadDescription(name);
    const std::string unreadable = WhyUnreadable(text, name, "redact");
    if (!unreadable.empty()) {
        throw ToolError(kRemoteText, NameOfInput(name) + ": " + unreadable);
    }
    return text;
}

std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

} // namespace

Outcome RunRedact(const CommandLine& line, const Screen& screen) {
    const std::string text = ReadBytes(line.remote.name);
    const std::vector<Original> originals = FindOriginals(text, line.addresses);
    Replacements replacements(originals);
    std::set<std::string_view> keys;
    std::set<std::string_view> others;
    for (const Original& original : originals) {
        (original.kind == OriginalKind::kKey ? keys : others).insert(original.text);
    }

    Outcome outcome;
    outcome.text = DescriptionFor(screen, Replaced(text, originals, replacements));
    outcome.notes.push_back("replaced " + Counted(keys.size(), " key", " keys") +
                            (line.addresses ? " and " + Counted(others.size(), " address, name or credential",
                                                                " addresses, names and credentials")
                                            : "; addresses and names stay without --addresses"));
    return outcome;
}

} // namespace cmsdp
