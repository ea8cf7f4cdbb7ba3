// Numbers are read and written as they are up to the limits of their type, texts at any length, lists with
// any number of members. The values are those at which a narrower type or a fixed buffer would give another
// result.
#include "Law.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using namespace support;

namespace {

constexpr std::int64_t kNumbers[] = {1,     127,   128,   255,      256,      32767,
                                     32768, 65535, 65536, 16777215, 16777216, 2147483647};
constexpr std::size_t kLengths[] = {1, 15, 16, 17, 255, 256, 257, 4095, 4096, 4097, 65535, 65536, 65537};
constexpr std::size_t kCounts[] = {1, 8, 9, 127, 128, 255, 256, 257, 300, 4097};

/// The text with every "@" replaced.
std::string With(const std::string& pattern, const std::string& value) {
    std::string text;
    for (const char c : pattern) {
        text += c == '@' ? value : std::string(1, c);
    }
    return text;
}

const std::string kAudio = "m=audio 5000 RTP/AVP 0\r\n";
const std::string kVideo = "m=video 5002 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";
const std::string kFloor = "m=application 5006 UDP/BFCP *\r\n";

struct Parsed {
    explicit Parsed(const std::string& text) {
        Start(handler, PresentationLocal());
        handler.ParseTheSDP(text, remote);
    }
    const MediaSession& Section() const { return *handler.vecRemoteMediaSession.at(0); }

    SDPHandler handler;
    RemoteSDP remote;
};

TEST(LawBorder, EveryNumberIsReadAsItIs) {
    const struct {
        std::string pattern;
        std::int64_t (*read)(const Parsed&);
    } rows[] = {
        {"m=audio @ RTP/AVP 0\r\n", [](const Parsed& p) -> std::int64_t { return p.remote.iAudioRTPPort; }},
        {"m=video @ RTP/AVP 97\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iVideoRTPPort; }},
        {"m=video @ RTP/AVP 97\r\na=content:slides\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoPreso.iVideoRTPPort; }},
        {"m=application @ UDP/BFCP *\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.iVideoPresoControlPort; }},
        {"m=text @ RTP/AVP 97\r\n", [](const Parsed& p) -> std::int64_t { return p.Section().iPort; }},
        {"m=audio 5000 RTP/AVP @\r\na=rtpmap:@ G7221/16000\r\na=fmtp:@ bitrate=32000\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.iAudioPayload; }},
        {"m=audio 5000 RTP/AVP @\r\na=rtpmap:@ telephone-event/8000\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.iDTMFPayload; }},
        {"m=video 5002 RTP/AVP @\r\na=rtpmap:@ H264/90000\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iVideoPayload; }},
        {kVideo + "a=fmtp:97 max-mbps=@\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iFmtpMaxMbps; }},
        {kVideo + "a=fmtp:97 max-fs=@\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iFmtpMaxFrameSize; }},
        {kVideo + "a=fmtp:97 max-br=@\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iFmtpMaxBitRate; }},
        {kVideo + "a=fmtp:97 packetization-mode=@\r\n",
         [](const Parsed& p) -> std::int64_t { return p.remote.m_VideoMain.iFmtpPacketizationMode; }},
        {kFloor + "a=confid:@\r\n", [](const Parsed& p) -> std::int64_t { return p.remote.iBfcpConfid; }},
        {kFloor + "a=userid:@\r\n", [](const Parsed& p) -> std::int64_t { return p.remote.iBfcpUserid; }},
        {kAudio + "b=TIAS:@\r\n", [](const Parsed& p) -> std::int64_t { return p.remote.iMaxBandwidth; }},
        {kAudio + "a=crypto:@ AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n",
         [](const Parsed& p) -> std::int64_t { return p.Section().iCryptoTag; }},
    };
    for (const auto& row : rows) {
        for (const std::int64_t number : kNumbers) {
            EXPECT_EQ(row.read(Parsed(With(row.pattern, std::to_string(number)))), number) << row.pattern;
        }
    }
    for (const std::int64_t kilobits : {1, 127, 128, 255, 256, 32767, 32768, 65535, 65536, 2147483}) {
        const Parsed parsed("b=AS:" + std::to_string(kilobits) + "\r\n" + kAudio);
        EXPECT_EQ(parsed.remote.iMaxBandwidth, kilobits * 1000);
    }
}

TEST(LawBorder, EveryNumberIsWrittenAsItIs) {
    const struct {
        std::function<void(LocalSDP&, std::int32_t)> set;
        std::string line;
    } rows[] = {
        {[](LocalSDP& l, std::int32_t n) { l.iAudioRTPPort = n; }, "m=audio @ RTP/AVP "},
        {[](LocalSDP& l, std::int32_t n) { l.m_VideoMain.iVideoRTPPort = n; }, "m=video @ RTP/AVP "},
        {[](LocalSDP& l, std::int32_t n) { l.m_VideoPreso.iVideoRTPPort = n; }, "m=video @ RTP/AVP "},
        {[](LocalSDP& l, std::int32_t n) { l.iVideoPresoControlPort = n; }, "m=application @ UDP/BFCP *\r\n"},
        {[](LocalSDP& l, std::int32_t n) { l.iVideoPayloadMode1 = n; }, "a=rtpmap:@ H264/90000\r\n"},
        {[](LocalSDP& l, std::int32_t n) { l.iVideoPayloadMode0 = n; }, "a=rtpmap:@ H264/90000\r\n"},
        {[](LocalSDP& l, std::int32_t n) { l.m_VideoMain.iFmtpMaxMbps = n; }, "max-mbps=@"},
        {[](LocalSDP& l, std::int32_t n) { l.m_VideoMain.iFmtpMaxBitRate = n; }, "max-br=@"},
    };
    for (const auto& row : rows) {
        for (const std::int64_t number : kNumbers) {
            LocalSDP local = PresentationLocal();
            row.set(local, static_cast<std::int32_t>(number));
            SDPHandler h;
            Start(h, local);
            h.SetBfcpSupport(true);
            EXPECT_NE(h.GetLocalSDP().find(With(row.line, std::to_string(number))), std::string::npos)
                << row.line << number;
        }
    }
}

TEST(LawBorder, EveryTextIsKeptInItsWholeLength) {
    const std::string crypto = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + std::string(40, 'A');
    const struct {
        std::string pattern;
        std::string kept;
        std::string (*read)(const Parsed&);
    } rows[] = {
        {"c=IN IP4 @\r\n" + kAudio, "@", [](const Parsed& p) { return p.remote.strAudioIPAddr; }},
        {"c=IN IP4 @\r\n" + kVideo, "@", [](const Parsed& p) { return p.remote.m_VideoMain.strVideoIPAddr; }},
        {kAudio + "c=IN IP4 @\r\n", "@", [](const Parsed& p) { return p.remote.strAudioIPAddr; }},
        {"b=AS:@\r\n" + kAudio, "@", [](const Parsed& p) { return p.handler.strMaxSessionBandwidth; }},
        {kAudio + "b=TIAS:@\r\n", "@", [](const Parsed& p) { return p.Section().strMaxBandwidth; }},
        {"m=@ 5000 RTP/AVP 0\r\n", "m=@ 5000 RTP/AVP 0",
         [](const Parsed& p) { return p.Section().strFullMLine; }},
        {"m=audio 5000 RTP/AVP @\r\n", "@",
         [](const Parsed& p) { return p.Section().vecRtpMap.at(0)->strPayload; }},
        {kAudio + "a=rtpmap:0 @\r\n", "@",
         [](const Parsed& p) { return p.Section().vecRtpMap.at(0)->strEncodingName; }},
        {kAudio + "a=fmtp:0 @\r\n", "@",
         [](const Parsed& p) { return p.Section().vecRtpMap.at(0)->vecFmtpParms.at(0); }},
        {kAudio + crypto + "@\r\n", std::string(40, 'A') + "@",
         [](const Parsed& p) { return p.Section().strBase64Key; }},
        {kFloor + "a=floorctrl:@\r\n", "@", [](const Parsed& p) { return p.Section().strFloorctrl; }},
        {kAudio + "a=ice-ufrag:@\r\n", "a=ice-ufrag:@",
         [](const Parsed& p) { return p.Section().striceufrag; }},
        {kAudio + "a=ice-pwd:@\r\n", "a=ice-pwd:@", [](const Parsed& p) { return p.Section().stricepwd; }},
        {kAudio + "a=candidate:@\r\n", "a=candidate:@",
         [](const Parsed& p) { return p.Section().vecCandidate.at(0); }},
    };
    for (const auto& row : rows) {
        for (const std::size_t length : kLengths) {
            const std::string text = std::string(length - 1, 'x') + "y";
            EXPECT_TRUE(row.read(Parsed(With(row.pattern, text))) == With(row.kept, text))
                << row.pattern << " with " << length;
        }
    }
}

TEST(LawBorder, EveryMemberOfAListIsKept) {
    for (const std::size_t count : kCounts) {
        std::string candidates;
        std::string formats;
        std::string parameters;
        std::string sections;
        for (std::size_t n = 0; n < count; ++n) {
            const std::string number = std::to_string(n);
            candidates += "a=candidate:" + number + "\r\n";
            formats += " " + number;
            parameters += (n == 0 ? "p" : ";p") + number;
            sections += "m=text " + number + " RTP/AVP 98\r\n";
        }
        const Parsed candidate(kAudio + candidates);
        const Parsed format("m=audio 5000 RTP/AVP" + formats + "\r\n");
        const Parsed parameter(kAudio + "a=fmtp:0 " + parameters + "\r\n");
        const Parsed section(sections);
        ASSERT_EQ(candidate.Section().vecCandidate.size(), count);
        ASSERT_EQ(format.Section().vecRtpMap.size(), count);
        ASSERT_EQ(parameter.Section().vecRtpMap.at(0)->vecFmtpParms.size(), count);
        ASSERT_EQ(section.handler.GetRemoteSections().size(), count);
        for (std::size_t n = 0; n < count; ++n) {
            const std::string number = std::to_string(n);
            EXPECT_EQ(candidate.Section().vecCandidate[n], "a=candidate:" + number);
            EXPECT_EQ(format.Section().vecRtpMap[n]->strPayload, number);
            EXPECT_EQ(parameter.Section().vecRtpMap[0]->vecFmtpParms[n], "p" + number);
            EXPECT_EQ(section.handler.vecRemoteMediaSession[n]->iPort, static_cast<std::int32_t>(n));
        }
    }
}

// Every number of sections served, and every number of sections and formats of them that is declined.
TEST(LawBorder, EverySurplusSectionIsDeclinedWithAllItsFormats) {
    for (const std::size_t count : kCounts) {
        for (const std::size_t served :
             {std::size_t{0}, std::size_t{2}, count / 2, count - 1, count, count + 256}) {
            SDPHandler h;
            Start(h, AudioLocal());
            h.SetMaxSupportedSessions(static_cast<std::uint32_t>(served));
            std::string text;
            std::string declined;
            for (std::size_t n = 0; n < count; ++n) {
                const std::string formats = " RTP/AVP " + std::to_string(n) + "\r\n";
                text += "m=text 5000" + formats;
                declined += n < served ? "" : "m=text 0" + formats;
            }
            RemoteSDP remote;
            h.ParseTheSDP(text, remote);
            const std::string answer = h.GetLocalSDP();
            const std::size_t begin = answer.find("m=text");
            EXPECT_TRUE((begin == std::string::npos ? "" : answer.substr(begin)) == declined)
                << count << " sections, " << served << " served";
        }
        std::string formats;
        for (std::size_t n = 0; n < count; ++n) {
            formats += " " + std::to_string(n);
        }
        SDPHandler h;
        Start(h, AudioLocal());
        h.SetMaxSupportedSessions(0);
        RemoteSDP remote;
        h.ParseTheSDP("m=text 5000 RTP/AVP" + formats + "\r\nc=IN IP4 " + std::string(count, 'a') + "\r\n",
                      remote);
        const std::string answer = h.GetLocalSDP();
        EXPECT_TRUE(answer.substr(answer.find("m=text")) ==
                    "m=text 0 RTP/AVP" + formats + "\r\nc=IN IP4 " + std::string(count, 'a') + "\r\n")
            << count;
    }
}

// No address has a meaning of its own: not the ones for a stream on hold, for any host or for this one.
TEST(LawBorder, EveryAddressIsTakenAsItIs) {
    for (const char* const address : {"0.0.0.0", "::", "127.0.0.1", "::1", "255.255.255.255", "0", "-", "*",
                                      "224.2.1.1/127/3", "host.invalid", "198.51.100.1:5000"}) {
        const std::string line = "c=IN IP4 " + std::string(address) + "\r\n";
        const Parsed session(line + kAudio + kVideo);
        EXPECT_EQ(session.handler.strSessionIPAddr, address);
        EXPECT_EQ(session.remote.strAudioIPAddr, address);
        EXPECT_EQ(session.remote.m_VideoMain.strVideoIPAddr, address);
        const Parsed section("c=IN IP4 192.0.2.9\r\n" + kAudio + line + kVideo);
        EXPECT_EQ(section.remote.strAudioIPAddr, address);
        EXPECT_EQ(section.remote.m_VideoMain.strVideoIPAddr, "192.0.2.9");
        LocalSDP local = AudioLocal();
        local.strDefaultIPAddr = address;
        SDPHandler h;
        Start(h, local);
        EXPECT_NE(h.GetLocalSDP().find("\r\n" + line), std::string::npos);
    }
}

} // namespace
