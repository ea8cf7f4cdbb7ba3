// Stage: none; the public class: phases, wishes, and the calls that exchange texts.
// Input: the application's wishes and the far end's texts. Output: texts, streams, reasons.
// Touches the state of the call; a refused call leaves it as it was.
// Test: tests/negotiation/SDPNegotiatorTest.cpp
#include "SDPNegotiator.h"

struct SDPNegotiator::Call {
    LocalSDP local;
    std::vector<Stream> streams;
};

SDPNegotiator::Key::~Key() = default;
SDPNegotiator::SDPNegotiator(Random) : m_call(std::make_unique<Call>()) {}
SDPNegotiator::~SDPNegotiator() = default;
SDPNegotiator::SDPNegotiator(const SDPNegotiator& other) : m_call(std::make_unique<Call>(*other.m_call)) {}
SDPNegotiator& SDPNegotiator::operator=(const SDPNegotiator& other) {
    *m_call = *other.m_call;
    return *this;
}
SDPNegotiator::SDPNegotiator(SDPNegotiator&&) noexcept = default;
SDPNegotiator& SDPNegotiator::operator=(SDPNegotiator&&) noexcept = default;
bool SDPNegotiator::operator==(const SDPNegotiator& other) const {
    return this == &other;
}
SDPNegotiator::Wish SDPNegotiator::SetLocal(const LocalSDP& local) {
    m_call->local = local;
    return {true, {}};
}
const LocalSDP& SDPNegotiator::Local() const {
    return m_call->local;
}
void SDPNegotiator::Hold(bool) {}
void SDPNegotiator::MuteCamera(bool) {}
void SDPNegotiator::Present(bool) {}
void SDPNegotiator::SetSrtp(Srtp) {}
SDPNegotiator::Wish SDPNegotiator::Rekey() {
    return {true, {}};
}
bool SDPNegotiator::NeedsOffer() const {
    return true;
}
SDPNegotiator::Outcome SDPNegotiator::Offer() {
    return {};
}
SDPNegotiator::Outcome SDPNegotiator::Accept(std::string_view) {
    return {};
}
SDPNegotiator::Outcome SDPNegotiator::Refused(int) {
    return {};
}
SDPNegotiator::Outcome SDPNegotiator::Answer(std::string_view) {
    return {};
}
SDPNegotiator::Phase SDPNegotiator::GetPhase() const {
    return Phase::Idle;
}
const std::vector<SDPNegotiator::Stream>& SDPNegotiator::Streams() const {
    return m_call->streams;
}
std::vector<SDPNegotiator::Repair> SDPNegotiator::Repairs() const {
    return {};
}
std::vector<SDPNegotiator::Repair> SDPNegotiator::AllRepairs() {
    return {};
}
bool SDPNegotiator::SetRepair(std::string_view, bool) {
    return false;
}
void SDPNegotiator::SetRepairs(bool) {}
