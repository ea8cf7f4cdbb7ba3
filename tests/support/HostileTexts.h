// Texts that a hostile far end could send, one row each: a name and what makes the text. The laws, the search
// for the most costly text (bench/) and the tests of hostile input take them from here.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace support {

struct HostileText {
    std::string name;
    /// A text of about `size` bytes, the same for the same size. A short text is the same for every size.
    std::function<std::string(std::size_t size)> make;
};

/// Every class of text that has any size: framing, keywords, numbers, sections, formats, parameters, keys and
/// candidates.
const std::vector<HostileText>& HostileClasses();

/// Short texts, which the laws try with every combination of switches.
const std::vector<HostileText>& ShortHostileTexts();

} // namespace support
