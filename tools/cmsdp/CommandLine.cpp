// Stage: command line. The table of verbs; what each takes is in Declare.cpp and DeclareExplaining.cpp.
// Input: the words that the user typed. Output: the verb to run with its fields, or the help.
// Touches nothing else.
// Tests: tests/tool/exit-status.cases, help.cases
#include "CommandLine.h"

#include "Declare.h"
#include "Outcome.h"
#include "Verbs.h"
#include "Words.h"

#include <CLI/CLI.hpp>

namespace cmsdp {

namespace {

struct VerbRow {
    const char* name;
    const char* summary; // in the list of verbs
    void (*declare)(CLI::App&, CommandLine&);
    Run run;
    std::vector<std::string> examples;
};

const VerbRow kVerbs[] = {
    {"offer",
     "write the local offer",
     DeclareOffer,
     RunOffer,
     {"cmsdp offer > offer.sdp",
      "cmsdp capabilities > me.json     edit me.json, then:", "cmsdp offer --local me.json"}},
    {"answer",
     "read a remote offer, write the answer",
     DeclareAnswer,
     RunAnswer,
     {"cmsdp answer --fit offer.sdp > answer.sdp", "xclip -o | cmsdp answer --local me.json"}},
    {"inspect",
     "read a remote description, show what the media engine would start with and why it would start without "
     "the rest",
     DeclareInspect,
     RunInspect,
     {"cmsdp inspect offer.sdp", "cmsdp inspect --json offer.sdp | jq .main_video.why"}},
    {"call",
     "let two sides negotiate with each other",
     DeclareCall,
     RunCall,
     {"cmsdp call", "cmsdp call --offerer alice.json --then hold --then resume",
      "cmsdp call --answerer bob.json --then answerer:mute"}},
    {"check",
     "judge an answer against its offer as strict readers do",
     DeclareCheck,
     RunCheck,
     {"cmsdp check offer.sdp answer.sdp", "cmsdp answer --show-secrets offer.sdp | cmsdp check offer.sdp -"}},
    {"explain",
     "say why a call came up as it did: which line or local field did what, and which edit mends it",
     DeclareExplain,
     RunExplain,
     {"cmsdp explain --about main.picture --top offer.sdp",
      "cmsdp explain --offered --offer ours.sdp answer.sdp", "cmsdp explain --lines offer.sdp",
      "cmsdp explain --pcap call.pcap --we caller", "cmsdp explain --html report.html --pcap call.pcap"}},
    {"whynot", "say why a codec was not chosen", DeclareWhyNot, RunWhyNot, {"cmsdp whynot G7221 offer.sdp"}},
    {"diff",
     "say what a new description changes for the media engine",
     DeclareDiff,
     RunDiff,
     {"cmsdp diff offer.sdp reoffer.sdp"}},
    {"survey",
     "count the findings and the streams of many descriptions",
     DeclareSurvey,
     RunSurvey,
     {"cmsdp survey /var/log/calls", "zcat night.jsonl.gz | cmsdp survey --json - > night.result"}},
    {"redact",
     "write a description for others: other keys, and other addresses and names, with the same meaning",
     DeclareRedact,
     RunRedact,
     {"cmsdp redact --addresses offer.sdp > ticket.sdp"}},
    {"capabilities",
     "write what this side can do as JSON, to be edited and given back with --local",
     DeclareCapabilities,
     RunCapabilities,
     {"cmsdp capabilities > me.json     edit me.json, then:", "cmsdp offer --local me.json"}},
    {"help", "this text, or that of a verb", DeclareHelp, RunHelp, {"cmsdp help explain"}},
    {"version", "the version", DeclareVersion, RunVersion, {"cmsdp version"}},
};

// Writes our page in place of the text that CLI11 would generate.
class PageWriter : public CLI::FormatterBase {
public:
    explicit PageWriter(std::vector<std::string> examples) : m_examples(std::move(examples)) {}
    std::string make_help(const CLI::App* app, std::string /*name*/,
                          CLI::AppFormatMode /*mode*/) const override {
        HelpPage page = PageOf(*app);
        page.examples = m_examples;
        return HelpText(page);
    }

private:
    std::vector<std::string> m_examples;
};

void Declare(CLI::App& app, CommandLine& line) {
    app.set_version_flag("--version", kVersion, "the version");
    app.require_subcommand(0, 1);
    for (const VerbRow& row : kVerbs) {
        CLI::App* const verb = app.add_subcommand(row.name);
        verb->formatter(std::make_shared<PageWriter>(row.examples));
        verb->callback([&line, &row] {
            line.run = row.run;
            line.remote.verb = row.name;
        });
        row.declare(*verb, line);
    }
}

// The page of the command: its verbs, its own options, the exit statuses (Outcome.h).
HelpPage CommandPage(const CLI::App& app) {
    HelpPage page;
    page.examples = {"cmsdp inspect offer.sdp          what did they offer, and what comes of it?",
                     "cmsdp answer offer.sdp           what do we answer?"};
    page.usage = {"VERB", "[OPTIONS]"};
    page.paragraphs = {"Session descriptions of a video-calling client (RFC 4566, RFC 3264).",
                       "cmsdp VERB --help tells more about a verb."};
    HelpList verbs{"Verbs", {}};
    for (const VerbRow& row : kVerbs) {
        const char* const operand = row.run == RunHelp ? " [VERB]" : "";
        verbs.entries.push_back({std::string(row.name) + operand, row.summary});
    }
    page.lists = {verbs,
                  {"Options", EntriesOf(PageOf(app), "Options")},
                  {"Exit status",
                   {{"0", "done"},
                    {"1", "done, and nothing was negotiated, or not what --require names"},
                    {"2", "the command line is wrong"},
                    {"3", "the remote text cannot be read or holds no SDP line"},
                    {"4", "the local file cannot be read or is wrong"},
                    {"5", "the machine failed: output, memory or random numbers, or tshark is missing"},
                    {"130", "a survey was interrupted; it shows what it has"}}}};
    return page;
}

// The text of `cmsdp help`, or of `cmsdp help VERB`.
std::string HelpAbout(const std::string& topic) {
    for (const HelpPage& page : HelpPages()) {
        if (topic == page.verb) {
            return HelpText(page);
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
    return typed.empty() ? HelpText(CommandPage(app)) : typed.front()->help();
}

// The generated words for a missing verb do not repeat what is in its place.
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

std::vector<HelpPage> HelpPages() {
    CommandLine line;
    CLI::App app;
    Declare(app, line);
    std::vector<HelpPage> pages{CommandPage(app)};
    for (const VerbRow& row : kVerbs) {
        pages.push_back(PageOf(*app.get_subcommand(row.name)));
        pages.back().examples = row.examples;
    }
    return pages;
}

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
