// Stage: suspects about the place of a line: before the sections, or in another one than its own.
// Input: the lines of the text and the sections they were meant for. Output: suspects.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>
#include <map>

namespace explain {

namespace {

constexpr Rule kBeforeSections = {"E10", "", ExplainSeverity::Error, 10,
                                  "At session level, before any section, only c= and b=AS: are read, so this "
                                  "line is dropped and counts for no section."};
constexpr Rule kOtherSection = {"E11", "", ExplainSeverity::Error, 11,
                                "A line changes only the section that was opened last; a payload that its m= "
                                "line does not list is dropped."};
constexpr Rule kFloorElsewhere = {"E12", "P17", ExplainSeverity::Error, 11,
                                  "Floor control values go to the section opened last, whatever its kind, "
                                  "and are read from a BFCP section only (P17)."};
constexpr Rule kContentElsewhere = {"E15", "", ExplainSeverity::Error, 9,
                                    "A content line counts for the section opened last and for a video "
                                    "section alone; without one a video section is main video."};
constexpr std::size_t kMoved = 4;    ///< lines of the session that move together at most
constexpr std::size_t kTargets = 32; ///< sections that one edit moves lines to at most

bool IsSectionRow(SDPRow row) {
    return row != SDPRow::Connection && row != SDPRow::Media && row != SDPRow::Bandwidth &&
           row != SDPRow::None;
}

bool Lists(const MeantSection& section, std::string_view payload) {
    return section.listed.count(payload) != 0;
}

/// Whether a session-level line is one for this section.
bool IsFor(const TextLine& line, const MeantSection& section) {
    switch (line.meant) {
    case SDPRow::Rtpmap:
    case SDPRow::Fmtp:
        return Lists(section, PayloadOf(line.text));
    case SDPRow::Content:
        return section.media == "video";
    case SDPRow::FloorControl:
    case SDPRow::ConferenceId:
    case SDPRow::UserId:
        return section.IsFloor();
    case SDPRow::Crypto:
        return section.media != "application";
    default:
        return true;
    }
}

bool IsOfFormat(SDPRow row) {
    return row == SDPRow::Rtpmap || row == SDPRow::Fmtp;
}

/// Whether the section has a line of the same kind of its own.
bool HasOwn(const Scene& scene, const TextLine& line, const MeantSection& section) {
    for (std::size_t i = section.line + 1; i <= section.last; ++i) {
        const TextLine& own = scene.reading.lines[i];
        const bool isSame = own.meant == line.meant &&
                            (line.meant != SDPRow::Direction || IsDirection(own)) &&
                            (!IsOfFormat(line.meant) || PayloadOf(own.text) == PayloadOf(line.text)) &&
                            (line.meant != SDPRow::Ice || own.text.substr(0, 8) == line.text.substr(0, 8));
        if (isSame && line.meant != SDPRow::Candidate) {
            return true;
        }
    }
    return false;
}

void FindSessionLevel(Scene& scene, const TextLine& line, std::size_t& budget) {
    if (!IsSectionRow(line.meant) || (line.meant == SDPRow::Direction && !IsDirection(line)) || budget == 0) {
        return;
    }
    --budget;
    // User fragment and password are of use together only, so they move together.
    std::vector<const TextLine*> moved;
    for (std::size_t i = 0; i < scene.reading.lines.size() && scene.reading.lines[i].section == kNowhere;
         ++i) {
        const TextLine& other = scene.reading.lines[i];
        const bool isSame =
            other.number == line.number || (line.meant == SDPRow::Ice && other.meant == SDPRow::Ice);
        // The far end chooses how many there are; the edit stays small.
        if (isSame && (moved.size() < kMoved || other.number == line.number)) {
            moved.push_back(&other);
        }
    }
    std::vector<ExplainTextChange> changes;
    changes.reserve(moved.size());
    for (const TextLine* const each : moved) {
        changes.push_back(DeleteLine(*each));
    }
    std::size_t count = 0;
    for (const MeantSection& section : scene.reading.sections) {
        if (++count > kTargets) {
            break;
        }
        const TextLine& media = scene.reading.lines[section.line];
        for (const TextLine* const each : moved) {
            if (IsFor(*each, section) && !HasOwn(scene, *each, section)) {
                changes.push_back(InsertAfter(media, std::string(Trimmed(each->text))));
            }
        }
    }
    if (changes.size() > moved.size()) {
        Blame(scene, kBeforeSections, line, {LineWords(line), " stands before the first m= line."},
              {"move line ", line.number, " after the m= lines that it is for"}, std::move(changes))
            .isTakenAway = true;
    }
}

/// A crypto line of a section that has no use for it, for the last secure section that has none.
void AddForeignKey(Scene& scene, const TextLine& line, const MeantSection& own) {
    const std::vector<MeantSection>& sections = scene.reading.sections;
    const auto lacking = std::find_if(sections.rbegin(), sections.rend(), [](const MeantSection& section) {
        return section.IsSecure() && !section.hasCrypto;
    });
    if (lacking == sections.rend()) {
        return;
    }
    const TextLine& media = scene.reading.lines[lacking->line];
    Blame(scene, kOtherSection, line,
          {LineWords(line), " stands in the ", AsShown(own.media), " section, and line ", media.number, ", ",
           InQuotes(media.text), ", has none."},
          {"move line ", line.number, " after line ", media.number},
          {DeleteLine(line), InsertAfter(media, std::string(Trimmed(line.text)))})
        .SayActed({"A crypto line counts for the section that was opened last, so the section that it is for "
                   "has no suite and no key."});
}

void FindForeign(Scene& scene, const TextLine& line, const std::map<std::string_view, std::size_t>& listedIn,
                 std::size_t floor) {
    const Reading& reading = scene.reading;
    const MeantSection& own = reading.sections[line.section];
    if (line.meant == SDPRow::Rtpmap || line.meant == SDPRow::Fmtp) {
        const std::string_view payload = PayloadOf(line.text);
        const auto other = listedIn.find(payload);
        if (!payload.empty() && !Lists(own, payload) && other != listedIn.end()) {
            const TextLine& media = reading.lines[reading.sections[other->second].line];
            Blame(scene, kOtherSection, line,
                  {LineWords(line), " stands in the ", own.media,
                   " section, whose m= line does not list payload ", AsShown(payload), "."},
                  {"move line ", line.number, " after line ", media.number},
                  {DeleteLine(line), InsertAfter(media, std::string(line.text))});
        }
    } else if (line.meant == SDPRow::Content && own.media != "video") {
        const auto next = std::find_if(reading.sections.begin() + static_cast<std::ptrdiff_t>(line.section),
                                       reading.sections.end(), [&](const MeantSection& section) {
                                           return section.media == "video" && !HasOwn(scene, line, section);
                                       });
        if (next != reading.sections.end()) {
            const TextLine& media = reading.lines[next->line];
            Blame(scene, kContentElsewhere, line,
                  {LineWords(line), " stands in the ", own.media, " section, before line ", media.number,
                   ", ", InQuotes(media.text), "."},
                  {"move line ", line.number, " after line ", media.number},
                  {DeleteLine(line), InsertAfter(media, std::string(Trimmed(line.text)))})
                .isTakenAway = true;
        }
    } else if (line.meant == SDPRow::Crypto && !own.IsSecure()) {
        AddForeignKey(scene, line, own);
    } else if ((line.meant == SDPRow::FloorControl || line.meant == SDPRow::ConferenceId ||
                line.meant == SDPRow::UserId) &&
               floor != kNowhere && !own.IsFloor()) {
        const TextLine& media = reading.lines[reading.sections[floor].line];
        Blame(scene, kFloorElsewhere, line, {LineWords(line), " stands in the ", own.media, " section."},
              {"move line ", line.number, " after line ", media.number},
              {DeleteLine(line), InsertAfter(media, std::string(line.text))});
    }
}

} // namespace

void FindMisplaced(Scene& scene) {
    const Reading& reading = scene.reading;
    std::map<std::string_view, std::size_t> listedIn;
    std::size_t floor = kNowhere;
    for (std::size_t i = 0; i < reading.sections.size(); ++i) {
        for (const std::string_view format : reading.sections[i].formats) {
            listedIn.emplace(format, i);
        }
        floor = floor == kNowhere && reading.sections[i].IsFloor() ? i : floor;
    }
    FindStrays(scene);
    std::size_t budget = 16;
    std::size_t foreign = 0;
    for (const TextLine& line : reading.lines) {
        if (line.section == kNowhere) {
            FindSessionLevel(scene, line, budget);
        } else if (foreign < kExplainTrials) {
            const std::size_t before = scene.suspects.size();
            FindForeign(scene, line, listedIn, floor);
            foreign += scene.suspects.size() - before;
        }
    }
}

} // namespace explain
