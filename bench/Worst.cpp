// The cost of one class of hostile texts at each size.
//
//     worst                              lists the classes
//     worst CLASS MODE SIZE...           runs a text of each size and prints for each size:
//                                        label, bytes of the text, time as a multiple of a plain scan's
//     worst --files MODE FILE...         the same for the texts of files
//
// MODE: off or on, a handler with the trace off or on; layer, a negotiator; judge, the judge.
//
// Under callgrind each run ends in a dump of its own, with the label of the printed line.
#include "HostileRun.h"
#include "HostileTexts.h"
#include "LayerRun.h"

#include <valgrind/callgrind.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
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

using Run = std::function<std::size_t(const std::string& text)>;

/// What a mode measures; the handler lives as long as the function.
Run RunOf(const std::string& mode) {
    if (mode == "layer" || mode == "judge") {
        return mode == "layer" ? bench::RunLayer : bench::RunJudge;
    }
    const auto handler = std::make_shared<bench::HostileRun>(mode == "on");
    return [handler](const std::string& text) { return handler->Run(text); };
}

void Measure(const Run& run, const std::string& label, const std::string& text) {
    double ratio = 0;
    if (RUNNING_ON_VALGRIND) {
        CALLGRIND_TOGGLE_COLLECT;
        run(text);
        CALLGRIND_TOGGLE_COLLECT;
        CALLGRIND_DUMP_STATS_AT(label.c_str());
    } else {
        unsigned sum = 0;
        const double scan = BestTime([&] { sum += PlainScan(text); });
        ratio = BestTime([&] { run(text); }) / scan;
        std::fprintf(stderr, "scan %u\n", sum); // Printed, so that the compiler cannot drop the scan.
    }
    std::printf("%s\t%zu\t%.2f\n", label.c_str(), text.size(), ratio);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        for (const support::HostileText& hostile : support::HostileClasses()) {
            std::puts(hostile.name.c_str());
        }
        return 0;
    }
    const Run run = RunOf(argv[2]);
    run(bench::ReadInput('c'));
    CALLGRIND_START_INSTRUMENTATION;
    for (const support::HostileText& hostile : support::HostileClasses()) {
        for (int i = 3; i < argc && hostile.name == argv[1]; ++i) {
            Measure(run, argv[i], hostile.make(std::strtoul(argv[i], nullptr, 10)));
        }
    }
    for (int i = 3; i < argc && std::strcmp(argv[1], "--files") == 0; ++i) {
        Measure(run, argv[i], bench::ReadFile(argv[i]));
    }
    return 0;
}
