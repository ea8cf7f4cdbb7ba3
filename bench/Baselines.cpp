#include "Baselines.h"

#include <cstring>
#include <vector>

namespace bench {

namespace {

// Calls `take` with the begin of each line and the LF that ends it.
template <typename Take>
void ForEachLine(const std::string& text, const Take& take) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        if (found == nullptr) {
            break;
        }
        const char* const newline = static_cast<const char*>(found);
        take(at, newline);
        at = newline + 1;
    }
}

} // namespace

std::size_t ReadLines(const std::string& text) {
    std::size_t lines = 0;
    ForEachLine(text, [&lines](const char* /*at*/, const char* /*newline*/) { ++lines; });
    return lines;
}

std::size_t ReadValues(const std::string& text) {
    std::vector<std::string> values;
    ForEachLine(text, [&values](const char* at, const char* newline) {
        if (newline - at > 3) {
            values.emplace_back(at + 2, newline - 1);
        }
    });
    return values.size();
}

} // namespace bench
