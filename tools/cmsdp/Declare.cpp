// Stage: command line. The verbs that write, read and judge descriptions: their options and their help.
// Output: the options of a verb as CLI11 takes them; each writes its field of CommandLine.
// Touches nothing else.
// Tests: tests/tool/exit-status.cases, help.cases, pages.py
#include "Declare.h"

#include "Require.h"

namespace cmsdp {

namespace {

void AddSecrets(CLI::App& verb, CommandLine& line) {
    verb.add_flag("--show-secrets", line.showSecrets,
                  "show keys and ICE passwords; without it they are shown as ***");
}

void AddRequire(CLI::App& verb, CommandLine& line) {
    verb.add_option_function<std::string>(
            "--require", [&line](const std::string& list) { line.require = ParseRequired(list); },
            "exit status 1 when one of these is not negotiated (cmsdp call: on both sides after the last "
            "step), with a comma between: audio, main_video, presentation, floor_control")
        ->type_name("LIST");
}

// The options of the verbs that read a text as it was pasted.
void AddPasted(CLI::App& verb, CommandLine& line) {
    CLI::Option* const exact = verb.add_flag("--exact", line.remote.exact,
                                             "take REMOTE byte for byte. Without it what logs, mails and "
                                             "browsers do to a text is undone, each step "
                                             "with a note on standard error");
    AddNth(verb, line)->excludes(exact);
}

void AddSide(CLI::App& verb, const char* name, std::optional<std::string>& file, const char* what) {
    verb.add_option(name, file, what)->type_name("FILE");
}

// What the verbs that read and judge one description take, with what --json and REMOTE are for them.
void AddJudged(CLI::App& verb, CommandLine& line, const char* jsonWords, const char* remoteWords) {
    AddLocal(verb, line);
    verb.add_flag("--json", line.json, jsonWords);
    AddRequire(verb, line);
    AddPasted(verb, line);
    AddSecrets(verb, line);
    AddRemote(verb, line, remoteWords);
}

} // namespace

void AddLocal(CLI::App& verb, CommandLine& line) {
    AddSide(verb, "--local", line.local,
            "what this side can do, as JSON; see cmsdp capabilities. Without it: all audio codecs, H.264, "
            "presentation, no SRTP");
}

CLI::Option* AddNth(CLI::App& verb, CommandLine& line) {
    return verb
        .add_option("--nth", line.remote.nth, "of several descriptions in REMOTE read the Nth, not the first")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000));
}

void AddRemote(CLI::App& verb, CommandLine& line, const char* what) {
    verb.add_option("REMOTE", line.remote.name, what);
    verb.parse_complete_callback([&line, &verb] {
        line.readsRemote = !line.pcap;
        line.remote.hasNth = verb.get_option_no_throw("--nth") != nullptr;
    });
}

void DeclareOffer(CLI::App& verb, CommandLine& line) {
    verb.description("Writes the local offer to standard output; lines end in CR LF.");
    AddLocal(verb, line);
    CLI::Option* const fit = verb.add_flag(
        "--fit", line.fit, "write the offer of the negotiation layer, which strict far ends take");
    verb.add_flag("--json", line.json, "with --fit: JSON that holds the offer")->needs(fit);
    AddSecrets(verb, line);
    verb.footer("Exit status 1: no stream is offered, or there is no address to offer.");
}

void DeclareAnswer(CLI::App& verb, CommandLine& line) {
    verb.description("Reads a remote offer and writes the answer to standard output; lines end in CR LF.");
    verb.add_flag(
        "--fit", line.fit,
        "write the answer of the negotiation layer: each section in its place, rejected or taken as "
        "strict far ends want it");
    AddJudged(verb, line, "JSON that holds the answer, in place of the answer",
              "file with the offer; - or nothing for standard input; at most 16 MiB");
    verb.footer(
        "Exit status 1: an answer was written where one is due, and no stream came up in it: one that "
        "the answer declines or moves is not negotiated. With --fit: the offer is refused, and nothing "
        "is written but the reason.");
}

void DeclareInspect(CLI::App& verb, CommandLine& line) {
    verb.description(
        "Reads a remote offer or answer and shows what the media engine would start with: each stream with "
        "codec, address and direction as seen from this side, and for a stream that did not come up the "
        "reason why. Our own answer is judged as strict far ends do, and what answer --fit does differently "
        "is listed.");
    verb.add_flag("--offered", line.offered, "the text answers our offer; no answer of ours is judged");
    AddJudged(verb, line, "JSON in place of the table",
              "file with the description; - or nothing for standard input; at most 16 MiB");
    verb.footer("Exit status 1: no stream came up: one that our own answer declines or moves is not "
                "negotiated. Colour needs a terminal; NO_COLOR=1 turns it off.");
}

void DeclareCall(CLI::App& verb, CommandLine& line) {
    verb.description("Lets two sides negotiate over the negotiation layer: writes the offer, the answer, and "
                     "what each media engine starts with, side by side; then the same for each wish.");
    AddSide(verb, "--offerer", line.offerer,
            "what the offering side can do, as JSON; see cmsdp capabilities");
    AddSide(verb, "--answerer", line.answerer, "what the answering side can do");
    verb.add_option(
            "--then", line.then,
            "what the offerer wishes next: hold, resume, mute, unmute, present, stop-presenting, rekey; "
            "answerer:hold and so on for the answerer. May be given several times")
        ->type_name("WISH")
        ->take_all()
        ->expected(1);
    verb.add_flag("--json", line.json, "JSON in place of the texts and the tables");
    AddRequire(verb, line);
    AddSecrets(verb, line);
    verb.footer("Exit status 1: after the last step no stream is up on one of the sides.");
}

void DeclareCheck(CLI::App& verb, CommandLine& line) {
    verb.description("Judges an answer against its offer: each line of the output is one violation, with the "
                     "ID of the rule, the line of the answer, the clause it comes from, and what is wrong. "
                     "Nothing is written when a strict reader takes the answer.");
    verb.add_flag("--json", line.json, "JSON in place of the lines");
    verb.add_option("OFFER", line.checkedOffer,
                    "file with the offer, which is not judged; - for standard input; at most 16 MiB")
        ->required();
    verb.add_option("ANSWER", line.checkedAnswer,
                    "file with the answer, or -. It is judged byte for byte, line ends and keys included")
        ->required();
    verb.footer("Exit status 1: there are violations.");
}

void DeclareCapabilities(CLI::App& verb, CommandLine& /*line*/) {
    verb.description(
        "Writes what this side can do as JSON, every member that a description is written from. The file "
        "goes back in with --local, --offerer and --answerer; a member that is left out keeps the value "
        "shown here, at the answerer the answerer's own. SRTP keys are null: a key is made where SRTP needs "
        "one.");
}

void DeclareHelp(CLI::App& verb, CommandLine& line) {
    verb.add_option("VERB", line.topic, "a verb; without it the help of the command");
    verb.description("Writes the help of the command or of a verb.");
}

void DeclareVersion(CLI::App& verb, CommandLine& /*line*/) {
    verb.description("Writes the version.");
}

} // namespace cmsdp
