// Texts that a hostile far end could send, each in any size, for the search for the most costly one.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct HostileClass {
    std::string name;
    /// A text of about `size` bytes, the same for the same size.
    std::function<std::string(std::size_t size)> make;
};

/// Every class: framing, keywords, numbers, sections, formats, parameters, keys and candidates.
const std::vector<HostileClass>& HostileClasses();

} // namespace bench
