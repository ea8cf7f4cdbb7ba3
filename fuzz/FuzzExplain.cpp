// Any bytes as the far end's text, explained for any side.
//
// The first bytes choose the side, its switches, the laws, and the finding whose cure is applied; the rest is
// the text. What a verdict and a cure promise is judged by runs of the component alone.
#include "Cost.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"
#include "explain/CureRules.h"

#include <SDPExplain.h>

#include <algorithm>

namespace fuzz {

namespace {

/// At most kExplainTrials edits of the text are run, one of each local field, and some more for each cure.
constexpr Budget kExplain = {"explain", 1U << 26U, 65536, 1U << 26U, 65536};

/// Record, sections and answer: equal texts mean an equal call. The origin line has a session id of its own.
std::string Outcome(const ExplainInput& input) {
    SDPHandler handler;
    handler.InitializeLocalSDP(input.local);
    handler.m_bSRTP = input.srtp;
    handler.SetBfcpSupport(input.floorControl);
    handler.SetMaxSupportedSessions(input.servedSections);
    if (!input.before.empty()) {
        RemoteSDP earlier;
        handler.ParseTheSDP(input.before, earlier);
        handler.ResetRemoteSDP();
    }
    RemoteSDP record;
    handler.ParseTheSDP(input.remote, record);
    const bool isAnswered = !input.remoteAnswers && !handler.IsOffer();
    const std::string ours = isAnswered ? handler.GetLocalSDP() : std::string();
    return RecordText(record) + SectionsText(handler) +
           ours.substr(std::min(ours.size(), ours.find("\r\ns=")));
}

void CheckVerdicts(const ExplainInput& input, const std::vector<ExplainedLine>& lines, std::size_t choice) {
    const std::string outcome = Outcome(input);
    ExplainInput other = input;
    other.remote = cure::Without(input, lines, [](const ExplainedLine& line) {
        return line.verdict == ExplainVerdict::Ignored || line.verdict == ExplainVerdict::Dropped;
    });
    RequireSame("ignored and dropped lines change nothing", input.remote.c_str(), outcome, "without them",
                Outcome(other));
    std::vector<std::size_t> used;
    for (const ExplainedLine& line : lines) {
        if (line.verdict == ExplainVerdict::Used) {
            used.push_back(line.number);
        }
    }
    if (!used.empty()) {
        const std::size_t chosen = used[choice % used.size()];
        other.remote =
            cure::Without(input, lines, [&](const ExplainedLine& line) { return line.number == chosen; });
        Require(Outcome(other) != outcome, "a used line changes something", std::to_string(chosen),
                input.remote);
    }
}

std::size_t OffsetOf(const Explanation& explanation, std::size_t number) {
    return number == 0 || number > explanation.lines.size() ? 0 : explanation.lines[number - 1].offset;
}

std::size_t PlaceOf(const Explanation& explanation, const ExplainFinding& finding) {
    return finding.lines.empty() ? 0 : OffsetOf(explanation, finding.lines[0]);
}

/// Whether the second text has a finding of this rule and topic at the place where the first one has it.
bool IsStillThere(const ExplainFinding& finding, std::size_t offset, const Explanation& after) {
    return std::any_of(after.findings.begin(), after.findings.end(), [&](const ExplainFinding& other) {
        const bool isSamePlace = finding.field != nullptr || finding.lines.empty() || other.lines.empty()
                                     ? finding.field == other.field
                                     : OffsetOf(after, other.lines[0]) == offset;
        return other.id == finding.id && other.topic == finding.topic && isSamePlace &&
               (finding.field != nullptr
                    ? other.what == finding.what
                    : cure::WithoutDigits(other.what) == cure::WithoutDigits(finding.what));
    });
}

void CheckCure(const ExplainInput& input, const Explanation& explanation, std::size_t choice) {
    std::vector<const ExplainFinding*> cured;
    for (const ExplainFinding& finding : explanation.findings) {
        if (!finding.cure.text.empty() || !finding.cure.local.empty()) {
            cured.push_back(&finding);
        }
    }
    if (cured.empty()) {
        return;
    }
    const ExplainFinding& finding = *cured[choice % cured.size()];
    const std::string words = std::string(finding.id) + " " + finding.what + " Cure: " + finding.cure.words;
    const ExplainInput better = ExplainCured(input, finding.cure);
    Explanation after;
    after.lines = ExplainLines(better);
    after.findings = ExplainFindings(better);
    const auto isSameRule = [&](const ExplainFinding& other) {
        return other.id == finding.id && other.topic == finding.topic && other.field == finding.field;
    };
    // Sentences are needed only where the rule still finds something on this topic.
    if (std::any_of(after.findings.begin(), after.findings.end(), isSameRule)) {
        after = Explain(better);
        const std::size_t offset = cure::Moved(finding.cure, PlaceOf(explanation, finding));
        Require(!IsStillThere(finding, offset, after), "a cure ends its finding", words, input.remote);
    }
    for (const ExplainFinding& other : after.findings) {
        const bool isOld =
            std::any_of(explanation.findings.begin(), explanation.findings.end(), [&](const auto& old) {
                return old.id == other.id && old.topic == other.topic && old.field == other.field &&
                       (old.field != nullptr ||
                        cure::Moved(finding.cure, PlaceOf(explanation, old)) == PlaceOf(after, other));
            });
        Require(isOld || other.severity <= finding.severity, "a cure opens nothing worse",
                words + "\nopens " + std::string(other.id) + " " + ExplainTopicName(other.topic),
                input.remote);
    }
}

void CheckWords(const Explanation& explanation, const Watch& watch) {
    for (const ExplainFinding& finding : explanation.findings) {
        watch.Check("a finding",
                    finding.what + "\n" + finding.acted + "\n" + finding.comes + "\n" + finding.cure.words);
        Require(!finding.id.empty() && !finding.what.empty() && !finding.acted.empty() &&
                    !finding.comes.empty(),
                "a finding says what, by which rule and what comes of it", finding.id, finding.what);
    }
    for (const ExplainedLine& line : explanation.lines) {
        watch.Check("a verdict", line.before + "\n" + line.after + "\n" + line.why);
    }
}

void CheckLinesOf(const Explanation& explanation, const std::string& text) {
    std::size_t at = 0;
    for (const ExplainedLine& line : explanation.lines) {
        Require(line.offset == at, "lines follow each other", std::to_string(line.number), text);
        at = std::min(text.find('\n', at), text.size() - 1) + 1;
    }
    Require(at == text.size(), "lines cover the text", std::to_string(at), text);
}

/// Names, topics, places and severities, a line for each finding.
std::string FindingsText(const std::vector<ExplainFinding>& findings) {
    std::string text;
    for (const ExplainFinding& finding : findings) {
        text += std::string(finding.id) + " " + ExplainTopicName(finding.topic) + " " +
                ExplainSeverityName(finding.severity) + " " +
                std::string(finding.field == nullptr ? "" : finding.field->file);
        for (const std::size_t line : finding.lines) {
            text += " " + std::to_string(line);
        }
        text += "\n";
    }
    return text;
}

void CheckLineLaws(const ExplainInput& input, std::size_t choice, const Watch& watch) {
    const Meter meter;
    Explanation explanation;
    explanation.lines = ExplainLines(input);
    CheckCost(kExplain, meter.Read(), input.remote.size());
    CheckLinesOf(explanation, input.remote);
    CheckWords(explanation, watch);
    CheckVerdicts(input, explanation.lines, choice);
}

void CheckFindings(const ExplainInput& input) {
    const Meter meter;
    const std::vector<ExplainFinding> findings = ExplainFindings(input);
    CheckCost(kExplain, meter.Read(), input.remote.size());
    Require(std::is_sorted(findings.begin(), findings.end(),
                           [](const auto& a, const auto& b) { return a.severity > b.severity; }),
            "the most harmful finding comes first", FindingsText(findings), input.remote);
}

void CheckExplanation(const ExplainInput& input, std::size_t choice, const Watch& watch) {
    const Meter meter;
    const Explanation explanation = Explain(input);
    CheckCost(kExplain, meter.Read(), input.remote.size());
    CheckLinesOf(explanation, input.remote);
    CheckWords(explanation, watch);
    RequireSame("the findings alone are those of the explanation", "alone",
                FindingsText(ExplainFindings(input)), "explained", FindingsText(explanation.findings));
    CheckCure(input, explanation, choice);
}

enum class Laws { Lines, Findings, All };

/// An explanation tries some hundred edits and lines take none, so most inputs check the laws of lines. The
/// header may choose; otherwise a hash of the input does.
Laws LawsOf(std::size_t header, std::uint64_t secret) {
    static constexpr Laws kChosen[4] = {Laws::Lines, Laws::Lines, Laws::Findings, Laws::All};
    constexpr std::uint64_t rare = 48;
    const std::size_t chosen = header / 4 % 4;
    if (chosen != 0) {
        return kChosen[chosen];
    }
    const std::uint64_t turn = secret % rare;
    return turn == 0 ? Laws::All : turn == 1 ? Laws::Findings : Laws::Lines;
}

/// The rest of the input: the text and, where the header says so, a second one after the last zero byte, read
/// before it or our offer.
void TakeTexts(ExplainInput& explained, std::size_t header, const std::string& rest, const Key& theirs) {
    const std::size_t zero = header < 64 ? std::string::npos : rest.rfind('\0');
    if (zero != std::string::npos) {
        (header < 128 ? explained.before : explained.ourOffer) = rest.substr(zero + 1);
    }
    explained.remote = Plant(rest.substr(0, zero), theirs);
}

void Run(Input input, std::uint64_t secret) {
    const Side side = AnySide(input, secret);
    const Key theirs(secret ^ 0xfa4e0dU);
    Watch watch;
    watch.Add(theirs);
    ExplainInput explained;
    explained.local = side.local;
    explained.srtp = side.usesSrtp;
    explained.floorControl = side.usesBfcp;
    explained.servedSections = static_cast<std::uint32_t>(input.Below(6));
    const std::size_t header = input.Byte();
    explained.remoteAnswers = header % 4 == 0;
    const std::size_t choice = input.Byte();
    TakeTexts(explained, header, input.Rest(), theirs);
    const Laws laws = LawsOf(header, secret);
    if (laws == Laws::Lines) {
        CheckLineLaws(explained, choice, watch);
    } else if (laws == Laws::Findings) {
        CheckFindings(explained);
    } else {
        CheckLineLaws(explained, choice, watch);
        CheckExplanation(explained, choice, watch);
    }
}

} // namespace

} // namespace fuzz

void FuzzExplain(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
