// A remote text while it is cleaned. Every step keeps, for each line, the number of the input line it came
// from, so that a note can name the line that an editor shows.
//
// Tests: tests/tool/DraftTest.cpp
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cmsdp {

/// The line with which every description begins (RFC 4566, 5.1).
constexpr std::string_view kFirstLine = "v=0";

/// A text and the input line number of each of its lines. Lines end in LF or in CR LF; the end of the last
/// one may be missing, whole or by its LF.
struct Draft {
    std::string text;
    std::vector<std::uint32_t> numbers;

    /// The draft of an input that no step has changed yet.
    static Draft Of(std::string text);
    /// Appends a line. `end` is that of a DraftLine.
    void Add(std::string_view line, std::string_view end, std::uint32_t number);
    /// The input line number of the line that holds the byte at `offset`, counted from 1.
    std::uint32_t NumberAt(std::size_t offset) const;
};

/// One line of a draft.
struct DraftLine {
    std::string_view text; ///< without its end
    std::string_view end;  ///< "\r\n" or "\n"; of the last line also "" or "\r"
    std::uint32_t number = 0;
};

/// Calls `visit` with each DraftLine in turn.
template <typename Visit>
void ForEachLine(const Draft& draft, Visit visit) {
    const std::string_view text = draft.text;
    std::size_t begin = 0;
    for (const std::uint32_t number : draft.numbers) {
        const std::size_t feed = text.find('\n', begin);
        const std::size_t stop = feed == std::string_view::npos ? text.size() : feed + 1;
        std::size_t end = feed == std::string_view::npos ? stop : feed;
        if (end > begin && text[end - 1] == '\r') {
            --end;
        }
        visit(DraftLine{text.substr(begin, end - begin), text.substr(end, stop - end), number});
        begin = stop;
    }
}

/// Replaces each line by what `change` makes of it, which is a part of the line. Returns how many changed.
template <typename Change>
std::size_t ChangeLines(Draft& draft, Change change) {
    Draft changed;
    std::size_t count = 0;
    ForEachLine(draft, [&](const DraftLine& line) {
        const std::string_view kept = change(line.text);
        count += kept.size() == line.text.size() ? 0 : 1;
        changed.Add(kept, line.end, line.number);
    });
    if (count != 0) {
        draft = std::move(changed);
    }
    return count;
}

} // namespace cmsdp
