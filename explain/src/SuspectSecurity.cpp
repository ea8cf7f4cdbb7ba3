// Stage: suspects in what secures a section: its transport, its crypto lines, other ways to give keys.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects. Key text stays in the edits, which replace it by a sample where they must.
// Test: tests/explain/judge_cases.py
#include "Crypto.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kNoLine = {"E67", "", ExplainSeverity::Error, 20,
                          "Without a crypto line that is read a section is not secure, whatever its "
                          "transport says, and it is answered as RTP/AVP."};
constexpr Rule kOneSecure = {"E68", "B13", ExplainSeverity::Error, 11,
                             "Main video is answered as RTP/SAVP when any video section is secure, and gets "
                             "a crypto line only when the main one is (B13)."};
constexpr Rule kPlainTransport = {"E59", "B21", ExplainSeverity::Note, 21,
                                  "The transport is not examined: a crypto line that is read makes a section "
                                  "secure, and with SRTP on it is answered as RTP/SAVP."};

constexpr Rule kPlainOffer = {"E69", "", ExplainSeverity::Note, 55,
                              "With SRTP on only a section with a crypto line that is read is secure; any "
                              "other stays in the clear."};
constexpr Rule kOtherKeys = {
    "E95", "", ExplainSeverity::Note, 54,
    "Keys come from a=crypto lines alone (RFC 4568); DTLS, ZRTP, MIKEY (key-mgmt) and "
    "k= lines are not read."};

/// Lines that offer keys in another way than a=crypto.
void FindOtherKeys(Scene& scene) {
    struct Way {
        std::string_view start;
        const char* name;
    };
    static constexpr Way kWays[] = {
        {"a=fingerprint:", "DTLS"}, {"a=zrtp-hash:", "ZRTP"}, {"a=key-mgmt:", "MIKEY"}, {"k=", "a k= line"}};
    constexpr std::size_t most = 8;
    std::size_t count = 0;
    for (const TextLine& line : scene.reading.lines) {
        const auto* const way = std::find_if(std::begin(kWays), std::end(kWays), [&](const Way& each) {
            return BeginsWith(line.text, each.start);
        });
        const MeantSection* const own = scene.reading.SectionOf(line);
        if (way == std::end(kWays) || (own != nullptr && own->hasCrypto) || ++count > most) {
            continue;
        }
        Suspect& suspect =
            Blame(scene, kOtherKeys, line, {LineWords(line), " offers keys by ", way->name, "."}, {}, {});
        for (const MeantSection& section : scene.reading.sections) {
            if ((own == nullptr || own == &section) && !section.hasCrypto && suspect.known.size() < most) {
                suspect.Know(EncryptionOf(section, section.isSlides),
                             {"No suite and no key are read for it, so it is not encrypted or "
                              "the far end refuses it."});
            }
        }
    }
}

/// What is wrong with the crypto lines of a section; whether it has any.
bool FindCryptoLines(Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 16;
    std::vector<const TextLine*> lines;
    bool hasRead = false;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        if (line.meant == SDPRow::Crypto) {
            const sdp::Suite* const suite = SuiteOf(line);
            hasRead = hasRead || (suite != nullptr && suite->isRead);
            lines.push_back(&line);
        }
    }
    const TextLine* earlier = nullptr;
    for (std::size_t i = 0; i < lines.size() && i < most; ++i) {
        FindCryptoLine(scene, *lines[i], earlier, hasRead, EncryptionOf(section, section.isSlides));
        const sdp::Suite* const suite = SuiteOf(*lines[i]);
        earlier = suite != nullptr && suite->isRead ? lines[i] : earlier;
    }
    return !lines.empty();
}

/// A plain transport before crypto lines.
void AddPlainTransport(Scene& scene, const TextLine& media) {
    std::string text(media.text);
    const std::size_t at = Upper(text).find("RTP/AVP");
    if (at != std::string::npos) {
        text.insert(at + std::string_view("RTP/").size(), "S");
        Blame(scene, kPlainTransport, media, {LineWords(media), " says RTP/AVP, and crypto lines follow it."},
              {"write RTP/SAVP in line ", media.number}, {ReplaceLine(media, text)});
    }
}

/// A section that is secure by its transport, or beside another secure one, and has no crypto line.
void AddNoLine(Scene& scene, const MeantSection& section, bool isOtherSecure) {
    const TextLine& media = scene.reading.lines[section.line];
    const bool isOneSecure = section.media == "video" && !section.isSlides && isOtherSecure;
    const std::string text = std::string("a=crypto:1 ") + kReadSuite + " inline:" + kSampleKey;
    Suspect& suspect = Blame(scene, isOneSecure ? kOneSecure : kNoLine, media,
                             {LineWords(media), " has no crypto line after it",
                              isOneSecure ? ", and the section with a=content:slides has one." : "."},
                             {"insert a crypto line of ", kReadSuite, " after line ", media.number},
                             {InsertAfter(media, text)});
    if (scene.input.remoteAnswers) {
        suspect.SayActed(
            {"Without a crypto line that is read a section is not secure, whatever its transport "
             "says; an answer to RTP/SAVP has one (RFC 4568, 5.1.2)."});
    }
}

void FindSection(Scene& scene, const MeantSection& section, bool isOtherSecure) {
    const TextLine& media = scene.reading.lines[section.line];
    if (FindCryptoLines(scene, section)) {
        if (!section.IsSecure() && !section.IsDtls() && BeginsWith(section.transport, "RTP/AVP")) {
            AddPlainTransport(scene, media);
        }
        return;
    }
    const bool isPlain = !section.WantsCrypto() && !(isOtherSecure && scene.input.srtp);
    if (!isPlain) {
        AddNoLine(scene, section, isOtherSecure);
    } else if (scene.input.srtp && !section.IsDtls()) {
        Blame(scene, kPlainOffer, media,
              {LineWords(media), " says ", AsShown(section.transport), " and has no crypto line after it."},
              {}, {})
            .Know(EncryptionOf(section, section.isSlides),
                  {"The far end wants no encryption here: no suite and no "
                   "key, and our text says RTP/AVP."});
    }
}

} // namespace

void FindSecurity(Scene& scene) {
    FindOtherKeys(scene);
    const Reading& reading = scene.reading;
    constexpr std::size_t most = 16;
    bool isVideoSecure = false;
    for (const MeantSection& section : reading.sections) {
        isVideoSecure = isVideoSecure || (section.media == "video" && section.hasCrypto);
    }
    for (std::size_t i = 0; i < reading.sections.size() && i < most; ++i) {
        const MeantSection& section = reading.sections[i];
        if (section.IsStream()) {
            FindSection(scene, section, section.media == "video" && isVideoSecure);
        }
    }
}

} // namespace explain
