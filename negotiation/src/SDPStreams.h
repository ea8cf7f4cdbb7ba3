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

/// The streams before an agreement, by role.
using Before = std::array<Stream, kRoles>;

/// Works out state, directions and changes of the streams that were taken, from both texts and the wishes of
/// the moment.
void Refresh(Session& session, const Wishes& wishes, const Before& before);

} // namespace negotiation
