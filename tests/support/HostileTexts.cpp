// The texts of any size: units that are repeated, sections of very many formats, sections of a few.
#include "HostileTexts.h"

#include <algorithm>
#include <random>
#include <string_view>

namespace support {

namespace {

/// A text that repeats one unit: head, start, the unit until the size is reached, end.
struct Repeated {
    const char* name;
    std::string_view head;
    std::string_view start;
    std::string_view unit;
    std::string_view end;
};

constexpr std::string_view kNone;
constexpr std::string_view kAudio = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/SAVP 9 0\r\n";
constexpr std::string_view kVideo = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=video 5004 RTP/SAVP 97\r\n"
                                    "a=rtpmap:97 H264/90000\r\n";
constexpr std::string_view kG7221 = "m=audio 5004 RTP/AVP 99\r\na=rtpmap:99 G7221/16000\r\n";
constexpr std::string_view kBfcp = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=application 5004 UDP/BFCP *\r\n";
constexpr std::string_view kDeclined = "m=a 1 R 0\r\nm=a 1 R 0\r\n"; // what follows is written back at port 0
constexpr std::string_view kNul("\0", 1);
constexpr std::string_view kEnd = "\r\n";

constexpr Repeated kRepeated[] = {
    // Framing
    {"no line end", kNone, "", "x", ""},
    {"LF alone", kNone, "", "a=x\n", ""},
    {"CR alone", kNone, "", "\r", ""},
    {"CR LF alone", kNone, "", "\r\n", ""},
    {"CR CR LF", kNone, "", "\r\r\n", ""},
    {"lines of one byte", kNone, "", "a\r\n", ""},
    {"lines of one blank", kNone, "", " \r\n", ""},
    {"zero bytes", kAudio, "", kNul, kEnd},
    {"bytes from 0x80", kAudio, "", "\xff\x80", kEnd},
    {"one long line", kAudio, "", "x", kEnd},
    {"another protocol", kNone, "", "Via: SIP/2.0/UDP 192.0.2.2;branch=z9hG4bK776\r\n", ""},

    // Keywords
    {"a= and blanks", kAudio, "a=", " ", kEnd},
    {"a= and a tab", kAudio, "", "a=\t\r\n", ""},
    {"a= and semicolons", kAudio, "a=", ";", kEnd},
    {"a= lines", kAudio, "", "a=\r\n", ""},
    {"unknown letters", kAudio, "", "q=\r\n", ""},
    {"equals signs", kAudio, "a", "=", kEnd},
    {"a=a=a=", kAudio, "", "a=", kEnd},
    {"b=b=b=", kAudio, "", "b=", kEnd},
    {"c=c=c=", kAudio, "", "c=", kEnd},
    {"z=z=z=", kAudio, "", "z=", kEnd},
    {"a=candidate, cut short", kAudio, "", "a=candidate", kEnd},
    {"a=floorctrl, cut short", kAudio, "", "a=floorctr", kEnd},
    {"a=ice-ufrag, cut short", kAudio, "a=ice-", "a=ice-ufra", kEnd},
    {"a keyword inside a line", kAudio, "", "x=0123456789c=\r\n", ""},
    {"directions", kAudio, "", "a=sendonly\r\na=recvonly\r\n", ""},
    {"connections", kAudio, "", "c=IN IP4 1.2.3.4/127/3\r\n", ""},
    {"short connections", kAudio, "", "c= 1 2\r\n", ""},
    {"contents", kVideo, "", "a=content:slides\r\na=content:main\r\n", ""},
    {"a=content:main, cut short", kVideo, "a=content:", "a=content:mai", kEnd},
    {"floor control lines", kBfcp, "", "a=floorctrl:\r\na=confid:1\r\na=userid:1\r\n", ""},
    {"percent signs", kAudio, "", "a=%s%n%x\r\nc=%s %n %x\r\n", ""},

    // Numbers
    {"a port of digits", kNone, "m=audio ", "9", " RTP/AVP 0\r\n"},
    {"a bandwidth of digits", kAudio, "b=TIAS:", "9", kEnd},
    {"a bandwidth of T", kAudio, "b=", "T", kEnd},
    {"a bandwidth of AS", kNone, "b=", "ASASTIA", kEnd},
    {"bandwidths", kAudio, "", "b=TIAS:0\r\n", ""},
    {"a conference of digits", kAudio, "a=confid:", "9", kEnd},

    // Sections
    {"smallest sections", kNone, "", "m= 1 2 3\r\n", ""},
    {"audio sections", kNone, "", "m=audio 1 R 0\r\n", ""},
    {"video sections", kNone, "", "m=video 1 R 0\r\n", ""},
    {"floor control sections", kNone, "", "m=application 1 BFCP *\r\n", ""},
    {"floor control, cut short", kNone, "m=application 1 ", "BFC", " *\r\n"},
    {"floor control, B alone", kNone, "m=application 1 ", "B", " *\r\n"},
    {"sections with addresses", kNone, "", "m= 1 2 3\r\nc= 1 2\r\n", ""},
    {"sections with keys", kNone, "",
     "m=video 1 2 3\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 "
     "inline:biTRu3i9/uYaIVY7ZPhWaqIgtoCMbHoFMiC31aYp\r\n",
     ""},
    {"sections without a format", kAudio, "", "m= 1 2\r\n", ""},
    {"a section of blanks", kNone, "m=audio 1 R 0", " ", kEnd},
    {"sections of blanks", kNone, "", "m= 1 2 3         \r\n", ""},
    {"words of control characters", kNone, "m=audio 1 R 0 ", "\x01", kEnd},

    // Formats and their names
    {"formats, all the same", kNone, "m=audio 1 R", " 0", kEnd},
    {"video formats, all the same", kNone, "m=video 1 R", " 0", kEnd},
    {"formats of a declined section", kDeclined, "m=a 1 R", " 0", kEnd},
    {"an encoding name of H", kNone, "m=video 1 R 97\r\na=rtpmap:97 ", "H", kEnd},
    {"an encoding name, nearly H264", kNone, "m=video 1 R 97\r\na=rtpmap:97 ", "H264/900", kEnd},
    {"encoding names", kAudio, "", "a=rtpmap:9 G7221/16000\r\n", ""},
    {"rtpmap lines, cut short", kAudio, "", "a=rtpmap:\r\na=rtpmap\r\n", ""},

    // Parameters
    {"semicolons", kVideo, "a=fmtp:97 ", ";", kEnd},
    {"parameters of one byte", kVideo, "a=fmtp:97 ", "x;", kEnd},
    {"parameters of =", kVideo, "a=fmtp:97 ", "=;", kEnd},
    {"parameters x=1", kVideo, "a=fmtp:97 ", "x=1;", kEnd},
    {"a parameter of =", kVideo, "a=fmtp:97 ", "=", kEnd},
    {"a parameter of blanks", kVideo, "a=fmtp:97 ", " ", kEnd},
    {"max-br, repeated", kVideo, "a=fmtp:97 ", "max-br=1;", kEnd},
    {"levels, repeated", kVideo, "a=fmtp:97 ", "profile-level-id=4280zz;", kEnd},
    {"a level of digits", kVideo, "a=fmtp:97 profile-level-id=4280", "f", kEnd},
    {"a name of m", kVideo, "a=fmtp:97 ", "m", " =1\r\n"},
    {"a name of p", kVideo, "a=fmtp:97 ", "p", "=1\r\n"},
    {"a name, cut short", kVideo, "a=fmtp:97 ", "profile-level-i", "=1\r\n"},
    {"names, cut short", kVideo, "a=fmtp:97 ", "max-b max-f max-mbp=1;", kEnd},
    {"one large parameter", kVideo, "a=fmtp:97 sprop-parameter-sets=", "Z0IACpZTBYmI,", kEnd},
    {"fmtp lines of one format", kVideo, "", "a=fmtp:97 ;\r\n", ""},
    {"bit rates", kG7221, "a=fmtp:99 ", "bitrate=3200;", kEnd},
    {"telephone events", kAudio, "", "a=rtpmap:0 telephone-event/8000\r\na=fmtp:0 0-15\r\n", ""},

    // Keys and candidates
    {"keys", kAudio, "",
     "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:biTRu3i9/uYaIVY7ZPhWaqIgtoCMbHoFMiC31aYp\r\n", ""},
    {"keys of an unknown suite", kAudio, "",
     "a=crypto:1 x inline:biTRu3i9/uYaIVY7ZPhWaqIgtoCMbHoFMiC31aYp\r\n", ""},
    {"keys, not base64", kAudio, "", "a=crypto:1 x 1234567=========================================\r\n", ""},
    {"keys of a skipped suite", kAudio, "", "a=crypto:1 AES_CM_128_HMAC_SHA1_80 x\r\n", ""},
    {"keys, cut short", kAudio, "", "a=crypto:1 x x\r\n", ""},
    {"a key of a whole text", kAudio, "a=crypto:1 x inline:", "YWRl", kEnd},
    {"a tag of digits", kAudio, "a=crypto:", "9", " x x\r\n"},
    {"candidates", kAudio, "", "a=candidate:1 1 UDP 2130706431 10.11.0.5 50000 typ host\r\n", ""},
    {"empty candidates", kAudio, "", "a=candidate:\r\n", ""},
    {"a user fragment", kAudio, "a=ice-ufrag:", "x", kEnd},
    {"user fragments", kAudio, "", "a=ice-ufrag:0123456789\r\na=ice-pwd:0123456789\r\n", ""},
    {"other ice lines", kAudio, "", "a=ice\r\n", ""},
};

std::string Make(const Repeated& row, std::size_t size) {
    std::string text = std::string(row.head).append(row.start);
    text.reserve(size + row.unit.size() + row.end.size());
    while (text.size() + row.end.size() < size) {
        text += row.unit;
    }
    return text.append(row.end);
}

// Payload texts, by number

std::string Plain(std::size_t number) {
    return std::to_string(number);
}

/// Payloads of the same length and prefix that differ at the end.
std::string Alike(std::size_t number) {
    return std::string(48, '1') + std::to_string(10000000 + number);
}

/// Payloads of the same length, prefix and suffix that differ in the middle.
std::string AlikeAtBothEnds(std::size_t number) {
    return "1111" + std::to_string(10000000 + number) + "1111";
}

// The lines of a format, by its payload text

std::string NoLine(const std::string& /*payload*/) {
    return {};
}

std::string MapLine(const std::string& payload) {
    return "a=rtpmap:" + payload + " X/1\r\n";
}

std::string ParameterLine(const std::string& payload) {
    return "a=fmtp:" + payload + " x\r\n";
}

std::string BothLines(const std::string& payload) {
    return MapLine(payload) + ParameterLine(payload);
}

std::string H264Lines(const std::string& payload) {
    return "a=rtpmap:" + payload + " H264/90000\r\na=fmtp:" + payload +
           " profile-level-id=42801f;max-fs=3600\r\n";
}

std::string LongLines(const std::string& payload) {
    return MapLine(payload) + "a=fmtp:" + payload + " " + std::string(200, 'x') + "\r\n";
}

/// The order of the formats' lines, compared with the "m=" line.
enum class Order { Forward, Reversed, Shuffled, Doubled };

/// One section with as many formats as the size allows, each with its lines.
struct ManyFormats {
    const char* name;
    std::string_view start;
    std::string (*payload)(std::size_t);
    std::string (*lines)(const std::string&);
    Order order;
};

constexpr std::string_view kAudioStart = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=audio 5004 RTP/AVP";
constexpr std::string_view kVideoStart = "v=0\r\nc=IN IP4 192.0.2.2\r\nm=video 5004 RTP/AVP";

constexpr ManyFormats kManyFormats[] = {
    {"formats alone", kAudioStart, Plain, NoLine, Order::Forward},
    {"rtpmap in order", kAudioStart, Plain, MapLine, Order::Forward},
    {"rtpmap reversed", kAudioStart, Plain, MapLine, Order::Reversed},
    {"rtpmap shuffled", kAudioStart, Plain, MapLine, Order::Shuffled},
    {"rtpmap doubled", kAudioStart, Plain, MapLine, Order::Doubled},
    {"fmtp in order", kAudioStart, Plain, ParameterLine, Order::Forward},
    {"fmtp reversed", kAudioStart, Plain, ParameterLine, Order::Reversed},
    {"fmtp shuffled", kAudioStart, Plain, ParameterLine, Order::Shuffled},
    {"rtpmap and fmtp in order", kAudioStart, Plain, BothLines, Order::Forward},
    {"rtpmap and fmtp shuffled", kAudioStart, Plain, BothLines, Order::Shuffled},
    {"alike payloads in order", kAudioStart, Alike, MapLine, Order::Forward},
    {"alike payloads shuffled", kAudioStart, Alike, MapLine, Order::Shuffled},
    {"payloads alike at both ends", kAudioStart, AlikeAtBothEnds, MapLine, Order::Shuffled},
    {"formats of long parameters", kAudioStart, Plain, LongLines, Order::Shuffled},
    {"alike, of long parameters", kAudioStart, AlikeAtBothEnds, LongLines, Order::Shuffled},
    {"H264 formats without a mode", kVideoStart, Plain, H264Lines, Order::Shuffled},
};

std::string Make(const ManyFormats& row, std::size_t size) {
    std::string text(row.start);
    std::vector<std::string> payloads;
    for (std::size_t length = text.size(); length < size;) {
        const std::size_t number = payloads.size();
        payloads.push_back(row.payload(row.order == Order::Doubled ? number / 2 : number));
        length += 1 + payloads.back().size() + row.lines(payloads.back()).size();
        text.append(" ").append(payloads.back());
    }
    text += "\r\n";
    if (row.order == Order::Reversed) {
        std::reverse(payloads.begin(), payloads.end());
    } else if (row.order == Order::Shuffled) {
        std::mt19937 random(4566);
        for (std::size_t i = payloads.size(); i > 1; --i) {
            payloads[i - 1].swap(payloads[random() % i]);
        }
    }
    for (const std::string& payload : payloads) {
        text += row.lines(payload);
    }
    return text;
}

/// One section of a few formats, followed by the rtpmap line of one payload until the size is reached; or,
/// with `repeatsSection`, the section and a line for each format repeated. Up to 8 formats are searched
/// without an index.
struct FewFormats {
    const char* name;
    std::size_t count;
    std::string (*payload)(std::size_t);
    bool repeatsSection;
    std::size_t asked;
};

constexpr FewFormats kFewFormats[] = {
    {"8 formats, lines of the last", 8, Plain, false, 7},
    {"8 formats, lines of none", 8, Plain, false, 9},
    {"8 alike, lines of the last", 8, AlikeAtBothEnds, false, 7},
    {"9 formats, lines of the last", 9, Plain, false, 8},
    {"9 formats, lines of none", 9, Plain, false, 10},
    {"9 alike, lines of the last", 9, AlikeAtBothEnds, false, 8},
    {"sections of 8 formats", 8, Plain, true, 0},
    {"sections of 8 alike", 8, AlikeAtBothEnds, true, 0},
    {"sections of 9 formats", 9, Plain, true, 0},
    {"sections of 9 alike", 9, AlikeAtBothEnds, true, 0},
    {"sections of 64 formats", 64, Plain, true, 0},
};

std::string Make(const FewFormats& row, std::size_t size) {
    std::string section = "m=audio 5004 RTP/AVP";
    std::string lines;
    for (std::size_t number = 0; number < row.count; ++number) {
        section.append(" ").append(row.payload(number));
        lines += MapLine(row.payload(number));
    }
    section += "\r\n";
    if (row.repeatsSection) {
        return Make(Repeated{row.name, kNone, "", section + lines, ""}, size);
    }
    return Make(Repeated{row.name, section, "", MapLine(row.payload(row.asked)), ""}, size);
}

template <typename Row, std::size_t N>
void Append(std::vector<HostileText>& all, const Row (&rows)[N]) {
    for (const Row& row : rows) {
        all.push_back({row.name, [&row](std::size_t size) { return Make(row, size); }});
    }
}

} // namespace

const std::vector<HostileText>& HostileClasses() {
    static const std::vector<HostileText> all = [] {
        std::vector<HostileText> joined;
        Append(joined, kRepeated);
        Append(joined, kManyFormats);
        Append(joined, kFewFormats);
        return joined;
    }();
    return all;
}

} // namespace support
