// Stage: a call's steps, offer and answer paired.
// Input: the steps one by one. Output: the call with partners and predecessors filled in.
// Touches nothing but the call it was given.
// Test: tests/tool/captures.py, calls.cases
#include "Agreements.h"

#include <algorithm>
#include <utility>

namespace cmsdp {

std::size_t Agreements::Add(Step step) {
    m_before.push_back(m_agreed);
    m_call.steps.push_back(std::move(step));
    return m_call.steps.size() - 1;
}

std::size_t Agreements::AddOffer(Step step) {
    step.kind = StepKind::Offer;
    step.isReOffer = Stands();
    step.previous = Of(step.from);
    return Add(std::move(step));
}

std::size_t Agreements::AddAnswer(Step step, const std::vector<std::size_t>& offers) {
    step.kind = StepKind::Answer;
    if (!offers.empty()) {
        step.partner = offers.back();
    }
    const std::size_t most = 8; // proxies that a message passes
    for (std::size_t i = offers.size() - std::min(offers.size(), most); i < offers.size(); ++i) {
        const std::size_t offer = offers[i];
        const Step& asked = m_call.steps[offer];
        if (HostOf(asked.sender) == HostOf(step.receiver) && HostOf(asked.receiver) == HostOf(step.sender)) {
            step.partner = offer;
        }
    }
    if (!step.previous) {
        step.previous = Before(offers)[static_cast<std::size_t>(step.from)];
    }
    const std::optional<std::size_t> partner = step.partner;
    const std::size_t index = Add(std::move(step));
    Of(m_call.steps[index].from) = index;
    if (partner) {
        Step& asked = m_call.steps[*partner];
        asked.partner = asked.partner.value_or(index);
        Of(asked.from) = *partner;
    }
    return index;
}

void Agreements::Settle(std::size_t answer) {
    Of(m_call.steps[answer].from) = answer;
}

const Agreements::Agreed& Agreements::Before(const std::vector<std::size_t>& offers) const {
    return offers.empty() ? m_agreed : m_before[offers.front()];
}

void Agreements::Refuse(std::size_t offer) {
    m_agreed = m_before[offer];
}

std::string HostOf(const std::string& address) {
    const std::string host = address.substr(0, address.rfind(':'));
    return host.size() > 1 && host.front() == '[' ? host.substr(1, host.size() - 2) : host;
}

} // namespace cmsdp
