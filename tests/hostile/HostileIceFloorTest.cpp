// Hostile ICE, floor control and content: empty values, very many lines, and contradictory lines.
#include "Hostile.h"

namespace {

using namespace hostile;

const std::string kIceUsual = "-0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n";
const std::string kCandidateUsual = "-0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\n";
const std::string kCandidateLine = "a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\r\n";
const std::string kBfcpUsual = "-bfcp port=20390 conf=15 user=16 server=1\n";
const std::string kFloorUsual = "-3 tias= ctrl=s-only conf=15 user=16\n";
const std::string kRoleChanged = "-a=floorctrl:c-only\\r\\n\n"
                                 "+a=floorctrl:s-only\\r\\n\n";
const std::string kMainUsual =
    "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 port=20386 "
    "send=0 recv=1 valid=1\n";
const std::string kPresoUsual =
    "-preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 send=1 "
    "recv=0 valid=1\n";

TEST(Hostile, C49_NoCandidate) {
    EXPECT_TEXT(Changes(With(kCandidateLine, "")), kCandidateUsual);
}

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

TEST(Hostile, C49_CandidatesCutShort) {
    for (std::size_t length = 12; length < kCandidateLine.size() - 2; ++length) {
        const std::string line = kCandidateLine.substr(0, length);
        EXPECT_TEXT(Changes(With(kCandidateLine, line + "\r\n")),
                    kCandidateUsual + "+0 candidate " + line + "\n");
    }
    EXPECT_TEXT(Changes(With(kCandidateLine, "a=candidate\r\na=candidates:1\r\na=Candidate:1\r\n")),
                kCandidateUsual);
}

TEST(Hostile, C49_CredentialsOfHundredThousandCharacters) {
    const std::string credential(100000, 'x');
    EXPECT_TEXT(Changes(Replaced(With("a=ice-ufrag:F7gI", "a=ice-ufrag:" + credential),
                                 "x9cml/YzichV2+XlhiMu8g", credential)),
                kIceUsual + "+0 ice [a=ice-ufrag:xxxxxxxxxxxxxxxxxxxxxxxxxxxx...(100012 bytes)] "
                            "[a=ice-pwd:xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...(100010 bytes)]\n");
}

TEST(Hostile, C49_CredentialsEmptyRepeatedAndUnknown) {
    EXPECT_TEXT(Changes(With("a=ice-ufrag:F7gI",
                             "a=ice-ufrag:x\r\na=ice-ufrag:\r\na=ice-lite\r\na=ice-options:t\r\na=ice")),
                kIceUsual + "+0 ice [a=ice-ufrag:] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n");
    EXPECT_TEXT(Changes(With("a=ice-ufrag:F7gI", "a=ice-ufrag:F7gI a=ice-pwd:x")),
                kIceUsual + "+0 ice [a=ice-ufrag:F7gI a=ice-pwd:x] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n");
}

TEST(Hostile, C50_FloorControlRoleAbsent) {
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only\r\n", "")),
                kBfcpUsual + "+bfcp port=20390 conf=15 user=16 server=0\n" + kFloorUsual +
                    "+3 tias= ctrl= conf=15 user=16\n" + kRoleChanged);
}

TEST(Hostile, C50_FloorControlRoleRepeatedAndContradictory) {
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only\r\n",
                             "a=floorctrl:c-s\r\na=floorctrl:c-only\r\na=floorctrl:s-only\r\n")),
                "");
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only\r\n", "a=floorctrl:s-only\r\na=floorctrl:c-only\r\n")),
                kBfcpUsual + "+bfcp port=20390 conf=15 user=16 server=0\n" + kFloorUsual +
                    "+3 tias= ctrl=c-only conf=15 user=16\n" + kRoleChanged);
    for (const std::string role : {"s-only c-only", "s-onlya=floorctrl:s-only", "S-only", "x", "s-only "}) {
        EXPECT_TEXT(Changes(With("a=floorctrl:s-only\r\n", "a=floorctrl:" + role + "\r\n")),
                    kBfcpUsual + "+bfcp port=20390 conf=15 user=16 server=0\n" + kFloorUsual +
                        "+3 tias= ctrl=" + role + " conf=15 user=16\n" + kRoleChanged);
    }
}

TEST(Hostile, C50_FloorControlLinesInOtherSections) {
    EXPECT_TEXT(Changes(With("a=sendrecv", "a=floorctrl:c-only\r\na=confid:7\r\na=userid:8\r\na=sendrecv")),
                "-0 tias=64000 ctrl= conf=0 user=0\n"
                "+0 tias=64000 ctrl=c-only conf=7 user=8\n");
}

TEST(Hostile, C51_ConferenceAndUserThatAreNoNumbers) {
    for (const std::string id : {"", "x", "1x", " 1", "1 ", "-1", "1.0", "0x1", "\xff"}) {
        EXPECT_TEXT(Changes(Replaced(With("a=confid:15", "a=confid:" + id), "a=userid:16", "a=userid:" + id)),
                    kBfcpUsual + "+bfcp port=20390 conf=0 user=0 server=1\n" + kFloorUsual +
                        "+3 tias= ctrl=s-only conf=0 user=0\n");
    }
}

TEST(Hostile, C51_ConferenceAndUserBeyond32Bits) {
    EXPECT_TEXT(
        Changes(Replaced(With("a=confid:15", "a=confid:99999999999"), "a=userid:16", "a=userid:4294967296")),
        kBfcpUsual + "+bfcp port=20390 conf=1215752191 user=0 server=1\n" + kFloorUsual +
            "+3 tias= ctrl=s-only conf=1215752191 user=0\n");
    EXPECT_TEXT(Changes(Replaced(With("a=confid:15", "a=confid:" + std::string(100000, '9')), "a=userid:16",
                                 "a=userid:2147483648")),
                kBfcpUsual + "+bfcp port=20390 conf=-1 user=-2147483648 server=1\n" + kFloorUsual +
                    "+3 tias= ctrl=s-only conf=-1 user=-2147483648\n");
}

TEST(Hostile, C52_TwoFloorControlSections) {
    // The record uses the last section; the answer takes its port from the first and its role from the last
    // (B16).
    EXPECT_TEXT(Changes(kConference + "m=application 0 TCP/BFCP *\r\na=floorctrl:c-only\r\na=confid:7\r\n"),
                kBfcpUsual +
                    "+bfcp port=0 conf=7 user=0 server=0\n"
                    "+section 4 media=3 content=100 port=0 send=1 recv=1 addr=\n"
                    "+4 line m=application 0 TCP/BFCP *\n"
                    "+4 tias= ctrl=c-only conf=7 user=0\n"
                    "+4 crypto tag=0 suite=0 text= key=- salt=-\n"
                    "+4 ice [] []\n"
                    "+4 format * \n" +
                    kRoleChanged + "+m=application 0 TCP/BFCP *\\r\\n\n");
}

TEST(Hostile, C52_FloorControlSectionWithPortZero) {
    EXPECT_TEXT(Changes(With("m=application 20390", "m=application 0")),
                kBfcpUsual + "+bfcp port=0 conf=15 user=16 server=1\n"
                             "-section 3 media=3 content=100 port=20390 send=1 recv=1 addr=\n"
                             "-3 line m=application 20390 UDP/BFCP *\n"
                             "+section 3 media=3 content=100 port=0 send=1 recv=1 addr=\n"
                             "+3 line m=application 0 UDP/BFCP *\n"
                             "-m=application 16390 UDP/BFCP *\\r\\n\n"
                             "+m=application 0 UDP/BFCP *\\r\\n\n");
}

/// The lines that are lost if both video sections are main: the presentation, in record and answer.
const std::string kTwoMains =
    kPresoUsual +
    "+preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "-srtp slide suite=1 key=away slide key 1 salt=away slidesalt\n"
    "+srtp slide suite=0 key=- salt=-\n"
    "-section 2 media=1 content=1 port=20388 send=1 recv=0 addr=192.0.2.4\n"
    "+section 2 media=1 content=0 port=20388 send=1 recv=0 addr=192.0.2.4\n"
    "-m=video 16388 RTP/SAVP 97 126\\r\\n\n"
    "+m=video 16388 RTP/AVP 97 126\\r\\n\n"
    "-a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\\r\\n\n"
    "-a=sendonly\\r\\n\n";

TEST(Hostile, C53_ContentTwice) {
    EXPECT_TEXT(Changes(With("a=content:slides", "a=content:main\r\na=content:slides")), "");
    EXPECT_TEXT(Changes(With("a=content:slides", "a=content:slides\r\na=content:main")), kTwoMains);
    EXPECT_TEXT(Changes(With("a=content:slides", "a=content:slides,a=content:main")), kTwoMains);
    EXPECT_TEXT(
        Changes(With("a=content:slides", "a=content:slides\r\na=content:alt\r\na=content:\r\na=content:x")),
        "");
}

TEST(Hostile, C53_MainTwice) {
    EXPECT_TEXT(Changes(With("a=content:slides", "a=content:main")), kTwoMains);
    EXPECT_TEXT(Changes(With("a=content:slides\r\n", "")), kTwoMains);
    EXPECT_TEXT(Changes(With("a=content:main\r\n", "")), "");
}

TEST(Hostile, C53_SlidesWithoutMain) {
    EXPECT_TEXT(
        Changes(With("a=content:main", "a=content:slides")),
        kMainUsual + kPresoUsual +
            "+main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 "
            "valid=0\n"
            "+preso codec=2 type=1 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
            "port=20386 send=0 recv=1 valid=1\n"
            "-bandwidth=1000000\n"
            "+bandwidth=64000\n"
            "-srtp video suite=1 key=away video key 1 salt=away videosalt\n"
            "-srtp slide suite=1 key=away slide key 1 salt=away slidesalt\n"
            "+srtp video suite=0 key=- salt=-\n"
            "+srtp slide suite=1 key=away video key 1 salt=away videosalt\n"
            "-section 1 media=1 content=0 port=20386 send=0 recv=1 addr=192.0.2.3\n"
            "+section 1 media=1 content=1 port=20386 send=0 recv=1 addr=192.0.2.3\n"
            "-a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\\r\\n\n"
            "-a=recvonly\\r\\n\n"
            "-a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\\r\\n\n"
            "+a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\\r\\n\n"
            "-a=sendonly\\r\\n\n"
            "+a=recvonly\\r\\n\n");
}

TEST(Hostile, C53_ContentOfSectionsThatAreNoVideo) {
    EXPECT_TEXT(Changes(Replaced(With("a=sendrecv", "a=content:slides\r\na=sendrecv"), "a=confid:15",
                                 "a=content:main\r\na=confid:15")),
                "");
}

} // namespace
