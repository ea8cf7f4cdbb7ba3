// The version. The help texts: help.cases.
#include "Expect.h"
#include "RunTool.h"

#include <fstream>

namespace tool {

namespace {

class Version : public ToolTest {};

TEST_F(Version, IsThatOfTheProject) {
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
