// Stage: suspects in the local fields of SRTP: the switch and the suites.
// Input: the local record, the switch, the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;
using CryptoParams = Quor::media::rtp::CryptoParams;

constexpr Rule kSrtpOff = {
    "E124", "", ExplainSeverity::Error, 2,
    "With SRTP off every section of ours is RTP/AVP without a crypto line, whatever the far end wants."};
constexpr Rule kSrtpUnused = {"E137", "", ExplainSeverity::Note, 22,
                              "With SRTP off every section of ours is RTP/AVP without a crypto line, and the "
                              "crypto lines of the far end are not answered."};
constexpr Rule kNoSuite = {
    "E125", "B22", ExplainSeverity::Error, 3,
    "With SRTP on and no suite set a section says RTP/SAVP and has no crypto line (B22)."};
constexpr Rule kNoSuiteName = {
    "E126", "B14", ExplainSeverity::Error, 3,
    "The AEAD suites are written without a name, so the a=crypto line has two blanks "
    "before inline: and no reader can use it (B14)."};
constexpr Rule kOtherSuite = {"E127", "B21", ExplainSeverity::Error, 4,
                              "Our crypto line has the far end's tag and the suite of this side, whatever "
                              "the far end offered under that tag (B21)."};
constexpr Rule kOffered80 = {"E128", "P10", ExplainSeverity::Error, 5,
                             "What we offer is answered with the same suite, and crypto lines of the 80-bit "
                             "suites are skipped when they are read (P10)."};

struct SuiteField {
    const char* file;
    const char* record;
    Topic topic;
};
constexpr SuiteField kSuites[baseSDP::SRTP_MAX] = {
    {"audio.suite", "cryptoAlgo[SRTP_AUDIO]", Topic::EncryptionAudio},
    {"video.main.suite", "cryptoAlgo[SRTP_VIDEO]", Topic::EncryptionMain},
    {"video.presentation.suite", "cryptoAlgo[SRTP_VIDEO_PRESO]", Topic::EncryptionSlides},
};

void FindSuite(Scene& scene, baseSDP::SRTP_M_LINE stream) {
    const auto suite = scene.input.local.cryptoAlgo[stream];
    const SuiteField& field = kSuites[stream];
    const std::string name = std::string(field.record) + " (" + field.file + ") is ";
    const bool isNone = suite == CryptoParams::CRYPTO_NONE;
    const bool isNamed = !isNone && SuiteName(suite).find("AEAD") == std::string_view::npos;
    const auto remote = scene.state.record.cryptoAlgo[stream];
    const bool isOffer = scene.input.remoteAnswers;
    const bool isOther = isNamed && suite != CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32 &&
                         (isOffer || remote != CryptoParams::CRYPTO_NONE);
    if (!isNone && isNamed && !isOther) {
        return;
    }
    const Rule& rule = isNone ? kNoSuite : !isNamed ? kNoSuiteName : isOffer ? kOffered80 : kOtherSuite;
    const OurSection* const ours = OurStream(scene.state, stream);
    Suspect& suspect = BlameField(
        scene, rule, field.file, {name, isNone ? "none" : std::string(SuiteName(suite)), "."},
        {"set ", field.file, " to AES_CM_128_HMAC_SHA1_32"}, CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32);
    if (ours != nullptr && ours->transport == "RTP/SAVP") {
        suspect.Know(
            field.topic,
            {"Our section for ", kStreamNames[stream],
             ours->hasKey
                 ? " has a key under another suite or none, so the two ends do not decrypt each other."
                 : " says RTP/SAVP without a key, so the far end declines it."});
    }
}

} // namespace

void FindLocalSrtp(Scene& scene) {
    const Reading& reading = scene.reading;
    if (scene.input.srtp) {
        for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
            FindSuite(scene, stream);
        }
        return;
    }
    std::size_t video = 0;
    for (const MeantSection& section : reading.sections) {
        video += section.media == "video" ? 1 : 0;
        const bool isDemanded = section.WantsCrypto();
        const bool isWanted = isDemanded || section.hasCrypto;
        const auto stream = section.media == "audio" ? baseSDP::SRTP_AUDIO
                            : video < 2              ? baseSDP::SRTP_VIDEO
                                                     : baseSDP::SRTP_VIDEO_PRESO;
        const OurSection* const ours = OurStream(scene.state, stream);
        const bool isSecured = ours != nullptr && ours->hasKey; // by the text that was sent
        if (isWanted && !isSecured && section.IsStream()) {
            Suspect& suspect =
                BlameField(scene, isDemanded ? kSrtpOff : kSrtpUnused, "srtp",
                           {"m_bSRTP (srtp) is off, and line ", reading.lines[section.line].number,
                            isDemanded ? " wants " + section.transport + "." : " has crypto lines after it."},
                           {"set srtp to true"}, 1);
            suspect.Know(kSuites[stream].topic,
                         {"Our text says RTP/AVP and has no crypto line and no key, so "
                          "the section is not encrypted or the far end refuses it."});
        }
    }
    // One field is blamed once; each of its topics keeps the first consequence.
    const auto isSame = [](const Suspect& suspect) {
        return suspect.rule == &kSrtpOff || suspect.rule == &kSrtpUnused;
    };
    const auto first = std::find_if(scene.suspects.begin(), scene.suspects.end(), isSame);
    for (auto next = first; next != scene.suspects.end(); ++next) {
        if (next != first && isSame(*next)) {
            first->known.push_back(next->known.front());
        }
    }
    if (first != scene.suspects.end()) {
        scene.suspects.erase(std::remove_if(first + 1, scene.suspects.end(), isSame), scene.suspects.end());
    }
}

} // namespace explain
