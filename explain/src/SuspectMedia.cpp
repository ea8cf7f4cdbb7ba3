// Stage: suspects in m= lines: media, ports, transports.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kShortLine = {"E20", "P05", ExplainSeverity::Error, 5,
                             "An m= line of fewer than four words opens no section, and the lines after it "
                             "change the section before it or the session (P05)."};
constexpr Rule kUnknownMedia = {
    "E21", "P06", ExplainSeverity::Error, 24,
    "A medium other than audio, video and application opens a section that keeps its place: it counts toward "
    "the sections served, and no section of ours answers it (P06, B18)."};
constexpr Rule kMisnamed = {
    "E29", "P06", ExplainSeverity::Error, 7,
    "The medium is compared letter for letter with audio, video and application; the section of any other is "
    "unknown, and no stream starts from it (P06)."};
constexpr Rule kPort = {
    "E22", "G04", ExplainSeverity::Error, 15,
    "Ports are read as decimal digits and cut to 32 bits, and their range is not checked (G04)."};
constexpr Rule kDiscard = {
    "E169", "", ExplainSeverity::Warning, 18,
    "A port is taken as it stands; 9 is the discard port (RFC 863), which stands for a "
    "port that ICE or a bundle gives, and neither is read."};
constexpr Rule kDeclined = {
    "E23", "", ExplainSeverity::Note, 60,
    "Port 0 declines a section or rejects it, so it neither sends nor receives (RFC 3264, 5.1 and 6)."};
constexpr Rule kBfcpTransport = {"E28", "", ExplainSeverity::Error, 30,
                                 "A section is floor control when its line contains BFCP in capital letters, "
                                 "over whatever transport, and our answer always says UDP/BFCP."};
constexpr Rule kTransport = {"E26", "", ExplainSeverity::Warning, 55,
                             "The transport is not examined: an answer says RTP/AVP, or RTP/SAVP where SRTP "
                             "is on and a key was read, and UDP/BFCP."};
constexpr Rule kDtls = {"E27", "", ExplainSeverity::Error, 50,
                        "DTLS (fingerprint and setup lines) is not read, and the transport is not examined: "
                        "the answer says RTP/AVP and has no a=crypto line and no key."};

constexpr Rule kBundleOnly = {"E179", "", ExplainSeverity::Error, 22,
                              "Port 0 declines a section (RFC 3264, 5.1 and 6); a=bundle-only, with which it "
                              "stands for the port of the "
                              "bundle (RFC 9143, 6), is not read."};

bool IsBundleOnly(const Scene& scene, const MeantSection& section) {
    for (std::size_t i = section.line; i <= section.last; ++i) {
        if (BeginsWith(scene.reading.lines[i].text, "a=bundle-only")) {
            return true;
        }
    }
    return false;
}

/// Whether an m= line has the four words that open a section.
bool HasFormat(std::string_view line) {
    constexpr std::size_t least = 4;
    return WordsOf(line, least).size() == least;
}

void AddShort(Scene& scene, const MeantSection& section, const TextLine& line) {
    std::string formats;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        if (scene.reading.lines[i].meant == SDPRow::Rtpmap) {
            formats += " " + std::string(PayloadOf(scene.reading.lines[i].text));
        }
    }
    if (formats.empty()) {
        formats = section.media == "application" ? " *" : section.media == "video" ? " 97" : " 0";
    }
    const std::string spelled = Canonical(line, scene.reading);
    const bool isGlued = HasFormat(spelled);
    const std::string text =
        isGlued ? spelled
                : "m=" + section.media + " " + (section.port.empty() ? "5004" : section.port) + " " +
                      (section.transport.empty() ? "RTP/AVP" : section.transport) + formats;
    const std::size_t words = WordsOf(line.text).size();
    Blame(scene, kShortLine, line,
          {LineWords(line), " has only ", words == 3 ? "three" : std::to_string(words), " words, a ",
           isGlued ? "word or a blank between two" : "format", " is missing; after it comes ",
           AfterWords(scene.reading, section.line), "."},
          {"write line ", line.number, " as ", InQuotes(text)}, {ReplaceLine(line, text)})
        .isTakenAway = true;
}

/// What comes of a declined section. A video section that is not marked as slides and is not the first one
/// takes the place of the slides: a declined section rarely has a content line.
void AddDeclined(Scene& scene, Suspect& suspect, const MeantSection& section, bool isFurther) {
    const bool isBundled = suspect.rule == &kBundleOnly;
    const std::vector<MeantSection>& sections = scene.reading.sections;
    const bool isSlides = section.media == "video" && (section.isSlides || isFurther);
    const std::string stream = isSlides                         ? "slides"
                               : section.media == "application" ? "floor control"
                                                                : section.media;
    if (!isFurther || isSlides) {
        for (const Topic topic : TopicsOf(section, isSlides)) {
            suspect.Know(
                topic,
                {isBundled ? "The far end offers its bundle alone for " : "The far end has declined ", stream,
                 isBundled ? ", which counts as declined here" : "",
                 topic == Topic::Floor ? ": no floor can be asked for."
                                       : ": the stream does not start, and no media flow either way."});
        }
    }
    if (&section == &sections.front() &&
        std::all_of(sections.begin(), sections.end(),
                    [](const MeantSection& each) { return each.IsDeclined(); })) {
        suspect.Know(Topic::Call, {"The far end has declined every section: nothing starts."});
    }
}

/// Whether digits are parted as thousands are: "5,004", "5.004", "42'012".
bool IsThousands(std::string_view word) {
    const std::size_t sign = word.find_first_not_of("0123456789");
    constexpr std::string_view signs = ",.'";
    constexpr std::size_t group = 3;
    return sign != std::string_view::npos && sign > 0 && signs.find(word[sign]) != std::string_view::npos &&
           word.size() == sign + 1 + group && IsDigits(word.substr(sign + 1));
}

/// The port that a word was meant for: ":11780", "0x6006", "5,004", "192.0.2.1:5004"; a sample for one that
/// tells none.
std::string PortMeant(std::string_view word) {
    constexpr std::size_t longest = 12;
    constexpr long highest = 65535;
    const std::size_t colon = word.rfind(':');
    const std::string_view last = colon == std::string_view::npos ? word : word.substr(colon + 1);
    const std::string lower = Lower(last.substr(0, longest));
    std::string digits = lower;
    digits.erase(std::remove_if(digits.begin(), digits.end(), [](char c) { return c < '0' || c > '9'; }),
                 digits.end());
    const long leading = std::strtol(lower.c_str(), nullptr, 10);
    if (leading > 0 && leading <= highest && !IsThousands(lower)) {
        return std::to_string(leading); // "33002-33010"
    }
    const long port = BeginsWith(lower, "0x") ? std::strtol(lower.c_str(), nullptr, 16)
                                              : std::strtol(digits.c_str(), nullptr, 10);
    return port > 0 && port <= highest ? std::to_string(port) : "49170";
}

/// The edit is made to be shown: what comes of the port is known without it.
std::vector<ExplainTextChange> DiscardCure(const Scene& scene, const TextLine& line) {
    std::vector<ExplainTextChange> changes;
    if (!scene.isBrief) {
        changes.push_back(ReplaceLine(line, WithWord(line, 1, "49170")));
    }
    return changes;
}

/// `isFurther`: a section of the same medium, and of the same content as far as it is told, comes before it.
void AddPort(Scene& scene, const MeantSection& section, const TextLine& line, bool isFurther) {
    const std::string_view digits = std::string_view(section.port).substr(0, section.port.find('/'));
    const bool isUsable = IsDigits(digits) && digits.size() < 6 && std::stoi(std::string(digits)) < 65536;
    if (WordOf(line.text, 1) != section.port) {
        return; // It is in another place, and the spelling of the line is blamed.
    }
    const std::string number = std::to_string(line.number);
    constexpr int discard = 9;
    if (!isUsable) {
        Blame(scene, kPort, line, {LineWords(line), " has ", AsShown(section.port), " as its port."},
              {"write a port from 1 to 65535 in line ", number},
              {ReplaceLine(line, WithWord(line, 1, PortMeant(section.port)))});
    } else if (std::stoi(std::string(digits)) == discard && !isFurther) {
        Suspect& suspect =
            Blame(scene, kDiscard, line, {LineWords(line), " has port 9, the discard port."},
                  {"write the RTP port of the far end in line ", number}, DiscardCure(scene, line));
        suspect.Know(TopicsOf(section, section.isSlides).front(),
                     {"Media go to port 9, where nothing takes them."});
    } else if (std::stoi(std::string(digits)) == 0) {
        // In an answer port 0 rejects, whatever else the section repeats of the offer (RFC 9143, 7.3.3).
        const bool isBundled = !scene.input.remoteAnswers && IsBundleOnly(scene, section);
        Suspect& suspect = Blame(scene, isBundled ? kBundleOnly : kDeclined, line,
                                 {LineWords(line), " has port 0",
                                  isBundled ? " and a=bundle-only, but bundling is not read." : "."},
                                 {"write a port other than 0 in line ", number},
                                 {ReplaceLine(line, WithWord(line, 1, "49170"))});
        AddDeclined(scene, suspect, section, isFurther);
    }
}

void AddTransport(Scene& scene, const MeantSection& section, const TextLine& line) {
    const bool isDtls = section.IsDtls() && section.media != "application";
    const bool isRtp = section.IsStream();
    const std::string exact = !isRtp ? "UDP/BFCP" : section.WantsCrypto() ? "RTP/SAVP" : "RTP/AVP";
    const bool isBfcp = negotiation::IsBfcp(section.transport);
    if ((!isRtp && !isBfcp) || section.transport == exact) {
        return;
    }
    Suspect& suspect = Blame(
        scene,
        isDtls  ? kDtls
        : isRtp ? kTransport
                : kBfcpTransport,
        line,
        {LineWords(line), " has the transport ", AsShown(WordsOf(line.text, 3)[2]), " and not ", exact, "."},
        {"write ", exact, " in line ", line.number}, {ReplaceLine(line, WithWord(line, 2, exact))});
    if (!isRtp) {
        suspect.Know(
            Topic::Floor,
            {"Our answer says UDP/BFCP for what was offered otherwise, so the two ends do not meet."});
    }
}

/// The medium that the lines of a section of an unknown medium tell; empty for one that is known to be
/// another.
std::string_view LikelyMedium(const Scene& scene, const MeantSection& section) {
    if (negotiation::IsBfcp(section.transport)) {
        return "application";
    }
    static constexpr std::string_view kOthers[] = {"text", "image", "message", "data", "control"};
    if (std::find(std::begin(kOthers), std::end(kOthers), section.media) != std::end(kOthers)) {
        return {};
    }
    if (section.transport.find("RTP/") == std::string::npos) {
        return {};
    }
    const bool hasVideoClock =
        std::any_of(section.rtpmap.begin(), section.rtpmap.end(), [&](const auto& entry) {
            return scene.reading.lines[entry.second].text.find("/90000") != std::string_view::npos;
        });
    return hasVideoClock || section.isSlides ? "video" : "audio";
}

void AddUnknown(Scene& scene, const MeantSection& section, const TextLine& line) {
    const auto isKnown = [](std::string_view media) {
        return media == "audio" || media == "video" || media == "application";
    };
    const std::string spelled = line.isPlain ? std::string() : Canonical(line, scene.reading);
    const bool isSpelling = BeginsWith(spelled, "m=") && isKnown(WordOf(spelled, 0).substr(2));
    if (!isKnown(section.media) && !isSpelling) {
        const std::string likely(LikelyMedium(scene, section));
        if (!likely.empty()) {
            Blame(scene, kMisnamed, line,
                  {LineWords(line), " names the medium ", AsShown(section.media), ", and its lines are of ",
                   likely, "."},
                  {"write m=", likely, " in line ", line.number},
                  {ReplaceLine(line, WithWord(line, 0, "m=" + likely))});
        }
        Suspect& suspect =
            Blame(scene, kUnknownMedia, line, {LineWords(line), " is of a medium that is not known."},
                  {"delete the section that begins with line ", line.number},
                  {{line.offset, SectionText(scene.reading, section).size(), {}}});
        suspect.isTakenAway = true;
    }
}

} // namespace

void FindMedia(Scene& scene) {
    std::set<std::pair<std::string_view, bool>> kinds;
    for (const MeantSection& section : scene.reading.sections) {
        const TextLine& line = scene.reading.lines[section.line];
        const bool isFurther = !kinds.emplace(section.media, section.isSlides).second;
        if (!HasFormat(line.text)) {
            AddShort(scene, section, line);
            continue;
        }
        AddPort(scene, section, line, isFurther);
        AddTransport(scene, section, line);
        AddUnknown(scene, section, line);
    }
    FindSections(scene);
}

} // namespace explain
