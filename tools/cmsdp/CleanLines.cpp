// Steps that work line by line: what is in front of a line, at its end, and how it ends. A line is
// touched only when something of the form "letter=..." remains, so that a text that is no description stays
// as it is.
//
// Tests: tests/tool/pasted-texts.cases
#include "Clean.h"

#include "SDPLines.h"
#include "Words.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace cmsdp {

namespace {

constexpr std::size_t kLongestPrefix = 400;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsOfWord(char c) {
    return IsDigit(c) || IsLetter(c);
}

// How many characters of the text have the property, from the offset on.
std::size_t RunOf(std::string_view text, std::size_t at, bool (*has)(char)) {
    const std::string_view rest = text.substr(at);
    return static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), has) - rest.begin());
}

// The line without its first `length` characters when what remains is a line of a description.
std::string_view Without(std::string_view line, std::size_t length) {
    const std::string_view rest = line.substr(length);
    return LooksLikeSdp(rest) || Trimmed(rest).empty() ? rest : line;
}

// Whether the text begins with a letter and "=".
bool BeginsLine(std::string_view text) {
    return text.size() > 1 && text[1] == '=' && IsLetter(text[0]);
}

// The length of the mark "<br>", "<br/>" or "<br />" that begins the text, in any letter case; otherwise 0.
std::size_t BreakLength(std::string_view text) {
    const bool begins = text.size() > 3 && text[0] == '<' && (text[1] == 'b' || text[1] == 'B') &&
                        (text[2] == 'r' || text[2] == 'R');
    std::size_t at = 3;
    while (begins && at < text.size() && (text[at] == ' ' || text[at] == '/')) {
        ++at;
    }
    return begins && at < text.size() && text[at] == '>' ? at + 1 : 0;
}

// Whether the text is a line of a description beyond doubt: "m=audio 5004 RTP/AVP 0", "a=rtpmap:0 PCMU/8000".
bool IsSurelySdp(std::string_view text) {
    constexpr std::size_t wordsOfMedia = 4;
    if (sdp::StartsWith(text, "m=")) {
        return WordsOf(text).size() >= wordsOfMedia;
    }
    return std::any_of(std::begin(sdp::kLineRows), std::end(sdp::kLineRows), [text](const sdp::LineRow& row) {
        return row.keyword.size() > 2 && sdp::StartsWith(text, row.keyword);
    });
}

// What is in front of the line of a description that ends a line of a log; empty when a letter or digit
// touches it, or when nothing but blanks is there.
std::string PrefixBefore(std::string_view line, std::size_t length) {
    const std::string_view prefix = line.substr(0, length);
    return Trimmed(prefix).empty() || IsOfWord(prefix.back()) ? "" : std::string(prefix);
}

// The prefix of the line "v=0" of a log.
std::string PrefixOfFirstLine(std::string_view line) {
    const std::string_view text = TrimmedAtEnd(line);
    const bool ends =
        text.size() > kFirstLine.size() && text.substr(text.size() - kFirstLine.size()) == kFirstLine;
    return ends ? PrefixBefore(line, text.size() - kFirstLine.size()) : "";
}

// The prefix of another line of a description in a log.
std::string PrefixOfOtherLine(std::string_view line) {
    for (const std::string_view word : WordsOf(line.substr(0, kLongestPrefix))) {
        const auto at = static_cast<std::size_t>(word.data() - line.data());
        if (BeginsLine(word) && IsSurelySdp(line.substr(at))) {
            return PrefixBefore(line, at);
        }
    }
    return "";
}

// The prefix of a log: that of its line "v=0", or, in a text without that line and without any line of a
// description at its start, that of the first line that surely is one.
std::string LogPrefix(const Draft& draft) {
    std::string first;
    std::string other;
    bool isPlain = false; // a line "v=0" is at the start of a line
    bool isSdp = false;
    ForEachLine(draft, [&](const DraftLine& line) {
        isPlain = isPlain || Trimmed(line.text) == kFirstLine;
        isSdp = isSdp || LooksLikeSdp(line.text);
        first = first.empty() ? PrefixOfFirstLine(line.text) : first;
        other = other.empty() && !isSdp ? PrefixOfOtherLine(line.text) : other;
    });
    const std::string& prefix = first.empty() && !isSdp ? other : first;
    return isPlain || prefix.size() > kLongestPrefix ? "" : prefix;
}

bool IsLevel(std::string_view word) {
    static constexpr std::string_view levels[] = {"TRACE", "DEBUG",   "INFO",  "NOTICE",
                                                  "WARN",  "WARNING", "ERROR", "FATAL"};
    return std::any_of(std::begin(levels), std::end(levels), [word](std::string_view level) {
        return std::equal(word.begin(), word.end(), level.begin(), level.end(),
                          [](char a, char b) { return a == b || a == b - 'A' + 'a'; });
    });
}

bool HasDigit(std::string_view word) {
    return std::any_of(word.begin(), word.end(), IsDigit);
}

// Whether a word of one line of a log can be in the place of `word` in another one.
bool IsLikeWord(std::string_view word, std::string_view other) {
    const bool isAsLong = word.size() > 1 && word.size() == other.size();
    return word == other || (IsLevel(word) && IsLevel(other)) || (HasDigit(word) && HasDigit(other)) ||
           (isAsLong && (HasDigit(word) || HasDigit(other)));
}

// Where a blank at the end matters: the handlers of these rows compare or convert the rest of the line.
bool EndMatters(std::string_view line) {
    const SDPRow row = sdp::RowOf(line);
    return row == SDPRow::Bandwidth || row == SDPRow::FloorControl || row == SDPRow::ConferenceId ||
           row == SDPRow::UserId;
}

// Cuts each line after the places that `cut` finds; `cut` returns the offset after the next one, or npos.
template <typename Cut>
std::size_t CutLines(Draft& draft, Cut cut) {
    Draft changed;
    std::size_t count = 0;
    ForEachLine(draft, [&](const DraftLine& line) {
        std::string_view rest = line.text;
        for (auto [keep, drop] = cut(rest); drop != 0; std::tie(keep, drop) = cut(rest)) {
            changed.Add(rest.substr(0, keep), "\r\n", line.number);
            rest.remove_prefix(keep + drop);
            ++count;
        }
        changed.Add(rest, line.end, line.number);
    });
    if (count != 0) {
        draft = std::move(changed);
    }
    return count;
}

} // namespace

std::size_t LogPrefixLength(std::string_view prefix, std::string_view line) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < prefix.size();) {
        if (at >= line.size()) {
            return Trimmed(prefix.substr(i)).empty() ? line.size() : 0;
        }
        const std::size_t blanks = RunOf(prefix, i, IsBlank);
        const std::size_t letters = RunOf(prefix, i, IsOfWord);
        if (blanks != 0) {
            const std::size_t here = RunOf(line, at, IsBlank);
            const bool isLast = i + blanks == prefix.size(); // more of them belong to the line
            at += isLast ? std::min(here, blanks) : here;
            i += blanks;
            if (here == 0) {
                return 0;
            }
        } else if (letters != 0) {
            const std::string_view word = prefix.substr(i, letters);
            const std::string_view other = line.substr(at, RunOf(line, at, IsOfWord));
            if (!IsLikeWord(word, other)) {
                return 0;
            }
            i += letters;
            at += other.size();
            if (IsLevel(word)) { // blanks pad it
                i += RunOf(prefix, i, IsBlank);
                at += RunOf(line, at, IsBlank);
            }
        } else if (line[at++] != prefix[i++]) {
            return 0;
        }
    }
    return at;
}

std::size_t EndLinesAtCr(Draft& draft) {
    return CutLines(draft, [](std::string_view rest) {
        std::size_t at = rest.find('\r');
        while (at != std::string_view::npos && !BeginsLine(rest.substr(at + 1))) {
            at = rest.find('\r', at + 1);
        }
        return at == std::string_view::npos ? std::pair(rest.size(), std::size_t{0})
                                            : std::pair(at, std::size_t{1});
    });
}

std::size_t EndLinesAtBreaks(Draft& draft) {
    const std::size_t inside = CutLines(draft, [](std::string_view rest) {
        std::size_t at = LooksLikeSdp(rest) ? rest.find('<') : std::string_view::npos;
        for (; at != std::string_view::npos; at = rest.find('<', at + 1)) {
            const std::size_t length = BreakLength(rest.substr(at));
            if (length != 0 && BeginsLine(rest.substr(at + length))) {
                return std::pair(at, length);
            }
        }
        return std::pair(rest.size(), std::size_t{0});
    });
    return inside == 0 ? 0 : inside + DropHtmlBreaks(draft);
}

std::size_t DropHtmlBreaks(Draft& draft) {
    return ChangeLines(draft, [](std::string_view line) {
        const std::string_view text = TrimmedAtEnd(line);
        const std::size_t at = std::min(text.rfind('<'), text.size());
        const std::size_t length = BreakLength(text.substr(at));
        const bool ends = length != 0 && at + length == text.size();
        return ends && LooksLikeSdp(line) ? line.substr(0, at) : line;
    });
}

// From "v=" on every quoted line belongs to the description, also the rest of one that a mailer wrapped.
std::size_t DropQuoting(Draft& draft) {
    bool begun = false;
    return ChangeLines(draft, [&begun](std::string_view line) {
        const std::size_t length = RunOf(line, 0, [](char c) { return c == '>' || c == '|' || IsBlank(c); });
        const std::string_view quotes = line.substr(0, length);
        if (quotes.find_first_of(">|") == std::string_view::npos) {
            return line;
        }
        begun = begun || sdp::StartsWith(line.substr(length), "v=");
        return begun ? line.substr(length) : Without(line, length);
    });
}

std::size_t DropLogPrefix(Draft& draft) {
    const std::string prefix = LogPrefix(draft);
    if (Trimmed(prefix).empty()) {
        return 0;
    }
    return ChangeLines(
        draft, [&prefix](std::string_view line) { return Without(line, LogPrefixLength(prefix, line)); });
}

std::size_t DropIndentation(Draft& draft) {
    return ChangeLines(draft, [](std::string_view line) {
        return LooksLikeSdp(line) ? line.substr(RunOf(line, 0, IsBlank)) : line;
    });
}

std::size_t DropTrailingBlanks(Draft& draft) {
    return ChangeLines(draft,
                       [](std::string_view line) { return EndMatters(line) ? TrimmedAtEnd(line) : line; });
}

std::size_t EndLinesInCrLf(Draft& draft) {
    Draft changed;
    std::size_t count = 0;
    changed.text.reserve(draft.text.size() + draft.numbers.size());
    ForEachLine(draft, [&](const DraftLine& line) {
        count += line.end == "\n" ? 1 : 0;
        changed.Add(line.text, line.end == "\n" ? "\r\n" : line.end, line.number);
    });
    if (count != 0) {
        draft = std::move(changed);
    }
    return count;
}

// A text that was cut between the two bytes of its last line end lacks the second alone.
std::size_t EndLastLine(Draft& draft) {
    if (draft.text.empty() || draft.text.back() == '\n') {
        return 0;
    }
    draft.text += draft.text.back() == '\r' ? "\n" : "\r\n";
    return 1;
}

} // namespace cmsdp
