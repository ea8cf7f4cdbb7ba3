// Stage: one call out of its messages: which description offers and which answers.
// Input: messages with a description, and their transaction. Output: steps with offer and answer paired.
// Touches nothing.
// RFC 3261, 13.2.1 and 14.1, RFC 3262, 5, RFC 3311 and RFC 6337 say which message does which.
// Test: tests/tool/captures.py
#include "CallReader.h"

namespace cmsdp {

void CallReader::Close(const Transaction& transaction) {
    for (Transaction*& open : m_open) {
        open = open == &transaction ? nullptr : open;
    }
}

bool CallReader::IsAnsweredBy(const Transaction& transaction, Side side) const {
    return !transaction.answers.empty() && m_call->steps[transaction.answers.front()].from == side;
}

void CallReader::Offer(const SipMessage& message, Side from, Transaction& transaction) {
    Step step = StepOf(message, from);
    if (!transaction.offers.empty()) {
        const Step& first = m_call->steps[transaction.offers.front()];
        step.notes.push_back(first.sender == message.sender
                                 ? "step " + std::to_string(transaction.offers.front() + 1) +
                                       " made this offer with another text"
                                 : "passed on by " + message.sender + ", which changed the text of step " +
                                       std::to_string(transaction.offers.front() + 1));
    } else if (OpenOf(OtherSide(from)) != nullptr) {
        step.notes.emplace_back(message.method == "UPDATE"
                                    ? "the other side's offer is not answered yet (RFC 3311, 5.2)"
                                    : "the other side's offer is not answered yet (RFC 3261, 14.1)");
    }
    if (m_challenged && m_call->steps[*m_challenged].text == step.text) {
        step.notes.push_back("the text of step " + std::to_string(*m_challenged + 1) +
                             ", sent with credentials");
    }
    m_challenged.reset();
    const std::size_t index = m_agreements.AddOffer(std::move(step));
    transaction.offers.push_back(index);
    transaction.offerTexts.emplace(message.description, index);
    OpenOf(from) = &transaction;
    Remember(message, from, index);
}

void CallReader::Answer(const SipMessage& message, Side from, Transaction& transaction) {
    const bool isNewBranch = !transaction.branches.empty();
    Step step = StepOf(message, from);
    if (transaction.offers.empty()) {
        step.notes.emplace_back(transaction.isSeen ? "there is no offer that this could answer"
                                                   : "the offer that this answers is not in the input; "
                                                     "the one that the local file makes is taken for it");
    }
    if (isNewBranch) {
        step.notes.emplace_back("another branch of the call answers: the tag of To is a new one "
                                "(RFC 3261, 12.1)");
    }
    const std::size_t index = m_agreements.AddAnswer(std::move(step), transaction.offers);
    transaction.answers.push_back(index);
    transaction.answerTexts.emplace(message.description, index);
    transaction.branches[message.toTag] = index;
    Close(transaction);
    Remember(message, from, index);
}

// A description in a response after the first one of the same branch.
void CallReader::AnswerAgain(const SipMessage& message, Side from, Transaction& transaction) {
    const auto same = transaction.answerTexts.find(message.description);
    if (same != transaction.answerTexts.end()) {
        Step& first = m_call->steps[same->second];
        ++first.repeats;
        first.notes.push_back(StepOf(message, from).message + " repeats it");
        Remember(message, from, same->second);
        if (transaction.branches.size() > 1) {
            m_agreements.Settle(same->second);
        }
        return;
    }
    const auto branch = transaction.branches.find(message.toTag);
    const std::size_t before =
        branch == transaction.branches.end() ? transaction.answers.front() : branch->second;
    const Step& first = m_call->steps[before];
    Step step = StepOf(message, from);
    step.previous = before;
    const std::string number = std::to_string(before + 1);
    step.notes.push_back(first.sender == message.sender
                             ? "step " + number +
                                   " answered the same offer with another text; the first "
                                   "answer counts (RFC 3261, 13.2.1)"
                             : "passed on by " + message.sender + ", which changed the text of step " +
                                   number);
    const std::size_t index = m_agreements.AddAnswer(std::move(step), transaction.offers);
    transaction.answers.push_back(index);
    transaction.answerTexts.emplace(message.description, index);
    transaction.branches[message.toTag] = index;
    Remember(message, from, index);
}

// RFC 3261, 13.2.1 and RFC 3262, 5: ACK and PRACK answer an offer that a response made.
void CallReader::AnswerInRequest(const SipMessage& message, Side from, Transaction& offered) {
    if (!offered.hasOffer && IsAnsweredBy(offered, OtherSide(from))) {
        // Without the INVITE the description of its response looked like an answer.
        for (const std::size_t taken : offered.answers) {
            m_call->steps[taken].kind = StepKind::Offer;
            m_call->steps[taken].notes.clear();
        }
        offered.offers.insert(offered.offers.begin(), offered.answers.begin(), offered.answers.end());
        offered.offerTexts.merge(offered.answerTexts);
        offered.answers.clear();
        offered.answerTexts.clear();
        offered.branches.clear();
    }
    Transaction none;
    none.isSeen = offered.isSeen;
    Transaction& transaction = offered.hasOffer ? none : offered;
    if (transaction.answers.empty()) {
        Answer(message, from, transaction);
    } else {
        AnswerAgain(message, from, transaction);
    }
}

// RFC 3261, 13.2.1: an INVITE without a description is answered by an offer.
void CallReader::OfferInResponse(const SipMessage& message, Side from, Transaction& transaction) {
    const auto same = transaction.offerTexts.find(message.description);
    if (same == transaction.offerTexts.end()) {
        const bool isFirst = transaction.offers.empty();
        Offer(message, from, transaction);
        if (isFirst) {
            m_call->steps.back().notes.push_back("the " + message.cseqMethod +
                                                 " has no description, so its response offers");
        }
        return;
    }
    Step& first = m_call->steps[same->second];
    ++first.repeats;
    first.notes.push_back(StepOf(message, from).message + " repeats it");
    Remember(message, from, same->second);
}

} // namespace cmsdp
