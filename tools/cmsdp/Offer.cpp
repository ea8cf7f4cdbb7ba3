// cmsdp offer: what do we offer?
//
// Tests: tests/tool/offer.cases
#include "Redact.h"
#include "Verbs.h"
#include "Visible.h"

namespace cmsdp {

namespace {

// Whether a far end that can do everything could start a stream from the offer. The offer itself is read for
// that, so that the verdict is about what goes out.
std::string WhyNothingOffered(const std::string& offer) {
    if (offer.empty()) {
        return "there is no offer without an address: default_address is empty";
    }
    const Capabilities farEnd = BuiltInAnswerer();
    SDPHandler handler;
    Prepare(handler, farEnd);
    RemoteSDP seen;
    handler.ParseTheSDP(offer, seen);
    const bool audio = seen.iAudioRTPPort != 0 && seen.eAudioCodec != PAYLOAD_UNKNOWN;
    const auto video = [](const VideoParms& parms) {
        return parms.fIsVideoValid && parms.iVideoRTPPort != 0 && parms.iVideoPayload != 0;
    };
    return audio || video(seen.m_VideoMain) || video(seen.m_VideoPreso)
               ? ""
               : "no stream is offered: each one lacks a codec or has port 0";
}

} // namespace

Outcome RunOffer(const CommandLine& line, const Screen& screen) {
    if (line.fit) {
        return RunFittedOffer(line, screen);
    }
    const Capabilities side = SideOf(line.local);
    SDPHandler handler;
    Prepare(handler, side);
    const std::string offer = handler.GetLocalSDP();

    Secrets secrets(line.showSecrets);
    Outcome outcome;
    outcome.text = DescriptionFor(screen, secrets.Hide(offer));
    NoteHidden(outcome, secrets);
    const std::string why = WhyNothingOffered(offer);
    if (!why.empty()) {
        outcome.status = kNothingNegotiated;
        outcome.notes.push_back(why);
    }
    return outcome;
}

} // namespace cmsdp
