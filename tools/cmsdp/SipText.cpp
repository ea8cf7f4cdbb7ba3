// Stage: a text file with SIP messages, cut into messages.
// Input: the text. Output: its calls.
// Touches nothing.
// A message begins at a request line or a status line; lines of a log may be between messages.
// Test: tests/tool/calls.cases
#include "SipText.h"
#include "Clean.h"
#include "SipCalls.h"
#include "SipHeaders.h"

#include <algorithm>

namespace cmsdp {

std::vector<std::size_t> CutsOfSipText(std::string_view text) {
    std::vector<std::size_t> cuts;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        if (IsSipStartLine(TakeLine(text, at))) {
            cuts.push_back(begin);
        }
    }
    cuts.push_back(text.size());
    return cuts;
}

std::optional<SipMessage> OnlySipMessage(std::string_view text) {
    const std::vector<std::size_t> cuts = CutsOfSipText(text);
    return cuts.size() == 2 ? ParseSipMessage(text.substr(cuts[0]), BodyEnd::Paste) : std::nullopt;
}

namespace {

std::ptrdiff_t At(std::size_t offset) {
    return static_cast<std::ptrdiff_t>(offset);
}

} // namespace

bool HoldsSipMessages(std::string_view text) {
    return CutsOfSipText(text).size() > 2;
}

std::vector<Call> CallsOfSipText(std::string_view text, bool exact, std::vector<std::string>& notes) {
    Draft draft = Draft::Of(std::string(text));
    if (!exact && text.find("\r\n") == std::string_view::npos) {
        const std::size_t lines = EndLinesInCrLf(draft);
        if (lines != 0) {
            notes.push_back("LF alone was read as CR LF at the end of " + std::to_string(lines) +
                            " lines; --exact keeps it");
        }
    }
    const std::vector<std::size_t> cuts = CutsOfSipText(draft.text);
    std::vector<SipMessage> messages;
    std::size_t unread = 0;
    std::ptrdiff_t line = 1;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const std::string_view part = std::string_view(draft.text).substr(cuts[i], cuts[i + 1] - cuts[i]);
        std::optional<SipMessage> message = ParseSipMessage(part, BodyEnd::Paste);
        line += std::count(draft.text.begin() + At(i == 0 ? 0 : cuts[i - 1]),
                           draft.text.begin() + At(cuts[i]), '\n');
        if (message) {
            message->place = std::to_string(line);
            messages.push_back(std::move(*message));
        } else {
            ++unread;
        }
    }
    if (unread != 0) {
        notes.push_back(std::to_string(unread) + (unread == 1 ? " message" : " messages") +
                        " without a Call-ID or CSeq header " + (unread == 1 ? "was" : "were") + " left out");
    }
    return CallsOf(messages);
}

} // namespace cmsdp
