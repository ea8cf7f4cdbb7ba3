// Unusual local capabilities: values that an application can set but no endpoint has.
#include "Hostile.h"

#include <limits>

namespace {

using namespace hostile;

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

/// The offer of these capabilities with SRTP and floor control on. With normal capabilities the handler must
/// then read and answer normally again.
std::string Offer(const LocalSDP& local) {
    Endpoint near;
    near.handler.InitializeLocalSDP(local);
    std::string offer = near.handler.GetLocalSDP();
    near.handler.ParseTheSDP(kConference, near.remote);
    near.handler.GetLocalSDP();
    near.handler.MyLocalSDP.ToDiag();
    near.handler.InitializeLocalSDP(ConferenceLocal());
    ExpectAsFresh(near.handler);
    return offer;
}

TEST(Hostile, C61_CapabilitiesThatNobodyFilledIn) {
    EXPECT_TEXT(Offer(LocalSDP()), "");
    LocalSDP addressed;
    addressed.strDefaultIPAddr = "192.0.2.1";
    EXPECT_TEXT(Offer(addressed), "v=0\r\n"
                                  "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                  "s=-\r\n"
                                  "c=IN IP4 192.0.2.1\r\n"
                                  "t=0 0\r\n"
                                  "m=video 0 RTP/SAVP \r\n"
                                  "a=label:8\r\n"
                                  "a=content:main\r\n"
                                  "m=video 0 RTP/SAVP \r\n"
                                  "a=label:9\r\n"
                                  "a=content:slides\r\n"
                                  "m=application 0 UDP/BFCP *\r\n"
                                  "a=floorctrl:c-s\r\n"
                                  "a=floorid:2 mstrm:9\r\n"
                                  "a=confid:15\r\n"
                                  "a=userid:15\r\n");
}

TEST(Hostile, C61_AnswerOfCapabilitiesWithEmptyStrings) {
    Endpoint near;
    near.handler.InitializeLocalSDP(LocalSDP());
    near.handler.ParseTheSDP("m=audio 5004 RTP/AVP 0\r\n", near.remote);
    EXPECT_TEXT(near.handler.GetLocalSDP(), "v=0\r\n"
                                            "o=Quillmarshorizon 1000 2 IN IP4 \r\n"
                                            "s=-\r\n"
                                            "c=IN IP4 \r\n"
                                            "t=0 0\r\n"
                                            "m=video 0 RTP/AVP \r\n"
                                            "a=label:8\r\n"
                                            "a=content:main\r\n"
                                            "m=video 0 RTP/AVP \r\n"
                                            "a=label:9\r\n"
                                            "a=content:slides\r\n"
                                            "m=application  UDP/BFCP *\r\n"
                                            "a=floorid:2 mstrm:9\r\n"
                                            "a=confid:15\r\n"
                                            "a=userid:15\r\n");
    near.handler.InitializeLocalSDP(ConferenceLocal());
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C61_StringsOfAMegabyte) {
    LocalSDP local = ConferenceLocal();
    const std::string bulk(std::size_t{1} << 20U, 'x');
    local.strMyIPAddr = bulk + "1";
    local.strOExtension = bulk + "2";
    local.strDefaultIPAddr = bulk + "3";
    local.m_VideoMain.strVideoLevel = bulk + "4";
    local.m_VideoPreso.strVideoIPAddr = bulk + "5";
    const std::string offer = Offer(local);
    EXPECT_TRUE(LineOf(offer, "o=") == "o=Quillmarshorizon-" + bulk + "2 1000 2 IN IP4 " + bulk + "1");
    EXPECT_TRUE(LineOf(offer, "c=") == "c=IN IP4 " + bulk + "3");
    EXPECT_TRUE(LineOf(offer, "a=rtcp:16385") == "a=rtcp:16385 IN IP4 " + bulk + "3");
    // An unknown level is written as level 2 (X06).
    EXPECT_TEXT(LineOf(offer, "a=fmtp:97 "),
                "a=fmtp:97 profile-level-id=420014;max-mbps=108000;max-fs=3601;packetization-mode=1;"
                "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1");
}

TEST(Hostile, C61_StringsWithLineEndsAndNul) {
    LocalSDP local = ConferenceLocal();
    local.strDefaultIPAddr = std::string("a\0b", 3);
    local.strOExtension = "x\r\nm=audio 1 RTP/AVP 0\r\n";
    const std::string offer = Offer(local);
    EXPECT_TEXT(LineOf(offer, "c="), std::string("c=IN IP4 a\0b", 12));
    EXPECT_TEXT(LineOf(offer, "o="), "o=Quillmarshorizon-x");
}

TEST(Hostile, C61_PortsAtAndBeyondEveryLimit) {
    struct Row {
        std::int32_t port;
        const char* rtcp; ///< null: no line
    };
    for (const Row& row : {Row{0, nullptr}, Row{-1, "0"}, Row{1, "2"}, Row{65535, "65536"},
                           Row{kMost, "-2147483648"}, Row{kLeast, "-2147483647"}}) {
        LocalSDP local = ConferenceLocal();
        local.iAudioRTPPort = row.port;
        local.m_VideoMain.iVideoRTPPort = row.port;
        local.m_VideoPreso.iVideoRTPPort = row.port;
        local.iVideoPresoControlPort = row.port;
        const std::string offer = Offer(local);
        const std::string port = std::to_string(row.port);
        EXPECT_TEXT(LineOf(offer, "m=audio"), "m=audio " + port + " RTP/SAVP 104 9 0 18 101");
        EXPECT_EQ(Count(offer, "m=video " + port + " RTP/SAVP 97 126\r\n"), 2U);
        EXPECT_EQ(Count(offer, "m=application " + port + " UDP/BFCP *\r\n"), 1U);
        EXPECT_EQ(Count(offer, "a=rtcp:"), row.rtcp == nullptr ? 0U : 3U);
        if (row.rtcp != nullptr) {
            EXPECT_EQ(Count(offer, "a=rtcp:" + std::string(row.rtcp) + " IN IP4 192.0.2.1\r\n"), 3U);
        }
    }
}

TEST(Hostile, C61_BandwidthAtAndBeyondEveryLimit) {
    struct Row {
        std::int32_t bandwidth;
        const char* lines;
    };
    for (const Row& row :
         {Row{0, ""}, Row{1, "b=AS:0\n"}, Row{999, "b=AS:0\n"}, Row{63999, "b=AS:63\n"},
          Row{64000, "b=AS:64\nb=TIAS:64000\n"}, Row{64001, "b=AS:64\nb=TIAS:64000\nb=TIAS:1\nb=TIAS:1\n"},
          Row{kMost, "b=AS:2147483\nb=TIAS:64000\nb=TIAS:2147419647\nb=TIAS:2147419647\n"},
          Row{-1, "b=AS:0\n"}, Row{-1500, "b=AS:-1\n"}, Row{kLeast, "b=AS:-2147483\n"}}) {
        LocalSDP local = ConferenceLocal();
        local.iMaxBandwidth = row.bandwidth;
        std::string lines;
        for (const std::string& line : Lines(Offer(local))) {
            lines += line.compare(0, 2, "b=") == 0 ? line.substr(0, line.size() - 2) + "\n" : "";
        }
        EXPECT_TEXT(lines, row.lines);
    }
}

TEST(Hostile, C61_EveryVideoCodecMaskAndUnknownVideoTypes) {
    const std::string mode1 =
        "b=TIAS:936000\r\n"
        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
        "a=rtpmap:97 H264/90000\r\n"
        "a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;"
        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n";
    const std::string mode0 =
        "a=rtpmap:126 H264/90000\r\n"
        "a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;"
        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
        "a=sendrecv\r\n"
        "a=rtcp:16387 IN IP4 192.0.2.1\r\n";
    // By the two H.264 bits: neither, mode 1, mode 0, both.
    const std::string sections[] = {
        "m=video 16386 RTP/SAVP \r\n",
        "m=video 16386 RTP/SAVP 97 126\r\n" + mode1 + mode0,
        "m=video 16386 RTP/SAVP  126\r\n" + mode0,
        "m=video 16386 RTP/SAVP 97 126\r\n" + mode1 + mode0,
    };
    Endpoint near;
    for (std::int32_t mask = -1; mask < 1024; ++mask) {
        for (const std::int32_t type : {-1, 0, 2, 7, 100, kMost, kLeast}) {
            VideoParms parms = near.handler.MyLocalSDP.m_VideoMain;
            parms.eVideoCodec = static_cast<PayloadType_t>(mask);
            parms.eVideoType = static_cast<VideoType_t>(type);
            const std::string section = sections[((mask & 2) != 0 ? 1U : 0U) + ((mask & 32) != 0 ? 2U : 0U)];
            const std::string tail = type == 0 ? "a=label:8\r\na=content:main\r\n" : "a=label:a=content:";
            ASSERT_TEXT(near.handler.AddVideo(parms), mask == 0 ? "" : section + tail);
        }
    }
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C61_EveryAudioCodecMask) {
    Endpoint near;
    LocalSDP& local = near.handler.MyLocalSDP;
    local.listAudioCodecPriority = {0, 1, 2, 4, 8, 16, 32, 64, 128, 256, -1, kMost, kLeast, 3, 9};
    for (std::int32_t mask = -1; mask < 1024; ++mask) {
        local.eAudioCodec = static_cast<PayloadType_t>(mask);
        const std::string line = std::string("m=audio 16384 RTP/SAVP") + ((mask & 1) != 0 ? " 0" : "") +
                                 ((mask & 8) != 0 ? " 18" : "") + ((mask & 16) != 0 ? " 104" : "") +
                                 ((mask & 64) != 0 ? " 9" : "") + " 101";
        ASSERT_TEXT(LineOf(near.handler.AddAudio(), "m="), line);
    }
    near.handler.InitializeLocalSDP(ConferenceLocal());
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C61_PriorityListOfHundredThousand) {
    LocalSDP local = ConferenceLocal();
    local.listAudioCodecPriority.assign(100000, PAYLOAD_G711U);
    const std::string offer = Offer(local);
    EXPECT_TRUE(LineOf(offer, "m=audio") == "m=audio 16384 RTP/SAVP" + Repeated(" 0", 100000) + " 101");
    EXPECT_EQ(Count(offer, "a=rtpmap:0 PCMU/8000\r\n"), 100000U);
}

TEST(Hostile, C61_FormatParametersAndPayloadsAtTheirLimits) {
    LocalSDP local = ConferenceLocal();
    local.iVideoPayloadMode1 = kMost;
    local.iVideoPayloadMode0 = kLeast;
    local.m_VideoMain.iFmtpMaxMbps = kLeast;
    local.m_VideoMain.iFmtpMaxFrameSize = kLeast;
    local.m_VideoMain.iFmtpMaxBitRate = -1;
    local.m_VideoPreso.iFmtpMaxMbps = kMost;
    local.m_VideoPreso.iFmtpMaxFrameSize = -2;
    local.m_VideoPreso.iFmtpMaxBitRate = kMost;
    const std::string offer = Offer(local);
    EXPECT_EQ(Count(offer, "a=fmtp:2147483647 profile-level-id=42001F;max-br=-1;max-mbps=-2147483648;"
                           "max-fs=-2147483647;packetization-mode=1;max-rcmd-nalu-size=32000;"
                           "level-asymmetry-allowed=1\r\n"),
              1U);
    EXPECT_EQ(Count(offer,
                    "a=fmtp:-2147483648 profile-level-id=420028;max-br=2147483647;max-mbps=2147483647;"
                    "max-fs=-1;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"),
              1U);
    EXPECT_EQ(Count(offer, "m=video 16386 RTP/SAVP 2147483647 -2147483648\r\n"), 1U);
}

TEST(Hostile, C61_SuitesThatHaveNoName) {
    for (const std::int32_t suite : {4, 5, 6, 77, -1, kMost, kLeast}) {
        LocalSDP local = ConferenceLocal();
        local.cryptoAlgo[baseSDP::SRTP_AUDIO] = static_cast<support::CRYPTO_PROFILE>(suite);
        EXPECT_TEXT(LineOf(Offer(local), "a=crypto:"),
                    "a=crypto:1  inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0");
    }
}

TEST(Hostile, C61_StreamsThatDoNotExist) {
    Endpoint near;
    const unsigned char bytes[16] = {1};
    for (const std::int32_t n : {-1, 3, 4, kMost, kLeast}) {
        const auto stream = static_cast<baseSDP::SRTP_M_LINE>(n);
        near.handler.MyLocalSDP.setSRTPKey(stream, bytes);
        near.handler.MyLocalSDP.setSRTPSalt(stream, bytes);
        EXPECT_FALSE(near.handler.IsRemoteSecure(stream));
        EXPECT_EQ(near.handler.AddCrypto(stream), "");
    }
    ExpectAsFresh(near.handler);
}

} // namespace
