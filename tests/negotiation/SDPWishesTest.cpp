#include "Call.h"
#include "Texts.h"

using namespace call;

namespace {

using CryptoParams = Quor::media::rtp::CryptoParams;

TEST(Wishes, WhatNoStrictReaderTakesIsAnError) {
    struct {
        void (*change)(LocalSDP& local);
        std::string_view reason;
    } const cases[] = {
        {[](LocalSDP& local) { local.iAudioRTPPort = 65535; }, "a port is negative or beyond 65534"},
        {[](LocalSDP& local) { local.m_VideoPreso.iVideoRTPPort = -1; },
         "a port is negative or beyond 65534"},
        {[](LocalSDP& local) { local.iMaxBandwidth = 999; }, "the bandwidth is negative or below 1000 bit/s"},
        {[](LocalSDP& local) { local.iMaxBandwidth = -64000; },
         "the bandwidth is negative or below 1000 bit/s"},
        {[](LocalSDP& local) { local.cryptoAlgo[0] = CryptoParams::CRYPTO_AEAD_AES_GCM_128; },
         "a suite is neither of the two AES_CM_128 suites"},
        {[](LocalSDP& local) { local.cryptoAlgo[2] = CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80; },
         "a suite is neither of the two AES_CM_128 suites"},
        {[](LocalSDP& local) { local.strDefaultIPAddr = "192.0.2.1\r\na=x"; },
         "an address or the origin's suffix has a character that is not part of a word"},
        {[](LocalSDP& local) { local.strOExtension = "two words"; },
         "an address or the origin's suffix has a character that is not part of a word"},
        {[](LocalSDP& local) { local.strMyIPAddr = "192.0.2.1\x7F"; },
         "an address or the origin's suffix has a character that is not part of a word"},
        {[](LocalSDP& local) { local.strDefaultIPAddr = "1:2:nope"; },
         "an address is no IPv4 address, IPv6 address or host name"},
        {[](LocalSDP& local) { local.strMyIPAddr = "999.1.1.1"; },
         "an address is no IPv4 address, IPv6 address or host name"},
        {[](LocalSDP& local) { local.m_VideoMain.strVideoLevel = "7.7"; },
         "a level of video is none of those that the component lists"},
        {[](LocalSDP& local) { local.m_VideoPreso.strVideoLevel = "3.1 "; },
         "a level of video is none of those that the component lists"},
        {[](LocalSDP& local) { local.iVideoPayloadMode0 = 128; },
         "the payload numbers of video are equal or not from 96 to 127"},
        {[](LocalSDP& local) { local.m_VideoPreso.iFmtpMaxMbps = -1; }, "a limit of video is negative"},
        {[](LocalSDP& local) { local.m_VideoMain.iFmtpMaxBitRate = -1; }, "a limit of video is negative"},
        {[](LocalSDP& local) { local.iVideoPayloadMode1 = 95; },
         "the payload numbers of video are equal or not from 96 to 127"},
        {[](LocalSDP& local) { local.iVideoPayloadMode0 = 97; },
         "the payload numbers of video are equal or not from 96 to 127"},
        {[](LocalSDP& local) { local.m_VideoMain.iFmtpMaxFrameSize = -1; }, "a limit of video is negative"},
    };
    for (const auto& one : cases) {
        SDPNegotiator side = Side(Local());
        const SDPNegotiator before = side;
        LocalSDP local = Local();
        one.change(local);
        const auto wish = side.SetLocal(local);
        EXPECT_FALSE(wish.isTaken);
        EXPECT_EQ(wish.reason, one.reason);
        EXPECT_TRUE(side == before);
    }
}

TEST(Wishes, TheBordersAreTaken) {
    LocalSDP local = Local();
    local.iAudioRTPPort = 65534;
    local.iMaxBandwidth = 1000;
    local.iVideoPayloadMode1 = 127;
    local.iVideoPayloadMode0 = 96;
    local.strMyIPAddr = "far.example";
    local.m_VideoMain.strVideoLevel = "1.b";
    local.m_VideoPreso.strVideoLevel.clear();
    EXPECT_TRUE(SDPNegotiator().SetLocal(local).isTaken);
}

TEST(Wishes, AKeyOfTheRecordIsTheKeyOfTheWishedSuite) {
    LocalSDP local = AudioOnly();
    local.cryptoAlgo[baseSDP::SRTP_AUDIO] = CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    for (unsigned char n = 0; n < baseSDP::kKeyLength; ++n) {
        local.bufSRTPKey[baseSDP::SRTP_AUDIO][n] = n;
    }
    for (unsigned char n = 0; n < baseSDP::kSaltLength; ++n) {
        local.bufSRTPSalt[baseSDP::SRTP_AUDIO][n] = static_cast<unsigned char>(16 + n);
    }
    SDPNegotiator side = Side(local, Srtp::Wanted);
    EXPECT_EQ(side.Local().bufSRTPKey[baseSDP::SRTP_AUDIO][1], 0);
    EXPECT_TEXT(side.Offer().text, Replaced(kAudioOffer, "RTP/AVP 0 101", Text(R"(RTP/SAVP 0 101
a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwd
a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:CQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUm)")));
}

TEST(Wishes, CodecsAreThoseOfSetAndList) {
    LocalSDP local = Local();
    local.eAudioCodec = static_cast<PayloadType_t>(PAYLOAD_G711U | PAYLOAD_G729);
    local.listAudioCodecPriority = {PAYLOAD_G729, PAYLOAD_G722, 77, PAYLOAD_G711U};
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    local.iVideoPayloadMode0 = 120;
    local.iMaxBandwidth = 512000;
    local.m_VideoMain.iFmtpMaxMbps = 40500;
    SDPNegotiator side = Side(local, Srtp::Required);
    EXPECT_TEXT(side.Offer().text, Text(R"(v=0
o=Quillmarshorizon 578437695752307201 1 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
b=AS:512
t=0 0
m=audio 5004 RTP/SAVP 18 0 101
b=TIAS:64000
a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:CQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUm
a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:JygpKissLS4vMDEyMzQ1Njc4OTo7PD0+P0BBQkNE
a=rtpmap:18 G729/8000
a=fmtp:18 annexb=no
a=rtpmap:0 PCMU/8000
a=rtpmap:101 telephone-event/8000
a=fmtp:101 0-15
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
m=video 5006 RTP/SAVP 120
b=TIAS:448000
a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:RUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFi
a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:Y2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+A
a=rtpmap:120 H264/90000
a=fmtp:120 profile-level-id=42001F;max-mbps=40500;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5007 IN IP4 192.0.2.1
a=label:8
a=content:main
)"));
}

TEST(Wishes, AKeyWithoutASuiteIsTheKeyOfTheFirst) {
    LocalSDP local = AudioOnly();
    local.cryptoAlgo[baseSDP::SRTP_AUDIO] = CryptoParams::CRYPTO_NONE;
    local.bufSRTPKey[baseSDP::SRTP_AUDIO][0] = 1;
    const std::string offer = Side(local, Srtp::Wanted).Offer().text;
    EXPECT_NE(
        offer.find("a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:AQAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA\r\n"),
        std::string::npos);
}

// What was said while the offer was out is no part of what was declined.
TEST(Wishes, ARefusalLeavesTheWishesOfTheMeantime) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
    LocalSDP moved = AudioOnly();
    moved.strDefaultIPAddr = "192.0.2.2";
    ASSERT_TRUE(side.SetLocal(moved).isTaken);
    ASSERT_TRUE(side.Offer().isTaken);
    moved.strDefaultIPAddr = "192.0.2.3";
    ASSERT_TRUE(side.SetLocal(moved).isTaken);
    side.Present(true);
    side.SetSrtp(Srtp::Wanted);
    ASSERT_TRUE(side.Refused(488).isTaken);
    EXPECT_EQ(side.Local().strDefaultIPAddr, "192.0.2.3");
    EXPECT_TRUE(side.NeedsOffer());
    ASSERT_TRUE(side.Offer().isTaken);
    ASSERT_TRUE(side.Refused(606).isTaken);
    EXPECT_EQ(side.Local().strDefaultIPAddr, "192.0.2.1");
    EXPECT_FALSE(side.NeedsOffer());
}

} // namespace
