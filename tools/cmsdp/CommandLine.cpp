// The table of verbs and their options; their texts stand in Help.cpp.
//
// Tests: tests/tool/StatusTest.cpp, HelpTest.cpp
#include "CommandLine.h"

#include "Help.h"
#include "Outcome.h"
#include "Require.h"
#include "Verbs.h"
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

// Options that several verbs have.
void AddLocal(CLI::App& verb, CommandLine& line) {
    verb.add_option("--local", line.local)->type_name("FILE");
}

void AddSecrets(CLI::App& verb, CommandLine& line) {
    verb.add_flag("--show-secrets", line.showSecrets);
}

void AddVerdict(CLI::App& verb, CommandLine& line) {
    verb.add_flag("--json", line.json);
    verb.add_option_function<std::string>(
            "--require", [&line](const std::string& list) { line.require = ParseRequired(list); })
        ->type_name("LIST");
}

void AddRemote(CLI::App& verb, CommandLine& line) {
    CLI::Option* const exact = verb.add_flag("--exact", line.remote.exact);
    verb.add_option("--nth", line.remote.nth)->type_name("N")->check(CLI::Range(1, 1000000))->excludes(exact);
    verb.add_option("REMOTE", line.remote.name);
}

void DeclareOffer(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    AddSecrets(verb, line);
    CLI::Option* const fit = verb.add_flag("--fit", line.fit);
    verb.add_flag("--json", line.json)->needs(fit);
}

void DeclareReader(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    AddSecrets(verb, line);
    AddVerdict(verb, line);
    AddRemote(verb, line);
    verb.parse_complete_callback([&line] { line.readsRemote = true; });
}

void DeclareAnswer(CLI::App& verb, CommandLine& line) {
    DeclareReader(verb, line);
    verb.add_flag("--fit", line.fit);
}

void DeclareInspect(CLI::App& verb, CommandLine& line) {
    DeclareReader(verb, line);
    verb.add_flag("--offered", line.offered);
}

void DeclareCall(CLI::App& verb, CommandLine& line) {
    verb.add_option("--offerer", line.offerer)->type_name("FILE");
    verb.add_option("--answerer", line.answerer)->type_name("FILE");
    verb.add_option("--then", line.then)->type_name("WISH")->take_all()->expected(1);
    AddSecrets(verb, line);
    AddVerdict(verb, line);
}

void DeclareCheck(CLI::App& verb, CommandLine& line) {
    verb.add_flag("--json", line.json);
    verb.add_option("OFFER", line.checkedOffer)->required();
    verb.add_option("ANSWER", line.checkedAnswer)->required();
}

void DeclareExplain(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    verb.add_flag("--offered", line.offered);
    verb.add_option("--offer", line.ourOffer)->type_name("FILE");
    verb.add_option("--before", line.before)->type_name("FILE");
    CLI::Option* const pcap = verb.add_option("--pcap", line.pcap)->type_name("FILE");
    verb.add_option("--call", line.call)->type_name("N")->check(CLI::Range(1, 1000000));
    verb.add_option("--we", line.we)->type_name("SIDE");
    verb.add_option("--about", line.about)->type_name("TOPIC");
    verb.add_flag("--top", line.top);
    verb.add_flag("--lines", line.lines);
    verb.add_flag("--exact", line.remote.exact);
    CLI::Option* const json = verb.add_flag("--json", line.json);
    verb.add_option("--html", line.html)->type_name("FILE")->excludes(json);
    verb.add_option("REMOTE", line.remote.name)->excludes(pcap);
    verb.parse_complete_callback([&line] { line.readsRemote = !line.pcap; });
}

void DeclareWhyNot(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    verb.add_flag("--exact", line.remote.exact);
    verb.add_option("CODEC", line.codec)->required();
    verb.add_option("REMOTE", line.remote.name);
    verb.parse_complete_callback([&line] { line.readsRemote = true; });
}

void DeclareDiff(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    verb.add_flag("--exact", line.remote.exact);
    verb.add_option("OLD", line.remote.name)->required();
    verb.add_option("NEW", line.newer)->required();
}

void DeclareSurvey(CLI::App& verb, CommandLine& line) {
    AddLocal(verb, line);
    verb.add_flag("--offered", line.offered);
    verb.add_flag("--json", line.json);
    verb.add_option("PATH", line.paths)->required();
}

void DeclareRedact(CLI::App& verb, CommandLine& line) {
    verb.add_flag("--addresses", line.addresses);
    verb.add_option("REMOTE", line.remote.name);
    verb.parse_complete_callback([&line] { line.readsRemote = true; });
}

void DeclareNothing(CLI::App& /*verb*/, CommandLine& /*line*/) {}

void DeclareHelp(CLI::App& verb, CommandLine& line) {
    verb.add_option("VERB", line.topic);
}

struct VerbRow {
    const char* name;
    const char* const* help; // what VERB --help writes
    void (*declare)(CLI::App&, CommandLine&);
    Run run;
};

constexpr VerbRow kVerbs[] = {
    {"offer", &kOfferHelp, DeclareOffer, RunOffer},
    {"answer", &kAnswerHelp, DeclareAnswer, RunAnswer},
    {"inspect", &kInspectHelp, DeclareInspect, RunInspect},
    {"call", &kCallHelp, DeclareCall, RunCall},
    {"check", &kCheckHelp, DeclareCheck, RunCheck},
    {"explain", &kExplainHelp, DeclareExplain, RunExplain},
    {"whynot", &kWhyNotHelp, DeclareWhyNot, RunWhyNot},
    {"diff", &kDiffHelp, DeclareDiff, RunDiff},
    {"survey", &kSurveyHelp, DeclareSurvey, RunSurvey},
    {"redact", &kRedactHelp, DeclareRedact, RunRedact},
    {"capabilities", &kCapabilitiesHelp, DeclareNothing, RunCapabilities},
    {"help", &kHelp, DeclareHelp, RunHelp},
    {"version", &kVersionHelp, DeclareNothing, RunVersion},
};

void Declare(CLI::App& app, CommandLine& line) {
    app.formatter(std::make_shared<WrittenHelp>(kHelp));
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(0, 1);
    for (const VerbRow& row : kVerbs) {
        CLI::App* const verb = app.add_subcommand(row.name);
        verb->formatter(std::make_shared<WrittenHelp>(*row.help));
        verb->callback([&line, &row] {
            line.run = row.run;
            line.remote.verb = row.name;
        });
        row.declare(*verb, line);
    }
}

// The text of `cmsdp help`, or of `cmsdp help VERB`.
std::string HelpAbout(const std::string& topic) {
    if (topic.empty()) {
        return kHelp;
    }
    for (const VerbRow& row : kVerbs) {
        if (topic == row.name) {
            return *row.help;
        }
    }
    throw ToolError(kUsage, Quoted(topic) + " is no verb; see cmsdp --help");
}

CommandLine ToWrite(std::string text) {
    CommandLine line;
    line.run = RunHelp;
    line.help = std::move(text);
    return line;
}

// The help that fits: that of the verb when one was typed.
std::string HelpFor(const CLI::App& app) {
    const std::vector<CLI::App*> typed = app.get_subcommands();
    return typed.empty() ? app.help() : typed.front()->help();
}

// The generated words for a missing verb do not repeat what stands in its place.
std::string WhatIsWrong(const CLI::App& app, const CLI::ParseError& error) {
    if (!app.get_subcommands().empty() || app.remaining_size() == 0) {
        return error.what();
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
        return ToWrite(HelpFor(app));
    } catch (const CLI::CallForVersion&) {
        return ToWrite(std::string(kVersion) + "\n");
    } catch (const CLI::ParseError& error) {
        throw ToolError(kUsage, WhatIsWrong(app, error) + "; see " + HelpWords(app));
    }
    return line.run == nullptr || line.run == RunHelp ? ToWrite(HelpAbout(line.topic)) : line;
}

} // namespace cmsdp
