// A grammatical description whose meaning is known, with one illness.
//
// Byte for byte the input chooses a side, the sections and what stands in them, the illness and its place;
// the rest is the text of the illnesses that carry one. The healthy text must yield the record that the
// generator wrote down. Illnesses that cost nothing must change nothing, neither record nor answer; for the
// others every law of any text holds.
#include "Handling.h"
#include "Laws.h"
#include "Scene.h"
#include "Targets.h"

#include <algorithm>
#include <cctype>

namespace fuzz {

namespace {

using Lines = std::vector<std::string>;

/// Lines that no handler takes anything from, wherever they stand.
const std::string kIdle[] = {
    "",
    "x",
    "a",
    "a=",
    "=x",
    "a=:",
    "a=x:",
    "v=0",
    "i=about this",
    "u=http://example.com/",
    "e=far@example.com",
    "p=+44 20 7946 0000",
    "k=clear:nothing",
    "r=7d 1h 0 25h",
    "z=2882844526 -1h",
    " ",
    "\t \t",
    std::string(1, '\0'),
    std::string("a=\0x", 4),
    "\x80\xff\xc3\x28",
    "\xef\xbb\xbf",
    "\r",
    "\n",
    "a=rtpmap:999 X/1",
    "a=rtpmap",
    "a=rtpmap:",
    "a=rtpmap:97",
    "a=rtpmap 97",
    "a=fmtp:999 x=1",
    "a=fmtp:97",
    "a=fmtp:97\tx=1",
    " a=fmtp:97 x=1",
    "xa=fmtp:97 max-fs=1",
    "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0",
    "a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0",
    "a=crypto:1 AES_CM_128_HMAC_SHA1_32",
    "a=crypto AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0",
    "m=audio 5000 RTP/AVP",
    "m=",
    "m=video",
    "c=IN IP4",
    "c=",
    "b=CT:100",
    "b=X-y:1",
    "b=",
    "b=AS",
    "b=as:1",
    "a=content:alt",
    "a=content:speaker",
    "a=confid:abc",
    "a=confid:-1",
    "a=confid:",
    "a=userid:1.5",
    "a=userid: 1",
    "a=ice-options:trickle",
    "a=ice-lite",
    "a=candidate:1 1 UDP 2130706431 192.0.2.9 9 typ host",
    "a=group:BUNDLE 0 1 2",
    "a=mid:0",
    "a=label:9",
    "a=setup:actpass",
    "a=rtcp-mux",
    "a=ptime:20",
    "a=SENDONLY",
    "A=sendonly",
    "a =sendonly",
    "%s%n%x%p",
    "\x1b[2J\x1b]0;title\x07",
    "a=\xe2\x80\xaetext",
    std::string(3000, 'x'),
    std::string(3000, '='),
    std::string(3000, ' '),
    std::string(3000, ';'),
};
constexpr std::size_t kLongIdle = 4;

const char* const kBadNumbers[] = {
    "0",
    "-1",
    "+1",
    "255",
    "65535",
    "65536",
    "2147483647",
    "2147483648",
    "4294967295",
    "4294967296",
    "0x10",
    "9223372036854775807",
    "1.5",
    "1e9",
    "9223372036854775808",
    " 1",
    "",
    "18446744073709551616",
    "000000000000000000000000000000000001",
    "9999999999999999999999999999999999999999",
};

struct Patient {
    Lines lines;
    std::size_t at;    ///< the line that falls ill
    std::string rest;  ///< bytes of the input for illnesses that carry a text
    std::uint8_t dose; ///< how much
};

bool IsMedia(const std::string& line) {
    return line.find("m=") != std::string::npos;
}

std::string& Line(Patient& patient) {
    return patient.lines[patient.at];
}

void Insert(Lines& lines, std::size_t at, const std::string& line) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), line);
}

/// Illnesses that cost nothing: what is read stays the same.
using Harmless = std::string (*)(const Patient&);

std::string IdleLine(const Patient& patient) {
    Lines lines = patient.lines;
    Insert(lines, (patient.at + patient.dose) % (lines.size() + 1), kIdle[patient.dose % std::size(kIdle)]);
    return Join(lines);
}

std::string IdleLineEverywhere(const Patient& patient) {
    // The long ones at the table's end stand alone; between all lines they would only take time.
    const std::string& idle = kIdle[patient.dose % (std::size(kIdle) - kLongIdle)];
    std::string text;
    for (const std::string& line : patient.lines) {
        text += idle + "\r\n" + line + "\r\n";
    }
    return text;
}

/// A line that is said twice says the same; only an "m=" line opens another section.
std::string LineTwice(const Patient& patient) {
    Lines lines = patient.lines;
    if (!IsMedia(lines[patient.at])) {
        Insert(lines, patient.at, lines[patient.at]);
    }
    return Join(lines);
}

/// What stands behind the last CR LF is no line.
std::string LineWithoutEnd(const Patient& patient) {
    std::string tail = patient.rest.empty() ? "m=audio 9 RTP/AVP 0" : patient.rest;
    while (tail.find("\r\n") != std::string::npos) {
        tail.erase(tail.find("\r\n"), 1);
    }
    // A CR at the very end of the tail would meet nothing; a LF at its start meets the text's own CR LF.
    return Join(patient.lines) + tail;
}

/// Words may stand apart by any white space; only an fmtp line is cut at blanks.
std::string WiderBlanks(const Patient& patient) {
    static const char* const spaces[] = {"  ", "\t", " \t ", "\v", "\f "};
    std::string text;
    for (const std::string& line : patient.lines) {
        const bool hasWords = IsMedia(line) || line.rfind("c=", 0) == 0 || line.rfind("a=rtpmap", 0) == 0 ||
                              line.rfind("a=crypto", 0) == 0;
        for (const char c : line) {
            text += hasWords && c == ' ' ? spaces[patient.dose % std::size(spaces)] : std::string(1, c);
        }
        text += "\r\n";
    }
    return text;
}

constexpr Harmless kHarmless[] = {IdleLine, IdleLineEverywhere, LineTwice, LineWithoutEnd, WiderBlanks};

/// Illnesses that may cost anything but what every text is owed.
using Harmful = std::string (*)(Patient);

std::string FreeLine(Patient patient) {
    Insert(patient.lines, patient.at, patient.rest);
    return Join(patient.lines);
}

std::string FreeWord(Patient patient) {
    std::string& line = Line(patient);
    line.insert(patient.dose % (line.size() + 1), patient.rest);
    return Join(patient.lines);
}

std::string LostLine(Patient patient) {
    patient.lines.erase(patient.lines.begin() + static_cast<std::ptrdiff_t>(patient.at));
    return Join(patient.lines);
}

std::string MovedLine(Patient patient) {
    std::swap(Line(patient), patient.lines[patient.dose % patient.lines.size()]);
    return Join(patient.lines);
}

std::string CutText(Patient patient) {
    const std::string text = Join(patient.lines);
    return text.substr(0, (patient.at * 256 + patient.dose) % (text.size() + 1));
}

std::string ChangedByte(Patient patient) {
    std::string text = Join(patient.lines);
    text[(patient.at * 97 + patient.dose) % text.size()] = patient.rest.empty() ? '\0' : patient.rest[0];
    return text;
}

std::string OtherLineEnds(Patient patient) {
    static const char* const ends[] = {"\n", "\r", "\r\r\n", "\n\r", "\r\n\r\n", ""};
    std::string text;
    for (std::size_t i = 0; i < patient.lines.size(); ++i) {
        const bool isMutated = i == patient.at || patient.dose >= 128;
        text += patient.lines[i] + (isMutated ? ends[patient.dose % std::size(ends)] : "\r\n");
    }
    return text + "\r\n";
}

std::string OtherCase(Patient patient) {
    for (char& c : Line(patient)) {
        const auto byte = static_cast<unsigned char>(c);
        c = static_cast<char>(std::islower(byte) != 0 ? std::toupper(byte) : std::tolower(byte));
    }
    return Join(patient.lines);
}

/// A number of the line, the dose says which, becomes one that breaks readers.
std::string BadNumber(Patient patient) {
    std::string& line = Line(patient);
    static constexpr const char* digits = "0123456789";
    std::size_t begin = line.find_first_of(digits, patient.dose % (line.size() + 1));
    begin = begin == std::string::npos ? line.find_first_of(digits) : begin;
    if (begin != std::string::npos) {
        const std::size_t end = std::min(line.find_first_not_of(digits, begin), line.size());
        line.replace(begin, end - begin, kBadNumbers[patient.dose % std::size(kBadNumbers)]);
    }
    return Join(patient.lines);
}

std::string ManyTimes(Patient patient) {
    const std::string line = Line(patient);
    patient.lines.insert(patient.lines.begin() + static_cast<std::ptrdiff_t>(patient.at), patient.dose, line);
    return Join(patient.lines);
}

std::string ManyFormats(Patient patient) {
    for (std::string& line : patient.lines) {
        for (unsigned i = 0; IsMedia(line) && i < patient.dose; ++i) {
            line += " " + std::to_string(i % 130);
        }
    }
    return Join(patient.lines);
}

std::string LongWord(Patient patient) {
    Line(patient).append(std::size_t{patient.dose} * 16U, patient.rest.empty() ? 'A' : patient.rest[0]);
    return Join(patient.lines);
}

std::string KeyInOtherLine(Patient patient) {
    Line(patient) += "\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:";
    return Join(patient.lines);
}

constexpr Harmful kHarmful[] = {FreeLine,    FreeWord,      LostLine,      MovedLine, CutText,
                                ChangedByte, OtherLineEnds, OtherCase,     BadNumber, ManyTimes,
                                ManyFormats, LongWord,      KeyInOtherLine};

void Run(Input input, std::uint64_t secret) {
    const Side side = AnySide(input, secret);
    Scene scene = MakeScene(input, secret ^ 0x5ce4eU, side.local.eAudioCodec);
    const std::size_t illness = input.Below(std::size(kHarmless) + std::size(kHarmful));
    Patient patient{scene.lines, input.Below(scene.lines.size()), {}, input.Byte()};
    patient.rest = input.Rest();

    const Key planted(secret ^ 0xfa4e0dU);
    scene.keys.Add(planted);
    const std::string text = Join(scene.lines);
    const Handled healthy = CheckHandling(side, text, scene.keys);
    RequireSame("a description yields what it means", "meant", RecordText(scene.wanted), "read",
                healthy.record);

    if (illness < std::size(kHarmless)) {
        const std::string sick = kHarmless[illness](patient);
        const Handled ill = CheckHandling(side, sick, scene.keys);
        if (ill.record != healthy.record || ill.answer != healthy.answer) {
            Broken("an illness that costs nothing changes nothing", "healthy",
                   text + healthy.record + healthy.answer, "ill", sick + ill.record + ill.answer);
        }
    } else {
        CheckHandling(side, Plant(kHarmful[illness - std::size(kHarmless)](patient), planted), scene.keys);
    }
}

} // namespace

} // namespace fuzz

void FuzzGrammar(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
