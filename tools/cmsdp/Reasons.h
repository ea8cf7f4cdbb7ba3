// Why a stream did not come up, in words; empty when it did.
//
// Tests: tests/tool/reasons.cases
#pragma once

#include "Capabilities.h"
#include "Reading.h"

#include <string>

namespace cmsdp {

std::string WhyNoAudio(const Reading& reading, const Capabilities& side);
std::string WhyNoMainVideo(const Reading& reading, const Capabilities& side);
/// `answers`: this side has floor control, as far as the far end goes.
std::string WhyNoPresentation(const Reading& reading, const Capabilities& side, bool answers);
std::string WhyNoFloorControl(const Reading& reading, const Capabilities& side, bool answers);

/// Whether the record's video stream has a codec: the field says H.264 for every section, so its payload type
/// tells, and for payload type 0 the name of the format.
bool HasVideoCodec(const Reading& reading, VideoType_t role);

} // namespace cmsdp
