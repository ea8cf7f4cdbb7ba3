// Collects the texts that the component traces. The sink is removed when the object is destroyed.
#pragma once

#include <CommonMediaTrace.h>

#include <string>

namespace fuzz {

class Trace {
public:
    /// @param isInstalled  whether a sink is installed
    explicit Trace(bool isInstalled) {
        if (isInstalled) {
            SetCommonMediaTraceSink(&m_sink);
        }
    }
    ~Trace() { SetCommonMediaTraceSink(nullptr); }
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    /// Every text traced so far.
    const std::string& Text() const { return m_text; }

private:
    static void Write(void* context, const char* file, const char* function, int line, const char* text) {
        std::string& all = static_cast<Trace*>(context)->m_text;
        all.append(file).append(":").append(std::to_string(line)).append(" ").append(function).append(" ");
        all.append(text);
    }

    std::string m_text;
    const CommonMediaTraceSink m_sink = {Write, this};
};

} // namespace fuzz
