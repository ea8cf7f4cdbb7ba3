// Small cuts of text that several files of the command need.
//
// Tests: tests/tool/WordsTest.cpp
#include "Words.h"

namespace cmsdp {

std::vector<std::string_view> WordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    std::size_t at = 0;
    while (at < line.size()) {
        const std::size_t begin = at;
        while (at < line.size() && !IsBlank(line[at])) {
            ++at;
        }
        if (at > begin) {
            words.push_back(line.substr(begin, at - begin));
        }
        ++at;
    }
    return words;
}

bool LooksLikeSdp(std::string_view line) {
    std::size_t at = 0;
    while (at < line.size() && IsBlank(line[at])) {
        ++at;
    }
    return at + 1 < line.size() && line[at] >= 'a' && line[at] <= 'z' && line[at + 1] == '=';
}

std::string Listed(const std::vector<std::string>& pieces, std::size_t most) {
    std::string list;
    for (std::size_t i = 0; i < pieces.size() && i < most; ++i) {
        list += (i == 0 ? "" : ", ") + pieces[i];
    }
    if (pieces.size() > most) {
        list += " and " + std::to_string(pieces.size() - most) + " more";
    }
    return list;
}

std::string Short(std::string_view word) {
    constexpr std::size_t most = 100;
    return word.size() <= most ? std::string(word) : std::string(word.substr(0, most)) + "...";
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t most = 40;
    const std::string shown(text.substr(0, most));
    return '"' + shown + (text.size() > most ? "...\"" : "\"");
}

} // namespace cmsdp
