// Reads a file to its end or to the bound, whichever comes first.
//
// Tests: tests/tool/remote-text.cases
#include "ReadFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace cmsdp {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdin) {
            static_cast<void>(std::fclose(file)); // Nothing was written, so there is nothing to lose.
        }
    }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

} // namespace

std::string ReadFile(const std::string& name) {
    const File file(name == "-" ? stdin : std::fopen(name.c_str(), "rbe"));
    if (!file) {
        throw ReadError(std::strerror(errno));
    }
    std::string bytes;
    std::array<char, 65536> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), file.get())) != 0) {
        if (bytes.size() + count > kMostBytes) {
            throw ReadError("it is longer than 16 MiB (" + std::to_string(kMostBytes) + " bytes)");
        }
        bytes.append(block.data(), count);
    }
    if (std::ferror(file.get()) != 0) {
        throw ReadError(std::strerror(errno)); // A directory opens well and fails only here.
    }
    return bytes;
}

std::string ReadStart(const std::string& name, std::size_t most) {
    const File file(std::fopen(name.c_str(), "rbe"));
    std::string bytes(most, '\0');
    bytes.resize(file ? std::fread(bytes.data(), 1, most, file.get()) : 0);
    return bytes;
}

} // namespace cmsdp
