// Stage: prepare, component, shape, streams: an offer to its answer.
// Input: the far end's offer, the state of the call. Output: the answer, or a reason to refuse.
// Touches the state of the call when the offer is answered.
// Test: tests/negotiation/SDPAnswerTest.cpp
#include "SDPBandwidth.h"
#include "SDPCall.h"
#include "SDPPrepare.h"
#include "SDPRepeat.h"

#include <algorithm>

using namespace negotiation;

namespace {

/// The formats of a section at port 0, where "0" changes nothing.
std::string ClosedFormats(const Section& section) {
    std::string formats = RepeatedFormats(section);
    return formats.empty() ? "0" : formats;
}

/// The slot that a section of the offer makes, closed and without formats.
/// @param isHold  the offer holds all streams at port 0
Slot ClosedSlot(const Section& section, const Slot* before, bool isHold) {
    Slot slot;
    slot.media = section.media;
    slot.transport = RepeatedTransport(section);
    // A stream of ours that is not in this text comes back to a slot of its kind. A section at port 0 has no
    // lines that say its role, so it keeps the one that it had.
    const bool isBare = section.number == 0 && before != nullptr && before->role != kNoRole &&
                        EqualsNoCase(before->media, section.media);
    slot.role = isBare ? before->role : section.role;
    if (before != nullptr && before->role == slot.role) {
        slot.bound = before->bound;
        slot.numbers = before->numbers;
        slot.profile = before->profile;
        slot.isParked = isHold && before->GoesOn();
    }
    return slot;
}

/// The numbers of the answer: those of the offer, for the formats that are taken.
Numbers AnswerNumbers(Role role, const Taken& taken) {
    Numbers numbers = kNoNumbers;
    if (role == kMain || role == kSlides) {
        for (const Format* const format : {taken.video.first, taken.video.second}) {
            if (format != nullptr) {
                numbers[format->meaning] = format->number;
            }
        }
    }
    if (role == kAudio) {
        const Format* const events = taken.formats->Find(kEvents);
        numbers[taken.audio->meaning] = taken.audio->number;
        numbers[kEvents] = events == nullptr ? std::int16_t{-1} : events->number;
    }
    return numbers;
}

/// Opens a slot for a section that is taken.
void OpenSlot(Slot& slot, Role role, const Taken& taken, const Reading& reading, const Wishes& told,
              Repairs& repairs) {
    const Lines lines = reading.description.Of(*taken.section);
    slot.isOpen = true;
    slot.label = RepeatedValue(lines, LineKind::Label);
    slot.content = role == kMain ? RepeatedContent(lines) : std::string_view();
    if (role == kFloor) {
        slot.floor = RepeatedValue(lines, LineKind::FloorId);
        slot.conferenceId = RepeatedValue(lines, LineKind::ConferenceId);
        slot.userId = RepeatedValue(lines, LineKind::UserId);
        slot.floorRole = reading.record.fBfcpIsServer ? SDPNegotiator::FloorRole::Client
                                                      : SDPNegotiator::FloorRole::Server;
        return;
    }
    slot.numbers = AnswerNumbers(role, taken);
    slot.profile = taken.video.first == nullptr ? std::string_view() : taken.video.first->profile;
    Bind(slot);
    const Way wanted = told.Wanted(role);
    slot.theirs = WayOf(reading.description, *taken.section, repairs);
    slot.ours = {wanted.send && slot.theirs.receive, wanted.receive && slot.theirs.send};
    slot.isHeldByUs = told.isHeld;
    slot.isHeldByThem = IsHeldByThem(role, false, slot.ours, slot.theirs);
}

/// The session that an answer makes, streams included.
Session AnswerSession(const Reading& reading, const Session& before, const Wishes& told, Repairs& repairs) {
    const Description& offer = reading.description;
    Session next;
    next.slots.reserve(offer.sections.size());
    next.streams.reserve(offer.sections.size());
    for (std::size_t place = 0; place < offer.sections.size(); ++place) {
        const Slot* const old = place < before.slots.size() ? &before.slots[place] : nullptr;
        const Verdict& verdict = reading.choice.verdicts[place];
        Slot& slot =
            next.slots.emplace_back(ClosedSlot(offer.sections[place], old, verdict.state == State::Held));
        if (verdict.state != State::Start || slot.role == kFloor) {
            slot.formats = ClosedFormats(offer.sections[place]);
        }
        AddStream(next, verdict);
    }
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        const Taken& taken = reading.choice.taken[role];
        if (taken.section == nullptr) {
            continue;
        }
        Slot& slot = next.slots[taken.place];
        OpenSlot(slot, role, taken, reading, told, repairs);
        const Key* const key = taken.isSecure ? &told.keys[role][SuiteIndex(taken.crypto.suite)] : nullptr;
        FillStream(next.streams[taken.place], reading, slot, key, repairs);
    }
    KeepLabelsApart(next);
    next.time = RepeatedTimes(offer.Session());
    return next;
}

/// The crypto lines of the answer.
void PlanCrypto(const Choice& choice, const Keys& keys, Plans& plans) {
    for (const Role role : {kAudio, kMain, kSlides}) {
        const Taken& taken = choice.taken[role];
        if (taken.isSecure) {
            const std::size_t suite = SuiteIndex(taken.crypto.suite);
            plans[role].crypto[0] = {taken.crypto.tag, suite, TextOf(keys[role][suite])};
        }
    }
}

/// The rest of the plans: the slots of the answer.
void PlanSlots(const Choice& choice, const Session& next, const Wishes& told, Plans& plans) {
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        const Taken& taken = choice.taken[role];
        if (taken.section != nullptr) {
            plans[role].slot = &next.slots[taken.place];
            plans[role].port = told.Port(role);
        }
    }
}

/// Why no answer can have the sections of an offer; empty when one can.
std::string_view WhyUnanswerable(const Description& offer, const Session& session) {
    if (offer.sections.empty()) {
        return "the offer has no section";
    }
    if (offer.sections.size() < session.slots.size()) {
        return "the offer has fewer sections than the session";
    }
    return std::all_of(offer.sections.begin(), offer.sections.end(), CanBeRepeated)
               ? std::string_view()
               : "an m= line has no medium that an answer could name";
}

/// Why nothing of an offer is taken: what is wrong with the first section that has a port. Empty when
/// sections are taken, and when all of them are on hold at port 0.
std::string_view WhyNothing(const Choice& choice) {
    const auto first =
        std::find_if(choice.verdicts.begin(), choice.verdicts.end(), [](const Verdict& verdict) {
            return verdict.state != State::DeclinedByThem && verdict.state != State::Held;
        });
    return choice.Roles() != 0 || first == choice.verdicts.end() ? std::string_view() : first->reason;
}

/// Whether an offer repeats a key that this side would answer with. The answerer's key has to be one of its
/// own (RFC 4568, 5.1.2).
bool RepeatsKey(const Description& offer, const Plans& plans) {
    return std::any_of(offer.lines.begin(), offer.lines.end(), [&plans](const Line& line) {
        return line.kind == LineKind::Crypto &&
               std::any_of(plans.begin(), plans.end(), [&line](const Plan& plan) {
                   const std::string_view key = plan.crypto[0].key.View();
                   return !key.empty() && sdp::Contains(line.value, key);
               });
    });
}

} // namespace

SDPNegotiator::Outcome SDPNegotiator::Call::Answer(std::string_view offer) {
    if (offer.empty()) {
        return Refusal("a request without a body asks for an offer");
    }
    if (wishes->local.strDefaultIPAddr.empty()) {
        return Refusal("no local address is set", kNotAcceptable);
    }
    repairs.Begin();
    const Description description = Cut(offer, repairs);
    if (const std::string_view reason = WhyUnanswerable(description, session); !reason.empty()) {
        return Refusal(reason, kNotAcceptable);
    }
    const Choice choice = Choose(description, *wishes, session, repairs);
    if (const std::string_view reason = WhyNothing(choice); !reason.empty()) {
        return Refusal(reason, kNotAcceptable);
    }
    // Slides that are to be presented need an offer of their own when this one has none to take them.
    const unsigned left = phase == Phase::Idle ? unsigned{Wishes::Bit(kSlides)} : ~0U;
    std::shared_ptr<const Wishes> asking = Asking(wishes, wishes->asked & left & ~choice.Roles());
    Plans plans;
    PlanCrypto(choice, wishes->keys, plans);
    if (RepeatsKey(description, plans)) {
        const auto rekeyed = std::make_shared<Wishes>(*asking);
        std::uint64_t id = sessionId;
        if (!Make(rekeyed->keys, id, true)) {
            return Refusal(kNoRandom, kNotAcceptable);
        }
        PlanCrypto(choice, rekeyed->keys, plans);
        asking = rekeyed;
    }
    std::shared_ptr<const Wishes> told = Asking(asking, 0);
    SDPHandler handler;
    const RemoteSDP record = ReadPrepared(handler, description, choice, *told);
    Session next = AnswerSession({description, choice, record, false}, session, *told, repairs);

    PlanSlots(choice, next, *told, plans);

    Outcome outcome;
    outcome.text = Write(handler, next, plans);
    wishes = std::move(asking);
    maxBandwidth = BandwidthOf(description, choice.taken, repairs);
    lastAnswer = SecretText();
    Agree(next, std::move(told));
    outcome.isTaken = true;
    return outcome;
}
