// What the tests of the negotiation layer share: capabilities, far ends' texts, known keys.
#pragma once

#include "Expect.h"
#include "SDPNegotiator.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace call {

using Srtp = SDPNegotiator::Srtp;
using State = SDPNegotiator::State;
using Phase = SDPNegotiator::Phase;
using Stream = SDPNegotiator::Stream;

/// Lines that end in LF here and in CR LF in the text.
inline std::string Text(std::string_view lines) {
    std::string text;
    for (const char c : lines) {
        text += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return text;
}

/// Bytes 1, 2, 3, ... from the start of a test on, so that keys and the session id are known.
inline unsigned char& NextByte() {
    static unsigned char next = 1;
    return next;
}

inline bool CountingBytes(unsigned char* bytes, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = NextByte()++;
    }
    return true;
}

/// Four audio codecs, camera, slides with floor control.
inline LocalSDP Local() {
    LocalSDP local;
    local.strDefaultIPAddr = "192.0.2.1";
    local.eAudioCodec =
        static_cast<PayloadType_t>(PAYLOAD_G722 | PAYLOAD_G7221 | PAYLOAD_G711U | PAYLOAD_G729);
    local.listAudioCodecPriority = {PAYLOAD_G722, PAYLOAD_G7221, PAYLOAD_G711U, PAYLOAD_G729};
    local.iAudioRTPPort = 5004;
    local.iVideoPresoControlPort = 5010;
    for (VideoParms* const video : {&local.m_VideoMain, &local.m_VideoPreso}) {
        video->eVideoCodec = static_cast<PayloadType_t>(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);
        video->strVideoLevel = "3.1";
    }
    local.m_VideoMain.iVideoRTPPort = 5006;
    local.m_VideoPreso.iVideoRTPPort = 5008;
    return local;
}

/// PCMU and nothing else.
inline LocalSDP AudioOnly() {
    LocalSDP local;
    local.strDefaultIPAddr = "192.0.2.1";
    local.eAudioCodec = PAYLOAD_G711U;
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.iAudioRTPPort = 5004;
    return local;
}

/// A negotiator with capabilities and known keys.
inline SDPNegotiator Side(const LocalSDP& local, Srtp srtp = Srtp::Off) {
    NextByte() = 1;
    SDPNegotiator side(CountingBytes);
    EXPECT_TRUE(side.SetLocal(local).isTaken);
    side.SetSrtp(srtp);
    return side;
}

/// A far end's text with the given sections.
inline std::string Far(std::string_view sections, std::string_view session = "") {
    return Text("v=0\no=far 7 1 IN IP4 198.51.100.7\ns=-\nc=IN IP4 198.51.100.7\n" + std::string(session) +
                "t=0 0\n" + std::string(sections));
}

inline std::string Repaired(const SDPNegotiator& side) {
    std::string ids;
    for (const SDPNegotiator::Repair& repair : side.Repairs()) {
        ids += std::string(ids.empty() ? "" : " ") + std::string(repair.id);
    }
    return ids;
}

/// A stream in one line: "Start send receive 9/9 198.51.100.7:30000".
inline std::string Line(const Stream& stream) {
    static const char* const states[] = {"Start",         "Held",        "DeclinedByThem", "DeclinedByUs",
                                         "NoCommonCodec", "NoUsableKey", "NoAddress"};
    std::string line = states[static_cast<int>(stream.state)];
    line += stream.send ? " send" : "";
    line += stream.receive ? " receive" : "";
    if (stream.sendPayload >= 0) {
        line += " " + std::to_string(stream.sendPayload) + "/" + std::to_string(stream.receivePayload);
    }
    if (!stream.address.empty()) {
        line += " " + stream.address + ":" + std::to_string(stream.port);
    }
    line += stream.suite == 0 ? "" : stream.suite == 2 ? " _80" : " _32";
    return stream.reason.empty() ? line : line + ", " + std::string(stream.reason);
}

/// All streams, one line each.
inline std::string Lines(const SDPNegotiator& side) {
    std::string lines;
    for (const Stream& stream : side.Streams()) {
        lines += Line(stream) + "\n";
    }
    return lines;
}

} // namespace call
