// Stage: our own description to what a far end makes of it.
// Input: the text that the component wrote, or that was sent. Output: its sections and a record.
// Touches the texts that are kept. A second handler with every audio codec reads our text, as a far end that
// uses this component would.
// Test: tests/explain/SameRunTest.cpp
#include "OurText.h"

#include "Reading.h"
#include "SDPHandler.h"
#include "SDPLines.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

OurSection OurSectionOf(std::string_view line) {
    const std::vector<std::string_view> words = WordsOf(line);
    OurSection section;
    section.media = words[0].substr(2);
    section.hasPort = words.size() > 1 && (IsDigits(words[1]) || words[1][0] == '-');
    const std::size_t first = section.hasPort ? 1 : 0;
    section.port = section.hasPort ? words[1] : std::string_view();
    section.transport = words.size() > first + 1 ? words[first + 1] : std::string_view();
    for (std::size_t i = first + 2; i < words.size(); ++i) {
        section.formats.push_back(words[i]);
    }
    return section;
}

std::vector<OurSection> SectionsOf(std::string_view text) {
    constexpr std::string_view crypto = "a=crypto:";
    std::vector<OurSection> sections;
    sdp::ForEachLine(text, [&](std::size_t offset, std::size_t length) {
        const std::string_view line = text.substr(offset, length);
        if (BeginsWith(line, "m=")) {
            sections.push_back(OurSectionOf(line));
        } else if (sections.empty()) {
            return;
        } else if (BeginsWith(line, crypto)) {
            const std::vector<std::string_view> words = WordsOf(line, 3);
            OurSection& section = sections.back();
            section.hasKey = true;
            section.tag = words[0].substr(crypto.size());
            section.suite = words.size() > 2 ? words[1] : std::string_view();
        } else if (line == "a=content:slides") {
            sections.back().isSlides = true;
        }
    });
    return sections;
}

} // namespace

OurText::OurText(std::string written) : text(std::move(written)), sections(SectionsOf(text)) {
    SDPHandler farEnd;
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        farEnd.MyLocalSDP.eAudioCodec =
            static_cast<PayloadType_t>((farEnd.MyLocalSDP.eAudioCodec & ~PAYLOAD_UNKNOWN) | codec.codec);
    }
    farEnd.ParseTheSDP(text, read);
}

std::string_view AfterOrigin(std::string_view text) {
    return text.substr(std::min(text.find("\r\ns="), text.size()));
}

std::shared_ptr<const OurText> OurTexts::Read(std::string text, const std::string& origin) {
    constexpr std::size_t most = 256; // then all are forgotten, so the memory is bounded
    if (origin != m_origin || m_read.size() >= most) {
        m_read.clear();
        m_origin = origin;
    }
    const auto found = m_read.find(AfterOrigin(text));
    if (found != m_read.end()) {
        return found->second;
    }
    auto read = std::make_shared<const OurText>(std::move(text));
    m_read.emplace(AfterOrigin(read->text), read);
    return read;
}

} // namespace explain
