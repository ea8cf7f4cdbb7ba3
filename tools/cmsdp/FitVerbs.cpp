// cmsdp answer --fit, cmsdp offer --fit: the texts that the negotiation layer sends.
//
// Tests: tests/tool/fit.cases, tests/fit
#include "Fit.h"
#include "FitJson.h"
#include "Redact.h"
#include "RemoteText.h"
#include "Verbs.h"

namespace cmsdp {

namespace {

using nlohmann::ordered_json;

std::string WhoseFile(const CommandLine& line) {
    return line.local.value_or("the built-in set");
}

std::string AnswerInJson(const SDPNegotiator& call, const SDPNegotiator::Outcome& answer,
                         const std::vector<std::string>& notes, Secrets& secrets) {
    ordered_json root;
    root["schema"] = "cmsdp.fitted-answer/1";
    root["answer"] = TextJson(answer.text, secrets);
    root["status"] = answer.isTaken ? ordered_json() : ordered_json(answer.status);
    root["why"] = answer.isTaken ? ordered_json() : ordered_json(answer.reason);
    root["notes"] = ordered_json::array();
    for (const std::string& note : notes) {
        root["notes"].push_back(secrets.Hide(note));
    }
    root["repairs"] = RepairsJson(call.Repairs());
    root["streams"] = StreamsJson(call.Streams(), secrets);
    return Written(root);
}

std::string OfferInJson(const SDPNegotiator::Outcome& offer, Secrets& secrets) {
    ordered_json root;
    root["schema"] = "cmsdp.fitted-offer/1";
    root["offer"] = TextJson(offer.text, secrets);
    root["why"] = offer.isTaken ? ordered_json() : ordered_json(offer.reason);
    return Written(root);
}

} // namespace

Outcome RunFittedAnswer(const CommandLine& line, const Screen& screen) {
    Outcome outcome;
    SDPNegotiator call = NegotiatorOf(SideOf(line.local), WhoseFile(line));
    RemoteSource remote = line.remote;
    remote.lineEnd = LineEnd::Any;
    const Draft offer = ReadRemoteText(remote, outcome.notes);
    const SDPNegotiator::Outcome answer = call.Answer(offer.text);

    Secrets secrets(line.showSecrets);
    outcome.text = line.json ? AnswerInJson(call, answer, outcome.notes, secrets)
                             : DescriptionFor(screen, secrets.Hide(answer.text));
    if (!answer.isTaken) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back("refused with " + std::to_string(answer.status) + ": " +
                                std::string(answer.reason));
    }
    const std::string missing = MissingOf(call.Streams(), line.require);
    if (!missing.empty()) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back("required and not negotiated: " + missing);
    }
    NoteHidden(outcome, secrets);
    return outcome;
}

Outcome RunFittedOffer(const CommandLine& line, const Screen& screen) {
    const Capabilities side = SideOf(line.local);
    SDPNegotiator call = NegotiatorOf(side, WhoseFile(line));
    PresentIfAble(call, side);
    const SDPNegotiator::Outcome offer = call.Offer();

    Outcome outcome;
    Secrets secrets(line.showSecrets);
    outcome.text = line.json ? OfferInJson(offer, secrets) : DescriptionFor(screen, secrets.Hide(offer.text));
    if (!offer.isTaken) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back("there is no offer: " + std::string(offer.reason));
    }
    NoteHidden(outcome, secrets);
    return outcome;
}

} // namespace cmsdp
