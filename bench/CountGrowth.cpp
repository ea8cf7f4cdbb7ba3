// Runs parse, extraction and release of growing texts under callgrind, one dump per text, labelled "unit,
// count".
#include "Growth.h"
#include "Inputs.h"

#include <valgrind/callgrind.h>

int main() {
    SDPHandler handler;
    RemoteSDP remote;
    bench::Begin(handler, bench::Capabilities());
    CALLGRIND_START_INSTRUMENTATION;
    for (const bench::Growth& growth : bench::kGrowths) {
        for (const std::size_t count : bench::kCounts) {
            const std::string text = growth.make(count);
            const std::string label = std::string(growth.unit) + ", " + std::to_string(count);
            handler.ParseTheSDP(text, remote);
            handler.ResetRemoteSDP();
            CALLGRIND_TOGGLE_COLLECT;
            handler.ParseTheSDP(text, remote);
            handler.ResetRemoteSDP();
            CALLGRIND_TOGGLE_COLLECT;
            CALLGRIND_DUMP_STATS_AT(label.c_str());
        }
    }
    return 0;
}
