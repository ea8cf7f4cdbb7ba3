// Writes the manual page or a completion of cmsdp, made from its help texts so that nothing is typed twice:
//
//     cmsdp_pages man DATE VERSION      cmsdp.1, for man(7)
//     cmsdp_pages bash                  completion for bash
//     cmsdp_pages fish                  completion for fish
//
// Test: tests/tool/pages.py
#include "HelpText.h"

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

// A line of running text; it is broken once where the escapes make it longer than 80 columns.
std::string Prose(const std::string& line) {
    std::string text = Roff(line);
    if (text.size() > 80) {
        text[text.rfind(' ', 80)] = '\n';
    }
    return text;
}

void ManEntries(const HelpBlock& block) {
    for (const HelpEntry& entry : block.entries) {
        std::cout << ".TP\n.B " << Roff(entry.term) << "\n" << Roff(entry.text) << "\n";
    }
}

// `lead` is ".PP\n", or nothing after a heading, which begins a paragraph by itself.
void ManLiteral(const HelpBlock& block, const char* lead = "") {
    std::cout << lead << ".nf\n";
    for (const std::string& line : block.lines) {
        std::cout << Roff(line) << "\n";
    }
    std::cout << ".fi\n";
}

void ManParagraph(const HelpBlock& block, const char* lead) {
    std::cout << lead;
    for (const std::string& line : block.lines) {
        std::cout << Prose(line) << "\n";
    }
}

// A verb: how it is typed, what it does, its arguments and options, an example.
void ManVerb(const HelpPage& page) {
    std::cout << ".SS " << page.verb << "\n";
    ManLiteral(BlockOf(page, "Usage"));
    for (const HelpBlock& block : page.blocks) {
        if (!block.entries.empty()) {
            ManEntries(block);
        } else if (block.title.empty()) {
            ManParagraph(block, ".PP\n");
        }
    }
    ManLiteral(BlockOf(page, "Example"), ".PP\n");
}

void Man(const std::string& date, const std::string& version) {
    const std::vector<HelpPage> pages = ReadHelpPages();
    std::cout << ".TH CMSDP 1 " << date << " \"commonmedia " << version << "\"\n"
              << ".SH NAME\ncmsdp \\- read, answer and judge session descriptions\n"
              << ".SH SYNOPSIS\n.B cmsdp\n.I VERB\n.RI [ OPTIONS ]\n"
              << ".SH DESCRIPTION\n";
    const char* lead = "";
    for (const HelpBlock& block : pages[0].blocks) {
        if (block.title.empty()) {
            ManParagraph(block, lead);
            lead = ".PP\n";
        }
    }
    ManEntries(BlockOf(pages[0], "Verbs"));
    std::cout << ".SH VERBS\n";
    for (std::size_t i = 1; i < pages.size(); ++i) {
        ManVerb(pages[i]);
    }
    std::cout << ".SH OPTIONS\n";
    ManEntries(BlockOf(pages[0], "Options"));
    std::cout << ".SH EXIT STATUS\n";
    ManEntries(BlockOf(pages[0], "Exit status"));
    std::cout << ".SH EXAMPLES\n";
    ManLiteral(BlockOf(pages[0], "Example"));
}

std::string VerbNames(const std::vector<HelpPage>& pages) {
    std::string names = "help";
    for (std::size_t i = 1; i < pages.size(); ++i) {
        names += " " + pages[i].verb;
    }
    return names;
}

std::string OptionsOf(const HelpPage& page) {
    std::string options;
    for (const HelpEntry& entry : BlockOf(page, "Options").entries) {
        const std::size_t name = entry.term.find("--");
        options += (options.empty() ? "" : " ") + FirstWord(entry.term.substr(name));
    }
    return options;
}

// Where no word fits, a file does: the arguments and the values of options are files.
void Bash() {
    const std::vector<HelpPage> pages = ReadHelpPages();
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
    const std::vector<HelpPage> pages = ReadHelpPages();
    std::cout << "# Completion of cmsdp for fish: verbs, their options, files.\n";
    for (const HelpEntry& verb : BlockOf(pages[0], "Verbs").entries) {
        std::cout << "complete -c cmsdp -n __fish_use_subcommand -a " << FirstWord(verb.term) << " -d "
                  << FishText(verb.text) << "\n";
    }
    for (std::size_t i = 1; i < pages.size(); ++i) {
        for (const HelpEntry& entry : BlockOf(pages[i], "Options").entries) {
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
