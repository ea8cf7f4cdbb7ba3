// Keys that are made, given and shown.
#include "Keys.h"
#include "RunTool.h"

namespace {

using cmsdp::BuiltInCapabilities;
using cmsdp::Capabilities;
using cmsdp::InlineKey;
using cmsdp::KeyIsZero;
using cmsdp::MakeMissingKeys;
using cmsdp::SetInlineKey;
using Quor::media::rtp::CryptoParams;

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

TEST(Keys, NoneIsMadeWithoutSrtp) {
    Capabilities c = BuiltInCapabilities();
    MakeMissingKeys(c);
    EXPECT_TRUE(KeyIsZero(c.local, baseSDP::SRTP_AUDIO));
    EXPECT_TRUE(KeyIsZero(c.local, baseSDP::SRTP_VIDEO));
    EXPECT_TRUE(KeyIsZero(c.local, baseSDP::SRTP_VIDEO_PRESO));
}

TEST(Keys, EachStreamGetsItsOwn) {
    Capabilities c = BuiltInCapabilities();
    c.srtp = true;
    MakeMissingKeys(c);
    const std::string audio = InlineKey(c.local, baseSDP::SRTP_AUDIO);
    const std::string video = InlineKey(c.local, baseSDP::SRTP_VIDEO);
    const std::string slides = InlineKey(c.local, baseSDP::SRTP_VIDEO_PRESO);
    EXPECT_FALSE(KeyIsZero(c.local, baseSDP::SRTP_AUDIO));
    EXPECT_NE(audio, video);
    EXPECT_NE(video, slides);
    EXPECT_NE(slides, audio);
}

TEST(Keys, EachRunGetsItsOwn) {
    Capabilities first = BuiltInCapabilities();
    Capabilities second = BuiltInCapabilities();
    first.srtp = second.srtp = true;
    MakeMissingKeys(first);
    MakeMissingKeys(second);
    EXPECT_NE(InlineKey(first.local, baseSDP::SRTP_AUDIO), InlineKey(second.local, baseSDP::SRTP_AUDIO));
}

TEST(Keys, AGivenKeyStands) {
    Capabilities c = BuiltInCapabilities();
    c.srtp = true;
    ASSERT_TRUE(SetInlineKey(c.local, baseSDP::SRTP_VIDEO, kKey));
    c.keyGiven[baseSDP::SRTP_VIDEO] = true;
    MakeMissingKeys(c);
    EXPECT_EQ(InlineKey(c.local, baseSDP::SRTP_VIDEO), kKey);
}

TEST(Keys, AStreamWithoutASuiteGetsNone) {
    Capabilities c = BuiltInCapabilities();
    c.srtp = true;
    c.local.cryptoAlgo[baseSDP::SRTP_AUDIO] = CryptoParams::CRYPTO_NONE;
    MakeMissingKeys(c);
    EXPECT_TRUE(KeyIsZero(c.local, baseSDP::SRTP_AUDIO));
    EXPECT_FALSE(KeyIsZero(c.local, baseSDP::SRTP_VIDEO));
}

TEST(Keys, AWrongTextChangesNothing) {
    Capabilities c = BuiltInCapabilities();
    ASSERT_TRUE(SetInlineKey(c.local, baseSDP::SRTP_AUDIO, kKey));
    for (const char* wrong :
         {"", "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGV", "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVzz",
          "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubG==", "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubG z",
          "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubG-_"}) {
        EXPECT_FALSE(SetInlineKey(c.local, baseSDP::SRTP_AUDIO, wrong)) << wrong;
        EXPECT_EQ(InlineKey(c.local, baseSDP::SRTP_AUDIO), kKey);
    }
}

class MadeKey : public tool::ToolTest {};

TEST_F(MadeKey, IsNewInEveryRun) {
    Write("me.json", R"({"srtp": true})");
    const tool::Result first = Cmsdp({"offer", "--show-secrets", "--local", "me.json"});
    const tool::Result second = Cmsdp({"offer", "--show-secrets", "--local", "me.json"});
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
