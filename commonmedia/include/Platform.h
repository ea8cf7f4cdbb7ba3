// The only platform function that the component needs: a tick count.
#pragma once

#include "CommonMediaExport.h"

#include <cstdint>

#if defined(_WIN32)
/// Declared here as <windows.h> declares it, so that both can be included; the system library has it.
extern "C" __declspec(dllimport) unsigned long __stdcall GetTickCount();
#else
/// Milliseconds of a monotonic clock, truncated to 32 bits: the count wraps after 49.7 days, which is
/// harmless because it only seeds the session id of the origin line (RFC 4566, 5.2).
COMMONMEDIA_EXPORT std::uint32_t GetTickCount() noexcept;
#endif
