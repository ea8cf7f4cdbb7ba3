// The deliberate behaviours of writing a video section, B05, B09 to B12, B23 and B24 of
// commonmedia/DELIBERATE.md. Each test shows the surprising input with its whole outcome, and beside it the
// input that does what one expects.
#include "Capabilities.h"
#include "Expect.h"

#include <string>

using namespace support;

namespace {

VideoParms Stream(PayloadType_t codec, VIDEOTYPE role) {
    VideoParms parms;
    parms.eVideoCodec = codec;
    parms.eVideoType = role;
    parms.strVideoLevel = "3.1";
    return parms;
}

TEST(Deliberate, B05_BothVideoSectionsGetTheFullShare) {
    SDPHandler h;
    LocalSDP local = PresentationLocal();
    local.m_VideoPreso.eVideoCodec = kNoCodec;
    Start(h, local);
    h.SetBfcpSupport(true);
    std::string bandwidth;
    for (const std::string& line : CutLines(h.GetLocalSDP())) {
        bandwidth += line.compare(0, 2, "b=") == 0 ? line : "";
    }
    EXPECT_TEXT(bandwidth, "b=AS:1000\r\nb=TIAS:64000\r\nb=TIAS:936000\r\n");
    // The presentation announces 936 kbit/s as well, so the sections announce 1936 kbit/s, and the session
    // 1000.
    h.MyLocalSDP.m_VideoPreso.eVideoCodec = kBothModes;
    bandwidth.clear();
    for (const std::string& line : CutLines(h.GetLocalSDP())) {
        bandwidth += line.compare(0, 2, "b=") == 0 ? line : "";
    }
    EXPECT_TEXT(bandwidth, "b=AS:1000\r\nb=TIAS:64000\r\nb=TIAS:936000\r\nb=TIAS:936000\r\n");
}

TEST(Deliberate, B09_BareLabelAndContent) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_MAIN)),
                "m=video 0 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_UNKNOWN)),
                "m=video 0 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:a=content:");
}

TEST(Deliberate, B10_TwoBlanksBeforeALoneModeZeroPayload) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddVideo(Stream(kBothModes, VIDEOTYPE_MAIN)),
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
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_PRESO)),
                "m=video 0 RTP/AVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:9\r\n"
                "a=content:slides\r\n");
}

TEST(Deliberate, B11_ModeZeroAloneIsSecureWithoutKeyAndBandwidth) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.iMaxBandwidth = 1000000;
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.m_bSRTP = true;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264, VIDEOTYPE_MAIN)),
                "m=video 0 RTP/SAVP 97 126\r\n"
                "b=TIAS:936000\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_H264_PACKETIZATION_0, VIDEOTYPE_MAIN)),
                "m=video 0 RTP/SAVP  126\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n");
}

TEST(Deliberate, B12_FrameSizeMadeOdd) {
    SDPHandler h;
    Start(h, AudioLocal());
    VideoParms parms = Stream(kBothModes, VIDEOTYPE_MAIN);
    parms.iFmtpMaxFrameSize = 1201;
    EXPECT_TEXT(h.AddH264Profile(parms), "a=fmtp:97 profile-level-id=42001F;max-fs=1201;packetization-mode=1;"
                                         "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n");
    EXPECT_TEXT(h.AddH264ProfilePacketization0(parms),
                "a=fmtp:126 profile-level-id=42001F;max-fs=1201;packetization-mode=0;"
                "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
    parms.iFmtpMaxFrameSize = 1200;
    EXPECT_TEXT(h.AddH264Profile(parms), "a=fmtp:97 profile-level-id=42001F;max-fs=1201;packetization-mode=1;"
                                         "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n");
    EXPECT_TEXT(h.AddH264ProfilePacketization0(parms),
                "a=fmtp:126 profile-level-id=42001F;max-fs=1201;packetization-mode=0;"
                "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n");
}

TEST(Deliberate, B23_ACodecSetWithoutH264ListsNoFormat) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddVideo(Stream(kNoCodec, VIDEOTYPE_MAIN)), "");
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_VP8, VIDEOTYPE_MAIN)), "m=video 0 RTP/AVP \r\n"
                                                                 "a=label:8\r\n"
                                                                 "a=content:main\r\n");
    h.m_bSRTP = true;
    EXPECT_TEXT(h.AddVideo(Stream(PAYLOAD_UNKNOWN, VIDEOTYPE_PRESO)), "m=video 0 RTP/SAVP \r\n"
                                                                      "a=label:9\r\n"
                                                                      "a=content:slides\r\n");
}

TEST(Deliberate, B24_Mode1AloneListsMode0AsWell) {
    SDPHandler h;
    LocalSDP local = VideoLocal();
    local.iMaxBandwidth = 0;
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264;
    Start(h, local);
    const std::string bothModes =
        "m=video 16386 RTP/AVP 97 126\r\n"
        "a=rtpmap:97 H264/90000\r\n"
        "a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;"
        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
        "a=rtpmap:126 H264/90000\r\n"
        "a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;"
        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
        "a=sendrecv\r\n"
        "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
        "a=label:8\r\n"
        "a=content:main\r\n";
    EXPECT_TEXT(h.AddVideo(local.m_VideoMain), bothModes);
    local.m_VideoMain.eVideoCodec = kBothModes;
    EXPECT_TEXT(h.AddVideo(local.m_VideoMain), bothModes);
}

} // namespace
