// MediaEngine: keeps the ffmpeg processes running that Commands.h asks for.
//
// Run() compares what is wanted with what runs; Poll(), called often, finishes what Run() began. Neither of
// them waits, so the signalling stays responsive while a process ends.
#pragma once

#include "Commands.h"
#include "Journal.h"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace call {

class MediaEngine {
public:
    /// @param journal  is told what starts and stops; its directory takes the output and log of each process
    explicit MediaEngine(const Journal& journal);
    /// Ends every process.
    ~MediaEngine();
    MediaEngine(const MediaEngine&) = delete;
    MediaEngine& operator=(const MediaEngine&) = delete;

    /// Stops the processes whose command is not wanted, and starts those that do not run.
    void Run(std::vector<Command> wanted);
    /// Carries on stopping and starting. A receiver starts when the one before it has left the port.
    void Poll();
    /// Whether a process of this name runs.
    bool IsRunning(const std::string& name) const;
    /// Whether every receiver has written something: all media that are to come have come.
    bool HasAllMedia() const;

private:
    using Clock = std::chrono::steady_clock;

    struct Process {
        Command command;
        std::string output; ///< path of the file that a receiver writes
        pid_t pid = -1;
        int signals = 0; ///< sent so far; 0: it is wanted
        Clock::time_point nextSignal;
    };

    void Start(const Command& command);
    void Signal(Process& process);
    void Reap();
    bool IsAlive(const std::string& name) const;

    const Journal& m_journal;
    std::vector<Command> m_wanted;
    std::vector<Process> m_processes; ///< running and stopping
    int m_started = 0;
};

} // namespace call
