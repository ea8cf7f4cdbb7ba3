// What is known by its form, wherever it is: addresses, user@host, and text as long as a key.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Originals.h"

#include "SDPLines.h"
#include "Words.h"

#include <arpa/inet.h>

#include <algorithm>
#include <string>

namespace cmsdp {

namespace {

using Kind = OriginalKind;

constexpr std::size_t kLongestAddress = 45;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsHex(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsOfAddress(char c) {
    return IsHex(c) || c == ':' || c == '.';
}

bool IsOfHost(char c) {
    return IsDigit(c) || IsLetter(c) || c == '.' || c == '-';
}

bool IsOfUser(char c) {
    return IsOfHost(c) || c == '_' || c == '+';
}

bool IsAddress(int family, std::string_view text) {
    unsigned char bytes[sizeof(in6_addr)];
    return text.size() <= kLongestAddress && inet_pton(family, std::string(text).c_str(), bytes) == 1;
}

// Searches one line and remembers what it finds.
class Search {
public:
    Search(std::string_view line, std::size_t offset, std::vector<Original>& found)
        : m_line(line), m_offset(offset), m_found(found) {}

    void Addresses();
    void Users();

private:
    std::size_t After(std::size_t at, bool (*isOf)(char)) const;
    std::size_t ColonBefore(std::size_t at, std::size_t end) const;
    void Run(std::size_t begin, std::size_t end);
    void Add(std::size_t begin, std::size_t end, Kind kind);

    std::string_view m_line;
    std::size_t m_offset;
    std::vector<Original>& m_found;
};

std::size_t Search::After(std::size_t at, bool (*isOf)(char)) const {
    while (at < m_line.size() && isOf(m_line[at])) {
        ++at;
    }
    return at;
}

// Offset of the first colon from `at` on, or `end`. A search past the end would cost the line for each run.
std::size_t Search::ColonBefore(std::size_t at, std::size_t end) const {
    return std::min(m_line.substr(0, end).find(':', at), end);
}

void Search::Add(std::size_t begin, std::size_t end, Kind kind) {
    const std::string_view text = m_line.substr(begin, end - begin);
    if (!text.empty() && text != "0.0.0.0" && text != "::" && text != "::1") {
        m_found.push_back({m_offset + begin, text, kind});
    }
}

// A run of hexadecimal digits, colons and dots: an IPv6 address, or IPv4 addresses and ports with colons
// between them. A letter next to the run shows that its first or last part belongs to a word:
// "address:fe80::1".
void Search::Run(std::size_t begin, std::size_t end) {
    const std::string_view run = m_line.substr(begin, end - begin);
    if (end < m_line.size() && IsLetter(m_line[end])) {
        end = begin + (run.rfind(':') == std::string_view::npos ? 0 : run.rfind(':'));
    }
    if (begin > 0 && IsLetter(m_line[begin - 1])) {
        begin = ColonBefore(begin, end) + 1;
    }
    while (begin < end && m_line[end - 1] == '.') {
        --end;
    }
    if (begin < end && IsAddress(AF_INET6, m_line.substr(begin, end - begin))) {
        Add(begin, end, Kind::kAddress6);
        return;
    }
    while (begin < end) {
        const std::size_t stop = ColonBefore(begin, end);
        if (IsAddress(AF_INET, m_line.substr(begin, stop - begin))) {
            Add(begin, stop, Kind::kAddress4);
        }
        begin = stop + 1;
    }
}

void Search::Addresses() {
    for (std::size_t at = 0; at < m_line.size();) {
        const std::size_t end = After(at, IsOfAddress);
        if (end > at) {
            Run(at, end);
        }
        at = end + 1;
    }
}

void Search::Users() {
    std::size_t last = 0; // what is before it belongs to the pair before
    for (std::size_t sign = m_line.find('@'); sign != std::string_view::npos;
         sign = m_line.find('@', sign + 1)) {
        std::size_t begin = sign;
        while (begin > last && IsOfUser(m_line[begin - 1])) {
            --begin;
        }
        const std::size_t end = After(sign + 1, IsOfHost);
        // The first letters of an attribute are its name.
        const bool isName = begin == 2 && m_line.substr(0, 2) == "a=";
        if (begin < sign && sign + 1 < end && !isName) {
            Add(begin, sign, Kind::kUser);
            Add(sign + 1, end, KindOfAddress(m_line.substr(sign + 1, end - sign - 1)));
        }
        last = std::max(sign + 1, end);
    }
}

} // namespace

OriginalKind KindOfAddress(std::string_view word) {
    if (IsAddress(AF_INET, word)) {
        return Kind::kAddress4;
    }
    if (IsAddress(AF_INET6, word)) {
        return Kind::kAddress6;
    }
    return word.find_first_not_of("0123456789.") == std::string_view::npos ? Kind::kNoAddress : Kind::kHost;
}

void FindAddressTexts(std::string_view line, std::size_t offset, std::vector<Original>& found) {
    Search search(line, offset, found);
    search.Users();
    search.Addresses();
}

void FindKeyTexts(std::string_view line, std::size_t offset, std::vector<Original>& found) {
    if (sdp::StartsWith(Trimmed(line), "a=fmtp:")) {
        return;
    }
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t length = Base64Length(line.substr(at));
        if (length >= kKeyText) {
            found.push_back({offset + at, line.substr(at, length), Kind::kKey});
        }
        at += std::max<std::size_t>(length, 1);
    }
}

} // namespace cmsdp
