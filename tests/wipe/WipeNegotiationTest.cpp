// The negotiation layer wipes key material before its memory is freed: offers, answers, wishes, copies and
// the end of a negotiator leave no key, salt or key text in a block that is freed.
#include "Watching.h"

#include "Expect.h"

#include <SDPNegotiator.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace {

using wipe::Watch;
using Outcome = SDPNegotiator::Outcome;
using Srtp = SDPNegotiator::Srtp;

struct KnownKey {
    explicit KnownKey(const char* who) { support::WriteKey(key, salt, who, "video"); }
    unsigned char key[baseSDP::kKeyLength];
    unsigned char salt[baseSDP::kSaltLength];
};

/// Keys and salts are those that the watch knows; other lengths are no key.
template <int kSide>
bool KnownBytes(unsigned char* bytes, std::size_t length) {
    static const KnownKey made(kSide == 0 ? "near" : "away");
    constexpr std::size_t material = sizeof made.key + sizeof made.salt;
    // One call fills several keys, each followed by its salt, and after them what is no key.
    for (std::size_t n = 0; n < length; ++n) {
        const std::size_t at = n % material;
        const unsigned char known = at < sizeof made.key ? made.key[at] : made.salt[at - sizeof made.key];
        bytes[n] = n < length / material * material ? known : static_cast<unsigned char>(n + 1);
    }
    return true;
}

void Begin(SDPNegotiator& call, const char* who) {
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, who, support::kSuite32);
    call.SetLocal(local);
    call.SetSrtp(Srtp::Wanted);
    call.Present(true);
}

/// Two sides of a call, and the texts between them. The texts are the caller's, who wipes them himself.
struct Sides {
    std::unique_ptr<SDPNegotiator> near = std::make_unique<SDPNegotiator>(KnownBytes<0>);
    std::unique_ptr<SDPNegotiator> away = std::make_unique<SDPNegotiator>(KnownBytes<1>);
    Outcome offer;
    Outcome answer;
    Outcome offerAgain;
    Outcome answerAgain;

    Sides() {
        unsigned char byte[1];
        KnownBytes<0>(byte, sizeof byte);
        KnownBytes<1>(byte, sizeof byte);
        Begin(*near, "near");
        Begin(*away, "away");
    }
    void Negotiate() {
        offer = near->Offer();
        answer = away->Answer(offer.text);
        near->Accept(answer.text);
    }
    void NegotiateAgain() {
        offerAgain = away->Offer();
        answerAgain = near->Answer(offerAgain.text);
        away->Accept(answerAgain.text);
    }
    void End() {
        near.reset();
        away.reset();
    }
};

void ExpectClean(const Watch& watch) {
    EXPECT_GT(watch.blocks(), 0U);
    EXPECT_EQ(watch.dirty(), 0U) << "first: " << support::MakeVisible(watch.first());
}

std::size_t SecureStreams(const SDPNegotiator& call) {
    const auto& streams = call.Streams();
    return static_cast<std::size_t>(
        std::count_if(streams.begin(), streams.end(), [](const SDPNegotiator::Stream& stream) {
            const auto* const key = reinterpret_cast<const unsigned char*>(&stream.theirKey);
            return wipe::CountWindows(key, sizeof stream.theirKey) > 0;
        }));
}

TEST(WipeNegotiation, OfferAnswerAndEnd) {
    Sides sides;
    const Watch watch;
    sides.Negotiate();
    EXPECT_EQ(SecureStreams(*sides.near), 3U);
    EXPECT_EQ(SecureStreams(*sides.away), 3U);
    sides.End();
    ExpectClean(watch);
}

TEST(WipeNegotiation, NewKeysReplaceTheOldOnes) {
    Sides sides;
    sides.Negotiate();
    const Watch watch;
    sides.near->Rekey();
    sides.away->Rekey();
    sides.NegotiateAgain();
    EXPECT_EQ(SecureStreams(*sides.near), 3U);
    sides.End();
    ExpectClean(watch);
}

TEST(WipeNegotiation, OfferThatIsRefused) {
    Sides sides;
    sides.Negotiate();
    const Watch watch;
    sides.offerAgain = sides.near->Offer();
    EXPECT_TRUE(sides.offerAgain.isTaken);
    EXPECT_TRUE(sides.near->Refused(488).isTaken);
    sides.End();
    ExpectClean(watch);
}

TEST(WipeNegotiation, TextsThatAreRefused) {
    Sides sides;
    sides.offer = sides.near->Offer();
    const std::string withKey =
        "v=0\r\nm=audio 0 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + wipe::Secrets()[2] +
        "\r\nm=x y z\r\n";
    const Watch watch;
    EXPECT_FALSE(sides.near->Accept(withKey).isTaken);
    EXPECT_FALSE(sides.near->Answer(withKey).isTaken);
    sides.away->SetSrtp(Srtp::Off);
    EXPECT_FALSE(sides.away->Answer(sides.offer.text).isTaken);
    sides.End();
    ExpectClean(watch);
}

TEST(WipeNegotiation, CopiesAssignmentsAndMoves) {
    Sides sides;
    sides.Negotiate();
    const Watch watch;
    {
        SDPNegotiator copy = *sides.near;
        EXPECT_TRUE(copy == *sides.near);
        SDPNegotiator moved = std::move(copy);
        copy = *sides.away;
        moved = std::move(copy);
        copy = *sides.near;
        copy = *sides.away;
        EXPECT_TRUE(copy == moved);
    }
    sides.End();
    ExpectClean(watch);
}

TEST(WipeNegotiation, CapabilitiesAndStreamsThatAreCopied) {
    Sides sides;
    sides.Negotiate();
    const Watch watch;
    {
        std::vector<SDPNegotiator::Stream> streams;
        for (const SDPNegotiator::Stream& stream : sides.near->Streams()) {
            streams.push_back(stream);
        }
        LocalSDP local = sides.near->Local();
        const unsigned char* const rows = &local.bufSRTPKey[0][0];
        EXPECT_EQ(wipe::CountWindows(rows, sizeof local.bufSRTPKey), 0U);
        local.strDefaultIPAddr = "192.0.2.9";
        EXPECT_TRUE(sides.near->SetLocal(local).isTaken);
    }
    sides.End();
    ExpectClean(watch);
}

} // namespace
