// SDPBuildVideo: the video section, its label and content lines, the H.264 format parameters.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>

using namespace support;

namespace {

// A plain stream without limits.
VideoParms Stream(PayloadType_t codec, VIDEOTYPE role, std::int32_t port) {
    VideoParms parms;
    parms.eVideoCodec = codec;
    parms.eVideoType = role;
    parms.iVideoRTPPort = port;
    parms.strVideoLevel = "3.1";
    return parms;
}

void StartSecure(SDPHandler& h) {
    LocalSDP local = AudioLocal();
    local.iMaxBandwidth = 1000000;
    GiveKeys(local, "near", kSuite80);
    Start(h, local);
    h.m_bSRTP = true;
}

TEST(SDPBuildVideo, MainVideoInBothModesSecure) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(kBothModes, VIDEOTYPE_MAIN, 16386)),
                "m=video 16386 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, PresentationTakesItsOwnKeyLabelAndContent) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(kBothModes, VIDEOTYPE_PRESO, 16388)),
                "m=video 16388 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                "a=label:9\r\n"
                "a=content:slides\r\n");
}

TEST(SDPBuildVideo, ModeOneAloneListsTheModeZeroPayloadToo) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN, 16386)),
                "m=video 16386 RTP/AVP 97 126\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, ModeZeroAloneHasTwoBlanksAndNeitherBandwidthNorKey) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_MAIN, 16386)),
                "m=video 16386 RTP/SAVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
    h.m_bSRTP = false;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_PRESO, 16388)),
                "m=video 16388 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                "a=label:9\r\n"
                "a=content:slides\r\n");
}

TEST(SDPBuildVideo, NoCodecMeansNoSection) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(kNoCodec, VIDEOTYPE_MAIN, 16386)), "");
    EXPECT_TEXT(h.AddVideo(Stream(kNoCodec, VIDEOTYPE_PRESO, 16388)), "");
}

TEST(SDPBuildVideo, ACodecSetWithoutH264ListsNoPayload) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_VP8, VIDEOTYPE_MAIN, 16386)), "m=video 16386 RTP/SAVP \r\n"
                                                                        "a=label:8\r\n"
                                                                        "a=content:main\r\n");
    h.m_bSRTP = false;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_UNKNOWN, VIDEOTYPE_PRESO, 0)), "m=video 0 RTP/AVP \r\n"
                                                                         "a=label:9\r\n"
                                                                         "a=content:slides\r\n");
}

TEST(SDPBuildVideo, OtherBitsBesideH264ChangeNothing) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(PayloadType_t(PAYLOAD_H264 | PAYLOAD_VP8), VIDEOTYPE_MAIN, 16386)),
                h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN, 16386)));
}

TEST(SDPBuildVideo, PortZeroHasNoRtcpLine) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddVideo(Stream(kBothModes, VIDEOTYPE_MAIN, 0)),
                "m=video 0 RTP/AVP 97 126\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, PayloadNumbersAreWrittenAsTheyAre) {
    SDPHandler h;
    Start(h, AudioLocal());
    h.MyLocalSDP.iVideoPayloadMode1 = 0;
    h.MyLocalSDP.iVideoPayloadMode0 = -1;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN, -5)),
                "m=video -5 RTP/AVP 0 -1\r\n"
                "a=rtpmap:0 H264/90000\r\n"
                "a=fmtp:0 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:-1 H264/90000\r\n"
                "a=fmtp:-1 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:-4 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, AnUnknownRoleTakesTheMainKeyAndLeavesBarePrefixes) {
    SDPHandler h;
    StartSecure(h);
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_UNKNOWN, 16386)),
                "m=video 16386 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:a=content:");
}

TEST(SDPBuildVideo, WithoutSrtpThereIsNoKeyLine) {
    SDPHandler h;
    StartSecure(h);
    h.m_bSRTP = false;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN, 0)),
                "m=video 0 RTP/AVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, AnswerTakesDirectionAndTagOfItsOwnRole) {
    SDPHandler h;
    StartSecure(h);
    MediaSession& preso = AddSection(h, MEDIA_VIDEO, 5004);
    preso.eContent = VIDEOTYPE_PRESO;
    preso.fRecv = false;
    Secure(preso, "slide", 9);
    MediaSession& main = AddSection(h, MEDIA_VIDEO, 5002);
    main.fSend = false;
    Secure(main, "video", 8);
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN, 0)),
                "m=video 0 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:8 AES_CM_128_HMAC_SHA1_80 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=recvonly\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_PRESO, 0)),
                "m=video 0 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:9 AES_CM_128_HMAC_SHA1_80 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendonly\r\n"
                "a=label:9\r\n"
                "a=content:slides\r\n");
}

TEST(SDPBuildVideo, AnswerWithoutAMatchingSectionHasNoDirection) {
    SDPHandler h;
    Start(h, AudioLocal());
    AddSection(h, MEDIA_AUDIO, 5000);
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_MAIN, 16386)),
                "m=video 16386 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, MutedMainVideoIsOfferedReceiveOnly) {
    SDPHandler h;
    Start(h, AudioLocal());
    h.MyLocalSDP.fVideoTxMuted = true;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_MAIN, 0)),
                "m=video 0 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=recvonly\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(SDPBuildVideo, LabelsAndContents) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddLabel(VIDEOTYPE_MAIN), "a=label:8\r\n");
    EXPECT_TEXT(h.AddLabel(VIDEOTYPE_PRESO), "a=label:9\r\n");
    EXPECT_TEXT(h.AddContent(VIDEOTYPE_MAIN), "a=content:main\r\n");
    EXPECT_TEXT(h.AddContent(VIDEOTYPE_PRESO), "a=content:slides\r\n");
    for (const VIDEOTYPE role : {VIDEOTYPE_MAX, VIDEOTYPE_UNKNOWN, VIDEOTYPE(-1)}) {
        EXPECT_TEXT(h.AddLabel(role), "a=label:") << role;
        EXPECT_TEXT(h.AddContent(role), "a=content:") << role;
    }
}

// Format parameters.

struct Limits {
    std::int32_t maxBitRate;
    std::int32_t maxMbps;
    std::int32_t maxFrameSize;
};

VideoParms Limited(const std::string& strLevel, const Limits& limits) {
    VideoParms parms;
    parms.strVideoLevel = strLevel;
    parms.iFmtpMaxBitRate = limits.maxBitRate;
    parms.iFmtpMaxMbps = limits.maxMbps;
    parms.iFmtpMaxFrameSize = limits.maxFrameSize;
    return parms;
}

void ExpectProfiles(const std::string& strLevel, const Limits& limits, const std::string& mode1,
                    const std::string& mode0) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddH264Profile(Limited(strLevel, limits)), mode1);
    EXPECT_TEXT(h.AddH264ProfilePacketization0(Limited(strLevel, limits)), mode0);
}

TEST(SDPBuildVideo, ProfileWithoutLimits) {
    ExpectProfiles("3.1", {0, 0, 0},
                   "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                   "level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                   "level-asymmetry-allowed=1\r\n");
}

TEST(SDPBuildVideo, ProfileWithAnEvenFrameSize) {
    ExpectProfiles("3.1", {0, 0, 1200},
                   "a=fmtp:97 profile-level-id=42001F;max-fs=1201;packetization-mode=1;"
                   "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=42001F;max-fs=1201;packetization-mode=0;"
                   "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
}

TEST(SDPBuildVideo, ProfileWithEveryLimitKeepsItsOrder) {
    ExpectProfiles("4", {1500, 245000, 8191},
                   "a=fmtp:97 profile-level-id=420028;max-br=1500;max-mbps=245000;max-fs=8191;"
                   "packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420028;max-br=1500;max-mbps=245000;max-fs=8191;"
                   "packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
}

TEST(SDPBuildVideo, ProfileWithOneLimitEach) {
    ExpectProfiles("4", {1, 0, 0},
                   "a=fmtp:97 profile-level-id=420028;max-br=1;packetization-mode=1;"
                   "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420028;max-br=1;packetization-mode=0;"
                   "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
    ExpectProfiles("4", {0, 2, 0},
                   "a=fmtp:97 profile-level-id=420028;max-mbps=2;packetization-mode=1;"
                   "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420028;max-mbps=2;packetization-mode=0;"
                   "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
}

TEST(SDPBuildVideo, NegativeLimitsAreWritten) {
    ExpectProfiles("4", {-1, -2, -4},
                   "a=fmtp:97 profile-level-id=420028;max-br=-1;max-mbps=-2;max-fs=-3;packetization-mode=1;"
                   "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420028;max-br=-1;max-mbps=-2;max-fs=-3;packetization-mode=0;"
                   "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
}

std::string FrameSize(std::int32_t frameSize) {
    const SDPHandler h;
    const std::string mode1 = h.AddH264Profile(Limited("3.1", {0, 0, frameSize}));
    const std::string mode0 = h.AddH264ProfilePacketization0(Limited("3.1", {0, 0, frameSize}));
    const std::string::size_type begin = mode1.find("max-fs=");
    const std::string part = mode1.substr(begin, mode1.find(';', begin) - begin);
    EXPECT_NE(mode0.find(";" + part + ";"), std::string::npos);
    return part;
}

TEST(SDPBuildVideo, FrameSizeIsMadeOdd) {
    EXPECT_EQ(FrameSize(1), "max-fs=1");
    EXPECT_EQ(FrameSize(2), "max-fs=3");
    EXPECT_EQ(FrameSize(3), "max-fs=3");
    EXPECT_EQ(FrameSize(1200), "max-fs=1201");
    EXPECT_EQ(FrameSize(1201), "max-fs=1201");
    EXPECT_EQ(FrameSize(INT32_MAX), "max-fs=2147483647");
    EXPECT_EQ(FrameSize(INT32_MIN), "max-fs=-2147483647");
}

TEST(SDPBuildVideo, UnknownLevelsAreWrittenAsLevel2) {
    ExpectProfiles("6", {0, 0, 0},
                   "a=fmtp:97 profile-level-id=420014;packetization-mode=1;max-rcmd-nalu-size=32000;"
                   "level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                   "level-asymmetry-allowed=1\r\n");
    ExpectProfiles("", {0, 0, 0},
                   "a=fmtp:97 profile-level-id=420014;packetization-mode=1;max-rcmd-nalu-size=32000;"
                   "level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                   "level-asymmetry-allowed=1\r\n");
}

TEST(SDPBuildVideo, Level1bIsWrittenAsFF) {
    ExpectProfiles("1.b", {0, 0, 0},
                   "a=fmtp:97 profile-level-id=4200FF;packetization-mode=1;max-rcmd-nalu-size=32000;"
                   "level-asymmetry-allowed=1\r\n",
                   "a=fmtp:126 profile-level-id=4200FF;packetization-mode=0;max-rcmd-nalu-size=0;"
                   "level-asymmetry-allowed=1\r\n");
}

} // namespace
