// The deliberate behaviours of the extraction that call the conversion of levels, X05 and X06 of
// commonmedia/DELIBERATE.md. Those that read a text are in extract.cases.
#include "Capabilities.h"

#include <gtest/gtest.h>

#include <string>

using namespace support;

namespace {

// The level that a handler reads out of a profile-level-id.
std::string LevelOf(const std::string& profileLevelId) {
    SDPHandler h;
    Start(h, AudioLocal());
    RemoteSDP remote;
    EXPECT_EQ(h.ParseTheSDP("m=video 5002 RTP/AVP 97\r\n"
                            "a=rtpmap:97 H264/90000\r\n"
                            "a=fmtp:97 profile-level-id=" +
                                profileLevelId + "\r\n",
                            remote),
              0);
    return remote.m_VideoMain.strVideoLevel;
}

TEST(Deliberate, X05_Level1bIs255) {
    const SDPHandler h;
    EXPECT_EQ(h.ConvertVideoLevel("0B"), "1.1");
    EXPECT_EQ(h.ReverseConvertVideoLevel("1.1"), "0B");
    EXPECT_EQ(h.ConvertVideoLevel("FF"), "1.b");
    EXPECT_EQ(h.ReverseConvertVideoLevel("1.b"), "FF");
    // The level byte that H.264 itself has for 1b in other profiles is none of ours.
    EXPECT_EQ(h.ConvertVideoLevel("09"), "1.3");
    EXPECT_EQ(LevelOf("4280ff"), "1.b");
}

TEST(Deliberate, X06_UnknownLevelReads13AndWrites2) {
    const SDPHandler h;
    EXPECT_EQ(h.ConvertVideoLevel("33"), "5.1");
    EXPECT_EQ(h.ReverseConvertVideoLevel("5.1"), "33");
    EXPECT_EQ(h.ConvertVideoLevel("34"), "1.3");
    EXPECT_EQ(h.ReverseConvertVideoLevel("5.2"), "14");
    EXPECT_EQ(LevelOf("428034"), "1.3");
}

} // namespace
