// Writes the descriptions of Texts.h with SDPHandler and SDPNegotiator. Session ids are fixed and the random
// numbers have a fixed seed, so that every run gives the same bytes on every machine.
#include "Texts.h"

#include "Capabilities.h"

#include <SDPNegotiator.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>

using namespace support;

namespace interop {

namespace {

/// One set of capabilities and the switches of its handler.
struct Side {
    std::string name;
    LocalSDP local;
    bool isSecure = false;
    bool hasFloor = false;
    std::uint32_t served = 2;

    void Begin(SDPHandler& handler) const {
        Start(handler, local);
        handler.m_bSRTP = isSecure;
        handler.SetBfcpSupport(hasFloor);
        handler.SetMaxSupportedSessions(served);
    }
};

LocalSDP Secured(LocalSDP local, CRYPTO_PROFILE suite) {
    GiveKeys(local, "near", suite);
    return local;
}

LocalSDP ModeZeroAlone(LocalSDP local) {
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    return local;
}

LocalSDP AtIPv6(LocalSDP local) {
    local.strDefaultIPAddr = "2001:db8::1";
    return local;
}

const std::vector<Side>& Sides() {
    static const std::vector<Side> sides = {
        {"audio", AudioLocal()},
        {"video", VideoLocal()},
        {"slides", PresentationLocal(), false, true},
        {"slides-served-4", PresentationLocal(), false, true, 4},
        {"secure-32", Secured(PresentationLocal(), kSuite32), true, true, 4},
        {"secure-80", Secured(VideoLocal(), kSuite80), true},
        {"mode-0-alone", ModeZeroAlone(VideoLocal())},
        {"ipv6", AtIPv6(VideoLocal())},
    };
    return sides;
}

std::string AnswerOf(const Side& side, const std::string& offer) {
    SDPHandler handler;
    side.Begin(handler);
    RemoteSDP remote;
    handler.ParseTheSDP(offer, remote);
    return handler.GetLocalSDP();
}

/// Numbers of one fixed sequence. The distributions of <random> differ between libraries, the engine does
/// not.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : m_engine(seed) {}
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(m_engine() % limit); }
    template <typename T>
    T OneOf(std::initializer_list<T> values) {
        return *(values.begin() + Below(static_cast<std::uint32_t>(values.size())));
    }

private:
    std::mt19937 m_engine;
};

VideoParms RandomVideo(Dice& dice, VideoType_t role) {
    VideoParms video;
    video.eVideoCodec = dice.OneOf({kBothModes, kBothModes, kBothModes, PAYLOAD_H264,
                                    PAYLOAD_H264_PACKETIZATION_0, kNoCodec, PAYLOAD_VP8});
    video.eVideoType = dice.Below(12) == 0 ? VIDEOTYPE_UNKNOWN : role;
    video.iVideoRTPPort = dice.OneOf({0, 5002, 16386, 65534});
    video.strVideoLevel = dice.OneOf({"1", "1.b", "1.3", "3.1", "5.1", ""});
    video.iFmtpMaxMbps = dice.OneOf({0, 40500, 108000});
    video.iFmtpMaxFrameSize = dice.OneOf({0, 1620, 3600});
    video.iFmtpMaxBitRate = dice.OneOf({0, 1500});
    return video;
}

Side RandomSide(Dice& dice) {
    Side side;
    side.name = "random";
    LocalSDP& local = side.local;
    for (const PayloadType_t codec : {PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G7221, PAYLOAD_G729}) {
        if (dice.Below(3) != 0) {
            local.eAudioCodec = PayloadType_t(local.eAudioCodec | codec);
            local.listAudioCodecPriority.push_back(codec);
        }
    }
    local.strDefaultIPAddr = dice.OneOf({"192.0.2.1", "192.0.2.77", "2001:db8::1"});
    local.strMyIPAddr = dice.OneOf({"", "192.0.2.2"});
    local.strOExtension = dice.OneOf({"", "-7"});
    local.iAudioRTPPort = dice.OneOf({0, 5000, 16384, 65534});
    local.iMaxBandwidth = dice.OneOf({0, 0, 1, 999, 1000, 64000, 384000, 1000000, -1, -64000});
    local.iVideoPayloadMode1 = dice.OneOf({97, 109});
    local.iVideoPayloadMode0 = dice.OneOf({96, 126});
    local.fVideoTxMuted = dice.Below(4) == 0;
    local.m_VideoMain = RandomVideo(dice, VIDEOTYPE_MAIN);
    local.m_VideoPreso = RandomVideo(dice, VIDEOTYPE_PRESO);
    local.iVideoPresoControlPort = dice.OneOf({0, 5070});
    GiveKeys(local, "near", kSuite32);
    for (auto& suite : local.cryptoAlgo) {
        suite = dice.OneOf({kSuiteNone, kSuite32, kSuite32, kSuite80, kSuite256, kSuiteGcm128});
    }
    side.isSecure = dice.Below(2) == 0;
    side.hasFloor = dice.Below(2) == 0;
    side.served = dice.OneOf({0U, 2U, 2U, 4U});
    return side;
}

/// The texts of a call between two such ends: offer, answer, hold by port 0 and back.
void AddCall(std::vector<Text>& texts, const Side& near, const Side& far) {
    SDPHandler offering;
    SDPHandler answering;
    near.Begin(offering);
    far.Begin(answering);
    answering.MyLocalSDP = Away(far.local);
    RemoteSDP remote;
    const std::string name = near.name + " calls " + far.name;
    for (const char* round : {"first", "held", "resumed"}) {
        const bool isHeld = std::string(round) == "held";
        offering.MyLocalSDP.iAudioRTPPort = isHeld ? 0 : near.local.iAudioRTPPort;
        offering.MyLocalSDP.m_VideoMain.iVideoRTPPort = isHeld ? 0 : near.local.m_VideoMain.iVideoRTPPort;
        offering.ResetRemoteSDP();
        const std::string offer = offering.GetLocalSDP();
        answering.ParseTheSDP(offer, remote);
        const std::string answer = answering.GetLocalSDP();
        offering.ParseTheSDP(answer, remote);
        texts.push_back({name + ", " + round + " offer", offer});
        texts.push_back({name + ", " + round + " answer", answer});
    }
}

/// The captured descriptions, in order of their names.
std::vector<Text> Captures() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(COMMONMEDIA_CORPUS_DIR "/captures")) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Text> captures;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        const std::string body{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        captures.push_back({path.stem().string(), body});
    }
    return captures;
}

SDPNegotiator Negotiator(const Side& side, const LocalSDP& local) {
    SDPNegotiator negotiator;
    negotiator.SetLocal(local);
    negotiator.SetSrtp(side.isSecure ? SDPNegotiator::Srtp::Wanted : SDPNegotiator::Srtp::Off);
    negotiator.Present(side.hasFloor);
    return negotiator;
}

/// One round of an offer and its answer; each side's text goes to the other.
void AddRound(std::vector<Text>& texts, const std::string& name, SDPNegotiator& near, SDPNegotiator& far) {
    const SDPNegotiator::Outcome offer = near.Offer();
    if (!offer.isTaken) {
        return;
    }
    texts.push_back({name + " offer", offer.text});
    const SDPNegotiator::Outcome answer = far.Answer(offer.text);
    if (answer.isTaken) {
        texts.push_back({name + " answer", answer.text});
        near.Accept(answer.text);
    } else {
        near.Refused(answer.status);
    }
}

/// A call of two negotiators: set up, held by either side, shown slides, new keys.
void AddNegotiation(std::vector<Text>& texts, const Side& near, const Side& far) {
    const std::string name = "negotiated: " + near.name + " calls " + far.name + ", ";
    SDPNegotiator caller = Negotiator(near, near.local);
    SDPNegotiator callee = Negotiator(far, Away(far.local));
    AddRound(texts, name + "first", caller, callee);
    caller.Hold(true);
    AddRound(texts, name + "held", caller, callee);
    callee.Hold(true);
    AddRound(texts, name + "held by both", callee, caller);
    caller.Hold(false);
    callee.Hold(false);
    caller.MuteCamera(true);
    caller.Present(true);
    AddRound(texts, name + "slides instead of the camera", caller, callee);
    callee.Rekey();
    AddRound(texts, name + "new keys", callee, caller);
}

} // namespace

std::vector<Text> CorpusAnswers() {
    std::vector<Text> texts;
    for (const Text& capture : Captures()) {
        for (const Side& side : Sides()) {
            texts.push_back({side.name + " answers " + capture.name, AnswerOf(side, capture.body)});
        }
    }
    return texts;
}

std::vector<Text> Conversations() {
    std::vector<Text> texts;
    for (const Side& near : Sides()) {
        for (const Side& far : Sides()) {
            AddCall(texts, near, far);
        }
    }
    return texts;
}

std::vector<Text> RandomTexts() {
    Dice dice(20240229);
    std::vector<Text> texts;
    std::string offer;
    for (int n = 0; n < 400; ++n) {
        const Side side = RandomSide(dice);
        const std::string name = "random set " + std::to_string(n);
        if (!offer.empty()) {
            texts.push_back({name + " answers the set before", AnswerOf(side, offer)});
        }
        SDPHandler handler;
        side.Begin(handler);
        offer = handler.GetLocalSDP();
        texts.push_back({name + " offers", offer});
    }
    return texts;
}

std::vector<Text> NegotiatedTexts() {
    std::vector<Text> texts;
    for (const Text& capture : Captures()) {
        for (const Side& side : Sides()) {
            const SDPNegotiator::Outcome answer = Negotiator(side, side.local).Answer(capture.body);
            if (answer.isTaken) {
                texts.push_back({"negotiated: " + side.name + " answers " + capture.name, answer.text});
            }
        }
    }
    for (const Side& near : Sides()) {
        for (const Side& far : Sides()) {
            AddNegotiation(texts, near, far);
        }
    }
    Dice dice(20240301);
    Side before = RandomSide(dice);
    for (int n = 0; n < 400; ++n) {
        const Side side = RandomSide(dice);
        SDPNegotiator caller = Negotiator(side, side.local);
        SDPNegotiator callee = Negotiator(before, Away(before.local));
        AddRound(texts, "negotiated: random set " + std::to_string(n), caller, callee);
        before = side;
    }
    return texts;
}

} // namespace interop
