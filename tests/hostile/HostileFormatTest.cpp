// Hostile payload formats: names and parameters without a format, formats without a name, and very many of
// each.
#include "Hostile.h"

namespace {

using namespace hostile;

const std::string kAudioUsual =
    "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n";
const std::string kMainUsual =
    "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 port=20386 "
    "send=0 recv=1 valid=1\n";
const std::string kPresoUsual =
    "-preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 send=1 "
    "recv=0 valid=1\n";
const std::string kMode1Usual = "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] "
                                "[max-fs=3601] [packetization-mode=1]\n";
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

TEST(Hostile, C29_PayloadListedTwiceInOneSection) {
    EXPECT_TEXT(Changes(With("9 0 101", "9 0 101 9 101")), "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                                                           "+0 line m=audio 20384 RTP/SAVP 9 0 101 9 101\n"
                                                           "+0 format 9 \n"
                                                           "+0 format 101 \n");
    EXPECT_TEXT(Changes(With("109 110\r\n", "109 109 110\r\n")),
                "-1 line m=video 20386 RTP/SAVP 109 110\n"
                "+1 line m=video 20386 RTP/SAVP 109 109 110\n"
                "+1 format 109 \n");
}

TEST(Hostile, C29_PayloadOfTwoSections) {
    // Payload 109 is H.264 in one section and another codec in the other.
    EXPECT_TEXT(
        Changes(With("a=rtpmap:109 H264/90000\r\na=fmtp:109 profile-level-id=420028",
                     "a=rtpmap:109 VP8/90000\r\na=fmtp:109 profile-level-id=420028")),
        kPresoUsual +
            "+preso codec=2 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr=192.0.2.4 port=20388 send=1 "
            "recv=0 valid=1\n"
            "-2 format 109 H264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]\n"
            "+2 format 109 VP8/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]\n");
}

TEST(Hostile, C29_PayloadWithTwoCodecs) {
    EXPECT_TEXT(Changes(With(kMainLine, "a=rtpmap:109 VP8/90000\r\n" + kMainLine)),
                kMainUsual + "+" + Main("payload=110 mode=0 level=2 mbps=0 fs=0 br=0") + "\n" + kMode1Usual +
                    "+1 format 109 VP8/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                    "[packetization-mode=1]\n");
}

TEST(Hostile, C30_NamesAndParametersOfFormatsThatAreNotListed) {
    std::string lines;
    for (const char* const payload : {"99", "-1", "4294967295", "109x", "0109", "**", ":109", "109:"}) {
        lines += "a=rtpmap:" + std::string(payload) + " X/1\r\na=fmtp:" + payload + " x=1\r\n";
    }
    lines +=
        "a=rtpmap:\r\na=rtpmap: X/1\r\na=rtpmap:109\r\na=rtpmap\r\na=rtpmap X/1\r\na=fmtp:\r\na=fmtp: x\r\n";
    EXPECT_TEXT(Changes(With("a=label:8\r\n", "a=label:8\r\n" + lines)), "");
    EXPECT_TEXT(Changes(kConference + Repeated(lines, 1000)), "");
}

TEST(Hostile, C31_DynamicPayloadWithoutName) {
    EXPECT_TEXT(Changes(With("9 0 101", "96 104 9 0 101")), "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                                                            "+0 line m=audio 20384 RTP/SAVP 96 104 9 0 101\n"
                                                            "+0 format 96 \n"
                                                            "+0 format 104 \n");
    EXPECT_TEXT(Changes(With("a=rtpmap:101 telephone-event/8000\r\n", "")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=0 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                    "-0 format 101 telephone-event/8000 [0-15]\n"
                    "+0 format 101  [0-15]\n");
    EXPECT_TEXT(Changes(With("a=rtpmap:109 H264/90000\r\n" + kMainLine, kMainLine)),
                kMainUsual + "+" + Main("payload=110 mode=0 level=2 mbps=0 fs=0 br=0") + "\n" + kMode1Usual +
                    "+1 format 109  [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                    "[packetization-mode=1]\n");
}

TEST(Hostile, C32_StaticPayloadRenamed) {
    EXPECT_TEXT(Changes(With("a=rtpmap:9 G722/8000", "a=rtpmap:9 H264/90000")), "-0 format 9 G722/8000\n"
                                                                                "+0 format 9 H264/90000\n");
    EXPECT_TEXT(Changes(With("a=rtpmap:0 PCMU/8000", "a=rtpmap:0 telephone-event/8000")),
                "-0 format 0 PCMU/8000\n"
                "+0 format 0 telephone-event/8000\n");
    // In a video section the static number of an audio codec has no special meaning.
    EXPECT_TEXT(Changes(Replaced(With("RTP/SAVP 109 110", "RTP/SAVP 0 110"),
                                 "a=rtpmap:109 H264/90000\r\n" + kMainLine,
                                 "a=rtpmap:0 H264/90000\r\na=fmtp:0 packetization-mode=1")),
                kMainUsual + "+" + Main("payload=0 mode=1 level= mbps=0 fs=0 br=0") +
                    "\n"
                    "-1 line m=video 20386 RTP/SAVP 109 110\n"
                    "+1 line m=video 20386 RTP/SAVP 0 110\n" +
                    kMode1Usual + "+1 format 0 H264/90000 [packetization-mode=1]\n");
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
                kMode1Usual + "+1 format 109 NNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNN...(10010 bytes) "
                              "[profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                              "[packetization-mode=1]\n");
}

TEST(Hostile, C35_EmptyParameters) {
    EXPECT_TEXT(Changes(With(kMainLine, kMainLine + "\r\na=fmtp:109 \r\na=fmtp:109")), "");
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", "a=fmtp:101 ")), "-0 format 101 telephone-event/8000 [0-15]\n"
                                                                 "+0 format 101 telephone-event/8000\n");
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", "a=fmtp:101 ;;;")),
                "-0 format 101 telephone-event/8000 [0-15]\n"
                "+0 format 101 telephone-event/8000 [] [] [] []\n");
    EXPECT_TEXT(MainWith(";;;max-fs=7;;packetization-mode=1;"),
                Main("payload=109 mode=1 level= mbps=0 fs=7 br=0"));
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

TEST(Hostile, C35_EqualSignsInOddPlaces) {
    for (const std::string parameters : {"=", "==", "=max-fs=7", "a=b=c", "max-fs", "max-fs=", "max-fs==7",
                                         ";=;", "=;=", "max-fs=;max-fs"}) {
        EXPECT_TEXT(MainWith(parameters + ";packetization-mode=1"),
                    Main("payload=109 mode=1 level= mbps=0 fs=0 br=0"));
    }
    EXPECT_TEXT(MainWith("max-fs=7=8;packetization-mode=1=2"),
                Main("payload=109 mode=1 level= mbps=0 fs=7 br=0"));
    // The keys are searched for in the parameter, and the first one found takes the value.
    EXPECT_TEXT(MainWith("x-max-br-y=7;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=0 br=7"));
    EXPECT_TEXT(MainWith("max-fs max-mbps=7;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=7 fs=0 br=0"));
}

TEST(Hostile, C35_TenThousandParameters) {
    std::string parameters;
    for (int n = 0; n < 10000; ++n) {
        parameters += "x" + std::to_string(n) + "=" + std::to_string(n) + ";";
    }
    EXPECT_TEXT(MainWith(parameters + "max-fs=7;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=7 br=0"));
}

TEST(Hostile, C35_ParameterWithTwoValues) {
    EXPECT_TEXT(MainWith("max-fs=1;max-fs=2;packetization-mode=0;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=2 br=0"));
    EXPECT_TEXT(MainWith("max-fs=1;max-fs=x;max-fs=;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=1 br=0"));
    EXPECT_TEXT(MainWith("profile-level-id=42001F;profile-level-id=420028;packetization-mode=1"),
                Main("payload=109 mode=1 level=4 mbps=0 fs=0 br=0"));
}

TEST(Hostile, C36_TelephoneEventsOfOtherRates) {
    for (const std::string rate : {"16000", "48000", "80000", "800", "", "8000/1"}) {
        EXPECT_TEXT(Changes(With("telephone-event/8000", "telephone-event/" + rate)),
                    kAudioUsual +
                        "+audio codec=64 payload=9 dtmf=0 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                        "-0 format 101 telephone-event/8000 [0-15]\n"
                        "+0 format 101 telephone-event/" +
                        rate + " [0-15]\n");
    }
}

TEST(Hostile, C36_TelephoneEventsTwice) {
    EXPECT_TEXT(Changes(Replaced(With("9 0 101", "9 100 0 101"), "a=rtpmap:9 G722/8000",
                                 "a=rtpmap:9 G722/8000\r\na=rtpmap:100 telephone-event/8000")),
                "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                "+0 line m=audio 20384 RTP/SAVP 9 100 0 101\n"
                "+0 format 100 telephone-event/8000\n");
    EXPECT_TEXT(Changes(Replaced(With("9 0 101", "9 0 101 100"), "a=rtpmap:9 G722/8000",
                                 "a=rtpmap:9 G722/8000\r\na=rtpmap:100 telephone-event/8000")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=100 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+0 line m=audio 20384 RTP/SAVP 9 0 101 100\n"
                    "+0 format 100 telephone-event/8000\n");
}

/// kConference with G.722.1 as first format and these lines for it.
std::string WithWideband(const std::string& lines) {
    return Replaced(With("9 0 101", "99 9 0 101"), "a=rtpmap:9 G722/8000", lines + "a=rtpmap:9 G722/8000");
}

TEST(Hostile, C37_WidebandWithoutItsBitRate) {
    struct Row {
        const char* lines;
        const char* format;
    };
    for (const Row& row : {
             Row{"a=rtpmap:99 G7221/16000\r\n", "G7221/16000"},
             Row{"a=rtpmap:99 G7221/16000\r\na=fmtp:99 bitrate=0\r\n", "G7221/16000 [bitrate=0]"},
             Row{"a=rtpmap:99 G7221/16000\r\na=fmtp:99 bitrate=24000\r\n", "G7221/16000 [bitrate=24000]"},
             Row{"a=rtpmap:99 G7221/16000\r\na=fmtp:99 bitrate=\r\n", "G7221/16000 [bitrate=]"},
             Row{"a=rtpmap:99 G7221/16000\r\na=fmtp:99  bitrate=32000\r\n", "G7221/16000 [ bitrate=32000]"},
             Row{"a=rtpmap:99 G7221/16000\r\na=fmtp:99 x; bitrate=32000\r\n",
                 "G7221/16000 [x] [ bitrate=32000]"},
             Row{"a=rtpmap:99 G7221/32000\r\na=fmtp:99 bitrate=32000\r\n", "G7221/32000 [bitrate=32000]"},
             Row{"a=rtpmap:99 G7221/16000/1\r\na=fmtp:99 bitrate=32000\r\n", "G7221/16000/1 [bitrate=32000]"},
             Row{"a=fmtp:99 bitrate=32000\r\n", " [bitrate=32000]"},
         }) {
        EXPECT_TEXT(Changes(WithWideband(row.lines)), "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                                                      "+0 line m=audio 20384 RTP/SAVP 99 9 0 101\n"
                                                      "+0 format 99 " +
                                                          std::string(row.format) + "\n");
    }
}

TEST(Hostile, C37_WidebandWhoseBitRateIsSeen) {
    for (const std::string parameters :
         {"bitrate=32000", "x;bitrate=32000", "bitrate=0;bitrate=32000;x", "bitrate=320000"}) {
        Endpoint near;
        const std::string text = WithWideband("a=rtpmap:99 G7221/16000\r\na=fmtp:99 " + parameters + "\r\n");
        near.handler.ParseTheSDP(text, near.remote);
        EXPECT_TEXT(LineOf(support::Describe(near.remote), "audio "),
                    "audio codec=16 payload=99 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1");
        EXPECT_TEXT(LineOf(near.handler.GetLocalSDP(), "m=audio"), "m=audio 16384 RTP/SAVP 104 101");
        ExpectAsFresh(near.handler);
    }
}

TEST(Hostile, C38_ProfileLevelIdOfEveryLength) {
    struct Row {
        const char* written;
        const char* level;
    };
    for (const Row& row : {
             Row{"", ""},
             Row{"4", ""},
             Row{"42", ""},
             Row{"420", ""},
             Row{"4200", "1.3"},
             Row{"42001", "1.3"},
             Row{"42001f", "3.1"},
             Row{"42001f0", "1.3"},
             Row{"42001f00", "1.3"},
             Row{"0x42", "1.3"},
             Row{"0x42001f", "3.1"},
             Row{"42000x1f", "3.1"},
             Row{"42000X1F", "3.1"},
             Row{"4200zz", "1.3"},
             Row{"42001g", "1.3"},
             Row{"42001fg", "3.1"},
             Row{"4200 1f", "3.1"},
             Row{"4200+1f", "3.1"},
             Row{"4200-1", "1.3"},
             Row{"420000000000000000001f", "3.1"},
             Row{"4200ffffffffffffffffffff", "1.3"},
             Row{"420010000001f", "1.3"},
             Row{"420010000000000001f", "1.3"},
             Row{"4200ff", "1.b"},
             Row{"420034", "1.3"},
             Row{"420000", "1.3"},
             Row{"42e00d", "1.3"},
             Row{"zzzz33", "5.1"},
         }) {
        SCOPED_TRACE(row.written);
        EXPECT_TEXT(MainWith("profile-level-id=" + std::string(row.written) + ";packetization-mode=1"),
                    Main("payload=109 mode=1 level=" + std::string(row.level) + " mbps=0 fs=0 br=0"));
    }
}

TEST(Hostile, C39_PacketizationModesThatNobodyKnows) {
    EXPECT_TEXT(MainWith("packetization-mode=2"), Main("payload=109 mode=2 level= mbps=0 fs=0 br=0"));
    EXPECT_TEXT(MainWith("packetization-mode=99"), Main("payload=109 mode=99 level= mbps=0 fs=0 br=0"));
    for (const std::string parameters :
         {"max-fs=7", "packetization-mode=;max-fs=7", "packetization-mode=x;max-fs=7",
          "packetization-mode=-1;max-fs=7", "max-fs=7;packetization-mode", "max-fs=7;packetization-mode=0"}) {
        // Without a mode the next format is read over the values of the first (X04).
        EXPECT_TEXT(MainWith(parameters), Main("payload=110 mode=0 level=2 mbps=0 fs=7 br=0"));
    }
}

TEST(Hostile, C39_PacketizationModeInEveryOrder) {
    const std::string parameters[] = {"profile-level-id=42001F", "max-mbps=108000", "packetization-mode=1"};
    const int orders[][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const auto& order : orders) {
        EXPECT_TEXT(MainWith(parameters[order[0]] + ";" + parameters[order[1]] + "; " + parameters[order[2]]),
                    Main("payload=109 mode=1 level=3.1 mbps=108000 fs=0 br=0"));
    }
    EXPECT_TEXT(Changes(With("109 110\r\n", "110 109\r\n")),
                "-1 line m=video 20386 RTP/SAVP 109 110\n"
                "+1 line m=video 20386 RTP/SAVP 110 109\n" +
                    kMode1Usual +
                    "+1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                    "[packetization-mode=1]\n");
}

TEST(Hostile, C40_LimitsThatAreHugeNegativeOrNoNumbers) {
    EXPECT_TEXT(MainWith("max-mbps=99999999999;max-fs=4294967295;max-br=2147483648;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=1215752191 fs=-1 br=-2147483648"));
    EXPECT_TEXT(MainWith("max-mbps=-1;max-fs=-2147483648;max-br=-0;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=0 br=0"));
    EXPECT_TEXT(MainWith("max-mbps=abc;max-fs=1.5;max-br=0x10;packetization-mode=1"),
                Main("payload=109 mode=1 level= mbps=0 fs=0 br=0"));
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

} // namespace
