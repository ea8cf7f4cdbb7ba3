// What is left of a text, of a place in it and of a sentence when lines are edited, as the laws of
// explanations count it, and not as the explanation that they judge does. Tests: LawTest.cpp,
// fuzz/FuzzExplain.cpp.
#pragma once

#include <SDPExplain.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace cure {

/// The text without the lines for which `isGone` holds, line ends included.
template <typename Gone>
std::string Without(const ExplainInput& input, const std::vector<ExplainedLine>& lines, Gone isGone) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t end = i + 1 < lines.size() ? lines[i + 1].offset : input.remote.size();
        if (!isGone(lines[i])) {
            text += input.remote.substr(lines[i].offset, end - lines[i].offset);
        }
    }
    return text;
}

/// The offset that a byte of the text has in the edited text: the length of what the edit makes of the bytes
/// before it. Changes are in ascending order and made from the last to the first, so that offsets stay valid.
inline std::size_t Moved(const ExplainCure& cure, std::size_t offset) {
    std::string before(offset, ' ');
    for (auto change = cure.text.rbegin(); change != cure.text.rend(); ++change) {
        if (change->offset < offset) {
            before.replace(change->offset, change->length, change->text);
        }
    }
    return before.size();
}

/// A sentence without digits: those of a line change when an edit inserts another one.
inline std::string WithoutDigits(std::string text) {
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }),
               text.end());
    return text;
}

} // namespace cure
