// Stage: suspects in directions, contents and bandwidths.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPKeyword.h"
#include "SDPTables.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kDirection = {"E70", "P14", ExplainSeverity::Note, 60,
                             "Directions are the far end's and are mirrored: what it does not receive is not "
                             "sent, what it does not send is not received (P14)."};
constexpr Rule kContent = {
    "E71", "", ExplainSeverity::Error, 18,
    "Only a=content:main and a=content:slides are recognised; a video section with another content or none "
    "is main video, and of two main sections the second is skipped (RFC 4796, 5)."};
constexpr Rule kNoSection = {"E72", "", ExplainSeverity::Note, 66,
                             "A stream exists only when the text has a section of its kind."};
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

const sdp::Direction* DirectionOf(const TextLine& line) {
    return line.meant == SDPRow::Direction ? sdp::FirstKeyword<sdp::kDirections>(line.text) : nullptr;
}

void AddDirection(Scene& scene, const TextLine& line, const sdp::Direction& direction) {
    if (direction.sends && direction.receives) {
        return;
    }
    Blame(scene, kDirection, line,
          {LineWords(line), direction.sends ? " says that the far end only sends."
                            : direction.receives
                                ? " says that the far end only receives."
                                : " says that the far end neither sends nor receives (hold)."},
          {"write a=sendrecv in line ", line.number}, {ReplaceLine(line, "a=sendrecv")});
}

void AddContent(Scene& scene, const TextLine& line) {
    const std::string_view value = ValueOf(line.text);
    const std::string lower = Lower(value);
    const bool isSpelling = value.empty() && !ValueOf(Canonical(line, scene.reading)).empty();
    if (!isSpelling && !BeginsWith(lower, "main") && !BeginsWith(lower, "slides")) {
        Suspect& suspect =
            Blame(scene, kContent, line, {LineWords(line), " has a content that is not known."},
                  {"write a=content:slides in line ", line.number}, {ReplaceLine(line, "a=content:slides")});
        suspect.SayActed(
            {"Only a=content:main and a=content:slides are recognised, from the start; a section with "
             "another content is main video, and of two main sections the second is skipped (RFC 4796, "
             "5)."});
    }
}

void FindSecondVideo(Scene& scene) {
    const MeantSection* main = nullptr;
    std::size_t videos = 0;
    for (const MeantSection& section : scene.reading.sections) {
        videos += section.media == "video" ? 1 : 0;
        const TextLine* content = nullptr;
        for (std::size_t i = section.line; i <= section.last; ++i) {
            content = scene.reading.lines[i].meant == SDPRow::Content ? &scene.reading.lines[i] : content;
        }
        if (section.media != "video" || section.isSlides) {
            continue;
        }
        const TextLine& line = scene.reading.lines[section.line];
        const bool isSpelled = content != nullptr && Canonical(*content, scene.reading) == "a=content:slides";
        if (main != nullptr && !isSpelled && section.port != "0") {
            const ExplainTextChange change = content == nullptr ? InsertAfter(line, "a=content:slides")
                                                                : ReplaceLine(*content, "a=content:slides");
            Suspect& suspect =
                Blame(scene, kContent, content == nullptr ? line : *content,
                      {LineWords(line), " is a second video section that is not marked a=content:slides."},
                      {"insert a=content:slides after line ", line.number}, {change});
            suspect.lines.push_back(line.number);
            suspect.isTakenAway = true;
        }
        main = main == nullptr ? &section : main;
    }
    for (const TextLine& line : scene.reading.lines) {
        if (main == nullptr && line.meant == SDPRow::Content &&
            line.text.find("a=content:slides") != std::string_view::npos) {
            Blame(scene, kContent, line,
                  {LineWords(line),
                   videos == 1
                       ? " marks the only video section, so there is no main video section."
                       : " marks the first video section, and the others are marked so too: there is no "
                         "main video section."},
                  {"delete line ", line.number}, {DeleteLine(line)});
            break;
        }
    }
}

void AddMissing(Scene& scene, const char* words, std::initializer_list<Topic> topics) {
    const TextLine last = scene.reading.lines.empty() ? TextLine() : scene.reading.lines.back();
    Suspect& suspect =
        Blame(scene, kNoSection, last,
              {"No line up to line ", last.number, " opens a section for ", words, "."}, {}, {});
    for (const Topic topic : topics) {
        suspect.Know(topic, {"There is no section for ", words, ", so it does not come up."});
    }
}

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

/// Whether a video section after the first one has port 0: the place of declined slides.
bool HasDeclinedFurther(const Reading& reading) {
    std::size_t videos = 0;
    return std::any_of(reading.sections.begin(), reading.sections.end(), [&](const MeantSection& section) {
        return section.media == "video" && ++videos > 1 && section.port == "0";
    });
}

} // namespace

void FindStreams(Scene& scene) {
    for (const TextLine& line : scene.reading.lines) {
        const sdp::Direction* const direction = DirectionOf(line);
        if (direction != nullptr && HasDirectionName(line)) {
            AddDirection(scene, line, *direction);
        } else if (line.meant == SDPRow::Content) {
            AddContent(scene, line);
        }
    }
    FindSecondVideo(scene);
    const RemoteSDP& record = scene.state.record;
    if (!record.fIsAudioValid) {
        AddMissing(
            scene, "audio",
            {Topic::AudioCodec, Topic::AudioSend, Topic::AudioReceive, Topic::EncryptionAudio, Topic::Dtmf});
    }
    if (!record.m_VideoMain.fIsVideoValid) {
        AddMissing(scene, "main video",
                   {Topic::MainPicture, Topic::MainSend, Topic::MainReceive, Topic::EncryptionMain});
    }
    if (!record.m_VideoPreso.fIsVideoValid && !HasDeclinedFurther(scene.reading)) {
        AddMissing(scene, "slides", {Topic::Slides, Topic::EncryptionSlides});
    }
}

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
