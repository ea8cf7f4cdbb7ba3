// Another program, run without a shell.
//
// Tests: tests/tool/ProgramTest.cpp
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

struct ProgramEnd {
    bool isFound = false; ///< the program is installed and was started
    bool isWhole = false; ///< its output ended before the bound
    int status = -1;      ///< exit status; 128 and the signal where one ended it
};

/// Runs the first word with the others as its arguments and hands each line of its standard output, without
/// the LF, to `take`. The program gets our standard input; its standard error is discarded. After `most`
/// bytes of output it is ended. Throws std::system_error when the machine fails, and whatever `take` throws.
ProgramEnd RunProgram(const std::vector<std::string>& words, std::size_t most,
                      const std::function<void(std::string_view)>& take);

} // namespace cmsdp
