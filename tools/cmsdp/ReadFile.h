// A whole file as bytes, with a bound: a description or a capability file is small, and /dev/zero is not.
//
// Tests: tests/tool/remote-text.cases
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace cmsdp {

/// The most that is read of any input.
constexpr std::size_t kMostBytes = std::size_t{16} * 1024 * 1024;

/// The reason why a file could not be read, as the system words it.
class ReadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the file, or standard input for "-". Throws ReadError; more than kMostBytes is an error too.
std::string ReadFile(const std::string& name);

/// The first bytes of a file, at most `most`; fewer, or none, when it cannot be read.
std::string ReadStart(const std::string& name, std::size_t most);

} // namespace cmsdp
