// Texts that are generated because they are long: lines of megabytes, a hundred thousand lines, sections,
// formats, parameters. Those that try to cost more than their length are in HostileAmplificationTest.cpp.
#include "Hostile.h"

namespace {

using namespace hostile;

const std::string kMainLine = "a=fmtp:109 profile-level-id=42001F;max-mbps=108000;max-fs=3601;"
                              "packetization-mode=1";

/// The main stream of kConference with these parameters for its first format.
std::string MainWith(const std::string& parameters) {
    Endpoint near;
    const std::string text = With(kMainLine, "a=fmtp:109 " + parameters);
    near.handler.ParseTheSDP(text, near.remote);
    Outcome(text);
    return LineOf(support::Describe(near.remote), "main ");
}

/// The expected result of MainWith for these fields; the others are unchanged.
std::string Main(const std::string& fields) {
    return "main codec=2 type=0 " + fields + " addr=192.0.2.3 port=20386 send=0 recv=1 valid=1";
}

TEST(Hostile, C10_LineOf64KiB1MiBAnd16MiB) {
    for (const std::size_t size : {std::size_t{1} << 16U, std::size_t{1} << 20U, std::size_t{1} << 24U}) {
        const std::string bulk(size, '7');
        const std::string bytes = std::to_string(size);
        EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv\r\na=" + bulk + "\r\n")), "");
        EXPECT_TEXT(Changes(kConference + bulk), "");
        EXPECT_TEXT(Changes(With("RTP/SAVP 9 0 101", "RTP/SAVP 9 0 101 " + bulk)),
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+0 line m=audio 20384 RTP/SAVP 9 0 101 777777777...(" +
                        std::to_string(size + 31) +
                        " bytes)\n"
                        "+0 format 7777777777777777777777777777777777777777...(" +
                        bytes + " bytes)\\x20\n");
    }
}

TEST(Hostile, C10_LongLineThatTheAnswerRepeats) {
    const std::string bulk(std::size_t{1} << 20U, '7');
    EXPECT_TEXT(Changes(With("UDP/BFCP *", "UDP/BFCP * " + bulk)),
                "-3 line m=application 20390 UDP/BFCP *\n"
                "+3 line m=application 20390 UDP/BFCP * 777777777...(1048607 bytes)\n"
                "+3 format 7777777777777777777777777777777777777777...(1048576 bytes)\\x20\n"
                "-m=application 0 UDP/BFCP *\\r\\n\n"
                "+m=application 0 UDP/BFCP * 7777777777777...(1048605 bytes)\n");
}

TEST(Hostile, C11_HundredThousandLinesOfThreeBytes) {
    const std::string lines = Repeated("x\r\n", 100000);
    EXPECT_TEXT(Changes(lines + kConference), "");
    EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv\r\n" + lines)), "");
    EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv\r\n" + Repeated("a=\r\n", 100000))), "");
    EXPECT_TEXT(Outcome(lines), kNothingOutcome);
}

/// Reads and answers a description of `count` audio sections and checks the result in every section.
std::string AnswerToSections(std::size_t count) {
    Endpoint near;
    const std::string text = kSessionBlock + Repeated("m=audio 5004 RTP/AVP 0\r\n", count);
    EXPECT_EQ(near.handler.ParseTheSDP(text, near.remote), 0);
    EXPECT_EQ(near.handler.vecRemoteMediaSession.size(), count);
    for (const MediaSession* const ms : near.handler.vecRemoteMediaSession) {
        EXPECT_EQ(ms->strFullMLine, "m=audio 5004 RTP/AVP 0");
        EXPECT_EQ(ms->iPort, 5004);
        EXPECT_EQ(ms->vecRtpMap.size(), 1U);
    }
    EXPECT_TEXT(Difference(support::kFreshRemote, support::Describe(near.remote)),
                "-audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
                "+audio codec=1 payload=0 dtmf=0 addr=192.0.2.2 port=5004 send=1 recv=1 valid=1\n");
    const std::string answer = near.handler.GetLocalSDP();
    ExpectAsFresh(near.handler);
    return answer;
}

// structure.cases states the answer to one section.
TEST(Hostile, C19_SectionsFromTwoToAHundredThousand) {
    const std::string one = AnswerToSections(1);
    for (const std::size_t count : {2U, 3U, 16U, 64U, 10000U, 100000U}) {
        EXPECT_TEXT(AnswerToSections(count), one + Repeated("m=audio 0 RTP/AVP 0\r\n", count - 2));
    }
}

TEST(Hostile, C30_ThousandLinesOfFormatsThatAreNotListed) {
    const std::string lines =
        "a=rtpmap:99 X/1\r\na=fmtp:99 x=1\r\na=rtpmap: X/1\r\na=rtpmap:109\r\na=fmtp: x\r\n";
    EXPECT_TEXT(Changes(kConference + Repeated(lines, 1000)), "");
}

/// A section that lists 1000, 1001, ... with an rtpmap and fmtp line for each, in the same or the reverse
/// order.
void ExpectEveryFormatFound(std::size_t count, bool isBackwards) {
    std::string list = "m=video 5004 RTP/AVP";
    std::string lines;
    for (std::size_t n = 0; n < count; ++n) {
        list += " " + std::to_string(1000 + n);
        const std::string at = std::to_string(1000 + (isBackwards ? count - 1 - n : n));
        lines += "a=rtpmap:" + at + " X" + at + "/90000\r\n";
        lines += "a=fmtp:" + at + " a=" + at + ";b\r\n";
    }
    Endpoint near;
    EXPECT_EQ(near.handler.ParseTheSDP("v=0\r\n" + list + "\r\n" + lines, near.remote), 0);
    ASSERT_EQ(near.handler.vecRemoteMediaSession.size(), 1U);
    const std::vector<RtpMap*>& formats = near.handler.vecRemoteMediaSession[0]->vecRtpMap;
    ASSERT_EQ(formats.size(), count);
    for (std::size_t n = 0; n < count; ++n) {
        const std::string at = std::to_string(1000 + n);
        ASSERT_EQ(formats[n]->strPayload, at);
        ASSERT_EQ(formats[n]->strEncodingName, "X" + at + "/90000");
        ASSERT_EQ(formats[n]->vecFmtpParms, std::vector<std::string>({"a=" + at, "b"}));
    }
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C33_AsManyNamesAndParametersAsFormats) {
    for (const std::size_t count : {1U, 2U, 63U, 64U, 65U, 66U, 1000U, 50000U}) {
        SCOPED_TRACE(count);
        ExpectEveryFormatFound(count, false);
        ExpectEveryFormatFound(count, true);
    }
}

TEST(Hostile, C33_FirstOfManyEqualFormatsIsTheOneNamed) {
    for (const std::size_t count : {10U, 64U, 65U, 100U, 50000U}) {
        Endpoint near;
        near.handler.ParseTheSDP("m=video 5004 RTP/AVP" + Repeated(" 97", count) +
                                     "\r\na=rtpmap:97 H264/90000\r\na=fmtp:97 packetization-mode=1\r\n",
                                 near.remote);
        const std::vector<RtpMap*>& formats = near.handler.vecRemoteMediaSession[0]->vecRtpMap;
        ASSERT_EQ(formats.size(), count);
        EXPECT_EQ(formats[0]->strEncodingName, "H264/90000");
        for (std::size_t n = 1; n < count; ++n) {
            ASSERT_EQ(formats[n]->strEncodingName, "");
            ASSERT_TRUE(formats[n]->vecFmtpParms.empty());
        }
        ExpectAsFresh(near.handler);
    }
}

TEST(Hostile, C34_NameOfTenThousandCharacters) {
    const std::string name(10000, 'N');
    EXPECT_TEXT(Changes(With("G722/8000", name)),
                "-0 format 9 G722/8000\n"
                "+0 format 9 NNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNN...(10000 bytes)\n");
    // A name may contain more than the text that is searched for.
    EXPECT_TEXT(Changes(With("a=rtpmap:109 H264/90000\r\n" + kMainLine,
                             "a=rtpmap:109 " + name + "H264/90000\r\n" + kMainLine)),
                "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n"
                "+1 format 109 NNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNN...(10010 bytes) "
                "[profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] [packetization-mode=1]\n");
}

TEST(Hostile, C35_TwoHundredThousandSemicolons) {
    const std::string semicolons(200000, ';');
    EXPECT_TEXT(MainWith(semicolons + "max-fs=7;packetization-mode=1" + semicolons),
                Main("payload=109 mode=1 level= mbps=0 fs=7 br=0"));
    Endpoint near;
    near.handler.ParseTheSDP(With(kMainLine, "a=fmtp:109 " + semicolons), near.remote);
    const RtpMap& format = *near.handler.vecRemoteMediaSession[1]->vecRtpMap[0];
    EXPECT_EQ(format.vecFmtpParms, std::vector<std::string>(200001));
}

TEST(Hostile, C35_TenThousandParameters) {
    std::string parameters;
    for (int n = 0; n < 10000; ++n) {
        parameters += "x" + std::to_string(n) + "=" + std::to_string(n) + ";";
    }
    EXPECT_TEXT(MainWith(parameters + "max-fs=7;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=7 br=0"));
}

TEST(Hostile, C40_LimitsOfAHundredThousandDigits) {
    EXPECT_TEXT(MainWith("max-mbps=" + std::string(100000, '9') + ";max-fs=" + std::string(100000, '0') +
                         "7;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=-1 fs=7 br=0"));
}

TEST(Hostile, C41_ParameterSetsOfAMegabyte) {
    const std::string sets = "sprop-parameter-sets=" + Repeated("Z0IAKeKQFAe2AtwEBAaQeJEV", 43690) + "==";
    ASSERT_GE(sets.size(), std::size_t{1} << 20U);
    for (const std::string& parameters : {sets + ";profile-level-id=42001F;packetization-mode=1",
                                          "profile-level-id=42001F;" + sets + ";packetization-mode=1",
                                          "profile-level-id=42001F;packetization-mode=1;" + sets}) {
        EXPECT_TEXT(MainWith(parameters), Main("payload=109 mode=1 level=3.1 mbps=0 fs=0 br=0"));
    }
    Endpoint near;
    near.handler.ParseTheSDP(With(kMainLine, "a=fmtp:109 " + sets), near.remote);
    EXPECT_EQ(near.handler.vecRemoteMediaSession[1]->vecRtpMap[0]->vecFmtpParms,
              std::vector<std::string>({sets}));
}

const std::string kKey = "YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0";
const std::string kUsualLine = "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:" + kKey + "\r\n";
const std::string kSectionUsual =
    "-0 crypto tag=1 suite=1 text=" + kKey + " key=away audio key 1 salt=away audiosalt\n";

TEST(Hostile, C42_KeyTextOfAMillionCharacters) {
    EXPECT_TEXT(Changes(With(kKey, kKey + std::string(1000000, 'A'))),
                kSectionUsual + "+0 crypto tag=1 suite=1 text=" + kKey +
                    "...(1000040 bytes) key=away audio key 1 salt=away audiosalt\n");
}

TEST(Hostile, C43_HundredCryptoLines) {
    std::string lines;
    for (int tag = 1; tag <= 100; ++tag) {
        lines += "a=crypto:" + std::to_string(tag) + " AES_CM_128_HMAC_SHA1_32 inline:" +
                 (tag % 2 == 0 ? "YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0" : kKey) + "\r\n";
    }
    EXPECT_TEXT(
        Changes(With(kUsualLine, lines)),
        "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
        "+srtp audio suite=1 key=away slide key 1 salt=away slidesalt\n" +
            kSectionUsual +
            "+0 crypto tag=100 suite=1 text=YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0 key=away slide key 1 "
            "salt=away slidesalt\n"
            "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n"
            "+a=crypto:100 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
}

TEST(Hostile, C43_HundredLinesOfSkippedSuites) {
    const std::string line =
        "a=crypto:7 AES_CM_128_HMAC_SHA1_80 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n"
        "a=crypto:8 AES_CM_256_HMAC_SHA1_80 inline:YXdheSBzbGlkZSBrZXkgMWF3YXkgc2xpZGVzYWx0\r\n";
    EXPECT_TEXT(Changes(With(kUsualLine, Repeated(line, 50) + kUsualLine + Repeated(line, 50))), "");
}

const std::string kCandidateLine = "a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\r\n";

TEST(Hostile, C49_TenThousandCandidates) {
    Endpoint near;
    const std::string text = With(kCandidateLine, Repeated(kCandidateLine, 10000));
    near.handler.ParseTheSDP(text, near.remote);
    EXPECT_EQ(near.handler.vecRemoteMediaSession[0]->vecCandidate,
              std::vector<std::string>(10000, kCandidateLine.substr(0, kCandidateLine.size() - 2)));
    EXPECT_TEXT(LineOf(support::Describe(near.remote), "audio "),
                "audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C49_CredentialsOfHundredThousandCharacters) {
    const std::string credential(100000, 'x');
    EXPECT_TEXT(Changes(Replaced(With("a=ice-ufrag:F7gI", "a=ice-ufrag:" + credential),
                                 "x9cml/YzichV2+XlhiMu8g", credential)),
                "-0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n"
                "+0 ice [a=ice-ufrag:xxxxxxxxxxxxxxxxxxxxxxxxxxxx...(100012 bytes)] "
                "[a=ice-pwd:xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...(100010 bytes)]\n");
}

TEST(Hostile, C51_ConferenceOfAHundredThousandDigits) {
    EXPECT_TEXT(Changes(With("a=confid:15", "a=confid:" + std::string(100000, '9'))),
                "-bfcp port=20390 conf=15 user=16 server=1\n"
                "+bfcp port=20390 conf=-1 user=16 server=1\n"
                "-3 tias= ctrl=s-only conf=15 user=16\n"
                "+3 tias= ctrl=s-only conf=-1 user=16\n");
}

TEST(Hostile, C06_ThousandBlankLines) {
    EXPECT_TEXT(Changes(kConference + Repeated("\r\n", 1000)), "");
    EXPECT_TEXT(Outcome(Repeated("\r\n", 1000)), kNothingOutcome);
}

} // namespace
