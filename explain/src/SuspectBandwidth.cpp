// Stage: suspects in the bandwidths of the far end.
// Input: the b= lines and the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kSessionTias = {
    "E73", "P15", ExplainSeverity::Error, 12,
    "Before the first m= line b=TIAS is read as b=AS, so its bit/s are taken for kbit/s (P15)."};
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

long long NumberOf(std::string_view value) {
    return IsDigits(value) && value.size() < 17 ? std::stoll(std::string(value)) : -1;
}

/// b=TIAS of the slides, where it could have counted toward the total.
void AddSlidesLimit(Scene& scene, const TextLine& line, long long value) {
    const long long total = scene.state.record.iMaxBandwidth + value;
    const std::string text = "b=AS:" + std::to_string(total / 1000);
    const bool canTell = scene.state.record.iMaxBandwidth >= 0 && total > 0 && total < 2147483647 &&
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
    constexpr long long most = 2147483647;
    if (ofAudio < 0 || ofVideo < 0 || ofAudio > most || ofVideo > most || ofAudio + ofVideo <= most) {
        return;
    }
    const TextLine& line = ofAudio > ofVideo ? *audio : *video;
    const TextLine& other = ofAudio > ofVideo ? *video : *audio;
    const char* const text = ofAudio > ofVideo ? "b=TIAS:64000" : "b=TIAS:1000000";
    Blame(scene, kSumWraps, line,
          {LineWords(line), " and line ", other.number, ", ", InQuotes(other.text),
           ", have a sum of more than 2147483647 bit/s."},
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

void AddBandwidth(Scene& scene, const TextLine& line, bool isSession) {
    const std::string canonical = Canonical(line, scene.reading);
    const std::string number = std::to_string(line.number);
    const bool isTias = BeginsWith(canonical, "b=TIAS:");
    const long long value = NumberOf(ValueOf(canonical));
    if ((!isTias && !BeginsWith(canonical, "b=AS:")) || value < 0) {
        if (value > 0 && BeginsWith(canonical, "b=CT:")) {
            const std::string text = "b=AS:" + std::string(ValueOf(canonical));
            Blame(scene, kOtherType, line, {LineWords(line), " has a type of bandwidth that is not read."},
                  {"write line ", number, " as ", InQuotes(text)}, {ReplaceLine(line, text)});
        } else if (BeginsWith(canonical, "b=AS:") || BeginsWith(canonical, "b=TIAS:")) {
            AddNoNumber(scene, line, isSession, isTias);
        } else if (isSession && line.text.find("AS:") != std::string_view::npos) {
            Blame(scene, kInsideType, line, {LineWords(line), " is of another type and contains \"AS:\"."},
                  {"delete line ", number}, {DeleteLine(line)})
                .isTakenAway = true;
        }
        return;
    }
    const auto rewrite = [&](const Rule& rule, const std::string& why, const char* type, long long to) {
        const std::string text = std::string("b=") + type + ":" + std::to_string(to);
        Blame(scene, rule, line, {LineWords(line), why}, {"write line ", number, " as \"", text, "\""},
              {ReplaceLine(line, text)});
    };
    if (isSession && isTias) {
        rewrite(kSessionTias, " gives bit/s at session level.", "AS", std::max(value / 1000, 1LL));
    } else if (!isSession && !isTias) {
        rewrite(kMediaAs, " gives the bandwidth of a section as AS.", "TIAS", value * 1000);
    } else if (canonical != line.text) {
        // The spelling is blamed.
    } else if (value == 0) {
        rewrite(kZero, " gives a bandwidth of 0.", isTias ? "TIAS" : "AS", isTias ? 64000 : 64);
    } else if (!isTias && value > 2147483) {
        rewrite(kUnit, " gives more kbit/s than 32 bits hold in bit/s.", "AS", 2147483);
    } else if (!isTias && value >= 64000) {
        rewrite(kUnit, " gives kbit/s that look like bit/s.", "AS", value / 1000);
    } else if (isTias && value < 6000) {
        rewrite(kUnit, " gives bit/s that look like kbit/s.", "TIAS", value * 1000);
    } else if (isTias && value > 2147483647) {
        rewrite(kUnit, " gives more bit/s than 32 bits hold.", "TIAS", 2147483647);
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
