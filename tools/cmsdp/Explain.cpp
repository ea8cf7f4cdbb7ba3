// cmsdp explain: why did the call come up as it did? cmsdp whynot: why was a codec not chosen? cmsdp diff:
// what changed for the engine?
//
// Tests: tests/tool/explain_outputs.py
#include "ExplainText.h"
#include "Names.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "RemoteText.h"
#include "Verbs.h"
#include "Visible.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

std::string ReadText(const std::string& name) {
    try {
        return ReadFile(name);
    } catch (const ReadError& error) {
        throw ToolError(kRemoteText,
                        (name == "-" ? "standard input" : name) + ": cannot be read: " + error.what() +
                            "; name a file that holds a session description, or - for standard input");
    }
}

/// The bytes of a file, because they are what the engine got. A text without any CR LF is a paste more often
/// than a far end's, so that one is cleaned unless its exact bytes are wanted.
std::string ReadExplained(const RemoteSource& source, std::vector<std::string>& notes) {
    std::string text = ReadText(source.name);
    const bool isPaste = !HoldsSdpLine(text) && text.find('\n') != std::string::npos;
    if (source.exact || !isPaste || source.name == "-") {
        return text;
    }
    return ReadRemoteText(source, notes).text;
}

ExplainInput InputOf(const CommandLine& line, std::vector<std::string>& notes) {
    const Capabilities side = SideOf(line.local);
    ExplainInput input;
    input.local = side.local;
    // An assignment leaves the floor control ids of the record as they are.
    input.local.iBfcpConfid = side.local.iBfcpConfid;
    input.local.iBfcpUserid = side.local.iBfcpUserid;
    input.srtp = side.srtp;
    input.floorControl = side.floorControl != FloorControl::kOff;
    input.floorControlIfOffered = side.floorControl == FloorControl::kAuto;
    input.servedSections = side.servedSections;
    input.remoteAnswers = line.offered || line.ourOffer.has_value();
    input.remote = ReadExplained(line.remote, notes);
    input.before = line.before ? ReadText(*line.before) : "";
    input.ourOffer = line.ourOffer ? ReadText(*line.ourOffer) : "";
    return input;
}

std::size_t TopicOf(const std::string& name) {
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        if (name == ExplainTopicName(static_cast<ExplainTopic>(i))) {
            return i;
        }
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < kExplainTopics; ++i) {
        names.emplace_back(ExplainTopicName(static_cast<ExplainTopic>(i)));
    }
    throw ToolError(kUsage, Quoted(name) + " is no topic; the topics are " + Listed(names, names.size()));
}

} // namespace

Outcome RunExplain(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    const std::size_t topic = line.about ? TopicOf(*line.about) : kExplainTopics;
    const ExplainInput input = InputOf(line, outcome.notes);
    const Explanation explanation = Explain(input);
    std::vector<ExplainFinding> findings;
    for (const ExplainFinding& finding : explanation.findings) {
        if (topic == kExplainTopics || static_cast<std::size_t>(finding.topic) == topic) {
            findings.push_back(finding);
        }
    }
    if (line.top && findings.size() > 1) {
        findings.resize(1);
    }
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

Outcome RunWhyNot(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    const auto named = std::find_if(CodecNames().begin(), CodecNames().end(),
                                    [&](const NamedValue& row) { return line.codec == row.name; });
    if (named == CodecNames().end()) {
        throw ToolError(kUsage, Quoted(line.codec) + " is no codec; see cmsdp capabilities for their names");
    }
    std::vector<ExplainPair> pairs = ExplainWhyNot(InputOf(line, outcome.notes));
    pairs.erase(std::remove_if(pairs.begin(), pairs.end(),
                               [&](const ExplainPair& pair) { return pair.codec != named->value; }),
                pairs.end());
    outcome.text = PairsText(pairs);
    if (pairs.empty()) {
        outcome.notes.push_back("the far end lists no format for " + line.codec);
    }
    return outcome;
}

Outcome RunDiff(const CommandLine& line, const Screen& /*screen*/) {
    Outcome outcome;
    const std::string older = ReadExplained(line.remote, outcome.notes);
    const std::string newer =
        ReadExplained({line.newer, line.remote.exact, 1, line.remote.verb}, outcome.notes);
    CommandLine inputLine = line;
    ExplainInput input = InputOf(inputLine, outcome.notes);
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
