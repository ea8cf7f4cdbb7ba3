// RemoteSDP: the state of a new record, Reset, and the dump.
#include "SDP.h"

#include "Expect.h"
#include "RecordSamples.h"

namespace {

using samples::InDirtyMemory;

TEST(SDPRemote, NewRecordIsEmpty) {
    InDirtyMemory<RemoteSDP> record;
    samples::ExpectNewRemote(*record);
}

TEST(SDPRemote, ResetReturnsEveryFieldToTheStateOfANewRecord) {
    RemoteSDP record;
    samples::FillRemote(record);
    record.Reset();
    samples::ExpectNewRemote(record);
}

TEST(SDPRemote, ResetThroughTheBaseLeavesTheAudioFields) {
    RemoteSDP record;
    samples::FillRemote(record);
    RemoteSDP expected;
    samples::FillRemote(expected);
    baseSDP& asBase = record;
    asBase.Reset();
    samples::ExpectNewBase(record);
    samples::ExpectSameOwn(record, expected);
}

// The record has no assignment of its own; its base's does not carry the BFCP identity.
TEST(SDPRemote, AssignmentReplacesEverythingButTheBfcpIdentity) {
    RemoteSDP source;
    samples::FillRemote(source);
    RemoteSDP target;
    target.iBfcpConfid = 7;
    target = source;
    samples::ExpectSameCarried(target, source);
    samples::ExpectSameOwn(target, source);
    EXPECT_EQ(target.iBfcpConfid, 7);
    EXPECT_EQ(target.iBfcpUserid, 0);
    EXPECT_FALSE(target.fBfcpIsServer);
}

TEST(SDPRemote, CopyConstructorCopiesEveryField) {
    RemoteSDP source;
    samples::FillRemote(source);
    const RemoteSDP copy(source);
    samples::ExpectSame(copy, source);
    EXPECT_EQ(copy.iBfcpUserid, 104);
    EXPECT_EQ(copy.strAudioIPAddr, "192.0.2.23");
}

TEST(SDPRemote, DumpShowsEveryFieldButTheKeys) {
    RemoteSDP record;
    samples::FillRemote(record);
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
                                 "strAudioIPAddr: 192.0.2.23\n"
                                 "iAudioPayload: 108\n"
                                 "iDTMFPayload: 109\n"
                                 "fAudioSend: true\n"
                                 "fAudioRecv: true\n"
                                 "fIsAudioValid: true\n");
}

} // namespace
