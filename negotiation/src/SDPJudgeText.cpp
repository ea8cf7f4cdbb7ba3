// The judge's reader: text to lines, sections, attributes, formats.
//
// Input: any bytes. Output: views into them; the caller keeps the text. A description is read with patience
// here, so that one fault does not hide the others; SDPJudgeGrammar.cpp names the faults of the judged text.
// Lookups go through sorted lists and maps, so no text costs more than its length times its logarithm.
// Test: tests/judge/BrokenTest.cpp
#include "SDPJudgeText.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace judge {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

// RFC 3551, 6. The clock rate of G.722 is 8000 for historical reasons (4.5.2).
const std::map<std::string_view, std::string_view>& StaticEncodings() {
    static const std::map<std::string_view, std::string_view> table = {
        {"0", "pcmu/8000"},    {"3", "gsm/8000"},    {"4", "g723/8000"},   {"5", "dvi4/8000"},
        {"6", "dvi4/16000"},   {"7", "lpc/8000"},    {"8", "pcma/8000"},   {"9", "g722/8000"},
        {"10", "l16/44100/2"}, {"11", "l16/44100"},  {"12", "qcelp/8000"}, {"13", "cn/8000"},
        {"14", "mpa/90000"},   {"15", "g728/8000"},  {"16", "dvi4/11025"}, {"17", "dvi4/22050"},
        {"18", "g729/8000"},   {"25", "celb/90000"}, {"26", "jpeg/90000"}, {"28", "nv/90000"},
        {"31", "h261/90000"},  {"32", "mpv/90000"},  {"33", "mp2t/90000"}, {"34", "h263/90000"},
    };
    return table;
}

// Spellings of one encoding: a channel count of one may be left out (RFC 4566, 6), the annexes of G.729 are
// told by a format parameter (RFC 4856, 2.1.9), and an MPEG stream tells its channels itself (RFC
// 3551, 4.5.13).
constexpr struct {
    std::string_view written;
    std::string_view meant;
} kSpellings[] = {
    {"g729a/8000", "g729/8000"},
    {"g729b/8000", "g729/8000"},
    {"g729ab/8000", "g729/8000"},
    {"mpa/90000/2", "mpa/90000"},
};

std::string Normal(std::string_view encoding) {
    std::string text = Lower(encoding);
    if (const auto parts = Split(text, '/'); parts.size() == 3 && parts[2] == "1") {
        text.resize(text.size() - 2);
    }
    const auto row = std::find_if(std::begin(kSpellings), std::end(kSpellings),
                                  [&text](const auto& each) { return each.written == text; });
    return row == std::end(kSpellings) ? text : std::string(row->meant);
}

// "97 H264/90000" -> "97", "H264/90000"
std::pair<std::string_view, std::string_view> Cut(std::string_view text, std::string_view separators) {
    const auto at = text.find_first_of(separators);
    return at == std::string_view::npos ? std::pair{text, std::string_view{}}
                                        : std::pair{text.substr(0, at), Trimmed(text.substr(at + 1))};
}

std::string_view TrimmedEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

Section Opened(const Line& line, int index) {
    Section section;
    section.index = index;
    section.line = line.number;
    const auto words = Words(line.value);
    section.media = words.empty() ? std::string_view{} : words[0];
    if (words.size() >= 4) {
        if (const auto port = Number(words[1].substr(0, words[1].find('/'))); port && *port <= 65535) {
            section.port = static_cast<unsigned>(*port);
            section.transport = words[2];
            section.formats.assign(words.begin() + 3, words.end());
        }
    }
    return section;
}

void SortAttributes(Section& section) {
    for (const Line& line : section.lines) {
        if (line.type == 'a') {
            const std::string_view text = TrimmedEnd(line.text.substr(2));
            const auto [name, value] = Cut(text, ":");
            section.attributes.push_back({name, value, line.number, name.size() < text.size()});
        }
    }
    std::stable_sort(section.attributes.begin(), section.attributes.end(),
                     [](const Attribute& a, const Attribute& b) { return a.name < b.name; });
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    text = TrimmedEnd(text);
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    for (auto at = text.find_first_not_of(kBlanks); at < text.size();
         at = text.find_first_not_of(kBlanks, at)) {
        const auto end = std::min(text.find_first_of(kBlanks, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator)) {
        pieces.push_back(text.substr(0, at));
        text.remove_prefix(at + 1);
    }
    pieces.push_back(text);
    return pieces;
}

std::optional<std::uint64_t> Number(std::string_view digits) {
    std::uint64_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9' || number > (UINT64_MAX - 9) / 10) {
            return std::nullopt;
        }
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return digits.empty() ? std::nullopt : std::optional(number);
}

bool IsToken(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return c > ' ' && c < 0x7F && std::strchr("\"(),/:;<=>?@[\\]", c) == nullptr;
    });
}

bool IsTransport(std::string_view text) {
    const auto words = Split(text, '/');
    return std::all_of(words.begin(), words.end(), IsToken);
}

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsId(std::string_view text) {
    constexpr std::size_t longest = 10;
    return IsDigits(text) && text.size() <= longest;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : static_cast<char>(c);
    });
    return lower;
}

std::string Quoted(std::string_view word) {
    constexpr std::size_t longest = 24;
    const bool prints =
        std::all_of(word.begin(), word.end(), [](unsigned char c) { return c >= ' ' && c < 0x7F; });
    return prints && word.size() <= longest ? "'" + std::string(word) + "'"
                                            : "a word of " + std::to_string(word.size()) + " bytes";
}

std::pair<const Attribute*, const Attribute*> Section::All(std::string_view name) const {
    struct ByName {
        bool operator()(const Attribute& a, std::string_view b) const { return a.name < b; }
        bool operator()(std::string_view a, const Attribute& b) const { return a < b.name; }
    };
    return std::equal_range(attributes.data(), attributes.data() + attributes.size(), name, ByName{});
}

const Attribute* Section::First(std::string_view name) const {
    const auto [first, last] = All(name);
    return first == last ? nullptr : first;
}

const Attribute* Text::Of(const Section& section, std::string_view name) const {
    const Attribute* own = section.First(name);
    return own != nullptr ? own : session.First(name);
}

// Of several direction lines the last one counts.
std::pair<std::string_view, std::size_t> Text::Direction(const Section& section) const {
    for (const Section* level : {&section, &session}) {
        std::pair<std::string_view, std::size_t> found;
        for (const std::string_view name : {"sendrecv", "sendonly", "recvonly", "inactive"}) {
            const auto [first, last] = level->All(name);
            for (const Attribute* line = first; line != last; ++line) {
                if (!line->hasValue && line->line > found.second) {
                    found = {name, line->line};
                }
            }
        }
        if (found.second != 0) {
            return found;
        }
    }
    return {"sendrecv", 0};
}

Text Read(std::string_view text) {
    Text read;
    Section* level = &read.session;
    for (std::size_t number = 1; !text.empty(); ++number) {
        Line line;
        line.number = number;
        line.text = text.substr(0, text.find_first_of("\r\n"));
        line.ended = text.substr(line.text.size(), 2) == "\r\n";
        text.remove_prefix(std::min(line.text.size() + (line.ended ? 2 : 1), text.size()));
        if (line.text.size() >= 2 && line.text[1] == '=') {
            line.type = line.text[0];
            line.value = Trimmed(line.text.substr(2));
        }
        if (line.type == 'm') {
            read.sections.push_back(Opened(line, static_cast<int>(read.sections.size())));
            level = &read.sections.back();
        }
        level->lines.push_back(line);
    }
    SortAttributes(read.session);
    for (Section& section : read.sections) {
        SortAttributes(section);
    }
    return read;
}

Encodings EncodingsOf(const Section& section) {
    Encodings encodings;
    const auto [first, last] = section.All("rtpmap");
    for (const Attribute* line = first; line != last; ++line) {
        const auto words = Words(line->value);
        if (words.size() >= 2) {
            encodings[words[0]].insert(Normal(words[1]));
        }
    }
    for (const std::string_view number : section.formats) {
        const auto known = StaticEncodings().find(number);
        if (known != StaticEncodings().end() && encodings.count(number) == 0) {
            encodings[number].emplace(known->second);
        }
    }
    return encodings;
}

Parameters ParametersOf(const Section& section) {
    Parameters parameters;
    const auto [first, last] = section.All("fmtp");
    for (const Attribute* line = first; line != last; ++line) {
        const auto [number, list] = Cut(line->value, kBlanks);
        for (const std::string_view piece : Split(list, ';')) {
            const auto [name, value] = Cut(Trimmed(piece), "=");
            parameters[number].emplace(Lower(Trimmed(name)), Lower(value));
        }
    }
    return parameters;
}

Crypto ReadCrypto(std::string_view value) {
    Crypto crypto;
    const auto words = Words(value);
    if (words.size() >= 3) {
        crypto.tag = words[0];
        crypto.suite = words[1];
        for (const std::string_view key : Split(words[2], ';')) {
            constexpr std::string_view method = "inline:";
            if (key.substr(0, method.size()) == method) {
                crypto.keys.push_back(Split(key.substr(method.size()), '|').front());
            }
        }
    }
    return crypto;
}

} // namespace judge
