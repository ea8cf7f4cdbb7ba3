// Stage: one run of the component.
// Input: everything that decides how the call comes up. Output: record, our text and the facts about them.
// Touches nothing outside its result: every run makes its own handlers.
// Test: tests/explain/judge_cases.py
#include "State.h"

#include "Reading.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

const char* const kStreamNames[baseSDP::SRTP_MAX] = {"audio", "main video", "the slides stream"};

namespace {

/// In the order of Part.
constexpr AddFacts kAddFacts[] = {AddAudio,    AddMain,    AddSlides,    AddFloor, AddTones, AddBandwidth,
                                  AddAudioKey, AddMainKey, AddSlidesKey, AddIce,   AddCall};
static_assert(std::size(kAddFacts) == kParts);

/// The answer that was sent or that the component writes; empty without a section of the far end.
std::string AnswerOf(const ExplainInput& input, SDPHandler& handler, const Sections& sections) {
    const bool isOffered = std::any_of(sections.begin(), sections.end(),
                                       [](const MediaSession* section) { return sdp::IsBfcp(*section); });
    handler.SetBfcpSupport(input.floorControl && (isOffered || !input.floorControlIfOffered));
    return !input.ourAnswer.empty() ? input.ourAnswer : sections.empty() ? "" : handler.GetLocalSDP();
}

/// Our text, read; from `known` when it is the same.
std::shared_ptr<const OurText> ReadOurs(const ExplainInput& input, std::string text, const State* known,
                                        OurTexts* texts) {
    if (known != nullptr && AfterOrigin(text) == AfterOrigin(known->ours->text)) {
        return known->ours;
    }
    const bool isGiven = !(input.remoteAnswers ? input.ourOffer : input.ourAnswer).empty();
    if (texts == nullptr || isGiven) {
        return std::make_shared<const OurText>(std::move(text));
    }
    const LocalSDP& local = input.local;
    return texts->Read(std::move(text),
                       local.strOExtension + "\n" + local.strMyIPAddr + "\n" + local.strDefaultIPAddr);
}

} // namespace

void PrepareHandler(SDPHandler& handler, const ExplainInput& input) {
    handler.InitializeLocalSDP(input.local);
    handler.m_bSRTP = input.srtp;
    handler.SetBfcpSupport(input.floorControl);
    handler.SetMaxSupportedSessions(input.servedSections);
    PrepareReader(handler, input);
}

void PrepareReader(SDPHandler& handler, const ExplainInput& input) {
    handler.MyLocalSDP.eAudioCodec = input.local.eAudioCodec;
    if (!input.before.empty()) {
        RemoteSDP unused;
        handler.ParseTheSDP(input.before, unused);
        handler.ResetRemoteSDP();
    }
}

void Run(const ExplainInput& input, State& state, const State* known, OurTexts* texts) {
    SDPHandler& handler = state.handler;
    PrepareHandler(handler, input);
    if (input.remoteAnswers) {
        // An offer does not depend on what answers it.
        state.ours = known != nullptr
                         ? known->ours
                         : ReadOurs(input, input.ourOffer.empty() ? handler.GetLocalSDP() : input.ourOffer,
                                    nullptr, texts);
    }
    handler.ParseTheSDP(input.remote, state.record);
    const RemoteSections sections = handler.GetRemoteSections();
    state.sections.assign(sections.begin(), sections.end());
    if (!input.remoteAnswers) {
        state.ours = known != nullptr && WritesSameAnswer(state, *known, input.servedSections)
                         ? known->ours
                         : ReadOurs(input, AnswerOf(input, handler, state.sections), known, texts);
    }
    MakeFacts(input, state, known);
}

void MakeFacts(const ExplainInput& input, State& state, const State* known) {
    const Parts made = known == nullptr ? Parts().set() : DifferentParts(state, *known);
    state.Reserve(made.count());
    for (std::size_t part = 0; part < kParts; ++part) {
        state.Begin(static_cast<Part>(part), made[part] ? nullptr : known);
        if (made[part]) {
            kAddFacts[part](state, input, state.sections);
        }
    }
}

void State::Reserve(std::size_t parts) {
    constexpr std::size_t facts = 8; // as many as a part has at most, but for that of the whole call
    constexpr std::size_t pieces = 32;
    m_facts.reserve(parts * facts);
    m_pieces.reserve(parts * pieces);
}

void State::Begin(Part part, const State* maker) {
    const auto index = static_cast<std::size_t>(part);
    m_makers[index] = maker == nullptr ? nullptr : &maker->MakerOf(part);
    std::fill(m_firstFact.begin() + static_cast<std::ptrdiff_t>(index), m_firstFact.end(), m_facts.size());
}

FactRange State::Facts(Part part) const {
    const State& maker = MakerOf(part);
    const auto index = static_cast<std::size_t>(part);
    return {maker.m_facts.data() + maker.m_firstFact[index],
            maker.m_facts.data() + maker.m_firstFact[index + 1]};
}

void State::Say(Fact fact, Pieces clause) {
    fact.begin = m_pieces.size();
    m_facts.push_back(fact);
    m_firstFact.back() = m_facts.size();
    SayMore(clause);
}

void State::SayMore(Pieces pieces) {
    m_pieces.insert(m_pieces.end(), pieces);
    m_facts.back().count += pieces.size();
}

std::string State::ClauseOf(const Fact& fact) const {
    std::string clause;
    Append(clause, PiecesOf(fact), fact.count);
    return clause;
}

bool State::SaysSame(const Fact& fact, const State& other, const Fact& theirs) const {
    const Piece* const end = PiecesOf(fact) + fact.count;
    const Piece* const otherEnd = other.PiecesOf(theirs) + theirs.count;
    const auto [piece, otherPiece] = std::mismatch(PiecesOf(fact), end, other.PiecesOf(theirs), otherEnd);
    if (piece == end && otherPiece == otherEnd) {
        return true;
    }
    const bool isEnd = piece == end || otherPiece == otherEnd;
    return (isEnd || !piece->BeginsOtherwise(*otherPiece)) && ClauseOf(fact) == other.ClauseOf(theirs);
}

const MediaSession* SectionOfStream(const Sections& sections, baseSDP::SRTP_M_LINE stream) {
    const sdp::StreamMatch& match = sdp::kStreams[stream];
    const auto found = std::find_if(sections.begin(), sections.end(), [&](const MediaSession* section) {
        return section->eMedia == match.media && section->eContent == match.content;
    });
    return found == sections.end() ? nullptr : *found;
}

std::size_t PlaceOf(const Sections& sections, const MediaSession* section) {
    const auto found = std::find(sections.begin(), sections.end(), section);
    return found == sections.end() ? kNowhere : static_cast<std::size_t>(found - sections.begin());
}

const OurSection* OurStream(const OurText& ours, baseSDP::SRTP_M_LINE stream) {
    const std::string_view media = stream == baseSDP::SRTP_AUDIO ? "audio" : "video";
    for (const OurSection& section : ours.sections) {
        if (section.media == media && section.isSlides == (stream == baseSDP::SRTP_VIDEO_PRESO)) {
            return &section;
        }
    }
    return nullptr;
}

std::string_view TransportOf(const MediaSession& section) {
    return WordOf(section.strFullMLine, 2);
}

std::string_view CodecName(std::int32_t codec) {
    switch (codec) {
    case PAYLOAD_G711U:
        return "G.711 mu-law";
    case PAYLOAD_G722:
        return "G.722";
    case PAYLOAD_G7221:
        return "G.722.1";
    case PAYLOAD_G729:
        return "G.729";
    case PAYLOAD_H264:
        return "H.264";
    case PAYLOAD_H264_PACKETIZATION_0:
        return "H.264 in packetization mode 0";
    default:
        return "another codec";
    }
}

std::string_view SuiteName(Quor::media::rtp::CryptoParams::CRYPTO_PROFILE suite) {
    if (suite == Quor::media::rtp::CryptoParams::CRYPTO_NONE) {
        return "no suite";
    }
    for (const sdp::Suite& row : sdp::kSuites) {
        if (row.profile == suite) {
            return row.name.empty() ? "an AEAD suite" : row.name;
        }
    }
    return "an unknown suite";
}

} // namespace explain
