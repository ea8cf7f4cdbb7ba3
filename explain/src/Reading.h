// The remote text as its writer sees it: lines as an editor counts, each with the row that it begins with
// and the section that it stands in.
//
// What the component makes of a line is asked of the component; this says where a line is and what it was
// meant for, so that a finding can name it.
#pragma once

#include "SDPLineObserver.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace explain {

inline constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

/// A line of the editor.
struct TextLine {
    std::size_t number = 0; ///< from 1
    std::size_t offset = 0;
    std::string_view text; ///< without its line end
    std::string_view end;  ///< "\r\n", "\n" or, for a last line that was cut, ""
    SDPRow meant = SDPRow::None;
    bool isPlain = false;           ///< its start is spelled as it should be: see IsPlain
    std::size_t section = kNowhere; ///< meant section; kNowhere before the first
    std::size_t host = kNowhere;    ///< index of the component's line that it is part of
};

/// A line of the component.
struct Host {
    SDPRow row = SDPRow::None;
    std::string_view text;
    std::size_t first = 0; ///< index of its first editor line
    std::size_t count = 0; ///< editor lines in it
};

/// A section that begins with a line that was meant as "m=".
struct MeantSection {
    std::size_t line = 0; ///< index of the "m=" line
    std::size_t last = 0; ///< index of its last line
    std::string media;    ///< lower case, "audio"
    std::string port;
    std::string transport;  ///< upper case, "RTP/AVP"
    bool isSlides = false;  ///< a line of it says a=content:slides
    bool hasCrypto = false; ///< a line of it was meant as a=crypto:
    std::vector<std::string_view> formats;
    std::unordered_set<std::string_view> listed;              ///< the formats, to be looked up
    std::unordered_map<std::string_view, std::size_t> rtpmap; ///< payload to index of its last rtpmap line
    std::unordered_map<std::string_view, std::size_t> fmtp;   ///< payload to index of its last fmtp line
};

struct Reading {
    std::string_view text;
    std::vector<TextLine> lines;
    std::vector<Host> hosts;
    std::vector<MeantSection> sections;
    std::string_view origin;   ///< the first o= line; empty without one
    bool hasIce = false;       ///< a line was meant as a=ice
    bool hasCandidate = false; ///< a line was meant as a=candidate:

    const MeantSection* SectionOf(const TextLine& line) const {
        return line.section == kNowhere ? nullptr : &sections[line.section];
    }
};

/// Cuts the text into lines; keeps views of it.
Reading Read(std::string_view text);

/// Whether the line is "x=" and a value, or "a=" and a name in small letters, with ":" and a value after it
/// or not, without a blank at its ends or beside the ":". StartSpelled leaves such a line as it is.
bool IsPlain(std::string_view line);
/// Text without white space at either end.
std::string_view Trimmed(std::string_view text);
/// A trimmed line without signs before its first letter, such as those of quoted mail ("> m=audio"), with the
/// type that it lacks ("rtpmap:0 PCMU/8000") or another sign than "=" after it ("m:audio"), and without
/// blanks round its first "=" and before its first ":"; where a keyword that takes a value has a blank in
/// place of its colon, the colon stands.
std::string StartSpelled(std::string_view line);
/// The words of a text, cut at white space; at most `most`.
std::vector<std::string_view> WordsOf(std::string_view text, std::size_t most = kNowhere);
/// The word after `index` others; empty without one.
std::string_view WordOf(std::string_view text, std::size_t index);
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);
/// Inline, so that the comparison with a constant is a few instructions: every finder asks it of every line.
inline bool BeginsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() && text.compare(0, start.size(), start) == 0;
}
bool IsDigits(std::string_view text);
/// Whether digits are more than the record's 32 bits hold (G04).
bool IsOver32Bits(std::string_view digits);
/// Four decimal numbers up to 255 with dots between.
bool IsIpv4(std::string_view text);
/// A loopback, private or link-local IPv4 address.
bool IsPrivate(std::string_view address);
/// "a=fmtp:97 x" and "a=rtpmap:97 x": the digits after the keyword's colon; empty without any.
std::string_view PayloadOf(std::string_view line);
/// The value after the first ':' of an attribute, trimmed.
std::string_view ValueOf(std::string_view line);

/// A line in quotes for a sentence: printable, short, key text as "***".
std::string Quoted(std::string_view line);
/// A value of the far end for a sentence: printable, short, and "***" where it could be key text.
std::string Shown(std::string_view value);

} // namespace explain
