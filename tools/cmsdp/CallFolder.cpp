// Stage: a folder of descriptions as a call.
// Input: the files *.sdp in order of name. Output: one call without times and addresses.
// Touches the file system, to read.
// The names say what they can: "01-sent-offer.sdp", "02-received-answer.sdp". What they do not say follows
// from the order: offer and answer take turns, and an o= line stays with its side (RFC 3264, 8).
// Test: tests/tool/calls.cases
#include "Agreements.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "SipHeaders.h"
#include "Words.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace cmsdp {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (entry->path().extension() == ".sdp") {
            names.push_back(entry->path().filename().string());
        }
    }
    if (error) {
        throw ToolError(kRemoteText, folder + ": cannot be read: " + error.message());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool Holds(const std::string& text, std::string_view word) {
    return text.find(word) != std::string::npos;
}

// User name, session id and address of the o= line (RFC 4566, 5.2).
std::string OriginOf(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view line = TakeLine(text, at);
        if (line.compare(0, 2, "o=") == 0) {
            const std::vector<std::string_view> words = WordsOf(line);
            return words.size() < 6
                       ? std::string(line)
                       : std::string(words[0]) + " " + std::string(words[1]) + " " + std::string(words[5]);
        }
    }
    return {};
}

class FolderReader {
public:
    explicit FolderReader(Call& call) : m_call(call), m_agreements(call) {}

    void Read(const std::string& name, std::string text) {
        Step step;
        step.message = name;
        step.text = std::move(text);
        const bool isAnswer = Holds(name, "answer") || (!Holds(name, "offer") && m_open);
        step.from = SideOf(step, isAnswer);
        m_origins[static_cast<std::size_t>(step.from)] = OriginOf(step.text);
        if (!isAnswer) {
            m_open = m_agreements.AddOffer(std::move(step));
            return;
        }
        if (!m_open) {
            step.notes.emplace_back("the offer that this answers is not in the folder; "
                                    "the one that the local file makes is taken for it");
        }
        m_agreements.AddAnswer(std::move(step),
                               m_open ? std::vector<std::size_t>{*m_open} : std::vector<std::size_t>{});
        m_open.reset();
    }

private:
    Side SideOf(const Step& step, bool isAnswer) {
        if (Holds(step.message, "caller") != Holds(step.message, "callee")) {
            return Holds(step.message, "caller") ? Side::Caller : Side::Callee;
        }
        if (Holds(step.message, "sent") != Holds(step.message, "received")) {
            const bool isSent = Holds(step.message, "sent");
            m_firstIsSent = m_firstIsSent.value_or(isSent);
            return isSent == *m_firstIsSent ? Side::Caller : Side::Callee;
        }
        if (isAnswer && m_open) {
            return OtherSide(m_call.steps[*m_open].from);
        }
        const std::string origin = OriginOf(step.text);
        return isAnswer || (!origin.empty() && origin == m_origins[1] && origin != m_origins[0])
                   ? Side::Callee
                   : Side::Caller;
    }

    Call& m_call;
    Agreements m_agreements;
    std::optional<std::size_t> m_open;
    std::optional<bool> m_firstIsSent;
    std::array<std::string, 2> m_origins; // by Side
};

} // namespace

Call CallOfFolder(const std::string& folder) {
    Call call;
    call.id = folder;
    FolderReader reader(call);
    for (const std::string& name : NamesIn(folder)) {
        const std::string path = (fs::path(folder) / name).string();
        try {
            reader.Read(name, ReadFile(path));
        } catch (const ReadError& error) {
            throw ToolError(kRemoteText, path + ": cannot be read: " + error.what());
        }
    }
    if (call.steps.empty()) {
        throw ToolError(kRemoteText, folder + ": holds no file *.sdp");
    }
    return call;
}

} // namespace cmsdp
