// Stage: suspects in the bandwidths of the far end.
// Input: the b= lines and the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>
#include <limits>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kSessionTias = {
    "E73", "P15", ExplainSeverity::Error, 12,
    "Before the first m= line b=TIAS is read as b=AS, so its bit/s are taken for kbit/s, a thousand "
    "times as much (P15)."};
constexpr Rule kMediaAs = {"E74", "P16", ExplainSeverity::Warning, 13,
                           "Inside a section only b=TIAS is read, and b=AS is ignored (P16)."};
constexpr Rule kZero = {"E75", "X09", ExplainSeverity::Warning, 15,
                        "A session bandwidth replaces the sum of the sections, and 0 means no limit (X09)."};
constexpr Rule kUnit = {
    "E76", "G05", ExplainSeverity::Warning, 16,
    "b=AS counts kbit/s and b=TIAS counts bit/s; kbit/s times 1000 wrap in 32 bits (G05)."};
constexpr Rule kSumWraps = {
    "E154", "G05", ExplainSeverity::Warning, 15,
    "Without a session bandwidth b=TIAS of audio and of main video are added, and the "
    "sum wraps in 32 bits (G05)."};
constexpr Rule kNoNumber = {"E168", "G18", ExplainSeverity::Warning, 14,
                            "A limit is decimal digits and nothing else (G18); at session level any other "
                            "text replaces the sum of the sections all the same (X09), and an empty one "
                            "counts as none."};
constexpr Rule kReplaces = {"E77", "X09", ExplainSeverity::Note, 38,
                            "A session bandwidth replaces the sum of the sections (X09)."};
constexpr Rule kSlidesLimit = {
    "E78", "X10", ExplainSeverity::Note, 39,
    "b=TIAS of the presentation is not added to the total, which is that of audio and main video (X10)."};
constexpr Rule kInsideType = {"E163", "P01", ExplainSeverity::Warning, 11,
                              "Before the first m= line the limit is what comes after \"AS:\", found "
                              "anywhere in a b= line, and the last "
                              "such line stands."};
constexpr Rule kOtherType = {
    "E79", "", ExplainSeverity::Note, 37,
    "Of bandwidth lines only b=AS at session level and b=TIAS in a section are read."};

constexpr long long kMostBits = 2147483647; ///< bit/s that 32 bits hold
constexpr long long kMostKilobits = kMostBits / 1000;
constexpr long long kEndless = std::numeric_limits<long long>::max();

long long NumberOf(std::string_view value) {
    return IsDigits(value) && value.size() < 17 ? std::stoll(std::string(value)) : -1;
}

/// b=TIAS of the slides, where it could have counted toward the total.
void AddSlidesLimit(Scene& scene, const TextLine& line, long long value) {
    const long long total = scene.state.record.iMaxBandwidth + value;
    const std::string text = "b=AS:" + std::to_string(total / 1000);
    const bool canTell = scene.state.record.iMaxBandwidth >= 0 && total > 0 && total < kMostBits &&
                         scene.reading.sections.front().line > 0;
    std::vector<ExplainTextChange> changes;
    if (canTell) {
        changes.push_back(InsertAfter(scene.reading.lines[scene.reading.sections.front().line - 1], text));
    }
    Blame(scene, kSlidesLimit, line,
          {LineWords(line), " stands in the section of the slides (presentation)."},
          {canTell ? "give the total as " : "", canTell ? text : "",
           canTell ? " before the first m= line" : ""},
          std::move(changes))
        .Know(Topic::Bandwidth, {"The total bandwidth does not contain what slides are allowed."});
}

/// The larger of two limits whose sum is more than 32 bits hold.
void AddSum(Scene& scene, const TextLine* audio, const TextLine* video) {
    const long long ofAudio = audio == nullptr ? -1 : NumberOf(ValueOf(audio->text));
    const long long ofVideo = video == nullptr ? -1 : NumberOf(ValueOf(video->text));
    if (ofAudio < 0 || ofVideo < 0 || ofAudio > kMostBits || ofVideo > kMostBits ||
        ofAudio + ofVideo <= kMostBits) {
        return;
    }
    const TextLine& line = ofAudio > ofVideo ? *audio : *video;
    const TextLine& other = ofAudio > ofVideo ? *video : *audio;
    const char* const text = ofAudio > ofVideo ? "b=TIAS:64000" : "b=TIAS:1000000";
    Blame(scene, kSumWraps, line,
          {LineWords(line), " and line ", other.number, ", ", InQuotes(other.text),
           ", have a sum of more than ", kMostBits, " bit/s."},
          {"write a real limit in line ", line.number, ", such as ", text}, {ReplaceLine(line, text)})
        .lines.push_back(other.number);
}

/// A limit without digits, or a negative one.
void AddNoNumber(Scene& scene, const TextLine& line, bool isSession, bool isTias) {
    if (isSession == isTias) {
        return; // Of a type that is not read there.
    }
    const bool isEmpty = ValueOf(line.text).empty();
    const char* const sample = isTias ? "b=TIAS:1000000" : "b=AS:1000";
    Blame(scene, kNoNumber, line,
          {LineWords(line), isEmpty ? " has no value." : " has a value that is no limit."},
          {isEmpty ? "write the limit in line " : "delete line ", line.number, isEmpty ? ", such as " : "",
           isEmpty ? sample : ""},
          {isEmpty ? ReplaceLine(line, sample) : DeleteLine(line)})
        .Know(Topic::Bandwidth, {"The limit that the line was to give is not known."});
}

/// A limit of another type than AS and TIAS.
void AddOtherType(Scene& scene, const TextLine& line, bool isSession, std::string_view canonical) {
    if (BeginsWith(canonical, "b=CT:") && NumberOf(ValueOf(canonical)) > 0) {
        const std::string text = "b=AS:" + std::string(ValueOf(canonical));
        Blame(scene, kOtherType, line, {LineWords(line), " has a type of bandwidth that is not read."},
              {"write line ", line.number, " as ", InQuotes(text)}, {ReplaceLine(line, text)});
    } else if (isSession && line.text.find("AS:") != std::string_view::npos) {
        Blame(scene, kInsideType, line, {LineWords(line), " is of another type and contains \"AS:\"."},
              {"delete line ", line.number}, {DeleteLine(line)})
            .isTakenAway = true;
    }
}

/// A limit that is not the one its writer meant, as its size tells.
struct UnlikelyLimit {
    std::string_view example;
    bool isTias;
    long long least; ///< of the values that are unlikely
    long long most;
    const Rule& rule;
    const char* what;
    long long (*meant)(long long value);
};
constexpr UnlikelyLimit kUnlikelyLimits[] = {
    {"b=AS:0", false, 0, 0, kZero, " gives a bandwidth of 0.", [](long long /*value*/) { return 64LL; }},
    {"b=TIAS:0", true, 0, 0, kZero, " gives a bandwidth of 0.", [](long long /*value*/) { return 64000LL; }},
    {"b=AS:512000", false, 64000, kMostKilobits, kUnit, " gives kbit/s that look like bit/s.",
     [](long long value) { return value / 1000; }},
    {"b=AS:4000000", false, kMostKilobits + 1, kEndless, kUnit,
     " gives more kbit/s than 32 bits hold in bit/s.", [](long long /*value*/) { return kMostKilobits; }},
    {"b=TIAS:512", true, 1, 5999, kUnit, " gives bit/s that look like kbit/s.",
     [](long long value) { return value * 1000; }},
    {"b=TIAS:4000000000", true, kMostBits + 1, kEndless, kUnit, " gives more bit/s than 32 bits hold.",
     [](long long /*value*/) { return kMostBits; }},
};

void AddBandwidth(Scene& scene, const TextLine& line, bool isSession) {
    const std::string canonical = Canonical(line, scene.reading);
    const bool isTias = BeginsWith(canonical, "b=TIAS:");
    const long long value = NumberOf(ValueOf(canonical));
    const auto rewrite = [&](const Rule& rule, const char* what, const char* start, long long to) {
        const std::string text = start + std::to_string(to);
        Blame(scene, rule, line, {LineWords(line), what}, {"write line ", line.number, " as \"", text, "\""},
              {ReplaceLine(line, text)});
    };
    if (!isTias && !BeginsWith(canonical, "b=AS:")) {
        AddOtherType(scene, line, isSession, canonical);
    } else if (value < 0) {
        AddNoNumber(scene, line, isSession, isTias);
    } else if (isSession && isTias) {
        rewrite(kSessionTias, " gives bit/s at session level.", "b=AS:", std::max(value / 1000, 1LL));
    } else if (!isSession && !isTias) {
        rewrite(kMediaAs, " gives the bandwidth of a section as AS.", "b=TIAS:", value * 1000);
    } else if (canonical == line.text) { // The spelling of any other line is blamed.
        for (const UnlikelyLimit& each : kUnlikelyLimits) {
            if (each.isTias == isTias && value >= each.least && value <= each.most) {
                rewrite(each.rule, each.what, isTias ? "b=TIAS:" : "b=AS:", each.meant(value));
            }
        }
    }
}

} // namespace

void FindBandwidth(Scene& scene) {
    const Reading& reading = scene.reading;
    const TextLine* session = nullptr;
    const TextLine* audio = nullptr;
    const TextLine* video = nullptr;
    bool hasMedia = false;
    for (const TextLine& line : reading.lines) {
        if (line.meant != SDPRow::Bandwidth) {
            continue;
        }
        const MeantSection* const section = reading.SectionOf(line);
        AddBandwidth(scene, line, section == nullptr);
        session = section == nullptr ? &line : session;
        hasMedia = hasMedia || section != nullptr;
        const long long value = BeginsWith(line.text, "b=TIAS:") ? NumberOf(ValueOf(line.text)) : -1;
        if (section == nullptr || value < 0) {
            continue;
        }
        if (section->isSlides && session == nullptr) {
            AddSlidesLimit(scene, line, value);
        }
        audio = section->media == "audio" && audio == nullptr ? &line : audio;
        video = section->media == "video" && !section->isSlides && video == nullptr ? &line : video;
    }
    if (session == nullptr) {
        AddSum(scene, audio, video);
    } else if (hasMedia) {
        Blame(scene, kReplaces, *session, {LineWords(*session), " stands beside bandwidths of sections."},
              {"delete line ", session->number}, {DeleteLine(*session)})
            .isTakenAway = true;
    }
}

} // namespace explain
