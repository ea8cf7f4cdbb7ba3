// Stage: parse, text to lines.
// Input: the far end's whole text. Output: each line handed to the one handler that reads it.
// Touches the sections held (cleared first) and, through the handlers, whatever a line sets.
// The order of the rows is part of the behaviour.
// Test: tests/unit/SDPParseTest.cpp
#include "SDPHandler.h"

#include "SDPPayloadIndex.h"
#include "SDPText.h"
#include "SDPWipe.h"

namespace {

/// Lends an index to a handler until the scope ends, however it ends.
class LentIndex {
public:
    explicit LentIndex(sdp::PayloadIndex*& pIndex) : m_pIndex(pIndex) { m_pIndex = &m_index; }
    ~LentIndex() { m_pIndex = nullptr; }
    LentIndex(const LentIndex&) = delete;
    LentIndex& operator=(const LentIndex&) = delete;

private:
    sdp::PayloadIndex*& m_pIndex;
    sdp::PayloadIndex m_index;
};

} // namespace

int SDPHandler::ParseTheSDP(std::string sdp_string, RemoteSDP& ParsedSDP) {
    // The copy carries the far end's keys.
    const sdp::WipedAtEnd wiped(sdp_string);
    ClearRemoteMediaSession();
    if (sdp_string.empty()) {
        return 1;
    }
    const LentIndex index(pPayloadIndex);
    // [G11] A cursor moves over the text. Cutting each line off a copy of the rest would cost the square of
    // the length, and the far end chooses the length.
    // [P03] A bare LF ends no line: RFC 4566, 5 lets a reader be lenient here, this one is not, and a text
    // without any CR LF has no line at all.
    std::string_view rest(sdp_string);
    for (std::size_t end = sdp::FindLineEnd(rest); end != std::string_view::npos;
         end = sdp::FindLineEnd(rest)) {
        ProcessLine(rest.substr(0, end));
        rest.remove_prefix(end + 2);
    }
    // [P02] What stands behind the last CR LF is not a line: a text that was cut in transit must not
    // contribute half an attribute.
    GetRTPData(ParsedSDP);
    return 0;
}

void SDPHandler::ProcessLine(std::string_view SDPLine) {
    struct Row {
        std::string_view keyword;
        void (SDPHandler::*process)(std::string_view);
    };
    // [P01] The first keyword in table order that occurs anywhere in the line takes it, so the order of the
    // rows is part of the behaviour: base64 text that ends in "c=" makes a connection line.
    // [P04] Every attribute whose name begins with "ice" goes to one handler, which drops what it does not
    // know; otherwise "a=ice-lite" would be taken for a direction.
    static constexpr Row kRows[] = {
        {"c=", &SDPHandler::ProcessConnect},                 // c=IN IP4 192.0.2.10
        {"m=", &SDPHandler::ProcessMedia},                   // m=audio 49170 RTP/AVP 0 101
        {"a=rtpmap", &SDPHandler::ProcessRTPMap},            // a=rtpmap:97 H264/90000
        {"a=fmtp:", &SDPHandler::ProcessFMTP},               // a=fmtp:97 packetization-mode=1
        {"a=crypto:", &SDPHandler::ProcessCrypto},           // a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:...
        {"a=ice", &SDPHandler::ProcessICEFragPwd},           // a=ice-ufrag:F7gI
        {"a=candidate:", &SDPHandler::ProcessICECandidate},  // a=candidate:1 1 UDP 2130706431 ...
        {"a=content:", &SDPHandler::ProcessContent},         // a=content:slides
        {"b=", &SDPHandler::ProcessBandwidth},               // b=TIAS:1920000
        {"a=floorctrl:", &SDPHandler::ProcessBfcpFloorCtrl}, // a=floorctrl:c-s
        {"a=confid:", &SDPHandler::ProcessBfcpConfid},       // a=confid:15
        {"a=userid:", &SDPHandler::ProcessBfcpUserid},       // a=userid:15
        {"a=", &SDPHandler::ParseDirectionalAttribute},      // a=sendrecv, and every other attribute
    };
    if (const Row* const row = sdp::FirstKeyword<kRows>(SDPLine)) {
        (this->*row->process)(SDPLine);
    }
}
