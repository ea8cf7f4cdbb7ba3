// Whole descriptions that several tests of the negotiation layer expect. A test that expects another one
// states the text here that it comes from and the lines that differ: Replaced(kAudioOffer, ...).
#pragma once

#include "Call.h"

#include <cstddef>
#include <string>

namespace call {

using support::Replaced;

/// The version of the origin line, as every text here has it.
inline const std::string kFirstVersion = "578437695752307201 1 ";
inline const std::string kSecondVersion = "578437695752307201 2 ";
inline const std::string kThirdVersion = "578437695752307201 3 ";

/// `text` with every 192.0.2.1 replaced by `address`.
inline std::string AtAddress(std::string text, const std::string& address) {
    const std::string usual = "192.0.2.1";
    for (std::size_t at = text.find(usual); at != std::string::npos;
         at = text.find(usual, at + address.size())) {
        text.replace(at, usual.size(), address);
    }
    return text;
}

/// The first offer of AudioOnly().
inline const std::string kAudioOffer = Text(R"(v=0
o=Quillmarshorizon 578437695752307201 1 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=audio 5004 RTP/AVP 0 101
a=rtpmap:0 PCMU/8000
a=rtpmap:101 telephone-event/8000
a=fmtp:101 0-15
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
)");

/// The second offer of Local(), in which it begins to present.
inline const std::string kSlidesOffer = Text(R"(v=0
o=Quillmarshorizon 578437695752307201 2 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=audio 5004 RTP/AVP 9 104 0 18 101
a=rtpmap:9 G722/8000
a=rtpmap:104 G7221/16000
a=fmtp:104 bitrate=32000
a=rtpmap:0 PCMU/8000
a=rtpmap:18 G729/8000
a=fmtp:18 annexb=no
a=rtpmap:101 telephone-event/8000
a=fmtp:101 0-15
a=sendrecv
a=rtcp:5005 IN IP4 192.0.2.1
m=video 5006 RTP/AVP 97 96
a=rtpmap:97 H264/90000
a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1
a=rtpmap:96 H264/90000
a=fmtp:96 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5007 IN IP4 192.0.2.1
a=label:8
a=content:main
m=video 5008 RTP/AVP 97 96
a=rtpmap:97 H264/90000
a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1
a=rtpmap:96 H264/90000
a=fmtp:96 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5009 IN IP4 192.0.2.1
a=label:9
a=content:slides
m=application 5010 UDP/BFCP *
a=floorctrl:c-s
a=floorid:2 mstrm:9
a=confid:15
a=userid:15
)");

} // namespace call
