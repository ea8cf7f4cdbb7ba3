// Stage: suspects in the single parameters of H.264 formats (RFC 6184, 8.1).
// Input: the fmtp lines of the video sections that the writer meant. Output: suspects.
// Touches the list of suspects. Table A-1 of H.264 is in the negotiation layer and is asked there.
// Test: tests/explain/judge_cases.py
#include "FormatLines.h"

#include "SDPH264Limits.h"
#include "SDPTables.h"

#include <set>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kTwice = {"E90", "X04", ExplainSeverity::Error, 15,
                         "The parameters of a format are read in order, so of two values for one name the "
                         "last one stands."};
constexpr Rule kContained = {
    "E91", "X04", ExplainSeverity::Error, 16,
    "The name of a parameter is found anywhere in the text before \"=\", so a longer name that contains it "
    "sets it as well."};
constexpr Rule kZeroLimit = {"E92", "", ExplainSeverity::Warning, 24,
                             "A limit of 0 is the value of a limit that is not given, so the record has none "
                             "and the level alone counts (RFC 6184, 8.1)."};
constexpr Rule kLowLimit = {"E93", "", ExplainSeverity::Note, 54,
                            "max-mbps, max-fs and max-br raise the limits of the level and never lower them "
                            "(RFC 6184, 8.1); the engine gets the number as it stands."};
constexpr Rule kHighRate = {"E173", "", ExplainSeverity::Warning, 25,
                            "max-br counts 1000 bit/s (RFC 6184, 8.1) and is taken as it stands."};
constexpr Rule kLowLevel = {"E94", "", ExplainSeverity::Note, 59,
                            "The level that the far end gives is the most that it decodes, so what is sent "
                            "to it stays within it (RFC 6184, 8.1)."};

constexpr Rule kLongLimit = {
    "E153", "G04", ExplainSeverity::Warning, 23,
    "A number is limited to 64 bits and then cut to 32, so a limit beyond 2147483647 "
    "is another one or negative (G04)."};

/// One parameter of an fmtp line: "max-fs=3600" of "a=fmtp:97 packetization-mode=1; max-fs=3600".
struct Parameter {
    std::size_t begin = 0;  ///< offset in the line
    std::size_t length = 0; ///< without the ';' after it
    std::string_view name;  ///< trimmed
    std::string_view value; ///< trimmed; empty without "="
};

std::vector<Parameter> ParametersOf(std::string_view line) {
    std::vector<Parameter> parameters;
    std::size_t begin = std::min(line.find_first_of(" \t"), line.size());
    while (begin < line.size()) {
        const std::size_t end = std::min(line.find(';', begin + 1), line.size());
        Parameter parameter;
        parameter.begin = begin + 1;
        parameter.length = end - parameter.begin;
        const std::string_view text = line.substr(parameter.begin, parameter.length);
        const std::size_t equals = text.find('=');
        parameter.name = Trimmed(text.substr(0, equals));
        parameter.value = equals == std::string_view::npos ? "" : Trimmed(text.substr(equals + 1));
        parameters.push_back(parameter);
        begin = end;
    }
    return parameters;
}

/// The line without the parameter and one ';' beside it.
std::string WithoutParameter(std::string_view line, const Parameter& parameter) {
    const std::size_t end = parameter.begin + parameter.length;
    const bool isLast = end >= line.size();
    const bool isFirst = line[parameter.begin - 1] != ';';
    std::string text(line.substr(0, parameter.begin - (isLast && !isFirst ? 1 : 0)));
    return text.append(line.substr(std::min(line.size(), end + 1)));
}

std::string WithValue(std::string_view line, const Parameter& parameter, const std::string& value) {
    const auto at = static_cast<std::size_t>(parameter.value.data() - line.data());
    return std::string(line.substr(0, at)) + value + std::string(line.substr(at + parameter.value.size()));
}

const sdp::H264Parameter* KnownIn(std::string_view name) {
    for (const sdp::H264Parameter& row : sdp::kH264Parameters) {
        if (name.find(row.name) != std::string_view::npos) {
            return &row;
        }
    }
    return nullptr;
}

/// Names that are given twice, and longer names that contain a known one.
void FindNames(Scene& scene, const TextLine& line) {
    constexpr std::size_t most = 8;
    std::set<std::string_view> given;
    std::size_t count = 0;
    for (const Parameter& parameter : ParametersOf(line.text)) {
        const sdp::H264Parameter* const known = KnownIn(parameter.name);
        if (known == nullptr || parameter.value.empty()) {
            continue;
        }
        const bool isExact = parameter.name == known->name;
        const bool isNew = given.insert(known->name).second;
        if ((isExact && isNew) || ++count > most) {
            continue;
        }
        const Piece shown = AsShown(line.text.substr(parameter.begin, parameter.length));
        Blame(scene, isExact ? kTwice : kContained, line,
              {LineWords(line), isExact ? " gives a second value, " : " has the parameter ", shown,
               isExact ? "" : ", whose name contains ", isExact ? "" : known->name, "."},
              {"take ", shown, " out of line ", line.number},
              {ReplaceLine(line, WithoutParameter(line.text, parameter))})
            .isTakenAway = true;
    }
}

struct Limit {
    std::string_view name;
    std::int32_t negotiation::H264Limits::*ofLevel;
    std::int32_t VideoParms::*given;
};
constexpr Limit kLimits[] = {
    {"max-mbps", &negotiation::H264Limits::maxMbps, &VideoParms::iFmtpMaxMbps},
    {"max-fs", &negotiation::H264Limits::maxFs, &VideoParms::iFmtpMaxFrameSize},
    {"max-br", &negotiation::H264Limits::maxBr, &VideoParms::iFmtpMaxBitRate},
};

/// Limits that are 0 or lower than those of the level, in the format that was chosen.
void FindLimits(Scene& scene, const TextLine& line, const VideoParms& stream, Topic topic) {
    const negotiation::H264Limits limits = negotiation::LimitsOfLevel(stream.strVideoLevel);
    for (const Parameter& parameter : ParametersOf(line.text)) {
        for (const Limit& limit : kLimits) {
            const std::int32_t given = stream.*limit.given;
            const std::string least = std::to_string(limits.*limit.ofLevel);
            if (parameter.name == limit.name && IsDigits(parameter.value) && IsOver32Bits(parameter.value)) {
                Blame(scene, kLongLimit, line,
                      {LineWords(line), " gives ", limit.name, "=", AsShown(parameter.value),
                       ", more than 32 bits hold."},
                      {"write ", limit.name, "=", least, " in line ", line.number},
                      {ReplaceLine(line, WithValue(line.text, parameter, least))});
                continue;
            }
            constexpr std::int32_t highest = 800000; // max-br of level 6.2, Table A-1 of H.264
            if (parameter.name == limit.name && limit.given == &VideoParms::iFmtpMaxBitRate &&
                IsDigits(parameter.value) && given > highest) {
                Blame(scene, kHighRate, line,
                      {LineWords(line), " gives max-br=", AsShown(parameter.value), ", more than the ",
                       highest, " of the highest level."},
                      {"write max-br=", given / 1000, " in line ", line.number},
                      {ReplaceLine(line, WithValue(line.text, parameter, std::to_string(given / 1000)))});
            }
            if (parameter.name != limit.name || !IsDigits(parameter.value) ||
                std::to_string(given) != parameter.value || given >= limits.*limit.ofLevel ||
                stream.strVideoLevel.empty()) {
                continue;
            }
            const Piece shown = AsShown(parameter.value);
            const bool isZero = given == 0;
            Blame(scene, isZero ? kZeroLimit : kLowLimit, line,
                  {LineWords(line), " gives ", limit.name, "=", shown, isZero ? "." : ", less than the ",
                   isZero ? "" : least, isZero ? "" : " of its level."},
                  {"write ", limit.name, "=", least, " in line ", line.number},
                  {ReplaceLine(line, WithValue(line.text, parameter, least))})
                .Know(topic, {"The limit of level ", stream.strVideoLevel, " and not ", limit.name, "=",
                              shown, " is what the far end means."});
        }
    }
}

void FindLevel(Scene& scene, const TextLine& line, const VideoParms& stream, Topic topic) {
    if (stream.strVideoLevel.empty() || stream.strVideoLevel >= "3") {
        return;
    }
    for (const Parameter& parameter : ParametersOf(line.text)) {
        if (parameter.name == sdp::kProfileLevelId && parameter.value.size() == 6) {
            const std::string value = std::string(parameter.value.substr(0, 4)) + "1F";
            Blame(scene, kLowLevel, line,
                  {LineWords(line), " gives the low level ", stream.strVideoLevel, "."},
                  {"write profile-level-id=", value, " in line ", line.number},
                  {ReplaceLine(line, WithValue(line.text, parameter, value))})
                .Know(topic, {"The far end is sent a small picture."});
        }
    }
}

} // namespace

void FindParameters(Scene& scene) {
    constexpr std::size_t most = 16;
    std::size_t count = 0;
    for (const MeantSection& section : scene.reading.sections) {
        if (section.media != "video" || ++count > most) {
            continue;
        }
        const Topic topic = section.isSlides ? Topic::Slides : Topic::MainPicture;
        const VideoParms& stream =
            section.isSlides ? scene.state.record.m_VideoPreso : scene.state.record.m_VideoMain;
        const std::string chosen = std::to_string(stream.iVideoPayload);
        for (std::size_t i = 0; i < section.formats.size() && i < most; ++i) {
            const TextLine* const line = LineOf(scene.reading, section.fmtp, section.formats[i]);
            if (line == nullptr || NameOf(scene, section, section.formats[i]) != "H264") {
                continue;
            }
            FindNames(scene, *line);
            if (section.formats[i] == chosen) {
                FindLimits(scene, *line, stream, topic);
                FindLevel(scene, *line, stream, topic);
            }
        }
    }
}

} // namespace explain
