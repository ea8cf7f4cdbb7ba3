// Stage: suspects in floor control: role, ids, a section without it.
// Input: the application sections that the writer meant. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kRole = {"E80", "", ExplainSeverity::Warning, 30,
                        "The far end is the server only when the value is exactly s-only; for any other text "
                        "our answer is s-only."};
constexpr Rule kPlainRole = {"E85", "B16", ExplainSeverity::Note, 70,
                             "The role of the last floor control section decides: s-only is answered c-only, "
                             "anything else s-only (B16)."};
constexpr Rule kIds = {"E81", "B17", ExplainSeverity::Warning, 45,
                       "Our text always writes floor 2, stream 9, conference 15 and user 15, whatever the "
                       "far end assigned (B17)."};
constexpr Rule kClientIds = {
    "E176", "B17", ExplainSeverity::Note, 71,
    "The server gives the ids (RFC 4583, 5); our text always writes floor 2, stream 9, "
    "conference 15 and user 15 (B17)."};
constexpr Rule kIdWord = {
    "E87", "G18", ExplainSeverity::Warning, 20,
    "A number is decimal digits and nothing else; any other text leaves the id at 0 (G18)."};
constexpr Rule kNoId = {"E88", "G15", ExplainSeverity::Note, 40,
                        "An id that no line gives is 0 in the record (G15)."};
constexpr Rule kNoFloor = {"E89", "", ExplainSeverity::Note, 45,
                           "An application section is floor control only when its m= line contains BFCP."};

constexpr Rule kLongId = {"E151", "G04", ExplainSeverity::Warning, 19,
                          "A number is limited to 64 bits and then cut to 32 (G04)."};

void AddRole(Scene& scene, const TextLine& line, bool isServer) {
    Suspect& suspect =
        Blame(scene, kPlainRole, line, {LineWords(line), " gives the far end's role."}, {}, {});
    if (scene.input.remoteAnswers) {
        suspect.SayActed({"The far end is the server only when the value is exactly s-only."});
        suspect.Know(Topic::Floor, {isServer ? "The far end is the server, and this side is the client."
                                             : "The far end is the client, and this side is the server."});
    } else {
        suspect.Know(Topic::Floor, {isServer ? "Our answer says c-only: this side is the client."
                                             : "Our answer says s-only: this side is the server."});
    }
}

/// Whether the far end says that it is no floor control server.
bool IsClient(const Scene& scene, const MeantSection& section) {
    const auto first = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.line);
    const auto last = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.last) + 1;
    return std::any_of(first, last, [](const TextLine& line) {
        return line.meant == SDPRow::FloorControl && ValueOf(line.text) == "c-only";
    });
}

void FindFloorSection(Scene& scene, const MeantSection& section) {
    const bool isClient = IsClient(scene, section);
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& line = scene.reading.lines[i];
        const std::string value(ValueOf(line.text));
        const std::string number = std::to_string(line.number);
        if (line.meant == SDPRow::FloorControl && value != "s-only" && value != "c-only" && value != "c-s") {
            Blame(scene, kRole, line,
                  {LineWords(line), " has a role that is none of c-only, s-only and c-s."},
                  {"write a=floorctrl:s-only in line ", number}, {ReplaceLine(line, "a=floorctrl:s-only")});
        } else if (line.meant == SDPRow::FloorControl) {
            AddRole(scene, line, value == "s-only");
        }
        if ((line.meant == SDPRow::ConferenceId || line.meant == SDPRow::UserId) && !IsDigits(value)) {
            Blame(scene, kIdWord, line, {LineWords(line), " has a value that is not a number."},
                  {"write a number in line ", number},
                  {ReplaceLine(line, (line.meant == SDPRow::UserId ? "a=userid:15" : "a=confid:15"))});
        }
        const bool isId = line.meant == SDPRow::ConferenceId || line.meant == SDPRow::UserId;
        if (isId && IsDigits(value) && IsOver32Bits(value)) {
            Blame(scene, kLongId, line, {LineWords(line), " has an id of more than 32 bits."},
                  {"write a smaller number in line ", number},
                  {ReplaceLine(line, (line.meant == SDPRow::UserId ? "a=userid:15" : "a=confid:15"))});
        } else if (isId && IsDigits(value) && value != "15") {
            Blame(scene, isClient ? kClientIds : kIds, line,
                  {LineWords(line), " assigns another id than 15."}, {}, {})
                .Know(Topic::Floor,
                      {"Our text says 15 where the far end says ", AsShown(value),
                       isClient ? ", and the far end has to take the ids of this side, which is the server."
                                : ", so the floor control server refuses us or takes us for another user."});
        }
    }
}

void FindFloorIds(Scene& scene, const MeantSection& section) {
    const TextLine& media = scene.reading.lines[section.line];
    const auto first = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.line);
    const auto last = scene.reading.lines.begin() + static_cast<std::ptrdiff_t>(section.last) + 1;
    for (const SDPRow row : {SDPRow::ConferenceId, SDPRow::UserId}) {
        const char* const name = row == SDPRow::UserId ? "a=userid" : "a=confid";
        if (std::none_of(first, last, [&](const TextLine& line) { return line.meant == row; })) {
            Blame(scene, kNoId, media, {LineWords(media), " has no ", name, " line after it."},
                  {"insert ", name, ":15 after line ", media.number},
                  {InsertAfter(media, std::string(name) + ":15")});
        }
    }
}

} // namespace

void FindFloor(Scene& scene) {
    constexpr std::size_t most = 32;
    std::size_t count = 0;
    for (const MeantSection& section : scene.reading.sections) {
        if (++count > most) {
            break;
        }
        if (section.IsFloor()) {
            if (!section.IsDeclined()) {
                FindFloorSection(scene, section);
                FindFloorIds(scene, section);
            }
        } else if (section.media == "application") {
            const TextLine& media = scene.reading.lines[section.line];
            Blame(scene, kNoFloor, media, {LineWords(media), " has no BFCP transport."}, {}, {})
                .Know(ExplainTopic::Floor, {"The section is no floor control, so there is none from it."});
        }
    }
}

} // namespace explain
