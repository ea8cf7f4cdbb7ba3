// The cost of one class of hostile texts at each size.
//
//     worst                              lists the classes
//     worst CLASS off|on SIZE...         runs a text of each size, trace off or on, and prints for each size:
//                                        label, bytes of the text, time as a multiple of a plain scan's
//     worst --files off|on FILE...       the same for the texts of files
//
// Under callgrind each run ends in a dump of its own, with the label of the printed line.
#include "HostileRun.h"
#include "HostileTexts.h"

#include <valgrind/callgrind.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Reads every byte once: the least that any reader of a text costs.
unsigned PlainScan(const std::string& text) {
    return std::accumulate(text.begin(), text.end(), 0U,
                           [](unsigned sum, char c) { return sum * 31 + static_cast<unsigned char>(c); });
}

/// Returns the shortest of three times, because the first run also pays for fetching new memory.
template <typename Work>
double BestTime(Work work) {
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        const Clock::time_point begin = Clock::now();
        work();
        best = std::min(best, Seconds(begin));
    }
    return best;
}

void Measure(bench::HostileRun& hostileRun, const std::string& label, const std::string& text) {
    double ratio = 0;
    if (RUNNING_ON_VALGRIND) {
        CALLGRIND_TOGGLE_COLLECT;
        hostileRun.Run(text);
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(label.c_str());
    } else {
        unsigned sum = 0;
        const double scan = BestTime([&] { sum += PlainScan(text); });
        ratio = BestTime([&] { hostileRun.Run(text); }) / scan;
        std::fprintf(stderr, "scan %u\n", sum); // Printed, so that the compiler cannot drop the scan.
    }
    std::printf("%s\t%zu\t%.2f\n", label.c_str(), text.size(), ratio);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        for (const bench::HostileClass& hostile : bench::HostileClasses()) {
            std::puts(hostile.name.c_str());
        }
        return 0;
    }
    bench::HostileRun hostileRun(std::strcmp(argv[2], "on") == 0);
    hostileRun.Run(bench::ReadInput('c'));
    CALLGRIND_START_INSTRUMENTATION;
    for (const bench::HostileClass& hostile : bench::HostileClasses()) {
        for (int i = 3; i < argc && hostile.name == argv[1]; ++i) {
            Measure(hostileRun, argv[i], hostile.make(std::strtoul(argv[i], nullptr, 10)));
        }
    }
    for (int i = 3; i < argc && std::strcmp(argv[1], "--files") == 0; ++i) {
        Measure(hostileRun, argv[i], bench::ReadFile(argv[i]));
    }
    return 0;
}
