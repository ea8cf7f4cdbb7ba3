// Stage: one call out of its messages: what responses make of an offer, and how dialogs begin and end.
// Input: responses, ACK without a description and BYE, with their transaction. Output: steps and notes.
// Touches nothing.
// RFC 3261, 13.2.2, 14.1 and 15, says what each of them means.
// Test: tests/tool/captures.py
#include "CallReader.h"

#include "Words.h"

namespace cmsdp {

// A final response ends the INVITE with all its branches (RFC 3261, 13.2.2.3).
void CallReader::RefuseBranches(Transaction& transaction) {
    Transaction& root = transaction.root == nullptr ? transaction : *transaction.root;
    for (Transaction* const branch : root.offering) {
        m_agreements.Refuse(*branch);
        Close(*branch);
    }
    root.offering.clear();
}

void CallReader::Refuse(const SipMessage& message, Side from, Transaction& transaction) {
    m_agreements.Refuse(transaction);
    Close(transaction);
    RefuseBranches(transaction);
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
    Remember(message, m_agreements.Add(std::move(step)));
}

// The message that had to answer an offer does not, or not with a text that can be read.
void CallReader::NoAnswer(const SipMessage& message, Side from, Transaction& transaction) {
    if (!transaction.offers.empty() && transaction.answers.empty()) {
        m_call->steps[transaction.offers.back()].notes.push_back(
            StepOf(message, from).message +
            (message.unread.empty() ? " has no answer to this offer" : ": " + message.unread));
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
    Transaction& transaction = TransactionOf(message);
    transaction.isResponded = true;
    if (!message.unread.empty() && transaction.unread.empty() && message.status < 300) {
        transaction.unread = StepOf(message, from).message + ": " + message.unread;
    }
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
    Accept(message, transaction);
    if (message.status >= 200) {
        Final(message, from, transaction);
    }
}

// RFC 3261, 13.2.2.4: every 2xx makes a dialog; the first one takes the call.
void CallReader::Accept(const SipMessage& message, Transaction& transaction) {
    if (message.status < 200 || message.status >= 300 || message.cseqMethod != "INVITE") {
        return;
    }
    const Leg leg = LegOf(message);
    transaction.winner = transaction.winner.value_or(message.toTag);
    if (*transaction.winner == message.toTag) {
        m_agreements.Settle(transaction, leg);
    }
    const auto counted = transaction.counted.find(leg);
    if (counted != transaction.counted.end()) {
        m_live.emplace(leg.tags, counted->second.answer);
    } else if (!transaction.offers.empty()) {
        m_live.emplace(leg.tags, transaction.offers.back());
    }
}

// RFC 3261, 13.3.1.4: a 2xx is sent again and again until its ACK comes.
void CallReader::CountAccepted(const SipMessage& message) {
    if (message.method == "ACK") {
        TransactionOf(message).unacknowledged.erase(LegOf(message));
    } else if (message.cseqMethod == "INVITE" && message.status >= 200 && message.status < 300) {
        ++TransactionOf(message).unacknowledged[LegOf(message)];
    }
}

void CallReader::NoteMissing(const Transaction& transaction) {
    if (!transaction.isDone && !transaction.offers.empty()) {
        m_call->steps[transaction.offers.back()].notes.emplace_back(
            transaction.isResponded ? "no answer to it is in the input"
                                    : "no response to it is in the input");
    } else if (transaction.offers.empty() && transaction.answers.empty() && !transaction.unread.empty()) {
        m_call->notes.push_back(transaction.unread);
    }
    for (const auto& [leg, times] : transaction.unacknowledged) {
        const auto counted = transaction.counted.find(leg);
        if (times > 1 && counted != transaction.counted.end()) {
            m_call->steps[counted->second.answer].notes.push_back(
                "the response 2xx is in the input " + std::to_string(times) + " times, an ACK is not");
        }
    }
}

Call CallReader::Finish() {
    for (const auto& [key, transaction] : m_transactions) {
        NoteMissing(transaction);
    }
    if (m_call->steps.empty() && m_call->notes.empty()) {
        m_call->notes.emplace_back("no message of this call holds a description");
    }
    return std::move(*m_call);
}

void CallReader::End(const SipMessage& message, Step& step) {
    const auto ended = m_live.find(LegOf(message).tags);
    for (const Side side : {Side::Caller, Side::Callee}) {
        const Transaction* const open = step.kind == StepKind::End ? OpenOf(side, message) : nullptr;
        if (open != nullptr) {
            step.notes.push_back("the offer of step " + std::to_string(open->offers.back() + 1) +
                                 " is not answered yet");
        }
    }
    if (step.kind == StepKind::End && ended != m_live.end()) {
        if (m_live.size() > 1) {
            step.partner = ended->second;
        }
        m_live.erase(ended);
    }
}

} // namespace cmsdp
