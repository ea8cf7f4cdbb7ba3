// What a line can set, read off the component: the value before and after it.
#pragma once

#include "SDPExplain.h"
#include "SDPHandler.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace explain {

/// The formats of one section by payload, the first of each; filled when it is first asked.
struct Formats {
    const MediaSession* section = nullptr;
    std::unordered_map<std::string_view, const RtpMap*> byPayload;
};

struct LineValue {
    std::string_view field; ///< name in the record
    std::string compared;   ///< the whole value, key text included; never shown
    std::string shown;      ///< for people
};

struct SessionValue {
    bool isSet = false;
    std::string shown;
};

/// The payload type that the component takes from an rtpmap or fmtp line: it begins at a fixed offset,
/// whatever comes before it (P20, P22). Empty when the line is too short.
std::string_view PayloadTaken(const SDPLine& line, std::string_view text);
/// The value that a line of this row works on in its section.
LineValue ValueOfLine(const SDPLine& line, std::string_view text, Formats& formats);
/// Whether the row understands a line that changed nothing, so that it says what already holds.
bool IsUnderstood(const SDPLine& line, std::string_view text, Formats& formats);
/// Whether the line alone gives its section this value, with nothing of an earlier line in it.
bool SaysAlone(const SDPLine& line, std::string_view text, const LineValue& value);
/// What a c= or b= line sets before the first section.
SessionValue SessionValueOf(const SDPLine& line, std::string_view text);
/// Offset of the keyword with which the row takes the line.
std::size_t KeywordAt(std::string_view text, SDPRow row);
/// Everything that a run ends with, as one text: record, sections, answer.
std::string DigestOf(const ExplainInput& input);

} // namespace explain
