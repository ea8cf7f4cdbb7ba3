// Stage: a line to the spelling that its writer meant (RFC 4566, 9).
// Input: a line and the row that it begins with. Output: the same line, spelled as RFCs do.
// Touches nothing. The result is only a proposal: a run of the component decides whether it matters.
// Test: tests/explain/judge_cases.py
#include "Canonical.h"
#include "MediaWords.h"
#include "SDPKeyword.h"
#include "SDPTables.h"
#include "SDPText.h"
#include "Suspect.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace explain {

namespace {

/// The IPv4 address in a word that has something else round it: "192.0.2.1:5004", "sip:192.0.2.1",
/// "(192.0.2.1)"; empty for a plain one, for one with a suffix such as "/127", and for "::ffff:192.0.2.1".
std::string_view AddressIn(std::string_view word) {
    constexpr std::string_view ofName = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_";
    constexpr std::string_view ofAddress = "0123456789.";
    const bool isNumbers = word.find_first_not_of("0123456789./") == std::string_view::npos;
    if (isNumbers || word.find("::") != std::string_view::npos) {
        return {};
    }
    for (std::size_t at = word.find_first_of(ofAddress); at < word.size();) {
        const std::size_t end = std::min(word.find_first_not_of(ofAddress, at), word.size());
        const bool isOfName = (at > 0 && ofName.find(word[at - 1]) != std::string_view::npos) ||
                              (end < word.size() && ofName.find(word[end]) != std::string_view::npos);
        const bool hasSuffix = at == 0 && end < word.size() && word[end] == '/';
        if (!isOfName && !hasSuffix && IsIpv4(word.substr(at, end - at))) {
            return word.substr(at, end - at);
        }
        at = word.find_first_of(ofAddress, end);
    }
    return {};
}

std::string Connection(std::string_view line) {
    std::string parted(line.substr(2));
    if (WordsOf(parted, 3).size() < 3) { // "IN/IP4/192.0.2.1" and "IN,IP4,192.0.2.1"
        std::replace_if(
            parted.begin(), parted.end(), [](char c) { return c == '/' || c == ',' || c == ';'; }, ' ');
    }
    const std::vector<std::string_view> words = WordsOf(parted, 8);
    std::size_t at = 0;
    while (at < words.size() &&
           (Lower(words[at]) == "in" || Lower(words[at]) == "ip4" || Lower(words[at]) == "ip6")) {
        ++at;
    }
    if (at == words.size()) {
        return std::string(line);
    }
    std::string_view address = words[at];
    if (BeginsWith(Lower(address.substr(0, 3)), "ip4")) {
        address.remove_prefix(3); // "IP4192.0.2.1"
    }
    if (const std::string_view inside = AddressIn(address); !inside.empty()) {
        return "c=IN IP4 " + std::string(inside);
    }
    if (address.size() > 1 && (address[0] == '"' || address[0] == '<' || address[0] == '[')) {
        address.remove_prefix(1);
    }
    const std::size_t end = address.find_first_of("<>[],;\"'()\\");
    address = address.substr(0, end == 0 ? std::string_view::npos : end);
    return std::string("c=IN ") + (address.find(':') == std::string_view::npos ? "IP4 " : "IP6 ") +
           std::string(address);
}

/// A format of an m= line as the lines after it name it: "PCMU" is payload 0, and "18101" is two payloads
/// when the section has an rtpmap line for 101.
std::string FormatMeant(std::string_view format, const Reading& reading, const TextLine& line) {
    const MeantSection* const section = reading.SectionOf(line);
    if (section == nullptr) {
        return WithoutZeros(format);
    }
    constexpr std::size_t longest = 3; // "127"
    if (IsDigits(format)) {
        for (std::size_t at = 1; format.size() > longest && at <= longest && at < format.size(); ++at) {
            const std::string_view last = format.substr(at);
            if (last.size() <= longest && section->rtpmap.count(last) != 0) {
                return std::string(format.substr(0, at)) + " " + std::string(last);
            }
        }
        return WithoutZeros(format);
    }
    const std::string name = Upper(format) + "/";
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        if (codec.isStatic && BeginsWith(codec.format.name, name)) {
            return std::string(codec.format.payload);
        }
    }
    std::size_t first = kNowhere;
    for (const auto& entry : section->rtpmap) {
        const bool isName = BeginsWith(Upper(WordOf(reading.lines[entry.second].text, 1)), name);
        first = isName ? std::min(first, entry.second) : first;
    }
    return first == kNowhere ? std::string(format) : std::string(PayloadOf(reading.lines[first].text));
}

std::string MediaLine(std::string_view text, const Reading& reading, const TextLine& line) {
    const std::vector<std::string_view> words = MediaWords(text.substr(2));
    if (words.size() < 4) {
        return std::string(text);
    }
    std::string canonical = "m=" + Lower(words[0]) + " " + std::string(words[1]) + " " + Upper(words[2]);
    constexpr std::size_t mostNames = 16; // each is compared with every rtpmap line of the section
    std::size_t names = 0;
    for (std::size_t i = 3; i < words.size(); ++i) {
        std::size_t begin = 0;
        while (begin < words[i].size()) {
            const std::size_t end = std::min(words[i].find_first_of(",;", begin), words[i].size());
            const std::string_view format = words[i].substr(begin, end - begin);
            names += IsDigits(format) ? 0 : 1;
            if (!format.empty()) {
                canonical += " ";
                canonical += names > mostNames ? std::string(format) : FormatMeant(format, reading, line);
            }
            begin = end + 1;
        }
    }
    return canonical;
}

/// Whether the line is "c=IN IP4 192.0.2.1" to the letter.
bool IsConnection(std::string_view line) {
    constexpr std::string_view start = "c=IN IP4 ";
    return BeginsWith(line, start) &&
           line.find_first_not_of("0123456789./", start.size()) == std::string_view::npos;
}

/// Whether the line is "m=audio 5004 RTP/AVP 0 101" to the letter.
bool IsMediaLine(std::string_view line) {
    sdp::Words words(line.substr(2));
    const std::string_view media = words.Next();
    const std::string_view port = words.Next();
    const std::string_view transport = words.Next();
    const bool isKnown = media == "audio" || media == "video" || media == "application";
    const bool isUpper = std::none_of(transport.begin(), transport.end(),
                                      [](char c) { return (c >= 'a' && c <= 'z') || c == ',' || c == ';'; });
    std::size_t length = std::string_view("m=").size() + media.size() + port.size() + transport.size();
    std::size_t blanks = 2;
    for (std::string_view format = words.Next(); !format.empty(); format = words.Next()) {
        constexpr std::size_t longest = 3; // "127"
        if (!IsDigits(format) || format.size() > longest || (format[0] == '0' && format.size() > 1)) {
            return false;
        }
        length += format.size();
        ++blanks;
    }
    return isKnown && IsDigits(port) && !IsDigits(transport) && isUpper && blanks > 2 &&
           length + blanks == line.size() &&
           static_cast<std::size_t>(std::count(line.begin(), line.end(), ' ')) == blanks;
}

/// "768000" of "0.768" and "M": a number with a point or a unit, in bit/s for TIAS and in kbit/s otherwise.
std::string InUnits(const std::string& whole, std::string_view rest, bool isTias) {
    std::string digits = whole;
    int places = 0;
    if (BeginsWith(rest, ".")) {
        const std::size_t end = std::min(rest.find_first_not_of("0123456789", 1), rest.size());
        digits += rest.substr(1, end - 1);
        places = static_cast<int>(end) - 1;
        rest.remove_prefix(end);
    }
    const std::string unit = Lower(Trimmed(rest).substr(0, 1));
    const int bits = unit == "g" ? 9 : unit == "m" ? 6 : unit == "k" || !isTias ? 3 : 0;
    const int zeros = bits - (isTias ? 0 : 3) - places;
    if (zeros >= 0) {
        digits.append(static_cast<std::size_t>(zeros), '0');
    } else {
        const auto cut = static_cast<std::size_t>(-zeros);
        digits = digits.size() > cut ? digits.substr(0, digits.size() - cut) : "0";
    }
    return WithoutZeros(digits);
}

std::string BandwidthLine(std::string_view line) {
    const std::string upper = Upper(line.substr(2));
    const std::string_view type = upper.find("TIAS") != std::string::npos ? "TIAS"
                                  : upper.find("AS") != std::string::npos ? "AS"
                                                                          : "";
    const std::size_t digit = line.find_first_of("0123456789");
    constexpr std::string_view withCommas = "0123456789,";
    const bool isNegative = digit != std::string_view::npos && line[digit - 1] == '-';
    if (type.empty() || digit == std::string_view::npos || isNegative || upper.find("X-") == 0) {
        return std::string(line);
    }
    const std::size_t end = std::min(line.find_first_not_of(withCommas, digit), line.size());
    if (BeginsWith(Lower(line.substr(digit, 2)), "0x")) {
        constexpr std::size_t longest = 8;
        const std::string hex(line.substr(digit + 2, longest));
        return "b=" + std::string(type) + ":" + std::to_string(std::strtoul(hex.c_str(), nullptr, 16));
    }
    std::string value(line.substr(digit, end - digit));
    value.erase(std::remove(value.begin(), value.end(), ','), value.end());
    return "b=" + std::string(type) + ":" + InUnits(value, line.substr(end), type == "TIAS");
}

std::string Attribute(std::string_view line, SDPRow row) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    std::string keyword = Lower(line.substr(0, colon));
    keyword.erase(std::remove(keyword.begin(), keyword.end(), ' '), keyword.end());
    std::string value(colon < line.size() ? Trimmed(line.substr(colon + 1)) : std::string_view());
    if (row == SDPRow::Direction) {
        const std::string name(Trimmed(std::string_view(keyword).substr(2)));
        const bool isKnown =
            std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                        [&](const sdp::Direction& each) { return each.keyword == "a=" + name; });
        return isKnown && value.empty() ? "a=" + name : std::string(line);
    }
    if (row == SDPRow::ConferenceId || row == SDPRow::UserId) {
        value.erase(std::remove(value.begin(), value.end(), ','), value.end()); // "4,711"
        const std::size_t digit = value.find_first_of("0123456789");
        value = digit == std::string::npos
                    ? value
                    : value.substr(digit, value.find_first_not_of("0123456789", digit) - digit);
    } else if (row == SDPRow::Content || row == SDPRow::FloorControl) {
        value = Lower(value);
    }
    return keyword + ":" + value;
}

} // namespace

bool IsCanonical(const TextLine& line) {
    if (!line.isPlain) {
        return false;
    }
    switch (line.meant) {
    case SDPRow::Media:
        return IsMediaLine(line.text);
    case SDPRow::Connection:
        return IsConnection(line.text);
    case SDPRow::Rtpmap:
        return IsCanonicalRtpmap(line.text);
    case SDPRow::Fmtp:
        return IsCanonicalFmtp(line.text);
    default:
        // These rows have no spelling of their own beyond that of the start.
        return line.meant == SDPRow::Direction || line.meant == SDPRow::Candidate ||
               line.meant == SDPRow::Ice || line.meant == SDPRow::None;
    }
}

std::string Canonical(const TextLine& line, const Reading& reading) {
    const std::string spelled = line.isPlain ? std::string() : StartSpelled(line.text);
    const std::string_view text = line.isPlain ? line.text : spelled;
    switch (line.meant) {
    case SDPRow::Connection:
        return Connection(text);
    case SDPRow::Media:
        return MediaLine(text, reading, line);
    case SDPRow::Rtpmap:
        return CanonicalRtpmap(text);
    case SDPRow::Fmtp:
        return CanonicalFmtp(text);
    case SDPRow::Crypto:
        return CanonicalCrypto(text);
    case SDPRow::Bandwidth:
        return BandwidthLine(text);
    case SDPRow::None:
        return std::string(line.text);
    case SDPRow::Ice:
        return text.find(':') == std::string_view::npos ? std::string(line.text)
                                                        : Attribute(text, line.meant);
    case SDPRow::Direction:
    default:
        return Attribute(text, line.meant);
    }
}

} // namespace explain
