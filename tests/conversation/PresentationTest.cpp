// Two handlers negotiate a presentation with its floor control channel.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

LocalSDP Presenter() {
    LocalSDP local = PresentationLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    return local;
}

const char* const kOffer = "v=0\r\n"
                           "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                           "s=-\r\n"
                           "c=IN IP4 192.0.2.1\r\n"
                           "b=AS:1000\r\n"
                           "t=0 0\r\n"
                           "m=audio 16384 RTP/AVP 0 101\r\n"
                           "b=TIAS:64000\r\n"
                           "a=rtpmap:0 PCMU/8000\r\n"
                           "a=rtpmap:101 telephone-event/8000\r\n"
                           "a=fmtp:101 0-15\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                           "m=video 16386 RTP/AVP 97 126\r\n"
                           "b=TIAS:936000\r\n"
                           "a=rtpmap:97 H264/90000\r\n"
                           "a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                           "packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                           "a=rtpmap:126 H264/90000\r\n"
                           "a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                           "packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                           "a=label:8\r\n"
                           "a=content:main\r\n"
                           "m=video 16388 RTP/AVP 97 126\r\n"
                           "b=TIAS:936000\r\n"
                           "a=rtpmap:97 H264/90000\r\n"
                           "a=fmtp:97 profile-level-id=420028;max-br=1500;packetization-mode=1;"
                           "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                           "a=rtpmap:126 H264/90000\r\n"
                           "a=fmtp:126 profile-level-id=420028;max-br=1500;packetization-mode=0;"
                           "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                           "a=label:9\r\n"
                           "a=content:slides\r\n"
                           "m=application 16390 UDP/BFCP *\r\n"
                           "a=floorctrl:c-s\r\n"
                           "a=floorid:2 mstrm:9\r\n"
                           "a=confid:15\r\n"
                           "a=userid:15\r\n";

const char* const kFarReads =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.1 port=16386 "
    "send=1 recv=1 valid=1\n"
    "preso codec=2 type=1 payload=97 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.1 port=16388 "
    "send=1 recv=1 valid=1\n"
    "bfcp port=16390 conf=15 user=15 server=0\n"
    "bandwidth=1000000\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationPresentation, TheThirdAndFourthSectionAreAnsweredAndRejected) {
    Near near(Presenter());
    near.handler.SetBfcpSupport(true);
    Far far(Presenter());
    far.handler.SetBfcpSupport(true);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "b=AS:1000\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "b=TIAS:64000\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP 109 110\r\n"
                        "b=TIAS:936000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=video 20388 RTP/AVP 109 110\r\n"
                        "b=TIAS:936000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=420028;max-br=1500;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420028;max-br=1500;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20389 IN IP4 192.0.2.2\r\n"
                        "a=label:9\r\n"
                        "a=content:slides\r\n"
                        "m=application 20390 UDP/BFCP *\r\n"
                        "a=floorctrl:s-only\r\n"
                        "a=floorid:2 mstrm:9\r\n"
                        "a=confid:15\r\n"
                        "a=userid:15\r\n"
                        "m=video 0 RTP/AVP 97 126\r\n"
                        "m=application 0 UDP/BFCP *\r\n");
    // The rejected section comes last, and the last floor control section is used (X11): the offerer reads
    // port 0.
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.2 "
                "port=20388 send=1 recv=1 valid=1\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=1000000\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(ConversationPresentation, AnAnswererThatServesFourSectionsGivesTheChannel) {
    Near near(Presenter());
    near.handler.SetBfcpSupport(true);
    Far far(Presenter());
    far.handler.SetBfcpSupport(true);
    far.handler.m_iMaxSupportedSessions = 4;
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "b=AS:1000\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "b=TIAS:64000\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP 109 110\r\n"
                        "b=TIAS:936000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=video 20388 RTP/AVP 109 110\r\n"
                        "b=TIAS:936000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=420028;max-br=1500;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420028;max-br=1500;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20389 IN IP4 192.0.2.2\r\n"
                        "a=label:9\r\n"
                        "a=content:slides\r\n"
                        "m=application 20390 UDP/BFCP *\r\n"
                        "a=floorctrl:s-only\r\n"
                        "a=floorid:2 mstrm:9\r\n"
                        "a=confid:15\r\n"
                        "a=userid:15\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.2 "
                "port=20388 send=1 recv=1 valid=1\n"
                "bfcp port=20390 conf=15 user=15 server=1\n"
                "bandwidth=1000000\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(ConversationPresentation, AnAnswererWithoutFloorControlRejectsBoth) {
    Near near(Presenter());
    near.handler.SetBfcpSupport(true);
    Far far(Presenter());
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "b=AS:1000\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "b=TIAS:64000\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP 109 110\r\n"
                        "b=TIAS:936000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=1;max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                        "packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=video 0 RTP/AVP 97 126\r\n"
                        "m=application 0 UDP/BFCP *\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=1000000\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

} // namespace
