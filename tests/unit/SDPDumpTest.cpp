// SDPDump: where the dumps of the records differ from that of a section. The dumps themselves, line by line,
// are tested beside their records, in SDPSectionTest.cpp, SDPBaseTest.cpp, SDPVideoTest.cpp, SDPLocalTest.cpp
// and SDPRemoteTest.cpp.
#include "Expect.h"

#include <SDP.h>

#include <string>

namespace {

constexpr const char* kJoined = "a inline:YWRkcmVzcw b";

TEST(SDPDump, ASectionIsShownExactly) {
    MediaSession section;
    section.strIPAddr = kJoined;
    EXPECT_TEXT(section.ToDiag(), "eContent: 100\niPort: 0\n"
                                  "strIPAddr: a inline:YWRkcmVzcw b\n"
                                  "fRecv: true\nfSend: true\nstrVideoLevel: \nstrMaxBandwidth: \n"
                                  "iBfcpConfid: 0\niBfcpUserid: 0\nstrFloorctrl: \n\n\n");
}

// Only the list of codecs makes a record's dump longer than its fields, whose lines are cut.
TEST(SDPDump, KeyTextIsMaskedInALargeDump) {
    LocalSDP local;
    local.listAudioCodecPriority.assign(400000, 64);
    local.strOExtension = kJoined;
    const std::string dump = local.ToDiag();
    EXPECT_GT(dump.size(), 1000000U);
    EXPECT_NE(dump.find("strOExtension: a inline:*** b\n"), std::string::npos);
    EXPECT_EQ(dump.find("YWRkcmVzcw"), std::string::npos);
}

TEST(SDPDump, KeyTextIsMaskedInTheDumpsOfTheFourRecords) {
    VideoParms video;
    video.strVideoIPAddr = kJoined;
    EXPECT_NE(video.ToDiag().find("strVideoIPAddr: a inline:*** b\n"), std::string::npos);
    LocalSDP local;
    local.strMyIPAddr = kJoined;
    EXPECT_NE(local.ToDiag().find("strMyIPAddr: a inline:*** b\n"), std::string::npos);
    RemoteSDP remote;
    remote.strAudioIPAddr = kJoined;
    EXPECT_NE(remote.ToDiag().find("strAudioIPAddr: a inline:*** b\n"), std::string::npos);
    remote.m_VideoPreso.strVideoLevel = kJoined;
    EXPECT_NE(remote.baseSDP::ToDiag().find("strVideoLevel: a inline:*** b\n"), std::string::npos);
}

} // namespace
