// SDPExplain: why a call came up as it did.
//
// SDPHandler reads a description exactly and says nothing about it. This library runs it and explains the
// outcome: what each line did, which single line or local field spoils a stream, and which edit mends it.
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
// Every edit is tried on the component before it is proposed: record, sections and answer with it and
// without it are compared, and a finding without an effect is not made. The component's rules of reading
// stand in its own sources only.
//
// The far end's text is untrusted: nothing in it makes a call throw, fail or read out of bounds. The cost
// grows with the length of the text; at most kExplainTrials edits are tried. Only std::bad_alloc is thrown.
// No sentence and no edit contains key text.
//
// Threads: the functions share nothing.
#pragma once

#include "CommonMediaExport.h"
#include "SDP.h"
#include "SDPLineObserver.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Everything that decides how a call comes up.
struct ExplainInput {
    LocalSDP local;                     ///< what this side can do
    bool srtp = false;                  ///< SDPHandler::m_bSRTP
    bool floorControl = false;          ///< SDPHandler::SetBfcpSupport
    bool floorControlIfOffered = false; ///< in answers floor control is on only where it was offered
    std::uint32_t servedSections = 2;   ///< SDPHandler::SetMaxSupportedSessions
    bool remoteAnswers = false;         ///< the remote text answers our offer
    std::string remote;                 ///< the far end's text, byte for byte
    std::string before;                 ///< the far end's text that was read before; empty: none
    std::string ourOffer;               ///< the offer that `remote` answers; empty: made from `local`
    std::string ourAnswer;              ///< the answer that was sent; empty: the one SDPHandler writes
};

/// What became of one line.
enum class ExplainVerdict {
    Used,       ///< it set something that still stands at the end of the text
    Agrees,     ///< it says what already held
    Overridden, ///< it set something that a later line, `byLine`, replaced
    Misread,    ///< another row than the one it begins with took it
    Tolerated,  ///< it was used although it is malformed
    Dropped,    ///< its row could not use it; `why` says why not
    Ignored,    ///< no row takes it, or nothing reads its value
    Joined      ///< it is part of the line before it, because that one does not end in CR LF
};

/// One line as an editor counts: LF ends it, with or without CR.
struct ExplainedLine {
    std::size_t number = 0; ///< from 1
    std::size_t offset = 0; ///< bytes from the start of the text
    std::size_t length = 0; ///< bytes, without the line end
    ExplainVerdict verdict = ExplainVerdict::Ignored;
    SDPRow row = SDPRow::None; ///< the row of the component that took the line
    std::size_t column = 0;    ///< where the row's keyword begins, from 1; 0 without a row
    std::string_view field;    ///< the field it set; empty when it set none
    std::string before;        ///< the field's value before it, key text as "***"
    std::string after;         ///< the field's value after it
    std::string why;           ///< why it changed nothing; empty when it did
    std::size_t byLine = 0;    ///< Overridden: the line that replaced it; Joined: the line it is part of
    std::string_view ledger;   ///< row of commonmedia/DELIBERATE.md, "P08"; empty for none
    std::string_view clause;   ///< where the line is defined, "RFC 4566, 5.7"
};

/// What a symptom is about. The order is that of ExplainTopicName.
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
inline constexpr std::size_t kExplainTopics = 15;

/// How much harm a finding does.
enum class ExplainSeverity {
    Note,    ///< meant so by one of the sides, or without effect on the media
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
    std::size_t offset = 0;
    std::size_t length = 0; ///< bytes that go; 0 inserts
    std::string text;       ///< bytes that come
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
    std::vector<ExplainTextChange> text;
    std::vector<ExplainLocalChange> local;
};

/// One cause of one symptom.
struct ExplainFinding {
    /// "E08": the rule of this library, never given to another one; or "J24", a rule of CheckAnswer.
    std::string_view id;
    ExplainTopic topic = ExplainTopic::Call;
    ExplainSeverity severity = ExplainSeverity::Note;
    std::vector<std::size_t> lines;           ///< the remote lines to blame, from 1
    const ExplainLocalField* field = nullptr; ///< the local field to blame
    std::string what;                         ///< sentence: what stands there
    std::string acted;                        ///< sentence: the rule that acted on it
    std::string comes;                        ///< sentence: what comes of it for the call
    std::string_view ledger;                  ///< row of commonmedia/DELIBERATE.md; empty for none
    std::string_view repair;                  ///< repair of SDPNegotiator that ends it; empty for none
    ExplainCure cure;
};

struct Explanation {
    std::vector<ExplainedLine> lines;     ///< every line of the text
    std::vector<ExplainFinding> findings; ///< most harmful first
    std::size_t untried = 0;              ///< suspicious places beyond kExplainTrials, not examined
};

/// The most edits that one call tries.
inline constexpr std::size_t kExplainTrials = 64;

/// Explains how the remote text was read and what came of it.
COMMONMEDIA_EXPORT Explanation Explain(const ExplainInput& input);

/// The verdicts of the lines alone.
COMMONMEDIA_EXPORT std::vector<ExplainedLine> ExplainLines(const ExplainInput& input);

/// The input with a cure applied. A cure of another input changes what its offsets name; offsets beyond the
/// text are left out.
COMMONMEDIA_EXPORT ExplainInput ExplainCured(const ExplainInput& input, const ExplainCure& cure);

/// Why one remote format is or is not one local codec.
struct ExplainPair {
    std::size_t line = 0;   ///< of the section's "m=" line
    std::string format;     ///< the format token of the "m=" line, "97"
    std::string encoding;   ///< the encoding name of its rtpmap attribute; empty without one
    PayloadType_t codec;    ///< the local codec it was compared with
    bool isMatch = false;   ///< every test passed
    std::string firstFault; ///< sentence: the first test that failed; empty for a match
};

/// Every pair of a remote format and a local codec, sections in order.
COMMONMEDIA_EXPORT std::vector<ExplainPair> ExplainWhyNot(const ExplainInput& input);

/// What the engine sees change between two descriptions of one far end, one phrase each; the input's own
/// remote text is not read. Key text is never part of a phrase.
COMMONMEDIA_EXPORT std::vector<std::string> ExplainDifference(const ExplainInput& input,
                                                              std::string_view older, std::string_view newer);

/// "audio.codec" and its like; null for a number that is no topic.
COMMONMEDIA_EXPORT const char* ExplainTopicName(ExplainTopic topic);
/// "used" and its like.
COMMONMEDIA_EXPORT const char* ExplainVerdictName(ExplainVerdict verdict);
/// "note", "warning", "error".
COMMONMEDIA_EXPORT const char* ExplainSeverityName(ExplainSeverity severity);
/// The local fields that findings name.
COMMONMEDIA_EXPORT const std::vector<ExplainLocalField>& ExplainLocalFields();
