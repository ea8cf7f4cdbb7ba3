// Two handlers negotiate audio. Each test states every text whole, and the record of each side.
#include "Endpoint.h"

#include <string>

using namespace support;

namespace {

const char* const kOffer = "v=0\r\n"
                           "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                           "s=-\r\n"
                           "c=IN IP4 192.0.2.1\r\n"
                           "t=0 0\r\n"
                           "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                           "a=rtpmap:104 G7221/16000\r\n"
                           "a=fmtp:104 bitrate=32000\r\n"
                           "a=rtpmap:9 G722/8000\r\n"
                           "a=rtpmap:0 PCMU/8000\r\n"
                           "a=rtpmap:18 G729/8000\r\n"
                           "a=fmtp:18 annexb=no\r\n"
                           "a=rtpmap:101 telephone-event/8000\r\n"
                           "a=fmtp:101 0-15\r\n"
                           "a=sendrecv\r\n"
                           "a=rtcp:16385 IN IP4 192.0.2.1\r\n";

const std::string kNoVideo =
    "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

TEST(ConversationAudio, TwoEqualEndpointsTakeTheOfferersFirstCodec) {
    Near near(AudioLocal());
    Far far(AudioLocal());
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer),
                "audio codec=16 payload=104 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n" +
                    kNoVideo);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 104 101\r\n"
                        "a=rtpmap:104 G7221/16000\r\n"
                        "a=fmtp:104 bitrate=32000\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=16 payload=104 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" +
                    kNoVideo);
}

TEST(ConversationAudio, TheOfferersOrderGoesBeforeTheAnswerersPriority) {
    Near near(AudioLocal());
    LocalSDP old = AudioLocal();
    old.eAudioCodec = PayloadType_t(PAYLOAD_G711U | PAYLOAD_G729);
    old.listAudioCodecPriority = {PAYLOAD_G729, PAYLOAD_G711U};
    Far far(old);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n" +
                    kNoVideo);
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
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=1 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n" +
                    kNoVideo);
}

TEST(ConversationAudio, WithoutACommonCodecOnlyTelephoneEventsAreLeft) {
    LocalSDP newer = AudioLocal();
    newer.eAudioCodec = PAYLOAD_G722;
    LocalSDP older = AudioLocal();
    older.eAudioCodec = PAYLOAD_G729;
    Near near(newer);
    Far far(older);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, "v=0\r\n"
                       "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 192.0.2.1\r\n"
                       "t=0 0\r\n"
                       "m=audio 16384 RTP/AVP 9 101\r\n"
                       "a=rtpmap:9 G722/8000\r\n"
                       "a=rtpmap:101 telephone-event/8000\r\n"
                       "a=fmtp:101 0-15\r\n"
                       "a=sendrecv\r\n"
                       "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(far.Read(offer),
                "audio codec=256 payload=0 dtmf=101 addr=192.0.2.1 port=16384 send=0 recv=0 valid=1\n" +
                    kNoVideo);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n"
                        "m=audio 20384 RTP/AVP 101\r\n"
                        "a=rtpmap:101 telephone-event/8000\r\n"
                        "a=fmtp:101 0-15\r\n"
                        "a=sendrecv\r\n"
                        "a=rtcp:20385 IN IP4 192.0.2.2\r\n");
    EXPECT_TEXT(near.Read(answer),
                "audio codec=256 payload=0 dtmf=101 addr=192.0.2.2 port=20384 send=0 recv=0 valid=1\n" +
                    kNoVideo);
}

TEST(ConversationAudio, AnAnswererWithoutAudioLeavesTheSectionOut) {
    Near near(AudioLocal());
    LocalSDP silent = AudioLocal();
    silent.listAudioCodecPriority.clear();
    Far far(silent);
    const std::string offer = near.Write();
    EXPECT_TEXT(offer, kOffer);
    EXPECT_TEXT(far.Read(offer),
                "audio codec=16 payload=104 dtmf=101 addr=192.0.2.1 port=16384 send=1 recv=1 valid=1\n" +
                    kNoVideo);
    const std::string answer = far.Write();
    EXPECT_TEXT(answer, "v=0\r\n"
                        "o=Quillmarshorizon 2000 2 IN IP4 192.0.2.2\r\n"
                        "s=-\r\n"
                        "c=IN IP4 192.0.2.2\r\n"
                        "t=0 0\r\n");
    EXPECT_TEXT(near.Read(answer), kFreshRemote);
}

} // namespace
