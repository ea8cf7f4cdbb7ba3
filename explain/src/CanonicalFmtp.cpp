// Stage: an fmtp line to the spelling that its writer meant (RFC 4566, 6).
// Input: a line that begins with its keyword. Output: the same line, spelled as the component compares it.
// Touches nothing. Names are those of the component's own tables.
// Test: tests/explain/CanonicalTest.cpp
#include "Canonical.h"

#include "SDPTables.h"
#include "Words.h"

#include <algorithm>
#include <vector>

namespace explain {

namespace {

/// Format parameters whose value is a number or hexadecimal digits: those of H.264 and the bit rate of
/// G.722.1.
std::vector<std::string_view> KnownParameters() {
    std::vector<std::string_view> known = {"bitrate"};
    for (const sdp::H264Parameter& parameter : sdp::kH264Parameters) {
        known.push_back(parameter.name);
    }
    return known;
}

/// Lower case, with '-' for '_' and with the z of "packetization".
std::string Folded(std::string_view text) {
    std::string folded = Lower(text);
    std::replace(folded.begin(), folded.end(), '_', '-');
    constexpr std::string_view other = "packetisation";
    for (std::size_t at = folded.find(other); at != std::string::npos; at = folded.find(other, at)) {
        folded[at + other.find('s')] = 'z';
    }
    return folded;
}

/// The known parameter that begins here, in any spelling of its name and with blanks before its '=' or with
/// ':' in its place.
std::string_view ParameterAt(const std::string& lower, std::size_t at) {
    static const std::vector<std::string_view> known = KnownParameters();
    for (const std::string_view name : known) {
        if (lower.compare(at, name.size(), name) == 0) {
            const std::size_t next = lower.find_first_not_of(" \t", at + name.size());
            if (next != std::string::npos && (lower[next] == '=' || lower[next] == ':')) {
                return name;
            }
        }
    }
    return {};
}

/// Whether InOneForm returns the piece itself: "max-fs=3600" and "minptime=10", not "Max-FS=3600".
bool IsInOneForm(std::string_view piece) {
    static const std::vector<std::string_view> known = KnownParameters();
    for (const std::string_view name : known) {
        if ((piece[0] | 0x20) != name[0]) {
            continue;
        }
        constexpr std::string_view hex = "0123456789abcdefABCDEF";
        const bool isNamed =
            BeginsWith(piece, name) && piece.size() > name.size() && piece[name.size()] == '=';
        const bool isHex = name == "profile-level-id";
        if (isNamed && piece.find_first_not_of(hex.substr(0, isHex ? hex.size() : 10), name.size() + 1) ==
                           std::string_view::npos) {
            return true;
        }
    }
    const auto isStart = [&](std::string_view name) { return (piece[0] | 0x20) == name[0]; };
    return std::none_of(known.begin(), known.end(), isStart);
}

std::string InOneForm(std::string_view piece) {
    const std::string_view text = Trimmed(piece);
    const std::string_view name = ParameterAt(Folded(text.substr(0, 64)), 0);
    if (name.empty()) {
        return std::string(text);
    }
    std::string_view value = text.substr(text.find_first_of("=:", name.size()));
    value.remove_prefix(std::min(value.find_first_not_of("=: \t"), value.size())); // "mode==1"
    if (value.size() > 1 && (value.front() == '"' || value.front() == '\'')) {
        value = value.substr(1, value.size() - 2);
    }
    const bool isHex = name == "profile-level-id";
    if (isHex && BeginsWith(Lower(value.substr(0, 2)), "0x")) {
        value.remove_prefix(2);
    }
    if (BeginsWith(value, "+")) {
        value.remove_prefix(1);
    }
    std::string digits(value);
    if (isHex) { // "42 e0 1f", "42-e0-1f"
        digits.erase(
            std::remove_if(digits.begin(), digits.end(), [](char c) { return c == ' ' || c == '-'; }),
            digits.end());
    }
    constexpr std::size_t least = 6; // "42e01f"; a word such as "baseline" has fewer at its start
    const std::size_t end = digits.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "0123456789");
    const bool isCut = end != std::string::npos && end >= (isHex ? least : 1);
    return std::string(name) + "=" + (isCut ? digits.substr(0, end) : digits);
}

} // namespace

bool IsCanonicalFmtp(std::string_view line) {
    const FormatLine format = FormatLineOf(line, "a=fmtp:");
    std::string_view rest = format.rest;
    if (format.payload.empty() || rest.empty() || rest.back() == ';') {
        return false;
    }
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, rest.find(';'));
        if (piece.empty() || !IsInOneForm(piece)) {
            return false;
        }
        rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    }
    return true;
}

std::string CanonicalFmtp(std::string_view line) {
    const std::string_view payload = PayloadOf(line);
    if (payload.empty()) {
        return std::string(line);
    }
    const auto after = static_cast<std::size_t>(payload.data() + payload.size() - line.data());
    const std::string_view rest = Trimmed(line.substr(after));
    const std::string lower = Folded(rest);
    std::string text = "a=fmtp:" + WithoutZeros(payload) + " ";
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= rest.size(); ++at) {
        const bool isEnd = at == rest.size() || rest[at] == ';';
        const bool isNext = !isEnd && at > begin &&
                            (rest[at - 1] == ' ' || rest[at - 1] == ',' || rest[at - 1] == '\t') &&
                            !ParameterAt(lower, at).empty();
        if (!isEnd && !isNext) {
            continue;
        }
        std::string_view piece = Trimmed(rest.substr(begin, at - begin));
        while (isNext && !piece.empty() && piece.back() == ',') {
            piece.remove_suffix(1);
        }
        if (!piece.empty()) {
            text += (text.back() == ' ' ? "" : ";") + InOneForm(piece);
        }
        begin = isEnd ? at + 1 : at;
    }
    return text;
}

} // namespace explain
