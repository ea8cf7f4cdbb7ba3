// What a call holds between texts: the wishes of this side, and the session as slots.
//
// A slot is one "m=" line. It keeps its place for the life of the call (RFC 3264, 8).
// Test: tests/negotiation/SDPSessionTest.cpp
#pragma once

#include "SDPCrypto.h"
#include "SDPFormats.h"
#include "SDPNegotiator.h"
#include "SDPSecrecy.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace negotiation {

using Stream = SDPNegotiator::Stream;
using State = SDPNegotiator::State;
using Srtp = SDPNegotiator::Srtp;

/// Directions as one side writes them.
struct Way {
    bool send = false;
    bool receive = false;

    bool operator==(const Way& other) const { return send == other.send && receive == other.receive; }
};

/// Whether a stream runs, and which way.
struct Flow {
    State state = State::DeclinedByUs;
    Way way;

    bool operator==(const Flow& other) const { return state == other.state && way == other.way; }
};

/// A text that carries keys: wiped when it ends or is replaced.
class SecretText {
public:
    SecretText() = default;
    explicit SecretText(std::string&& text) noexcept { m_text.swap(text); }
    SecretText(const SecretText&) = default;
    SecretText(SecretText&& other) noexcept { m_text.swap(other.m_text); }
    SecretText& operator=(SecretText other) noexcept {
        m_text.swap(other.m_text);
        return *this;
    }
    ~SecretText() { sdp::Wipe(m_text); }

    std::string_view View() const noexcept { return m_text; }
    bool operator==(const SecretText& other) const { return m_text == other.m_text; }

private:
    std::string m_text;
};

/// Whether two records say the same of what this side can do. Their key rows are not compared.
bool SameCapabilities(const LocalSDP& a, const LocalSDP& b);

struct Wishes {
    LocalSDP local;
    Keys keys;
    Srtp srtp = Srtp::Off;
    bool isHeld = false;
    bool isPresenting = false;
    std::uint8_t asked = 0; ///< roles that the next offer opens, one bit each

    bool operator==(const Wishes& other) const;
    bool IsAsked(Role role) const { return (asked & Bit(role)) != 0; }
    static std::uint8_t Bit(Role role) { return static_cast<std::uint8_t>(1U << role); }
    /// What this side would send and receive if the far end took everything.
    Way Wanted(Role role) const;
    /// Whether this side can serve the role at all.
    bool CanServe(Role role) const;
    /// This side's RTP or floor control port.
    std::int32_t Port(Role role) const;
    const VideoParms& Video(Role role) const {
        return role == kSlides ? local.m_VideoPreso : local.m_VideoMain;
    }
};

/// The same wishes with another set of roles to open.
std::shared_ptr<const Wishes> Asking(const std::shared_ptr<const Wishes>& wishes, unsigned asked);

struct Slot {
    std::string media;            ///< "audio"
    std::string transport;        ///< "RTP/SAVPF", as it is written
    std::string formats;          ///< written when the slot is closed; empty: its numbers
    Role role = kNoRole;          ///< whose slot it is, or was when it is closed
    bool isOpen = false;          ///< both sides agreed on a port
    bool isParked = false;        ///< closed by an offer that holds all streams at port 0
    Numbers numbers = kNoNumbers; ///< this side's numbers; kept for the next offer
    /// Meanings that no later text may change; null while nothing is bound. Shared between states, because a
    /// bound meaning is never changed in place.
    std::shared_ptr<const Bound> bound;
    std::string profile;     ///< H.264 profile and constraints of the texts, "42e0"
    Way ours;                ///< as the last text says
    Way theirs;              ///< as the last text says
    bool isHeldByUs = false; ///< the agreed text holds
    bool isHeldByThem = false;
    Flow agreed;              ///< of the stream when it was agreed; wishes may have changed it since
    std::string content;      ///< of main video, value of "a=content:"; empty: this side's own
    std::string label;        ///< value of "a=label:"; empty: this side's own
    std::string floor;        ///< value of "a=floorid:"; empty: this side's own
    std::string conferenceId; ///< value of "a=confid:"; empty: this side's own
    std::string userId;       ///< value of "a=userid:"; empty: this side's own
    SDPNegotiator::FloorRole floorRole = SDPNegotiator::FloorRole::None;

    bool operator==(const Slot& other) const;
    /// Whether this side's next offer has the stream without being asked for it.
    bool GoesOn() const { return isOpen || isParked; }
};

struct Session {
    std::vector<Slot> slots;
    std::vector<Stream> streams; ///< one per slot; the directions are those that were agreed
    std::string time;            ///< the "t=" lines
    /// Per role, whether the stream that was agreed last is or was secure. It outlives the stream, so that
    /// none that is closed in between comes back plain.
    std::array<bool, kRoles> isSecured{};

    bool operator==(const Session& other) const;

    /// Place of the open slot of a role; the number of slots for none.
    std::size_t Open(Role role) const;
    /// Place of the slot that a role has or last had; the number of slots for none.
    std::size_t Last(Role role) const;
    /// Whether the role has a slot that goes on.
    bool GoesOn(Role role) const;
};

} // namespace negotiation
