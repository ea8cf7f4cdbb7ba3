// The capability file: every member written and read. Every error in one: local-file.cases.
#include "Expect.h"
#include "Fields.h"
#include "Keys.h"
#include "Outcome.h"
#include "RunTool.h"

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using cmsdp::Capabilities;
using cmsdp::CapabilitiesJson;
using cmsdp::ParseCapabilities;

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

/// What the verb writes; local-file.cases shows it.
std::string BuiltIn() {
    return CapabilitiesJson(cmsdp::BuiltInCapabilities());
}

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

TEST(Capabilities, EveryMemberThereAndBack) {
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities(kOther, "f")), kOther);
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities(BuiltIn(), "f")), BuiltIn());
}

TEST(Capabilities, EveryMemberReachesItsField) {
    const Capabilities c = ParseCapabilities(kOther, "f");
    EXPECT_TEXT(support::FieldsText(c.local), "eAudioCodec = -2147483391\n"
                                              "iAudioRTPPort = -2147483648\n"
                                              "iVideoPresoControlPort = 15\n"
                                              "iBfcpConfid = 16\n"
                                              "iBfcpUserid = 17\n"
                                              "fBfcpIsServer = true\n"
                                              "iMaxBandwidth = -1500\n"
                                              "m_VideoMain.iFmtpMaxMbps = 4\n"
                                              "m_VideoMain.iFmtpMaxFrameSize = 5\n"
                                              "m_VideoMain.iFmtpMaxBitRate = 6\n"
                                              "m_VideoMain.eVideoCodec = 4\n"
                                              "m_VideoMain.eVideoType = 100\n"
                                              "m_VideoMain.iVideoRTPPort = 3\n"
                                              "m_VideoMain.strVideoLevel = \"1.b\"\n"
                                              "m_VideoMain.strVideoIPAddr = \"203.0.113.1\"\n"
                                              "m_VideoMain.iVideoPayload = 7\n"
                                              "m_VideoMain.iFmtpPacketizationMode = 8\n"
                                              "m_VideoMain.fVideoSend = true\n"
                                              "m_VideoMain.fVideoRecv = false\n"
                                              "m_VideoMain.fIsVideoValid = true\n"
                                              "m_VideoPreso.iFmtpMaxMbps = 10\n"
                                              "m_VideoPreso.iFmtpMaxFrameSize = 11\n"
                                              "m_VideoPreso.iFmtpMaxBitRate = 12\n"
                                              "m_VideoPreso.eVideoCodec = 0\n"
                                              "m_VideoPreso.eVideoType = 55\n"
                                              "m_VideoPreso.iVideoRTPPort = 9\n"
                                              "m_VideoPreso.strVideoLevel = \"\"\n"
                                              "m_VideoPreso.strVideoIPAddr = \"203.0.113.2\"\n"
                                              "m_VideoPreso.iVideoPayload = 13\n"
                                              "m_VideoPreso.iFmtpPacketizationMode = 14\n"
                                              "m_VideoPreso.fVideoSend = false\n"
                                              "m_VideoPreso.fVideoRecv = true\n"
                                              "m_VideoPreso.fIsVideoValid = false\n"
                                              "bufSRTPKey[0] = 0000000000000000000000000000000000\n"
                                              "bufSRTPKey[1] = 0000000000000000000000000000000000\n"
                                              "bufSRTPKey[2] = 0000000000000000000000000000000000\n"
                                              "bufSRTPSalt[0] = 000000000000000000000000000000\n"
                                              "bufSRTPSalt[1] = 000000000000000000000000000000\n"
                                              "bufSRTPSalt[2] = 000000000000000000000000000000\n"
                                              "cryptoAlgo[0] = 5\n"
                                              "cryptoAlgo[1] = 0\n"
                                              "cryptoAlgo[2] = 99\n"
                                              "strMyIPAddr = \"198.51.100.2\"\n"
                                              "strOExtension = \"x\\xc3\\xbc\"\n"
                                              "strDefaultIPAddr = \"198.51.100.1\"\n"
                                              "iVideoPayloadMode0 = 2147483647\n"
                                              "iVideoPayloadMode1 = 1\n"
                                              "fVideoTxMuted = true\n"
                                              "listAudioCodecPriority = {8 8 2 77}\n");
    EXPECT_TRUE(c.srtp);
    EXPECT_EQ(c.floorControl, cmsdp::FloorControl::kOff);
    EXPECT_EQ(c.servedSections, 3U);
}

TEST(Capabilities, AMemberLeftOutKeepsItsBuiltInValue) {
    EXPECT_TEXT(CapabilitiesJson(ParseCapabilities("{}", "f")), BuiltIn());
    EXPECT_TEXT(
        CapabilitiesJson(ParseCapabilities("\xef\xbb\xbf{\"video\": {\"main\": {\"far_end\": {}}}}", "f")),
        BuiltIn());
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
    EXPECT_TEXT(CapabilitiesJson(c), BuiltIn());
}

TEST(Capabilities, BracketsInsideEachOtherAreBounded) {
    try {
        ParseCapabilities(std::string(100000, '['), "me.json");
        FAIL() << "accepted";
    } catch (const cmsdp::ToolError& error) {
        EXPECT_EQ(error.status(), cmsdp::kLocalFile);
        EXPECT_TEXT(std::string(error.what()),
                    "me.json: $: expected at most 32 brackets inside each other, found more; see cmsdp "
                    "capabilities for the form");
    }
}

} // namespace

} // namespace tool
