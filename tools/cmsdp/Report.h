// What came out of reading a remote description, stream by stream, and why what did not come up did not.
//
// Tests: tests/tool/ReportTest.cpp
#pragma once

#include "Capabilities.h"
#include "RemoteLook.h"
#include "SDP.h"

#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// The verdict on one stream, or on the floor control channel.
///
/// A stream is negotiated when the record holds its section with a port other than 0 and a codec, and this
/// side writes such a section too. A stream on hold ("a=inactive") is negotiated; one declined by port 0 is
/// not. The channel is negotiated when both sides have it with a port other than 0.
struct Finding {
    bool negotiated = false;
    std::string why;                ///< when not negotiated
    std::vector<std::string> notes; ///< what else is worth knowing
};

struct Report {
    RemoteSDP record;
    bool answersFloorControl = false; ///< this side has floor control, as far as the far end goes
    Finding audio;
    Finding mainVideo;
    Finding presentation;
    Finding floorControl;
    std::vector<std::string> inputNotes; ///< what was done to the input before it was read
    std::vector<std::string> notes;      ///< about the text as a whole
};

/// Reads `text` with `handler`, which was prepared from `capabilities`.
Report ReadInto(SDPHandler& handler, const Capabilities& capabilities, const std::string& text);

/// Whether at least one stream came up. The floor control channel alone does not count.
bool AnythingNegotiated(const Report& report);

/// "nothing was negotiated: audio: ...; main video: ...; presentation: ..."
std::string WhyNothing(const Report& report);

/// Whether the record's video stream has a codec: its payload number tells, the codec field never does.
bool HasVideoCodec(const VideoParms& video);

} // namespace cmsdp
