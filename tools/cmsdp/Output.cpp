// Writes with the system call: a buffered stream can lose its error when the process ends.
//
// Tests: tests/tool/OutputTest.cpp
#include "Output.h"

#include "Redact.h"
#include "Visible.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace cmsdp {

namespace {

// The error of the write, or 0.
int WriteAll(int file, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return 0;
}

[[noreturn]] void FailToWrite(int error) {
    throw ToolError(kFailed, std::string("standard output cannot be written: ") + std::strerror(error));
}

bool IsSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

} // namespace

Screen LookAtScreen() {
    Screen screen;
    screen.terminal = isatty(STDOUT_FILENO) != 0;
    const char* const term = std::getenv("TERM");
    const bool dumb = term == nullptr || std::strcmp(term, "dumb") == 0;
    screen.colour = screen.terminal && !dumb && !IsSet("NO_COLOR");
    winsize size{};
    if (screen.terminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0) {
        screen.width = size.ws_col;
    }
    return screen;
}

void WritePart(const std::string& text) {
    const int error = WriteAll(STDOUT_FILENO, text);
    if (error != 0) {
        FailToWrite(error);
    }
}

void WriteOutput(const std::string& text) {
    if (text.empty()) {
        return;
    }
    WritePart(text);
    if (close(STDOUT_FILENO) != 0) {
        FailToWrite(errno);
    }
}

void WriteOutput(const std::string& text, const std::string& file) {
    if (file.empty()) {
        WriteOutput(text);
        return;
    }
    const int to = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    int error = to < 0 ? errno : WriteAll(to, text);
    if (to >= 0 && close(to) != 0 && error == 0) {
        error = errno;
    }
    if (error != 0) {
        throw ToolError(kFailed, file + ": cannot be written: " + std::strerror(error));
    }
}

void Complain(const std::string& message) {
    // When standard error cannot be written either, the exit status is all that is left to say.
    static_cast<void>(WriteAll(STDERR_FILENO, "cmsdp: " + Visible(Redact(message)) + "\n"));
}

} // namespace cmsdp
