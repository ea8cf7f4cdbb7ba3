// Several offers and answers of one call: the versions grow, ports change, and so do offerer and answerer.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

LocalSDP Plain() {
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PayloadType_t(PAYLOAD_G711U | PAYLOAD_G722);
    local.listAudioCodecPriority = {PAYLOAD_G722, PAYLOAD_G711U};
    return local;
}

const std::string kTail =
    "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

// The first offer and answer of both tests.
void Connect(Near& near, Far& far) {
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.1\r\n"
                       "t=0 0\r\n"
                       "m=audio 16384 RTP/AVP 9 0 101\r\n"
                       "a=rtpmap:9 G722/8000\r\n"
                       "a=rtpmap:0 PCMU/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n" +
                    kTail);
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
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" +
                    kTail);
}

TEST(ConversationReoffer, TheOffererOffersAgainAfterAReset) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    near.handler.ResetRemoteSDP();
    EXPECT_TRUE(near.handler.IsOffer());
    near.handler.MyLocalSDP.iAudioRTPPort = 17000;
    near.handler.MyLocalSDP.listAudioCodecPriority = {PAYLOAD_G711U};
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.1\r\n"
                       "t=0 0\r\n"
                       "m=audio 17000 RTP/AVP 0 101\r\n"
                       "a=rtpmap:0 PCMU/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:17001 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=17000 send=1 recv=1 valid=1\n" + kTail);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 3 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 0 101\r\n"
                        "a=rtpmap:0 PCMU/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" + kTail);
}

TEST(ConversationReoffer, TheAnswererOffersInTheSecondRound) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    far.handler.ResetRemoteSDP();
    const std::string offer = far.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 2000 3 IN IP4 192.0.2.2\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.2\r\n"
                       "t=0 0\r\n"
                       "m=audio 20384 RTP/AVP 9 0 101\r\n"
                       "a=rtpmap:9 G722/8000\r\n"
                       "a=rtpmap:0 PCMU/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(offer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" +
                    kTail);
    const std::string answer = near.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.1\r\n"
                        "t=0 0\r\n"
                        "m=audio 16384 RTP/AVP 9 101\r\n"
                        "a=rtpmap:9 G722/8000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(far.Read(answer),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n" +
                    kTail);
}

TEST(ConversationReoffer, WithoutAResetTheOffererAnswersItsOwnAnswerer) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    EXPECT_FALSE(near.handler.IsOffer());
    EXPECT_TEXT(near.Write(), "v=0\r\n"
                              "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                              "s=-\r\n"
                              "c=IN IP4 192.0.2.1\r\n"
                              "t=0 0\r\n"
                              "m=audio 16384 RTP/AVP 9 101\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(ConversationReoffer, AnEmptyTextSendsTheHandlerBackToOffering) {
    Near near(Plain());
    Far far(Plain());
    Connect(near, far);
    EXPECT_EQ(near.handler.ParseTheSDP("", near.remote), 1);
    EXPECT_TRUE(near.handler.IsOffer());
    EXPECT_TEXT(Describe(near.remote),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" +
                    kTail);
    EXPECT_TEXT(near.Write(), "v=0\r\n"
                              "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1\r\n"
                              "s=-\r\n"
                              "c=IN IP4 192.0.2.1\r\n"
                              "t=0 0\r\n"
                              "m=audio 16384 RTP/AVP 9 0 101\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

} // namespace
