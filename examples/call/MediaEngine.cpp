// Processes of the media engine: fork, exec, signals. One interrupt does not
// wake an ffmpeg that waits for a packet, so the interrupt is repeated before the process is killed.
// Test: tests/call/MediaEngineTest.cpp
#include "MediaEngine.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace call {

namespace {

using namespace std::chrono_literals;

/// Signals in the order in which a process gets them, and how long it may go on after each.
struct StopSignal {
    int signal;
    std::chrono::milliseconds wait;
};
constexpr StopSignal kStopSignals[] = {{SIGINT, 100ms}, {SIGINT, 500ms}, {SIGKILL, 1000ms}};
constexpr int kStopSignalCount = 3;

/// A pipe whose reading end gives `text`; the text is a few hundred bytes, less than a pipe holds.
int InputWith(const std::string& text) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return -1;
    }
    const ssize_t written = write(ends[1], text.data(), text.size());
    close(ends[1]);
    if (written != static_cast<ssize_t>(text.size())) {
        close(ends[0]);
        return -1;
    }
    return ends[0];
}

/// In the child: input and log, the end together with the parent, then the program. Its standard output goes
/// nowhere, because ffmpeg writes a description with the key there.
[[noreturn]] void BecomeFfmpeg(std::vector<char*>& arguments, int input, int log) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(input, STDIN_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

MediaEngine::MediaEngine(const Journal& journal) : m_journal(journal) {}

MediaEngine::~MediaEngine() {
    Run({});
    while (!m_processes.empty()) {
        Poll();
        std::this_thread::sleep_for(10ms);
    }
}

void MediaEngine::Run(std::vector<Command> wanted) {
    m_wanted = std::move(wanted);
    for (Process& process : m_processes) {
        const bool isWanted = std::find(m_wanted.begin(), m_wanted.end(), process.command) != m_wanted.end();
        if (process.signals == 0 && !isWanted) {
            Signal(process);
        }
    }
    Poll();
}

void MediaEngine::Poll() {
    Reap();
    for (Process& process : m_processes) {
        if (process.signals > 0 && process.signals < kStopSignalCount && Clock::now() >= process.nextSignal) {
            Signal(process);
        }
    }
    for (const Command& command : m_wanted) {
        if (!IsAlive(command.name)) {
            Start(command);
        }
    }
}

bool MediaEngine::IsRunning(const std::string& name) const {
    return std::any_of(m_processes.begin(), m_processes.end(), [&](const Process& process) {
        return process.command.name == name && process.signals == 0;
    });
}

bool MediaEngine::HasAllMedia() const {
    return std::all_of(m_processes.begin(), m_processes.end(), [](const Process& process) {
        std::error_code error;
        const auto size = std::filesystem::file_size(process.output, error);
        return process.output.empty() || (!error && size > 0);
    });
}

bool MediaEngine::IsAlive(const std::string& name) const {
    return std::any_of(m_processes.begin(), m_processes.end(),
                       [&](const Process& process) { return process.command.name == name; });
}

void MediaEngine::Start(const Command& command) {
    const std::string base = m_journal.Directory() + "/" + command.name + "-" + std::to_string(++m_started);
    std::vector<std::string> words = {"ffmpeg"};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    Process process;
    process.command = command;
    if (!command.extension.empty()) {
        process.output = base + "." + command.extension;
        words.push_back(process.output);
    }
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    const int input = InputWith(command.input);
    const int log = open((base + ".log").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    process.pid = fork();
    if (process.pid == 0) {
        BecomeFfmpeg(arguments, input, log);
    }
    close(input);
    close(log);
    m_journal.Note("start " + Shown(command));
    if (process.pid > 0) {
        m_processes.push_back(std::move(process));
    }
}

void MediaEngine::Signal(Process& process) {
    const StopSignal& stop = kStopSignals[process.signals++];
    process.nextSignal = Clock::now() + stop.wait;
    kill(process.pid, stop.signal);
    m_journal.Note("stop " + process.command.name + " with signal " + std::to_string(stop.signal));
}

/// Forgets the processes that ended. One that ended without being asked is not started again by itself.
void MediaEngine::Reap() {
    std::vector<Process> alive;
    for (Process& process : m_processes) {
        if (waitpid(process.pid, nullptr, WNOHANG) == 0) {
            alive.push_back(std::move(process));
        } else if (process.signals == 0) {
            m_journal.Note(process.command.name + " ended by itself");
            m_wanted.erase(std::remove(m_wanted.begin(), m_wanted.end(), process.command), m_wanted.end());
        }
    }
    m_processes = std::move(alive);
}

} // namespace call
