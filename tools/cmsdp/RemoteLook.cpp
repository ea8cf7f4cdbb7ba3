// Follows the component where it matters for a reason: a line counts when it ends in CR LF, "c=" anywhere in
// it makes it a connection line, and "m=" anywhere in any other makes it a media line.
//
// Tests: tests/tool/RemoteLookTest.cpp
#include "RemoteLook.h"

#include "Names.h"
#include "Words.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

namespace cmsdp {

namespace {

bool Contains(std::string_view text, std::string_view piece) {
    return text.find(piece) != std::string_view::npos;
}

bool BeginsWith(std::string_view text, std::string_view start) {
    return text.compare(0, start.size(), start) == 0;
}

// A port as the component converts it: leading digits count, and none are 0.
bool IsZero(std::string_view port) {
    return std::strtol(std::string(port).c_str(), nullptr, 10) == 0;
}

// How the line begins, for a message. Key text strays: the end of a crypto attribute that was wrapped can
// hold "c=" in the padding of its key, and a lost line end joins a crypto attribute to another line. So of a
// joined line the first part alone is shown, and nothing of a crypto attribute or of what begins like no line
// at all.
std::string Beginning(std::string_view line) {
    const std::string_view first = line.substr(0, line.find_first_of("\r\n"));
    if (!LooksLikeSdp(first) || Contains(first, "a=crypto")) {
        return "; it may hold key text, so it is not shown";
    }
    return ": " + Quoted(first.size() == line.size() ? std::string(first) : std::string(first) + "...");
}

class Looker {
public:
    RemoteLook Look(std::string_view text);

private:
    void Line(std::string_view line);
    void Media(const std::vector<std::string_view>& words, std::string_view line);
    void Attribute(std::string_view line);
    void Suite(std::string_view word);
    void RtpMap(std::string_view line);
    void NoteMisread(std::string_view line, const char* keyword, const char* kind);

    RemoteLook m_look;
    // Formats of the last section by payload text; the first of a number counts.
    std::unordered_map<std::string, std::size_t> m_formatOf;
    std::size_t m_lineNumber = 0;
};

RemoteLook Looker::Look(std::string_view text) {
    std::size_t end = 0;
    while ((end = text.find("\r\n")) != std::string_view::npos) {
        ++m_lineNumber;
        Line(text.substr(0, end));
        text.remove_prefix(end + 2);
    }
    return std::move(m_look);
}

void Looker::Line(std::string_view line) {
    if (Contains(line, "c=")) {
        if (WordsOf(line).size() >= 3) {
            NoteMisread(line, "c=", "a connection line");
        }
        return;
    }
    if (Contains(line, "m=")) {
        const std::vector<std::string_view> words = WordsOf(line);
        if (words.size() >= 4) {
            NoteMisread(line, "m=", "a media line");
            Media(words, line);
        }
        return;
    }
    if (!m_look.sections.empty()) {
        Attribute(line);
    }
}

// What costs hours is a keyword deep inside a value; a line that begins with it, after blanks, is meant so.
void Looker::NoteMisread(std::string_view line, const char* keyword, const char* kind) {
    constexpr std::size_t mostNotes = 8;
    while (!line.empty() && IsBlank(line.front())) {
        line.remove_prefix(1);
    }
    if (BeginsWith(line, keyword) || m_look.notes.size() >= mostNotes) {
        return;
    }
    m_look.notes.push_back("line " + std::to_string(m_lineNumber) + " is taken for " + kind +
                           ", because it holds \"" + keyword + '"' + Beginning(line));
}

void Looker::Media(const std::vector<std::string_view>& words, std::string_view line) {
    SeenSection section;
    section.media = BeginsWith(words[0], "m=") ? words[0].substr(2) : words[0];
    section.transport = Short(words[2]);
    section.declined = IsZero(words[1]);
    section.floorControl = section.media == "application" && Contains(line, "BFCP");
    m_formatOf = {}; // Not clear(), whose cost is that of the largest section so far.
    for (std::size_t i = 3; i < words.size(); ++i) {
        m_formatOf.emplace(words[i], section.formats.size());
        section.formats.push_back({std::string(words[i]), {}});
    }
    m_look.sections.push_back(std::move(section));
}

void Looker::Attribute(std::string_view line) {
    SeenSection& section = m_look.sections.back();
    if (Contains(line, "a=rtpmap")) {
        RtpMap(line);
    } else if (Contains(line, "a=crypto:") && !Contains(line, "a=fmtp:")) {
        const std::vector<std::string_view> words = WordsOf(line);
        if (words.size() >= 3 && Contains(words[0], ":")) {
            Suite(words[1]);
        }
    } else if (Contains(line, "a=content:")) {
        if (Contains(line, "a=content:main")) {
            section.slides = false;
        } else if (Contains(line, "a=content:slides")) {
            section.slides = section.media == "video";
        }
    }
}

// In a jumbled line, or one whose neighbour lost its end, key text can stand where the suite belongs. So a
// word that is no name of a suite is counted and not kept: what is not kept cannot be shown.
void Looker::Suite(std::string_view word) {
    SeenSection& section = m_look.sections.back();
    if (IsSuiteName(word)) {
        section.suites.emplace_back(word);
    } else {
        ++section.unknownSuites;
    }
}

void Looker::RtpMap(std::string_view line) {
    constexpr std::size_t keyword = 9;
    const std::vector<std::string_view> words = WordsOf(line);
    // The attribute may stand behind a crypto attribute that lost its line end; then the second word is not a
    // name, and may be key text.
    if (words.size() < 2 || words[0].size() < keyword || !BeginsWith(words[0], "a=rtpmap")) {
        return;
    }
    const auto format = m_formatOf.find(std::string(words[0].substr(keyword)));
    if (format != m_formatOf.end()) {
        m_look.sections.back().formats[format->second].encoding = Short(words[1]);
    }
}

template <typename Test>
const SeenSection* FindFirst(const RemoteLook& look, Test test) {
    const auto found = std::find_if(look.sections.begin(), look.sections.end(), test);
    return found == look.sections.end() ? nullptr : &*found;
}

// Payload numbers that mean a codec without an rtpmap attribute (RFC 3551, 6).
const char* StaticName(const std::string& payload) {
    static const std::unordered_map<std::string, const char*> names = {
        {"0", "PCMU"},   {"3", "GSM"},   {"4", "G723"}, {"8", "PCMA"},  {"9", "G722"},
        {"12", "QCELP"}, {"13", "CN"},   {"14", "MPA"}, {"15", "G728"}, {"18", "G729"},
        {"26", "JPEG"},  {"31", "H261"}, {"32", "MPV"}, {"33", "MP2T"}, {"34", "H263"},
    };
    const auto found = names.find(payload);
    return found == names.end() ? nullptr : found->second;
}

} // namespace

RemoteLook LookAt(std::string_view text) {
    return Looker().Look(text);
}

const SeenSection* FindAudio(const RemoteLook& look) {
    return FindFirst(look, [](const SeenSection& s) { return s.media == "audio"; });
}

const SeenSection* FindVideo(const RemoteLook& look, bool slides) {
    return FindFirst(look,
                     [slides](const SeenSection& s) { return s.media == "video" && s.slides == slides; });
}

const SeenSection* FindFloorControl(const RemoteLook& look) {
    return FindFirst(look, [](const SeenSection& s) { return s.floorControl; });
}

// Tokens that are no payload number are counted, not shown: after a lost line end they can be anything.
std::string CodecsInWords(const SeenSection& section) {
    constexpr std::size_t most = 8;
    std::vector<std::string> codecs;
    std::size_t other = 0;
    for (const SeenFormat& format : section.formats) {
        const bool number = std::all_of(format.payload.begin(), format.payload.end(),
                                        [](char c) { return c >= '0' && c <= '9'; });
        if (!number) {
            ++other;
        } else if (!format.encoding.empty()) {
            if (!BeginsWith(format.encoding, "telephone-event/")) {
                codecs.push_back(format.encoding + " (" + format.payload + ")");
            }
        } else if (const char* name = StaticName(format.payload)) {
            codecs.push_back(std::string(name) + " (" + format.payload + ")");
        } else {
            codecs.push_back("payload type " + format.payload + " without a name");
        }
    }
    if (other != 0) {
        codecs.push_back(std::to_string(other) + (other == 1 ? " word that is" : " words that are") +
                         " no payload type");
    }
    return codecs.empty() ? "no codec" : Listed(codecs, most);
}

std::string SuitesInWords(const SeenSection& section) {
    constexpr std::size_t most = 4;
    std::vector<std::string> suites = section.suites;
    if (section.unknownSuites != 0) {
        suites.push_back(section.unknownSuites == 1
                             ? "an unknown suite"
                             : std::to_string(section.unknownSuites) + " unknown suites");
    }
    return Listed(suites, most);
}

} // namespace cmsdp
