// "a=crypto:" lines give key material to the last section, ICE lines are kept whole.
#include "SDPHandler.h"

#include "Expect.h"
#include "RecordSamples.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;
using samples::CryptoParams;

constexpr auto kNone = CryptoParams::CRYPTO_NONE;
constexpr auto kSuite32 = CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;

const std::string kText = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
const std::string kKey = "YS___semctl () {";
const std::string kSalt = "\t220;}\n}\nunles";
const std::string kOtherText = "PS1uQCVeeCFCanVmcjkpPywjNWhcYD0mXXtxaVBR";
const std::string kOtherKey = "=-n@%^x!Bjufr9)?";
const std::string kOtherSalt = ",#5h\\`=&]{qiPQ";

// A handler with one audio section whose key fields hold something else already.
struct Section {
    SDPHandler handler;

    Section() {
        handler.ProcessMedia("m=audio 5000 RTP/SAVP 0");
        Get().iCryptoTag = 77;
        Get().strBase64Key = "before";
        std::memset(Get().bufSRTPKey, 'k', sizeof Get().bufSRTPKey);
        std::memset(Get().bufSRTPSalt, 's', sizeof Get().bufSRTPSalt);
    }
    MediaSession& Get() { return *handler.vecRemoteMediaSession.back(); }
    std::string Key() { return std::string(reinterpret_cast<char*>(Get().bufSRTPKey), 17); }
    std::string Salt() { return std::string(reinterpret_cast<char*>(Get().bufSRTPSalt), 15); }

    void ExpectKeyUntouched() {
        EXPECT_EQ(Get().strBase64Key, "before");
        ExpectBytesUntouched();
    }
    void ExpectBytesUntouched() {
        EXPECT_EQ(Key(), std::string(17, 'k'));
        EXPECT_EQ(Salt(), std::string(15, 's'));
    }
    void ExpectUntouched() {
        EXPECT_EQ(Get().cryptoAlgo, kNone);
        EXPECT_EQ(Get().iCryptoTag, 77);
        ExpectKeyUntouched();
    }
};

TEST(SDPParseSecurity, CryptoLineGivesSuiteTagTextKeyAndSalt) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText + "|2^31");
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 2);
    EXPECT_TEXT(s.Get().strBase64Key, "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz|2^31");
    // The spare byte behind each row is not written.
    EXPECT_EQ(s.Key(), kKey + "k");
    EXPECT_EQ(s.Salt(), kSalt + "s");
}

TEST(SDPParseSecurity, CryptoLineBeforeAnySectionIsIgnored) {
    SDPHandler handler;
    handler.ProcessCrypto("a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

TEST(SDPParseSecurity, CryptoLineBelongsToTheLastSection) {
    Section s;
    s.handler.ProcessMedia("m=video 5002 RTP/SAVP 97");
    s.handler.ProcessCrypto("a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[0]->cryptoAlgo, kNone);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[0]->iCryptoTag, 77);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[1]->cryptoAlgo, kSuite32);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[1]->iCryptoTag, 2);
}

TEST(SDPParseSecurity, CryptoLineWithFewerThanThreeWordsIsIgnored) {
    for (const char* line :
         {"", "a=crypto:1", "a=crypto:1 AES_CM_128_HMAC_SHA1_32", "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "}) {
        Section s;
        s.handler.ProcessCrypto(line);
        s.ExpectUntouched();
    }
}

TEST(SDPParseSecurity, LinesOfTheEightyBitSuitesAreSkippedWhole) {
    for (const char* suite : {"AES_CM_128_HMAC_SHA1_80", "AES_CM_256_HMAC_SHA1_80"}) {
        Section s;
        s.handler.ProcessCrypto(std::string("a=crypto:1 ") + suite + " inline:" + kText);
        s.ExpectUntouched();
    }
}

TEST(SDPParseSecurity, SkippedLineLeavesWhatAnEarlierLineSet) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    s.handler.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + kOtherText);
    s.handler.ProcessCrypto("a=crypto:3 AES_CM_256_HMAC_SHA1_80 inline:" + kOtherText);
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 2);
    EXPECT_EQ(s.Get().strBase64Key, kText);
    EXPECT_EQ(s.Key(), kKey + "k");
    EXPECT_EQ(s.Salt(), kSalt + "s");
}

TEST(SDPParseSecurity, AnyOtherSuiteStoresTagAndKeyAndLeavesTheProfile) {
    for (const char* suite :
         {"AES_CM_128_HMAC_SHA1_81", "AES_CM_128_HMAC_SHA1_8", "AES_CM_128_HMAC_SHA1_800",
          "AES_CM_128_HMAC_SHA1_3", "AES_CM_128_HMAC_SHA1_320", "aes_cm_128_hmac_sha1_32",
          "AES_CM_256_HMAC_SHA1_32", "AEAD_AES_128_GCM", "AEAD_AES_256_GCM", "F8_128_HMAC_SHA1_80", "x"}) {
        Section s;
        s.handler.ProcessCrypto(std::string("a=crypto:5 ") + suite + " inline:" + kText);
        EXPECT_EQ(s.Get().cryptoAlgo, kNone) << suite;
        EXPECT_EQ(s.Get().iCryptoTag, 5) << suite;
        EXPECT_EQ(s.Get().strBase64Key, kText) << suite;
        EXPECT_EQ(s.Key(), kKey + "k") << suite;
        EXPECT_EQ(s.Salt(), kSalt + "s") << suite;
    }
}

TEST(SDPParseSecurity, ProfileStaysOnceARecognisedLineWasSeen) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    s.handler.ProcessCrypto("a=crypto:3 UNKNOWN inline:" + kOtherText);
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 3);
    EXPECT_EQ(s.Get().strBase64Key, kOtherText);
    EXPECT_EQ(s.Key(), kOtherKey + "k");
    EXPECT_EQ(s.Salt(), kOtherSalt + "s");
}

TEST(SDPParseSecurity, LastOfSeveralCryptoLinesWins) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:9 AES_CM_128_HMAC_SHA1_32 inline:" + kOtherText + "|2^20|1:4");
    s.handler.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    EXPECT_EQ(s.Get().iCryptoTag, 1);
    EXPECT_EQ(s.Get().strBase64Key, kText);
    EXPECT_EQ(s.Key(), kKey + "k");
    EXPECT_EQ(s.Salt(), kSalt + "s");
}

TEST(SDPParseSecurity, TagIsTheSecondPieceOfTheFirstWord) {
    const std::pair<const char*, int> words[] = {
        {"a=crypto:1", 1},
        {"a=crypto:12", 12},
        {"a=crypto:0", 0},
        {"a=crypto:007", 7},
        {"a=crypto:12:34", 12},
        {"x:8", 8},
        {":9", 9},
        {"a=crypto:2147483647", 2147483647},
        {"a=crypto:4294967298", 2},
        {"a=crypto:2147483648", -2147483647 - 1},
        {"a=crypto:99999999999999999999", -1},
    };
    for (const auto& [word, tag] : words) {
        Section s;
        s.handler.ProcessCrypto(std::string(word) + " SUITE key");
        EXPECT_EQ(s.Get().iCryptoTag, tag) << word;
    }
}

TEST(SDPParseSecurity, TagThatIsNoNumberReadsOne) {
    for (const char* word : {"a=crypto:x", "a=crypto:", "a=crypto:-3", "a=crypto:+3", "a=crypto:3x",
                             "a=crypto:x3", "a=crypto:1.5", "a=crypto::4"}) {
        Section s;
        s.handler.ProcessCrypto(std::string(word) + " AES_CM_128_HMAC_SHA1_32 inline:" + kText);
        EXPECT_EQ(s.Get().iCryptoTag, 1) << word;
        EXPECT_EQ(s.Get().cryptoAlgo, kSuite32) << word;
    }
}

TEST(SDPParseSecurity, FirstWordWithoutAColonDropsTheWholeLine) {
    Section s;
    s.handler.ProcessCrypto("x AES_CM_128_HMAC_SHA1_32 inline:" + kText + " a=crypto:4");
    s.ExpectUntouched();
}

TEST(SDPParseSecurity, KeyParameterOf46CharactersStoresTagAndSuiteOnly) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:" + kText.substr(1));
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 4);
    s.ExpectKeyUntouched();
}

TEST(SDPParseSecurity, KeyParameterOf47CharactersIsEnough) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:" + kText);
    EXPECT_EQ(s.Get().strBase64Key, kText);
    EXPECT_EQ(s.Key(), kKey + "k");
}

TEST(SDPParseSecurity, LengthOfTheKeyParameterCountsWithinOneWord) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline: " + kText);
    EXPECT_EQ(s.Get().iCryptoTag, 4);
    s.ExpectKeyUntouched();
}

TEST(SDPParseSecurity, SevenCharactersBeforeTheKeyAreSkippedUnseen) {
    for (const char* start : {"INLINE:", "1234567", "inlines"}) {
        Section s;
        s.handler.ProcessCrypto(std::string("a=crypto:4 AES_CM_128_HMAC_SHA1_32 ") + start + kText);
        EXPECT_EQ(s.Get().strBase64Key, kText) << start;
        EXPECT_EQ(s.Key(), kKey + "k") << start;
        EXPECT_EQ(s.Salt(), kSalt + "s") << start;
    }
}

TEST(SDPParseSecurity, LifetimeAndKeyIndexBelongToTheStoredText) {
    Section s;
    s.handler.ProcessCrypto("a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kText +
                            "|2^20|1:32 KDR=1 UNENCRYPTED_SRTP");
    EXPECT_TEXT(s.Get().strBase64Key, "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz|2^20|1:32");
    EXPECT_EQ(s.Key(), kKey + "k");
    EXPECT_EQ(s.Salt(), kSalt + "s");
}

TEST(SDPParseSecurity, UndecodableKeyReplacesTheTextOnly) {
    Section s;
    const std::string bad = "!VNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";
    s.handler.ProcessCrypto("a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:" + bad);
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 4);
    EXPECT_EQ(s.Get().strBase64Key, bad);
    s.ExpectBytesUntouched();
}

TEST(SDPParseSecurity, StoredTextEndsAtAZeroByte) {
    Section behind;
    behind.handler.ProcessCrypto("a=crypto:4 SUITE inline:" + kText + std::string("\0tail", 5));
    EXPECT_EQ(behind.Get().strBase64Key, kText);
    EXPECT_EQ(behind.Key(), kKey + "k");

    // The word is long enough, its text is not: what the zero byte cuts off was never a key.
    Section inside;
    inside.handler.ProcessCrypto("a=crypto:4 SUITE inline:" + kText.substr(0, 10) + std::string(1, '\0') +
                                 kText.substr(11));
    EXPECT_EQ(inside.Get().strBase64Key, kText.substr(0, 10));
    inside.ExpectBytesUntouched();
}

TEST(SDPParseSecurity, CryptoWordsAreSeparatedByAnyWhiteSpace) {
    Section s;
    s.handler.ProcessCrypto(" \ta=crypto:6\n\vAES_CM_128_HMAC_SHA1_32\f\r inline:" + kText + "\t");
    EXPECT_EQ(s.Get().cryptoAlgo, kSuite32);
    EXPECT_EQ(s.Get().iCryptoTag, 6);
    EXPECT_EQ(s.Get().strBase64Key, kText);
}

// --- ICE ---

TEST(SDPParseSecurity, IceLinesAreStoredWhole) {
    Section s;
    s.handler.ProcessICEFragPwd("a=ice-ufrag:F7gI ");
    s.handler.ProcessICEFragPwd("a=ice-pwd:x9cml/YzichV2+XlhiMu8g");
    EXPECT_TEXT(s.Get().striceufrag, "a=ice-ufrag:F7gI ");
    EXPECT_TEXT(s.Get().stricepwd, "a=ice-pwd:x9cml/YzichV2+XlhiMu8g");
}

TEST(SDPParseSecurity, LaterIceLineOfAKindReplacesTheEarlier) {
    Section s;
    s.handler.ProcessICEFragPwd("a=ice-ufrag:first-and-long");
    s.handler.ProcessICEFragPwd("a=ice-pwd:first-and-long");
    s.handler.ProcessICEFragPwd("a=ice-ufrag:2");
    EXPECT_TEXT(s.Get().striceufrag, "a=ice-ufrag:2");
    EXPECT_TEXT(s.Get().stricepwd, "a=ice-pwd:first-and-long");
    s.handler.ProcessICEFragPwd("a=ice-pwd:2");
    EXPECT_TEXT(s.Get().stricepwd, "a=ice-pwd:2");
}

TEST(SDPParseSecurity, FragmentComesBeforePasswordWhereverTheyStand) {
    for (const char* line : {"a=ice-ufrag:F a=ice-pwd:P", "a=ice-pwd:P a=ice-ufrag:F"}) {
        Section s;
        s.handler.ProcessICEFragPwd(line);
        EXPECT_TEXT(s.Get().striceufrag, line);
        EXPECT_TEXT(s.Get().stricepwd, "");
    }
}

TEST(SDPParseSecurity, IceKeywordsAreFoundAnywhereAndNeedNoColon) {
    Section s;
    s.handler.ProcessICEFragPwd("xx a=ice-ufragX");
    s.handler.ProcessICEFragPwd("xx a=ice-pwdX");
    EXPECT_TEXT(s.Get().striceufrag, "xx a=ice-ufragX");
    EXPECT_TEXT(s.Get().stricepwd, "xx a=ice-pwdX");
}

TEST(SDPParseSecurity, OtherIceAttributesChangeNothing) {
    for (const char* line : {"a=ice-options:trickle", "a=ice-lite", "a=ice-mismatch", "a=ice-", "a=ice-ufra",
                             "a=ice-pw", "ice-ufrag:F", "A=ICE-PWD:P"}) {
        Section s;
        s.handler.ProcessICEFragPwd(line);
        EXPECT_TEXT(s.Get().striceufrag, "");
        EXPECT_TEXT(s.Get().stricepwd, "");
    }
}

TEST(SDPParseSecurity, IceLinesBelongToTheLastSection) {
    Section s;
    s.handler.ProcessMedia("m=video 5002 RTP/SAVP 97");
    s.handler.ProcessICEFragPwd("a=ice-ufrag:F");
    s.handler.ProcessICEFragPwd("a=ice-pwd:P");
    s.handler.ProcessICECandidate("a=candidate:1");
    EXPECT_TEXT(s.handler.vecRemoteMediaSession[0]->striceufrag, "");
    EXPECT_TEXT(s.handler.vecRemoteMediaSession[0]->stricepwd, "");
    EXPECT_TRUE(s.handler.vecRemoteMediaSession[0]->vecCandidate.empty());
    EXPECT_TEXT(s.handler.vecRemoteMediaSession[1]->striceufrag, "a=ice-ufrag:F");
    EXPECT_TEXT(s.handler.vecRemoteMediaSession[1]->stricepwd, "a=ice-pwd:P");
    EXPECT_EQ(s.handler.vecRemoteMediaSession[1]->vecCandidate, (Pieces{"a=candidate:1"}));
}

TEST(SDPParseSecurity, IceLinesBeforeAnySectionAreIgnored) {
    SDPHandler handler;
    handler.ProcessICEFragPwd("a=ice-ufrag:F");
    handler.ProcessICEFragPwd("a=ice-pwd:P");
    handler.ProcessICECandidate("a=candidate:1");
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
}

TEST(SDPParseSecurity, TheFirstCandidateMakesRoomForAUsualNumber) {
    Section s;
    s.handler.ProcessICECandidate("a=candidate:1");
    EXPECT_GE(s.Get().vecCandidate.capacity(), 12U);
}

TEST(SDPParseSecurity, CandidatesAreStoredWholeInOrder) {
    Section s;
    s.handler.ProcessICECandidate("a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host");
    s.handler.ProcessICECandidate("anything at all ");
    s.handler.ProcessICECandidate("");
    s.handler.ProcessICECandidate("a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host");
    EXPECT_EQ(s.Get().vecCandidate,
              (Pieces{"a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host", "anything at all ", "",
                      "a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host"}));
}

TEST(SDPParseSecurity, NothingLimitsTheNumberOfCandidates) {
    Section s;
    for (int i = 0; i < 2000; ++i) {
        s.handler.ProcessICECandidate("a=candidate:" + std::to_string(i));
    }
    ASSERT_EQ(s.Get().vecCandidate.size(), 2000U);
    EXPECT_EQ(s.Get().vecCandidate[1999], "a=candidate:1999");
}

} // namespace
