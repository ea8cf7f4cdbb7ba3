// One run of the component, and what came of it as facts about the call.
//
// Two runs are compared fact by fact: the text as it is against the text with one edit. A fact is a clause
// of a sentence, so that a finding can say what its cause changes.
#pragma once

#include "Pieces.h"
#include "SDPExplain.h"
#include "SDPHandler.h"

#include <string>
#include <string_view>
#include <vector>

namespace explain {

/// What a fact is about.
enum class About : unsigned char {
    Codec,
    Sending,
    Receiving,
    Place,
    Limits,
    OurCodec,     ///< what our text says of the codec
    OurSending,   ///< what our text says of sending
    OurReceiving, ///< what our text asks for
    OurKey,
    OurFloor,
    OurBandwidth,
    Match, ///< whether our text has the codec that is started
    Port,
    Ids,
    Role,
    Payload,
    Bandwidth,
    Suite,
    Key,
    Ice,
    Sections,
    Text,
    Address,
    AddressOf,
    Transport,
    Count,
    Order,
    Malformed,
    Served
};

struct Fact {
    ExplainTopic topic = ExplainTopic::Call;
    About about = About::Sections;
    unsigned char which =
        0;               ///< a stream or a section; the three are the same in every run and together unique
    bool isDead = false; ///< with this value the topic's stream does not work
    bool isHard = false; ///< another value is an error and not a weakness: address, port, key
    bool isIdle = false; ///< says that there is nothing to start with; left out where a start is told
    std::size_t hidden = 0; ///< compared, never shown: a hash of key text
    std::size_t begin = 0;  ///< index of the first piece of its clause
    std::size_t count = 0;  ///< pieces of its clause

    bool IsSame(const Fact& other) const {
        return topic == other.topic && about == other.about && which == other.which;
    }
};

/// A section of our own description, which is well formed by construction; views of State::ours.
struct OurSection {
    std::string_view media; ///< "audio"
    std::string_view port;
    std::string_view transport;
    std::vector<std::string_view> formats;
    std::string_view tag;   ///< of its crypto line; empty without one
    std::string_view suite; ///< of its crypto line; may be empty with one
    bool hasKey = false;
    bool isSlides = false;
    bool hasPort = true; ///< false: an "m=" line without a port
};

/// What both ends hold after the remote text was read. It stays in its place: it has views of itself.
struct State {
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    SDPHandler handler; ///< has read the remote text
    RemoteSDP record;
    /// What a far end of the same kind, with every codec, reads in our text: `ownRead` or that of another
    /// run.
    const RemoteSDP* read = nullptr;
    RemoteSDP ownRead;
    std::string ours; ///< our answer, or our offer when the remote text answers it
    std::vector<OurSection> ourSections;
    const State* same = nullptr; ///< a run whose facts are these, because nothing that they tell differs

    /// Those that matter most first.
    const std::vector<Fact>& Facts() const { return same == nullptr ? m_facts : same->Facts(); }
    /// "audio has no codec"
    std::string ClauseOf(const Fact& fact) const;
    /// Whether a fact of this run has the clause of a fact of another.
    bool SaysSame(const Fact& fact, const State& other, const Fact& theirs) const;
    /// Adds a fact. The texts of its pieces have to be constant, or part of this run or of `known`.
    void Say(Fact fact, Pieces clause);
    /// Adds to the clause of the last fact.
    void SayMore(Pieces pieces);

private:
    const Piece* PiecesOf(const Fact& fact) const {
        return (same == nullptr ? m_pieces : same->m_pieces).data() + fact.begin;
    }

    std::vector<Fact> m_facts;
    std::vector<Piece> m_pieces; ///< of the clauses of all facts, one after the other
};

/// Runs the component on the input. What is the same in `known`, a run with the same local fields, is taken
/// from there; `known` has to outlive `state`.
void Run(const ExplainInput& input, State& state, const State* known = nullptr);
/// Whether both runs ended with all that facts are about, our text apart.
bool ReadSame(const State& one, const State& other);
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
std::string_view TransportOf(const MediaSession& section);
/// "G.722".
std::string_view CodecName(std::int32_t codec);
/// "AES_CM_128_HMAC_SHA1_32"; "no suite" for CRYPTO_NONE.
std::string_view SuiteName(Quor::media::rtp::CryptoParams::CRYPTO_PROFILE suite);

/// "audio", "main video", "the slides stream": subjects of a clause.
extern const char* const kStreamNames[baseSDP::SRTP_MAX];

} // namespace explain
