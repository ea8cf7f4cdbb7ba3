// Stage: none; text of the far end for a sentence.
// Input: a line or a value. Output: what may be shown of it.
// Touches nothing. Whatever could be key text is "***".
// Test: fuzz/FuzzExplain.cpp, tests/explain/judge_cases.py
#include "Quoted.h"

#include "LineStart.h"
#include "Words.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace explain {

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
        shown += c == '"' ? '\'' : c >= ' ' && c <= '~' ? c : '?';
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
        while (end < text.size() && IsBase64(text[end]) &&
               (end == at || text[end - 1] != '=' || text[end] == '=')) { // "=" ends base64 text
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

/// Offset of a secret that its line names: a key (RFC 4566, 5.12; RFC 4567, 3) or a password (RFC 8839, 5.4);
/// the length of the text without one. `lower` is the text in small letters.
std::size_t SecretFrom(std::string_view lower) {
    struct Opening {
        std::string_view example;
        std::string_view start;
        char end; // the secret follows it
    };
    static constexpr Opening kOpenings[] = {
        {"k=base64:c2VjcmV0", "k=", ':'},
        {"a=key-mgmt:mikey AQAFgM0X", "a=key-mgmt:", ' '},
        {"a=ice-pwd:x9cml/YzichV2+XlhiMu8g", "a=ice-pwd:", ':'},
    };
    for (const Opening& opening : kOpenings) {
        if (BeginsWith(lower, opening.start)) {
            return std::min(lower.find(opening.end), lower.size() - 1) + 1;
        }
    }
    return lower.size();
}

} // namespace

std::string Quoted(std::string_view line) {
    const std::string_view text = Trimmed(line);
    const std::string_view unquoted = Unquoted(text);
    const std::string lower = Lower(text.substr(0, 4096));
    const std::string_view type = Trimmed(unquoted.substr(0, unquoted.find('=')));
    const bool isLine =
        !WithType(unquoted).empty() || (type.size() == 1 && type.size() < unquoted.size() &&
                                        std::isalpha(static_cast<unsigned char>(type[0])) != 0);
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
    const std::size_t named = SecretFrom(lower);
    return '"' + Printable(Masked(text.substr(0, named))) + (named < lower.size() ? "***\"" : "\"");
}

std::string Shown(std::string_view value) {
    if (value.size() < kSecretRun && value.find_first_not_of("0123456789.") == std::string_view::npos) {
        return std::string(value); // A number or an address: shown as it is.
    }
    const std::string lower = Lower(value.substr(0, 4096));
    if (lower.find("inline") != std::string::npos) {
        return "***";
    }
    const std::size_t named = SecretFrom(lower);
    return Printable(Masked(value.substr(0, named))) + (named < lower.size() ? "***" : "");
}

} // namespace explain
