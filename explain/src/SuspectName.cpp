// Stage: suspects in attribute names that are nearly a keyword, and in lines that hold two lines.
// Input: the lines of the text. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPKeyword.h"
#include "SDPLines.h"
#include "SDPTables.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

namespace explain {

namespace {

constexpr Rule kName = {"E07", "", ExplainSeverity::Error, 10,
                        "A keyword is compared letter for letter, so a line of another name is taken by no "
                        "row and changes nothing."};
constexpr Rule kTwoLines = {"E08", "P01", ExplainSeverity::Error, 2,
                            "A line is read once, by the row of the first keyword that it contains (P01); "
                            "another attribute in the same line is not read."};

constexpr std::size_t kLongestName = 16; ///< bytes of a name that is compared, longer than any keyword

/// Letters to insert, remove, replace or swap with the next one until both names are equal.
std::size_t DistanceOf(std::string_view one, std::string_view other) {
    std::array<std::array<std::uint8_t, kLongestName + 1>, kLongestName + 1> steps{};
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            std::size_t least = i + j;
            if (i > 0 && j > 0) {
                const std::size_t replaced = steps[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0U : 1U);
                least =
                    std::min({steps[i - 1][j] + std::size_t{1}, steps[i][j - 1] + std::size_t{1}, replaced});
            }
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
                least = std::min(least, steps[i - 2][j - 2] + std::size_t{1});
            }
            steps[i][j] = static_cast<std::uint8_t>(least);
        }
    }
    return steps[one.size()][other.size()];
}

/// A set of letters, one bit each; other characters share bits.
std::uint64_t LettersOf(std::string_view text) {
    std::uint64_t letters = 0;
    for (const char c : text) {
        letters |= std::uint64_t{1} << (static_cast<unsigned char>(c) % 64U);
    }
    return letters;
}

/// A keyword without its ":" that a name may be meant for.
struct NearRow {
    std::string_view keyword;
    std::uint64_t letters;
    std::size_t most; ///< the greatest distance: one letter of three, "a=contents", "a=fmpt", "a=receiveonly"
};

class NearRows {
public:
    void Add(std::string_view keyword) {
        const std::string_view bare = keyword.substr(0, keyword.find(':'));
        constexpr std::size_t shortest = 6; // "a=fmtp"
        if (bare.size() >= shortest && bare.size() <= kLongestName) {
            m_rows.push_back({bare, LettersOf(bare), (bare.size() - 1) / 3});
        }
    }

    /// The keyword that a name is nearest to; empty when none is near or it is one.
    std::string_view NearestTo(std::string_view name) const {
        const auto isName = [&](const NearRow& row) { return row.keyword == name; };
        if (std::any_of(m_rows.begin(), m_rows.end(), isName)) {
            return {};
        }
        const std::uint64_t letters = LettersOf(name);
        std::string_view nearest;
        std::size_t least = kLongestName;
        for (const NearRow& row : m_rows) {
            const std::size_t most = std::min(row.most, least - 1);
            const std::size_t distance =
                IsFar(name, letters, row, most) ? kLongestName : DistanceOf(name, row.keyword);
            if (distance <= most) {
                nearest = row.keyword;
                least = distance;
            }
        }
        return nearest;
    }

private:
    /// Whether length or letters alone tell that the distance is greater: a step changes the length by one
    /// at most, and adds one letter to the set or takes one from it at most.
    static bool IsFar(std::string_view name, std::uint64_t letters, const NearRow& row, std::size_t most) {
        return name.size() > row.keyword.size() + most || row.keyword.size() > name.size() + most ||
               HasMore(letters & ~row.letters, most) || HasMore(row.letters & ~letters, most);
    }
    static bool HasMore(std::uint64_t letters, std::size_t most) {
        for (; most > 0; --most) {
            letters &= letters - 1; // without the lowest bit that is set
        }
        return letters != 0;
    }

    std::vector<NearRow> m_rows;
};

NearRows RowsWithValue() {
    NearRows rows;
    for (const sdp::LineRow& row : sdp::kLineRows) {
        if (row.row != SDPRow::Ice) {
            rows.Add(row.keyword);
        }
    }
    return rows;
}

NearRows RowsWithoutValue() {
    NearRows rows;
    for (const sdp::Direction& direction : sdp::kDirections) {
        rows.Add(direction.keyword);
    }
    return rows;
}

std::string_view NearKeyword(std::string_view name, bool hasValue) {
    static const NearRows withValue = RowsWithValue();
    static const NearRows withoutValue = RowsWithoutValue();
    return (hasValue ? withValue : withoutValue).NearestTo(name);
}

/// The name that was compared last: many lines of one name follow each other.
struct Compared {
    std::string name;
    bool hasValue = false;
    std::string_view keyword;
};

void AddName(Scene& scene, const TextLine& line, Compared& last) {
    const std::string mended = line.isPlain ? std::string() : StartSpelled(line.text);
    const std::string_view spelled = line.isPlain ? line.text : mended;
    const std::size_t colon = std::min(spelled.find(':'), spelled.size());
    if (!BeginsWith(spelled, "a=") || colon > kLongestName) {
        return;
    }
    const bool hasValue = colon < spelled.size();
    const std::string_view name = spelled.substr(0, colon);
    if (name != last.name || hasValue != last.hasValue) {
        last = {std::string(name), hasValue, NearKeyword(Lower(name), hasValue)};
    }
    if (last.keyword.empty()) {
        return;
    }
    const std::string text = std::string(last.keyword) + std::string(spelled.substr(colon));
    Blame(scene, kName, line, {LineWords(line), " has a name that is nearly ", last.keyword, "."},
          {"write line ", line.number, " as ", InQuotes(text)}, {ReplaceLine(line, text)})
        .isTakenAway = true;
}

/// Offset of the first keyword of a further line after a blank; npos for none.
std::size_t SecondLineIn(std::string_view text) {
    constexpr std::size_t most = 16; // Each start is searched up to the end of the line.
    std::size_t starts = 0;
    for (std::size_t at = text.find('=', 3); at != std::string_view::npos && starts < most;
         at = text.find('=', at + 1)) {
        const bool isStart = at > 2 && (text[at - 2] == ' ' || text[at - 2] == '\t' || text[at - 2] == ';' ||
                                        text[at - 2] == ',');
        if (!isStart || std::string_view("abcm").find(text[at - 1]) == std::string_view::npos) {
            continue;
        }
        ++starts;
        const std::string_view rest = text.substr(at - 1);
        const SDPRow row = sdp::RowOf(rest);
        const bool isLine = row == SDPRow::Direction
                                ? sdp::FirstKeyword<sdp::kDirections>(rest) != nullptr
                                : row != SDPRow::None &&
                                      BeginsWith(rest, sdp::kLineRows[static_cast<std::size_t>(row)].keyword);
        const std::string_view before = text.substr(0, at - 1);
        const bool hasWord = std::any_of(before.begin(), before.end(), [](unsigned char c) {
            return std::isalpha(c) != 0; // "> m=audio" is one line, quoted
        });
        if (isLine && hasWord) {
            return at - 1;
        }
    }
    return std::string_view::npos;
}

void AddTwoLines(Scene& scene, const TextLine& line) {
    const std::size_t at = SecondLineIn(line.text);
    if (at == std::string_view::npos || line.meant == SDPRow::None) {
        return;
    }
    const std::string_view rest = line.text.substr(at);
    std::size_t end = at;
    while (end > 0 && std::string_view(" \t;,").find(line.text[end - 1]) != std::string_view::npos) {
        --end;
    }
    Blame(scene, kTwoLines, line, {LineWords(line), " holds a second line, ", InQuotes(rest), "."},
          {"end line ", line.number, " before ", InQuotes(rest), " and begin another"},
          {{line.offset + end, at - end, "\r\n"}})
        .isTakenAway = true;
}

} // namespace

void FindNames(Scene& scene) {
    Compared last;
    for (const TextLine& line : scene.reading.lines) {
        if (line.meant == SDPRow::Direction || line.meant == SDPRow::None) {
            AddName(scene, line, last);
        }
        AddTwoLines(scene, line);
    }
}

} // namespace explain
