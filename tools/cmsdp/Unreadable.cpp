// The table of inputs that no reading of lines can make sense of.
//
// Tests: tests/tool/CleanTest.cpp
#include "Unreadable.h"

#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr const char* kCapture = "a packet capture";
constexpr const char* kFromCapture = "tshark -r # -Y sdp -T fields -e udp.payload -e tcp.payload | xxd -r -p";

struct Kind {
    std::string_view begin;
    const char* name;
    const char* command; // "#" stands for the file
};

using namespace std::string_view_literals;

constexpr Kind kKinds[] = {
    {"\x0a\x0d\x0d\x0a"sv, kCapture, kFromCapture}, // pcapng
    {"\xd4\xc3\xb2\xa1"sv, kCapture, kFromCapture}, // pcap, by byte order and by unit of time
    {"\xa1\xb2\xc3\xd4"sv, kCapture, kFromCapture},
    {"\x4d\x3c\xb2\xa1"sv, kCapture, kFromCapture},
    {"\xa1\xb2\x3c\x4d"sv, kCapture, kFromCapture},
    {"\x1f\x8b"sv, "compressed with gzip", "zcat #"},
    {"\xfd\x37zXZ\0"sv, "compressed with xz", "xzcat #"},
    {"\x28\xb5\x2f\xfd"sv, "compressed with zstd", "zstdcat #"},
    {"BZh91AY&SY"sv, "compressed with bzip2", "bzcat #"},
};

// Base64 of a text that begins with "v=0".
bool IsBase64Description(std::string_view input) {
    return input.compare(0, 4, "dj0w") == 0 && std::all_of(input.begin(), input.end(), [](char c) {
               return IsBase64(c) || c == '=' || IsBlank(c);
           });
}

// The detailed printout of a packet says "(v): 0" where the description says "v=0".
bool IsDissection(std::string_view input) {
    return input.find("Session Description Protocol Version (v): ") != std::string_view::npos;
}

std::string Filled(std::string command, const std::string& file) {
    return command.replace(command.find('#'), 1, file == "-" ? "FILE" : file) + " | cmsdp inspect";
}

} // namespace

std::string WhyUnreadable(std::string_view input, const std::string& name) {
    for (const Kind& kind : kKinds) {
        if (input.compare(0, kind.begin.size(), kind.begin) == 0) {
            return "is " + std::string(kind.name) + "; read it with: " + Filled(kind.command, name);
        }
    }
    if (IsBase64Description(Trimmed(input))) {
        return "is base64; read it with: " + Filled("base64 -d #", name);
    }
    if (IsDissection(input)) {
        return "is a dissection of packets and not their text; read the capture with: " +
               Filled(kFromCapture, "-");
    }
    return {};
}

} // namespace cmsdp
