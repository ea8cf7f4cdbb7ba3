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

} // namespace
