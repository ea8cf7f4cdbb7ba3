// Two whole outcomes. All other outcomes are stated as differences from them.
#pragma once

#include <string>

namespace hostile {

/// Outcome(kConference).
inline const std::string kConferenceOutcome = R"(status=0
audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1
main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 port=20386 send=0 recv=1 valid=1
preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 send=1 recv=0 valid=1
bfcp port=20390 conf=15 user=16 server=1
bandwidth=1000000
srtp audio suite=1 key=away audio key 1 salt=away audiosalt
srtp video suite=1 key=away video key 1 salt=away videosalt
srtp slide suite=1 key=away slide key 1 salt=away slidesalt
session addr=192.0.2.2 bandwidth=
section 0 media=2 content=100 port=20384 send=1 recv=1 addr=
0 line m=audio 20384 RTP/SAVP 9 0 101
0 tias=64000 ctrl= conf=0 user=0
0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 salt=away audiosalt
0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]
0 format 9 G722/8000
0 format 0 PCMU/8000
0 format 101 telephone-event/8000 [0-15]
0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host
section 1 media=1 content=0 port=20386 send=0 recv=1 addr=192.0.2.3
1 line m=video 20386 RTP/SAVP 109 110
1 tias=936000 ctrl= conf=0 user=0
1 crypto tag=2 suite=1 text=YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0 key=away video key 1 salt=away videosalt
1 ice [] []
1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] [packetization-mode=1]
1 format 110 H264/90000 [profile-level-id=420014] [packetization-mode=0]
section 2 media=1 content=1 port=20388 send=1 recv=0 addr=192.0.2.4
2 line m=video 20388 RTP/SAVP 109
2 tias= ctrl= conf=0 user=0
2 crypto tag=3 suite=1 text=YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0 key=away slide key 1 salt=away slidesalt
2 ice [] []
2 format 109 H264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]
section 3 media=3 content=100 port=20390 send=1 recv=1 addr=
3 line m=application 20390 UDP/BFCP *
3 tias= ctrl=s-only conf=15 user=16
3 crypto tag=0 suite=0 text= key=- salt=-
3 ice [] []
3 format * 
answer
v=0\r\n
o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n
s=-\r\n
c=IN IP4 192.0.2.1\r\n
b=AS:1000\r\n
t=0 0\r\n
m=audio 16384 RTP/SAVP 9 101\r\n
b=TIAS:64000\r\n
a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n
a=rtpmap:9 G722/8000\r\n
a=rtpmap:101 telephone-event/8000\r\n
a=fmtp:101 0-15\r\n
a=sendrecv\r\n
a=rtcp:16385 IN IP4 192.0.2.1\r\n
m=video 16386 RTP/SAVP 97 126\r\n
b=TIAS:936000\r\n
a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n
a=rtpmap:97 H264/90000\r\n
a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n
a=rtpmap:126 H264/90000\r\n
a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n
a=recvonly\r\n
a=rtcp:16387 IN IP4 192.0.2.1\r\n
a=label:8\r\n
a=content:main\r\n
m=video 16388 RTP/SAVP 97 126\r\n
b=TIAS:936000\r\n
a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n
a=rtpmap:97 H264/90000\r\n
a=fmtp:97 profile-level-id=420028;max-br=1500;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n
a=rtpmap:126 H264/90000\r\n
a=fmtp:126 profile-level-id=420028;max-br=1500;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n
a=sendonly\r\n
a=rtcp:16389 IN IP4 192.0.2.1\r\n
a=label:9\r\n
a=content:slides\r\n
m=application 16390 UDP/BFCP *\r\n
a=floorctrl:c-only\r\n
a=floorid:2 mstrm:9\r\n
a=confid:15\r\n
a=userid:15\r\n
m=video 0 RTP/SAVP 109\r\n
c=IN IP4 192.0.2.4\r\n
m=application 0 UDP/BFCP *\r\n
)";

/// The outcome of a text without a line: nothing was read, and an offer is written.
inline const std::string kNothingOutcome = R"(status=0
audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0
main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0
preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0
bfcp port=0 conf=0 user=0 server=0
bandwidth=0
srtp audio suite=0 key=- salt=-
srtp video suite=0 key=- salt=-
srtp slide suite=0 key=- salt=-
session addr= bandwidth=
answer
v=0\r\n
o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n
s=-\r\n
c=IN IP4 192.0.2.1\r\n
b=AS:1000\r\n
t=0 0\r\n
m=audio 16384 RTP/SAVP 104 9 0 18 101\r\n
b=TIAS:64000\r\n
a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n
a=rtpmap:104 G7221/16000\r\n
a=fmtp:104 bitrate=32000\r\n
a=rtpmap:9 G722/8000\r\n
a=rtpmap:0 PCMU/8000\r\n
a=rtpmap:18 G729/8000\r\n
a=fmtp:18 annexb=no\r\n
a=rtpmap:101 telephone-event/8000\r\n
a=fmtp:101 0-15\r\n
a=sendrecv\r\n
a=rtcp:16385 IN IP4 192.0.2.1\r\n
m=video 16386 RTP/SAVP 97 126\r\n
b=TIAS:936000\r\n
a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n
a=rtpmap:97 H264/90000\r\n
a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n
a=rtpmap:126 H264/90000\r\n
a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n
a=sendrecv\r\n
a=rtcp:16387 IN IP4 192.0.2.1\r\n
a=label:8\r\n
a=content:main\r\n
m=video 16388 RTP/SAVP 97 126\r\n
b=TIAS:936000\r\n
a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n
a=rtpmap:97 H264/90000\r\n
a=fmtp:97 profile-level-id=420028;max-br=1500;packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n
a=rtpmap:126 H264/90000\r\n
a=fmtp:126 profile-level-id=420028;max-br=1500;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n
a=sendrecv\r\n
a=rtcp:16389 IN IP4 192.0.2.1\r\n
a=label:9\r\n
a=content:slides\r\n
m=application 16390 UDP/BFCP *\r\n
a=floorctrl:c-s\r\n
a=floorid:2 mstrm:9\r\n
a=confid:15\r\n
a=userid:15\r\n
)";

/// The lines that kConference loses if its audio section has an unknown medium.
inline const std::string kAudioLostInRecord =
    "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
    "+audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
    "-bandwidth=1000000\n"
    "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
    "+bandwidth=936000\n"
    "+srtp audio suite=0 key=- salt=-\n";
inline const std::string kAudioLostInAnswer =
    "-m=audio 16384 RTP/SAVP 9 101\\r\\n\n"
    "+m=audio 16384 RTP/AVP 101\\r\\n\n"
    "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n"
    "-a=rtpmap:9 G722/8000\\r\\n\n"
    "-a=sendrecv\\r\\n\n";

} // namespace hostile
