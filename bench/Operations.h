// The operations that are measured, each under the names that the tables show.
//
// An operation is prepared once and can then run any number of times; each run leaves what the next one
// needs.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

inline constexpr const char* kOurs = "commonmedia";

struct Operation {
    std::string what; ///< "parse c"
    std::string who;  ///< kOurs, or the name of the peer or floor that does the same
    std::function<std::function<void()>()> prepare;
};

/// What this library does: parse a to f, offer, answer to b, c and d, a whole life on c.
std::vector<Operation> Operations();

/// What the peers and the floors do on the same texts; none in a program that is linked without them.
std::vector<Operation> PeerOperations();

/// Both, ours first.
std::vector<Operation> AllOperations();

} // namespace bench
