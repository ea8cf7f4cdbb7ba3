// Puts a report together: verdicts and reasons (Reasons.h), notes (Notes.h).
//
// Tests: tests/tool/reasons.cases
#include "Report.h"

#include "Notes.h"
#include "Reasons.h"
#include "SDPTables.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cmsdp {

namespace {

void Conclude(Finding& finding, std::string why) {
    finding.negotiated = why.empty();
    finding.why = std::move(why);
}

void Append(std::vector<std::string>& notes, std::vector<std::string> more) {
    notes.insert(notes.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

void NoteStream(Finding& finding, const Reading& reading, const Capabilities& side, const Section* section,
                baseSDP::SRTP_M_LINE stream, const VideoParms* video, bool answers) {
    if (finding.negotiated && section != nullptr) {
        const StreamView view{reading, side, *section, stream, video, answers};
        Append(finding.notes, NotesOnStream(view));
        Append(finding.notes, NotesOnKeys(view));
    }
}

// Far ends that share a screen as an unmarked second video are common, and the reader sees two videos.
void NoteSpareVideo(Report& report, const Reading& reading) {
    std::size_t count = 0;
    std::uint32_t line = 0;
    for (const Section& section : reading.sections) {
        const MediaSession& session = *section.session;
        if (session.eMedia == MEDIA_VIDEO && session.eContent == VIDEOTYPE_MAIN && session.iPort != 0) {
            ++count;
            line = section.line;
        }
    }
    if (count > 1) {
        report.presentation.notes.push_back(InWords(
            {line, "RFC 4796, 5",
             std::to_string(count) + " video sections are not marked a=content:slides; the first is main " +
                 "video, the others are not taken"}));
    }
}

void NoteSpareFloorControl(Report& report, const Reading& reading) {
    std::size_t count = 0;
    std::uint32_t line = 0;
    for (const Section& section : reading.sections) {
        if (sdp::IsBfcp(*section.session)) {
            ++count;
            line = section.line;
        }
    }
    if (count > 1) {
        report.floorControl.notes.push_back(InWords(
            {line, "X11",
             "the far end has " + std::to_string(count) +
                 " BFCP sections; the last one gives port, ids and role, and the others are not used"}));
    }
}

// A stream that our own answer declines or moves does not come up, whatever the record holds.
void NoteAnswer(Report& report, const Reading& reading, std::size_t served) {
    AnswerNotes notes = NotesOnAnswer(report.answer,
                                      {FindAudio(reading), FindVideo(reading, VIDEOTYPE_MAIN),
                                       FindVideo(reading, VIDEOTYPE_PRESO), FindFloorControl(reading)},
                                      served);
    Append(report.notes, notes.whole);
    Finding* const findings[] = {&report.audio, &report.mainVideo, &report.presentation,
                                 &report.floorControl};
    for (std::size_t i = 0; i < notes.byStream.size(); ++i) {
        if (findings[i]->negotiated) {
            Append(findings[i]->notes, notes.byStream[i]);
            findings[i]->isLost = !notes.lost[i].empty();
            Conclude(*findings[i], notes.lost[i]);
        }
    }
}

} // namespace

Report ReadInto(SDPHandler& handler, const Capabilities& side, const Draft& draft, bool isAnswer,
                const std::string& sent) {
    Report report;
    const Reading reading = ReadWith(handler, draft);
    handler.GetRTPData(report.record); // Assigning a record leaves out the BFCP identity (M01).
    const bool answers = SettleFloorControl(handler, side);
    Conclude(report.audio, WhyNoAudio(reading, side));
    Conclude(report.mainVideo, WhyNoMainVideo(reading, side));
    Conclude(report.presentation, WhyNoPresentation(reading, side, answers));
    Conclude(report.floorControl, WhyNoFloorControl(reading, side, answers));
    report.audio.hasCodec = reading.record.eAudioCodec != PAYLOAD_UNKNOWN;
    report.mainVideo.hasCodec = HasVideoCodec(reading, VIDEOTYPE_MAIN);
    report.presentation.hasCodec = HasVideoCodec(reading, VIDEOTYPE_PRESO);

    report.notes = NotesOnLines(reading);
    NoteStream(report.audio, reading, side, FindAudio(reading), baseSDP::SRTP_AUDIO, nullptr, !isAnswer);
    NoteStream(report.mainVideo, reading, side, FindVideo(reading, VIDEOTYPE_MAIN), baseSDP::SRTP_VIDEO,
               &reading.record.m_VideoMain, !isAnswer);
    NoteStream(report.presentation, reading, side, FindVideo(reading, VIDEOTYPE_PRESO),
               baseSDP::SRTP_VIDEO_PRESO, &reading.record.m_VideoPreso, !isAnswer);
    NoteSpareVideo(report, reading);
    NoteSpareFloorControl(report, reading);

    if (!isAnswer && !handler.IsOffer()) {
        report.answer = sent.empty() ? handler.GetLocalSDP() : sent;
        NoteAnswer(report, reading, side.servedSections);
    }
    return report;
}

void JudgeAnswer(Report& report, const Capabilities& side, const Draft& draft, bool isAnswer) {
    if (!report.answer.empty()) {
        report.answerNotes = NotesOfJudge(draft.text, report.answer);
    }
    report.fit = FitOf(side, draft.text, isAnswer);
}

bool AnythingNegotiated(const Report& report) {
    return report.audio.negotiated || report.mainVideo.negotiated || report.presentation.negotiated;
}

std::vector<std::string> AllNotes(const Report& report) {
    std::vector<std::string> notes = report.notes;
    const std::pair<const char*, const Finding*> streams[] = {{"audio: ", &report.audio},
                                                              {"main video: ", &report.mainVideo},
                                                              {"presentation: ", &report.presentation},
                                                              {"floor control: ", &report.floorControl}};
    for (const auto& [name, finding] : streams) {
        if (finding->isLost && AnythingNegotiated(report)) { // otherwise WhyNothing says it
            notes.push_back(name + ("not negotiated: " + finding->why));
        }
        for (const std::string& note : finding->notes) {
            notes.push_back(name + note);
        }
    }
    return notes;
}

std::string WhyNothing(const Report& report) {
    return "nothing was negotiated: audio: " + report.audio.why + "; main video: " + report.mainVideo.why +
           "; presentation: " + report.presentation.why;
}

} // namespace cmsdp
