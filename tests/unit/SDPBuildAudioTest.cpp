// SDPBuildAudio: the codec of an answer and the rtpmap lines. The audio section is in audio.cases.
#include "Capabilities.h"
#include "Expect.h"

#include <string>
#include <vector>

using namespace support;

namespace {

// The answer's codec.

const Format kG7221 = {"115", "G7221/16000", {"bitrate=32000"}};

PayloadType_t Answer(PayloadType_t local, const std::vector<std::vector<Format>>& sections,
                     MediaType media = MEDIA_AUDIO) {
    SDPHandler h;
    h.MyLocalSDP.eAudioCodec = local;
    for (const std::vector<Format>& formats : sections) {
        AddFormats(AddSection(h, media, 5000), formats);
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
