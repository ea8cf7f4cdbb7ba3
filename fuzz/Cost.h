// What a call costs: bytes that it asked the allocator for, and steps that it took.
//
// Allocations are counted in every build. Steps are counted in the fuzzer build only, where the compiler
// marks each basic block of the component and the linker sends its block copies and searches through
// counters: the number depends on the input alone, so a limit on it never fails by chance as a limit on time
// would.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

struct Cost {
    std::uint64_t bytes = 0; ///< asked of the allocator, freed or not
    std::uint64_t calls = 0; ///< calls of the allocator
    std::uint64_t steps =
        0; ///< basic blocks, and one per eight bytes copied or searched; 0 where not counted
};

/// Counts from its construction on.
class Meter {
public:
    Meter();
    Cost Read() const;

private:
    Cost m_begin;
};

/// What a call may cost: so much for the call itself, and so much for each byte of the text.
struct Budget {
    const char* what;
    std::uint64_t bytes;
    std::uint64_t bytesPerByte;
    std::uint64_t steps;
    std::uint64_t stepsPerByte;
};

void CheckCost(const Budget& budget, const Cost& cost, std::size_t length);

} // namespace fuzz
