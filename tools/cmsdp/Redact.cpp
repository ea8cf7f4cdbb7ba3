// Finds key texts wherever they stand: in a line of their own, or inside a line that a lost line end joined.
//
// Tests: tests/tool/RedactTest.cpp
#include "Redact.h"

#include "Names.h"
#include "Words.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace cmsdp {

namespace {

constexpr std::string_view kInline = "inline:";
constexpr std::string_view kCrypto = "a=crypto:";
constexpr std::string_view kStars = "***";

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::size_t EndOfWord(std::string_view text, std::size_t at) {
    while (at < text.size() && !IsBlank(text[at])) {
        ++at;
    }
    return at;
}

// Where the piece begins in the word, in any letter case; the length of the word when it does not.
std::size_t FindAnyCase(std::string_view word, std::string_view lowerCase) {
    const auto same = [](char have, char want) { return want == Lower(have); };
    return static_cast<std::size_t>(
        std::search(word.begin(), word.end(), lowerCase.begin(), lowerCase.end(), same) - word.begin());
}

// What belongs where a word stands, counted from the last crypto attribute of its line.
enum class Place { kSuite, kKey, kElsewhere };

Place NextPlace(Place place) {
    return place == Place::kSuite ? Place::kKey : Place::kElsewhere;
}

// Where the hidden rest of a word begins; nothing when the whole word is shown.
std::optional<std::size_t> HiddenFrom(std::string_view word, Place place) {
    const std::size_t method = FindAnyCase(word, kInline);
    const bool elsewhere = place == Place::kElsewhere;
    if (method != word.size() && (elsewhere || method == 0)) {
        return method + kInline.size();
    }
    const bool shown = elsewhere || (place == Place::kSuite && IsSuiteName(word));
    return shown ? std::nullopt : std::optional<std::size_t>(0);
}

std::string WithoutKeyTexts(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t base64 = Base64Length(text.substr(at));
        const std::size_t length = std::max<std::size_t>(base64, 1);
        out += base64 >= kKeyText ? kStars : text.substr(at, length);
        at += length;
    }
    return out;
}

} // namespace

std::vector<Hidden> FindHidden(std::string_view text) {
    std::vector<Hidden> found;
    Place place = Place::kElsewhere;
    std::size_t at = 0;
    while (at < text.size()) {
        if (IsBlank(text[at])) {
            if (text.compare(at, 2, "\r\n") == 0) {
                place = Place::kElsewhere;
            }
            ++at;
            continue;
        }
        const std::string_view word = text.substr(at, EndOfWord(text, at) - at);
        if (const std::optional<std::size_t> from = HiddenFrom(word, place)) {
            found.push_back({at + *from, word.size() - *from});
        }
        place = FindAnyCase(word, kCrypto) != word.size() ? Place::kSuite : NextPlace(place);
        at += word.size();
    }
    return found;
}

std::string Redact(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    for (const Hidden& hidden : FindHidden(text)) {
        out += text.substr(at, hidden.offset - at);
        out += kStars;
        at = hidden.offset + hidden.length;
    }
    out += text.substr(at);
    return out;
}

std::string Secrets::Hide(std::string_view text) {
    if (m_show) {
        return std::string(text);
    }
    std::string shown = WithoutKeyTexts(Redact(text));
    m_hidden = m_hidden || shown != text;
    return shown;
}

std::string Secrets::HideKey(std::string_view key) {
    m_hidden = m_hidden || !m_show;
    return std::string(m_show ? key : kStars);
}

const char* const kHiddenNote = "SRTP keys are hidden; --show-secrets shows them";

} // namespace cmsdp
