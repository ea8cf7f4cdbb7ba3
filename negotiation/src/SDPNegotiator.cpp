// Stage: none; the public class: which call is possible in which phase, and the small calls.
// Input: the application's calls. Output: what the operations return.
// Touches the state of the call.
// Test: tests/negotiation/SDPNegotiatorTest.cpp
#include "SDPNegotiator.h"

#include "SDPCall.h"
#include "SDPPhases.h"

using negotiation::Event;
using negotiation::Refusal;

const negotiation::Step& negotiation::FindStep(SDPNegotiator::Phase phase, Event event) {
    const Step* step = kSteps;
    while (step->phase != phase || step->event != event) {
        ++step;
    }
    return *step;
}

SDPNegotiator::SDPNegotiator(Random random) : m_call(std::make_unique<Call>(random)) {}
SDPNegotiator::~SDPNegotiator() = default;
SDPNegotiator::SDPNegotiator(const SDPNegotiator& other) : m_call(std::make_unique<Call>(*other.m_call)) {}
SDPNegotiator& SDPNegotiator::operator=(const SDPNegotiator& other) {
    m_call = std::make_unique<Call>(*other.m_call);
    return *this;
}
SDPNegotiator::SDPNegotiator(SDPNegotiator&&) noexcept = default;
SDPNegotiator& SDPNegotiator::operator=(SDPNegotiator&&) noexcept = default;

bool SDPNegotiator::operator==(const SDPNegotiator& other) const {
    return *m_call == *other.m_call;
}

SDPNegotiator::Wish SDPNegotiator::SetLocal(const LocalSDP& local) {
    return m_call->SetLocal(local);
}

const LocalSDP& SDPNegotiator::Local() const {
    return m_call->wishes->local;
}

void SDPNegotiator::Hold(bool isHeld) {
    m_call->Change([isHeld](negotiation::Wishes& next) { next.isHeld = isHeld; });
}

void SDPNegotiator::MuteCamera(bool isMuted) {
    m_call->Change([isMuted](negotiation::Wishes& next) { next.local.fVideoTxMuted = isMuted; });
}

void SDPNegotiator::Present(bool isPresenting) {
    using negotiation::kSlides;
    const unsigned slides = negotiation::Wishes::Bit(kSlides);
    const bool isOpen = m_call->session.Open(kSlides) < m_call->session.slots.size();
    m_call->Change([=](negotiation::Wishes& next) {
        next.isPresenting = isPresenting;
        next.asked =
            static_cast<std::uint8_t>(isPresenting && !isOpen ? next.asked | slides : next.asked & ~slides);
    });
}

void SDPNegotiator::SetSrtp(Srtp policy) {
    m_call->Change([policy](negotiation::Wishes& next) { next.srtp = policy; });
}

SDPNegotiator::Wish SDPNegotiator::Rekey() {
    return m_call->Rekey();
}

bool SDPNegotiator::NeedsOffer() const {
    return m_call->settled == nullptr || !(*m_call->wishes == *m_call->settled);
}

SDPNegotiator::Outcome SDPNegotiator::Offer() {
    const negotiation::Step& step = FindStep(m_call->phase, Event::Offer);
    return step.reason.empty() ? m_call->Offer() : Refusal(step.reason, step.status);
}

SDPNegotiator::Outcome SDPNegotiator::Accept(std::string_view answer) {
    const negotiation::Step& step = FindStep(m_call->phase, Event::Accept);
    return step.reason.empty() ? m_call->Accept(answer) : Refusal(step.reason, step.status);
}

SDPNegotiator::Outcome SDPNegotiator::Refused(int status) {
    const negotiation::Step& step = FindStep(m_call->phase, Event::Refused);
    return step.reason.empty() ? m_call->Refused(status) : Refusal(step.reason, step.status);
}

SDPNegotiator::Outcome SDPNegotiator::Answer(std::string_view offer) {
    const negotiation::Step& step = FindStep(m_call->phase, Event::Answer);
    return step.reason.empty() ? m_call->Answer(offer) : Refusal(step.reason, step.status);
}

SDPNegotiator::Phase SDPNegotiator::GetPhase() const {
    return m_call->phase;
}

const std::vector<SDPNegotiator::Stream>& SDPNegotiator::Streams() const {
    return m_call->session.streams;
}

std::int32_t SDPNegotiator::MaxBandwidth() const {
    return m_call->maxBandwidth;
}

std::vector<SDPNegotiator::Repair> SDPNegotiator::Repairs() const {
    return m_call->repairs.Applied();
}

std::vector<SDPNegotiator::Repair> SDPNegotiator::AllRepairs() {
    return negotiation::Repairs::All();
}

bool SDPNegotiator::SetRepair(std::string_view id, bool isOn) {
    return m_call->repairs.Set(id, isOn);
}

void SDPNegotiator::SetRepairs(bool isOn) {
    m_call->repairs.SetAll(isOn);
}
