// Any bytes as an offer or an answer, given to a negotiator in any phase.
//
// The first bytes choose the policies and what happened before; everything after them is the text. A text is
// taken, and then fits as the judge sees it, or is refused with a reason, and then nothing has changed.
// "inline:!" in the text stands for a key of this side, which the input cannot contain otherwise.
#include "Input.h"
#include "Judged.h"
#include "Keys.h"
#include "Laws.h"
#include "Targets.h"

#include <SDPJudge.h>
#include <SDPNegotiator.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using Outcome = SDPNegotiator::Outcome;

constexpr std::string_view kKeyText = "d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl";
constexpr const char* kGoodOffer =
    "v=0\r\no=- 1 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nt=0 0\r\n"
    "m=audio 5004 RTP/SAVP 0 101\r\n"
    "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
    "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\r\n"
    "a=rtpmap:101 telephone-event/8000\r\n"
    "m=video 5006 RTP/SAVP 97\r\n"
    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
    "inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=42e01f;packetization-mode=1\r\n";

/// Source of keys and session ids. It begins with a hash of the input, so an input has one meaning and does
/// not contain a key by guessing it.
std::minstd_rand g_random;

bool RandomBytes(unsigned char* bytes, std::size_t length) {
    for (std::size_t n = 0; n < length; ++n) {
        bytes[n] = static_cast<unsigned char>(g_random() >> 8U);
    }
    return true;
}

LocalSDP Capabilities(fuzz::Input& input) {
    LocalSDP local;
    local.strDefaultIPAddr = input.Below(4) == 0 ? "2001:db8::1" : "192.0.2.1";
    local.eAudioCodec = PayloadType_t(PAYLOAD_G722 | PAYLOAD_G711U | PAYLOAD_G729 | PAYLOAD_G7221);
    local.listAudioCodecPriority = {PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729, PAYLOAD_G7221};
    local.iAudioRTPPort = input.Below(8) == 0 ? 0 : 16384;
    for (VideoParms* const video : {&local.m_VideoMain, &local.m_VideoPreso}) {
        constexpr int modes[] = {PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0, PAYLOAD_H264,
                                 PAYLOAD_H264_PACKETIZATION_0, 0};
        video->eVideoCodec = PayloadType_t(input.Pick(modes));
        video->strVideoLevel = "3.1";
    }
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoPreso.iVideoRTPPort = 16388;
    local.iVideoPresoControlPort = 16390;
    local.iVideoPayloadMode0 = 126;
    local.iVideoPayloadMode1 = 97;
    local.iMaxBandwidth = input.Below(2) == 0 ? 0 : 1000000;
    return local;
}

/// What the input chooses before its text begins.
struct Past {
    bool isRepaired = true;
    std::string offer; ///< ours that is out; empty for none
    std::string ours;  ///< our last text; empty for none
};

/// Brings the call to the phase that the input chooses.
Past Prepare(fuzz::Input& input, SDPNegotiator& call) {
    constexpr SDPNegotiator::Srtp policies[] = {SDPNegotiator::Srtp::Off, SDPNegotiator::Srtp::Wanted,
                                                SDPNegotiator::Srtp::Required};
    call.SetSrtp(input.Pick(policies));
    call.SetLocal(Capabilities(input));
    Past past;
    past.isRepaired = input.Below(8) != 0;
    call.SetRepairs(past.isRepaired);
    const std::size_t texts = input.Below(4);
    if (texts == 1 || texts == 3) {
        past.ours = call.Answer(kGoodOffer).text;
    }
    call.Present(input.Below(2) != 0);
    call.MuteCamera(input.Below(4) == 0);
    call.Hold(input.Below(4) == 0);
    if (texts >= 2) {
        past.offer = call.Offer().text;
        past.ours = past.offer;
    }
    return past;
}

/// The text with the first key of `ours` wherever it asks for it.
std::string WithOwnKey(std::string text, const std::string& ours) {
    constexpr std::string_view mark = "inline:!";
    constexpr std::size_t method = 7;
    const std::size_t key = ours.find("inline:");
    if (key == std::string::npos) {
        return text;
    }
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
        text.replace(at + method, 1, ours, key + method, kKeyText.size());
    }
    return text;
}

/// A refusal has a reason without a key, a status where the caller has to send one, and no effect.
void CheckRefusal(const Outcome& refused, const SDPNegotiator& before, const SDPNegotiator& after,
                  const std::string& text) {
    fuzz::Require(!refused.reason.empty() && refused.text.empty(), "a refusal has a reason and no text",
                  refused.text, text);
    fuzz::Require(refused.reason.find(kKeyText.substr(0, 8)) == std::string_view::npos, "no key in a reason",
                  refused.reason, text);
    fuzz::Require(before == after, "a refusal changes nothing", refused.reason, text);
}

void RequireNone(const char* law, const std::vector<JudgeViolation>& violations, const std::string& other,
                 const std::string& text) {
    if (!violations.empty()) {
        fuzz::Broken(law,
                     (std::string(violations[0].rule->id) + " " + violations[0].particulars + ", in").c_str(),
                     text, "beside", other);
    }
}

/// Every answer is well-formed. It also fits its offer, except without repairs: a number that the component
/// takes for another codec than the offer means stands for that codec in the answer.
void CheckOffered(SDPNegotiator& call, bool isRepaired, const std::string& text) {
    const SDPNegotiator before = call;
    const bool isPending = call.GetPhase() == SDPNegotiator::Phase::OfferSent;
    const Outcome answer = call.Answer(text);
    fuzz::Reached(answer.isTaken ? "an offer was answered" : "an offer was refused");
    if (!answer.isTaken) {
        fuzz::Require(answer.status == (isPending ? 491 : 488) || (text.empty() && answer.status == 0),
                      "a refused offer has its status", std::to_string(answer.status), text);
        CheckRefusal(answer, before, call, text);
        return;
    }
    fuzz::Require(!isPending, "no answer while an offer is out", answer.text, text);
    RequireNone("an answer is well-formed", CheckNext("", answer.text), text, answer.text);
    if (isRepaired) {
        RequireNone("an answer fits its offer", CheckAnswer(text, answer.text), text, answer.text);
    }
    const Outcome next = call.Offer();
    if (next.isTaken) {
        RequireNone("an offer continues the session", CheckNext(answer.text, next.text), answer.text,
                    next.text);
    }
}

/// The "m=" lines of our own text.
std::vector<std::string> MediaLines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = text.find("\nm="); at != std::string::npos; at = text.find("\nm=", at + 1)) {
        lines.push_back(text.substr(at + 1, text.find('\r', at) - at - 1));
    }
    return lines;
}

/// What runs was offered, and is secure where it was offered so.
void CheckStarted(const SDPNegotiator& call, const std::string& offer, const std::string& text) {
    const std::vector<std::string> offered = MediaLines(offer);
    fuzz::Require(call.Streams().size() == offered.size(), "one stream for each offered section", offer,
                  text);
    for (const SDPNegotiator::Stream& stream : call.Streams()) {
        const std::string& line = offered[stream.section];
        const bool runs = stream.send || stream.receive || stream.state == SDPNegotiator::State::Start;
        fuzz::Require(!runs || line.find(" 0 ") == std::string::npos || line.find(" 0 ") > line.find(" RTP/"),
                      "what runs was offered", line, text);
        fuzz::Require(!runs || line.find("/SAVP") == std::string::npos ||
                          stream.suite != Quor::media::rtp::CryptoParams::CRYPTO_NONE,
                      "what was offered secure is never plain", line, text);
    }
}

void CheckAnswered(SDPNegotiator& call, const std::string& offer, const std::string& text) {
    const SDPNegotiator before = call;
    const Outcome taken = call.Accept(text);
    fuzz::Reached(taken.isTaken ? "an answer was taken" : "an answer was refused");
    if (!taken.isTaken) {
        CheckRefusal(taken, before, call, text);
        return;
    }
    CheckStarted(call, offer, text);
    const SDPNegotiator once = call;
    call.Accept(text);
    fuzz::Require(once == call, "the same answer once more changes nothing", text, text);
}

void CheckStreams(const SDPNegotiator& call, bool requiresSrtp, const std::string& text) {
    for (const SDPNegotiator::Stream& stream : call.Streams()) {
        const bool runs = stream.send || stream.receive;
        if (runs) {
            fuzz::Reached(stream.suite == Quor::media::rtp::CryptoParams::CRYPTO_NONE
                              ? "a plain stream runs"
                              : "a secure stream runs");
        }
        const bool isAgreed =
            stream.state == SDPNegotiator::State::Start || stream.state == SDPNegotiator::State::Held;
        fuzz::Require(!runs || isAgreed, "media flow in an agreed stream only", stream.reason, text);
        fuzz::Require(isAgreed || !stream.reason.empty(), "a stream that does not run says why", "", text);
        fuzz::Require(!stream.send || (stream.port > 0 && stream.port < 65536 && stream.address != "0.0.0.0"),
                      "a stream that is sent has a place to go to", stream.address, text);
        const bool isFloor = stream.media == SDPNegotiator::Media::FloorControl;
        fuzz::Require(!requiresSrtp || isFloor || !runs ||
                          stream.suite != Quor::media::rtp::CryptoParams::CRYPTO_NONE,
                      "nothing plain runs where SRTP is required", stream.reason, text);
    }
}

} // namespace

void FuzzNegotiation(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    g_random.seed(static_cast<std::minstd_rand::result_type>(fuzz::Hash(data, size)));
    SDPNegotiator call(RandomBytes);
    const Past past = Prepare(input, call);
    const bool requiresSrtp = input.Below(4) == 0;
    if (requiresSrtp) {
        call.SetSrtp(SDPNegotiator::Srtp::Required);
    }
    const bool isOffer = call.GetPhase() != SDPNegotiator::Phase::OfferSent || input.Below(8) == 0;
    const std::string text = WithOwnKey(input.Rest(), past.ours);
    if (isOffer) {
        CheckOffered(call, past.isRepaired, text);
    } else {
        CheckAnswered(call, past.offer, text);
    }
    CheckStreams(call, requiresSrtp, text);
}
