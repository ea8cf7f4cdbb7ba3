// Stage: a packet capture, read by tshark.
// Input: a capture file. Output: its calls.
// Touches the file through tshark, which runs without a shell and with a bound on its output.
// tshark puts fragments, segments and retransmissions together; what comes of it are the bytes of each SIP
// message, which are read like any other.
// Test: tests/tool/captures.py
#include "Outcome.h"
#include "Program.h"
#include "SipCalls.h"

#include <nlohmann/json.hpp>

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace cmsdp {

namespace {

using nlohmann::json;

constexpr std::size_t kMostOutput = std::size_t{512} * 1024 * 1024;

// Each packet is one line of JSON that has, beside the time, the bytes of each protocol's header: "ip_raw",
// "udp_raw", "sip_raw". The layers themselves are not needed, so all but the number of the frame is filtered
// out. What an ICMP message quotes was not received.
std::vector<std::string> CommandFor(const std::string& file) {
    return {"tshark",
            "-n",
            "-r",
            file,
            "-Y",
            "sip and not icmp and not icmpv6",
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

int HalfByte(char c) {
    return c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : 0;
}

std::string FromHex(const json& value) {
    std::string bytes;
    if (value.is_string()) {
        const auto& hex = value.get_ref<const std::string&>();
        bytes.reserve(hex.size() / 2);
        for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
            bytes += static_cast<char>(HalfByte(hex[i]) * 16 + HalfByte(hex[i + 1]));
        }
    }
    return bytes;
}

// A protocol that occurs once in a packet is a string, one that occurs several times a list.
std::vector<std::string> AllOf(const json& layers, const char* name) {
    std::vector<std::string> all;
    const auto found = layers.find(name);
    if (found != layers.end() && found->is_array()) {
        for (const json& entry : *found) {
            all.push_back(FromHex(entry));
        }
    } else if (found != layers.end()) {
        all.push_back(FromHex(*found));
    }
    return all;
}

// In a tunnel the innermost header is the one that counts.
std::string LastOf(const json& layers, const char* name) {
    const std::vector<std::string> all = AllOf(layers, name);
    return all.empty() ? std::string() : all.back();
}

// The 16 bits at an offset; 0 beyond the end.
std::size_t NumberAt(const std::string& header, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return i < header.size() ? std::size_t{static_cast<unsigned char>(header[i])} : 0;
    };
    return byte(at) * 256 + byte(at + 1);
}

std::string PortAt(const std::string& header, std::size_t at) {
    return header.empty() ? std::string() : ":" + std::to_string(NumberAt(header, at));
}

std::string AddressAt(int family, const std::string& header, std::size_t at, std::size_t length) {
    std::array<char, INET6_ADDRSTRLEN> words{};
    if (header.size() < at + length ||
        inet_ntop(family, &header[at], words.data(), words.size()) == nullptr) {
        return {};
    }
    return family == AF_INET6 ? "[" + std::string(words.data()) + "]" : words.data();
}

// tshark cuts a message at its Content-Length; what a datagram holds after it shows that the length is
// wrong.
std::string Datagram(const json& layers, const std::string& message) {
    constexpr std::size_t headerLength = 8;
    const std::string header = LastOf(layers, "udp_raw");
    const std::string frame = LastOf(layers, "frame_raw");
    const std::size_t at = frame.rfind(message);
    const std::size_t length = NumberAt(header, 4);
    if (at == std::string::npos || length < headerLength + message.size()) {
        return message;
    }
    return frame.substr(at, length - headerLength);
}

// Whether the snap length of the capture cut the frame (IPv4 and IPv6 headers say how long a packet is) and
// the message with it.
bool IsCut(const json& layers, const std::string& message) {
    const std::string ip = LastOf(layers, "ip_raw");
    const std::string header = ip.empty() ? LastOf(layers, "ipv6_raw") : ip;
    const std::string frame = LastOf(layers, "frame_raw");
    const std::size_t at = header.empty() ? std::string::npos : frame.rfind(header);
    const std::size_t length = ip.empty() ? 40 + NumberAt(header, 4) : NumberAt(ip, 2);
    return at != std::string::npos && at + length > frame.size() && frame.size() >= message.size() &&
           frame.compare(frame.size() - message.size(), message.size(), message) == 0;
}

// "frame 12"
std::string PlaceOf(const json& layers) {
    const json::json_pointer at("/frame/frame_frame_number");
    return layers.contains(at) && layers[at].is_string() ? "frame " + layers[at].get<std::string>() : "";
}

void AddMessages(const json& packet, std::vector<SipMessage>& messages) {
    const json& layers = packet.at("layers");
    const std::string ip = LastOf(layers, "ip_raw");
    const std::string ipv6 = LastOf(layers, "ipv6_raw");
    std::string ports = LastOf(layers, "udp_raw");
    ports = ports.empty() ? LastOf(layers, "tcp_raw") : ports;
    const double time = std::strtod(packet.value("timestamp", "0").c_str(), nullptr) / 1000;
    const std::string place = PlaceOf(layers);
    for (const std::string& bytes : AllOf(layers, "sip_raw")) {
        const std::string datagram = Datagram(layers, bytes);
        std::optional<SipMessage> message =
            ParseSipMessage(datagram, IsCut(layers, datagram) ? BodyEnd::Cut : BodyEnd::Datagram);
        if (!message) {
            continue;
        }
        message->time = time;
        message->place = place;
        message->sender = (ip.empty() ? AddressAt(AF_INET6, ipv6, 8, 16) : AddressAt(AF_INET, ip, 12, 4)) +
                          PortAt(ports, 0);
        message->receiver = (ip.empty() ? AddressAt(AF_INET6, ipv6, 24, 16) : AddressAt(AF_INET, ip, 16, 4)) +
                            PortAt(ports, 2);
        messages.push_back(std::move(*message));
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
    if (calls.empty()) {
        throw ToolError(kRemoteText,
                        file + (end.status == 0 || !end.isWhole ? ": holds no call over SIP that can be read"
                                                                : ": is no capture that tshark can read"));
    }
    if (!end.isWhole) {
        notes.push_back(file + ": holds more than is read; the calls of its beginning are shown");
    } else if (end.status != 0) {
        notes.push_back(file + ": cannot be read to its end; what comes before that is shown");
    }
    return calls;
}

} // namespace cmsdp
