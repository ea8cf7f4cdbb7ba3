// Cuts of text.
#include "Words.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Base64Length;
using cmsdp::HoldsSdpLine;
using cmsdp::Listed;
using cmsdp::LooksLikeSdp;
using cmsdp::Quoted;
using cmsdp::Short;
using cmsdp::WordsOf;

using Words = std::vector<std::string_view>;

TEST(WordsOf, CutsAtRunsOfWhiteSpace) {
    EXPECT_EQ(WordsOf(" m=audio\t5004 \v\f RTP/AVP\n0\r"), (Words{"m=audio", "5004", "RTP/AVP", "0"}));
}

TEST(WordsOf, FindsNoneInBlanks) {
    EXPECT_EQ(WordsOf(""), Words{});
    EXPECT_EQ(WordsOf(" \t\r\n"), Words{});
}

TEST(LooksLikeSdp, ASmallLetterAndAnEqualsSignBehindBlanks) {
    EXPECT_TRUE(LooksLikeSdp("v=0"));
    EXPECT_TRUE(LooksLikeSdp(" \tz="));
    EXPECT_FALSE(LooksLikeSdp(""));
    EXPECT_FALSE(LooksLikeSdp("v"));
    EXPECT_FALSE(LooksLikeSdp("V=0"));
    EXPECT_FALSE(LooksLikeSdp("[12:00] v=0"));
}

TEST(Base64Length, CountsCharactersAndTheirPadding) {
    EXPECT_EQ(Base64Length(""), 0U);
    EXPECT_EQ(Base64Length("AZaz09+/"), 8U);
    EXPECT_EQ(Base64Length("AZaz-09"), 4U);
    EXPECT_EQ(Base64Length("_AZaz09"), 0U);
    EXPECT_EQ(Base64Length("AZ="), 3U);
    EXPECT_EQ(Base64Length("AZ==="), 4U);
    EXPECT_EQ(Base64Length("A=Z="), 2U);
    EXPECT_EQ(Base64Length("=="), 0U);
}

TEST(Base64Length, BytesBesideTheAlphabetEndIt) {
    for (const char c : {'@', '[', '`', '{', '.', ':', '*', ',', '\0', '\xc3'}) {
        EXPECT_EQ(Base64Length(std::string("A") + c + "A"), 1U) << static_cast<int>(c);
    }
}

TEST(Listed, NamesThePiecesAndCountsTheRest) {
    EXPECT_EQ(Listed({}, 2), "");
    EXPECT_EQ(Listed({"a", "b"}, 2), "a, b");
    EXPECT_EQ(Listed({"a", "b", "c", "d"}, 2), "a, b and 2 more");
}

TEST(Quoted, CutsBehindFortyBytes) {
    EXPECT_EQ(Quoted("short"), "\"short\"");
    EXPECT_EQ(Quoted("1234567890123456789012345678901234567890"),
              "\"1234567890123456789012345678901234567890\"");
    EXPECT_EQ(Quoted("1234567890123456789012345678901234567890x"),
              "\"1234567890123456789012345678901234567890...\"");
}

TEST(Short, CutsBehindAHundredBytes) {
    EXPECT_EQ(Short(std::string(100, 'x')), std::string(100, 'x'));
    EXPECT_EQ(Short(std::string(101, 'x')), std::string(100, 'x') + "...");
}

TEST(Short, LeavesEnoughOfAKeyToBeKnownForOne) {
    const std::string front(70, '.');
    const std::string key = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    EXPECT_EQ(Short(front + key), front + key);
    EXPECT_EQ(Short(front + key + "x"), front + key + "...");
    EXPECT_EQ(Short(front + key + ".x"), front + key + "...");
    EXPECT_EQ(Short(front + key.substr(1) + "." + key), front + key.substr(1, 30) + "...");
    EXPECT_EQ(Short(front + key.substr(2) + "==."), front + key.substr(2) + "==...");
    EXPECT_EQ(Short(front.substr(10) + key + "x"), front.substr(10) + key + "...");
    EXPECT_EQ(Short(front.substr(11) + key + "xy"), front.substr(11) + key + "x...");
    EXPECT_EQ(Short(front + ".............................." + key),
              front + ".............................." + "...");
}

TEST(Quoted, LeavesEnoughOfAKeyToBeKnownForOne) {
    EXPECT_EQ(Quoted("a=tool:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz c=x"),
              "\"a=tool:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz...\"");
}

TEST(HoldsSdpLine, WantsASmallLetterAndAnEqualsSign) {
    EXPECT_TRUE(HoldsSdpLine("v=0\r\n"));
    EXPECT_TRUE(HoldsSdpLine("INVITE sip:b@example.com SIP/2.0\r\n\r\nv=0\r\n"));
    EXPECT_TRUE(HoldsSdpLine(" \tm=audio 5004 RTP/AVP 0\r\n"));
    EXPECT_FALSE(HoldsSdpLine(""));
    EXPECT_FALSE(HoldsSdpLine("v=0"));
    EXPECT_FALSE(HoldsSdpLine("v=0\n"));
    EXPECT_FALSE(HoldsSdpLine("V=0\r\nvv=0\r\n=0\r\nv\r\n \r\n"));
    EXPECT_FALSE(HoldsSdpLine(std::string("\x7f"
                                          "ELF\2\1\1\0\0\r\n",
                                          11)));
}

} // namespace
