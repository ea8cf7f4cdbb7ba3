// Stage: the names of topics, verdicts and severities.
// Input: enumerators. Output: words.
// Touches nothing.
// The words are those of the command's options and of its JSON form.
// Test: tests/explain/judge_cases.py
#include "SDPExplain.h"

#include <iterator>

namespace {

constexpr const char* kTopicNames[] = {
    "audio.codec",
    "audio.send",
    "audio.receive",
    "main.picture",
    "main.send",
    "main.receive",
    "slides",
    "floor",
    "dtmf",
    "bandwidth",
    "encryption.audio",
    "encryption.main",
    "encryption.slides",
    "ice",
    "call",
};
static_assert(std::size(kTopicNames) == kExplainTopics);
constexpr const char* kVerdicts[] = {"used",      "agrees",  "overridden", "misread",
                                     "tolerated", "dropped", "ignored",    "joined"};
constexpr const char* kSeverities[] = {"note", "warning", "error"};

template <typename Value, std::size_t N>
const char* NameIn(const char* const (&names)[N], Value value) {
    const auto index = static_cast<std::size_t>(value);
    return index < N ? names[index] : nullptr;
}

} // namespace

const char* ExplainTopicName(ExplainTopic topic) {
    return NameIn(kTopicNames, topic);
}

const char* ExplainVerdictName(ExplainVerdict verdict) {
    return NameIn(kVerdicts, verdict);
}

const char* ExplainSeverityName(ExplainSeverity severity) {
    return NameIn(kSeverities, severity);
}
