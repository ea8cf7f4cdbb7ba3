// The kept inputs of every fuzz target, replayed by each compiler that runs the tests. A law that an input
// breaks prints both sides and aborts, which fails its test.
#include <Targets.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Target = void (*)(const std::uint8_t*, std::size_t);

std::vector<std::filesystem::path> InputsOf(const std::string& kind, const std::string& target) {
    std::vector<std::filesystem::path> paths;
    const std::filesystem::path folder = std::filesystem::path(COMMONMEDIA_FUZZ_DIR) / kind / target;
    if (std::filesystem::exists(folder)) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Calls the target with the bytes of each input, in a block of exactly their length.
std::size_t Replay(const std::vector<std::filesystem::path>& paths, Target target) {
    for (const std::filesystem::path& path : paths) {
        SCOPED_TRACE(path.string());
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file.is_open());
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
        std::fprintf(stderr, "replaying %s\n", path.filename().c_str());
        target(exact.data(), exact.size());
    }
    return paths.size();
}

/// Every target has seeds in the repository. Regressions exist only where a finding was kept.
void ReplayAll(const std::string& name, Target target) {
    EXPECT_GE(Replay(InputsOf("seeds", name), target), 5U);
    Replay(InputsOf("regressions", name), target);
    target(nullptr, 0);
}

TEST(Replay, Parse) {
    ReplayAll("parse", FuzzParse);
}

TEST(Replay, Life) {
    ReplayAll("life", FuzzLife);
}

TEST(Replay, Key) {
    ReplayAll("key", FuzzKey);
}

TEST(Replay, Format) {
    ReplayAll("format", FuzzFormat);
}

TEST(Replay, Grammar) {
    ReplayAll("grammar", FuzzGrammar);
}

TEST(Replay, Negotiation) {
    ReplayAll("negotiation", FuzzNegotiation);
}

TEST(Replay, Judge) {
    ReplayAll("judge", FuzzJudge);
}

TEST(Replay, Explain) {
    ReplayAll("explain", FuzzExplain);
}

#ifdef COMMONMEDIA_FUZZ_TOOL
TEST(Replay, Tool) {
    ReplayAll("tool", FuzzTool);
}

TEST(Replay, Calls) {
    ReplayAll("calls", FuzzCalls);
}
#endif

} // namespace
