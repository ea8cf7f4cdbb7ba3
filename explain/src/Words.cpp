// Stage: none; words, numbers and addresses in a text.
// Input: views of bytes. Output: parts of them, and answers.
// Touches nothing.
// Test: tests/explain/judge_cases.py
#include "Words.h"

#include "InetPton.h"
#include "SDPText.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace explain {

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && sdp::IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && sdp::IsBlank(text.back())) {
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

std::string Squeezed(std::string_view name) {
    std::string squeezed = Lower(name);
    squeezed.erase(std::remove_if(squeezed.begin(), squeezed.end(),
                                  [](unsigned char c) { return std::isalnum(c) == 0; }),
                   squeezed.end());
    return squeezed;
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

bool IsUnicast(std::string_view text) {
    constexpr int firstMulticast = 224; // of the first number; broadcast is beyond
    return IsIpv4(text) && !BeginsWith(text, "0.") && std::stoi(std::string(text)) < firstMulticast;
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
    while (at < line.size() && (line[at] == ':' || sdp::IsBlank(line[at]))) {
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

} // namespace explain
