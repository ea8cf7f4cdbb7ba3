// The least that any reader of a text does, as marks to measure against.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// Finds the end of each line, and does nothing with it.
std::size_t ReadLines(const std::string& text);

/// Copies what stands behind the "=" of each line into a text of its own, keeps all of them, frees them.
std::size_t ReadValues(const std::string& text);

struct Floor {
    const char* name;
    std::size_t (*read)(const std::string& text);
};
inline constexpr Floor kFloors[] = {
    {"a memchr per line", ReadLines},
    {"a string per value", ReadValues},
};

} // namespace bench
