// The messages of one call in turn: what each of them offers, answers or refuses.
//
// Tests: tests/tool/captures.py
#pragma once

#include "Agreements.h"
#include "SipMessage.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace cmsdp {

using Steps = std::vector<std::size_t>;
using Texts = std::map<std::string, std::size_t>; // description and its step

/// A request and its responses. ACK belongs to its INVITE (RFC 3261, 17.1.1.3).
struct Transaction : OfferAnswer {
    std::string fromTag;
    std::string toTag;     // empty in a request that begins a call
    bool isSeen = false;   // the request itself, not a response to it alone
    bool hasOffer = false; // the request holds a description, be it one that cannot be read
    std::string unread;    // which message has an offer that cannot be read, and why
    Steps answers;         // all of them
    Texts offerTexts;
    Texts answerTexts;                         // To tag and description
    Texts branches;                            // To tag and the last answer with it
    std::vector<Transaction*> offering;        // of an INVITE without an offer: the branches that offer
    Transaction* root = nullptr;               // of such a branch: the INVITE
    bool isResponded = false;                  // any response
    bool isDone = false;                       // answered, refused, or known to have no answer
    std::map<Leg, std::size_t> unacknowledged; // how often a 2xx to INVITE was seen
    std::optional<std::string> winner;         // To tag of the first 2xx
};

/// Side of the requester, From tag, To tag, number and method: numbers are counted for each dialog (RFC
/// 3261, 12.2.1.1).
using TransactionKey = std::tuple<Side, std::string, std::string, std::uint32_t, std::string>;
/// What makes a message the same one, wherever it was seen.
using MessageKey =
    std::tuple<Side, std::string, std::string, std::string, int, std::uint32_t, std::string, std::string>;

/// The last offer of a side in each dialog, while it has no answer, by tags.
using Open = std::map<Leg::Pair, Transaction*>;

Leg LegOf(const SipMessage& message);

/// Reads the messages of one Call-ID.
class CallReader {
public:
    explicit CallReader(const SipMessage& first);
    void Read(const SipMessage& message);
    /// The call, with a note on what the input has no answer to.
    Call Finish();
    /// Whether any message belongs to an INVITE.
    bool HasInvite() const { return m_hasInvite; }

private:
    Side RequesterOf(const SipMessage& message);
    Transaction& TransactionOf(const SipMessage& message);
    Transaction& BranchOf(Transaction& root, TransactionKey key);
    Step StepOf(const SipMessage& message, Side from) const;
    Side RequesterKnown(const SipMessage& message) const;
    MessageKey KeyOf(const SipMessage& message) const;
    bool IsRepeat(const SipMessage& message);
    void Remember(const SipMessage& message, std::size_t step);

    void ReadRequest(const SipMessage& message, Side from);
    void ReadResponse(const SipMessage& message, Side requester);
    void Offer(const SipMessage& message, Side from, Transaction& transaction);
    void OfferInResponse(const SipMessage& message, Side from, Transaction& transaction);
    void Answer(const SipMessage& message, Side from, Transaction& transaction);
    void AnswerAgain(const SipMessage& message, Side from, Transaction& transaction);
    void AnswerInRequest(const SipMessage& message, Side from, Transaction& offered);
    void Refuse(const SipMessage& message, Side from, Transaction& transaction);
    void NoAnswer(const SipMessage& message, Side from, Transaction& transaction);
    void Final(const SipMessage& message, Side from, Transaction& transaction);
    void Accept(const SipMessage& message, Transaction& transaction);
    void End(const SipMessage& message, Step& step);
    bool IsAnsweredBy(const Transaction& transaction, Side side) const;
    void Close(Transaction& transaction);
    void RefuseBranches(Transaction& transaction);
    void CountAccepted(const SipMessage& message);
    void NoteMissing(const Transaction& transaction);
    Open& OpenOf(Side side) { return m_open[static_cast<std::size_t>(side)]; }
    Transaction* OpenOf(Side side, const SipMessage& message);

    std::unique_ptr<Call> m_call = std::make_unique<Call>();
    Agreements m_agreements{*m_call};
    std::set<std::string> m_callerTags;
    std::map<TransactionKey, Transaction> m_transactions;
    std::map<MessageKey, std::optional<std::size_t>> m_known;
    std::array<Open, 2> m_open;              // by Side
    std::map<Leg::Pair, std::size_t> m_live; // tags of a dialog that was accepted, and a step of it
    std::optional<std::size_t> m_challenged; // the offer that was answered by 401 or 407
    std::optional<double> m_start;
    bool m_hasInvite = false;
};

} // namespace cmsdp
