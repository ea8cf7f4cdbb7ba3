#include "Cost.h"

#include "Judged.h"
#include "Laws.h"

#include <cstdlib>
#include <new>
#include <string>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define FUZZ_ALLOCATOR_HOOKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define FUZZ_ALLOCATOR_HOOKS 1
#endif
#endif

namespace {

thread_local fuzz::Cost t_cost;

void Count(std::size_t size) noexcept {
    t_cost.bytes += size;
    ++t_cost.calls;
}

} // namespace

#ifdef FUZZ_ALLOCATOR_HOOKS

// The sanitizer's operators stay in place, so that it still reports mismatched new and delete.
// g++ provides the function but not its header.
#if __has_include(<sanitizer/allocator_interface.h>)
#include <sanitizer/allocator_interface.h>
#else
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onAllocate)(const volatile void*,
                                                                            std::size_t),
                                                         void (*onFree)(const volatile void*));
#endif

namespace {

void OnAllocate(const volatile void* /*block*/, std::size_t size) {
    Count(size);
}
void OnFree(const volatile void* /*block*/) {}

const int g_hooks = __sanitizer_install_malloc_and_free_hooks(OnAllocate, OnFree);

} // namespace

#else

void* operator new(std::size_t size) {
    Count(size);
    if (void* const block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

// The buffer of std::stable_sort comes from this form and goes to the usual operator delete.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    Count(size);
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
    std::free(block);
}

#endif

#ifdef FUZZ_COUNT_STEPS

// The linker redirects all calls of these functions to __wrap_NAME; __real_NAME is the original. The compiler
// inserts a call of the first one into each basic block of the component.
extern "C" {
void __wrap___sanitizer_cov_trace_pc_guard(std::uint32_t* guard);
void __wrap___sanitizer_cov_trace_pc_guard_init(std::uint32_t* start, std::uint32_t* stop);
const void* __real_memchr(const void* text, int c, std::size_t length);
const void* __wrap_memchr(const void* text, int c, std::size_t length);
int __real_memcmp(const void* a, const void* b, std::size_t length);
int __wrap_memcmp(const void* a, const void* b, std::size_t length);
void* __real___asan_memcpy(void* to, const void* from, std::size_t length);
void* __wrap___asan_memcpy(void* to, const void* from, std::size_t length);
void* __real___asan_memmove(void* to, const void* from, std::size_t length);
void* __wrap___asan_memmove(void* to, const void* from, std::size_t length);
}

void __wrap___sanitizer_cov_trace_pc_guard(std::uint32_t* /*guard*/) {
    ++t_cost.steps;
}

void __wrap___sanitizer_cov_trace_pc_guard_init(std::uint32_t* /*start*/, std::uint32_t* /*stop*/) {}

const void* __wrap_memchr(const void* text, int c, std::size_t length) {
    const void* const found = __real_memchr(text, c, length);
    // The search ends at the match; bytes after it are not read.
    const auto* const end = static_cast<const char*>(found);
    t_cost.steps +=
        (end == nullptr ? length : static_cast<std::size_t>(end - static_cast<const char*>(text))) / 8;
    return found;
}

int __wrap_memcmp(const void* a, const void* b, std::size_t length) {
    t_cost.steps += length / 8;
    return __real_memcmp(a, b, length);
}

void* __wrap___asan_memcpy(void* to, const void* from, std::size_t length) {
    t_cost.steps += length / 8;
    return __real___asan_memcpy(to, from, length);
}

void* __wrap___asan_memmove(void* to, const void* from, std::size_t length) {
    t_cost.steps += length / 8;
    return __real___asan_memmove(to, from, length);
}

#endif

namespace fuzz {

Meter::Meter() : m_begin(t_cost) {}

Cost Meter::Read() const {
    return {t_cost.bytes - m_begin.bytes, t_cost.calls - m_begin.calls, t_cost.steps - m_begin.steps};
}

void CheckCost(const Budget& budget, Cost cost, std::size_t length) {
    Judged("cost", cost);
    if (std::getenv("FUZZ_SHOW_COST") != nullptr) {
        std::fprintf(stderr, "cost %s: length %zu bytes %llu (%.1f per byte) steps %llu (%.1f per byte)\n",
                     budget.what, length, static_cast<unsigned long long>(cost.bytes),
                     static_cast<double>(cost.bytes) / static_cast<double>(length + 1),
                     static_cast<unsigned long long>(cost.steps),
                     static_cast<double>(cost.steps) / static_cast<double>(length + 1));
    }
    const std::uint64_t bytes = budget.bytes + budget.bytesPerByte * length;
    const std::uint64_t steps = budget.steps + budget.stepsPerByte * length;
    const std::string what = std::string(budget.what) + ", allowed ";
    Require(cost.bytes <= bytes, "allocations stay in their budget", std::to_string(cost.bytes),
            what + std::to_string(bytes));
    Require(cost.steps <= steps, "steps stay in their budget", std::to_string(cost.steps),
            what + std::to_string(steps));
}

} // namespace fuzz
