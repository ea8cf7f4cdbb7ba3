// cmsdp answer: what do we answer to this offer?
//
// Tests: tests/tool/AnswerTest.cpp
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
    const Capabilities side = SideOf(line.local);
    Outcome outcome;
    const Draft offer = ReadRemoteText(line.remote, outcome.notes);
    SDPHandler handler;
    Prepare(handler, side);
    Report report = ReadInto(handler, side, offer.text);
    report.inputNotes = outcome.notes;
    // Without a section the handler would write an offer of its own, which is not what was asked for.
    const bool answers = !handler.IsOffer();
    const std::string answer = answers ? handler.GetLocalSDP() : "";

    Secrets secrets(line.showSecrets);
    outcome.text =
        line.json ? AnswerJson(report, answer, secrets) : DescriptionFor(screen, secrets.Hide(answer));
    if (answers) {
        Judge(outcome, report, line, secrets);
    } else {
        outcome.status = kNothingNegotiated;
        outcome.notes.emplace_back(kNothingToAnswer);
    }
    if (secrets.hidden()) {
        outcome.notes.emplace_back(kHiddenNote);
    }
    return outcome;
}

} // namespace cmsdp
