// Line numbers of a text that is cleaned.
//
// Tests: tests/tool/DraftTest.cpp
#include "Draft.h"

#include <algorithm>
#include <numeric>

namespace cmsdp {

Draft Draft::Of(std::string text) {
    Draft draft;
    const auto feeds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    draft.numbers.resize(feeds + (text.empty() || text.back() == '\n' ? 0 : 1));
    std::iota(draft.numbers.begin(), draft.numbers.end(), 1U);
    draft.text = std::move(text);
    return draft;
}

void Draft::Add(std::string_view line, std::string_view end, std::uint32_t number) {
    if (!line.empty() || !end.empty()) {
        text.append(line).append(end);
        numbers.push_back(number);
    }
}

std::uint32_t Draft::NumberAt(std::size_t offset) const {
    const auto stop = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
    const auto line = static_cast<std::size_t>(std::count(text.begin(), stop, '\n'));
    return line < numbers.size() ? numbers[line] : 0;
}

} // namespace cmsdp
