// The operations that are measured, each under the names that the tables show.
//
// An operation is prepared once and can then run any number of times.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

inline constexpr const char* kOurs = "commonmedia";

struct Operation {
    std::string what; ///< "parse c"
    std::string who;  ///< kOurs, or the name of the peer or baseline that does the same
    std::function<std::function<void()>()> prepare;
};

/// The operations of this library: parse a to f, offer, answer to b, c and d, and a whole call with c.
std::vector<Operation> Operations();

/// The operations of the peers and baselines on the same texts; none in a program that is linked without
/// them.
std::vector<Operation> PeerOperations();

/// Both, ours first.
std::vector<Operation> AllOperations();

} // namespace bench
