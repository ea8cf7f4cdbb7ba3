// Offers, whole.
#include "Expect.h"
#include "RunTool.h"

namespace tool {

namespace {

class Offer : public ToolTest {};

TEST_F(Offer, BuiltIn) {
    const Result run = Cmsdp({"offer"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out),
                "v=0\r\n"
                "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                "s=-\r\n"
                "c=IN IP4 192.0.2.1\r\n"
                "b=AS:1064\r\n"
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
                "b=TIAS:1000000\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=42001F;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=42001F;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                "a=label:8\r\n"
                "a=content:main\r\n"
                "m=video 16388 RTP/AVP 97 126\r\n"
                "b=TIAS:1000000\r\n"
                "a=rtpmap:97 H264/90000\r\n"
                "a=fmtp:97 profile-level-id=420028;packetization-mode=1;max-rcmd-nalu-size=32000;"
                "level-asymmetry-allowed=1\r\n"
                "a=rtpmap:126 H264/90000\r\n"
                "a=fmtp:126 profile-level-id=420028;packetization-mode=0;max-rcmd-nalu-size=0;"
                "level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                "a=label:9\r\n"
                "a=content:slides\r\n"
                "m=application 16390 UDP/BFCP *\r\n"
                "a=floorctrl:c-s\r\n"
                "a=floorid:2 mstrm:9\r\n"
                "a=confid:15\r\n"
                "a=userid:15\r\n");
    EXPECT_TEXT(run.err, "");
}

// The most unusual values that a record allows, so that support can reproduce any client.
TEST_F(Offer, AnOddClient) {
    Write("odd.json", R"({
        "default_address": "198.51.100.1", "origin_address": "198.51.100.2", "origin_extension": "odd",
        "max_bandwidth_bit_per_s": -1500,
        "audio": {"port": -7, "codecs": ["G722", "G729"], "priority": ["G729", "G729", "VP8", "G711U", 12345]},
        "video": {"payload_type_mode_0": -1, "muted": true,
                  "main": {"port": 2147483647, "codecs": ["H264_MODE_0"], "role": "unknown", "level": "6",
                           "max_frame_macroblocks": 1200, "max_bit_rate_x1000_bit_per_s": -5}},
        "floor_control": {"enabled": false}
    })");
    const Result run = Cmsdp({"offer", "--local", "odd.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out),
                "v=0\r\n"
                "o=Quillmarshorizon-odd ID 2 IN IP4 198.51.100.2\r\n"
                "s=-\r\n"
                "c=IN IP4 198.51.100.1\r\n"
                "b=AS:-1\r\n"
                "t=0 0\r\n"
                "m=audio -7 RTP/AVP 18 18 101\r\n"
                "a=rtpmap:18 G729/8000\r\n"
                "a=fmtp:18 annexb=no\r\n"
                "a=rtpmap:18 G729/8000\r\n"
                "a=fmtp:18 annexb=no\r\n"
                "a=rtpmap:101 telephone-event/8000\r\n"
                "a=fmtp:101 0-15\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:-6 IN IP4 198.51.100.1\r\n"
                "m=video 2147483647 RTP/AVP  -1\r\n"
                "a=rtpmap:-1 H264/90000\r\n"
                "a=fmtp:-1 profile-level-id=420014;max-br=-5;max-fs=1201;packetization-mode=0;"
                "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                "a=sendrecv\r\n"
                "a=rtcp:-2147483648 IN IP4 198.51.100.1\r\n"
                "a=label:a=content:");
    EXPECT_TEXT(run.err, "");
}

TEST_F(Offer, WithoutAnAddressThereIsNone) {
    Write("me.json", R"({"default_address": ""})");
    const Result run = Cmsdp({"offer", "--local", "me.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: there is no offer without an address: default_address is empty\n");
}

TEST_F(Offer, WithoutAStreamNothingIsNegotiated) {
    Write("me.json", R"({"audio": {"port": 0}, "video": {"main": {"codecs": ["VP8"]}},
                         "floor_control": {"enabled": false}})");
    const Result run = Cmsdp({"offer", "--local", "me.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "b=AS:1064\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 0 RTP/AVP 104 9 0 18 101\r\n"
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
                                 "m=video 16386 RTP/AVP \r\n"
                                 "a=label:8\r\n"
                                 "a=content:main\r\n");
    EXPECT_TEXT(run.err, "cmsdp: no stream is offered: each one lacks a codec or has port 0\n");
}

constexpr const char* kSecure = R"({
    "srtp": true, "max_bandwidth_bit_per_s": 0,
    "audio": {"codecs": ["G711U"], "key": "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz"},
    "video": {"main": {"codecs": []}},
    "floor_control": {"enabled": false}
})";

TEST_F(Offer, KeysAreHidden) {
    Write("me.json", kSecure);
    const Result run = Cmsdp({"offer", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out), "v=0\r\n"
                                 "o=Quillmarshorizon ID 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/SAVP 0 101\r\n"
                                 "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Offer, KeysAreShownWhenAsked) {
    Write("me.json", kSecure);
    const Result run = Cmsdp({"offer", "--show-secrets", "--local", "me.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.out.find("\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                           "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "");
}

// A libcrypto whose configuration leaves it without a random generator.
TEST_F(Offer, WithoutRandomNumbersThereIsNoKeyAndNoOffer) {
    Write("me.json", R"({"srtp": true})");
    Write("empty.cnf", "openssl_conf = start\n[start]\nproviders = list\n[list]\nnull = only\n[only]\n"
                       "activate = 1\n");
    How how;
    how.environment = {{"OPENSSL_CONF", "empty.cnf"}};
    const Result run = Cmsdp({"offer", "--local", "me.json"}, how);
    EXPECT_EQ(run.status, 5);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: the random generator gave no SRTP key; give keys in the local file\n");
}

TEST_F(Offer, AMadeKeyIsNewInEveryRun) {
    Write("me.json", R"({"srtp": true})");
    const Result first = Cmsdp({"offer", "--show-secrets", "--local", "me.json"});
    const Result second = Cmsdp({"offer", "--show-secrets", "--local", "me.json"});
    const auto key = [](const std::string& offer) {
        const std::size_t at = offer.find("inline:");
        return at == std::string::npos ? std::string()
                                       : offer.substr(at + 7, offer.find("\r\n", at) - at - 7);
    };
    EXPECT_EQ(key(first.out).size(), 40U);
    EXPECT_EQ(key(second.out).size(), 40U);
    EXPECT_NE(key(first.out), key(second.out));
}

} // namespace

} // namespace tool
