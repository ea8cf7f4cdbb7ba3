// Stage: parse, text to lines.
// Input: the far end's whole text. Output: each line handed to the one handler that reads it.
// Touches the sections held (cleared first) and, through the handlers, whatever a line sets.
// The order of the rows is part of the behaviour.
// Test: tests/unit/SDPParseTest.cpp
#include "SDPHandler.h"

#include "SDPKeyword.h"
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

/// A line handler as a plain function. A pointer to a member may be one of a virtual function, and finding
/// out costs more for each line than this.
template <void (SDPHandler::*kProcess)(std::string_view)>
void Call(SDPHandler& handler, std::string_view line) {
    (handler.*kProcess)(line);
}

} // namespace

int SDPHandler::ParseTheSDP(std::string sdp_string, RemoteSDP& ParsedSDP) {
    // The copy carries the far end's keys.
    const sdp::WipedAtEnd wiped(sdp_string);
    ClearRemoteMediaSession();
    if (sdp_string.empty()) {
        return 1;
    }
    const LentIndex index(pPayloadIndex);
    ProcessLines(sdp_string);
    GetRTPData(ParsedSDP);
    return 0;
}

void SDPHandler::ProcessLines(std::string_view text) {
    struct Row {
        std::string_view keyword;
        void (*process)(SDPHandler&, std::string_view);
    };
    // [P01] The first keyword in table order that occurs anywhere in the line takes it, so the order of the
    // rows is part of the behaviour: base64 text that ends in "c=" makes a connection line.
    // [P04] Every attribute whose name begins with "ice" goes to one handler, which drops what it does not
    // know; otherwise "a=ice-lite" would be taken for a direction.
    static constexpr Row kRows[] = {
        {"c=", Call<&SDPHandler::ProcessConnect>},       // c=IN IP4 192.0.2.10
        {"m=", Call<&SDPHandler::ProcessMedia>},         // m=audio 49170 RTP/AVP 0 101
        {"a=rtpmap", Call<&SDPHandler::ProcessRTPMap>},  // a=rtpmap:97 H264/90000
        {"a=fmtp:", Call<&SDPHandler::ProcessFMTP>},     // a=fmtp:97 packetization-mode=1
        {"a=crypto:", Call<&SDPHandler::ProcessCrypto>}, // a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:...
        {"a=ice", Call<&SDPHandler::ProcessICEFragPwd>}, // a=ice-ufrag:F7gI
        {"a=candidate:", Call<&SDPHandler::ProcessICECandidate>},  // a=candidate:1 1 UDP 2130706431 ...
        {"a=content:", Call<&SDPHandler::ProcessContent>},         // a=content:slides
        {"b=", Call<&SDPHandler::ProcessBandwidth>},               // b=TIAS:1920000
        {"a=floorctrl:", Call<&SDPHandler::ProcessBfcpFloorCtrl>}, // a=floorctrl:c-s
        {"a=confid:", Call<&SDPHandler::ProcessBfcpConfid>},       // a=confid:15
        {"a=userid:", Call<&SDPHandler::ProcessBfcpUserid>},       // a=userid:15
        {"a=", Call<&SDPHandler::ParseDirectionalAttribute>},      // a=sendrecv, and every other attribute
    };
    constexpr std::size_t rows = std::size(kRows);
    // [G11] One pass over the text decides the lines and their rows. Cutting each line off a copy of the rest
    // would cost the square of the length, and the far end chooses the length.
    std::size_t start = 0;
    std::size_t row = rows;
    for (std::size_t at = 0; at < text.size();) {
        // Nearly every line has its first "=" in second place, which spares the search for it.
        const bool fSecond = at == start && at + 1 < text.size() && text[at + 1] == '=';
        at = fSecond ? at + 1 : sdp::FindEither(text, '=', '\r', at);
        if (at == text.size()) {
            break;
        }
        if (text[at] == '=') {
            if (at > start) {
                row = std::min(row, sdp::RowAt<kRows>(sdp::Behind(text, at - 1)));
            }
            ++at;
            continue;
        }
        // [P03] A bare LF ends no line: RFC 4566, 5 lets a reader be lenient here, this one is not, and a
        // text without any CR LF has no line at all.
        const std::size_t end = at++;
        if (at == text.size() || text[at] != '\n') {
            continue;
        }
        if (row < rows) {
            kRows[row].process(*this, std::string_view(text.data() + start, end - start));
            row = rows;
        }
        start = ++at;
    }
    // [P02] What stands behind the last CR LF is not a line: a text that was cut in transit must not
    // contribute half an attribute.
}
