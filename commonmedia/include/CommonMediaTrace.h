// The trace sink of the code base.
//
// By default no sink is installed and nothing is formatted: a library does not print by itself.
//
//     static void Write(void* file, const char*, const char* function, int line, const char* text) {
//         std::fprintf(static_cast<FILE*>(file), "%s:%d %s\n", function, line, text);
//     }
//     static const CommonMediaTraceSink sink = {Write, stderr};
//     SetCommonMediaTraceSink(&sink);     // from here on every trace text reaches Write
//     SetCommonMediaTraceSink(nullptr);   // and from here on none
#pragma once

/// A receiver of trace texts.
struct CommonMediaTraceSink {
    /// Called once per trace, on the thread that traces. `text` is zero-terminated and lives until the call
    /// returns. The function must not throw and must be ready for calls from several threads at once when
    /// handlers run in several threads.
    void (*write)(void* context, const char* file, const char* function, int line, const char* text);
    /// Handed to `write` as it is; owned by whoever installed the sink.
    void* context;
};

/// Installs the sink of the whole process, or removes it (null). The caller keeps the record; it must stay
/// alive and unchanged until another sink is installed and every trace under way has returned. The swap is
/// one atomic store: a trace in another thread goes to the old sink or to the new one, never to a mixture.
void SetCommonMediaTraceSink(const CommonMediaTraceSink* sink) noexcept;

/// True while a sink is installed. Callers ask before they prepare a costly text.
bool CommonMediaTraceEnabled() noexcept;

#if defined(__GNUC__)
__attribute__((format(printf, 4, 5)))
#endif
/// Formats like printf and hands the text to the sink; without a sink it returns at once. `file`, `function`
/// and `line` name the place in the source. A text that cannot be formatted is dropped; nothing is thrown.
void CommonMediaTrace(const char* file, const char* function, int line, const char* format, ...);
