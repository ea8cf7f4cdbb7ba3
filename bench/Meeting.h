// What every text of the worst-case search goes through: read, extracted, answered, dropped.
#pragma once

#include "Inputs.h"

#include <CommonMediaTrace.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace bench {

/// A handler of the client, with or without a sink that looks at every trace.
class Meeting {
public:
    explicit Meeting(bool fTraced) {
        Begin(m_handler, Capabilities());
        SetCommonMediaTraceSink(fTraced ? &kSink : nullptr);
    }
    ~Meeting() { SetCommonMediaTraceSink(nullptr); }
    Meeting(const Meeting&) = delete;
    Meeting& operator=(const Meeting&) = delete;

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
