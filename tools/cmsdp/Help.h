// What --help, the manual page and the completions say. All three are made from the declarations of the verbs
// (Declare.h), so that no option is named twice.
//
// Tests: tests/tool/help.cases, pages.py
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace cmsdp {

extern const char* const kVersion;

/// An option, operand, verb or status, "--local FILE", and what it means, in one line however long.
struct HelpEntry {
    std::string term;
    std::string text;
};

struct HelpList {
    std::string title; ///< "Options", "Verbs", "Exit status"; empty for operands
    std::vector<HelpEntry> entries;
};

/// What is said of a verb, or of the whole command where `verb` is empty.
struct HelpPage {
    std::string verb;
    std::vector<std::string> examples;   ///< command lines
    std::vector<std::string> usage;      ///< what no line break parts: "[--then WISH]..."
    std::vector<std::string> paragraphs; ///< what it does, each in one line however long
    std::vector<HelpList> lists;
    std::vector<std::string> closing; ///< paragraphs about its exit status
};

/// The page as --help writes it: at most 80 columns wide.
std::string HelpText(const HelpPage& page);

/// The entries under that title; none if the page has no such list.
std::vector<HelpEntry> EntriesOf(const HelpPage& page, const std::string& title);

/// The words as lines of at most `width` columns; a longer word has a line of its own.
std::vector<std::string> Wrapped(const std::vector<std::string>& words, std::size_t width);
std::vector<std::string> Wrapped(const std::string& paragraph, std::size_t width);

} // namespace cmsdp
