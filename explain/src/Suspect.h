// A suspect: a place that may spoil a stream, with the edit that would mend it.
//
// Finders look for suspects; they judge the spelling of the text against what its writer meant and never
// what the component makes of it. Whether a suspect does harm is decided by a run with its edit.
#pragma once

#include "Pieces.h"
#include "Reading.h"
#include "SDPExplain.h"
#include "State.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace explain {

/// One row of a rule table.
struct Rule {
    const char* id;       ///< "E08"
    const char* ledger;   ///< "P08"; empty for none
    ExplainSeverity most; ///< the most that the rule is reported with
    int rank;             ///< of two findings of equal severity the lower rank comes first
    const char* acted;    ///< sentence: what the component does with such a place
};

struct Suspect {
    const Rule* rule = nullptr;
    std::vector<std::size_t> lines;
    const ExplainLocalField* field = nullptr;
    std::string what;
    std::string acted;       ///< in place of the rule's sentence when not empty
    const char* ledger = ""; ///< in place of the rule's row when not empty
    ExplainCure cure;
    /// Topics on which the suspect is reported although no fact tells it, each with the consequence.
    std::vector<std::pair<ExplainTopic, std::string>> known;
    /// The edit takes something away that only seemed to work, so what dies by it counts as harm too.
    bool isTakenAway = false;
    bool isBrief = false; ///< its sentences are not shown and stay empty

    /// Reports the suspect on a topic, with what comes of it.
    void Know(ExplainTopic topic, Pieces comes);
    /// What the component does with such a place, in place of the rule's sentence.
    void SayActed(Pieces sentence);
};

/// Everything a finder looks at.
struct Scene {
    const ExplainInput& input;
    const Reading& reading;
    const State& state;
    std::vector<Suspect>& suspects;
    bool isBrief = false;    ///< what is found is counted, and its sentences are not shown
    bool hasIce = false;     ///< some section has a user fragment of ICE
    std::size_t skipped = 0; ///< suspects beyond kExplainTrials of one rule, which are counted and not made
    std::unordered_map<const Rule*, std::size_t> made{}; ///< suspects of each rule
    Suspect surplus{};                                   ///< what a finder writes to beyond the limit
};

/// The topics of a section's stream; of floor control for everything but audio and video.
std::vector<ExplainTopic> TopicsOf(const MeantSection& section, bool isSlides);
/// The topic of the section's encryption.
ExplainTopic EncryptionOf(const MeantSection& section, bool isSlides);

// The finders, in the order in which they run.
void FindLocalAudio(Scene& scene);
void FindLocalVideo(Scene& scene);
void FindLocalCall(Scene& scene);
void FindLineEnds(Scene& scene);
void FindMisread(Scene& scene);
void FindNames(Scene& scene);
void FindMisspelled(Scene& scene);
void FindMisplaced(Scene& scene);
void FindOverridden(Scene& scene);
void FindMedia(Scene& scene);
void FindAddresses(Scene& scene);
void FindAudioFormats(Scene& scene);
void FindVideoFormats(Scene& scene);
void FindParameters(Scene& scene);
void FindSecurity(Scene& scene);
void FindStreams(Scene& scene);
void FindBandwidth(Scene& scene);
void FindFloor(Scene& scene);
void FindIce(Scene& scene);
void FindPair(Scene& scene);

/// Parts of FindLocalCall, and of FindLocalAudio and FindLocalVideo: SRTP and its suites, addresses, a port
/// of our text, limits of a picture. `file` and `record` are the two names of a field, or how they begin.
void FindLocalSrtp(Scene& scene);
void FindLocalAddress(Scene& scene);
void FindLocalLimits(Scene& scene, std::string_view file, std::string_view record, const VideoParms& video,
                     ExplainTopic receives);
void FindLocalPort(Scene& scene, std::string_view file, std::string_view record, std::int32_t port,
                   const char* stream, ExplainTopic topic);
/// Part of FindLocalCall: ports of ours that overlap.
void FindOverlap(Scene& scene);
/// Part of FindLineEnds: a last line without its end.
void AddCutLine(Scene& scene, const Rule& rule, const TextLine& line);
/// Part of FindLineEnds: the rest of a line that was wrapped.
void FindWrapped(Scene& scene);
/// Part of FindMedia: the order of the sections, and several sections of one kind.
void FindSections(Scene& scene);
/// Part of FindMisplaced: lines of a neighbouring section.
void FindStrays(Scene& scene);
/// Part of FindSecurity: what is wrong with one crypto line. `earlier` is the last line before it in its
/// section with a suite that is read, or null; `hasRead`: the section has a line of such a suite.
void FindCryptoLine(Scene& scene, const TextLine& line, const TextLine* earlier, bool hasRead,
                    ExplainTopic topic);
/// Part of FindPair: formats of a section of the answer that differ from those of our offer.
void FindPairFormats(Scene& scene, const Reading& offer, const MeantSection& ours, const MeantSection& theirs,
                     const std::vector<ExplainTopic>& topics);

/// What strict readers say of the answer, when offer and answer are both given (CheckAnswer).
std::vector<ExplainFinding> JudgedFindings(const ExplainInput& input);
/// The repairs of the negotiation layer that this text needs, as pairs of ledger rows and an ID.
std::vector<std::pair<std::string_view, std::string_view>> NeededRepairs(const ExplainInput& input);

/// Whether it is seen at once that Canonical(line) is the line itself.
bool IsCanonical(const TextLine& line);
/// The line as its writer would have had to spell it; the line itself when nothing is wrong with it.
std::string Canonical(const TextLine& line, const Reading& reading);

/// The input's text with the edits of a cure, in `text`.
void Edit(const std::string& remote, const ExplainCure& cure, std::string& text);

// Edits of the remote text.
ExplainTextChange ReplaceLine(const TextLine& line, std::string text);
ExplainTextChange DeleteLine(const TextLine& line);
ExplainTextChange InsertAfter(const TextLine& line, const std::string& text);

/// Whether a rule has as many suspects as are examined. The caller makes no further one, which is counted
/// here; a finder asks where making one costs more than a few steps.
bool IsFull(Scene& scene, const Rule& rule);
/// Adds a suspect that blames one remote line; returns it, or one that nobody examines when its rule IsFull.
Suspect& Blame(Scene& scene, const Rule& rule, const TextLine& line, Pieces what, Pieces cureWords,
               std::vector<ExplainTextChange> changes);
/// Adds a suspect that blames a local field; returns as Blame does.
Suspect& BlameField(Scene& scene, const Rule& rule, std::string_view file, Pieces what, Pieces cureWords,
                    std::int32_t number, std::string text = {});
/// The field by its name in the local file; every name used is in the table.
const ExplainLocalField* LocalField(std::string_view file);
/// "Line 7, "a=sendonly","
Piece LineWords(const TextLine& line);
/// The line with another word in place of one of its words, from 0.
std::string WithWord(const TextLine& line, std::size_t index, const std::string& word);
/// "a connection line" and its like.
const char* RowWords(SDPRow row);
/// The line after this one that changes a section most visibly, quoted; "no other line" for none.
std::string AfterWords(const Reading& reading, std::size_t index);
/// The bytes of a section, from its m= line to its last line.
std::string_view SectionText(const Reading& reading, const MeantSection& section);
/// Whether the line is a direction and nothing else.
bool IsDirection(const TextLine& line);
/// Whether the line begins with the name of a direction, and not with a longer name such as
/// "a=inactive-timeout".
bool HasDirectionName(const TextLine& line);
/// A payload number that the section does not use.
std::string FreePayload(const MeantSection& section);

} // namespace explain
