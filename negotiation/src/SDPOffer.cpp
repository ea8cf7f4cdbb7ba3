// Stage: component, shape: the wishes to an offer.
// Input: the wishes, the agreed session. Output: the offer, or a reason why there is none.
// Touches the state of the call when there is an offer.
// Test: tests/negotiation/SDPOfferTest.cpp
#include "SDPCall.h"
#include "SDPPrepare.h"
#include "SDPRepeat.h"

#include <algorithm>

using namespace negotiation;

namespace {

/// Whether the offer has a section of the role that is not rejected.
bool IsOffered(Role role, const Session& session, const Wishes& told) {
    const bool goesOn = session.GoesOn(role);
    if (role == kFloor) {
        // Floor control comes with slides that are offered anew; slides that run without go on without.
        return told.CanServe(kFloor) && IsOffered(kSlides, session, told) &&
               (goesOn || told.IsAsked(kSlides));
    }
    return told.CanServe(role) && (goesOn || told.IsAsked(role));
}

/// Whether a stream that is offered anew is secure: not beside streams that the far end has plain.
bool AreNewStreamsSecure(const Session& session, const Wishes& told, bool isNextPlain) {
    const bool isPlainCall = std::any_of(session.slots.begin(), session.slots.end(), [&](const Slot& slot) {
        return slot.GoesOn() && slot.role != kFloor && !session.isSecured[slot.role];
    });
    return told.srtp == Srtp::Required || (told.srtp == Srtp::Wanted && !isNextPlain && !isPlainCall);
}

/// The transport of a slot's next offer. With SRTP wanted a stream that goes on keeps its own, and none that
/// was secure is offered plain.
/// @param wasSecure  Session::isSecured of its role
std::string_view NextTransport(const Slot& slot, const Wishes& told, bool wasSecure, bool isSecureWhenNew) {
    const Transport* const pair = FindTransport(slot.transport);
    const Transport fallback = {"RTP/AVP", "RTP/SAVP"};
    const Transport& choice = pair == nullptr ? fallback : *pair;
    const bool keeps = (slot.GoesOn() || wasSecure) && told.srtp == Srtp::Wanted;
    return (keeps ? wasSecure : isSecureWhenNew) ? choice.secure : choice.plain;
}

/// The codecs of an offer, best first.
std::vector<Meaning> OfferedMeanings(Role role, const Wishes& told) {
    std::vector<Meaning> meanings;
    if (role != kAudio) {
        if ((told.Video(role).eVideoCodec & PAYLOAD_H264) != 0) {
            meanings.push_back(kMode1);
        }
        meanings.push_back(kMode0);
        return meanings;
    }
    for (const int codec : told.local.listAudioCodecPriority) {
        for (const Meaning audio : {kG722, kG7221, kG711U, kG729}) {
            if (sdp::kAudioCodecs[audio].codec == codec && (told.local.eAudioCodec & codec) != 0) {
                meanings.push_back(audio);
            }
        }
    }
    meanings.push_back(kEvents);
    return meanings;
}

/// Whether both say the same of the audio codecs and their order.
bool HaveSameCodecs(const LocalSDP& a, const LocalSDP& b) {
    return a.eAudioCodec == b.eAudioCodec && a.listAudioCodecPriority == b.listAudioCodecPriority;
}

/// The wishes with the running audio codec first, so that an offer for another reason does not change it. A
/// codec wish that is not agreed yet keeps its order.
/// @param settled  null: nothing was agreed before
std::shared_ptr<const Wishes> RunningFirst(const std::shared_ptr<const Wishes>& wishes, const Wishes* settled,
                                           const Session& session) {
    const std::size_t place = session.Open(kAudio);
    if (place == session.slots.size() || settled == nullptr ||
        !HaveSameCodecs(wishes->local, settled->local)) {
        return wishes;
    }
    const int running = session.streams[place].codec;
    const auto& listed = wishes->local.listAudioCodecPriority;
    const auto found = std::find(listed.begin(), listed.end(), running);
    if (found == listed.begin() || found == listed.end()) {
        return wishes;
    }
    const auto next = std::make_shared<Wishes>(*wishes);
    next->local.listAudioCodecPriority.remove(running);
    next->local.listAudioCodecPriority.push_front(running);
    return next;
}

/// The number that this side offers for a meaning when nothing binds it.
std::int16_t UsualNumber(Meaning meaning, const LocalSDP& local) {
    if (meaning == kMode1 && local.iVideoPayloadMode1 != 0) {
        return static_cast<std::int16_t>(local.iVideoPayloadMode1);
    }
    if (meaning == kMode0 && local.iVideoPayloadMode0 != 0) {
        return static_cast<std::int16_t>(local.iVideoPayloadMode0);
    }
    return kOwnNumbers[meaning];
}

/// Gives every meaning a number: the one it has in the slot, else the usual one, else a free dynamic one. A
/// meaning for which there is none left is not offered.
void ChooseNumbers(Slot& slot, const std::vector<Meaning>& meanings, const LocalSDP& local) {
    constexpr std::int16_t firstDynamic = 96;
    Bound taken;
    taken.fill(kMeanings);
    if (slot.bound != nullptr) {
        taken = *slot.bound;
    }
    const auto isFree = [&taken](std::int16_t number, Meaning meaning) {
        const Meaning bound = taken[static_cast<std::size_t>(number)];
        return bound == kMeanings || bound == meaning;
    };
    Numbers numbers = kNoNumbers;
    for (const Meaning meaning : meanings) {
        std::int16_t number =
            slot.numbers[meaning] >= 0 ? slot.numbers[meaning] : UsualNumber(meaning, local);
        for (std::int16_t other = firstDynamic; !isFree(number, meaning) && other <= kMaxNumber; ++other) {
            number = other;
        }
        if (!isFree(number, meaning)) {
            continue;
        }
        numbers[meaning] = number;
        taken[static_cast<std::size_t>(number)] = meaning;
    }
    slot.numbers = numbers;
    slot.formats.clear();
}

/// The crypto lines of an offer: the suite that runs first, else the one that is wished.
void PlanCrypto(Plan& plan, Role role, sdp::CRYPTO_PROFILE running, const Wishes& told) {
    static constexpr std::string_view kTags[kBothSuites.size()] = {"1", "2"};
    const auto wished = told.local.cryptoAlgo[role];
    const std::size_t known = SuiteIndex(running != sdp::CryptoParams::CRYPTO_NONE ? running : wished);
    const std::size_t first = known < kBothSuites.size() ? known : 0;
    plan.crypto[0] = {kTags[first], first, TextOf(told.keys[role][first])};
    plan.crypto[1] = {kTags[1 - first], 1 - first, TextOf(told.keys[role][1 - first])};
}

Plans OfferPlans(const Session& session, const Session& next, const Wishes& told) {
    Plans plans;
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        const std::size_t place = next.Open(role);
        if (place == next.slots.size()) {
            continue;
        }
        plans[role].slot = &next.slots[place];
        plans[role].port = told.Port(role);
        if (IsSecure(next.slots[place].transport)) {
            const bool isRunning = place < session.slots.size() && session.slots[place].isOpen;
            PlanCrypto(plans[role], role,
                       isRunning ? session.streams[place].suite : sdp::CryptoParams::CRYPTO_NONE, told);
        }
    }
    return plans;
}

} // namespace

Session SDPNegotiator::Call::OfferedSession(const Wishes& told) const {
    Session next;
    next.slots = session.slots;
    next.time = session.time.empty() ? "t=0 0\r\n" : session.time;
    const bool isSecureWhenNew = AreNewStreamsSecure(session, told, isNextPlain);
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        const std::size_t place = session.Last(role);
        if (!IsOffered(role, session, told)) {
            if (place < session.slots.size()) {
                next.slots[place].isOpen = false;
                next.slots[place].isParked = false;
            }
            continue;
        }
        if (place == session.slots.size()) {
            next.slots.emplace_back();
            next.slots.back().media = kRoleMedia[role];
        }
        Slot& slot = place == session.slots.size() ? next.slots.back() : next.slots[place];
        slot.role = role;
        if (role == kFloor) {
            slot.transport = "UDP/BFCP";
            slot.formats = "*";
        } else {
            slot.transport = NextTransport(slot, told, session.isSecured[role], isSecureWhenNew);
            slot.ours = told.Wanted(role);
            slot.isHeldByUs = told.isHeld;
            ChooseNumbers(slot, OfferedMeanings(role, told), told.local);
        }
        slot.isOpen = true;
        slot.isParked = false;
    }
    KeepLabelsApart(next);
    return next;
}

SDPNegotiator::Outcome SDPNegotiator::Call::Offer() {
    if (wishes->local.strDefaultIPAddr.empty()) {
        return Refusal("no local address is set");
    }
    const std::shared_ptr<const Wishes> told = RunningFirst(wishes, settled.get(), session);
    Session next = OfferedSession(*told);
    if (next.slots.empty()) {
        return Refusal("there is no stream to offer");
    }
    const Plans plans = OfferPlans(session, next, *told);
    unsigned roles = 0;
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        roles |= plans[role].slot == nullptr ? 0U : unsigned{Wishes::Bit(role)};
    }
    SDPHandler handler;
    Configure(handler, *told, roles);
    Outcome outcome;
    outcome.text = Write(handler, next, plans);
    pending = std::move(next);
    offered = wishes;
    lastAnswer = SecretText();
    phaseBefore = phase;
    phase = Phase::OfferSent;
    outcome.isTaken = true;
    return outcome;
}

SDPNegotiator::Outcome SDPNegotiator::Call::Refused(int status) {
    const bool isDeclined = status == 488 || status == 606; // RFC 3261, 21.4.26 and 21.6.4
    const bool isFirst = phaseBefore == Phase::Idle;
    if (isDeclined && isFirst && offered->srtp == Srtp::Wanted && !isNextPlain) {
        isNextPlain = true;
    } else if (isDeclined) {
        Decline();
    }
    phase = phaseBefore;
    pending = Session();
    offered = nullptr;
    Outcome outcome;
    outcome.isTaken = true;
    return outcome;
}
