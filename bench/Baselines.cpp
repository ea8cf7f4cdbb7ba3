#include "Baselines.h"

#include <cstring>
#include <vector>

namespace bench {

std::size_t ReadLines(const std::string& text) {
    std::size_t lines = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        if (found == nullptr) {
            break;
        }
        ++lines;
        at = static_cast<const char*>(found) + 1;
    }
    return lines;
}

std::size_t ReadValues(const std::string& text) {
    std::vector<std::string> values;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        if (found == nullptr) {
            break;
        }
        const char* const newline = static_cast<const char*>(found);
        if (newline - at > 3) {
            values.emplace_back(at + 2, newline - 1);
        }
        at = newline + 1;
    }
    return values.size();
}

} // namespace bench
