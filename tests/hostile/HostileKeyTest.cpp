// Hostile key material: texts that are no key, very long lines, tags and suites that cannot be used.
#include "Hostile.h"

namespace {

using namespace hostile;

const std::string kKey = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
const std::string kUsualLine = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kKey;
const std::string kRecordUsual = "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n";
const std::string kSectionUsual =
    "-0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 salt=away "
    "audiosalt\n";
const std::string kAnswerLineUsual =
    "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n";
const std::string kNoLongerSecure = "-m=audio 16384 RTP/SAVP 9 101\\r\\n\n"
                                    "+m=audio 16384 RTP/AVP 9 101\\r\\n\n" +
                                    kAnswerLineUsual;

/// A key text that cannot be decoded: the suite is set, so the stream counts as secure, but has no key.
std::string Undecoded(const std::string& shownText) {
    return kRecordUsual + "+srtp audio suite=1 key=- salt=-\n" + kSectionUsual +
           "+0 crypto tag=1 suite=1 text=" + shownText + " key=- salt=-\n";
}

/// A key text that decodes to the key of kConference.
std::string Decoded(const std::string& shownText) {
    return kSectionUsual + "+0 crypto tag=1 suite=1 text=" + shownText +
           " key=away audio key 1 salt=away audiosalt\n";
}

TEST(Hostile, C42_KeyTextTooShort) {
    for (const std::string text :
         {"", "Y", "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx", "YXdheSBhdWRpbyBrZXkg"}) {
        EXPECT_TEXT(Changes(With(kKey, text)), Undecoded(""));
    }
    EXPECT_TEXT(Changes(With("inline:" + kKey, "x")), Undecoded(""));
}

TEST(Hostile, C42_KeyTextTooLong) {
    EXPECT_TEXT(Changes(With(kKey, kKey + "A")), Decoded(kKey + "A"));
    EXPECT_TEXT(Changes(With(kKey, kKey + "!\xff%s")), Decoded(kKey + "!\\xff%s"));
    EXPECT_TEXT(Changes(With(kKey, kKey + std::string(1000000, 'A'))),
                Decoded("YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0...(1000040 bytes)"));
}

TEST(Hostile, C42_KeyTextThatIsNotBase64) {
    for (std::size_t at = 0; at < kKey.size(); ++at) {
        std::string text = kKey;
        text[at] = "!-_.,%\"*"[at % 8];
        EXPECT_TEXT(Changes(With(kKey, text)), Undecoded(text));
    }
    EXPECT_TEXT(Changes(With(kKey, "\xff\xfeYXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYW")),
                Undecoded("\\xff\\xfeYXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYW"));
    // A hyphen at the end does not end the data.
    EXPECT_TEXT(Changes(With(kKey, "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9z----")),
                Undecoded("YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9z----"));
}

TEST(Hostile, C42_KeyTextWithPaddingInIt) {
    // Padding is read as zero bits at any place.
    EXPECT_TEXT(
        Changes(With(kKey, "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYQ==")),
        kRecordUsual + "+srtp audio suite=1 key=away audio key 1 salt=away audiosa\\x00\\x00\n" +
            kSectionUsual +
            "+0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYQ== key=away audio key 1 "
            "salt=away audiosa\\x00\\x00\n");
    EXPECT_TEXT(Changes(With(kKey, "YXdh====dWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0")),
                kRecordUsual + "+srtp audio suite=1 key=awa\\x00\\x00\\x00udio key 1 salt=away audiosalt\n" +
                    kSectionUsual +
                    "+0 crypto tag=1 suite=1 text=YXdh====dWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 "
                    "key=awa\\x00\\x00\\x00udio key 1 salt=away audiosalt\n");
    Outcome(With(kKey, std::string(40, '=')));
}

TEST(Hostile, C42_KeyTextOfBlanks) {
    EXPECT_TEXT(Changes(With(kKey, std::string(40, ' '))), Undecoded(""));
    EXPECT_TEXT(Changes(With(kKey, std::string(40, '\t'))), Undecoded(""));
    EXPECT_TEXT(Changes(With("inline:" + kKey, std::string(47, ' '))),
                kRecordUsual + "+srtp audio suite=0 key=- salt=-\n" + kSectionUsual +
                    "+0 crypto tag=0 suite=0 text= key=- salt=-\n" + kNoLongerSecure);
}

TEST(Hostile, C42_KeyTextWithNul) {
    std::string inside = kKey;
    inside[20] = '\0';
    EXPECT_TEXT(Changes(With(kKey, inside)), Undecoded("YXdheSBhdWRpbyBrZXkg"));
    EXPECT_TEXT(Changes(With(kKey, std::string(40, '\0'))), Undecoded(""));
    EXPECT_TEXT(Changes(With(kKey, kKey + '\0' + "|2^31")), "");
}

TEST(Hostile, C43_HundredCryptoLines) {
    std::string lines;
    for (int tag = 1; tag <= 100; ++tag) {
        lines += "a=crypto:" + std::to_string(tag) + " AES_CM_128_HMAC_SHA1_32 inline:" +
                 (tag % 2 == 0 ? "YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0" : kKey) + "\r\n";
    }
    EXPECT_TEXT(
        Changes(With(kUsualLine + "\r\n", lines)),
        kRecordUsual + "+srtp audio suite=1 key=away slide key 1 salt=away slidesalt\n" + kSectionUsual +
            "+0 crypto tag=100 suite=1 text=YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0 key=away slide key 1 "
            "salt=away slidesalt\n" +
            kAnswerLineUsual +
            "+a=crypto:100 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
}

TEST(Hostile, C43_HundredLinesOfSkippedSuites) {
    const std::string line =
        "a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n"
        "a=crypto:8 AES_CM_256_HMAC_SHA1_80 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n";
    EXPECT_TEXT(
        Changes(With(kUsualLine + "\r\n", Repeated(line, 50) + kUsualLine + "\r\n" + Repeated(line, 50))),
        "");
}

TEST(Hostile, C44_TagsThatAreNumbers) {
    struct Row {
        const char* written;
        const char* read;
    };
    for (const Row& row : {Row{"0", "0"}, Row{"1000000000", "1000000000"}, Row{"2147483647", "2147483647"},
                           Row{"99999999999", "1215752191"}, Row{"4294967295", "-1"}, Row{"007", "7"},
                           Row{"2:3", "2"}, Row{"2:", "2"}}) {
        EXPECT_TEXT(
            Changes(With("a=crypto:1 ", "a=crypto:" + std::string(row.written) + " ")),
            kSectionUsual + "+0 crypto tag=" + row.read +
                " suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 salt=away "
                "audiosalt\n" +
                kAnswerLineUsual + "+a=crypto:" + row.read +
                " AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
    }
}

TEST(Hostile, C44_TagsThatAreNone) {
    for (const std::string tag : {"", "x", "-1", "+1", "1.5", ":5", "0x1"}) {
        EXPECT_TEXT(Changes(With("a=crypto:1 ", "a=crypto:" + tag + " ")), "");
    }
}

TEST(Hostile, C44_SameTagTwice) {
    EXPECT_TEXT(Changes(With(
                    kUsualLine,
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n" +
                        kUsualLine)),
                "");
}

TEST(Hostile, C45_LifetimesMasterKeyIndexAndSessionParameters) {
    for (const std::string more :
         {"|2^31", "|2^20|1:4", "|1:32", "|1048576", "|", "||||", "|2^99999999999|9:999"}) {
        EXPECT_TEXT(Changes(With(kKey, kKey + more)), Decoded(kKey + more));
    }
    EXPECT_TEXT(
        Changes(With(kKey, kKey + " KDR=1 UNENCRYPTED_SRTP UNAUTHENTICATED_SRTP FEC_ORDER=FEC_SRTP WSH=64")),
        "");
    EXPECT_TEXT(Changes(With(kKey, kKey + " FEC_KEY=inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0")), "");
}

TEST(Hostile, C46_UnknownSuites) {
    for (const std::string suite : {"F8_128_HMAC_SHA1_80", "AEAD_AES_256_GCM", "aes_cm_128_hmac_sha1_32",
                                    "AES_CM_128_HMAC_SHA1_3", "AES_CM_128_HMAC_SHA1_321", "x", "inline:"}) {
        EXPECT_TEXT(
            Changes(With("1 AES_CM_128_HMAC_SHA1_32", "5 " + suite)),
            kRecordUsual + "+srtp audio suite=0 key=away audio key 1 salt=away audiosalt\n" + kSectionUsual +
                "+0 crypto tag=5 suite=0 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 "
                "salt=away audiosalt\n" +
                kNoLongerSecure);
    }
}

TEST(Hostile, C46_SkippedSuitesAndTheirNamesInTheOtherCase) {
    for (const std::string suite : {"AES_CM_128_HMAC_SHA1_80", "AES_CM_256_HMAC_SHA1_80"}) {
        EXPECT_TEXT(Changes(With("1 AES_CM_128_HMAC_SHA1_32", "1 " + suite)),
                    kRecordUsual + "+srtp audio suite=0 key=- salt=-\n" + kSectionUsual +
                        "+0 crypto tag=0 suite=0 text= key=- salt=-\n" + kNoLongerSecure);
    }
    // A name in lower case is an unknown suite, whose key is stored and not used (P11).
    EXPECT_TEXT(
        Changes(With("1 AES_CM_128_HMAC_SHA1_32", "1 aes_cm_128_hmac_sha1_80")),
        kRecordUsual + "+srtp audio suite=0 key=away audio key 1 salt=away audiosalt\n" + kSectionUsual +
            "+0 crypto tag=1 suite=0 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 "
            "salt=away audiosalt\n" +
            kNoLongerSecure);
    // After a line of the known suite, a line of an unknown one replaces the key and keeps the suite (P11).
    EXPECT_TEXT(
        Changes(With(kUsualLine,
                     kUsualLine + "\r\na=crypto:6 x inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0")),
        kRecordUsual + "+srtp audio suite=1 key=away slide key 1 salt=away slidesalt\n" + kSectionUsual +
            "+0 crypto tag=6 suite=1 text=YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0 key=away slide key 1 "
            "salt=away slidesalt\n" +
            kAnswerLineUsual +
            "+a=crypto:6 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
}

TEST(Hostile, C47_CryptoLineUnderAnInsecureProfile) {
    EXPECT_TEXT(Changes(With("20384 RTP/SAVP", "20384 RTP/AVP")), "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                                                                  "+0 line m=audio 20384 RTP/AVP 9 0 101\n");
}

TEST(Hostile, C47_SecureProfileWithoutACryptoLine) {
    EXPECT_TEXT(Changes(With(kUsualLine + "\r\n", "")),
                kRecordUsual + "+srtp audio suite=0 key=- salt=-\n" + kSectionUsual +
                    "+0 crypto tag=0 suite=0 text= key=- salt=-\n" + kNoLongerSecure);
}

TEST(Hostile, C47_CryptoLineInADeclinedSection) {
    EXPECT_TEXT(Changes(With("m=audio 20384", "m=audio 0")),
                "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=0 send=0 recv=0 valid=1\n"
                "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                "+section 0 media=2 content=100 port=0 send=1 recv=1 addr=\n"
                "+0 line m=audio 0 RTP/SAVP 9 0 101\n"
                "-a=sendrecv\\r\\n\n"
                "+a=inactive\\r\\n\n");
}

TEST(Hostile, C47_CryptoLineBeforeAnySectionAndInAFloorControlSection) {
    EXPECT_TEXT(Changes(With("t=0 0", kUsualLine + "\r\nt=0 0")), "");
    EXPECT_TEXT(Changes(kConference + kUsualLine + "\r\n"),
                "-3 crypto tag=0 suite=0 text= key=- salt=-\n"
                "+3 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 "
                "salt=away "
                "audiosalt\n");
}

} // namespace
