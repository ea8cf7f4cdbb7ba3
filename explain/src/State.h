// One run of the component, and what came of it as facts about the call.
//
// Two runs are compared fact by fact: the text as it is against the text with one edit. A fact is a clause
// of a sentence, so that a finding can say what its cause changes.
#pragma once

#include "OurText.h"
#include "Pieces.h"
#include "SDPExplain.h"
#include "SDPHandler.h"

#include <array>
#include <bitset>
#include <memory>
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

/// What facts are about together: they are made, taken from another run and compared part by part.
enum class Part : unsigned char {
    Audio, ///< what is sent and received, in the order of baseSDP::SRTP_M_LINE
    Main,
    Slides,
    Floor,
    Tones, ///< and whether our text has the codec that is started
    Bandwidth,
    AudioKey, ///< in the order of baseSDP::SRTP_M_LINE
    MainKey,
    SlidesKey,
    Ice,
    Call
};
inline constexpr std::size_t kParts = 11;
using Parts = std::bitset<kParts>;

/// The facts of one part.
struct FactRange {
    const Fact* first = nullptr;
    const Fact* last = nullptr;
    const Fact* begin() const { return first; }
    const Fact* end() const { return last; }
    std::size_t size() const { return static_cast<std::size_t>(last - first); }
};

/// The sections of the far end as the component has read them.
using Sections = std::vector<const MediaSession*>;

/// What both ends hold after the remote text was read. It cannot be copied or moved,
/// because it has views of its own texts.
struct State {
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    SDPHandler handler; ///< has read the remote text, or the section of it that differs from another run's
    RemoteSDP record;
    Sections sections; ///< of the handler, and of another run where it has read one section alone
    /// Our answer, or our offer when the remote text answers it. Runs share it when it is the same.
    std::shared_ptr<const OurText> ours;

    /// The run that made the facts of a part: this one, or another one in which they are the same.
    const State& MakerOf(Part part) const {
        const State* const maker = m_makers[static_cast<std::size_t>(part)];
        return maker == nullptr ? *this : *maker;
    }
    /// Those that matter most first. Their clauses are asked of MakerOf(part).
    FactRange Facts(Part part) const;
    /// All facts of a run that has taken none from another.
    const std::vector<Fact>& Facts() const { return m_facts; }
    /// "audio has no codec"
    std::string ClauseOf(const Fact& fact) const;
    /// Whether a fact of this run has the clause of a fact of another.
    bool SaysSame(const Fact& fact, const State& other, const Fact& theirs) const;

    /// Makes room for the facts of so many parts.
    void Reserve(std::size_t parts);
    /// Begins a part with the facts of another run, or with none.
    void Begin(Part part, const State* maker);
    /// Adds a fact to the part. The texts of its pieces have to be constant, or part of this run or of one
    /// that outlives it.
    void Say(Fact fact, Pieces clause);
    /// Adds to the clause of the last fact.
    void SayMore(Pieces pieces);

private:
    const Piece* PiecesOf(const Fact& fact) const { return m_pieces.data() + fact.begin; }

    std::array<const State*, kParts> m_makers{};       ///< null: this run
    std::array<std::size_t, kParts + 1> m_firstFact{}; ///< of each part; after the last part the number
    std::vector<Fact> m_facts;
    std::vector<Piece> m_pieces; ///< of the clauses of all facts, one after the other
};

/// Runs the component on the input. What is the same in `known`, a run with the same local fields, is taken
/// from there; `known` has to outlive `state`. `texts` knows what is read in our texts, when given.
void Run(const ExplainInput& input, State& state, const State* known = nullptr, OurTexts* texts = nullptr);
/// Makes the facts of a run whose other fields are filled; those of `known` where they are the same.
void MakeFacts(const ExplainInput& input, State& state, const State* known);
/// The parts whose facts may differ between two runs of one local side.
Parts DifferentParts(const State& one, const State& other);
/// Whether the component writes the same answer in both runs, which have one local side.
bool WritesSameAnswer(const State& one, const State& other, std::size_t servedSections);
/// A handler with the local side and everything that happened before the remote text.
void PrepareHandler(SDPHandler& handler, const ExplainInput& input);
/// The same for a handler that only reads: that depends on the codec set alone and on what was read before.
void PrepareReader(SDPHandler& handler, const ExplainInput& input);
/// Makes the facts of a part; reads the handler's sections. Defined over Facts*.cpp.
using AddFacts = void (*)(State& state, const ExplainInput& input, const Sections& sections);
void AddAudio(State& state, const ExplainInput& input, const Sections& sections);
void AddMain(State& state, const ExplainInput& input, const Sections& sections);
void AddSlides(State& state, const ExplainInput& input, const Sections& sections);
void AddFloor(State& state, const ExplainInput& input, const Sections& sections);
void AddTones(State& state, const ExplainInput& input, const Sections& sections);
void AddBandwidth(State& state, const ExplainInput& input, const Sections& sections);
void AddAudioKey(State& state, const ExplainInput& input, const Sections& sections);
void AddMainKey(State& state, const ExplainInput& input, const Sections& sections);
void AddSlidesKey(State& state, const ExplainInput& input, const Sections& sections);
void AddIce(State& state, const ExplainInput& input, const Sections& sections);
void AddCall(State& state, const ExplainInput& input, const Sections& sections);

/// The first remote section of a stream; null without one.
const MediaSession* SectionOfStream(const Sections& sections, baseSDP::SRTP_M_LINE stream);
/// Place of a section among all; kNowhere for null.
std::size_t PlaceOf(const Sections& sections, const MediaSession* section);
/// Our first section of a stream; null without one.
const OurSection* OurStream(const OurText& ours, baseSDP::SRTP_M_LINE stream);
inline const OurSection* OurStream(const State& state, baseSDP::SRTP_M_LINE stream) {
    return OurStream(*state.ours, stream);
}
/// Transport of a remote section, the third word of its "m=" line.
std::string_view TransportOf(const MediaSession& section);
/// "G.722".
std::string_view CodecName(std::int32_t codec);
/// "AES_CM_128_HMAC_SHA1_32"; "no suite" for CRYPTO_NONE.
std::string_view SuiteName(Quor::media::rtp::CryptoParams::CRYPTO_PROFILE suite);

/// "audio", "main video", "the slides stream": subjects of a clause.
extern const char* const kStreamNames[baseSDP::SRTP_MAX];
/// The topic of the encryption of each stream.
extern const ExplainTopic kEncryptionTopics[baseSDP::SRTP_MAX];

} // namespace explain
