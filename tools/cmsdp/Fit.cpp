// Capabilities become wishes; states and changes become words, by tables.
//
// Tests: tests/tool/fit.cases
#include "Fit.h"

#include "Outcome.h"
#include "Words.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

namespace {

using Media = SDPNegotiator::Media;
using State = SDPNegotiator::State;
using Stream = SDPNegotiator::Stream;

SDPNegotiator::Srtp PolicyOf(const Capabilities& side) {
    if (side.srtpRequired) {
        return SDPNegotiator::Srtp::Required;
    }
    return side.srtp ? SDPNegotiator::Srtp::Wanted : SDPNegotiator::Srtp::Off;
}

} // namespace

SDPNegotiator NegotiatorOf(const Capabilities& side, const std::string& whose) {
    LocalSDP local = side.local;
    if (side.floorControl == FloorControl::kOff) {
        local.m_VideoPreso.eVideoCodec = static_cast<PayloadType_t>(0);
    }
    SDPNegotiator call;
    const SDPNegotiator::Wish wish = call.SetLocal(local);
    if (!wish.isTaken) {
        throw ToolError(kLocalFile, whose + ": no strict reader takes what it says: " +
                                        std::string(wish.reason) + "; correct it");
    }
    call.SetSrtp(PolicyOf(side));
    call.MuteCamera(side.local.fVideoTxMuted);
    return call;
}

void PresentIfAble(SDPNegotiator& call, const Capabilities& side) {
    const VideoParms& slides = side.local.m_VideoPreso;
    const bool hasCodec = (slides.eVideoCodec & (PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0)) != 0;
    call.Present(side.floorControl != FloorControl::kOff && hasCodec && slides.iVideoRTPPort != 0);
}

const char* StateInWords(State state) {
    switch (state) {
    case State::Start:
        return "start";
    case State::Held:
        return "held";
    case State::DeclinedByThem:
        return "declined by them";
    case State::DeclinedByUs:
        return "declined by us";
    case State::NoCommonCodec:
        return "no common codec";
    case State::NoUsableKey:
        return "no usable key";
    default:
        return "no address";
    }
}

std::string NameOf(const Stream& stream) {
    switch (stream.media) {
    case Media::Audio:
        return "audio";
    case Media::Video:
        return stream.role == VIDEOTYPE_PRESO  ? "presentation"
               : stream.role == VIDEOTYPE_MAIN ? "main_video"
                                               : "";
    case Media::FloorControl:
        return "floor_control";
    default:
        return "";
    }
}

std::vector<std::string> ChangesInWords(std::uint32_t changes) {
    struct Word {
        SDPNegotiator::Change bit;
        const char* word;
    };
    static constexpr Word words[] = {
        {SDPNegotiator::kStarted, "started"},     {SDPNegotiator::kStopped, "stopped"},
        {SDPNegotiator::kDirection, "direction"}, {SDPNegotiator::kAddress, "address"},
        {SDPNegotiator::kCodec, "codec"},         {SDPNegotiator::kKeys, "keys"},
        {SDPNegotiator::kLimits, "limits"},       {SDPNegotiator::kControl, "control"},
    };
    std::vector<std::string> list;
    for (const Word& word : words) {
        if ((changes & word.bit) != 0) {
            list.emplace_back(word.word);
        }
    }
    return list;
}

bool IsAgreed(const Stream& stream) {
    return stream.state == State::Start || stream.state == State::Held;
}

std::string MissingOf(const std::vector<Stream>& streams, const std::vector<std::string>& required) {
    std::vector<std::string> missing;
    std::copy_if(required.begin(), required.end(), std::back_inserter(missing),
                 [&streams](const std::string& name) {
                     return std::none_of(streams.begin(), streams.end(), [&name](const Stream& stream) {
                         return IsAgreed(stream) && NameOf(stream) == name;
                     });
                 });
    return Listed(missing, missing.size());
}

} // namespace cmsdp
