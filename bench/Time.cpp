// Times every operation with Google Benchmark, which shows each as "WHAT/WHO". bench/time.py makes the table.
#include "Operations.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    for (const bench::Operation& operation : bench::AllOperations()) {
        benchmark::RegisterBenchmark((operation.what + "/" + operation.who).c_str(),
                                     [operation](benchmark::State& state) {
                                         const std::function<void()> run = operation.prepare();
                                         for (auto _ : state) {
                                             run();
                                             benchmark::ClobberMemory();
                                         }
                                     });
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
