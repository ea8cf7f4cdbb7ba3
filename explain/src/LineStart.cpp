// Stage: the start of a line to the spelling that its writer meant.
// Input: a line. Output: the line with its type, "=" and keyword as the RFC has them.
// Touches nothing. Keywords are those of the component's own table.
// Test: tests/explain/judge_cases.py
#include "LineStart.h"

#include "Lookalike.h"
#include "SDPLines.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace explain {

bool IsPlain(std::string_view line) {
    const bool isLine = line.size() > 2 && line[0] >= 'a' && line[0] <= 'z' && line[1] == '=';
    if (!isLine || sdp::IsBlank(line[2]) || sdp::IsBlank(line.back())) {
        return false;
    }
    if (line[0] != 'a') {
        return true;
    }
    const auto isOfName = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; };
    const auto* const end = std::find_if_not(line.begin() + 2, line.end(), isOfName);
    return end == line.end() || (*end == ':' && end + 1 != line.end() && !sdp::IsBlank(end[1]));
}

std::string_view Unquoted(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t>|*#-+.:)]0123456789");
    return Trimmed(line.substr(std::min(begin, line.size())));
}

namespace {

/// Whether a line begins with a keyword other than "a=" alone.
bool BeginsWithKeyword(std::string_view line) {
    const std::string lower = Lower(line.substr(0, 32));
    return std::any_of(std::begin(sdp::kLineRows), std::end(sdp::kLineRows),
                       [&](const sdp::LineRow& row) {
                           return row.row > SDPRow::Media && row.row != SDPRow::Direction &&
                                  BeginsWith(lower, row.keyword);
                       }) ||
           std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                       [&](const sdp::Direction& direction) { return lower == direction.keyword; });
}

} // namespace

std::string WithType(std::string_view text) {
    std::string attribute = "a=" + std::string(text);
    if (BeginsWithKeyword(attribute)) {
        return attribute;
    }
    if (text.size() < 3 || (text[1] != ':' && text[1] != ' ')) {
        return {};
    }
    const std::string typed = Lower(text.substr(0, 1)) + "=" + std::string(Trimmed(text.substr(2)));
    static constexpr std::string_view kStarts[] = {"c=IN ", "m=audio ", "m=video ", "m=application "};
    const bool isLine = std::any_of(std::begin(kStarts), std::end(kStarts),
                                    [&](std::string_view start) { return BeginsWith(typed, start); });
    return isLine || BeginsWithKeyword(typed) ? typed : std::string();
}

namespace {

/// Whether the value of an attribute of this row begins with a number.
bool TakesNumber(SDPRow row) {
    return row == SDPRow::Fmtp || row == SDPRow::Crypto || row == SDPRow::Candidate ||
           row == SDPRow::ConferenceId || row == SDPRow::UserId;
}

/// Length of the keyword at the start of an attribute whose colon is another sign or left out:
/// "content=slides", "crypto-1 ...", "fmtp97 ..."; 0 for any other attribute.
std::size_t NameWithoutColon(std::string_view attribute) {
    constexpr std::size_t longest = 16;
    const auto isOfName = [](char c) { return (c | 0x20) >= 'a' ? (c | 0x20) <= 'z' : c == '-'; };
    const auto* const end = std::find_if_not(attribute.begin(), attribute.end(), isOfName);
    const bool isLoose = end != attribute.end() && (*end == '=' || *end == ';' || *end == ',' ||
                                                    *end == '/' || (*end >= '0' && *end <= '9'));
    if (!isLoose) {
        return 0; // Most attributes: a name before its colon.
    }
    const std::string lower = Lower(attribute.substr(0, longest));
    for (const sdp::LineRow& row : sdp::kLineRows) {
        constexpr std::size_t type = 2; // "a="
        std::string name(row.keyword.substr(std::min(type, row.keyword.size())));
        name.erase(std::min(name.find(':'), name.size()));
        if (row.row == SDPRow::Ice) {
            name += BeginsWith(lower, "ice-pwd") ? "-pwd" : "-ufrag";
        }
        if (name.empty() || !BeginsWith(lower, name) || lower.size() == name.size()) {
            continue;
        }
        const char next = lower[name.size()];
        const std::string_view after = std::string_view(lower).substr(name.size() + (next == '-' ? 1 : 0));
        const bool isNumber = TakesNumber(row.row) && IsDigits(after.substr(0, 1));
        if (isNumber || next == '=' || next == ';' || next == ',' || next == '/') {
            return name.size();
        }
    }
    return 0;
}

/// Where the name of an attribute ends.
std::size_t EndOfName(std::string_view attribute) {
    const std::size_t name = NameWithoutColon(attribute);
    return name != 0 ? name : std::min(attribute.find_first_of(": \t"), attribute.size());
}

} // namespace

std::string StartSpelled(std::string_view line) {
    const std::string plain = HasForeign(line) ? WithoutLookalikes(line) : std::string();
    const std::string_view text = Unquoted(plain.empty() ? line : plain);
    if (text.size() > 2 && text[1] != '=') {
        std::string typed = WithType(text);
        if (!typed.empty()) {
            return typed;
        }
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || Trimmed(text.substr(0, equals)).size() != 1) {
        return std::string(text);
    }
    const std::string_view value = Trimmed(text.substr(equals + 1));
    std::string start = Lower(text.substr(0, 1)) + "=";
    if (start != "a=") {
        return start.append(value);
    }
    const std::size_t end = EndOfName(value);
    const std::string_view after = Trimmed(value.substr(end));
    start.append(value.substr(0, end));
    if (!after.empty() && end == NameWithoutColon(value)) {
        const std::size_t begin = std::min(after.find_first_not_of("=;,/-: \t"), after.size());
        return start.append(":").append(after.substr(begin));
    }
    const std::string name = Lower("a=" + std::string(value.substr(0, end)));
    const std::string keyword = name + ":";
    const bool takesValue =
        name == "a=ice-ufrag" || name == "a=ice-pwd" ||
        std::any_of(std::begin(sdp::kLineRows), std::end(sdp::kLineRows), [&](const sdp::LineRow& row) {
            return row.keyword == keyword || (row.row == SDPRow::Rtpmap && row.keyword == name);
        });
    if (after.empty() || (after[0] != ':' && !takesValue)) {
        return start.append(value.substr(end));
    }
    return start.append(after[0] == ':' ? "" : ":").append(after);
}

} // namespace explain
