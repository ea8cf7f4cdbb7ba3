// Stage: suspects in directions and contents, and streams without a section.
// Input: the sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Lookalike.h"
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
    const bool isSpelling =
        (value.empty() && !ValueOf(Canonical(line, scene.reading)).empty()) || HasLookalike(line.text);
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
        if (main != nullptr && !isSpelled && !section.IsDeclined()) {
            const ExplainTextChange change = content == nullptr ? InsertAfter(line, "a=content:slides")
                                                                : ReplaceLine(*content, "a=content:slides");
            Suspect& suspect =
                Blame(scene, kContent, content == nullptr ? line : *content,
                      {LineWords(line), " is a second video section that is not marked a=content:slides."},
                      {content == nullptr ? "insert a=content:slides after line "
                                          : "write a=content:slides in line ",
                       content == nullptr ? line.number : content->number},
                      {change});
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

/// Whether a video section after the first one has port 0: the place of declined slides.
bool HasDeclinedFurther(const Reading& reading) {
    std::size_t videos = 0;
    return std::any_of(reading.sections.begin(), reading.sections.end(), [&](const MeantSection& section) {
        return section.media == "video" && ++videos > 1 && section.IsDeclined();
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

} // namespace explain
