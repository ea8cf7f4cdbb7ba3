#include "SDPCrypto.h"
#include "Parts.h"

using namespace call;

namespace {

constexpr std::string_view kKey = "d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1enpl";

/// The line that is chosen: "TAG SUITE LIFETIME MKI", suites and fields as in the record; empty for none.
std::string Chosen(std::string_view lines, bool isRepaired = true) {
    Given given("m=audio 30000 RTP/SAVP 0\n" + std::string(lines), isRepaired);
    const negotiation::CryptoLine line = negotiation::ChooseCrypto(given.FirstLines(), given.repairs);
    if (line.suite == 0) {
        return "";
    }
    EXPECT_EQ(std::string(line.key.key.begin(), line.key.key.end()), "we make this key");
    EXPECT_EQ(std::string(line.key.salt.begin(), line.key.salt.end()), " for the fuzze");
    return std::string(line.tag) + (line.suite == 2 ? " _80 " : " _32 ") + std::string(line.lifetime) + " " +
           std::string(line.mki);
}

std::string With(std::string_view tail) {
    return "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + std::string(kKey) + std::string(tail) + "\n";
}

TEST(Crypto, KeyParametersAreRead) {
    EXPECT_EQ(Chosen(With("")), "1 _32  ");
    EXPECT_EQ(Chosen(With("|2^20")), "1 _32 2^20 ");
    EXPECT_EQ(Chosen(With("|1:4")), "1 _32  1:4");
    EXPECT_EQ(Chosen(With("|2^20|1:4")), "1 _32 2^20 1:4");
    EXPECT_EQ(Chosen(With(";inline:" + std::string(kKey))), "");
    EXPECT_EQ(Chosen(With("=")), "");
    EXPECT_EQ(Chosen(With("A")), "");
}

TEST(Crypto, LifetimeAndMkiAreWhatTheRfcAllows) {
    for (const std::string_view tail : {"|2^1", "|2^48", "|1", "|1048576", "|281474976710656"}) {
        EXPECT_EQ(Chosen(With(tail)), "1 _32 " + std::string(tail.substr(1)) + " ");
    }
    EXPECT_EQ(Chosen(With("|1:1")), "1 _32  1:1");
    EXPECT_EQ(Chosen(With("|12345678901234567890:128")), "1 _32  12345678901234567890:128");
    for (const std::string_view tail :
         {"|2^0", "|2^49", "|0", "|281474976710657", "|99999999999999999999999", "|abc", "|2^20x", "|2^",
          "|-1", "|2^20|2^30", "|1:4|1:4", "|1:300", "|1:129", "|1:0", "|x:4", "|:4", "|1:", "|:", "||1:4"}) {
        EXPECT_EQ(Chosen(With(tail)), "") << tail;
    }
}

TEST(Crypto, AKeyOfZerosIsNone) {
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + std::string(40, 'A') + "\n"), "");
}

TEST(Crypto, AKeyIsFortyCharactersOfBase64) {
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:short\n"), "");
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:d2UgbWFrZSB0aGlzIGtleSBmb3IgdGhlIGZ1eno=\n"),
              "");
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:d2UgbWFrZSB0aGlz!Gtl*SBmb3Igd-hlI_Z1enpl\n"),
              "");
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 uri:" + std::string(kKey) + "\n"), "");
    EXPECT_EQ(Chosen("a=crypto:1 AES_CM_128_HMAC_SHA1_32 INLINE:" + std::string(kKey) + "\n"), "1 _32  ");
}

TEST(Crypto, SessionParametersThatChangeNothingAreTaken) {
    EXPECT_EQ(Chosen(With(" WSH=128")), "1 _32  ");
    EXPECT_EQ(Chosen(With(" -HINT=1")), "1 _32  ");
    EXPECT_EQ(Chosen(With(" WSH=128 -HINT=1")), "1 _32  ");
    EXPECT_EQ(Chosen(With(" UNENCRYPTED_SRTP")), "");
    EXPECT_EQ(Chosen(With(" WSH=128 KDR=1")), "");
    EXPECT_EQ(Chosen(With(" KDR=1 WSH=128")), "");
}

TEST(Crypto, TheFirstUsableLineIsChosen) {
    const std::string other = "a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:" + std::string(kKey) + "\n";
    EXPECT_EQ(Chosen(other + With("")), "7 _80  ");
    EXPECT_EQ(Chosen(With("") + other), "1 _32  ");
    EXPECT_EQ(Chosen(With(" KDR=1") + other), "7 _80  ");
    EXPECT_EQ(Chosen("a=crypto:1 AES_256_CM_HMAC_SHA1_80 inline:" + std::string(kKey) + "\n" + other),
              "7 _80  ");
    EXPECT_EQ(Chosen("a=crypto:1 NO_SUCH_SUITE inline:" + std::string(kKey) + "\n" + other), "7 _80  ");
    EXPECT_EQ(Chosen("a=crypto:one AES_CM_128_HMAC_SHA1_80 inline:" + std::string(kKey) + "\n"), "");
    EXPECT_EQ(Chosen("a=sendrecv\n"), "");
}

// The component reads the last line, and the shorter tag alone.
TEST(Crypto, WithoutRepairsTheLastLineStands) {
    const std::string eighty = "a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:" + std::string(kKey) + "\n";
    EXPECT_EQ(Chosen(With(""), false), "1 _32  ");
    EXPECT_EQ(Chosen(eighty, false), "");
    EXPECT_EQ(Chosen(With("") + eighty, false), "");
    EXPECT_EQ(Chosen(eighty + With(""), false), "1 _32  ");
}

} // namespace
