// --require: the exit status tells whether the named streams came up.
#include "Require.h"
#include "Expect.h"
#include "RunTool.h"

namespace tool {

namespace {

class Require : public ToolTest {};

constexpr const char* kAudioOnly = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n";

TEST_F(Require, AStreamThatCameUpIsStatusZero) {
    for (const char* const verb : {"inspect", "answer"}) {
        const Result run = CmsdpReads(kAudioOnly, {verb, "--require", "audio"});
        EXPECT_EQ(run.status, 0);
        EXPECT_TEXT(run.err, "");
    }
}

TEST_F(Require, AStreamThatDidNotIsStatusOne) {
    for (const char* const verb : {"inspect", "answer"}) {
        const Result run = CmsdpReads(kAudioOnly, {verb, "--require=audio,main_video,floor_control"});
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.out, "");
        EXPECT_TEXT(run.err, "cmsdp: required and not negotiated: main_video, floor_control\n");
    }
}

TEST_F(Require, AnyOtherNameIsNoCommand) {
    const Result run = CmsdpReads(kAudioOnly, {"inspect", "--require", "audio,video"});
    EXPECT_EQ(run.status, 2);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: --require: \"video\" is no stream; name audio, main_video, presentation or "
                         "floor_control, with a comma between\n");
}

} // namespace

} // namespace tool
