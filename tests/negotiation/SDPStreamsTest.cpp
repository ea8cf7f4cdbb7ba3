#include "Call.h"

using namespace call;

namespace {

/// An offer of audio alone with the given lines, answered; its stream.
Stream Audio(std::string_view lines, bool holds = false) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    side.Hold(holds);
    EXPECT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n" + std::string(lines))).isTaken);
    return side.Streams()[0];
}

TEST(Streams, DirectionsAreThisSides) {
    EXPECT_EQ(Line(Audio("")), "Start send receive 0/0 198.51.100.7:30000");
    EXPECT_EQ(Line(Audio("a=sendonly\n")),
              "Held receive 0/0 198.51.100.7:30000, the far end holds the stream");
    EXPECT_EQ(Line(Audio("a=recvonly\n")), "Start send 0/0 198.51.100.7:30000");
    EXPECT_EQ(Line(Audio("a=inactive\n")), "Held 0/0 198.51.100.7:30000, the far end holds the stream");
    EXPECT_EQ(Line(Audio("", true)), "Held send 0/0 198.51.100.7:30000, this side holds the stream");
    EXPECT_EQ(Line(Audio("a=sendonly\n", true)), "Held 0/0 198.51.100.7:30000, both sides hold the stream");
}

TEST(Streams, NothingIsSentToNowhere) {
    EXPECT_EQ(Line(Audio("c=IN IP4 0.0.0.0\n")),
              "Held receive 0/0 0.0.0.0:30000, the far end's address is none to send to");
    EXPECT_EQ(Line(Audio("c=IN IP6 ::\n")),
              "Held receive 0/0 :::30000, the far end's address is none to send to");
}

TEST(Streams, AnAddressIsOneThatCanBeSentTo) {
    constexpr struct {
        std::string_view connection;
        std::string_view line;
    } kCases[] = {
        {"IN IP4 0.0.0.0/127", "Held receive 0/0 0.0.0.0:30000, the far end's address is none to send to"},
        {"IN IP6 0:0:0:0:0:0:0:0",
         "Held receive 0/0 0:0:0:0:0:0:0:0:30000, the far end's address is none to send to"},
        {"IN IP4 198.51.100.1/127", "Start send receive 0/0 198.51.100.1:30000"},
        {"IN IP4 far.example", "Start send receive 0/0 far.example:30000"},
        {"IN IP4 192.0.2.1x", "NoAddress 0/0, the far end gives no address"},
        {"IN IP4 999.1.1.1", "NoAddress 0/0, the far end gives no address"},
        {"IN IP4 IP4", "NoAddress 0/0, the far end gives no address"},
        {"IN IP4", "NoAddress 0/0, the far end gives no address"},
    };
    for (const auto& one : kCases) {
        EXPECT_EQ(Line(Audio("c=" + std::string(one.connection) + "\n")), one.line);
    }
}

TEST(Streams, AnRtcpPlaceThatCannotBeUsedIsIgnored) {
    for (const std::string_view value : {"99999", "0", "-1", "x", "", "0 IN IP4 0.0.0.0", "9 IN IP4 0.0.0.0",
                                         "40001 IN IP4 999.1.1.1", "40001 IN IP6 ::"}) {
        const Stream stream = Audio("a=rtcp:" + std::string(value) + "\n");
        EXPECT_EQ(stream.rtcpAddress, "198.51.100.7") << value;
        EXPECT_EQ(stream.rtcpPort, 30001) << value;
    }
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Far("m=audio 65535 RTP/AVP 0\n")).isTaken);
    EXPECT_EQ(side.Streams()[0].rtcpPort, 0);
    ASSERT_TRUE(side.Answer(Far("m=audio 65535 RTP/AVP 0\na=rtcp:65535\n")).isTaken);
    EXPECT_EQ(side.Streams()[0].rtcpPort, 65535);
}

TEST(Streams, RtcpAndPtimeAreRead) {
    const Stream usual = Audio("");
    EXPECT_EQ(usual.rtcpAddress, "198.51.100.7");
    EXPECT_EQ(usual.rtcpPort, 30001);
    EXPECT_EQ(usual.ptime, 0);
    const Stream port = Audio("a=rtcp:40001\na=ptime:30\n");
    EXPECT_EQ(port.rtcpAddress, "198.51.100.7");
    EXPECT_EQ(port.rtcpPort, 40001);
    EXPECT_EQ(port.ptime, 30);
    const Stream place = Audio("a=rtcp:40001 IN IP4 203.0.113.5\n");
    EXPECT_EQ(place.rtcpAddress, "203.0.113.5");
}

TEST(Streams, LifetimeAndMkiOfTheirKeyAreKept) {
    SDPNegotiator side = Side(AudioOnly(), Srtp::Wanted);
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                                "inline:AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwd|2^20|1:4\n"))
                    .isTaken);
    EXPECT_EQ(side.Streams()[0].lifetime, "2^20");
    EXPECT_EQ(side.Streams()[0].mki, "1:4");
}

TEST(Streams, LevelsSayWhatTheyCarry) {
    struct {
        std::string_view parms;
        std::array<int, 4> rates;
    } const cases[] = {
        {"", {0, 0, 0, 0}},
        {"profile-level-id=42e00d", {0, 0, 0, 30}},
        {"profile-level-id=42e01f", {0, 30, 90, 172}},
        {"profile-level-id=42e01f;max-fs=8160;max-mbps=245760", {30, 68, 172, 172}},
        {"profile-level-id=42e028", {30, 68, 172, 172}},
        {"profile-level-id=42e00d;max-mbps=100", {0, 0, 0, 30}},
    };
    for (const auto& one : cases) {
        SDPNegotiator side = Side(Local());
        ASSERT_TRUE(side.Answer(Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 " +
                                    std::string(one.parms) + "\n"))
                        .isTaken);
        for (std::size_t size = 0; size < one.rates.size(); ++size) {
            EXPECT_EQ(side.Streams()[0].pictures[size].rate, one.rates[size]) << one.parms << " " << size;
        }
    }
}

TEST(Streams, TheModeIsTheOneOfTheFormat) {
    constexpr struct {
        std::string_view parms;
        int mode;
        int maxMbps;
        int maxFs;
    } kCases[] = {
        {"profile-level-id = 42801f; packetization-mode = 1; max-mbps = 245000; max-fs = 9000", 1, 245000,
         9000},
        {"packetization-mode=0;x-packetization-mode=1;x-max-mbps=777777", 0, 0, 0},
        {"packetization-mode=0;packetization-mode=1", 0, 0, 0},
        {"packetization-mode=1;max-mbps=99999999999", 1, 0, 0},
    };
    for (const auto& one : kCases) {
        SCOPED_TRACE(one.parms);
        for (const bool isRepaired : {true, false}) {
            SDPNegotiator side = Side(Local());
            side.SetRepairs(isRepaired);
            ASSERT_TRUE(side.Answer(Far("m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\na=fmtp:97 " +
                                        std::string(one.parms) + "\n"))
                            .isTaken);
            const Stream& stream = side.Streams()[0];
            EXPECT_EQ(stream.codec, one.mode == 1 ? PAYLOAD_H264 : PAYLOAD_H264_PACKETIZATION_0);
            EXPECT_EQ(stream.packetizationMode, one.mode);
            if (isRepaired) {
                EXPECT_EQ(stream.maxMbps, one.maxMbps);
                EXPECT_EQ(stream.maxFs, one.maxFs);
            }
        }
    }
}

TEST(Streams, WhatChangedIsTold) {
    SDPNegotiator side = Side(AudioOnly());
    const auto changes = [&side](std::string_view lines) {
        EXPECT_TRUE(side.Answer(Far(lines)).isTaken);
        return side.Streams()[0].changes;
    };
    EXPECT_EQ(changes("m=audio 30000 RTP/AVP 0\n"), SDPNegotiator::kStarted);
    EXPECT_EQ(changes("m=audio 30000 RTP/AVP 0\n"), SDPNegotiator::kNothing);
    EXPECT_EQ(changes("m=audio 30002 RTP/AVP 0\n"), SDPNegotiator::kAddress);
    EXPECT_EQ(changes("m=audio 30002 RTP/AVP 98\na=rtpmap:98 PCMU/8000\n"), SDPNegotiator::kCodec);
    EXPECT_EQ(changes("m=audio 30002 RTP/AVP 98\na=rtpmap:98 PCMU/8000\na=ptime:20\na=sendonly\n"),
              SDPNegotiator::kLimits | SDPNegotiator::kDirection);
    EXPECT_EQ(
        changes("m=audio 30002 RTP/AVP 98\na=rtpmap:98 PCMU/8000\na=ptime:20\na=sendonly\na=ice-ufrag:x\n"),
        SDPNegotiator::kControl);
    EXPECT_EQ(changes("m=audio 0 RTP/AVP 0\n"), SDPNegotiator::kStopped);
}

TEST(Streams, AStreamThatTakesTheSectionOfAnotherStopsIt) {
    constexpr std::uint32_t replaced = SDPNegotiator::kStarted | SDPNegotiator::kStopped;
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    SDPNegotiator slides = Side(Local());
    ASSERT_TRUE(slides.Answer(Far(video)).isTaken);
    ASSERT_TRUE(slides.Answer(Far(video + "a=content:slides\n")).isTaken);
    EXPECT_TEXT(Lines(slides), "Start receive 97/97 198.51.100.7:30002\n");
    EXPECT_EQ(slides.Streams()[0].role, VIDEOTYPE_PRESO);
    EXPECT_EQ(slides.Streams()[0].changes, replaced);
    SDPNegotiator audio = Side(Local());
    ASSERT_TRUE(audio.Answer(Far(video)).isTaken);
    ASSERT_TRUE(audio.Answer(Far("m=audio 30002 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(audio), "Start send receive 0/0 198.51.100.7:30002\n");
    EXPECT_EQ(audio.Streams()[0].changes, replaced);
}

// Audio stops, and main video goes to its section: there it is another stream than the one that ran before.
TEST(Streams, ARoleThatGoesToAnotherSectionStartsThere) {
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n" + video)).isTaken);
    ASSERT_TRUE(side.Answer(Far(video + "m=video 0 RTP/AVP 97\n")).isTaken);
    EXPECT_TEXT(Lines(side), R"(Start send receive 97/97 198.51.100.7:30002
DeclinedByThem, the far end's section has port 0
)");
    EXPECT_EQ(side.Streams()[0].changes, SDPNegotiator::kStarted | SDPNegotiator::kStopped);
    EXPECT_EQ(side.Streams()[1].changes, SDPNegotiator::kStopped);
}

TEST(Streams, ANumberKeepsItsMeaning) {
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 97\na=rtpmap:97 PCMU/8000\n")).isTaken);
    const auto other = side.Answer(Far("m=audio 30000 RTP/AVP 97\na=rtpmap:97 G722/8000\n"));
    EXPECT_FALSE(other.isTaken);
    EXPECT_EQ(other.reason, "this side supports no format of the section");
    EXPECT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 98\na=rtpmap:98 G722/8000\n")).isTaken);
}

} // namespace
