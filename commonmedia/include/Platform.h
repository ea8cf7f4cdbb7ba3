// The only platform function that the component needs: a tick count.
#pragma once

#include "RequireCxx17.h"

#include <cstdint>

/// Milliseconds of a monotonic clock, truncated to 32 bits: the count wraps after 49.7 days, which is
/// harmless because it only seeds the session id of the origin line (RFC 4566, 5.2).
std::uint32_t GetTickCount() noexcept;
