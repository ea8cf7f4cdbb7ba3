#include "Call.h"
#include "Texts.h"

using namespace call;

namespace {

// Without repairs the component takes the parameter for a section of its own, which is in no place of the
// offer.
TEST(Shape, ASectionThatTheComponentAddsIsLeftOut) {
    SDPNegotiator side = Side(Local());
    side.SetRepairs(false);
    EXPECT_TEXT(side.Answer(Far("m=audio 30000 RTP/AVP 0\n"
                                "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n"
                                "a=fmtp:97 profile-level-id=42e01f;x=m=audio 1 RTP/AVP 0\n"
                                "m=video 30004 RTP/AVP 97\na=rtpmap:97 H264/90000\na=content:slides\n"
                                "m=application 30006 UDP/BFCP *\na=floorctrl:c-only\n"))
                    .text,
                kAudioAnswer + Text(R"(m=video 5006 RTP/AVP 97
a=rtpmap:97 H264/90000
a=fmtp:97 profile-level-id=42e01F;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=sendrecv
a=rtcp:5007 IN IP4 192.0.2.1
a=label:8
a=content:main
m=video 5008 RTP/AVP 97
a=rtpmap:97 H264/90000
a=fmtp:97 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;level-asymmetry-allowed=1
a=recvonly
a=rtcp:5009 IN IP4 192.0.2.1
a=label:9
a=content:slides
m=application 5010 UDP/BFCP *
a=floorctrl:s-only
a=floorid:2 mstrm:9
a=confid:15
a=userid:15
)"));
}

TEST(Shape, TheTypeOfAnAddressIsWrittenBeforeIt) {
    LocalSDP local = AudioOnly();
    local.strDefaultIPAddr = "2001:db8::1";
    local.strMyIPAddr = "192.0.2.1";
    EXPECT_TEXT(Side(local).Offer().text,
                Replaced(kAudioOffer, {{"c=IN IP4 192.0.2.1", "c=IN IP6 2001:db8::1"},
                                       {"5005 IN IP4 192.0.2.1", "5005 IN IP6 2001:db8::1"}}));
}

} // namespace
