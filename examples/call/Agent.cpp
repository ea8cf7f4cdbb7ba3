// The call: what happens when a text comes, when the user wants something, and when time passes. Every
// description passes through SDPNegotiator, and media start from its Streams() alone. Exercised by the calls
// of tests/realcall.
#include "Agent.h"

#include <string>

namespace call {

namespace {

/// "stream 0 audio: send receive to 127.0.0.1:20000, payloads 0/0, suite 1", or the reason why there is none.
std::string Described(const SDPNegotiator::Stream& stream) {
    static const char* const names[] = {"audio", "video", "floor control", "other"};
    std::string text =
        "stream " + std::to_string(stream.section) + " " + names[static_cast<int>(stream.media)];
    if (stream.media == SDPNegotiator::Media::Video && stream.role != VIDEOTYPE_UNKNOWN) {
        text += stream.role == VIDEOTYPE_PRESO ? " slides" : " main";
    }
    text += ":";
    text += stream.send ? " send" : "";
    text += stream.receive ? " receive" : "";
    if (stream.state == SDPNegotiator::State::Start || stream.state == SDPNegotiator::State::Held) {
        text += " to " + stream.address + ":" + std::to_string(stream.port) + ", payloads " +
                std::to_string(stream.sendPayload) + "/" + std::to_string(stream.receivePayload) +
                ", suite " + std::to_string(stream.suite);
    }
    return stream.reason.empty() ? text : text + ", " + std::string(stream.reason);
}

} // namespace

Agent::Agent(const Options& options)
    : m_options(options), m_journal(options.directory), m_engine(m_journal),
      m_signalling(options.address, options.sipPort, options.directory + "/sip.log", *this) {}

int Agent::Run() {
    const SDPNegotiator::Wish wish = m_call.SetLocal(CapabilitiesOf(m_options));
    m_call.SetSrtp(SrtpOf(m_options));
    m_call.Present(m_options.isPresenting);
    if (!wish.isTaken || !m_signalling.IsOpen()) {
        m_journal.Note(wish.isTaken ? "the port of signalling is not free" : std::string(wish.reason));
        return 1;
    }
    m_journal.Note("ready");
    if (!m_options.uri.empty()) {
        Call();
    }
    m_signalling.Run();
    return m_isEstablished ? 0 : 1;
}

void Agent::Call() {
    std::string offer;
    if (!m_options.isDelayed) {
        const SDPNegotiator::Outcome outcome = m_call.Offer();
        offer = outcome.text;
        if (!outcome.isTaken) {
            m_journal.Note("no offer: " + std::string(outcome.reason));
            return End();
        }
        m_journal.Keep("sent-offer", offer);
    }
    if (!m_signalling.Call(m_options.uri, offer)) {
        m_journal.Note("no call to " + m_options.uri);
        End();
    }
}

SignallingListener::Reply Agent::OnOffer(std::string_view body) {
    if (!body.empty()) {
        m_journal.Keep("received-offer", body);
    }
    const SDPNegotiator::Outcome outcome = body.empty() ? m_call.Offer() : m_call.Answer(body);
    if (!outcome.isTaken) {
        m_journal.Note("refused with " + std::to_string(outcome.status) + ": " + std::string(outcome.reason));
        return {outcome.status == 0 ? 488 : outcome.status, ""};
    }
    m_journal.Keep(body.empty() ? "sent-offer" : "sent-answer", outcome.text);
    UpdateMedia();
    return {200, outcome.text};
}

void Agent::OnAnswer(std::string_view body) {
    m_journal.Keep("received-answer", body);
    const SDPNegotiator::Outcome outcome = m_call.Accept(body);
    if (!outcome.isTaken) {
        m_journal.Note("answer not taken: " + std::string(outcome.reason));
        // A second answer that is not taken changes nothing; without a first one there is no agreement.
        m_mustEnd = m_call.GetPhase() == SDPNegotiator::Phase::OfferSent;
    }
    UpdateMedia();
}

void Agent::OnOfferRefused(int status) {
    m_journal.Note("offer refused with " + std::to_string(status));
    m_call.Refused(status);
    UpdateMedia();
}

void Agent::OnEstablished() {
    if (!m_isEstablished) {
        m_isEstablished = true;
        m_established = Clock::now();
        m_journal.Note("established");
    }
}

void Agent::OnClosed(int status) {
    m_journal.Note("closed with " + std::to_string(status));
    const bool wasFirstOffer = m_call.GetPhase() == SDPNegotiator::Phase::OfferSent && !m_isEstablished;
    if (!m_options.uri.empty() && wasFirstOffer && status == 488 && m_options.srtp == "wanted") {
        // The far end takes no SRTP. The next offer is plain, and only one more is made.
        m_call.Refused(status);
        m_options.srtp = "off";
        return Call();
    }
    End();
}

void Agent::OnTick() {
    m_engine.Poll();
    if (m_mustEnd) {
        End(); // not from within OnAnswer, while the signalling still uses the session
    }
    if (m_isOver) {
        // BYE and its response, and the last signals to the engine, take a moment.
        return SecondsSince(m_ended) > 0.5 ? m_signalling.Stop() : void();
    }
    if (!m_isEstablished) {
        return SecondsSince(m_started) > m_options.patience ? End() : void();
    }
    if (!m_isSettled && (m_engine.HasAllMedia() || SecondsSince(m_established) >= m_options.settle)) {
        m_isSettled = true;
        m_settled = Clock::now();
        m_journal.Note("settled");
    }
    RequestPictures();
    if (m_isSettled) {
        DoDueSteps();
    }
}

void Agent::DoDueSteps() {
    while (!m_isOver && m_nextStep < m_options.steps.size() &&
           SecondsSince(m_settled) >= m_options.steps[m_nextStep].after) {
        Do(m_options.steps[m_nextStep++].action);
    }
}

void Agent::RequestPictures() {
    const bool isWatching = m_engine.IsRunning("main-receive") || m_engine.IsRunning("slides-receive");
    if (isWatching && m_options.requestsPictures && SecondsSince(m_lastRequest) >= 1) {
        m_lastRequest = Clock::now();
        m_signalling.RequestPicture();
    }
}

void Agent::Do(Action action) {
    m_journal.Note("action " + NameOf(action));
    Change(action);
    if (!m_isOver) {
        UpdateMedia(); // what only takes away counts before the far end has answered
        OfferIfNeeded();
    }
}

void Agent::Change(Action action) {
    const int port = m_options.mediaPort;
    switch (action) {
    case Action::Hold:
        return m_call.Hold(true);
    case Action::Resume:
        return m_call.Hold(false);
    case Action::Mute:
        return m_call.MuteCamera(true);
    case Action::Unmute:
        return m_call.MuteCamera(false);
    case Action::Present:
        return m_call.Present(true);
    case Action::StopPresenting:
        return m_call.Present(false);
    case Action::HoldByPort:
        return SetPorts(0, 0, 0);
    case Action::ResumePorts:
        return SetPorts(port, port + 2, port + 4);
    case Action::StopVideo:
        return SetPorts(port, 0, port + 4);
    case Action::NextCodec:
        return KeepSecondCodec();
    case Action::Rekey:
        m_call.Rekey();
        return;
    case Action::Encrypt:
        return m_call.SetSrtp(SDPNegotiator::Srtp::Required);
    case Action::OfferAgain:
        m_mustOffer = true;
        return;
    case Action::HangUp:
        return End();
    }
}

void Agent::SetPorts(int audio, int main, int slides) {
    LocalSDP local = m_call.Local();
    local.iAudioRTPPort = audio;
    local.m_VideoMain.iVideoRTPPort = main;
    local.m_VideoPreso.iVideoRTPPort = slides;
    m_call.SetLocal(local);
}

void Agent::KeepSecondCodec() {
    LocalSDP local = m_call.Local();
    if (local.listAudioCodecPriority.size() > 1) {
        const int second = *std::next(local.listAudioCodecPriority.begin());
        local.listAudioCodecPriority = {second};
        local.eAudioCodec = PayloadType_t(second);
        m_call.SetLocal(local);
    }
}

void Agent::OfferIfNeeded() {
    if (!m_mustOffer && !m_call.NeedsOffer()) {
        return;
    }
    const SDPNegotiator::Outcome offer = m_call.Offer();
    m_mustOffer = false;
    if (!offer.isTaken) {
        m_journal.Note("no offer: " + std::string(offer.reason));
        return;
    }
    m_journal.Keep("sent-offer", offer.text);
    if (!m_signalling.Reoffer(offer.text)) {
        m_call.Refused(0);
    }
}

void Agent::UpdateMedia() {
    for (const SDPNegotiator::Stream& stream : m_call.Streams()) {
        m_journal.Note(Described(stream));
    }
    for (const SDPNegotiator::Repair& repair : m_call.Repairs()) {
        m_journal.Note("repair " + std::string(repair.id) + ": " + std::string(repair.sentence));
    }
    m_engine.Run(CommandsFor(m_call.Streams(), m_call.Local(), m_options.tone));
}

void Agent::End() {
    if (!m_isOver) {
        m_journal.Note("end");
        m_isOver = true;
        m_ended = Clock::now();
        m_engine.Run({});
        m_signalling.HangUp();
    }
}

double Agent::SecondsSince(Clock::time_point time) const {
    return std::chrono::duration<double>(Clock::now() - time).count();
}

} // namespace call
