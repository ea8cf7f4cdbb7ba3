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

    // Suite, tag, text, and which key the rows have. The spare byte after each key is never written.
    std::string Shown() {
        const std::string key(reinterpret_cast<char*>(Get().bufSRTPKey), 17);
        const std::string salt(reinterpret_cast<char*>(Get().bufSRTPSalt), 15);
        const std::string rows = key + salt;
        return std::to_string(Get().cryptoAlgo) + " " + std::to_string(Get().iCryptoTag) + " " +
               Get().strBase64Key +
               (rows == kKey + "k" + kSalt + "s"                      ? " key"
                : rows == kOtherKey + "k" + kOtherSalt + "s"          ? " other key"
                : rows == std::string(17, 'k') + std::string(15, 's') ? " kept"
                                                                      : " " + rows);
    }
};

const std::string kUntouched = "0 77 before kept";

TEST(SDPParseSecurity, CryptoLinesGiveSuiteTagTextAndKey) {
    const struct {
        const char* why;
        Pieces lines;
        std::string shown;
    } rows[] = {
        {"suite, tag, text with its lifetime, key and salt",
         {"a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText + "|2^31"},
         "1 2 " + kText + "|2^31 key"},
        {"what follows the third word is no text",
         {"a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kText + "|2^20|1:32 KDR=1 UNENCRYPTED_SRTP"},
         "1 1 " + kText + "|2^20|1:32 key"},
        {"fewer than three words",
         {"", "a=crypto:1", "a=crypto:1 AES_CM_128_HMAC_SHA1_32", "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "},
         kUntouched},
        {"the 80-bit suites",
         {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + kText,
          "a=crypto:1 AES_CM_256_HMAC_SHA1_80 inline:" + kText},
         kUntouched},
        {"a skipped line leaves what an earlier one set",
         {"a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText,
          "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:" + kOtherText,
          "a=crypto:3 AES_CM_256_HMAC_SHA1_80 inline:" + kOtherText},
         "1 2 " + kText + " key"},
        {"the suite stays once it was seen",
         {"a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText, "a=crypto:3 UNKNOWN inline:" + kOtherText},
         "1 3 " + kOtherText + " other key"},
        {"the last of several lines",
         {"a=crypto:9 AES_CM_128_HMAC_SHA1_32 inline:" + kOtherText + "|2^20|1:4",
          "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kText},
         "1 1 " + kText + " key"},
        {"a first word without a colon",
         {"x AES_CM_128_HMAC_SHA1_32 inline:" + kText + " a=crypto:4"},
         kUntouched},
        {"46 characters of a key",
         {"a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:" + kText.substr(1)},
         "1 4 before kept"},
        {"47 characters of a key",
         {"a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:" + kText},
         "1 4 " + kText + " key"},
        {"characters of one word",
         {"a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline: " + kText},
         "1 4 before kept"},
        {"a key that cannot be decoded replaces the text only",
         {"a=crypto:4 AES_CM_128_HMAC_SHA1_32 inline:!" + kText.substr(1)},
         "1 4 !" + kText.substr(1) + " kept"},
        {"the text ends at a zero byte",
         {"a=crypto:4 SUITE inline:" + kText + std::string("\0tail", 5)},
         "0 4 " + kText + " key"},
        {"what a zero byte cuts off was never a key",
         {"a=crypto:4 SUITE inline:" + kText.substr(0, 10) + std::string(1, '\0') + kText.substr(11)},
         "0 4 " + kText.substr(0, 10) + " kept"},
        {"any white space",
         {" \ta=crypto:6\n\vAES_CM_128_HMAC_SHA1_32\f\r inline:" + kText + "\t"},
         "1 6 " + kText + " key"},
    };
    for (const auto& row : rows) {
        Section s;
        for (const std::string& line : row.lines) {
            s.handler.ProcessCrypto(line);
        }
        EXPECT_TEXT(s.Shown(), row.shown) << row.why;
    }
}

TEST(SDPParseSecurity, CryptoLinesBelongToTheLastSection) {
    const std::string line = "a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:" + kText;
    SDPHandler handler;
    handler.ProcessCrypto(line);
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
    Section s;
    s.handler.ProcessMedia("m=video 5002 RTP/SAVP 97");
    s.handler.ProcessCrypto(line);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[0]->cryptoAlgo, kNone);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[0]->iCryptoTag, 77);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[1]->cryptoAlgo, kSuite32);
    EXPECT_EQ(s.handler.vecRemoteMediaSession[1]->iCryptoTag, 2);
}

TEST(SDPParseSecurity, AnyOtherSuiteStoresTagAndKeyAndLeavesTheProfile) {
    for (const std::string suite :
         {"AES_CM_128_HMAC_SHA1_81", "AES_CM_128_HMAC_SHA1_8", "AES_CM_128_HMAC_SHA1_800",
          "AES_CM_128_HMAC_SHA1_3", "AES_CM_128_HMAC_SHA1_320", "aes_cm_128_hmac_sha1_32",
          "AES_CM_256_HMAC_SHA1_32", "AEAD_AES_128_GCM", "AEAD_AES_256_GCM", "F8_128_HMAC_SHA1_80", "x"}) {
        Section s;
        s.handler.ProcessCrypto("a=crypto:5 " + suite + " inline:" + kText);
        EXPECT_TEXT(s.Shown(), "0 5 " + kText + " key") << suite;
    }
}

TEST(SDPParseSecurity, SevenCharactersBeforeTheKeyAreSkippedUnseen) {
    for (const std::string start : {"INLINE:", "1234567", "inlines"}) {
        Section s;
        s.handler.ProcessCrypto("a=crypto:4 AES_CM_128_HMAC_SHA1_32 " + start + kText);
        EXPECT_TEXT(s.Shown(), "1 4 " + kText + " key") << start;
    }
}

TEST(SDPParseSecurity, TagIsTheSecondPieceOfTheFirstWordAndOneIfThatIsNoNumber) {
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
        {"a=crypto:x", 1},
        {"a=crypto:99999999999999999999", -1},
        {"a=crypto:", 1},
        {"a=crypto:-3", 1},
        {"a=crypto:+3", 1},
        {"a=crypto:3x", 1},
        {"a=crypto:x3", 1},
        {"a=crypto:1.5", 1},
        {"a=crypto::4", 1},
    };
    for (const auto& [word, tag] : words) {
        Section s;
        s.handler.ProcessCrypto(std::string(word) + " AES_CM_128_HMAC_SHA1_32 inline:" + kText);
        EXPECT_TEXT(s.Shown(), "1 " + std::to_string(tag) + " " + kText + " key") << word;
    }
}

// --- ICE ---

TEST(SDPParseSecurity, IceLinesAreStoredWholeAndTheLastOfAKindStands) {
    const struct {
        Pieces lines;
        const char* fragment;
        const char* password;
    } rows[] = {
        {{"a=ice-ufrag:F7gI ", "a=ice-pwd:x9cml/YzichV2+XlhiMu8g"},
         "a=ice-ufrag:F7gI ",
         "a=ice-pwd:x9cml/YzichV2+XlhiMu8g"},
        {{"a=ice-ufrag:first-and-long", "a=ice-pwd:first-and-long", "a=ice-ufrag:2"},
         "a=ice-ufrag:2",
         "a=ice-pwd:first-and-long"},
        {{"a=ice-ufrag:F", "a=ice-pwd:first-and-long", "a=ice-pwd:2"}, "a=ice-ufrag:F", "a=ice-pwd:2"},
        // The fragment comes before the password at any place of a line.
        {{"a=ice-ufrag:F a=ice-pwd:P"}, "a=ice-ufrag:F a=ice-pwd:P", ""},
        {{"a=ice-pwd:P a=ice-ufrag:F"}, "a=ice-pwd:P a=ice-ufrag:F", ""},
        // Keywords are found anywhere and need no colon.
        {{"xx a=ice-ufragX", "xx a=ice-pwdX"}, "xx a=ice-ufragX", "xx a=ice-pwdX"},
        // Other attributes change nothing.
        {{"a=ice-options:trickle", "a=ice-lite", "a=ice-mismatch", "a=ice-", "a=ice-ufra", "a=ice-pw",
          "ice-ufrag:F", "A=ICE-PWD:P"},
         "",
         ""},
    };
    for (const auto& row : rows) {
        Section s;
        for (const std::string& line : row.lines) {
            s.handler.ProcessICEFragPwd(line);
        }
        EXPECT_TEXT(s.Get().striceufrag, row.fragment) << row.lines[0];
        EXPECT_TEXT(s.Get().stricepwd, row.password) << row.lines[0];
    }
}

TEST(SDPParseSecurity, IceLinesBelongToTheLastSection) {
    Section s;
    s.handler.ProcessMedia("m=video 5002 RTP/SAVP 97");
    s.handler.ProcessICEFragPwd("a=ice-ufrag:F");
    s.handler.ProcessICEFragPwd("a=ice-pwd:P");
    s.handler.ProcessICECandidate("a=candidate:1");
    const auto ice = [&s](std::size_t number) {
        const MediaSession& section = *s.handler.vecRemoteMediaSession.at(number);
        Pieces lines = {section.striceufrag, section.stricepwd};
        lines.insert(lines.end(), section.vecCandidate.begin(), section.vecCandidate.end());
        return lines;
    };
    EXPECT_EQ(ice(0), (Pieces{"", ""}));
    EXPECT_EQ(ice(1), (Pieces{"a=ice-ufrag:F", "a=ice-pwd:P", "a=candidate:1"}));
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
    const Pieces lines = {"a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host", "anything at all ", "",
                          "a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host"};
    for (const std::string& line : lines) {
        s.handler.ProcessICECandidate(line);
    }
    EXPECT_EQ(s.Get().vecCandidate, lines);
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
