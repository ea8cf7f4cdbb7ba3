// SDPExplain: why a call came up as it did.
//
// SDPHandler reads a description exactly and says nothing about it. This library runs it and explains the
// outcome: what each line did, which line or local field prevents a stream, and which edit mends it.
//
//     ExplainInput input;
//     input.local = local;                    // the record given to SDPHandler::InitializeLocalSDP
//     input.remote = text;                    // the far end's bytes, as they came
//     const Explanation why = Explain(input);
//     for (const ExplainFinding& finding : why.findings) {
//         std::cout << finding.id << ": " << finding.what << " " << finding.acted << " " << finding.comes;
//     }
//     Explain(input).findings.empty()         // true for a text that is read and answered as it was meant
//     input.remote.clear(); Explain(input)    // no line, and one finding of topic "call"
//
// Every proposed edit was first applied to a copy of the input and read by SDPHandler, and record, sections
// and answer were compared with those of the input. The library has no copy of the rules of reading: it runs
// SDPHandler and asks the component's own tables.
//
// The far end's text is untrusted: nothing in it makes a function throw, fail or read out of bounds. The
// cost grows with the length of the text; the number of edits that are tried is limited. Only std::bad_alloc
// is thrown. No sentence and no edit contains key text.
//
// Threads: the functions share nothing.
#pragma once

#include "CommonMediaExport.h"
#include "SDP.h"
#include "SDPLineObserver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Everything that decides how a call comes up.
struct ExplainInput {
    LocalSDP local;                     ///< what this side can do
    bool srtp = false;                  ///< SDPHandler::m_bSRTP
    bool floorControl = false;          ///< SDPHandler::SetBfcpSupport
    bool floorControlIfOffered = false; ///< in answers, floor control only when the offer has it
    std::uint32_t servedSections = 2;   ///< SDPHandler::SetMaxSupportedSessions
    bool remoteAnswers = false;         ///< the remote text answers our offer
    std::string remote;                 ///< the far end's text, byte for byte
    std::string before;                 ///< the far end's text that was read before; empty: none
    std::string ourOffer;               ///< the offer that `remote` answers; empty: made from `local`
    std::string ourAnswer;              ///< the answer that was sent; empty: the one SDPHandler writes
};

/// What became of one line.
enum class ExplainVerdict {
    Used,       ///< it set something that still holds at the end of the text
    Agrees,     ///< it set a value equal to the present one
    Overridden, ///< it set something that a later line, `byLine`, replaced
    Misread,    ///< it was read as another kind of line than it begins as, see `row`
    Tolerated,  ///< it was used although it is malformed
    Dropped,    ///< it could not be used; `why` says why not
    Ignored,    ///< no kind of line matches, or nothing reads its value
    Joined      ///< it is part of the line before it, because that one does not end in CR LF
};

/// One line as an editor counts: LF ends it, with or without CR.
struct ExplainedLine {
    std::size_t number = 0;                           ///< from 1
    std::size_t offset = 0;                           ///< bytes from the start of the text
    std::size_t length = 0;                           ///< bytes, without the line end
    ExplainVerdict verdict = ExplainVerdict::Ignored; ///< what became of it
    SDPRow row = SDPRow::None;                        ///< what the component read the line as
    std::size_t column = 0;  ///< where the row's keyword begins, from 1; 0 without a row
    std::string_view field;  ///< the field it set; empty when it set none
    std::string before;      ///< the field's value before it, key text as "***"
    std::string after;       ///< the field's value after it
    std::string why;         ///< why it changed nothing; empty when it did
    std::size_t byLine = 0;  ///< Overridden: the line that replaced it; Joined: the line it is part of
    std::string_view ledger; ///< row of commonmedia/DELIBERATE.md, "P08"; empty for none
    std::string_view clause; ///< where the line is defined, "RFC 4566, 5.7"
};

/// The part of a call that a finding is about. The order is that of ExplainTopicName.
enum class ExplainTopic {
    AudioCodec,
    AudioSend,
    AudioReceive,
    MainPicture,
    MainSend,
    MainReceive,
    Slides,
    Floor,
    Dtmf,
    Bandwidth,
    EncryptionAudio,
    EncryptionMain,
    EncryptionSlides,
    Ice,
    Call
};
inline constexpr std::size_t kExplainTopics = 15; ///< how many topics there are

/// How much harm a finding does.
enum class ExplainSeverity {
    Note,    ///< intended by one side, or without effect on the media
    Warning, ///< the stream comes up with another value than the one that was meant
    Error    ///< the stream does not come up, goes to the wrong place or has the wrong key
};

/// A field of the local record, by both of its names.
struct ExplainLocalField {
    std::string_view record; ///< in the record or the handler, "listAudioCodecPriority"
    std::string_view file;   ///< in a local file of the command, "audio.priority"
};

/// A replacement of bytes of the remote text.
struct ExplainTextChange {
    std::size_t offset = 0; ///< bytes from the start of the text
    std::size_t length = 0; ///< bytes to remove; 0 inserts
    std::string text;       ///< bytes to insert
};

/// A new value of a local field.
struct ExplainLocalChange {
    const ExplainLocalField* field = nullptr; ///< a row of ExplainLocalFields
    std::int32_t number = 0;                  ///< for a number, a switch, a codec set or a suite
    std::string text;                         ///< for a text
};

/// The edit that ends a finding: changes of the remote text in ascending order, or of local fields.
struct ExplainCure {
    std::string words; ///< the edit as one phrase, such as "end line 7 with CR LF"; empty: none is known
    std::vector<ExplainTextChange> text;   ///< changes of the remote text
    std::vector<ExplainLocalChange> local; ///< changes of local fields
};

/// One cause of one symptom.
struct ExplainFinding {
    /// Stable name of the rule, never reused: "E08" of this library, "J24" of CheckAnswer (SDPJudge.h).
    std::string_view id;
    ExplainTopic topic = ExplainTopic::Call;          ///< the part of the call
    ExplainSeverity severity = ExplainSeverity::Note; ///< how much harm it does
    std::vector<std::size_t> lines;                   ///< the remote lines to blame, from 1
    const ExplainLocalField* field = nullptr;         ///< the local field to blame
    std::string what;                                 ///< sentence: the observed text or value
    std::string acted;                                ///< sentence: the rule that was applied to it
    std::string comes;                                ///< sentence: the effect on the call
    std::string_view ledger;                          ///< row of commonmedia/DELIBERATE.md; empty for none
    std::string_view repair; ///< repair of SDPNegotiator that mends it; empty for none
    ExplainCure cure;        ///< the edit that ends it
};

/// What Explain returns.
struct Explanation {
    std::vector<ExplainedLine> lines;     ///< every line of the text
    std::vector<ExplainFinding> findings; ///< most harmful first
    std::size_t untried = 0;              ///< suspicious places beyond the limit, not examined
};

/// The most edits of the remote text that are examined for findings; fewer for a text of more than 34 KiB.
/// Edits of local fields, and the checks whether a cure opens something worse, come on top.
inline constexpr std::size_t kExplainTrials = 64;

/// Explains how the remote text was read and what came of it.
COMMONMEDIA_EXPORT Explanation Explain(const ExplainInput& input);

/// The findings to be counted: those of Explain(input), in its order, without their sentences, repairs and
/// cures, at a fraction of its cost.
COMMONMEDIA_EXPORT std::vector<ExplainFinding> ExplainFindings(const ExplainInput& input);

/// ExplainFindings for many descriptions: what was read of our own answers is kept and not read again, as
/// long as it is of use. One counter for each thread.
class ExplainCounter {
public:
    COMMONMEDIA_EXPORT ExplainCounter();
    COMMONMEDIA_EXPORT ~ExplainCounter();
    ExplainCounter(const ExplainCounter&) = delete;
    ExplainCounter& operator=(const ExplainCounter&) = delete;

    /// As ExplainFindings(input).
    COMMONMEDIA_EXPORT std::vector<ExplainFinding> Findings(const ExplainInput& input);

private:
    struct Kept;
    std::unique_ptr<Kept> m_kept;
};

/// The verdicts of the lines alone.
COMMONMEDIA_EXPORT std::vector<ExplainedLine> ExplainLines(const ExplainInput& input);

/// The input with a cure applied. The cure has to be of the same input: one of another input changes whatever
/// bytes lie at its offsets. Offsets beyond the text are ignored.
COMMONMEDIA_EXPORT ExplainInput ExplainCured(const ExplainInput& input, const ExplainCure& cure);

/// Why a remote format matches or does not match a codec.
struct ExplainPair {
    std::size_t line = 0;   ///< of the section's "m=" line
    std::string format;     ///< the format token of the "m=" line, "97"
    std::string encoding;   ///< the encoding name of its rtpmap attribute; empty without one
    PayloadType_t codec;    ///< the codec it was compared with
    bool isMatch = false;   ///< every test passed
    std::string firstFault; ///< sentence: the first test that failed; empty for a match
};

/// Every pair of a remote format and a codec of its medium, sections in order; a codec that the local record
/// does not have says so.
COMMONMEDIA_EXPORT std::vector<ExplainPair> ExplainWhyNot(const ExplainInput& input);

/// What the media engine starts with after `input.remote`: one phrase for each parameter, such as
/// "audio.codec: audio has G.722 as payload 9". A stream without a section or a codec has one phrase
/// beside those of its encryption. No phrase contains key text.
COMMONMEDIA_EXPORT std::vector<std::string> ExplainStart(const ExplainInput& input);

/// Compares two descriptions of one far end: one phrase for each parameter of the media engine that differs.
/// `input.remote` is not read. No phrase contains key text.
COMMONMEDIA_EXPORT std::vector<std::string> ExplainDifference(const ExplainInput& input,
                                                              std::string_view older, std::string_view newer);

/// The name of a topic, such as "audio.codec"; null for a number that is no topic.
COMMONMEDIA_EXPORT const char* ExplainTopicName(ExplainTopic topic);
/// The name of a verdict, such as "used"; null for a number that is none.
COMMONMEDIA_EXPORT const char* ExplainVerdictName(ExplainVerdict verdict);
/// "note", "warning" or "error"; null for a number that is none.
COMMONMEDIA_EXPORT const char* ExplainSeverityName(ExplainSeverity severity);
/// The local fields that findings name.
COMMONMEDIA_EXPORT const std::vector<ExplainLocalField>& ExplainLocalFields();
