// Stage: none; the platform's clock.
// Input: the monotonic clock. Output: a 32-bit tick count.
// Touches nothing.
// The clock never goes back: until the count wraps, no handler has a lower session id than an earlier one.
// Test: tests/unit/PlatformTest.cpp
#include "Platform.h"

#if !defined(_WIN32) // there the system has a function of this name

#include <chrono>

std::uint32_t GetTickCount() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    return static_cast<std::uint32_t>(ms);
}

#endif
