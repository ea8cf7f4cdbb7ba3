// Reads the input, names what is no text, has the rest cleaned.
//
// Tests: tests/tool/remote-text.cases
#include "RemoteText.h"

#include "Clean.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "SipText.h"
#include "Timeline.h"
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
    const std::size_t nth = source.nth.value_or(1);
    const std::size_t count = Clean(draft, nth, notes, source.lineEnd, source.hasNth);
    if (nth > 1 && count < nth) {
        Fail(source, "holds " + std::to_string(count) + (count == 1 ? " description" : " descriptions") +
                         ", so --nth cannot be " + std::to_string(nth));
    }
}

void NoteBodies(const Draft& draft, const std::string& words, std::vector<std::string>& notes) {
    const std::vector<Body> bodies = FindBodies(draft);
    if (bodies.size() > 1) {
        notes.push_back(BodiesInWords(bodies) + words);
    }
}

// Whether the first line of a description is there twice.
bool HoldsTwo(std::string_view text) {
    const std::size_t first = text.find(kFirstLine);
    return first != std::string_view::npos && text.find(kFirstLine, first + 1) != std::string_view::npos;
}

// The message whose body is meant, of a text with one. Where lines end in LF alone, cleaning takes the body
// out, but not one that is encoded.
std::optional<SipMessage> MessageOf(const RemoteSource& source, std::string_view text) {
    const bool isPaste = text.find("\r\n") == std::string_view::npos;
    const bool isWanted = !source.nth && (!isPaste || text.find("\nv=0") == std::string_view::npos);
    return isWanted ? OnlySipMessage(text) : std::nullopt;
}

std::string BodyOf(const RemoteSource& source, SipMessage message, std::vector<std::string>& notes) {
    const std::string name = "the SIP message " + (message.method.empty() ? std::to_string(message.status) +
                                                                                " " + Short(message.reason)
                                                                          : message.method);
    if (!message.hasDescription) {
        Fail(source, name + (message.unread.empty() ? " has no description" : ": " + message.unread));
    }
    notes.push_back("the body of " + name +
                    " is read, and lines are counted in it; --exact reads its headers, too");
    return std::move(message.description);
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
        NoteBodies(draft, "; --exact reads them as one text", notes);
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
    if (!source.exact) {
        if (std::optional<SipMessage> message = MessageOf(source, text)) {
            return BodyOf(source, std::move(*message), notes);
        }
        if (source.nth || !HoldsSdpLine(text) || HoldsSipMessages(text)) {
            return ReadRemoteText(source, std::move(text), notes).text;
        }
    }
    if (!HoldsSdpLine(text, LineEnd::Any)) {
        Fail(source, kNoSdpLine);
    }
    if (HoldsTwo(text)) {
        NoteBodies(Draft::Of(text),
                   std::string("; they are read as one text") + (source.hasNth ? ", --nth picks one" : ""),
                   notes);
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
