#include "Call.h"

using namespace call;

namespace {

/// Audio and main video, with bandwidth lines of the session and of both.
std::string Offer(std::string_view session, std::string_view audio, std::string_view video) {
    return Far("m=audio 30000 RTP/AVP 0\n" + std::string(audio) +
                   "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n" + std::string(video),
               session);
}

TEST(Bandwidth, IsTheSessionsOrTheSumOfTheSections) {
    constexpr struct {
        std::string_view session;
        std::string_view audio;
        std::string_view video;
        std::int32_t bits;
    } kCases[] = {
        {"", "", "", 0},
        {"", "b=TIAS:64000\n", "b=AS:300\n", 364000},
        {"", "b=AS:64\n", "b=AS:300\n", 364000},
        {"", "b=TIAS:64000\n", "", 0}, // video is not limited
        {"", "", "b=AS:300\n", 0},
        {"", "b=AS:64\nb=TIAS: 60000\n", "b=TIAS:1000\nb=AS:300\n", 61000},
        {"", "b=CT:64\nb=AS:-1\nb=TIAS:x\nb=X\n", "b=AS:300\n", 0},
        {"b=TIAS:500\n", "", "", 500},
        {"b=AS:512\n", "b=TIAS:64000\n", "b=AS:300\n", 512000},
        {"b=AS:512\nb=TIAS:512500\n", "", "", 512500},
        {"b=AS:x\n", "b=AS:64\n", "b=AS:300\n", 364000},
        {"b=AS:999999999\n", "", "", 2147483647},
    };
    for (const auto& one : kCases) {
        SDPNegotiator side = Side(Local());
        ASSERT_TRUE(side.Answer(Offer(one.session, one.audio, one.video)).isTaken);
        EXPECT_EQ(side.MaxBandwidth(), one.bits) << one.session << one.audio << one.video;
    }
}

TEST(Bandwidth, OfSectionsThatAreNotTakenDoesNotCount) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Offer("", "b=AS:64\n", "")).isTaken);
    EXPECT_EQ(side.MaxBandwidth(), 64000);
    ASSERT_TRUE(side.Answer(Offer("", "b=AS:64\n", "b=AS:300\n")).isTaken);
    EXPECT_EQ(side.MaxBandwidth(), 64000);
}

TEST(Bandwidth, OfAnAnswerIsRead) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Offer().isTaken);
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0\nb=AS:64\n")).isTaken);
    EXPECT_EQ(side.MaxBandwidth(), 64000);
}

} // namespace
