// cmsdp answer: what do we answer to this offer?
//
// Tests: tests/tool/AnswerTest.cpp
#include "Redact.h"
#include "RemoteText.h"
#include "Report.h"
#include "Verbs.h"

namespace cmsdp {

Outcome RunAnswer(const CommandLine& line, const Screen& screen) {
    const Capabilities side = SideOf(line.local);
    Outcome outcome;
    const Draft offer = ReadRemoteText(line.remote, outcome.notes);
    SDPHandler handler;
    Prepare(handler, side);
    const Report report = ReadInto(handler, side, offer.text);
    if (handler.IsOffer()) {
        // The handler would write an offer of its own now, which is not what was asked for.
        outcome.status = kNothingNegotiated;
        outcome.notes.emplace_back("nothing was negotiated: the offer has no media line with a port, a "
                                   "transport and a format, so there is nothing to answer");
        return outcome;
    }
    Secrets secrets(line.showSecrets);
    outcome.text = DescriptionFor(screen, secrets.Hide(handler.GetLocalSDP()));
    if (!AnythingNegotiated(report)) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back(secrets.Hide(WhyNothing(report)));
    }
    if (secrets.hidden()) {
        outcome.notes.emplace_back(kHiddenNote);
    }
    return outcome;
}

} // namespace cmsdp
