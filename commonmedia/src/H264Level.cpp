// Stage: extract and build, an H.264 level and the last two digits of profile-level-id (RFC 6184, 8.1).
// Input: hexadecimal digits, or the name of a level. Output: the other of the two.
// Touches nothing.
// What is not in the table (SDPTables.h) becomes a level all the same, a different one in each direction.
// Test: tests/unit/H264LevelTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"

#include <cstdint>

std::string SDPHandler::ConvertVideoLevel(std::string_view strLevel) const {
    // [G13] The number is compared in 64 bits: narrowed, digits that do not fit an int would name a level.
    const std::uint64_t level = sdp::HexNumber(strLevel);
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        if (static_cast<std::uint64_t>(sdp::__iH264Profile[row]) == level) {
            return sdp::__H264Profile[row];
        }
    }
    // [X06] An unknown remote level reads 1.3, so that little is sent to an unknown decoder; an unknown local
    // name is written as level 2. The two differ on purpose.
    return "1.3";
}

std::string SDPHandler::ReverseConvertVideoLevel(const std::string& strLevel) const {
    const std::size_t row =
        sdp::FirstMatch<sdp::__H264Profile>([&](std::string_view name) { return name == strLevel; });
    return row == sdp::kH264Levels ? "14" : sdp::__strH264Profile2[row];
}
