// Stage: none; the trace sink of the code base.
// Input: printf-style traces. Output: one text per trace, its SRTP keys masked, passed to the sink.
// Without a sink nothing is formatted.
// Touches the only state that handlers share: the pointer to the sink.
// Test: tests/unit/CommonMediaTraceTest.cpp
#include "CommonMediaTrace.h"

#include "SDPSecrecy.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>

namespace {

std::atomic<const CommonMediaTraceSink*> g_sink{nullptr};

} // namespace

void SetCommonMediaTraceSink(const CommonMediaTraceSink* sink) noexcept {
    g_sink.store(sink, std::memory_order_release);
}

bool CommonMediaTraceEnabled() noexcept {
    return g_sink.load(std::memory_order_acquire) != nullptr;
}

void CommonMediaTrace(const char* file, const char* function, int line, const char* format, ...) {
    // Loaded once for the whole call: a sink that is removed meanwhile still gets a whole text.
    const CommonMediaTraceSink* const sink = g_sink.load(std::memory_order_acquire);
    if (sink == nullptr) {
        return;
    }
    std::va_list args;
    va_start(args, format);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    if (length < 0) {
        return;
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    va_start(args, format);
    std::vsnprintf(&text[0], text.size() + 1, format, args);
    va_end(args);
    sink->write(sink->context, file, function, line, sdp::Masked(std::move(text)).c_str());
}
