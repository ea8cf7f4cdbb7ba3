// TraceKeeper keeps every trace while it lives. kNewSectionDump is the dump of a new section, for tests that
// state another one as its changes.
#pragma once

#include <CommonMediaTrace.h>

#include <string>
#include <vector>

namespace support {

struct Trace {
    std::string file;
    std::string function;
    int line = 0;
    std::string text;
};

class TraceKeeper {
public:
    TraceKeeper() { SetCommonMediaTraceSink(&m_sink); }
    ~TraceKeeper() { SetCommonMediaTraceSink(nullptr); }
    TraceKeeper(const TraceKeeper&) = delete;
    TraceKeeper& operator=(const TraceKeeper&) = delete;

    const std::vector<Trace>& Traces() const { return m_traces; }

    /// The texts of all traces in their order.
    std::string Text() const {
        std::string text;
        for (const Trace& trace : m_traces) {
            text += trace.text;
        }
        return text;
    }

private:
    static void Keep(void* context, const char* file, const char* function, int line, const char* text) {
        static_cast<TraceKeeper*>(context)->m_traces.push_back({file, function, line, text});
    }

    std::vector<Trace> m_traces;
    CommonMediaTraceSink m_sink = {Keep, this};
};

/// MediaSession().ToDiag().
inline const std::string kNewSectionDump = R"(eContent: 100
iPort: 0
strIPAddr: 
fRecv: true
fSend: true
strVideoLevel: 
strMaxBandwidth: 
iBfcpConfid: 0
iBfcpUserid: 0
strFloorctrl: 


)";

} // namespace support
