// Stage: calls out of messages.
// Input: SIP messages in the order in which they were sent. Output: calls as steps.
// Touches nothing.
// RFC 3261, 13.2.1 and 14.1, RFC 3262, 5, RFC 3311 and RFC 6337 say which message offers and which answers.
// A retransmission, or the same message between a proxy and the next hop, is counted and adds no step.
// Test: tests/tool/captures.py
#include "SipCalls.h"

#include "Agreements.h"
#include "Words.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

namespace cmsdp {

namespace {

using Steps = std::vector<std::size_t>;
using Texts = std::map<std::string, std::size_t>; // description and its step

// A request and its responses. ACK belongs to its INVITE (RFC 3261, 17.1.1.3).
struct Transaction {
    bool isSeen = false;   // the request itself, not a response to it alone
    bool hasOffer = false; // the request holds a description
    Steps offers;          // the offer and what proxies made of it
    Steps answers;         // all of them
    Texts offerTexts;
    Texts answerTexts;
    Texts branches; // To tag and the last answer with it
};

using TransactionKey = std::tuple<Side, std::uint32_t, std::string>;
// What makes a message the same one, wherever it was seen.
using MessageKey = std::tuple<Side, std::string, int, std::uint32_t, std::string, std::string, std::string>;

class CallReader {
public:
    explicit CallReader(const SipMessage& first);
    void Read(const SipMessage& message);
    Call Finish() { return std::move(*m_call); }
    bool HasInvite() const { return m_hasInvite; }

private:
    Side RequesterOf(const SipMessage& message);
    Transaction& TransactionOf(const SipMessage& message, Side requester);
    Step StepOf(const SipMessage& message, Side from) const;
    bool IsRepeat(const SipMessage& message, Side from);
    void Remember(const SipMessage& message, Side from, std::size_t step);

    void ReadRequest(const SipMessage& message, Side from);
    void ReadResponse(const SipMessage& message, Side requester);
    void Offer(const SipMessage& message, Side from, Transaction& transaction);
    void OfferInResponse(const SipMessage& message, Side from, Transaction& transaction);
    void Answer(const SipMessage& message, Side from, Transaction& transaction);
    void AnswerAgain(const SipMessage& message, Side from, Transaction& transaction);
    void AnswerInRequest(const SipMessage& message, Side from, Transaction* offered);
    void Final(const SipMessage& message, Side from, Transaction& transaction);
    Transaction* OpenOfferOf(Side side);
    std::set<Transaction*>& OpenOf(Side side) { return m_open[static_cast<std::size_t>(side)]; }

    std::unique_ptr<Call> m_call = std::make_unique<Call>();
    Agreements m_agreements{*m_call};
    std::set<std::string> m_callerTags;
    std::map<TransactionKey, Transaction> m_transactions;
    std::map<MessageKey, std::optional<std::size_t>> m_known;
    std::array<std::set<Transaction*>, 2> m_open; // offers without answer, by the Side that made them
    std::optional<std::size_t> m_challenged;      // the offer that was answered by 401 or 407
    std::optional<double> m_start;
    bool m_hasInvite = false;
};

CallReader::CallReader(const SipMessage& first) {
    const bool isRequest = !first.method.empty();
    m_start = first.time;
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

Transaction* CallReader::OpenOfferOf(Side side) {
    return OpenOf(side).empty() ? nullptr : *OpenOf(side).begin();
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
    } else if (OpenOfferOf(OtherSide(from)) != nullptr) {
        step.notes.emplace_back("the other side's offer is not answered yet (RFC 3261, 14.1)");
    }
    if (m_challenged && m_call->steps[*m_challenged].text == step.text) {
        step.notes.push_back("the text of step " + std::to_string(*m_challenged + 1) +
                             ", sent with credentials");
    }
    m_challenged.reset();
    const std::size_t index = m_agreements.AddOffer(std::move(step));
    transaction.offers.push_back(index);
    transaction.offerTexts.emplace(message.description, index);
    OpenOf(from).insert(&transaction);
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
    OpenOf(OtherSide(from)).erase(&transaction);
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
void CallReader::AnswerInRequest(const SipMessage& message, Side from, Transaction* offered) {
    if (offered != nullptr && !offered->isSeen && offered->offers.empty() && offered->answers.size() == 1) {
        // Without the INVITE the description of its response looked like an answer.
        Step& taken = m_call->steps[offered->answers.front()];
        taken.kind = StepKind::Offer;
        taken.notes.clear();
        offered->offers.swap(offered->answers);
        offered->offerTexts.swap(offered->answerTexts);
        offered->branches.clear();
    }
    Transaction none;
    none.isSeen = offered != nullptr && offered->isSeen;
    Transaction& transaction = offered != nullptr && !offered->hasOffer ? *offered : none;
    if (transaction.answers.empty()) {
        Answer(message, from, transaction);
    } else {
        AnswerAgain(message, from, transaction);
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
        return;
    }
    if (message.method == "ACK") {
        AnswerInRequest(message, from, &transaction);
    } else if (message.method == "PRACK" && OpenOfferOf(OtherSide(from)) != nullptr) {
        AnswerInRequest(message, from, OpenOfferOf(OtherSide(from)));
    } else if (message.method == "INVITE" || message.method == "UPDATE" || message.method == "PRACK") {
        transaction.hasOffer = true;
        Offer(message, from, transaction);
    }
}

void CallReader::Final(const SipMessage& message, Side from, Transaction& transaction) {
    const bool isRefused = message.status >= 300;
    if (isRefused && !transaction.answers.empty()) {
        m_agreements.Refuse(transaction.offers.empty() ? transaction.answers.front()
                                                       : transaction.offers.front());
    }
    if (isRefused) {
        OpenOf(Side::Caller).erase(&transaction);
        OpenOf(Side::Callee).erase(&transaction);
    }
    if (isRefused && (!transaction.offers.empty() || message.cseqMethod == "INVITE")) {
        Step step = StepOf(message, from);
        step.text.clear(); // RFC 3261, 21.4.26: what a refusal describes answers nothing.
        step.kind = message.status == 401 || message.status == 407 ? StepKind::Challenge : StepKind::Refusal;
        if (!transaction.offers.empty()) {
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
    if (!isRefused && transaction.hasOffer && transaction.answers.empty() && !message.hasDescription) {
        m_call->steps[transaction.offers.back()].notes.push_back(StepOf(message, from).message +
                                                                 " has no answer to this offer");
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

void CallReader::ReadResponse(const SipMessage& message, Side requester) {
    const std::string& method = message.cseqMethod;
    if (method != "INVITE" && method != "UPDATE" && method != "PRACK") {
        return;
    }
    const Side from = OtherSide(requester);
    Transaction& transaction = TransactionOf(message, requester);
    if (message.hasDescription && message.status < 300) {
        if (transaction.isSeen && !transaction.hasOffer) {
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

bool IsOfCall(const SipMessage& message) {
    static constexpr std::string_view methods[] = {"INVITE", "ACK", "PRACK", "UPDATE", "CANCEL", "BYE"};
    return std::find(std::begin(methods), std::end(methods), message.cseqMethod) != std::end(methods);
}

} // namespace

std::vector<Call> CallsOf(const std::vector<SipMessage>& messages) {
    std::map<std::string, std::size_t> places;
    std::vector<std::unique_ptr<CallReader>> readers;
    for (const SipMessage& message : messages) {
        if (!IsOfCall(message)) {
            continue;
        }
        const auto [place, isNew] = places.emplace(message.callId, readers.size());
        if (isNew) {
            readers.push_back(std::make_unique<CallReader>(message));
        }
        readers[place->second]->Read(message);
    }
    std::vector<Call> calls;
    for (const auto& reader : readers) {
        if (reader->HasInvite()) {
            calls.push_back(reader->Finish());
        }
    }
    return calls;
}

} // namespace cmsdp
