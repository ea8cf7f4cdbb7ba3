// Stage: prepare, the choice of the sections that are taken.
// Input: a cut text, the wishes, the session it continues. Output: a section or none per role, a verdict per
// section.
// Touches nothing but the list of repairs.
// Test: tests/negotiation/SDPChoiceTest.cpp
#include "SDPChoice.h"

#include "SDPRepeat.h"

#include <algorithm>

namespace negotiation {
namespace {

// Why a section is not taken.
constexpr Verdict kTaken = {State::Start, {}};
constexpr Verdict kNoPort = {State::DeclinedByThem, "the far end's section has port 0"};
constexpr Verdict kNotServed = {State::DeclinedByUs,
                                "this side serves no section of this medium and transport"};
constexpr Verdict kNotWanted = {State::DeclinedByUs, "this side has no codec or no port for the stream"};
constexpr Verdict kSecondOne = {State::DeclinedByUs, "another section of this kind is taken"};
constexpr Verdict kNoSrtp = {State::DeclinedByUs, "the section is secure, and SRTP is off here"};
constexpr Verdict kNotSecure = {State::DeclinedByUs, "the section is not secure, and SRTP is required here"};
constexpr Verdict kStaysSecure = {State::DeclinedByUs,
                                  "the stream is secure, and becomes plain only by SRTP off"};
constexpr Verdict kNoCodec = {State::NoCommonCodec, "this side supports no format of the section"};
constexpr Verdict kNoKey = {State::NoUsableKey, "no crypto line of the section can be used"};
constexpr Verdict kNoSlides = {State::DeclinedByUs, "floor control without slides is not taken"};

/// Whether the formats hold a codec for the role; which ones are used. The far end's order decides on audio
/// (RFC 3264, 6.1).
bool ChooseFormats(Role role, const Wishes& wishes, Taken& taken) {
    if (role != kAudio) {
        taken.video = ChooseH264(*taken.formats, (wishes.Video(role).eVideoCodec & PAYLOAD_H264) != 0);
        return taken.video.first != nullptr;
    }
    for (const Format& format : *taken.formats) {
        if (format.meaning < kEvents &&
            (wishes.local.eAudioCodec & sdp::kAudioCodecs[format.meaning].codec) != 0) {
            taken.audio = &format;
            return true;
        }
    }
    return false;
}

/// The policy's word on a section, before its formats are looked at.
Verdict AskPolicy(bool isSecure, Srtp policy) {
    if (isSecure && policy == Srtp::Off) {
        return kNoSrtp;
    }
    return !isSecure && policy == Srtp::Required ? kNotSecure : kTaken;
}

/// Whether a section would make a secure stream plain. A text that was changed on its way could ask for that,
/// at once or after it has closed the stream.
bool IsDowngrade(const Section& section, const Wishes& wishes, const Session& session) {
    return wishes.srtp == Srtp::Wanted && !section.isSecure && session.isSecured[section.role];
}

/// An offer that rejects every section is a hold.
constexpr Verdict kAllHeld = {State::Held, "the far end holds all streams at port 0"};

} // namespace

unsigned Choice::Roles() const {
    unsigned roles = 0;
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        roles |= taken[role].section == nullptr ? 0U : unsigned{Wishes::Bit(role)};
    }
    return roles;
}

Verdict Examine(const Description& description, std::size_t place, Role role, const Wishes& wishes,
                const Slot* slot, Repairs& repairs, Taken& taken) {
    const Section& section = description.sections[place];
    const Lines lines = description.Of(section);
    if (!wishes.CanServe(role)) {
        return kNotWanted;
    }
    Taken found;
    found.place = place;
    found.section = &section;
    if (role == kFloor && RepeatedFormats(section).empty()) {
        return kNoCodec;
    }
    if (role != kFloor) {
        found.isSecure = section.isSecure;
        const Verdict policy = AskPolicy(found.isSecure, wishes.srtp);
        if (policy.state != State::Start) {
            return policy;
        }
        const Known known = {slot == nullptr ? nullptr : slot->bound.get(), slot != nullptr && slot->isOpen};
        found.formats.emplace(section, lines, known, repairs);
        if (!ChooseFormats(role, wishes, found)) {
            return kNoCodec;
        }
        if (found.isSecure) {
            found.crypto = ChooseCrypto(lines, repairs);
            if (found.crypto.suite == sdp::CryptoParams::CRYPTO_NONE) {
                return kNoKey;
            }
        } else if (lines.Find(LineKind::Crypto) != nullptr) {
            repairs.Note(RepairId::PlainCrypto);
        }
    }
    taken = std::move(found);
    return kTaken;
}

Choice Choose(const Description& offer, const Wishes& wishes, const Session& session, Repairs& repairs) {
    Choice choice;
    choice.verdicts.reserve(offer.sections.size());
    for (std::size_t place = 0; place < offer.sections.size(); ++place) {
        const Section& section = offer.sections[place];
        const Role role = section.role;
        if (section.number == 0 || role == kNoRole) {
            choice.verdicts.push_back(section.number == 0 ? kNoPort : kNotServed);
            continue;
        }
        Taken& current = choice.taken[role];
        const bool isTaken = current.section != nullptr;
        // With SRTP wanted a secure section comes before a plain one.
        if (isTaken && (current.isSecure || !section.isSecure)) {
            choice.verdicts.push_back(kSecondOne);
            continue;
        }
        if (IsDowngrade(section, wishes, session)) {
            choice.verdicts.push_back(kStaysSecure);
            continue;
        }
        const Slot* const slot = place < session.slots.size() && session.slots[place].role == role
                                     ? &session.slots[place]
                                     : nullptr;
        const std::size_t before = current.place;
        const Verdict verdict = Examine(offer, place, role, wishes, slot, repairs, current);
        if (verdict.state == State::Start && isTaken) {
            choice.verdicts[before] = kSecondOne;
        }
        choice.verdicts.push_back(verdict);
    }
    Taken& floor = choice.taken[kFloor];
    if (floor.section != nullptr && choice.taken[kSlides].section == nullptr) {
        choice.verdicts[floor.place] = kNoSlides;
        floor = {};
    }
    const bool isHold = std::all_of(offer.sections.begin(), offer.sections.end(),
                                    [](const Section& section) { return section.number == 0; });
    if (isHold) {
        std::fill(choice.verdicts.begin(), choice.verdicts.end(), kAllHeld);
    }
    return choice;
}

} // namespace negotiation
