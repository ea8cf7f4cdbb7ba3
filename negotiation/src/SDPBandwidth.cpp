// Stage: streams, the bandwidth lines.
// Input: the far end's sections, and those that are taken. Output: bit/s in all.
// Touches nothing but the list of repairs.
// The component's own sum is not used: it leaves out the slides and the "b=AS:" of sections [X10].
// Test: tests/negotiation/SDPBandwidthTest.cpp
#include "SDPBandwidth.h"

#include <algorithm>
#include <limits>

namespace negotiation {
namespace {

constexpr std::int64_t kKilo = 1000;

/// bit/s of a block of lines; -1 for none. TIAS counts before AS, because it is exact (RFC 3890, 6.2).
/// @param isBits  asked when there is a TIAS line: whether it is in bit/s and not in kbit/s
template <typename IsBits>
std::int64_t BitsOf(Lines lines, IsBits isBits) {
    std::int64_t bits = -1;
    for (const Line& line : lines) {
        if (line.kind != LineKind::Bandwidth) {
            continue;
        }
        std::string_view value = line.value;
        const std::string_view type = TakePiece(value, ':');
        const std::int64_t number = NumberOrNone(Trim(value));
        if (number >= 0 && type == "TIAS") {
            return isBits() ? number : number * kKilo;
        }
        if (number >= 0 && type == "AS") {
            bits = number * kKilo;
        }
    }
    return bits;
}

} // namespace

std::int32_t BandwidthOf(const Description& description, const std::array<Taken, kRoles>& taken,
                         Repairs& repairs) {
    std::int64_t total =
        BitsOf(description.Session(), [&repairs] { return repairs.Use(RepairId::SessionTias); });
    const bool isOfSession = total >= 0;
    total = std::max<std::int64_t>(total, 0);
    for (const Role role : {kAudio, kMain, kSlides}) {
        if (isOfSession || taken[role].section == nullptr) {
            continue;
        }
        const std::int64_t bits = BitsOf(description.Of(*taken[role].section), [] { return true; });
        if (bits < 0) {
            return 0;
        }
        total += bits;
    }
    return static_cast<std::int32_t>(std::min<std::int64_t>(total, std::numeric_limits<std::int32_t>::max()));
}

} // namespace negotiation
