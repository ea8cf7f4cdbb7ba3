// The inline key text of crypto attributes, in both directions. The readable keys are those of the examples
// in RFC 4568; their texts were decoded with another base64 tool.
#include "SDPHandler.h"

#include "Expect.h"

#include <cstring>
#include <string>

namespace {

// Arrays with room after the 16 and 14 bytes, to see that nothing is written there.
struct Material {
    unsigned char key[20];
    unsigned char salt[20];
    Material() {
        std::memset(key, 0xEE, sizeof key);
        std::memset(salt, 0xDD, sizeof salt);
    }
};

bool Extract(const std::string& text, Material& material) {
    return ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), material.key, material.salt);
}

std::string Text(const unsigned char* bytes, std::size_t length) {
    return std::string(reinterpret_cast<const char*>(bytes), length);
}

void ExpectUntouched(const Material& material) {
    EXPECT_EQ(Text(material.key, 20), std::string(20, '\xEE'));
    EXPECT_EQ(Text(material.salt, 20), std::string(20, '\xDD'));
}

TEST(SRTPKey, ZeroBytesAreFortyLettersA) {
    const unsigned char key[16] = {};
    const unsigned char salt[14] = {};
    std::string text = "an older text";
    GetSRTPKey(text, key, salt);
    EXPECT_TEXT(text, "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA");

    Material material;
    EXPECT_TRUE(Extract(text, material));
    EXPECT_EQ(Text(material.key, 20), std::string(16, '\0') + std::string(4, '\xEE'));
    EXPECT_EQ(Text(material.salt, 20), std::string(14, '\0') + std::string(6, '\xDD'));
}

TEST(SRTPKey, KeyStandsBeforeSalt) {
    const unsigned char key[17] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 0xFF};
    const unsigned char salt[15] = {17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 0xFF};
    std::string text;
    GetSRTPKey(text, key, salt);
    EXPECT_TEXT(text, "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0e");
}

TEST(SRTPKey, WritesTheAlphabetWithPlusAndSlash) {
    unsigned char key[16];
    unsigned char salt[14];
    std::string text;
    std::memset(key, 0xFF, sizeof key);
    std::memset(salt, 0xFE, sizeof salt);
    GetSRTPKey(text, key, salt);
    EXPECT_TEXT(text, "//////////////////////7+/v7+/v7+/v7+/v7+");
    std::memset(key, 0xFB, sizeof key);
    std::memset(salt, 0xFB, sizeof salt);
    GetSRTPKey(text, key, salt);
    EXPECT_TEXT(text, "+/v7+/v7+/v7+/v7+/v7+/v7+/v7+/v7+/v7+/v7");
}

TEST(SRTPKey, ReplacesWhateverTheTextHeld) {
    const unsigned char zero[16] = {};
    for (const std::size_t length : {0U, 1U, 40U, 41U, 4000U}) {
        std::string text(length, 'z');
        GetSRTPKey(text, zero, zero);
        EXPECT_TEXT(text, "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA");
    }
}

TEST(SRTPKey, ReadsTheExampleOfTheStandard) {
    Material material;
    EXPECT_TRUE(Extract("WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz", material));
    EXPECT_TEXT(Text(material.key, 16), "YS___semctl () {");
    EXPECT_TEXT(Text(material.salt, 14), "\t220;}\n}\nunles");
    EXPECT_EQ(Text(material.key + 16, 4), std::string(4, '\xEE'));
    EXPECT_EQ(Text(material.salt + 14, 6), std::string(6, '\xDD'));
}

TEST(SRTPKey, WritesTheExampleOfTheStandard) {
    std::string text;
    GetSRTPKey(text, reinterpret_cast<const unsigned char*>("=-n@%^x!Bjufr9)?"),
               reinterpret_cast<const unsigned char*>(",#5h\\`=&]{qiPQ"));
    EXPECT_TEXT(text, "PS1uQCVeeCFCanVmcjkpPywjNWhcYD0mXXtxaVBR");
}

TEST(SRTPKey, EveryByteValueSurvivesTheRoundTrip) {
    for (int first = 0; first < 256; ++first) {
        unsigned char key[16];
        unsigned char salt[14];
        for (int i = 0; i < 16; ++i) {
            key[i] = static_cast<unsigned char>(first + i * 7);
        }
        for (int i = 0; i < 14; ++i) {
            salt[i] = static_cast<unsigned char>(first * 3 + i * 11);
        }
        std::string text;
        GetSRTPKey(text, key, salt);
        EXPECT_EQ(text.size(), 40U);
        EXPECT_EQ(text.find('='), std::string::npos);
        Material material;
        EXPECT_TRUE(Extract(text, material));
        EXPECT_EQ(Text(material.key, 16), Text(key, 16));
        EXPECT_EQ(Text(material.salt, 14), Text(salt, 14));
    }
}

TEST(SRTPKey, CharactersAfterTheFortiethAreIgnored) {
    for (const char* suffix : {"|2^31", "|2^20|1:4", "=", "A", "\n", "!!!!", " "}) {
        Material material;
        EXPECT_TRUE(Extract(std::string("WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz") + suffix, material));
        EXPECT_TEXT(Text(material.key, 16), "YS___semctl () {");
        EXPECT_TEXT(Text(material.salt, 14), "\t220;}\n}\nunles");
    }
}

TEST(SRTPKey, OneCharacterOutsideTheAlphabetFailsAndWritesNothing) {
    const std::string good = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    for (const char wrong : {'!', '-', '_', ' ', '|', '\0', '\x80', '\xFF'}) {
        for (const std::size_t at : {0U, 1U, 20U, 38U, 39U}) {
            std::string text = good;
            text[at] = wrong;
            Material material;
            EXPECT_FALSE(Extract(text, material)) << "byte " << int{wrong} << " at " << at;
            ExpectUntouched(material);
        }
    }
}

// Blanks in front are skipped by the decoder, so that four of them leave 27 bytes: decoded, but not a key.
TEST(SRTPKey, ATextThatDecodesToFewerThanThirtyBytesFailsAndWritesNothing) {
    Material material;
    EXPECT_FALSE(Extract("    WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVu", material));
    ExpectUntouched(material);
    EXPECT_FALSE(Extract("WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVu    ", material));
    ExpectUntouched(material);
}

// The decoder counts padding as zero bytes, so forty characters that end in "==" are thirty bytes.
TEST(SRTPKey, PaddingCountsAsZeroBytes) {
    Material material;
    EXPECT_TRUE(Extract("//////////////////////////////////////==", material));
    EXPECT_EQ(Text(material.key, 16), std::string(16, '\xFF'));
    EXPECT_EQ(Text(material.salt, 14), std::string(12, '\xFF') + std::string("\xF0\0", 2));
}

} // namespace
