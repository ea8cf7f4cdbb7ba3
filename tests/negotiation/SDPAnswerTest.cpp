#include "Call.h"
#include "Texts.h"

#include <cstring>

using namespace call;

namespace {

constexpr std::string_view kKey = "inline:AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwd";

std::string Crypto(std::string_view tagAndSuite) {
    return "a=crypto:" + std::string(tagAndSuite) + " " + std::string(kKey) + "\n";
}

TEST(Answer, AConferenceIsAnsweredSectionBySection) {
    SDPNegotiator side = Side(Local());
    const auto answer = side.Answer(Far("m=audio 30000 RTP/AVP 9 0 101\n"
                                        "a=rtpmap:101 telephone-event/8000\n"
                                        "m=video 30002 RTP/AVP 97 126\n"
                                        "a=rtpmap:97 H264/90000\n"
                                        "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\n"
                                        "a=rtpmap:126 H264/90000\n"
                                        "a=fmtp:126 profile-level-id=42e01f\n"
                                        "a=content:main\n"
                                        "m=video 30004 RTP/AVP 100\n"
                                        "a=rtpmap:100 H264/90000\n"
                                        "a=fmtp:100 profile-level-id=42e020;packetization-mode=1\n"
                                        "a=sendonly\n"
                                        "a=label:10\n"
                                        "a=content:slides\n"
                                        "m=application 30006 UDP/BFCP *\n"
                                        "a=floorctrl:s-only\n"
                                        "a=confid:4711\n"
                                        "a=userid:23\n"
                                        "a=floorid:1 mstrm:10\n"));
    EXPECT_TEXT(answer.text, Text(R"(v=0
o=Quillmarshorizon 578437695752307201 1 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=audio 5004 RTP/AVP 9 101
a=rtpmap:9 G722/8000
a=rtpmap:101 telephone-event/8000
a=fmtp:101 0-15
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
m=video 5006 RTP/AVP 97 126
a=rtpmap:97 H264/90000
a=fmtp:97 profile-level-id=42e01F;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1
a=rtpmap:126 H264/90000
a=fmtp:126 profile-level-id=42e01F;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5007 IN IP4 192.0.2.1
a=label:8
a=content:main
m=video 5008 RTP/AVP 100
a=rtpmap:100 H264/90000
a=fmtp:100 profile-level-id=42e01F;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1
a=recvonly
a=rtcp:5009 IN IP4 192.0.2.1
a=label:10
a=content:slides
m=application 5010 UDP/BFCP *
a=floorctrl:c-only
a=floorid:1 mstrm:10
a=confid:4711
a=userid:23
)"));
    EXPECT_TEXT(Lines(side), R"(Start send receive 9/9 198.51.100.7:30000
Start send receive 97/97 198.51.100.7:30002
Start receive 100/100 198.51.100.7:30004
Start 198.51.100.7:30006
)");
    EXPECT_EQ(side.Streams()[3].floorRole, SDPNegotiator::FloorRole::Client);
    EXPECT_EQ(side.Streams()[3].conferenceId, 4711);
    EXPECT_EQ(side.Streams()[3].userId, 23);
    EXPECT_EQ(side.Streams()[3].floor, "1 mstrm:10");
}

TEST(Answer, VideoInFrontOfAudioKeepsItsPlace) {
    SDPNegotiator side = Side(Local());
    EXPECT_TEXT(side.Answer(Far("m=video 30002 RTP/AVPF 99\n"
                                "a=rtpmap:99 H264/90000\n"
                                "a=fmtp:99 packetization-mode=1;profile-level-id=640028\n"
                                "m=audio 30000 RTP/AVP 8 0\n"))
                    .text,
                Text(R"(v=0
o=Quillmarshorizon 578437695752307201 1 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=video 5006 RTP/AVPF 99
a=rtpmap:99 H264/90000
a=fmtp:99 profile-level-id=64001F;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5007 IN IP4 192.0.2.1
a=label:8
a=content:main
m=audio 5004 RTP/AVP 0
a=rtpmap:0 PCMU/8000
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
)"));
    EXPECT_EQ(side.Streams()[0].profile, "6400");
}

TEST(Answer, WhatIsNotSpokenIsRejectedInItsPlace) {
    SDPNegotiator side = Side(Local());
    EXPECT_TEXT(side.Answer(Far("m=text 30010 RTP/AVP 98\n"
                                "m=audio 9 UDP/TLS/RTP/SAVPF 111 0\n"
                                "m=audio 30000 RTP/AVP 18\n"
                                "m=audio 30020 RTP/AVP 0\n"
                                "m=video 30002 RTP/AVP 96\n"
                                "a=rtpmap:96 VP8/90000\n"
                                "m=video 0 RTP/AVP 97\n"
                                "m=application 9 UDP/DTLS/SCTP webrtc-datachannel\n"
                                "m=application 30006 TCP/BFCP *\n"
                                "m=audio 30030 RTP/AVP\n"))
                    .text,
                Text(R"(v=0
o=Quillmarshorizon 578437695752307201 1 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=text 0 RTP/AVP 98
m=audio 0 UDP/TLS/RTP/SAVPF 111 0
m=audio 5004 RTP/AVP 18
a=rtpmap:18 G729/8000
a=fmtp:18 annexb=no
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
m=audio 0 RTP/AVP 0
m=video 0 RTP/AVP 96
m=video 0 RTP/AVP 97
m=application 0 UDP/DTLS/SCTP webrtc-datachannel
m=application 0 TCP/BFCP *
m=audio 0 RTP/AVP 0
)"));
    EXPECT_TEXT(Lines(side), R"(DeclinedByUs, this side serves no section of this medium and transport
DeclinedByUs, this side serves no section of this medium and transport
Start send receive 18/18 198.51.100.7:30000
DeclinedByUs, another section of this kind is taken
NoCommonCodec, no format of the section is spoken here
DeclinedByThem, the far end's section has port 0
DeclinedByUs, this side serves no section of this medium and transport
DeclinedByUs, this side serves no section of this medium and transport
DeclinedByUs, another section of this kind is taken
)");
}

TEST(Answer, TheSuiteOfTheOfferIsAnswered) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    EXPECT_TEXT(side.Answer(Far("m=audio 30000 RTP/SAVP 0\n" + Crypto("1 AEAD_AES_256_GCM") +
                                Crypto("7 AES_CM_128_HMAC_SHA1_80") + Crypto("8 AES_CM_128_HMAC_SHA1_32")))
                    .text,
                Replaced(kAudioAnswer, "RTP/AVP 0", Text(R"(RTP/SAVP 0
a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:CQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUm)")));
    EXPECT_TEXT(Lines(side), R"(Start send receive 0/0 198.51.100.7:30000 _80
)");
    EXPECT_TEXT(Repaired(side), R"(R10 R11)");
    EXPECT_EQ(side.Streams()[0].theirKey.key[15], 15);
    EXPECT_EQ(side.Streams()[0].theirKey.salt[0], 16);
}

TEST(Answer, ASecureModeZeroAloneHasItsKey) {
    SDPNegotiator side = Side(Local(), Srtp::Required);
    EXPECT_TEXT(side.Answer(Far("m=video 30002 RTP/SAVP 96\n" + Crypto("3 AES_CM_128_HMAC_SHA1_32") +
                                "a=rtpmap:96 H264/90000\n"))
                    .text,
                Replaced(kVideoAnswer, {{"RTP/AVP 97", Text(R"(RTP/SAVP 96
a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:Y2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+A)")},
                                        {"a=rtpmap:97", "a=rtpmap:96"},
                                        {"a=fmtp:97", "a=fmtp:96"},
                                        {kMode1, kMode0}}));
}

TEST(Answer, APlainSectionIsAnsweredWithoutCrypto) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    EXPECT_TEXT(side.Answer(Far("m=audio 30000 RTP/AVP 0\n" + Crypto("1 AES_CM_128_HMAC_SHA1_80"))).text,
                kAudioAnswer);
    EXPECT_TEXT(Lines(side), R"(Start send receive 0/0 198.51.100.7:30000
)");
}

TEST(Answer, WithSrtpWantedTheSecureSectionComesFirst) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    EXPECT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\nm=audio 30002 RTP/SAVP 0\n" +
                                Crypto("1 AES_CM_128_HMAC_SHA1_80")))
                    .isTaken);
    EXPECT_TEXT(Lines(side), R"(DeclinedByUs, another section of this kind is taken
Start send receive 0/0 198.51.100.7:30002 _80
)");
}

TEST(Answer, ThePolicyDecidesWhatIsTaken) {
    const std::string plain = Far("m=audio 30000 RTP/AVP 0\n");
    const std::string secure = Far("m=audio 30000 RTP/SAVP 0\n" + Crypto("1 AES_CM_128_HMAC_SHA1_80"));
    SDPNegotiator off = Side(AudioOnly());
    const auto refusedSecure = off.Answer(secure);
    EXPECT_EQ(refusedSecure.status, 488);
    EXPECT_EQ(refusedSecure.reason, "the section is secure, and SRTP is off here");
    SDPNegotiator required = Side(AudioOnly(), Srtp::Required);
    const auto refusedPlain = required.Answer(plain);
    EXPECT_EQ(refusedPlain.status, 488);
    EXPECT_EQ(refusedPlain.reason, "the section is not secure, and SRTP is required here");
    EXPECT_TRUE(required.Answer(secure).isTaken);
}

TEST(Answer, AnOfferWithEveryPortZeroIsAHold) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(side.Answer(Far("m=audio 0 RTP/AVP 0\n")).text, Text(R"(v=0
o=Quillmarshorizon 578437695752307201 2 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=audio 0 RTP/AVP 0
)"));
    EXPECT_TEXT(Lines(side), R"(Held, the far end holds all streams at port 0
)");
    EXPECT_EQ(side.Streams()[0].changes, std::uint32_t{SDPNegotiator::kStopped});
}

TEST(Answer, ARefusedOfferChangesNothing) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\nm=video 0 RTP/AVP 96\n")).isTaken);
    const SDPNegotiator before = side;
    struct {
        std::string offer;
        std::string_view reason;
    } const cases[] = {
        {Far(""), "the offer has no section"},
        {Far("m=audio 30000 RTP/AVP 0\n"), "the offer has fewer sections than the session"},
        {Far("m=audio 30000 RTP/AVP 8\nm=video 0 RTP/AVP 96\n"), "no format of the section is spoken here"},
        {Far("m=audio 9 UDP/TLS/RTP/SAVPF 0\nm=video 0 RTP/AVP 96\n"),
         "this side serves no section of this medium and transport"},
        {"", "a request without a body asks for an offer"},
    };
    for (const auto& one : cases) {
        const auto outcome = side.Answer(one.offer);
        EXPECT_FALSE(outcome.isTaken) << one.offer;
        EXPECT_EQ(outcome.reason, one.reason);
        EXPECT_EQ(outcome.status, one.offer.empty() ? 0 : 488);
        EXPECT_TEXT(outcome.text, "");
        EXPECT_TRUE(side == before) << one.offer;
    }
}

TEST(Answer, WithoutAnAddressNothingIsAnswered) {
    LocalSDP local = AudioOnly();
    local.strDefaultIPAddr.clear();
    SDPNegotiator side = Side(local);
    EXPECT_EQ(side.Answer(Far("m=audio 30000 RTP/AVP 0\n")).reason, "no local address is set");
}

TEST(Answer, AnIPv6AddressIsWrittenAsOne) {
    LocalSDP local = AudioOnly();
    local.strDefaultIPAddr = "2001:db8::1";
    SDPNegotiator side = Side(local);
    EXPECT_TEXT(side.Answer(Far("m=audio 30000 RTP/AVP 0\n")).text,
                Replaced(kAudioAnswer, {{"o=Quillmarshorizon " + kFirstVersion + "IN IP4 192.0.2.1",
                                         "o=Quillmarshorizon " + kFirstVersion + "IN IP6 2001:db8::1"},
                                        {"c=IN IP4 192.0.2.1", "c=IN IP6 2001:db8::1"},
                                        {"5005 IN IP4 192.0.2.1", "5005 IN IP6 2001:db8::1"}}));
}

TEST(Answer, AKeyThatHoldsAKeywordIsNoKey) {
    SDPNegotiator side = Side(Local(), Srtp::Wanted);
    const auto answer = side.Answer(Far("m=audio 30000 RTP/SAVP 0\n"
                                        "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                        "inline:sw521U4m=applicationyqgSIqRfk30UW7Eg0w0O\n"));
    EXPECT_EQ(answer.reason, "no crypto line of the section can be used");
    EXPECT_EQ(answer.status, 488);
}

// A key that runs both ways secures neither, so an offer that repeats this side's is answered with a new one.
TEST(Answer, AKeyOfOursInTheOfferIsReplaced) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    const std::string offer = side.Offer().text;
    constexpr std::string_view ours = "CQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUm";
    ASSERT_NE(offer.find(ours), std::string::npos);
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\n"))
                    .isTaken);
    const auto answer = side.Answer(Far(
        "m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + std::string(ours) + "\n"));
    EXPECT_TEXT(answer.text,
                Replaced(kAudioAnswer, {{kFirstVersion, kSecondVersion}, {"RTP/AVP 0", Text(R"(RTP/SAVP 0
a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:xcbHyMnKy8zNzs/Q0dLT1NXW19jZ2tvc3d7f4OHi)")}}));
    EXPECT_TEXT(Lines(side), "Start send receive 0/0 198.51.100.7:30000 _80\n");
}

TEST(Answer, WithoutAGeneratorAKeyOfOursInTheOfferIsRefused) {
    static bool fails;
    fails = false;
    SDPNegotiator side([](unsigned char* bytes, std::size_t length) {
        std::memset(bytes, 7, length);
        return !fails;
    });
    ASSERT_TRUE(side.SetLocal(AudioOnly()).isTaken);
    side.SetSrtp(Srtp::Wanted);
    fails = true;
    const SDPNegotiator before = side;
    const auto refused = side.Answer(Far("m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                                         "inline:BwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcH\n"));
    EXPECT_FALSE(refused.isTaken);
    EXPECT_EQ(refused.status, 488);
    EXPECT_EQ(refused.reason, "the generator of keys and ids fails");
    EXPECT_TRUE(side == before);
}

TEST(Answer, ASectionWithoutATransportIsRejectedWithOne) {
    SDPNegotiator side = Side(AudioOnly());
    EXPECT_TEXT(side.Answer(Far("m=audio 30000 RTP/AVP 0\nm=video 0\n")).text,
                kAudioAnswer + "m=video 0 RTP/AVP 0\r\n");
}

// The codec of a number stays, and its mode is what the newest offer says (RFC 6184, 8.1: none is mode 0).
TEST(Answer, AReofferMayChangeTheModeOfItsNumber) {
    const std::string without = Far("m=video 30002 RTP/AVP 97\n"
                                    "a=rtpmap:97 H264/90000\n"
                                    "a=fmtp:97 profile-level-id=42001f\n");
    const std::string with = Far("m=video 30002 RTP/AVP 97\n"
                                 "a=rtpmap:97 H264/90000\n"
                                 "a=fmtp:97 profile-level-id=42001f;packetization-mode=1\n");
    SDPNegotiator side = Side(Local());
    EXPECT_TEXT(side.Answer(with).text, kVideoAnswer);
    EXPECT_TEXT(side.Answer(without).text,
                Replaced(kVideoAnswer, {{kFirstVersion, kSecondVersion}, {kMode1, kMode0}}));
    EXPECT_EQ(side.Streams()[0].packetizationMode, 0);
    EXPECT_EQ(side.Streams()[0].changes, SDPNegotiator::kCodec);
    EXPECT_TEXT(side.Answer(with).text, Replaced(kVideoAnswer, kFirstVersion, kThirdVersion));
    EXPECT_EQ(side.Streams()[0].packetizationMode, 1);
    EXPECT_EQ(side.Streams()[0].changes, SDPNegotiator::kCodec);
}

TEST(Answer, ASecureStreamBecomesPlainOnlyByOff) {
    const std::string secure = "m=audio 30000 RTP/SAVP 0\n" + Crypto("1 AES_CM_128_HMAC_SHA1_80");
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    SDPNegotiator side = Side(Local(), Srtp::Wanted);
    ASSERT_TRUE(side.Answer(Far(secure)).isTaken);
    const SDPNegotiator before = side;
    const auto refused = side.Answer(Far("m=audio 30000 RTP/AVP 0\n"));
    EXPECT_EQ(refused.status, 488);
    EXPECT_EQ(refused.reason, "the stream is secure, and becomes plain only by SRTP off");
    EXPECT_TRUE(side == before);
    // Neither in its place nor in another one.
    EXPECT_TRUE(side.Answer(Far("m=audio 0 RTP/SAVP 0\n" + video + "m=audio 30000 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(side), R"(DeclinedByThem, the far end's section has port 0
Start send receive 97/97 198.51.100.7:30002
DeclinedByUs, the stream is secure, and becomes plain only by SRTP off
)");
    SDPNegotiator off = before;
    off.SetSrtp(Srtp::Off);
    EXPECT_TRUE(off.Answer(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(off), "Start send receive 0/0 198.51.100.7:30000\n");
    // From then on it is a plain stream, which goes on when SRTP is wanted again.
    off.SetSrtp(Srtp::Wanted);
    EXPECT_TRUE(off.Answer(Far("m=audio 30002 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(off), "Start send receive 0/0 198.51.100.7:30002\n");
}

// A call goes on while it is held at port 0, and so does what the streams agreed on.
TEST(Answer, ASecureStreamIsNotPlainAfterARoundAtPortZero) {
    const std::string secure = "m=audio 30000 RTP/SAVP 0\n" + Crypto("1 AES_CM_128_HMAC_SHA1_80");
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    ASSERT_TRUE(side.Answer(Far(secure)).isTaken);
    ASSERT_TRUE(side.Answer(Far("m=audio 0 RTP/AVP 0\n")).isTaken);
    const SDPNegotiator held = side;
    const auto refused = side.Answer(Far("m=audio 30000 RTP/AVP 0\n"));
    EXPECT_EQ(refused.status, 488);
    EXPECT_EQ(refused.reason, "the stream is secure, and becomes plain only by SRTP off");
    EXPECT_TRUE(side == held);
    EXPECT_TRUE(side.Answer(Far(secure)).isTaken);
    EXPECT_TEXT(Lines(side), "Start send receive 0/0 198.51.100.7:30000 _80\n");
}

} // namespace
