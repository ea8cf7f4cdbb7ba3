// Every form of operator new and delete, replaced for the whole program. Include this in exactly one source.
//
// A program that defines ALLOCATIONS_FILL first gets its blocks filled with that byte, so a test may read a
// whole block, its unused end included, without reading uninitialised memory.
#pragma once

#include "oom/Allocations.h"

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

namespace allocations {

inline void* TakeBlock(std::size_t size, std::size_t alignment) {
    if (counter.isCounting) {
        ++counter.calls;
        const bool isReached = counter.failAt != 0 && counter.calls >= counter.failAt;
        if (isReached && (counter.keepsFailing || counter.calls == counter.failAt)) {
            ++counter.failures;
            return nullptr;
        }
    }
    void* block = nullptr;
    if (alignment <= alignof(std::max_align_t)) {
        block = std::malloc(size == 0 ? 1 : size);
    } else if (posix_memalign(&block, alignment, size == 0 ? 1 : size) != 0) {
        block = nullptr;
    }
#ifdef ALLOCATIONS_FILL
    if (block != nullptr) {
        std::memset(block, ALLOCATIONS_FILL, malloc_usable_size(block));
    }
#endif
    if (counter.isCounting && block != nullptr) {
        ++counter.live;
        counter.bytes += size;
    }
    return block;
}

inline void* TakeOrThrow(std::size_t size, std::size_t alignment) {
    void* const block = TakeBlock(size, alignment);
    if (block == nullptr) {
        ++counter.thrown;
        throw std::bad_alloc();
    }
    return block;
}

inline void GiveBack(void* block) noexcept {
    if (block == nullptr) {
        return;
    }
    if (counter.isCounting) {
        --counter.live;
    }
    if (counter.beforeFree != nullptr) {
        counter.beforeFree(static_cast<const unsigned char*>(block), malloc_usable_size(block));
    }
    std::free(block);
}

inline constexpr std::size_t kUsual = alignof(std::max_align_t);

} // namespace allocations

void* operator new(std::size_t size) {
    return allocations::TakeOrThrow(size, allocations::kUsual);
}
void* operator new[](std::size_t size) {
    return allocations::TakeOrThrow(size, allocations::kUsual);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocations::TakeBlock(size, allocations::kUsual);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocations::TakeBlock(size, allocations::kUsual);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocations::TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocations::TakeOrThrow(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocations::TakeBlock(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return allocations::TakeBlock(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* block) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block) noexcept {
    allocations::GiveBack(block);
}
void operator delete(void* block, std::size_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    allocations::GiveBack(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept {
    allocations::GiveBack(block);
}
void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    allocations::GiveBack(block);
}
void operator delete[](void* block, std::align_val_t, const std::nothrow_t&) noexcept {
    allocations::GiveBack(block);
}
