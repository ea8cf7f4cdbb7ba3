// Stage: none; a seam to the platform.
// Input: the monotonic clock. Output: a 32-bit tick count.
// Touches nothing. The steady clock never goes back, so two handlers made one after the other never get
// their session ids in the wrong order within one wrap of the count.
// Test: tests/unit/PlatformTest.cpp
#include "Platform.h"

#include <chrono>

std::uint32_t GetTickCount() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    return static_cast<std::uint32_t>(ms);
}
