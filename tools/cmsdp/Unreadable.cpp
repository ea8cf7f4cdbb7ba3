// The table of inputs that no reading of lines can make sense of.
//
// Tests: tests/tool/other-files.cases
#include "Unreadable.h"

#include "Words.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr const char* kCapture = "a packet capture";
constexpr const char* kGzip = "compressed with gzip";
constexpr const char* kZstd = "compressed with zstd";
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
    {"\xa1\xb2\xc3\xd4"sv, kCapture, kFromCapture},       {"\x4d\x3c\xb2\xa1"sv, kCapture, kFromCapture},
    {"\xa1\xb2\x3c\x4d"sv, kCapture, kFromCapture},       {"\x1f\x8b"sv, kGzip, "zcat #"},
    {"\xfd\x37zXZ\0"sv, "compressed with xz", "xzcat #"}, {"\x28\xb5\x2f\xfd"sv, kZstd, "zstdcat #"},
    {"BZh91AY&SY"sv, "compressed with bzip2", "bzcat #"}, {"PK\3\4"sv, "a zip archive", "unzip -p #"},
};

// Every second byte of UTF-16 is zero where the text is ASCII: the one at `zero` of each pair.
bool IsUtf16(std::string_view input, std::size_t zero) {
    constexpr std::size_t enough = 16;
    bool is = input.size() >= enough;
    for (std::size_t i = 0; is && i < enough; ++i) {
        is = (input[i] == '\0') == (i % 2 == zero);
    }
    return is;
}

// Base64 of a description, or of a message that holds one.
bool IsBase64Description(std::string_view input) {
    const bool isBase64 =
        std::all_of(input.begin(), input.end(), [](char c) { return IsBase64(c) || c == '=' || IsBlank(c); });
    const std::string text = isBase64 ? FromBase64(input) : "";
    return text.compare(0, 3, "v=0") == 0 || text.find("\nv=0") != std::string::npos;
}

// The detailed printout of a packet says "(v): 0" where the description says "v=0".
bool IsDissection(std::string_view input) {
    return input.find("Session Description Protocol Version (v): ") != std::string_view::npos;
}

// The name as a word of a shell; "FILE" for one that no pair of quotes keeps.
std::string ShellWord(const std::string& name) {
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) {
        return IsBase64(c) || std::string_view("._-:@%,").find(c) != std::string_view::npos;
    });
    if (isPlain) {
        return name;
    }
    if (name.find('\'') == std::string::npos) {
        return '\'' + name + '\'';
    }
    return name.find_first_of("\"$`\\!") == std::string::npos ? '"' + name + '"' : "FILE";
}

// "is NAME; read it with: COMMAND | cmsdp VERB". A survey reads files.
std::string Named(const char* name, std::string command, const std::string& file, const std::string& verb) {
    command.replace(command.find('#'), 1, file == "-" ? "FILE" : ShellWord(file));
    const std::string text = (file == "-" ? "FILE" : ShellWord(file)) + ".txt";
    return "is " + std::string(name) +
           (verb == "survey" ? "; make a text of it first: " + command + " > " + text
                             : "; read it with: " + command + " | cmsdp " + verb);
}

} // namespace

std::string WhyUnreadable(std::string_view input, const std::string& name, const std::string& verb) {
    for (const Kind& kind : kKinds) {
        if (input.compare(0, kind.begin.size(), kind.begin) == 0) {
            return Named(kind.name, kind.command, name, verb);
        }
    }
    for (const std::size_t zero : {0U, 1U}) {
        if (IsUtf16(input, zero)) {
            return Named("UTF-16 without a byte-order mark",
                         zero == 0 ? "iconv -f UTF-16BE -t UTF-8 #" : "iconv -f UTF-16LE -t UTF-8 #", name,
                         verb);
        }
    }
    if (IsBase64Description(Trimmed(input))) {
        return Named("base64", "base64 -d #", name, verb);
    }
    return IsDissection(input) ? Named("a dissection of packets and not their text, which the capture has",
                                       kFromCapture, "-", verb)
                               : "";
}

bool IsCapture(std::string_view begin, const std::string& name) {
    const bool isNamed = name.find(".pcap") != std::string::npos || name.find(".cap.") != std::string::npos;
    return std::any_of(std::begin(kKinds), std::end(kKinds), [&](const Kind& kind) {
        const bool is = kind.name == kCapture || (isNamed && (kind.name == kGzip || kind.name == kZstd));
        return is && begin.compare(0, kind.begin.size(), kind.begin) == 0;
    });
}

} // namespace cmsdp
