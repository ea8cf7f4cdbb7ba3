// Stage: an rtpmap or fmtp line to the spelling that its writer meant (RFC 4566, 6).
// Input: a line that begins with its keyword. Output: the same line, spelled as the component compares it.
// Touches nothing. Names are those of the component's own tables.
// Test: tests/explain/judge_cases.py
#include "Canonical.h"

#include "SDPTables.h"
#include "Words.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace explain {

namespace {

/// Length of the type before a name: a media type (RFC 4855) is "audio/PCMU", and an encoding name has none.
std::size_t TypeLength(std::string_view name) {
    constexpr std::size_t length = std::string_view("audio/").size();
    const std::string start = Lower(name.substr(0, length));
    return start == "audio/" || start == "video/" ? length : 0;
}

/// An encoding that the component compares letter for letter.
struct Encoding {
    std::string_view exact; ///< with its clock rate
    std::string squeezed;   ///< without it
    std::string_view rate;
};

std::vector<Encoding> KnownEncodings() {
    std::vector<Encoding> known;
    const auto add = [&known](std::string_view exact) {
        const std::size_t slash = exact.find('/');
        known.push_back({exact, Squeezed(exact.substr(0, slash)), exact.substr(slash + 1)});
    };
    add(sdp::kH264Name);
    add(sdp::kTelephoneEvent.name);
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        if (!codec.isStatic) {
            add(codec.format.name);
        }
    }
    return known;
}

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

/// "97" and what follows its blank, of "a=rtpmap:97 H264/90000"; no payload when the line has another form.
struct FormatLine {
    std::string_view payload;
    std::string_view rest;
};

FormatLine FormatLineOf(std::string_view line, std::string_view start) {
    const std::size_t blank = line.find(' ');
    if (!BeginsWith(line, start) || blank == std::string_view::npos) {
        return {};
    }
    const std::string_view payload = line.substr(start.size(), blank - start.size());
    const std::string_view rest = line.substr(blank + 1);
    const bool isPlain =
        IsDigits(payload) && (payload[0] != '0' || payload.size() == 1) &&
        std::none_of(rest.begin(), rest.end(), [](char c) { return c == ',' || sdp::IsBlank(c); });
    return isPlain ? FormatLine{payload, rest} : FormatLine();
}

/// Whether Squeezed(name) begins with these letters.
bool BeginsSqueezed(std::string_view name, std::string_view squeezed) {
    for (const char c : name) {
        if (squeezed.empty()) {
            return true;
        }
        const bool isUpper = c >= 'A' && c <= 'Z';
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) {
            continue;
        }
        if (squeezed[0] != (isUpper ? static_cast<char>(c + 32) : c)) {
            return false;
        }
        squeezed.remove_prefix(1);
    }
    return squeezed.empty();
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
    if (isHex) { // "42 e0 1f"
        digits.erase(std::remove(digits.begin(), digits.end(), ' '), digits.end());
    }
    const std::size_t end = digits.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "0123456789");
    return std::string(name) + "=" + (end == 0 ? digits : digits.substr(0, end));
}

} // namespace

std::string WithoutZeros(std::string_view number) {
    while (number.size() > 1 && number[0] == '0' && IsDigits(number)) {
        number.remove_prefix(1);
    }
    return std::string(number);
}

std::string CanonicalRtpmap(std::string_view line) {
    const std::string_view payload = PayloadOf(line);
    if (payload.empty()) {
        return std::string(line);
    }
    const auto ending = static_cast<std::size_t>(payload.data() + payload.size() - line.data());
    std::string name;
    for (const std::string_view word : WordsOf(line.substr(ending), 4)) {
        name += word;
    }
    while (!name.empty() && name.front() == ':') {
        name.erase(0, 1);
    }
    name.erase(name.find_last_not_of(",;.") + 1);
    if (name.size() > 1 && name.front() == '"' && name.back() == '"') {
        name = name.substr(1, name.size() - 2);
    }
    name.erase(0, TypeLength(name));
    const std::size_t slash = std::min(name.find('/'), name.size());
    const std::string squeezed = Squeezed(std::string_view(name).substr(0, slash));
    const std::string clock = slash < name.size() ? name.substr(slash + 1) : std::string();
    static const std::vector<Encoding> known = KnownEncodings();
    for (const Encoding& encoding : known) {
        const bool isName = BeginsWith(squeezed, encoding.squeezed);
        const std::string_view suffix =
            isName ? std::string_view(squeezed).substr(encoding.squeezed.size()) : std::string_view();
        const bool isRate =
            clock.empty() || encoding.exact == sdp::kH264Name ||
            (BeginsWith(clock, encoding.rate) &&
             (clock.size() == encoding.rate.size() || clock.substr(encoding.rate.size()) == "/1"));
        if (isName && (suffix.empty() || suffix == "s") && isRate) {
            name = encoding.exact;
        }
    }
    return "a=rtpmap:" + WithoutZeros(payload) + " " + name;
}

bool IsCanonicalRtpmap(std::string_view line) {
    static const std::vector<Encoding> known = KnownEncodings();
    const FormatLine format = FormatLineOf(line, "a=rtpmap:");
    const std::string_view name = format.rest;
    if (format.payload.empty() || name.empty() || name.front() == ':' || name.front() == '"' ||
        name.back() == ';' || name.back() == '.' || TypeLength(name) != 0) {
        return false;
    }
    return std::all_of(known.begin(), known.end(), [name](const Encoding& encoding) {
        return encoding.exact == name || !BeginsSqueezed(name.substr(0, name.find('/')), encoding.squeezed);
    });
}

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
