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

// Video first: our answer has audio in its place, so neither stream is where the far end looks for it.
TEST_F(Require, BothVerbsMeanTheSame) {
    for (const char* const verb : {"inspect", "answer"}) {
        const Result run = CmsdpReads("v=0\r\nc=IN IP4 198.51.100.7\r\n"
                                      "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n"
                                      "m=audio 5004 RTP/AVP 0\r\n",
                                      {verb, "--require", "audio"});
        EXPECT_EQ(run.status, 1);
        EXPECT_TEXT(
            run.err,
            "cmsdp: nothing was negotiated: audio: line 5, B03: section 2 of the offer is section 1 of "
            "our answer, which has the video section in its place; the far end matches sections by "
            "their place; main video: line 3, B03: section 1 of the offer is section 2 of our answer, "
            "which has the audio section in its place; the far end matches sections by their place; "
            "presentation: the far end has no video section marked a=content:slides\n"
            "cmsdp: required and not negotiated: audio\n");
    }
}

TEST_F(Require, AnswerNamesAStreamThatItMoves) {
    const Result run = CmsdpReads("v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n"
                                  "m=application 5010 UDP/BFCP *\r\n",
                                  {"answer", "--require", "audio"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err,
                "cmsdp: floor control: not negotiated: line 4, B03: section 2 of the offer is section 4 "
                "of our answer, which has the video section in its place; the far end matches sections "
                "by their place\n");
}

TEST_F(Require, AnEmptyNameIsNoCommand) {
    for (const char* const list : {"", "audio,", ","}) {
        const Result run = CmsdpReads(kAudioOnly, {"inspect", "--require", list});
        EXPECT_EQ(run.status, 2);
        EXPECT_TEXT(run.out, "");
        EXPECT_TEXT(run.err, "cmsdp: --require: \"\" is no stream; name audio, main_video, presentation or "
                             "floor_control, with a comma between\n");
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
