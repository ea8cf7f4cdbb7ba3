// What a stream's keys, or their absence, mean for the call.
//
// Tests: tests/tool/ReportTest.cpp
#pragma once

#include "Report.h"

namespace cmsdp {

/// Adds a note to `finding` when the far end and this side disagree about SRTP. `section` is the section the
/// stream was taken from, or null.
void NoteSecurity(Finding& finding, const baseSDP& record, baseSDP::SRTP_M_LINE stream,
                  const Capabilities& capabilities, const SeenSection* section);

} // namespace cmsdp
