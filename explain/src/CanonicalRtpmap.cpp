// Stage: an rtpmap line to the spelling that its writer meant (RFC 4566, 6).
// Input: a line that begins with its keyword. Output: the same line, spelled as the component compares it.
// Touches nothing. Names are those of the component's own tables.
// Test: tests/explain/CanonicalTest.cpp
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

} // namespace

std::string WithoutZeros(std::string_view number) {
    while (number.size() > 1 && number[0] == '0' && IsDigits(number)) {
        number.remove_prefix(1);
    }
    return std::string(number);
}

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

} // namespace explain
