// The deliberate behaviours of the extraction, the letter X of commonmedia/DELIBERATE.md. Each test shows the
// surprising input with its whole outcome, and beside it the input that does what one expects.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <string>

using namespace support;

namespace {

// The record that a handler with all codecs reads out of a text.
std::string Read(const std::string& text) {
    SDPHandler h;
    Start(h, AudioLocal());
    RemoteSDP remote;
    EXPECT_EQ(h.ParseTheSDP(text, remote), 0);
    return Describe(remote);
}

const std::string kNoMain =
    "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoPreso =
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoAudio = "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoFloor = "bfcp port=0 conf=0 user=0 server=0\n";
const std::string kNoKeys = "srtp audio suite=0 key=- salt=-\n"
                            "srtp video suite=0 key=- salt=-\n"
                            "srtp slide suite=0 key=- salt=-\n";
const std::string kNothingBehindAudio = kNoMain + kNoPreso + kNoFloor + "bandwidth=0\n" + kNoKeys;
const std::string kNothingBehindMain = kNoPreso + kNoFloor + "bandwidth=0\n" + kNoKeys;

TEST(Deliberate, X01_BitrateOnlyAtTheFront) {
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 104\r\n"
                     "a=rtpmap:104 G7221/16000\r\n"
                     "a=fmtp:104 bitrate=32000\r\n"),
                "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
    // With a blank after the semicolon the parameter does not begin with the key.
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 104\r\n"
                     "a=rtpmap:104 G7221/16000\r\n"
                     "a=fmtp:104 x=1; bitrate=32000\r\n"),
                "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n" +
                    kNothingBehindAudio);
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 104\r\n"
                     "a=rtpmap:104 G7221/16000\r\n"
                     "a=fmtp:104 x=1;bitrate=32000\r\n"),
                "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
    // Only the prefix is compared, so a longer number is accepted as well.
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 104\r\n"
                     "a=rtpmap:104 G7221/16000\r\n"
                     "a=fmtp:104 bitrate=320001\r\n"),
                "audio codec=16 payload=104 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
}

TEST(Deliberate, X02_LastTelephoneEventWins) {
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 0 101\r\n"
                     "a=rtpmap:101 telephone-event/8000\r\n"),
                "audio codec=1 payload=0 dtmf=101 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 0 101 9 96\r\n"
                     "a=rtpmap:96 telephone-event/8000\r\n"
                     "a=rtpmap:101 telephone-event/8000\r\n"),
                "audio codec=1 payload=0 dtmf=96 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
}

TEST(Deliberate, X03_ShortH264Literal) {
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 H264/90000\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
    // "H264/9000" anywhere in the name is enough: another rate and another name pass.
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 XH264/9000\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 H264/8000\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
}

TEST(Deliberate, X04_WithoutAModeTheLastFormatStandsOnAllValues) {
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97 98\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=42801f;max-br=5;packetization-mode=1\r\n"
                     "a=rtpmap:98 H264/90000\r\n"
                     "a=fmtp:98 max-fs=7\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=5 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
    // Payload 98 is taken with the level and the bit rate that only payload 97 named.
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97 98\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=42801f;max-br=5;packetization-mode=0\r\n"
                     "a=rtpmap:98 H264/90000\r\n"
                     "a=fmtp:98 max-fs=7\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=98 mode=0 level=3.1 mbps=0 fs=7 br=5 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
}

TEST(Deliberate, X05_Level1bIs255) {
    const SDPHandler h;
    EXPECT_EQ(h.ConvertVideoLevel("0B"), "1.1");
    EXPECT_EQ(h.ReverseConvertVideoLevel("1.1"), "0B");
    EXPECT_EQ(h.ConvertVideoLevel("FF"), "1.b");
    EXPECT_EQ(h.ReverseConvertVideoLevel("1.b"), "FF");
    // The level byte that H.264 itself has for 1b in other profiles is none of ours.
    EXPECT_EQ(h.ConvertVideoLevel("09"), "1.3");
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=4280ff\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=0 level=1.b mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
}

TEST(Deliberate, X06_UnknownLevelReads13AndWrites2) {
    const SDPHandler h;
    EXPECT_EQ(h.ConvertVideoLevel("33"), "5.1");
    EXPECT_EQ(h.ReverseConvertVideoLevel("5.1"), "33");
    EXPECT_EQ(h.ConvertVideoLevel("34"), "1.3");
    EXPECT_EQ(h.ReverseConvertVideoLevel("5.2"), "14");
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=428034\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=0 level=1.3 mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNothingBehindMain);
}

TEST(Deliberate, X07_RecordsAreValidWithoutACodec) {
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 0\r\n"
                     "m=video 5002 RTP/AVP 97\r\n"
                     "a=rtpmap:97 H264/90000\r\n"),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=97 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                "recv=1 valid=1\n" +
                    kNothingBehindMain);
    // Audio tells it by codec 256 and clear flags, video by payload 0 alone.
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 8\r\n"
                     "m=video 5002 RTP/AVP 96\r\n"
                     "a=rtpmap:96 VP8/90000\r\n"),
                "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n"
                "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                "recv=1 valid=1\n" +
                    kNothingBehindMain);
}

TEST(Deliberate, X08_FirstAudioFillsTheRecordAndTheLastAnswers) {
    SDPHandler one;
    Start(one, AudioLocal());
    RemoteSDP remote;
    one.ParseTheSDP("m=audio 5000 RTP/AVP 0\r\n", remote);
    EXPECT_EQ(remote.eAudioCodec, PAYLOAD_G711U);
    EXPECT_TEXT(one.AddAudio(), "m=audio 16384 RTP/AVP 0 101\r\n"
                                "a=rtpmap:0 PCMU/8000\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=sendrecv\r\n"
                                "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    SDPHandler two;
    Start(two, AudioLocal());
    two.ParseTheSDP("m=audio 5000 RTP/AVP 0\r\nm=audio 5004 RTP/AVP 18\r\na=inactive\r\n", remote);
    EXPECT_TEXT(Describe(remote), "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                                      kNothingBehindAudio);
    EXPECT_TEXT(two.AddAudio(), "m=audio 16384 RTP/AVP 18 101\r\n"
                                "a=rtpmap:18 G729/8000\r\n"
                                "a=fmtp:18 annexb=no\r\n"
                                "a=rtpmap:101 telephone-event/8000\r\n"
                                "a=fmtp:101 0-15\r\n"
                                "a=sendrecv\r\n"
                                "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST(Deliberate, X09_SessionBandwidthReplacesTheMediaSum) {
    const std::string before = "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n"
                               "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= "
                               "port=5002 send=1 recv=1 valid=1\n" +
                               kNoPreso + kNoFloor;
    const std::string media = "m=audio 5000 RTP/AVP 0\r\n"
                              "b=TIAS:64000\r\n"
                              "m=video 5002 RTP/AVP 97\r\n"
                              "b=TIAS:936000\r\n";
    EXPECT_TEXT(Read(media), before + "bandwidth=1000000\n" + kNoKeys);
    EXPECT_TEXT(Read("b=AS:512\r\n" + media), before + "bandwidth=512000\n" + kNoKeys);
    // A session text that is no number replaces the sum by nothing at all.
    EXPECT_TEXT(Read("b=AS:much\r\n" + media), before + "bandwidth=0\n" + kNoKeys);
}

TEST(Deliberate, X10_PresentationNeverCountsTowardBandwidth) {
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "b=TIAS:936000\r\n"),
                kNoAudio +
                    "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNoPreso + kNoFloor + "bandwidth=936000\n" + kNoKeys);
    EXPECT_TEXT(Read("m=video 5002 RTP/AVP 97\r\n"
                     "b=TIAS:936000\r\n"
                     "a=content:slides\r\n"),
                kNoAudio + kNoMain +
                    "preso codec=2 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=1 "
                    "recv=1 valid=1\n" +
                    kNoFloor + "bandwidth=0\n" + kNoKeys);
}

TEST(Deliberate, X11_LastFloorControlSectionStands) {
    const std::string firstText = "m=application 5070 UDP/BFCP *\r\n"
                                  "a=floorctrl:s-only\r\n"
                                  "a=confid:1\r\n"
                                  "a=userid:2\r\n";
    EXPECT_TEXT(Read(firstText), kNoAudio + kNoMain + kNoPreso + "bfcp port=5070 conf=1 user=2 server=1\n" +
                                     "bandwidth=0\n" + kNoKeys);
    EXPECT_TEXT(Read(firstText + "m=application 5072 TCP/BFCP *\r\na=confid:3\r\n"),
                kNoAudio + kNoMain + kNoPreso + "bfcp port=5072 conf=3 user=0 server=0\n" + "bandwidth=0\n" +
                    kNoKeys);
}

TEST(Deliberate, X12_StaticPayloadsByNumberAlone) {
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 9\r\n"
                     "a=rtpmap:9 G722/8000\r\n"),
                "audio codec=64 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
    // The far end's rtpmap line has no effect, and the codec is not found under another number.
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 9\r\n"
                     "a=rtpmap:9 opus/48000/2\r\n"),
                "audio codec=64 payload=9 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                    kNothingBehindAudio);
    EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 96\r\n"
                     "a=rtpmap:96 G722/8000\r\n"),
                "audio codec=256 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n" +
                    kNothingBehindAudio);
    // The same for the other two static payload types, whatever their rtpmap and fmtp lines say.
    for (const char* const lines :
         {"", "a=rtpmap:0 opus/48000/2\r\n", "a=rtpmap:0 PCMA/8000\r\n", "a=rtpmap:0 G729/8000\r\n",
          "a=rtpmap:0 G7221/16000\r\n", "a=rtpmap:0 PCMU/16000\r\na=fmtp:0 annexb=yes\r\n"}) {
        EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 0\r\n" + std::string(lines)),
                    "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                        kNothingBehindAudio);
    }
    for (const char* const lines :
         {"", "a=rtpmap:18 PCMU/8000\r\n", "a=rtpmap:18 opus/48000/2\r\n", "a=rtpmap:18 G729/16000\r\n",
          "a=fmtp:18 annexb=yes\r\n", "a=rtpmap:18 G729/8000\r\na=fmtp:18 annexb=yes\r\n",
          "a=rtpmap:18 G729/8000\r\na=fmtp:18 annexb=no\r\n"}) {
        EXPECT_TEXT(Read("m=audio 5000 RTP/AVP 18\r\n" + std::string(lines)),
                    "audio codec=8 payload=18 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                        kNothingBehindAudio);
    }
}

} // namespace
