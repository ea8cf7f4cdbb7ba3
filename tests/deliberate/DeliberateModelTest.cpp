// The deliberate behaviours of the records that need code, the letter M of commonmedia/DELIBERATE.md, and
// B08. Each test shows the surprising input with its whole outcome, and beside it the input that does what
// one expects. M02 is in model.cases.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"
#include "TraceKeeper.h"

#include <memory>
#include <string>
#include <vector>

using namespace support;

namespace {

TEST(Deliberate, M01_AssignmentDoesNotCarryTheBfcpIdentity) {
    LocalSDP source = PresentationLocal();
    source.iBfcpConfid = 6;
    source.iBfcpUserid = 7;
    source.fBfcpIsServer = true;
    LocalSDP target;
    target.iBfcpConfid = 15;
    target.iBfcpUserid = 16;
    target = source;
    EXPECT_EQ(target.iBfcpConfid, 15);
    EXPECT_EQ(target.iBfcpUserid, 16);
    EXPECT_FALSE(target.fBfcpIsServer);
    // Everything around the three fields is carried.
    EXPECT_EQ(target.eAudioCodec, kAllAudio);
    EXPECT_EQ(target.iAudioRTPPort, 16384);
    EXPECT_EQ(target.iVideoPresoControlPort, 16390);
    EXPECT_EQ(target.iMaxBandwidth, 1000000);
    EXPECT_TEXT(Describe(target.m_VideoPreso),
                "codec=34 type=1 payload=0 mode=0 level=4 mbps=0 fs=0 br=1500 addr= "
                "port=16388 send=0 recv=0 valid=0\n");
    // The copy constructor has no earlier identity to keep and copies its source's.
    const LocalSDP copy(source);
    EXPECT_EQ(copy.iBfcpConfid, 6);
    EXPECT_EQ(copy.iBfcpUserid, 7);
    EXPECT_TRUE(copy.fBfcpIsServer);
}

TEST(Deliberate, M03_DumpCutsEachPieceAt999Bytes) {
    MediaSession section;
    section.strFloorctrl = std::string(984, 'x');
    const std::string before = kNewSectionDump.substr(0, kNewSectionDump.find("strFloorctrl: "));
    // 14 bytes of name, 984 of value and the line end make 999.
    EXPECT_TEXT(section.ToDiag(), before + "strFloorctrl: " + std::string(984, 'x') + "\n" + "\n\n");
    // One more costs the line end, any more after that cost themselves.
    section.strFloorctrl = std::string(985, 'x');
    EXPECT_TEXT(section.ToDiag(), before + "strFloorctrl: " + std::string(985, 'x') + "\n\n");
    section.strFloorctrl = std::string(9000, 'x');
    EXPECT_TEXT(section.ToDiag(), before + "strFloorctrl: " + std::string(985, 'x') + "\n\n");
}

TEST(Deliberate, M04_SectionNeverFreesItsPayloadEntries) {
    const std::unique_ptr<RtpMap> entry(new RtpMap{"97", "H264/90000", {"packetization-mode=1"}});
    {
        MediaSession section;
        section.vecRtpMap.push_back(entry.get());
        // Sections share entries when one is copied; freeing them twice is what the rule avoids.
        const MediaSession copy(section);
        EXPECT_EQ(copy.vecRtpMap, section.vecRtpMap);
    }
    EXPECT_EQ(entry->strPayload, "97");
    EXPECT_EQ(entry->strEncodingName, "H264/90000");
    EXPECT_EQ(entry->vecFmtpParms, (std::vector<std::string>{"packetization-mode=1"}));
}

TEST(Deliberate, M05_LoneStreamHasNoRole) {
    VideoParms lone;
    EXPECT_EQ(lone.eVideoType, VIDEOTYPE_UNKNOWN);
    lone.eVideoType = VIDEOTYPE_PRESO;
    lone.Reset();
    EXPECT_EQ(lone.eVideoType, VIDEOTYPE_UNKNOWN);
    // The description that holds two of them tells them apart, when it is made and after each reset.
    RemoteSDP remote;
    EXPECT_EQ(remote.m_VideoMain.eVideoType, VIDEOTYPE_MAIN);
    EXPECT_EQ(remote.m_VideoPreso.eVideoType, VIDEOTYPE_PRESO);
    remote.m_VideoMain.eVideoType = VIDEOTYPE_UNKNOWN;
    remote.m_VideoPreso.eVideoType = VIDEOTYPE_UNKNOWN;
    remote.Reset();
    EXPECT_TEXT(Describe(remote), kFreshRemote);
}

// The one behaviour of writing that no description shows; the others are in build.cases.
TEST(Deliberate, B08_BareRtpmapPrefix) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G711U), "a=rtpmap:0 PCMU/8000\r\n");
    for (const PayloadType_t payload : {PAYLOAD_VP8, PAYLOAD_UNKNOWN, kAllAudio}) {
        EXPECT_TEXT(h.AddRTPMap(payload), "a=rtpmap:") << payload;
    }
}

} // namespace
