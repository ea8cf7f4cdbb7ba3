// What to start: the streams of the agreed session.
//
// Test: tests/negotiation/SDPStreamsTest.cpp
#pragma once

#include "SDPChoice.h"

namespace negotiation {

/// A text of the far end as it was read.
struct Reading {
    const Description& description;
    const Choice& choice;
    const RemoteSDP& record;
    bool isAnswer; ///< it answers an offer of this side
};

/// Adds the entry of a section, with the verdict on it.
void AddStream(Session& session, const Verdict& verdict);

/// Fills the entry of a section that was taken. The directions are left to Refresh().
/// @param ourKey  this side's key for the suite; null: plain
void FillStream(Stream& stream, const Reading& reading, const Slot& slot, const Key* ourKey,
                Repairs& repairs);

/// Whether the far end holds a stream.
bool IsHeldByThem(Role role, bool isAnswer, Way ours, Way theirs);

/// Works out state and directions of the streams that run, from both texts and the wishes of the moment, and
/// what a new wish changed of them.
void ApplyWishes(Session& session, const Wishes& wishes) noexcept;

/// The same after an agreement, with what differs from the session before.
void ApplyAgreement(Session& session, const Session& before, const Wishes& wishes) noexcept;

} // namespace negotiation
