// Stage: command line. A page of the help as text.
// Input: a page. Output: what --help writes.
// Touches nothing else.
// Tests: tests/tool/help.cases, pages.py
#include "Help.h"

#include <algorithm>
#include <sstream>

namespace cmsdp {

const char* const kVersion = "cmsdp " COMMONMEDIA_VERSION;

namespace {

constexpr std::size_t kHelpWidth = 80;
constexpr std::size_t kTermWidth = 17; // the column of the meanings, less the indent
constexpr char kIndent[] = "  ";

// A term and its meaning beside it. Terms of one letter need no column of the common width.
void Append(std::string& text, const HelpEntry& entry) {
    const std::size_t room = entry.term.size() == 1 ? 3 : std::max(kTermWidth, entry.term.size() + 1);
    std::string term = entry.term + std::string(room - entry.term.size(), ' ');
    for (const std::string& line : Wrapped(entry.text, kHelpWidth - room - 2)) {
        text.append(kIndent).append(term).append(line).append("\n");
        term.assign(room, ' ');
    }
}

void Append(std::string& text, const std::vector<std::string>& paragraphs) {
    for (const std::string& paragraph : paragraphs) {
        text += "\n";
        for (const std::string& line : Wrapped(paragraph, kHelpWidth - 2)) {
            text += line + "\n";
        }
    }
}

} // namespace

std::vector<std::string> Wrapped(const std::vector<std::string>& words, std::size_t width) {
    std::vector<std::string> lines;
    for (const std::string& word : words) {
        if (lines.empty() || lines.back().size() + 1 + word.size() > width) {
            lines.push_back(word);
        } else {
            lines.back() += " " + word;
        }
    }
    return lines;
}

std::vector<std::string> Wrapped(const std::string& paragraph, std::size_t width) {
    std::istringstream stream(paragraph);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return Wrapped(words, width);
}

std::string HelpText(const HelpPage& page) {
    std::string text = "Example:\n";
    for (const std::string& example : page.examples) {
        text += kIndent + example + "\n";
    }
    const std::string usage = "Usage: cmsdp" + (page.verb.empty() ? "" : " " + page.verb);
    std::string lead = usage;
    text += "\n" + (page.usage.empty() ? usage + "\n" : std::string());
    for (const std::string& line : Wrapped(page.usage, kHelpWidth - 3 - usage.size())) {
        text.append(lead).append(" ").append(line).append("\n");
        lead.assign(usage.size(), ' ');
    }
    Append(text, page.paragraphs);
    for (const HelpList& list : page.lists) {
        if (!list.entries.empty()) {
            text += list.title.empty() ? "\n" : "\n" + list.title + ":\n";
        }
        for (const HelpEntry& entry : list.entries) {
            Append(text, entry);
        }
    }
    Append(text, page.closing);
    return text;
}

std::vector<HelpEntry> EntriesOf(const HelpPage& page, const std::string& title) {
    for (const HelpList& list : page.lists) {
        if (list.title == title) {
            return list.entries;
        }
    }
    return {};
}

} // namespace cmsdp
