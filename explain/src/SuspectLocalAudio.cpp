// Stage: suspects in the local fields of audio.
// Input: the local record. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kEmptyPriority = {
    "E100", "B06", ExplainSeverity::Error, 4,
    "Without a preference list there is no audio section in our text, whatever codecs are set (B06)."};
constexpr Rule kMaskLacks = {
    "E101", "", ExplainSeverity::Error, 18,
    "A codec counts only when eAudioCodec has its bit, wherever it stands in the preference list."};
constexpr Rule kPriorityLacks = {"E102", "", ExplainSeverity::Error, 18,
                                 "Our text lists the codecs of the preference list alone, so a codec of "
                                 "eAudioCodec that is not in it is read but never written."};
constexpr Rule kPreferredTwice = {"E150", "", ExplainSeverity::Warning, 17,
                                  "A codec is written once for each time that it stands in the preference "
                                  "list, so its payload is listed and described as often."};

} // namespace

void FindLocalAudio(Scene& scene) {
    const LocalSDP& local = scene.input.local;
    const auto& priority = local.listAudioCodecPriority;
    FindLocalPort(scene, "audio.port", "iAudioRTPPort", local.iAudioRTPPort, "audio", Topic::AudioReceive);
    if (priority.empty()) {
        Suspect& suspect = BlameField(scene, kEmptyPriority, "audio.priority",
                                      {"listAudioCodecPriority (audio.priority) is empty."},
                                      {"list codecs in audio.priority"}, local.eAudioCodec & 0x59);
        suspect.Know(Topic::AudioCodec, {"Our text has no audio section."});
        suspect.Know(Topic::Dtmf, {"Our text has no audio section, so there are no tones."});
    }
    std::vector<sdp::AudioCodec> codecs(std::begin(sdp::kAudioCodecs), std::end(sdp::kAudioCodecs));
    // The codec that the far end chose comes first: it is what the call lacks.
    std::stable_partition(codecs.begin(), codecs.end(), [&](const sdp::AudioCodec& codec) {
        return codec.codec == scene.state.record.eAudioCodec;
    });
    for (const sdp::AudioCodec& codec : codecs) {
        const auto count = std::count(priority.begin(), priority.end(), codec.codec);
        const bool isPreferred = count != 0;
        const bool isSet = (local.eAudioCodec & codec.codec) != 0;
        static constexpr std::pair<std::int32_t, const char*> kNames[] = {{PAYLOAD_G722, "G722"},
                                                                          {PAYLOAD_G7221, "G7221"},
                                                                          {PAYLOAD_G711U, "G711U"},
                                                                          {PAYLOAD_G729, "G729"}};
        const auto* const name = std::find_if(std::begin(kNames), std::end(kNames),
                                              [&](const auto& row) { return row.first == codec.codec; });
        if (!isSet) {
            BlameField(scene, kMaskLacks, "audio.codecs",
                       {"eAudioCodec (audio.codecs) does not hold ", name->second,
                        isPreferred ? ", which listAudioCodecPriority (audio.priority) prefers." : "."},
                       {"add ", name->second, " to audio.codecs"},
                       local.eAudioCodec == PAYLOAD_UNKNOWN ? codec.codec : local.eAudioCodec | codec.codec);
        } else if (!isPreferred && !priority.empty()) {
            BlameField(scene, kPriorityLacks, "audio.priority",
                       {"listAudioCodecPriority (audio.priority) does not hold ", name->second,
                        ", which eAudioCodec (audio.codecs) has."},
                       {"add ", name->second, " to audio.priority"}, codec.codec);
        } else if (count > 1) {
            BlameField(scene, kPreferredTwice, "audio.priority",
                       {"listAudioCodecPriority (audio.priority) holds ", name->second,
                        count == 2 ? " twice." : " several times."},
                       {"leave ", name->second, " in audio.priority once"}, codec.codec);
        }
    }
}

} // namespace explain
