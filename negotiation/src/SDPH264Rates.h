// What an H.264 level and its extensions mean for picture sizes (ITU-T H.264, annex A).
//
// Test: tests/negotiation/SDPStreamsTest.cpp
#pragma once

#include "SDPNegotiator.h"

namespace negotiation {

/// Fills the rates of stream.pictures from its level, maxMbps and maxFs.
void FillRates(SDPNegotiator::Stream& stream);

} // namespace negotiation
