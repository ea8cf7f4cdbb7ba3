// Standard output that cannot be written, and terminals. The same table in a file: inspect.cases.
#include "Expect.h"
#include "RunTool.h"

#include <csignal>

namespace tool {

namespace {

template <typename Test>
class OutputOf : public Test {
protected:
    Result To(Out out, const std::vector<std::string>& arguments) const {
        How how;
        how.out = out;
        how.environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}};
        return this->Cmsdp(arguments, how);
    }
};

using Output = OutputOf<ToolTest>;
using TerminalOutput = OutputOf<TerminalTest>;

const std::vector<std::vector<std::string>> kWriters = {{"offer"},
                                                        {"answer", "offer.sdp"},
                                                        {"inspect", "offer.sdp"},
                                                        {"inspect", "--json", "offer.sdp"},
                                                        {"call"},
                                                        {"capabilities"},
                                                        {"--help"},
                                                        {"--version"}};

TEST_F(Output, ClosedStandardOutputIsAnError) {
    Write("offer.sdp", "v=0\r\nm=audio 5004 RTP/AVP 0\r\n");
    for (const auto& arguments : kWriters) {
        const Result run = To(Out::kClosed, arguments);
        EXPECT_EQ(run.status, 5) << arguments[0];
        EXPECT_TEXT(run.err, "cmsdp: standard output cannot be written: Bad file descriptor\n");
    }
}

TEST_F(Output, AFullDiskIsAnError) {
    Write("offer.sdp", "v=0\r\nm=audio 5004 RTP/AVP 0\r\n");
    for (const auto& arguments : kWriters) {
        const Result run = To(Out::kFullDisk, arguments);
        EXPECT_EQ(run.status, 5) << arguments[0];
        EXPECT_TEXT(run.err, "cmsdp: standard output cannot be written: No space left on device\n");
    }
}

TEST_F(Output, AReaderThatWentAwayEndsTheCommandQuietly) {
    Write("offer.sdp", "v=0\r\nm=audio 5004 RTP/AVP 0\r\n");
    for (const auto& arguments : kWriters) {
        const Result run = To(Out::kBrokenPipe, arguments);
        EXPECT_EQ(run.status, 1000 + SIGPIPE) << arguments[0];
        EXPECT_TEXT(run.err, "");
    }
}

constexpr const char* kHeld = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\na=inactive\r\n";

TEST_F(TerminalOutput, ColourOnATerminal) {
    Write("held.sdp", kHeld);
    const Result run = To(Out::kTerminal, {"inspect", "held.sdp"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "\x1b[1msession\x1b[0m\n"
                         "  bandwidth      not limited\n"
                         "\n"
                         "\x1b[1maudio\x1b[0m\n"
                         "  state          \x1b[32mnegotiated\x1b[0m\n"
                         "  codec          G.711 mu-law\n"
                         "  payload type   0\n"
                         "  DTMF payload   none\n"
                         "  address        198.51.100.7:5004\n"
                         "  direction      on hold\n"
                         "  suite          none\n"
                         "\n"
                         "\x1b[1mmain video\x1b[0m\n"
                         "  state          \x1b[33mnot negotiated\x1b[0m\n"
                         "  why            the far end has no video section\n"
                         "\n"
                         "\x1b[1mpresentation\x1b[0m\n"
                         "  state          \x1b[33mnot negotiated\x1b[0m\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "\x1b[1mfloor control\x1b[0m\n"
                         "  state          \x1b[33mnot negotiated\x1b[0m\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "\x1b[1mour answer\x1b[0m\n"
                         "  note           J20, B03, our answer: An answer has as many m= lines as its\n"
                         "                 offer. The answer has 2, the offer 1; strict far ends refuse\n"
                         "                 the whole answer\n"
                         "                 J24, B07, line 7 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '101' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "\n"
                         "\x1b[1mwith --fit\x1b[0m\n"
                         "  does           section 1 is answered in its place\n");
}

TEST_F(TerminalOutput, NoColourWhereNoneIsWanted) {
    Write("held.sdp", kHeld);
    const std::string plain = To(Out::kFile, {"inspect", "held.sdp"}).out;
    for (const auto& [term, noColor] : {std::pair{"xterm", "1"}, {"dumb", ""}}) {
        How how;
        how.out = Out::kTerminal;
        how.environment = {{"TERM", term}, {"NO_COLOR", noColor}};
        EXPECT_TEXT(Cmsdp({"inspect", "held.sdp"}, how).out, plain);
    }
}

TEST_F(TerminalOutput, NoColourInJson) {
    Write("held.sdp", kHeld);
    const Result file = To(Out::kFile, {"inspect", "--json", "held.sdp"});
    const Result terminal = To(Out::kTerminal, {"inspect", "--json", "held.sdp"});
    EXPECT_TEXT(terminal.out, file.out);
}

TEST_F(TerminalOutput, ATableFillsTheTerminal) {
    Write("vp8.sdp", "v=0\r\nm=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n");
    How how;
    how.out = Out::kTerminal;
    how.environment = {{"TERM", "dumb"}};
    how.columns = 50;
    EXPECT_NE(Cmsdp({"inspect", "vp8.sdp"}, how)
                  .out.find("  why            no codec in common: the far end\n"
                            "                 lists VP8/90000 (96); this side\n"
                            "                 takes H264/90000\n"),
              std::string::npos);
    how.columns = 150;
    EXPECT_NE(
        Cmsdp({"inspect", "vp8.sdp"}, how)
            .out.find(
                "  why            no codec in common: the far end lists VP8/90000 (96); this side takes "
                "H264/90000\n"),
        std::string::npos);
}

// A surplus section is copied into the answer, escape sequences and all. The bytes in a file: answer.cases.
TEST_F(TerminalOutput, AnswersAreHarmlessOnATerminal) {
    Write("painting.sdp", "v=0\r\n"
                          "m=audio 5004 RTP/AVP 0\r\n"
                          "m=audio 0 RTP/AVP 0\r\n"
                          "m=text 5010 RTP/AVP \x1b[2J\xe2\x80\xae\r\n");
    Write(
        "audio.json",
        R"({"video": {"main": {"codecs": []}}, "floor_control": {"enabled": false}, "served_sections": 2})");
    const std::vector<std::string> arguments = {"answer", "--local", "audio.json", "painting.sdp"};
    const Result run = To(Out::kTerminal, arguments);
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), support::Replaced(MaskId(To(Out::kFile, arguments).out),
                                                   "\x1b[2J\xe2\x80\xae", "\\x1b[2J\\xe2\\x80\\xae"));
}

} // namespace

} // namespace tool
