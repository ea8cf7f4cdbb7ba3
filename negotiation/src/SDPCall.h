// The state of a call, and what the operations on it share.
//
// Test: tests/negotiation/SDPNegotiatorTest.cpp
#pragma once

#include "SDPHandler.h"
#include "SDPShape.h"
#include "SDPStreams.h"

#include <memory>
#include <string>
#include <string_view>

/// What a negotiator holds. It is copied and compared as a whole. A refused operation changes nothing.
struct SDPNegotiator::Call {
    explicit Call(Random source) : random(source) {}
    bool operator==(const Call& other) const;

    Wish SetLocal(const LocalSDP& local);
    Wish Rekey();
    Outcome Offer();
    Outcome Accept(std::string_view answer);
    Outcome Refused(int status);
    Outcome Answer(std::string_view offer);

    /// Drops the wishes of our offer, which was declined.
    void Decline();
    /// Takes new wishes, and lets restrictions take effect at once.
    void Take(std::shared_ptr<const negotiation::Wishes> next) noexcept;
    /// Takes the wishes with one of them changed.
    template <typename Edit>
    void Change(Edit edit) {
        const auto next = std::make_shared<negotiation::Wishes>(*wishes);
        edit(*next);
        Take(next);
    }
    /// Makes the keys that are zero, or all of them, and the session id when it is 0. False when the
    /// generator fails; then neither is to be used.
    bool Make(negotiation::Keys& keys, std::uint64_t& id, bool replaces) const;
    /// Puts "v=" and "o=" in front of a body, as the text that is sent next. The version grows when the body
    /// is another one than the last.
    std::string Seal(std::string_view component, negotiation::SecretText& body);
    /// The text that is sent next: that of a handler, with what it does not write.
    std::string Write(SDPHandler& handler, const negotiation::Session& next, const negotiation::Plans& plans);
    /// A new agreement on what `told` says.
    void Agree(negotiation::Session& next, std::shared_ptr<const negotiation::Wishes> told) noexcept;

    /// Sets a handler up for the roles of a choice and lets it read the sections that are taken.
    RemoteSDP ReadPrepared(SDPHandler& handler, const negotiation::Description& description,
                           const negotiation::Choice& choice, const negotiation::Wishes& told);
    /// The slots of our offer, and the plans to write them by.
    negotiation::Session OfferedSession(const negotiation::Wishes& told) const;
    /// Reads the answer's sections into the slots of our offer.
    void ReadAnswer(const negotiation::Description& description, negotiation::Session& next);

    Random random;
    Phase phase = Phase::Idle;
    Phase phaseBefore = Phase::Idle; ///< while an offer is pending: where its refusal leads

    /// Wishes are replaced and never changed, so that those of a text are kept without a copy.
    std::shared_ptr<const negotiation::Wishes> wishes = std::make_shared<const negotiation::Wishes>();
    std::shared_ptr<const negotiation::Wishes> offered; ///< those of the pending offer; else null
    std::shared_ptr<const negotiation::Wishes> settled; ///< agreed or declined last; null before
    bool isNextPlain = false;                           ///< the first secure offer was refused

    std::uint64_t sessionId = 0; ///< 0 until SetLocal
    std::uint64_t version = 0;   ///< of the last text that was sent
    std::string originUser;      ///< with the address, the same in every text
    std::string originAddress;
    negotiation::SecretText lastBody;   ///< the last text that was sent, after its "o=" line
    negotiation::SecretText lastAnswer; ///< the far end's, while it may come again

    negotiation::Session session; ///< agreed
    negotiation::Session pending; ///< of the pending offer
    std::int32_t maxBandwidth = 0;
    negotiation::Repairs repairs;
};

namespace negotiation {

/// Hands a handler what this side can do, for the roles of a set (Wishes::Bit).
void Configure(SDPHandler& handler, const Wishes& told, unsigned roles);

/// Binds the numbers of a slot: no later text gives them another meaning.
void Bind(Slot& slot);

/// An operation that is refused; `status` is what the far end's request is refused with.
inline SDPNegotiator::Outcome Refusal(std::string_view reason, int status = 0) {
    SDPNegotiator::Outcome outcome;
    outcome.status = status;
    outcome.reason = reason;
    return outcome;
}

inline constexpr std::string_view kNoRandom = "the generator of keys and ids fails";
inline constexpr std::size_t kUsualLength = 2048; ///< bytes of a description, to reserve
inline constexpr int kNotAcceptable = 488;        ///< RFC 3261, 21.4.26

} // namespace negotiation
