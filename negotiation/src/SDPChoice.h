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
    VideoFormats video;               ///< for video
    bool isSecure = false;
    CryptoLine crypto;
};

struct Choice {
    std::array<Taken, kRoles> taken;
    std::vector<Verdict> verdicts; ///< one per section

    bool HasAny() const;
};

/// A profile of RTP that this side speaks, without and with SRTP.
struct Transport {
    std::string_view plain;
    std::string_view secure;
};

/// Finds the pair that a transport belongs to; null for every other transport.
const Transport* FindTransport(std::string_view name);
/// True for the secure one of a pair.
bool IsSecure(std::string_view transport);

/// The role that a section would have by its medium, content and transport; kNoRole for none.
Role RoleOf(const Description& description, const Section& section);

/// The port of a section; 0 for one that is rejected or is no port.
std::int32_t PortOf(const Section& section);

/// Looks whether a section can be taken for a role. Fills `taken` when it can.
/// @param slot  the slot that it continues; null for a new one
Verdict Examine(const Description& description, std::size_t place, Role role, const Wishes& wishes,
                const Slot* slot, Repairs& repairs, Taken& taken);

/// Chooses the sections of an offer: the first of each role that can be taken, secure ones before plain ones.
Choice Choose(const Description& offer, const Wishes& wishes, const Session& session, Repairs& repairs);

} // namespace negotiation
