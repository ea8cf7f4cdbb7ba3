// The cost of a call: the bytes that it requested from the allocator, and the steps that it took.
//
// Allocations are counted in every build. Steps are counted in the fuzzer build only: the compiler marks each
// basic block of the libraries, and the linker redirects its copies and searches to counters. The number
// depends on the input alone, so a limit on it cannot fail by chance, as a limit on time could.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

struct Cost {
    std::uint64_t bytes = 0; ///< requested from the allocator, freed or not
    std::uint64_t calls = 0; ///< calls of the allocator
    std::uint64_t steps =
        0; ///< basic blocks, and one per eight bytes copied or searched; 0 where not counted
};

/// Measures the cost since its construction.
class Meter {
public:
    Meter();
    Cost Read() const;

private:
    Cost m_begin;
};

/// The highest cost of a call: a fixed part, and a part for each byte of the text.
struct Budget {
    const char* what;
    std::uint64_t bytes;
    std::uint64_t bytesPerByte;
    std::uint64_t steps;
    std::uint64_t stepsPerByte;
};

void CheckCost(const Budget& budget, Cost cost, std::size_t length);

} // namespace fuzz
