// Small cuts of text that several files of the command need.
//
// Tests: tests/tool/WordsTest.cpp
#include "Words.h"

#include "SDPLines.h"

#include <algorithm>
#include <iterator>
#include <openssl/evp.h>

namespace cmsdp {

namespace {

// Where to cut a text after `most` bytes: not so that a key text loses its end and looks like a harmless
// word.
std::size_t CutAt(std::string_view text, std::size_t most) {
    for (std::size_t at = 0; at < most;) {
        const std::size_t length = Base64Length(text.substr(at));
        if (length >= kKeyText && at + kKeyText > most) {
            return at + kKeyText;
        }
        at += std::max<std::size_t>(length, 1);
    }
    return most;
}

std::string Cut(std::string_view text, std::size_t most) {
    const std::size_t end = text.size() <= most ? text.size() : CutAt(text, most);
    return std::string(text.substr(0, end)) + (end < text.size() ? "..." : "");
}

} // namespace

std::size_t Base64Length(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && IsBase64(text[length])) {
        ++length;
    }
    if (length == 0) {
        return 0;
    }
    const std::size_t padded = std::min(text.size(), length + 2);
    while (length < padded && text[length] == '=') {
        ++length;
    }
    return length;
}

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

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    return TrimmedAtEnd(text);
}

std::string_view TrimmedAtEnd(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool LooksLikeSdp(std::string_view line) {
    std::size_t at = 0;
    while (at < line.size() && IsBlank(line[at])) {
        ++at;
    }
    return at + 1 < line.size() && line[at] >= 'a' && line[at] <= 'z' && line[at + 1] == '=';
}

std::string FromBase64(std::string_view text) {
    std::string in;
    std::copy_if(text.begin(), text.end(), std::back_inserter(in), IsBase64);
    in.resize(in.size() - (in.size() % 4 == 1 ? 1 : 0)); // 6 bits are no byte
    in.append((4 - in.size() % 4) % 4, '=');
    const std::size_t padding = in.size() - std::min(in.find('='), in.size());
    std::string out(in.size() / 4 * 3, '\0');
    const int length =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(out.data()),
                        reinterpret_cast<const unsigned char*>(in.data()), static_cast<int>(in.size()));
    out.resize(length < 0 ? 0 : static_cast<std::size_t>(length) - padding);
    return out;
}

bool HoldsSdpLine(std::string_view text, LineEnd end) {
    bool holds = false;
    const auto look = [&](std::size_t offset, std::size_t length) {
        holds = holds || LooksLikeSdp(text.substr(offset, length));
    };
    if (end == LineEnd::CrLf) {
        sdp::ForEachLine(text, look);
        return holds;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = sdp::FindEither(text, '\r', '\n', at);
        look(at, next - at);
        at = next + 1;
    }
    return holds;
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
    return Cut(word, most);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t most = 40;
    return '"' + Cut(text, most) + '"';
}

} // namespace cmsdp
