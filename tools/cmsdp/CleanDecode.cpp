// Steps that decode a whole text: another character set, JSON, escapes, quoted-printable.
//
// Tests: tests/tool/pasted-texts.cases
#include "Clean.h"

#include "Words.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cerrno>
#include <iconv.h>

namespace cmsdp {

namespace {

using nlohmann::json;

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";
constexpr std::string_view kEscaped = "v=0\\"; // the start of a description whose line ends are escapes

bool BeginsWith(std::string_view text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// The text converted to UTF-8; a unit that is none becomes "?".
std::string ToUtf8(std::string_view bytes, const char* from) {
    std::string in(bytes);
    std::string out;
    iconv_t converter = iconv_open("UTF-8", from);
    char* at = in.data();
    std::size_t left = in.size();
    while (left != 0) {
        std::array<char, 4096> block{};
        char* to = block.data();
        std::size_t room = block.size();
        const bool stopped = iconv(converter, &at, &left, &to, &room) == static_cast<std::size_t>(-1);
        const bool wrong = stopped && errno != E2BIG;
        out.append(block.data(), static_cast<std::size_t>(to - block.data()));
        if (wrong) {
            const std::size_t unit = std::min<std::size_t>(left, 2);
            out += '?';
            at += unit;
            left -= unit;
        }
    }
    static_cast<void>(iconv_close(converter));
    return out;
}

// The texts inside a JSON value that hold a description, one after the other; empty when it is no JSON.
std::string DescriptionsIn(const std::string& text) {
    constexpr int deepest = 32;
    std::string found;
    const auto take = [&found](int depth, json::parse_event_t event, json& value) {
        if (event == json::parse_event_t::value && value.is_string()) {
            const auto& held = value.get_ref<const std::string&>();
            if (BeginsWith(Trimmed(held), "v=0")) {
                found += held;
                found += held.back() == '\n' ? "" : "\r\n";
            }
        }
        return depth < deepest && event != json::parse_event_t::value;
    };
    try {
        const json discarded = json::parse(text, take);
        return found;
    } catch (const json::exception&) {
        return {};
    }
}

// The line end that is written out at the start of the text, in bytes; 0 for none.
std::size_t EscapeLength(std::string_view text) {
    static constexpr std::string_view escapes[] = {R"(\r\n)", R"(\n)", R"(\r)"};
    for (const std::string_view escape : escapes) {
        if (BeginsWith(text, escape)) {
            return escape.size();
        }
    }
    return 0;
}

bool IsQuote(char c) {
    return c == '"' || c == '\'';
}

// Where the line holds text of a description: at "v=0\", or at its first letter, a quote in front of it not
// counted; npos for none.
std::size_t BeginOfEscaped(std::string_view line) {
    const std::size_t start = line.find(kEscaped);
    if (start != std::string_view::npos) {
        return start;
    }
    std::size_t at = static_cast<std::size_t>(Trimmed(line).data() - line.data());
    at += at < line.size() && IsQuote(line[at]) ? 1 : 0;
    return LooksLikeSdp(line.substr(at)) ? at : std::string_view::npos;
}

// What a program text puts around a line: quotes, and the signs that join or end texts.
bool IsProgramText(std::string_view text) {
    return text.find_first_not_of("\"'+,;\\ \t\r") == std::string_view::npos;
}

void AddOther(std::string& lines, std::string_view text) {
    if (!IsProgramText(text)) {
        lines.append(text).append("\r\n");
    }
}

// One line of the input as lines: each description in it with line ends, and what is around them.
void AddEscaped(std::string& lines, std::string_view line) {
    std::size_t begin = BeginOfEscaped(line);
    while (begin != std::string_view::npos) {
        const std::size_t end = EndOfEscaped(line, begin);
        AddOther(lines, line.substr(0, begin));
        lines += WithLineEnds(line.substr(begin, end - begin));
        line.remove_prefix(end);
        begin = line.find(kEscaped);
    }
    AddOther(lines, line);
}

int HexDigit(char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::size_t at = digits.find(c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

// "v=3D0", alone or with its line end encoded, too.
bool IsEncodedStart(std::string_view text) {
    constexpr std::string_view start = "v=3D0";
    return BeginsWith(text, start) && (text.size() == start.size() || text[start.size()] == '=');
}

// Adds a line that was encoded. Its text can hold line ends, and a draft counts lines.
void AddDecoded(Draft& draft, std::string_view encoded, std::string_view end, std::uint32_t number) {
    const std::string text = DecodedQuotedLine(encoded);
    std::size_t begin = 0;
    for (std::size_t feed = text.find('\n'); feed != std::string::npos; feed = text.find('\n', begin)) {
        draft.Add(std::string_view(text).substr(begin, feed - begin), "\n", number);
        begin = feed + 1;
    }
    if (begin == 0 || begin < text.size()) {
        draft.Add(std::string_view(text).substr(begin), end, number);
    }
}

} // namespace

std::size_t EndOfEscaped(std::string_view line, std::size_t begin) {
    if (begin == 0 || !IsQuote(line[begin - 1])) {
        return line.size();
    }
    std::size_t at = begin;
    while (at < line.size() && line[at] != line[begin - 1]) {
        at += line[at] == '\\' ? 2 : 1;
    }
    return std::min(at, line.size());
}

std::string WithLineEnds(std::string_view text) {
    std::string lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t escape = EscapeLength(text.substr(at));
        const bool isQuote = text[at] == '\\' && at + 1 < text.size() && IsQuote(text[at + 1]);
        lines += escape != 0 ? "\r\n" : text.substr(at + (isQuote ? 1 : 0), 1);
        at += escape != 0 ? escape : isQuote ? 2 : 1;
    }
    return !lines.empty() && lines.back() == '\n' ? lines : lines + "\r\n";
}

std::string DecodedQuotedLine(std::string_view line) {
    std::string out;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const int high = line[i] == '=' && i + 2 < line.size() ? HexDigit(line[i + 1]) : -1;
        const int low = high < 0 ? -1 : HexDigit(line[i + 2]);
        out += low < 0 ? line[i] : static_cast<char>(high * 16 + low);
        i += low < 0 ? 0 : 2;
    }
    return out;
}

std::size_t DecodeUtf16(Draft& draft) {
    const bool little = BeginsWith(draft.text, "\xff\xfe");
    if (!little && !BeginsWith(draft.text, "\xfe\xff")) {
        return 0;
    }
    draft = Draft::Of(ToUtf8(std::string_view(draft.text).substr(2), little ? "UTF-16LE" : "UTF-16BE"));
    return 1;
}

std::size_t DropByteOrderMark(Draft& draft) {
    if (!BeginsWith(draft.text, kUtf8Mark)) {
        return 0;
    }
    draft = Draft::Of(draft.text.substr(kUtf8Mark.size()));
    return 1;
}

std::size_t TakeFromJson(Draft& draft) {
    const std::string_view text = Trimmed(draft.text);
    if (text.empty() || !Contains("{[\"", text.substr(0, 1))) {
        return 0;
    }
    std::string found = DescriptionsIn(draft.text);
    if (found.empty()) {
        return 0;
    }
    draft = Draft::Of(std::move(found));
    return 1;
}

std::size_t EndLinesAtEscapes(Draft& draft) {
    if (!Contains(draft.text, kEscaped) || !FindBodies(draft).empty()) {
        return 0;
    }
    std::string lines;
    ForEachLine(draft, [&lines](const DraftLine& line) { AddEscaped(lines, line.text); });
    draft = Draft::Of(std::move(lines));
    return 1;
}

std::size_t DecodeQuotedPrintable(Draft& draft) {
    Draft decoded;
    std::size_t count = 0;
    std::string joined; // lines that a soft line end continues
    std::uint32_t number = 0;
    ForEachLine(draft, [&](const DraftLine& line) {
        if (count == 0 && !IsEncodedStart(Trimmed(line.text))) {
            decoded.Add(line.text, line.end, line.number);
            return;
        }
        ++count;
        number = joined.empty() ? line.number : number;
        const bool soft = !line.text.empty() && line.text.back() == '=';
        joined += line.text.substr(0, line.text.size() - (soft ? 1 : 0));
        if (!soft || line.end.empty()) {
            AddDecoded(decoded, joined, line.end, number);
            joined.clear();
        }
    });
    if (!joined.empty()) { // the last line ended in a soft line end
        AddDecoded(decoded, joined, "\r\n", number);
    }
    if (count != 0) {
        draft = std::move(decoded);
    }
    return count;
}

} // namespace cmsdp
