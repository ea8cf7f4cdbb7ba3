// A program of another project: one negotiator offers and another answers; the status is 0 if audio starts on
// both sides. It is built with the installed component `negotiation`.
#include "SDPJudge.h"
#include "SDPNegotiator.h"

#include <commonmedia/SDPNegotiator.h>
#include <iostream>

namespace {

LocalSDP Capabilities(const char* address) {
    LocalSDP local;
    local.eAudioCodec = PAYLOAD_G722;
    local.listAudioCodecPriority = {PAYLOAD_G722};
    local.iAudioRTPPort = 16384;
    local.m_VideoMain.eVideoCodec = PayloadType_t(0);
    local.strDefaultIPAddr = address;
    return local;
}

bool Starts(const SDPNegotiator& call) {
    return call.Streams().size() == 1 && call.Streams()[0].state == SDPNegotiator::State::Start;
}

} // namespace

int main() {
    SDPNegotiator offerer;
    SDPNegotiator answerer;
    offerer.SetLocal(Capabilities("192.0.2.1"));
    answerer.SetLocal(Capabilities("192.0.2.2"));
    const SDPNegotiator::Outcome offer = offerer.Offer();
    const SDPNegotiator::Outcome answer = answerer.Answer(offer.text);
    offerer.Accept(answer.text);

    const bool isDone = Starts(offerer) && Starts(answerer) && CheckAnswer(offer.text, answer.text).empty();
    std::cout << "negotiation: " << (isDone ? "negotiated" : "FAILED") << '\n';
    return isDone ? 0 : 1;
}
