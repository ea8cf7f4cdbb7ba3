// The memory that each class of hostile texts takes, one line per class, mode and size:
// class, trace off or on, bytes of the text, bytes allocated, peak of the bytes held.
//
//     worst_memory SIZE...
#include "CountedMalloc.h"
#include "HostileRun.h"
#include "HostileTexts.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    for (const char* const trace : {"off", "on"}) {
        bench::HostileRun hostileRun(std::string(trace) == "on");
        hostileRun.Run(bench::ReadInput('c'));
        for (const support::HostileText& hostile : support::HostileClasses()) {
            for (int i = 1; i < argc; ++i) {
                const std::string text = hostile.make(std::strtoul(argv[i], nullptr, 10));
                const bench::Allocated before = bench::allocated;
                bench::allocated.peak = before.live;
                hostileRun.Run(text);
                std::printf("%s\t%s\t%zu\t%zu\t%zu\n", hostile.name.c_str(), trace, text.size(),
                            bench::allocated.bytes - before.bytes, bench::allocated.peak - before.live);
            }
        }
    }
    return 0;
}
