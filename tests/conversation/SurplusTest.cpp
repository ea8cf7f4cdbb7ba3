// An offer with more sections than the answerer serves: two are answered, the others are rejected at port 0
// (RFC 3264, 6).
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

LocalSDP Plain() {
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "2";
    return local;
}

const char* const kOffer = "v=0\r\n"
                           "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                           "s=-\r\n"
                           "c=IN IP4 192.0.2.1\r\n"
                           "t=0 0\r\n"
                           "m=audio 16384 RTP/AVP 0 101\r\n"
                           "a=rtpmap:0 PCMU/8000\r\n"
                           "a=rtpmap:101 telephone-event/8000\r\n"
                           "a=fmtp:101 0-15\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                           "m=video 16386 RTP/AVP  126\r\n"
                           "a=rtpmap:126 H264/90000\r\n"
                           "a=fmtp:126 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                           "level-asymmetry-allowed=1\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                           "a=label:8\r\n"
                           "a=content:main\r\n";

const char* const kFarReads =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=126 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 send=1 "
    "recv=1 valid=1\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

const char* const kNearReads =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.2 port=20386 send=1 "
    "recv=1 valid=1\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationSurplus, SectionsBehindTheServedOnesAreRejected) {
    Near near(Plain());
    Far far(Plain());
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    // The offerer appends two sections: text with an address, and a second camera.
    EXPECT_TEXT(far.Read(offer + "m=text 5010 RTP/AVP 98\r\n"
                                 "c=IN IP4 192.0.2.9\r\n"
                                 "a=rtpmap:98 t140/1000\r\n"
                                 "m=video 5012 RTP/AVP 31 34\r\n"
                                 "b=TIAS:5000\r\n"),
                kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP  110\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                        "level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=text 0 RTP/AVP 98\r\n"
                        "c=IN IP4 192.0.2.9\r\n"
                        "m=video 0 RTP/AVP 31 34\r\n");
    EXPECT_TEXT(near.Read(answer), kNearReads);
}

TEST(ConversationSurplus, TheServedOnesAreCountedFromTheFrontWhateverTheyAre) {
    Near near(Plain());
    Far far(Plain());
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    // Two text sections come first: audio and video are answered and, as third and fourth section, also
    // rejected.
    const std::string sections = offer.substr(offer.find("m=audio"));
    EXPECT_TEXT(far.Read("c=IN IP4 192.0.2.1\r\n"
                         "m=text 5010 RTP/AVP 98\r\n"
                         "m=text 5012 RTP/AVP 99\r\n" +
                         sections),
                kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP  110\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                        "level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=audio 0 RTP/AVP 0 101\r\n"
                        "m=video 0 RTP/AVP 126\r\n");
    EXPECT_TEXT(near.Read(answer), kNearReads);
}

} // namespace
