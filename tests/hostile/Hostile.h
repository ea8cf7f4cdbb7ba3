// The calls that every hostile text is tested with, and their result as one text that a test can state.
//
// Outcome(text) lets a handler of a conference endpoint read the text, extract it a second time, trace it and
// answer it. Then the handler must read and answer a good offer as a new handler does. Outcome returns the
// whole record, every section with all its fields and the whole answer.
//
// Changes(text) compares Outcome(text) with the outcome of kConference, which HostileExpected.h states whole.
// It returns the lines that were removed ("-") and added ("+"); all other lines are the same.
// FromNothing(text) compares with the outcome of a text without a line.
#pragma once

#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"
#include "HostileExpected.h"

#include <SDPHandler.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostile {

/// A good offer of a conference: audio, camera, shared screen, keys, floor control.
inline const std::string kConference =
    "v=0\r\n"
    "o=far 1 1 IN IP4 192.0.2.2\r\n"
    "s=-\r\n"
    "c=IN IP4 192.0.2.2\r\n"
    "t=0 0\r\n"
    "m=audio 20384 RTP/SAVP 9 0 101\r\n"
    "b=TIAS:64000\r\n"
    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
    "a=rtpmap:9 G722/8000\r\n"
    "a=rtpmap:0 PCMU/8000\r\n"
    "a=rtpmap:101 telephone-event/8000\r\n"
    "a=fmtp:101 0-15\r\n"
    "a=ice-ufrag:F7gI\r\n"
    "a=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\n"
    "a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\r\n"
    "a=sendrecv\r\n"
    "m=video 20386 RTP/SAVP 109 110\r\n"
    "c=IN IP4 192.0.2.3\r\n"
    "b=TIAS:936000\r\n"
    "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n"
    "a=rtpmap:109 H264/90000\r\n"
    "a=fmtp:109 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1\r\n"
    "a=rtpmap:110 H264/90000\r\n"
    "a=fmtp:110 profile-level-id=420014;packetization-mode=0\r\n"
    "a=sendonly\r\n"
    "a=label:8\r\n"
    "a=content:main\r\n"
    "m=video 20388 RTP/SAVP 109\r\n"
    "c=IN IP4 192.0.2.4\r\n"
    "a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n"
    "a=rtpmap:109 H264/90000\r\n"
    "a=fmtp:109 profile-level-id=420028;max-br=1500;packetization-mode=1\r\n"
    "a=recvonly\r\n"
    "a=label:9\r\n"
    "a=content:slides\r\n"
    "m=application 20390 UDP/BFCP *\r\n"
    "a=floorctrl:s-only\r\n"
    "a=floorid:2 mstrm:9\r\n"
    "a=confid:15\r\n"
    "a=userid:16\r\n";

/// The lines before the first section of kConference.
inline const std::string kSessionBlock = kConference.substr(0, kConference.find("m=audio"));

/// The near endpoint: every codec, camera, shared screen, keys in all streams.
LocalSDP ConferenceLocal();

/// Gives a handler the near endpoint's capabilities, SRTP and floor control switched on.
void Begin(SDPHandler& handler);

/// A new handler for which Begin was called.
struct Endpoint {
    SDPHandler handler;
    RemoteSDP remote;
    Endpoint() { Begin(handler); }
};

/// The state of a handler's remote side: session values and every field of every section. Values longer than
/// `limit` bytes are cut and followed by their length.
std::string DescribeHeld(const SDPHandler& handler, std::size_t limit);

/// Lets the handler read the text and answer it: status, record, state and answer.
std::string Meet(SDPHandler& handler, const std::string& text, std::size_t limit = 200);

/// Fails the test unless the handler reads and answers good texts exactly as a new one does.
void ExpectAsFresh(SDPHandler& used);

/// The outcome that the head of this file describes.
std::string Outcome(const std::string& text);

/// The lines in which two texts differ: "-" for lines of the first only, "+" for lines of the second only.
std::string Difference(const std::string& before, const std::string& after);

/// The difference from the outcome of kConference.
std::string Changes(const std::string& text);

/// The difference from the outcome of a text without a line.
std::string FromNothing(const std::string& text);

using support::Replaced;

/// kConference with its one occurrence of `what` replaced.
std::string With(const std::string& what, const std::string& with);

/// Returns `piece` repeated `count` times.
std::string Repeated(std::string_view piece, std::size_t count);

/// Returns how often `piece` occurs in `text`, without overlap.
std::size_t Count(std::string_view text, std::string_view piece);

/// Returns the one line of `text` that begins with `start`, without its line end, or a message if there is
/// none.
std::string LineOf(const std::string& text, const std::string& start);

/// The lines of `text` with their line ends.
std::vector<std::string> Lines(const std::string& text);

/// The windows of eight bytes of every key of both endpoints, as bytes and as base64, that occur in `text`.
std::vector<std::string> KeyWindows(const std::string& text);

} // namespace hostile
