// Stage: none; the trace sink of the code base.
// Input: printf-style traces. Output: one finished text per trace, handed to the sink.
// Without a sink nothing is formatted.
// Touches the one piece of state that handlers share: the pointer to the sink.
// Test: tests/unit/CommonMediaTraceTest.cpp
#include "CommonMediaTrace.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>

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
    // One load for the whole call: a sink that is removed meanwhile still gets a whole text.
    const CommonMediaTraceSink* const sink = g_sink.load(std::memory_order_acquire);
    if (sink == nullptr) {
        return;
    }
    std::va_list args;
    va_start(args, format);
    char* text = nullptr;
    const int length = vasprintf(&text, format, args);
    va_end(args);
    // A trace that cannot be formatted here is dropped. What a caller prepares for it, such as a dump, can
    // still run out of memory and end the call.
    if (length < 0) {
        return;
    }
    const std::unique_ptr<char, decltype(&std::free)> owned(text, &std::free);
    sink->write(sink->context, file, function, line, text);
}
