// What the command line of the example asks for: where the agent listens, whom it calls, what it can do and
// what happens during the call. ParseOptions reads it; CapabilitiesOf turns it into what SDPNegotiator takes.
#pragma once

#include <SDPNegotiator.h>

#include <cstdint>
#include <string>
#include <vector>

namespace call {

/// What this side does during a call.
enum class Action {
    Hold,
    Resume,
    Mute,
    Unmute,
    Present,
    StopPresenting,
    HoldByPort,
    ResumePorts,
    StopVideo,
    NextCodec,
    Rekey,
    Encrypt,
    OfferAgain,
    HangUp
};

/// One action and when it is due.
struct Step {
    double after = 0; ///< seconds after the call was established and settled
    Action action = Action::HangUp;
};

/// The command line.
struct Options {
    std::string address = "127.0.0.1"; ///< of signalling and media
    int sipPort = 17060;
    int mediaPort = 30000;       ///< audio; main video 2, slides 4, floor control 6 higher
    std::string uri;             ///< whom to call; empty: wait for a call
    std::string directory = "."; ///< for texts, logs and what was heard and seen
    std::vector<std::string> audio = {"G722", "PCMU"}; ///< best first
    std::string video = "both";                        ///< both, mode0, mode1 or none
    bool hasSlides = false;
    bool isPresenting = false;
    bool isDelayed = false; ///< the INVITE carries no offer
    bool requestsPictures = true;
    std::string srtp = "off"; ///< off, wanted or required
    std::string suite = "80"; ///< 32 or 80: the suite that is offered first
    int tone = 1000;          ///< Hz, the sound that this side sends
    double patience = 30;     ///< seconds to wait for a call
    double settle = 0;        ///< seconds to wait for the far end's media before time is counted
    std::vector<Step> steps;  ///< in order of time
};

/// Reads a command line.
/// @param status  exit status when the program is to end now: after --help 0, after an error 2
/// @return whether the program goes on
bool ParseOptions(int argc, const char* const* argv, Options& options, int& status);

/// The capabilities that the options describe.
LocalSDP CapabilitiesOf(const Options& options);
SDPNegotiator::Srtp SrtpOf(const Options& options);
/// The word of an action in the log, "hold".
std::string NameOf(Action action);

} // namespace call
