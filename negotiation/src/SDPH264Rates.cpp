// Stage: streams, level and limits to picture rates.
// Input: a level name and the limits that extend it. Output: the highest whole rate per picture size.
// Touches the pictures of a stream.
// Test: tests/negotiation/SDPStreamsTest.cpp
#include "SDPH264Rates.h"

#include "H264Level.h"

#include <algorithm>

namespace negotiation {
namespace {

struct Level {
    std::int32_t maxMbps; ///< macroblocks/s
    std::int32_t maxFs;   ///< macroblocks
};

// Table A-1, in the order of sdp::__H264Profile.
constexpr Level kLevels[sdp::kH264Levels] = {
    {1485, 99},      // 1
    {1485, 99},      // 1.b
    {3000, 396},     // 1.1
    {6000, 396},     // 1.2
    {11880, 396},    // 1.3
    {11880, 396},    // 2
    {19800, 792},    // 2.1
    {20250, 1620},   // 2.2
    {40500, 1620},   // 3
    {108000, 3600},  // 3.1
    {216000, 5120},  // 3.2
    {245760, 8192},  // 4
    {245760, 8192},  // 4.1
    {522240, 8704},  // 4.2
    {589824, 22080}, // 5
    {983040, 36864}, // 5.1
};

constexpr Level LevelNamed(std::string_view name) {
    Level level = kLevels[0];
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        if (name == sdp::__H264Profile[row]) {
            level = kLevels[row];
        }
    }
    return level;
}

} // namespace

void FillRates(SDPNegotiator::Stream& stream) {
    constexpr std::int32_t macroblock = 16;
    constexpr std::int32_t highestRate = 172; // A.3.1
    const Level level = LevelNamed(stream.level);
    // The extensions only ever raise a limit (RFC 6184, 8.1).
    const std::int32_t maxMbps = std::max(level.maxMbps, stream.maxMbps);
    const std::int32_t maxFs = std::max(level.maxFs, stream.maxFs);
    for (SDPNegotiator::Picture& picture : stream.pictures) {
        const std::int64_t width = (picture.width + macroblock - 1) / macroblock;
        const std::int64_t height = (picture.height + macroblock - 1) / macroblock;
        const std::int64_t area = width * height;
        // No side is longer than the root of eight times the frame size.
        const bool fits = area <= maxFs && width * width <= std::int64_t{8} * maxFs;
        picture.rate = fits ? static_cast<int>(std::min<std::int64_t>(maxMbps / area, highestRate)) : 0;
    }
}

} // namespace negotiation
