// What the blocks of the pages talk to: a far end that is a negotiator as well, a signalling side that hands
// texts to it, and an engine that notes what runs and what it is told.
#pragma once

#include "Capabilities.h"

#include <SDPNegotiator.h>
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace pages {

/// Does what the far end's side of the signalling would do.
class Signalling {
public:
    explicit Signalling(SDPNegotiator& farEnd) : m_peer(farEnd) {}

    void SendInvite(const std::string& text) { m_answer = m_peer.Answer(text).text; }
    void SendReinvite(const std::string& text) { m_answer = m_peer.Answer(text).text; }
    void SendOk(const std::string& text) {
        if (m_peer.GetPhase() == SDPNegotiator::Phase::OfferSent) {
            m_peer.Accept(text);
        } else {
            m_answer = m_peer.Answer(text).text;
        }
    }
    std::string WaitForAnswer() const { return m_answer; }
    std::string WaitForAck() const { return m_answer; }
    std::string WaitForReinvite() { return m_peer.Offer().text; }
    void Refuse(int status, std::string_view /*reason*/) { refusedWith = status; }
    void EndCall(std::string_view /*reason*/) { hasEnded = true; }
    void Log(std::string_view reason) { log.emplace_back(reason); }

    int refusedWith = 0;
    bool hasEnded = false;
    std::vector<std::string> log;

private:
    SDPNegotiator& m_peer;
    std::string m_answer;
};

/// Notes what runs, as "audio main slides floor", and each order.
class Engine {
public:
    void Follow(const std::vector<SDPNegotiator::Stream>& streams) {
        running.clear();
        for (const SDPNegotiator::Stream& stream : streams) {
            const bool isFloor = stream.media == SDPNegotiator::Media::FloorControl;
            if (stream.send || stream.receive || (isFloor && stream.state == SDPNegotiator::State::Start)) {
                running += (running.empty() ? "" : " ") + Name(stream);
            }
        }
    }
    void Open(const SDPNegotiator::Stream& stream) { Note("open", stream.section, Name(stream)); }
    void Close(std::size_t section) { Note("close", section, ""); }
    void Adjust(const SDPNegotiator::Stream& stream) { Note("adjust", stream.section, Name(stream)); }

    std::string running;
    std::string told; ///< the orders so far, "open 0 audio, close 1"

private:
    void Note(const std::string& order, std::size_t section, const std::string& name) {
        told += (told.empty() ? "" : ", ") + order + " " + std::to_string(section) +
                (name.empty() ? "" : " " + name);
    }
    static std::string Name(const SDPNegotiator::Stream& stream) {
        if (stream.media == SDPNegotiator::Media::FloorControl) {
            return "floor";
        }
        if (stream.media == SDPNegotiator::Media::Audio) {
            return "audio";
        }
        return stream.role == VIDEOTYPE_PRESO ? "slides" : "main";
    }
};

} // namespace pages

/// Calls step by step: both sides know what they can do and want SRTP.
class Page_calls : public ::testing::Test {
protected:
    Page_calls() {
        call.SetLocal(support::PresentationLocal());
        peer.SetLocal(support::Away(support::PresentationLocal()));
        call.SetSrtp(SDPNegotiator::Srtp::Wanted);
        peer.SetSrtp(SDPNegotiator::Srtp::Wanted);
    }

    /// The call is up: this side has called.
    void Establish() {
        ASSERT_TRUE(call.Accept(peer.Answer(call.Offer().text).text).isTaken);
        engine.Follow(call.Streams());
    }

    SDPNegotiator call;
    SDPNegotiator peer;
    pages::Signalling signalling{peer};
    pages::Engine engine;
};

/// The handler alone: one handler and one record to fill.
class Page_handler : public ::testing::Test {};
