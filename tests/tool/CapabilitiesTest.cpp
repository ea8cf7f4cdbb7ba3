// The capability file: every member written and read, and every error in one.
#include "Expect.h"
#include "Keys.h"
#include "Outcome.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using cmsdp::Capabilities;
using cmsdp::CapabilitiesJson;
using cmsdp::ParseCapabilities;

constexpr const char* kBuiltIn = R"({
  "schema": "cmsdp.capabilities/1",
  "default_address": "192.0.2.1",
  "origin_address": "",
  "origin_extension": "",
  "max_bandwidth_bit_per_s": 1064000,
  "served_sections": 4,
  "srtp": false,
  "audio": {
    "port": 16384,
    "codecs": [
      "G711U",
      "G729",
      "G7221",
      "G722"
    ],
    "priority": [
      "G7221",
      "G722",
      "G711U",
      "G729"
    ],
    "suite": "AES_CM_128_HMAC_SHA1_32",
    "key": null
  },
  "video": {
    "payload_type_mode_1": 97,
    "payload_type_mode_0": 126,
    "muted": false,
    "main": {
      "port": 16386,
      "codecs": [
        "H264_MODE_1",
        "H264_MODE_0"
      ],
      "role": "main",
      "level": "3.1",
      "max_macroblocks_per_s": 0,
      "max_frame_macroblocks": 0,
      "max_bit_rate_x1000_bit_per_s": 0,
      "suite": "AES_CM_128_HMAC_SHA1_32",
      "key": null
    },
    "presentation": {
      "port": 16388,
      "codecs": [
        "H264_MODE_1",
        "H264_MODE_0"
      ],
      "role": "presentation",
      "level": "4",
      "max_macroblocks_per_s": 0,
      "max_frame_macroblocks": 0,
      "max_bit_rate_x1000_bit_per_s": 0,
      "suite": "AES_CM_128_HMAC_SHA1_32",
      "key": null
    }
  },
  "floor_control": {
    "enabled": "auto",
    "port": 16390,
    "conference_id": 0,
    "user_id": 0
  }
}
)";

// Every member with a value of its own. Keys come out as null, so that one member differs.
constexpr const char* kOther = R"({
  "schema": "cmsdp.capabilities/1",
  "default_address": "198.51.100.1",
  "origin_address": "198.51.100.2",
  "origin_extension": "x\u00fc",
  "max_bandwidth_bit_per_s": -1500,
  "served_sections": 3,
  "srtp": true,
  "audio": {
    "port": -2147483648,
    "codecs": [
      "G711U",
      "UNKNOWN",
      -2147483648
    ],
    "priority": [
      "G729",
      "G729",
      "H264_MODE_1",
      77
    ],
    "suite": "AEAD_AES_GCM_256",
    "key": null
  },
  "video": {
    "payload_type_mode_1": 1,
    "payload_type_mode_0": 2147483647,
    "muted": true,
    "main": {
      "port": 3,
      "codecs": [
        "VP8"
      ],
      "role": "unknown",
      "level": "1.b",
      "max_macroblocks_per_s": 4,
      "max_frame_macroblocks": 5,
      "max_bit_rate_x1000_bit_per_s": 6,
      "suite": "none",
      "key": null,
      "far_end": {
        "address": "203.0.113.1",
        "payload_type": 7,
        "packetization_mode": 8,
        "sends": true,
        "receives": false,
        "valid": true
      }
    },
    "presentation": {
      "port": 9,
      "codecs": [],
      "role": 55,
      "level": "",
      "max_macroblocks_per_s": 10,
      "max_frame_macroblocks": 11,
      "max_bit_rate_x1000_bit_per_s": 12,
      "suite": 99,
      "key": null,
      "far_end": {
        "address": "203.0.113.2",
        "payload_type": 13,
        "packetization_mode": 14,
        "sends": false,
        "receives": true,
        "valid": false
      }
    }
  },
  "floor_control": {
    "enabled": false,
    "port": 15,
    "conference_id": 16,
    "user_id": 17,
    "far_end_is_server": true
  }
}
)";

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

class CapabilitiesVerb : public ToolTest {};

TEST_F(CapabilitiesVerb, WritesEveryMemberOfALocalDescription) {
    const Result run = Cmsdp({"capabilities"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TEXT(run.out, kBuiltIn);
    EXPECT_TEXT(run.err, "");
}

TEST_F(CapabilitiesVerb, ItsOutputGivenBackChangesNothing) {
    Write("me.json", Cmsdp({"capabilities"}).out);
    Write("offer.sdp", Capture("rtpengine-conf-savp-32-offer.sdp"));
    EXPECT_TEXT(MaskId(Cmsdp({"offer", "--local", "me.json"}).out), MaskId(Cmsdp({"offer"}).out));
    EXPECT_TEXT(MaskId(Cmsdp({"answer", "--local", "me.json", "offer.sdp"}).out),
                MaskId(Cmsdp({"answer", "offer.sdp"}).out));
    EXPECT_TEXT(Cmsdp({"inspect", "--local", "me.json", "offer.sdp"}).out,
                Cmsdp({"inspect", "offer.sdp"}).out);
    EXPECT_TEXT(MaskId(Cmsdp({"call", "--offerer", "me.json"}).out), MaskId(Cmsdp({"call"}).out));
}

TEST(Capabilities, EveryMemberThereAndBack) {
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities(kOther, "f")), kOther);
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities(kBuiltIn, "f")), kBuiltIn);
}

TEST(Capabilities, EveryMemberReachesItsField) {
    const Capabilities c = ParseCapabilities(kOther, "f");
    EXPECT_EQ(c.local.strDefaultIPAddr, "198.51.100.1");
    EXPECT_EQ(c.local.strMyIPAddr, "198.51.100.2");
    EXPECT_EQ(c.local.strOExtension, "x\xc3\xbc");
    EXPECT_EQ(c.local.iMaxBandwidth, -1500);
    EXPECT_TRUE(c.srtp);
    EXPECT_EQ(c.local.iAudioRTPPort, -2147483647 - 1);
    EXPECT_EQ(static_cast<std::uint32_t>(c.local.eAudioCodec), 0x80000101U);
    EXPECT_EQ(c.local.listAudioCodecPriority, (std::list<int>{8, 8, 2, 77}));
    EXPECT_EQ(static_cast<int>(c.local.cryptoAlgo[0]), 5);
    EXPECT_EQ(c.local.iVideoPayloadMode1, 1);
    EXPECT_EQ(c.local.iVideoPayloadMode0, 2147483647);
    EXPECT_TRUE(c.local.fVideoTxMuted);
    const VideoParms& main = c.local.m_VideoMain;
    EXPECT_EQ(main.iVideoRTPPort, 3);
    EXPECT_EQ(static_cast<int>(main.eVideoCodec), 4);
    EXPECT_EQ(static_cast<int>(main.eVideoType), 100);
    EXPECT_EQ(main.strVideoLevel, "1.b");
    EXPECT_EQ(main.iFmtpMaxMbps, 4);
    EXPECT_EQ(main.iFmtpMaxFrameSize, 5);
    EXPECT_EQ(main.iFmtpMaxBitRate, 6);
    EXPECT_EQ(static_cast<int>(c.local.cryptoAlgo[1]), 0);
    EXPECT_EQ(main.strVideoIPAddr, "203.0.113.1");
    EXPECT_EQ(main.iVideoPayload, 7);
    EXPECT_EQ(main.iFmtpPacketizationMode, 8);
    EXPECT_TRUE(main.fVideoSend);
    EXPECT_FALSE(main.fVideoRecv);
    EXPECT_TRUE(main.fIsVideoValid);
    const VideoParms& slides = c.local.m_VideoPreso;
    EXPECT_EQ(slides.iVideoRTPPort, 9);
    EXPECT_EQ(static_cast<int>(slides.eVideoCodec), 0);
    EXPECT_EQ(static_cast<int>(slides.eVideoType), 55);
    EXPECT_EQ(slides.iFmtpMaxMbps, 10);
    EXPECT_EQ(slides.iFmtpMaxFrameSize, 11);
    EXPECT_EQ(slides.iFmtpMaxBitRate, 12);
    EXPECT_EQ(static_cast<int>(c.local.cryptoAlgo[2]), 99);
    EXPECT_EQ(slides.strVideoIPAddr, "203.0.113.2");
    EXPECT_EQ(slides.iVideoPayload, 13);
    EXPECT_EQ(slides.iFmtpPacketizationMode, 14);
    EXPECT_TRUE(slides.fVideoRecv);
    EXPECT_EQ(c.floorControl, cmsdp::FloorControl::kOff);
    EXPECT_EQ(c.servedSections, 3U);
    EXPECT_EQ(c.local.iVideoPresoControlPort, 15);
    EXPECT_EQ(c.local.iBfcpConfid, 16);
    EXPECT_EQ(c.local.iBfcpUserid, 17);
    EXPECT_TRUE(c.local.fBfcpIsServer);
}

TEST(Capabilities, AMemberLeftOutKeepsItsBuiltInValue) {
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities("{}", "f")), kBuiltIn);
    EXPECT_TEXT(
        CapabilitiesJson(ParseCapabilities("\xef\xbb\xbf{\"video\": {\"main\": {\"far_end\": {}}}}", "f")),
        kBuiltIn);
    const Capabilities c = ParseCapabilities(R"({"audio": {"port": 5004}})", "f");
    EXPECT_EQ(c.local.iAudioRTPPort, 5004);
    EXPECT_EQ(c.local.listAudioCodecPriority, (std::list<int>{16, 64, 1, 8}));
}

TEST(Capabilities, FloorControlIsOffOnOrAutomatic) {
    const auto read = [](const char* value) {
        return ParseCapabilities(R"({"floor_control": {"enabled": )" + std::string(value) + "}}", "f")
            .floorControl;
    };
    EXPECT_EQ(read("false"), cmsdp::FloorControl::kOff);
    EXPECT_EQ(read("true"), cmsdp::FloorControl::kOn);
    EXPECT_EQ(read("\"auto\""), cmsdp::FloorControl::kAuto);
}

TEST(Capabilities, AKeyIsRead) {
    const Capabilities c =
        ParseCapabilities(std::string(R"({"video": {"main": {"key": ")") + kKey + R"("}}})", "f");
    EXPECT_EQ(cmsdp::InlineKey(c.local, baseSDP::SRTP_VIDEO), kKey);
    EXPECT_TRUE(c.keyGiven[baseSDP::SRTP_VIDEO]);
    EXPECT_FALSE(c.keyGiven[baseSDP::SRTP_AUDIO]);
    EXPECT_TEXT(CapabilitiesJson(c), kBuiltIn);
}

// --- every way to get one wrong ---------------------------------------------------------------------------

struct Wrong {
    const char* name;
    std::string json;
    const char* message;
};

/// Without it a failure prints the bytes of the row, its padding included.
void PrintTo(const Wrong& wrong, std::ostream* out) {
    *out << wrong.name;
}

class WrongCapabilities : public ::testing::TestWithParam<Wrong> {};

TEST_P(WrongCapabilities, AreNamedByPath) {
    try {
        ParseCapabilities(GetParam().json, "me.json");
        FAIL() << "accepted";
    } catch (const cmsdp::ToolError& error) {
        EXPECT_EQ(error.status(), cmsdp::kLocalFile);
        EXPECT_TEXT(std::string(error.what()), GetParam().message);
    }
}

const std::vector<Wrong> kWrong = {
    {"Empty", "",
     "me.json: $: expected JSON, found something else at line 1, column 1; look there and just before it for "
     "a "
     "missing comma, quote or bracket"},
    {"SyntaxByLineAndColumn", "{\n  \"srtp\": true,\n  oops\n}",
     "me.json: $: expected JSON, found something else at line 3, column 3; look there and just before it for "
     "a "
     "missing comma, quote or bracket"},
    {"SyntaxErrorsRepeatNoKey", std::string("{\"audio\": {\"key\": \"") + kKey,
     "me.json: $: expected JSON, found something else at line 1, column 60; look there and just before it "
     "for a "
     "missing comma, quote or bracket"},
    {"NotUtf8", "{\"origin_extension\": \"\xff\"}",
     "me.json: $: expected JSON, found something else at line 1, column 23; look there and just before it "
     "for a "
     "missing comma, quote or bracket"},
    {"NotAnObject", "[1]",
     "me.json: $: expected an object, found an array; see cmsdp capabilities for the members of this object"},
    {"InnerNotAnObject", R"({"video": {"main": 5}})",
     "me.json: $.video.main: expected an object, found the number 5; see cmsdp capabilities for the members "
     "of "
     "this object"},
    {"OtherSchema", R"({"schema": "cmsdp.capabilities/2"})",
     "me.json: $.schema: expected \"cmsdp.capabilities/1\", found the text \"cmsdp.capabilities/2\"; start "
     "from "
     "cmsdp capabilities"},
    {"UnknownMember", R"({"floor_control": {"enable": true}})",
     "me.json: $.floor_control.enable: expected one of enabled, port, conference_id, user_id, "
     "far_end_is_server, found an unknown member; remove it or correct its name"},
    {"UnknownMemberWithBlanks", R"({"audio": {"two words": 1}})",
     "me.json: $.audio[\"two words\"]: expected one of port, codecs, priority, suite, key, found an unknown "
     "member; remove it or correct its name"},
    {"MemberTwice", R"({"video": {"main": {"port": 1, "level": "2", "port": 2}}})",
     "me.json: $.video.main.port: expected each member once, found it twice; keep one of the two"},
    {"MemberTwiceBehindOthers", R"({"audio": {"codecs": ["G722"]}, "video": {}, "audio": {}})",
     "me.json: $.audio: expected each member once, found it twice; keep one of the two"},
    {"MemberTwiceInAnArray", R"({"audio": {"codecs": ["G722", {"a": 1, "a": 2}]}})",
     "me.json: $.audio.codecs[1].a: expected each member once, found it twice; keep one of the two"},
    {"TextForANumber", R"({"audio": {"port": "5004"}})",
     "me.json: $.audio.port: expected a whole number from -2147483648 to 2147483647, found the text "
     "\"5004\"; "
     "write it in digits, without quotes, point or exponent"},
    {"NumberTooLarge", R"({"audio": {"port": 2147483648}})",
     "me.json: $.audio.port: expected a whole number from -2147483648 to 2147483647, found the number "
     "2147483648; "
     "write it in digits, without quotes, point or exponent"},
    {"NumberTooSmall", R"({"audio": {"port": -2147483649}})",
     "me.json: $.audio.port: expected a whole number from -2147483648 to 2147483647, found the number "
     "-2147483649; write it in digits, without quotes, point or exponent"},
    {"NumberBeyondSixtyFourBits", R"({"audio": {"port": 18446744073709551615}})",
     "me.json: $.audio.port: expected a whole number from -2147483648 to 2147483647, found the number "
     "18446744073709551615; write it in digits, without quotes, point or exponent"},
    {"NumberWithAPoint", R"({"max_bandwidth_bit_per_s": 64000.5})",
     "me.json: $.max_bandwidth_bit_per_s: expected a whole number from -2147483648 to 2147483647, found the "
     "number 64000.5; write it in digits, without quotes, point or exponent"},
    {"NumberBeyondEveryType", R"({"audio": {"port": 1e999}})",
     "me.json: $: expected numbers of 32 bits, found one that no number type holds; look for a very long "
     "number "
     "or exponent"},
    {"NegativeCount", R"({"served_sections": -1})",
     "me.json: $.served_sections: expected a whole number from 0 to 4294967295, found the number -1; 0 "
     "serves none"},
    {"CountBeyond32Bits", R"({"served_sections": 5000000000})",
     "me.json: $.served_sections: expected a whole number from 0 to 4294967295, found the number 5000000000; "
     "0 serves none"},
    {"TextForACount", R"({"served_sections": "x"})",
     "me.json: $.served_sections: expected a whole number from 0 to 4294967295, found the text \"x\"; 0 "
     "serves none"},
    {"OtherWordForFloorControl", R"({"floor_control": {"enabled": "on"}})",
     "me.json: $.floor_control.enabled: expected true, false or \"auto\", found the text \"on\"; \"auto\" "
     "answers with floor control only offers that have it"},
    {"NumberForATruthValue", R"({"video": {"muted": 0}})",
     "me.json: $.video.muted: expected true or false, found the number 0; write it without quotes"},
    {"NullForATruthValue", R"({"video": {"muted": null}})",
     "me.json: $.video.muted: expected true or false, found null; write it without quotes"},
    {"NumberForAText", R"({"video": {"presentation": {"level": 3.1}}})",
     "me.json: $.video.presentation.level: expected a text, found the number 3.1; write it in double quotes"},
    {"CodecsNotAnArray", R"({"audio": {"codecs": "G722"}})",
     "me.json: $.audio.codecs: expected an array of codecs, found the text \"G722\"; write names in "
     "brackets, or "
     "[] for none"},
    {"UnknownCodec", R"({"audio": {"codecs": ["G722", "g729"]}})",
     "me.json: $.audio.codecs[1]: expected one of \"G711U\", \"H264_MODE_1\", \"VP8\", \"G729\", \"G7221\", "
     "\"H264_MODE_0\", \"G722\", \"UNKNOWN\", found the text \"g729\"; names are compared letter for letter"},
    {"PriorityWithATruthValue", R"({"audio": {"priority": [true]}})",
     "me.json: $.audio.priority[0]: expected one of \"G711U\", \"H264_MODE_1\", \"VP8\", \"G729\", "
     "\"G7221\", "
     "\"H264_MODE_0\", \"G722\", \"UNKNOWN\", found true; names are compared letter for letter"},
    {"UnknownRole", R"({"video": {"main": {"role": "slides"}}})",
     "me.json: $.video.main.role: expected one of \"main\", \"presentation\", \"unknown\", found the text "
     "\"slides\"; names are compared letter for letter"},
    {"AKeyInThePlaceOfASuite", std::string(R"({"audio": {"suite": ")") + kKey + R"("}})",
     "me.json: $.audio.suite: expected one of \"none\", \"AES_CM_128_HMAC_SHA1_32\", "
     "\"AES_CM_128_HMAC_SHA1_80\", \"AES_CM_256_HMAC_SHA1_80\", \"AEAD_AES_GCM_128\", \"AEAD_AES_GCM_256\", "
     "found a text of 40 bytes; names are compared letter for letter"},
    {"SuiteBeyondThirtyTwoBits", R"({"audio": {"suite": 4294967296}})",
     "me.json: $.audio.suite: expected a whole number from -2147483648 to 2147483647, found the number "
     "4294967296; write it in digits, without quotes, point or exponent"},
    {"ShortKey", R"({"audio": {"key": "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGV"}})",
     "me.json: $.audio.key: expected null or the 40 base64 characters of a key and a salt, found a text of "
     "39 "
     "bytes; leave it null and a key is made"},
    {"KeyOutsideTheAlphabet", R"({"audio": {"key": "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubG=="}})",
     "me.json: $.audio.key: expected null or the 40 base64 characters of a key and a salt, found a text of "
     "40 "
     "bytes; leave it null and a key is made"},
    {"KeyThatIsANumber", R"({"audio": {"key": 0}})",
     "me.json: $.audio.key: expected null or the 40 base64 characters of a key and a salt, found the number "
     "0; "
     "leave it null and a key is made"},
    {"TooDeep", std::string(100000, '['),
     "me.json: $: expected at most 32 brackets inside each other, found more; see cmsdp capabilities for the "
     "form"},
};

INSTANTIATE_TEST_SUITE_P(Each, WrongCapabilities, ::testing::ValuesIn(kWrong),
                         [](const auto& row) { return row.param.name; });

// A message shows no control byte and no key, whatever the file contains.
TEST_F(CapabilitiesVerb, MessagesAreHarmless) {
    Write("bad.json", "{\"\\u001b[2J inline:abc\": 1}");
    const Result run = Cmsdp({"offer", "--local", "bad.json"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(
        run.err,
        "cmsdp: bad.json: $[\"\\x1b[2J inline:*** expected one of schema, default_address, origin_address, "
        "origin_extension, max_bandwidth_bit_per_s, served_sections, srtp, audio, video, floor_control, "
        "found an unknown "
        "member; remove it or correct its name\n");
}

TEST_F(CapabilitiesVerb, AKeyInAMembersPlaceIsNotRepeated) {
    Write("bad.json", std::string("{\"audio\": {\"") + kKey + "\": 1}}");
    const Result run = Cmsdp({"offer", "--local", "bad.json"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(
        run.err,
        "cmsdp: bad.json: $.audio[a name of 40 bytes]: expected one of port, codecs, priority, suite, "
        "key, found an unknown member; remove it or correct its name\n");
}

TEST_F(CapabilitiesVerb, ALocalFileBeyondSixteenMiBIsRefused) {
    const Result run = Cmsdp({"offer", "--local", "/dev/zero"});
    EXPECT_EQ(run.status, 4);
    EXPECT_TEXT(run.err,
                "cmsdp: /dev/zero: $: expected a readable JSON file, found: it is longer than 16 MiB "
                "(16777216 bytes); write one with: cmsdp capabilities > FILE\n");
}

} // namespace

} // namespace tool
