// LocalSDP: the state of a new record, the virtual Reset, assignment, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

#include <list>

namespace {

using samples::InDirtyMemory;

// Counts its resets, to show when dispatch reaches an override.
struct CountingLocal : public LocalSDP {
    int resets = 0;
    void Reset() override { ++resets; }
};

TEST(SDPLocal, NewRecordIsEmpty) {
    InDirtyMemory<LocalSDP> record;
    samples::ExpectNewLocal(*record);
}

TEST(SDPLocal, ResetReturnsEveryFieldToTheStateOfANewRecord) {
    LocalSDP record;
    samples::FillLocal(record);
    record.Reset();
    samples::ExpectNewLocal(record);
}

TEST(SDPLocal, ResetIsVirtual) {
    CountingLocal record;
    samples::FillLocal(record);
    LocalSDP& asLocal = record;
    asLocal.Reset();
    EXPECT_EQ(record.resets, 1);
    EXPECT_EQ(record.strMyIPAddr, "192.0.2.21");
}

TEST(SDPLocal, ConstructionResetsThroughTheLocalRecordNotThroughAnOverride) {
    InDirtyMemory<CountingLocal> record;
    EXPECT_EQ(record->resets, 0);
    samples::ExpectNewLocal(*record);
}

TEST(SDPLocal, ResetThroughTheBaseLeavesTheLocalFields) {
    LocalSDP record;
    samples::FillLocal(record);
    LocalSDP expected;
    samples::FillLocal(expected);
    baseSDP& asBase = record;
    asBase.Reset();
    samples::ExpectNewBase(record);
    samples::ExpectSameOwn(record, expected);
}

TEST(SDPLocal, AssignmentReplacesEverythingButTheBfcpIdentity) {
    LocalSDP source;
    samples::FillLocal(source);
    LocalSDP target;
    target.iBfcpConfid = 7;
    target.iBfcpUserid = 8;
    LocalSDP& result = (target = source);
    EXPECT_EQ(&result, &target);
    samples::ExpectSameCarried(target, source);
    samples::ExpectSameOwn(target, source);
    EXPECT_EQ(target.strMyIPAddr, "192.0.2.21");
    EXPECT_EQ(target.strOExtension, "extension");
    EXPECT_EQ(target.strDefaultIPAddr, "192.0.2.22");
    EXPECT_EQ(target.iVideoPayloadMode0, 106);
    EXPECT_EQ(target.iVideoPayloadMode1, 107);
    EXPECT_TRUE(target.fVideoTxMuted);
    EXPECT_EQ(target.iBfcpConfid, 7);
    EXPECT_EQ(target.iBfcpUserid, 8);
    EXPECT_FALSE(target.fBfcpIsServer);
}

TEST(SDPLocal, AssignmentLeavesASetBfcpServerFlag) {
    LocalSDP target;
    target.iBfcpConfid = 1;
    target.iBfcpUserid = 2;
    target.fBfcpIsServer = true;
    target = LocalSDP();
    EXPECT_EQ(target.iBfcpConfid, 1);
    EXPECT_EQ(target.iBfcpUserid, 2);
    EXPECT_TRUE(target.fBfcpIsServer);
}

TEST(SDPLocal, AssignmentReplacesALongerCodecListByAShorterOne) {
    LocalSDP source;
    source.listAudioCodecPriority = {64, 1};
    LocalSDP target;
    target.listAudioCodecPriority = {16, 8, 4, 2};
    target = source;
    EXPECT_EQ(target.listAudioCodecPriority, (std::list<int>{64, 1}));
    EXPECT_EQ(source.listAudioCodecPriority, (std::list<int>{64, 1}));
}

TEST(SDPLocal, AssignmentReplacesAShorterCodecListByALongerOne) {
    LocalSDP source;
    source.listAudioCodecPriority = {16, 64, 1, 8, 1};
    LocalSDP target;
    target.listAudioCodecPriority = {2};
    target = source;
    EXPECT_EQ(target.listAudioCodecPriority, (std::list<int>{16, 64, 1, 8, 1}));
}

TEST(SDPLocal, AssignmentOfAnEmptyCodecListEmptiesTheTarget) {
    LocalSDP target;
    target.listAudioCodecPriority = {1, 8};
    target = LocalSDP();
    EXPECT_TRUE(target.listAudioCodecPriority.empty());
}

TEST(SDPLocal, AssignmentToItselfChangesNothing) {
    LocalSDP record;
    samples::FillLocal(record);
    LocalSDP expected;
    samples::FillLocal(expected);
    const LocalSDP& itself = record;
    record = itself;
    samples::ExpectSame(record, expected);
}

TEST(SDPLocal, AssignmentLeavesTheDispatchOfItsTarget) {
    CountingLocal target;
    LocalSDP source;
    samples::FillLocal(source);
    LocalSDP& asLocal = target;
    asLocal = source;
    EXPECT_EQ(target.resets, 0);
    asLocal.Reset();
    EXPECT_EQ(target.resets, 1);
    EXPECT_EQ(target.strOExtension, "extension");
}

TEST(SDPLocal, CopyConstructorCopiesEveryField) {
    LocalSDP source;
    samples::FillLocal(source);
    const LocalSDP copy(source);
    samples::ExpectSame(copy, source);
    EXPECT_EQ(copy.iBfcpConfid, 103);
}

TEST(SDPLocal, DumpShowsEveryFieldButTheKeys) {
    LocalSDP record;
    samples::FillLocal(record);
    EXPECT_TEXT(record.ToDiag(), "eAudioCodec: 8\n"
                                 "iAudioRTPPort: 101\n"
                                 "iVideoPresoControlPort: 102\n"
                                 "iBfcpConfid: 103\n"
                                 "iBfcpUserid: 104\n"
                                 "fBfcpIsServer: true\n"
                                 "iMaxBandwidth: 105\n"
                                 "m_VideoMain:\n"
                                 "iFmtpMaxMbps: 201\n"
                                 "iFmtpMaxFrameSize: 202\n"
                                 "iFmtpMaxBitRate: 203\n"
                                 "eVideoCodec: 4\n"
                                 "eVideoType: 1\n"
                                 "iVideoRTPPort: 204\n"
                                 "strVideoLevel: level 200\n"
                                 "strVideoIPAddr: address 200\n"
                                 "iVideoPayload: 205\n"
                                 "iFmtpPacketizationMode: 206\n"
                                 "fVideoSend: true\n"
                                 "fVideoRecv: true\n"
                                 "fIsVideoValid: true\n"
                                 "m_VideoPreso:\n"
                                 "iFmtpMaxMbps: 301\n"
                                 "iFmtpMaxFrameSize: 302\n"
                                 "iFmtpMaxBitRate: 303\n"
                                 "eVideoCodec: 4\n"
                                 "eVideoType: 0\n"
                                 "iVideoRTPPort: 304\n"
                                 "strVideoLevel: level 300\n"
                                 "strVideoIPAddr: address 300\n"
                                 "iVideoPayload: 305\n"
                                 "iFmtpPacketizationMode: 306\n"
                                 "fVideoSend: true\n"
                                 "fVideoRecv: true\n"
                                 "fIsVideoValid: true\n"
                                 "cryptoAlgo[0]: 2\n"
                                 "cryptoAlgo[1]: 4\n"
                                 "cryptoAlgo[2]: 5\n"
                                 "strMyIPAddr: 192.0.2.21\n"
                                 "strOExtension: extension\n"
                                 "strDefaultIPAddr: 192.0.2.22\n"
                                 "iVideoPayloadMode0: 106\n"
                                 "iVideoPayloadMode1: 107\n"
                                 "fVideoTxMuted: true\n"
                                 "listAudioCodecPriority: 8 1 64\n");
}

} // namespace
