// Stage: a call's steps, offer and answer paired.
// Input: the steps one by one. Output: the call with partners and predecessors filled in.
// Touches nothing but the call it was given.
// Test: tests/tool/captures.py, calls.cases
#include "Agreements.h"

#include <algorithm>

namespace cmsdp {

namespace {

Leg::Pair Ordered(const Leg::Pair& pair) {
    return pair.second < pair.first ? Leg::Pair(pair.second, pair.first) : pair;
}

std::optional<std::size_t>& Of(Agreed& agreed, Side side) {
    return agreed[static_cast<std::size_t>(side)];
}

} // namespace

Leg::Leg(const Pair& tagsOfBoth, const Pair& hostsOfBoth)
    : tags(Ordered(tagsOfBoth)), hosts(Ordered(hostsOfBoth)) {}

std::size_t Agreements::Add(Step step) {
    m_call.steps.push_back(std::move(step));
    return m_call.steps.size() - 1;
}

std::size_t Agreements::AddOffer(Step step, const Leg& leg) {
    Agreed standing = Standing(leg);
    step.kind = StepKind::Offer;
    step.isReOffer = standing[0].has_value() && standing[1].has_value();
    step.previous = Of(standing, step.from);
    return Add(std::move(step));
}

std::size_t Agreements::AddAnswer(Step step, OfferAnswer& exchange, const Leg& leg) {
    step.kind = StepKind::Answer;
    step.partner = OfferOn(exchange, step.receiver, step.sender);
    const auto counted = exchange.counted.find(leg);
    if (counted != exchange.counted.end()) {
        step.isIgnored = true;
        step.previous = counted->second.answer;
        return Add(std::move(step));
    }
    Agreed before = Before(exchange, leg);
    step.previous = Of(before, step.from);
    const std::size_t index = Add(std::move(step));
    const std::optional<std::size_t> partner = m_call.steps[index].partner;
    Count(index, partner, exchange, leg);
    if (partner) {
        Step& asked = m_call.steps[*partner];
        asked.partner = asked.partner.value_or(index);
    }
    return index;
}

void Agreements::Repeat(std::size_t answer, OfferAnswer& exchange, const Leg& leg, const std::string& sender,
                        const std::string& receiver) {
    if (m_call.steps[answer].kind == StepKind::Answer && exchange.counted.count(leg) == 0) {
        Count(answer, OfferOn(exchange, receiver, sender), exchange, leg);
    }
}

void Agreements::Settle(const OfferAnswer& exchange, const Leg& leg) {
    const auto counted = exchange.counted.find(leg);
    if (counted != exchange.counted.end() && counted->second.offer) {
        m_call.steps[*counted->second.offer].partner = counted->second.answer;
    }
}

void Agreements::Refuse(OfferAnswer& exchange) {
    for (const auto& [leg, counted] : exchange.counted) {
        Agree(leg, counted.before);
    }
}

Agreed Agreements::Standing(const Leg& leg) const {
    const auto found = m_agreed.find(leg);
    const auto latest = m_latest.find(leg.tags);
    return found != m_agreed.end() ? found->second : latest != m_latest.end() ? latest->second : Agreed();
}

// What stood before the offer. An answer passes the hops of a proxy one after the other; on each of them the
// one before has changed the dialog's latest agreement already.
Agreed Agreements::Before(const OfferAnswer& exchange, const Leg& leg) const {
    const auto hop = exchange.counted.lower_bound(Leg(leg.tags, {}));
    const bool isPassedOn = hop != exchange.counted.end() && hop->first.tags == leg.tags;
    return isPassedOn && m_agreed.count(leg) == 0 ? hop->second.before : Standing(leg);
}

std::optional<std::size_t> Agreements::OfferOn(const OfferAnswer& exchange, const std::string& sender,
                                               const std::string& receiver) const {
    const std::vector<std::size_t>& offers = exchange.offers;
    if (offers.empty()) {
        return std::nullopt;
    }
    const std::size_t most = 8; // proxies that a message passes
    std::size_t found = offers.back();
    for (std::size_t i = offers.size() - std::min(offers.size(), most); i < offers.size(); ++i) {
        const Step& asked = m_call.steps[offers[i]];
        if (HostOf(asked.sender) == HostOf(sender) && HostOf(asked.receiver) == HostOf(receiver)) {
            found = offers[i];
        }
    }
    return found;
}

void Agreements::Count(std::size_t answer, std::optional<std::size_t> offer, OfferAnswer& exchange,
                       const Leg& leg) {
    const Agreed before = Before(exchange, leg);
    Agreed agreed = before;
    exchange.counted[leg] = {answer, offer, before};
    Of(agreed, m_call.steps[answer].from) = answer;
    if (offer) {
        Of(agreed, m_call.steps[*offer].from) = offer;
    }
    Agree(leg, agreed);
}

void Agreements::Agree(const Leg& leg, const Agreed& agreed) {
    m_agreed[leg] = agreed;
    m_latest[leg.tags] = agreed;
}

std::string HostOf(const std::string& address) {
    const std::string host = address.substr(0, address.rfind(':'));
    return host.size() > 1 && host.front() == '[' ? host.substr(1, host.size() - 2) : host;
}

} // namespace cmsdp
