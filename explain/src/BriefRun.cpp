// Stage: an edit of the remote text to what it changes, at the least cost.
// Input: the text, the run of it, the edit. Output: effects, the same as those of a run of the whole text.
// Touches nothing. The component reads the sections of a text one by one, so an edit within one of them
// changes what is read of it and what comes of that; where more changes, the whole text is run.
// Test: tests/explain/LawTest.cpp, tests/explain/SameRunTest.cpp
#include "BriefRun.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

#include <algorithm>
#include <iterator>

namespace explain {

namespace {

/// Whether the component fills the same fields of the record from both sections, but for their values.
bool AreOfOneKind(const MediaSession& one, const MediaSession& other) {
    return one.eMedia == other.eMedia && one.eContent == other.eContent &&
           sdp::IsBfcp(one) == sdp::IsBfcp(other) && one.strMaxBandwidth == other.strMaxBandwidth;
}

void CopyAudio(const RemoteSDP& from, RemoteSDP& to) {
    to.fIsAudioValid = from.fIsAudioValid;
    to.eAudioCodec = from.eAudioCodec;
    to.iAudioPayload = from.iAudioPayload;
    to.strAudioIPAddr = from.strAudioIPAddr;
    to.iAudioRTPPort = from.iAudioRTPPort;
    to.fAudioSend = from.fAudioSend;
    to.fAudioRecv = from.fAudioRecv;
    to.iDTMFPayload = from.iDTMFPayload;
}

void CopyFloor(const RemoteSDP& from, RemoteSDP& to) {
    to.iVideoPresoControlPort = from.iVideoPresoControlPort;
    to.iBfcpConfid = from.iBfcpConfid;
    to.iBfcpUserid = from.iBfcpUserid;
    to.fBfcpIsServer = from.fBfcpIsServer;
}

} // namespace

BriefRuns::BriefRuns(const ExplainInput& input, const Reading& reading, const State& known, OurTexts& texts)
    : m_input(input), m_known(known), m_texts(texts), m_edited(input) {
    FindIdle(reading);
    FindSections(reading);
}

/// Lines without a row, and attributes that are no direction: no run needs them.
void BriefRuns::FindIdle(const Reading& reading) {
    for (const ParsedLine& parsed : reading.parsedLines) {
        const bool isIdle =
            parsed.row == SDPRow::None ||
            (parsed.row == SDPRow::Direction && sdp::FirstKeyword<sdp::kDirections>(parsed.text) == nullptr);
        if (isIdle) {
            const auto begin = static_cast<std::size_t>(parsed.text.data() - reading.text.data());
            m_idle.push_back({begin, begin + parsed.text.size() + 2});
        }
    }
}

/// A section begins with a line of its row. Not every such line opens one (P05): where there are more lines
/// than sections, which of them do is not known here.
void BriefRuns::FindSections(const Reading& reading) {
    for (const ParsedLine& parsed : reading.parsedLines) {
        if (parsed.row == SDPRow::Media) {
            const auto begin = static_cast<std::size_t>(parsed.text.data() - reading.text.data());
            if (!m_sections.empty()) {
                m_sections.back().end = begin;
            }
            m_sections.push_back({begin, reading.text.size()});
        }
    }
    if (m_sections.size() != m_known.sections.size()) {
        m_sections.clear();
    }
    if (!m_sections.empty()) {
        m_session = Edited({}, 0, m_sections.front().begin);
    }
}

/// A range of the edited text, whose changes lie in it, without the idle lines that the edit does not touch.
std::string BriefRuns::Edited(const ExplainCure& cure, std::size_t begin, std::size_t end) const {
    const std::string& from = m_input.remote;
    std::string text;
    text.reserve(end - begin);
    auto idle = std::lower_bound(m_idle.begin(), m_idle.end(), begin,
                                 [](const Range& line, std::size_t offset) { return line.begin < offset; });
    std::size_t at = begin;
    const auto copy = [&](std::size_t last) {
        const std::size_t first = at;
        for (; idle != m_idle.end() && idle->begin < last; ++idle) {
            // A line right after an edit may begin in its text.
            if ((idle->begin >= first + 2 || first == begin) && idle->begin >= at && idle->end <= last) {
                text.append(from, at, idle->begin - at);
                at = idle->end;
            }
        }
        text.append(from, at, last - at);
    };
    for (const ExplainTextChange& change : cure.text) {
        if (change.offset >= at && change.offset <= end) {
            copy(change.offset);
            text += change.text;
            at = std::min(end, change.offset + change.length);
        }
    }
    copy(end);
    return text;
}

/// Index of the section that has all changes of an edit; kNowhere for none. What is inserted before an "m="
/// line belongs to the section before it.
std::size_t BriefRuns::SectionOf(const ExplainCure& cure) const {
    const ExplainTextChange& first = cure.text.front();
    auto after =
        std::upper_bound(m_sections.begin(), m_sections.end(), first.offset,
                         [](std::size_t offset, const Range& section) { return offset < section.begin; });
    if (after != m_sections.begin() && first.length == 0 && std::prev(after)->begin == first.offset) {
        --after;
    }
    if (after == m_sections.begin()) {
        return kNowhere;
    }
    const Range section = *std::prev(after);
    const bool areAllIn =
        std::all_of(cure.text.begin(), cure.text.end(), [&section](const ExplainTextChange& change) {
            return change.offset >= section.begin && change.offset + change.length <= section.end;
        });
    return areAllIn ? static_cast<std::size_t>(after - m_sections.begin()) - 1 : kNowhere;
}

/// Whether the edit is of a kind that usually changes the answer: it replaces a direction, or the "m=" line
/// of a section that was rejected. Only the cost depends on this guess: for such an edit the whole text is
/// run at once; for any other RunSection compares what the answers are written from and gives up where it
/// differs.
bool BriefRuns::MayChangeAnswer(const ExplainCure& cure, std::size_t place) const {
    const std::string_view edited = std::string_view(m_input.remote).substr(cure.text.front().offset);
    return (m_known.sections[place]->iPort == 0 && BeginsWith(edited, "m=")) ||
           std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                       [edited](const sdp::Direction& each) { return BeginsWith(edited, each.keyword); });
}

/// Puts what the component has read of one section into the record: the first section of a stream and the
/// last one of floor control fill it.
void BriefRuns::TakeRecord(std::size_t place, const RemoteSDP& alone, RemoteSDP& record) const {
    const Sections& sections = m_known.sections;
    const auto fills = [&](baseSDP::SRTP_M_LINE stream) {
        return SectionOfStream(sections, stream) == sections[place];
    };
    record = m_known.record;
    const auto isBfcp = [](const MediaSession* section) { return sdp::IsBfcp(*section); };
    const auto floor = std::find_if(sections.rbegin(), sections.rend(), isBfcp);
    // An assignment leaves the fields of floor control as they are (M01).
    CopyFloor(floor != sections.rend() && *floor == sections[place] ? alone : m_known.record, record);
    if (fills(baseSDP::SRTP_AUDIO)) {
        CopyAudio(alone, record);
    }
    if (fills(baseSDP::SRTP_VIDEO)) {
        record.m_VideoMain = alone.m_VideoMain;
    }
    if (fills(baseSDP::SRTP_VIDEO_PRESO)) {
        record.m_VideoPreso = alone.m_VideoPreso;
    }
}

/// Runs the section that the edit touches. False: the edit touches more than one, or it changes more than
/// what is read of this section; then the whole text has to be run.
bool BriefRuns::RunSection(const ExplainCure& cure, State& state) const {
    const std::size_t place = SectionOf(cure);
    if (place == kNowhere || MayChangeAnswer(cure, place)) {
        return false;
    }
    const Range range = m_sections[place];
    const std::string text = Edited(cure, range.begin, range.end);
    const bool isEnded = text.size() >= 2 && text.compare(text.size() - 2, 2, "\r\n") == 0;
    if (!isEnded && place + 1 < m_sections.size()) {
        return false; // The next "m=" line would be part of the last line.
    }
    RemoteSDP alone;
    PrepareReader(state.handler, m_input);
    state.handler.ParseTheSDP(m_session + text, alone);
    const RemoteSections read = state.handler.GetRemoteSections();
    const bool isOne = read.size() == 1 && BeginsWith(text, read[0]->strFullMLine + "\r\n");
    if (!isOne || !AreOfOneKind(*read[0], *m_known.sections[place])) {
        return false;
    }
    state.sections = m_known.sections;
    state.sections[place] = read[0];
    state.ours = m_known.ours;
    if (!m_input.remoteAnswers && !WritesSameAnswer(state, m_known, m_input.servedSections)) {
        return false;
    }
    TakeRecord(place, alone, state.record);
    MakeFacts(m_input, state, &m_known);
    return true;
}

Effects BriefRuns::EffectsOf(const ExplainCure& cure) {
    {
        State ofSection;
        if (RunSection(cure, ofSection)) {
            return explain::EffectsOf(m_known, ofSection, false);
        }
    }
    m_edited.remote = Lean(cure);
    State then;
    Run(m_edited, then, &m_known, &m_texts);
    return explain::EffectsOf(m_known, then, false);
}

} // namespace explain
