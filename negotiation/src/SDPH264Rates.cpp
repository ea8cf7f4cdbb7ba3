// Stage: streams, level and limits to picture rates.
// Input: a level name and the limits that extend it. Output: the highest whole rate per picture size.
// Touches the pictures of a stream.
// Test: tests/negotiation/SDPStreamsTest.cpp
#include "SDPH264Rates.h"

#include "SDPH264Limits.h"

#include <algorithm>

namespace negotiation {

void FillRates(SDPNegotiator::Stream& stream) {
    constexpr std::int32_t macroblock = 16;
    constexpr std::int32_t highestRate = 172; // A.3.1
    const H264Limits level = LimitsOfLevel(stream.level);
    // The extensions only ever raise a limit (RFC 6184, 8.1).
    const std::int32_t maxMbps = std::max(level.maxMbps, stream.maxMbps);
    const std::int32_t maxFs = std::max(level.maxFs, stream.maxFs);
    for (SDPNegotiator::Picture& picture : stream.pictures) {
        const std::int64_t width = (picture.width + macroblock - 1) / macroblock;
        const std::int64_t height = (picture.height + macroblock - 1) / macroblock;
        const std::int64_t area = width * height;
        // The other limit, on the longer side, excludes only pictures eight times as wide as high.
        picture.rate =
            area <= maxFs ? static_cast<int>(std::min<std::int64_t>(maxMbps / area, highestRate)) : 0;
    }
}

} // namespace negotiation
