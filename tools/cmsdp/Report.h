// What came out of reading a remote description, stream by stream, and why what did not come up did not.
//
// Tests: tests/tool/reasons.cases
#pragma once

#include "Capabilities.h"
#include "Draft.h"
#include "FitNotes.h"
#include "SDP.h"

#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// The verdict on one stream, or on the floor control channel.
///
/// A stream is negotiated when the record holds its section with a port other than 0 and a codec, and this
/// side's answer has such a section too, in the place where the far end looks for it. A stream on hold
/// ("a=inactive") is negotiated; one declined by port 0 is not. The channel is negotiated when both sides
/// have it with a port other than 0.
struct Finding {
    bool negotiated = false;
    bool hasCodec = false;          ///< the far end lists a codec that this component takes
    std::string why;                ///< when not negotiated
    bool isLost = false;            ///< not negotiated because our own answer declines or moves the stream
    std::vector<std::string> notes; ///< what else is worth knowing
};

struct Report {
    RemoteSDP record;
    std::string answer;                   ///< what we answer; empty for a text without a section
    std::vector<std::string> answerNotes; ///< what strict far ends refuse in it; set by JudgeAnswer
    FitView fit;                          ///< what --fit does with the text; set by JudgeAnswer
    Finding audio;
    Finding mainVideo;
    Finding presentation;
    Finding floorControl;
    std::vector<std::string> inputNotes; ///< what was done to the input before it was read
    std::vector<std::string> notes;      ///< about the text as a whole
};

/// Reads the draft with `handler`, which was prepared from `side`, and lets it answer.
/// `isAnswer`: the text answers an offer of ours, so there is nothing to answer. `sent`: the answer that was
/// sent in place of the handler's; empty for none.
Report ReadInto(SDPHandler& handler, const Capabilities& side, const Draft& draft, bool isAnswer = false,
                const std::string& sent = "");

/// Judges our own answer: what strict far ends refuse goes into `answerNotes`, and what --fit does with the
/// text in `fit`.
void JudgeAnswer(Report& report, const Capabilities& side, const Draft& draft, bool isAnswer);

/// Whether at least one stream came up. The floor control channel alone does not count.
bool AnythingNegotiated(const Report& report);

/// All notes of a report, those of a stream with its name in front: "audio: line 4, P18: ...".
std::vector<std::string> AllNotes(const Report& report);

/// "nothing was negotiated: audio: ...; main video: ...; presentation: ..."
std::string WhyNothing(const Report& report);

} // namespace cmsdp
