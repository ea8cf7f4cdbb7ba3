// A log says again what a description holds: "DEBUG key is ...", "Alice has joined".
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Originals.h"

#include "SipHeaders.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>

namespace cmsdp {

namespace {

using Kind = OriginalKind;
using Known = std::unordered_map<std::string_view, Kind>;

// Shorter texts are found by chance: "to" of a session name, "617" of a telephone number.
constexpr std::size_t kShortestKey = 8;
constexpr std::size_t kShortestCredential = 4;
constexpr std::size_t kShortestName = 3;
constexpr std::size_t kShortestNumber = 6;

bool IsSecret(Kind kind) {
    return kind == Kind::kKey || kind == Kind::kCredential;
}

bool IsNumber(std::string_view text) {
    return text.find_first_not_of("+-0123456789") == std::string_view::npos;
}

bool IsRepeated(const Original& original) {
    const std::size_t size = original.text.size();
    switch (original.kind) {
    case Kind::kKey:
        return size >= kShortestKey;
    case Kind::kCredential:
        return size >= kShortestCredential;
    case Kind::kUser:
    case Kind::kWord:
    case Kind::kHost:
        return size >= (IsNumber(original.text) ? kShortestNumber : kShortestName);
    default: // addresses are found by their form
        return false;
    }
}

bool IsOfName(char c) {
    return (IsBase64(c) && c != '/') || c == '.' || c == '-' || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

bool IsSeparator(char c) {
    return c == '.' || c == '-' || c == '_' || c == '+';
}

bool HasDot(std::string_view text) {
    return text.find('.') != std::string_view::npos;
}

// Names of headers that the reader of a message needs; a name in front of a colon may be one of them.
bool IsHeader(std::string_view word) {
    static constexpr std::string_view headers[] = {
        "call-id", "cseq", "content-type", "content-length",      "contact",         "warning",
        "from",    "to",   "via",          "content-disposition", "content-encoding"};
    return std::find(std::begin(headers), std::end(headers), LowerCase(word)) != std::end(headers);
}

// What a message is made of: a start line, Via, CSeq, or the type of a body.
bool IsStructure(std::string_view line) {
    const std::string lower = LowerCase(line);
    return lower.find("sip/2.0") != std::string::npos || lower.find("cseq:") != std::string::npos ||
           lower.find("content-") != std::string::npos;
}

class Repeats {
public:
    Repeats(std::string_view line, std::size_t offset, const Known& known, std::vector<Original>& found)
        : m_line(line), m_offset(offset), m_known(known), m_found(found), m_isSdp(LooksLikeSdp(line)),
          m_isExtension(LowerCase(Trimmed(line).substr(0, 4)) == "a=x-"), m_isStructure(IsStructure(line)) {}

    void Secrets();
    void Names();

private:
    bool Add(std::size_t begin, std::size_t end, bool isSecret);
    bool MayReplace(std::string_view text, Kind kind) const;
    void Name(std::size_t begin, std::size_t end);

    std::string_view m_line;
    std::size_t m_offset;
    const Known& m_known;
    std::vector<Original>& m_found;
    bool m_isSdp;
    bool m_isExtension;
    bool m_isStructure;
};

// A line of a description keeps its words: a name of the session may be one of them ("audio").
bool Repeats::MayReplace(std::string_view text, Kind kind) const {
    switch (kind) {
    case Kind::kKey:
        return true;
    case Kind::kCredential:
        return !m_isSdp || m_isExtension || text.size() >= kShortestKey;
    case Kind::kHost:
        return HasDot(text) || m_isExtension || !(m_isSdp || m_isStructure);
    default:
        return m_isExtension || !(m_isSdp || m_isStructure);
    }
}

bool Repeats::Add(std::size_t begin, std::size_t end, bool isSecret) {
    const std::string_view text = m_line.substr(begin, end - begin);
    const auto known = m_known.find(text);
    if (known == m_known.end() || IsSecret(known->second) != isSecret || !MayReplace(text, known->second)) {
        return false;
    }
    m_found.push_back({m_offset + begin, text, known->second});
    return true;
}

void Repeats::Secrets() {
    for (std::size_t at = 0; at < m_line.size();) {
        const std::size_t length = Base64Length(m_line.substr(at));
        const std::string_view text = m_line.substr(at, length);
        const std::size_t bare = text.find_last_not_of('=') + 1; // without padding
        if (length != 0 && !Add(at, at + length, true) && bare != length) {
            Add(at, at + bare, true);
        }
        at += std::max<std::size_t>(length, 1);
    }
}

// A whole name, then its parts: "alice" of "alice.example", "Alice-"
void Repeats::Name(std::size_t begin, std::size_t end) {
    const bool isParameter = end < m_line.size() && m_line[end] == '=';
    const bool isHeader =
        end < m_line.size() && m_line[end] == ':' && IsHeader(m_line.substr(begin, end - begin));
    if (isParameter || isHeader || Add(begin, end, false)) {
        return;
    }
    while (begin < end) {
        std::size_t stop = begin;
        while (stop < end && !IsSeparator(m_line[stop])) {
            ++stop;
        }
        Add(begin, stop, false);
        begin = stop + 1;
    }
}

void Repeats::Names() {
    for (std::size_t at = 0; at < m_line.size();) {
        std::size_t end = at;
        while (end < m_line.size() && IsOfName(m_line[end])) {
            ++end;
        }
        std::size_t last = end;
        while (last > at && (m_line[last - 1] == '.' || m_line[last - 1] == '-')) { // the end of a sentence
            --last;
        }
        Name(at, last);
        at = end + 1;
    }
}

} // namespace

void FindRepeats(std::string_view text, std::vector<Original>& found) {
    Known known;
    for (const Original& original : found) {
        if (IsRepeated(original)) {
            known.emplace(original.text, original.kind);
        }
    }
    for (std::size_t begin = 0; begin < text.size() && !known.empty();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        Repeats repeats(text.substr(begin, end - begin), begin, known, found);
        repeats.Secrets();
        repeats.Names();
        begin = end + 1;
    }
}

} // namespace cmsdp
