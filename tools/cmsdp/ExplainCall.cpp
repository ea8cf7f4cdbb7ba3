// cmsdp explain of a whole call: a capture, SIP messages, a folder of descriptions.
//
// Tests: tests/tool/calls.cases, captures.py
#include "ExplainPage.h"
#include "Outcome.h"
#include "RemoteText.h"
#include "Timeline.h"
#include "TimelineText.h"
#include "Verbs.h"

namespace cmsdp {

namespace {

// A call says by itself what was offered and what was read before.
void CheckOptions(const CommandLine& line) {
    if (line.offered || line.ourOffer || line.before || line.remote.nth) {
        throw ToolError(kUsage,
                        "--offered, --offer, --before and --nth are for one description; a call has its own "
                        "offers and answers");
    }
}

std::vector<Call> CallsFrom(const CommandLine& line, const std::string& text,
                            std::vector<std::string>& notes) {
    if (line.pcap) {
        return CallsOfCapture(*line.pcap, notes);
    }
    return text.empty() ? std::vector<Call>{CallOfFolder(line.remote.name, line.remote.exact)}
                        : CallsOfSipText(text, line.remote.exact, notes);
}

} // namespace

Outcome RunExplainCall(const CommandLine& line, const std::string& text, std::vector<std::string> notes) {
    CheckOptions(line);
    Outcome outcome;
    outcome.notes = std::move(notes);
    std::vector<Call> calls = CallsFrom(line, text, outcome.notes);
    const std::string source = line.pcap ? *line.pcap : NameOfInput(line.remote.name);
    if (calls.empty()) {
        throw ToolError(kRemoteText, source + ": holds no call");
    }
    if (line.call > calls.size()) {
        throw ToolError(kRemoteText, source + ": holds " + std::to_string(calls.size()) +
                                         (calls.size() == 1 ? " call" : " calls") + ", so --call cannot be " +
                                         std::to_string(line.call));
    }
    const std::size_t shown = line.call == 0 ? 0 : line.call - 1;
    const Capabilities receiver = SideOf(line.local);
    std::optional<Side> we;
    if (line.we) {
        we = SideNamed(calls[shown], *line.we);
    }
    Evaluate(calls[shown], receiver, we);
    if (line.html) {
        MakePage(outcome, line, calls, shown, receiver);
        return outcome;
    }
    outcome.text =
        line.json ? TimelineJson(calls, shown, line, receiver) : TimelineText(calls, shown, line, receiver);
    return outcome;
}

} // namespace cmsdp
