// cmsdp redact: a description that others may read.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Clean.h"
#include "Originals.h"
#include "Outcome.h"
#include "RemoteText.h"
#include "Replacements.h"
#include "SipHeaders.h"
#include "SipMessage.h"
#include "SipText.h"
#include "Unreadable.h"
#include "Verbs.h"

#include <set>

namespace cmsdp {

namespace {

[[noreturn]] void Fail(const std::string& name, const std::string& why) {
    throw ToolError(kRemoteText, NameOfInput(name) + ": " + why);
}

// Pieces of encoded lines, in small letters, each with a key or a password in it or after it.
constexpr std::string_view kEncoded[] = {"v%3d0%0",      "a%3dcrypto",   "inline%3a",  "a%3dice-pwd",
                                         "a%3dkey-mgmt", "k%3dbase64",   "a=3dcrypto", "inline=3a",
                                         "a=3dice-pwd",  "a=3dkey-mgmt", "k=3dbase64"};

// Throws when a key of the text would be missed because its line is encoded.
void RequirePlainKeys(const std::string& name, std::string_view text) {
    const std::string lower = LowerCase(text);
    for (const std::string_view encoded : kEncoded) {
        if (lower.find(encoded) != std::string::npos) {
            Fail(name, "holds encoded lines, with " + Quoted(encoded) +
                           " in them, whose keys would be missed; decode them first");
        }
    }
}

bool HoldsSipMessage(std::string_view text) {
    bool holds = false;
    for (std::size_t at = 0; at < text.size() && !holds;) {
        holds = IsSipStartLine(TakeLine(text, at));
    }
    return holds;
}

// The text as one of its readings, with a note on what that did, if there are more descriptions in it then.
bool Take(Draft& draft, Draft read, std::vector<std::string> done, std::vector<std::string>& notes) {
    if (FindBodies(read).size() <= FindBodies(draft).size()) {
        return false;
    }
    draft = std::move(read);
    notes = std::move(done);
    return true;
}

// The text byte for byte; or without what a log put around its SIP messages, or as the steps of Clean.h leave
// it, uncut, where there are more descriptions in it then.
std::string ReadText(const std::string& name, std::vector<std::string>& notes) {
    Draft draft = Draft::Of(ReadDescription(name));
    const std::string unreadable = WhyUnreadable(draft.text, name, "redact");
    if (!unreadable.empty()) {
        Fail(name, unreadable);
    }
    std::vector<std::string> done;
    Draft messages = Draft::Of(WithoutSipLog(draft.text, false, done));
    std::vector<std::string> steps;
    Draft cleaned = draft;
    CleanUncut(cleaned, steps);
    if (!Take(draft, std::move(messages), std::move(done), notes) &&
        !Take(draft, std::move(cleaned), std::move(steps), notes) &&
        !HoldsSdpLine(draft.text, LineEnd::Any) && !HoldsSipMessage(draft.text)) {
        Fail(name, kNoSdpLine);
    }
    RequirePlainKeys(name, draft.text);
    return draft.text;
}

std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + (count == 1 ? one : many);
}

} // namespace

Outcome RunRedact(const CommandLine& line, const Screen& screen) {
    Outcome outcome;
    const std::string text = ReadText(line.remote.name, outcome.notes);
    const std::vector<Original> originals = FindOriginals(text, line.addresses);
    Replacements replacements(originals);
    std::set<std::string_view> keys;
    std::set<std::string_view> others;
    for (const Original& original : originals) {
        (original.kind == OriginalKind::kKey ? keys : others).insert(original.text);
    }

    outcome.text = DescriptionFor(screen, Replaced(text, originals, replacements));
    outcome.notes.push_back("replaced " + Counted(keys.size(), " key", " keys") +
                            (line.addresses ? " and " + Counted(others.size(), " address, name or credential",
                                                                " addresses, names and credentials")
                                            : "; addresses and names stay without --addresses"));
    return outcome;
}

} // namespace cmsdp
