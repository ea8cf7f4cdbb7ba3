// Observes the component while it parses, and puts what a section holds into words.
//
// Tests: tests/tool/ReadingTest.cpp
#include "Reading.h"

#include "Names.h"
#include "SDPLines.h"
#include "SDPTables.h"
#include "VideoUtils.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>

namespace cmsdp {

namespace {

class Observer {
public:
    Observer(Reading& reading, const Draft& draft) : m_reading(reading), m_draft(draft) {}

    static void After(void* context, const SDPLine& line) { static_cast<Observer*>(context)->Take(line); }

private:
    void Take(const SDPLine& line);

    Reading& m_reading;
    const Draft& m_draft;
    std::size_t m_offset = 0; // of the line before
    std::size_t m_feeds = 0;  // line feeds in front of m_offset
    std::size_t m_places = 0; // "m=" lines so far
};

void Observer::Take(const SDPLine& line) {
    const auto at = [this](std::size_t offset) {
        return m_draft.text.begin() + static_cast<std::ptrdiff_t>(offset);
    };
    m_feeds += static_cast<std::size_t>(std::count(at(m_offset), at(line.offset), '\n'));
    m_offset = line.offset;
    if (line.row == SDPRow::None) {
        return;
    }
    std::vector<Section>& sections = m_reading.sections;
    ReadLine read;
    read.row = line.row;
    read.text = std::string_view(m_draft.text).substr(line.offset, line.length);
    read.number = m_draft.numbers[m_feeds];
    read.opens = line.section != nullptr && (sections.empty() || sections.back().session != line.section);
    const bool hasPlace = read.row == SDPRow::Media && IsMeant(read);
    if (read.opens) {
        sections.push_back({line.section,
                            read.number,
                            sections.size(),
                            hasPlace ? std::optional(m_places) : std::nullopt,
                            {}});
    } else if (!sections.empty()) {
        sections.back().lines.push_back(read);
    }
    m_places += hasPlace ? 1 : 0;
    read.section = sections.size();
    m_reading.lines.push_back(read);
}

template <typename Test>
const Section* FindFirst(const Reading& reading, Test test) {
    const auto found = std::find_if(reading.sections.begin(), reading.sections.end(),
                                    [test](const Section& section) { return test(*section.session); });
    return found == reading.sections.end() ? nullptr : &*found;
}

// Payload types with an "a=rtpmap:" line of their own. The attribute may stand after a crypto attribute that
// lost its line end; then the name that the component stores can be key text.
std::set<std::string_view> Named(const Section& section) {
    std::set<std::string_view> payloads;
    for (const ReadLine& line : section.lines) {
        if (line.row == SDPRow::Rtpmap && IsMeant(line)) {
            payloads.insert(PayloadOf(line));
        }
    }
    return payloads;
}

// One format in words; empty for telephone events.
std::string FormatInWords(const RtpMap& format, bool named) {
    const std::string& payload = format.strPayload;
    if (named && !format.strEncodingName.empty()) {
        const bool events = sdp::StartsWith(format.strEncodingName, "telephone-event/");
        return events ? "" : Short(format.strEncodingName) + " (" + payload + ")";
    }
    const char* const name = StaticName(payload);
    return name != nullptr ? std::string(name) + " (" + payload + ")"
                           : "payload type " + payload + " without a name";
}

} // namespace

bool IsMeant(const ReadLine& line) {
    return sdp::StartsWith(Trimmed(line.text), sdp::kLineRows[static_cast<std::size_t>(line.row)].keyword);
}

std::string_view PayloadOf(const ReadLine& line) {
    const std::size_t keyword = line.row == SDPRow::Rtpmap ? 9 : 7;
    const std::size_t blank = line.text.find_first_of(line.row == SDPRow::Rtpmap ? " \t" : " ");
    const bool isFormat = line.row == SDPRow::Rtpmap || line.row == SDPRow::Fmtp;
    return !isFormat || blank == std::string_view::npos || blank < keyword
               ? ""
               : line.text.substr(keyword, blank - keyword);
}

std::uint32_t LineOf(const Section& section, SDPRow row, std::string_view payload) {
    std::uint32_t number = section.line;
    for (const ReadLine& line : section.lines) {
        number = line.row == row && PayloadOf(line) == payload ? line.number : number;
    }
    return number;
}

Reading ReadWith(SDPHandler& handler, const Draft& draft) {
    Reading reading;
    Observer observer(reading, draft);
    const SDPLineObserver lines{nullptr, Observer::After, &observer};
    handler.SetLineObserver(&lines);
    handler.ParseTheSDP(draft.text, reading.record);
    handler.SetLineObserver(nullptr);
    return reading;
}

const Section* FindAudio(const Reading& reading) {
    return FindFirst(reading, [](const MediaSession& s) { return s.eMedia == MEDIA_AUDIO; });
}

const Section* FindVideo(const Reading& reading, VideoType_t role) {
    return FindFirst(reading,
                     [role](const MediaSession& s) { return s.eMedia == MEDIA_VIDEO && s.eContent == role; });
}

const Section* FindFloorControl(const Reading& reading) {
    return FindFirst(reading, [](const MediaSession& s) { return sdp::IsBfcp(s); });
}

const Section* FindLastFloorControl(const Reading& reading) {
    const auto last = std::find_if(reading.sections.rbegin(), reading.sections.rend(),
                                   [](const Section& section) { return sdp::IsBfcp(*section.session); });
    return last == reading.sections.rend() ? nullptr : &*last;
}

std::string NameOf(const MediaSession* session) {
    if (session == nullptr) {
        return "the session";
    }
    switch (session->eMedia) {
    case MEDIA_AUDIO:
        return "the audio section";
    case MEDIA_VIDEO:
        return session->eContent == VIDEOTYPE_PRESO ? "the presentation section" : "the video section";
    case MEDIA_APPLICATION:
        return "the application section";
    default:
        return "a section of unknown kind";
    }
}

std::string TransportOf(const Section& section) {
    const std::vector<std::string_view> words = WordsOf(section.session->strFullMLine);
    return words.size() < 3 ? "" : Short(words[2]);
}

// Tokens that are no payload number are counted, not shown: after a lost line end they can be anything. Of
// two entries with one number the first alone has the name (P07).
const char* StaticName(const std::string& payload) {
    static const std::unordered_map<std::string, const char*> names = {
        {"0", "PCMU"},   {"3", "GSM"},   {"4", "G723"}, {"8", "PCMA"},  {"9", "G722"},
        {"12", "QCELP"}, {"13", "CN"},   {"14", "MPA"}, {"15", "G728"}, {"18", "G729"},
        {"26", "JPEG"},  {"31", "H261"}, {"32", "MPV"}, {"33", "MP2T"}, {"34", "H263"},
    };
    const auto found = names.find(payload);
    return found == names.end() ? nullptr : found->second;
}

std::string CodecsInWords(const Section& section) {
    constexpr std::size_t most = 8;
    std::vector<std::string> codecs;
    std::size_t other = 0;
    const std::set<std::string_view> named = Named(section);
    for (const RtpMap* format : section.session->vecRtpMap) {
        const std::string& payload = format->strPayload;
        if (!VideoUtils::IsNumber(payload)) {
            ++other;
            continue;
        }
        const std::string codec = FormatInWords(*format, named.count(payload) != 0);
        if (!codec.empty()) {
            codecs.push_back(codec);
        }
    }
    if (other != 0) {
        codecs.push_back(std::to_string(other) + (other == 1 ? " word that is" : " words that are") +
                         " no payload type");
    }
    return codecs.empty() ? "no codec" : Listed(codecs, most);
}

std::string_view SuiteOf(const ReadLine& line) {
    const std::vector<std::string_view> words =
        line.row == SDPRow::Crypto ? WordsOf(line.text) : std::vector<std::string_view>();
    return words.size() < 3 || words[0].find(':') == std::string_view::npos ? "" : words[1];
}

// In a jumbled line, or one whose neighbour lost its end, key text can stand where the suite belongs. So a
// word that is no name of a suite is counted and not shown.
std::string SuitesInWords(const Section& section) {
    constexpr std::size_t most = 4;
    std::vector<std::string> suites;
    std::size_t unknown = 0;
    for (const ReadLine& line : section.lines) {
        const std::string_view suite = SuiteOf(line);
        if (IsSuiteName(suite)) {
            suites.emplace_back(suite);
        } else if (!suite.empty()) {
            ++unknown;
        }
    }
    if (unknown != 0) {
        suites.push_back(unknown == 1 ? "an unknown suite" : std::to_string(unknown) + " unknown suites");
    }
    return Listed(suites, most);
}

} // namespace cmsdp
