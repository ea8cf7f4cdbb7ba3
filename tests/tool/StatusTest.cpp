// Each exit status, and the one line that explains it.
#include "Expect.h"
#include "RunTool.h"

namespace tool {

namespace {

class Status : public ToolTest {
protected:
    void ExpectUsage(const std::vector<std::string>& arguments, const std::string& line) const {
        const Result run = Cmsdp(arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_TEXT(run.out, "");
        EXPECT_TEXT(run.err, line);
    }
};

TEST_F(Status, UnknownVerb) {
    ExpectUsage({"offers"}, "cmsdp: \"offers\" is no verb; see cmsdp --help\n");
}

TEST_F(Status, AnEmptyWordIsNoVerb) {
    ExpectUsage({""}, "cmsdp: \"\" is no verb; see cmsdp --help\n");
}

TEST_F(Status, UnknownOptionInFrontOfAVerb) {
    ExpectUsage({"--json"}, "cmsdp: \"--json\" is no option; see cmsdp --help\n");
}

TEST_F(Status, UnknownOptionBehindAVerb) {
    ExpectUsage({"offer", "--exact"},
                "cmsdp: The following argument was not expected: --exact; see cmsdp offer --help\n");
}

TEST_F(Status, OptionWithoutItsFile) {
    ExpectUsage({"offer", "--local"}, "cmsdp: --local: 1 required FILE missing; see cmsdp offer --help\n");
}

TEST_F(Status, OptionTwice) {
    ExpectUsage({"offer", "--local", "a", "--local", "b"},
                "cmsdp: --local: At Most 1 required but received 2; see cmsdp offer --help\n");
}

TEST_F(Status, TwoRemoteTexts) {
    ExpectUsage({"answer", "a.sdp", "b.sdp"},
                "cmsdp: The following argument was not expected: b.sdp; see cmsdp answer --help\n");
}

TEST_F(Status, TwoVerbs) {
    ExpectUsage({"offer", "call"},
                "cmsdp: The following argument was not expected: call; see cmsdp offer --help\n");
}

TEST_F(Status, ATypedWordCannotPaintTheTerminal) {
    ExpectUsage({"of\x1b[2J\nfer"}, "cmsdp: \"of\\x1b[2J\\x0afer\" is no verb; see cmsdp --help\n");
}

TEST_F(Status, AFileMayBeNamedLikeAVerb) {
    Write("offer", "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n");
    EXPECT_EQ(Cmsdp({"answer", "offer"}).status, 0);
}

TEST_F(Status, AFileMayBeginWithADash) {
    Write("-x", "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n");
    EXPECT_EQ(Cmsdp({"answer", "--", "-x"}).status, 0);
}

TEST_F(Status, MissingRemoteFile) {
    const Result run = Cmsdp({"answer", "none.sdp"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: none.sdp: cannot be read: No such file or directory; name a file that holds a "
                "session description, or - for standard input\n");
}

TEST_F(Status, RemoteFileIsADirectory) {
    const Result run = Cmsdp({"inspect", "."});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: .: cannot be read: Is a directory; name a file that holds a session "
                         "description, or - for standard input\n");
}

TEST_F(Status, RemoteFileThatHoldsNoSdpLine) {
    Write("mail.txt", "Dear colleague,\r\n\r\nthe call has no picture.\r\n");
    const Result run = Cmsdp({"inspect", "mail.txt"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: mail.txt: holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"\n");
}

TEST_F(Status, EmptyStandardInput) {
    const Result run = CmsdpReads("", {"answer"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: standard input: holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"\n");
}

TEST_F(Status, ARemoteTextOfSixteenMiBIsRead) {
    std::string text = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\na=";
    text.append(std::size_t{16} * 1024 * 1024 - text.size() - 2, 'x');
    text += "\r\n";
    Write("big.sdp", text);
    const Result run = Cmsdp({"inspect", "big.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
}

TEST_F(Status, ARemoteTextBeyondSixteenMiBIsRefused) {
    Write("big.sdp", "v=0\r\n" + std::string(std::size_t{16} * 1024 * 1024 - 4, 'x'));
    const Result run = Cmsdp({"inspect", "big.sdp"});
    EXPECT_EQ(run.status, 3);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: big.sdp: cannot be read: it is longer than 16 MiB (16777216 bytes); name a file "
                "that holds a session description, or - for standard input\n");
}

TEST_F(Status, AnEndlessRemoteTextIsRefused) {
    EXPECT_EQ(Cmsdp({"answer", "/dev/zero"}).status, 3);
}

TEST_F(Status, MissingLocalFile) {
    const Result run = Cmsdp({"offer", "--local", "none.json"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err,
                "cmsdp: none.json: $: expected a readable JSON file, found: No such file or directory; "
                "write one with: cmsdp capabilities > FILE\n");
}

TEST_F(Status, EachVerbNamesItsWrongLocalFile) {
    Write("bad.json", "{\"srtp\": 1}");
    Write("offer.sdp", "v=0\r\nm=audio 5004 RTP/AVP 0\r\n");
    const std::string line =
        "cmsdp: bad.json: $.srtp: expected true, false or \"required\", found the number 1; \"required\" "
        "takes no plain stream\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"offer", "--local", "bad.json"},
          {"answer", "--local", "bad.json", "offer.sdp"},
          {"inspect", "--local", "bad.json", "offer.sdp"},
          {"call", "--offerer", "bad.json"},
          {"call", "--answerer", "bad.json"}}) {
        const Result run = Cmsdp(arguments);
        EXPECT_EQ(run.status, 4) << arguments[0];
        EXPECT_TEXT(run.out, "");
        EXPECT_TEXT(run.err, line);
    }
}

} // namespace

} // namespace tool
