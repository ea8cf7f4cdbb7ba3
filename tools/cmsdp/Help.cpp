// Stage: command line. The help of a verb, made from its declaration.
// Input: a verb as CLI11 knows it. Output: its page, and the page as text.
// Touches nothing else.
// Tests: tests/tool/HelpTest.cpp, pages.py
#include "Help.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <set>
#include <sstream>

namespace cmsdp {

const char* const kVersion = "cmsdp " COMMONMEDIA_VERSION;

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kTermWidth = 17; // the column of the meanings, less the indent
constexpr char kIndent[] = "  ";

std::vector<std::string> Paragraphs(const std::string& text) {
    std::vector<std::string> paragraphs;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find("\n\n", begin), text.size());
        paragraphs.push_back(text.substr(begin, end - begin));
        begin = end + 2;
    }
    return paragraphs;
}

// "--local FILE", "-h, --help", "REMOTE".
std::string TermOf(const CLI::Option& option) {
    if (option.get_positional()) {
        return option.get_name(true);
    }
    const std::string letter = option.get_snames().empty() ? "" : "-" + option.get_snames().front() + ", ";
    const std::string type = option.get_type_name(); // "N:INT in [1 - 1000000]" where the value is checked
    const std::string value = option.get_expected_max() == 0 ? "" : " " + type.substr(0, type.find(':'));
    return letter + "--" + option.get_lnames().front() + value;
}

bool TakesMany(const CLI::Option& option) {
    return option.get_expected_max() > 1 ||
           option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
}

// "[--exact | --nth N]" for options that exclude each other, "[--fit [--json]]" for one that another needs.
std::string UsageOf(const CLI::Option& option, const std::vector<const CLI::Option*>& all,
                    std::set<const CLI::Option*>& done) {
    std::string usage = "[" + TermOf(option);
    for (const CLI::Option* const other : all) {
        CLI::Option* const key = const_cast<CLI::Option*>(&option); // the sets of CLI11 hold such pointers
        if (other->get_positional() || done.count(other) != 0) {
            continue;
        }
        if (other->get_excludes().count(key) != 0) {
            done.insert(other);
            usage += " | " + TermOf(*other);
        } else if (other->get_needs().count(key) != 0) {
            done.insert(other);
            usage += " [" + TermOf(*other) + "]";
        }
    }
    return usage + (TakesMany(option) ? "]..." : "]");
}

std::string OperandUsage(const CLI::Option& operand) {
    const std::string name = operand.get_name(true) + (TakesMany(operand) ? "..." : "");
    return operand.get_required() ? name : "[" + name + "]";
}

void AddUsage(HelpPage& page, const std::vector<const CLI::Option*>& all, const CLI::Option* help) {
    std::set<const CLI::Option*> done{help};
    for (const CLI::Option* const option : all) {
        if (!option->get_positional() && done.insert(option).second) {
            page.usage.push_back(UsageOf(*option, all, done));
        }
    }
    for (const CLI::Option* const option : all) {
        if (option->get_positional()) {
            page.usage.push_back(OperandUsage(*option));
        }
    }
}

// A term and its meaning beside it. Terms of one letter need no column of the common width.
void Append(std::string& text, const HelpEntry& entry) {
    const std::size_t room = entry.term.size() == 1 ? 3 : std::max(kTermWidth, entry.term.size() + 1);
    std::string term = entry.term + std::string(room - entry.term.size(), ' ');
    for (const std::string& line : Wrapped(entry.text, kWidth - room - 2)) {
        text += kIndent + term + line + "\n";
        term = std::string(room, ' ');
    }
}

void Append(std::string& text, const std::vector<std::string>& paragraphs) {
    for (const std::string& paragraph : paragraphs) {
        text += "\n";
        for (const std::string& line : Wrapped(paragraph, kWidth - 2)) {
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

HelpPage PageOf(const CLI::App& verb) {
    HelpPage page;
    page.verb = verb.get_parent() == nullptr ? "" : verb.get_name();
    page.paragraphs = Paragraphs(verb.get_description());
    page.closing = Paragraphs(verb.get_footer());
    HelpList operands;
    HelpList options{"Options", {}};
    const CLI::Option* const help = verb.get_help_ptr();
    const std::vector<const CLI::Option*> all = verb.get_options();
    for (const CLI::Option* const option : all) {
        if (option != help) {
            HelpList& list = option->get_positional() ? operands : options;
            list.entries.push_back({TermOf(*option), option->get_description()});
        }
    }
    options.entries.push_back({TermOf(*help), "this text"});
    AddUsage(page, all, help);
    page.lists = {operands, options};
    return page;
}

std::string HelpText(const HelpPage& page) {
    std::string text = "Example:\n";
    for (const std::string& example : page.examples) {
        text += kIndent + example + "\n";
    }
    const std::string usage = "Usage: cmsdp" + (page.verb.empty() ? "" : " " + page.verb);
    std::string lead = usage;
    text += "\n" + (page.usage.empty() ? usage + "\n" : std::string());
    for (const std::string& line : Wrapped(page.usage, kWidth - 3 - usage.size())) {
        text += lead + " " + line + "\n";
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
