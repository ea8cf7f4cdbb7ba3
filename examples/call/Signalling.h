// Signalling: one SIP call over UDP with libre (RFC 3261). It carries descriptions and reads none of them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace call {

/// What the signalling asks and tells.
class SignallingListener {
public:
    struct Reply {
        int status = 200; ///< 200, or the status to refuse with
        std::string body; ///< the description that goes with 200
    };

    virtual ~SignallingListener() = default;
    /// An offer came; the answer goes out. An empty body asks for an offer.
    virtual Reply OnOffer(std::string_view body) = 0;
    virtual void OnAnswer(std::string_view body) = 0;
    /// Our offer was refused during the call, which goes on.
    virtual void OnOfferRefused(int status) = 0;
    virtual void OnEstablished() = 0;
    /// @param status  why an INVITE of ours failed; 0: the call was ended
    virtual void OnClosed(int status) = 0;
    /// Comes 20 times a second.
    virtual void OnTick() = 0;
};

class Signalling {
public:
    /// Opens the UDP port. IsOpen() tells whether it could.
    /// @param log  path of a file for the SIP messages
    Signalling(const std::string& address, int port, const std::string& log, SignallingListener& listener);
    /// Ends the call, if there is one, with BYE.
    ~Signalling();
    Signalling(const Signalling&) = delete;
    Signalling& operator=(const Signalling&) = delete;

    bool IsOpen() const;
    /// Sends an INVITE. An empty offer leaves the offer to the far end.
    bool Call(const std::string& uri, const std::string& offer);
    /// Sends a re-INVITE with an offer.
    bool Reoffer(const std::string& offer);
    /// Asks the far end for a picture that can be decoded alone (RFC 5168).
    void RequestPicture();
    void HangUp();
    /// Runs until Stop().
    void Run();
    void Stop();

private:
    struct Sip;
    std::unique_ptr<Sip> m_sip;
};

} // namespace call
