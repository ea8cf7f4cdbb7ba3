// The whole JSON: names, order, units, and the values that mean nothing.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

class InspectJson : public ToolTest {};

constexpr const char* kCall = "v=0\r\n"
                              "c=IN IP4 198.51.100.7\r\n"
                              "m=audio 5004 RTP/SAVP 0 101\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "b=TIAS:64000\r\n"
                              "a=crypto:4 AES_CM_128_HMAC_SHA1_32 "
                              "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
                              "m=video 5006 RTP/AVP 97\r\n"
                              "b=TIAS:704000\r\n"
                              "a=rtpmap:97 H264/90000\r\n"
                              "a=fmtp:97 profile-level-id=42801f;max-mbps=108000;max-fs=3600;max-br=2000;"
                              "packetization-mode=1\r\n"
                              "a=inactive\r\n"
                              "m=application 5010 UDP/BFCP *\r\n"
                              "a=floorctrl:s-only\r\n"
                              "a=confid:7\r\n"
                              "a=userid:9\r\n";

TEST_F(InspectJson, ACall) {
    const Result run = CmsdpReads(kCall, {"inspect", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, R"({
  "schema": "cmsdp.inspect/1",
  "negotiated": true,
  "max_bandwidth_bit_per_s": 768000,
  "notes": [],
  "audio": {
    "negotiated": true,
    "why": null,
    "notes": [
      "line 3, srtp: the far end gives a key, but SRTP is off on this side; our answer says RTP/AVP, which a far end that insists on it refuses"
    ],
    "section_found": true,
    "codec": "G711U",
    "payload_type": 0,
    "dtmf_payload_type": 101,
    "address": "198.51.100.7",
    "port": 5004,
    "sends": true,
    "receives": true,
    "suite": "AES_CM_128_HMAC_SHA1_32",
    "key": "***"
  },
  "main_video": {
    "negotiated": true,
    "why": null,
    "notes": [],
    "section_found": true,
    "codec": "H264",
    "packetization_mode": 1,
    "payload_type": 97,
    "address": "198.51.100.7",
    "port": 5006,
    "sends": false,
    "receives": false,
    "level": "3.1",
    "max_macroblocks_per_s": 108000,
    "max_frame_macroblocks": 3600,
    "max_bit_rate_x1000_bit_per_s": 2000,
    "suite": null,
    "key": null
  },
  "presentation": {
    "negotiated": false,
    "why": "the far end has no video section marked a=content:slides",
    "notes": [],
    "section_found": false,
    "codec": null,
    "packetization_mode": 0,
    "payload_type": 0,
    "address": "",
    "port": 0,
    "sends": false,
    "receives": false,
    "level": "",
    "max_macroblocks_per_s": 0,
    "max_frame_macroblocks": 0,
    "max_bit_rate_x1000_bit_per_s": 0,
    "suite": null,
    "key": null
  },
  "floor_control": {
    "negotiated": false,
    "why": "line 12, B03: section 3 of the offer is section 4 of our answer, which has the presentation section in its place; the far end matches sections by their place",
    "notes": [],
    "port": 5010,
    "conference_id": 7,
    "user_id": 9,
    "far_end_is_server": true
  },
  "our_answer": {
    "notes": [
      "J20, B03, our answer: An answer has as many m= lines as its offer. The answer has 4, the offer 3; strict far ends refuse the whole answer",
      "J22, line 7 of our answer: A section is answered with the transport it was offered with. The transport is 'RTP/AVP', offered is 'RTP/SAVP'; strict far ends refuse the whole answer; a secure stream would be sent in the clear",
      "J24, B24, line 14 of our answer: An accepted section lists formats that were offered in it. Format '126' was not offered in this section; strict far ends do not start the stream",
      "J21, B03, line 24 of our answer: The media of an answer stand in the order of the offer. The medium is 'video', offered is 'application'; the far end starts the wrong medium, or refuses the whole answer"
    ]
  },
  "fit": {
    "why": null,
    "repairs": [],
    "sections": [
      {
        "section": 0,
        "kept": false,
        "why": "the section is secure, and SRTP is off here"
      },
      {
        "section": 1,
        "kept": true,
        "why": null
      },
      {
        "section": 2,
        "kept": false,
        "why": "floor control without slides is not taken"
      }
    ]
  }
}
)");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(InspectJson, KeysAreShownWhenAsked) {
    const Result run = CmsdpReads(kCall, {"inspect", "--json", "--show-secrets"});
    EXPECT_EQ(nlohmann::json::parse(run.out)["audio"]["key"], "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz");
    EXPECT_TEXT(run.err, "");
}

// A transport with a key behind it, and a crypto attribute of another method: the padding of its key holds
// "c=", so it is read as an address. The host name is longer than a key, but no part of it is.
TEST_F(InspectJson, AKeyInThePlaceOfAnAddressOrATransportIsHidden) {
    const Result run =
        CmsdpReads("v=0\r\n"
                   "m=audio 5004 RTP/SAVP:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz 0\r\n"
                   "a=crypto:1 AEAD_AES_128_GCM keyed:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubc==\r\n"
                   "m=video 5006 RTP/AVP 97\r\n"
                   "c=IN IP4 conference-bridge.media.europe-west.example-communications.example\r\n"
                   "a=rtpmap:97 H264/90000\r\n",
                   {"inspect", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, R"({
  "schema": "cmsdp.inspect/1",
  "negotiated": true,
  "max_bandwidth_bit_per_s": 0,
  "notes": [
    "line 3, P01: read as a \"c=\" line, because it holds \"c=\"; its third word is now the address of the audio section; it may hold key text, so it is not shown"
  ],
  "audio": {
    "negotiated": true,
    "why": null,
    "notes": [
      "line 2, P10: not encrypted: the far end wants RTP/SAVP:*** and gives no key; our answer says RTP/AVP, which a far end that insists on it refuses"
    ],
    "section_found": true,
    "codec": "G711U",
    "payload_type": 0,
    "dtmf_payload_type": 0,
    "address": "keyed:***",
    "port": 5004,
    "sends": true,
    "receives": true,
    "suite": null,
    "key": null
  },
  "main_video": {
    "negotiated": true,
    "why": null,
    "notes": [],
    "section_found": true,
    "codec": "H264",
    "packetization_mode": 0,
    "payload_type": 97,
    "address": "conference-bridge.media.europe-west.example-communications.example",
    "port": 5006,
    "sends": true,
    "receives": true,
    "level": "",
    "max_macroblocks_per_s": 0,
    "max_frame_macroblocks": 0,
    "max_bit_rate_x1000_bit_per_s": 0,
    "suite": null,
    "key": null
  },
  "presentation": {
    "negotiated": false,
    "why": "the far end has no video section marked a=content:slides",
    "notes": [],
    "section_found": false,
    "codec": null,
    "packetization_mode": 0,
    "payload_type": 0,
    "address": "",
    "port": 0,
    "sends": false,
    "receives": false,
    "level": "",
    "max_macroblocks_per_s": 0,
    "max_frame_macroblocks": 0,
    "max_bit_rate_x1000_bit_per_s": 0,
    "suite": null,
    "key": null
  },
  "floor_control": {
    "negotiated": false,
    "why": "the far end has no BFCP section",
    "notes": [],
    "port": 0,
    "conference_id": 0,
    "user_id": 0,
    "far_end_is_server": false
  },
  "our_answer": {
    "notes": [
      "J22, line 7 of our answer: A section is answered with the transport it was offered with. The transport is 'RTP/AVP', offered is a word of 49 bytes; strict far ends refuse the whole answer; a secure stream would be sent in the clear",
      "J24, B24, line 14 of our answer: An accepted section lists formats that were offered in it. Format '126' was not offered in this section; strict far ends do not start the stream",
      "J28, line 14 of our answer: Profile and packetization mode of an H.264 format are those offered. Format '97' has packetization mode '1', offered is '0'; strict far ends do not start the stream"
    ]
  },
  "fit": {
    "why": null,
    "repairs": [
      {
        "id": "R02",
        "ledger": "P01",
        "sentence": "a line or parameter with another line's keyword in it is kept to what it begins with"
      }
    ],
    "sections": [
      {
        "section": 0,
        "kept": false,
        "why": "this side serves no section of this medium and transport"
      },
      {
        "section": 1,
        "kept": true,
        "why": null
      }
    ]
  }
}
)");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(InspectJson, NothingNegotiated) {
    const Result run =
        CmsdpReads("v=0\r\nm=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n", {"inspect", "--json"});
    EXPECT_EQ(run.status, 1);
    const nlohmann::json root = nlohmann::json::parse(run.out);
    EXPECT_EQ(root["negotiated"], false);
    EXPECT_EQ(root["audio"]["section_found"], false);
    EXPECT_EQ(root["audio"]["codec"], nullptr);
    EXPECT_EQ(root["main_video"]["section_found"], true);
    EXPECT_EQ(root["main_video"]["codec"], nullptr);
    EXPECT_EQ(root["main_video"]["why"],
              "no codec in common: the far end lists VP8/90000 (96); this side takes H264/90000");
}

TEST_F(InspectJson, IsAsciiWhateverTheFarEndWrites) {
    const Result run =
        CmsdpReads("c=IN IP4 \x1b\x7f\xc3\xbc\xff\"\r\nm=audio 5004 RTP/AVP 0\r\n", {"inspect", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find(R"("address": "\u001b\u007f\u00fc\ufffd\"",)"), std::string::npos);
}

// Every captured description of a real far end: JSON that parses, ASCII, and an exit status that agrees.
TEST_F(InspectJson, EveryCaptureIsReadable) {
    const std::vector<std::string> names = Captures();
    ASSERT_GE(names.size(), 30U);
    for (const std::string& name : names) {
        const Result run = CmsdpReads(Capture(name), {"inspect", "--json", "--exact"});
        const nlohmann::json root = nlohmann::json::parse(run.out, nullptr, false);
        ASSERT_TRUE(root.is_object()) << name;
        EXPECT_EQ(run.status, root["negotiated"] == true ? 0 : 1) << name;
        for (const char* stream : {"audio", "main_video", "presentation", "floor_control"}) {
            EXPECT_EQ(root[stream]["why"].is_null(), root[stream]["negotiated"] == true)
                << name << ' ' << stream;
        }
        for (const char c : run.out) {
            ASSERT_TRUE(c == '\n' || (c >= ' ' && c < '\x7f')) << name;
        }
    }
}

} // namespace

} // namespace tool
