// Stage: none; the wishes: which are errors, and what a refusal leaves of them.
// Input: what the application says. Output: the wishes in force, or a reason.
// Touches the wishes of the call.
// Test: tests/negotiation/SDPWishesTest.cpp
#include "SDPAddress.h"
#include "SDPCall.h"

#include "SDPTables.h"

#include <algorithm>
#include <cstring>

using namespace negotiation;

namespace {

/// A character that ends a word or a line, or that no address has.
bool IsOutsideWord(char c) {
    return static_cast<unsigned char>(c) <= ' ' || static_cast<unsigned char>(c) >= 0x7F;
}

bool IsWord(const std::string& text) {
    return std::none_of(text.begin(), text.end(), IsOutsideWord);
}

bool ArePortsWrong(const LocalSDP& local) {
    constexpr std::int32_t highest = 65534; // the next one is the RTCP port
    const std::int32_t ports[] = {local.iAudioRTPPort, local.m_VideoMain.iVideoRTPPort,
                                  local.m_VideoPreso.iVideoRTPPort, local.iVideoPresoControlPort};
    return std::any_of(std::begin(ports), std::end(ports),
                       [](std::int32_t port) { return port < 0 || port > highest; });
}

bool IsBudgetWrong(const LocalSDP& local) {
    constexpr std::int32_t kilobit = 1000;
    return local.iMaxBandwidth != 0 && local.iMaxBandwidth < kilobit;
}

bool AreSuitesWrong(const LocalSDP& local) {
    return std::any_of(
        std::begin(local.cryptoAlgo), std::end(local.cryptoAlgo), [](sdp::CRYPTO_PROFILE suite) {
            return suite != sdp::CryptoParams::CRYPTO_NONE && SuiteIndex(suite) == kBothSuites.size();
        });
}

bool AreWordsWrong(const LocalSDP& local) {
    return !IsWord(local.strDefaultIPAddr) || !IsWord(local.strMyIPAddr) || !IsWord(local.strOExtension);
}

bool AreAddressesWrong(const LocalSDP& local) {
    const auto isWrong = [](const std::string& text) { return !text.empty() && !IsAddress(text); };
    return isWrong(local.strDefaultIPAddr) || isWrong(local.strMyIPAddr);
}

bool AreLevelsWrong(const LocalSDP& local) {
    const auto isWrong = [](const std::string& level) {
        return !level.empty() && std::find(std::begin(sdp::__H264Profile), std::end(sdp::__H264Profile),
                                           level) == std::end(sdp::__H264Profile);
    };
    return isWrong(local.m_VideoMain.strVideoLevel) || isWrong(local.m_VideoPreso.strVideoLevel);
}

bool AreNumbersWrong(const LocalSDP& local) {
    constexpr std::int32_t firstDynamic = 96;
    const auto isWrong = [](std::int32_t number) {
        return number != 0 && (number < firstDynamic || number > kMaxNumber);
    };
    const std::int32_t mode1 = local.iVideoPayloadMode1 != 0 ? local.iVideoPayloadMode1 : kOwnNumbers[kMode1];
    const std::int32_t mode0 = local.iVideoPayloadMode0 != 0 ? local.iVideoPayloadMode0 : kOwnNumbers[kMode0];
    return isWrong(mode1) || isWrong(mode0) || mode1 == mode0;
}

bool AreLimitsWrong(const LocalSDP& local) {
    const auto isWrong = [](const VideoParms& video) {
        return video.iFmtpMaxMbps < 0 || video.iFmtpMaxFrameSize < 0 || video.iFmtpMaxBitRate < 0;
    };
    return isWrong(local.m_VideoMain) || isWrong(local.m_VideoPreso);
}

struct WishError {
    bool (*isWrong)(const LocalSDP& local);
    std::string_view reason;
};

// What no strict reader takes.
constexpr WishError kWishErrors[] = {
    {ArePortsWrong, "a port is negative or beyond 65534"},
    {IsBudgetWrong, "the bandwidth is negative or below 1000 bit/s"},    // [B04]
    {AreSuitesWrong, "a suite is neither of the two AES_CM_128 suites"}, // [B14]
    {AreWordsWrong, "an address or the origin's suffix has a character that is not part of a word"},
    {AreAddressesWrong, "an address is no IPv4 address, IPv6 address or host name"},
    {AreLevelsWrong, "a level of video is none of those that the component lists"},
    {AreNumbersWrong, "the payload numbers of video are equal or not from 96 to 127"},
    {AreLimitsWrong, "a limit of video is negative"},
};

/// The codecs that are both in the set and in the list.
PayloadType_t ListedCodecs(const LocalSDP& local) {
    std::int32_t codecs = 0;
    for (const int codec : local.listAudioCodecPriority) {
        codecs |= sdp::FindAudioCodec(codec) == nullptr ? 0 : codec & local.eAudioCodec;
    }
    return static_cast<PayloadType_t>(codecs);
}

/// Takes the keys that a record brings, and leaves none in it.
void TakeKeys(LocalSDP& local, Keys& keys) {
    for (const Role role : {kAudio, kMain, kSlides}) {
        Key key;
        std::memcpy(key.key.data(), local.bufSRTPKey[role], key.key.size());
        std::memcpy(key.salt.data(), local.bufSRTPSalt[role], key.salt.size());
        const std::size_t wished = SuiteIndex(local.cryptoAlgo[role]);
        if (!IsZero(key)) {
            keys[role][wished < kBothSuites.size() ? wished : 0] = key;
        }
    }
    sdp::Wipe(local.bufSRTPKey);
    sdp::Wipe(local.bufSRTPSalt);
}

/// What a refusal leaves of a wish: the one that was settled, unless another one was made meanwhile.
template <typename Value>
const Value& Left(const Value& now, const Value& refused, const Value& settled) {
    return now == refused ? settled : now;
}

/// What the refusal of an offer leaves of the wishes.
/// @param settled  null: nothing was agreed or declined before
Wishes LeftOf(const Wishes& now, const Wishes& refused, const Wishes* settled) {
    Wishes left = now;
    if (settled == nullptr) {
        return left;
    }
    left.keys = Left(now.keys, refused.keys, settled->keys);
    left.isPresenting = Left(now.isPresenting, refused.isPresenting, settled->isPresenting);
    left.asked = Left(now.asked, refused.asked, settled->asked);
    if (SameCapabilities(now.local, refused.local)) {
        left.local = settled->local;
    }
    // Restrictions stay.
    left.local.fVideoTxMuted = now.local.fVideoTxMuted || settled->local.fVideoTxMuted;
    left.isHeld = now.isHeld || settled->isHeld;
    left.srtp = now.srtp == Srtp::Required ? now.srtp : Left(now.srtp, refused.srtp, settled->srtp);
    return left;
}

} // namespace

SDPNegotiator::Wish SDPNegotiator::Call::SetLocal(const LocalSDP& local) {
    for (const WishError& error : kWishErrors) {
        if (error.isWrong(local)) {
            return {false, error.reason};
        }
    }
    const auto next = std::make_shared<Wishes>(*wishes);
    next->local = local;
    next->local.eAudioCodec = ListedCodecs(local);
    next->local.m_VideoMain.eVideoType = VIDEOTYPE_MAIN;
    next->local.m_VideoPreso.eVideoType = VIDEOTYPE_PRESO;
    TakeKeys(next->local, next->keys);
    std::uint64_t id = sessionId;
    if (!Make(next->keys, id, false)) {
        return {false, kNoRandom};
    }
    for (const Role role : {kAudio, kMain}) {
        if (next->CanServe(role) && !session.GoesOn(role)) {
            next->asked = static_cast<std::uint8_t>(next->asked | Wishes::Bit(role));
        }
    }
    sessionId = id;
    Take(next);
    return {true, {}};
}

SDPNegotiator::Wish SDPNegotiator::Call::Rekey() {
    const auto next = std::make_shared<Wishes>(*wishes);
    std::uint64_t id = sessionId;
    if (!Make(next->keys, id, true)) {
        return {false, kNoRandom};
    }
    sessionId = id;
    Take(next);
    return {true, {}};
}

void SDPNegotiator::Call::Decline() {
    // Wishes made since the offer was sent were not declined, and are in no text yet.
    const auto left = std::make_shared<const Wishes>(LeftOf(*offered, *offered, settled.get()));
    const auto next = std::make_shared<const Wishes>(LeftOf(*wishes, *offered, settled.get()));
    settled = left;
    Take(next);
}
