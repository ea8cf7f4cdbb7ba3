#include "Operations.h"

#include "Inputs.h"

#include <SDPNegotiator.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace bench {

namespace {

/// A handler with what it needs to parse and answer one text.
struct Call {
    SDPHandler handler;
    RemoteSDP remote;
    std::string text;
};

std::shared_ptr<Call> BeginCall(char letter) {
    auto call = std::make_shared<Call>();
    Begin(call->handler, Capabilities());
    if (letter != '\0') {
        call->text = ReadInput(letter);
    }
    return call;
}

/// Ends the program when an operation does not do its work: an empty answer would be the fastest.
void Demand(bool isMet, const char* what) {
    if (!isMet) {
        std::fprintf(stderr, "the operation does not produce %s\n", what);
        std::exit(2);
    }
}

/// Reads the text, fills the record and frees the sections.
std::function<void()> PrepareParse(char letter) {
    auto call = BeginCall(letter);
    call->handler.ParseTheSDP(call->text, call->remote);
    Demand(!call->handler.IsOffer() && call->remote.fIsAudioValid, "a text with an audio section");
    call->handler.ResetRemoteSDP();
    return [call] {
        call->handler.ParseTheSDP(call->text, call->remote);
        call->handler.ResetRemoteSDP();
    };
}

/// Writes the answer to a text that was read before, or the offer when there is none.
std::function<void()> PrepareDescribe(char letter) {
    auto call = BeginCall(letter);
    if (letter != '\0') {
        call->handler.ParseTheSDP(call->text, call->remote);
    }
    const std::string description = call->handler.GetLocalSDP();
    Demand(description.find("RTP/SAVP") != std::string::npos, "SRTP");
    Demand(description.find("UDP/BFCP") != std::string::npos, "floor control");
    Demand(description.find("a=content:slides") != std::string::npos, "a presentation");
    return [call] { call->handler.GetLocalSDP(); };
}

/// A whole call: construct the handler, set it up, parse, answer, destroy the handler.
std::function<void()> PrepareLife(char letter) {
    auto local = std::make_shared<LocalSDP>(Capabilities());
    const std::string text = ReadInput(letter);
    return [local, text] {
        SDPHandler handler;
        RemoteSDP remote;
        Begin(handler, *local);
        handler.ParseTheSDP(text, remote);
        handler.GetLocalSDP();
    };
}

/// A whole negotiation through the layer: a fresh call takes the offer, writes the answer and says what to
/// start.
std::function<void()> PrepareNegotiate(char letter) {
    auto fresh = std::make_shared<SDPNegotiator>();
    fresh->SetLocal(Capabilities());
    fresh->SetSrtp(SDPNegotiator::Srtp::Wanted);
    const std::string text = ReadInput(letter);
    const auto negotiate = [fresh, text] {
        SDPNegotiator call(*fresh);
        const SDPNegotiator::Outcome answer = call.Answer(text);
        return answer.isTaken && call.Streams()[0].state == SDPNegotiator::State::Start;
    };
    Demand(negotiate(), "a negotiated call");
    return [negotiate] { negotiate(); };
}

} // namespace

std::vector<Operation> Operations() {
    std::vector<Operation> all;
    for (const Input& input : kInputs) {
        const char letter = input.letter;
        all.push_back({std::string("parse ") + letter, kOurs, [letter] { return PrepareParse(letter); }});
    }
    all.push_back({"offer", kOurs, [] { return PrepareDescribe('\0'); }});
    for (const char letter : {'b', 'c', 'd'}) {
        all.push_back({std::string("answer ") + letter, kOurs, [letter] { return PrepareDescribe(letter); }});
    }
    all.push_back({"life c", kOurs, [] { return PrepareLife('c'); }});
    for (const char letter : {'b', 'c', 'd'}) {
        all.push_back(
            {std::string("negotiate ") + letter, kOurs, [letter] { return PrepareNegotiate(letter); }});
    }
    return all;
}

std::vector<Operation> AllOperations() {
    std::vector<Operation> all = Operations();
    const std::vector<Operation> peers = PeerOperations();
    all.insert(all.end(), peers.begin(), peers.end());
    return all;
}

} // namespace bench
