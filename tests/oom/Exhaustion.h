// Every allocation of a piece of work fails in turn, once and from then on.
//
//     Exhausted(work) runs the work with its first allocation failing, then with its second, and so on until
//     nothing fails any more, and reports what went wrong and how many allocations there were to fail.
//
// std::bad_alloc is the only thing that may come out, nothing may be left allocated, and with memory back the
// handler must read and answer a good offer as a fresh one does.
#pragma once

#include <SDPHandler.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace oom {

/// The two sides of a call. Handlers and records live where their allocations are counted.
struct Call {
    std::unique_ptr<SDPHandler> near;
    std::unique_ptr<SDPHandler> away;
    RemoteSDP atNear;
    RemoteSDP atAway;
    std::string written; ///< what was written last
};

/// Something that a call goes through.
struct Work {
    std::string name;
    /// Sets the call up, with memory at hand.
    std::function<void(Call&)> prepare;
    /// What is interrupted.
    std::function<void(Call&)> run;
};

/// What came of failing every allocation of a piece of work.
struct Report {
    std::size_t sites = 0; ///< allocations that failed once each
    std::string problems;  ///< empty: none
};

Report Exhausted(const Work& work);

/// How many allocations a piece of work makes when none fails.
std::size_t CountSites(const Work& work);

/// Counts the traces that reach it while it stands; what it is handed is read to its end.
class TraceReader {
public:
    TraceReader();
    ~TraceReader();
    TraceReader(const TraceReader&) = delete;
    TraceReader& operator=(const TraceReader&) = delete;
    static std::size_t bytes();
};

} // namespace oom
