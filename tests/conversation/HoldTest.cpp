// Hold: the far end puts the call on hold with "a=inactive" or with port 0, and resumes it.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

// Audio and main video without limits, one audio codec, one payload per section.
LocalSDP Plain() {
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "2";
    return local;
}

const std::string kTail = "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 "
                          "send=0 recv=0 valid=0\n"
                          "bfcp port=0 conf=0 user=0 server=0\n"
                          "bandwidth=0\n"
                          "srtp audio suite=0 key=- salt=-\n"
                          "srtp video suite=0 key=- salt=-\n"
                          "srtp slide suite=0 key=- salt=-\n";

// Negotiates an active call; both descriptions have version 2.
void Connect(Near& near, Far& far) {
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
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
                       "a=content:main\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=126 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
                "send=1 recv=1 valid=1\n" +
                    kTail);
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
                        "a=content:main\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.2 port=20386 "
                "send=1 recv=1 valid=1\n" +
                    kTail);
}

// The answer of the side on hold, version 3 in both tests.
const char* const kHeldAnswer = "v=0\r\n"
                                "o=Quillmarshorizon 2000 3 IN IP4 192.0.2.2\r\n"
                                "s=-\r\n"
                                "c=IN IP4 192.0.2.2\r\n"
                                "t=0 0\r\n"
                                "m=audio 20384 RTP/AVP 0 101\r\n"
                                "a=rtpmap:0 PCMU/8000\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=inactive\r\n"
                                "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                                "m=video 20386 RTP/AVP  110\r\n"
                                "a=rtpmap:110 H264/90000\r\n"
                                "a=fmtp:110 profile-level-id=420014;packetization-mode=0;"
                                "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                                "a=inactive\r\n"
                                "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                                "a=label:8\r\n"
                                "a=content:main\r\n";

const std::string kNearReadsHeld =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=0 recv=0 valid=1\n"
    "main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.2 port=20386 "
    "send=0 recv=0 valid=1\n" +
    kTail;

TEST(ConversationHold, ByInactive) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    // The application edits the direction of its offer, because a handler offers streams in both directions.
    near.handler.ResetRemoteSDP();
    std::string hold = near.Write();
    for (std::string::size_type at; (at = hold.find("a=sendrecv")) != std::string::npos;) {
        hold.replace(at, 10, "a=inactive");
    }
    EXPECT_TEXT(hold, "v=0\r\n"
                      "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                      "s=-\r\n"
                      "c=IN IP4 192.0.2.1\r\n"
                      "t=0 0\r\n"
                      "m=audio 16384 RTP/AVP 0 101\r\n"
                      "a=rtpmap:0 PCMU/8000\r\n"
                      "a=rtpmap:101 telephone-event/8000\r\n"
                      "a=fmtp:101 0-15\r\n"
                      "a=inactive\r\n"
                      "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                      "m=video 16386 RTP/AVP  126\r\n"
                      "a=rtpmap:126 H264/90000\r\n"
                      "a=fmtp:126 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                      "level-asymmetry-allowed=1\r\n"
                      "a=inactive\r\n"
                      "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                      "a=label:8\r\n"
                      "a=content:main\r\n");
    EXPECT_TEXT(far.Read(hold),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=0 recv=0 valid=1\n"
                "main codec=2 type=0 payload=126 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
                "send=0 recv=0 valid=1\n" +
                    kTail);
    const std::string held = far.Write();
    EXPECT_TEXT(held, kHeldAnswer);
    EXPECT_TEXT(near.Read(held), kNearReadsHeld);
}

TEST(ConversationHold, ByPortZeroAndBack) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    near.handler.ResetRemoteSDP();
    near.handler.MyLocalSDP.iAudioRTPPort = 0;
    near.handler.MyLocalSDP.m_VideoMain.iVideoRTPPort = 0;
    const std::string hold = near.Write();
    EXPECT_TEXT(hold, "v=0\r\n"
                      "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                      "s=-\r\n"
                      "c=IN IP4 192.0.2.1\r\n"
                      "t=0 0\r\n"
                      "m=audio 0 RTP/AVP 0 101\r\n"
                      "a=rtpmap:0 PCMU/8000\r\n"
                      "a=rtpmap:101 telephone-event/8000\r\n"
                      "a=fmtp:101 0-15\r\n"
                      "a=sendrecv\r\n"
                      "m=video 0 RTP/AVP  126\r\n"
                      "a=rtpmap:126 H264/90000\r\n"
                      "a=fmtp:126 profile-level-id=420014;packetization-mode=0;max-rcmd-nalu-size=0;"
                      "level-asymmetry-allowed=1\r\n"
                      "a=sendrecv\r\n"
                      "a=label:8\r\n"
                      "a=content:main\r\n");
    EXPECT_TEXT(far.Read(hold),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=0 send=0 recv=0 valid=1\n"
                "main codec=2 type=0 payload=126 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.1 port=0 "
                "send=0 recv=0 valid=1\n" +
                    kTail);
    const std::string held = far.Write();
    EXPECT_TEXT(held, kHeldAnswer);
    EXPECT_TEXT(near.Read(held), kNearReadsHeld);
    // Resume: the ports are back, and both sides send and receive again.
    near.handler.ResetRemoteSDP();
    near.handler.MyLocalSDP.iAudioRTPPort = 16384;
    near.handler.MyLocalSDP.m_VideoMain.iVideoRTPPort = 16386;
    const std::string resume = near.Write();
    EXPECT_TEXT(resume, "v=0\r\n"
                        "o=Quillmarshorizon 1000 4 IN IP4 192.0.2.1\r\n"
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
                        "a=content:main\r\n");
    EXPECT_TEXT(far.Read(resume),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=126 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
                "send=1 recv=1 valid=1\n" +
                    kTail);
    const std::string openText = far.Write();
    EXPECT_TEXT(openText, "v=0\r\n"
                          "o=Quillmarshorizon 2000 4 IN IP4 192.0.2.2\r\n"
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
                          "a=content:main\r\n");
    EXPECT_TEXT(near.Read(openText),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.2 port=20386 "
                "send=1 recv=1 valid=1\n" +
                    kTail);
}

} // namespace
