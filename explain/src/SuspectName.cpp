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
    std::array<std::array<std::size_t, kLongestName + 1>, kLongestName + 1> steps{};
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = steps[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
            }
        }
    }
    return steps[one.size()][other.size()];
}

/// The keyword that a name is nearest to, without its ":"; empty when none is near or it is one.
std::string_view NearKeyword(std::string_view name, bool hasValue) {
    std::string_view nearest;
    std::size_t least = kLongestName;
    const auto compare = [&](std::string_view keyword) {
        const std::string_view bare = keyword.substr(0, keyword.find(':'));
        constexpr std::size_t shortest = 6; // "a=fmtp"
        if (bare.size() < shortest || bare.size() > kLongestName) {
            return;
        }
        const std::size_t distance = DistanceOf(name, bare);
        // One letter of three may differ: "a=contents", "a=fmpt", "a=receiveonly".
        if (distance <= (bare.size() - 1) / 3 && distance < least) {
            least = distance;
            nearest = bare;
        }
    };
    if (hasValue) {
        for (const sdp::LineRow& row : sdp::kLineRows) {
            if (row.row != SDPRow::Ice) {
                compare(row.keyword);
            }
        }
    } else {
        for (const sdp::Direction& direction : sdp::kDirections) {
            compare(direction.keyword);
        }
    }
    return least == 0 ? std::string_view() : nearest;
}

void AddName(Scene& scene, const TextLine& line) {
    const std::string spelled = StartSpelled(line.text);
    const std::size_t colon = std::min(spelled.find(':'), spelled.size());
    if (!BeginsWith(spelled, "a=") || colon > kLongestName) {
        return;
    }
    const bool hasValue = colon < spelled.size();
    const std::string_view keyword = NearKeyword(Lower(spelled.substr(0, colon)), hasValue);
    if (keyword.empty()) {
        return;
    }
    const std::string text = std::string(keyword) + spelled.substr(colon);
    Blame(scene, kName, line, {LineWords(line), " has a name that is nearly ", keyword, "."},
          {"write line ", line.number, " as ", InQuotes(text)}, {ReplaceLine(line, text)})
        .isTakenAway = true;
}

/// Offset of the first keyword of a further line behind a blank; npos for none.
std::size_t SecondLineIn(std::string_view text) {
    for (std::size_t at = text.find('=', 3); at != std::string_view::npos; at = text.find('=', at + 1)) {
        const bool isStart = at > 2 && (text[at - 2] == ' ' || text[at - 2] == '\t' || text[at - 2] == ';' ||
                                        text[at - 2] == ',');
        if (!isStart || std::string_view("abcm").find(text[at - 1]) == std::string_view::npos) {
            continue;
        }
        const std::string_view rest = text.substr(at - 1);
        const SDPRow row = sdp::RowOf(rest);
        const bool isLine = row == SDPRow::Direction
                                ? sdp::FirstKeyword<sdp::kDirections>(rest) != nullptr
                                : row != SDPRow::None &&
                                      BeginsWith(rest, sdp::kLineRows[static_cast<std::size_t>(row)].keyword);
        if (isLine) {
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
    for (const TextLine& line : scene.reading.lines) {
        if (line.meant == SDPRow::Direction || line.meant == SDPRow::None) {
            AddName(scene, line);
        }
        AddTwoLines(scene, line);
    }
}

} // namespace explain
