// Reads the files of fuzz/seeds and fuzz/regressions.
#include "Inputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace replay {

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

void Call(Target target, const std::string& bytes) {
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    target(exact.data(), exact.size());
}

void Replay(const std::vector<std::filesystem::path>& paths, Target target) {
    for (const std::filesystem::path& path : paths) {
        SCOPED_TRACE(path.string());
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file.is_open());
        std::fprintf(stderr, "replaying %s\n", path.filename().c_str());
        Call(target, {std::istreambuf_iterator<char>(file), {}});
    }
}

} // namespace replay
