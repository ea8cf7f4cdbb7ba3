// Kept behaviours of fixed places and fixed words: P21, P22, B24 and B25 of commonmedia/DELIBERATE.md.
#include "Capabilities.h"
#include "Expect.h"

#include <SDPHandler.h>

#include <string>

using namespace support;

namespace {

TEST(Deliberate, P21_KeyMethodIsSkippedUnseen) {
    SDPHandler h;
    h.ProcessMedia("m=audio 5000 RTP/SAVP 0");
    const MediaSession& section = *h.vecRemoteMediaSession[0];
    h.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 other:/YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0");
    EXPECT_TEXT(section.strBase64Key, "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0");
    EXPECT_TEXT(std::string(section.bufSRTPKey, section.bufSRTPKey + 16), "away audio key 1");
    EXPECT_TEXT(std::string(section.bufSRTPSalt, section.bufSRTPSalt + 14), "away audiosalt");
    h.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0");
    EXPECT_TEXT(section.strBase64Key, "YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0");
    EXPECT_TEXT(std::string(section.bufSRTPKey, section.bufSRTPKey + 16), "away video key 1");
    EXPECT_TEXT(std::string(section.bufSRTPSalt, section.bufSRTPSalt + 14), "away videosalt");
}

TEST(Deliberate, P22_RtpmapPayloadIsCutBehindNineCharacters) {
    SDPHandler h;
    RemoteSDP remote;
    h.ParseTheSDP("m=video 5002 RTP/AVP 96 97\r\na=rtpmapX97 H264/90000\r\na=rtpmap:96 VP8/90000\r\n",
                  remote);
    EXPECT_TEXT(h.vecRemoteMediaSession[0]->vecRtpMap[0]->strEncodingName, "VP8/90000");
    EXPECT_TEXT(h.vecRemoteMediaSession[0]->vecRtpMap[1]->strEncodingName, "H264/90000");
    EXPECT_EQ(remote.m_VideoMain.iVideoPayload, 97);
}

TEST(Deliberate, B24_Mode1AloneListsMode0AsWell) {
    SDPHandler h;
    LocalSDP local = VideoLocal();
    local.iMaxBandwidth = 0;
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264;
    Start(h, local);
    const std::string strBothModes =
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
    EXPECT_TEXT(h.AddVideo(local.m_VideoMain), strBothModes);
    local.m_VideoMain.eVideoCodec = kBothModes;
    EXPECT_TEXT(h.AddVideo(local.m_VideoMain), strBothModes);
}

TEST(Deliberate, B25_AddressesAreAlwaysWrittenAsIp4) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PAYLOAD_G711U;
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.strDefaultIPAddr = "2001:db8::1";
    Start(h, local);
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 2001:db8::1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 2001:db8::1\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 0 101\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 2001:db8::1\r\n");
    RemoteSDP remote;
    h.m_iMaxSupportedSessions = 0;
    h.ParseTheSDP("m=text 6000 RTP/AVP 98\r\nc=IN IP6 2001:db8::2\r\n", remote);
    EXPECT_TEXT(h.AddUnsupported(), "m=text 0 RTP/AVP 98\r\nc=IN IP4 2001:db8::2\r\n");
    h.SetDefaultLocalIPAddr("192.0.2.1");
    EXPECT_TEXT(h.AddC(), "c=IN IP4 192.0.2.1\r\n");
}

} // namespace
