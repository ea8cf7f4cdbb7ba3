// Observing how a description is read, line by line.
//
//     static void After(void* count, const SDPLine& line) {
//         if (line.row == SDPRow::None) { ++*static_cast<int*>(count); }
//     }
//     int unread = 0;
//     const SDPLineObserver observer = {nullptr, After, &unread};
//     handler.SetLineObserver(&observer);
//     handler.ParseTheSDP(text, remote);     // unread: how many lines no row took
//     handler.SetLineObserver(nullptr);
#pragma once

#include "CommonMediaExport.h"

#include <cstddef>

struct MediaSession;

/// Which handler reads a line: the first, in this order, whose keyword occurs anywhere in the line.
enum class SDPRow {
    Connection,   ///< c=IN IP4 192.0.2.10
    Media,        ///< m=audio 49170 RTP/AVP 0 101
    Rtpmap,       ///< a=rtpmap:97 H264/90000
    Fmtp,         ///< a=fmtp:97 packetization-mode=1
    Crypto,       ///< a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:...
    Ice,          ///< a=ice-ufrag:F7gI
    Candidate,    ///< a=candidate:1 1 UDP 2130706431 192.0.2.10 49170 typ host
    Content,      ///< a=content:slides
    Bandwidth,    ///< b=TIAS:1920000
    FloorControl, ///< a=floorctrl:c-s
    ConferenceId, ///< a=confid:15
    UserId,       ///< a=userid:15
    Direction,    ///< a=sendrecv, and every attribute that no other row takes
    None          ///< v=0, and every other line without a keyword; nothing reads it
};

/// One line of a description, as ParseTheSDP cuts it: up to a CR LF, which is not part of it.
struct SDPLine {
    SDPRow row;         ///< the handler that reads the line
    std::size_t offset; ///< of the line's first byte in the text given to ParseTheSDP
    std::size_t length; ///< bytes, without the CR LF
    /// The section opened last, which is what the line's handler works on; null before the first accepted
    /// "m=" line. Owned by the handler and valid as RemoteSections are.
    const MediaSession* section;
};

/// Receives every line of a description in order, on the thread that parses. Text after the last CR LF is no
/// line and is not reported. Either function may be null. Neither may call the handler that parses; an
/// exception ends the parse as std::bad_alloc does.
struct SDPLineObserver {
    void (*before)(void* context, const SDPLine& line); ///< the line was cut, its handler has not run
    void (*after)(void* context, const SDPLine& line);  ///< its handler has run; `section` may be a new one
    void* context;                                      ///< given to both as it is
};
