// Stage: a crypto line to the spelling that its writer meant (RFC 4568, 9.1).
// Input: a line that begins with its keyword. Output: the same line, its words in their places.
// Touches nothing. Which suites are read is not decided here.
// Test: tests/explain/judge_cases.py
#include "Canonical.h"

#include "SDPKeyword.h"
#include "SDPTables.h"
#include "Words.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace explain {

namespace {

/// The words of a crypto line after its keyword, with the key method at the start of a word and after the
/// suite.
std::vector<std::string_view> CryptoWordsOf(std::string_view line) {
    std::vector<std::string_view> words = WordsOf(line.substr(8));
    const std::string first = words.empty() ? std::string() : Upper(words[0]);
    const std::size_t suite = std::min({first.find("AES_"), first.find("AEAD_"), first.find("F8_")});
    if (suite != std::string::npos && suite > 0) {
        words.insert(words.begin() + 1, words[0].substr(suite)); // "a=crypto:1;AES_CM_128_HMAC_SHA1_32"
        words[0] = words[0].substr(0, suite);
    }
    constexpr std::size_t most = 8; // Tag, suite and key are among the first words.
    for (std::size_t i = 0; i < words.size() && i < most; ++i) {
        words[i] = words[i].substr(0, words[i].find_last_not_of(",;") + 1);
        const std::size_t method = Lower(words[i]).find("inline:");
        if (method != std::string::npos && method > 0 && words[i][method - 1] != ':') {
            const std::string_view key = words[i].substr(method);
            words[i] = words[i].substr(0, words[i].find_last_not_of(",;", method - 1) + 1);
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, key);
        }
        if (i > 0 && Upper(words[i]).find("AES_") != std::string::npos &&
            BeginsWith(Lower(words[i - 1]), "inline:")) {
            std::swap(words[i], words[i - 1]);
        }
    }
    return words;
}

/// A suite with the signs that its registered name has: "AES-CM-128-HMAC-SHA1-32" is one to its writer.
std::string SuiteMeant(std::string_view word) {
    std::string name = Upper(word);
    if (sdp::FindNamed<sdp::kSuites>(word) != nullptr) {
        return std::string(word);
    }
    for (const sdp::Suite& suite : sdp::kSuites) {
        if (!suite.name.empty() && Squeezed(suite.name) == Squeezed(word)) {
            return std::string(suite.name);
        }
    }
    return name;
}

} // namespace

std::string CanonicalCrypto(std::string_view line) {
    const std::vector<std::string_view> words = CryptoWordsOf(line);
    const std::string_view first = line.substr(0, line.find_first_of(" \t", 10));
    const std::size_t digit = first.find_first_of("0123456789");
    const std::string_view digits =
        digit == std::string_view::npos
            ? std::string_view()
            : first.substr(digit, first.find_first_not_of("0123456789", digit) - digit);
    std::size_t at = 0;
    while (at < words.size() && Upper(words[at]).find("AES_") == std::string::npos &&
           Upper(words[at]).find("F8_") == std::string::npos &&
           Upper(words[at]).find("AEAD") == std::string::npos) {
        ++at;
    }
    if (at + 1 >= words.size()) {
        return std::string(line);
    }
    std::string text = "a=crypto:" + std::string(digits.empty() ? "1" : digits) + " " + SuiteMeant(words[at]);
    std::string_view key = words[++at];
    if (Lower(key) == "inline:" && at + 1 < words.size()) {
        key = words[++at];
    } else if (BeginsWith(Lower(key.substr(0, 7)), "inline:")) {
        key.remove_prefix(7);
    } else if (const std::size_t colon = key.find(':'); colon < 12) {
        key.remove_prefix(colon + 1);
    }
    while (!key.empty() && std::string_view("\"'<").find(key.front()) != std::string_view::npos) {
        key.remove_prefix(1);
    }
    while (!key.empty() && std::string_view("\"'>").find(key.back()) != std::string_view::npos) {
        key.remove_suffix(1);
    }
    text += " inline:" + std::string(key);
    while (++at < words.size()) {
        text += " " + std::string(words[at]);
    }
    return text;
}

} // namespace explain
