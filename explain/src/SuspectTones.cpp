// Stage: suspects in the formats of tones and in the choice among common audio codecs.
// Input: the first audio section that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kOtherRate = {"E46", "X02", ExplainSeverity::Error, 20,
                             "Tones are recognised by the name telephone-event/8000 alone, so events of "
                             "another clock rate are not taken (X02; RFC 4733)."};
constexpr Rule kNoTones = {"E47", "B07", ExplainSeverity::Note, 62,
                           "Tones need a format telephone-event/8000 in the far end's text; our own text "
                           "lists payload 101 in any case (B07)."};
constexpr Rule kTonesElsewhere = {
    "E166", "X08", ExplainSeverity::Error, 19,
    "The formats of audio and its tones are those of the first audio section; of a later one nothing is read "
    "but the codec of our answer (X08)."};
constexpr Rule kTheirOrder = {
    "E48", "", ExplainSeverity::Note, 61,
    "The far end's order decides: the first format that this side also has is chosen (RFC 3264, 6.1)."};
constexpr Rule kManyTones = {
    "E49", "X02", ExplainSeverity::Warning, 40,
    "Of several telephone-event/8000 formats the one listed last gives the payload of the tones (X02)."};

constexpr Rule kOurTones = {
    "E155", "B07", ExplainSeverity::Warning, 30,
    "Our text lists payload 101 as telephone-event/8000 in any case, whatever the far "
    "end means by 101 (B07)."};
constexpr const char* kOurNumberActed = "Our text lists G.722.1 as payload 104 in any case, whatever number "
                                        "the far end gives it and whatever it means by 104.";
constexpr Rule kOurNumber = {"E156", "", ExplainSeverity::Note, 56, kOurNumberActed};
constexpr Rule kTakenNumber = {"E162", "", ExplainSeverity::Warning, 56, kOurNumberActed};

/// The section with a free number in place of one of its payloads: m= line, rtpmap and fmtp line.
std::vector<ExplainTextChange> Renumbered(const Scene& scene, const MeantSection& section,
                                          std::string_view payload, const std::string& free) {
    const TextLine& media = scene.reading.lines[section.line];
    std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, payload, free))};
    for (const FormatLines* const lines : {&section.rtpmap, &section.fmtp}) {
        if (const TextLine* const line = LineOf(scene.reading, *lines, payload)) {
            changes.push_back(ReplaceLine(*line, WithPayload(*line, free)));
        }
    }
    return changes;
}

/// Numbers that our answer writes for tones and G.722.1, where the far end has other formats under them.
void FindOurNumbers(Scene& scene, const MeantSection& section) {
    if (scene.input.remoteAnswers) {
        return;
    }
    const std::string free = FreePayload(section);
    const TextLine* const tones = LineOf(scene.reading, section.rtpmap, sdp::kTelephoneEvent.payload);
    const std::string name = WrittenNameOf(scene, section, sdp::kTelephoneEvent.payload);
    if (tones != nullptr && section.listed.count(sdp::kTelephoneEvent.payload) != 0 && !name.empty() &&
        Canonical(*tones, scene.reading).find(sdp::kTelephoneEvent.name) == std::string::npos &&
        Upper(name) != "TELEPHONE-EVENT") {
        Blame(scene, kOurTones, *tones, {LineWords(*tones), " gives payload 101 to ", AsShown(name), "."},
              {"give ", AsShown(name), " the payload ", free, " in place of 101"},
              Renumbered(scene, section, sdp::kTelephoneEvent.payload, free))
            .Know(Topic::Dtmf, {"Our answer means tones by 101 and the far end means ", AsShown(name),
                                ", so tones that are sent under 101 are heard as noise or lost."});
    }
    const auto* const g7221 =
        std::find_if(std::begin(sdp::kAudioCodecs), std::end(sdp::kAudioCodecs),
                     [](const sdp::AudioCodec& codec) { return codec.codec == PAYLOAD_G7221; });
    const std::string_view our = g7221->format.payload;
    const std::string chosen = std::to_string(scene.state.record.iAudioPayload);
    const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, chosen);
    if (scene.state.record.eAudioCodec != PAYLOAD_G7221 || chosen == our || rtpmap == nullptr) {
        return;
    }
    const TextLine* const other = LineOf(scene.reading, section.rtpmap, our);
    const std::string meant = WrittenNameOf(scene, section, our);
    const bool isTaken = other != nullptr && section.listed.count(our) != 0 && !meant.empty();
    Suspect& suspect = Blame(scene, isTaken ? kTakenNumber : kOurNumber, isTaken ? *other : *rtpmap,
                             {LineWords(isTaken ? *other : *rtpmap),
                              isTaken ? " gives payload 104 to " : " gives G.722.1 payload ",
                              AsShown(isTaken ? meant : chosen), isTaken ? "." : " and not 104."},
                             {"give G.722.1 the payload 104 in the far end's text"}, {});
    for (const Topic topic : {Topic::AudioCodec, Topic::AudioReceive}) {
        suspect.Know(topic,
                     {"Our answer says 104 where the far end offered G.722.1 as ", chosen,
                      isTaken ? ", so what is sent under 104 is decoded as " : "", isTaken ? meant : "",
                      isTaken ? "." : ", so a far end that holds to its own number sends no audio."});
    }
}

/// The rtpmap line of telephone events in another audio section; null without one.
const TextLine* TonesElsewhere(const Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 16;
    std::size_t count = 0;
    for (const MeantSection& other : scene.reading.sections) {
        if (&other == &section || other.media != "audio" || ++count > most) {
            continue;
        }
        for (const std::string_view format : other.formats) {
            if (NameOf(scene, other, format) == "TELEPHONE-EVENT") {
                return LineOf(scene.reading, other.rtpmap, format);
            }
        }
    }
    return nullptr;
}

void AddNoTones(Scene& scene, const MeantSection& section) {
    const TextLine& media = scene.reading.lines[section.line];
    const TextLine* const elsewhere = TonesElsewhere(scene, section);
    const std::string free = section.listed.count("101") == 0 ? "101" : FreePayload(section);
    std::vector<ExplainTextChange> changes = {
        ReplaceLine(media, WithFormat(media, {}, free)),
        InsertAfter(media, "a=rtpmap:" + free + " telephone-event/8000")};
    if (elsewhere != nullptr) {
        const TextLine& later = scene.reading.lines[scene.reading.SectionOf(*elsewhere)->line];
        Blame(scene, kTonesElsewhere, *elsewhere,
              {LineWords(*elsewhere), " stands in the audio section of line ", later.number,
               ", and the first audio section is that of line ", media.number, "."},
              {"list payload ", free, " in line ", media.number, " and insert its rtpmap line"},
              std::move(changes))
            .lines.push_back(media.number);
        return;
    }
    Blame(scene, kNoTones, media, {LineWords(media), " lists no telephone-event format."},
          {"list payload ", free, " in line ", media.number, " and insert its rtpmap line"},
          std::move(changes))
        .Know(Topic::Dtmf, {"The far end takes no tones."});
}

} // namespace

void FindTones(Scene& scene, const MeantSection& section) {
    FindOurNumbers(scene, section);
    const TextLine& media = scene.reading.lines[section.line];
    const TextLine* other = nullptr;
    std::vector<std::string_view> good;
    for (const std::string_view format : section.formats) {
        if (NameOf(scene, section, format) == "TELEPHONE-EVENT") {
            const TextLine* const line = LineOf(scene.reading, section.rtpmap, format);
            if (Lower(line->text).find("telephone-event/8000") != std::string::npos) {
                good.push_back(format);
            } else {
                other = line;
            }
        }
    }
    if (good.empty() && other != nullptr) {
        const std::string text = "a=rtpmap:" + std::string(PayloadOf(other->text)) + " telephone-event/8000";
        Blame(scene, kOtherRate, *other, {LineWords(*other), " has another clock rate than 8000."},
              {"write line ", other->number, " as ", InQuotes(text)}, {ReplaceLine(*other, text)});
    } else if (good.size() > 1) {
        const TextLine* const line = LineOf(scene.reading, section.rtpmap, good.back());
        std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, good.back(), {})),
                                                  DeleteLine(*line)};
        if (const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, good.back())) {
            changes.push_back(DeleteLine(*fmtp));
        }
        Blame(scene, kManyTones, *line,
              {LineWords(*line), " is one of ", good.size(), " telephone-event/8000 formats."},
              {"take payload ", AsShown(good.back()), " out of line ", media.number, ", and its lines"},
              std::move(changes))
            .lines.push_back(media.number);
    } else if (good.empty()) {
        AddNoTones(scene, section);
    }
}

/// Common codecs after the first, and a text without a common codec.
void FindChoice(Scene& scene, const MeantSection& section) {
    const TextLine& media = scene.reading.lines[section.line];
    const std::int32_t mask = scene.input.local.eAudioCodec;
    if (scene.state.record.eAudioCodec == PAYLOAD_UNKNOWN) {
        const bool hasStatic = (mask & PAYLOAD_G711U) != 0;
        const std::string format = hasStatic ? "0" : (mask & PAYLOAD_G722) != 0 ? "9" : "18";
        Blame(scene, kNoCommonFormat, media,
              {LineWords(media), " lists ", NamesIn(scene, section), ", no codec that this side has."},
              {"list payload ", format, " in line ", media.number},
              {ReplaceLine(media, WithFormat(media, {}, format))});
        return;
    }
    for (const std::string_view better : {std::string_view("9"), std::string_view("104")}) {
        const bool isWide =
            scene.state.record.eAudioCodec == PAYLOAD_G7221 || scene.state.record.eAudioCodec == PAYLOAD_G722;
        for (const std::string_view format : section.formats) {
            const bool isBetter =
                format == better || (better == "104" && NameOf(scene, section, format) == "G7221");
            if (isBetter && !isWide && format != section.formats.front()) {
                std::string text = WithFormat(media, format, {});
                const std::vector<std::string_view> words = WordsOf(text, 4);
                if (words.size() < 4) {
                    return; // Words are missing or glued, and the spelling of the line is blamed.
                }
                text.insert(static_cast<std::size_t>(words[3].data() - std::string_view(text).data()),
                            std::string(format) + " ");
                Blame(scene, kTheirOrder, media,
                      {LineWords(media), " lists payload ", AsShown(section.formats.front()), " before ",
                       AsShown(format), "."},
                      {"list payload ", AsShown(format), " first in line ", media.number},
                      {ReplaceLine(media, std::move(text))});
                return;
            }
        }
    }
}

} // namespace explain
