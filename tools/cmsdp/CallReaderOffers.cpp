// Stage: one call out of its messages: which description offers and which answers.
// Input: messages with a description, and their transaction. Output: steps with offer and answer paired.
// Touches nothing.
// RFC 3261, 13.2.1 and 14.1, RFC 3262, 5, RFC 3311 and RFC 6337 say which message does which.
// Test: tests/tool/captures.py
#include "CallReader.h"

#include "SipHeaders.h"

namespace cmsdp {

namespace {

// Branches may answer with the same text.
std::string BranchText(const SipMessage& message) {
    return message.toTag + "\n" + message.description;
}

// The text without its o= line (RFC 4566, 5.2).
std::string WithoutOrigin(std::string_view text) {
    std::string rest;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        if (TakeLine(text, at).compare(0, 2, "o=") != 0) {
            rest += text.substr(begin, at - begin);
        }
    }
    return rest;
}

} // namespace

void CallReader::Close(Transaction& transaction) {
    transaction.isDone = true;
    for (Open& open : m_open) {
        const auto found = open.find(Leg({transaction.fromTag, transaction.toTag}, {}).tags);
        if (found != open.end() && found->second == &transaction) {
            open.erase(found);
        }
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
    } else if (OpenOf(OtherSide(from), message) != nullptr) {
        step.notes.emplace_back(message.method == "UPDATE"
                                    ? "the other side's offer is not answered yet (RFC 3311, 5.2)"
                                    : "the other side's offer is not answered yet (RFC 3261, 14.1)");
    }
    if (m_challenged && m_call->steps[*m_challenged].text == step.text) {
        step.notes.push_back("the text of step " + std::to_string(*m_challenged + 1) +
                             ", sent with credentials");
    }
    m_challenged.reset();
    const std::size_t index = m_agreements.AddOffer(std::move(step), LegOf(message));
    transaction.offers.push_back(index);
    transaction.offerTexts.emplace(message.description, index);
    OpenOf(from).erase(Leg({transaction.fromTag, ""}, {}).tags);
    OpenOf(from)[Leg({transaction.fromTag, transaction.toTag}, {}).tags] = &transaction;
    Remember(message, index);
}

void CallReader::Answer(const SipMessage& message, Side from, Transaction& transaction) {
    const bool isNewBranch = !transaction.branches.empty();
    Step step = StepOf(message, from);
    if (transaction.offers.empty()) {
        step.notes.emplace_back(!transaction.unread.empty()
                                    ? transaction.unread +
                                          "; the offer that the local file makes is taken for it"
                                : transaction.isSeen ? "there is no offer that this could answer"
                                                     : "the offer that this answers is not in the input; "
                                                       "the one that the local file makes is taken for it");
    }
    if (isNewBranch) {
        step.notes.emplace_back("another branch of the call answers: the tag of To is a new one "
                                "(RFC 3261, 12.1)");
    }
    const std::size_t index = m_agreements.AddAnswer(std::move(step), transaction, LegOf(message));
    transaction.answers.push_back(index);
    transaction.answerTexts.emplace(BranchText(message), index);
    transaction.branches[message.toTag] = index;
    Close(transaction);
    Remember(message, index);
}

// A description in a response after the first one of the same branch.
void CallReader::AnswerAgain(const SipMessage& message, Side from, Transaction& transaction) {
    const auto same = transaction.answerTexts.find(BranchText(message));
    if (same != transaction.answerTexts.end()) {
        Step& first = m_call->steps[same->second];
        ++first.repeats;
        first.notes.push_back(StepOf(message, from).message + " repeats it");
        Remember(message, same->second);
        m_agreements.Repeat(same->second, transaction, LegOf(message), message.sender, message.receiver);
        return;
    }
    const auto branch = transaction.branches.find(message.toTag);
    const auto counted = transaction.counted.find(LegOf(message));
    const bool isPassedOn = counted == transaction.counted.end();
    const std::size_t before = !isPassedOn                            ? counted->second.answer
                               : branch != transaction.branches.end() ? branch->second
                                                                      : transaction.answers.front();
    Step step = StepOf(message, from);
    const std::string number = "step " + std::to_string(before + 1);
    step.notes.push_back(
        isPassedOn ? "passed on by " + message.sender + ", which changed the text of " + number
                   : (WithoutOrigin(m_call->steps[before].text) == WithoutOrigin(step.text)
                          ? "differs from " + number + ", which answered the same offer, in its o= line alone"
                          : number + " answered the same offer with another text") +
                         "; the first answer counts (RFC 3261, 13.2.1)");
    const std::size_t index = m_agreements.AddAnswer(std::move(step), transaction, LegOf(message));
    transaction.answers.push_back(index);
    transaction.answerTexts.emplace(BranchText(message), index);
    transaction.branches[message.toTag] = index;
    Remember(message, index);
}

// RFC 3261, 13.2.1 and RFC 3262, 5: ACK and PRACK answer an offer that a response made.
void CallReader::AnswerInRequest(const SipMessage& message, Side from, Transaction& offered) {
    if (!offered.hasOffer && IsAnsweredBy(offered, OtherSide(from))) {
        // Without the INVITE the description of its response looked like an answer.
        for (const std::size_t taken : offered.answers) {
            offered.offerTexts.emplace(m_call->steps[taken].text, taken);
            m_call->steps[taken].kind = StepKind::Offer;
            m_call->steps[taken].notes.clear();
        }
        offered.offers.insert(offered.offers.begin(), offered.answers.begin(), offered.answers.end());
        m_agreements.Refuse(offered);
        offered.counted.clear();
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
        if (isFirst && transaction.root != nullptr && transaction.root->offering.size() > 1) {
            m_call->steps.back().notes.emplace_back(
                "another branch of the call offers: the tag of To is a new one (RFC 3261, 12.1)");
        }
        return;
    }
    Step& first = m_call->steps[same->second];
    ++first.repeats;
    first.notes.push_back(StepOf(message, from).message + " repeats it");
    Remember(message, same->second);
}

} // namespace cmsdp
