// cmsdp answer: what do we answer to this offer?
//
// Tests: tests/tool/answer.cases
#include "Redact.h"
#include "RemoteText.h"
#include "ReportJson.h"
#include "Verbs.h"

namespace cmsdp {

namespace {

constexpr const char* kNothingToAnswer =
    "nothing was negotiated: the offer has no media line with a port, a transport and a format, so there is "
    "nothing to answer";

} // namespace

Outcome RunAnswer(const CommandLine& line, const Screen& screen) {
    if (line.fit) {
        return RunFittedAnswer(line, screen);
    }
    const Capabilities side = SideOf(line.local);
    Outcome outcome;
    const Draft offer = ReadRemoteText(line.remote, outcome.notes);
    SDPHandler handler;
    Prepare(handler, side);
    Report report = ReadInto(handler, side, offer);
    report.inputNotes = outcome.notes;

    Secrets secrets(line.showSecrets);
    outcome.text =
        line.json ? AnswerJson(report, secrets) : DescriptionFor(screen, secrets.Hide(report.answer));
    for (const std::string& note : line.json ? std::vector<std::string>() : AllNotes(report)) {
        outcome.notes.push_back(secrets.Hide(note));
    }
    if (!handler.IsOffer()) {
        Judge(outcome, report, line, secrets);
    } else {
        outcome.status = kNothingNegotiated;
        outcome.notes.emplace_back(kNothingToAnswer);
    }
    NoteHidden(outcome, secrets);
    return outcome;
}

} // namespace cmsdp
