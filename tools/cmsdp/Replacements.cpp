// Addresses come from the ranges that are set aside for documentation (RFC 5737, RFC 3849, RFC 6676), names
// from the domain "example" (RFC 2606). An address of a special range stays in it, because what an address is
// good for depends on it: private, loopback, link-local, multicast. Keys and credentials keep their length
// and every character that is not base64, so that a key decodes when the original does.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Replacements.h"

#include "SDPLines.h"
#include "SDPTables.h"
#include "Words.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace cmsdp {

namespace {

using Kind = OriginalKind;

// A range of IPv4 addresses, and how the replacements of its addresses begin.
struct Range {
    std::string_view example;
    std::uint32_t first;
    std::uint32_t last;
    std::string_view made; // two numbers
};

constexpr Range kRanges[] = {
    {"10.1.2.3", 0x0A000000, 0x0AFFFFFF, "10.0."},        {"127.0.0.1", 0x7F000000, 0x7FFFFFFF, "127.0."},
    {"169.254.7.8", 0xA9FE0000, 0xA9FEFFFF, "169.254."},  {"172.17.0.1", 0xAC100000, 0xAC1FFFFF, "172.16."},
    {"192.168.1.20", 0xC0A80000, 0xC0A8FFFF, "192.168."}, {"224.2.1.1", 0xE0000000, 0xEFFFFFFF, "233.252."},
    {"any other address", 0x00000000, 0xFFFFFFFF, ""},
};

std::string_view BeginningOf4(std::string_view address) {
    std::array<unsigned char, sizeof(in_addr)> bytes{};
    inet_pton(AF_INET, std::string(address).c_str(), bytes.data());
    std::uint32_t number = 0;
    for (const unsigned char byte : bytes) {
        number = number << 8 | byte;
    }
    return std::find_if(
               std::begin(kRanges), std::end(kRanges),
               [number](const Range& range) { return number >= range.first && number <= range.last; })
        ->made;
}

std::string_view BeginningOf6(std::string_view address) {
    std::array<unsigned char, sizeof(in6_addr)> bytes{};
    inet_pton(AF_INET6, std::string(address).c_str(), bytes.data());
    const bool isLinkLocal = bytes[0] == 0xFE && (bytes[1] & 0xC0U) == 0x80;
    return bytes[0] == 0xFF ? "ff0e::db8:0:" : isLinkLocal ? "fe80::" : "2001:db8::";
}

constexpr std::size_t kHosts = 254; // in a network of 256 addresses

std::string LastNumbers(std::size_t count) {
    return std::to_string(count / kHosts) + "." + std::to_string(count % kHosts + 1);
}

// The networks of documentation; then that of benchmarks (RFC 2544) and the one that is reserved.
std::string Documentation(std::size_t count) {
    static constexpr std::string_view networks[] = {"192.0.2.", "198.51.100.", "203.0.113."};
    if (count < std::size(networks) * kHosts) {
        return std::string(networks[count / kHosts]) + std::to_string(count % kHosts + 1);
    }
    count -= std::size(networks) * kHosts;
    const std::size_t net = count / (256 * kHosts);
    return (net < 2 ? "198." + std::to_string(18 + net) : "240." + std::to_string(net)) + "." +
           LastNumbers(count % (256 * kHosts));
}

std::string Hex(std::size_t number) {
    std::string text;
    for (; number != 0; number /= 16) {
        text.insert(text.begin(), "0123456789abcdef"[number % 16]);
    }
    return text;
}

template <typename Row, std::size_t N>
void MarkKeywords(const Row (&table)[N], std::string_view text, std::vector<bool>& kept) {
    for (const Row& row : table) {
        for (std::size_t at = text.find(row.keyword); at != std::string_view::npos;
             at = text.find(row.keyword, at + 1)) {
            std::fill_n(kept.begin() + static_cast<std::ptrdiff_t>(at), row.keyword.size(), true);
        }
    }
}

// The places of the keywords in a text, which decide what its line is. Each keyword has an "=".
std::vector<bool> KeywordsIn(std::string_view text) {
    std::vector<bool> kept(text.size());
    if (text.find('=') != std::string_view::npos) {
        MarkKeywords(sdp::kLineRows, text, kept);
        MarkKeywords(sdp::kDirections, text, kept);
    }
    return kept;
}

// Characters at the beginning that make a key zero: 16 bytes are 21 characters and two bits of one more.
std::size_t ZeroLength(std::string_view key) {
    constexpr std::size_t whole = 21;
    const std::size_t zeros = std::min(key.find_first_not_of('A'), key.size());
    const bool isRest = zeros > whole || (zeros == whole && zeros < key.size() && key[zeros] <= 'P');
    return zeros == key.size() || key.find_first_not_of("A=") == std::string_view::npos ? key.size()
           : isRest                                                                     ? whole + 1
                                                                                        : 0;
}

// "7xxxxx", as long as the original, with its keywords and its characters that are not base64.
std::string Masked(std::string_view original, std::size_t number, std::size_t zeros) {
    const std::string digits = std::to_string(number);
    const std::vector<bool> kept = KeywordsIn(original);
    std::string text(original);
    std::size_t digit = 0;
    for (std::size_t i = zeros; i < text.size(); ++i) {
        if (kept[i] || !IsBase64(text[i])) {
            continue;
        }
        // In front of padding the bits that no byte has are zero, and no letter there makes a keyword.
        const bool isLast = i + 1 < text.size() && text[i + 1] == '=';
        text[i] = isLast ? 'w' : digit < digits.size() ? digits[digit] : 'x';
        ++digit;
    }
    return text;
}

// What a replacement is like, without its number.
std::string FormOf(const Original& original) {
    switch (original.kind) {
    case Kind::kAddress4:
        return std::string(BeginningOf4(original.text));
    case Kind::kAddress6:
        return std::string(BeginningOf6(original.text));
    case Kind::kHost:
        return "host";
    case Kind::kPage:
        return "page";
    case Kind::kWord:
        return "word";
    case Kind::kUser:
        return "user";
    case Kind::kFoundation:
        return "foundation";
    case Kind::kNoAddress:
        return "no address";
    default:
        return "masked";
    }
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// The candidate of a number, from 0.
std::string Candidate(const Original& original, const std::string& form, std::size_t count) {
    std::string number = std::to_string(count + 1);
    const std::size_t ofRange = 256 * kHosts;
    switch (original.kind) {
    case Kind::kAddress4:
        return form.empty() || count >= ofRange ? Documentation(count) : form + LastNumbers(count);
    case Kind::kAddress6:
        return form + Hex(count + 1);
    case Kind::kHost:
        return "host" + number + (EndsWith(original.text, ".local") ? ".local" : ".example");
    case Kind::kPage:
        return "http://host" + number + ".example/";
    case Kind::kUser:
    case Kind::kWord:
        return form + number;
    case Kind::kFoundation:
        return number;
    case Kind::kNoAddress:
        return "192.0.2." + std::to_string(256 + count);
    default:
        return Masked(original.text, count + 1, original.kind == Kind::kKey ? ZeroLength(original.text) : 0);
    }
}

bool IsMasked(Kind kind) {
    return kind == Kind::kKey || kind == Kind::kCredential;
}

bool HasKeyword(std::string_view text) {
    const std::vector<bool> kept = KeywordsIn(text);
    return std::find(kept.begin(), kept.end(), true) != kept.end();
}

} // namespace

Replacements::Replacements(const std::vector<Original>& originals) {
    for (const Original& original : originals) {
        m_originals.insert(original.text);
    }
}

std::string Replacements::Next(const Original& original) {
    const bool isKey = original.kind == Kind::kKey;
    if (isKey && ZeroLength(original.text) == original.text.size()) {
        return std::string(original.text);
    }
    if (HasKeyword(original.text)) {
        return Masked(original.text, ++m_counts["masked"], 0);
    }
    const std::string form = FormOf(original);
    std::size_t& count = m_counts[form];
    // Every numbered candidate is tried once in all; a short credential has few candidates.
    std::size_t tries = IsMasked(original.kind) ? 64 : m_originals.size();
    std::string made = Candidate(original, form, count++);
    for (; tries != 0 && m_originals.count(made) != 0; --tries) {
        made = Candidate(original, form, count++);
    }
    return made;
}

const std::string& Replacements::Of(const Original& original) {
    auto& made = m_made[IsMasked(original.kind) ? 1 : 0];
    const auto known = made.find(original.text);
    return known != made.end() ? known->second : made.emplace(original.text, Next(original)).first->second;
}

std::string Replaced(std::string_view text, const std::vector<Original>& originals,
                     Replacements& replacements) {
    std::string replaced;
    replaced.reserve(text.size());
    std::size_t at = 0;
    for (const Original& original : originals) {
        replaced += text.substr(at, original.offset - at);
        replaced += replacements.Of(original);
        at = original.offset + original.text.size();
    }
    replaced += text.substr(at);
    return replaced;
}

} // namespace cmsdp
