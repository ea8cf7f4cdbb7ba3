// Stage: two spellings of a line to the words for their difference.
// Input: a line as it stands and as its writer meant it. Output: words, and what acts on such a line.
// Touches nothing.
// Test: tests/explain/judge_cases.py
#include "Misspelling.h"

#include "Lookalike.h"
#include "Pieces.h"
#include "Words.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <vector>

namespace explain {

namespace {

constexpr const char* kTypeActed =
    "A line has a letter and \"=\" at its start (RFC 4566, 5); without them no keyword is found, and no row "
    "takes the line.";
constexpr const char* kSignsActed =
    "The keyword is found anywhere in the line (P01), and words and values are counted from the start of the "
    "line, so the first word is not the medium, the payload or the type that was meant (P06, P20, P22).";
constexpr const char* kNamesActed =
    "The formats of an m= line are payload numbers: 0, 9 and 18 are known by the number alone, any other by "
    "its number and an rtpmap line, and a name in their place is no format (X12).";
constexpr const char* kPlacesActed =
    "Medium, port, transport and formats of an m= line are told apart by their place alone (RFC 4566, 5.14), "
    "so each word after the missing one stands in the place of another.";
constexpr const char* kLevelActed =
    "The level is what comes after the fourth character of profile-level-id, as hexadecimal digits (RFC "
    "6184, 8.1); one that is not in the table reads as 1.3 (X06).";

/// Whether a line begins with signs of quoted text, "> m=audio", which its type letter follows.
bool HasSigns(std::string_view text) {
    const std::string_view start = Trimmed(text);
    return !start.empty() && std::isalpha(static_cast<unsigned char>(start[0])) == 0;
}

/// Whether a media line lacks its transport, or has it before its port.
bool IsTransportElsewhere(std::string_view text, std::string_view canonical) {
    return BeginsWith(canonical, "m=") && WordOf(canonical, 2) != Upper(WordOf(text, 2)) &&
           IsDigits(WordOf(text, 2)) && WordOf(text, 0) == WordOf(canonical, 0) &&
           WordOf(text, 1).find_first_of(",;") == std::string_view::npos;
}

/// Whether a media line has names in place of payload numbers.
bool HasNames(std::string_view text, std::string_view canonical) {
    const std::vector<std::string_view> words = WordsOf(text);
    return BeginsWith(canonical, "m=") && words.size() == WordsOf(canonical).size() && words.size() > 3 &&
           std::any_of(words.begin() + 3, words.end(), [](std::string_view word) {
               return std::isalpha(static_cast<unsigned char>(word[0]));
           });
}

std::string WithoutBlanks(std::string_view text) {
    std::string bare(text);
    bare.erase(std::remove_if(bare.begin(), bare.end(), [](char c) { return c == ' ' || c == '\t'; }),
               bare.end());
    return bare;
}

using SpelledParts = std::vector<std::string_view>;

/// The parameters of an fmtp line, trimmed.
SpelledParts FmtpParts(std::string_view line) {
    const std::string_view payload = PayloadOf(line);
    SpelledParts parts;
    if (payload.empty()) {
        return parts;
    }
    std::string_view rest =
        line.substr(static_cast<std::size_t>(payload.data() - line.data()) + payload.size());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        parts.push_back(Trimmed(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return parts;
}

/// The first word or parameter that is spelled in another way, with the way that was meant; both empty when
/// the two lines have not as many, or all alike. A password is not taken apart.
std::pair<std::string_view, std::string_view> OtherPart(SDPRow row, std::string_view text,
                                                        std::string_view canonical) {
    if (row == SDPRow::Ice) {
        return {};
    }
    const bool isFmtp = row == SDPRow::Fmtp;
    const SpelledParts parts = isFmtp ? FmtpParts(text) : WordsOf(text);
    const SpelledParts meant = isFmtp ? FmtpParts(canonical) : WordsOf(canonical);
    if (parts.size() != meant.size()) {
        return {};
    }
    const auto other = std::mismatch(parts.begin(), parts.end(), meant.begin());
    return other.first == parts.end() ? std::pair<std::string_view, std::string_view>()
                                      : std::make_pair(*other.first, *other.second);
}

/// How the spelling of an attribute's colon differs; empty when it does not.
const char* ColonWords(std::string_view text, std::string_view canonical) {
    const std::size_t colon = canonical.find(':');
    if (!BeginsWith(canonical, "a=") || colon >= text.size() || text[colon] == ':') {
        return "";
    }
    const std::string_view name = canonical.substr(0, colon);
    if (text[colon] == ' ') {
        return text.find(':') != colon + 1 && text.substr(0, colon) == name
                   ? "has a blank in place of its colon"
                   : "";
    }
    return Lower(text.substr(0, colon)) != name ? ""
           : IsDigits(text.substr(colon, 1))    ? "has no colon after its name"
                                                : "has another sign in place of its colon";
}

} // namespace

bool LacksType(std::string_view text) {
    const std::string_view start = Trimmed(text);
    return start.size() > 2 && Trimmed(start.substr(1)).substr(0, 1) != "=";
}

namespace {

/// A difference in the start or in the form of a line; no words when it is in something else.
Misspelling OfForm(std::string_view text, std::string_view canonical) {
    if (HasSigns(text)) {
        return {"has signs before its first letter, as quoted or numbered text has", kSignsActed};
    }
    if (LacksType(text)) {
        return {"does not begin with its letter and \"=\"", kTypeActed};
    }
    if (IsTransportElsewhere(text, canonical)) {
        const bool isBefore = BeginsWith(Upper(WordOf(text, 1)), WordOf(canonical, 2));
        return {isBefore ? "has its transport before its port" : "has no transport after its port",
                kPlacesActed};
    }
    if (HasNames(text, canonical)) {
        return {"has names where payload numbers belong", kNamesActed};
    }
    return {};
}

/// A difference in one place of a line.
Misspelling OfPlace(SDPRow row, std::string_view text, std::string_view canonical) {
    if (Trimmed(text) == canonical) {
        return {text[0] == canonical[0] ? "has a blank at its end" : "begins with a blank"};
    }
    if (const char* const words = ColonWords(text, canonical); *words != '\0') {
        return {words};
    }
    const auto [part, meant] = OtherPart(row, text, canonical);
    if (!meant.empty()) {
        const bool isLevel = BeginsWith(part, "profile-level-id=");
        return {Joined({"has \"", AsShown(part), "\" where \"", AsShown(meant), "\" belongs"}),
                isLevel ? kLevelActed : "", isLevel ? "X06" : ""};
    }
    const std::string bare = WithoutBlanks(text);
    const std::string bareMeant = WithoutBlanks(canonical);
    if (bare == bareMeant && text.find("; ") != std::string_view::npos) {
        return {"has a blank after ';'"};
    }
    if (bare != bareMeant) {
        const bool isComma =
            text.find(',') != std::string_view::npos && canonical.find(',') == std::string_view::npos;
        return {isComma ? "has a comma where a blank or ';' belongs"
                        : "is not spelled as the component compares it"};
    }
    return {text.size() < canonical.size() ? "lacks a blank between two words"
                                           : "has a blank that does not belong there"};
}

} // namespace

Misspelling MisspellingOf(SDPRow row, std::string_view text, std::string_view canonical) {
    Misspelling found = OfForm(text, canonical);
    if (HasLookalike(text)) {
        found.words = "has a character that only looks like a blank, a dash or a quote";
    } else if (Lower(text) == Lower(canonical)) {
        found.words = "differs in letter case from what the component compares";
    } else if (found.words.empty()) {
        found = OfPlace(row, text, canonical);
    }
    return found;
}

} // namespace explain
