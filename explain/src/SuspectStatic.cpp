// Stage: suspects about payload numbers that mean a codec by themselves: 0, 9 and 18 (RFC 3551, 6).
// Input: a format of an audio section that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPTables.h"

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kRenamed = {"E40", "X12", ExplainSeverity::Error, 6,
                           "Payloads 0, 9 and 18 are G.711 mu-law, G.722 and G.729 by their number alone; an "
                           "rtpmap line for them is not read (X12)."};
constexpr Rule kByNumber = {"E41", "X12", ExplainSeverity::Error, 12,
                            "G.711 mu-law, G.722 and G.729 are recognised by the payload numbers 0, 9 and 18 "
                            "alone, not by a name under another number (X12)."};
constexpr Rule kStaticClock = {
    "E174", "X12", ExplainSeverity::Note, 58,
    "Payloads 0, 9 and 18 are G.711 mu-law, G.722 and G.729 at 8000 Hz by their number "
    "alone; an rtpmap line for them is not read (X12)."};
constexpr Rule kAnnexB = {"E175", "", ExplainSeverity::Note, 59,
                          "The format parameters of G.729 are not read (RFC 4856, 2.1.9 has annexb)."};

/// "PCMU" of "PCMU/8000".
std::string_view NameOfCodec(const sdp::AudioCodec& codec) {
    return codec.format.name.substr(0, codec.format.name.find('/'));
}

void AddRenamed(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                const std::string& name) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        if (!codec.isStatic || payload != codec.format.payload || name.empty() ||
            name == NameOfCodec(codec) || rtpmap == nullptr) {
            continue;
        }
        const std::string free = FreePayload(section);
        std::vector<ExplainTextChange> changes = {ReplaceLine(media, WithFormat(media, payload, free)),
                                                  ReplaceLine(*rtpmap, WithPayload(*rtpmap, free))};
        if (const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload)) {
            changes.push_back(ReplaceLine(*fmtp, WithPayload(*fmtp, free)));
        }
        Suspect& suspect = Blame(
            scene, kRenamed, *rtpmap,
            {LineWords(*rtpmap), " gives the static payload ", payload, " another meaning."},
            {"give the format the dynamic payload ", free, " in place of ", payload}, std::move(changes));
        suspect.isTakenAway = true;
    }
}

/// A static payload whose rtpmap line gives another clock rate, or G.729 with Annex B.
void AddStaticNotes(Scene& scene, const MeantSection& section, std::string_view payload) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const bool isChosen = codec.isStatic && payload == codec.format.payload &&
                              scene.state.record.eAudioCodec == codec.codec;
        if (!isChosen) {
            continue;
        }
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        const TextLine* const fmtp = LineOf(scene.reading, section.fmtp, payload);
        const std::string_view name = rtpmap == nullptr ? std::string_view() : WordOf(rtpmap->text, 1);
        const bool isName =
            BeginsWith(Upper(name), codec.format.name.substr(0, codec.format.name.find('/') + 1));
        // G722/16000 is what the codec does and an old error for its RTP clock (RFC 3551, 4.5.2).
        if (isName && !BeginsWith(Upper(name), codec.format.name) && Upper(name) != "G722/16000") {
            Blame(scene, kStaticClock, *rtpmap,
                  {LineWords(*rtpmap), " gives payload ", payload, " another clock rate than 8000."}, {}, {})
                .Know(Topic::AudioCodec, {"This side sends and plays payload ", payload,
                                          " at 8000 Hz, so speech is too slow, too fast or noise."});
        }
        if (codec.codec == PAYLOAD_G729 && fmtp != nullptr &&
            Lower(fmtp->text).find("annexb=yes") != std::string::npos) {
            Blame(scene, kAnnexB, *fmtp, {LineWords(*fmtp), " says that the far end uses Annex B."}, {}, {})
                .Know(Topic::AudioCodec,
                      {"Our text says annexb=no, so a far end that sends comfort noise frames "
                       "of Annex B all the same is heard with gaps."});
        }
    }
}

void AddByNumber(Scene& scene, const MeantSection& section, const TextLine& media, std::string_view payload,
                 const std::string& name) {
    for (const sdp::AudioCodec& codec : sdp::kAudioCodecs) {
        const TextLine* const rtpmap = LineOf(scene.reading, section.rtpmap, payload);
        const std::string number(codec.format.payload);
        if (!codec.isStatic || name != NameOfCodec(codec) || payload == number || rtpmap == nullptr ||
            section.listed.count(number) != 0) {
            continue;
        }
        Blame(scene, kByNumber, *rtpmap,
              {LineWords(*rtpmap), " names ", name, " under payload ", payload, " and not ", number, "."},
              {"use payload ", number, " in lines ", media.number, " and ", rtpmap->number},
              {ReplaceLine(media, WithFormat(media, payload, number)),
               ReplaceLine(*rtpmap, WithPayload(*rtpmap, number))});
    }
}

} // namespace

void FindStatic(Scene& scene, const MeantSection& section, std::string_view payload, const std::string& name,
                bool isFirst) {
    const TextLine& media = scene.reading.lines[section.line];
    AddRenamed(scene, section, media, payload, name);
    AddByNumber(scene, section, media, payload, name);
    if (isFirst && !section.IsDeclined()) {
        AddStaticNotes(scene, section, payload);
    }
}

} // namespace explain
