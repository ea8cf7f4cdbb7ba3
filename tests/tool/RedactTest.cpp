// Key texts in every place they can stand.
#include "Redact.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::Redact;
using cmsdp::Secrets;

constexpr const char* kKey = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

TEST(Redact, HidesTheKeyOfALine) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:") + kKey + "\r\na=sendrecv\r\n"),
              "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:***\r\na=sendrecv\r\n");
}

TEST(Redact, HidesLifetimeMkiAndASecondKeyWithIt) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 AEAD_AES_128_GCM inline:") + kKey + "|2^20|1:4;inline:" + kKey +
                     "|2^20|2:4 UNENCRYPTED_SRTP\r\n"),
              "a=crypto:1 AEAD_AES_128_GCM inline:*** UNENCRYPTED_SRTP\r\n");
}

TEST(Redact, HidesKeysInAnyLetterCase) {
    EXPECT_EQ(Redact(std::string("INLINE:") + kKey + " Inline:" + kKey), "INLINE:*** Inline:***");
}

TEST(Redact, HidesAKeyThatALostLineEndCarriedIntoAnotherLine) {
    EXPECT_EQ(Redact(std::string("m=video 5004 RTP/AVP 97\na=crypto:1 AEAD_AES_128_GCM inline:") + kKey +
                     "\na=x\r\n"),
              "m=video 5004 RTP/AVP 97\na=crypto:1 AEAD_AES_128_GCM inline:***\na=x\r\n");
}

TEST(Redact, HidesAKeyWhoseSevenCharactersAreNotInline) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 AES_CM_128_HMAC_SHA1_32 1234567") + kKey + " x\r\n"),
              "a=crypto:1 AES_CM_128_HMAC_SHA1_32 *** x\r\n");
}

TEST(Redact, HidesAKeyInThePlaceOfTheSuite) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 ") + kKey + " AEAD_AES_128_GCM x\r\n"),
              "a=crypto:1 *** *** x\r\n");
    EXPECT_EQ(Redact(std::string("m=x 0 y A=CRYPTO:1 ") + kKey + "\r\n"), "m=x 0 y A=CRYPTO:1 ***\r\n");
    EXPECT_EQ(Redact(std::string("a=crypto:1  inline:") + kKey + "\r\na=x y z\r\n"),
              "a=crypto:1  inline:***\r\na=x y z\r\n");
}

TEST(Redact, HidesAKeyInFrontOfAnother) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 AEAD_AES_128_GCM 1234567") + kKey + ";inline:" + kKey + "\r\n"),
              "a=crypto:1 AEAD_AES_128_GCM ***\r\n");
}

TEST(Redact, EachCryptoAttributeOfALineCountsFromItself) {
    EXPECT_EQ(Redact(std::string("a=crypto:1\na=crypto:2 AEAD_AES_128_GCM 1234567") + kKey + " x\r\n"),
              "a=crypto:1\n*** AEAD_AES_128_GCM *** x\r\n");
}

TEST(Redact, AWordOfManyAttributesCostsNoMore) {
    std::string word;
    for (int i = 0; i < 200000; ++i) {
        word += "a=crypto:";
    }
    EXPECT_EQ(Redact(word + " " + kKey), word + " ***");
}

TEST(Redact, KeepsAShortCryptoLineAndTheLineBehindIt) {
    EXPECT_EQ(Redact("a=crypto:1 AES_CM_128_HMAC_SHA1_32\r\na=sendrecv now\r\n"),
              "a=crypto:1 AES_CM_128_HMAC_SHA1_32\r\na=sendrecv now\r\n");
    EXPECT_EQ(Redact("a=crypto:"), "a=crypto:");
}

TEST(Redact, KeepsATextWithoutKeys) {
    EXPECT_EQ(Redact("v=0\r\nm=audio 0 RTP/AVP 0\r\n"), "v=0\r\nm=audio 0 RTP/AVP 0\r\n");
}

TEST(Redact, TwiceIsOnce) {
    const std::string once = Redact(std::string("a=crypto:1 AEAD_AES_128_GCM 1234567") + kKey +
                                    "\r\na=crypto:2 AEAD_AES_128_GCM inline:" + kKey);
    EXPECT_EQ(once, "a=crypto:1 AEAD_AES_128_GCM ***\r\na=crypto:2 AEAD_AES_128_GCM inline:***");
    EXPECT_EQ(Redact(once), once);
}

TEST(Redact, HidesThePasswordOfIce) {
    EXPECT_EQ(Redact("a=ice-ufrag:F7gI\r\na=ice-pwd:x9cml/YzichV2+XlhiMu8g\r\na=mid:0\r\n"),
              "a=ice-ufrag:F7gI\r\na=ice-pwd:***\r\na=mid:0\r\n");
    EXPECT_EQ(Redact("m=x 0 y\n\"A=Ice-Pwd:x9cml\" z"), "m=x 0 y\n\"A=Ice-Pwd:*** z");
    EXPECT_EQ(Redact("a=ice-pwd:"), "a=ice-pwd:");
}

TEST(Redact, HidesAManagedKey) {
    EXPECT_EQ(Redact("a=key-mgmt:mikey AQAFgM0X== x\r\na=mid:0\r\n"),
              "a=key-mgmt:mikey *** x\r\na=mid:0\r\n");
    EXPECT_EQ(Redact("a=key-mgmt:mikey\r\na=mid:0 x\r\n"), "a=key-mgmt:mikey\r\na=mid:0 x\r\n");
    EXPECT_EQ(Redact(std::string("a=key-mgmt:mikey inline:") + kKey), "a=key-mgmt:mikey inline:***");
}

TEST(Redact, HidesTheKeyOfAKeyLine) {
    EXPECT_EQ(Redact("k=base64:c2VjcmV0\r\nk=clear:two words\r\nk=prompt\r\n"),
              "k=base64:***\r\nk=clear:***\r\nk=prompt\r\n");
    EXPECT_EQ(Redact("> k=uri:http://x/ y\na=fmtp:96 pack=1:2"), "> k=uri:***\na=fmtp:96 pack=1:2");
    EXPECT_EQ(Redact("t=0 0k=CLEAR:two words\r\na=x:k=1;k=base64:c2VjcmV0"),
              "t=0 0k=CLEAR:***\r\na=x:k=1;k=base64:***");
    EXPECT_EQ(Redact("a=x:pack=1;fork=2:3"), "a=x:pack=1;fork=2:3");
}

TEST(Secrets, RemembersWhetherAnythingWasHidden) {
    Secrets secrets(false);
    EXPECT_EQ(secrets.Hide("a=sendrecv"), "a=sendrecv");
    EXPECT_FALSE(secrets.hidden());
    EXPECT_EQ(secrets.Hide("inline:abc"), "inline:***");
    EXPECT_TRUE(secrets.hidden());
}

TEST(Secrets, HidesBase64TextOfAKeysLengthAnywhere) {
    const std::string key = kKey;
    EXPECT_EQ(Secrets(false).Hide(key), "***");
    EXPECT_EQ(Secrets(false).Hide("x " + key + "longer/and+longer\ty"), "x ***\ty");
    EXPECT_EQ(Secrets(false).Hide("a:" + key + "." + key + "-b"), "a:***.***-b");
    EXPECT_EQ(Secrets(false).Hide(key.substr(1)), "VNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz");
    EXPECT_EQ(Secrets(false).Hide(key.substr(0, 20) + "." + key.substr(20)),
              "WVNfX19zZW1jdGwgKCkg.ewkyMjA7fQp9CnVubGVz");
}

TEST(Secrets, PaddingBelongsToAKey) {
    const std::string key = kKey;
    EXPECT_EQ(Secrets(false).Hide(key.substr(2) + "==.x"), "***.x");
    EXPECT_EQ(Secrets(false).Hide(key.substr(1) + "="), "***");
    EXPECT_EQ(Secrets(false).Hide(key + "==="), "***=");
    EXPECT_EQ(Secrets(false).Hide(key.substr(3) + "==="), "fX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz===");
}

TEST(Secrets, HidesAKeyInFrontOfAKeyMethod) {
    EXPECT_EQ(Secrets(false).Hide(std::string(kKey) + ":inline:" + kKey), "***:inline:***");
}

TEST(Secrets, HidesAKeyByItself) {
    Secrets secrets(false);
    EXPECT_EQ(secrets.HideKey(kKey), "***");
    EXPECT_TRUE(secrets.hidden());
}

TEST(Secrets, ShowsEverythingWhenAsked) {
    Secrets secrets(true);
    EXPECT_EQ(secrets.Hide("inline:abc"), "inline:abc");
    EXPECT_EQ(secrets.HideKey(kKey), kKey);
    EXPECT_FALSE(secrets.hidden());
}

} // namespace
