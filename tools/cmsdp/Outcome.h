// What a verb returns and how it fails. No verb but survey prints: main writes the whole text at once, so
// that a failure half-way leaves nothing half-written.
//
// Tests: tests/tool/exit-status.cases
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace cmsdp {

/// Exit statuses of the command. Scripts depend on them; they never change.
enum Status {
    kDone = 0,
    kNothingNegotiated = 1, ///< everything worked, and no stream came up
    kUsage = 2,
    kRemoteText = 3,   ///< the remote text cannot be read, or holds no SDP line
    kLocalFile = 4,    ///< the local file cannot be read, or says something that it cannot mean
    kFailed = 5,       ///< the machine failed: output, memory or random numbers
    kInterrupted = 130 ///< SIGINT ended a survey, which shows what it has
};

/// The result of a verb that did its work.
struct Outcome {
    std::string text;               ///< what is written, whole
    std::string file;               ///< where it goes; empty: standard output
    std::vector<std::string> notes; ///< one line each for standard error
    Status status = kDone;
};

/// A verb that cannot do its work. The message is one line; bytes that do not print are fine in it.
class ToolError : public std::runtime_error {
public:
    ToolError(Status status, const std::string& message) : std::runtime_error(message), m_status(status) {}
    Status status() const { return m_status; }

private:
    Status m_status;
};

} // namespace cmsdp
