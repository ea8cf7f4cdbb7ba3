// The examples of docs/cmsdp.md, run one after the other in one directory. Lines after "$ " are commands,
// the lines up to the next command are what it prints, standard error last.
#include "Expect.h"
#include "RunTool.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tool {

namespace {

struct Example {
    std::string command;
    std::string output;
};

std::vector<Example> Examples() {
    std::ifstream manual(std::string(COMMONMEDIA_SOURCE_DIR) + "/docs/cmsdp.md");
    std::vector<Example> examples;
    bool inside = false;
    std::string line;
    while (std::getline(manual, line)) {
        if (line.compare(0, 3, "```") == 0) {
            inside = line == "```console";
        } else if (inside && line.compare(0, 2, "$ ") == 0) {
            examples.push_back({line.substr(2), ""});
        } else if (inside) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

class Manual : public ToolTest {};

TEST_F(Manual, EveryExampleIsTrue) {
    const std::vector<Example> examples = Examples();
    ASSERT_GE(examples.size(), 8U);
    std::filesystem::create_symlink(CMSDP_PATH, m_directory + "/cmsdp");
    // The first example shows the file that the later ones read.
    ASSERT_EQ(examples[0].command, "cat offer.sdp");
    Write("offer.sdp", examples[0].output);
    for (const Example& example : examples) {
        Write("example.sh",
              "cd '" + m_directory + "'\nPATH=$PWD:$PATH\n{ " + example.command + "\n} >out 2>err\n");
        ASSERT_EQ(std::system(("bash '" + m_directory + "/example.sh'").c_str()) & 0xff, 0);
        // The output of a status line follows the error of the command in front of it.
        std::string printed = example.command.find("; echo") == std::string::npos ? Read("out") + Read("err")
                                                                                  : Read("err") + Read("out");
        printed.erase(std::remove(printed.begin(), printed.end(), '\r'), printed.end());
        EXPECT_TEXT(MaskId(printed), MaskId(example.output)) << example.command;
    }
}

} // namespace

} // namespace tool
