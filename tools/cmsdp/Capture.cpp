// Stage: a packet capture, read by tshark.
// Input: a capture file. Output: its calls.
// Touches the file through tshark, which runs without a shell and with a bound on its output.
// tshark puts fragments, segments and retransmissions together; what comes of it are the bytes of each SIP
// message, which are read like any other.
// Test: tests/tool/captures.py
#include "CapturePacket.h"
#include "Outcome.h"
#include "Program.h"
#include "SipCalls.h"
#include "Words.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <set>
#include <unistd.h>

namespace cmsdp {

namespace {

using nlohmann::json;

constexpr std::size_t kMostOutput = std::size_t{512} * 1024 * 1024;

// SIP, and what tshark does not take for it: a message after empty lines, which its reader skips (RFC
// 3261, 7.5). What an ICMP message quotes was not received.
constexpr const char* kSipFilter = "(sip or ((tcp.payload[0:2] == 0d:0a or udp.payload[0:2] == 0d:0a) and "
                                   "frame contains \"SIP/2.0\")) and not icmp "
                                   "and not icmpv6";

// Each packet is one line of JSON that has, beside the time, the bytes of each protocol's header: "ip_raw",
// "udp_raw", "sip_raw". The layers themselves are not needed, so all but the number of the frame is filtered
// out.
std::vector<std::string> CommandFor(const std::string& file) {
    return {"tshark",
            "-n",
            "-r",
            file,
            "-Y",
            kSipFilter,
            "-T",
            "ek",
            "-x",
            "-j",
            "frame frame.number",
            "-o",
            "tcp.desegment_tcp_streams:TRUE",
            "-o",
            "tcp.reassemble_out_of_order:TRUE"};
}

// Gaps of one sender, without those that were filled later.
struct Gaps {
    std::string first; // number of the frame after it
    int count = 0;
};

// What a capture without a call holds that may be one; empty when there is nothing of the kind.
std::string WhyNoCall(const std::string& file) {
    constexpr std::size_t most = 65536;
    std::string tls;
    std::string other;
    const auto take = [&](std::string_view line) { // "4\teth:ethertype:ip:tcp:tls"
        const std::vector<std::string_view> words = WordsOf(line);
        if (words.size() == 2) {
            std::string& first = words[1].find(":tls") == std::string_view::npos ? other : tls;
            first = first.empty() ? std::string(words[0]) : first;
        }
    };
    RunProgram({"tshark", "-n", "-r", file, "-Y", "tls or (frame contains \"SIP/2.0\" and not sip)", "-T",
                "fields", "-e", "frame.number", "-e", "frame.protocols"},
               most, take);
    return (tls.empty() ? ""
                        : "; frame " + tls +
                              " is TLS, which tshark reads when its keys are in the capture: "
                              "editcap --inject-secrets tls,KEYS IN OUT") +
           (other.empty() ? ""
                          : "; frame " + other + " holds \"SIP/2.0\", but tshark does not take it for SIP");
}

// Segments of a SIP connection that are not in the capture: tshark waits for them, so what follows them may
// be missing.
void NoteGaps(const std::string& file, const std::vector<SipMessage>& messages,
              std::vector<std::string>& notes) {
    std::set<std::string> senders;
    for (const SipMessage& message : messages) {
        if (message.isOfStream) {
            senders.insert({message.sender, message.receiver});
        }
    }
    std::map<std::string, Gaps> gaps;
    const auto take =
        [&](std::string_view line) { // "13\t192.0.2.2\t5060\t1", without the last for what came late
            const std::vector<std::string_view> words = WordsOf(line);
            if (words.size() < 3) {
                return;
            }
            const bool is6 = words[1].find(':') != std::string_view::npos;
            const std::string host(words[1]);
            const std::string sender = (is6 ? "[" + host + "]" : host) + ":" + std::string(words[2]);
            if (senders.count(sender) != 0) {
                Gaps& found = gaps[sender];
                found.first = found.first.empty() ? std::string(words[0]) : found.first;
                found.count += words.size() > 3 ? 1 : -1;
            }
        };
    if (!senders.empty()) {
        RunProgram({"tshark", "-n", "-r", file, "-Y",
                    "tcp.analysis.lost_segment or tcp.analysis.out_of_order or tcp.analysis.retransmission",
                    "-T", "fields", "-e", "frame.number", "-e", "ip.src", "-e", "ipv6.src", "-e",
                    "tcp.srcport", "-e", "tcp.analysis.lost_segment"},
                   kMostOutput, take);
    }
    for (const auto& [sender, found] : gaps) {
        if (found.count > 0) {
            std::string note = file;
            note.append(": TCP segments of ").append(sender).append(" before frame ").append(found.first);
            notes.push_back(note + " are missing; messages after them may be missing, too");
        }
    }
}

void CheckReadable(const std::string& file) {
    const int opened = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0) {
        throw ToolError(kRemoteText, file + ": cannot be read: " + std::strerror(errno));
    }
    close(opened);
}

} // namespace

std::vector<Call> CallsOfCapture(const std::string& file, std::vector<std::string>& notes) {
    CheckReadable(file);
    std::vector<SipMessage> messages;
    const ProgramEnd end = RunProgram(CommandFor(file), kMostOutput, [&](std::string_view line) {
        const json packet = json::parse(line, nullptr, false);
        if (packet.is_object() && packet.contains("layers")) {
            AddMessages(packet, messages);
        }
    });
    if (!end.isFound) {
        throw ToolError(kFailed,
                        "a capture is read by tshark, which is not installed; install the Debian package "
                        "tshark");
    }
    std::vector<Call> calls = CallsOf(messages);
    NoteGaps(file, messages, notes);
    if (calls.empty() && end.status != 0 && end.isWhole) {
        throw ToolError(kRemoteText, file + ": is no capture that tshark can read");
    }
    if (calls.empty()) {
        throw ToolError(kRemoteText,
                        file + ": holds no call over SIP that can be read" +
                            (messages.empty() ? WhyNoCall(file) : "; no SIP message in it is of an INVITE"));
    }
    if (!end.isWhole) {
        notes.push_back(file + ": holds more than is read; the calls of its beginning are shown");
    } else if (end.status != 0) {
        notes.push_back(file + ": cannot be read to its end; what comes before that is shown");
    }
    return calls;
}

} // namespace cmsdp
