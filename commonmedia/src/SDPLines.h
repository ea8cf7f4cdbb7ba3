// Splits a description into lines and finds the table row (SDPRow) of each: the scanner and the dispatch.
//
// The component reads descriptions with them. The libraries and programs built on it call the same functions
// where they ask how the component reads a line.
// Test: tests/unit/SDPLinesTest.cpp
#pragma once

#include "SDPKeyword.h"
#include "SDPLineObserver.h"
#include "SDPSearch.h"

#include <cstddef>
#include <iterator>
#include <string_view>

namespace sdp {

struct LineRow {
    std::string_view example;
    std::string_view keyword;
    SDPRow row;
};

// [P01] The first keyword in table order that occurs anywhere in the line decides, so the order of the rows
// is part of the behaviour: base64 text that ends in "c=" makes a connection line.
inline constexpr LineRow kLineRows[] = {
    {"c=IN IP4 192.0.2.10", "c=", SDPRow::Connection},
    {"m=audio 49170 RTP/AVP 0 101", "m=", SDPRow::Media},
    {"a=rtpmap:97 H264/90000", "a=rtpmap", SDPRow::Rtpmap},
    {"a=fmtp:97 packetization-mode=1", "a=fmtp:", SDPRow::Fmtp},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:", "a=crypto:", SDPRow::Crypto},
    // [P04] Every attribute whose name begins with "ice" belongs to one row, whose handler drops what it does
    // not know; otherwise "a=ice-lite" would be taken for a direction.
    {"a=ice-ufrag:F7gI", "a=ice", SDPRow::Ice},
    {"a=candidate:1 1 UDP 2130706431 192.0.2.10 49170 typ host", "a=candidate:", SDPRow::Candidate},
    {"a=content:slides", "a=content:", SDPRow::Content},
    {"b=TIAS:1920000", "b=", SDPRow::Bandwidth},
    {"a=floorctrl:c-s", "a=floorctrl:", SDPRow::FloorControl},
    {"a=confid:15", "a=confid:", SDPRow::ConferenceId},
    {"a=userid:15", "a=userid:", SDPRow::UserId},
    {"a=sendrecv", "a=", SDPRow::Direction},
};

/// True when the table has each row of SDPRow once and in its order, so that a row is an index of the table.
constexpr bool AreLineRowsInOrder() {
    std::size_t index = 0;
    for (const LineRow& line : kLineRows) {
        if (static_cast<std::size_t>(line.row) != index++) {
            return false;
        }
    }
    return index == static_cast<std::size_t>(SDPRow::None);
}
static_assert(std::size(kLineRows) == 13 && AreLineRowsInOrder());

/// The row that a line, given without its CR LF, belongs to.
[[gnu::always_inline]] inline SDPRow RowOf(std::string_view line) {
    return static_cast<SDPRow>(FirstRow<kLineRows>(line));
}

/// Calls `visit(offset, length)` for each line of a text, in order and without its CR LF.
/// @return  offset of the text after the last CR LF, which is no line
template <typename Visit>
std::size_t ForEachLine(std::string_view text, Visit visit) {
    // [G11] One pass over the text. Cutting each line off a copy of the rest would cost the square of the
    // length, and the far end chooses the length.
    std::size_t begin = 0;
    for (std::size_t at = FindByte(text, '\r'); at + 1 < text.size(); at = FindByte(text, '\r', at + 1)) {
        // [P03] A bare LF ends no line: RFC 4566, 5 lets a reader be lenient here, this one is not, and a
        // text without any CR LF has no line at all.
        if (text[at + 1] == '\n') {
            visit(begin, at - begin);
            begin = at + 2;
        }
    }
    // [P02] Text after the last CR LF is no line: a text that was cut must not contribute half an attribute.
    return begin;
}

} // namespace sdp
