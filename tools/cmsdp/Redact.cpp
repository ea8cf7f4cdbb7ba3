// Finds key texts wherever they are: in a line of their own, or inside a line that a lost line end joined.
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
constexpr std::string_view kKeyManagement = "a=key-mgmt:";
constexpr std::string_view kPassword = "a=ice-pwd:";
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

bool Holds(std::string_view word, std::string_view lowerCase) {
    return FindAnyCase(word, lowerCase) != word.size();
}

// What belongs in the place of a word, counted from the last attribute with a key in its line.
enum class Place { kSuite, kKey, kManagedKey, kElsewhere };

// The place of the word after this one.
Place NextPlace(std::string_view word, Place place) {
    return Holds(word, kCrypto)          ? Place::kSuite
           : Holds(word, kKeyManagement) ? Place::kManagedKey
           : place == Place::kSuite      ? Place::kKey
                                         : Place::kElsewhere;
}

// Where the hidden rest of a word begins; nothing when the whole word is shown.
std::optional<std::size_t> HiddenFrom(std::string_view word, Place place) {
    const std::size_t method = FindAnyCase(word, kInline);
    const bool elsewhere = place == Place::kElsewhere || place == Place::kManagedKey;
    if (method != word.size() && (elsewhere || method == 0)) {
        return method + kInline.size();
    }
    const bool shown = elsewhere || (place == Place::kSuite && IsSuiteName(word));
    return shown ? std::nullopt : std::optional<std::size_t>(0);
}

// Where the key of a line "k=base64:..." begins: at the start of the word or after a sign, whatever the
// method is, and after one of the methods of RFC 4566, 5.12 wherever a lost line end carried it
// ("0k=clear:...").
std::optional<std::size_t> KeyLineFrom(std::string_view word) {
    static constexpr std::string_view methods[] = {"clear:", "base64:", "uri:"};
    const auto isMethod = [](std::string_view rest) {
        return std::any_of(std::begin(methods), std::end(methods), [rest](std::string_view method) {
            return FindAnyCase(rest.substr(0, method.size()), method) == 0;
        });
    };
    std::size_t colon = 0; // the first one after `at`
    for (std::size_t at = word.find('='); at != std::string_view::npos; at = word.find('=', at + 1)) {
        colon = colon < at ? word.find(':', at) : colon;
        if (colon == std::string_view::npos) {
            return std::nullopt;
        }
        const bool isKeyLine = at != 0 && Lower(word[at - 1]) == 'k';
        const bool isStart = isKeyLine && (at == 1 || !IsBase64(word[at - 2]));
        if (isStart || (isKeyLine && isMethod(word.substr(at + 1)))) {
            return colon + 1;
        }
    }
    return std::nullopt;
}

// What is hidden of the word at `at` that is no SRTP key.
std::optional<Hidden> OtherSecret(std::string_view text, std::size_t at, std::string_view word, Place place) {
    const std::size_t end = at + word.size();
    if (place == Place::kManagedKey) {
        return Hidden{at, word.size(), SecretKind::kOtherKey};
    }
    if (const std::size_t password = FindAnyCase(word, kPassword); password != word.size()) {
        const std::size_t begin = at + password + kPassword.size();
        return Hidden{begin, end - begin, SecretKind::kIcePassword};
    }
    if (const std::optional<std::size_t> from = KeyLineFrom(word)) { // a key in clear may hold blanks
        const std::size_t stop = std::min(text.find_first_of("\r\n", at), text.size());
        return Hidden{at + *from, stop - at - *from, SecretKind::kOtherKey};
    }
    return std::nullopt;
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
            found.push_back({at + *from, word.size() - *from, SecretKind::kSrtpKey});
        } else if (const std::optional<Hidden> other = OtherSecret(text, at, word, place)) {
            if (other->length != 0) {
                found.push_back(*other);
            }
            at = other->offset + other->length;
            place = Place::kElsewhere;
            continue;
        }
        place = NextPlace(word, place);
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

const char* const kHiddenNote = "secrets are hidden; --show-secrets shows them";

} // namespace cmsdp
