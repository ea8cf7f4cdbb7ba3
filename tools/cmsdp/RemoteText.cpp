// Repairs what logs, mails and editors do to a description. A line end is the only thing that is ever added:
// the component drops a last line without one, and joins lines that end in LF alone.
//
// Tests: tests/tool/RemoteTextTest.cpp
#include "RemoteText.h"

#include "Outcome.h"
#include "ReadFile.h"
#include "Words.h"

#include <cstddef>
#include <utility>

namespace cmsdp {

namespace {

constexpr std::string_view kMark = "\xef\xbb\xbf";

std::string Shown(const std::string& name) {
    return name == "-" ? "standard input" : name;
}

} // namespace

bool HoldsSdpLine(const std::string& text) {
    std::size_t begin = 0;
    std::size_t end = 0;
    while ((end = text.find("\r\n", begin)) != std::string::npos) {
        if (LooksLikeSdp(std::string_view(text).substr(begin, end - begin))) {
            return true;
        }
        begin = end + 2;
    }
    return false;
}

std::string RepairRemoteText(std::string text, std::vector<std::string>& notes) {
    if (text.compare(0, kMark.size(), kMark) == 0) {
        text.erase(0, kMark.size());
        notes.emplace_back("the byte-order mark in front was dropped; --exact keeps it");
    }
    std::string repaired;
    repaired.reserve(text.size() + text.size() / 16 + 2);
    std::size_t bare = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) {
            repaired += '\r';
            ++bare;
        }
        repaired += text[i];
    }
    if (bare != 0) {
        notes.push_back(std::to_string(bare) + (bare == 1 ? " line" : " lines") +
                        " ended in LF alone and were read as if in CR LF; --exact keeps them");
    }
    if (!repaired.empty() && repaired.back() != '\n') {
        // A text that was cut between the two bytes of its last line end lacks the second alone.
        repaired += repaired.back() == '\r' ? "\n" : "\r\n";
        notes.emplace_back("the last line had no line end and was read as if it had one; --exact keeps it");
    }
    return repaired;
}

std::string ReadRemoteText(const std::string& name, bool exact, std::vector<std::string>& notes) {
    std::string text;
    try {
        text = ReadFile(name);
    } catch (const ReadError& error) {
        throw ToolError(kRemoteText, Shown(name) + ": cannot be read: " + error.what() +
                                         "; name a file that holds a session description, or - for "
                                         "standard input");
    }
    if (!exact) {
        text = RepairRemoteText(std::move(text), notes);
    }
    if (!HoldsSdpLine(text)) {
        throw ToolError(kRemoteText, Shown(name) +
                                         ": holds no SDP line such as \"v=0\" or \"m=audio 5004 RTP/AVP 0\"" +
                                         (exact ? "; --exact counts only lines that end in CR LF" : ""));
    }
    return text;
}

} // namespace cmsdp
