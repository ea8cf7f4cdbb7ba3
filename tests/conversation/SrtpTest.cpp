// Two handlers negotiate SRTP: with the suite that is read, with another one, and for one stream only.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

// Audio with one codec, and main video, without a bandwidth limit.
LocalSDP Plain() {
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.m_VideoMain.eVideoCodec = PAYLOAD_H264;
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "3.1";
    return local;
}

LocalSDP Keyed(const std::string& who, CRYPTO_PROFILE suite) {
    LocalSDP local = Plain();
    GiveKeys(local, who, suite);
    return local;
}

const char* const kKeyedOffer = "v=0\r\n"
                                "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                "s=-\r\n"
                                "c=IN IP4 192.0.2.1\r\n"
                                "t=0 0\r\n"
                                "m=audio 16384 RTP/SAVP 0 101\r\n"
                                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                                "inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
                                "a=rtpmap:0 PCMU/8000\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=sendrecv\r\n"
                                "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                                "m=video 16386 RTP/SAVP 97 126\r\n"
                                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                                "inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                                "a=rtpmap:97 H264/90000\r\n"
                                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;"
                                "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                                "a=rtpmap:126 H264/90000\r\n"
                                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;"
                                "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                                "a=sendrecv\r\n"
                                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                                "a=label:8\r\n"
                                "a=content:main\r\n";

const char* const kFarReadsKeyed =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
    "send=1 recv=1 valid=1\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
    "valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=1 key=near audio key 1 salt=near audiosalt\n"
    "srtp video suite=1 key=near video key 1 salt=near videosalt\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationSrtp, TheShortTagSuiteIsOfferedAndAnswered) {
    Near near(Keyed("near", kSuite32));
    near.handler.m_bSRTP = true;
    Far far(Keyed("away", kSuite32));
    far.handler.m_bSRTP = true;
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kKeyedOffer);
    EXPECT_TEXT(far.Read(offer), kFarReadsKeyed);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/SAVP 0 101\r\n"
                        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                        "inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n"
                        "m=video 20386 RTP/SAVP 109 110\r\n"
                        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                        "inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
                "srtp video suite=1 key=away video key 1 salt=away videosalt\n"
                "srtp slide suite=0 key=- salt=-\n");
}

// The offerer wants SRTP; the answerer finds no usable key or does not want SRTP.
const char* const kPlainAnswer = "v=0\r\n"
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
                                 "m=video 20386 RTP/AVP 109 110\r\n"
                                 "a=rtpmap:109 H264/90000\r\n"
                                 "a=fmtp:109 profile-level-id=42001F;packetization-mode=1;"
                                 "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                                 "a=rtpmap:110 H264/90000\r\n"
                                 "a=fmtp:110 profile-level-id=42001F;packetization-mode=0;"
                                 "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                                 "a=label:8\r\n"
                                 "a=content:main\r\n";

const char* const kNearReadsPlain =
    "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
    "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.2 port=20386 "
    "send=1 recv=1 valid=1\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationSrtp, TheLongTagSuiteAloneIsAnsweredInTheClear) {
    Near near(Keyed("near", kSuite80));
    near.handler.m_bSRTP = true;
    Far far(Keyed("away", kSuite80));
    far.handler.m_bSRTP = true;
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.1\r\n"
                       "t=0 0\r\n"
                       "m=audio 16384 RTP/SAVP 0 101\r\n"
                       "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                       "inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
                       "a=rtpmap:0 PCMU/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                       "m=video 16386 RTP/SAVP 97 126\r\n"
                       "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                       "inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n"
                       "a=rtpmap:97 H264/90000\r\n"
                       "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;"
                       "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                       "a=rtpmap:126 H264/90000\r\n"
                       "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;"
                       "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                       "a=label:8\r\n"
                       "a=content:main\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
                "send=1 recv=1 valid=1\n"
                "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
                "valid=0\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=0 key=- salt=-\n");
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, kPlainAnswer);
    EXPECT_TEXT(near.Read(answer), kNearReadsPlain);
}

TEST(ConversationSrtp, AnAnswererThatDoesNotWantItAnswersInTheClear) {
    Near near(Keyed("near", kSuite32));
    near.handler.m_bSRTP = true;
    Far far(Keyed("away", kSuite32));
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kKeyedOffer);
    EXPECT_TEXT(far.Read(offer), kFarReadsKeyed);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, kPlainAnswer);
    EXPECT_TEXT(near.Read(answer), kNearReadsPlain);
}

TEST(ConversationSrtp, ThePresentationAloneIsKeyed) {
    LocalSDP slides = Keyed("near", kSuiteNone);
    slides.m_VideoPreso = slides.m_VideoMain;
    slides.m_VideoPreso.eVideoType = VIDEOTYPE_PRESO;
    slides.m_VideoPreso.iVideoRTPPort = 16388;
    slides.iVideoPresoControlPort = 16390;
    LocalSDP other = slides;
    slides.cryptoAlgo[baseSDP::SRTP_VIDEO_PRESO] = kSuite32;
    GiveKeys(other, "away", kSuite32);
    Near near(slides);
    near.handler.m_bSRTP = true;
    near.handler.SetBfcpSupport(true);
    Far far(other);
    far.handler.m_bSRTP = true;
    far.handler.SetBfcpSupport(true);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.1\r\n"
                       "t=0 0\r\n"
                       "m=audio 16384 RTP/SAVP 0 101\r\n"
                       "a=rtpmap:0 PCMU/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                       "m=video 16386 RTP/SAVP 97 126\r\n"
                       "a=rtpmap:97 H264/90000\r\n"
                       "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;"
                       "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                       "a=rtpmap:126 H264/90000\r\n"
                       "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;"
                       "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                       "a=label:8\r\n"
                       "a=content:main\r\n"
                       "m=video 16388 RTP/SAVP 97 126\r\n"
                       "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                       "inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n"
                       "a=rtpmap:97 H264/90000\r\n"
                       "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;"
                       "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                       "a=rtpmap:126 H264/90000\r\n"
                       "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;"
                       "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                       "a=label:9\r\n"
                       "a=content:slides\r\n"
                       "m=application 16390 UDP/BFCP *\r\n"
                       "a=floorctrl:c-s\r\n"
                       "a=floorid:2 mstrm:9\r\n"
                       "a=confid:15\r\n"
                       "a=userid:15\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.1 port=16386 "
                "send=1 recv=1 valid=1\n"
                "preso codec=2 type=1 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.1 "
                "port=16388 send=1 recv=1 valid=1\n"
                "bfcp port=16390 conf=15 user=15 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=1 key=near slide key 1 salt=near slidesalt\n");
    // Main video is answered as secure without a key, because the far end's only secure section is video
    // (B13).
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
                        "m=video 20386 RTP/SAVP 109 110\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;packetization-mode=0;"
                        "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20387 IN IP4 192.0.2.2\r\n"
                        "a=label:8\r\n"
                        "a=content:main\r\n"
                        "m=video 20388 RTP/SAVP 109 110\r\n"
                        "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                        "inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n"
                        "a=rtpmap:109 H264/90000\r\n"
                        "a=fmtp:109 profile-level-id=42001F;packetization-mode=1;"
                        "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                        "a=rtpmap:110 H264/90000\r\n"
                        "a=fmtp:110 profile-level-id=42001F;packetization-mode=0;"
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
                        "m=video 0 RTP/SAVP 97 126\r\n"
                        "m=application 0 UDP/BFCP *\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.2 "
                "port=20386 send=1 recv=1 valid=1\n"
                "preso codec=2 type=1 payload=109 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.2 "
                "port=20388 send=1 recv=1 valid=1\n"
                "bfcp port=0 conf=0 user=0 server=0\n"
                "bandwidth=0\n"
                "srtp audio suite=0 key=- salt=-\n"
                "srtp video suite=0 key=- salt=-\n"
                "srtp slide suite=1 key=away slide key 1 salt=away slidesalt\n");
}

} // namespace
