// Two of us, whole: the call that comes up, and what happens then.
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
    "video": {"main": {"codecs": []}},
    "floor_control": {"enabled": false}
})";

constexpr const char* kBob = R"({
    "default_address": "192.0.2.20", "max_bandwidth_bit_per_s": 0, "srtp": true,
    "audio": {"port": 20000, "codecs": ["G711U"], "key": "T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5"},
    "video": {"main": {"codecs": []}},
    "floor_control": {"enabled": false}
})";

TEST_F(Call, TextsAndWhatToStartAfterEachStep) {
    Write("alice.json", kAlice);
    Write("bob.json", kBob);
    const Result run =
        Cmsdp({"call", "--offerer", "alice.json", "--answerer", "bob.json", "--then", "answerer:hold"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(MaskId(run.out),
                "offer\n"
                "  v=0\n"
                "  o=Quillmarshorizon ID 1 IN IP4 192.0.2.10\n"
                "  s=-\n"
                "  c=IN IP4 192.0.2.10\n"
                "  b=AS:512\n"
                "  t=0 0\n"
                "  m=audio 16384 RTP/SAVP 9 0 101\n"
                "  b=TIAS:64000\n"
                "  a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:***\n"
                "  a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:***\n"
                "  a=rtpmap:9 G722/8000\n"
                "  a=rtpmap:0 PCMU/8000\n"
                "  a=rtpmap:101 telephone-event/8000\n"
                "  a=fmtp:101 0-15\n"
                "  a=sendrecv\n"
                "  a=rtcp:16385 IN IP4 192.0.2.10\n"
                "\n"
                "answer\n"
                "  v=0\n"
                "  o=Quillmarshorizon ID 1 IN IP4 192.0.2.20\n"
                "  s=-\n"
                "  c=IN IP4 192.0.2.20\n"
                "  t=0 0\n"
                "  m=audio 20000 RTP/SAVP 0 101\n"
                "  a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:***\n"
                "  a=rtpmap:0 PCMU/8000\n"
                "  a=rtpmap:101 telephone-event/8000\n"
                "  a=fmtp:101 0-15\n"
                "  a=sendrecv\n"
                "  a=rtcp:20001 IN IP4 192.0.2.20\n"
                "\n"
                "                 offerer                         answerer\n"
                "\n"
                "audio\n"
                "  state          start                           start\n"
                "  changed        started                         started\n"
                "  codec          G.711 mu-law                    G.711 mu-law\n"
                "  payload type   0                               0\n"
                "  DTMF payload   101                             101\n"
                "  address        192.0.2.20:20000                192.0.2.10:16384\n"
                "  RTCP           192.0.2.20:20001                192.0.2.10:16385\n"
                "  direction      sends and receives              sends and receives\n"
                "  suite          AES_CM_128_HMAC_SHA1_32         AES_CM_128_HMAC_SHA1_32\n"
                "  our key        ***                             ***\n"
                "  their key      ***                             ***\n"
                "\n"
                "then answerer: hold\n"
                "\n"
                "offer\n"
                "  v=0\n"
                "  o=Quillmarshorizon ID 2 IN IP4 192.0.2.20\n"
                "  s=-\n"
                "  c=IN IP4 192.0.2.20\n"
                "  t=0 0\n"
                "  m=audio 20000 RTP/SAVP 0 101\n"
                "  a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:***\n"
                "  a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:***\n"
                "  a=rtpmap:0 PCMU/8000\n"
                "  a=rtpmap:101 telephone-event/8000\n"
                "  a=fmtp:101 0-15\n"
                "  a=sendonly\n"
                "  a=rtcp:20001 IN IP4 192.0.2.20\n"
                "\n"
                "answer\n"
                "  v=0\n"
                "  o=Quillmarshorizon ID 2 IN IP4 192.0.2.10\n"
                "  s=-\n"
                "  c=IN IP4 192.0.2.10\n"
                "  b=AS:512\n"
                "  t=0 0\n"
                "  m=audio 16384 RTP/SAVP 0 101\n"
                "  b=TIAS:64000\n"
                "  a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:***\n"
                "  a=rtpmap:0 PCMU/8000\n"
                "  a=rtpmap:101 telephone-event/8000\n"
                "  a=fmtp:101 0-15\n"
                "  a=recvonly\n"
                "  a=rtcp:16385 IN IP4 192.0.2.10\n"
                "\n"
                "                 offerer                         answerer\n"
                "\n"
                "audio\n"
                "  state          held                            held\n"
                "  why            the far end holds the stream    this side holds the stream\n"
                "  changed        direction                       direction\n"
                "  codec          G.711 mu-law                    G.711 mu-law\n"
                "  payload type   0                               0\n"
                "  DTMF payload   101                             101\n"
                "  address        192.0.2.20:20000                192.0.2.10:16384\n"
                "  RTCP           192.0.2.20:20001                192.0.2.10:16385\n"
                "  direction      receives only                   sends only\n"
                "  suite          AES_CM_128_HMAC_SHA1_32         AES_CM_128_HMAC_SHA1_32\n"
                "  our key        ***                             ***\n"
                "  their key      ***                             ***\n");
    EXPECT_TEXT(run.err, "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
}

TEST_F(Call, KeysAreShownWhenAsked) {
    Write("alice.json", kAlice);
    Write("bob.json", kBob);
    const Result run = Cmsdp({"call", "--show-secrets", "--offerer", "alice.json", "--answerer", "bob.json"});
    EXPECT_EQ(run.status, 0);
    // The key that each side receives with is the one that the other side made.
    EXPECT_NE(run.out.find("  our key        WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz  "
                           "T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5\n"
                           "  their key      T3duS2V5T3duS2V5T3duS2V5T3duS2V5T3duS2V5  "
                           "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\n"),
              std::string::npos);
    EXPECT_TEXT(run.err, "");
}

// Each side has its own address, ports and session id.
TEST_F(Call, BuiltInSidesNegotiateEverything) {
    const Result run = Cmsdp({"call", "--json", "--require", "audio,main_video,presentation,floor_control"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "");
    const auto call = nlohmann::json::parse(run.out);
    EXPECT_EQ(call["schema"], "cmsdp.call/2");
    EXPECT_EQ(call["negotiated"], true);
    ASSERT_EQ(call["steps"].size(), 1U);
    const auto& step = call["steps"][0];
    EXPECT_EQ(step["then"], nullptr);
    ASSERT_EQ(step["exchanges"].size(), 1U);
    EXPECT_EQ(step["offerer"][0]["address"], "192.0.2.2");
    EXPECT_EQ(step["answerer"][0]["address"], "192.0.2.1");
    EXPECT_EQ(step["offerer"][3]["port"], 17390);
    EXPECT_EQ(step["answerer"][3]["port"], 16390);
    const auto origin = [&step](const char* description) {
        const std::string text = step["exchanges"][0][description];
        const std::size_t begin = text.find("o=");
        return text.substr(begin, text.find(" IN", begin) - begin);
    };
    EXPECT_NE(origin("offer"), origin("answer"));
}

// The last word of each step: what the offerer does with main video and with its slides.
TEST_F(Call, EveryWishIsToldToTheFarEnd) {
    const Result run =
        Cmsdp({"call", "--json", "--then", "mute", "--then", "unmute", "--then", "stop-presenting", "--then",
               "answerer:present", "--then", "hold", "--then", "resume"});
    EXPECT_EQ(run.status, 0);
    const auto call = nlohmann::json::parse(run.out);
    std::string told;
    for (const auto& step : call["steps"]) {
        const auto way = [&step](std::size_t section) {
            const auto& stream = step["offerer"][section];
            return std::string(stream["sends"].get<bool>() ? "S" : "-") +
                   (stream["receives"].get<bool>() ? "R" : "-");
        };
        told += std::string(step["then"].is_null() ? "comes up" : step["then"]) + ": " + way(0) + " " +
                way(1) + " " + way(2) + "\n";
    }
    EXPECT_TEXT(told, "comes up: SR SR S-\n"
                      "mute: SR -R S-\n"
                      "unmute: SR SR S-\n"
                      "stop-presenting: SR SR --\n"
                      "present: SR SR -R\n"
                      "hold: S- S- --\n"
                      "resume: SR SR -R\n");
}

TEST_F(Call, NewKeysAreCrossedOver) {
    Write("secure.json", R"({"srtp": "required"})");
    const Result run = Cmsdp({"call", "--json", "--show-secrets", "--offerer", "secure.json", "--answerer",
                              "secure.json", "--then", "rekey"});
    EXPECT_EQ(run.status, 0);
    const auto call = nlohmann::json::parse(run.out);
    ASSERT_EQ(call["steps"].size(), 2U);
    const auto& before = call["steps"][0];
    const auto& after = call["steps"][1];
    for (const std::size_t section : {0U, 1U, 2U}) {
        EXPECT_EQ(after["offerer"][section]["our_key"], after["answerer"][section]["their_key"]);
        EXPECT_EQ(after["offerer"][section]["their_key"], after["answerer"][section]["our_key"]);
        EXPECT_NE(after["offerer"][section]["our_key"], before["offerer"][section]["our_key"]);
    }
}

TEST_F(Call, ARefusedSecureOfferIsFollowedByAPlainOne) {
    Write("secure.json", R"({"srtp": true})");
    const Result run = Cmsdp({"call", "--json", "--offerer", "secure.json", "--require", "audio"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.err, "cmsdp: answerer: refused with 488: the section is secure, and SRTP is off here\n"
                         "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
    const auto exchanges = nlohmann::json::parse(run.out)["steps"][0]["exchanges"];
    ASSERT_EQ(exchanges.size(), 2U);
    EXPECT_EQ(exchanges[0]["answer"], nullptr);
    EXPECT_EQ(exchanges[0]["status"], 488);
    EXPECT_EQ(exchanges[1]["why"], nullptr);
}

TEST_F(Call, RequiredSrtpIsNeverOfferedPlain) {
    Write("secure.json", R"({"srtp": "required"})");
    const Result run = Cmsdp({"call", "--offerer", "secure.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.err, "cmsdp: answerer: refused with 488: the section is secure, and SRTP is off here\n"
                         "cmsdp: nothing was negotiated\n"
                         "cmsdp: SRTP keys are hidden; --show-secrets shows them\n");
    EXPECT_EQ(run.out.find("RTP/AVP"), std::string::npos);
}

TEST_F(Call, NoCodecInCommonIsStatusOne) {
    Write("a.json", R"({"audio": {"codecs": ["G722"]}, "video": {"main": {"codecs": []}},
                        "floor_control": {"enabled": false}})");
    Write("b.json", R"({"audio": {"codecs": ["G729"]}, "video": {"main": {"codecs": []}},
                        "floor_control": {"enabled": false}})");
    const Result run = Cmsdp({"call", "--offerer", "a.json", "--answerer", "b.json", "--require", "audio"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.err, "cmsdp: answerer: refused with 488: no format of the section is spoken here\n"
                         "cmsdp: nothing was negotiated\n"
                         "cmsdp: offerer: required and not negotiated: audio\n"
                         "cmsdp: answerer: required and not negotiated: audio\n");
}

TEST_F(Call, AnOffererWithoutAnAddress) {
    Write("a.json", R"({"default_address": ""})");
    const Result run = Cmsdp({"call", "--offerer", "a.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TEXT(run.err, "cmsdp: offerer: no offer: no local address is set\n"
                         "cmsdp: nothing was negotiated\n");
}

TEST_F(Call, AWishThatIsNone) {
    const Result run = Cmsdp({"call", "--then", "sing"});
    EXPECT_EQ(run.status, 2);
    EXPECT_TEXT(run.err, "cmsdp: --then: \"sing\" is no wish; name one of hold, resume, mute, unmute, "
                         "present, stop-presenting, rekey, with answerer: in front for the answering side\n");
}

} // namespace

} // namespace tool
