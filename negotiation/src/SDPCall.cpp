// Stage: shape, what offers and answers share: the component's set-up, keys, the origin line, the agreement.
// Input: wishes, a finished body. Output: a text, a new agreed state.
// Touches the state of the call, at the end of an operation that succeeds.
// Test: tests/negotiation/SDPNegotiatorTest.cpp
#include "SDPCall.h"
#include "SDPPrepare.h"

#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>

using namespace negotiation;

namespace {

bool FromLibcrypto(unsigned char* bytes, std::size_t length) {
    return RAND_bytes(bytes, static_cast<int>(length)) == 1;
}

bool IsSame(const std::shared_ptr<const Wishes>& a, const std::shared_ptr<const Wishes>& b) {
    return a == b || (a != nullptr && b != nullptr && *a == *b);
}

/// Everything but the wishes, which are shared.
template <typename State>
auto Fields(const State& call) {
    return std::tie(call.phase, call.phaseBefore, call.isNextPlain, call.sessionId, call.version,
                    call.originUser, call.originAddress, call.lastBody, call.lastAnswer, call.session,
                    call.pending, call.maxBandwidth);
}

} // namespace

bool SDPNegotiator::Call::operator==(const Call& other) const {
    return IsSame(wishes, other.wishes) && IsSame(offered, other.offered) && IsSame(settled, other.settled) &&
           Fields(*this) == Fields(other);
}

void SDPNegotiator::Call::Take(std::shared_ptr<const Wishes> next) noexcept {
    wishes = std::move(next);
    ApplyWishes(session, *wishes);
}

bool SDPNegotiator::Call::Make(Keys& keys, std::uint64_t& id, bool replaces) const {
    constexpr std::size_t length = baseSDP::kKeyLength + baseSDP::kSaltLength;
    constexpr std::uint64_t bits62 = (std::uint64_t{1} << 62U) - 1;
    std::array<Key*, baseSDP::SRTP_MAX * kBothSuites.size()> wanted{};
    std::size_t count = 0;
    for (std::size_t n = 0; n < wanted.size(); ++n) {
        Key& key = keys[n / kBothSuites.size()][n % kBothSuites.size()];
        if (replaces || IsZero(key)) {
            wanted[count++] = &key;
        }
    }
    if (count == 0 && id != 0) {
        return true;
    }
    // One call for all of it: a call of the generator costs more than a whole section of a description.
    unsigned char bytes[sizeof id + wanted.size() * length] = {};
    const Random fill = random == nullptr ? FromLibcrypto : random;
    bool isMade = fill(bytes, sizeof id + count * length);
    for (std::size_t n = 0; n < count && isMade; ++n) {
        const unsigned char* const from = bytes + sizeof id + n * length;
        std::copy_n(from, baseSDP::kKeyLength, wanted[n]->key.begin());
        std::copy_n(from + baseSDP::kKeyLength, baseSDP::kSaltLength, wanted[n]->salt.begin());
        // A key of zeros is what a generator leaves that does nothing.
        isMade = !IsZero(*wanted[n]);
    }
    if (id == 0 && isMade) {
        for (std::size_t n = 0; n < sizeof id; ++n) {
            id |= std::uint64_t{bytes[n]} << (8 * n); // in the same order on every machine
        }
        id = std::max<std::uint64_t>(id & bits62, 1);
    }
    sdp::Wipe(bytes);
    return isMade;
}

std::string SDPNegotiator::Call::Seal(std::string_view component, SecretText& body) {
    std::string user = originUser;
    std::string address = originAddress;
    if (version == 0) {
        user = OriginUser(component);
        address =
            wishes->local.strMyIPAddr.empty() ? wishes->local.strDefaultIPAddr : wishes->local.strMyIPAddr;
    }
    const std::uint64_t next = version + (body == lastBody ? 0 : 1);
    std::string text;
    constexpr std::size_t head = 96; // words and numbers of the two lines
    text.reserve(body.View().size() + user.size() + address.size() + head);
    text += "v=0\r\no=";
    text += user;
    text += ' ';
    text += std::to_string(sessionId);
    text += ' ';
    text += std::to_string(next);
    text += " IN ";
    text += AddressType(address);
    text += ' ';
    text += address;
    text += "\r\n";
    text += body.View();
    lastBody = std::move(body);
    version = next;
    originUser.swap(user);
    originAddress.swap(address);
    return text;
}

std::string SDPNegotiator::Call::Write(SDPHandler& handler, const Session& next, const Plans& plans) {
    // The component's text has no key: SRTP is off in this handler.
    const std::string component = handler.GetLocalSDP();
    sdp::Writer writer(kUsualLength);
    WriteBody(writer, component, next, plans);
    SecretText body(writer.Take());
    return Seal(component, body);
}

RemoteSDP SDPNegotiator::Call::ReadPrepared(SDPHandler& handler, const Description& description,
                                            const Choice& choice, const Wishes& told) {
    RemoteSDP record;
    Configure(handler, told, choice.Roles());
    sdp::Writer prepared(kUsualLength);
    WritePrepared(prepared, description, choice.taken, repairs);
    handler.ParseTheSDP(prepared.Take(), record);
    return record;
}

void SDPNegotiator::Call::Agree(Session& next, std::shared_ptr<const Wishes> told) noexcept {
    const Session old = std::exchange(session, std::move(next));
    pending = Session();
    settled = std::move(told);
    offered = nullptr;
    phase = Phase::Agreed;
    ApplyAgreement(session, old, *wishes);
}

namespace negotiation {

void Configure(SDPHandler& handler, const Wishes& told, unsigned roles) {
    const auto has = [roles](Role role) { return (roles & Wishes::Bit(role)) != 0; };
    handler.MyLocalSDP = told.local;
    LocalSDP& local = handler.MyLocalSDP;
    if (!has(kAudio)) {
        local.listAudioCodecPriority.clear();
    }
    // Mode 1 brings the bandwidth and both formats [B11] [B24]; what is not listed is cut later.
    const auto none = static_cast<PayloadType_t>(0);
    local.m_VideoMain.eVideoCodec = has(kMain) ? PAYLOAD_H264 : none;
    local.m_VideoPreso.eVideoCodec = has(kSlides) ? PAYLOAD_H264 : none;
    local.iVideoPayloadMode1 = kOwnNumbers[kMode1];
    local.iVideoPayloadMode0 = kOwnNumbers[kMode0];
    local.fVideoTxMuted = false;
    handler.SetBfcpSupport(has(kSlides) || has(kFloor));
    // No section is left over to be rejected [B18]. Without repairs the component can take a part of a line
    // for one, and that is in no place of the far end's text.
    handler.SetMaxSupportedSessions(std::numeric_limits<std::uint32_t>::max());
}

void Bind(Slot& slot) {
    Bound bound;
    if (slot.bound == nullptr) {
        bound.fill(kMeanings);
    } else {
        bound = *slot.bound;
    }
    for (std::size_t meaning = 0; meaning < kMeanings; ++meaning) {
        if (slot.numbers[meaning] >= 0) {
            bound[static_cast<std::size_t>(slot.numbers[meaning])] = static_cast<Meaning>(meaning);
        }
    }
    slot.bound = std::make_shared<const Bound>(bound);
}

} // namespace negotiation
