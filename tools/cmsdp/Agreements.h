// Which offer an answer belongs to, and which descriptions of a call stand agreed (RFC 3264, 4 and 8).
//
// Tests: tests/tool/captures.py, calls.cases
#pragma once

#include "Timeline.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace cmsdp {

/// Adds steps to a call and keeps what stands agreed.
class Agreements {
public:
    explicit Agreements(Call& call) : m_call(call) {}

    /// Adds an offer; fills in `previous` and `isReOffer`.
    std::size_t AddOffer(Step step);
    /// Adds an answer to the offer that its receiver sent; of several texts of one offer, as a proxy makes
    /// them, to the one that came from where the answer goes. `offers` may be empty: the offer was not seen.
    /// Fills in `partner`, and `previous` unless it is set: what stood when the offer was made.
    std::size_t AddAnswer(Step step, const std::vector<std::size_t>& offers);
    /// Of several answers to one offer this one stands.
    void Settle(std::size_t answer);
    /// Adds a step without a description.
    std::size_t Add(Step step);
    /// Takes back what was agreed since the offer: it is refused after all.
    void Refuse(std::size_t offer);
    /// Whether both sides have an agreed description.
    bool Stands() const { return m_agreed[0].has_value() && m_agreed[1].has_value(); }

private:
    using Agreed = std::array<std::optional<std::size_t>, 2>; // by Side
    std::optional<std::size_t>& Of(Side side) { return m_agreed[static_cast<std::size_t>(side)]; }
    const Agreed& Before(const std::vector<std::size_t>& offers) const;

    Call& m_call;
    Agreed m_agreed;
    std::vector<Agreed> m_before; // for each step, what stood when it was added
};

/// An address without its port: "192.0.2.1" of "192.0.2.1:5060", "2001:db8::1" of "[2001:db8::1]:5060".
std::string HostOf(const std::string& address);

} // namespace cmsdp
