// SDPNegotiator: the offers and answers of one phone call, tolerant of the errors of far ends (RFC 3264).
//
// SDPHandler reads and writes descriptions exactly as its documentation says. This class is built over it: it
// repairs what a far end wrote, makes every answer fit its offer, makes every later text continue the
// session, and reports which streams to start. One negotiator serves one call. Texts come from and go to the
// signalling.
//
// An outgoing call:
//
//     SDPNegotiator call;
//     SDPNegotiator::Wish wish = call.SetLocal(local);  // codecs, address, ports, bandwidth, suites
//     call.SetSrtp(SDPNegotiator::Srtp::Wanted);
//     SDPNegotiator::Outcome offer = call.Offer();      // send offer.text
//     SDPNegotiator::Outcome taken = call.Accept(text); // the body of the 183 or the 200
//     for (const SDPNegotiator::Stream& stream : call.Streams()) { ... open what it sends and receives ... }
//
// An incoming call:
//
//     SDPNegotiator::Outcome answer = call.Answer(text);
//     if (!answer.isTaken) { ... refuse with answer.status, for answer.reason ... }
//
// A change during the call: make the wish, then send an offer when NeedsOffer() is true:
//
//     call.Hold(true);                                  // nothing is received from now on
//     if (call.NeedsOffer()) { ... send call.Offer().text in a re-INVITE ... }
//     call.Refused(488);                                // the previous agreement stays in force
//
// Operations that are refused, and why:
//
//     call.Offer()            no address was set, or an offer is pending: isTaken false; unchanged
//     call.Accept(text)       no offer is pending, or the text has other sections: unchanged
//     call.Accept(other)      a second answer to one offer that differs from the first: unchanged
//     call.Answer(text)       while our offer is pending: status 491 (RFC 3261, 14.1); unchanged
//     call.Answer(text)       nothing in it can be taken, a section is missing, an "m=" line has no medium
//                             that an answer could name, or no address was set: status 488; unchanged
//     call.Answer("")         a re-INVITE without a body asks for an offer: isTaken false, status 0; do not
//                             refuse it, send call.Offer().text
//     call.Refused(488)       no offer is pending: unchanged
//     call.SetLocal(local)    a port beyond 65534, a budget of 1 to 999 bit/s, and what SetLocal lists
//
// The far end's text is untrusted: nothing in it makes an operation throw, fail or read out of bounds, and
// the cost grows with its length. Operations throw only std::bad_alloc; the negotiator then compares equal to
// what it was before. Reasons are fixed sentences that never quote a text, so they contain no key. Repairs()
// always speaks of the last text, a refused one included.
//
// Directions are this side's own everywhere: `send` says that this side sends.
//
// Threads: a negotiator belongs to one thread at a time.
#pragma once

#include "CommonMediaExport.h"
#include "SDP.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The offer/answer state of one call.
class COMMONMEDIA_EXPORT SDPNegotiator {
public:
    /// The state of the offer/answer exchange (RFC 3264, 4).
    enum class Phase {
        Idle,      ///< nothing was agreed and no offer is pending
        OfferSent, ///< our offer is pending; what was agreed before it still counts
        Agreed     ///< the last offer was answered
    };

    /// What this side wants of SRTP with keys in the description (RFC 4568).
    enum class Srtp {
        Off,     ///< plain offers; secure sections are rejected
        Wanted,  ///< secure offers; secure and plain sections are taken, secure ones first; a stream that was
                 ///< secure in this call is neither offered plain nor taken plain
        Required ///< secure offers; plain sections are rejected and plain media stop at once
    };

    /// Kind of a section.
    enum class Media { Audio, Video, FloorControl, Other };

    /// Whether a stream runs, and if not, why.
    enum class State {
        Start,          ///< `send` and `receive` say which way
        Held,           ///< agreed, and held by one side or both; `send` and `receive` say what still runs
        DeclinedByThem, ///< the far end wrote port 0
        DeclinedByUs,   ///< our text rejects the section
        NoCommonCodec,  ///< no format that both sides support
        NoUsableKey,    ///< secure, and no crypto line that this side reads
        NoAddress       ///< nowhere to send to
    };

    /// What changed, one bit each: after an agreement since the agreement before, after a wish by that wish.
    enum Change : std::uint32_t {
        kNothing = 0,
        kStarted = 1,   ///< did not run before: open it
        kStopped = 2,   ///< ran before: close it; with kStarted another stream takes its section
        kDirection = 4, ///< `send`, `receive` or being held
        kAddress = 8,   ///< address, port or RTCP place of the far end
        kCodec = 16,    ///< codec or payload numbers
        kKeys = 32,     ///< suite, either key, lifetime or MKI
        kLimits = 64,   ///< profile, level, limits, ptime
        kControl = 128  ///< role, ids, port of floor control, or ICE lines
    };

    /// An SRTP master key with its salt (RFC 3711, 8.2). Wiped when it ends.
    struct Key {
        std::array<unsigned char, baseSDP::kKeyLength> key{};   ///< 16 bytes; zero: no key
        std::array<unsigned char, baseSDP::kSaltLength> salt{}; ///< 14 bytes

        Key() = default;
        Key(const Key&) = default;
        Key& operator=(const Key&) = default;
        ~Key();
        /// Whether both have the same bytes. The time that it takes depends on them.
        bool operator==(const Key& other) const { return key == other.key && salt == other.salt; }
        /// The opposite of ==.
        bool operator!=(const Key& other) const { return !(*this == other); }
    };

    /// A picture size and the highest integer frame rate, pictures per second, that the far end's level and
    /// limits allow for it (ITU-T H.264, table A-1; RFC 6184, 8.1); 0 when the size is too large.
    struct Picture {
        int width;  ///< pixels
        int height; ///< pixels
        int rate;   ///< pictures per second; 0: too large for the far end
    };

    /// The part of the floor that this side plays (RFC 4583, 4).
    enum class FloorRole { None, Client, Server };

    /// One section of the agreed session, and what to do with it.
    struct Stream {
        Media media = Media::Other;           ///< kind of the section
        VideoType_t role = VIDEOTYPE_UNKNOWN; ///< main or slides, for a video section that was taken
        std::size_t section = 0;              ///< place among the "m=" lines, from 0
        State state = State::DeclinedByUs;    ///< whether it runs, and if not, why
        std::string_view reason;              ///< the state in words, a fixed sentence; empty for Start
        bool send = false;    ///< this side sends: both descriptions allow it, mute and hold do not forbid it
        bool receive = false; ///< this side receives

        /// Where to send: an IPv4 address, an IPv6 address or a host name as the far end wrote it, without a
        /// TTL. With "0.0.0.0" or "::" the stream is held; with any other word it is empty.
        std::string address;
        int port = 0;            ///< the far end's RTP or floor control port, 1 to 65535; 0: not taken
        std::string rtcpAddress; ///< from an "a=rtcp:" that can be used (RFC 3605), otherwise `address`
        int rtcpPort = 0;        ///< from the same line, otherwise `port` + 1; 0 when there is no such port

        PayloadType_t codec = PAYLOAD_UNKNOWN; ///< the codec of both directions
        int sendPayload = -1;                  ///< the far end's number for it; -1 none
        int receivePayload = -1;               ///< our text's number for it; -1 none
        int sendEvents = -1;                   ///< telephone events (RFC 4733), the far end's number; -1 none
        int receiveEvents = -1;                ///< the same, our text's number
        int ptime = 0;                         ///< "a=ptime:" of the far end, ms; 0 not given

        std::string profile;       ///< H.264: first four digits of the far end's profile-level-id, "42e0"
        std::string level;         ///< H.264: the far end's level, "3.1"
        int packetizationMode = 0; ///< H.264: 0 or 1 (RFC 6184, 6)
        int maxMbps = 0;           ///< H.264: macroblocks/s; 0 not given
        int maxFs = 0;             ///< H.264: macroblocks; 0 not given
        int maxBr = 0;             ///< H.264: units of 1000 bit/s; 0 not given
        /// H.264: what the far end's level and limits mean for four sizes.
        std::array<Picture, 4> pictures = {{{1920, 1080, 0}, {1280, 720, 0}, {640, 480, 0}, {352, 288, 0}}};

        /// The suite of both directions, as offered and answered; CRYPTO_NONE: plain.
        Quor::media::rtp::CryptoParams::CRYPTO_PROFILE suite = Quor::media::rtp::CryptoParams::CRYPTO_NONE;
        Key ourKey;           ///< this side sends with it; valid only with a suite
        Key theirKey;         ///< this side receives with it; valid only with a suite
        std::string lifetime; ///< of their key, as written, "2^20" (RFC 4568, 6.1); empty: none
        std::string mki;      ///< of their key, as written, value and length in bytes, "1:4"; empty: none

        std::vector<std::string> ice; ///< their "a=ice-" and "a=candidate:" lines, whole (RFC 8839, 5)

        FloorRole floorRole = FloorRole::None; ///< floor control: what this side is
        int conferenceId = 0;                  ///< floor control: "a=confid:"
        int userId = 0;                        ///< floor control: "a=userid:"
        std::string floor;                     ///< floor control: text of "a=floorid:", "2 mstrm:9"

        std::uint32_t changes = kNothing; ///< set of Change
    };

    /// Result of an operation on a text: Offer, Accept, Refused, Answer.
    struct Outcome {
        bool isTaken = false;    ///< the operation succeeded
        std::string text;        ///< the description to send, lines ending in CR LF; empty when there is none
        int status = 0;          ///< SIP status to refuse the far end's request with, 488 or 491; 0 none
        std::string_view reason; ///< a fixed sentence; empty when it succeeded
    };

    /// Result of SetLocal and Rekey. A wish that is not taken changes nothing.
    struct Wish {
        bool isTaken = false;    ///< the wish is in force
        std::string_view reason; ///< a fixed sentence; empty when the wish was taken
    };

    /// One way in which texts of far ends are made readable.
    struct Repair {
        std::string_view id;     ///< short name, "R05"
        std::string_view ledger; ///< section of commonmedia/DELIBERATE.md whose behaviour it corrects, "P10"
        std::string_view sentence; ///< what was wrong and how it is read
    };

    /// Fills `length` bytes; false when it cannot. SetLocal and Rekey ask for bytes, and Answer when the
    /// offer repeats a key of this side.
    using Random = bool (*)(unsigned char* bytes, std::size_t length);

    /// A negotiator in phase Idle, without capabilities and with SRTP off.
    /// @param random  source of keys and of the session id; null: the generator of libcrypto
    explicit SDPNegotiator(Random random = nullptr);
    /// Wipes the keys and the texts that carried them.
    ~SDPNegotiator();

    /// A copy is for keeping and comparing a state: only one of the two may go on sending texts, because both
    /// have one session id (RFC 3264, 8).
    SDPNegotiator(const SDPNegotiator& other);
    SDPNegotiator& operator=(const SDPNegotiator& other); ///< as the copy
    SDPNegotiator(SDPNegotiator&& other) noexcept;        ///< `other` can only be assigned to or destroyed
    SDPNegotiator&
    operator=(SDPNegotiator&& other) noexcept; ///< `other` can only be assigned to or destroyed

    /// Whether both hold the same wishes, session, streams and texts. Repairs() is not compared.
    bool operator==(const SDPNegotiator& other) const;
    /// The opposite of ==.
    bool operator!=(const SDPNegotiator& other) const { return !(*this == other); }

    // Wishes. They take effect with the next agreement. Those that only restrict (hold, mute, SRTP Required)
    // take effect at once.

    /// What this side can do: audio codecs (those of listAudioCodecPriority that eAudioCodec has, best
    /// first), video codecs and limits, address, ports, bandwidth (bit/s), origin suffix, floor control port.
    ///   * strDefaultIPAddr is needed for any text. An IPv6 address is written as such.
    ///   * A port of 0 means that the stream is not wanted.
    ///   * m_VideoPreso says that slides can be taken; Present(true) offers them.
    ///   * The next offer contains every other stream that is set and does not run, even one that the far end
    ///     declined before. No other wish offers a declined stream again.
    ///   * cryptoAlgo is the suite that is offered first, CRYPTO_NONE: AES_CM_128_HMAC_SHA1_80. In a
    ///     remote offer both 128-bit suites are accepted.
    ///   * A key row that is not zero, 16 bytes with their 14 bytes of salt, becomes the key of that suite.
    ///     The first call generates every other key and the session id; later calls keep them.
    ///   * iVideoPayloadMode0 and 1 are the numbers to offer, 0: 96 and 97.
    ///   * strVideoLevel is a level as the component lists them, "1", "1.b", "1.1" to "5.1"; empty: level 2.
    ///   * fVideoTxMuted is what MuteCamera() sets.
    /// Refused: a port beyond 65534 or negative (65535 leaves no RTCP port), a budget that is negative or
    /// from 1 to 999 bit/s, a suite other than the two AES_CM_128 ones, an address or suffix with a blank, a
    /// control or a non-ASCII character, an address that is no IPv4 address, IPv6 address or host name, a
    /// video level that is not in the list, payload numbers of video outside 96 to 127 or equal, negative
    /// limits, and whatever was given when the generator fails.
    Wish SetLocal(const LocalSDP& local);
    /// The capabilities in force, for a change of one of them:
    ///
    ///     LocalSDP local = call.Local();
    ///     local.strDefaultIPAddr = "192.0.2.9";
    ///     call.SetLocal(local);
    const LocalSDP& Local() const;
    /// On hold: nothing is received, and the far end is told so by direction (RFC 3264, 8.4).
    void Hold(bool isHeld);
    /// Camera muted: main video is not sent.
    void MuteCamera(bool isMuted);
    /// Slides are sent. `true` offers a slides section with floor control when there is none; `false` keeps
    /// both and makes our slides recvonly. Slides that the far end offers are received in any case.
    void Present(bool isPresenting);
    /// SRTP policy. Required stops plain media at once. A stream that was secure becomes plain only by Off,
    /// also when it was closed in between.
    void SetSrtp(Srtp policy);
    /// Makes new keys for all streams and both suites; the next text has them. Not taken, and the old keys
    /// stay, when the generator fails.
    Wish Rekey();

    /// True while a wish is not part of an agreement. An answered offer that contains the wish, an answer of
    /// ours that contains it, or its refusal makes this false.
    bool NeedsOffer() const;

    // Texts

    /// The offer to send; on success the phase becomes OfferSent. Refused in that phase, without an address,
    /// and without a stream.
    Outcome Offer();
    /// Reads the answer to our offer; on success the phase becomes Agreed. The same text once more changes
    /// nothing. A fault in a section makes only its stream unusable. When number, order or transport of the
    /// sections differ, the whole answer is refused and our offer remains pending.
    Outcome Accept(std::string_view answer);
    /// Our offer was refused or not answered: back to what was agreed.
    /// @param status  SIP status. After 488 and 606 the refused wishes return to what was agreed. When they
    ///                refuse the first offer and SRTP is Wanted, the wishes stay and the next offer is plain.
    ///                Every other status keeps the wishes. Restrictions (hold, camera muted, SRTP Required)
    ///                stay in every case.
    Outcome Refused(int status);
    /// Reads an offer and answers it; on success the phase becomes Agreed. An offer that repeats a key of
    /// this side is answered with new ones (RFC 4568, 5.1.2), or refused when the generator fails. What else
    /// is refused, and with which status, is said at the top of this file.
    Outcome Answer(std::string_view offer);

    // The agreed state

    /// The state of the offer/answer exchange.
    Phase GetPhase() const;
    /// One entry per section of the agreed session, in "m=" line order; empty before the first agreement.
    /// Hold, camera mute and SRTP Required are visible at once. Valid until the next call that is not const.
    const std::vector<Stream>& Streams() const;
    /// What the far end can take in all, bit/s, by its own lines, "b=TIAS:" (RFC 3890) before "b=AS:": the
    /// session's, otherwise the sum of the audio and video sections that run. 0, not limited, when one of
    /// these has none.
    std::int32_t MaxBandwidth() const;
    /// The repairs that the last text of the far end needed, in table order.
    std::vector<Repair> Repairs() const;
    /// Every repair there is.
    static std::vector<Repair> AllRepairs();
    /// Switches one repair on or off for the texts that follow; all are on at first. False for an unknown id.
    bool SetRepair(std::string_view id, bool isOn);
    /// Switches all of them.
    void SetRepairs(bool isOn);

private:
    struct COMMONMEDIA_LOCAL Call;
    std::unique_ptr<Call> m_call;
};
