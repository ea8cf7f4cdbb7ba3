// The rtpmap and fmtp lines of a format, and m= and attribute lines with another payload.
//
// The finders of suspects in formats share these; a name is the one that the writer gave, whatever the
// component makes of it.
#pragma once

#include "Suspect.h"

namespace explain {

using FormatLines = std::unordered_map<std::string_view, std::size_t>;

/// Reported for a section that lists no format of this side (X07).
extern const Rule kNoCommonFormat;

/// The name in the last rtpmap line of a payload, without clock rate, upper case; empty without one.
std::string NameOf(const Scene& scene, const MeantSection& section, std::string_view payload);
/// The same as it is written.
std::string WrittenNameOf(const Scene& scene, const MeantSection& section, std::string_view payload);
/// The last of these lines for a payload; null without one.
const TextLine* LineOf(const Reading& reading, const FormatLines& lines, std::string_view payload);
/// "VP8/90000 (line 10), payload 34": what a section lists.
std::string NamesIn(const Scene& scene, const MeantSection& section);
/// "97 126": the formats of a section, of many the first.
std::string Payloads(const MeantSection& section);
/// The m= line with one format replaced, added at its end (`from` empty) or removed (`to` empty).
std::string WithFormat(const TextLine& line, std::string_view from, std::string_view to);
/// The payload of an rtpmap or fmtp line; the word in its place, such as "*", when that is no number.
std::string_view PayloadWordOf(std::string_view line);
/// The line with another payload after its colon.
std::string WithPayload(const TextLine& line, std::string_view payload);

/// Suspects in one section: lines for payloads that it does not list, and payloads without a name.
void FindUnlisted(Scene& scene, const MeantSection& section);
void FindNameless(Scene& scene, const MeantSection& section);
/// Suspects about a payload of an audio section that is a codec by its number, or should be one; `name` is
/// its NameOf. `isFirst`: the section is the one that the codec is chosen from.
void FindStatic(Scene& scene, const MeantSection& section, std::string_view payload, const std::string& name,
                bool isFirst);
/// Suspects about tones and about the choice of the codec, in the first audio section.
void FindTones(Scene& scene, const MeantSection& section);
void FindChoice(Scene& scene, const MeantSection& section);

} // namespace explain
