// The deliberate behaviours of writing, B01 to B25 without those of the video section, of
// commonmedia/DELIBERATE.md. Each test shows the surprising input with its whole outcome, and beside it the
// input that does what one expects. The video section is in DeliberateBuildVideoTest.cpp.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>

using namespace support;

namespace {

// Reads a far end's text into a handler.
void Read(SDPHandler& h, const std::string& text) {
    RemoteSDP remote;
    EXPECT_EQ(h.ParseTheSDP(text, remote), 0);
}

TEST(Deliberate, B01_ConnectionLineNeverUsesTheOwnAddress) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority.clear();
    Start(h, local);
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n");
    h.MyLocalSDP.strMyIPAddr = "10.1.2.3";
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 3 IN IP4 10.1.2.3\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n");
}

TEST(Deliberate, B02_IdUnsignedVersionSigned) {
    SDPHandler h;
    Start(h, AudioLocal(), 1000);
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n");
    h.m_iSessionID = -2;
    h.m_iSessionVersion = 0xFFFFFFFDU;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 4294967294 -2 IN IP4 192.0.2.1\r\n");
}

TEST(Deliberate, B03_AnswersKeepTheirOwnOrder) {
    const std::string audio = "m=audio 5000 RTP/AVP 0\r\na=inactive\r\n";
    const std::string video = "m=video 5002 RTP/AVP 97\r\na=sendonly\r\n";
    LocalSDP local = VideoLocal();
    local.iMaxBandwidth = 0;
    local.m_VideoMain.eVideoCodec = PAYLOAD_VP8;
    const char* const answer = "v=0\r\n"
                               "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                               "s=-\r\n"
                               "c=IN IP4 192.0.2.1\r\n"
                               "t=0 0\r\n"
                               "m=audio 16384 RTP/AVP 0 101\r\n"
                               "a=rtpmap:0 PCMU/8000\r\n"
                               "a=rtpmap:101 telephone-event/8000\r\n"
                               "a=fmtp:101 0-15\r\n"
                               "a=inactive\r\n"
                               "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                               "m=video 16386 RTP/AVP \r\n"
                               "a=label:8\r\n"
                               "a=content:main\r\n";
    SDPHandler inOrder;
    Start(inOrder, local);
    Read(inOrder, audio + video);
    EXPECT_TEXT(inOrder.GetLocalSDP(), answer);
    SDPHandler reversed;
    Start(reversed, local);
    Read(reversed, video + audio);
    EXPECT_TEXT(reversed.GetLocalSDP(), answer);
}

TEST(Deliberate, B04_BandwidthOfZeroKilobitsAndNegatives) {
    SDPHandler h;
    h.MyLocalSDP.iMaxBandwidth = 384000;
    EXPECT_TEXT(h.AddBandwidth(), "b=AS:384\r\n");
    h.MyLocalSDP.iMaxBandwidth = 0;
    EXPECT_TEXT(h.AddBandwidth(), "");
    h.MyLocalSDP.iMaxBandwidth = 999;
    EXPECT_TEXT(h.AddBandwidth(), "b=AS:0\r\n");
    h.MyLocalSDP.iMaxBandwidth = -999;
    EXPECT_TEXT(h.AddBandwidth(), "b=AS:0\r\n");
    h.MyLocalSDP.iMaxBandwidth = -1500;
    EXPECT_TEXT(h.AddBandwidth(), "b=AS:-1\r\n");
}

TEST(Deliberate, B06_EmptyPriorityRemovesAudio) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    Start(h, local);
    Read(h, "m=audio 5000 RTP/AVP 0\r\n");
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 0 101\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    // Not even a rejection is written, so the answer has fewer sections than the offer.
    h.MyLocalSDP.listAudioCodecPriority.clear();
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n");
}

TEST(Deliberate, B07_TelephoneEventsAlwaysListed) {
    SDPHandler h;
    Start(h, AudioLocal());
    Read(h, "m=audio 5000 RTP/AVP 0 96\r\na=rtpmap:96 telephone-event/8000\r\n");
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 0 101\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    // A far end that offered neither events nor a codec of ours still gets 101.
    Read(h, "m=audio 5000 RTP/AVP 8\r\n");
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(Deliberate, B08_BareRtpmapPrefix) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G711U), "a=rtpmap:0 PCMU/8000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_VP8), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_UNKNOWN), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(kAllAudio), "a=rtpmap:");
}

TEST(Deliberate, B13_SecureTestAndCryptoLineMatchDifferentSections) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.m_bSRTP = true;
    const std::string crypto =
        "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n";
    const std::string main = "m=video 5002 RTP/SAVP 97\r\n";
    const std::string preso = "m=video 5004 RTP/SAVP 97\r\na=content:slides\r\n";
    Read(h, main + crypto + preso);
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO));
    EXPECT_FALSE(h.UseSecureParms(baseSDP::SRTP_VIDEO_PRESO));
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO),
                "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n");
    // Secure in its presentation alone, the far end makes main video secure, too, and leaves it keyless.
    Read(h, main + preso + crypto);
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO));
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO_PRESO));
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO), "");
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO),
                "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n");
}

TEST(Deliberate, B14_AeadSuitesWriteAnEmptyName) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite256);
    Start(h, local);
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    h.MyLocalSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = kSuiteGcm128;
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    h.MyLocalSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = kSuiteGcm256;
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(Deliberate, B15_ApplicationLineWithoutAPort) {
    SDPHandler h;
    Start(h, PresentationLocal());
    Read(h, "m=application 5070 UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
    Read(h, "m=application 0 UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddApplication(), "m=application 0 UDP/BFCP *\r\n");
    Read(h, "m=audio 5000 RTP/AVP 0\r\n");
    EXPECT_TEXT(h.AddApplication(), "m=application  UDP/BFCP *\r\n");
}

TEST(Deliberate, B16_FirstChannelGivesThePortLastTheRole) {
    SDPHandler h;
    Start(h, PresentationLocal());
    Read(h, "m=application 5070 UDP/BFCP *\r\na=floorctrl:s-only\r\n");
    EXPECT_TEXT(h.AddApplication() + h.AddFloorControl(), "m=application 16390 UDP/BFCP *\r\n"
                                                          "a=floorctrl:c-only\r\n"
                                                          "a=floorid:2 mstrm:9\r\n"
                                                          "a=confid:15\r\n"
                                                          "a=userid:15\r\n");
    Read(h, "m=application 5070 UDP/BFCP *\r\na=floorctrl:s-only\r\n"
            "m=application 0 UDP/BFCP *\r\na=floorctrl:c-only\r\n");
    EXPECT_TEXT(h.AddApplication() + h.AddFloorControl(), "m=application 16390 UDP/BFCP *\r\n"
                                                          "a=floorctrl:s-only\r\n"
                                                          "a=floorid:2 mstrm:9\r\n"
                                                          "a=confid:15\r\n"
                                                          "a=userid:15\r\n");
    Read(h, "m=application 0 UDP/BFCP *\r\na=floorctrl:c-only\r\n"
            "m=application 5070 UDP/BFCP *\r\na=floorctrl:s-only\r\n");
    EXPECT_TEXT(h.AddApplication() + h.AddFloorControl(), "m=application 0 UDP/BFCP *\r\n"
                                                          "a=floorctrl:c-only\r\n"
                                                          "a=floorid:2 mstrm:9\r\n"
                                                          "a=confid:15\r\n"
                                                          "a=userid:15\r\n");
}

TEST(Deliberate, B17_ConstantFloorIds) {
    SDPHandler h;
    Start(h, PresentationLocal());
    const char* const offered = "a=floorctrl:c-s\r\n"
                                "a=floorid:2 mstrm:9\r\n"
                                "a=confid:15\r\n"
                                "a=userid:15\r\n";
    EXPECT_TEXT(h.AddFloorControl(), offered);
    h.MyLocalSDP.iBfcpConfid = 100;
    h.MyLocalSDP.iBfcpUserid = 200;
    EXPECT_TEXT(h.AddFloorControl(), offered);
    Read(h, "m=application 5070 UDP/BFCP *\r\na=floorctrl:c-s\r\na=confid:100\r\na=userid:200\r\n");
    EXPECT_TEXT(h.AddFloorControl(), "a=floorctrl:s-only\r\n"
                                     "a=floorid:2 mstrm:9\r\n"
                                     "a=confid:15\r\n"
                                     "a=userid:15\r\n");
}

TEST(Deliberate, B18_SurplusSectionsRejectedAtPortZero) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority.clear();
    Start(h, local);
    const std::string twoSections = "m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\n";
    Read(h, twoSections);
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n");
    // The far end's own address comes back with the section that had one.
    Read(h, twoSections + "m=video 5004 RTP/AVP 97 98\r\nc=IN IP4 10.0.0.5\r\n");
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n"
                                 "m=video 0 RTP/AVP 97 98\r\n"
                                 "c=IN IP4 10.0.0.5\r\n");
}

TEST(Deliberate, B19_MutedMainVideoNeverSends) {
    const struct {
        const char* remote;
        const char* open;
        const char* muted;
    } rows[] = {{"a=sendrecv\r\n", "a=sendrecv\r\n", "a=recvonly\r\n"},
                {"a=sendonly\r\n", "a=recvonly\r\n", "a=recvonly\r\n"},
                {"a=recvonly\r\n", "a=sendonly\r\n", "a=inactive\r\n"},
                {"a=inactive\r\n", "a=inactive\r\n", "a=inactive\r\n"}};
    for (const auto& row : rows) {
        SDPHandler h;
        Read(h, std::string("m=video 5002 RTP/AVP 97\r\n") + row.remote);
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), row.open);
        h.MyLocalSDP.fVideoTxMuted = true;
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), row.muted);
        h.ResetRemoteSDP();
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), "a=recvonly\r\n");
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO), "a=sendrecv\r\n");
    }
}

TEST(Deliberate, B20_NoDirectionWithoutARemoteMatch) {
    SDPHandler h;
    Read(h, "m=video 5002 RTP/AVP 97\r\na=content:slides\r\n");
    EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO), "a=sendrecv\r\n");
    EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), "");
    EXPECT_TEXT(h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN), "");
}

TEST(Deliberate, B21_SuiteIsLocalTagIsRemote) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    Read(h, "m=audio 5000 RTP/SAVP 0\r\n"
            "a=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    // The far end never offered this suite under tag 7, and gets it all the same.
    h.MyLocalSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = kSuite256;
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_AUDIO),
                "a=crypto:7 AES_CM_256_HMAC_SHA1_80 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
}

TEST(Deliberate, B22_SavpWithoutASuiteHasNoCryptoLine) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.iAudioRTPPort = 0;
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.m_bSRTP = true;
    EXPECT_TEXT(h.AddAudio(), "m=audio 0 RTP/SAVP 0 101\r\n"
                              "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                              "inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n");
    h.MyLocalSDP.cryptoAlgo[baseSDP::SRTP_AUDIO] = kSuiteNone;
    EXPECT_TEXT(h.AddAudio(), "m=audio 0 RTP/SAVP 0 101\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n");
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
