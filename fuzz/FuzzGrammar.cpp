// A valid description whose record is known, with one mutation.
//
// The input chooses a side, the sections and their lines, the mutation and its place; the rest of the input
// is the text that some mutations insert. Parsing the valid text must give the record that the generator
// filled. A harmless mutation must change neither record nor answer; after any other one the laws of every
// text hold.
#include "Handling.h"
#include "Judged.h"
#include "Laws.h"
#include "Scenario.h"
#include "Targets.h"

#include <algorithm>
#include <cctype>

namespace fuzz {

namespace {

using Lines = std::vector<std::string>;

/// Lines that change nothing, wherever they are inserted.
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

/// The arguments of a mutation.
struct Mutation {
    Lines lines;
    std::size_t at;      ///< index of the line to change
    std::string rest;    ///< bytes of the input, for mutations that insert a text
    std::uint8_t amount; ///< a number whose meaning each mutation defines
};

bool IsMedia(const std::string& line) {
    return line.find("m=") != std::string::npos;
}

std::string& Line(Mutation& mutation) {
    return mutation.lines[mutation.at];
}

void Insert(Lines& lines, std::size_t at, const std::string& line) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), line);
}

/// Mutations that must not change the result.
using Harmless = std::string (*)(const Mutation&);

std::string IdleLine(const Mutation& mutation) {
    Lines lines = mutation.lines;
    Insert(lines, (mutation.at + mutation.amount) % (lines.size() + 1),
           kIdle[mutation.amount % std::size(kIdle)]);
    return Join(lines);
}

std::string IdleLineEverywhere(const Mutation& mutation) {
    // The long ones at the end of the table are left out: inserted everywhere they would only take time.
    const std::string& idle = kIdle[mutation.amount % (std::size(kIdle) - kLongIdle)];
    std::string text;
    for (const std::string& line : mutation.lines) {
        text += idle + "\r\n" + line + "\r\n";
    }
    return text;
}

/// Repeating a line changes nothing, unless it is an "m=" line, which opens another section.
std::string LineTwice(const Mutation& mutation) {
    Lines lines = mutation.lines;
    if (!IsMedia(lines[mutation.at])) {
        Insert(lines, mutation.at, lines[mutation.at]);
    }
    return Join(lines);
}

/// Text after the last CR LF is not read.
std::string LineWithoutEnd(const Mutation& mutation) {
    std::string tail = mutation.rest.empty() ? "m=audio 9 RTP/AVP 0" : mutation.rest;
    while (tail.find("\r\n") != std::string::npos) {
        tail.erase(tail.find("\r\n"), 1);
    }
    // A LF at the start of the tail follows the CR LF of the text and forms no line end with it.
    return Join(mutation.lines) + tail;
}

/// Any white space separates words; only an fmtp line is split at blanks.
std::string WiderBlanks(const Mutation& mutation) {
    static const char* const spaces[] = {"  ", "\t", " \t ", "\v", "\f "};
    std::string text;
    for (const std::string& line : mutation.lines) {
        const bool hasWords = IsMedia(line) || line.rfind("c=", 0) == 0 || line.rfind("a=rtpmap", 0) == 0 ||
                              line.rfind("a=crypto", 0) == 0;
        for (const char c : line) {
            text += hasWords && c == ' ' ? spaces[mutation.amount % std::size(spaces)] : std::string(1, c);
        }
        text += "\r\n";
    }
    return text;
}

constexpr Harmless kHarmless[] = {IdleLine, IdleLineEverywhere, LineTwice, LineWithoutEnd, WiderBlanks};

/// Mutations that may change the result; the laws of every text still hold.
using Harmful = std::string (*)(Mutation);

std::string FreeLine(Mutation mutation) {
    Insert(mutation.lines, mutation.at, mutation.rest);
    return Join(mutation.lines);
}

std::string FreeWord(Mutation mutation) {
    std::string& line = Line(mutation);
    line.insert(mutation.amount % (line.size() + 1), mutation.rest);
    return Join(mutation.lines);
}

std::string LostLine(Mutation mutation) {
    mutation.lines.erase(mutation.lines.begin() + static_cast<std::ptrdiff_t>(mutation.at));
    return Join(mutation.lines);
}

std::string MovedLine(Mutation mutation) {
    std::swap(Line(mutation), mutation.lines[mutation.amount % mutation.lines.size()]);
    return Join(mutation.lines);
}

std::string CutText(Mutation mutation) {
    const std::string text = Join(mutation.lines);
    return text.substr(0, (mutation.at * 256 + mutation.amount) % (text.size() + 1));
}

std::string ChangedByte(Mutation mutation) {
    std::string text = Join(mutation.lines);
    text[(mutation.at * 97 + mutation.amount) % text.size()] =
        mutation.rest.empty() ? '\0' : mutation.rest[0];
    return text;
}

std::string OtherLineEnds(Mutation mutation) {
    static const char* const ends[] = {"\n", "\r", "\r\r\n", "\n\r", "\r\n\r\n", ""};
    std::string text;
    for (std::size_t i = 0; i < mutation.lines.size(); ++i) {
        const bool isMutated = i == mutation.at || mutation.amount >= 128;
        text += mutation.lines[i] + (isMutated ? ends[mutation.amount % std::size(ends)] : "\r\n");
    }
    return text + "\r\n";
}

std::string OtherCase(Mutation mutation) {
    for (char& c : Line(mutation)) {
        const auto byte = static_cast<unsigned char>(c);
        c = static_cast<char>(std::islower(byte) != 0 ? std::toupper(byte) : std::tolower(byte));
    }
    return Join(mutation.lines);
}

/// Replaces a number of the line; `amount` says which, and by what.
std::string BadNumber(Mutation mutation) {
    std::string& line = Line(mutation);
    static constexpr const char* digits = "0123456789";
    std::size_t begin = line.find_first_of(digits, mutation.amount % (line.size() + 1));
    begin = begin == std::string::npos ? line.find_first_of(digits) : begin;
    if (begin != std::string::npos) {
        const std::size_t end = std::min(line.find_first_not_of(digits, begin), line.size());
        line.replace(begin, end - begin, kBadNumbers[mutation.amount % std::size(kBadNumbers)]);
    }
    return Join(mutation.lines);
}

std::string ManyTimes(Mutation mutation) {
    const std::string line = Line(mutation);
    mutation.lines.insert(mutation.lines.begin() + static_cast<std::ptrdiff_t>(mutation.at), mutation.amount,
                          line);
    return Join(mutation.lines);
}

std::string ManyFormats(Mutation mutation) {
    for (std::string& line : mutation.lines) {
        for (unsigned i = 0; IsMedia(line) && i < mutation.amount; ++i) {
            line += " " + std::to_string(i % 130);
        }
    }
    return Join(mutation.lines);
}

std::string LongWord(Mutation mutation) {
    Line(mutation).append(std::size_t{mutation.amount} * 16U, mutation.rest.empty() ? 'A' : mutation.rest[0]);
    return Join(mutation.lines);
}

std::string KeyInOtherLine(Mutation mutation) {
    Line(mutation) += "\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:";
    return Join(mutation.lines);
}

constexpr Harmful kHarmful[] = {FreeLine,    FreeWord,      LostLine,      MovedLine, CutText,
                                ChangedByte, OtherLineEnds, OtherCase,     BadNumber, ManyTimes,
                                ManyFormats, LongWord,      KeyInOtherLine};

void Run(Input input, std::uint64_t secret) {
    const Side side = AnySide(input, secret);
    Scenario scenario = MakeScenario(input, secret ^ 0x5ce4eU, side.local.eAudioCodec);
    const std::size_t choice = input.Below(std::size(kHarmless) + std::size(kHarmful));
    Mutation mutation{scenario.lines, input.Below(scenario.lines.size()), {}, input.Byte()};
    mutation.rest = input.Rest();

    const Key planted(secret ^ 0xfa4e0dU);
    scenario.keys.Add(planted);
    const std::string text = Join(scenario.lines);
    Handled valid = CheckHandling(side, text, scenario.keys);
    RequireSame("a valid description gives the generator's record", "generated", RecordText(scenario.wanted),
                "read", Judged("record of a valid text", valid.record));

    if (choice < std::size(kHarmless)) {
        const std::string mutated = kHarmless[choice](mutation);
        Handled result = CheckHandling(side, mutated, scenario.keys);
        Judged("answer to a mutated text", result.answer);
        Require(result.record == valid.record && result.answer == valid.answer,
                "a harmless mutation changes neither record nor answer",
                mutated + result.record + result.answer, text + valid.record + valid.answer);
        Reached("a harmless mutation");
    } else {
        Reached("another mutation");
        CheckHandling(side, Plant(kHarmful[choice - std::size(kHarmless)](mutation), planted), scenario.keys);
    }
}

} // namespace

} // namespace fuzz

void FuzzGrammar(const std::uint8_t* data, std::size_t size) {
    fuzz::RunWithSecret(data, size, fuzz::Run);
}
