// Stage: one run of the component.
// Input: everything that decides how the call comes up. Output: record, our text and the facts about them.
// Touches nothing outside its result: every run makes its own handlers.
// A second handler with every audio codec reads our text, as a far end that uses this component would.
// Test: tests/explain/judge_cases.py
#include "State.h"

#include "Reading.h"
#include "SDPLines.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

const char* const kStreamNames[baseSDP::SRTP_MAX] = {"audio", "main video", "the slides stream"};

namespace {

OurSection OurSectionOf(std::string_view line) {
    const std::vector<std::string_view> words = WordsOf(line);
    OurSection section;
    section.media = words[0].substr(2);
    section.hasPort = words.size() > 1 && (IsDigits(words[1]) || words[1][0] == '-');
    const std::size_t first = section.hasPort ? 1 : 0;
    section.port = section.hasPort ? words[1] : std::string_view();
    section.transport = words.size() > first + 1 ? words[first + 1] : std::string_view();
    for (std::size_t i = first + 2; i < words.size(); ++i) {
        section.formats.push_back(words[i]);
    }
    return section;
}

void ScanOurs(State& state) {
    constexpr std::string_view crypto = "a=crypto:";
    const std::string_view ours = state.ours;
    sdp::ForEachLine(ours, [&](std::size_t offset, std::size_t length) {
        const std::string_view line = ours.substr(offset, length);
        if (BeginsWith(line, "m=")) {
            state.ourSections.push_back(OurSectionOf(line));
        } else if (state.ourSections.empty()) {
            return;
        } else if (BeginsWith(line, crypto)) {
            const std::vector<std::string_view> words = WordsOf(line, 3);
            OurSection& section = state.ourSections.back();
            section.hasKey = true;
            section.tag = words[0].substr(crypto.size());
            section.suite = words.size() > 2 ? words[1] : std::string_view();
        } else if (line == "a=content:slides") {
            state.ourSections.back().isSlides = true;
        }
    });
}

/// The text after the o= line, whose session id differs between runs.
std::string_view AfterOrigin(std::string_view text) {
    return text.substr(std::min(text.find("\r\ns="), text.size()));
}

void ReadOurs(State& state) {
    state.read = &state.ownRead;
    SDPHandler farEnd;
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        farEnd.MyLocalSDP.eAudioCodec =
            static_cast<PayloadType_t>((farEnd.MyLocalSDP.eAudioCodec & ~PAYLOAD_UNKNOWN) | codec.codec);
    }
    farEnd.ParseTheSDP(state.ours, state.ownRead);
}

} // namespace

void PrepareHandler(SDPHandler& handler, const ExplainInput& input, std::string& offer) {
    handler.InitializeLocalSDP(input.local);
    handler.m_bSRTP = input.srtp;
    handler.SetBfcpSupport(input.floorControl);
    handler.SetMaxSupportedSessions(input.servedSections);
    RemoteSDP unused;
    if (!input.before.empty()) {
        handler.ParseTheSDP(input.before, unused);
        handler.ResetRemoteSDP();
    }
    if (input.remoteAnswers) {
        offer = input.ourOffer.empty() ? handler.GetLocalSDP() : input.ourOffer;
    }
}

void Run(const ExplainInput& input, State& state, const State* known) {
    SDPHandler& handler = state.handler;
    PrepareHandler(handler, input, state.ours);
    handler.ParseTheSDP(input.remote, state.record);
    const RemoteSections sections = handler.GetRemoteSections();
    if (!input.remoteAnswers) {
        const bool isOffered = std::any_of(sections.begin(), sections.end(),
                                           [](const MediaSession* section) { return sdp::IsBfcp(*section); });
        handler.SetBfcpSupport(input.floorControl && (isOffered || !input.floorControlIfOffered));
        state.ours = !input.ourAnswer.empty() ? input.ourAnswer
                     : sections.empty()       ? ""
                                              : handler.GetLocalSDP();
    }
    const bool isOurs = known != nullptr && AfterOrigin(state.ours) == AfterOrigin(known->ours);
    if (isOurs && ReadSame(state, *known)) {
        state.same = known;
        state.read = known->read;
        state.ourSections = known->ourSections;
        return;
    }
    if (isOurs) {
        state.read = known->read;
        state.ourSections = known->ourSections;
    } else {
        ScanOurs(state);
        ReadOurs(state);
    }
    AddStreamFacts(state, input, sections);
    AddSecurityFacts(state, input, sections);
    AddCallFacts(state, input, sections);
}

void State::Say(Fact fact, Pieces clause) {
    constexpr std::size_t usual = 64;
    if (m_facts.empty()) {
        m_facts.reserve(usual);
        m_pieces.reserve(usual * 4);
    }
    fact.begin = m_pieces.size();
    m_facts.push_back(fact);
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

const MediaSession* SectionOfStream(const RemoteSections& sections, baseSDP::SRTP_M_LINE stream) {
    const sdp::StreamMatch& match = sdp::kStreams[stream];
    const auto found = std::find_if(sections.begin(), sections.end(), [&](const MediaSession* section) {
        return section->eMedia == match.media && section->eContent == match.content;
    });
    return found == sections.end() ? nullptr : *found;
}

std::size_t PlaceOf(const RemoteSections& sections, const MediaSession* section) {
    const auto found = std::find(sections.begin(), sections.end(), section);
    return found == sections.end() ? kNowhere : static_cast<std::size_t>(found - sections.begin());
}

const OurSection* OurStream(const State& state, baseSDP::SRTP_M_LINE stream) {
    const std::string_view media = stream == baseSDP::SRTP_AUDIO ? "audio" : "video";
    for (const OurSection& section : state.ourSections) {
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
