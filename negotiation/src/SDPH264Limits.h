// The limits of each H.264 level (Table A-1 of the H.264 standard).
//
// A limit that a format parameter gives extends the one of the level and never lowers it (RFC 6184, 8.1).
// Test: tests/negotiation/SDPStreamsTest.cpp
#pragma once

#include "SDPTables.h"

#include <cstdint>
#include <string_view>

namespace negotiation {

struct H264Limits {
    std::int32_t maxMbps; ///< macroblocks/s
    std::int32_t maxFs;   ///< macroblocks
    std::int32_t maxBr;   ///< 1000 bit/s of VCL NAL units
};

/// In the order of sdp::__H264Profile.
inline constexpr H264Limits kH264Limits[sdp::kH264Levels] = {
    {1485, 99, 64},          // 1
    {1485, 99, 128},         // 1.b
    {3000, 396, 192},        // 1.1
    {6000, 396, 384},        // 1.2
    {11880, 396, 768},       // 1.3
    {11880, 396, 2000},      // 2
    {19800, 792, 4000},      // 2.1
    {20250, 1620, 4000},     // 2.2
    {40500, 1620, 10000},    // 3
    {108000, 3600, 14000},   // 3.1
    {216000, 5120, 20000},   // 3.2
    {245760, 8192, 20000},   // 4
    {245760, 8192, 50000},   // 4.1
    {522240, 8704, 50000},   // 4.2
    {589824, 22080, 135000}, // 5
    {983040, 36864, 240000}, // 5.1
};

/// Those of level 1 for a name that is not in the table.
constexpr H264Limits LimitsOfLevel(std::string_view name) {
    H264Limits limits = kH264Limits[0];
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        if (name == sdp::__H264Profile[row]) {
            limits = kH264Limits[row];
        }
    }
    return limits;
}

} // namespace negotiation
