// SDPBuildAudio: the audio section, the codec of an answer, the rtpmap lines.
#include "Capabilities.h"
#include "Expect.h"

#include <string>
#include <vector>

using namespace support;

namespace {

TEST(SDPBuildAudio, OfferListsEveryCodecInPriorityOrder) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.iMaxBandwidth = 64000;
    Start(h, local);
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                              "b=TIAS:64000\r\n"
                              "a=rtpmap:104 G7221/16000\r\n"
                              "a=fmtp:104 bitrate=32000\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:18 G729/8000\r\n"
                              "a=fmtp:18 annexb=no\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, OfferFollowsAnotherPriority) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G729, PAYLOAD_G711U, PAYLOAD_G722, PAYLOAD_G7221};
    Start(h, local);
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 18 0 9 104 101\r\n"
                              "a=rtpmap:18 G729/8000\r\n"
                              "a=fmtp:18 annexb=no\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:104 G7221/16000\r\n"
                              "a=fmtp:104 bitrate=32000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, SecureOfferCarriesBandwidthThenKeyBeforeTheCodecs) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.iMaxBandwidth = 1000000;
    GiveKeys(local, "near", kSuite80);
    Start(h, local);
    h.m_bSRTP = true;
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/SAVP 0 101\r\n"
                              "b=TIAS:64000\r\n"
                              "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                              "inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, EmptyPriorityMeansNoSection) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority.clear();
    Start(h, local);
    EXPECT_TEXT(h.AddAudio(), "");
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "0");
    EXPECT_TEXT(h.AddAudio(), "");
}

// An offer with these priorities and codecs at port 0, which leaves the RTCP line out.
std::string Offer(PayloadType_t codecs, const std::list<int>& priority) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = codecs;
    local.listAudioCodecPriority = priority;
    local.iAudioRTPPort = 0;
    Start(h, local);
    return h.AddAudio();
}

const char* const kEventsOnly = "m=audio 0 RTP/AVP 101\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=sendrecv\r\n";

TEST(SDPBuildAudio, EachCodecHasItsTokenAndItsLines) {
    EXPECT_TEXT(Offer(PAYLOAD_G711U, {PAYLOAD_G711U}), "m=audio 0 RTP/AVP 0 101\r\n"
                                                       "a=rtpmap:0 PCMU/8000\r\n"
                                                       "a=rtpmap:101 telephone-event/8000\r\n"
                                                       "a=fmtp:101 0-15\r\n"
                                                       "a=sendrecv\r\n");
    EXPECT_TEXT(Offer(PAYLOAD_G729, {PAYLOAD_G729}), "m=audio 0 RTP/AVP 18 101\r\n"
                                                     "a=rtpmap:18 G729/8000\r\n"
                                                     "a=fmtp:18 annexb=no\r\n"
                                                     "a=rtpmap:101 telephone-event/8000\r\n"
                                                     "a=fmtp:101 0-15\r\n"
                                                     "a=sendrecv\r\n");
    EXPECT_TEXT(Offer(PAYLOAD_G7221, {PAYLOAD_G7221}), "m=audio 0 RTP/AVP 104 101\r\n"
                                                       "a=rtpmap:104 G7221/16000\r\n"
                                                       "a=fmtp:104 bitrate=32000\r\n"
                                                       "a=rtpmap:101 telephone-event/8000\r\n"
                                                       "a=fmtp:101 0-15\r\n"
                                                       "a=sendrecv\r\n");
    EXPECT_TEXT(Offer(PAYLOAD_G722, {PAYLOAD_G722}), "m=audio 0 RTP/AVP 9 101\r\n"
                                                     "a=rtpmap:9 G722/8000\r\n"
                                                     "a=rtpmap:101 telephone-event/8000\r\n"
                                                     "a=fmtp:101 0-15\r\n"
                                                     "a=sendrecv\r\n");
}

TEST(SDPBuildAudio, APriorityWithoutItsBitIsLeftOut) {
    for (const PayloadType codec : {PAYLOAD_G711U, PAYLOAD_G729, PAYLOAD_G7221, PAYLOAD_G722}) {
        EXPECT_TEXT(Offer(PayloadType_t(kAllAudio & ~codec), {codec}), kEventsOnly) << codec;
    }
    EXPECT_TEXT(Offer(PAYLOAD_G722, {PAYLOAD_G711U, PAYLOAD_G722, PAYLOAD_G729}),
                "m=audio 0 RTP/AVP 9 101\r\n"
                "a=rtpmap:9 G722/8000\r\n"
                "a=rtpmap:101 telephone-event/8000\r\n"
                "a=fmtp:101 0-15\r\n"
                "a=sendrecv\r\n");
}

TEST(SDPBuildAudio, ABitWithoutAPriorityIsLeftOut) {
    EXPECT_TEXT(Offer(kAllAudio, {PAYLOAD_G722}), "m=audio 0 RTP/AVP 9 101\r\n"
                                                  "a=rtpmap:9 G722/8000\r\n"
                                                  "a=rtpmap:101 telephone-event/8000\r\n"
                                                  "a=fmtp:101 0-15\r\n"
                                                  "a=sendrecv\r\n");
}

TEST(SDPBuildAudio, PrioritiesThatAreNoAudioCodecAreIgnored) {
    const PayloadType_t everything = PayloadType_t(-1);
    for (const int entry : {int{PAYLOAD_H264}, int{PAYLOAD_VP8}, int{PAYLOAD_H264_PACKETIZATION_0},
                            int{PAYLOAD_UNKNOWN}, 0, -1, 1 | 8, 65, 128}) {
        EXPECT_TEXT(Offer(everything, {entry}), kEventsOnly) << entry;
    }
}

TEST(SDPBuildAudio, APriorityListedTwiceIsWrittenTwice) {
    EXPECT_TEXT(Offer(kAllAudio, {PAYLOAD_G729, PAYLOAD_G711U, PAYLOAD_G729}),
                "m=audio 0 RTP/AVP 18 0 18 101\r\n"
                "a=rtpmap:18 G729/8000\r\n"
                "a=fmtp:18 annexb=no\r\n"
                "a=rtpmap:0 PCMU/8000\r\n"
                "a=rtpmap:18 G729/8000\r\n"
                "a=fmtp:18 annexb=no\r\n"
                "a=rtpmap:101 telephone-event/8000\r\n"
                "a=fmtp:101 0-15\r\n"
                "a=sendrecv\r\n");
}

TEST(SDPBuildAudio, PortZeroHasNoRtcpLine) {
    EXPECT_TEXT(Offer(PAYLOAD_VP8, {PAYLOAD_VP8}), kEventsOnly);
}

TEST(SDPBuildAudio, RtcpPortIsOneAboveTheRtpPort) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = kNoCodec;
    local.iAudioRTPPort = 1;
    Start(h, local);
    EXPECT_TEXT(h.AddAudio(), "m=audio 1 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:2 IN IP4 192.0.2.1\r\n");
    h.MyLocalSDP.iAudioRTPPort = -1;
    EXPECT_TEXT(h.AddAudio(), "m=audio -1 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:0 IN IP4 192.0.2.1\r\n");
}

// Secure or not.

std::string SecureAudio(bool isWanted, CRYPTO_PROFILE localSuite, bool hasRemote, bool isRemoteSecure) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = kNoCodec;
    local.iAudioRTPPort = 0;
    GiveKeys(local, "near", localSuite);
    Start(h, local);
    h.m_bSRTP = isWanted;
    if (hasRemote) {
        MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
        if (isRemoteSecure) {
            Secure(section, "audio", 7);
        }
    }
    const std::string sectionText = h.AddAudio();
    const std::string tail = "a=rtpmap:101 telephone-event/8000\r\na=fmtp:101 0-15\r\na=sendrecv\r\n";
    EXPECT_TEXT(sectionText.substr(sectionText.size() - tail.size()), tail);
    return sectionText.substr(0, sectionText.size() - tail.size());
}

TEST(SDPBuildAudio, OfferIsSecureWhenSrtpIsWanted) {
    EXPECT_TEXT(SecureAudio(true, kSuite32, false, false),
                "m=audio 0 RTP/SAVP 101\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(SecureAudio(false, kSuite32, false, false), "m=audio 0 RTP/AVP 101\r\n");
}

TEST(SDPBuildAudio, OfferWithoutASuiteIsSecureInNameOnly) {
    EXPECT_TEXT(SecureAudio(true, kSuiteNone, false, false), "m=audio 0 RTP/SAVP 101\r\n");
}

TEST(SDPBuildAudio, AnswerIsSecureWhenBothSidesAre) {
    EXPECT_TEXT(SecureAudio(true, kSuite32, true, true),
                "m=audio 0 RTP/SAVP 101\r\n"
                "a=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n");
    EXPECT_TEXT(SecureAudio(true, kSuite32, true, false), "m=audio 0 RTP/AVP 101\r\n");
    EXPECT_TEXT(SecureAudio(false, kSuite32, true, true), "m=audio 0 RTP/AVP 101\r\n");
}

// The answer's codec.

struct Format {
    std::string strPayload;
    std::string encoding;
    std::vector<std::string> parms;
};

const Format kG7221 = {"115", "G7221/16000", {"bitrate=32000"}};

PayloadType_t Answer(PayloadType_t local, const std::vector<std::vector<Format>>& sections,
                     MediaType media = MEDIA_AUDIO) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = local;
    for (const std::vector<Format>& formats : sections) {
        MediaSession& section = AddSection(h, media, 5000);
        for (const Format& format : formats) {
            AddFormat(section, format.strPayload, format.encoding, format.parms);
        }
    }
    return h.GetAudioPayload();
}

TEST(SDPBuildAudio, OfferedCodecsAreTheLocalSet) {
    EXPECT_EQ(Answer(kAllAudio, {}), kAllAudio);
    EXPECT_EQ(Answer(PAYLOAD_VP8, {}), PAYLOAD_VP8);
    EXPECT_EQ(Answer(kNoCodec, {}), kNoCodec);
}

TEST(SDPBuildAudio, AnsweredCodecIsKnownByNumberOrMap) {
    EXPECT_EQ(Answer(kAllAudio, {{{"9", "", {}}}}), PAYLOAD_G722);
    EXPECT_EQ(Answer(kAllAudio, {{kG7221}}), PAYLOAD_G7221);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}}), PAYLOAD_G711U);
    EXPECT_EQ(Answer(kAllAudio, {{{"18", "", {}}}}), PAYLOAD_G729);
}

TEST(SDPBuildAudio, AnsweredCodecNeedsItsOwnLocalBit) {
    EXPECT_EQ(Answer(PayloadType_t(kAllAudio & ~PAYLOAD_G722), {{{"9", "", {}}}}), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(PayloadType_t(kAllAudio & ~PAYLOAD_G7221), {{kG7221}}), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(PayloadType_t(kAllAudio & ~PAYLOAD_G711U), {{{"0", "", {}}}}), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(PayloadType_t(kAllAudio & ~PAYLOAD_G729), {{{"18", "", {}}}}), PAYLOAD_UNKNOWN);
}

TEST(SDPBuildAudio, AnsweredCodecIsUnknownWithoutAMatch) {
    EXPECT_EQ(Answer(kAllAudio, {{}}), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(kAllAudio, {{{"8", "PCMA/8000", {}}, {"09", "", {}}, {"00", "", {}}, {"1", "", {}}}}),
              PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(kAllAudio, {{{"104", "G7221/16000", {"bitrate=24000"}}}}), PAYLOAD_UNKNOWN);
}

TEST(SDPBuildAudio, AnsweredCodecFollowsTheFarEndsOrder) {
    EXPECT_EQ(Answer(kAllAudio, {{{"18", "", {}}, {"0", "", {}}}}), PAYLOAD_G729);
    EXPECT_EQ(Answer(kAllAudio, {{{"8", "", {}}, {"0", "", {}}, {"9", "", {}}}}), PAYLOAD_G711U);
    EXPECT_EQ(Answer(PAYLOAD_G722, {{{"18", "", {}}, {"0", "", {}}, {"9", "", {}}}}), PAYLOAD_G722);
}

TEST(SDPBuildAudio, OneEntryThatPassesSeveralTestsFollowsTheirOrder) {
    const std::vector<std::string> rate = {"bitrate=32000"};
    EXPECT_EQ(Answer(kAllAudio, {{{"9", "G7221/16000", rate}}}), PAYLOAD_G722);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "G7221/16000", rate}}}), PAYLOAD_G7221);
    EXPECT_EQ(Answer(kAllAudio, {{{"18", "G7221/16000", rate}}}), PAYLOAD_G7221);
}

TEST(SDPBuildAudio, LastAudioSectionWithAMatchDecides) {
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}, {{"18", "", {}}}}), PAYLOAD_G729);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}, {{"8", "", {}}}}), PAYLOAD_G711U);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}, {}}), PAYLOAD_G711U);
    EXPECT_EQ(Answer(kAllAudio, {{{"8", "", {}}}, {{"9", "", {}}}}), PAYLOAD_G722);
}

TEST(SDPBuildAudio, OtherSectionsDoNotDecide) {
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}}, MEDIA_VIDEO), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}}, MEDIA_APPLICATION), PAYLOAD_UNKNOWN);
    EXPECT_EQ(Answer(kAllAudio, {{{"0", "", {}}}}, MEDIA_UNKNOWN), PAYLOAD_UNKNOWN);
}

TEST(SDPBuildAudio, AnswerListsTheOneCodecAndTelephoneEvents) {
    SDPHandler h;
    Start(h, AudioLocal());
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormat(section, "18");
    AddFormat(section, "0");
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 18 101\r\n"
                              "a=rtpmap:18 G729/8000\r\n"
                              "a=fmtp:18 annexb=no\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, AnswerWritesItsOwnPayloadForG7221) {
    SDPHandler h;
    Start(h, AudioLocal());
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "115", "G7221/16000", {"bitrate=32000"});
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 104 101\r\n"
                              "a=rtpmap:104 G7221/16000\r\n"
                              "a=fmtp:104 bitrate=32000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, AnswerWithoutACommonCodecListsTelephoneEventsAlone) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PayloadType_t(kAllAudio & ~PAYLOAD_G722);
    Start(h, local);
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormat(section, "9");
    AddFormat(section, "8");
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, AnswerWhoseCodecHasNoPriorityListsTelephoneEventsAlone) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G722};
    Start(h, local);
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "0");
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, AnswerWithoutAnAudioSectionHasNoDirection) {
    SDPHandler h;
    Start(h, AudioLocal());
    AddSection(h, MEDIA_VIDEO, 5002);
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuildAudio, AnswerTakesItsDirectionFromTheFarEnd) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G722};
    local.fVideoTxMuted = true;
    Start(h, local);
    MediaSession& section = AddSection(h, MEDIA_AUDIO, 5000);
    AddFormat(section, "9");
    section.fSend = false;
    EXPECT_TEXT(h.AddAudio(), "m=audio 16384 RTP/AVP 9 101\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=recvonly\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

// The rtpmap lines by themselves.

TEST(SDPBuildAudio, RtpmapLinesOfEveryCodec) {
    SDPHandler h;
    h.MyLocalSDP.iVideoPayloadMode1 = 97;
    h.MyLocalSDP.iVideoPayloadMode0 = 126;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G711U), "a=rtpmap:0 PCMU/8000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G729), "a=rtpmap:18 G729/8000\r\na=fmtp:18 annexb=no\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G7221), "a=rtpmap:104 G7221/16000\r\na=fmtp:104 bitrate=32000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G722), "a=rtpmap:9 G722/8000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_H264), "a=rtpmap:97 H264/90000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_H264_PACKETIZATION_0), "a=rtpmap:126 H264/90000\r\n");
}

TEST(SDPBuildAudio, RtpmapOfVideoReadsThePayloadNumbersAtTheCall) {
    SDPHandler h;
    h.MyLocalSDP.iVideoPayloadMode1 = -1;
    h.MyLocalSDP.iVideoPayloadMode0 = 0;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_H264), "a=rtpmap:-1 H264/90000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_H264_PACKETIZATION_0), "a=rtpmap:0 H264/90000\r\n");
}

TEST(SDPBuildAudio, RtpmapOfAnythingElseIsTheBarePrefix) {
    const SDPHandler h;
    for (const int payload :
         {int{PAYLOAD_VP8}, int{PAYLOAD_UNKNOWN}, 0, int{kAllAudio}, int{kBothModes}, 9}) {
        EXPECT_TEXT(h.AddRTPMap(PayloadType_t(payload)), "a=rtpmap:") << payload;
    }
}

} // namespace
