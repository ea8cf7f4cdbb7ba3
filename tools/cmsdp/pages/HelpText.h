// The help texts as data: what the manual page and the completions are made from.
//
// Test: tests/tool/pages.py
#pragma once

#include <string>
#include <vector>

namespace cmsdp {

/// An option, argument, verb or status, "--local FILE", and what it means, in lines as they are written.
struct HelpEntry {
    std::string term;
    std::string text;
};

/// A part of a help text. Each has a title, lines or entries; the others are empty.
struct HelpBlock {
    std::string title;              ///< "Example", "Usage", "Options"; empty for a paragraph
    std::vector<std::string> lines; ///< as written, the indent of two blanks taken off
    std::vector<HelpEntry> entries; ///< of a block that lists terms
};

/// What `cmsdp VERB --help` says; `verb` is empty for `cmsdp --help`.
struct HelpPage {
    std::string verb;
    std::vector<HelpBlock> blocks;
};

/// The help of the command itself, then that of each verb it lists.
std::vector<HelpPage> ReadHelpPages();

/// The first block of that title, or an empty one.
const HelpBlock& BlockOf(const HelpPage& page, const std::string& title);

/// The first word of a term: "--local" of "--local FILE", "-h" of "-h, --help".
std::string FirstWord(const std::string& term);

} // namespace cmsdp
