// Stage: suspects that only offer and answer together show (RFC 3264, 6; RFC 4568, 5.1.3).
// Input: our offer and the far end's answer to it. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Crypto.h"
#include "FormatLines.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kMissing = {"E140", "", ExplainSeverity::Error, 6,
                           "An answer has one section for each section of the offer, in its order, and "
                           "refuses one with port 0 (RFC 3264, 6)."};
constexpr Rule kSurplus = {"E148", "", ExplainSeverity::Error, 26,
                           "An answer has one section for each section of the offer (RFC 3264, 6)."};
constexpr Rule kAnswerOrder = {
    "E141", "", ExplainSeverity::Error, 5,
    "The sections of an answer stand in the order of the offer (RFC 3264, 6); this side "
    "finds them by their kind, another end by their place."};
constexpr Rule kPlain = {
    "E144", "", ExplainSeverity::Error, 6,
    "The transport is not examined: an answer without a usable crypto line leaves the stream without suite "
    "and key, and a secure offer must never be started in the clear."};
constexpr Rule kForeignTag = {
    "E145", "", ExplainSeverity::Error, 7,
    "The answer repeats tag and suite of the crypto line that it accepts (RFC 4568, "
    "5.1.3); this side takes what it reads."};
constexpr Rule kUnaskedKey = {"E149", "", ExplainSeverity::Error, 6,
                              "The answer has the transport of the offer (RFC 3264, 6.1); a key in an answer "
                              "to a plain offer is taken as it stands."};
constexpr Rule kOwnKey = {
    "E147", "", ExplainSeverity::Error, 4,
    "The key of their line is the one that they send with; it has to differ from ours (RFC 4568, 6.1)."};

std::vector<Topic> TopicsOfPair(const MeantSection& section, bool isSlides) {
    std::vector<Topic> topics = TopicsOf(section, isSlides);
    topics.push_back(Topic::Call);
    return topics;
}

/// Whether the answer has a further video section of the kind that is at this place of the offer.
bool HasOther(const Scene& scene, std::size_t at) {
    const std::vector<MeantSection>& sections = scene.reading.sections;
    return std::any_of(sections.begin(), sections.end(), [&](const MeantSection& section) {
        return section.media == "video" && section.isSlides != sections[at].isSlides;
    });
}

const TextLine* CryptoOf(const Reading& reading, const MeantSection& section) {
    for (std::size_t i = section.line; i <= section.last; ++i) {
        if (reading.lines[i].meant == SDPRow::Crypto) {
            return &reading.lines[i];
        }
    }
    return nullptr;
}

/// A key of any section of our offer in their line.
void AddOwnKey(Scene& scene, const Reading& offer, const TextLine* theirLine, Topic topic) {
    constexpr std::size_t keyEnd = sdp::kKeyMethod.size() + sdp::kKeyTextLength;
    const std::vector<std::string_view> their =
        theirLine == nullptr ? std::vector<std::string_view>() : WordsOf(theirLine->text, 3);
    for (const TextLine& line : offer.lines) {
        const std::vector<std::string_view> our =
            line.meant == SDPRow::Crypto ? WordsOf(line.text, 3) : std::vector<std::string_view>();
        if (our.size() == 3 && their.size() == 3 && our[2].substr(0, keyEnd) == their[2].substr(0, keyEnd)) {
            Blame(scene, kOwnKey, *theirLine, {LineWords(*theirLine), " repeats a key of our own offer."},
                  {"answer with a key of the far end's own"}, {})
                .Know(topic, {"Both directions would use one key, which breaks the encryption."});
            return;
        }
    }
}

/// A plain answer to a secure offer, and a secure answer to a plain one.
void FindTransports(Scene& scene, const MeantSection& ours, const MeantSection& theirs, Topic topic) {
    const TextLine& media = scene.reading.lines[theirs.line];
    if (theirs.IsDeclined()) {
        return;
    }
    if (ours.IsSecure() && !theirs.IsSecure()) {
        Blame(scene, kPlain, media,
              {LineWords(media), " answers our ", ours.transport, " with ", AsShown(theirs.transport), "."},
              {"refuse the call or offer RTP/AVP"}, {})
            .Know(topic,
                  {"The far end does not encrypt: no suite and no key, and media would flow in the clear."});
    }
    if (!scene.input.ourOffer.empty() && ours.transport == "RTP/AVP" && theirs.transport == "RTP/SAVP") {
        Blame(scene, kUnaskedKey, media,
              {LineWords(media), " answers our ", ours.transport, " with ", theirs.transport, "."},
              {"answer with RTP/AVP in line ", media.number}, {})
            .Know(topic, {"The far end encrypts with a key to which we have none of our own, so "
                          "the two ends do not understand each other."});
    }
}

/// A crypto line of the answer whose tag or suite is not that of our offer's.
void FindForeignTag(Scene& scene, const TextLine& ourLine, const TextLine& theirLine, Topic topic) {
    const std::vector<std::string_view> our = WordsOf(ourLine.text, 3);
    const std::vector<std::string_view> their = WordsOf(theirLine.text, 3);
    if (our.size() < 3 || their.size() < 3 || (our[0] == their[0] && our[1] == their[1])) {
        return;
    }
    Suspect& suspect = Blame(scene, kForeignTag, theirLine,
                             {LineWords(theirLine),
                              our[1] == their[1]   ? " differs in its tag from our offer's "
                              : our[0] == their[0] ? " differs in its suite from our offer's "
                                                   : " differs in tag and suite from our offer's ",
                              InQuotes(ourLine.text), "."},
                             {"answer with tag and suite of the offer in line ", theirLine.number},
                             {ReplaceLine(theirLine, std::string(our[0]) + " " + std::string(our[1]) + " " +
                                                         std::string(their[2]))});
    const sdp::Suite* const suite = SuiteOf(theirLine);
    if (suite != nullptr && !suite->isRead) {
        suspect.SayActed({"The answer repeats tag and suite of the crypto line that it accepts (RFC 4568, "
                          "5.1.3), and crypto lines of the 80-bit suites are skipped when they are read "
                          "(P10)."});
    }
    suspect.Know(topic, {our[1] == their[1]
                             ? "The answer accepts a crypto line that was not offered, so the two ends may "
                               "use different keys and suites."
                             : "The two ends use different suites, so packets fail to decrypt."});
}

void FindSecured(Scene& scene, const Reading& offer, const MeantSection& ours, const MeantSection& theirs,
                 Topic topic) {
    const TextLine* const ourLine = CryptoOf(offer, ours);
    const TextLine* const theirLine = CryptoOf(scene.reading, theirs);
    FindTransports(scene, ours, theirs, topic);
    AddOwnKey(scene, offer, theirLine, topic);
    if (ourLine != nullptr && theirLine != nullptr) {
        FindForeignTag(scene, *ourLine, *theirLine, topic);
    }
}

/// A section in the place where the offer has one of another kind; `isOtherVideo`: slides for main video, or
/// the other way round.
void AddOtherOrder(Scene& scene, const Reading& offer, std::size_t i, bool isOtherVideo) {
    const std::vector<MeantSection>& theirs = scene.reading.sections;
    const TextLine& media = scene.reading.lines[theirs[i].line];
    Suspect& suspect = Blame(scene, kAnswerOrder, media,
                             {LineWords(media), " stands where our offer has ",
                              InQuotes(offer.lines[offer.sections[i].line].text), "."},
                             {"answer in the order of the offer"}, {});
    const bool isSlides = offer.sections[i].isSlides;
    const Piece offered = !isOtherVideo ? Piece(offer.sections[i].media) : isSlides ? "slides" : "main video";
    const Piece answered = !isOtherVideo ? AsShown(theirs[i].media) : isSlides ? "main video" : "slides";
    std::vector<Topic> topics = TopicsOfPair(offer.sections[i], isSlides);
    if (isOtherVideo && !isSlides) {
        topics.push_back(Topic::Slides);
    }
    for (const Topic topic : topics) {
        suspect.Know(topic, {"Section ", i + 1, " of our offer, ", offered, ", is answered as ", answered,
                             ": each end may send one to the port of the other."});
    }
}

/// More or fewer sections than our offer has.
void FindNumber(Scene& scene, const Reading& offer) {
    const std::vector<MeantSection>& theirs = scene.reading.sections;
    if (theirs.size() < offer.sections.size() && !theirs.empty()) {
        const TextLine& last = scene.reading.lines[theirs.back().line];
        const MeantSection& missing = offer.sections[theirs.size()];
        const std::string text = "m=" + missing.media + " 0 " + missing.transport + " " + Payloads(missing);
        Suspect& suspect = Blame(
            scene, kMissing, last,
            {LineWords(last), theirs.size() == 1 ? " opens the only section" : " opens the last section",
             " of the answer; our offer has ", offer.sections.size(), ", next ",
             InQuotes(offer.lines[missing.line].text), "."},
            {"add ", InQuotes(text), " at the end"}, {{scene.reading.text.size(), 0, text + "\r\n"}});
        for (const Topic topic : TopicsOfPair(missing, missing.isSlides)) {
            suspect.Know(topic, {"Section ", theirs.size() + 1, " of our offer, ", missing.media,
                                 ", has no answer, so it does not start."});
        }
    } else if (theirs.size() > offer.sections.size() && !offer.sections.empty()) {
        const TextLine& extra = scene.reading.lines[theirs[offer.sections.size()].line];
        Blame(scene, kSurplus, extra,
              {LineWords(extra), " is section ", offer.sections.size() + 1,
               " of the answer, and our offer has ", offer.sections.size(), "."},
              {"delete the sections from line ", extra.number, " on"},
              {{extra.offset, scene.reading.text.size() - extra.offset, {}}})
            .Know(Topic::Call, {"The answer does not fit its offer, so what it adds is bound to nothing."});
    }
}

} // namespace

void FindPair(Scene& scene) {
    if (!scene.input.remoteAnswers || scene.state.ours->text.empty()) {
        return;
    }
    const Reading offer = Read(scene.state.ours->text);
    const std::vector<MeantSection>& theirs = scene.reading.sections;
    const std::size_t common = std::min<std::size_t>(std::min(offer.sections.size(), theirs.size()), 32);
    for (std::size_t i = 0; i < common; ++i) {
        const bool isOtherVideo = theirs[i].media == "video" && !theirs[i].IsDeclined() &&
                                  theirs[i].isSlides != offer.sections[i].isSlides && HasOther(scene, i);
        if (theirs[i].media != offer.sections[i].media || isOtherVideo) {
            if (scene.input.ourOffer.empty()) {
                break;
            }
            AddOtherOrder(scene, offer, i, isOtherVideo);
            break;
        }
        const bool isSlides = offer.sections[i].isSlides;
        if (!scene.input.ourOffer.empty()) {
            FindPairFormats(scene, offer, offer.sections[i], theirs[i], TopicsOfPair(theirs[i], isSlides));
        }
        FindSecured(scene, offer, offer.sections[i], theirs[i], EncryptionOf(theirs[i], isSlides));
    }
    if (!scene.input.ourOffer.empty()) {
        FindNumber(scene, offer);
    }
}

} // namespace explain
