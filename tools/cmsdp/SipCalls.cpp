// Stage: calls out of messages.
// Input: SIP messages in the order in which they were sent. Output: calls as steps.
// Touches nothing.
// Each Call-ID has a reader of its own, so calls may be interleaved.
// Test: tests/tool/captures.py
#include "SipCalls.h"

#include "CallReader.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace cmsdp {

namespace {

bool IsOfCall(const SipMessage& message) {
    static constexpr std::string_view methods[] = {"INVITE", "ACK", "PRACK", "UPDATE", "CANCEL", "BYE"};
    return std::find(std::begin(methods), std::end(methods), message.cseqMethod) != std::end(methods);
}

void NoteReplaced(std::vector<Call>& calls) {
    std::map<std::string, std::size_t> numbers;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        numbers.emplace(calls[i].id, i + 1);
    }
    for (Call& call : calls) {
        const auto replaced = numbers.find(call.replaces);
        if (!call.replaces.empty()) {
            call.notes.push_back("its INVITE replaces " +
                                 (replaced == numbers.end() ? "a call that is not in the input"
                                                            : "call " + std::to_string(replaced->second)) +
                                 " (RFC 3891)");
        }
    }
}

// Descriptions that neither offer nor answer: of OPTIONS (RFC 3261, 11.2), INFO and the like.
void NoteOthers(std::vector<Call>& calls, const std::set<std::pair<std::string, std::string>>& others) {
    for (Call& call : calls) {
        for (auto other = others.lower_bound({call.id, ""}); other != others.end() && other->first == call.id;
             ++other) {
            call.notes.push_back("the description in " + Short(other->second) +
                                 " or its response is not part of offer and answer");
        }
    }
}

} // namespace

std::vector<Call> CallsOf(const std::vector<SipMessage>& messages) {
    std::map<std::string, std::size_t> places;
    std::vector<std::unique_ptr<CallReader>> readers;
    std::set<std::pair<std::string, std::string>> others; // Call-ID and method
    for (const SipMessage& message : messages) {
        if (!IsOfCall(message)) {
            if (message.hasDescription) {
                others.emplace(message.callId, message.cseqMethod);
            }
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
    NoteReplaced(calls);
    NoteOthers(calls, others);
    return calls;
}

} // namespace cmsdp
