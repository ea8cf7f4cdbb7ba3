// Stage: suspects in profile and level of H.264 formats (RFC 6184, 8.1).
// Input: fmtp lines of the video sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Picture.h"

#include "SDPTables.h"

namespace explain {

namespace {

constexpr Rule kLevel = {"E51", "X06", ExplainSeverity::Warning, 20,
                         "A level that is not in the table reads as 1.3 (X06), level 1b is FF alone (X05), "
                         "and all digits after the fourth are one number (G13)."};
constexpr Rule kProfile = {"E56", "", ExplainSeverity::Note, 64,
                           "The first four digits of profile-level-id, profile and constraints, are not "
                           "examined; our text always says baseline, 4200."};
constexpr Rule kNoLevel = {
    "E53", "", ExplainSeverity::Note, 63,
    "Level and limits come from the fmtp line of the chosen format alone; what it does not name is not set."};

std::string LevelDigits(const TextLine& fmtp) {
    const std::size_t at = Lower(fmtp.text).find("profile-level-id");
    const std::size_t equals = at == std::string::npos ? at : fmtp.text.find('=', at);
    if (equals == std::string::npos) {
        return {};
    }
    const std::string_view value =
        Trimmed(fmtp.text.substr(equals + 1, fmtp.text.find(';', equals) - equals - 1));
    return std::string(value);
}

} // namespace

void FindLevel(Scene& scene, const TextLine& fmtp, ExplainTopic topic) {
    const std::string value = LevelDigits(fmtp);
    if (value.size() < 4) {
        return;
    }
    const bool isHex = value.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    const long level = isHex && value.size() >= 6 ? std::stol(value.substr(4, 2), nullptr, 16) : -1;
    const bool isLevel1b =
        level == 11 && (std::stol(value.substr(2, 2), nullptr, 16) & 0x10) != 0 && value.substr(0, 2) != "64";
    std::string digits;
    for (int row = 0; row < sdp::kH264Levels; ++row) {
        const int known = sdp::__iH264Profile[row];
        digits = known <= level && known != 255 ? sdp::__strH264Profile2[row] : digits;
    }
    constexpr long level1b = 255;
    if (isLevel1b || level == level1b) {
        digits = "FF";
    }
    if (digits.empty() || value.size() < 6) {
        digits = "1F";
    }
    const std::string exact = (isHex ? value.substr(0, 4) : "4200") + digits;
    if (isHex && value.substr(0, 2) != "42") {
        Blame(scene, kProfile, fmtp, {LineWords(fmtp), " has a profile other than baseline."}, {}, {})
            .Know(topic, {"The far end may send a profile that this side did not offer to decode."});
    }
    if (Upper(exact) != Upper(value)) {
        std::string text(fmtp.text);
        text.replace(text.find(value), value.size(), exact);
        Blame(scene, kLevel, fmtp,
              {LineWords(fmtp), " has the profile-level-id ", AsShown(value), ", whose level",
               level > 0 ? " " + std::to_string(level / 10) + "." + std::to_string(level % 10) : "",
               " is not in the table", isLevel1b ? " in this form (1b)." : "."},
              {"write profile-level-id=", exact, " in line ", fmtp.number},
              {ReplaceLine(fmtp, std::move(text))});
    }
}

void FindMissingLevel(Scene& scene, const Picture& picture) {
    const std::string level = picture.fmtp == nullptr ? std::string() : LevelDigits(*picture.fmtp);
    const char* const comes = "The level of the picture is not known, so nothing limits what is sent.";
    constexpr std::size_t least = 4;
    if (level.size() >= least) {
        return; // It is read, and from another format than the one that is sent.
    }
    if (level.empty()) {
        Blame(scene, kNoLevel, picture.line, {LineWords(picture.line), " gives no profile-level-id."},
              {"add profile-level-id=42801f for payload ", AsShown(picture.payload)},
              {picture.With("profile-level-id=42801f")})
            .Know(picture.topic, {comes});
        return;
    }
    std::string text(picture.fmtp->text);
    text.replace(text.find(level), level.size(), "42801f");
    Suspect& suspect = Blame(
        scene, kNoLevel, *picture.fmtp,
        {LineWords(*picture.fmtp), " has a profile-level-id of fewer than four characters."},
        {"write profile-level-id=42801f in line ", picture.line.number}, {ReplaceLine(*picture.fmtp, text)});
    suspect.SayActed({"The level is what comes after the first four digits of profile-level-id, and a value "
                      "of fewer characters is dropped (RFC 6184, 8.1)."});
    suspect.Know(picture.topic, {comes});
}

} // namespace explain
