// The command cmsdp with a local file as JSON, a remote text and one verb.
//
// Byte 0 chooses the verb, byte 1 its options, bytes 2 and 3 the length of the JSON text; the rest is the
// remote text. The verbs read files, which are kept in memory.
#include "Cost.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <Clean.h>
#include <Outcome.h>
#include <Redact.h>
#include <Verbs.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

namespace {

// A table needs more memory than its text, and a file is read through a large buffer.
constexpr Budget kVerb = {"verb", 1U << 20U, 512, 65536, 128};

/// A file in memory that readers can open by name.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& bytes) : m_file(memfd_create("input", MFD_CLOEXEC)) {
        for (std::size_t at = 0; at < bytes.size();) {
            const ssize_t written = write(m_file, bytes.data() + at, bytes.size() - at);
            if (written <= 0) {
                std::abort();
            }
            at += static_cast<std::size_t>(written);
        }
    }
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Name() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

/// The JSON text with the key inserted at the start of the value of every member "key".
std::string PlantInJson(const std::string& json, const Key& key) {
    static constexpr std::string_view member = "\"key\"";
    const auto skipBlanks = [&json](std::size_t at) {
        return std::min(json.find_first_not_of(" \t\r\n", at), json.size());
    };
    std::string out;
    std::size_t from = 0;
    for (std::size_t at = json.find(member); at != std::string::npos; at = json.find(member, at + 1)) {
        std::size_t value = skipBlanks(at + member.size());
        value = value < json.size() && json[value] == ':' ? skipBlanks(value + 1) : json.size();
        if (value < json.size() && json[value] == '"') {
            out.append(json, from, value + 1 - from).append(key.text);
            from = value + 1;
        }
    }
    return out.append(json, from, std::string::npos);
}

bool IsPrintable(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c >= ' ' && c < '\x7f') || c == '\n'; });
}

/// The record without the keys, which the written form leaves out.
std::string SideText(const cmsdp::Capabilities& side) {
    cmsdp::Capabilities bare = side;
    std::memset(bare.local.bufSRTPKey, 0, sizeof bare.local.bufSRTPKey);
    std::memset(bare.local.bufSRTPSalt, 0, sizeof bare.local.bufSRTPSalt);
    return RecordText(bare.local) + (bare.srtp ? "srtp " : "") + "floor control " +
           std::to_string(static_cast<int>(bare.floorControl)) + " served " +
           std::to_string(bare.servedSections);
}

void CheckJson(const std::string& json, const Watch& watch) {
    try {
        const cmsdp::Capabilities side = cmsdp::ParseCapabilities(json, "local.json");
        const std::string written = cmsdp::CapabilitiesJson(side);
        watch.Check("the written capabilities", written);
        Require(IsPrintable(written), "capabilities are written in ASCII", written, json);
        const cmsdp::Capabilities again = cmsdp::ParseCapabilities(written, "written.json");
        RequireSame("capabilities written and read are the same", "first", SideText(side), "second",
                    SideText(again));
        RequireSame("capabilities written twice are the same", "first", written, "second",
                    cmsdp::CapabilitiesJson(again));
    } catch (const cmsdp::ToolError& error) {
        Require(error.status() == cmsdp::kLocalFile, "a bad local file is called that", error.what(), json);
        watch.Check("the message about the local file", error.what());
    }
}

void CheckCleaning(const std::string& text) {
    std::vector<std::string> notes;
    cmsdp::Draft draft = cmsdp::Draft::Of(text);
    cmsdp::Clean(draft, 1, notes, cmsdp::LineEnd::CrLf);
    const std::string& cleaned = draft.text;
    const bool isWhole = cleaned.size() >= 2 && cleaned.compare(cleaned.size() - 2, 2, "\r\n") == 0;
    Require(cleaned.empty() || isWhole, "a cleaned text ends in CR LF", cleaned, text);
    for (std::size_t at = cleaned.find('\n'); at != std::string::npos; at = cleaned.find('\n', at + 1)) {
        Require(at > 0 && cleaned[at - 1] == '\r', "no line of a cleaned text ends in LF alone",
                cleaned.substr(0, at), text);
    }
    const auto feeds = static_cast<std::size_t>(std::count(cleaned.begin(), cleaned.end(), '\n'));
    Require(draft.numbers.size() == feeds, "each line of a cleaned text has a number", cleaned, text);
    if (notes.empty()) {
        RequireSame("a text that gets no note is not changed", "input", text, "cleaned", cleaned);
    }
}

void CheckOutcome(const cmsdp::Outcome& outcome, const cmsdp::CommandLine& line, const cmsdp::Screen& screen,
                  const Watch& watch) {
    Reached(outcome.status == cmsdp::kDone ? "a verb has done its work" : "nothing was negotiated");
    Require(outcome.status == cmsdp::kDone || outcome.status == cmsdp::kNothingNegotiated,
            "a verb that ends has done its work", std::to_string(outcome.status), outcome.text);
    const bool readsText = line.run == cmsdp::RunInspect || line.run == cmsdp::RunCall;
    if (readsText && !screen.colour) {
        Require(IsPrintable(outcome.text), "a report is printable", outcome.text, outcome.text);
    }
    if (line.json && line.run != cmsdp::RunOffer) {
        Require(nlohmann::json::accept(outcome.text), "a JSON report is JSON", outcome.text, outcome.text);
    }
    if (!line.showSecrets) {
        watch.Check("the output", outcome.text);
        for (const std::string& note : outcome.notes) {
            watch.Check("a note", cmsdp::Redact(note));
        }
    }
}

void Run(Input input, std::uint64_t secret) {
    static constexpr cmsdp::Run verbs[] = {cmsdp::RunInspect, cmsdp::RunAnswer, cmsdp::RunOffer,
                                           cmsdp::RunCall};
    const Key ours(secret ^ 0x0045U);
    const Key theirs(secret ^ 0xfa4e0dU);
    Watch watch;
    watch.Add(ours);
    watch.Add(theirs);

    cmsdp::CommandLine line;
    line.run = input.Pick(verbs);
    const std::uint8_t options = input.Byte();
    line.json = (options & 1U) != 0;
    line.remote.exact = (options & 2U) != 0;
    line.showSecrets = (options & 4U) != 0;
    const cmsdp::Screen screen{(options & 8U) != 0, (options & 16U) != 0};
    const std::size_t low = input.Byte();
    const std::string json = PlantInJson(input.Take(low + input.Byte() * std::size_t{256}), ours);
    const std::string remote = PlantInWords(input.Rest(), theirs);

    CheckJson(json, watch);
    CheckCleaning(remote);
    const MemoryFile local(json);
    const MemoryFile far(remote);
    if (!json.empty()) {
        line.local = local.Name();
        line.offerer = local.Name();
    }
    line.remote.name = far.Name();
    const Meter meter;
    try {
        const cmsdp::Outcome outcome = line.run(line, screen);
        CheckCost(kVerb, meter.Read(), json.size() + remote.size());
        CheckOutcome(outcome, line, screen, watch);
    } catch (const cmsdp::ToolError& error) {
        Reached(error.status() == cmsdp::kLocalFile ? "a bad local file" : "a bad remote text");
        Require(error.status() == cmsdp::kLocalFile || error.status() == cmsdp::kRemoteText,
                "bad input is called that", error.what(), json);
        watch.Check("a message", cmsdp::Redact(error.what()));
    }
}

} // namespace

} // namespace fuzz

void FuzzTool(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
