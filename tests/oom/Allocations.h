// What the replaced operators new and delete of a test program count, and what they are told to do.
//
// ReplacedNew.h, included by one source of the program, defines the operators. Everything here belongs to the
// calling thread and applies only while a Scope stands, so that the test framework's own allocations are
// neither counted nor failed.
//
//     allocations::Scope scope;
//     allocations::FailFrom(7);            // the seventh allocation from here throws, and every later one
//     handler.ParseTheSDP(text, remote);   // throws std::bad_alloc, or used fewer than seven
//     allocations::Relent();
//     scope.live();                        // blocks allocated and not yet freed
#pragma once

#include <cstddef>

namespace allocations {

/// What one thread's operators count.
struct Ledger {
    bool isCounting = false;
    long long live = 0;        ///< blocks allocated minus blocks freed
    std::size_t calls = 0;     ///< allocations asked for, failed ones included
    std::size_t bytes = 0;     ///< bytes handed out
    std::size_t failAt = 0;    ///< the call that fails, counted from one; 0 means none
    bool keepsFailing = false; ///< every later call fails as well
    std::size_t failures = 0;  ///< allocations that failed
    std::size_t thrown = 0;    ///< those of them that threw; the others returned null to who asked for that
    /// Sees each block while it still holds what its owner left in it; null for nobody.
    void (*beforeFree)(const unsigned char* block, std::size_t size) = nullptr;
};

inline thread_local Ledger ledger;

/// Counts from zero while it stands; scopes may stand inside one another.
class Scope {
public:
    Scope() : m_outer(ledger) {
        ledger = Ledger();
        ledger.beforeFree = m_outer.beforeFree;
        ledger.isCounting = true;
    }
    ~Scope() { ledger = m_outer; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    long long live() const { return ledger.live; }
    std::size_t calls() const { return ledger.calls; }
    std::size_t bytes() const { return ledger.bytes; }
    std::size_t failures() const { return ledger.failures; }
    std::size_t thrown() const { return ledger.thrown; }

private:
    Ledger m_outer;
};

/// Lets the n-th allocation from here fail, once.
inline void FailOnce(std::size_t n) {
    ledger.failAt = ledger.calls + n;
    ledger.keepsFailing = false;
}

/// Lets the n-th allocation from here fail, and every one behind it.
inline void FailFrom(std::size_t n) {
    ledger.failAt = ledger.calls + n;
    ledger.keepsFailing = true;
}

/// Memory is back.
inline void Relent() {
    ledger.failAt = 0;
    ledger.keepsFailing = false;
}

} // namespace allocations
