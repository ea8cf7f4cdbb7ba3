// Stage: the remote text to the lines and sections that its writer meant.
// Input: bytes. Output: Reading.
// Touches nothing. Which row a line begins with is asked of the component's own table; what the component
// makes of the line is not decided here.
// Test: tests/explain/judge_cases.py
#include "Reading.h"

#include "InetPton.h"
#include "SDPLines.h"
#include "SDPTables.h"
#include "SDPText.h"

#include <algorithm>
#include <cctype>

namespace explain {

namespace {

constexpr std::string_view kSlides = "a=content:slides";

using sdp::IsBlank;

/// The row whose keyword the line begins with, in any letter case and with blanks that do not belong there.
SDPRow MeantRow(std::string_view line, bool isPlain) {
    for (const sdp::LineRow& row : sdp::kLineRows) {
        constexpr std::size_t name = 2; // where the name of an attribute begins
        const bool isOther =
            row.keyword.size() > name && line.size() > name && line[name] != row.keyword[name];
        if (!isOther && row.row != SDPRow::Direction && BeginsWith(line, row.keyword)) {
            return row.row; // As it should be spelled, and as most lines are.
        }
    }
    if (isPlain) {
        return line[0] == 'a' ? SDPRow::Direction : SDPRow::None;
    }
    constexpr std::size_t enough = 32;
    const std::string start = Lower(StartSpelled(line.substr(0, enough)));
    for (const sdp::LineRow& row : sdp::kLineRows) {
        if (BeginsWith(start, row.keyword)) {
            return row.row;
        }
    }
    return SDPRow::None;
}

void OpenSection(Reading& reading, std::size_t index) {
    const std::string_view text = reading.lines[index].text;
    const std::size_t equals = text.find('=');
    const std::size_t type = equals != std::string_view::npos
                                 ? equals
                                 : text.find_first_of(": ", std::min(text.find_first_of("mM"), text.size()));
    const std::vector<std::string_view> words = WordsOf(text.substr(std::min(type, text.size() - 1) + 1));
    MeantSection section;
    section.line = index;
    section.media = words.empty() ? std::string() : Lower(words[0]);
    section.port = words.size() > 1 ? words[1] : std::string_view();
    section.transport = words.size() > 2 ? Upper(words[2]) : std::string();
    for (std::size_t i = 3; i < words.size(); ++i) {
        section.formats.push_back(words[i]);
        section.listed.insert(words[i]);
    }
    reading.sections.push_back(std::move(section));
}

void Assign(Reading& reading, std::size_t index) {
    TextLine& line = reading.lines[index];
    line.isPlain = IsPlain(line.text);
    line.meant = MeantRow(line.text, line.isPlain);
    reading.hasIce = reading.hasIce || line.meant == SDPRow::Ice;
    reading.hasCandidate = reading.hasCandidate || line.meant == SDPRow::Candidate;
    if (reading.origin.empty() && BeginsWith(line.text, "o=")) {
        reading.origin = line.text;
    }
    if (line.meant == SDPRow::Media) {
        OpenSection(reading, index);
    }
    if (reading.sections.empty()) {
        return;
    }
    MeantSection& section = reading.sections.back();
    line.section = reading.sections.size() - 1;
    section.last = index;
    section.isSlides = section.isSlides || line.text.find(kSlides) != std::string_view::npos;
    section.hasCrypto = section.hasCrypto || line.meant == SDPRow::Crypto;
    if (line.meant == SDPRow::Rtpmap) {
        section.rtpmap[PayloadOf(line.text)] = index;
    } else if (line.meant == SDPRow::Fmtp) {
        section.fmtp[PayloadOf(line.text)] = index;
    }
}

} // namespace

Reading Read(std::string_view text) {
    Reading reading;
    reading.text = text;
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    reading.lines.reserve(count + 1);
    reading.hosts.reserve(count);
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t lf = std::min(text.find('\n', begin), text.size());
        const bool isCut = lf == text.size();
        const bool hasCr = !isCut && lf > begin && text[lf - 1] == '\r';
        TextLine line;
        line.number = reading.lines.size() + 1;
        line.offset = begin;
        line.text = text.substr(begin, lf - begin - (hasCr ? 1 : 0));
        line.end = text.substr(begin + line.text.size(), isCut ? 0 : (hasCr ? 2 : 1));
        reading.lines.push_back(line);
        Assign(reading, reading.lines.size() - 1);
        begin = lf + 1;
    }
    std::size_t next = 0;
    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        Host host;
        host.text = text.substr(offset, length);
        host.row = sdp::RowOf(host.text);
        host.first = next;
        while (next < reading.lines.size() && reading.lines[next].offset <= offset + length) {
            reading.lines[next++].host = reading.hosts.size();
        }
        host.count = next - host.first;
        reading.hosts.push_back(host);
    });
    return reading;
}

bool IsPlain(std::string_view line) {
    const bool isLine = line.size() > 2 && line[0] >= 'a' && line[0] <= 'z' && line[1] == '=';
    if (!isLine || IsBlank(line[2]) || IsBlank(line.back())) {
        return false;
    }
    if (line[0] != 'a') {
        return true;
    }
    const auto isOfName = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; };
    const auto* const end = std::find_if_not(line.begin() + 2, line.end(), isOfName);
    return end == line.end() || (*end == ':' && end + 1 != line.end() && !IsBlank(end[1]));
}

namespace {

/// "m=audio" of "> m=audio" and of "7: m=audio": signs and numbers before the first letter are of a mail, a
/// list or an editor.
std::string_view Unquoted(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t>|*#-+.:)]0123456789");
    return Trimmed(line.substr(std::min(begin, line.size())));
}

} // namespace

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

/// "a=candidate:" of "candidate:", and "m=audio 5004" of "m:audio 5004"; empty where no type is missing.
std::string WithType(std::string_view text) {
    const std::string attribute = "a=" + std::string(text);
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

} // namespace

std::string StartSpelled(std::string_view line) {
    const std::string_view text = Unquoted(line);
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
    const std::size_t end = std::min(value.find_first_of(": \t"), value.size());
    const std::string_view after = Trimmed(value.substr(end));
    const std::string name = Lower(start + std::string(value.substr(0, end)));
    const std::string keyword = name + ":";
    const bool takesValue =
        std::any_of(std::begin(sdp::kLineRows), std::end(sdp::kLineRows), [&](const sdp::LineRow& row) {
            return row.keyword == keyword || (row.row == SDPRow::Rtpmap && row.keyword == name);
        });
    start.append(value.substr(0, end));
    if (after.empty() || (after[0] != ':' && !takesValue)) {
        return start.append(value.substr(end));
    }
    return start.append(after[0] == ':' ? "" : ":").append(after);
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string_view> WordsOf(std::string_view text, std::size_t most) {
    constexpr std::size_t usual = 8;
    std::vector<std::string_view> words;
    words.reserve(std::min(most, usual));
    sdp::Words next(text);
    for (std::string_view word = next.Next(); !word.empty() && words.size() < most; word = next.Next()) {
        words.push_back(word);
    }
    return words;
}

std::string_view WordOf(std::string_view text, std::size_t index) {
    sdp::Words words(text);
    for (; index > 0; --index) {
        words.Next();
    }
    return words.Next();
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : static_cast<char>(c);
    });
    return lower;
}

std::string Upper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : static_cast<char>(c);
    });
    return upper;
}

bool IsDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsOver32Bits(std::string_view digits) {
    constexpr std::string_view most = "2147483647";
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.size() > most.size() || (digits.size() == most.size() && digits > most);
}

bool IsIpv4(std::string_view text) {
    constexpr std::size_t longest = 15;
    in_addr address;
    return text.size() <= longest && inet_pton(AF_INET, std::string(text).c_str(), &address) == 1;
}

bool IsPrivate(std::string_view address) {
    static constexpr std::string_view kStarts[] = {"127.", "10.", "192.168.", "169.254."};
    const bool isShared = BeginsWith(address, "172.") && address.size() > 6 && address[6] == '.' &&
                          address.substr(4, 2) >= "16" && address.substr(4, 2) <= "31"; // 172.16.0.0/12
    return isShared || std::any_of(std::begin(kStarts), std::end(kStarts),
                                   [&](std::string_view start) { return BeginsWith(address, start); });
}

std::string_view PayloadOf(std::string_view line) {
    std::size_t at = line.find(':');
    if (at == std::string_view::npos || at > 16) {
        at = std::min(line.find_first_of("0123456789"), line.size());
    }
    while (at < line.size() && (line[at] == ':' || IsBlank(line[at]))) {
        ++at;
    }
    std::size_t end = at;
    while (end < line.size() && line[end] >= '0' && line[end] <= '9') {
        ++end;
    }
    return line.substr(at, end - at);
}

std::string_view ValueOf(std::string_view line) {
    const std::size_t colon = line.find(':');
    return colon == std::string_view::npos ? std::string_view() : Trimmed(line.substr(colon + 1));
}

namespace {

constexpr std::size_t kShownLength = 64;
/// Base64 text of this length is not shown: half a key is as good as a hint.
constexpr std::size_t kSecretRun = 16;

bool IsBase64(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '/' || c == '=';
}

std::string Printable(std::string_view text) {
    std::string shown;
    for (const char c : text.substr(0, kShownLength)) {
        shown += c >= ' ' && c <= '~' && c != '"' ? c : '?';
    }
    return text.size() > kShownLength ? shown + "..." : shown;
}

/// Short words between slashes, such as a transport: "UDP/TLS/RTP/SAVPF".
bool IsPath(std::string_view run) {
    constexpr std::size_t longest = 24;
    std::size_t word = 0;
    for (const char c : run) {
        word = c == '/' ? 0 : word + 1;
        if (word >= kSecretRun / 2 || c == '+' || c == '=') {
            return false;
        }
    }
    return run.size() < longest;
}

std::string Masked(std::string_view text) {
    std::string masked;
    for (std::size_t at = 0; at < text.size() && masked.size() <= kShownLength;) {
        std::size_t end = at;
        while (end < text.size() && IsBase64(text[end])) {
            ++end;
        }
        if (end - at >= kSecretRun && !IsPath(text.substr(at, end - at))) {
            masked += "***";
        } else {
            masked += text.substr(at, end - at);
        }
        if (end < text.size()) {
            masked += text[end++];
        }
        at = end;
    }
    return masked;
}

} // namespace

std::string Quoted(std::string_view line) {
    const std::string_view text = Trimmed(line);
    const std::string_view unquoted = Unquoted(text);
    const std::string lower = Lower(text.substr(0, 4096));
    const bool isLine =
        !WithType(unquoted).empty() || (unquoted.size() > 1 && unquoted[1] == '=' &&
                                        std::isalpha(static_cast<unsigned char>(unquoted[0])) != 0);
    if (!isLine) {
        return "(not shown)";
    }
    const std::size_t secret = std::min(lower.find("inline"), lower.find("crypto"));
    if (secret != std::string::npos) {
        // The tag and a suite are shown, the rest of the line may be a key.
        const std::vector<std::string_view> words = WordsOf(text, 2);
        const bool isSuite =
            words.size() == 2 && (BeginsWith(Upper(words[1]), "AES_") ||
                                  BeginsWith(Upper(words[1]), "AEAD_") || BeginsWith(Upper(words[1]), "F8_"));
        return '"' + Printable(Masked(words[0])) +
               (isSuite ? ' ' + Printable(Masked(words[1])) + " ..." : " ...") + '"';
    }
    return '"' + Printable(Masked(text)) + '"';
}

std::string Shown(std::string_view value) {
    if (value.size() < kSecretRun && value.find_first_not_of("0123456789.") == std::string_view::npos) {
        return std::string(value); // A number or an address: shown as it is.
    }
    if (Lower(value.substr(0, 4096)).find("inline") != std::string::npos) {
        return "***";
    }
    return Printable(Masked(value));
}

} // namespace explain
