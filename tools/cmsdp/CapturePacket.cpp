// Stage: a packet capture, one packet of it.
// Input: what tshark writes of a packet. Output: its SIP messages with their addresses.
// Touches nothing.
// Headers are found by their bytes in the frame: of a tunnel the innermost ones count.
// Test: tests/tool/captures.py
#include "CapturePacket.h"

#include "SipHeaders.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdlib>

namespace cmsdp {

namespace {

using nlohmann::json;

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

// Of two protocols the header that is further inside of the packet.
std::string InnerOf(const json& layers, const char* one, const char* other) {
    const std::string first = LastOf(layers, one);
    const std::string second = LastOf(layers, other);
    const std::string frame = LastOf(layers, "frame_raw");
    const bool isSecond = first.empty() || (!second.empty() && frame.rfind(second) != std::string::npos &&
                                            frame.rfind(second) > frame.rfind(first));
    return isSecond ? second : first;
}

// "ip" or "ipv6"
bool IsVersion6(const std::string& header) {
    constexpr unsigned char version = 0x60;
    return !header.empty() && (static_cast<unsigned char>(header[0]) & 0xF0U) == version;
}

// The messages after empty lines in the payload of a packet, each as long as its Content-Length.
std::vector<std::string> MessagesAfterEmptyLines(const json& layers) {
    const std::string header = InnerOf(layers, "udp_raw", "tcp_raw");
    const std::string frame = LastOf(layers, "frame_raw");
    const std::size_t at = header.empty() ? std::string::npos : frame.rfind(header);
    std::vector<std::string> messages;
    std::string_view rest = at == std::string::npos ? "" : std::string_view(frame).substr(at + header.size());
    while (true) {
        rest.remove_prefix(std::min(rest.find_first_not_of("\r\n"), rest.size()));
        std::size_t end = 0;
        if (!IsSipStartLine(TakeLine(rest, end))) {
            return messages;
        }
        const SipHeaders headers = ReadSipHeaders(rest.substr(end));
        end += headers.end;
        end = std::min(rest.size(), end + std::strtoul(headers["content-length"].c_str(), nullptr, 10));
        messages.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end);
    }
}

// tshark cuts a message at its Content-Length; what a datagram holds after it shows that the length is
// wrong.
std::string Datagram(const json& layers, const std::string& message) {
    constexpr std::size_t headerLength = 8;
    const std::string header =
        InnerOf(layers, "udp_raw", "tcp_raw") == LastOf(layers, "udp_raw") ? LastOf(layers, "udp_raw") : "";
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
    const std::string header = InnerOf(layers, "ip_raw", "ipv6_raw");
    const std::string frame = LastOf(layers, "frame_raw");
    const std::size_t at = header.empty() ? std::string::npos : frame.rfind(header);
    const std::size_t length = IsVersion6(header) ? 40 + NumberAt(header, 4) : NumberAt(header, 2);
    return at != std::string::npos && at + length > frame.size() && frame.size() >= message.size() &&
           frame.compare(frame.size() - message.size(), message.size(), message) == 0;
}

// "frame 12"
std::string PlaceOf(const json& layers) {
    const json::json_pointer at("/frame/frame_frame_number");
    return layers.contains(at) && layers[at].is_string() ? "frame " + layers[at].get<std::string>() : "";
}

} // namespace

void AddMessages(const json& packet, std::vector<SipMessage>& messages) {
    const json& layers = packet.at("layers");
    const std::string ip = InnerOf(layers, "ip_raw", "ipv6_raw");
    const std::string tcp = LastOf(layers, "tcp_raw");
    const std::string inner = InnerOf(layers, "udp_raw", "tcp_raw");
    const std::string ports = inner.empty() ? LastOf(layers, "sctp_raw") : inner;
    const double time = std::strtod(packet.value("timestamp", "0").c_str(), nullptr) / 1000;
    const std::string place = PlaceOf(layers);
    for (const std::string& bytes :
         layers.contains("sip_raw") ? AllOf(layers, "sip_raw") : MessagesAfterEmptyLines(layers)) {
        const std::string datagram = Datagram(layers, bytes);
        std::optional<SipMessage> message =
            ParseSipMessage(datagram, IsCut(layers, datagram) ? BodyEnd::Cut : BodyEnd::Datagram);
        if (!message) {
            continue;
        }
        message->time = time;
        message->place = place;
        message->isOfStream = !tcp.empty() && ports == tcp;
        const bool is6 = IsVersion6(ip);
        message->sender =
            (is6 ? AddressAt(AF_INET6, ip, 8, 16) : AddressAt(AF_INET, ip, 12, 4)) + PortAt(ports, 0);
        message->receiver =
            (is6 ? AddressAt(AF_INET6, ip, 24, 16) : AddressAt(AF_INET, ip, 16, 4)) + PortAt(ports, 2);
        messages.push_back(std::move(*message));
    }
}

} // namespace cmsdp
