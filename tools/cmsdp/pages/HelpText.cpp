// Stage: none; the help texts, taken apart at their blank lines and indents.
// Input: what the command writes for --help. Output: titles, lines, terms with their sentences.
// Touches nothing.
// Test: tests/tool/pages.py
#include "HelpText.h"

#include "CommandLine.h"

#include <sstream>
#include <utility>

namespace cmsdp {

namespace {

// Terms are indented by two blanks, what is said of them by more.
constexpr std::size_t kIndent = 2;

HelpBlock Titled(const std::string& first) {
    HelpBlock block;
    const std::size_t colon = first.find(':');
    if (colon + 1 == first.size()) {
        block.title = first.substr(0, first.find(';') < colon ? first.find(';') : colon);
    } else if (first.rfind("Usage: ", 0) == 0) {
        block.title = "Usage";
        block.lines.push_back(first.substr(colon + 2));
    } else {
        block.lines.push_back(first);
    }
    return block;
}

void AddEntry(HelpBlock& block, const std::string& line) {
    const std::size_t gap = line.find("  ", kIndent);
    const std::size_t text = line.find_first_not_of(' ', gap);
    if (line.find_first_not_of(' ') > kIndent && !block.entries.empty()) {
        block.entries.back().text += '\n' + line.substr(line.find_first_not_of(' '));
    } else if (text != std::string::npos) {
        block.entries.push_back({line.substr(kIndent, gap - kIndent), line.substr(text)});
    }
}

HelpBlock ReadBlock(const std::vector<std::string>& lines) {
    const bool isList = lines[0][0] == ' ';
    HelpBlock block = isList ? HelpBlock() : Titled(lines[0]);
    const bool hasEntries =
        isList || (!block.title.empty() && block.title != "Example" && block.title != "Usage");
    for (std::size_t i = isList ? 0 : 1; i < lines.size(); ++i) {
        if (hasEntries) {
            AddEntry(block, lines[i]);
        } else {
            block.lines.push_back(lines[i].substr(block.title == "Example" ? kIndent : 0));
        }
    }
    return block;
}

HelpPage ReadPage(const std::string& verb) {
    const char* const words[] = {"cmsdp", "help", verb.c_str()};
    std::istringstream help(ParseCommandLine(verb.empty() ? 2 : 3, words).help + "\n");
    HelpPage page{verb, {}};
    std::vector<std::string> block;
    for (std::string line; std::getline(help, line);) {
        if (!line.empty()) {
            block.push_back(line);
        } else if (!block.empty()) {
            page.blocks.push_back(ReadBlock(block));
            block.clear();
        }
    }
    return page;
}

} // namespace

std::string FirstWord(const std::string& term) {
    return term.substr(0, term.find_first_of(" ,"));
}

const HelpBlock& BlockOf(const HelpPage& page, const std::string& title) {
    static const HelpBlock none;
    for (const HelpBlock& block : page.blocks) {
        if (block.title == title) {
            return block;
        }
    }
    return none;
}

std::vector<HelpPage> ReadHelpPages() {
    std::vector<HelpPage> pages{ReadPage("")};
    const std::vector<HelpEntry> verbs = BlockOf(pages[0], "Verbs").entries;
    for (const HelpEntry& verb : verbs) {
        const std::string name = FirstWord(verb.term);
        if (name != "help") {
            pages.push_back(ReadPage(name));
        }
    }
    return pages;
}

} // namespace cmsdp
