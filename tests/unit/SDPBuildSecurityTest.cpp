// SDPBuildSecurity: which stream is secure, and the crypto line.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>

using namespace support;

namespace {

const baseSDP::SRTP_M_LINE kStreams[] = {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO};

MediaSession& AddSecure(SDPHandler& h, MediaType media, VIDEOTYPE role, std::int32_t tag = 1) {
    MediaSession& section = AddSection(h, media, 5000);
    section.eContent = role;
    Secure(section, "video", tag);
    return section;
}

// "A", "V" and "P" for each stream whose remote side counts as secure.
std::string RemoteSecure(const SDPHandler& h) {
    std::string secure;
    for (const baseSDP::SRTP_M_LINE n : kStreams) {
        if (h.IsRemoteSecure(n)) {
            secure += "AVP"[n];
        }
    }
    return secure;
}

std::string RemoteSecure(MediaType media, VIDEOTYPE role, CRYPTO_PROFILE suite) {
    SDPHandler h;
    AddSecure(h, media, role).cryptoAlgo = suite;
    return RemoteSecure(h);
}

TEST(SDPBuildSecurity, WithoutSectionsNoRemoteStreamIsSecure) {
    EXPECT_EQ(RemoteSecure(SDPHandler()), "");
}

TEST(SDPBuildSecurity, ASectionSecuresTheStreamsThatItMatches) {
    EXPECT_EQ(RemoteSecure(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, kSuite32), "A");
    EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_MAIN, kSuite32), "V");
    EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_PRESO, kSuite32), "VP");
    EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_UNKNOWN, kSuite32), "V");
    EXPECT_EQ(RemoteSecure(MEDIA_APPLICATION, VIDEOTYPE_UNKNOWN, kSuite32), "");
    EXPECT_EQ(RemoteSecure(MEDIA_APPLICATION, VIDEOTYPE_PRESO, kSuite32), "");
    EXPECT_EQ(RemoteSecure(MEDIA_UNKNOWN, VIDEOTYPE_UNKNOWN, kSuite32), "");
}

TEST(SDPBuildSecurity, AudioSectionsSecureAudioWhateverTheirContent) {
    EXPECT_EQ(RemoteSecure(MEDIA_AUDIO, VIDEOTYPE_MAIN, kSuite32), "A");
    EXPECT_EQ(RemoteSecure(MEDIA_AUDIO, VIDEOTYPE_PRESO, kSuite32), "A");
}

TEST(SDPBuildSecurity, ASectionWithoutASuiteSecuresNothing) {
    EXPECT_EQ(RemoteSecure(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, kSuiteNone), "");
    EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_MAIN, kSuiteNone), "");
    EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_PRESO, kSuiteNone), "");
}

TEST(SDPBuildSecurity, AnySuiteButNoneCounts) {
    for (const CRYPTO_PROFILE suite : {kSuite32, kSuite80, kSuite256, kSuiteGcm128, kSuiteGcm256}) {
        EXPECT_EQ(RemoteSecure(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, suite), "A");
        EXPECT_EQ(RemoteSecure(MEDIA_VIDEO, VIDEOTYPE_PRESO, suite), "VP");
    }
}

TEST(SDPBuildSecurity, ASecureSectionIsFoundAfterOthers) {
    SDPHandler h;
    AddSection(h, MEDIA_AUDIO, 5000);
    AddSection(h, MEDIA_VIDEO, 5002);
    AddSecure(h, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN);
    EXPECT_EQ(RemoteSecure(h), "A");
    AddSecure(h, MEDIA_VIDEO, VIDEOTYPE_MAIN);
    EXPECT_EQ(RemoteSecure(h), "AV");
}

TEST(SDPBuildSecurity, WithoutSrtpNoStreamIsSecure) {
    SDPHandler h;
    for (const baseSDP::SRTP_M_LINE n : kStreams) {
        EXPECT_FALSE(h.UseSecureParms(n));
    }
    AddSecure(h, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN);
    AddSecure(h, MEDIA_VIDEO, VIDEOTYPE_PRESO);
    for (const baseSDP::SRTP_M_LINE n : kStreams) {
        EXPECT_FALSE(h.UseSecureParms(n));
    }
}

TEST(SDPBuildSecurity, WithSrtpEveryOfferedStreamIsSecure) {
    SDPHandler h;
    h.m_bSRTP = true;
    for (const baseSDP::SRTP_M_LINE n : kStreams) {
        EXPECT_TRUE(h.UseSecureParms(n));
    }
}

TEST(SDPBuildSecurity, WithSrtpAnAnswerIsSecureWhereTheFarEndIs) {
    SDPHandler h;
    h.m_bSRTP = true;
    AddSecure(h, MEDIA_VIDEO, VIDEOTYPE_PRESO);
    EXPECT_FALSE(h.UseSecureParms(baseSDP::SRTP_AUDIO));
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO));
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO_PRESO));
    AddSecure(h, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN);
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_AUDIO));
}

// The line.

std::string Offer(baseSDP::SRTP_M_LINE n, CRYPTO_PROFILE suite) {
    SDPHandler h;
    LocalSDP local;
    GiveKeys(local, "near", kSuite256);
    local.cryptoAlgo[n] = suite;
    Start(h, local);
    return h.AddCrypto(n);
}

TEST(SDPBuildSecurity, OfferedLineOfEverySuite) {
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuiteNone), "");
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuite32),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuite80),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuite256),
                "a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuiteGcm128),
                "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, kSuiteGcm256),
                "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(SDPBuildSecurity, SuiteThatIsInNoTableHasNoName) {
    EXPECT_TEXT(Offer(baseSDP::SRTP_AUDIO, CRYPTO_PROFILE(9)),
                "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    SDPHandler h;
    h.m_bSRTP = true;
    AddSection(h, MEDIA_AUDIO, 5000).cryptoAlgo = CRYPTO_PROFILE(-1);
    EXPECT_TRUE(h.IsRemoteSecure(baseSDP::SRTP_AUDIO));
}

TEST(SDPBuildSecurity, EveryStreamHasItsOwnSuiteAndKey) {
    EXPECT_TEXT(Offer(baseSDP::SRTP_VIDEO, kSuite32),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_VIDEO_PRESO, kSuite80),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n");
    EXPECT_TEXT(Offer(baseSDP::SRTP_VIDEO, kSuiteNone), "");
    EXPECT_TEXT(Offer(baseSDP::SRTP_VIDEO_PRESO, kSuiteNone), "");
}

TEST(SDPBuildSecurity, TheLineDoesNotAskWhetherSrtpIsWanted) {
    SDPHandler h;
    LocalSDP local;
    local.cryptoAlgo[baseSDP::SRTP_AUDIO] = kSuite80;
    Start(h, local);
    EXPECT_FALSE(h.m_bSRTP);
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA\r\n");
}

std::string Answer(baseSDP::SRTP_M_LINE n, MediaType media, VIDEOTYPE role, std::int32_t tag,
                   CRYPTO_PROFILE localSuite = kSuite80) {
    SDPHandler h;
    LocalSDP local;
    GiveKeys(local, "near", localSuite);
    Start(h, local);
    AddSecure(h, media, role, tag);
    return h.AddCrypto(n);
}

TEST(SDPBuildSecurity, AnsweredLineEchoesTheFarEndsTag) {
    const std::string rest = " AES_CM_128_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n";
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 3), "a=crypto:3" + rest);
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 0), "a=crypto:0" + rest);
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, INT32_MAX),
                "a=crypto:2147483647" + rest);
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, -1), "a=crypto:-1" + rest);
}

TEST(SDPBuildSecurity, AnsweredSuiteIsTheLocalOne) {
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 3, kSuite256),
                "a=crypto:3 AES_CM_256_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 3, kSuiteGcm128),
                "a=crypto:3  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 3, kSuiteNone), "");
}

TEST(SDPBuildSecurity, AnsweredLineNeedsASectionOfTheStreamsOwnRole) {
    const std::string video =
        "a=crypto:4 AES_CM_128_HMAC_SHA1_80 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n";
    const std::string slide =
        "a=crypto:4 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n";
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO, MEDIA_VIDEO, VIDEOTYPE_MAIN, 4), video);
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO, MEDIA_VIDEO, VIDEOTYPE_PRESO, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO, MEDIA_VIDEO, VIDEOTYPE_UNKNOWN, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO, MEDIA_AUDIO, VIDEOTYPE_MAIN, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO_PRESO, MEDIA_VIDEO, VIDEOTYPE_PRESO, 4), slide);
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO_PRESO, MEDIA_VIDEO, VIDEOTYPE_MAIN, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_VIDEO_PRESO, MEDIA_VIDEO, VIDEOTYPE_UNKNOWN, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_VIDEO, VIDEOTYPE_UNKNOWN, 4), "");
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_APPLICATION, VIDEOTYPE_UNKNOWN, 4), "");
}

TEST(SDPBuildSecurity, AnsweredAudioLineTakesAnAudioSectionOfAnyContent) {
    EXPECT_TEXT(Answer(baseSDP::SRTP_AUDIO, MEDIA_AUDIO, VIDEOTYPE_MAIN, 4),
                "a=crypto:4 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(SDPBuildSecurity, TheFirstSecureSectionGivesTheTag) {
    SDPHandler h;
    LocalSDP local;
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    AddSection(h, MEDIA_AUDIO, 5000).iCryptoTag = 11;
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO), "");
    AddSecure(h, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 12);
    AddSecure(h, MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, 13);
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:12 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(SDPBuildSecurity, ASelectorOutOfRangeHasNeitherSecurityNorLine) {
    SDPHandler h;
    h.m_bSRTP = true;
    LocalSDP local;
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    for (const baseSDP::SRTP_M_LINE n :
         {baseSDP::SRTP_MAX, baseSDP::SRTP_M_LINE(-1), baseSDP::SRTP_M_LINE(INT32_MAX)}) {
        h.ResetRemoteSDP();
        EXPECT_FALSE(h.IsRemoteSecure(n));
        EXPECT_TEXT(h.AddCrypto(n), "");
        AddSecure(h, MEDIA_VIDEO, VIDEOTYPE_PRESO);
        EXPECT_FALSE(h.IsRemoteSecure(n));
        EXPECT_FALSE(h.UseSecureParms(n));
        EXPECT_TEXT(h.AddCrypto(n), "");
    }
}

// What the reader makes of a far end's suites decides here.

std::string AnswerTo(const std::string& crypto) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PAYLOAD_G711U;
    local.iAudioRTPPort = 0;
    GiveKeys(local, "near", kSuite80);
    Start(h, local);
    h.m_bSRTP = true;
    RemoteSDP remote;
    h.ParseTheSDP("m=audio 5000 RTP/SAVP 0\r\n" + crypto, remote);
    return h.AddAudio();
}

TEST(SDPBuildSecurity, AFarEndWithThe80BitSuiteAloneIsNotSecure) {
    const std::string plain = "m=audio 0 RTP/AVP 0 101\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n";
    EXPECT_TEXT(
        AnswerTo("a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"),
        plain);
    EXPECT_TEXT(
        AnswerTo("a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"),
        plain);
    EXPECT_TEXT(AnswerTo("a=crypto:1 AEAD_AES_128_GCM inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"),
                plain);
}

TEST(SDPBuildSecurity, AFarEndWithThe32BitSuiteIsSecure) {
    EXPECT_TEXT(
        AnswerTo("a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                 "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"),
        "m=audio 0 RTP/SAVP 0 101\r\n"
        "a=crypto:2 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
        "a=rtpmap:0 PCMU/8000\r\n"
        "a=rtpmap:101 telephone-event/8000\r\n"
        "a=fmtp:101 0-15\r\n"
        "a=sendrecv\r\n");
}

} // namespace
