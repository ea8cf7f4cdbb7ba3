// Counts the allocations of a test program and lets chosen ones fail.
//
// ReplacedNew.h, included by one source of the program, defines the operators. Everything here belongs to the
// calling thread and applies only while a Scope exists, so the allocations of the test framework are neither
// counted nor failed.
//
//     allocations::Scope scope;
//     allocations::FailFrom(7);            // the seventh allocation from here throws, and every later one
//     handler.ParseTheSDP(text, remote);   // throws std::bad_alloc, or needs fewer than seven
//     allocations::StopFailing();
//     scope.live();                        // blocks allocated and not yet freed
#pragma once

#include <cstddef>

namespace allocations {

/// The counts and settings of one thread.
struct Counter {
    bool isCounting = false;
    long long live = 0;        ///< blocks allocated minus blocks freed
    std::size_t calls = 0;     ///< allocations requested, failed ones included
    std::size_t bytes = 0;     ///< bytes allocated
    std::size_t failAt = 0;    ///< the call that fails, counted from one; 0 means none
    bool keepsFailing = false; ///< every later call fails as well
    std::size_t failures = 0;  ///< allocations that failed
    std::size_t thrown = 0;    ///< failed allocations that threw; the nothrow forms return null instead
    /// Called with each block before it is freed; may be null.
    void (*beforeFree)(const unsigned char* block, std::size_t size) = nullptr;
};

inline thread_local Counter counter;

/// Counts from zero while it exists. Scopes may be nested.
class Scope {
public:
    Scope() : m_outer(counter) {
        counter = Counter();
        counter.beforeFree = m_outer.beforeFree;
        counter.isCounting = true;
    }
    ~Scope() { counter = m_outer; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    long long live() const { return counter.live; }
    std::size_t calls() const { return counter.calls; }
    std::size_t bytes() const { return counter.bytes; }
    std::size_t failures() const { return counter.failures; }
    std::size_t thrown() const { return counter.thrown; }

private:
    Counter m_outer;
};

/// Lets the n-th allocation from now on fail, once.
inline void FailOnce(std::size_t n) {
    counter.failAt = counter.calls + n;
    counter.keepsFailing = false;
}

/// Lets the n-th allocation from now on fail, and every later one.
inline void FailFrom(std::size_t n) {
    counter.failAt = counter.calls + n;
    counter.keepsFailing = true;
}

/// Lets no allocation fail any more.
inline void StopFailing() {
    counter.failAt = 0;
    counter.keepsFailing = false;
}

} // namespace allocations
