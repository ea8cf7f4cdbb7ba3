// Lets every allocation of a call fail in turn, once alone and once with all later ones.
//
//     Exhausted(work) runs the work with its first allocation failing, then with its second, and so on until
//     no allocation fails, and reports the problems and the number of allocations.
//
// Only std::bad_alloc may leave the calls, no block may be left allocated, and afterwards the handler must
// read and answer a good offer as a new one does.
#pragma once

#include <SDPHandler.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace oom {

/// The two sides of a call. They are created while allocations are counted.
struct Call {
    std::unique_ptr<SDPHandler> near;
    std::unique_ptr<SDPHandler> away;
    RemoteSDP atNear;
    RemoteSDP atAway;
    std::string written; ///< the last description written
};

/// The calls in which allocations fail.
struct Work {
    std::string name;
    /// Sets the call up while no allocation fails.
    std::function<void(Call&)> prepare;
    /// The part in which an allocation fails.
    std::function<void(Call&)> run;
};

/// The result of failing every allocation of one Work.
struct Report {
    std::size_t sites = 0; ///< number of allocations, each of which failed once
    std::string problems;  ///< empty if there were none
};

Report Exhausted(const Work& work);

/// Returns the number of allocations of `work` when none fails.
std::size_t CountSites(const Work& work);

/// A sink that reads every traced text to its end and counts the bytes.
class TraceReader {
public:
    TraceReader();
    ~TraceReader();
    TraceReader(const TraceReader&) = delete;
    TraceReader& operator=(const TraceReader&) = delete;
    static std::size_t bytes();
};

} // namespace oom
