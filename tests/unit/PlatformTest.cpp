// The tick count: 32 bits of the steady clock in milliseconds. Nothing here waits for time to pass.
#include "Platform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <type_traits>

namespace {

std::uint32_t SteadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

TEST(Platform, TickCountHas32Bits) {
    static_assert(std::is_same_v<decltype(GetTickCount()), std::uint32_t>);
    static_assert(noexcept(GetTickCount()));
}

TEST(Platform, TickCountIsTheSteadyClockInMilliseconds) {
    const std::uint32_t before = SteadyMilliseconds();
    const std::uint32_t tick = GetTickCount();
    const std::uint32_t after = SteadyMilliseconds();
    // Differences, so that a wrap of the count between two readings does no harm.
    EXPECT_LE(tick - before, after - before);
}

TEST(Platform, TickCountNeverGoesBack) {
    std::uint32_t last = GetTickCount();
    for (int i = 0; i < 1000; ++i) {
        const std::uint32_t next = GetTickCount();
        EXPECT_LT(next - last, 0x80000000U);
        last = next;
    }
}

} // namespace
