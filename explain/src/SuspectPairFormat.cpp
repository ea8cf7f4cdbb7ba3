// Stage: suspects in the formats of an answer, beside those of our offer.
// Input: a section of our offer and the one that answers it. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kFormat = {"E142", "", ExplainSeverity::Error, 8,
                          "An answer lists formats of the offer (RFC 3264, 6.1); a payload that was not "
                          "offered is taken as it stands."};
constexpr Rule kSwapped = {"E143", "", ExplainSeverity::Error, 7,
                           "A payload number keeps the meaning that the offer gave it (RFC 3264, 6.1); the "
                           "answer's own parameters are taken as they stand."};

/// The payload of tones in our offer; empty without any.
std::string_view TonesOf(const Reading& offer, const MeantSection& section) {
    for (const std::string_view format : section.formats) {
        const auto name = section.rtpmap.find(format);
        if (name != section.rtpmap.end() &&
            offer.lines[name->second].text.find("telephone-event") != std::string_view::npos) {
            return format;
        }
    }
    return {};
}

/// Tones under a number that was not offered: the offer's number in the m= line and in the rtpmap line.
void AddTones(Suspect& suspect, const TextLine& media, const TextLine& rtpmap, std::string_view format,
              std::string_view tones) {
    suspect.cure.words = "use payload " + std::string(tones) + " for tones, as the offer does";
    suspect.cure.text = {ReplaceLine(media, WithFormat(media, format, tones)),
                         ReplaceLine(rtpmap, WithPayload(rtpmap, tones))};
    suspect.Know(Topic::Dtmf, {"Tones are sent as payload ", AsShown(format),
                               ", a number that our offer did not give to tones."});
}

/// The encoding name of an rtpmap line, without clock rate, upper case; empty for null.
std::string EncodingOf(const TextLine* rtpmap) {
    const std::vector<std::string_view> words =
        rtpmap == nullptr ? std::vector<std::string_view>() : WordsOf(rtpmap->text, 2);
    return words.size() < 2 ? std::string() : Upper(words[1].substr(0, words[1].find('/')));
}

/// A payload of the offer under another encoding name.
void AddOtherEncoding(Scene& scene, const TextLine* ours, const TextLine* theirs,
                      const std::vector<Topic>& topics) {
    const std::string offered = EncodingOf(ours);
    const std::string answered = EncodingOf(theirs);
    if (offered.empty() || answered.empty() || offered == answered) {
        return;
    }
    Suspect& suspect = Blame(
        scene, kSwapped, *theirs,
        {LineWords(*theirs), " gives a payload of our offer another name than ", InQuotes(ours->text), "."},
        {"write line ", theirs->number, " as ", InQuotes(ours->text)},
        {ReplaceLine(*theirs, std::string(ours->text))});
    if (offered == "TELEPHONE-EVENT") {
        suspect.Know(Topic::Dtmf, {"The far end does not take tones under the number that our "
                                   "offer gave them, so none are sent."});
        return;
    }
    for (const Topic topic : topics) {
        suspect.Know(topic, {"The two ends mean different codecs by one number, so what either "
                             "sends is not decoded."});
    }
}

/// The payload that our offer gives this encoding and the answer does not list; empty for none.
std::string_view OfferedAs(const Reading& offer, const MeantSection& ours, const MeantSection& theirs,
                           const std::string& encoding) {
    for (const std::string_view format : ours.formats) {
        if (theirs.listed.count(format) == 0 && EncodingOf(LineOf(offer, ours.rtpmap, format)) == encoding) {
            return format;
        }
    }
    return {};
}

/// A payload that our offer does not list.
void AddNotOffered(Scene& scene, const Reading& offer, const MeantSection& ours, const MeantSection& theirs,
                   std::string_view format, const std::vector<Topic>& topics) {
    const TextLine& media = scene.reading.lines[theirs.line];
    std::string text(media.text);
    const std::size_t at = text.rfind(format);
    if (at == std::string::npos) {
        return; // Its signs are not those of the line, whose spelling is blamed.
    }
    text.replace(at, format.size(), ours.formats.front());
    Suspect& suspect =
        Blame(scene, kFormat, media,
              {LineWords(media), " lists payload ", AsShown(format), ", which our offer (", Payloads(ours),
               ") does not."},
              {"list a payload of the offer in line ", media.number}, {ReplaceLine(media, text)});
    const auto name = theirs.rtpmap.find(format);
    const bool isTones =
        name != theirs.rtpmap.end() &&
        Lower(scene.reading.lines[name->second].text).find("telephone-event") != std::string::npos;
    const std::string_view tones = isTones ? TonesOf(offer, ours) : std::string_view();
    if (!tones.empty()) {
        AddTones(suspect, media, scene.reading.lines[name->second], format, tones);
        return;
    }
    const TextLine* const rtpmap = LineOf(scene.reading, theirs.rtpmap, format);
    const std::string encoding = EncodingOf(rtpmap);
    const std::string_view offered =
        encoding.empty() ? std::string_view() : OfferedAs(offer, ours, theirs, encoding);
    if (!offered.empty()) {
        suspect.cure.words = Joined({"give ", AsShown(encoding), " the payload ", offered, " of the offer"});
        suspect.cure.text = {ReplaceLine(media, WithFormat(media, format, offered)),
                             ReplaceLine(*rtpmap, WithPayload(*rtpmap, offered))};
        if (const TextLine* const fmtp = LineOf(scene.reading, theirs.fmtp, format)) {
            suspect.cure.text.push_back(ReplaceLine(*fmtp, WithPayload(*fmtp, offered)));
        }
    }
    for (const Topic topic : topics) {
        suspect.Know(topic, {"The far end uses payload ", AsShown(format),
                             ", to which our offer gave no codec, so what it sends is not decoded."});
    }
}

/// Whether an fmtp line of this payload before the last one gives a packetization mode, which the last one
/// takes away; then the last one is blamed for that.
bool HasEarlierMode(const Scene& scene, const MeantSection& section, const TextLine& last,
                    std::string_view payload) {
    for (std::size_t i = section.line + 1; i + 1 < last.number; ++i) {
        const TextLine& line = scene.reading.lines[i];
        if (line.meant == SDPRow::Fmtp && PayloadOf(line.text) == payload &&
            line.text.find("packetization-mode=") != std::string_view::npos &&
            last.text.find("packetization-mode=") == std::string_view::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

void FindPairFormats(Scene& scene, const Reading& offer, const MeantSection& ours, const MeantSection& theirs,
                     const std::vector<Topic>& topics) {
    for (std::size_t i = 0; i < theirs.formats.size() && i < 16; ++i) {
        const std::string_view format = theirs.formats[i];
        if (!theirs.IsDeclined() && ours.listed.count(format) == 0 && !ours.formats.empty()) {
            AddNotOffered(scene, offer, ours, theirs, format, topics);
            continue;
        }
        AddOtherEncoding(scene, LineOf(offer, ours.rtpmap, format),
                         LineOf(scene.reading, theirs.rtpmap, format), topics);
        const auto ourLine = ours.fmtp.find(format);
        const auto theirLine = theirs.fmtp.find(format);
        if (ourLine == ours.fmtp.end() || theirLine == theirs.fmtp.end()) {
            continue;
        }
        const auto isMode1 = [](std::string_view line) {
            return line.find("packetization-mode=1") != std::string_view::npos;
        };
        const TextLine& line = scene.reading.lines[theirLine->second];
        const bool isOursMode1 = isMode1(offer.lines[ourLine->second].text);
        if (theirs.media == "video" && isOursMode1 != isMode1(line.text) &&
            !HasEarlierMode(scene, theirs, line, format)) {
            std::string text(line.text);
            const std::size_t at = text.find("packetization-mode=");
            const char* const mode = isMode1(line.text) ? "0" : "1";
            if (at == std::string::npos) {
                Append(text, {";packetization-mode=", mode});
            } else {
                text.replace(at + 19, 1, mode);
            }
            Suspect& suspect = Blame(scene, kSwapped, line,
                                     {LineWords(line), " gives payload ", AsShown(format),
                                      " another packetization mode than our offer of ", Payloads(ours), ", ",
                                      InQuotes(offer.lines[ourLine->second].text), "."},
                                     {"write packetization-mode=", mode, " in line ", line.number},
                                     {ReplaceLine(line, text)});
            for (const Topic topic : topics) {
                suspect.Know(topic, {"We would send payload ", AsShown(format),
                                     " in a packetization mode that our offer gave to another "
                                     "payload, so the two ends mean different formats."});
            }
        }
    }
}

} // namespace explain
