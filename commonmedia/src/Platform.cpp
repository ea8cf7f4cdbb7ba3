// Stage: none; the platform's clock.
// Input: the monotonic clock. Output: a 32-bit tick count.
// Touches nothing.
// The steady clock never goes back, so a handler never gets a lower session id than an earlier one, until the
// count wraps.
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
