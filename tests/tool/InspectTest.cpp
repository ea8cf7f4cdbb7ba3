// The table, whole.
#include "Expect.h"
#include "RunTool.h"

namespace tool {

namespace {

class Inspect : public ToolTest {};

constexpr const char* kConference =
    "v=0\r\n"
    "o=- 1 1 IN IP4 198.51.100.7\r\n"
    "s=-\r\n"
    "c=IN IP4 198.51.100.7\r\n"
    "b=AS:768\r\n"
    "t=0 0\r\n"
    "m=audio 5004 RTP/AVP 0 101\r\n"
    "a=rtpmap:0 PCMU/8000\r\n"
    "a=rtpmap:101 telephone-event/8000\r\n"
    "m=video 5006 RTP/AVP 96 97\r\n"
    "c=IN IP4 198.51.100.8\r\n"
    "a=rtpmap:96 VP8/90000\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=42801f;max-mbps=108000;max-fs=3600;max-br=2000;"
    "packetization-mode=1\r\n"
    "a=sendonly\r\n"
    "m=video 5008 RTP/AVP 96\r\n"
    "a=rtpmap:96 H264/90000\r\n"
    "a=content:slides\r\n"
    "a=recvonly\r\n"
    "m=application 5010 UDP/BFCP *\r\n"
    "a=floorctrl:s-only\r\n"
    "a=confid:7\r\n"
    "a=userid:9\r\n";

TEST_F(Inspect, AConference) {
    const Result run = CmsdpReads(kConference, {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      768000 bit/s\n"
                         "\n"
                         "audio\n"
                         "  state          negotiated\n"
                         "  codec          G.711 mu-law\n"
                         "  payload type   0\n"
                         "  DTMF payload   101\n"
                         "  address        198.51.100.7:5004\n"
                         "  direction      sends and receives\n"
                         "  suite          none\n"
                         "\n"
                         "main video\n"
                         "  state          negotiated\n"
                         "  codec          H.264, packetization mode 1\n"
                         "  payload type   97\n"
                         "  address        198.51.100.8:5006\n"
                         "  direction      receives only\n"
                         "  level          3.1\n"
                         "  limits         108000 macroblocks/s, 3600 macroblocks per frame, 2000 x1000\n"
                         "                 bit/s\n"
                         "  suite          none\n"
                         "\n"
                         "presentation\n"
                         "  state          negotiated\n"
                         "  codec          H.264, packetization mode 0\n"
                         "  payload type   96\n"
                         "  address        198.51.100.7:5008\n"
                         "  direction      sends only\n"
                         "  level          not given\n"
                         "  limits         not given\n"
                         "  suite          none\n"
                         "\n"
                         "floor control\n"
                         "  state          negotiated\n"
                         "  port           5010\n"
                         "  conference id  7\n"
                         "  user id        9\n"
                         "  far end        server only\n"
                         "\n"
                         "our answer\n"
                         "  note           J24, B24, line 14 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '126' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "                 J24, line 24 of our answer: An accepted section lists formats\n"
                         "                 that were offered in it. Format '126' was not offered in this\n"
                         "                 section; strict far ends do not start the stream\n"
                         "                 J35, B17, line 37 of our answer: A floor control server names\n"
                         "                 conference and user; a client repeats them. This client\n"
                         "                 changes a=confid; the floor control server does not know this\n"
                         "                 side\n"
                         "\n"
                         "with --fit\n"
                         "  does           section 1 is answered in its place\n"
                         "                 section 2 is answered in its place\n"
                         "                 section 3 is answered in its place\n"
                         "                 section 4 is answered in its place\n");
    EXPECT_TEXT(run.err, "");
}

// The call that comes up without video, and what support wants to read about it.
TEST_F(Inspect, ACallWithoutVideo) {
    const Result run = CmsdpReads("v=0\r\n"
                                  "c=IN IP6 2001:db8::7\r\n"
                                  "m=audio 5004 UDP/TLS/RTP/SAVPF 9\r\n"
                                  "m=video 5006 UDP/TLS/RTP/SAVPF 96 98\r\n"
                                  "a=rtpmap:96 VP8/90000\r\n"
                                  "a=rtpmap:98 VP9/90000\r\n",
                                  {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      not limited\n"
                         "\n"
                         "audio\n"
                         "  state          negotiated\n"
                         "  codec          G.722\n"
                         "  payload type   9\n"
                         "  DTMF payload   none\n"
                         "  address        [2001:db8::7]:5004\n"
                         "  direction      sends and receives\n"
                         "  suite          none\n"
                         "  note           line 3, P10: not encrypted: the far end wants DTLS\n"
                         "                 (UDP/TLS/RTP/SAVPF), which is not understood; our answer says\n"
                         "                 RTP/AVP, which a far end that insists on it refuses\n"
                         "\n"
                         "main video\n"
                         "  state          not negotiated\n"
                         "  why            no codec in common: the far end lists VP8/90000 (96),\n"
                         "                 VP9/90000 (98); this side takes H264/90000\n"
                         "\n"
                         "presentation\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "floor control\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "our answer\n"
                         "  note           J22, line 7 of our answer: A section is answered with the\n"
                         "                 transport it was offered with. The transport is 'RTP/AVP',\n"
                         "                 offered is 'UDP/TLS/RTP/SAVPF'; strict far ends refuse the\n"
                         "                 whole answer; a secure stream would be sent in the clear\n"
                         "                 J22, line 14 of our answer: A section is answered with the\n"
                         "                 transport it was offered with. The transport is 'RTP/AVP',\n"
                         "                 offered is 'UDP/TLS/RTP/SAVPF'; strict far ends refuse the\n"
                         "                 whole answer; a secure stream would be sent in the clear\n"
                         "\n"
                         "with --fit\n"
                         "  does           the text is refused: this side serves no section of this\n"
                         "                 medium and transport\n");
    EXPECT_TEXT(run.err, "");
}

TEST_F(Inspect, NothingNegotiatedIsStatusOne) {
    const Result run = CmsdpReads("v=0\r\nm=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n", {"inspect"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      not limited\n"
                         "\n"
                         "audio\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no audio section\n"
                         "\n"
                         "main video\n"
                         "  state          not negotiated\n"
                         "  why            no codec in common: the far end lists VP8/90000 (96); this\n"
                         "                 side takes H264/90000\n"
                         "\n"
                         "presentation\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "floor control\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "our answer\n"
                         "  note           J20, B03, our answer: An answer has as many m= lines as its\n"
                         "                 offer. The answer has 2, the offer 1; strict far ends refuse\n"
                         "                 the whole answer\n"
                         "                 J21, B03, line 7 of our answer: The media of an answer stand\n"
                         "                 in the order of the offer. The medium is 'audio', offered is\n"
                         "                 'video'; the far end starts the wrong medium, or refuses the\n"
                         "                 whole answer\n"
                         "\n"
                         "with --fit\n"
                         "  does           the text is refused: no format of the section is spoken here\n");
    EXPECT_TEXT(
        run.err,
        "cmsdp: nothing was negotiated: audio: the far end has no audio section; main video: no codec in "
        "common: the far end lists VP8/90000 (96); this side takes H264/90000; presentation: the far end "
        "has no video section marked a=content:slides\n");
}

constexpr const char* kSecure = "v=0\r\n"
                                "c=IN IP4 198.51.100.7\r\n"
                                "m=audio 5004 RTP/SAVP 0\r\n"
                                "a=crypto:4 AES_CM_128_HMAC_SHA1_32 "
                                "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz|2^20|1:4\r\n";

constexpr const char* kSecureOnly =
    R"({"srtp": true, "video": {"main": {"codecs": []}}, "floor_control": {"enabled": false}})";

TEST_F(Inspect, KeysAreHidden) {
    Write("secure.json", kSecureOnly);
    const Result run = CmsdpReads(kSecure, {"inspect", "--local", "secure.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      not limited\n"
                         "\n"
                         "audio\n"
                         "  state          negotiated\n"
                         "  codec          G.711 mu-law\n"
                         "  payload type   0\n"
                         "  DTMF payload   none\n"
                         "  address        198.51.100.7:5004\n"
                         "  direction      sends and receives\n"
                         "  suite          AES_CM_128_HMAC_SHA1_32\n"
                         "  key            ***\n"
                         "\n"
                         "main video\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section\n"
                         "\n"
                         "presentation\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "floor control\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "our answer\n"
                         "  note           J24, B07, line 7 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '101' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "\n"
                         "with --fit\n"
                         "  does           section 1 is answered in its place\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Inspect, KeysAreShownWhenAsked) {
    Write("secure.json", kSecureOnly);
    const Result run = CmsdpReads(kSecure, {"inspect", "--show-secrets", "--local", "secure.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      not limited\n"
                         "\n"
                         "audio\n"
                         "  state          negotiated\n"
                         "  codec          G.711 mu-law\n"
                         "  payload type   0\n"
                         "  DTMF payload   none\n"
                         "  address        198.51.100.7:5004\n"
                         "  direction      sends and receives\n"
                         "  suite          AES_CM_128_HMAC_SHA1_32\n"
                         "  key            WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\n"
                         "\n"
                         "main video\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section\n"
                         "\n"
                         "presentation\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "floor control\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "our answer\n"
                         "  note           J24, B07, line 7 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '101' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "\n"
                         "with --fit\n"
                         "  does           section 1 is answered in its place\n");
    EXPECT_TEXT(run.err, "");
}

// Escape sequences, a bidirectional mark, a key in the place of a name, and a line that a lost line end
// joined.
TEST_F(Inspect, TheFarEndCannotPaintTheTableNorLeakAKeyIntoIt) {
    const Result run = CmsdpReads("v=0\r\n"
                                  "c=IN IP4 \x1b[31m\xe2\x80\xae\\7.0.0.1\r\n"
                                  "m=audio 5004 RTP/AVP 0\r\n"
                                  "m=video 5006 RTP/AVP 96 97 98\r\n"
                                  "a=rtpmap:96 \x9bVP8\x07\r\n"
                                  "a=rtpmap:97 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
                                  "a=tool:x\na=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                                  "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz c=x\r\n",
                                  {"inspect", "--exact"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, "session\n"
                         "  bandwidth      not limited\n"
                         "  note           line 7, P01: read as a \"c=\" line, because it holds \"c=\"; its\n"
                         "                 third word is now the address of the video section:\n"
                         "                 \"a=tool:x...\"\n"
                         "                 line 7, P03: joined to the line after it by a LF alone; both\n"
                         "                 are read as one, and what the keyword in front does not read\n"
                         "                 is lost\n"
                         "\n"
                         "audio\n"
                         "  state          negotiated\n"
                         "  codec          G.711 mu-law\n"
                         "  payload type   0\n"
                         "  DTMF payload   none\n"
                         "  address        \\x1b[31m\\xe2\\x80\\xae\\\\7.0.0.1:5004\n"
                         "  direction      sends and receives\n"
                         "  suite          none\n"
                         "\n"
                         "main video\n"
                         "  state          not negotiated\n"
                         "  why            no codec in common: the far end lists \\x9bVP8\\x07 (96),\n"
                         "                 inline:*** (97), payload type 98 without a name; this side\n"
                         "                 takes H264/90000\n"
                         "\n"
                         "presentation\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no video section marked a=content:slides\n"
                         "\n"
                         "floor control\n"
                         "  state          not negotiated\n"
                         "  why            the far end has no BFCP section\n"
                         "\n"
                         "our answer\n"
                         "  note           J24, B07, line 7 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '101' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "                 J24, B24, line 14 of our answer: An accepted section lists\n"
                         "                 formats that were offered in it. Format '126' was not offered\n"
                         "                 in this section; strict far ends do not start the stream\n"
                         "                 J26, line 14 of our answer: A payload type means what it means\n"
                         "                 in the offer. Format '97' is 'h264/90000', offered is a word\n"
                         "                 of 47 bytes; strict far ends do not start the stream\n"
                         "\n"
                         "with --fit\n"
                         "  does           R01 (P02 P03): LF or CR alone ends a line as CR LF does, and\n"
                         "                 the last line needs no end\n"
                         "                 R02 (P01): a line or parameter with another line's keyword in\n"
                         "                 it is kept to what it begins with\n"
                         "                 section 1 is answered in its place and not started: the far\n"
                         "                 end gives no address\n"
                         "                 section 2 is rejected in its place: no format of the section\n"
                         "                 is spoken here\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

// A transport with a key behind it, and a crypto attribute of another method: the padding of its key holds
// "c=", so it is read as an address. The host name is longer than a key, but no part of it is.
constexpr const char* kMisreadKeys =
    "v=0\r\n"
    "m=audio 5004 RTP/SAVP:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz 0\r\n"
    "a=crypto:1 AEAD_AES_128_GCM keyed:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubc==\r\n"
    "m=video 5006 RTP/AVP 97\r\n"
    "c=IN IP4 conference-bridge.media.europe-west.example-communications.example\r\n"
    "a=rtpmap:97 H264/90000\r\n";

TEST_F(Inspect, AKeyInThePlaceOfAnAddressOrATransportIsHidden) {
    const Result run = CmsdpReads(kMisreadKeys, {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out,
                "session\n"
                "  bandwidth      not limited\n"
                "  note           line 3, P01: read as a \"c=\" line, because it holds \"c=\"; its\n"
                "                 third word is now the address of the audio section; it may\n"
                "                 hold key text, so it is not shown\n"
                "\n"
                "audio\n"
                "  state          negotiated\n"
                "  codec          G.711 mu-law\n"
                "  payload type   0\n"
                "  DTMF payload   none\n"
                "  address        [keyed:***]:5004\n"
                "  direction      sends and receives\n"
                "  suite          none\n"
                "  note           line 2, P10: not encrypted: the far end wants RTP/SAVP:*** and\n"
                "                 gives no key; our answer says RTP/AVP, which a far end that\n"
                "                 insists on it refuses\n"
                "\n"
                "main video\n"
                "  state          negotiated\n"
                "  codec          H.264, packetization mode 0\n"
                "  payload type   97\n"
                "  address        conference-bridge.media.europe-west.example-communications.example:5006\n"
                "  direction      sends and receives\n"
                "  level          not given\n"
                "  limits         not given\n"
                "  suite          none\n"
                "\n"
                "presentation\n"
                "  state          not negotiated\n"
                "  why            the far end has no video section marked a=content:slides\n"
                "\n"
                "floor control\n"
                "  state          not negotiated\n"
                "  why            the far end has no BFCP section\n"
                "\n"
                "our answer\n"
                "  note           J22, line 7 of our answer: A section is answered with the\n"
                "                 transport it was offered with. The transport is 'RTP/AVP',\n"
                "                 offered is a word of 49 bytes; strict far ends refuse the\n"
                "                 whole answer; a secure stream would be sent in the clear\n"
                "                 J24, B24, line 14 of our answer: An accepted section lists\n"
                "                 formats that were offered in it. Format '126' was not offered\n"
                "                 in this section; strict far ends do not start the stream\n"
                "                 J28, line 14 of our answer: Profile and packetization mode of\n"
                "                 an H.264 format are those offered. Format '97' has\n"
                "                 packetization mode '1', offered is '0'; strict far ends do not\n"
                "                 start the stream\n"
                "\n"
                "with --fit\n"
                "  does           R02 (P01): a line or parameter with another line's keyword in\n"
                "                 it is kept to what it begins with\n"
                "                 section 1 is rejected in its place: this side serves no\n"
                "                 section of this medium and transport\n"
                "                 section 2 is answered in its place\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Inspect, AKeyInThePlaceOfAnAddressIsShownWhenAsked) {
    const Result run = CmsdpReads(kMisreadKeys, {"inspect", "--show-secrets"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("  address        [keyed:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubc==]:5004\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "");
}

TEST_F(Inspect, AVeryLongAddressIsCut) {
    const std::string hundred = "77777777777777777777.77777777777777777777.77777777777777777777."
                                "77777777777777777777.7777777777777777";
    const Result run =
        CmsdpReads("c=IN IP4 " + hundred + "7777.77\r\nm=audio 5004 RTP/AVP 0\r\n", {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("  address        77777777777777777777.77777777777777777777.77777777777777777777."
                           "77777777777777777777.7777777777777777...:5004\n"),
              std::string::npos);
}

// A cut behind a hundred bytes would show the first ten characters of the key.
TEST_F(Inspect, TheCutOfALongAddressLeavesNoPartOfAKey) {
    const std::string front = "77777777777777777777.77777777777777777777.77777777777777777777."
                              "77777777777777777777.77777.";
    const Result run = CmsdpReads("c=IN IP4 " + front +
                                      "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz.7\r\n"
                                      "m=audio 5004 RTP/AVP 0\r\n",
                                  {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("  address        77777777777777777777.77777777777777777777.77777777777777777777."
                           "77777777777777777777.77777.***...:5004\n"),
              std::string::npos)
        << run.out;
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Inspect, AnAddressThatIsMissing) {
    const Result run = CmsdpReads("m=audio 5004 RTP/AVP 0\r\n", {"inspect"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("  address        (no address):5004\n"), std::string::npos);
}

} // namespace

} // namespace tool
