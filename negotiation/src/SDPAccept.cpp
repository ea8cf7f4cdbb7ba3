// Stage: prepare, component, streams: the answer to our offer.
// Input: the far end's answer, the slots of our offer. Output: the agreed session, or a reason to refuse.
// Touches the state of the call when the answer is taken.
// Test: tests/negotiation/SDPAcceptTest.cpp
#include "SDPBandwidth.h"
#include "SDPCall.h"
#include "SDPPrepare.h"

#include <algorithm>

using namespace negotiation;

namespace {

constexpr Verdict kNotOffered = {State::DeclinedByUs, "the section was offered at port 0"};
constexpr Verdict kAllHeld = {State::Held, "this side holds all streams at port 0"};
constexpr Verdict kDeclined = {State::DeclinedByThem, "the far end's section has port 0"};
constexpr Verdict kOtherSuite = {State::NoUsableKey, "the crypto line is none of those that were offered"};

/// Whether an answer has the sections of the offer, in their order (RFC 3264, 6).
bool FitsOffer(const Description& answer, const Session& offered) {
    return answer.sections.size() == offered.slots.size() &&
           std::equal(answer.sections.begin(), answer.sections.end(), offered.slots.begin(),
                      [](const Section& section, const Slot& slot) {
                          return EqualsNoCase(section.media, slot.media) &&
                                 EqualsNoCase(section.transport, slot.transport);
                      });
}

/// Looks at the section that answers an open slot.
Verdict ReadSection(const Description& answer, std::size_t place, const Slot& slot, const Wishes& told,
                    Repairs& repairs, Taken& taken) {
    if (answer.sections[place].number == 0) {
        return kDeclined;
    }
    const Verdict verdict = Examine(answer, place, slot.role, told, nullptr, repairs, taken);
    if (verdict.state != State::Start || !taken.isSecure) {
        return verdict;
    }
    // The tags of our offers are the places of the suites, counted from 1.
    const auto tag = static_cast<std::size_t>(NumberOrNone(taken.crypto.tag));
    if (tag != SuiteIndex(taken.crypto.suite) + 1) {
        taken = Taken();
        return kOtherSuite;
    }
    return verdict;
}

SDPNegotiator::FloorRole FloorRoleOf(const Description& answer, const Taken& taken) {
    // Without a line the answerer is the server (RFC 4583, 4).
    const bool isClient = answer.Of(*taken.section).Value(LineKind::FloorControl) == "c-only";
    return isClient ? SDPNegotiator::FloorRole::Server : SDPNegotiator::FloorRole::Client;
}

/// The session that the answer makes of the slots of our offer.
void FillSession(const Reading& reading, const Wishes& told, Session& next, Repairs& repairs) {
    next.streams.reserve(next.slots.size());
    for (std::size_t place = 0; place < next.slots.size(); ++place) {
        Slot& slot = next.slots[place];
        if (slot.isOpen && slot.role != kFloor) {
            Bind(slot);
        }
        const Role role = slot.role;
        slot.isOpen = slot.isOpen && reading.choice.verdicts[place].state == State::Start;
        AddStream(next, reading.choice.verdicts[place]);
        if (!slot.isOpen) {
            continue;
        }
        const Taken& taken = reading.choice.taken[role];
        if (role == kFloor) {
            slot.floorRole = FloorRoleOf(reading.description, taken);
        } else {
            slot.theirs = WayOf(reading.description, *taken.section, repairs);
            slot.isHeldByThem = IsHeldByThem(role, true, slot.ours, slot.theirs);
        }
        const Key* const key = taken.isSecure ? &told.keys[role][SuiteIndex(taken.crypto.suite)] : nullptr;
        FillStream(next.streams.back(), reading, slot, key, repairs);
    }
}

} // namespace

SDPNegotiator::Outcome SDPNegotiator::Call::Accept(std::string_view answer) {
    Outcome outcome;
    outcome.isTaken = true;
    if (phase == Phase::Agreed) {
        // A 200 repeats the answer of its 183.
        if (lastAnswer.View().empty()) {
            return Refusal("no offer is pending");
        }
        return answer == lastAnswer.View() ? outcome
                                           : Refusal("the offer was answered before, and otherwise");
    }
    repairs.Begin();
    const Description description = Cut(answer, repairs);
    if (!FitsOffer(description, pending)) {
        return Refusal("the answer has other sections than the offer");
    }
    const bool isHold = std::none_of(pending.slots.begin(), pending.slots.end(),
                                     [](const Slot& slot) { return slot.isOpen; });
    Choice choice;
    choice.verdicts.reserve(pending.slots.size());
    for (std::size_t place = 0; place < pending.slots.size(); ++place) {
        const Slot& slot = pending.slots[place];
        choice.verdicts.push_back(isHold ? kAllHeld : kNotOffered);
        if (slot.isOpen) {
            choice.verdicts.back() =
                ReadSection(description, place, slot, *offered, repairs, choice.taken[slot.role]);
        }
    }
    SDPHandler handler;
    const RemoteSDP record = ReadPrepared(handler, description, choice, *offered);
    Session next = pending;
    FillSession({description, choice, record, true}, *offered, next, repairs);
    SecretText text{std::string(answer)};
    std::shared_ptr<const Wishes> told = Asking(offered, 0);
    // Wishes made while the offer was pending are in no text yet.
    wishes = wishes == offered ? told : Asking(wishes, wishes->asked & ~unsigned{offered->asked});
    lastAnswer = std::move(text);
    maxBandwidth = BandwidthOf(description, choice.taken, repairs);
    Agree(next, std::move(told));
    return outcome;
}
