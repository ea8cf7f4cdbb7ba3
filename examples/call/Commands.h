// CommandsFor(streams, local, tone): the ffmpeg processes that carry the agreed media.
//
// This is the whole mapping from what SDPNegotiator agreed to a media engine. A process is described by its
// command line alone, so two agreements that differ in nothing that matters give the same commands, and an
// engine that compares them restarts only what changed. docs/engine.md walks through it.
#pragma once

#include <SDPNegotiator.h>

#include <string>
#include <vector>

namespace call {

/// One ffmpeg process.
struct Command {
    std::string name;                   ///< "audio-send", "main-receive": at most one process of a name runs
    std::vector<std::string> arguments; ///< all but the file that a receiver writes
    std::string input;                  ///< of a receiver: the description that it reads from standard input
    std::string extension;              ///< of the file that a receiver writes; empty for a sender

    bool operator==(const Command& other) const {
        return name == other.name && arguments == other.arguments && input == other.input;
    }
};

/// @param streams  SDPNegotiator::Streams()
/// @param local    SDPNegotiator::Local(), for our own ports
/// @param tone     Hz, of the sound that is sent
std::vector<Command> CommandsFor(const std::vector<SDPNegotiator::Stream>& streams, const LocalSDP& local,
                                 int tone);

/// The command line for a log, with every key replaced by "...".
std::string Shown(const Command& command);

} // namespace call
