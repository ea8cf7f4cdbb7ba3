#include "Scenario.h"

#include "Laws.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

using CryptoParams = Quor::media::rtp::CryptoParams;

struct AudioFormat {
    const char* payload;
    const char* name;
    const char* parms;
    std::int32_t codec; ///< 0 for a format that this client does not use
};
// Static payloads keep their meaning without an rtpmap line.
constexpr AudioFormat kAudio[] = {
    {"0", "PCMU/8000", "", PAYLOAD_G711U},
    {"8", "PCMA/8000", "", 0},
    {"9", "G722/8000", "", PAYLOAD_G722},
    {"18", "G729/8000", "annexb=no", PAYLOAD_G729},
    {"104", "G7221/16000", "bitrate=32000", PAYLOAD_G7221},
    {"115", "G7221/16000", "bitrate=24000", 0},
    {"96", "opus/48000/2", "minptime=10; stereo=0", 0},
    {"101", "telephone-event/8000", "0-15", 0},
    {"102", "telephone-event/48000", "0-15", 0},
    {"110", "telephone-event/8000", "0-16", 0},
};

struct Level {
    const char* name;
    const char* profileLevelId;
};
constexpr Level kLevels[] = {
    {"3.1", "42801f"}, {"1", "42000A"},   {"1.b", "4200ff"}, {"1.1", "42e00b"}, {"1.2", "42000c"},
    {"1.3", "42000D"}, {"2", "420014"},   {"2.1", "420015"}, {"2.2", "420016"}, {"3", "42001e"},
    {"3.2", "640020"}, {"4", "640028"},   {"4.1", "4d0029"}, {"4.2", "64002A"}, {"5", "640032"},
    {"5.1", "640033"}, {"1.3", "640034"}, {"1.3", "420000"},
};

struct Direction {
    const char* line;
    bool weSend;
    bool weReceive;
};
constexpr Direction kDirections[] = {
    {"", true, true},
    {"a=sendrecv", true, true},
    {"a=sendonly", false, true},
    {"a=recvonly", true, false},
    {"a=inactive", false, false},
};

constexpr std::int32_t kPorts[] = {5004, 16384, 9, 65535, 1, 0};
constexpr const char* kTransports[] = {"RTP/AVP", "RTP/SAVP", "RTP/SAVPF", "UDP/TLS/RTP/SAVPF"};

class Maker {
public:
    Maker(Input& input, std::uint64_t secret, std::int32_t codecs)
        : m_input(input), m_secret(secret), m_codecs(codecs) {}

    Scenario Make() {
        Session();
        for (std::size_t sections = m_input.Below(7); sections > 0; --sections) {
            Section();
        }
        // A session bandwidth replaces the sum of the sections.
        m_scenario.wanted.iMaxBandwidth = m_hasSessionBandwidth ? m_sessionBandwidth : m_sum;
        m_scenario.wanted.strAudioIPAddr = Or(m_scenario.wanted.strAudioIPAddr, m_hasAudio);
        m_scenario.wanted.m_VideoMain.strVideoIPAddr =
            Or(m_scenario.wanted.m_VideoMain.strVideoIPAddr, m_scenario.wanted.m_VideoMain.fIsVideoValid);
        m_scenario.wanted.m_VideoPreso.strVideoIPAddr =
            Or(m_scenario.wanted.m_VideoPreso.strVideoIPAddr, m_scenario.wanted.m_VideoPreso.fIsVideoValid);
        return m_scenario;
    }

private:
    /// The values of a section that do not depend on its medium.
    struct Common {
        std::int32_t port = 0;
        std::string address;
        bool fSend = true;
        bool fRecv = true;
        std::int32_t tias = 0;
        CryptoParams::CRYPTO_PROFILE suite = CryptoParams::CRYPTO_NONE;
        std::string material = std::string(baseSDP::kKeyLength + baseSDP::kSaltLength, '\0');
    };

    void Line(const std::string& line) { m_scenario.lines.push_back(line); }

    std::string Or(const std::string& own, bool isTaken) const {
        return own.empty() && isTaken ? m_sessionAddress : own;
    }

    void Session() {
        Line("v=0");
        Line("o=far 3 7 IN IP4 192.0.2.2");
        Line("s=-");
        const std::uint8_t parts = m_input.Byte();
        if ((parts & 1U) == 0) {
            m_sessionAddress = "192.0.2.2";
            Line("c=IN IP4 192.0.2.2");
        }
        if ((parts & 2U) != 0) {
            m_hasSessionBandwidth = true;
            m_sessionBandwidth = 768000;
            Line((parts & 4U) != 0 ? "b=AS:768" : "b=TIAS:768");
        }
        Line("t=0 0");
        if ((parts & 8U) != 0) {
            Line("a=sendonly");
            Line("a=ice-lite");
            Line("a=group:BUNDLE 0 1");
        }
    }

    void Section() {
        if (m_scenario.firstMedia == 0) {
            m_scenario.firstMedia = m_scenario.lines.size();
        }
        switch (m_input.Below(6)) {
        case 0:
            return Audio();
        case 1:
            return Video(VIDEOTYPE_MAIN);
        case 2:
            return Video(VIDEOTYPE_PRESO);
        case 3:
            return FloorControl();
        case 4:
            Line("m=text 5010 RTP/AVP 98");
            return static_cast<void>(Attributes(5010));
        default:
            Line("m=application 5012 UDP/DTLS/SCTP webrtc-datachannel");
            return static_cast<void>(Attributes(5012));
        }
    }

    std::string Start(const char* media, std::int32_t port) {
        return std::string(media) + " " + std::to_string(port) + " " + m_input.Pick(kTransports);
    }

    Common Attributes(std::int32_t port) {
        Common common;
        common.port = port;
        const std::uint8_t parts = m_input.Byte();
        if ((parts & 1U) != 0 || m_sessionAddress.empty()) {
            common.address = "198.51.100." + std::to_string(parts >> 4U);
            Line("c=IN IP4 " + common.address);
        }
        if ((parts & 2U) != 0) {
            common.tias = 1000 * (parts >> 3U);
            Line("b=AS:99");
            Line("b=TIAS:" + std::to_string(common.tias));
        }
        if ((parts & 4U) != 0) {
            Line("a=ice-ufrag:F7gI");
            Line("a=ice-pwd:x9cml/YzichV2+XlhiMu8g");
            Line("a=candidate:1 1 UDP 2130706431 192.0.2.2 5004 typ host");
        }
        for (std::size_t lines = m_input.Below(3); lines > 0; --lines) {
            Crypto(common);
        }
        const Direction& direction = m_input.Pick(kDirections);
        common.fSend = direction.weSend;
        common.fRecv = direction.weReceive;
        if (*direction.line != '\0') {
            Line(direction.line);
        }
        return common;
    }

    void Crypto(Common& common) {
        static constexpr const char* suites[] = {"AES_CM_128_HMAC_SHA1_32", "AES_CM_128_HMAC_SHA1_80",
                                                 "AES_CM_256_HMAC_SHA1_80", "F8_128_HMAC_SHA1_80"};
        const std::size_t suite = m_input.Below(4);
        const Key key(NextRandom(m_secret));
        m_scenario.keys.Add(key);
        Line("a=crypto:" + std::to_string(m_input.Byte()) + " " + suites[suite] + " inline:" + key.text +
             (m_input.Byte() % 2 == 0 ? "" : "|2^31|1:1 UNENCRYPTED_SRTP"));
        if (suite == 0) {
            common.suite = CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
        }
        // The key of an unknown suite is stored as well; the 80-bit suites are skipped.
        if (suite == 0 || suite == 3) {
            common.material = key.material;
        }
    }

    void StoreKey(const Common& common, baseSDP::SRTP_M_LINE n) {
        std::memcpy(m_scenario.wanted.bufSRTPKey[n], common.material.data(), baseSDP::kKeyLength);
        std::memcpy(m_scenario.wanted.bufSRTPSalt[n], common.material.data() + baseSDP::kKeyLength,
                    baseSDP::kSaltLength);
        m_scenario.wanted.cryptoAlgo[n] = common.suite;
    }

    void Audio() {
        const std::int32_t port = m_input.Pick(kPorts);
        const std::size_t first = m_input.Byte();
        const unsigned subset = m_input.Byte() * 4U + 1U;
        std::vector<AudioFormat> formats;
        for (std::size_t i = 0; i < std::size(kAudio); ++i) {
            if ((subset >> i & 1U) != 0) {
                formats.push_back(kAudio[(first + i) % std::size(kAudio)]);
            }
        }
        std::string line = Start("m=audio", port);
        for (const AudioFormat& format : formats) {
            line.append(" ").append(format.payload);
        }
        Line(line);
        const Common common = Attributes(port);
        for (const AudioFormat& format : formats) {
            Line(std::string("a=rtpmap:") + format.payload + " " + format.name);
            if (*format.parms != '\0') {
                Line(std::string("a=fmtp:") + format.payload + " " + format.parms);
            }
        }
        if (m_hasAudio) {
            return;
        }
        m_hasAudio = true;
        RemoteSDP& wanted = m_scenario.wanted;
        for (const AudioFormat& format : formats) {
            if (wanted.eAudioCodec == PAYLOAD_UNKNOWN && (format.codec & m_codecs) != 0) {
                wanted.eAudioCodec = PayloadType_t(format.codec);
                wanted.iAudioPayload = std::atoi(format.payload);
            }
            if (std::strcmp(format.name, "telephone-event/8000") == 0) {
                wanted.iDTMFPayload = std::atoi(format.payload);
            }
        }
        const bool canFlow = port != 0 && wanted.eAudioCodec != PAYLOAD_UNKNOWN;
        wanted.iAudioRTPPort = port;
        wanted.strAudioIPAddr = common.address;
        wanted.fAudioSend = canFlow && common.fSend;
        wanted.fAudioRecv = canFlow && common.fRecv;
        wanted.fIsAudioValid = true;
        m_sum += common.tias;
        StoreKey(common, baseSDP::SRTP_AUDIO);
    }

    /// One H.264 format. Its values go into `stream` until a format with a packetization mode was read.
    void H264(const char* payload, VideoParms& stream, bool& isDone) {
        const Level& level = m_input.Pick(kLevels);
        const std::uint8_t parts = m_input.Byte();
        const char* const separator = (parts & 1U) != 0 ? "; " : ";";
        const std::int32_t mode = (parts & 6U) == 0 ? 1 : (parts & 6U) == 2 ? 0 : -1;
        std::string parms = std::string("profile-level-id=") + level.profileLevelId;
        const auto parm = [&](const char* name, std::int32_t number) {
            parms.append(separator).append(name).append("=").append(std::to_string(number));
        };
        const std::int32_t limit = 1 + parts;
        if ((parts & 8U) != 0) {
            parm("max-mbps", 1000 * limit);
        }
        if ((parts & 16U) != 0) {
            parm("max-fs", 10 * limit);
        }
        if ((parts & 32U) != 0) {
            parm("max-br", 5 * limit);
        }
        if (mode >= 0) {
            parm("packetization-mode", mode);
        }
        Line(std::string("a=rtpmap:") + payload + " H264/90000");
        Line(std::string("a=fmtp:") + payload + " " + parms);
        if (isDone) {
            return;
        }
        stream.iVideoPayload = std::atoi(payload);
        stream.strVideoLevel = level.name;
        stream.iFmtpMaxMbps = (parts & 8U) != 0 ? 1000 * limit : stream.iFmtpMaxMbps;
        stream.iFmtpMaxFrameSize = (parts & 16U) != 0 ? 10 * limit : stream.iFmtpMaxFrameSize;
        stream.iFmtpMaxBitRate = (parts & 32U) != 0 ? 5 * limit : stream.iFmtpMaxBitRate;
        stream.iFmtpPacketizationMode = mode >= 0 ? mode : stream.iFmtpPacketizationMode;
        isDone = stream.iFmtpPacketizationMode != 0;
    }

    void Video(VideoType_t role) {
        const std::int32_t port = m_input.Pick(kPorts);
        const std::size_t formats = m_input.Below(4);
        static constexpr const char* payloads[] = {"97", "126", "99"};
        std::string line = Start("m=video", port) + " 98";
        for (std::size_t i = 0; i < formats; ++i) {
            line.append(" ").append(payloads[i]);
        }
        Line(line);
        if (role == VIDEOTYPE_PRESO) {
            Line("a=content:slides");
        } else if (m_input.Byte() % 2 != 0) {
            Line("a=content:main");
        }
        const Common common = Attributes(port);
        Line("a=rtpmap:98 VP8/90000");
        RemoteSDP& wanted = m_scenario.wanted;
        VideoParms& stream = role == VIDEOTYPE_PRESO ? wanted.m_VideoPreso : wanted.m_VideoMain;
        VideoParms ignored;
        const bool isTaken = !stream.fIsVideoValid;
        bool isDone = false;
        for (std::size_t i = 0; i < formats; ++i) {
            H264(payloads[i], isTaken ? stream : ignored, isDone);
        }
        if (!isTaken) {
            return;
        }
        stream.eVideoCodec = PAYLOAD_H264;
        stream.eVideoType = role;
        stream.iVideoRTPPort = port;
        stream.strVideoIPAddr = common.address;
        stream.fVideoSend = port != 0 && common.fSend;
        stream.fVideoRecv = port != 0 && common.fRecv;
        stream.fIsVideoValid = true;
        // The presentation shares the bandwidth of main video.
        m_sum += role == VIDEOTYPE_MAIN ? common.tias : 0;
        StoreKey(common, role == VIDEOTYPE_MAIN ? baseSDP::SRTP_VIDEO : baseSDP::SRTP_VIDEO_PRESO);
    }

    void FloorControl() {
        static constexpr const char* roles[] = {"c-s", "s-only", "c-only"};
        const std::int32_t port = m_input.Pick(kPorts);
        const std::uint8_t ids = m_input.Byte();
        const std::size_t role = m_input.Below(4);
        Line("m=application " + std::to_string(port) + (ids % 2 == 0 ? " UDP/BFCP *" : " TCP/TLS/BFCP *"));
        Attributes(port);
        if (role < 3) {
            Line(std::string("a=floorctrl:") + roles[role]);
        }
        Line("a=floorid:2 mstrm:9");
        Line("a=confid:" + std::to_string(ids));
        Line("a=userid:" + std::to_string(ids + 1));
        RemoteSDP& wanted = m_scenario.wanted;
        wanted.iVideoPresoControlPort = port;
        wanted.iBfcpConfid = ids;
        wanted.iBfcpUserid = ids + 1;
        wanted.fBfcpIsServer = role == 1;
    }

    Input& m_input;
    std::uint64_t m_secret;
    std::int32_t m_codecs;
    Scenario m_scenario;
    std::string m_sessionAddress;
    bool m_hasSessionBandwidth = false;
    std::int32_t m_sessionBandwidth = 0;
    std::int32_t m_sum = 0;
    bool m_hasAudio = false;
};

} // namespace

Scenario MakeScenario(Input& input, std::uint64_t secret, std::int32_t codecs) {
    Scenario scenario = Maker(input, secret, codecs).Make();
    if (scenario.firstMedia == 0) {
        scenario.firstMedia = scenario.lines.size();
    }
    return scenario;
}

std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text.append(line).append("\r\n");
    }
    return text;
}

} // namespace fuzz
