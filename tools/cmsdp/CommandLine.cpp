// Options are declared here; their texts stand in Help.cpp.
//
// Tests: tests/tool/StatusTest.cpp, HelpTest.cpp
#include "CommandLine.h"

#include "Help.h"
#include "Outcome.h"
#include "Words.h"

#include <CLI/CLI.hpp>

namespace cmsdp {

namespace {

// Hands out the written texts in place of generated ones.
class WrittenHelp : public CLI::FormatterBase {
public:
    explicit WrittenHelp(const char* text) : m_text(text) {}
    std::string make_help(const CLI::App* /*app*/, std::string /*name*/,
                          CLI::AppFormatMode /*mode*/) const override {
        return m_text;
    }

private:
    const char* m_text;
};

CLI::App* AddVerb(CLI::App& app, CommandLine& line, Verb verb, const char* name, const char* help) {
    CLI::App* const sub = app.add_subcommand(name);
    sub->formatter(std::make_shared<WrittenHelp>(help));
    sub->callback([&line, verb] { line.verb = verb; });
    return sub;
}

void AddSecrets(CLI::App* verb, CommandLine& line) {
    verb->add_flag("--show-secrets", line.showSecrets);
}

void AddRemote(CLI::App* verb, CommandLine& line) {
    verb->add_option("--local", line.local)->type_name("FILE");
    CLI::Option* const exact = verb->add_flag("--exact", line.remote.exact);
    verb->add_option("--nth", line.remote.nth)
        ->type_name("N")
        ->check(CLI::Range(1, 1000000))
        ->excludes(exact);
    verb->add_option("REMOTE", line.remote.name);
    AddSecrets(verb, line);
}

void Declare(CLI::App& app, CommandLine& line) {
    app.formatter(std::make_shared<WrittenHelp>(kHelp));
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(1);

    CLI::App* const offer = AddVerb(app, line, Verb::kOffer, "offer", kOfferHelp);
    offer->add_option("--local", line.local)->type_name("FILE");
    AddSecrets(offer, line);

    AddRemote(AddVerb(app, line, Verb::kAnswer, "answer", kAnswerHelp), line);

    CLI::App* const inspect = AddVerb(app, line, Verb::kInspect, "inspect", kInspectHelp);
    AddRemote(inspect, line);
    inspect->add_flag("--json", line.json);

    CLI::App* const call = AddVerb(app, line, Verb::kCall, "call", kCallHelp);
    call->add_option("--offerer", line.offerer)->type_name("FILE");
    call->add_option("--answerer", line.answerer)->type_name("FILE");
    AddSecrets(call, line);

    CLI::App* const check = AddVerb(app, line, Verb::kCheck, "check", kCheckHelp);
    check->add_flag("--json", line.json);
    check->add_option("OFFER", line.checkedOffer)->required();
    check->add_option("ANSWER", line.checkedAnswer)->required();

    AddVerb(app, line, Verb::kCapabilities, "capabilities", kCapabilitiesHelp);
}

// The help that fits: that of the verb when one was typed.
std::string HelpFor(const CLI::App& app) {
    const std::vector<CLI::App*> typed = app.get_subcommands();
    return typed.empty() ? app.help() : typed.front()->help();
}

// The generated words for a missing verb do not repeat what stands in its place.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error) {
    if (!app.get_subcommands().empty() || app.remaining_size() == 0) {
        const bool verbMissing = app.get_subcommands().empty() && error.get_name() == "RequiredError";
        return verbMissing ? "a verb is missing" : error.what();
    }
    const std::string first = app.remaining().front();
    return Quoted(first) + (first.compare(0, 1, "-") == 0 ? " is no option" : " is no verb");
}

std::string HelpWords(const CLI::App& app) {
    const std::vector<CLI::App*> typed = app.get_subcommands();
    return typed.empty() ? "cmsdp --help" : "cmsdp " + typed.front()->get_name() + " --help";
}

} // namespace

CommandLine ParseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    CLI::App app("", "cmsdp");
    Declare(app, line);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        line.verb = Verb::kHelp;
        line.help = HelpFor(app);
    } catch (const CLI::CallForVersion&) {
        line.verb = Verb::kHelp;
        line.help = std::string(kVersion) + "\n";
    } catch (const CLI::ParseError& error) {
        throw ToolError(kUsage, WhatIsWrong(app, error) + "; see " + HelpWords(app));
    }
    return line;
}

} // namespace cmsdp
