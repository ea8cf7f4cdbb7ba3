// The measured run over a hostile text: read it, extract the record, write the answer, free the sections.
#pragma once

#include "Inputs.h"

#include <CommonMediaTrace.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace bench {

/// A handler with everything switched on, with or without a trace sink that reads every trace.
class HostileRun {
public:
    explicit HostileRun(bool isTraced) {
        Begin(m_handler, Capabilities());
        SetCommonMediaTraceSink(isTraced ? &kSink : nullptr);
    }
    ~HostileRun() { SetCommonMediaTraceSink(nullptr); }
    HostileRun(const HostileRun&) = delete;
    HostileRun& operator=(const HostileRun&) = delete;

    /// Returns the length of the answer.
    std::size_t Run(const std::string& text) {
        m_handler.ParseTheSDP(text, m_remote);
        const std::size_t length = m_handler.GetLocalSDP().size();
        m_handler.ResetRemoteSDP();
        return length;
    }

private:
    static void Look(void* seen, const char*, const char*, int, const char* text) {
        *static_cast<std::size_t*>(seen) += std::strlen(text);
    }

    static inline std::size_t seen = 0;
    static inline const CommonMediaTraceSink kSink = {Look, &seen};

    SDPHandler m_handler;
    RemoteSDP m_remote;
};

} // namespace bench
