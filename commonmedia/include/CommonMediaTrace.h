// The trace sink of the process. By default none is installed, and nothing is formatted.
//
//     static void Write(void* file, const char*, const char* function, int line, const char* text) {
//         std::fprintf(static_cast<FILE*>(file), "%s:%d %s\n", function, line, text);
//     }
//     static const CommonMediaTraceSink sink = {Write, stderr};
//     SetCommonMediaTraceSink(&sink);     // now Write receives every trace text
//     SetCommonMediaTraceSink(nullptr);   // removes the sink
#pragma once

#include "CommonMediaExport.h"

/// A receiver of trace texts.
struct CommonMediaTraceSink {
    /// Called once per trace, on the thread that traces; handlers on several threads call it at the same
    /// time. It must not throw. `text` is zero-terminated and valid until the call returns.
    void (*write)(void* context, const char* file, const char* function, int line, const char* text);
    /// Passed to `write` unchanged; owned by whoever installed the sink.
    void* context;
};

/// Installs the sink of the whole process, or removes it (null), by one atomic store. The caller owns the
/// record, which must stay alive and unchanged until another sink is installed and every call of
/// CommonMediaTrace that was running has returned.
COMMONMEDIA_EXPORT void SetCommonMediaTraceSink(const CommonMediaTraceSink* sink) noexcept;

/// True while a sink is installed. Callers check it before they prepare a costly text.
COMMONMEDIA_EXPORT bool CommonMediaTraceEnabled() noexcept;

#if defined(__GNUC__)
__attribute__((format(printf, 4, 5)))
#endif
/// Formats like printf, masks SRTP keys and passes the text to the sink; without a sink it returns at once.
/// Whatever follows "inline:", in any letter case and up to the next blank, is replaced by "***": RFC 4568, 8
/// relies on keys being secret. `file`, `function` and `line` name the place in the source. A text that
/// cannot be formatted is dropped. Throws nothing but std::bad_alloc.
COMMONMEDIA_EXPORT void
CommonMediaTrace(const char* file, const char* function, int line, const char* format, ...);
