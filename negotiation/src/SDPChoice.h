// Which sections of a far end's text are taken, and why the others are not.
//
// Test: tests/negotiation/SDPChoiceTest.cpp
#pragma once

#include "SDPSession.h"

#include <optional>

namespace negotiation {

/// Why a section is or is not taken.
struct Verdict {
    State state = State::DeclinedByUs;
    std::string_view reason;
};

/// One section that is taken. The views point into the far end's text.
struct Taken {
    std::size_t place = 0;
    const Section* section = nullptr; ///< null: nothing was taken for this role
    std::optional<Formats> formats;   ///< not for floor control
    const Format* audio = nullptr;    ///< for audio: the format that is used
    VideoFormats video;               ///< for video: those that are used
    bool isSecure = false;
    CryptoLine crypto;
};

struct Choice {
    std::array<Taken, kRoles> taken;
    std::vector<Verdict> verdicts; ///< one per section

    /// The roles that have a section, one bit each (Wishes::Bit).
    unsigned Roles() const;
};

/// Looks whether a section can be taken for a role. Fills `taken` when it can.
/// @param slot  the slot that it continues; null for a new one
Verdict Examine(const Description& description, std::size_t place, Role role, const Wishes& wishes,
                const Slot* slot, Repairs& repairs, Taken& taken);

/// Chooses the sections of an offer: the first of each role that can be taken, secure ones before plain ones.
Choice Choose(const Description& offer, const Wishes& wishes, const Session& session, Repairs& repairs);

} // namespace negotiation
