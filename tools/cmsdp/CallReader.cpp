// Stage: one call out of its messages: sides, transactions, what is new and what was seen before.
// Input: SIP messages in the order in which they were sent. Output: steps.
// Touches nothing.
// A retransmission, or the same message between a proxy and the next hop, is counted and adds no step.
// Test: tests/tool/captures.py
#include "CallReader.h"

#include "Words.h"

namespace cmsdp {

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
    return m_callerTags.count(message.fromTag) != 0 ? Side::Caller : Side::Callee;
}

Transaction& CallReader::TransactionOf(const SipMessage& message, Side requester) {
    const std::string& method = message.cseqMethod;
    return m_transactions[{requester, message.cseq, method == "ACK" ? "INVITE" : method}];
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
    step.text = message.description;
    step.notes = message.notes;
    return step;
}

// True for a message that was read before: the same text once more, or on its way through a proxy.
bool CallReader::IsRepeat(const SipMessage& message, Side from) {
    const auto [known, isNew] =
        m_known.emplace(MessageKey(from, message.method, message.status, message.cseq, message.cseqMethod,
                                   message.method.empty() ? message.toTag : "", message.description),
                        std::nullopt);
    if (!isNew && known->second) {
        ++m_call->steps[*known->second].repeats;
    }
    return !isNew;
}

void CallReader::Remember(const SipMessage& message, Side from, std::size_t step) {
    m_known[MessageKey(from, message.method, message.status, message.cseq, message.cseqMethod,
                       message.method.empty() ? message.toTag : "", message.description)] = step;
}

void CallReader::Read(const SipMessage& message) {
    const Side requester = RequesterOf(message);
    const Side from = message.method.empty() ? OtherSide(requester) : requester;
    m_hasInvite = m_hasInvite || message.cseqMethod == "INVITE";
    if (message.method == "INVITE" && message.toTag.empty() && message.sender == m_call->callee) {
        m_call->callee = message.receiver; // a proxy passes the call on
    }
    if (IsRepeat(message, from)) {
        return;
    }
    if (message.method.empty()) {
        ReadResponse(message, requester);
    } else {
        ReadRequest(message, from);
    }
}

void CallReader::ReadRequest(const SipMessage& message, Side from) {
    Transaction& transaction = TransactionOf(message, from);
    if (message.method == "CANCEL" || message.method == "BYE") {
        Step step = StepOf(message, from);
        step.kind = message.method == "BYE" ? StepKind::End : StepKind::Cancel;
        Remember(message, from, m_agreements.Add(std::move(step)));
        return;
    }
    transaction.isSeen = transaction.isSeen || message.method != "ACK";
    if (!message.hasDescription) {
        if (message.method == "ACK" && !transaction.hasOffer) {
            NoAnswer(message, from, transaction);
        }
        return;
    }
    Transaction* const asked = OpenOf(OtherSide(from));
    if (message.method == "ACK") {
        AnswerInRequest(message, from, transaction);
    } else if (message.method == "PRACK" && asked != nullptr && !asked->hasOffer) {
        AnswerInRequest(message, from, *asked);
    } else if (message.method == "INVITE" || message.method == "UPDATE" || message.method == "PRACK") {
        if (!transaction.hasOffer && !transaction.offers.empty()) {
            // The same number again is another request than the one whose response made an offer.
            Close(transaction);
            transaction = Transaction();
            transaction.isSeen = true;
        }
        transaction.hasOffer = true;
        Offer(message, from, transaction);
    }
}

void CallReader::Refuse(const SipMessage& message, Side from, Transaction& transaction) {
    if (!transaction.answers.empty()) {
        m_agreements.Refuse(transaction.offers.empty() ? transaction.answers.front()
                                                       : transaction.offers.front());
    }
    Close(transaction);
    if (transaction.offers.empty() && message.cseqMethod != "INVITE") {
        return;
    }
    Step step = StepOf(message, from);
    step.text.clear(); // RFC 3261, 21.4.26: what a refusal describes answers nothing.
    step.kind = message.status == 401 || message.status == 407 ? StepKind::Challenge : StepKind::Refusal;
    if (!transaction.offers.empty() && m_call->steps[transaction.offers.back()].from != from) {
        step.partner = transaction.offers.back();
    }
    if (!message.warning.empty()) {
        step.notes.push_back("Warning: " + Short(message.warning));
    }
    if (step.kind == StepKind::Challenge) {
        m_challenged = step.partner;
    }
    Remember(message, from, m_agreements.Add(std::move(step)));
}

// The message that had to answer an offer does not.
void CallReader::NoAnswer(const SipMessage& message, Side from, Transaction& transaction) {
    if (!transaction.offers.empty() && transaction.answers.empty()) {
        m_call->steps[transaction.offers.back()].notes.push_back(StepOf(message, from).message +
                                                                 " has no answer to this offer");
        Close(transaction);
    }
}

void CallReader::Final(const SipMessage& message, Side from, Transaction& transaction) {
    if (message.status >= 300) {
        Refuse(message, from, transaction);
    } else if (transaction.hasOffer && !message.hasDescription) {
        NoAnswer(message, from, transaction);
    }
}

void CallReader::ReadResponse(const SipMessage& message, Side requester) {
    const std::string& method = message.cseqMethod;
    if (method != "INVITE" && method != "UPDATE" && method != "PRACK") {
        return;
    }
    const Side from = OtherSide(requester);
    Transaction& transaction = TransactionOf(message, requester);
    if (message.hasDescription && message.status < 300) {
        const bool isAsked =
            transaction.isSeen || !transaction.offers.empty() || IsAnsweredBy(transaction, requester);
        if (isAsked && !transaction.hasOffer) {
            OfferInResponse(message, from, transaction);
        } else if (transaction.answers.empty() || transaction.branches.count(message.toTag) == 0) {
            Answer(message, from, transaction);
        } else {
            AnswerAgain(message, from, transaction);
        }
    }
    if (message.status >= 200) {
        Final(message, from, transaction);
    }
}

} // namespace cmsdp
