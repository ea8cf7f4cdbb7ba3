// Agent: one call. It joins the three parts: signalling carries texts, SDPNegotiator reads and writes them,
// the media engine runs what was agreed.
#pragma once

#include "Journal.h"
#include "MediaEngine.h"
#include "Options.h"
#include "Signalling.h"

#include <SDPNegotiator.h>

#include <chrono>
#include <cstddef>

namespace call {

class Agent : private SignallingListener {
public:
    explicit Agent(const Options& options);
    /// Calls or waits, until the call has ended.
    /// @return exit status: 0 a call was established, 1 none was
    int Run();

private:
    using Clock = std::chrono::steady_clock;

    Reply OnOffer(std::string_view body) override;
    void OnAnswer(std::string_view body) override;
    void OnOfferRefused(int status) override;
    void OnEstablished() override;
    void OnClosed(int status) override;
    void OnTick() override;

    void Call();
    void DoDueSteps();
    void RequestPictures();
    void Do(Action action);
    void Change(Action action);
    void SetPorts(int audio, int main, int slides);
    void KeepSecondCodec();
    void OfferIfNeeded();
    void UpdateMedia();
    void End();
    double SecondsSince(Clock::time_point time) const;

    Options m_options;
    Journal m_journal;
    SDPNegotiator m_call;
    MediaEngine m_engine;
    Signalling m_signalling;
    std::size_t m_nextStep = 0;
    bool m_isEstablished = false;
    bool m_isSettled = false; ///< the times of the steps count
    bool m_isOver = false;
    bool m_mustEnd = false;   ///< the far end's answer cannot be used
    bool m_mustOffer = false; ///< an offer that changes nothing was asked for
    Clock::time_point m_started = Clock::now();
    Clock::time_point m_established;
    Clock::time_point m_settled;
    Clock::time_point m_lastRequest;
    Clock::time_point m_ended;
};

} // namespace call
