// Two of us, whole.
#include "Expect.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

class Call : public ToolTest {};

constexpr const char* kAlice = R"({
    "default_address": "192.0.2.10", "max_bandwidth_bit_per_s": 512000, "srtp": true,
    "audio": {"codecs": ["G722", "G711U"], "priority": ["G722", "G711U"],
              "key": "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz"},
    "video": {"muted": true, "main": {"max_frame_macroblocks": 3600, "suite": "none"}},
    "floor_control": {"enabled": false}
})";

constexpr const char* kBob = R"({
    "default_address": "192.0.2.20", "max_bandwidth_bit_per_s": 0, "srtp": true,
    "audio": {"port": 20000, "codecs": ["G711U"], "key": "T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5"},
    "video": {"main": {"codecs": []}},
    "floor_control": {"enabled": false}
})";

TEST_F(Call, OfferAnswerAndBothResults) {
    Write("alice.json", kAlice);
    Write("bob.json", kBob);
    const Result run = Cmsdp({"call", "--offerer", "alice.json", "--answerer", "bob.json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(
        MaskId(run.out),
        "offer\n"
        "  v=0\n"
        "  o=Quillmarshorizon ID 2 IN IP4 192.0.2.10\n"
        "  s=-\n"
        "  c=IN IP4 192.0.2.10\n"
        "  b=AS:512\n"
        "  t=0 0\n"
        "  m=audio 16384 RTP/SAVP 9 0 101\n"
        "  b=TIAS:64000\n"
        "  a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\n"
        "  a=rtpmap:9 G722/8000\n"
        "  a=rtpmap:0 PCMU/8000\n"
        "  a=rtpmap:101 telephone-event/8000\n"
        "  a=fmtp:101 0-15\n"
        "  a=sendrecv\n"
        "  a=rtcp:16385 IN IP4 192.0.2.10\n"
        "  m=video 16386 RTP/SAVP 97 126\n"
        "  b=TIAS:448000\n"
        "  a=rtpmap:97 H264/90000\n"
        "  a=fmtp:97 profile-level-id=42001F;max-fs=3601;packetization-mode=1;max-rcmd-nalu-size=32000;"
        "level-asymmetry-allowed=1\n"
        "  a=rtpmap:126 H264/90000\n"
        "  a=fmtp:126 profile-level-id=42001F;max-fs=3601;packetization-mode=0;max-rcmd-nalu-size=0;"
        "level-asymmetry-allowed=1\n"
        "  a=recvonly\n"
        "  a=rtcp:16387 IN IP4 192.0.2.10\n"
        "  a=label:8\n"
        "  a=content:main\n"
        "\n"
        "answer\n"
        "  v=0\n"
        "  o=Quillmarshorizon ID 2 IN IP4 192.0.2.20\n"
        "  s=-\n"
        "  c=IN IP4 192.0.2.20\n"
        "  t=0 0\n"
        "  m=audio 20000 RTP/SAVP 0 101\n"
        "  a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\n"
        "  a=rtpmap:0 PCMU/8000\n"
        "  a=rtpmap:101 telephone-event/8000\n"
        "  a=fmtp:101 0-15\n"
        "  a=sendrecv\n"
        "  a=rtcp:20001 IN IP4 192.0.2.20\n"
        "\n"
        "                 offerer                         answerer\n"
        "\n"
        "session\n"
        "  bandwidth      not limited                     512000 bit/s\n"
        "\n"
        "audio\n"
        "  state          negotiated                      negotiated\n"
        "  codec          G.711 mu-law                    G.711 mu-law\n"
        "  payload type   0                               0\n"
        "  DTMF payload   101                             101\n"
        "  address        192.0.2.20:20000                192.0.2.10:16384\n"
        "  direction      sends and receives              sends and receives\n"
        "  suite          AES_CM_128_HMAC_SHA1_32         AES_CM_128_HMAC_SHA1_32\n"
        "  key            ***                             ***\n"
        "\n"
        "main video\n"
        "  state          not negotiated                  not negotiated\n"
        "  why            the far end has no video        this side lists no H.264 for\n"
        "                 section                         it\n"
        "\n"
        "presentation\n"
        "  state          not negotiated                  not negotiated\n"
        "  why            the far end has no video        the far end has no video\n"
        "                 section marked                  section marked\n"
        "                 a=content:slides                a=content:slides\n"
        "\n"
        "floor control\n"
        "  state          not negotiated                  not negotiated\n"
        "  why            the far end has no BFCP         the far end has no BFCP\n"
        "                 section                         section\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Call, KeysAreShownWhenAsked) {
    Write("alice.json", kAlice);
    Write("bob.json", kBob);
    const Result run = Cmsdp({"call", "--show-secrets", "--offerer", "alice.json", "--answerer", "bob.json"});
    EXPECT_EQ(run.status, 0);
    // The key that each side shows is the one that the other side made.
    EXPECT_NE(run.out.find("  key            T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5  "
                           "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\n"),
              std::string::npos);
    EXPECT_NE(run.out.find(
                  "  a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "");
}

// Each side has its own address, ports and session id.
TEST_F(Call, BuiltInSidesNegotiateEverything) {
    const Result run = Cmsdp({"call", "--json", "--require", "audio,main_video,presentation,floor_control"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
    const auto call = nlohmann::json::parse(run.out);
    EXPECT_EQ(call["schema"], "cmsdp.call/1");
    EXPECT_EQ(call["negotiated"], true);
    for (const char* const stream : {"audio", "main_video", "presentation", "floor_control"}) {
        EXPECT_EQ(call["offerer"][stream]["negotiated"], true) << stream;
        EXPECT_EQ(call["answerer"][stream]["negotiated"], true) << stream;
    }
    EXPECT_EQ(call["offerer"]["audio"]["address"], "192.0.2.2");
    EXPECT_EQ(call["answerer"]["audio"]["address"], "192.0.2.1");
    EXPECT_EQ(call["offerer"]["floor_control"]["port"], 17390);
    EXPECT_EQ(call["answerer"]["floor_control"]["port"], 16390);
    const auto origin = [&call](const char* description) {
        const std::string text = call[description];
        const std::size_t begin = text.find("o=");
        return text.substr(begin, text.find(" IN", begin) - begin);
    };
    EXPECT_NE(origin("offer"), origin("answer"));
}

TEST_F(Call, TwoSectionsServedCostTheOffererTheFloor) {
    Write("two.json", R"({"served_sections": 2})");
    const Result run = Cmsdp({"call", "--answerer", "two.json", "--require", "floor_control"});
    EXPECT_EQ(run.status, 1);
    // The answer rejects copies of the sections beyond the second, so its second BFCP section has port 0.
    EXPECT_NE(run.out.find("floor control\n"
                           "  state          not negotiated                  negotiated\n"
                           "  why            the far end declines it with\n"
                           "                 port 0\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "cmsdp: offerer: required and not negotiated: floor_control\n");
}

TEST_F(Call, NoCodecInCommonIsStatusOne) {
    Write("a.json", R"({"audio": {"codecs": ["G722"]}, "video": {"main": {"codecs": []}},
                        "floor_control": {"enabled": false}})");
    Write("b.json", R"({"audio": {"codecs": ["G729"]}, "video": {"main": {"codecs": []}},
                        "floor_control": {"enabled": false}})");
    const Result run = Cmsdp({"call", "--offerer", "a.json", "--answerer", "b.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.err,
                "cmsdp: answerer: nothing was negotiated: audio: no codec in common: the far end lists "
                "G722/8000 (9); this side takes G729 (18); main video: the far end has no video section; "
                "presentation: the far end has no video section marked a=content:slides\n");
}

TEST_F(Call, AnOffererWithoutAnAddress) {
    Write("a.json", R"({"default_address": ""})");
    const Result run = Cmsdp({"call", "--offerer", "a.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: nothing was negotiated: default_address of the offerer is empty\n");
}

TEST_F(Call, AnOfferWithoutAMediaLine) {
    Write("a.json", R"({"audio": {"priority": []}, "video": {"main": {"codecs": []}},
                        "floor_control": {"enabled": false}})");
    const Result run = Cmsdp({"call", "--offerer", "a.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.out, "");
    EXPECT_TEXT(run.err, "cmsdp: nothing was negotiated: the offer has no media line\n");
}

} // namespace

} // namespace tool
