// Writes the manual page or a completion of cmsdp, made from the pages of its help:
//
//     cmsdp_pages man DATE VERSION      cmsdp.1, for man(7)
//     cmsdp_pages bash                  completion for bash
//     cmsdp_pages fish                  completion for fish
//
// Test: tests/tool/pages.py
#include "CommandLine.h"
#include "Help.h"

#include <cstring>
#include <iostream>

namespace cmsdp {

namespace {

// Text for man(7): no character of it is an instruction. The hyphens that begin an option are to be typed;
// one within a word is left to the printer.
std::string Roff(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins = i == 0 || std::strchr(" [-|(", text[i - 1]) != nullptr;
        if (text[i] == '\\') {
            out += "\\e";
        } else if (text[i] == '-' && begins) {
            out += "\\-";
        } else {
            out += text[i];
        }
    }
    return !out.empty() && (out[0] == '.' || out[0] == '\'') ? "\\&" + out : out;
}

constexpr std::size_t kWidth = 72; // Roff() makes a line longer

void ManText(const std::string& text) {
    for (const std::string& line : Wrapped(text, kWidth)) {
        std::cout << Roff(line) << "\n";
    }
}

void ManEntries(const std::vector<HelpEntry>& entries) {
    for (const HelpEntry& entry : entries) {
        std::cout << ".TP\n.B " << Roff(entry.term) << "\n";
        ManText(entry.text);
    }
}

// `lead` is ".PP\n", or nothing after a heading, which begins a paragraph by itself.
void ManLiteral(const std::vector<std::string>& lines, const char* lead) {
    std::cout << lead << ".nf\n";
    for (const std::string& line : lines) {
        std::cout << Roff(line) << "\n";
    }
    std::cout << ".fi\n";
}

void ManParagraphs(const std::vector<std::string>& paragraphs, const char* lead) {
    for (const std::string& paragraph : paragraphs) {
        std::cout << lead;
        ManText(paragraph);
        lead = ".PP\n";
    }
}

// A verb: how it is typed, what it does, its arguments and options, an example.
void ManVerb(const HelpPage& page) {
    std::cout << ".SS " << page.verb << "\n.nf\n";
    std::string indent = "cmsdp " + page.verb + " ";
    std::string lead = indent;
    indent.assign(indent.size(), ' ');
    for (const std::string& line : Wrapped(page.usage, kWidth - indent.size())) {
        std::cout << Roff(lead + line) << "\n";
        lead = indent;
    }
    std::cout << ".fi\n";
    ManParagraphs(page.paragraphs, ".PP\n");
    for (const HelpList& list : page.lists) {
        ManEntries(list.entries);
    }
    ManParagraphs(page.closing, ".PP\n");
    ManLiteral(page.examples, ".PP\n");
}

void Man(const std::string& date, const std::string& version) {
    const std::vector<HelpPage> pages = HelpPages();
    std::cout << ".TH CMSDP 1 " << date << " \"commonmedia " << version << "\"\n"
              << ".SH NAME\ncmsdp \\- read, answer and judge session descriptions\n"
              << ".SH SYNOPSIS\n.B cmsdp\n.I VERB\n.RI [ OPTIONS ]\n"
              << ".SH DESCRIPTION\n";
    ManParagraphs(pages[0].paragraphs, "");
    ManEntries(EntriesOf(pages[0], "Verbs"));
    std::cout << ".SH VERBS\n";
    for (std::size_t i = 1; i < pages.size(); ++i) {
        ManVerb(pages[i]);
    }
    std::cout << ".SH OPTIONS\n";
    ManEntries(EntriesOf(pages[0], "Options"));
    std::cout << ".SH EXIT STATUS\n";
    ManEntries(EntriesOf(pages[0], "Exit status"));
    std::cout << ".SH EXAMPLES\n";
    ManLiteral(pages[0].examples, "");
}

// The first word of a term: "--local" of "--local FILE", "-h" of "-h, --help".
std::string FirstWord(const std::string& term) {
    return term.substr(0, term.find_first_of(" ,"));
}

std::string VerbNames(const std::vector<HelpPage>& pages) {
    std::string names;
    for (std::size_t i = 1; i < pages.size(); ++i) {
        names += (i == 1 ? "" : " ") + pages[i].verb;
    }
    return names;
}

std::string OptionsOf(const HelpPage& page) {
    std::string options;
    for (const HelpEntry& entry : EntriesOf(page, "Options")) {
        const std::size_t name = entry.term.find("--");
        options += (options.empty() ? "" : " ") + FirstWord(entry.term.substr(name));
    }
    return options;
}

// Where no word fits, a file does: the arguments and the values of options are files.
void Bash() {
    const std::vector<HelpPage> pages = HelpPages();
    std::cout << "# Completion of cmsdp for bash: verbs, their options, files.\n"
              << "_cmsdp() {\n"
              << "    local current=${COMP_WORDS[COMP_CWORD]} words=\n"
              << "    if [[ $COMP_CWORD -eq 1 ]]; then\n"
              << "        words=\"" << VerbNames(pages) << " " << OptionsOf(pages[0]) << "\"\n"
              << "    elif [[ ${COMP_WORDS[1]} == help ]]; then\n"
              << "        words=\"" << VerbNames(pages) << "\"\n"
              << "    elif [[ $current == -* ]]; then\n"
              << "        case ${COMP_WORDS[1]} in\n";
    for (std::size_t i = 1; i < pages.size(); ++i) {
        std::cout << "        " << pages[i].verb << ") words=\"" << OptionsOf(pages[i]) << "\" ;;\n";
    }
    std::cout << "        esac\n"
              << "    fi\n"
              << "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
              << "}\n"
              << "complete -o default -F _cmsdp cmsdp\n";
}

std::string FishText(const std::string& text) {
    std::string out = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') {
            out += '\\';
        }
        out += c == '\n' ? ' ' : c;
    }
    return out + "'";
}

void Fish() {
    const std::vector<HelpPage> pages = HelpPages();
    std::cout << "# Completion of cmsdp for fish: verbs, their options, files.\n";
    for (const HelpEntry& verb : EntriesOf(pages[0], "Verbs")) {
        std::cout << "complete -c cmsdp -n __fish_use_subcommand -a " << FirstWord(verb.term) << " -d "
                  << FishText(verb.text) << "\n";
    }
    for (std::size_t i = 1; i < pages.size(); ++i) {
        for (const HelpEntry& entry : EntriesOf(pages[i], "Options")) {
            const std::string option = FirstWord(entry.term.substr(entry.term.find("--") + 2));
            const bool hasValue = entry.term.find(' ', entry.term.find("--")) != std::string::npos;
            std::cout << "complete -c cmsdp -n '__fish_seen_subcommand_from " << pages[i].verb << "' -l "
                      << option << (hasValue ? " -r" : "") << " -d " << FishText(entry.text) << "\n";
        }
    }
}

} // namespace

} // namespace cmsdp

int main(int argc, char** argv) {
    const std::string kind = argc > 1 ? argv[1] : "";
    if (kind == "man" && argc == 4) {
        cmsdp::Man(argv[2], argv[3]);
    } else if (kind == "bash") {
        cmsdp::Bash();
    } else if (kind == "fish") {
        cmsdp::Fish();
    } else {
        std::cerr << "usage: cmsdp_pages man DATE VERSION | bash | fish\n";
        return 2;
    }
    return std::cout.flush() ? 0 : 1;
}
