// Hostile numbers: too large, signed, fractions, other notations, sums that overflow.
#include "Hostile.h"

#include <functional>

namespace {

using namespace hostile;

/// A number as a far end may write it, and the values that the two ways of reading return.
struct Number {
    const char* written;
    std::int32_t prefix; ///< value of its longest numeric prefix, cut to 32 bits
    bool isDigits;       ///< true if it consists of digits only, which most fields require
};

const Number kNumbers[] = {
    {"0", 0, true},
    {"1", 1, true},
    {"007", 7, true},
    {"0000000000000000000000000000000000000001", 1, true},
    {"32768", 32768, true},
    {"65535", 65535, true},
    {"65536", 65536, true},
    {"2147483647", 2147483647, true},
    {"2147483648", -2147483647 - 1, true},
    {"4294967295", -1, true},
    {"4294967296", 0, true},
    {"4294967303", 7, true},
    {"9223372036854775807", -1, true},
    {"9223372036854775808", -1, true},
    {"18446744073709551615", -1, true},
    {"18446744073709551616", -1, true},
    {"1234567890123456789012345678901234567890", -1, true},
    {"-1", -1, false},
    {"-2147483649", 2147483647, false},
    {"-9223372036854775809", 0, false},
    {"+1", 1, false},
    {"0x10", 0, false},
    {"1.5", 1, false},
    {"1e3", 1, false},
    {"1,000", 1, false},
    {"x", 0, false},
};

/// The value of a field that accepts only digits; any other text leaves its previous value.
std::int32_t Strict(const Number& number, std::int32_t before) {
    return number.isDigits ? number.prefix : before;
}

/// Reads the text and expects the record of kConference with the changes of `change`.
void ExpectRecord(const std::string& text, const std::function<void(RemoteSDP&)>& change) {
    Endpoint usual;
    usual.handler.ParseTheSDP(kConference, usual.remote);
    change(usual.remote);
    Endpoint near;
    EXPECT_EQ(near.handler.ParseTheSDP(text, near.remote), 0);
    EXPECT_TEXT(support::Describe(near.remote), support::Describe(usual.remote));
    Outcome(text);
}

TEST(Hostile, C25_NumbersOfPortsAndPayloads) {
    for (const Number& number : kNumbers) {
        SCOPED_TRACE(number.written);
        const std::string written = number.written;
        const bool isOpen = number.prefix != 0;
        ExpectRecord(With("m=video 20386", "m=video " + written), [&](RemoteSDP& remote) {
            remote.m_VideoMain.iVideoRTPPort = number.prefix;
            remote.m_VideoMain.fVideoRecv = isOpen;
        });
        ExpectRecord(With("m=application 20390", "m=application " + written),
                     [&](RemoteSDP& remote) { remote.iVideoPresoControlPort = number.prefix; });
        ExpectRecord(
            Replaced(With("9 0 101", "9 0 " + written), "a=rtpmap:101 ", "a=rtpmap:" + written + " "),
            [&](RemoteSDP& remote) { remote.iDTMFPayload = number.prefix; });
    }
}

TEST(Hostile, C25_NumbersOfFloorControlAndTags) {
    for (const Number& number : kNumbers) {
        SCOPED_TRACE(number.written);
        const std::string written = number.written;
        ExpectRecord(With("a=confid:15", "a=confid:" + written),
                     [&](RemoteSDP& remote) { remote.iBfcpConfid = Strict(number, 0); });
        ExpectRecord(With("a=userid:16", "a=userid:8\r\na=userid:" + written),
                     [&](RemoteSDP& remote) { remote.iBfcpUserid = Strict(number, 8); });
        Endpoint near;
        near.handler.ParseTheSDP(With("a=crypto:2 ", "a=crypto:" + written + " "), near.remote);
        EXPECT_EQ(near.handler.vecRemoteMediaSession[1]->iCryptoTag, Strict(number, 1));
        EXPECT_TEXT(LineOf(near.handler.AddCrypto(baseSDP::SRTP_VIDEO), "a=crypto:"),
                    "a=crypto:" + std::to_string(Strict(number, 1)) +
                        " AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0");
        ExpectAsFresh(near.handler);
    }
}

TEST(Hostile, C25_NumbersOfFormatParameters) {
    for (const Number& number : kNumbers) {
        SCOPED_TRACE(number.written);
        const std::string written = number.written;
        ExpectRecord(With("max-mbps=108000", "max-mbps=" + written),
                     [&](RemoteSDP& remote) { remote.m_VideoMain.iFmtpMaxMbps = Strict(number, 0); });
        ExpectRecord(With("max-fs=3601", "max-fs=" + written),
                     [&](RemoteSDP& remote) { remote.m_VideoMain.iFmtpMaxFrameSize = Strict(number, 0); });
        ExpectRecord(With("max-br=1500", "max-br=" + written),
                     [&](RemoteSDP& remote) { remote.m_VideoPreso.iFmtpMaxBitRate = Strict(number, 0); });
        ExpectRecord(
            With("max-br=1500;packetization-mode=1", "max-br=1500;packetization-mode=" + written),
            [&](RemoteSDP& remote) { remote.m_VideoPreso.iFmtpPacketizationMode = Strict(number, 0); });
    }
}

TEST(Hostile, C25_NumbersOfBandwidth) {
    for (const Number& number : kNumbers) {
        SCOPED_TRACE(number.written);
        const std::string written = number.written;
        // Both the sum and the product wrap (G05).
        const auto strict = static_cast<std::uint32_t>(Strict(number, 0));
        ExpectRecord(With("b=TIAS:64000", "b=TIAS:" + written), [&](RemoteSDP& remote) {
            remote.iMaxBandwidth = static_cast<std::int32_t>(strict + 936000U);
        });
        ExpectRecord(With("t=0 0", "b=AS:" + written + "\r\nt=0 0"), [&](RemoteSDP& remote) {
            remote.iMaxBandwidth = static_cast<std::int32_t>(strict * 1000U);
        });
    }
}

TEST(Hostile, C25_BlankInFrontOfANumber) {
    const auto untouched = [](RemoteSDP&) {};
    ExpectRecord(With("m=video 20386", "m=video  20386"), untouched);
    ExpectRecord(With("a=confid:15", "a=confid:15\r\na=confid: 1"), untouched);
    ExpectRecord(With("a=userid:16", "a=userid:16\r\na=userid: 1"), untouched);
    ExpectRecord(With("max-mbps=108000", "max-mbps= 1"),
                 [](RemoteSDP& remote) { remote.m_VideoMain.iFmtpMaxMbps = 0; });
    ExpectRecord(With("max-fs=3601", "max-fs= 1"),
                 [](RemoteSDP& remote) { remote.m_VideoMain.iFmtpMaxFrameSize = 0; });
    ExpectRecord(With("max-br=1500", "max-br= 1"),
                 [](RemoteSDP& remote) { remote.m_VideoPreso.iFmtpMaxBitRate = 0; });
    ExpectRecord(With("b=TIAS:64000", "b=TIAS: 1"), [](RemoteSDP& remote) { remote.iMaxBandwidth = 936000; });
    ExpectRecord(With("t=0 0", "b=AS: 1\r\nt=0 0"), [](RemoteSDP& remote) { remote.iMaxBandwidth = 0; });
}

TEST(Hostile, C26_PayloadNumbersBeyondSevenBits) {
    struct Row {
        const char* written;
        std::int32_t read;
    };
    for (const Row& row : {Row{"127", 127}, Row{"128", 128}, Row{"255", 255}, Row{"256", 256},
                           Row{"65535", 65535}, Row{"4294967296", 0}, Row{"999999999999999999999", -1}}) {
        const std::string written = row.written;
        // Outcome also limits the allocated bytes: no number is used as a size.
        ExpectRecord(
            Replaced(With("20386 RTP/SAVP 109", "20386 RTP/SAVP " + written),
                     "a=rtpmap:109 H264/90000\r\na=fmtp:109 profile-level-id=42001F",
                     "a=rtpmap:" + written + " H264/90000\r\na=fmtp:" + written + " profile-level-id=42001F"),
            [&](RemoteSDP& remote) { remote.m_VideoMain.iVideoPayload = row.read; });
    }
}

TEST(Hostile, C27_ClockRateZero) {
    EXPECT_TEXT(Changes(With("G722/8000", "G722/0")), "-0 format 9 G722/8000\n"
                                                      "+0 format 9 G722/0\n");
    EXPECT_TEXT(Changes(With("telephone-event/8000", "telephone-event/0")),
                "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "+audio codec=64 payload=9 dtmf=0 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "-0 format 101 telephone-event/8000 [0-15]\n"
                "+0 format 101 telephone-event/0 [0-15]\n");
    EXPECT_TEXT(Changes(With("H264/90000\r\na=fmtp:109 profile-level-id=42001F",
                             "H264/0\r\na=fmtp:109 profile-level-id=42001F")),
                "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
                "port=20386 "
                "send=0 recv=1 valid=1\n"
                "+main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.3 port=20386 "
                "send=0 recv=1 valid=1\n"
                "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n"
                "+1 format 109 H264/0 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n");
    EXPECT_TEXT(
        Changes(Replaced(With("RTP/SAVP 9 0 101", "RTP/SAVP 104 9 0 101"), "a=rtpmap:9 G722/8000\r\n",
                         "a=rtpmap:9 G722/8000\r\na=rtpmap:104 G7221/0\r\na=fmtp:104 bitrate=32000\r\n")),
        "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
        "+0 line m=audio 20384 RTP/SAVP 104 9 0 101\n"
        "+0 format 104 G7221/0 [bitrate=32000]\n");
}

TEST(Hostile, C28_KilobitsThatOverflowAsBits) {
    const std::string session = "-session addr=192.0.2.2 bandwidth=\n+session addr=192.0.2.2 bandwidth=";
    struct Row {
        const char* written;
        const char* read;
    };
    for (const Row& row :
         {Row{"2147483", "2147483000"}, Row{"2147484", "-2147483296"}, Row{"4294967", "-296"},
          Row{"4294968", "704"}, Row{"2147483647", "-1000"}, Row{"2147483648", "0"}}) {
        EXPECT_TEXT(Changes(With("t=0 0", "b=AS:" + std::string(row.written) + "\r\nt=0 0")),
                    "-bandwidth=1000000\n+bandwidth=" + std::string(row.read) + "\n" + session + row.written +
                        "\n");
    }
}

TEST(Hostile, C28_SumOfSectionsThatOverflows) {
    EXPECT_TEXT(Changes(With("b=TIAS:64000", "b=TIAS:2147483647")),
                "-bandwidth=1000000\n"
                "+bandwidth=-2146547649\n"
                "-0 tias=64000 ctrl= conf=0 user=0\n"
                "+0 tias=2147483647 ctrl= conf=0 user=0\n");
    EXPECT_TEXT(
        Changes(Replaced(With("b=TIAS:64000", "b=TIAS:2147483648"), "b=TIAS:936000", "b=TIAS:2147483648")),
        "-bandwidth=1000000\n"
        "+bandwidth=0\n"
        "-0 tias=64000 ctrl= conf=0 user=0\n"
        "+0 tias=2147483648 ctrl= conf=0 user=0\n"
        "-1 tias=936000 ctrl= conf=0 user=0\n"
        "+1 tias=2147483648 ctrl= conf=0 user=0\n");
}

TEST(Hostile, C28_SessionBandwidthThatSaysNothing) {
    const std::string noLimit = "-bandwidth=1000000\n+bandwidth=0\n"
                                "-session addr=192.0.2.2 bandwidth=\n+session addr=192.0.2.2 bandwidth=";
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:0\r\nt=0 0")), noLimit + "0\n");
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:abc\r\nt=0 0")), noLimit + "abc\n");
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:-1\r\nt=0 0")), noLimit + "-1\n");
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:\r\nt=0 0")), "");
    EXPECT_TEXT(Changes(With("t=0 0", "b=X-y:1\r\nb=CT:1\r\nb=RS:1\r\nt=0 0")), "");
}

TEST(Hostile, C28_SeveralBandwidthLines) {
    const std::string five = "-bandwidth=1000000\n+bandwidth=5000\n"
                             "-session addr=192.0.2.2 bandwidth=\n+session addr=192.0.2.2 bandwidth=5\n";
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:9\r\nb=TIAS:7\r\nb=AS:5\r\nb=CT:3\r\nt=0 0")), five);
    EXPECT_TEXT(Changes(With("t=0 0", "b=AS:9\r\nb=X-AS:5\r\nt=0 0")), five);
    EXPECT_TEXT(Changes(With("b=TIAS:64000", "b=AS:1\r\nb=TIAS:1\r\nb=TIAS:2\r\nb=X-y:1\r\nb=AS:7")),
                "-bandwidth=1000000\n"
                "+bandwidth=936002\n"
                "-0 tias=64000 ctrl= conf=0 user=0\n"
                "+0 tias=2 ctrl= conf=0 user=0\n");
}

} // namespace
