// Stage: none; a call as text.
// Input: calls, one of them evaluated. Output: the list of calls and the steps of that one.
// Touches nothing.
// Every word about a description is explain's; headers of the far end pass through Shown.
// Test: tests/tool/calls.cases
#include "TimelineText.h"

#include "ExplainText.h"
#include "Findings.h"
#include "Redact.h"
#include "SipHeaders.h"
#include "Visible.h"
#include "Words.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <tuple>

namespace cmsdp {

namespace {

std::string Shown(const std::string& text) {
    return Visible(Secrets(false).Hide(Short(text)));
}

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string Seconds(double seconds) {
    char words[64];
    std::snprintf(words, sizeof words, "%.3f s", seconds);
    return words;
}

// "caller sip:alice@example.org (192.0.2.1:5060)"
std::string Party(Side side, const std::string& name, const std::string& address) {
    return std::string(SideName(side)) + (name.empty() ? "" : " " + Shown(name)) +
           (address.empty() ? "" : " (" + address + ")");
}

std::string Parties(const Call& call) {
    return Party(Side::Caller, call.callerName, call.caller) + ", " +
           Party(Side::Callee, call.calleeName, call.callee);
}

std::string CallLine(const Call& call, std::size_t number) {
    const bool isTimed = !call.steps.empty() && call.steps.back().seconds.has_value();
    return "call " + std::to_string(number) + ": " + Parties(call) + ", " +
           Counted(call.steps.size(), "step") +
           (isTimed ? " in " + Seconds(*call.steps.back().seconds) : "") + ", Call-ID " + Shown(call.id) +
           "\n";
}

const char* DoingOf(const Step& step) {
    static constexpr const char* doing[] = {"offers",  "answers",      "refuses", "asks for credentials for",
                                            "cancels", "ends the call"};
    if (step.kind == StepKind::End && step.partner) {
        return "ends the branch of";
    }
    return step.isReOffer ? "offers again" : doing[static_cast<std::size_t>(step.kind)];
}

// Each line of the text indented, empty lines left out.
std::string Indented(const std::string& text, const std::string& indent) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view line = TakeLine(text, at);
        out += line.empty() ? "" : indent + std::string(line) + "\n";
    }
    return out;
}

std::string AboutWords(const CommandLine& line) {
    return line.about ? " about " + *line.about : "";
}

// What the engine starts with, or what changes for it.
std::string Changes(const Step& step, const CommandLine& line) {
    const std::vector<std::string> phrases = AskedPhrases(line, step.changes);
    if (phrases.empty()) {
        return step.previous ? "  nothing changes for the engine" + AboutWords(line) + " against step " +
                                   std::to_string(*step.previous + 1) + "\n"
                             : "";
    }
    std::string text =
        step.previous ? "  changes for the engine against step " + std::to_string(*step.previous + 1) + ":\n"
                      : "  the engine starts with:\n";
    for (const std::string& phrase : phrases) {
        text += "    " + Visible(phrase) + "\n";
    }
    return text;
}

// What a finding says, whatever its topic is.
using Saying =
    std::tuple<std::string_view, ExplainSeverity, std::string, std::string, std::string, std::string>;

Saying SayingOf(const ExplainFinding& finding) {
    return {finding.id,    finding.severity,  finding.what, std::string(finding.acted),
            finding.comes, finding.cure.words};
}

// A note without a cure, which tells nothing new when the text before had it: "There is no section for
// slides".
std::string Remark(const ExplainFinding& finding) {
    const bool isRemark = finding.severity == ExplainSeverity::Note && finding.cure.words.empty();
    return isRemark ? std::string(finding.id) + " " + ExplainTopicName(finding.topic) + "\n" + finding.comes
                    : "";
}

// "as in step 1: E72 slides, E72 encryption.slides"; takes these findings away.
std::string TakeKnown(const Call& call, const Step& step, std::vector<ExplainFinding>& findings) {
    std::set<std::string> known;
    if (step.previous) {
        for (const ExplainFinding& finding : call.steps[*step.previous].findings) {
            known.insert(Remark(finding));
        }
    }
    std::vector<std::string> names;
    const auto isKnown = [&](const ExplainFinding& finding) {
        const std::string remark = Remark(finding);
        const bool is = !remark.empty() && known.count(remark) != 0;
        if (is) {
            names.push_back(remark.substr(0, remark.find('\n')));
        }
        return is;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isKnown), findings.end());
    return names.empty() ? ""
                         : "as in step " + std::to_string(*step.previous + 1) + ": " +
                               Listed(names, names.size()) + "\n";
}

// The findings, one that is said of several topics once.
std::string FindingsOf(const std::vector<ExplainFinding>& findings) {
    std::map<Saying, std::string> topics;
    for (const ExplainFinding& finding : findings) {
        std::string& list = topics[SayingOf(finding)];
        list += (list.empty() ? "" : ", ") + std::string(ExplainTopicName(finding.topic));
    }
    std::string text;
    for (const ExplainFinding& finding : findings) {
        std::string& list = topics[SayingOf(finding)];
        text += list.empty() ? "" : FindingText(finding, list);
        list.clear();
    }
    return text;
}

std::string ReadingText(const Call& call, std::size_t index, const CommandLine& line,
                        const Capabilities& receiver) {
    const Step& step = call.steps[index];
    std::string text = Changes(step, line);
    text += std::string("  read by the ") + SideName(OtherSide(step.from)) + ":\n";
    if (line.lines) {
        const ExplainInput input = InputOfStep(call, index, receiver);
        text += Indented(LinesText(input, ExplainLines(input)), "    ");
    }
    std::vector<ExplainFinding> findings = Asked(line, step.findings);
    text += findings.empty() ? "    nothing is found" + AboutWords(line) + "\n" : "";
    const std::string known = TakeKnown(call, step, findings);
    text += Indented(FindingsOf(findings) + known, "    ");
    if (step.untried != 0) {
        text += "    " + std::to_string(step.untried) + " more places were not examined\n";
    }
    return text;
}

} // namespace

std::string StepHead(const Step& step, std::size_t number) {
    std::string head = "step " + std::to_string(number) +
                       (step.seconds ? ", " + Seconds(*step.seconds) : "") + ": the " + SideName(step.from) +
                       " " + DoingOf(step);
    if (step.kind != StepKind::Offer && step.partner) {
        head += " step " + std::to_string(*step.partner + 1);
    }
    head += ", " + Shown(step.message);
    if (step.repeats != 0) {
        head += ", repeated " + Counted(step.repeats, "time");
    }
    return head;
}

std::string TimelineText(const std::vector<Call>& calls, std::size_t shown, const CommandLine& line,
                         const Capabilities& receiver) {
    std::string text;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        text += line.call == 0 || i == shown ? CallLine(calls[i], i + 1) : "";
    }
    if (calls.size() > 1 && line.call == 0) {
        text += "call " + std::to_string(shown + 1) + " is shown; --call N shows another\n";
    }
    const Call& call = calls[shown];
    for (const std::string& note : call.notes) {
        text += "note: " + Visible(Secrets(false).Hide(note)) + "\n";
    }
    for (std::size_t i = 0; i < call.steps.size(); ++i) {
        text += "\n" + StepHead(call.steps[i], i + 1) + "\n";
        for (const std::string& note : call.steps[i].notes) {
            text += "  note: " + Visible(Secrets(false).Hide(note)) + "\n";
        }
        text += call.steps[i].isEvaluated ? ReadingText(call, i, line, receiver) : "";
    }
    return text;
}

} // namespace cmsdp
