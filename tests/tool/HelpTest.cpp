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
};

TEST_F(Help, OfTheTool) {
    ExpectHelp({"--help"}, "Example:\n"
                           "  cmsdp inspect offer.sdp          what did they offer, and what comes of it?\n"
                           "  cmsdp answer offer.sdp           what do we answer?\n"
                           "\n"
                           "Usage: cmsdp VERB [OPTIONS]\n");
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
    ExpectHelp({"check", "--help"}, "Example:\n"
                                    "  cmsdp check offer.sdp answer.sdp\n"
                                    "  cmsdp answer --show-secrets offer.sdp | cmsdp check offer.sdp -\n"
                                    "\n"
                                    "Usage: cmsdp check [--json] OFFER ANSWER\n");
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
