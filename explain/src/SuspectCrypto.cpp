// Stage: suspects in one crypto line (RFC 4568): its spelling, suite, tag, key and parameters.
// Input: the line. Output: suspects.
// Touches the list of suspects. Key text stays in the edits, which replace it by a sample where they must.
// Test: tests/explain/judge_cases.py
#include "Crypto.h"

#include "SDPKeyword.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

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
constexpr Rule kMethod = {"E58", "P21", ExplainSeverity::Error, 11,
                          "The seven characters before the key are skipped, whatever they are, and the rest "
                          "is read as if it were inline: (P21; RFC 4568, 6.1)."};

constexpr Rule kLongTag = {"E152", "G04", ExplainSeverity::Error, 12,
                           "A tag is cut to 32 bits, and the answer repeats what is left (G04; RFC 4568, 9.1 "
                           "has tags of at most nine digits)."};
constexpr Rule kShortCrypto = {"E157", "", ExplainSeverity::Error, 8,
                               "A crypto line has three words at least, tag, suite and key; one of fewer is "
                               "dropped, suite and key included (RFC 4568, 9.1)."};

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

/// What comes after the seven characters that are skipped.
std::string_view KeyText(const CryptoWords& words) {
    return words.key.substr(std::min(sdp::kKeyMethod.size(), words.key.size()));
}

/// Whether the key text begins with 40 characters of base64.
bool HasKey(const CryptoWords& words) {
    const std::string_view key = KeyText(words).substr(0, sdp::kKeyTextLength);
    return key.size() == sdp::kKeyTextLength &&
           key.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/") ==
               std::string_view::npos;
}

std::string KeyOrSample(const CryptoWords& words) {
    return HasKey(words) ? std::string(KeyText(words).substr(0, sdp::kKeyTextLength)) : kSampleKey;
}

/// What is wrong with the spelling of a crypto line.
const char* SpellingWords(const TextLine& line, const CryptoWords& words, const std::string& canonical) {
    if (!BeginsWith(Lower(Trimmed(line.text)), "a=crypto")) {
        return " does not begin with a=crypto:.";
    }
    if (!BeginsWith(Lower(Trimmed(line.text)), "a=crypto:") && !BeginsWith(Lower(line.text), "a=crypto ")) {
        return " has no colon after a=crypto.";
    }
    if (words.tag.empty()) {
        return " has a blank where its tag belongs.";
    }
    if (words.count < 3) {
        return " has fewer than three words, because a blank is missing between two of them.";
    }
    if (!IsDigits(words.tag)) {
        return " has a tag that is not a number, so it reads as 1.";
    }
    if (Lower(line.text) == Lower(canonical)) {
        return " differs in letter case from what is compared.";
    }
    if (line.text.find_first_of("\"'<") != std::string_view::npos) {
        return " has quotes round its key.";
    }
    if (BeginsWith(words.key, "inline:") && Cut(canonical).suite != words.suite) {
        return " has a suite that is not spelled as it is registered.";
    }
    return BeginsWith(words.key, "inline:") ? " has a blank or a word where none belongs."
                                            : " has no inline: at the start of its third word.";
}

/// Spelling and key method.
void FindSpelling(Scene& scene, const TextLine& line, const CryptoWords& words, bool isRead, Topic topic) {
    const std::string number = std::to_string(line.number);
    const std::string canonical = Canonical(line, scene.reading);
    if (canonical != line.text) {
        Suspect& suspect =
            Blame(scene, kSpelledSuite, line, {LineWords(line), SpellingWords(line, words, canonical)},
                  {"write line ", number, " as ", InQuotes(canonical)}, {ReplaceLine(line, canonical)});
        if (!BeginsWith(line.text, "a=crypto:")) {
            suspect.SayActed({"A keyword is compared letter for letter, so a line that does not begin with "
                              "a=crypto: gives no suite and no key."});
            suspect.ledger = "G02";
        } else if (words.count < 3) {
            suspect.SayActed({kShortCrypto.acted});
        } else if (SuiteOf(line) != nullptr) {
            suspect.SayActed(
                {"The third word has the key after seven characters that are skipped, and a blank "
                 "ends it; without 40 characters of base64 there the suite stands without a key "
                 "(P12, P21)."});
            suspect.ledger = "P12";
        }
    }
    const std::size_t colon = words.key.find(':');
    if (isRead && colon < words.key.size() && !BeginsWith(words.key, "inline:")) {
        Blame(scene, kMethod, line, {LineWords(line), " has another key method than inline:."},
              {"write inline: before the key in line ", number},
              {ReplaceLine(line, Rewritten(words, words.suite, std::string(words.key.substr(colon + 1))))})
            .Know(topic, {"What stands there is used as the key, and it is not the one that the "
                          "far end uses, so packets fail to decrypt."});
    }
}

/// A line that replaces an earlier one.
void AddLater(Scene& scene, const Rule& rule, const TextLine& line, const TextLine& earlier,
              const char* words) {
    Suspect& suspect = Blame(scene, rule, line, {LineWords(line), words, earlier.number, "."},
                             {"delete line ", line.number}, {DeleteLine(line)});
    suspect.lines.push_back(earlier.number);
    suspect.isTakenAway = true;
}

/// A line whose suite is not read, `what`: the suite that is read, in its place.
void AddSuite(Scene& scene, const Rule& rule, const TextLine& line, const CryptoWords& words,
              const char* what) {
    Blame(scene, rule, line, {LineWords(line), what}, {"offer ", kReadSuite, " in line ", line.number},
          {ReplaceLine(line, Rewritten(words, kReadSuite, KeyOrSample(words)))});
}

void FindKeyParameters(Scene& scene, const TextLine& line, Topic topic) {
    const std::vector<std::string_view> words = WordsOf(line.text, 4);
    const std::size_t bar = words.size() > 2 ? words[2].find('|') : std::string_view::npos;
    const bool hasMki = bar != std::string_view::npos && words[2].find(':', bar) != std::string_view::npos;
    if (!hasMki && words.size() < 4) {
        return;
    }
    const std::string text =
        std::string(words[0]) + " " + std::string(words[1]) + " " + std::string(words[2].substr(0, bar));
    Blame(scene, kParameters, line,
          {LineWords(line), hasMki ? " has an MKI after its key" : " has the session parameter ",
           hasMki ? Piece("") : AsShown(words[3]), "."},
          {"leave it out in line ", line.number}, {ReplaceLine(line, text)})
        .Know(topic,
              {hasMki ? "Their packets carry an MKI that the engine does not expect, so they fail to decrypt."
                      : "The engine does not follow the parameter, so the two ends may protect packets "
                        "differently."});
}

/// A key that cannot be read, of a suite that is read.
void AddBadKey(Scene& scene, const TextLine& line, const CryptoWords& words) {
    const std::size_t length = KeyText(words).size();
    const bool isLong = length >= sdp::kKeyTextLength;
    Blame(scene, kBadKey, line,
          {LineWords(line),
           isLong ? " has a key with a character that is not base64 among its " : " has a key of ",
           isLong ? sdp::kKeyTextLength : length,
           isLong ? " characters." : " characters, not of 40 of base64."},
          {"write 40 base64 characters after inline: in line ", line.number},
          {ReplaceLine(line, Rewritten(words, words.suite, kSampleKey))});
}

/// A tag that is no number, or too large a one.
void FindTag(Scene& scene, const TextLine& line, const CryptoWords& words, Topic topic) {
    if (IsOver32Bits(words.tag) && IsDigits(words.tag)) {
        CryptoWords usable = words;
        usable.tag = "1";
        Blame(scene, kLongTag, line, {LineWords(line), " has a tag of more than 32 bits."},
              {"write a tag of at most nine digits in line ", line.number},
              {ReplaceLine(line, Rewritten(usable, words.suite, KeyOrSample(words)))})
            .Know(topic,
                  {"Our answer says another tag, which the far end did not write and may not accept."});
    }
    if (!IsDigits(words.tag) && words.tag.find_first_of("0123456789") == std::string_view::npos) {
        Blame(scene, kTag, line, {LineWords(line), " has a tag that is not a number."},
              {"write a number as the tag of line ", line.number},
              {ReplaceLine(line, Rewritten(words, words.suite, KeyOrSample(words)))})
            .Know(topic, {"Our answer says tag 1, which the far end did not write and may not accept."});
    }
}

} // namespace

const sdp::Suite* SuiteOf(const TextLine& line) {
    return sdp::FindNamed<sdp::kSuites>(Cut(line.text).suite);
}

void FindCryptoLine(Scene& scene, const TextLine& line, const TextLine* earlier, bool hasRead, Topic topic) {
    FindKeyParameters(scene, line, topic);
    const CryptoWords words = Cut(line.text);
    const sdp::Suite* const suite = SuiteOf(line);
    const bool isRead = suite != nullptr && suite->isRead;
    FindSpelling(scene, line, words, isRead, topic);
    if (words.count < 3) {
        if (Canonical(line, scene.reading) == line.text) {
            AddSuite(scene, kShortCrypto, line, words, " has fewer than three words.");
        }
        return;
    }
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
        AddBadKey(scene, line, words);
    } else if (earlier != nullptr) {
        AddLater(scene, kLater, line, *earlier, " comes after line ");
    }
    FindTag(scene, line, words, topic);
}

} // namespace explain
