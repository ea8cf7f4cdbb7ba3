#include "Call.h"
#include "Texts.h"

using namespace call;

namespace {

/// Two sides that have agreed; the first has offered.
struct Pair {
    SDPNegotiator near;
    SDPNegotiator far;

    explicit Pair(const LocalSDP& local, Srtp srtp = Srtp::Off)
        : near(Side(local, srtp)), far(Other(local, srtp)) {
        Exchange(near, far);
    }

    static SDPNegotiator Other(LocalSDP local, Srtp srtp) {
        local.strDefaultIPAddr = "192.0.2.2";
        SDPNegotiator other = Side(local, srtp);
        NextByte() = 0x80;
        return other;
    }

    /// An offer of one side and the answer of the other.
    static std::pair<std::string, std::string> Exchange(SDPNegotiator& from, SDPNegotiator& to) {
        const auto offer = from.Offer();
        EXPECT_TRUE(offer.isTaken) << offer.reason;
        const auto answer = to.Answer(offer.text);
        EXPECT_TRUE(answer.isTaken) << answer.reason;
        const auto accepted = from.Accept(answer.text);
        EXPECT_TRUE(accepted.isTaken) << accepted.reason;
        return {offer.text, answer.text};
    }
};

TEST(Negotiator, AnAudioCallComesUp) {
    SDPNegotiator near = Side(AudioOnly());
    SDPNegotiator far = Pair::Other(AudioOnly(), Srtp::Off);
    EXPECT_TRUE(near.NeedsOffer());
    EXPECT_EQ(near.GetPhase(), Phase::Idle);
    const auto offer = near.Offer();
    EXPECT_TEXT(offer.text, kAudioOffer);
    EXPECT_EQ(near.GetPhase(), Phase::OfferSent);
    EXPECT_TRUE(near.Streams().empty());
    const auto answer = far.Answer(offer.text);
    EXPECT_TEXT(answer.text, AtAddress(kAudioOffer, "192.0.2.2"));
    EXPECT_TRUE(near.Accept(answer.text).isTaken);
    EXPECT_EQ(near.GetPhase(), Phase::Agreed);
    EXPECT_FALSE(near.NeedsOffer());
    EXPECT_TEXT(Lines(near), R"(Start send receive 0/0 192.0.2.2:5004
)");
    EXPECT_TEXT(Lines(far), R"(Start send receive 0/0 192.0.2.1:5004
)");
    EXPECT_EQ(near.Streams()[0].changes, std::uint32_t{SDPNegotiator::kStarted});
}

TEST(Negotiator, HoldAndResume) {
    Pair pair(AudioOnly());
    pair.near.Hold(true);
    EXPECT_TEXT(Lines(pair.near), R"(Held send 0/0 192.0.2.2:5004, this side holds the stream
)");
    EXPECT_TRUE(pair.near.NeedsOffer());
    const auto held = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(held.first,
                Replaced(kAudioOffer, {{kFirstVersion, kSecondVersion}, {"a=sendrecv", "a=sendonly"}}));
    EXPECT_TEXT(held.second, Replaced(AtAddress(kAudioOffer, "192.0.2.2"),
                                      {{kFirstVersion, kSecondVersion}, {"a=sendrecv", "a=recvonly"}}));
    EXPECT_TEXT(Lines(pair.near), R"(Held send 0/0 192.0.2.2:5004, this side holds the stream
)");
    EXPECT_TEXT(Lines(pair.far), R"(Held receive 0/0 192.0.2.1:5004, the far end holds the stream
)");
    EXPECT_FALSE(pair.near.NeedsOffer());
    pair.near.Hold(false);
    EXPECT_TEXT(Lines(pair.near), R"(Held send 0/0 192.0.2.2:5004, this side holds the stream
)");
    Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 0/0 192.0.2.2:5004
)");
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 0/0 192.0.2.1:5004
)");
}

TEST(Negotiator, TheSameTextKeepsItsVersion) {
    Pair pair(AudioOnly());
    const auto first = Pair::Exchange(pair.near, pair.far);
    const auto second = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(second.first, first.first);
    EXPECT_TEXT(second.second, first.second);
    EXPECT_EQ(pair.near.Streams()[0].changes, std::uint32_t{SDPNegotiator::kNothing});
}

TEST(Negotiator, AnAgreementTellsWhatChangedSinceTheOneBefore) {
    Pair pair(AudioOnly());
    const auto changes = [&pair] { return pair.near.Streams()[0].changes; };
    pair.near.Hold(true);
    EXPECT_EQ(changes(), SDPNegotiator::kDirection);
    Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.near), R"(Held send 0/0 192.0.2.2:5004, this side holds the stream
)");
    EXPECT_EQ(changes(), SDPNegotiator::kDirection);
    Pair::Exchange(pair.near, pair.far);
    EXPECT_EQ(changes(), SDPNegotiator::kNothing);
    // A hold that was taken back before it was told is no change.
    pair.near.Hold(false);
    pair.near.Hold(true);
    Pair::Exchange(pair.far, pair.near);
    EXPECT_EQ(changes(), SDPNegotiator::kNothing);
}

TEST(Negotiator, AStreamThatAWishStoppedIsToldInTheNextAgreement) {
    Pair pair(AudioOnly());
    const auto changes = [&pair] { return pair.near.Streams()[0].changes; };
    pair.near.SetSrtp(Srtp::Required);
    EXPECT_EQ(changes(), SDPNegotiator::kStopped | SDPNegotiator::kDirection);
    SDPNegotiator declined = pair.near;
    ASSERT_TRUE(declined.Offer().isTaken);
    ASSERT_TRUE(declined.Accept(Far("m=audio 0 RTP/SAVP 0\n")).isTaken);
    EXPECT_EQ(declined.Streams()[0].changes, SDPNegotiator::kStopped);
    pair.far.SetSrtp(Srtp::Wanted);
    Pair::Exchange(pair.near, pair.far);
    EXPECT_EQ(changes(), SDPNegotiator::kStarted);
}

TEST(Negotiator, TheCameraIsMutedAtOnceAndUnmutedByAgreement) {
    Pair pair(Local());
    pair.near.MuteCamera(true);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start receive 97/97 192.0.2.2:5006
)");
    EXPECT_EQ(pair.near.Streams()[1].changes & SDPNegotiator::kDirection, SDPNegotiator::kDirection);
    Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 9/9 192.0.2.1:5004
Start send 97/97 192.0.2.1:5006
)");
    pair.near.MuteCamera(false);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start receive 97/97 192.0.2.2:5006
)");
    Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start send receive 97/97 192.0.2.2:5006
)");
}

TEST(Negotiator, SlidesComeAndGoWithTheirFloorControl) {
    Pair pair(Local());
    pair.near.Present(true);
    EXPECT_TRUE(pair.near.NeedsOffer());
    const auto started = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(started.first, kSlidesOffer);
    const std::string otherCodecs =
        kSlidesOffer.substr(kSlidesOffer.find("a=rtpmap:104"),
                            kSlidesOffer.find("a=rtpmap:101") - kSlidesOffer.find("a=rtpmap:104"));
    EXPECT_TEXT(started.second, Replaced(AtAddress(kSlidesOffer, "192.0.2.2"),
                                         {{"9 104 0 18 101", "9 101"},
                                          {otherCodecs, ""},
                                          {"a=sendrecv\r\na=rtcp:5009", "a=recvonly\r\na=rtcp:5009"},
                                          {"a=floorctrl:c-s", "a=floorctrl:s-only"}}));
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start send receive 97/97 192.0.2.2:5006
Start send 97/97 192.0.2.2:5008
Start 192.0.2.2:5010
)");
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 9/9 192.0.2.1:5004
Start send receive 97/97 192.0.2.1:5006
Start receive 97/97 192.0.2.1:5008
Start 192.0.2.1:5010
)");
    pair.near.Present(false);
    const auto stopped = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(stopped.first,
                Replaced(kSlidesOffer, {{kSecondVersion, kThirdVersion},
                                        {"a=sendrecv\r\na=rtcp:5009", "a=recvonly\r\na=rtcp:5009"},
                                        {"a=floorctrl:c-s", "a=floorctrl:c-only"}}));
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start send receive 97/97 192.0.2.2:5006
Start 97/97 192.0.2.2:5008
Start 192.0.2.2:5010
)");
}

TEST(Negotiator, SlidesThatTheFarEndClosedComeBackToTheirSection) {
    SDPNegotiator side = Side(Local());
    const std::string others = "m=audio 30000 RTP/AVP 0\nm=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n"
                               "a=fmtp:97 packetization-mode=1\n";
    ASSERT_TRUE(side.Answer(Far(others)).isTaken);
    side.Present(true);
    ASSERT_TRUE(side.Offer().isTaken);
    const std::string slides = "m=video 30004 RTP/AVP 97\na=rtpmap:97 H264/90000\n"
                               "a=fmtp:97 packetization-mode=1\na=content:slides\n";
    ASSERT_TRUE(side.Accept(Far(others + slides + "m=application 30006 UDP/BFCP *\n")).isTaken);
    for (int round = 0; round < 2; ++round) {
        const std::string closed = "m=video 0 RTP/AVP 97\nm=application 0 UDP/BFCP *\n";
        ASSERT_TRUE(side.Answer(Far(others + closed)).isTaken);
        side.Present(false);
        side.Present(true);
        const std::string offer = side.Offer().text;
        EXPECT_TEXT(offer.substr(offer.find("m=video 5008")),
                    kSlidesOffer.substr(kSlidesOffer.find("m=video 5008")));
        ASSERT_TRUE(side.Accept(Far(others + slides + "m=application 30006 UDP/BFCP *\n")).isTaken);
        EXPECT_EQ(side.Streams().size(), 4U);
    }
}

TEST(Negotiator, ASecureCallIsGivenNewKeys) {
    Pair pair(AudioOnly(), Srtp::Required);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 0/0 192.0.2.2:5004 _80
)");
    EXPECT_EQ(pair.near.Streams()[0].ourKey, pair.far.Streams()[0].theirKey);
    EXPECT_EQ(pair.near.Streams()[0].theirKey, pair.far.Streams()[0].ourKey);
    ASSERT_TRUE(pair.near.Rekey().isTaken);
    EXPECT_TRUE(pair.near.NeedsOffer());
    const auto texts = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(texts.first, Replaced(kAudioOffer, {{kFirstVersion, kSecondVersion},
                                                    {"RTP/AVP 0 101", Text(R"(RTP/SAVP 0 101
a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:REVGR0hJSktMTU5PUFFSU1RVVldYWVpbXF1eX2Bh
a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:YmNkZWZnaGlqa2xtbm9wcXJzdHV2d3h5ent8fX5/)")}}));
    EXPECT_EQ(pair.near.Streams()[0].ourKey, pair.far.Streams()[0].theirKey);
    EXPECT_EQ(pair.near.Streams()[0].changes, std::uint32_t{SDPNegotiator::kKeys});
}

TEST(Negotiator, ARefusedSecureOfferIsFollowedByAPlainOne) {
    SDPNegotiator near = Side(AudioOnly(), Srtp::Wanted);
    ASSERT_TRUE(near.Offer().isTaken);
    EXPECT_TRUE(near.Refused(488).isTaken);
    EXPECT_TRUE(near.NeedsOffer());
    EXPECT_TEXT(near.Offer().text, Replaced(kAudioOffer, kFirstVersion, kSecondVersion));
    EXPECT_TRUE(near.Refused(488).isTaken);
    EXPECT_FALSE(near.NeedsOffer());
}

TEST(Negotiator, NoOtherRefusalMakesACallPlain) {
    for (const int status : {408, 491, 500}) {
        SDPNegotiator near = Side(AudioOnly(), Srtp::Wanted);
        const std::string offer = near.Offer().text;
        EXPECT_TRUE(near.Refused(status).isTaken);
        EXPECT_TRUE(near.NeedsOffer());
        EXPECT_TEXT(near.Offer().text, offer);
    }
}

TEST(Negotiator, ARefusalDropsWishesAndKeepsWhatTakesAway) {
    Pair pair(Local());
    pair.near.Present(true);
    pair.near.MuteCamera(true);
    ASSERT_TRUE(pair.near.Offer().isTaken);
    EXPECT_TRUE(pair.near.Refused(488).isTaken);
    EXPECT_EQ(pair.near.GetPhase(), Phase::Agreed);
    EXPECT_FALSE(pair.near.NeedsOffer());
    EXPECT_TRUE(pair.near.Local().fVideoTxMuted);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 9/9 192.0.2.2:5004
Start receive 97/97 192.0.2.2:5006
)");
}

TEST(Negotiator, BothOfferAtOnce) {
    Pair pair(AudioOnly());
    const auto near = pair.near.Offer();
    const auto far = pair.far.Offer();
    const SDPNegotiator before = pair.near;
    const auto glare = pair.near.Answer(far.text);
    EXPECT_FALSE(glare.isTaken);
    EXPECT_EQ(glare.status, 491);
    EXPECT_EQ(glare.reason, "an offer of this side is pending");
    EXPECT_TRUE(pair.near == before);
    EXPECT_TRUE(pair.near.Refused(491).isTaken);
    EXPECT_TRUE(pair.far.Refused(491).isTaken);
    Pair::Exchange(pair.far, pair.near);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 0/0 192.0.2.2:5004
)");
}

TEST(Negotiator, CallsOutOfTurnAreRefused) {
    SDPNegotiator near = Side(AudioOnly());
    EXPECT_EQ(near.Accept("v=0\r\n").reason, "no offer is pending");
    EXPECT_EQ(near.Refused(488).reason, "no offer is pending");
    ASSERT_TRUE(near.Offer().isTaken);
    EXPECT_EQ(near.Offer().reason, "an offer is pending already");
    Pair pair(AudioOnly());
    EXPECT_EQ(pair.near.Refused(488).reason, "no offer is pending");
    EXPECT_EQ(pair.far.Accept("v=0\r\n").reason, "no offer is pending");
}

TEST(Negotiator, ASecondAnswerChangesNothing) {
    Pair pair(AudioOnly());
    pair.near.Hold(true);
    const auto offer = pair.near.Offer();
    const auto answer = pair.far.Answer(offer.text);
    ASSERT_TRUE(pair.near.Accept(answer.text).isTaken);
    const SDPNegotiator before = pair.near;
    EXPECT_TRUE(pair.near.Accept(answer.text).isTaken);
    EXPECT_TRUE(pair.near == before);
    EXPECT_EQ(pair.near.Accept(answer.text + "a=other\r\n").reason,
              "the offer was answered before, and otherwise");
    EXPECT_TRUE(pair.near == before);
}

TEST(Negotiator, ANewAddressMovesTheMediaAndNotTheOrigin) {
    Pair pair(AudioOnly());
    LocalSDP local = pair.near.Local();
    local.strDefaultIPAddr = "2001:db8::9";
    ASSERT_TRUE(pair.near.SetLocal(local).isTaken);
    const auto texts = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(texts.first, Replaced(kAudioOffer, {{kFirstVersion, kSecondVersion},
                                                    {"c=IN IP4 192.0.2.1", "c=IN IP6 2001:db8::9"},
                                                    {"5005 IN IP4 192.0.2.1", "5005 IN IP6 2001:db8::9"}}));
    EXPECT_EQ(pair.far.Streams()[0].changes, std::uint32_t{SDPNegotiator::kAddress});
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 0/0 2001:db8::9:5004
)");
}

TEST(Negotiator, SrtpRequiredStopsPlainMediaAtOnce) {
    Pair pair(AudioOnly());
    pair.near.SetSrtp(Srtp::Required);
    EXPECT_TEXT(Lines(pair.near),
                R"(NoUsableKey 0/0 192.0.2.2:5004, the stream is not secure, and SRTP is required here
)");
    pair.far.SetSrtp(Srtp::Wanted);
    const auto texts = Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.near), R"(Start send receive 0/0 192.0.2.2:5004 _80
)");
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 0/0 192.0.2.1:5004 _80
)");
}

TEST(Negotiator, ADroppedStreamStaysAtPortZeroAndComesBackToItsSlot) {
    Pair pair(Local());
    LocalSDP local = pair.near.Local();
    local.m_VideoMain.iVideoRTPPort = 0;
    ASSERT_TRUE(pair.near.SetLocal(local).isTaken);
    EXPECT_TEXT(Pair::Exchange(pair.near, pair.far).first,
                kSlidesOffer.substr(0, kSlidesOffer.find("m=video")) + "m=video 0 RTP/AVP 97 96\r\n");
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 9/9 192.0.2.1:5004
DeclinedByThem, the far end's section has port 0
)");
    local.m_VideoMain.iVideoRTPPort = 5016;
    ASSERT_TRUE(pair.near.SetLocal(local).isTaken);
    Pair::Exchange(pair.near, pair.far);
    EXPECT_TEXT(Lines(pair.far), R"(Start send receive 9/9 192.0.2.1:5004
Start send receive 97/97 192.0.2.1:5016
)");
}

TEST(Negotiator, WithoutAGeneratorNoCapabilitiesAreTaken) {
    SDPNegotiator none([](unsigned char*, std::size_t) { return false; });
    SDPNegotiator zeros([](unsigned char*, std::size_t) { return true; });
    for (SDPNegotiator* const side : {&none, &zeros}) {
        const SDPNegotiator before = *side;
        const SDPNegotiator::Wish wish = side->SetLocal(AudioOnly());
        EXPECT_FALSE(wish.isTaken);
        EXPECT_EQ(wish.reason, "the generator of keys and ids fails");
        EXPECT_EQ(side->Rekey().reason, "the generator of keys and ids fails");
        EXPECT_TRUE(*side == before);
        EXPECT_EQ(side->Offer().reason, "no local address is set");
    }
}

TEST(Negotiator, TheGeneratorOfLibcryptoIsTheUsualOne) {
    SDPNegotiator one;
    SDPNegotiator other;
    for (SDPNegotiator* const side : {&one, &other}) {
        ASSERT_TRUE(side->SetLocal(AudioOnly()).isTaken);
        side->SetSrtp(Srtp::Required);
    }
    EXPECT_NE(one.Offer().text, other.Offer().text);
}

TEST(Negotiator, WithoutAStreamThereIsNoOffer) {
    SDPNegotiator side = Side(LocalSDP());
    EXPECT_EQ(side.Offer().reason, "no local address is set");
    LocalSDP local;
    local.strDefaultIPAddr = "192.0.2.1";
    ASSERT_TRUE(side.SetLocal(local).isTaken);
    EXPECT_EQ(side.Offer().reason, "there is no stream to offer");
}

TEST(Negotiator, EqualMeansTheSameInEveryPhase) {
    const SDPNegotiator side = Side(AudioOnly());
    SDPNegotiator offered = side;
    EXPECT_TRUE(offered == side);
    ASSERT_TRUE(offered.Offer().isTaken);
    EXPECT_FALSE(offered == side);
    EXPECT_FALSE(side == offered);
    SDPNegotiator declined = offered;
    ASSERT_TRUE(declined.Refused(488).isTaken);
    SDPNegotiator kept = offered;
    ASSERT_TRUE(kept.Refused(503).isTaken);
    EXPECT_FALSE(declined == kept);
    EXPECT_FALSE(kept == declined);
    SDPNegotiator held = side;
    held.Hold(true);
    EXPECT_FALSE(held == side);
    held.Hold(false);
    EXPECT_TRUE(held == side);
}

} // namespace
