// Stage: a SIP message, its header fields.
// Input: the text after the start line. Output: names and values, compact names written out.
// Touches nothing.
// What is malformed is skipped: a capture holds what was sent, and the rest of the message still counts.
// Test: tests/tool/SipMessageTest.cpp
#include "SipHeaders.h"

#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

struct CompactName {
    char compact;
    const char* name;
};

// RFC 3261, 7.3.3 and 20: "i: 843@192.0.2.1" is "Call-ID: 843@192.0.2.1".
constexpr CompactName kCompact[] = {
    {'c', "content-type"}, {'e', "content-encoding"}, {'f', "from"},
    {'i', "call-id"},      {'k', "supported"},        {'l', "content-length"},
    {'m', "contact"},      {'s', "subject"},          {'t', "to"},
    {'v', "via"},
};

std::string WholeName(std::string_view name) {
    std::string lower = LowerCase(Trimmed(name));
    if (lower.size() == 1) {
        const auto* const row =
            std::find_if(std::begin(kCompact), std::end(kCompact),
                         [&](const CompactName& entry) { return entry.compact == lower[0]; });
        return row == std::end(kCompact) ? lower : row->name;
    }
    return lower;
}

// Offset of the first ';' or '=' at or after `at` that is neither quoted nor inside angle brackets.
std::size_t NextMark(std::string_view text, std::size_t at, char mark) {
    bool quoted = false;
    bool bracketed = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (quoted) {
            at += c == '\\' ? 1 : 0;
            quoted = c != '"';
        } else if (c == mark && !bracketed) {
            return at;
        } else if (c == '"') {
            quoted = true;
        } else if (c == '<' || c == '>') {
            bracketed = c == '<';
        }
    }
    return text.size();
}

} // namespace

const std::string& SipHeaders::operator[](std::string_view name) const {
    static const std::string none;
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const SipHeader& header) { return header.name == name; });
    return found == list.end() ? none : found->value;
}

bool SipHeaders::Has(std::string_view name) const {
    return std::any_of(list.begin(), list.end(),
                       [&](const SipHeader& header) { return header.name == name; });
}

std::string_view TakeLine(std::string_view text, std::size_t& at) {
    const std::size_t feed = std::min(text.find('\n', at), text.size());
    std::size_t end = feed;
    if (end > at && text[end - 1] == '\r') {
        --end;
    }
    const std::string_view line = text.substr(at, end - at);
    at = std::min(feed + 1, text.size());
    return line;
}

SipHeaders ReadSipHeaders(std::string_view text) {
    SipHeaders headers;
    while (headers.end < text.size()) {
        const std::string_view line = TakeLine(text, headers.end);
        if (line.empty()) {
            break;
        }
        const std::size_t colon = line.find(':');
        if (line[0] == ' ' || line[0] == '\t') {
            if (!headers.list.empty()) {
                std::string& value = headers.list.back().value;
                value.append(value.empty() ? "" : " ").append(Trimmed(line));
            }
        } else if (colon != std::string_view::npos) {
            headers.list.push_back(
                {WholeName(line.substr(0, colon)), std::string(Trimmed(line.substr(colon + 1)))});
        }
    }
    return headers;
}

std::string HeaderParameter(std::string_view value, std::string_view name) {
    for (std::size_t at = NextMark(value, 0, ';'); at < value.size();) {
        const std::size_t next = NextMark(value, at + 1, ';');
        const std::string_view parameter = value.substr(at + 1, next - at - 1);
        const std::size_t equals = std::min(parameter.find('='), parameter.size());
        if (LowerCase(Trimmed(parameter.substr(0, equals))) == name && equals < parameter.size()) {
            std::string_view word = Trimmed(parameter.substr(equals + 1));
            if (word.size() > 1 && word.front() == '"' && word.back() == '"') {
                word = word.substr(1, word.size() - 2);
            }
            return std::string(word);
        }
        at = next;
    }
    return {};
}

std::string HeaderUri(std::string_view value) {
    const std::size_t open = NextMark(value, 0, '<');
    const std::size_t close = value.find('>', std::min(open, value.size()));
    if (close != std::string_view::npos) {
        return std::string(value.substr(open + 1, close - open - 1));
    }
    return std::string(Trimmed(value.substr(0, NextMark(value, 0, ';'))));
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace cmsdp
