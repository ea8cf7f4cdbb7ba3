// Stage: a folder of descriptions as a call.
// Input: the files *.sdp in order of name. Output: one call without times and addresses.
// Touches the file system, to read.
// The names say what they can: "01-sent-offer.sdp", "02-received-answer.sdp". What they do not say follows
// from the order: offer and answer take turns, and an o= line stays with its side (RFC 3264, 8).
// Test: tests/tool/calls.cases
#include "Agreements.h"
#include "Outcome.h"
#include "RemoteText.h"
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
        if (LowerCase(entry->path().extension().string()) == ".sdp") {
            names.push_back(entry->path().filename().string());
        }
    }
    if (error) {
        throw ToolError(kRemoteText, folder + ": cannot be read: " + error.message());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// "offer" is a word of "2-Offer.sdp" and none of "2-unoffered.sdp".
bool HasWord(const std::string& name, std::string_view word) {
    const std::string lower = LowerCase(name);
    const auto isLetter = [&](std::size_t at) {
        return at < lower.size() && lower[at] >= 'a' && lower[at] <= 'z';
    };
    for (std::size_t at = lower.find(word); at != std::string::npos; at = lower.find(word, at + 1)) {
        if ((at == 0 || !isLetter(at - 1)) && !isLetter(at + word.size())) {
            return true;
        }
    }
    return false;
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

    void Read(const std::string& name, std::string text, std::vector<std::string> notes) {
        Step step;
        step.message = name;
        step.text = std::move(text);
        step.notes = std::move(notes);
        const bool saysAnswer = HasWord(name, "answer");
        const bool saysOffer = HasWord(name, "offer") || HasWord(name, "reoffer");
        bool isAnswer = saysAnswer || (!saysOffer && m_open);
        step.from = SideOf(step, isAnswer);
        if (isAnswer && m_open && m_call.steps[*m_open].from == step.from) {
            // No side answers its own offer.
            isAnswer = saysAnswer;
            m_open.reset();
        }
        m_origins[static_cast<std::size_t>(step.from)] = OriginOf(step.text);
        if (!isAnswer) {
            m_open = m_agreements.AddOffer(std::move(step), Leg());
            return;
        }
        if (!m_open) {
            step.notes.emplace_back("the offer that this answers is not in the folder; "
                                    "the one that the local file makes is taken for it");
        }
        OfferAnswer exchange;
        if (m_open) {
            exchange.offers.push_back(*m_open);
        }
        m_agreements.AddAnswer(std::move(step), exchange, Leg());
        m_open.reset();
    }

private:
    Side SideOf(const Step& step, bool isAnswer) {
        if (HasWord(step.message, "caller") != HasWord(step.message, "callee")) {
            return HasWord(step.message, "caller") ? Side::Caller : Side::Callee;
        }
        if (HasWord(step.message, "sent") != HasWord(step.message, "received")) {
            const bool isSent = HasWord(step.message, "sent");
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

Call CallOfFolder(const std::string& folder, bool exact) {
    Call call;
    call.id = folder;
    FolderReader reader(call);
    for (const std::string& name : NamesIn(folder)) {
        const std::string path = (fs::path(folder) / name).string();
        const std::string text = ReadDescription(path);
        try {
            std::vector<std::string> notes;
            std::string cleaned = CleanedPaste({path, exact, std::nullopt, false, "explain"}, text, notes);
            reader.Read(name, std::move(cleaned), std::move(notes));
        } catch (const ToolError& error) {
            call.notes.push_back(std::string("not read: ") + error.what());
        }
    }
    if (call.steps.empty()) {
        throw ToolError(kRemoteText,
                        folder + ": holds no " +
                            (call.notes.empty() ? "file *.sdp" : "description; " + call.notes.front()));
    }
    return call;
}

} // namespace cmsdp
