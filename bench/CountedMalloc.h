// What malloc hands out, counted for the whole program, C libraries included.
//
// Linking CountedMalloc.cpp replaces malloc and its relatives. Programs that measure time or instructions are
// linked without it.
#pragma once

#include <cstddef>

namespace bench {

struct Allocated {
    std::size_t calls = 0; ///< allocations and reallocations
    std::size_t bytes = 0; ///< bytes asked for
    std::size_t live = 0;  ///< bytes held, as the allocator rounds them
    std::size_t peak = 0;  ///< the highest value of live
};

/// The state of the count.
extern Allocated allocated;

} // namespace bench
