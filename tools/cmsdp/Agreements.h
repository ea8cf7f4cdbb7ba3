// Which offer an answer belongs to, and which descriptions of a call are agreed (RFC 3264, 4 and 8).
//
// Tests: tests/tool/captures.py, calls.cases
#pragma once

#include "Timeline.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace cmsdp {

/// A dialog on its way between two hosts. A call that forks has several dialogs, and each hop of a proxy that
/// changes the descriptions has an agreement of its own. Both pairs are in order of text, so that it is the
/// same for both directions; in a folder all is empty.
struct Leg {
    using Pair = std::pair<std::string, std::string>;
    Pair tags;  ///< of From and To (RFC 3261, 12); one is empty in the request that begins a call
    Pair hosts; ///< of sender and receiver, without ports

    Leg() = default;
    Leg(const Pair& tagsOfBoth, const Pair& hostsOfBoth);
    bool operator<(const Leg& other) const {
        return std::tie(tags, hosts) < std::tie(other.tags, other.hosts);
    }
};

using Agreed = std::array<std::optional<std::size_t>, 2>; ///< the last agreed step of each Side

/// An offer and what answered it.
struct OfferAnswer {
    struct Counted {
        std::size_t answer = 0;
        std::optional<std::size_t> offer;
        Agreed before; ///< what the answer replaced
    };
    std::vector<std::size_t> offers; ///< the offer and what proxies made of it; empty when it was not seen
    std::map<Leg, Counted> counted;  ///< the first answer of each leg, which counts (RFC 3261, 13.2.1)
};

/// Adds steps to a call and keeps what is agreed on each leg.
class Agreements {
public:
    explicit Agreements(Call& call) : m_call(call) {}

    /// Adds an offer; fills in `previous` and `isReOffer`.
    std::size_t AddOffer(Step step, const Leg& leg);
    /// Adds an answer to the offer that its receiver sent; of several texts of one offer, as a proxy makes
    /// them, to the one that came from where the answer goes. Fills in `partner` and `previous`, and
    /// `isIgnored` when another answer of the leg counts already.
    std::size_t AddAnswer(Step step, OfferAnswer& exchange, const Leg& leg);
    /// An answer that was added before passes a leg with the same text.
    void Repeat(std::size_t answer, OfferAnswer& exchange, const Leg& leg, const std::string& sender,
                const std::string& receiver);
    /// Of the answers of several branches that of this leg is the offer's partner.
    void Settle(const OfferAnswer& exchange, const Leg& leg);
    /// Adds a step without a description.
    std::size_t Add(Step step);
    /// Takes back what the answers agreed: the offer is refused after all.
    void Refuse(OfferAnswer& exchange);

private:
    Agreed Standing(const Leg& leg) const;
    Agreed Before(const OfferAnswer& exchange, const Leg& leg) const;
    std::optional<std::size_t> OfferOn(const OfferAnswer& exchange, const std::string& sender,
                                       const std::string& receiver) const;
    void Count(std::size_t answer, std::optional<std::size_t> offer, OfferAnswer& exchange, const Leg& leg);
    void Agree(const Leg& leg, const Agreed& agreed);

    Call& m_call;
    std::map<Leg, Agreed> m_agreed;
    std::map<Leg::Pair, Agreed> m_latest; // by tags: requests may take another way than the first one did
};

/// An address without its port: "192.0.2.1" of "192.0.2.1:5060", "2001:db8::1" of "[2001:db8::1]:5060".
std::string HostOf(const std::string& address);

} // namespace cmsdp
