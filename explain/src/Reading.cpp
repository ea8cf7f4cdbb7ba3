// Stage: the remote text to the lines and sections that its writer meant.
// Input: bytes. Output: Reading.
// Touches nothing. Which row a line begins with is asked of the component's own table; what the component
// makes of the line is not decided here.
// Test: tests/explain/judge_cases.py
#include "Reading.h"

#include "InetPton.h"
#include "Lookalike.h"
#include "MediaWords.h"
#include "SDPLines.h"
#include "SDPTables.h"
#include "SDPText.h"

#include <algorithm>
#include <cctype>

namespace explain {

namespace {

constexpr std::string_view kSlides = "a=content:slides";

using sdp::IsBlank;

/// The row whose keyword the line begins with, in any letter case and with blanks that do not belong there.
SDPRow MeantRow(std::string_view line, bool isPlain) {
    for (const sdp::LineRow& row : sdp::kLineRows) {
        constexpr std::size_t name = 2; // where the name of an attribute begins
        const bool isOther =
            row.keyword.size() > name && line.size() > name && line[name] != row.keyword[name];
        if (!isOther && row.row != SDPRow::Direction && BeginsWith(line, row.keyword)) {
            return row.row; // As it should be spelled, and as most lines are.
        }
    }
    if (isPlain) {
        return line[0] == 'a' ? SDPRow::Direction : SDPRow::None;
    }
    constexpr std::size_t enough = 32;
    const std::string start = Lower(StartSpelled(line.substr(0, enough)));
    for (const sdp::LineRow& row : sdp::kLineRows) {
        if (BeginsWith(start, row.keyword)) {
            return row.row;
        }
    }
    return SDPRow::None;
}

void OpenSection(Reading& reading, std::size_t index) {
    std::string_view text = reading.lines[index].text;
    if (!reading.lines[index].isPlain && HasLookalike(text)) {
        text = reading.mended.emplace_back(WithoutLookalikes(text));
    }
    const std::size_t equals = text.find('=');
    const std::size_t type = equals != std::string_view::npos
                                 ? equals
                                 : text.find_first_of(": ", std::min(text.find_first_of("mM"), text.size()));
    const std::vector<std::string_view> words = MediaWords(text.substr(std::min(type, text.size() - 1) + 1));
    MeantSection section;
    section.line = index;
    section.media = words.empty() ? std::string() : Lower(words[0]);
    section.port = words.size() > 1 ? words[1] : std::string_view();
    section.transport = words.size() > 2 ? Upper(words[2]) : std::string();
    for (std::size_t i = 3; i < words.size(); ++i) {
        section.formats.push_back(words[i]);
        section.listed.insert(words[i]);
    }
    reading.sections.push_back(std::move(section));
}

void Assign(Reading& reading, std::size_t index, bool hasForeign) {
    TextLine& line = reading.lines[index];
    line.isPlain = IsPlain(line.text) && !(hasForeign && HasLookalike(line.text));
    line.meant = MeantRow(line.text, line.isPlain);
    reading.hasIce = reading.hasIce || line.meant == SDPRow::Ice;
    reading.hasCandidate = reading.hasCandidate || line.meant == SDPRow::Candidate;
    if (reading.origin.empty() && BeginsWith(line.text, "o=")) {
        reading.origin = line.text;
    }
    if (line.meant == SDPRow::Media) {
        OpenSection(reading, index);
    }
    if (reading.sections.empty()) {
        return;
    }
    MeantSection& section = reading.sections.back();
    line.section = reading.sections.size() - 1;
    section.last = index;
    section.isSlides = section.isSlides || line.text.find(kSlides) != std::string_view::npos;
    section.hasCrypto = section.hasCrypto || line.meant == SDPRow::Crypto;
    if (line.meant == SDPRow::Rtpmap) {
        section.rtpmap[PayloadOf(line.text)] = index;
    } else if (line.meant == SDPRow::Fmtp) {
        section.fmtp[PayloadOf(line.text)] = index;
    }
}

} // namespace

Reading Read(std::string_view text) {
    Reading reading;
    reading.text = text;
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    reading.lines.reserve(count + 1);
    reading.parsedLines.reserve(count);
    const bool hasForeign = HasForeign(text);
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t lf = std::min(text.find('\n', begin), text.size());
        const bool isCut = lf == text.size();
        const bool hasCr = !isCut && lf > begin && text[lf - 1] == '\r';
        TextLine line;
        line.number = reading.lines.size() + 1;
        line.offset = begin;
        line.text = text.substr(begin, lf - begin - (hasCr ? 1 : 0));
        line.end = text.substr(begin + line.text.size(), isCut ? 0 : (hasCr ? 2 : 1));
        reading.lines.push_back(line);
        Assign(reading, reading.lines.size() - 1, hasForeign);
        begin = lf + 1;
    }
    std::size_t next = 0;
    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        ParsedLine parsed;
        parsed.text = text.substr(offset, length);
        parsed.row = sdp::RowOf(parsed.text);
        parsed.first = next;
        while (next < reading.lines.size() && reading.lines[next].offset <= offset + length) {
            reading.lines[next++].parsedLine = reading.parsedLines.size();
        }
        parsed.count = next - parsed.first;
        reading.parsedLines.push_back(parsed);
    });
    return reading;
}

} // namespace explain
