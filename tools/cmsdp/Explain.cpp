// cmsdp explain: why did the call come up as it did? cmsdp diff: what changed for the engine?
//
// Tests: tests/tool/explain.cases, explain_outputs.py
#include "ExplainPage.h"
#include "ExplainText.h"
#include "Findings.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "RemoteText.h"
#include "SipText.h"
#include "Timeline.h"
#include "Unreadable.h"
#include "Verbs.h"
#include "Visible.h"
#include "Words.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace cmsdp {

namespace {

std::string ReadExplained(const RemoteSource& source, std::vector<std::string>& notes) {
    return CleanedPaste(source, ReadDescription(source.name), notes);
}

// A capture may be longer than a text may be.
std::string ReadNoCapture(const std::string& name) {
    constexpr std::size_t enough = 16;
    std::string text = name == "-" ? ReadDescription(name) : ReadStart(name, enough);
    if (IsCapture(text, name)) {
        throw ToolError(kRemoteText, NameOfInput(name) + ": is a packet capture; read it with --pcap");
    }
    return name == "-" ? text : ReadDescription(name);
}

// Options for one description are of no use for a call: its steps have their own.
void CheckNoCall(const CommandLine& line) {
    if (line.call != 0 || line.we) {
        throw ToolError(kUsage,
                        "--call and --we need a call: --pcap FILE, a text with several SIP messages or a "
                        "folder of .sdp files");
    }
}

// A description beside the remote text; empty without one.
std::string ReadBeside(const CommandLine& line, const std::optional<std::string>& name,
                       std::vector<std::string>& notes) {
    return name ? ReadExplained({*name, line.remote.exact, std::nullopt, false, line.remote.verb}, notes)
                : "";
}

ExplainInput InputOf(const CommandLine& line, const std::string& remote, std::vector<std::string>& notes) {
    ExplainInput input = InputOf(SideOf(line.local));
    input.remoteAnswers = line.offered || line.ourOffer.has_value();
    input.remote = remote;
    input.before = ReadBeside(line, line.before, notes);
    input.ourOffer = ReadBeside(line, line.ourOffer, notes);
    return input;
}

// Standard input has one text.
void CheckInputs(const CommandLine& line) {
    const std::string names[] = {line.remote.name, line.newer, line.before.value_or(""),
                                 line.ourOffer.value_or("")};
    if (std::count(std::begin(names), std::end(names), "-") > 1) {
        throw ToolError(kUsage, "only one of the descriptions can be standard input; see cmsdp " +
                                    line.remote.verb + " --help");
    }
}

} // namespace

Outcome RunExplain(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    CheckTopic(line);
    if (line.pcap || std::filesystem::is_directory(line.remote.name)) {
        return RunExplainCall(line, "", {});
    }
    std::string remote = ReadNoCapture(line.remote.name);
    remote = line.remote.exact ? remote : WithoutSipLog(std::move(remote), true, outcome.notes);
    if (HoldsSipMessages(remote)) {
        return RunExplainCall(line, remote, outcome.notes);
    }
    CheckNoCall(line);
    CheckInputs(line);
    remote = CleanedPaste(line.remote, std::move(remote), outcome.notes);
    const ExplainInput input = InputOf(line, remote, outcome.notes);
    if (line.html) {
        MakePage(outcome, line, input);
        return outcome;
    }
    const Explanation explanation = Explain(input);
    const std::vector<ExplainFinding> findings = Asked(line, explanation.findings);
    if (line.json) {
        outcome.text = ExplanationJson(explanation, findings);
        return outcome;
    }
    outcome.text = line.lines ? LinesText(input, explanation.lines) : "";
    outcome.text += (outcome.text.empty() || findings.empty() ? "" : "\n") + FindingsText(findings);
    if (findings.empty()) {
        outcome.notes.emplace_back(line.about ? "nothing is found about " + *line.about : "nothing is found");
    }
    if (explanation.untried != 0) {
        outcome.notes.push_back(std::to_string(explanation.untried) + " more places were not examined");
    }
    return outcome;
}

Outcome RunDiff(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    CheckInputs(line);
    const std::string older = ReadExplained(line.remote, outcome.notes);
    const std::string newer =
        ReadExplained({line.newer, line.remote.exact, std::nullopt, false, line.remote.verb}, outcome.notes);
    const ExplainInput input = InputOf(line, older, outcome.notes);
    const std::vector<std::string> changes = ExplainDifference(input, older, newer);
    for (const std::string& change : changes) {
        outcome.text += Visible(change) + "\n";
    }
    if (changes.empty()) {
        outcome.notes.emplace_back("nothing changes for the engine");
    }
    return outcome;
}

} // namespace cmsdp
