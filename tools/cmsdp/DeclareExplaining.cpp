// Stage: command line. The verbs that explain descriptions and prepare them for others: their options and
// help. Output: the options of a verb as CLI11 takes them; each writes its field of CommandLine. Touches
// nothing else.
// Tests: tests/tool/exit-status.cases, help.cases, pages.py
#include "Declare.h"

namespace cmsdp {

namespace {

// The options of `explain` that are about a whole call. A capture takes the place of the operand REMOTE.
CLI::Option* AddCall(CLI::App& verb, CommandLine& line) {
    CLI::Option* const pcap =
        verb.add_option("--pcap", line.pcap,
                        "a packet capture with SIP over UDP or TCP, in place of REMOTE; tshark reads it")
            ->type_name("FILE");
    verb.add_option(
            "--call", line.call,
            "the Nth call of the capture or text; without it all calls are listed and the first is shown")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000));
    verb.add_option(
            "--we", line.we,
            "the side that is ours: caller, callee or an address. The texts that this side receives are "
            "explained, no others")
        ->type_name("SIDE");
    return pcap;
}

} // namespace

void DeclareExplain(CLI::App& verb, CommandLine& line) {
    verb.description(
        "Says why a call came up as it did: which line of the far end, or which local field, did what, and "
        "which edit mends it. A finding is three lines: what was found, the rule that acted, what comes "
        "of it for the call. The most harmful finding comes first.\n\n"
        "Of a whole call it shows each step: when it came, who offered, what changed for the engine, the "
        "findings. Each side's text is read as the other side's remote.");
    AddLocal(verb, line);
    verb.add_flag("--offered", line.offered, "REMOTE answers our offer");
    verb.add_option("--offer", line.ourOffer,
                    "the offer that REMOTE answers; without it the one that the local file makes")
        ->type_name("FILE");
    verb.add_option("--before", line.before, "the far end's description that was read before")
        ->type_name("FILE");
    CLI::Option* const pcap = AddCall(verb, line);
    verb.add_option("--about", line.about,
                    "the findings of one topic: audio.codec audio.send audio.receive main.picture main.send "
                    "main.receive slides floor dtmf bandwidth encryption.audio encryption.main "
                    "encryption.slides ice call")
        ->type_name("TOPIC");
    verb.add_flag("--top", line.top, "the first finding alone");
    verb.add_flag("--lines", line.lines, "the text with what became of each line");
    CLI::Option* const exact = verb.add_flag(
        "--exact", line.remote.exact,
        "take REMOTE byte for byte. Without it a text that has no CR LF at all is cleaned, and what a "
        "log or a SIP message puts around a description is left out, with a note on standard error");
    AddNth(verb, line)->excludes(exact);
    CLI::Option* const json = verb.add_flag("--json", line.json, "JSON in place of the text");
    verb.add_option("--html", line.html,
                    "a page for a browser, written to FILE, in place of the text; - for standard output")
        ->type_name("FILE")
        ->excludes(json);
    AddRemote(verb, line,
              "file with the far end's description; - or nothing for standard input; at most 16 MiB. A text "
              "with several SIP messages is a call, and so is a folder: its files *.sdp in order of name");
    verb.get_option("REMOTE")->excludes(pcap);
    verb.footer("SRTP keys are never shown.");
}

void DeclareWhyNot(CLI::App& verb, CommandLine& line) {
    verb.description(
        "Says for each format of the far end why it is not the codec: the first test that failed.");
    AddLocal(verb, line);
    CLI::Option* const exact = verb.add_flag("--exact", line.remote.exact, "take REMOTE byte for byte");
    AddNth(verb, line)->excludes(exact);
    verb.add_option(
            "CODEC", line.codec,
            "a name of cmsdp capabilities or of an rtpmap attribute, such as G711U, H264_MODE_1, PCMA or "
            "h264; letter case does not count")
        ->required();
    AddRemote(verb, line, "file with the description; - or nothing for standard input");
}

void DeclareDiff(CLI::App& verb, CommandLine& line) {
    verb.description("Says what changes for the media engine between two descriptions of one far end: codec, "
                     "direction, address, key, limits. Lines that differ without an effect are not listed.");
    AddLocal(verb, line);
    verb.add_flag("--exact", line.remote.exact, "take the files byte for byte");
    verb.add_option("OLD", line.remote.name, "file with the earlier description")->required();
    verb.add_option("NEW", line.newer, "file with the later one")->required();
}

void DeclareSurvey(CLI::App& verb, CommandLine& line) {
    verb.description(
        "Examines descriptions by the thousand, on all cores: which findings of cmsdp explain they have, "
        "without cures, and which streams of cmsdp answer --fit come up. Counts and shares are those of "
        "descriptions; the file beside a row is the first that is counted in it. Far ends are named by the "
        "user name of their o= line, their s= line and a=tool:, with # for the digits in them.");
    AddLocal(verb, line);
    verb.add_flag("--offered", line.offered,
                  "the descriptions answer our offer. In SIP messages and captures this is known");
    verb.add_flag("--json", line.json,
                  "a line of JSON for each description, as soon as it is examined, in place of the table");
    verb.add_option(
            "PATH", line.paths,
            "a file with a description, with SIP messages or with a capture; a folder with all below "
            "it; a file *.jsonl, or - for standard input, with JSON values, one in a line, each with a "
            "member \"sdp\". Its member \"type\" may be \"answer\"")
        ->required();
    verb.footer("A file that cannot be read is counted and named, and the survey goes on. Ctrl-C ends it: it "
                "shows what it has, with status 130. Status 3: no description was read. SRTP keys are never "
                "shown.");
}

void DeclareRedact(CLI::App& verb, CommandLine& line) {
    verb.description(
        "Writes the description with other SRTP keys, so that others may read it. It still means the same: "
        "what cmsdp explain, inspect and answer say of it is the same but for the replaced words. Equal "
        "texts are replaced by equal ones, a key that does not decode by one that does not, and a key of "
        "zeros stays.");
    verb.add_flag(
        "--addresses", line.addresses,
        "replace addresses, host names, user names, session names, contacts, and user fragments, "
        "passwords and foundations of ICE as well. Addresses come from the ranges for documentation, "
        "names are user1, word1 or host1.example. 0.0.0.0, :: and ::1 stay, and an address that is "
        "private, link-local, loopback or multicast becomes another one that is. The name of the "
        "program (a=tool) stays");
    AddRemote(verb, line, "file with the description; - or nothing for standard input; at most 16 MiB");
}

} // namespace cmsdp
