// The remote text as its writer sees it: lines as an editor counts, each with the row that it begins with
// and the section that it is in.
//
// What the component makes of a line is asked of the component; this says where a line is and what it was
// meant for, so that a finding can name it.
#pragma once

#include "LineStart.h"
#include "Quoted.h"
#include "SDPLineObserver.h"
#include "SDPTransport.h"
#include "Words.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace explain {

/// A line of the editor.
struct TextLine {
    std::size_t number = 0; ///< from 1
    std::size_t offset = 0;
    std::string_view text; ///< without its line end
    std::string_view end;  ///< "\r\n", "\n" or, for a last line that was cut, ""
    SDPRow meant = SDPRow::None;
    bool isPlain = false;           ///< its start is spelled as it should be: see IsPlain
    std::size_t section = kNowhere; ///< meant section; kNowhere before the first
    std::size_t parsedLine =
        kNowhere; ///< index of the component's line that it is part of; kNowhere for none
};

/// A line as the component reads it: CR LF alone ends it.
struct ParsedLine {
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

    bool IsStream() const { return media == "audio" || media == "video"; }
    /// Whether it is floor control.
    bool IsFloor() const { return media == "application" && negotiation::IsBfcp(transport); }
    /// Whether its transport is secure, by keys of crypto lines or by those of DTLS.
    bool IsSecure() const { return negotiation::IsSavp(transport); }
    /// Whether its keys come by DTLS, which nothing reads.
    bool IsDtls() const { return negotiation::IsDtls(transport); }
    /// Whether it says that its keys are in crypto lines.
    bool WantsCrypto() const { return IsSecure() && !IsDtls(); }
    bool IsDeclined() const { return port == "0"; }
};

struct Reading {
    std::string_view text;
    std::vector<TextLine> lines;
    std::vector<ParsedLine> parsedLines; ///< what the component reads, in order
    std::vector<MeantSection> sections;
    std::deque<std::string> mended; ///< media lines without lookalike signs, which sections have views of
    std::string_view origin;        ///< the first o= line; empty without one
    bool hasIce = false;            ///< a line was meant as a=ice
    bool hasCandidate = false;      ///< a line was meant as a=candidate:

    const MeantSection* SectionOf(const TextLine& line) const {
        return line.section == kNowhere ? nullptr : &sections[line.section];
    }
};

/// Cuts the text into lines; keeps views of it.
Reading Read(std::string_view text);

} // namespace explain
