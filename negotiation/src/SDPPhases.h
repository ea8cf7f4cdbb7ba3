// The state machine of offer and answer (RFC 3264, 4): what each call does in each phase.
//
// Test: tests/negotiation/SDPNegotiatorTest.cpp
#pragma once

#include "SDPNegotiator.h"

namespace negotiation {

enum class Event { Offer, Accept, Refused, Answer };

/// Why a call is not possible in a phase; an empty reason says that it is.
struct Step {
    SDPNegotiator::Phase phase;
    Event event;
    int status; ///< SIP status that refuses the far end's request; 0 none
    std::string_view reason;
};

inline constexpr Step kSteps[] = {
    {SDPNegotiator::Phase::Idle, Event::Offer, 0, {}},
    {SDPNegotiator::Phase::Idle, Event::Accept, 0, "no offer is pending"},
    {SDPNegotiator::Phase::Idle, Event::Refused, 0, "no offer is pending"},
    {SDPNegotiator::Phase::Idle, Event::Answer, 0, {}},
    {SDPNegotiator::Phase::OfferSent, Event::Offer, 0, "an offer is pending already"},
    {SDPNegotiator::Phase::OfferSent, Event::Accept, 0, {}},
    {SDPNegotiator::Phase::OfferSent, Event::Refused, 0, {}},
    // Both sides offer at once: glare (RFC 3261, 14.1).
    {SDPNegotiator::Phase::OfferSent, Event::Answer, 491, "an offer of this side is pending"},
    {SDPNegotiator::Phase::Agreed, Event::Offer, 0, {}},
    // The answer that was taken may come again, in a 200 after its 183.
    {SDPNegotiator::Phase::Agreed, Event::Accept, 0, {}},
    {SDPNegotiator::Phase::Agreed, Event::Refused, 0, "no offer is pending"},
    {SDPNegotiator::Phase::Agreed, Event::Answer, 0, {}},
};

/// The row of a phase and an event.
const Step& FindStep(SDPNegotiator::Phase phase, Event event);

} // namespace negotiation
