// Stage: suspects in crypto lines and in what they need on this side (RFC 4568).
// Input: the crypto lines of each section, the local suites. Output: suspects.
// Touches the list of suspects. Key text stays in the edits, which replace it by a sample where they must.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;
using CryptoParams = Quor::media::rtp::CryptoParams;

constexpr Rule kSkipped = {"E60", "P10", ExplainSeverity::Error, 10,
                           "Crypto lines of the two 80-bit suites are skipped, tag and key included, so they "
                           "give no suite and no key (P10)."};
constexpr Rule kUnknownSuite = {"E61", "P11", ExplainSeverity::Error, 9,
                                "A line of an unknown suite sets no suite, but its tag and key replace those "
                                "of the line before it (P11)."};
constexpr Rule kBadKey = {"E62", "P12", ExplainSeverity::Error, 8,
                          "A key is 40 characters of base64 after seven that are skipped; with anything else "
                          "the suite stands without its key (P12, P21)."};
constexpr Rule kTag = {"E63", "P19", ExplainSeverity::Error, 12,
                       "A tag that is not a number reads as 1, and the answer repeats it (P19)."};
constexpr Rule kSpelledSuite = {"E64", "P11", ExplainSeverity::Error, 7,
                                "The suite is the second word and is compared letter for letter; of another "
                                "spelling it is unknown, so its key is stored without a suite (P11)."};
constexpr Rule kLater = {"E65", "P11", ExplainSeverity::Note, 45,
                         "Of several crypto lines of one suite the last one stands, with its tag and key."};
constexpr Rule kParameters = {
    "E66", "", ExplainSeverity::Warning, 46,
    "Lifetime, MKI and session parameters are not read: the record has suite, key and salt alone."};
constexpr Rule kNoLine = {"E67", "", ExplainSeverity::Error, 20,
                          "Without a crypto line that is read a section is not secure, whatever its "
                          "transport says, and it is answered as RTP/AVP."};
constexpr Rule kOneSecure = {"E68", "B13", ExplainSeverity::Error, 9,
                             "Main video is answered as RTP/SAVP when any video section is secure, and gets "
                             "a crypto line only when the main one is (B13)."};
constexpr Rule kPlainTransport = {"E59", "B21", ExplainSeverity::Note, 21,
                                  "The transport is not examined: a crypto line that is read makes a section "
                                  "secure, and with SRTP on it is answered as RTP/SAVP."};

constexpr Rule kPlainOffer = {"E69", "", ExplainSeverity::Note, 55,
                              "With SRTP on only a section with a crypto line that is read is secure; any "
                              "other stays in the clear."};
constexpr Rule kMethod = {"E58", "P21", ExplainSeverity::Error, 11,
                          "The seven characters before the key are skipped, whatever they are, and the rest "
                          "is read as if it were inline: (P21; RFC 4568, 6.1)."};

constexpr Rule kOtherKeys = {
    "E95", "", ExplainSeverity::Note, 54,
    "Keys come from a=crypto lines alone (RFC 4568); DTLS, ZRTP, MIKEY (key-mgmt) and "
    "k= lines are not read."};

/// Stands where a key has to be written; it is never shown and no key of anybody.
constexpr const char* kSampleKey = "MDEyMzQ1Njc4OWFiY2RlZjAxMjM0NTY3ODlhYmNk";
constexpr const char* kReadSuite = "AES_CM_128_HMAC_SHA1_32";

/// The words of a crypto line as meant: tag, suite, key text.
struct CryptoWords {
    std::string_view tag;
    std::string_view suite;
    std::string_view key;
    std::size_t count = 0;
};

CryptoWords Cut(std::string_view line) {
    const std::vector<std::string_view> words = WordsOf(line, 5);
    CryptoWords cut;
    cut.count = words.size();
    cut.tag = words.empty() ? std::string_view()
                            : words[0].substr(std::min(words[0].find(':'), words[0].size() - 1) + 1);
    cut.suite = words.size() > 1 ? words[1] : std::string_view();
    cut.key = words.size() > 2 ? words[2] : std::string_view();
    return cut;
}

std::string Rewritten(const CryptoWords& words, std::string_view suite, const std::string& key) {
    return "a=crypto:" + std::string(IsDigits(words.tag) ? words.tag : "1") + " " + std::string(suite) +
           " inline:" + key;
}

/// Forty characters of base64 after the seven that are skipped.
bool HasKey(const CryptoWords& words) {
    const std::string_view key = words.key.size() > 7 ? words.key.substr(7) : std::string_view();
    return key.size() >= 40 &&
           key.substr(0, 40).find_first_not_of(
               "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/") == std::string_view::npos;
}

std::string KeyOrSample(const CryptoWords& words) {
    return HasKey(words) ? std::string(words.key.substr(7, 40)) : kSampleKey;
}

Topic TopicOf(const MeantSection& section) {
    return section.media == "audio" ? Topic::EncryptionAudio
           : section.isSlides       ? Topic::EncryptionSlides
                                    : Topic::EncryptionMain;
}

/// What is wrong with the spelling of a crypto line.
const char* SpellingWords(const TextLine& line, const CryptoWords& words, const std::string& canonical) {
    if (words.tag.empty()) {
        return " has a blank where its tag belongs.";
    }
    if (!IsDigits(words.tag)) {
        return " has a tag that is not a number, so it reads as 1.";
    }
    if (Lower(line.text) == Lower(canonical)) {
        return " differs in letter case from what is compared.";
    }
    return BeginsWith(words.key, "inline:") ? " has a blank or a word where none belongs."
                                            : " has no inline: at the start of its third word.";
}

/// Spelling and key method.
void FindSpelling(Scene& scene, const TextLine& line, const CryptoWords& words, bool isRead, Topic topic) {
    const std::string number = std::to_string(line.number);
    const std::string canonical = Canonical(line, scene.reading);
    if (canonical != line.text) {
        Blame(scene, kSpelledSuite, line, LineWords(scene, line) + SpellingWords(line, words, canonical),
              "write line " + number + " as " + Quoted(canonical), {ReplaceLine(line, canonical)});
    }
    const std::size_t colon = words.key.find(':');
    if (isRead && colon < words.key.size() && !BeginsWith(words.key, "inline:")) {
        Blame(scene, kMethod, line, LineWords(scene, line) + " has another key method than inline:.",
              "write inline: before the key in line " + number,
              {ReplaceLine(line, Rewritten(words, words.suite, std::string(words.key.substr(colon + 1))))})
            .known.emplace_back(topic, "What stands there is used as the key, and it is not the one that the "
                                       "far end uses, so packets fail to decrypt.");
    }
}

/// A line that replaces an earlier one.
void AddLater(Scene& scene, const Rule& rule, const TextLine& line, const TextLine& earlier,
              const char* words) {
    Suspect& suspect =
        Blame(scene, rule, line, LineWords(scene, line) + words + std::to_string(earlier.number) + ".",
              "delete line " + std::to_string(line.number), {DeleteLine(line)});
    suspect.lines.push_back(earlier.number);
    suspect.isTakenAway = true;
}

/// A line whose suite is not read, `what`: the suite that is read, in its place.
void AddSuite(Scene& scene, const Rule& rule, const TextLine& line, const CryptoWords& words,
              const char* what) {
    Blame(scene, rule, line, LineWords(scene, line) + what,
          "offer " + std::string(kReadSuite) + " in line " + std::to_string(line.number),
          {ReplaceLine(line, Rewritten(words, kReadSuite, KeyOrSample(words)))});
}

void FindLine(Scene& scene, const TextLine& line, const TextLine* earlier, bool hasRead, Topic topic) {
    const CryptoWords words = Cut(line.text);
    const std::string number = std::to_string(line.number);
    const sdp::Suite* const suite = sdp::FindNamed<sdp::kSuites>(words.suite);
    const bool isRead = suite != nullptr && suite->isRead;
    FindSpelling(scene, line, words, isRead, topic);
    if (suite != nullptr && !isRead) {
        if (!hasRead) {
            AddSuite(scene, kSkipped, line, words, " offers a suite with an 80-bit tag.");
        }
        return;
    }
    if (suite == nullptr) {
        if (earlier != nullptr) {
            AddLater(scene, kUnknownSuite, line, *earlier, " of an unknown suite comes after line ");
        }
        AddSuite(scene, kUnknownSuite, line, words, " offers a suite that is not known.");
        return;
    }
    if (!HasKey(words)) {
        Blame(scene, kBadKey, line,
              LineWords(scene, line) + " has a key of " +
                  std::to_string(words.key.size() > 7 ? words.key.size() - 7 : 0) +
                  " characters, not of 40 of base64.",
              "write 40 base64 characters after inline: in line " + number,
              {ReplaceLine(line, Rewritten(words, words.suite, kSampleKey))});
    } else if (earlier != nullptr) {
        AddLater(scene, kLater, line, *earlier, " comes after line ");
    }
    if (!IsDigits(words.tag) && words.tag.find_first_of("0123456789") == std::string_view::npos) {
        Blame(scene, kTag, line, LineWords(scene, line) + " has a tag that is not a number.",
              "write a number as the tag of line " + number,
              {ReplaceLine(line, Rewritten(words, words.suite, KeyOrSample(words)))})
            .known.emplace_back(topic, "Our answer says tag 1, which the far end did not write and may not "
                                       "accept.");
    }
}

void FindKeyParameters(Scene& scene, const TextLine& line, Topic topic) {
    const std::vector<std::string_view> words = WordsOf(line.text, 4);
    const std::size_t bar = words.size() > 2 ? words[2].find('|') : std::string_view::npos;
    const bool hasMki = bar != std::string_view::npos && words[2].find(':', bar) != std::string_view::npos;
    if (!hasMki && words.size() < 4) {
        return;
    }
    const std::string what =
        hasMki ? " has an MKI after its key." : " has the session parameter " + Shown(words[3]) + ".";
    const std::string text =
        std::string(words[0]) + " " + std::string(words[1]) + " " + std::string(words[2].substr(0, bar));
    Blame(scene, kParameters, line, LineWords(scene, line) + what,
          "leave it out in line " + std::to_string(line.number), {ReplaceLine(line, text)})
        .known.emplace_back(
            topic,
            hasMki ? "Their packets carry an MKI that the engine does not expect, so they fail to decrypt."
                   : "The engine does not follow the parameter, so the two ends may protect packets "
                     "differently.");
}

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
        Suspect& suspect = Blame(scene, kOtherKeys, line,
                                 LineWords(scene, line) + " offers keys by " + way->name + ".", "", {});
        for (const MeantSection& section : scene.reading.sections) {
            if ((own == nullptr || own == &section) && !section.hasCrypto && suspect.known.size() < most) {
                suspect.known.emplace_back(TopicOf(section),
                                           "No suite and no key are read for it, so it is not encrypted or "
                                           "the far end refuses it.");
            }
        }
    }
}

void FindSection(Scene& scene, const MeantSection& section, bool isOtherSecure) {
    const TextLine& media = scene.reading.lines[section.line];
    const TextLine* earlier = nullptr;
    bool hasLine = false;
    constexpr std::size_t most = 16;
    std::size_t count = 0;
    bool hasRead = false;
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        const sdp::Suite* const suite =
            line.meant == SDPRow::Crypto ? sdp::FindNamed<sdp::kSuites>(Cut(line.text).suite) : nullptr;
        hasRead = hasRead || (suite != nullptr && suite->isRead);
    }
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        if (line.meant != SDPRow::Crypto || ++count > most) {
            continue;
        }
        hasLine = true;
        FindLine(scene, line, earlier, hasRead, TopicOf(section));
        FindKeyParameters(scene, line, TopicOf(section));
        const sdp::Suite* const suite = sdp::FindNamed<sdp::kSuites>(Cut(line.text).suite);
        earlier = suite != nullptr && suite->isRead ? &line : earlier;
    }
    const bool isSecure = section.transport.find("SAVP") != std::string::npos &&
                          section.transport.find("TLS") == std::string::npos;
    if (hasLine && section.transport.find("SAVP") == std::string::npos &&
        section.transport.find("TLS") == std::string::npos && section.transport.find("RTP/AVP") == 0) {
        std::string text(media.text);
        const std::size_t at = Upper(text).find("RTP/AVP");
        text.insert(at + 4, "S");
        Blame(scene, kPlainTransport, media,
              LineWords(scene, media) + " says RTP/AVP, and crypto lines follow it.",
              "write RTP/SAVP in line " + std::to_string(media.number), {ReplaceLine(media, text)});
    }
    const bool isPlain = !isSecure && !(isOtherSecure && scene.input.srtp);
    if (!hasLine && isPlain && scene.input.srtp && section.transport.find("TLS") == std::string::npos) {
        Blame(scene, kPlainOffer, media,
              LineWords(scene, media) + " says " + Shown(section.transport) +
                  " and has no crypto line after it.",
              "", {})
            .known.emplace_back(TopicOf(section), "The far end wants no encryption here: no suite and no "
                                                  "key, and our text says RTP/AVP.");
    }
    if (hasLine || isPlain) {
        return;
    }
    const bool isMain = section.media == "video" && !section.isSlides;
    const std::string text = std::string("a=crypto:1 ") + kReadSuite + " inline:" + kSampleKey;
    Blame(scene, isMain && isOtherSecure ? kOneSecure : kNoLine, media,
          LineWords(scene, media) + " has no crypto line after it" +
              (isMain && isOtherSecure ? ", and the section with a=content:slides has one." : "."),
          "insert a crypto line of " + std::string(kReadSuite) + " after line " +
              std::to_string(media.number),
          {InsertAfter(media, text)});
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
        if (section.media == "audio" || section.media == "video") {
            FindSection(scene, section, section.media == "video" && isVideoSecure);
        }
    }
}

} // namespace explain
