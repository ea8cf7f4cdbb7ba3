// The memory that a handler holds: idle, with one more of each unit that a text can contain, and after many
// rounds.
//
//     memory ROUNDS      status 1 when that many more rounds of parse and answer change the memory that was
//                        held after the first thousand
#include "CountedMalloc.h"
#include "Growth.h"
#include "Inputs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>

namespace {

std::size_t Held() {
    return bench::allocated.live;
}

constexpr std::size_t kIdleBudget = 1536;

bool ShowIdle() {
    const LocalSDP local = bench::Capabilities();
    const std::string text = bench::ReadInput('c');
    RemoteSDP remote;
    const std::size_t before = Held();
    auto handler = std::make_unique<SDPHandler>();
    const std::size_t idle = Held() - before;
    bench::Begin(*handler, local);
    const std::size_t ready = Held() - before;
    handler->ParseTheSDP(text, remote);
    const std::size_t parsed = Held() - before;
    handler->GetLocalSDP();
    handler->ResetRemoteSDP();
    const std::size_t after = Held() - before;
    std::printf("| a handler | bytes, heap included |\n|---|--:|\n");
    std::printf("| new | %zu |\n", idle);
    std::printf("| with its capabilities | %zu |\n", ready);
    std::printf("| with the sections of c (%zu bytes) | %zu |\n", text.size(), parsed);
    std::printf("| after the call, sections dropped | %zu |\n", after);
    return std::max({idle, ready, after}) <= kIdleBudget;
}

void ShowUnits() {
    std::printf("\n| one more | bytes of text | bytes held | allocations |\n|---|--:|--:|--:|\n");
    for (const bench::Growth& growth : bench::kGrowths) {
        // The difference of two sizes leaves out what is allocated once per text.
        constexpr std::size_t few = 1000;
        constexpr std::size_t many = 2000;
        double text[2];
        double held[2];
        double calls[2];
        for (const int i : {0, 1}) {
            const std::string grown = growth.make(i == 0 ? few : many);
            SDPHandler handler;
            RemoteSDP remote;
            const bench::Allocated before = bench::allocated;
            handler.ParseTheSDP(grown, remote);
            text[i] = static_cast<double>(grown.size());
            held[i] = static_cast<double>(Held() - before.live);
            calls[i] = static_cast<double>(bench::allocated.calls - before.calls);
        }
        constexpr double more = many - few;
        std::printf("| %s | %.0f | %.0f | %.1f |\n", growth.unit, (text[1] - text[0]) / more,
                    (held[1] - held[0]) / more, (calls[1] - calls[0]) / more);
    }
}

bool ShowRounds(long rounds) {
    SDPHandler handler;
    RemoteSDP remote;
    bench::Begin(handler, bench::Capabilities());
    const std::string text = bench::ReadInput('c');
    const auto run = [&](long times) {
        for (long i = 0; i < times; ++i) {
            handler.ParseTheSDP(text, remote);
            handler.GetLocalSDP();
        }
    };
    run(1000);
    const std::size_t held = Held();
    const std::size_t arena = mallinfo2().arena;
    bench::allocated.peak = held;
    run(rounds);
    const bool isFlat = Held() == held && mallinfo2().arena == arena;
    std::printf("\n| rounds of parse and answer | bytes held | heap of the process |\n|---|--:|--:|\n");
    std::printf("| 1,000 | %zu | %zu |\n| %ld more | %zu | %zu |\n", held, arena, rounds, Held(),
                mallinfo2().arena);
    std::printf("\nAbove what is held, a round needs %zu bytes.\n", bench::allocated.peak - held);
    return isFlat;
}

} // namespace

int main(int argc, char** argv) {
    const bool isSmall = ShowIdle();
    ShowUnits();
    const bool isFlat = ShowRounds(argc > 1 ? std::atol(argv[1]) : 1000000);
    return isSmall && isFlat ? 0 : 1;
}
