// Two handlers negotiate audio and video.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

// The far side: half a megabit, a lower level, 9 before 104.
LocalSDP FarLocal() {
    LocalSDP local = VideoLocal();
    local.iMaxBandwidth = 512000;
    local.eAudioCodec = PAYLOAD_G722;
    local.m_VideoMain.strVideoLevel = "2.1";
    local.m_VideoMain.iFmtpMaxMbps = 0;
    local.m_VideoMain.iFmtpMaxFrameSize = 0;
    local.m_VideoMain.iFmtpMaxBitRate = 450;
    return local;
}

const char* const kOffer =
    "v=0\r\n"
    "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
    "s=-\r\n"
    "c=IN IP4 192.0.2.1\r\n"
    "b=AS:1000\r\n"
    "t=0 0\r\n"
    "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
    "b=TIAS:64000\r\n"
    "a=rtpmap:104 G7221/16000\r\n"
    "a=fmtp:104 bitrate=32000\r\n"
    "a=rtpmap:9 G722/8000\r\n"
    "a=rtpmap:0 PCMU/8000\r\n"
    "a=rtpmap:18 G729/8000\r\n"
    "a=fmtp:18 annexb=no\r\n"
    "a=rtpmap:101 telephone-event/8000\r\n"
    "a=fmtp:101 0-15\r\n"
    "a=sendrecv\r\n"
    "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
    "m=video 16386 RTP/AVP 97 126\r\n"
    "b=TIAS:936000\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;"
    "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
    "a=rtpmap:126 H264/90000\r\n"
    "a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;"
    "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
    "a=sendrecv\r\n"
    "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
    "a=label:8\r\n"
    "a=content:main\r\n";

const char* const kFarReads =
    "audio codec=64 payload=9 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.1 "
    "port=16386 send=1 recv=1 valid=1\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
    "valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=1000000\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationVideo, AudioAndVideo) {
    Near near(VideoLocal());
    Far far(FarLocal());
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "b=AS:512\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 9 101\r\n"
                        "b=TIAS:64000\r\n"
                        "a=rtpmap:9 G722/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP 109 110\r\n"
                        "b=TIAS:448000\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=420015;max-br=450;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420015;max-br=450;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=2.1 mbps=0 fs=0 br=450 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=512000\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(ConversationVideo, AnAnswererWithModeZeroAlone) {
    Near near(VideoLocal());
    LocalSDP local = FarLocal();
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264_PACKETIZATION_0;
    Far far(local);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "b=AS:512\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 9 101\r\n"
                        "b=TIAS:64000\r\n"
                        "a=rtpmap:9 G722/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/AVP  110\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=420015;max-br=450;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=110 mode=0 level=2.1 mbps=0 fs=0 br=450 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=512000\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

TEST(ConversationVideo, AnAnswererWithoutVideoLeavesTheSectionOut) {
    Near near(VideoLocal());
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PAYLOAD_G722;
    Far far(local);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer), kFarReads);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 9 101\r\n"
                        "a=rtpmap:9 G722/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
}

} // namespace
