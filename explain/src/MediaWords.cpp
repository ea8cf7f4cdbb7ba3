// Stage: the value of an m= line to its words, in the places that their writer meant (RFC 4566, 5.14).
// Input: the text after "m=". Output: words.
// Touches nothing. How the component reads them is not decided here.
// Test: tests/explain/judge_cases.py
#include "MediaWords.h"

#include "Words.h"

#include <algorithm>
#include <string>

namespace explain {

namespace {

using Words = std::vector<std::string_view>;

/// Parts a word in two; signs that stand for the blank are left out.
void CutInTwo(Words& words, std::size_t at, std::size_t length) {
    std::string_view rest = words[at].substr(length);
    rest.remove_prefix(std::min(rest.find_first_not_of("/,:;"), rest.size()));
    words[at] = words[at].substr(0, length);
    if (!rest.empty()) {
        words.insert(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, rest);
    }
}

bool IsTransport(std::string_view word) {
    const std::string upper = Upper(word.substr(0, 4));
    return upper == "RTP/" || upper == "UDP/" || upper == "TCP/";
}

/// "audio32000", "5004RTP/AVP" and "UDP/BFCP*" are two words without a blank between them.
void PartGlued(Words& words) {
    for (const std::string_view media : {"audio", "video", "application"}) {
        if (!words.empty() && words[0].size() > media.size() && BeginsWith(Lower(words[0]), media) &&
            IsDigits(words[0].substr(media.size()))) {
            CutInTwo(words, 0, media.size());
        }
    }
    for (std::size_t i = 1; i < 3 && i < words.size(); ++i) { // "5004,RTP/AVP,0"
        const std::size_t comma = words[i].find_first_of(",;");
        const bool isThousands = i == 1 && i + 1 < words.size() && IsTransport(words[i + 1]); // "42,012"
        if (comma != std::string_view::npos && comma > 0 && comma + 1 < words[i].size() && !isThousands) {
            CutInTwo(words, i, comma);
        }
    }
    const std::size_t end =
        words.size() < 2 ? std::string_view::npos : words[1].find_first_not_of("0123456789");
    if (end != std::string_view::npos && end != 0) {
        const std::string_view rest = words[1].substr(end);
        if (IsTransport(rest.substr(std::min(rest.find_first_not_of("/,:;"), rest.size())))) {
            CutInTwo(words, 1, end);
        }
    }
    if (words.size() == 3 && words[2].size() > 1 && words[2].back() == '*' && IsTransport(words[2])) {
        CutInTwo(words, 2, words[2].size() - 1);
    }
}

} // namespace

std::vector<std::string_view> MediaWords(std::string_view value) {
    Words words = WordsOf(value);
    PartGlued(words);
    if (words.size() < 3) {
        return words;
    }
    if (IsTransport(words[1]) && IsDigits(words[2])) {
        std::swap(words[1], words[2]);
    }
    const std::string media = Lower(words[0]);
    const bool isRtp = media == "audio" || media == "video";
    if (isRtp && IsDigits(words[1]) && IsDigits(words[2])) {
        words.insert(words.begin() + 2, "RTP/AVP");
    } else if (media == "application" && words[2] == "*") {
        words.insert(words.begin() + 2, "UDP/BFCP");
    }
    return words;
}

} // namespace explain
