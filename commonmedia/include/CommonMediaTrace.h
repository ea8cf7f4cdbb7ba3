// The trace sink of the process.
//
// By default no sink is installed and nothing is formatted: a library does not print by itself.
//
//     static void Write(void* file, const char*, const char* function, int line, const char* text) {
//         std::fprintf(static_cast<FILE*>(file), "%s:%d %s\n", function, line, text);
//     }
//     static const CommonMediaTraceSink sink = {Write, stderr};
//     SetCommonMediaTraceSink(&sink);     // now Write receives every trace text
//     SetCommonMediaTraceSink(nullptr);   // removes the sink
#pragma once

#include "CommonMediaExport.h"
#include "RequireCxx17.h"

/// A receiver of trace texts.
struct CommonMediaTraceSink {
    /// Called once per trace, on the thread that traces. `text` is zero-terminated and valid until the call
    /// returns. The function must not throw and must allow calls from several threads at once when handlers
    /// run in several threads.
    void (*write)(void* context, const char* file, const char* function, int line, const char* text);
    /// Passed to `write` unchanged; owned by whoever installed the sink.
    void* context;
};

/// Installs the sink of the whole process, or removes it (null). The caller owns the record, which must stay
/// alive and unchanged until another sink is installed and every call of CommonMediaTrace that was running
/// has returned. The change is one atomic store: a trace of another thread goes to the old sink or to the new
/// one.
COMMONMEDIA_EXPORT void SetCommonMediaTraceSink(const CommonMediaTraceSink* sink) noexcept;

/// True while a sink is installed. Callers check it before they prepare a costly text.
COMMONMEDIA_EXPORT bool CommonMediaTraceEnabled() noexcept;

#if defined(__GNUC__)
__attribute__((format(printf, 4, 5)))
#endif
/// Formats like printf, masks SRTP keys and passes the text to the sink; without a sink it returns at once.
/// Whatever follows "inline:", in any letter case and up to the next blank, is replaced by "***" (RFC 4568, 8
/// relies on keys being secret, and traces are passed on). `file`, `function` and `line` name the place in
/// the source. A text that cannot be formatted is dropped. Throws nothing but std::bad_alloc.
COMMONMEDIA_EXPORT void
CommonMediaTrace(const char* file, const char* function, int line, const char* format, ...);
