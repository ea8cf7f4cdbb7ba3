// Stage: a text with SIP messages, what a log made of their lines.
// Input: a text. Output: the text with its messages at the start of lines.
// Touches nothing.
// A text that needs none of this has a line that begins a message, so no other text changes.
// Test: tests/tool/calls.cases, SipLogTest.cpp
#include "Clean.h"
#include "SipHeaders.h"
#include "SipText.h"
#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kVersionOfSip = "SIP/2.0";
constexpr std::size_t kLongestSipPrefix = 400;

bool IsCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

bool IsOfToken(char c) {
    return (IsBase64(c) && c != '/') || c == '-' || c == '_';
}

// Whether a word may begin at the offset: no letter or digit touches it.
bool IsFree(std::string_view line, std::size_t at) {
    return at == 0 || !IsBase64(line[at - 1]) || line[at - 1] == '/';
}

// "2026-05-01 [7] SIP/2.0 200 OK": the offset of the status line.
std::size_t StatusLineIn(std::string_view line) {
    const std::string_view begin = "SIP/2.0 ";
    for (std::size_t at = line.find(begin); at != kNone; at = line.find(begin, at + 1)) {
        const std::string_view status = line.substr(at + begin.size(), 4);
        const bool isNumber = status.size() >= 3 && status.find_first_not_of("0123456789") >= 3 &&
                              (status.size() == 3 || IsBlank(status[3]));
        if (isNumber && IsFree(line, at)) {
            return at;
        }
    }
    return kNone;
}

// "2026-05-01 [7] INVITE sip:bob@example.org SIP/2.0": the offset of the request line.
std::size_t RequestLineIn(std::string_view line) {
    const std::vector<std::string_view> words = WordsOf(line);
    if (words.size() < 3 || words.back() != kVersionOfSip) {
        return kNone;
    }
    const std::string_view word = words[words.size() - 3];
    const auto method = std::find_if_not(word.rbegin(), word.rend(), IsCapital);
    const auto length = static_cast<std::size_t>(method - word.rbegin());
    const auto at = static_cast<std::size_t>(word.data() - line.data()) + word.size() - length;
    return length != 0 && IsFree(line, at) ? at : kNone;
}

std::size_t StartLineIn(std::string_view line) {
    if (line.find(kVersionOfSip) == kNone) {
        return kNone;
    }
    const std::size_t status = StatusLineIn(line);
    const std::size_t at = status == kNone ? RequestLineIn(line) : status;
    return at <= kLongestSipPrefix ? at : kNone;
}

// "Via: SIP/2.0/UDP 192.0.2.1"
bool IsHeader(std::string_view line) {
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::string_view name = TrimmedAtEnd(line.substr(0, colon));
    return colon < line.size() && !name.empty() && std::all_of(name.begin(), name.end(), IsOfToken);
}

std::string_view WithoutPrefix(std::string_view prefix, std::string_view line) {
    return line.substr(LogPrefixLength(prefix, line));
}

// Each line from the first message on without the prefix that its message has.
class PrefixDropper {
public:
    explicit PrefixDropper(std::string_view text) : m_text(text) {}

    std::string Drop() {
        std::string out;
        for (std::size_t at = 0; at < m_text.size();) {
            const std::size_t begin = at;
            const std::string_view line = TakeLine(m_text, at);
            const std::string_view kept = Kept(line, at);
            m_count += kept.size() == line.size() ? 0 : 1;
            out.append(kept).append(m_text.substr(begin + line.size(), at - begin - line.size()));
        }
        return out;
    }
    std::size_t count() const { return m_count; }

private:
    std::string_view Kept(std::string_view line, std::size_t next) {
        const std::size_t start = StartLineIn(line);
        if (start != kNone && IsHeader(WithoutPrefix(line.substr(0, start), TakeLine(m_text, next)))) {
            m_prefix = line.substr(0, start);
            return line.substr(start);
        }
        return WithoutPrefix(m_prefix, line);
    }

    std::string_view m_text;
    std::string_view m_prefix;
    std::size_t m_count = 0;
};

// A message whose line ends are written out, in a line of a log, between quotes or to the end of the line.
std::string WithEscapesRead(std::string_view text, std::size_t& count) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        std::string_view line = TakeLine(text, at);
        for (std::size_t escape = line.find('\\'); escape != kNone; escape = line.find('\\')) {
            const std::size_t start = StartLineIn(line.substr(0, escape));
            const std::size_t end = start == kNone ? 0 : EndOfEscaped(line, start);
            if (end < escape) { // no message, or its quotes end in front of the escape
                break;
            }
            out.append(line.substr(0, start))
                .append("\n")
                .append(WithLineEnds(line.substr(start, end - start)));
            line.remove_prefix(end);
            ++count;
        }
        out.append(line).append("\n");
    }
    return out;
}

// "INVITE sip:bob@example.org SIP/2.0.", and "." for an empty line.
std::string WithoutDots(std::string_view text, std::size_t& count) {
    std::string out;
    bool hasStart = false;
    bool hasEmpty = false;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view line = TakeLine(text, at);
        const bool hasDot = !line.empty() && line.back() == '.';
        hasStart = hasStart || (hasDot && IsSipStartLine(line.substr(0, line.size() - 1)));
        hasEmpty = hasEmpty || line == ".";
        count += hasDot ? 1 : 0;
        out.append(line.substr(0, line.size() - (hasDot ? 1 : 0))).append("\n");
    }
    count = hasStart && hasEmpty ? count : 0;
    return count == 0 ? std::string(text) : out;
}

bool HoldsMessage(std::string_view text) {
    const std::vector<std::size_t> cuts = CutsOfSipText(text);
    bool holds = false;
    for (std::size_t i = 0; i + 1 < cuts.size() && !holds; ++i) {
        holds = ParseSipMessage(text.substr(cuts[i], cuts[i + 1] - cuts[i]), BodyEnd::Paste).has_value();
    }
    return holds;
}

} // namespace

std::string WithoutSipLog(std::string text, bool hasExact, std::vector<std::string>& notes) {
    const char* const end = hasExact ? "; --exact keeps it" : "";
    Draft draft = Draft::Of(text);
    const bool isMarked = DecodeUtf16(draft) + DropByteOrderMark(draft) != 0;
    if (draft.text.find(kVersionOfSip) == std::string::npos) {
        return text;
    }
    std::size_t dots = 0;
    std::string read = WithoutDots(draft.text, dots);
    if (!isMarked && dots == 0 && CutsOfSipText(read).size() > 1) {
        return text;
    }
    std::size_t escaped = 0;
    read = WithEscapesRead(read, escaped);
    PrefixDropper dropper(read);
    read = dropper.Drop();
    if (!HoldsMessage(read)) {
        return text;
    }
    const auto note = [&notes, end](std::size_t count, const char* one, const char* many) {
        if (count != 0) {
            notes.push_back((count == 1 ? std::string("1 ") + one : std::to_string(count) + " " + many) +
                            end);
        }
    };
    if (isMarked) {
        notes.emplace_back(std::string("the text has a byte-order mark and was read as UTF-8") + end);
    }
    note(dots, "line of SIP messages lost a dot at its end, which was printed for CR",
         "lines of SIP messages lost a dot at their end, which was printed for CR");
    note(escaped, "SIP message with line ends written out as escapes was read with line ends",
         "SIP messages with line ends written out as escapes were read with line ends");
    note(dropper.count(), "line of SIP messages lost the prefix of the log",
         "lines of SIP messages lost the prefix of the log");
    return read;
}

} // namespace cmsdp
