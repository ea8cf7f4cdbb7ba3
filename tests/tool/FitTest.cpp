// answer --fit and offer --fit, run as a user runs them.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

class Fit : public ToolTest {};

constexpr const char* kVideoFirst = "v=0\r\n"
                                    "o=- 1 1 IN IP4 198.51.100.7\r\n"
                                    "s=-\r\n"
                                    "c=IN IP4 198.51.100.7\r\n"
                                    "t=0 0\r\n"
                                    "m=video 5006 RTP/AVP 96\r\n"
                                    "a=rtpmap:96 VP8/90000\r\n"
                                    "m=audio 5004 RTP/AVP 8 0\r\n"
                                    "a=rtpmap:8 PCMA/8000\r\n"
                                    "a=rtpmap:0 PCMU/8000\r\n"
                                    "a=ptime:20\r\n";

constexpr const char* kSecure = "v=0\r\n"
                                "o=- 1 1 IN IP4 198.51.100.7\r\n"
                                "s=-\r\n"
                                "c=IN IP4 198.51.100.7\r\n"
                                "t=0 0\r\n"
                                "m=audio 5004 RTP/SAVP 0\r\n"
                                "a=crypto:7 AES_CM_128_HMAC_SHA1_80 "
                                "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz|2^31\r\n";

TEST_F(Fit, EverySectionIsAnsweredInItsPlace) {
    const Result run = CmsdpReads(kVideoFirst, {"answer", "--fit"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 1 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=video 0 RTP/AVP 96\r\n"
                                 "m=audio 16384 RTP/AVP 0\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

// The negotiation layer repairs line ends itself, so the exact bytes of such a text are answered as well.
TEST_F(Fit, LinesThatEndInLfAloneAreRead) {
    constexpr const char* kOffer = "v=0\n"
                                   "o=- 1 1 IN IP4 198.51.100.7\n"
                                   "s=-\n"
                                   "c=IN IP4 198.51.100.7\n"
                                   "t=0 0\n"
                                   "m=audio 5004 RTP/AVP 0\n";
    constexpr const char* kAnswer = "v=0\r\n"
                                    "o=Quillmarshorizon ID 1 IN IP4 192.0.2.1\r\n"
                                    "s=-\r\n"
                                    "c=IN IP4 192.0.2.1\r\n"
                                    "b=AS:1064\r\n"
                                    "t=0 0\r\n"
                                    "m=audio 16384 RTP/AVP 0\r\n"
                                    "b=TIAS:64000\r\n"
                                    "a=rtpmap:0 PCMU/8000\r\n"
                                    "a=sendrecv\r\n"
                                    "a=rtcp:16385 IN IP4 192.0.2.1\r\n";
    const Result exact = CmsdpReads(kOffer, {"answer", "--fit", "--exact"});
    EXPECT_EQ(exact.status, 0);
    EXPECT_TEXT(exact.err, "");
    EXPECT_TEXT(MaskId(exact.out), kAnswer);
    const Result cleaned = CmsdpReads(kOffer, {"answer", "--fit"});
    EXPECT_TEXT(cleaned.err,
                "cmsdp: LF alone was read as CR LF at the end of 6 lines; a far end that sends LF alone has "
                "each such line joined to the next one, and without any CR LF it is not understood (P03); "
                "--exact keeps it\n");
    EXPECT_TEXT(MaskId(cleaned.out), kAnswer);
    const Result none = CmsdpReads("no description\n", {"answer", "--fit", "--exact"});
    EXPECT_EQ(none.status, 3);
    EXPECT_TEXT(none.err, "cmsdp: standard input: holds no SDP line such as \"v=0\" or "
                          "\"m=audio 5004 RTP/AVP 0\"\n");
}

TEST_F(Fit, ARefusedOfferWritesNothing) {
    const Result run = CmsdpReads(kSecure, {"answer", "--fit"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: refused with 488: the section is secure, and SRTP is off here\n");
}

TEST_F(Fit, SrtpRequiredTakesNoPlainSection) {
    Write("me.json", R"({"srtp": "required"})");
    const Result run = CmsdpReads(kVideoFirst, {"answer", "--fit", "--local", "me.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: refused with 488: the section is not secure, and SRTP is required here\n");
}

// Keys appear only when they are asked for; without that the text cannot be sent.
TEST_F(Fit, TheCommonSuiteIsAnsweredWithItself) {
    Write("me.json",
          R"({"srtp": true, "audio": {"suite": "AES_CM_128_HMAC_SHA1_80",
                                      "key": "T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5"}})");
    const Result hidden = CmsdpReads(kSecure, {"answer", "--fit", "--local", "me.json"});
    EXPECT_EQ(hidden.status, 0);
    EXPECT_TEXT(MaskId(hidden.out), "v=0\r\n"
                                    "o=Quillmarshorizon ID 1 IN IP4 192.0.2.1\r\n"
                                    "s=-\r\n"
                                    "c=IN IP4 192.0.2.1\r\n"
                                    "b=AS:1064\r\n"
                                    "t=0 0\r\n"
                                    "m=audio 16384 RTP/SAVP 0\r\n"
                                    "b=TIAS:64000\r\n"
                                    "a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:***\r\n"
                                    "a=rtpmap:0 PCMU/8000\r\n"
                                    "a=sendrecv\r\n"
                                    "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(hidden.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
    const Result shown = CmsdpReads(kSecure, {"answer", "--fit", "--show-secrets", "--local", "me.json"});
    EXPECT_NE(shown.out.find("a=crypto:7 AES_CM_128_HMAC_SHA1_80 "
                             "inline:T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5\r\n"),
              std::string::npos);
    EXPECT_TEXT(shown.err, "");
}

TEST_F(Fit, JsonNamesRepairsAndStreams) {
    Write("me.json", R"({"srtp": true})");
    const Result run = CmsdpReads(kSecure, {"answer", "--fit", "--json", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    auto root = nlohmann::ordered_json::parse(run.out);
    root.erase("answer");
    EXPECT_TEXT(root.dump(2), R"({
  "schema": "cmsdp.fitted-answer/1",
  "status": null,
  "why": null,
  "notes": [],
  "repairs": [
    {
      "id": "R11",
      "ledger": "P10 B21",
      "sentence": "AES_CM_128_HMAC_SHA1_80 is read, and answered as itself"
    }
  ],
  "streams": [
    {
      "section": 0,
      "stream": "audio",
      "state": "start",
      "why": null,
      "changes": [
        "started"
      ],
      "sends": true,
      "receives": true,
      "address": "198.51.100.7",
      "port": 5004,
      "rtcp_address": "198.51.100.7",
      "rtcp_port": 5005,
      "codec": "G711U",
      "send_payload_type": 0,
      "receive_payload_type": 0,
      "ptime_ms": null,
      "send_dtmf_payload_type": null,
      "receive_dtmf_payload_type": null,
      "suite": "AES_CM_128_HMAC_SHA1_80",
      "our_key": "***",
      "their_key": "***",
      "lifetime": "2^31",
      "mki": null,
      "ice": []
    }
  ]
})");
}

TEST_F(Fit, ARefusalInJsonHasNoAnswer) {
    const Result run = CmsdpReads(kSecure, {"answer", "--fit", "--json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, R"({
  "schema": "cmsdp.fitted-answer/1",
  "answer": null,
  "status": 488,
  "why": "the section is secure, and SRTP is off here",
  "notes": [],
  "repairs": [],
  "streams": []
}
)");
}

TEST_F(Fit, ARequiredStreamThatIsNotAgreedIsStatusOne) {
    const Result run = CmsdpReads(kVideoFirst, {"answer", "--fit", "--require", "audio,main_video"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.err, "cmsdp: required and not negotiated: main_video\n");
}

TEST_F(Fit, AnOfferListsBothSuites) {
    Write("me.json", R"({"srtp": true, "video": {"main": {"codecs": []}},
                         "floor_control": {"enabled": false}})");
    const Result run = Cmsdp({"offer", "--fit", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 1 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/SAVP 104 9 0 18 101\r\n"
                                 "b=TIAS:64000\r\n"
                                 "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:***\r\n"
                                 "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:***\r\n"
                                 "a=rtpmap:104 G7221/16000\r\n"
                                 "a=fmtp:104 bitrate=32000\r\n"
                                 "a=rtpmap:9 G722/8000\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:18 G729/8000\r\n"
                                 "a=fmtp:18 annexb=no\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

TEST_F(Fit, AnOfferNeedsAnAddress) {
    Write("me.json", R"({"default_address": ""})");
    const Result run = Cmsdp({"offer", "--fit", "--json", "--local", "me.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, R"({
  "schema": "cmsdp.fitted-offer/1",
  "offer": null,
  "why": "no local address is set"
}
)");
    EXPECT_TEXT(run.err, "cmsdp: there is no offer: no local address is set\n");
}

TEST_F(Fit, WhatNoStrictReaderTakesIsALocalError) {
    Write("me.json", R"({"audio": {"port": 70000}})");
    const Result run = Cmsdp({"offer", "--fit", "--local", "me.json"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: me.json: no strict reader takes what it says: a port is negative or beyond "
                         "65534; correct it\n");
}

TEST_F(Fit, SrtpIsOffWantedOrRequired) {
    Write("me.json", R"({"srtp": "always"})");
    const Result run = Cmsdp({"offer", "--fit", "--local", "me.json"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(run.err, "cmsdp: me.json: $.srtp: expected true, false or \"required\", found the text "
                         "\"always\"; \"required\" takes no plain stream\n");
}

} // namespace

} // namespace tool
