// H.264 levels: name, number and the digits that profile-level-id ends in (RFC 6184, 8.1), row by row.
// Test: tests/unit/H264LevelTest.cpp
#pragma once

namespace sdp {

// [X05] Level 1b is 255 and "FF" in both directions. The code is private: RFC 6184 writes level 11 with
// constraint_set3, so only a far end of the same kind reads 1b here.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
inline constexpr int kH264Levels = 16;
inline constexpr char __H264Profile[kH264Levels][40] = {"1", "1.b", "1.1", "1.2", "1.3", "2",   "2.1", "2.2",
                                                        "3", "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};
inline constexpr int __iH264Profile[kH264Levels] = {10, 255, 11, 12, 13, 20, 21, 22,
                                                    30, 31,  32, 40, 41, 42, 50, 51};
inline constexpr char __strH264Profile2[kH264Levels][40] = {"0A", "FF", "0B", "0C", "0D", "14", "15", "16",
                                                            "1E", "1F", "20", "28", "29", "2A", "32", "33"};
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)

} // namespace sdp
