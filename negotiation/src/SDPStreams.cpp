// Stage: streams, the agreed texts to what the engine starts.
// Input: the component's record, the far end's sections, the slots, the wishes. Output: one entry per
// section.
// Touches the streams of a session; keys are copied into entries that wipe them.
// Test: tests/negotiation/SDPStreamsTest.cpp
#include "SDPStreams.h"

#include "SDPAddress.h"
#include "SDPH264Rates.h"
#include "SDPPrepare.h"

#include "SDPTables.h"

#include <algorithm>
#include <tuple>

namespace negotiation {
namespace {

SDPNegotiator::Media MediaOf(const Slot& slot) {
    using Media = SDPNegotiator::Media;
    if (EqualsNoCase(slot.media, "audio")) {
        return Media::Audio;
    }
    if (EqualsNoCase(slot.media, "video")) {
        return Media::Video;
    }
    return slot.role == kFloor ? Media::FloorControl : Media::Other;
}

void FillAudio(Stream& stream, const Taken& taken, const RemoteSDP& record, const Slot& slot) {
    stream.address = record.strAudioIPAddr;
    stream.codec = record.eAudioCodec;
    stream.sendPayload = taken.audio->number;
    stream.receivePayload = slot.numbers[taken.audio->meaning];
    if (const Format* const events = taken.formats->Find(kEvents)) {
        stream.sendEvents = events->number;
        stream.receiveEvents = slot.numbers[kEvents];
    }
}

void FillVideo(Stream& stream, const Taken& taken, const VideoParms& record, const Slot& slot) {
    const Format& format = *taken.video.first;
    stream.address = record.strVideoIPAddr;
    const bool hasMode1 = format.meaning == kMode1;
    stream.codec = hasMode1 ? PAYLOAD_H264 : PAYLOAD_H264_PACKETIZATION_0;
    stream.sendPayload = format.number;
    // Far ends leave packetization-mode out of an answer: the number that they repeat is the format they
    // mean.
    const bool isRepeated = slot.numbers[kMode1] == format.number || slot.numbers[kMode0] == format.number;
    stream.receivePayload = isRepeated ? format.number : slot.numbers[format.meaning];
    stream.profile = format.profile;
    stream.level = record.strVideoLevel.empty() ? sdp::__H264Profile[0] : record.strVideoLevel;
    stream.packetizationMode = hasMode1 ? 1 : 0;
    stream.maxMbps = record.iFmtpMaxMbps;
    stream.maxFs = record.iFmtpMaxFrameSize;
    stream.maxBr = record.iFmtpMaxBitRate;
    FillRates(stream);
}

void FillKeys(Stream& stream, const CryptoLine& crypto, const Key* ourKey) {
    stream.suite = crypto.suite;
    if (ourKey == nullptr) {
        return;
    }
    stream.ourKey = *ourKey;
    stream.theirKey = crypto.key;
    stream.lifetime = crypto.lifetime;
    stream.mki = crypto.mki;
}

/// The place of "a=rtcp:" when it can be used (RFC 3605, 2.1), otherwise the port above RTP.
void FillRtcp(Stream& stream, Lines lines) {
    constexpr std::int32_t highest = 65535;
    sdp::Words words(lines.Value(LineKind::Rtcp));
    const std::int32_t port = NumberOrNone(words.Next());
    words.Next();
    words.Next();
    const std::string_view address = words.Next();
    const bool isPlace = address.empty() || (IsAddress(address) && !IsNowhere(address));
    const bool isUsable = port > 0 && port <= highest && isPlace;
    const int next = stream.port < highest ? stream.port + 1 : 0;
    stream.rtcpPort = isUsable ? port : next;
    stream.rtcpAddress = isUsable && !address.empty() ? address : std::string_view(stream.address);
}

void FillIce(Stream& stream, const Description& description, Lines lines, Repairs& repairs) {
    constexpr std::size_t ofSession = 2;
    const auto isIce = [](const Line& line) {
        return line.kind >= LineKind::Candidate && line.kind <= LineKind::Ice;
    };
    stream.ice.reserve(static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), isIce)) +
                       ofSession);
    for (const Line& line : lines) {
        if (isIce(line)) {
            stream.ice.emplace_back(line.text);
        }
    }
    for (const LineKind kind : {LineKind::IceUfrag, LineKind::IcePwd}) {
        const Line* const session = description.Session().Find(kind);
        if (session != nullptr && lines.Find(kind) == nullptr && repairs.Use(RepairId::SessionIce)) {
            stream.ice.emplace_back(session->text);
        }
    }
}

void FillFloor(Stream& stream, Lines lines, const RemoteSDP& record, const Slot& slot) {
    stream.floorRole = slot.floorRole;
    stream.conferenceId = record.iBfcpConfid;
    stream.userId = record.iBfcpUserid;
    stream.floor = lines.Value(LineKind::FloorId);
}

bool IsRunning(State state) {
    return state == State::Start || state == State::Held;
}

/// The change of a stream that ran before or not, and runs now or not.
std::uint32_t Running(bool before, bool now) {
    return before == now ? SDPNegotiator::kNothing : now ? SDPNegotiator::kStarted : SDPNegotiator::kStopped;
}

auto Codec(const Stream& s) {
    return std::tie(s.codec, s.sendPayload, s.receivePayload, s.sendEvents, s.receiveEvents,
                    s.packetizationMode);
}
auto Place(const Stream& s) {
    return std::tie(s.address, s.port, s.rtcpAddress, s.rtcpPort);
}
auto Keying(const Stream& s) {
    return std::tie(s.suite, s.ourKey, s.theirKey, s.lifetime, s.mki);
}
auto Limits(const Stream& s) {
    return std::tie(s.profile, s.level, s.maxMbps, s.maxFs, s.maxBr, s.ptime);
}
auto Control(const Stream& s) {
    return std::tie(s.floorRole, s.conferenceId, s.userId, s.floor, s.ice);
}
Flow FlowOf(const Stream& s) {
    return {s.state, {s.send, s.receive}};
}

/// Whether a stream ran at the previous agreement, or a wish has started it since.
bool Ran(const Stream& before, const Flow& agreed) {
    return IsRunning(before.state) || IsRunning(agreed.state);
}

/// What an agreement changes of a stream since the one before. A wish may have stopped it in between: then it
/// starts again.
std::uint32_t Differences(const Stream& before, const Flow& agreed, const Stream& now) {
    const bool isRunning = IsRunning(now.state);
    const bool ran = isRunning ? IsRunning(before.state) && IsRunning(agreed.state) : Ran(before, agreed);
    if (!ran || !isRunning) {
        return Running(ran, isRunning);
    }
    return (agreed == FlowOf(now) ? 0U : SDPNegotiator::kDirection) |
           (Place(before) == Place(now) ? 0U : SDPNegotiator::kAddress) |
           (Codec(before) == Codec(now) ? 0U : SDPNegotiator::kCodec) |
           (Keying(before) == Keying(now) ? 0U : SDPNegotiator::kKeys) |
           (Limits(before) == Limits(now) ? 0U : SDPNegotiator::kLimits) |
           (Control(before) == Control(now) ? 0U : SDPNegotiator::kControl);
}

Verdict StateOf(const Stream& stream, const Slot& slot, Role role, const Wishes& wishes) {
    const bool isPlain = stream.suite == sdp::CryptoParams::CRYPTO_NONE;
    if (role != kFloor && isPlain && wishes.srtp == Srtp::Required) {
        return {State::NoUsableKey, "the stream is not secure, and SRTP is required here"};
    }
    if (!isPlain && stream.theirKey == stream.ourKey) {
        return {State::NoUsableKey, "the far end's key is this side's own"};
    }
    if (stream.address.empty()) {
        return {State::NoAddress, "the far end gives no address"};
    }
    if (role == kFloor) {
        return {State::Start, {}};
    }
    const bool isHeldByUs = slot.isHeldByUs || wishes.isHeld;
    if (isHeldByUs || slot.isHeldByThem) {
        return {State::Held, isHeldByUs && slot.isHeldByThem ? "both sides hold the stream"
                             : isHeldByUs                    ? "this side holds the stream"
                                                             : "the far end holds the stream"};
    }
    return IsNowhere(stream.address) ? Verdict{State::Held, "the far end's address is none to send to"}
                                     : Verdict{State::Start, {}};
}

void RefreshOne(Stream& stream, const Slot& slot, Role role, const Wishes& wishes) {
    const Verdict verdict = StateOf(stream, slot, role, wishes);
    const Way wanted = role == kFloor ? Way{true, true} : wishes.Wanted(role);
    stream.state = verdict.state;
    stream.reason = verdict.reason;
    const bool isRunning = IsRunning(stream.state);
    stream.send =
        isRunning && wanted.send && slot.ours.send && slot.theirs.receive && !IsNowhere(stream.address);
    stream.receive = isRunning && wanted.receive && slot.ours.receive && slot.theirs.send;
}

} // namespace

void AddStream(Session& session, const Verdict& verdict) {
    const std::size_t place = session.streams.size();
    Stream& stream = session.streams.emplace_back();
    stream.media = MediaOf(session.slots[place]);
    stream.section = place;
    stream.state = verdict.state;
    stream.reason = verdict.reason;
}

void FillStream(Stream& stream, const Reading& reading, const Slot& slot, const Key* ourKey,
                Repairs& repairs) {
    const Taken& taken = reading.choice.taken[slot.role];
    const Lines lines = reading.description.Of(*taken.section);
    stream.port = taken.section->number;
    if (slot.role == kFloor) {
        stream.address = AddressOf(lines, AddressOf(reading.description.Session()));
        FillFloor(stream, lines, reading.record, slot);
        return;
    }
    if (slot.role == kAudio) {
        FillAudio(stream, taken, reading.record, slot);
    } else if (slot.role == kMain) {
        stream.role = VIDEOTYPE_MAIN;
        FillVideo(stream, taken, reading.record.m_VideoMain, slot);
    } else {
        stream.role = VIDEOTYPE_PRESO;
        FillVideo(stream, taken, reading.record.m_VideoPreso, slot);
    }
    stream.ptime = std::max(0, NumberOrNone(lines.Value(LineKind::Ptime)));
    FillKeys(stream, taken.crypto, ourKey);
    FillRtcp(stream, lines);
    FillIce(stream, reading.description, lines, repairs);
}

bool IsHeldByThem(Role role, bool isAnswer, Way ours, Way theirs) {
    if (theirs.receive) {
        return false;
    }
    // An answer without receiving is no hold when nothing was to be sent. A slides section that is offered
    // sendonly is one that the far end presents in.
    return isAnswer ? ours.send : role != kSlides || !theirs.send;
}

void ApplyWishes(Session& session, const Wishes& wishes) noexcept {
    for (std::size_t place = 0; place < session.streams.size(); ++place) {
        const Slot& slot = session.slots[place];
        Stream& stream = session.streams[place];
        const Flow before = FlowOf(stream);
        if (slot.isOpen) {
            RefreshOne(stream, slot, slot.role, wishes);
        }
        const bool isTurned = IsRunning(before.state) && !(before == FlowOf(stream));
        stream.changes = Running(IsRunning(before.state), IsRunning(stream.state)) |
                         (isTurned ? SDPNegotiator::kDirection : 0U);
    }
}

void ApplyAgreement(Session& session, const Session& before, const Wishes& wishes) noexcept {
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        const std::size_t open = session.Open(role);
        const std::size_t last = before.Open(role);
        const bool isOpen = open < session.slots.size();
        const bool wasOpen = last < before.slots.size();
        // A role that goes to another section is another stream there.
        const bool goesOn = isOpen && wasOpen && open == last;
        session.isSecured[role] = isOpen ? IsSecure(session.slots[open].transport) : before.isSecured[role];
        if (isOpen) {
            Stream& stream = session.streams[open];
            RefreshOne(stream, session.slots[open], role, wishes);
            session.slots[open].agreed = FlowOf(stream);
            stream.changes |= goesOn ? Differences(before.streams[last], before.slots[last].agreed, stream)
                                     : Running(false, IsRunning(stream.state));
        }
        if (wasOpen && !goesOn && Ran(before.streams[last], before.slots[last].agreed)) {
            // Another stream may have taken the section.
            session.streams[last].changes |= SDPNegotiator::kStopped;
        }
    }
}

} // namespace negotiation
