// What every hostile text goes through, and what came of it as one text that a test can state.
//
// Outcome(text) lets a handler of a conference endpoint read the text, extract it a second time, trace it and
// answer it, and then read and answer a good offer, which must give what a fresh handler gives. What it
// returns holds the whole record, every section with all its fields and the whole answer.
//
// Changes(text) is Outcome(text) beside the outcome of kConference that HostileExpected.h writes out, as the
// lines that went ("-") and came ("+"): an ill in one line is shown by the lines that it changed, and by no
// other line having changed. FromNothing(text) is the same beside the outcome of a text without a line.
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

/// The lines in front of the first section of kConference.
inline const std::string kSessionBlock = kConference.substr(0, kConference.find("m=audio"));

/// The near endpoint: every codec, camera, shared screen, keys in all streams.
LocalSDP ConferenceLocal();

/// Gives a handler the near endpoint's capabilities, SRTP and floor control switched on.
void Begin(SDPHandler& handler);

/// Begin for a new handler, as a member to start with.
struct Endpoint {
    SDPHandler handler;
    RemoteSDP remote;
    Endpoint() { Begin(handler); }
};

/// The state of a handler's remote side: session values and every field of every section. Values longer than
/// `limit` bytes are cut, with their length behind.
std::string DescribeHeld(const SDPHandler& handler, std::size_t limit);

/// Lets the handler read the text and answer it: status, record, state and answer.
std::string Meet(SDPHandler& handler, const std::string& text, std::size_t limit = 200);

/// Fails the test unless the handler reads and answers good texts exactly as a fresh one.
void ExpectAsFresh(SDPHandler& used);

/// Everything that the head of this file lists.
std::string Outcome(const std::string& text);

/// The lines in which two texts differ, "-" for those of the first and "+" for those of the second.
std::string Difference(const std::string& before, const std::string& after);

/// What the text makes different from kConference.
std::string Changes(const std::string& text);

/// What the text makes different from a text without a line.
std::string FromNothing(const std::string& text);

/// `text` with its one occurrence of `what` replaced. A `what` that does not occur just once fails the test.
std::string Replaced(const std::string& text, const std::string& what, const std::string& with);

/// kConference with its one occurrence of `what` replaced.
std::string With(const std::string& what, const std::string& with);

/// `piece`, `count` times.
std::string Repeated(std::string_view piece, std::size_t count);

/// How often `piece` occurs in `text`, without overlap.
std::size_t Count(std::string_view text, std::string_view piece);

/// The one line of `text` that begins with `start`, without its line end; a text that says so if there is
/// none.
std::string LineOf(const std::string& text, const std::string& start);

/// The lines of `text` with their line ends.
std::vector<std::string> Lines(const std::string& text);

/// The windows of eight bytes of every key of both endpoints, as bytes and as base64, that occur in `text`.
std::vector<std::string> KeyWindows(const std::string& text);

} // namespace hostile
