// Reads the input, names what is no text, has the rest cleaned.
//
// Tests: tests/tool/remote-text.cases
#include "RemoteText.h"

#include "Clean.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "Unreadable.h"
#include "Words.h"

#include <utility>

namespace cmsdp {

namespace {

[[noreturn]] void Fail(const RemoteSource& source, const std::string& why) {
    throw ToolError(kRemoteText, NameOfInput(source.name) + ": " + why);
}

// Names an input that is no text.
void CheckReadable(const RemoteSource& source, const std::string& text) {
    const std::string unreadable = WhyUnreadable(text, source.name, source.verb);
    if (!unreadable.empty()) {
        Fail(source, unreadable);
    }
}

void CleanIt(Draft& draft, const RemoteSource& source, std::vector<std::string>& notes) {
    const std::size_t count = Clean(draft, source.nth, notes, source.lineEnd);
    if (source.nth > 1 && count < source.nth) {
        Fail(source, "holds " + std::to_string(count) + (count == 1 ? " description" : " descriptions") +
                         ", so --nth cannot be " + std::to_string(source.nth));
    }
}

void NoteBodies(const Draft& draft, std::vector<std::string>& notes) {
    const std::vector<Body> bodies = FindBodies(draft);
    if (bodies.size() > 1) {
        notes.push_back(BodiesInWords(bodies) + "; --exact reads them as one text");
    }
}

} // namespace

const char* const kNoSdpLine = "holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"";

Draft ReadRemoteText(const RemoteSource& source, std::vector<std::string>& notes) {
    return ReadRemoteText(source, ReadDescription(source.name), notes);
}

Draft ReadRemoteText(const RemoteSource& source, std::string text, std::vector<std::string>& notes) {
    Draft draft = Draft::Of(std::move(text));
    CheckReadable(source, draft.text);
    if (source.exact) {
        NoteBodies(draft, notes);
    } else {
        CleanIt(draft, source, notes);
    }
    if (!HoldsSdpLine(draft.text, source.lineEnd)) {
        Fail(source, std::string(kNoSdpLine) + (source.exact && source.lineEnd == LineEnd::CrLf
                                                    ? "; --exact counts only lines that end in CR LF"
                                                    : ""));
    }
    return draft;
}

std::string CleanedPaste(const RemoteSource& source, std::string text, std::vector<std::string>& notes) {
    CheckReadable(source, text);
    if (!source.exact && !HoldsSdpLine(text)) {
        return ReadRemoteText(source, std::move(text), notes).text;
    }
    if (!HoldsSdpLine(text, LineEnd::Any)) {
        Fail(source, kNoSdpLine);
    }
    return text;
}

std::string ReadDescription(const std::string& name) {
    try {
        return ReadFile(name);
    } catch (const ReadError& error) {
        throw ToolError(kRemoteText,
                        NameOfInput(name) + ": cannot be read: " + error.what() +
                            "; name a file that holds a session description, or - for standard input");
    }
}

std::string NameOfInput(const std::string& name) {
    return name == "-" ? "standard input" : name.empty() ? "\"\"" : name;
}

} // namespace cmsdp
