// The least work that any reader of a text does, as baselines for the comparison.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// Finds the end of each line, and does nothing with it.
std::size_t ReadLines(const std::string& text);

/// Copies the text after the "=" of each line into a string of its own, keeps all strings, then frees them.
std::size_t ReadValues(const std::string& text);

struct Baseline {
    const char* name;
    std::size_t (*read)(const std::string& text);
};
inline constexpr Baseline kBaselines[] = {
    {"a memchr per line", ReadLines},
    {"a string per value", ReadValues},
};

} // namespace bench
