// A call as its offers and answers came, and what each of them means for the side that receives it.
//
//     std::vector<Call> calls = CallsOfCapture("call.pcap", notes);
//     Evaluate(calls[0], BuiltInCapabilities(), std::nullopt);
//     for (const Step& step : calls[0].steps) { ... step.changes, step.findings ... }
//
// The functions that read find messages, sides and the order of offer and answer (RFC 3261, RFC 3264,
// RFC 6337). What a description says is read by explain alone.
//
// Tests: tests/tool/calls.cases, TimelineTest.cpp, captures.py
#pragma once

#include "Capabilities.h"
#include "SDPExplain.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// The two sides of a call. The caller sent the first INVITE.
enum class Side { Caller, Callee };

/// "caller" or "callee".
const char* SideName(Side side);
Side OtherSide(Side side);

enum class StepKind {
    Offer,     ///< a description that asks
    Answer,    ///< a description that answers the offer before it
    Refusal,   ///< a final response that refuses the offer, such as 488 or 491
    Challenge, ///< 401 or 407: the same request follows with credentials
    Cancel,    ///< the caller gives up before the answer
    End        ///< BYE
};

/// "offer", "answer", "refusal", "challenge", "cancel", "end".
const char* StepKindName(StepKind kind);

struct Step {
    std::optional<double> seconds; ///< after the first message of the call; none where no time is known
    Side from = Side::Caller;      ///< which side sent it
    StepKind kind = StepKind::Offer;
    bool isReOffer = false; ///< Offer: there is an agreement already
    bool isIgnored = false; ///< Answer: an earlier answer to the same offer counts (RFC 3261, 13.2.1)
    int status = 0;         ///< of a response; 0 for a request and for a file
    std::string message;    ///< "INVITE", "200 OK to INVITE", "ACK"; in a folder the name of the file
    std::string sender;     ///< "192.0.2.1:5060", "[2001:db8::1]:5060"; empty where it is not known
    std::string receiver;
    std::string place;              ///< SipMessage::place
    std::string text;               ///< Offer, Answer: the description, byte for byte
    bool isCut = false;             ///< the capture holds only the beginning of the description
    std::vector<std::string> notes; ///< sentences on the message: a wrong length, a missing offer
    std::size_t repeats = 0;        ///< retransmissions of it and later messages with the same text

    /// Offer: the step of its answer. Answer, Refusal, Challenge: the step of the offer. End: a step of the
    /// branch that it ends while another one goes on. None without one.
    std::optional<std::size_t> partner;
    /// The last agreed description of the same side and dialog, which this one replaces; of an ignored answer
    /// the one that counts.
    std::optional<std::size_t> previous;

    // Filled in by Evaluate, for an Offer or Answer that is read as the remote text of the other side and is
    // not cut.
    bool isEvaluated = false;
    /// ExplainDifference from the text of `previous`; ExplainStart where there is none. Nothing for an
    /// ignored answer.
    std::vector<std::string> changes;
    std::vector<ExplainFinding> findings;
    std::size_t untried = 0; ///< Explanation::untried
};

struct Call {
    std::string id;          ///< Call-ID; of a folder its name
    std::string caller;      ///< address, "192.0.2.1:5060"; empty where it is not known
    std::string callee;      ///< address
    std::string callerName;  ///< URI of the caller's From, "sip:alice@example.org"; may be empty
    std::string calleeName;  ///< URI of its To
    std::string replaces;    ///< Call-ID that its INVITE takes over (RFC 3891); usually empty
    double start = 0;        ///< seconds since 1970 of the first message; 0 where no time is known
    std::vector<Step> steps; ///< in the order in which they were sent
    std::vector<std::string> notes;
};

/// The calls of a packet capture, read by tshark. Throws ToolError: kFailed when tshark is not installed or
/// fails, kRemoteText when the file cannot be read or holds no call.
std::vector<Call> CallsOfCapture(const std::string& file, std::vector<std::string>& notes);

/// Whether a text begins with a SIP message.
bool HoldsSipMessages(std::string_view text);

/// The calls of a text that holds one SIP message after the other. Unless `exact`, LF alone ends a line in a
/// text without any CR LF.
std::vector<Call> CallsOfSipText(std::string_view text, bool exact, std::vector<std::string>& notes);

/// The files *.sdp of a folder, in order of name, as one call. Each is read as CleanedPaste reads it; what is
/// no description is named in a note. Throws ToolError(kRemoteText) when there is no description.
Call CallOfFolder(const std::string& folder, bool exact);

/// The side that "caller", "callee" or an address names; the address with or without its port. Throws
/// ToolError(kUsage) when it names neither side of the call.
Side SideNamed(const Call& call, const std::string& name);

/// What one side can do, as explain takes it; without any text.
ExplainInput InputOf(const Capabilities& side);

/// Everything that decides how the receiver of a step reads it. `step` is an Offer or an Answer.
ExplainInput InputOfStep(const Call& call, std::size_t step, const Capabilities& receiver);

/// Explains each description as the remote text of the side that receives it. With `we` only those that
/// this side receives.
void Evaluate(Call& call, const Capabilities& receiver, std::optional<Side> we);

} // namespace cmsdp
