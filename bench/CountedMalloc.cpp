#include "CountedMalloc.h"

#include <algorithm>
#include <cerrno>
#include <malloc.h>

// The allocator of the C library under the names that it keeps for programs which replace the usual ones.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace bench {

Allocated allocated;

namespace {

void* Taken(void* block, std::size_t size) {
    if (block != nullptr) {
        ++allocated.calls;
        allocated.bytes += size;
        allocated.live += malloc_usable_size(block);
        allocated.peak = std::max(allocated.peak, allocated.live);
    }
    return block;
}

} // namespace

} // namespace bench

extern "C" {

void* malloc(std::size_t size) noexcept {
    return bench::Taken(__libc_malloc(size), size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return bench::Taken(__libc_calloc(count, size), count * size);
}

void* realloc(void* block, std::size_t size) noexcept {
    const std::size_t before = block == nullptr ? 0 : malloc_usable_size(block);
    void* const moved = __libc_realloc(block, size);
    if (moved != nullptr || size == 0) {
        bench::allocated.live -= before;
    }
    return bench::Taken(moved, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return bench::Taken(__libc_memalign(alignment, size), size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* const taken = memalign(alignment, size);
    if (taken == nullptr) {
        return ENOMEM;
    }
    *block = taken;
    return 0;
}

void free(void* block) noexcept {
    if (block != nullptr) {
        bench::allocated.live -= malloc_usable_size(block);
    }
    __libc_free(block);
}
}
