// Stage: what the finders of suspects in formats share.
// Input: a section that the writer meant. Output: its names, and lines with another payload.
// Touches nothing.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

namespace explain {

const Rule kNoCommonFormat = {
    "E45", "X07", ExplainSeverity::Error, 58,
    "A section without a common codec is still valid, has no codec and carries nothing (X07)."};

std::string NameOf(const Scene& scene, const MeantSection& section, std::string_view payload) {
    return Upper(WrittenNameOf(scene, section, payload));
}

std::string WrittenNameOf(const Scene& scene, const MeantSection& section, std::string_view payload) {
    const auto found = section.rtpmap.find(payload);
    if (found == section.rtpmap.end()) {
        return {};
    }
    const std::string_view name = WordOf(scene.reading.lines[found->second].text, 1);
    return std::string(name.substr(0, name.find('/')));
}

const TextLine* LineOf(const Reading& reading, const FormatLines& lines, std::string_view payload) {
    const auto found = lines.find(payload);
    return found == lines.end() ? nullptr : &reading.lines[found->second];
}

std::string NamesIn(const Scene& scene, const MeantSection& section) {
    constexpr std::size_t most = 5;
    std::string names;
    std::size_t count = 0;
    for (const std::string_view format : section.formats) {
        const TextLine* const line = LineOf(scene.reading, section.rtpmap, format);
        if (++count > most) {
            return names + " and more";
        }
        const std::vector<std::string_view> words =
            line == nullptr ? std::vector<std::string_view>() : WordsOf(line->text, 3);
        names += names.empty() ? "" : ", ";
        names += words.size() < 2 ? "payload " + Shown(format)
                                  : Shown(words[1]) + " (line " + std::to_string(line->number) + ")";
    }
    return names;
}

std::string Payloads(const MeantSection& section) {
    std::string text;
    for (std::size_t i = 0; i < section.formats.size() && i < 8; ++i) {
        text += (i == 0 ? "" : " ") + Shown(section.formats[i]);
    }
    return text;
}

std::string WithFormat(const TextLine& line, std::string_view from, std::string_view to) {
    const std::vector<std::string_view> words = WordsOf(line.text);
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = i >= 3 && words[i] == from ? to : words[i];
        text += word.empty() ? std::string() : (i == 0 ? "" : " ") + std::string(word);
    }
    return from.empty() ? text + " " + std::string(to) : text;
}

std::string_view PayloadWordOf(std::string_view line) {
    const std::string_view number = PayloadOf(line);
    const std::string_view value = ValueOf(line);
    return number.empty() ? value.substr(0, value.find_first_of(" \t")) : number;
}

std::string WithPayload(const TextLine& line, std::string_view payload) {
    const std::string_view old = PayloadWordOf(line.text);
    const auto at = static_cast<std::size_t>(old.data() - line.text.data());
    return std::string(line.text.substr(0, at)) + std::string(payload) +
           std::string(line.text.substr(at + old.size()));
}

} // namespace explain
