// Stage: one call out of its messages: sides, transactions, what is new and what was seen before.
// Input: SIP messages in the order in which they were sent. Output: steps.
// Touches nothing.
// A retransmission, or the same message between a proxy and the next hop, is counted and adds no step.
// Test: tests/tool/captures.py
#include "CallReader.h"

#include "Words.h"

namespace cmsdp {

Leg LegOf(const SipMessage& message) {
    return Leg({message.fromTag, message.toTag}, {HostOf(message.sender), HostOf(message.receiver)});
}

CallReader::CallReader(const SipMessage& first) : m_start(first.time) {
    const bool isRequest = !first.method.empty();
    m_call->id = first.callId;
    m_call->start = first.time.value_or(0);
    m_call->caller = isRequest ? first.sender : first.receiver;
    m_call->callee = isRequest ? first.receiver : first.sender;
    m_call->callerName = first.fromUri;
    m_call->calleeName = first.toUri;
    m_callerTags.insert(first.fromTag);
    if (first.method != "INVITE" || !first.toTag.empty()) {
        m_call->notes.emplace_back("the input begins in the middle of this call; whoever sends the first "
                                   "request in it is taken for the caller");
    }
}

// Requests go in both directions once the call is up; the tag of From says whose they are.
Side CallReader::RequesterOf(const SipMessage& message) {
    if (message.method == "INVITE" && message.toTag.empty()) {
        m_callerTags.insert(message.fromTag);
    }
    return RequesterKnown(message);
}

Side CallReader::RequesterKnown(const SipMessage& message) const {
    return m_callerTags.count(message.fromTag) != 0 ? Side::Caller : Side::Callee;
}

MessageKey CallReader::KeyOf(const SipMessage& message) const {
    return {RequesterKnown(message), message.fromTag, message.toTag,      message.method,
            message.status,          message.cseq,    message.cseqMethod, message.description};
}

// The request that begins a call has no To tag; its responses and their ACK have one.
Transaction& CallReader::TransactionOf(const SipMessage& message) {
    const std::string method = message.cseqMethod == "ACK" ? "INVITE" : message.cseqMethod;
    TransactionKey key(RequesterKnown(message), message.fromTag, message.toTag, message.cseq, method);
    auto found = m_transactions.find(key);
    if (found == m_transactions.end()) {
        std::get<2>(key) = method == "INVITE" && message.method != "INVITE" ? "" : message.toTag;
        found = m_transactions.try_emplace(key).first;
        found->second.fromTag = message.fromTag;
        found->second.toTag = std::get<2>(key);
    }
    Transaction& transaction = found->second;
    const bool offers = message.hasDescription && message.status > 100 && message.status < 300;
    return offers && method == "INVITE" && transaction.isSeen && !transaction.hasOffer &&
                   transaction.toTag != message.toTag
               ? BranchOf(transaction,
                          {std::get<0>(key), message.fromTag, message.toTag, message.cseq, method})
               : transaction;
}

// RFC 3261, 13.2.1: a response to an INVITE without a description offers, each branch for itself.
Transaction& CallReader::BranchOf(Transaction& root, TransactionKey key) {
    Transaction& branch = m_transactions[key];
    branch.fromTag = root.fromTag;
    branch.toTag = std::get<2>(key);
    branch.isSeen = true;
    branch.root = &root;
    root.offering.push_back(&branch);
    return branch;
}

// The open offer of a side in the dialog of a message.
Transaction* CallReader::OpenOf(Side side, const SipMessage& message) {
    const Open& open = OpenOf(side);
    for (const Leg::Pair& tags : {Leg::Pair(message.fromTag, message.toTag), Leg::Pair(message.fromTag, ""),
                                  Leg::Pair(message.toTag, "")}) {
        const auto found = open.find(Leg(tags, {}).tags);
        if (found != open.end()) {
            return found->second;
        }
    }
    return nullptr;
}

Step CallReader::StepOf(const SipMessage& message, Side from) const {
    Step step;
    if (message.time && m_start) {
        step.seconds = *message.time - *m_start;
    }
    step.from = from;
    step.status = message.status;
    step.message = message.method;
    if (message.method.empty()) {
        step.message = std::to_string(message.status) + " " + Short(message.reason) +
                       (message.reason.empty() ? "to " : " to ") + message.cseqMethod;
    }
    step.sender = message.sender;
    step.receiver = message.receiver;
    step.place = message.place;
    step.text = message.description;
    step.isCut = message.isCut;
    step.notes = message.notes;
    return step;
}

// True for a message that was read before: the same text once more, or on its way through a proxy.
bool CallReader::IsRepeat(const SipMessage& message) {
    const auto [known, isNew] = m_known.emplace(KeyOf(message), std::nullopt);
    if (!isNew && known->second) {
        ++m_call->steps[*known->second].repeats;
        if (message.method.empty()) {
            Transaction& transaction = TransactionOf(message);
            m_agreements.Repeat(*known->second, transaction, LegOf(message), message.sender,
                                message.receiver);
            Accept(message, transaction);
        }
    }
    return !isNew;
}

void CallReader::Remember(const SipMessage& message, std::size_t step) {
    m_known[KeyOf(message)] = step;
}

void CallReader::Read(const SipMessage& message) {
    const Side requester = RequesterOf(message);
    const Side from = message.method.empty() ? OtherSide(requester) : requester;
    m_hasInvite = m_hasInvite || message.cseqMethod == "INVITE";
    m_call->replaces = message.replaces.empty() ? m_call->replaces : message.replaces;
    CountAccepted(message);
    if (message.method == "INVITE" && message.toTag.empty() && message.sender == m_call->callee) {
        m_call->callee = message.receiver; // a proxy passes the call on
    }
    if (IsRepeat(message)) {
        return;
    }
    if (message.method.empty()) {
        ReadResponse(message, requester);
    } else {
        ReadRequest(message, from);
    }
}

void CallReader::ReadRequest(const SipMessage& message, Side from) {
    if (message.method == "CANCEL" || message.method == "BYE") {
        Step step = StepOf(message, from);
        step.text.clear(); // Neither offers nor answers (RFC 3261, 13.1).
        step.kind = message.method == "BYE" ? StepKind::End : StepKind::Cancel;
        End(message, step);
        Remember(message, m_agreements.Add(std::move(step)));
        return;
    }
    Transaction& transaction = TransactionOf(message);
    transaction.isSeen = transaction.isSeen || message.method != "ACK";
    if (!message.unread.empty() && message.method != "ACK") {
        transaction.hasOffer = true;
        transaction.unread = message.method + ": " + message.unread;
    }
    if (!message.hasDescription) {
        if (message.method == "ACK" && !transaction.hasOffer) {
            NoAnswer(message, from, transaction);
        }
        return;
    }
    Transaction* const asked = OpenOf(OtherSide(from), message);
    if (message.method == "ACK") {
        AnswerInRequest(message, from, transaction);
    } else if (message.method == "PRACK" && asked != nullptr && !asked->hasOffer) {
        AnswerInRequest(message, from, *asked);
    } else if (message.method == "INVITE" || message.method == "UPDATE" || message.method == "PRACK") {
        if (!transaction.hasOffer && !transaction.offers.empty()) {
            // The same number again is another request than the one whose response made an offer.
            Close(transaction);
            static_cast<OfferAnswer&>(transaction) = OfferAnswer();
            transaction.isDone = false;
            transaction.answers.clear();
            transaction.offerTexts.clear();
            transaction.answerTexts.clear();
            transaction.branches.clear();
        }
        transaction.hasOffer = true;
        Offer(message, from, transaction);
    }
}

} // namespace cmsdp
