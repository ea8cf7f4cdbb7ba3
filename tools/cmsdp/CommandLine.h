// The words that the user typed.
//
// Tests: tests/tool/exit-status.cases, help.cases
#pragma once

#include "Help.h"
#include "RemoteText.h"

#include <optional>
#include <string>
#include <vector>

namespace cmsdp {

struct CommandLine;
struct Outcome;
struct Screen;

/// What does the work of a verb.
using Run = Outcome (*)(const CommandLine& line, const Screen& screen);

struct CommandLine {
    Run run = nullptr;
    std::string help;  ///< RunHelp: the text to write
    std::string topic; ///< of `cmsdp help VERB`: the verb
    std::optional<std::string> local;
    std::optional<std::string> offerer;
    std::optional<std::string> answerer;
    bool readsRemote = false; ///< the verb reads `remote`
    RemoteSource remote;
    std::string checkedOffer;
    std::string checkedAnswer;
    bool offered = false;                ///< explain, inspect: the remote text answers our offer
    std::optional<std::string> ourOffer; ///< explain: the offer that the remote text answers
    std::optional<std::string> before;   ///< explain: the far end's description read before
    std::optional<std::string> about;    ///< explain: the findings of this topic alone
    std::optional<std::string> pcap;     ///< explain: a packet capture in place of `remote`
    std::size_t call = 0;                ///< explain: which call of it, counted from 1; 0: the first
    std::optional<std::string> we;       ///< explain: the side of the call that is ours
    std::optional<std::string> html;     ///< explain: the file for a page; "-": standard output
    bool top = false;                    ///< explain: the first finding alone
    bool lines = false;                  ///< explain: what became of each line as well
    std::string codec;                   ///< whynot: a codec of the local file
    std::string newer;                   ///< diff: the later description; `remote` is the earlier
    std::vector<std::string> require;    ///< streams that have to be negotiated, by their JSON names
    std::vector<std::string> then;       ///< call: what happens after it came up, "answerer:hold"
    std::vector<std::string> paths;      ///< survey: files and folders, - for JSON lines
    bool addresses = false;              ///< redact: addresses, names and credentials as well
    bool json = false;
    bool fit = false; ///< write what the negotiation layer sends, not what the component writes
    bool showSecrets = false;
};

/// Throws ToolError(kUsage) for words that make no command.
CommandLine ParseCommandLine(int argc, const char* const* argv);

/// The page of the command, then those of its verbs.
std::vector<HelpPage> HelpPages();

} // namespace cmsdp
