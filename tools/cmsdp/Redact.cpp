// Finds key texts wherever they stand: in a line of their own, or inside a line that a lost line end joined.
//
// Tests: tests/tool/RedactTest.cpp
#include "Redact.h"

#include "Words.h"

#include <algorithm>
#include <cstddef>

namespace cmsdp {

namespace {

constexpr std::string_view kInline = "inline:";
constexpr std::string_view kCrypto = "a=crypto:";
constexpr std::string_view kStars = "***";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool StartsWithAnyCase(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                      [](char want, char have) { return want == Lower(have); });
}

std::size_t EndOfWord(std::string_view text, std::size_t at) {
    while (at < text.size() && !IsBlank(text[at])) {
        ++at;
    }
    return at;
}

// Where the key parameter of the attribute at `at` begins; the end of the text when its line ends before.
std::size_t KeyParameter(std::string_view text, std::size_t at) {
    for (int word = 0; word < 2; ++word) {
        at = EndOfWord(text, at);
        while (at < text.size() && IsBlank(text[at])) {
            if (text.compare(at, 2, "\r\n") == 0) {
                return text.size();
            }
            ++at;
        }
    }
    return at;
}

} // namespace

std::string Redact(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t keyAt = text.size();
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view rest = text.substr(at);
        if (StartsWithAnyCase(rest, kInline)) {
            out.append(rest.substr(0, kInline.size())).append(kStars);
            at = EndOfWord(text, at + kInline.size());
        } else if (at == keyAt) {
            const std::size_t end = EndOfWord(text, at);
            const std::string word = Redact(text.substr(at, end - at));
            out.append(word == text.substr(at, end - at) ? kStars : std::string_view(word));
            at = end;
        } else {
            if (StartsWithAnyCase(rest, kCrypto)) {
                keyAt = KeyParameter(text, at);
            }
            out += text[at];
            ++at;
        }
    }
    return out;
}

std::string Secrets::Hide(std::string_view text) {
    if (m_show) {
        return std::string(text);
    }
    std::string shown = Redact(text);
    m_hidden = m_hidden || shown != text;
    return shown;
}

std::string Secrets::HideKey(std::string_view key) {
    m_hidden = m_hidden || !m_show;
    return std::string(m_show ? key : kStars);
}

const char* const kHiddenNote = "SRTP keys are hidden; --show-secrets shows them";

} // namespace cmsdp
