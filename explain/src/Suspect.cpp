// Stage: what the finders of suspects share: edits of text and the words for places.
// Input: lines, fields. Output: edits, suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include "SDPTables.h"

#include <algorithm>

namespace explain {

ExplainTextChange ReplaceLine(const TextLine& line, std::string text) {
    return {line.offset, line.text.size(), std::move(text)};
}

ExplainTextChange DeleteLine(const TextLine& line) {
    return {line.offset, line.text.size() + line.end.size(), {}};
}

ExplainTextChange InsertAfter(const TextLine& line, const std::string& text) {
    const std::size_t end = line.offset + line.text.size() + line.end.size();
    return {end, 0, (line.end == "\r\n" ? "" : "\r\n") + text + "\r\n"};
}

bool IsFull(Scene& scene, const Rule& rule) {
    const bool isFull = scene.made[&rule] >= kExplainTrials;
    scene.skipped += isFull ? 1 : 0;
    return isFull;
}

namespace {

/// A suspect with its rule and its sentences; beyond the limit one without, which nobody examines.
Suspect& Add(Scene& scene, const Rule& rule, Pieces what, Pieces cureWords) {
    if (IsFull(scene, rule)) {
        scene.surplus = {};
        scene.surplus.isBrief = true;
        return scene.surplus;
    }
    ++scene.made[&rule];
    Suspect& suspect = scene.suspects.emplace_back();
    suspect.rule = &rule;
    suspect.isBrief = scene.isBrief;
    if (!scene.isBrief) {
        suspect.what = Joined(what);
        suspect.cure.words = Joined(cureWords);
    }
    return suspect;
}

} // namespace

Suspect& Blame(Scene& scene, const Rule& rule, const TextLine& line, Pieces what, Pieces cureWords,
               std::vector<ExplainTextChange> changes) {
    Suspect& suspect = Add(scene, rule, what, cureWords);
    suspect.lines = {line.number};
    std::stable_sort(
        changes.begin(), changes.end(),
        [](const ExplainTextChange& a, const ExplainTextChange& b) { return a.offset < b.offset; });
    suspect.cure.text = std::move(changes);
    return suspect;
}

Suspect& BlameField(Scene& scene, const Rule& rule, std::string_view file, Pieces what, Pieces cureWords,
                    std::int32_t number, std::string text) {
    Suspect& suspect = Add(scene, rule, what, cureWords);
    suspect.field = LocalField(file);
    suspect.cure.local.push_back({suspect.field, number, std::move(text)});
    return suspect;
}

void Suspect::Know(ExplainTopic topic, Pieces comes) {
    known.emplace_back(topic, isBrief ? std::string() : Joined(comes));
}

void Suspect::SayActed(Pieces sentence) {
    if (!isBrief) {
        acted = Joined(sentence);
    }
}

Piece LineWords(const TextLine& line) {
    return {Piece::Kind::Line, line.text, static_cast<long long>(line.number)};
}

std::string WithWord(const TextLine& line, std::size_t index, const std::string& word) {
    const std::vector<std::string_view> words = WordsOf(line.text, index + 1);
    const auto at = static_cast<std::size_t>(words[index].data() - line.text.data());
    return std::string(line.text.substr(0, at)) + word +
           std::string(line.text.substr(at + words[index].size()));
}

const char* RowWords(SDPRow row) {
    static constexpr const char* kWords[] = {
        "a connection line (c=)", "a media line (m=)",
        "an rtpmap line",         "a format parameter line (fmtp)",
        "a crypto line",          "an ICE line",
        "a candidate line",       "a content line",
        "a bandwidth line (b=)",  "a floor control role line",
        "a conference id line",   "a user id line",
        "a direction line (a=)",  "a line that nothing reads",
    };
    return kWords[static_cast<std::size_t>(row)];
}

std::string AfterWords(const Reading& reading, std::size_t index) {
    constexpr std::size_t most = 16;
    const TextLine* next = nullptr;
    for (std::size_t i = index + 1; i < reading.lines.size() && i <= index + most; ++i) {
        const TextLine& line = reading.lines[i];
        if (line.meant == SDPRow::Media) {
            break;
        }
        const bool isTelling = line.meant == SDPRow::Content || line.meant == SDPRow::Connection ||
                               line.meant == SDPRow::Crypto || Lower(line.text) == "a=inactive" ||
                               BeginsWith(line.text, "a=sendonly") || BeginsWith(line.text, "a=recvonly");
        if (isTelling) {
            return "line " + std::to_string(line.number) + ", " + Quoted(line.text);
        }
        next = next == nullptr ? &line : next;
    }
    return next == nullptr ? "no other line"
                           : "line " + std::to_string(next->number) + ", " + Quoted(next->text);
}

std::string_view SectionText(const Reading& reading, const MeantSection& section) {
    const TextLine& first = reading.lines[section.line];
    const TextLine& last = reading.lines[section.last];
    return reading.text.substr(first.offset, last.offset + last.text.size() + last.end.size() - first.offset);
}

bool IsDirection(const TextLine& line) {
    const std::string_view text = Trimmed(line.text);
    return std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                       [text](const sdp::Direction& direction) {
                           return text.size() == direction.keyword.size() && Lower(text) == direction.keyword;
                       });
}

bool HasDirectionName(const TextLine& line) {
    const std::string text = Lower(Trimmed(line.text));
    const std::size_t end =
        text.find_first_of(" \t:;,=/\"", 2); // None of these is part of a token (RFC 4566, 9).
    const std::string name = text.substr(0, end);
    return std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                       [&](const sdp::Direction& direction) { return name == direction.keyword; });
}

std::string FreePayload(const MeantSection& section) {
    for (int payload = 97; payload < 128; ++payload) {
        std::string text = std::to_string(payload);
        if (section.listed.count(text) == 0) {
            return text;
        }
    }
    return "96";
}

std::vector<ExplainTopic> TopicsOf(const MeantSection& section, bool isSlides) {
    if (section.media == "audio") {
        return {ExplainTopic::AudioSend, ExplainTopic::AudioReceive, ExplainTopic::AudioCodec};
    }
    if (section.media == "video") {
        return isSlides ? std::vector<ExplainTopic>{ExplainTopic::Slides}
                        : std::vector<ExplainTopic>{ExplainTopic::MainSend, ExplainTopic::MainReceive,
                                                    ExplainTopic::MainPicture};
    }
    return {ExplainTopic::Floor};
}

ExplainTopic EncryptionOf(const MeantSection& section, bool isSlides) {
    return section.media == "audio" ? ExplainTopic::EncryptionAudio
           : isSlides               ? ExplainTopic::EncryptionSlides
                                    : ExplainTopic::EncryptionMain;
}

} // namespace explain
