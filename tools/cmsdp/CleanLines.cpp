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

// The prefix of the line "v=0" of a log: everything in front of it, when no letter or digit touches it.
std::string LogPrefix(const Draft& draft) {
    std::string prefix;
    bool plain = false;
    ForEachLine(draft, [&](const DraftLine& line) {
        const std::string_view text = Trimmed(line.text);
        plain = plain || text == kFirstLine;
        if (!prefix.empty() || text.size() <= kFirstLine.size() ||
            text.substr(text.size() - kFirstLine.size()) != kFirstLine) {
            return;
        }
        const std::size_t length = text.size() - kFirstLine.size();
        if (!IsDigit(text[length - 1]) && !IsLetter(text[length - 1])) {
            const auto blanks = static_cast<std::size_t>(text.data() - line.text.data());
            prefix = line.text.substr(0, blanks + length);
        }
    });
    return plain || prefix.size() > kLongestPrefix ? "" : prefix;
}

// How long the level of a log entry is that begins the text, with the blanks that pad it; 0 for none.
std::size_t LevelLength(std::string_view text) {
    static constexpr std::string_view levels[] = {"TRACE", "DEBUG",   "INFO",  "NOTICE",
                                                  "WARN",  "WARNING", "ERROR", "FATAL"};
    const std::size_t length = RunOf(text, 0, IsLetter);
    const auto isWord = [word = text.substr(0, length)](std::string_view level) {
        return std::equal(word.begin(), word.end(), level.begin(), level.end(),
                          [](char a, char b) { return a == b || a == b - 'A' + 'a'; });
    };
    return std::any_of(std::begin(levels), std::end(levels), isWord) ? length + RunOf(text, length, IsBlank)
                                                                     : 0;
}

// How long the prefix is at the start of this line, where any number may stand for a number, any level for a
// level and any blanks for blanks; 0 when the line does not begin so. Times, counters and levels of a log
// differ from line to line.
std::size_t PrefixLength(std::string_view prefix, std::string_view line) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < prefix.size();) {
        const std::size_t level = LevelLength(prefix.substr(i));
        const std::size_t other = level == 0 || at >= line.size() ? 0 : LevelLength(line.substr(at));
        if (other != 0) {
            at += other;
            i += level;
            continue;
        }
        bool (*const has)(char) = IsDigit(prefix[i]) ? IsDigit : IsBlank(prefix[i]) ? IsBlank : nullptr;
        const std::size_t here = at >= line.size()       ? 0
                                 : has != nullptr        ? RunOf(line, at, has)
                                 : line[at] == prefix[i] ? 1
                                                         : 0;
        if (here == 0) {
            return 0;
        }
        at += here;
        i += has == nullptr ? 1 : RunOf(prefix, i, has);
    }
    return at;
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
        draft, [&prefix](std::string_view line) { return Without(line, PrefixLength(prefix, line)); });
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
