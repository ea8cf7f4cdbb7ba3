// The names of the records' numbers.
#include "Names.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::CodecInWords;
using cmsdp::CodecNames;
using cmsdp::DirectionInWords;
using cmsdp::IsSuiteName;
using cmsdp::NameOf;
using cmsdp::RoleNames;
using cmsdp::SuiteNames;

TEST(Names, OfCodecs) {
    EXPECT_EQ(NameOf(CodecNames(), 1), "G711U");
    EXPECT_EQ(NameOf(CodecNames(), 2), "H264_MODE_1");
    EXPECT_EQ(NameOf(CodecNames(), 4), "VP8");
    EXPECT_EQ(NameOf(CodecNames(), 8), "G729");
    EXPECT_EQ(NameOf(CodecNames(), 16), "G7221");
    EXPECT_EQ(NameOf(CodecNames(), 32), "H264_MODE_0");
    EXPECT_EQ(NameOf(CodecNames(), 64), "G722");
    EXPECT_EQ(NameOf(CodecNames(), 256), "UNKNOWN");
}

TEST(Names, OfSuites) {
    EXPECT_EQ(NameOf(SuiteNames(), 0), "none");
    EXPECT_EQ(NameOf(SuiteNames(), 1), "AES_CM_128_HMAC_SHA1_32");
    EXPECT_EQ(NameOf(SuiteNames(), 2), "AES_CM_128_HMAC_SHA1_80");
    EXPECT_EQ(NameOf(SuiteNames(), 3), "AES_CM_256_HMAC_SHA1_80");
    EXPECT_EQ(NameOf(SuiteNames(), 4), "AEAD_AES_GCM_128");
    EXPECT_EQ(NameOf(SuiteNames(), 5), "AEAD_AES_GCM_256");
}

TEST(Names, OfRoles) {
    EXPECT_EQ(NameOf(RoleNames(), 0), "main");
    EXPECT_EQ(NameOf(RoleNames(), 1), "presentation");
    EXPECT_EQ(NameOf(RoleNames(), 100), "unknown");
}

TEST(Names, OfAValueWithoutAName) {
    EXPECT_EQ(NameOf(SuiteNames(), -7), "-7");
}

TEST(Names, SuitesThatMayBeShown) {
    for (const char* const name :
         {"AES_CM_128_HMAC_SHA1_80", "AES_CM_128_HMAC_SHA1_32", "F8_128_HMAC_SHA1_80",
          "SEED_CTR_128_HMAC_SHA1_80", "SEED_128_CCM_80", "SEED_128_GCM_96", "AES_192_CM_HMAC_SHA1_80",
          "AES_192_CM_HMAC_SHA1_32", "AES_256_CM_HMAC_SHA1_80", "AES_256_CM_HMAC_SHA1_32", "AEAD_AES_128_GCM",
          "AEAD_AES_256_GCM", "AES_CM_256_HMAC_SHA1_80", "AEAD_AES_GCM_128", "AEAD_AES_GCM_256"}) {
        EXPECT_TRUE(IsSuiteName(name)) << name;
    }
}

TEST(Names, WordsThatAreNoSuite) {
    for (const char* const word : {"", "none", "aes_cm_128_hmac_sha1_80", "AES_CM_128_HMAC_SHA1_8",
                                   "AES_CM_128_HMAC_SHA1_800", "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz"}) {
        EXPECT_FALSE(IsSuiteName(word)) << word;
    }
}

TEST(Names, CodecsAsPeopleWriteThem) {
    EXPECT_EQ(CodecInWords(PAYLOAD_G711U), "G.711 mu-law");
    EXPECT_EQ(CodecInWords(PAYLOAD_G729), "G.729");
    EXPECT_EQ(CodecInWords(PAYLOAD_G7221), "G.722.1, 16 kHz, 32 kbit/s");
    EXPECT_EQ(CodecInWords(PAYLOAD_G722), "G.722");
    EXPECT_EQ(CodecInWords(PAYLOAD_UNKNOWN), "none");
}

TEST(Names, DirectionsAsSeenFromThisSide) {
    EXPECT_EQ(DirectionInWords(true, true), "sends and receives");
    EXPECT_EQ(DirectionInWords(true, false), "sends only");
    EXPECT_EQ(DirectionInWords(false, true), "receives only");
    EXPECT_EQ(DirectionInWords(false, false), "on hold");
}

} // namespace
