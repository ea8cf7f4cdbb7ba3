// A wish becomes an offer when it needs one, and the other side answers or refuses it.
//
// Tests: tests/tool/call.cases, CallTest.cpp
#include "Scenario.h"

#include "Outcome.h"
#include "Words.h"

namespace cmsdp {

namespace {

struct WishRow {
    const char* name;
    bool (*wish)(SDPNegotiator& call);
};

constexpr WishRow kWishes[] = {
    {"hold", [](SDPNegotiator& call) { return call.Hold(true), true; }},
    {"resume", [](SDPNegotiator& call) { return call.Hold(false), true; }},
    {"mute", [](SDPNegotiator& call) { return call.MuteCamera(true), true; }},
    {"unmute", [](SDPNegotiator& call) { return call.MuteCamera(false), true; }},
    {"present", [](SDPNegotiator& call) { return call.Present(true), true; }},
    {"stop-presenting", [](SDPNegotiator& call) { return call.Present(false), true; }},
    {"rekey", [](SDPNegotiator& call) { return call.Rekey().isTaken; }},
};

std::string NamesOfWishes() {
    std::vector<std::string> names;
    for (const WishRow& row : kWishes) {
        names.emplace_back(row.name);
    }
    return Listed(names, names.size());
}

// One offer and what becomes of it.
Exchange Ask(SDPNegotiator& from, SDPNegotiator& to) {
    constexpr int timeout = 408;
    Exchange exchange;
    const SDPNegotiator::Outcome offer = from.Offer();
    if (!offer.isTaken) {
        exchange.reason = offer.reason;
        return exchange;
    }
    exchange.offer = offer.text;
    const SDPNegotiator::Outcome answer = to.Answer(offer.text);
    const SDPNegotiator::Outcome taken = answer.isTaken ? from.Accept(answer.text) : SDPNegotiator::Outcome{};
    exchange.answer = answer.text;
    if (!taken.isTaken) {
        exchange.status = answer.isTaken ? timeout : answer.status;
        exchange.reason = answer.isTaken ? taken.reason : answer.reason;
        from.Refused(exchange.status);
    }
    return exchange;
}

// A first offer that was refused because it is secure is followed by a plain one; the negotiator decides.
void Negotiate(SDPNegotiator& from, SDPNegotiator& to, std::vector<Exchange>& exchanges) {
    while (from.NeedsOffer()) {
        Exchange exchange = Ask(from, to);
        if (!exchanges.empty() && exchange.offer == exchanges.back().offer) {
            return; // the same offer again would be refused again
        }
        const bool isOver = exchange.reason.empty() || exchange.offer.empty() || exchanges.size() == 1;
        exchanges.push_back(std::move(exchange));
        if (isOver) {
            return;
        }
    }
}

} // namespace

PlannedStep ParseStep(const std::string& words) {
    const std::size_t colon = words.find(':');
    const std::string side = colon == std::string::npos ? "offerer" : words.substr(0, colon);
    const std::string name = colon == std::string::npos ? words : words.substr(colon + 1);
    for (const WishRow& row : kWishes) {
        if (name == row.name && (side == "offerer" || side == "answerer")) {
            return {name, side == "answerer", row.wish};
        }
    }
    throw ToolError(kUsage, "--then: " + Quoted(words) + " is no wish; name one of " + NamesOfWishes() +
                                ", with answerer: in front for the answering side");
}

std::vector<StepResult> PlayCall(SDPNegotiator& offerer, SDPNegotiator& answerer,
                                 const std::vector<PlannedStep>& steps) {
    std::vector<StepResult> results(1);
    Negotiate(offerer, answerer, results[0].exchanges);
    results[0].offerer = offerer.Streams();
    results[0].answerer = answerer.Streams();
    for (const PlannedStep& step : steps) {
        SDPNegotiator& from = step.byAnswerer ? answerer : offerer;
        SDPNegotiator& to = step.byAnswerer ? offerer : answerer;
        if (!step.wish(from)) {
            throw ToolError(kFailed, "the random generator gave no SRTP key");
        }
        StepResult result;
        result.name = step.name;
        result.byAnswerer = step.byAnswerer;
        Negotiate(from, to, result.exchanges);
        result.offerer = offerer.Streams();
        result.answerer = answerer.Streams();
        results.push_back(std::move(result));
    }
    return results;
}

} // namespace cmsdp
