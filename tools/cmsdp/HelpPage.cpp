// Stage: command line. The page of a verb, made from its declaration.
// Input: a verb as CLI11 knows it. Output: its page without examples.
// Touches nothing else.
// Tests: tests/tool/help.cases, pages.py
#include "Declare.h"

#include <algorithm>
#include <set>

namespace cmsdp {

namespace {

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

bool Holds(const std::set<CLI::Option*>& options, const CLI::Option& option) {
    return std::any_of(options.begin(), options.end(),
                       [&](const CLI::Option* one) { return one == &option; });
}

// "[--exact | --nth N]" for options that exclude each other, "[--fit [--json]]" for one that another needs.
std::string UsageOf(const CLI::Option& option, const std::vector<const CLI::Option*>& all,
                    std::set<const CLI::Option*>& done) {
    std::string usage = "[" + TermOf(option);
    for (const CLI::Option* const other : all) {
        if (other->get_positional() || done.count(other) != 0) {
            continue;
        }
        if (Holds(other->get_excludes(), option)) {
            done.insert(other);
            usage += " | " + TermOf(*other);
        } else if (Holds(other->get_needs(), option)) {
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

} // namespace

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

} // namespace cmsdp
