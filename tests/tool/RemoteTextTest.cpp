// Where the remote text comes from, and what --exact hands over. What cleaning does: CleanTest.cpp.
#include "RemoteText.h"
#include "Expect.h"
#include "RunTool.h"
#include "Words.h"

namespace tool {

namespace {

using cmsdp::HoldsSdpLine;

TEST(HoldsSdpLine, WantsASmallLetterAndAnEqualsSign) {
    EXPECT_TRUE(HoldsSdpLine("v=0\r\n"));
    EXPECT_TRUE(HoldsSdpLine("INVITE sip:b@example.com SIP/2.0\r\n\r\nv=0\r\n"));
    EXPECT_TRUE(HoldsSdpLine(" \tm=audio 5004 RTP/AVP 0\r\n"));
    EXPECT_FALSE(HoldsSdpLine(""));
    EXPECT_FALSE(HoldsSdpLine("v=0"));
    EXPECT_FALSE(HoldsSdpLine("v=0\n"));
    EXPECT_FALSE(HoldsSdpLine("V=0\r\nvv=0\r\n=0\r\nv\r\n \r\n"));
    EXPECT_FALSE(HoldsSdpLine(std::string("\x7f"
                                          "ELF\2\1\1\0\0\r\n",
                                          11)));
}

class RemoteText : public ToolTest {};

constexpr const char* kAnswer = "v=0\r\n"
                                "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                "s=-\r\n"
                                "c=IN IP4 192.0.2.1\r\n"
                                "b=AS:1064\r\n"
                                "t=0 0\r\n"
                                "m=audio 16384 RTP/AVP 18 101\r\n"
                                "b=TIAS:64000\r\n"
                                "a=rtpmap:18 G729/8000\r\n"
                                "a=fmtp:18 annexb=no\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=recvonly\r\n"
                                "a=rtcp:16385 IN IP4 192.0.2.1\r\n";

constexpr const char* kAudioOnly =
    R"({"video": {"main": {"codecs": []}}, "floor_control": {"enabled": false}})";

TEST_F(RemoteText, APasteWithBareLfIsAnsweredWithANote) {
    Write("audio.json", kAudioOnly);
    Write("paste.sdp", "v=0\nc=IN IP4 198.51.100.7\nm=audio 5004 RTP/AVP 18 0\na=sendonly");
    const Result run = Cmsdp({"answer", "--local", "audio.json", "paste.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), kAnswer);
    EXPECT_TEXT(run.err,
                "cmsdp: LF alone was read as CR LF at the end of 3 lines; a far end that sends LF alone has "
                "each such line joined to the next one, and without any CR LF it is not understood (P03)\n"
                "cmsdp: the last line had no line end and was read as if it had one; a far end that sends "
                "this loses that line (P02)\n");
}

TEST_F(RemoteText, StandardInputIsReadLikeAFile) {
    Write("audio.json", kAudioOnly);
    const std::string offer = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 18 0\r\na=sendonly\r\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"answer", "--local", "audio.json"},
          {"answer", "--local", "audio.json", "-"}}) {
        const Result run = CmsdpReads(offer, arguments);
        EXPECT_EQ(run.status, 0);
        EXPECT_TEXT(MaskId(run.out), kAnswer);
        EXPECT_TEXT(run.err, "");
    }
}

TEST_F(RemoteText, ExactHandsOverAMissingLineEnd) {
    Write("audio.json", kAudioOnly);
    // The last line is lost, so the direction is that of a stream without one.
    const Result run = CmsdpReads("v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 18 0\r\na=sendonly",
                                  {"answer", "--exact", "--local", "audio.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 18 101\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=rtpmap:18 G729/8000\r\n"
                                 "a=fmtp:18 annexb=no\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(run.err, "");
}

TEST_F(RemoteText, ExactHandsOverBareLf) {
    // One line that holds "c=" before anything else can be made of it.
    const Result run =
        CmsdpReads("v=0\nc=IN IP4 198.51.100.7\nm=audio 5004 RTP/AVP 18 0\r\n", {"answer", "--exact"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(
        run.err,
        "cmsdp: line 1, P01: read as a \"c=\" line, because it holds \"c=\"; its third word is now the "
        "address of the session: \"v=0...\"\n"
        "cmsdp: line 1, P03: joined to the line after it by a LF alone; both are read as one, and what "
        "the keyword in front does not read is lost\n"
        "cmsdp: nothing was negotiated: the offer has no media line with a port, a transport and "
        "a format, so there is nothing to answer\n");
}

TEST_F(RemoteText, ExactTextWithoutACrLfHoldsNoLine) {
    const Result run = CmsdpReads("v=0\nm=audio 5004 RTP/AVP 18 0\n", {"answer", "--exact"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: standard input: holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"; "
                "--exact counts only lines that end in CR LF\n");
}

TEST_F(RemoteText, AFailureLeavesItsNotesOut) {
    const Result run = CmsdpReads("Hello\nworld", {"answer"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.err,
                "cmsdp: standard input: holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"\n");
}

} // namespace

} // namespace tool
