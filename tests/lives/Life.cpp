// Steps and laws of one life; see Life.h.
#include "Life.h"

#include "Capabilities.h"

#include <algorithm>
#include <vector>

namespace lives {

namespace {

using Stream = SDPNegotiator::Stream;
using State = SDPNegotiator::State;
using Srtp = SDPNegotiator::Srtp;

/// Keys and session ids of a life repeat with its seed.
std::minstd_rand g_bytes;

bool RandomBytes(unsigned char* bytes, std::size_t length) {
    std::generate_n(bytes, length, [] { return static_cast<unsigned char>(g_bytes() >> 8U); });
    return true;
}

bool IsMedia(const Stream& stream) {
    return stream.media == SDPNegotiator::Media::Audio || stream.media == SDPNegotiator::Media::Video;
}

/// Length of the lines up to the end of the origin line: v= and o=.
std::size_t OriginEnd(const std::string& text) {
    return text.find("\r\n", text.find("\r\no=") + 2) + 2;
}

/// What the next text of a side has to continue: the sections that were agreed last, with the origin of the
/// text that was sent last. Empty when there is nothing to continue.
std::string Previous(const std::string& agreed, const std::string& sent) {
    if (agreed.empty() || agreed == sent) {
        return agreed;
    }
    return sent.substr(0, OriginEnd(sent)) + agreed.substr(OriginEnd(agreed));
}

/// Whether two texts say the same after their origin lines.
bool IsSameSession(const std::string& a, const std::string& b) {
    return a.substr(OriginEnd(a)) == b.substr(OriginEnd(b));
}

/// Whether media of the stream may flow at all.
bool IsAgreed(const Stream& stream) {
    return stream.state == State::Start || stream.state == State::Held;
}

bool IsSame(const SDPNegotiator::Key& a, const SDPNegotiator::Key& b) {
    return a.key == b.key && a.salt == b.salt;
}

} // namespace

Life::Side::Side(std::string_view who) : name(who), call(RandomBytes) {}

Life::Life(std::uint32_t seed, Tally& tally) : m_random(seed), m_tally(tally) {
    g_bytes.seed(seed + 1);
    m_sides = {Side("near"), Side("away")};
    for (Side& side : m_sides) {
        side.srtp = static_cast<Srtp>(Roll(3));
        side.call.SetSrtp(side.srtp);
        side.call.SetLocal(RandomLocal(side));
    }
}

std::string Life::Run(int steps) {
    for (int step = 0; step < steps && !m_hasFailed; ++step) {
        Step();
    }
    return m_hasFailed ? m_story : std::string();
}

void Life::Step() {
    Side& first = m_sides[Roll(2)];
    Side& second = &first == &m_sides[0] ? m_sides[1] : m_sides[0];
    switch (Roll(10)) {
    case 0:
        Glare();
        break;
    case 1: {
        constexpr std::array<int, 5> statuses = {488, 606, 408, 491, 500};
        Refuse(first, statuses[Roll(statuses.size())]);
        break;
    }
    case 2:
    case 3:
    case 4:
        Exchange(first, second);
        break;
    default:
        WishOf(first);
        break;
    }
}

LocalSDP Life::RandomLocal(const Side& side) {
    LocalSDP local = support::PresentationLocal();
    if (&side == &m_sides[1]) {
        local = support::Away(local);
    }
    std::vector<int> codecs = {PAYLOAD_G722, PAYLOAD_G7221, PAYLOAD_G711U, PAYLOAD_G729};
    std::shuffle(codecs.begin(), codecs.end(), m_random);
    codecs.resize(1 + Roll(4));
    local.listAudioCodecPriority.assign(codecs.begin(), codecs.end());
    if (Roll(8) == 0) {
        local.strDefaultIPAddr = Roll(2) == 0 ? "2001:db8::1" : "198.51.100.20";
    }
    if (Roll(8) == 0) {
        local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    }
    if (Roll(8) == 0) {
        local.m_VideoMain.eVideoCodec = PayloadType_t(0);
    }
    if (Roll(8) == 0) {
        local.m_VideoPreso.eVideoCodec = PayloadType_t(0);
    }
    if (Roll(12) == 0) {
        local.iAudioRTPPort = 0;
    }
    if (Roll(6) == 0) {
        std::swap(local.iVideoPayloadMode0, local.iVideoPayloadMode1);
    }
    local.iMaxBandwidth = Roll(3) == 0 ? 0 : 512000;
    for (auto& suite : local.cryptoAlgo) {
        suite = Roll(2) == 0 ? support::kSuite32 : support::kSuite80;
    }
    return local;
}

void Life::WishOf(Side& side) {
    ++m_tally.wishes;
    const bool isOn = Roll(2) == 0;
    switch (Roll(6)) {
    case 0:
        Tell(std::string(side.name) + " holds: " + (isOn ? "yes" : "no"));
        side.call.Hold(isOn);
        break;
    case 1:
        Tell(std::string(side.name) + " mutes the camera: " + (isOn ? "yes" : "no"));
        side.call.MuteCamera(isOn);
        break;
    case 2:
        Tell(std::string(side.name) + " presents: " + (isOn ? "yes" : "no"));
        side.call.Present(isOn);
        break;
    case 3:
        side.srtp = static_cast<Srtp>(Roll(3));
        Tell(std::string(side.name) + " wants SRTP: " + std::to_string(static_cast<int>(side.srtp)));
        side.call.SetSrtp(side.srtp);
        break;
    case 4:
        Tell(std::string(side.name) + " makes new keys");
        side.call.Rekey();
        break;
    default: {
        const SDPNegotiator::Wish wish = side.call.SetLocal(RandomLocal(side));
        Tell(std::string(side.name) + " has other capabilities");
        if (!wish.isTaken) {
            Fail("capabilities that are in order are taken: " + std::string(wish.reason));
        }
        break;
    }
    }
    CheckSecrecy(side);
}

bool Life::SendText(Side& side, const std::string& text) {
    const std::string previous = Previous(side.agreed, side.sent);
    // A text that goes back to what was agreed before a refusal has another version than the refused one.
    const bool isReturn = side.agreed != side.sent && !previous.empty() && IsSameSession(previous, text);
    // The refused text once more was judged when it was sent first.
    if (!previous.empty() && !isReturn && text != side.sent) {
        for (const JudgeViolation& violation : CheckNext(previous, text)) {
            Fail(std::string(side.name) + "'s next text continues its session: " + violation.rule->id + " " +
                 violation.particulars + "\n" + previous + "\n" + text);
        }
    }
    side.sent = text;
    return !m_hasFailed;
}

void Life::Exchange(Side& offerer, Side& answerer) {
    const SDPNegotiator::Outcome offer = offerer.call.Offer();
    if (!offer.isTaken) {
        Tell(std::string(offerer.name) + " cannot offer: " + std::string(offer.reason));
        return;
    }
    Tell(std::string(offerer.name) + " offers\n" + offer.text);
    if (!SendText(offerer, offer.text)) {
        return;
    }
    const SDPNegotiator before = answerer.call;
    const SDPNegotiator::Outcome answer = answerer.call.Answer(offer.text);
    if (!answer.isTaken) {
        Tell(std::string(answerer.name) + " refuses: " + std::string(answer.reason));
        ++m_tally.refusals;
        if (answerer.call != before) {
            Fail("a refused offer leaves the answerer as it was");
        }
        offerer.call.Refused(answer.status);
        CheckSecrecy(offerer);
        return;
    }
    Tell(std::string(answerer.name) + " answers\n" + answer.text);
    for (const JudgeViolation& violation : CheckAnswer(offer.text, answer.text)) {
        Fail(std::string("the answer fits the offer: ") + violation.rule->id + " " + violation.particulars);
    }
    if (!SendText(answerer, answer.text)) {
        return;
    }
    const SDPNegotiator::Outcome taken = offerer.call.Accept(answer.text);
    if (!taken.isTaken) {
        Fail("our own answer is taken: " + std::string(taken.reason));
        return;
    }
    const SDPNegotiator once = offerer.call;
    offerer.call.Accept(answer.text);
    if (offerer.call != once) {
        Fail("the same answer once more changes nothing");
    }
    ++m_tally.exchanges;
    offerer.agreed = offerer.sent;
    answerer.agreed = answerer.sent;
    CheckAgreement();
}

void Life::Glare() {
    ++m_tally.glares;
    std::array<std::string, 2> offers;
    for (std::size_t n = 0; n < m_sides.size(); ++n) {
        const SDPNegotiator::Outcome offer = m_sides[n].call.Offer();
        offers[n] = offer.isTaken ? offer.text : std::string();
        if (offer.isTaken && !SendText(m_sides[n], offer.text)) {
            return;
        }
    }
    Tell("both offer at once");
    for (std::size_t n = 0; n < m_sides.size(); ++n) {
        const bool isOut = !offers[n].empty();
        if (isOut && !offers[1 - n].empty()) {
            const SDPNegotiator::Outcome pending = m_sides[n].call.Answer(offers[1 - n]);
            if (pending.isTaken || pending.status != 491) {
                Fail("an offer that meets an offer is pending");
            }
        }
    }
    for (std::size_t n = 0; n < m_sides.size(); ++n) {
        if (!offers[n].empty()) {
            m_sides[n].call.Refused(491);
            CheckSecrecy(m_sides[n]);
        }
    }
}

void Life::Refuse(Side& offerer, int status) {
    const SDPNegotiator::Outcome offer = offerer.call.Offer();
    if (!offer.isTaken || !SendText(offerer, offer.text)) {
        return;
    }
    Tell(std::string(offerer.name) + "'s offer is refused with " + std::to_string(status) + "\n" +
         offer.text);
    offerer.call.Refused(status);
    CheckSecrecy(offerer);
}

void Life::CheckSecrecy(const Side& side) {
    if (side.srtp != Srtp::Required) {
        return;
    }
    for (const Stream& stream : side.call.Streams()) {
        const bool isPlain = stream.suite == support::kSuiteNone;
        if (IsMedia(stream) && isPlain && (stream.send || stream.receive)) {
            Fail(std::string(side.name) + " requires SRTP and runs plain media in section " +
                 std::to_string(stream.section));
        }
    }
}

void Life::CheckAgreement() {
    const std::vector<Stream>& near = m_sides[0].call.Streams();
    const std::vector<Stream>& away = m_sides[1].call.Streams();
    if (near.size() != away.size()) {
        Fail("both have the same number of streams");
        return;
    }
    constexpr std::size_t kinds = 4; // audio, main video, slides, floor control
    if (near.size() > kinds) {
        Fail("a stream that comes back takes the section that it had");
    }
    for (Side& side : m_sides) {
        CheckDowngrades(side);
    }
    for (std::size_t n = 0; n < near.size() && !m_hasFailed; ++n) {
        CheckStreams(near[n], away[n]);
    }
    CheckSecrecy(m_sides[0]);
    CheckSecrecy(m_sides[1]);
}

void Life::CheckDowngrades(Side& side) {
    std::vector<bool> secure;
    for (const Stream& stream : side.call.Streams()) {
        const std::size_t place = stream.section;
        const bool wasSecure = place < side.secure.size() && side.secure[place];
        const bool isPlain = stream.port > 0 && IsMedia(stream) && stream.suite == support::kSuiteNone;
        if (wasSecure && isPlain && side.srtp != Srtp::Off) {
            Fail(std::string(side.name) + " has a secure stream become plain without Off in section " +
                 std::to_string(place));
        }
        secure.push_back(stream.suite != support::kSuiteNone);
    }
    side.secure = std::move(secure);
}

void Life::CheckStreams(const Stream& ours, const Stream& theirs) {
    const std::string place = "section " + std::to_string(ours.section) + ": ";
    if (ours.section != theirs.section || ours.media != theirs.media) {
        Fail(place + "both name the same section");
    }
    if (IsAgreed(ours) != IsAgreed(theirs)) {
        Fail(place + "both agree that the stream is there (" + std::string(ours.reason) + " / " +
             std::string(theirs.reason) + ")");
        return;
    }
    if (!IsAgreed(ours)) {
        ++m_tally.rejectedStreams;
        if (ours.send || ours.receive || theirs.send || theirs.receive) {
            Fail(place + "nothing flows in a stream that is not agreed");
        }
        return;
    }
    if (!IsMedia(ours)) {
        return;
    }
    CheckCrossed(ours, theirs);
    CheckCrossed(theirs, ours);
    if (ours.codec != theirs.codec || ours.suite != theirs.suite || ours.role != theirs.role) {
        Fail(place + "both have the same codec, suite and role");
    }
    m_tally.runningStreams += (ours.send || ours.receive) ? 1 : 0;
    m_tally.heldStreams += ours.state == State::Held ? 1 : 0;
    m_tally.secureStreams += ours.suite != support::kSuiteNone ? 1 : 0;
}

void Life::CheckCrossed(const Stream& from, const Stream& to) {
    const std::string place = "section " + std::to_string(from.section) + ": ";
    if (from.send != to.receive) {
        Fail(place + "what one sends the other receives");
    }
    if (from.sendPayload != to.receivePayload || from.sendEvents != to.receiveEvents) {
        Fail(place + "one sends with the numbers that the other receives");
    }
    if (from.suite != support::kSuiteNone && !IsSame(from.ourKey, to.theirKey)) {
        Fail(place + "one sends with the key that the other receives with");
    }
    if ((from.send || from.receive) && from.suite == support::kSuiteNone &&
        (m_sides[0].srtp == Srtp::Required || m_sides[1].srtp == Srtp::Required)) {
        Fail(place + "plain media although one side requires SRTP");
    }
}

void Life::Tell(const std::string& line) {
    m_story += line + "\n";
}

void Life::Fail(const std::string& law) {
    if (!m_hasFailed) {
        m_story += "LAW: " + law + "\n";
    }
    m_hasFailed = true;
}

} // namespace lives
