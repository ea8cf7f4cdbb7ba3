// SDPBuildAttribute: bandwidth, direction and RTCP lines.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <limits>
#include <string>

using namespace support;

namespace {

struct Bandwidth {
    std::string session;
    std::string audio;
    std::string video;
};

Bandwidth Write(std::int32_t bits) {
    SDPHandler h;
    h.MyLocalSDP.iMaxBandwidth = bits;
    Bandwidth lines = {h.AddBandwidth(), h.AddBandwidthTIAS(false), h.AddBandwidthTIAS(true)};
    EXPECT_EQ(h.MyLocalSDP.iMaxBandwidth, bits);
    return lines;
}

void ExpectBandwidth(std::int32_t bits, const Bandwidth& expected) {
    const Bandwidth lines = Write(bits);
    EXPECT_TEXT(lines.session, expected.session) << bits;
    EXPECT_TEXT(lines.audio, expected.audio) << bits;
    EXPECT_TEXT(lines.video, expected.video) << bits;
}

TEST(SDPBuildAttribute, NoLimitMeansNoBandwidthLine) {
    ExpectBandwidth(0, {"", "", ""});
}

TEST(SDPBuildAttribute, KilobitsAreCutTowardZero) {
    ExpectBandwidth(1, {"b=AS:0\r\n", "", ""});
    ExpectBandwidth(500, {"b=AS:0\r\n", "", ""});
    ExpectBandwidth(999, {"b=AS:0\r\n", "", ""});
    ExpectBandwidth(1000, {"b=AS:1\r\n", "", ""});
    ExpectBandwidth(1999, {"b=AS:1\r\n", "", ""});
    ExpectBandwidth(2000, {"b=AS:2\r\n", "", ""});
}

TEST(SDPBuildAttribute, MediaLinesBeginAtTheAudioShare) {
    ExpectBandwidth(63999, {"b=AS:63\r\n", "", ""});
    ExpectBandwidth(64000, {"b=AS:64\r\n", "b=TIAS:64000\r\n", ""});
    ExpectBandwidth(64001, {"b=AS:64\r\n", "b=TIAS:64000\r\n", "b=TIAS:1\r\n"});
    ExpectBandwidth(64002, {"b=AS:64\r\n", "b=TIAS:64000\r\n", "b=TIAS:2\r\n"});
}

TEST(SDPBuildAttribute, VideoGetsWhatAudioLeaves) {
    ExpectBandwidth(384000, {"b=AS:384\r\n", "b=TIAS:64000\r\n", "b=TIAS:320000\r\n"});
    ExpectBandwidth(1000000, {"b=AS:1000\r\n", "b=TIAS:64000\r\n", "b=TIAS:936000\r\n"});
    ExpectBandwidth(std::numeric_limits<std::int32_t>::max(),
                    {"b=AS:2147483\r\n", "b=TIAS:64000\r\n", "b=TIAS:2147419647\r\n"});
}

TEST(SDPBuildAttribute, ANegativeLimitIsWrittenForTheSessionAlone) {
    ExpectBandwidth(-1, {"b=AS:0\r\n", "", ""});
    ExpectBandwidth(-1500, {"b=AS:-1\r\n", "", ""});
    ExpectBandwidth(-64000, {"b=AS:-64\r\n", "", ""});
    ExpectBandwidth(std::numeric_limits<std::int32_t>::min(), {"b=AS:-2147483\r\n", "", ""});
}

// The places of the lines in an offer, for each threshold.

std::string BandwidthLines(std::int32_t bits) {
    SDPHandler h;
    LocalSDP local = PresentationLocal();
    local.iMaxBandwidth = bits;
    Start(h, local);
    h.SetBfcpSupport(true);
    std::string lines;
    for (const std::string& line : CutLines(h.GetLocalSDP())) {
        if (line.compare(0, 2, "b=") == 0 || line.compare(0, 2, "m=") == 0) {
            lines += line;
        }
    }
    return lines;
}

TEST(SDPBuildAttribute, BandwidthOfAWholeOffer) {
    EXPECT_TEXT(BandwidthLines(0), "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                                   "m=video 16386 RTP/AVP 97 126\r\n"
                                   "m=video 16388 RTP/AVP 97 126\r\n"
                                   "m=application 16390 UDP/BFCP *\r\n");
    EXPECT_TEXT(BandwidthLines(500), "b=AS:0\r\n"
                                     "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                                     "m=video 16386 RTP/AVP 97 126\r\n"
                                     "m=video 16388 RTP/AVP 97 126\r\n"
                                     "m=application 16390 UDP/BFCP *\r\n");
    EXPECT_TEXT(BandwidthLines(64000), "b=AS:64\r\n"
                                       "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                                       "b=TIAS:64000\r\n"
                                       "m=video 16386 RTP/AVP 97 126\r\n"
                                       "m=video 16388 RTP/AVP 97 126\r\n"
                                       "m=application 16390 UDP/BFCP *\r\n");
    EXPECT_TEXT(BandwidthLines(1000000), "b=AS:1000\r\n"
                                         "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                                         "b=TIAS:64000\r\n"
                                         "m=video 16386 RTP/AVP 97 126\r\n"
                                         "b=TIAS:936000\r\n"
                                         "m=video 16388 RTP/AVP 97 126\r\n"
                                         "b=TIAS:936000\r\n"
                                         "m=application 16390 UDP/BFCP *\r\n");
}

// Directions.

const MediaType kMedia[] = {MEDIA_AUDIO, MEDIA_VIDEO, MEDIA_VIDEO, MEDIA_VIDEO, MEDIA_APPLICATION};
const VIDEOTYPE kRoles[] = {VIDEOTYPE_UNKNOWN, VIDEOTYPE_MAIN, VIDEOTYPE_PRESO, VIDEOTYPE_UNKNOWN,
                            VIDEOTYPE_MAIN};

TEST(SDPBuildAttribute, EveryOfferedStreamGoesBothWays) {
    const SDPHandler h;
    for (int i = 0; i < 5; ++i) {
        EXPECT_TEXT(h.AddDirectional(kMedia[i], kRoles[i]), "a=sendrecv\r\n") << i;
    }
}

TEST(SDPBuildAttribute, AnOfferWithMutedVideoOnlyReceivesMainVideo) {
    SDPHandler h;
    h.MyLocalSDP.fVideoTxMuted = true;
    for (int i = 0; i < 5; ++i) {
        EXPECT_TEXT(h.AddDirectional(kMedia[i], kRoles[i]), i == 1 ? "a=recvonly\r\n" : "a=sendrecv\r\n")
            << i;
    }
}

struct Flags {
    std::int32_t port;
    bool fSend;
    bool fRecv;
};

std::string Answer(MediaType media, VIDEOTYPE role, bool isMuted, const Flags& flags) {
    SDPHandler h;
    h.MyLocalSDP.fVideoTxMuted = isMuted;
    MediaSession& section = AddSection(h, media, flags.port);
    section.eContent = role;
    section.fSend = flags.fSend;
    section.fRecv = flags.fRecv;
    return h.AddDirectional(media, role);
}

TEST(SDPBuildAttribute, AnAnswerNamesTheFlagsThatAreSet) {
    for (int i = 0; i < 5; ++i) {
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], false, {1, true, true}), "a=sendrecv\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], false, {1, false, true}), "a=recvonly\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], false, {1, true, false}), "a=sendonly\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], false, {1, false, false}), "a=inactive\r\n") << i;
    }
}

TEST(SDPBuildAttribute, AnAnswerToPortZeroIsInactive) {
    for (int i = 0; i < 5; ++i) {
        for (const bool isMuted : {false, true}) {
            EXPECT_TEXT(Answer(kMedia[i], kRoles[i], isMuted, {0, true, true}), "a=inactive\r\n") << i;
            EXPECT_TEXT(Answer(kMedia[i], kRoles[i], isMuted, {0, false, true}), "a=inactive\r\n") << i;
            EXPECT_TEXT(Answer(kMedia[i], kRoles[i], isMuted, {0, true, false}), "a=inactive\r\n") << i;
        }
    }
}

TEST(SDPBuildAttribute, AnAnswerToANegativePortLooksAtTheFlags) {
    EXPECT_TEXT(Answer(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN, false, {-1, true, true}), "a=sendrecv\r\n");
    EXPECT_TEXT(Answer(MEDIA_VIDEO, VIDEOTYPE_MAIN, true, {-1, true, true}), "a=recvonly\r\n");
}

TEST(SDPBuildAttribute, MutedMainVideoNeverSendsInAnAnswer) {
    EXPECT_TEXT(Answer(MEDIA_VIDEO, VIDEOTYPE_MAIN, true, {1, true, true}), "a=recvonly\r\n");
    EXPECT_TEXT(Answer(MEDIA_VIDEO, VIDEOTYPE_MAIN, true, {1, false, true}), "a=recvonly\r\n");
    EXPECT_TEXT(Answer(MEDIA_VIDEO, VIDEOTYPE_MAIN, true, {1, true, false}), "a=inactive\r\n");
    EXPECT_TEXT(Answer(MEDIA_VIDEO, VIDEOTYPE_MAIN, true, {1, false, false}), "a=inactive\r\n");
}

TEST(SDPBuildAttribute, TheMuteTouchesNothingButMainVideo) {
    for (const int i : {0, 2, 3, 4}) {
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], true, {1, true, true}), "a=sendrecv\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], true, {1, false, true}), "a=recvonly\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], true, {1, true, false}), "a=sendonly\r\n") << i;
        EXPECT_TEXT(Answer(kMedia[i], kRoles[i], true, {1, false, false}), "a=inactive\r\n") << i;
    }
}

TEST(SDPBuildAttribute, WithoutASectionOfTheSameMediaAndRoleThereIsNoDirection) {
    SDPHandler h;
    for (const bool isMuted : {false, true}) {
        h.MyLocalSDP.fVideoTxMuted = isMuted;
        h.ResetRemoteSDP();
        AddSection(h, MEDIA_VIDEO, 5002).eContent = VIDEOTYPE_PRESO;
        AddSection(h, MEDIA_APPLICATION, 5004);
        AddSection(h, MEDIA_AUDIO, 5006).eContent = VIDEOTYPE_MAIN;
        EXPECT_TEXT(h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN), "");
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), "");
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_UNKNOWN), "");
        EXPECT_TEXT(h.AddDirectional(MEDIA_UNKNOWN, VIDEOTYPE_UNKNOWN), "");
        EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO), "a=sendrecv\r\n");
    }
}

TEST(SDPBuildAttribute, TheFirstMatchingSectionDecides) {
    SDPHandler h;
    AddSection(h, MEDIA_VIDEO, 5000).eContent = VIDEOTYPE_PRESO;
    AddSection(h, MEDIA_AUDIO, 5002).fSend = false;
    AddSection(h, MEDIA_VIDEO, 5004).fRecv = false;
    AddSection(h, MEDIA_AUDIO, 5006);
    AddSection(h, MEDIA_VIDEO, 0);
    EXPECT_TEXT(h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN), "a=recvonly\r\n");
    EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN), "a=sendonly\r\n");
    EXPECT_TEXT(h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO), "a=sendrecv\r\n");
}

// The mirror as both ends see it: what the far end writes, what this end answers.

std::string AnswerTo(const std::string& attribute, bool isMuted) {
    SDPHandler h;
    h.MyLocalSDP.fVideoTxMuted = isMuted;
    RemoteSDP remote;
    h.ParseTheSDP("m=video 5002 RTP/AVP 97\r\n" + attribute, remote);
    return h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_MAIN);
}

TEST(SDPBuildAttribute, DirectionsAreAnsweredMirrored) {
    EXPECT_TEXT(AnswerTo("", false), "a=sendrecv\r\n");
    EXPECT_TEXT(AnswerTo("a=sendrecv\r\n", false), "a=sendrecv\r\n");
    EXPECT_TEXT(AnswerTo("a=sendonly\r\n", false), "a=recvonly\r\n");
    EXPECT_TEXT(AnswerTo("a=recvonly\r\n", false), "a=sendonly\r\n");
    EXPECT_TEXT(AnswerTo("a=inactive\r\n", false), "a=inactive\r\n");
    EXPECT_TEXT(AnswerTo("a=sendrecv\r\n", true), "a=recvonly\r\n");
    EXPECT_TEXT(AnswerTo("a=sendonly\r\n", true), "a=recvonly\r\n");
    EXPECT_TEXT(AnswerTo("a=recvonly\r\n", true), "a=inactive\r\n");
    EXPECT_TEXT(AnswerTo("a=inactive\r\n", true), "a=inactive\r\n");
}

// RTCP.

TEST(SDPBuildAttribute, RtcpLineWritesTheGivenPortAndTheDefaultAddress) {
    SDPHandler h;
    h.SetDefaultLocalIPAddr("10.0.0.1");
    h.MyLocalSDP.strMyIPAddr = "10.1.2.3";
    EXPECT_TEXT(h.AddRTCPAttribute(16385), "a=rtcp:16385 IN IP4 10.0.0.1\r\n");
    EXPECT_TEXT(h.AddRTCPAttribute(0), "a=rtcp:0 IN IP4 10.0.0.1\r\n");
    EXPECT_TEXT(h.AddRTCPAttribute(-1), "a=rtcp:-1 IN IP4 10.0.0.1\r\n");
    h.SetDefaultLocalIPAddr("");
    EXPECT_TEXT(h.AddRTCPAttribute(16385), "a=rtcp:16385 IN IP4 \r\n");
}

} // namespace
