// The operations that are measured, each under the name that the tables show.
//
// An operation is prepared once and can then run any number of times; each run leaves what the next one
// needs.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Operation {
    std::string name;
    std::function<std::function<void()>()> prepare;
};

/// What this library does: parse a to f, offer, answer to b, c and d, a whole life on c.
const std::vector<Operation>& Operations();

} // namespace bench
