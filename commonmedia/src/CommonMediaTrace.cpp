// Stage: none; the trace sink of the code base.
// Input: printf-style traces. Output: one finished text per trace, handed to the sink.
// Touches the one piece of state that handlers share: the pointer to the sink.
// Test: tests/unit/CommonMediaTraceTest.cpp
#include "CommonMediaTrace.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>

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
    std::va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text;
    try {
        text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    } catch (...) {
        va_end(again);
        throw;
    }
    // The terminator lands on the string's own, which is allowed to be overwritten with zero.
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    sink->write(sink->context, file, function, line, text.c_str());
}
