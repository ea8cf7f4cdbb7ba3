// The judge's rules for the formats of a section that answers another: numbers, encodings and their
// parameters.
//
// Input: both sections, read. Output: violations of the rules J24 to J28 and J40. Formats are found through
// sorted containers that belong to one section.
// Test: tests/judge/SDPJudgeFormatsTest.cpp, tests/judge/broken
#include "SDPJudgeText.h"

#include <algorithm>
#include <set>

namespace judge {

namespace {

// The profile as far as it matters: constrained or not, Baseline is one, because nobody sends what the
// constraint excludes; constraint_set3 alone makes the intra profiles of RFC 6184, 8.1, table 5.
std::string Profile(const std::map<std::string, std::string>& parameters) {
    const auto written = parameters.find("profile-level-id");
    if (written == parameters.end() || written->second.size() != 6 ||
        written->second.find_first_not_of("0123456789abcdef") != std::string::npos) {
        return "42";
    }
    const std::string idc = written->second.substr(0, 2);
    const bool set0 = written->second.find_first_of("89abcdef", 2) == 2;
    const bool set3 = std::string_view("13579bdf").find(written->second[2]) != std::string_view::npos;
    if (idc == "42" || ((idc == "4d" || idc == "58") && set0)) {
        return "42";
    }
    return idc + (set3 && idc != "4d" && idc != "58" ? " intra" : "");
}

using Values = std::map<std::string, std::string>;

std::string Value(const Values& parameters, const char* name, const char* otherwise) {
    const auto written = parameters.find(name);
    return written == parameters.end() || written->second.empty() ? otherwise : written->second;
}

void CheckParameters(const Pair& pair, std::string_view format, const std::string& encoding,
                     const Values& offered, const Values& answered) {
    const auto compare = [&](const char* rule, const char* what, const std::string& their,
                             const std::string& our) {
        if (their != our) {
            pair.Add(rule, 0, 0,
                     "Format " + Quoted(format) + " has " + what + " " + Quoted(our) + ", offered is " +
                         Quoted(their) + ".");
        }
    };
    if (encoding == "h264/90000") {
        compare("J28", "profile", Profile(offered), Profile(answered));
        compare("J28", "packetization mode", Value(offered, "packetization-mode", "0"),
                Value(answered, "packetization-mode", "0"));
    } else if (encoding == "g7221/16000" && offered.count("bitrate") != 0) {
        compare("J40", "bit rate", Value(offered, "bitrate", ""), Value(answered, "bitrate", ""));
    }
}

// Whether an offer has an encoding under its static number by a name that is not whole: "G722" without a
// clock rate, or "G722/16000" with the sampling rate (RFC 3551, 4.5.2).
bool IsOfferedInPart(std::string_view format, const std::set<std::string>& offered,
                     const std::string& encoding) {
    constexpr std::uint64_t firstDynamic = 96;
    const auto number = Number(format);
    return number && *number < firstDynamic &&
           std::any_of(offered.begin(), offered.end(), [&encoding](const std::string& name) {
               return encoding.compare(0, encoding.find('/'), name) == 0 ||
                      (encoding == "g722/8000" && name == "g722/16000");
           });
}

void CheckMeaning(const Pair& pair, std::string_view format, const std::set<std::string>& offered,
                  const std::set<std::string>& answered) {
    for (const std::string& encoding : answered) {
        if (offered.count(encoding) == 0 && !IsOfferedInPart(format, offered, encoding)) {
            pair.Add("J26", 0, 0,
                     "Format " + Quoted(format) + " is " + Quoted(encoding) + ", offered is " +
                         Quoted(*offered.begin()) + ".");
        }
    }
}

bool IsTone(const std::string& encoding) {
    return encoding.rfind("telephone-event/", 0) == 0 || encoding.rfind("cn/", 0) == 0;
}

} // namespace

void CheckFormats(const Pair& pair) {
    const Encodings offered = EncodingsOf(pair.theirs);
    const Encodings answered = EncodingsOf(pair.ours);
    Parameters theirs = ParametersOf(pair.theirs);
    Parameters ours = ParametersOf(pair.ours);
    const std::set<std::string_view> listed(pair.theirs.formats.begin(), pair.theirs.formats.end());
    bool codec = pair.ours.media != "audio" || !pair.ours.IsRtp();
    for (const std::string_view format :
         std::set<std::string_view>(pair.ours.formats.begin(), pair.ours.formats.end())) {
        const auto our = answered.find(format);
        const auto their = offered.find(format);
        codec = codec || our == answered.end() || !IsTone(*our->second.begin());
        if (listed.count(format) == 0) {
            pair.Add("J24", 0, 0, "Format " + Quoted(format) + " was not offered in this section.");
        } else if (our == answered.end() && pair.ours.IsRtp()) {
            pair.Add("J25", 0, 0, "Format " + Quoted(format) + " has no rtpmap line.");
        } else if (our != answered.end() && their != offered.end()) {
            CheckMeaning(pair, format, their->second, our->second);
            if (their->second.count(*our->second.begin()) != 0) {
                CheckParameters(pair, format, *our->second.begin(), theirs[format], ours[format]);
            }
        }
    }
    if (!codec) {
        pair.Add("J27", 0, 0, "The section can carry nothing but tones or comfort noise.");
    }
}

} // namespace judge
