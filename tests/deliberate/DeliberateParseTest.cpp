// The deliberate behaviours of the parse, the letter P of commonmedia/DELIBERATE.md. Each test shows the
// surprising input with its whole outcome, and beside it the input that does what one expects.
#include "Capabilities.h"
#include "Describe.h"
#include "Expect.h"

#include <string>
#include <vector>

using namespace support;

namespace {

const std::string kNoMain =
    "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoPreso =
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoAudio = "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n";
const std::string kNoFloor = "bfcp port=0 conf=0 user=0 server=0\n";
const std::string kNoKeys = "srtp audio suite=0 key=- salt=-\n"
                            "srtp video suite=0 key=- salt=-\n"
                            "srtp slide suite=0 key=- salt=-\n";
const std::string kOnlyAudio = kNoMain + kNoPreso + kNoFloor + "bandwidth=0\n" + kNoKeys;
const std::string kOnlyMain = kNoPreso + kNoFloor + "bandwidth=0\n" + kNoKeys;

// "away audio key 1" and "away audiosalt", as Capabilities.h has them.
const std::string kKeyText = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
const std::string kAudioKeyRows = "srtp video suite=0 key=- salt=-\n"
                                  "srtp slide suite=0 key=- salt=-\n";

// A handler with all audio codecs that has read one text.
class Reading {
public:
    explicit Reading(const std::string& text) {
        Start(m_handler, AudioLocal());
        Read(text);
    }
    void Read(const std::string& text) { EXPECT_EQ(m_handler.ParseTheSDP(text, m_remote), 0); }
    std::string Record() const { return Describe(m_remote); }
    std::string Dump(std::size_t i) const { return Section(i).ToDiag(); }
    const MediaSession& Section(std::size_t i) const { return *m_handler.vecRemoteMediaSession.at(i); }
    std::size_t Sections() const { return m_handler.vecRemoteMediaSession.size(); }
    SDPHandler& Handler() { return m_handler; }

private:
    SDPHandler m_handler;
    RemoteSDP m_remote;
};

// The end of a dump, behind the payload entries, when no other line filled the section.
const std::string kDumpEnd = "fRecv: true\n"
                             "fSend: true\n"
                             "strVideoLevel: \n"
                             "strMaxBandwidth: \n"
                             "iBfcpConfid: 0\n"
                             "iBfcpUserid: 0\n"
                             "strFloorctrl: \n"
                             "\n\n";

TEST(Deliberate, P01_FirstKeywordAnywhereInTableOrder) {
    // "useinbandfec=1" holds "c=", so an fmtp line of three words is a connection line: the section gets a
    // word for an address and the format keeps no parameter.
    const Reading surprising("m=audio 5000 RTP/AVP 0 111\r\n"
                             "c=IN IP4 192.0.2.2\r\n"
                             "a=fmtp:111 minptime=10; useinbandfec=1\r\n");
    EXPECT_TEXT(surprising.Record(),
                "audio codec=1 payload=0 dtmf=0 addr=useinbandfec=1 port=5000 send=1 recv=1 valid=1\n" +
                    kOnlyAudio);
    EXPECT_TEXT(surprising.Dump(0), "eContent: 100\n"
                                    "iPort: 5000\n"
                                    "strIPAddr: useinbandfec=1\n"
                                    "\tRtpMap[0]: Payload-0 EncodingName-\n"
                                    "\tRtpMap[1]: Payload-111 EncodingName-\n" +
                                        kDumpEnd);
    // Without the blank the line has two words, so it has no address and is dropped.
    const Reading dropped("m=audio 5000 RTP/AVP 0 111\r\n"
                          "c=IN IP4 192.0.2.2\r\n"
                          "a=fmtp:111 minptime=10;useinbandfec=1\r\n");
    EXPECT_TEXT(dropped.Record(),
                "audio codec=1 payload=0 dtmf=0 addr=192.0.2.2 port=5000 send=1 recv=1 valid=1\n" +
                    kOnlyAudio);
    // A line with one keyword is read as expected.
    const Reading ordinary("m=audio 5000 RTP/AVP 0 111\r\n"
                           "c=IN IP4 192.0.2.2\r\n"
                           "a=fmtp:111 minptime=10\r\n");
    EXPECT_TEXT(ordinary.Dump(0), "eContent: 100\n"
                                  "iPort: 5000\n"
                                  "strIPAddr: 192.0.2.2\n"
                                  "\tRtpMap[0]: Payload-0 EncodingName-\n"
                                  "\tRtpMap[1]: Payload-111 EncodingName-\n"
                                  "\t\tFmtp Parm-minptime=10\n" +
                                      kDumpEnd);
}

TEST(Deliberate, P02_UnterminatedLastLineIsLost) {
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\na=sendonly").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kOnlyAudio);
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0").Record(), kFreshRemote);
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\na=sendonly\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=1 valid=1\n" + kOnlyAudio);
}

TEST(Deliberate, P03_BareLineFeedJoinsLines) {
    // The video line and its attribute become words of the audio line.
    const Reading joined("m=audio 5000 RTP/AVP 0\nm=video 5002 RTP/AVP 97\na=sendonly\r\n");
    EXPECT_EQ(joined.Sections(), 1U);
    EXPECT_TEXT(joined.Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kOnlyAudio);
    EXPECT_TEXT(joined.Dump(0), "eContent: 100\n"
                                "iPort: 5000\n"
                                "strIPAddr: \n"
                                "\tRtpMap[0]: Payload-0 EncodingName-\n"
                                "\tRtpMap[1]: Payload-m=video EncodingName-\n"
                                "\tRtpMap[2]: Payload-5002 EncodingName-\n"
                                "\tRtpMap[3]: Payload-RTP/AVP EncodingName-\n"
                                "\tRtpMap[4]: Payload-97 EncodingName-\n"
                                "\tRtpMap[5]: Payload-a=sendonly EncodingName-\n" +
                                    kDumpEnd);
    // A text of bare line feeds has no line at all.
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\nm=video 5002 RTP/AVP 97\na=sendonly\n").Record(),
                kFreshRemote);
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\na=sendonly\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=5002 send=0 recv=1 "
                "valid=1\n" +
                    kOnlyMain);
}

TEST(Deliberate, P04_EveryIceAttributeGoesToOneHandler) {
    // The direction after an ICE option is not read.
    const Reading ice("m=audio 5000 RTP/AVP 0\r\na=ice-options:trickle a=inactive\r\na=ice-lite\r\n");
    EXPECT_TEXT(ice.Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kOnlyAudio);
    EXPECT_TEXT(ice.Section(0).striceufrag, "");
    EXPECT_TEXT(ice.Section(0).stricepwd, "");
    const Reading other("m=audio 5000 RTP/AVP 0\r\na=options:trickle a=inactive\r\n");
    EXPECT_TEXT(other.Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n" + kOnlyAudio);
}

TEST(Deliberate, P05_ShortMediaLineOpensNothing) {
    // The address and the direction of the video section hit the audio section before it.
    const Reading shortLine(
        "m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP\r\nc=IN IP4 192.0.2.9\r\na=sendonly\r\n");
    EXPECT_EQ(shortLine.Sections(), 1U);
    EXPECT_TEXT(shortLine.Record(),
                "audio codec=1 payload=0 dtmf=0 addr=192.0.2.9 port=5000 send=0 recv=1 valid=1\n" +
                    kOnlyAudio);
    const Reading whole(
        "m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\nc=IN IP4 192.0.2.9\r\na=sendonly\r\n");
    EXPECT_TEXT(whole.Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n"
                "main codec=2 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr=192.0.2.9 port=5002 "
                "send=0 recv=1 valid=1\n" +
                    kOnlyMain);
}

TEST(Deliberate, P06_UnknownMediaKeepsItsPlace) {
    const std::string answer = "v=0\r\n"
                               "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                               "s=-\r\n"
                               "c=IN IP4 192.0.2.1\r\n"
                               "t=0 0\r\n"
                               "m=audio 16384 RTP/AVP 0 101\r\n"
                               "a=rtpmap:0 PCMU/8000\r\n"
                               "a=rtpmap:101 telephone-event/8000\r\n"
                               "a=fmtp:101 0-15\r\n"
                               "a=sendrecv\r\n"
                               "a=rtcp:16385 IN IP4 192.0.2.1\r\n";
    // Text takes one of the two places that are answered, so the video section behind it is the surplus one.
    Reading withText("m=text 6000 RTP/AVP 98\r\nm=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\n");
    EXPECT_EQ(withText.Section(0).eMedia, MEDIA_UNKNOWN);
    EXPECT_EQ(withText.Section(0).iPort, 6000);
    EXPECT_TEXT(withText.Handler().GetLocalSDP(), answer + "m=video 0 RTP/AVP 97\r\n");
    Reading withoutText("m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\n");
    EXPECT_TEXT(withoutText.Handler().GetLocalSDP(), answer);
}

TEST(Deliberate, P07_FirstPayloadEntryOfANumberWins) {
    const Reading twice("m=video 5002 RTP/AVP 97 97\r\n"
                        "a=rtpmap:97 VP8/90000\r\n"
                        "a=rtpmap:97 H264/90000\r\n"
                        "a=fmtp:97 max-fs=3600\r\n");
    EXPECT_TEXT(twice.Dump(0), "eContent: 0\n"
                               "iPort: 5002\n"
                               "strIPAddr: \n"
                               "\tRtpMap[0]: Payload-97 EncodingName-H264/90000\n"
                               "\t\tFmtp Parm-max-fs=3600\n"
                               "\tRtpMap[1]: Payload-97 EncodingName-\n" +
                                   kDumpEnd);
    const Reading once("m=video 5002 RTP/AVP 97 98\r\n"
                       "a=rtpmap:97 VP8/90000\r\n"
                       "a=rtpmap:98 H264/90000\r\n"
                       "a=fmtp:98 max-fs=3600\r\n");
    EXPECT_TEXT(once.Dump(0), "eContent: 0\n"
                              "iPort: 5002\n"
                              "strIPAddr: \n"
                              "\tRtpMap[0]: Payload-97 EncodingName-VP8/90000\n"
                              "\tRtpMap[1]: Payload-98 EncodingName-H264/90000\n"
                              "\t\tFmtp Parm-max-fs=3600\n" +
                                  kDumpEnd);
}

TEST(Deliberate, P08_LastFmtpLineReplacesAll) {
    const std::string prefix = "m=video 5002 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";
    const Reading twoLines(prefix + "a=fmtp:97 profile-level-id=42801f;packetization-mode=1\r\n"
                                    "a=fmtp:97 max-fs=3600\r\n");
    EXPECT_TEXT(twoLines.Record(),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=0 level= mbps=0 fs=3600 br=0 addr= "
                    "port=5002 send=1 recv=1 valid=1\n" +
                    kOnlyMain);
    const Reading oneLine(prefix + "a=fmtp:97 profile-level-id=42801f;packetization-mode=1;max-fs=3600\r\n");
    EXPECT_TEXT(oneLine.Record(),
                kNoAudio +
                    "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=3600 br=0 addr= "
                    "port=5002 send=1 recv=1 valid=1\n" +
                    kOnlyMain);
}

TEST(Deliberate, P09_FmtpPiecesStayUntrimmed) {
    const Reading blanks("m=video 5002 RTP/AVP 97\r\na=fmtp:97 max-mbps=108000; max-fs=3600 ;\tx\r\n");
    EXPECT_TEXT(blanks.Dump(0), "eContent: 0\n"
                                "iPort: 5002\n"
                                "strIPAddr: \n"
                                "\tRtpMap[0]: Payload-97 EncodingName-\n"
                                "\t\tFmtp Parm-max-mbps=108000\n"
                                "\t\tFmtp Parm- max-fs=3600 \n"
                                "\t\tFmtp Parm-\tx\n" +
                                    kDumpEnd);
    const Reading plain("m=video 5002 RTP/AVP 97\r\na=fmtp:97 max-mbps=108000;max-fs=3600;x\r\n");
    EXPECT_TEXT(plain.Dump(0), "eContent: 0\n"
                               "iPort: 5002\n"
                               "strIPAddr: \n"
                               "\tRtpMap[0]: Payload-97 EncodingName-\n"
                               "\t\tFmtp Parm-max-mbps=108000\n"
                               "\t\tFmtp Parm-max-fs=3600\n"
                               "\t\tFmtp Parm-x\n" +
                                   kDumpEnd);
}

// The answer of a handler that wants SRTP and has the near keys under the 32-bit suite.
std::string SecureAnswer(const std::string& remoteText) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.m_bSRTP = true;
    RemoteSDP remote;
    EXPECT_EQ(h.ParseTheSDP(remoteText, remote), 0);
    return h.GetLocalSDP();
}

TEST(Deliberate, P10_EightyBitSuitesAreSkipped) {
    const std::string line = " inline:" + kKeyText + "\r\n";
    const std::string prefix = "v=0\r\n"
                               "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                               "s=-\r\n"
                               "c=IN IP4 192.0.2.1\r\n"
                               "t=0 0\r\n";
    const std::string suffix = "a=rtpmap:0 PCMU/8000\r\n"
                               "a=rtpmap:101 telephone-event/8000\r\n"
                               "a=fmtp:101 0-15\r\n"
                               "a=sendrecv\r\n"
                               "a=rtcp:16385 IN IP4 192.0.2.1\r\n";
    for (const char* suite : {"AES_CM_128_HMAC_SHA1_80", "AES_CM_256_HMAC_SHA1_80"}) {
        const std::string remoteText = std::string("m=audio 5000 RTP/SAVP 0\r\na=crypto:1 ") + suite + line;
        const Reading skipped(remoteText);
        EXPECT_TEXT(skipped.Record(),
                    "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kOnlyAudio);
        EXPECT_EQ(skipped.Section(0).iCryptoTag, 0);
        EXPECT_TEXT(SecureAnswer(remoteText), prefix + "m=audio 16384 RTP/AVP 0 101\r\n" + suffix);
    }
    const std::string remoteText = "m=audio 5000 RTP/SAVP 0\r\na=crypto:2 AES_CM_128_HMAC_SHA1_32" + line;
    EXPECT_TEXT(Reading(remoteText).Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kNoMain +
                    kNoPreso + kNoFloor + "bandwidth=0\n" +
                    "srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n" + kAudioKeyRows);
    EXPECT_TEXT(SecureAnswer(remoteText),
                prefix +
                    "m=audio 16384 RTP/SAVP 0 101\r\n"
                    "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n" +
                    suffix);
}

TEST(Deliberate, P11_UnknownSuiteStillStoresTagAndKey) {
    const Reading unknown("m=audio 5000 RTP/SAVP 0\r\na=crypto:7 AEAD_AES_128_GCM inline:" + kKeyText +
                          "\r\n");
    EXPECT_EQ(unknown.Section(0).cryptoAlgo, kSuiteNone);
    EXPECT_EQ(unknown.Section(0).iCryptoTag, 7);
    EXPECT_TEXT(unknown.Section(0).strBase64Key, kKeyText);
    // The rows are filled, and the suite beside them says that they mean nothing.
    EXPECT_TEXT(unknown.Record(), "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                                      kNoMain + kNoPreso + kNoFloor + "bandwidth=0\n" +
                                      "srtp audio suite=0 key=away audio key 1 salt=away audiosalt\n" +
                                      kAudioKeyRows);
    const Reading known("m=audio 5000 RTP/SAVP 0\r\na=crypto:7 AES_CM_128_HMAC_SHA1_32 inline:" + kKeyText +
                        "\r\n");
    EXPECT_EQ(known.Section(0).cryptoAlgo, kSuite32);
    EXPECT_EQ(known.Section(0).iCryptoTag, 7);
    EXPECT_TEXT(known.Section(0).strBase64Key, kKeyText);
}

TEST(Deliberate, P12_UndecodableKeyReplacesTheTextOnly) {
    const std::string prefix =
        "m=audio 5000 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kKeyText + "\r\n";
    const std::string badText = "!" + kKeyText.substr(1);
    const Reading bad(prefix + "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + badText + "\r\n");
    EXPECT_EQ(bad.Section(0).iCryptoTag, 2);
    EXPECT_TEXT(bad.Section(0).strBase64Key, badText);
    EXPECT_TEXT(bad.Record(), "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                                  kNoMain + kNoPreso + kNoFloor + "bandwidth=0\n" +
                                  "srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n" +
                                  kAudioKeyRows);
    // A key that decodes replaces all of it.
    const Reading good(
        prefix + "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n");
    EXPECT_TEXT(good.Section(0).strBase64Key, "YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0");
    EXPECT_TEXT(good.Record(), "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" +
                                   kNoMain + kNoPreso + kNoFloor + "bandwidth=0\n" +
                                   "srtp audio suite=1 key=away video key 1 salt=away videosalt\n" +
                                   kAudioKeyRows);
}

TEST(Deliberate, P13_IceValuesAreWholeLines) {
    const Reading ice("m=audio 5000 RTP/AVP 0\r\n"
                      "a=ice-ufrag:F7gI\r\n"
                      "a=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\n"
                      "a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\r\n");
    EXPECT_TEXT(ice.Section(0).striceufrag, "a=ice-ufrag:F7gI");
    EXPECT_TEXT(ice.Section(0).stricepwd, "a=ice-pwd:x9cml/YzichV2+XlhiMu8g");
    EXPECT_EQ(ice.Section(0).vecCandidate,
              (std::vector<std::string>{"a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host"}));
    // Every other value is the text after its keyword.
    const Reading floor("m=application 5070 UDP/BFCP *\r\na=floorctrl:c-s\r\n");
    EXPECT_TEXT(floor.Section(0).strFloorctrl, "c-s");
}

TEST(Deliberate, P14_DirectionsAreMirrored) {
    const std::string prefix = "m=audio 5000 RTP/AVP 0\r\n";
    EXPECT_TEXT(Reading(prefix + "a=sendonly\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=1 valid=1\n" + kOnlyAudio);
    EXPECT_TEXT(Reading(prefix + "a=recvonly\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=0 valid=1\n" + kOnlyAudio);
    // The two that mean the same from both sides.
    EXPECT_TEXT(Reading(prefix + "a=sendrecv\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n" + kOnlyAudio);
    EXPECT_TEXT(Reading(prefix + "a=inactive\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=0 recv=0 valid=1\n" + kOnlyAudio);
}

std::string OnlyBandwidth(const std::string& bandwidth) {
    return kNoAudio + kNoMain + kNoPreso + kNoFloor + "bandwidth=" + bandwidth + "\n" + kNoKeys;
}

TEST(Deliberate, P15_SessionTiasIsReadAsKilobits) {
    // 64000 bit/s become 64000 kbit/s, a thousand times as much.
    EXPECT_TEXT(Reading("b=TIAS:64000\r\n").Record(), OnlyBandwidth("64000000"));
    EXPECT_TEXT(Reading("b=AS:64\r\n").Record(), OnlyBandwidth("64000"));
}

TEST(Deliberate, P16_MediaAsIsIgnored) {
    const std::string audio = "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n";
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\nb=AS:64\r\n").Record(), audio + kOnlyAudio);
    EXPECT_TEXT(Reading("m=audio 5000 RTP/AVP 0\r\nb=TIAS:64000\r\n").Record(),
                audio + kNoMain + kNoPreso + kNoFloor + "bandwidth=64000\n" + kNoKeys);
}

TEST(Deliberate, P17_FloorControlValuesLandInAnyLastSection) {
    const std::string audio = "audio codec=1 payload=0 dtmf=0 addr= port=5000 send=1 recv=1 valid=1\n";
    const std::string values = "a=floorctrl:s-only\r\na=confid:15\r\na=userid:16\r\n";
    // After the audio line they are stored in the audio section, and the floor control section has none.
    const Reading misplaced("m=application 5070 UDP/BFCP *\r\nm=audio 5000 RTP/AVP 0\r\n" + values);
    EXPECT_TEXT(misplaced.Section(1).strFloorctrl, "s-only");
    EXPECT_EQ(misplaced.Section(1).iBfcpConfid, 15);
    EXPECT_EQ(misplaced.Section(1).iBfcpUserid, 16);
    EXPECT_TEXT(misplaced.Record(), audio + kNoMain + kNoPreso + "bfcp port=5070 conf=0 user=0 server=0\n" +
                                        "bandwidth=0\n" + kNoKeys);
    const Reading placed("m=audio 5000 RTP/AVP 0\r\nm=application 5070 UDP/BFCP *\r\n" + values);
    EXPECT_TEXT(placed.Record(), audio + kNoMain + kNoPreso + "bfcp port=5070 conf=15 user=16 server=1\n" +
                                     "bandwidth=0\n" + kNoKeys);
}

TEST(Deliberate, P18_SessionAddressOutlivesTheNextParse) {
    Reading texts("c=IN IP4 192.0.2.2\r\nb=AS:64\r\nm=audio 5000 RTP/AVP 0\r\n");
    // The second text has no address at all and gets the first one's; the bandwidth is forgotten.
    texts.Read("m=audio 5004 RTP/AVP 0\r\n");
    EXPECT_TEXT(texts.Record(),
                "audio codec=1 payload=0 dtmf=0 addr=192.0.2.2 port=5004 send=1 recv=1 valid=1\n" +
                    kOnlyAudio);
    EXPECT_TEXT(Reading("m=audio 5004 RTP/AVP 0\r\n").Record(),
                "audio codec=1 payload=0 dtmf=0 addr= port=5004 send=1 recv=1 valid=1\n" + kOnlyAudio);
    texts.Read("c=IN IP4 192.0.2.3\r\nm=audio 5004 RTP/AVP 0\r\n");
    EXPECT_TEXT(texts.Record(),
                "audio codec=1 payload=0 dtmf=0 addr=192.0.2.3 port=5004 send=1 recv=1 valid=1\n" +
                    kOnlyAudio);
}

TEST(Deliberate, P19_TagThatIsNoNumberReadsOne) {
    const std::string prefix = "m=audio 5000 RTP/SAVP 0\r\na=crypto:";
    const std::string suffix = " AES_CM_128_HMAC_SHA1_32 inline:" + kKeyText + "\r\n";
    for (const char* tag : {"x", "", "-4", "4x"}) {
        const Reading odd(prefix + tag + suffix);
        EXPECT_EQ(odd.Section(0).iCryptoTag, 1) << tag;
        EXPECT_EQ(odd.Section(0).cryptoAlgo, kSuite32) << tag;
        EXPECT_TEXT(odd.Section(0).strBase64Key, kKeyText);
    }
    // The answer echoes the tag that was read, which is not the one that was sent.
    EXPECT_TEXT(SecureAnswer(prefix + "4x" + suffix),
                "v=0\r\n"
                "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                "s=-\r\n"
                "c=IN IP4 192.0.2.1\r\n"
                "t=0 0\r\n"
                "m=audio 16384 RTP/SAVP 0 101\r\n"
                "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\r\n"
                "a=rtpmap:0 PCMU/8000\r\n"
                "a=rtpmap:101 telephone-event/8000\r\n"
                "a=fmtp:101 0-15\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    const Reading plain(prefix + "4" + suffix);
    EXPECT_EQ(plain.Section(0).iCryptoTag, 4);
}

TEST(Deliberate, P20_FmtpPayloadIsCutAtAFixedPlace) {
    // A character before the keyword shifts the payload: ":97" gets the parameters, "97" none.
    const Reading shifted("m=video 5002 RTP/AVP 97 :97\r\nxa=fmtp:97 max-fs=3600\r\n");
    EXPECT_TEXT(shifted.Dump(0), "eContent: 0\n"
                                 "iPort: 5002\n"
                                 "strIPAddr: \n"
                                 "\tRtpMap[0]: Payload-97 EncodingName-\n"
                                 "\tRtpMap[1]: Payload-:97 EncodingName-\n"
                                 "\t\tFmtp Parm-max-fs=3600\n" +
                                     kDumpEnd);
    const Reading plain("m=video 5002 RTP/AVP 97 :97\r\na=fmtp:97 max-fs=3600\r\n");
    EXPECT_TEXT(plain.Dump(0), "eContent: 0\n"
                               "iPort: 5002\n"
                               "strIPAddr: \n"
                               "\tRtpMap[0]: Payload-97 EncodingName-\n"
                               "\t\tFmtp Parm-max-fs=3600\n"
                               "\tRtpMap[1]: Payload-:97 EncodingName-\n" +
                                   kDumpEnd);
}

TEST(Deliberate, P21_KeyMethodIsSkippedUnseen) {
    SDPHandler h;
    h.ProcessMedia("m=audio 5000 RTP/SAVP 0");
    const MediaSession& section = *h.vecRemoteMediaSession[0];
    h.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 other:/YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0");
    EXPECT_TEXT(section.strBase64Key, "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0");
    EXPECT_TEXT(std::string(section.bufSRTPKey, section.bufSRTPKey + 16), "away audio key 1");
    EXPECT_TEXT(std::string(section.bufSRTPSalt, section.bufSRTPSalt + 14), "away audiosalt");
    h.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0");
    EXPECT_TEXT(section.strBase64Key, "YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0");
    EXPECT_TEXT(std::string(section.bufSRTPKey, section.bufSRTPKey + 16), "away video key 1");
    EXPECT_TEXT(std::string(section.bufSRTPSalt, section.bufSRTPSalt + 14), "away videosalt");
}

TEST(Deliberate, P22_RtpmapPayloadIsCutBehindNineCharacters) {
    SDPHandler h;
    RemoteSDP remote;
    h.ParseTheSDP("m=video 5002 RTP/AVP 96 97\r\na=rtpmapX97 H264/90000\r\na=rtpmap:96 VP8/90000\r\n",
                  remote);
    EXPECT_TEXT(h.vecRemoteMediaSession[0]->vecRtpMap[0]->strEncodingName, "VP8/90000");
    EXPECT_TEXT(h.vecRemoteMediaSession[0]->vecRtpMap[1]->strEncodingName, "H264/90000");
    EXPECT_EQ(remote.m_VideoMain.iVideoPayload, 97);
}

} // namespace
