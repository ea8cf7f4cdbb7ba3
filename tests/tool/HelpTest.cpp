// Help begins with an example, fits 80 columns, and names what the verb takes.
#include "Help.h"
#include "Expect.h"
#include "RunTool.h"

#include <fstream>
#include <sstream>

namespace tool {

namespace {

class Help : public ToolTest {
protected:
    void ExpectHelp(const std::vector<std::string>& arguments, const std::string& begin) const {
        const Result run = Cmsdp(arguments);
        EXPECT_EQ(run.status, 0);
        EXPECT_TEXT(run.err, "");
        EXPECT_TEXT(run.out.substr(0, begin.size()), begin);
        std::istringstream lines(run.out);
        std::string line;
        while (std::getline(lines, line)) {
            EXPECT_LE(line.size(), 80U) << line;
        }
        EXPECT_EQ(run.out.back(), '\n');
    }

    void ExpectWholeHelp(const std::vector<std::string>& arguments, const std::string& text) const {
        ExpectHelp(arguments, text);
        EXPECT_TEXT(Cmsdp(arguments).out, text);
    }
};

TEST_F(Help, OfTheTool) {
    ExpectWholeHelp({"--help"},
                    "Example:\n"
                    "  cmsdp inspect offer.sdp          what did they offer, and what comes of it?\n"
                    "  cmsdp answer offer.sdp           what do we answer?\n"
                    "\n"
                    "Usage: cmsdp VERB [OPTIONS]\n"
                    "\n"
                    "Session descriptions of a video-calling client (RFC 4566, RFC 3264).\n"
                    "\n"
                    "cmsdp VERB --help tells more about a verb.\n"
                    "\n"
                    "Verbs:\n"
                    "  offer            write the local offer\n"
                    "  answer           read a remote offer, write the answer\n"
                    "  inspect          read a remote description, show what the media engine would\n"
                    "                   start with and why it would start without the rest\n"
                    "  call             let two sides negotiate with each other\n"
                    "  check            judge an answer against its offer as strict readers do\n"
                    "  explain          say why a call came up as it did: which line or local field\n"
                    "                   did what, and which edit mends it\n"
                    "  whynot           say why a codec was not chosen\n"
                    "  diff             say what a new description changes for the media engine\n"
                    "  survey           count the findings and the streams of many descriptions\n"
                    "  redact           write a description for others: other keys, and other\n"
                    "                   addresses and names, with the same meaning\n"
                    "  capabilities     write what this side can do as JSON, to be edited and given\n"
                    "                   back with --local\n"
                    "  help [VERB]      this text, or that of a verb\n"
                    "  version          the version\n"
                    "\n"
                    "Options:\n"
                    "  --version        the version\n"
                    "  -h, --help       this text\n"
                    "\n"
                    "Exit status:\n"
                    "  0  done\n"
                    "  1  done, and nothing was negotiated, or not what --require names\n"
                    "  2  the command line is wrong\n"
                    "  3  the remote text cannot be read or holds no SDP line\n"
                    "  4  the local file is wrong\n"
                    "  5  the machine failed: output, memory or random numbers, or tshark is missing\n");
}

TEST_F(Help, OfTheToolInShort) {
    EXPECT_TEXT(Cmsdp({"-h"}).out, Cmsdp({"--help"}).out);
}

TEST_F(Help, OfOffer) {
    ExpectHelp({"offer", "--help"}, "Example:\n"
                                    "  cmsdp offer > offer.sdp\n"
                                    "  cmsdp capabilities > me.json     edit me.json, then:\n"
                                    "  cmsdp offer --local me.json\n"
                                    "\n"
                                    "Usage: cmsdp offer [--local FILE] [--fit [--json]] [--show-secrets]\n");
}

TEST_F(Help, OfAnswer) {
    ExpectHelp({"answer", "-h"}, "Example:\n"
                                 "  cmsdp answer --fit offer.sdp > answer.sdp\n"
                                 "  xclip -o | cmsdp answer --local me.json\n"
                                 "\n"
                                 "Usage: cmsdp answer [--fit] [--local FILE] [--json] [--require LIST]\n"
                                 "                    [--exact | --nth N] [--show-secrets] [REMOTE]\n");
}

TEST_F(Help, OfInspect) {
    ExpectHelp({"inspect", "--help"},
               "Example:\n"
               "  cmsdp inspect offer.sdp\n"
               "  cmsdp inspect --json offer.sdp | jq .main_video.why\n"
               "\n"
               "Usage: cmsdp inspect [--offered] [--local FILE] [--json] [--require LIST]\n"
               "                     [--exact | --nth N] [--show-secrets] [REMOTE]\n");
}

TEST_F(Help, OfCall) {
    ExpectHelp({"call", "--help"},
               "Example:\n"
               "  cmsdp call\n"
               "  cmsdp call --offerer alice.json --then hold --then resume\n"
               "  cmsdp call --answerer bob.json --then answerer:mute\n"
               "\n"
               "Usage: cmsdp call [--offerer FILE] [--answerer FILE] [--then WISH]... [--json]\n"
               "                  [--require LIST] [--show-secrets]\n");
}

TEST_F(Help, OfCheck) {
    ExpectWholeHelp({"check", "--help"},
                    "Example:\n"
                    "  cmsdp check offer.sdp answer.sdp\n"
                    "  cmsdp answer --show-secrets offer.sdp | cmsdp check offer.sdp -\n"
                    "\n"
                    "Usage: cmsdp check [--json] OFFER ANSWER\n"
                    "\n"
                    "Judges an answer against its offer: each line of the output is one violation,\n"
                    "with the ID of the rule, the line of the answer, the clause it comes from, and\n"
                    "what is wrong. Nothing is written when a strict reader takes the answer.\n"
                    "\n"
                    "  OFFER            file with the offer, which is not judged; - for standard\n"
                    "                   input; at most 16 MiB\n"
                    "  ANSWER           file with the answer, or -. It is judged byte for byte, line\n"
                    "                   ends and keys included\n"
                    "\n"
                    "Options:\n"
                    "  --json           JSON in place of the lines\n"
                    "  -h, --help       this text\n"
                    "\n"
                    "Exit status 1: there are violations.\n");
}

TEST_F(Help, OfSurvey) {
    ExpectHelp({"survey", "--help"}, "Example:\n"
                                     "  cmsdp survey /var/log/calls\n"
                                     "  zcat night.jsonl.gz | cmsdp survey --json - > night.result\n"
                                     "\n"
                                     "Usage: cmsdp survey [--local FILE] [--offered] [--json] PATH...\n");
}

TEST_F(Help, OfRedact) {
    ExpectHelp({"redact", "--help"}, "Example:\n"
                                     "  cmsdp redact --addresses offer.sdp > ticket.sdp\n"
                                     "\n"
                                     "Usage: cmsdp redact [--addresses] [REMOTE]\n");
}

TEST_F(Help, OfCapabilities) {
    ExpectHelp({"capabilities", "--help"}, "Example:\n"
                                           "  cmsdp capabilities > me.json     edit me.json, then:\n"
                                           "  cmsdp offer --local me.json\n"
                                           "\n"
                                           "Usage: cmsdp capabilities\n");
}

TEST_F(Help, WithoutAVerbOrWithTheVerbHelp) {
    EXPECT_TEXT(Cmsdp({}).out, Cmsdp({"--help"}).out);
    EXPECT_EQ(Cmsdp({}).status, 0);
    EXPECT_TEXT(Cmsdp({"help"}).out, Cmsdp({"--help"}).out);
    EXPECT_TEXT(Cmsdp({"help", "call"}).out, Cmsdp({"call", "--help"}).out);
    EXPECT_TEXT(Cmsdp({"help"}).err, "");
    ExpectHelp({"version", "--help"}, "Example:\n"
                                      "  cmsdp version\n");
    EXPECT_EQ(Cmsdp({"help", "cal"}).status, 2);
    EXPECT_TEXT(Cmsdp({"help", "cal"}).err, "cmsdp: \"cal\" is no verb; see cmsdp --help\n");
}

TEST_F(Help, VersionIsThatOfTheProject) {
    std::ifstream file(std::string(COMMONMEDIA_SOURCE_DIR) + "/CMakeLists.txt");
    std::string word;
    while (file >> word && word != "VERSION") {
    }
    ASSERT_TRUE(file >> word);
    for (const char* const argument : {"--version", "version"}) {
        const Result run = Cmsdp({argument});
        EXPECT_EQ(run.status, 0);
        EXPECT_TEXT(run.out, "cmsdp " + word + "\n");
        EXPECT_TEXT(run.err, "");
    }
}

} // namespace

} // namespace tool
