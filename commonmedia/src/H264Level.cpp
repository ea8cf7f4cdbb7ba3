// Stage: extract and build; H.264 levels by name and by the digits of profile-level-id (RFC 6184, 8.1).
// Input: hexadecimal digits or a level name. Output: the other of the two.
// Touches nothing.
// What is not in the table becomes a level all the same, a different one in each direction.
// Test: tests/unit/H264LevelTest.cpp
#include "H264Level.h"

#include "SDPHandler.h"
#include "SDPKeyword.h"
#include "SDPText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

struct Level {
    std::string_view name;
    std::string_view digits;
};
using Levels = std::array<Level, sdp::kH264Levels>;

constexpr Levels LevelsByName() {
    Levels levels{};
    for (std::size_t row = 0; row < levels.size(); ++row) {
        levels[row] = {sdp::__H264Profile[row], sdp::__strH264Profile2[row]};
    }
    return levels;
}
constexpr Levels kLevels = LevelsByName();

} // namespace

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
    const Level* const level = sdp::FindNamed<kLevels>(strLevel);
    return std::string(level == nullptr ? "14" : level->digits);
}
