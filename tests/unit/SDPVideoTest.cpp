// VideoParms: the state of a new record, Reset, copies and the dump.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

namespace {

using samples::InDirtyMemory;

TEST(SDPVideo, NewStreamIsNotNegotiated) {
    InDirtyMemory<VideoParms> parms;
    samples::ExpectNewVideo(*parms, VIDEOTYPE_UNKNOWN);
}

TEST(SDPVideo, ResetReturnsEveryFieldToTheStateOfANewRecord) {
    VideoParms parms = samples::Video(10, VIDEOTYPE_PRESO);
    parms.Reset();
    samples::ExpectNewVideo(parms, VIDEOTYPE_UNKNOWN);
}

TEST(SDPVideo, AssignmentCopiesEveryField) {
    const VideoParms source = samples::Video(10, VIDEOTYPE_PRESO);
    VideoParms target;
    VideoParms& result = (target = source);
    EXPECT_EQ(&result, &target);
    samples::ExpectSameVideo(target, source);
    EXPECT_EQ(target.iFmtpMaxMbps, 11);
    EXPECT_EQ(target.iFmtpMaxFrameSize, 12);
    EXPECT_EQ(target.iFmtpMaxBitRate, 13);
    EXPECT_EQ(target.iVideoRTPPort, 14);
    EXPECT_EQ(target.iVideoPayload, 15);
    EXPECT_EQ(target.iFmtpPacketizationMode, 16);
}

// Each flag on its own, so that a copy that takes one for another shows.
TEST(SDPVideo, AssignmentCopiesEachFlagByItself) {
    for (int flag = 0; flag < 3; ++flag) {
        VideoParms source;
        source.fVideoSend = flag == 0;
        source.fVideoRecv = flag == 1;
        source.fIsVideoValid = flag == 2;
        VideoParms assigned;
        assigned = source;
        const VideoParms constructed(source);
        for (const VideoParms* copy : {static_cast<const VideoParms*>(&assigned), &constructed}) {
            EXPECT_EQ(copy->fVideoSend, flag == 0);
            EXPECT_EQ(copy->fVideoRecv, flag == 1);
            EXPECT_EQ(copy->fIsVideoValid, flag == 2);
        }
    }
}

TEST(SDPVideo, AssignmentToItselfChangesNothing) {
    VideoParms parms = samples::Video(10, VIDEOTYPE_MAIN);
    const VideoParms before(parms);
    const VideoParms& itself = parms;
    parms = itself;
    samples::ExpectSameVideo(parms, before);
}

TEST(SDPVideo, CopyConstructorCopiesEveryField) {
    const VideoParms source = samples::Video(40, VIDEOTYPE_MAX);
    const VideoParms copy(source);
    samples::ExpectSameVideo(copy, source);
    EXPECT_EQ(copy.strVideoLevel, "level 40");
    EXPECT_EQ(copy.strVideoIPAddr, "address 40");
    EXPECT_EQ(copy.eVideoCodec, PAYLOAD_VP8);
    EXPECT_EQ(copy.eVideoType, VIDEOTYPE_MAX);
}

TEST(SDPVideo, CopyIsIndependentOfItsSource) {
    VideoParms source = samples::Video(40, VIDEOTYPE_MAIN);
    const VideoParms copy(source);
    source.strVideoLevel = "changed";
    source.Reset();
    EXPECT_EQ(copy.strVideoLevel, "level 40");
    EXPECT_TRUE(copy.fIsVideoValid);
}

TEST(SDPVideo, DumpShowsEveryFieldOnALineOfItsOwn) {
    EXPECT_TEXT(samples::Video(10, VIDEOTYPE_PRESO).ToDiag(), "iFmtpMaxMbps: 11\n"
                                                              "iFmtpMaxFrameSize: 12\n"
                                                              "iFmtpMaxBitRate: 13\n"
                                                              "eVideoCodec: 4\n"
                                                              "eVideoType: 1\n"
                                                              "iVideoRTPPort: 14\n"
                                                              "strVideoLevel: level 10\n"
                                                              "strVideoIPAddr: address 10\n"
                                                              "iVideoPayload: 15\n"
                                                              "iFmtpPacketizationMode: 16\n"
                                                              "fVideoSend: true\n"
                                                              "fVideoRecv: true\n"
                                                              "fIsVideoValid: true\n");
}

TEST(SDPVideo, DumpTellsTheFlagsApart) {
    VideoParms parms;
    parms.fVideoRecv = true;
    EXPECT_TEXT(parms.ToDiag(), "iFmtpMaxMbps: 0\n"
                                "iFmtpMaxFrameSize: 0\n"
                                "iFmtpMaxBitRate: 0\n"
                                "eVideoCodec: 256\n"
                                "eVideoType: 100\n"
                                "iVideoRTPPort: 0\n"
                                "strVideoLevel: \n"
                                "strVideoIPAddr: \n"
                                "iVideoPayload: 0\n"
                                "iFmtpPacketizationMode: 0\n"
                                "fVideoSend: false\n"
                                "fVideoRecv: true\n"
                                "fIsVideoValid: false\n");
}

TEST(SDPVideo, DumpMasksKeyText) {
    VideoParms parms;
    parms.strVideoLevel = "inline:bGV2ZWw";
    parms.strVideoIPAddr = "a inline:YWRkcmVzcw b";
    EXPECT_TEXT(parms.ToDiag(), "iFmtpMaxMbps: 0\n"
                                "iFmtpMaxFrameSize: 0\n"
                                "iFmtpMaxBitRate: 0\n"
                                "eVideoCodec: 256\n"
                                "eVideoType: 100\n"
                                "iVideoRTPPort: 0\n"
                                "strVideoLevel: inline:***\n"
                                "strVideoIPAddr: a inline:*** b\n"
                                "iVideoPayload: 0\n"
                                "iFmtpPacketizationMode: 0\n"
                                "fVideoSend: false\n"
                                "fVideoRecv: false\n"
                                "fIsVideoValid: false\n");
}

} // namespace
