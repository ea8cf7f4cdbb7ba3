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
    EXPECT_EQ(Redact(std::string("a=crypto:1 S inline:") + kKey + "|2^20|1:4;inline:" + kKey +
                     "|2^20|2:4 UNENCRYPTED_SRTP\r\n"),
              "a=crypto:1 S inline:*** UNENCRYPTED_SRTP\r\n");
}

TEST(Redact, HidesKeysInAnyLetterCase) {
    EXPECT_EQ(Redact(std::string("INLINE:") + kKey + " Inline:" + kKey), "INLINE:*** Inline:***");
}

TEST(Redact, HidesAKeyThatALostLineEndCarriedIntoAnotherLine) {
    EXPECT_EQ(Redact(std::string("m=video 5004 RTP/AVP 97\na=crypto:1 S inline:") + kKey + "\na=x\r\n"),
              "m=video 5004 RTP/AVP 97\na=crypto:1 S inline:***\na=x\r\n");
}

TEST(Redact, HidesAKeyWhoseSevenCharactersAreNotInline) {
    EXPECT_EQ(Redact(std::string("a=crypto:1 AES_CM_128_HMAC_SHA1_32 1234567") + kKey + " x\r\n"),
              "a=crypto:1 AES_CM_128_HMAC_SHA1_32 *** x\r\n");
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
    const std::string once =
        Redact(std::string("a=crypto:1 S 1234567") + kKey + "\r\na=crypto:2 S inline:" + kKey);
    EXPECT_EQ(once, "a=crypto:1 S ***\r\na=crypto:2 S inline:***");
    EXPECT_EQ(Redact(once), once);
}

TEST(Secrets, RemembersWhetherAnythingWasHidden) {
    Secrets secrets(false);
    EXPECT_EQ(secrets.Hide("a=sendrecv"), "a=sendrecv");
    EXPECT_FALSE(secrets.hidden());
    EXPECT_EQ(secrets.Hide("inline:abc"), "inline:***");
    EXPECT_TRUE(secrets.hidden());
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
