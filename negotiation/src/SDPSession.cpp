// Stage: none; what wishes and the session say when they are asked.
// Input: the state of a call. Output: yes or no, a direction, a place.
// Touches nothing.
// Test: tests/negotiation/SDPSessionTest.cpp
#include "SDPSession.h"

#include <algorithm>
#include <tuple>

SDPNegotiator::Key::~Key() {
    static_assert(sizeof(Key) == baseSDP::kKeyLength + baseSDP::kSaltLength);
    OPENSSL_cleanse(this, sizeof *this);
}

namespace negotiation {
namespace {

auto Fields(const VideoParms& video) {
    return std::tie(video.iFmtpMaxMbps, video.iFmtpMaxFrameSize, video.iFmtpMaxBitRate, video.eVideoCodec,
                    video.iVideoRTPPort, video.strVideoLevel);
}

/// The fields that this layer writes from. Key rows are compared as keys.
auto Fields(const LocalSDP& local) {
    return std::tie(local.eAudioCodec, local.iAudioRTPPort, local.iVideoPresoControlPort, local.iMaxBandwidth,
                    local.cryptoAlgo[kAudio], local.cryptoAlgo[kMain], local.cryptoAlgo[kSlides],
                    local.strMyIPAddr, local.strOExtension, local.strDefaultIPAddr, local.iVideoPayloadMode0,
                    local.iVideoPayloadMode1, local.fVideoTxMuted, local.listAudioCodecPriority);
}

auto Fields(const Slot& slot) {
    return std::tie(slot.media, slot.transport, slot.formats, slot.role, slot.isOpen, slot.isParked,
                    slot.numbers, slot.profile, slot.ours, slot.theirs, slot.isHeldByUs, slot.isHeldByThem,
                    slot.agreed, slot.content, slot.label, slot.floor, slot.conferenceId, slot.userId,
                    slot.floorRole);
}

auto Fields(const Stream& stream) {
    return std::tie(stream.media, stream.role, stream.section, stream.state, stream.reason, stream.send,
                    stream.receive, stream.address, stream.port, stream.rtcpAddress, stream.rtcpPort,
                    stream.codec, stream.sendPayload, stream.receivePayload, stream.sendEvents,
                    stream.receiveEvents, stream.ptime, stream.profile, stream.level,
                    stream.packetizationMode, stream.maxMbps, stream.maxFs, stream.maxBr, stream.suite,
                    stream.ourKey, stream.theirKey, stream.lifetime, stream.mki, stream.ice, stream.floorRole,
                    stream.conferenceId, stream.userId, stream.floor, stream.changes);
}

bool AreEqual(const Stream& a, const Stream& b) {
    return Fields(a) == Fields(b);
}

} // namespace

bool SameCapabilities(const LocalSDP& a, const LocalSDP& b) {
    return Fields(a) == Fields(b) && Fields(a.m_VideoMain) == Fields(b.m_VideoMain) &&
           Fields(a.m_VideoPreso) == Fields(b.m_VideoPreso);
}

bool Wishes::operator==(const Wishes& other) const {
    return SameCapabilities(local, other.local) && keys == other.keys &&
           std::tie(srtp, isHeld, isPresenting, asked) ==
               std::tie(other.srtp, other.isHeld, other.isPresenting, other.asked);
}

Way Wishes::Wanted(Role role) const {
    const bool isSilent = (role == kMain && local.fVideoTxMuted) || (role == kSlides && !isPresenting);
    return {!isSilent, !isHeld};
}

bool Wishes::CanServe(Role role) const {
    const bool hasCodec = role == kAudio   ? (local.eAudioCodec & ~PAYLOAD_UNKNOWN) != 0
                          : role == kFloor ? CanServe(kSlides)
                                           : (Video(role).eVideoCodec & sdp::kAnyH264) != 0;
    return hasCodec && Port(role) > 0;
}

std::int32_t Wishes::Port(Role role) const {
    const std::int32_t ports[kRoles] = {local.iAudioRTPPort, local.m_VideoMain.iVideoRTPPort,
                                        local.m_VideoPreso.iVideoRTPPort, local.iVideoPresoControlPort};
    return ports[role];
}

std::shared_ptr<const Wishes> Asking(const std::shared_ptr<const Wishes>& wishes, unsigned asked) {
    if (wishes->asked == asked) {
        return wishes;
    }
    const auto next = std::make_shared<Wishes>(*wishes);
    next->asked = static_cast<std::uint8_t>(asked);
    return next;
}

bool Slot::operator==(const Slot& other) const {
    const bool areBoundEqual =
        bound == other.bound || (bound != nullptr && other.bound != nullptr && *bound == *other.bound);
    return areBoundEqual && Fields(*this) == Fields(other);
}

bool Session::operator==(const Session& other) const {
    return slots == other.slots && time == other.time && isSecured == other.isSecured &&
           std::equal(streams.begin(), streams.end(), other.streams.begin(), other.streams.end(), AreEqual);
}

std::size_t Session::Open(Role role) const {
    const auto found = std::find_if(slots.begin(), slots.end(),
                                    [role](const Slot& slot) { return slot.role == role && slot.isOpen; });
    return static_cast<std::size_t>(found - slots.begin());
}

std::size_t Session::Last(Role role) const {
    const auto isOf = [role](const Slot& slot) { return slot.role == role; };
    auto found = std::find_if(slots.begin(), slots.end(),
                              [isOf](const Slot& slot) { return isOf(slot) && slot.GoesOn(); });
    if (found == slots.end()) {
        found = std::find_if(slots.begin(), slots.end(), isOf);
    }
    return static_cast<std::size_t>(found - slots.begin());
}

bool Session::GoesOn(Role role) const {
    const std::size_t last = Last(role);
    return last < slots.size() && slots[last].GoesOn();
}

} // namespace negotiation
