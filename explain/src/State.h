// One run of the component, and what came of it as facts about the call.
//
// Two runs are compared fact by fact: the text as it is against the text with one edit. A fact is a clause
// of a sentence, so that a finding can say what its cause changes.
#pragma once

#include "SDPExplain.h"
#include "SDPHandler.h"

#include <string>
#include <vector>

namespace explain {

struct Fact {
    ExplainTopic topic = ExplainTopic::Call;
    std::string name;       ///< the same in every run; unique within a topic
    std::string clause;     ///< "audio has no codec"
    bool isDead = false;    ///< with this value the topic's stream does not work
    bool isHard = false;    ///< another value is an error and not a weakness: address, port, key
    std::size_t hidden = 0; ///< compared, never shown: a hash of key text
};

/// A section of our own description, which is well formed by construction.
struct OurSection {
    std::string media; ///< "audio"
    std::string port;
    std::string transport;
    std::vector<std::string> formats;
    std::string tag;   ///< of its crypto line; empty without one
    std::string suite; ///< of its crypto line; may be empty with one
    bool hasKey = false;
    bool isSlides = false;
    bool hasPort = true; ///< false: an "m=" line without a port
};

/// What ends of the component hold after the remote text was read.
struct State {
    RemoteSDP record;
    std::string ours; ///< our answer, or our offer when the remote text answers it
    std::vector<OurSection> ourSections;
    std::vector<Fact> facts;
    std::size_t remoteSections = 0;
};

/// Runs the component on the input.
State RunState(const ExplainInput& input);
/// A handler with the local side and everything that happened before the remote text.
void PrepareHandler(SDPHandler& handler, const ExplainInput& input, std::string& offer);
/// The facts of a run; reads the handler's sections. Defined over Facts*.cpp.
void AddStreamFacts(State& state, const ExplainInput& input, const RemoteSections& sections);
void AddSecurityFacts(State& state, const ExplainInput& input, const RemoteSections& sections);
void AddCallFacts(State& state, const ExplainInput& input, const RemoteSections& sections);

/// The first remote section of a stream; null without one.
const MediaSession* SectionOfStream(const RemoteSections& sections, baseSDP::SRTP_M_LINE stream);
/// Place of a section among all; kNowhere for null.
std::size_t PlaceOf(const RemoteSections& sections, const MediaSession* section);
/// Our first section of a stream; null without one.
const OurSection* OurStream(const State& state, baseSDP::SRTP_M_LINE stream);
/// Transport of a remote section, the third word of its "m=" line.
std::string TransportOf(const MediaSession& section);
/// "G.722".
std::string CodecName(std::int32_t codec);
/// "AES_CM_128_HMAC_SHA1_32"; "no suite" for CRYPTO_NONE.
std::string SuiteName(Quor::media::rtp::CryptoParams::CRYPTO_PROFILE suite);

/// "audio", "main video", "slides".
extern const char* const kStreamNames[baseSDP::SRTP_MAX];

} // namespace explain
