// Hostile order and structure: lines in the wrong place, very many lines, or unknown lines.
#include "Hostile.h"

#include <algorithm>

namespace {

using namespace hostile;

const std::string kAudioUsual =
    "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n";

/// The sections of kConference, each with its lines.
std::vector<std::string> Sections() {
    std::vector<std::string> sections;
    for (const std::string& line : Lines(kConference)) {
        if (line.compare(0, 2, "m=") == 0) {
            sections.emplace_back();
        }
        if (!sections.empty()) {
            sections.back() += line;
        }
    }
    return sections;
}

std::string Attributes() {
    std::string attributes;
    for (const std::string& line : Lines(kConference)) {
        attributes += line.compare(0, 2, "a=") == 0 ? line : "";
    }
    return attributes;
}

/// kConference with the lines in its session block and at the end of every section.
std::string Everywhere(const std::string& lines) {
    std::string text = kSessionBlock + lines;
    for (const std::string& section : Sections()) {
        text += section + lines;
    }
    return text;
}

TEST(Hostile, C13_SectionsBeforeTheSessionBlock) {
    EXPECT_TEXT(Changes(kConference.substr(kSessionBlock.size()) + kSessionBlock),
                kAudioUsual + "+audio codec=64 payload=9 dtmf=101 addr= port=20384 send=1 recv=1 valid=1\n"
                              "-session addr=192.0.2.2 bandwidth=\n"
                              "+session addr= bandwidth=\n"
                              "-section 3 media=3 content=100 port=20390 send=1 recv=1 addr=\n"
                              "+section 3 media=3 content=100 port=20390 send=1 recv=1 addr=192.0.2.2\n"
                              "+c=IN IP4 192.0.2.2\\r\\n\n");
}

TEST(Hostile, C14_AttributesBeforeAnySection) {
    EXPECT_TEXT(Changes(Attributes() + kConference), "");
    EXPECT_TEXT(Outcome(Attributes()), kNothingOutcome);
}

TEST(Hostile, C14_AddressInSomeSectionsAndInNone) {
    const std::string some = With("c=IN IP4 192.0.2.2\r\n", "");
    const std::string changes =
        kAudioUsual + "+audio codec=64 payload=9 dtmf=101 addr= port=20384 send=1 recv=1 valid=1\n";
    EXPECT_TEXT(Changes(some), changes + "-session addr=192.0.2.2 bandwidth=\n"
                                         "+session addr= bandwidth=\n");
    const std::string none =
        Replaced(Replaced(some, "c=IN IP4 192.0.2.3\r\n", ""), "c=IN IP4 192.0.2.4\r\n", "");
    EXPECT_TEXT(
        Changes(none),
        kAudioUsual +
            "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
            "port=20386 send=0 recv=1 valid=1\n"
            "-preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 "
            "port=20388 send=1 recv=0 valid=1\n"
            "+audio codec=64 payload=9 dtmf=101 addr= port=20384 send=1 recv=1 valid=1\n"
            "+main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr= "
            "port=20386 send=0 recv=1 valid=1\n"
            "+preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr= "
            "port=20388 send=1 recv=0 valid=1\n"
            "-session addr=192.0.2.2 bandwidth=\n"
            "+session addr= bandwidth=\n"
            "-section 1 media=1 content=0 port=20386 send=0 recv=1 addr=192.0.2.3\n"
            "+section 1 media=1 content=0 port=20386 send=0 recv=1 addr=\n"
            "-section 2 media=1 content=1 port=20388 send=1 recv=0 addr=192.0.2.4\n"
            "+section 2 media=1 content=1 port=20388 send=1 recv=0 addr=\n"
            "-c=IN IP4 192.0.2.4\\r\\n\n");
}

TEST(Hostile, C15_RepeatedSessionLines) {
    EXPECT_TEXT(Changes(Everywhere("v=0\r\nv=1\r\no=x 9 9 IN IP4 192.0.2.9\r\ns=x\r\nt=1 2\r\nt=3 4\r\n")),
                "");
    EXPECT_TEXT(Changes(With("t=0 0", "c=IN IP4 192.0.2.8\r\nc=IN IP4 192.0.2.9\r\nt=0 0")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.9 port=20384 send=1 recv=1 valid=1\n"
                    "-session addr=192.0.2.2 bandwidth=\n"
                    "+session addr=192.0.2.9 bandwidth=\n");
}

TEST(Hostile, C15_RepeatedAddressOfASection) {
    EXPECT_TEXT(Changes(With("a=sendrecv", "c=IN IP4 192.0.2.8\r\nc=IN IP4 192.0.2.9\r\na=sendrecv")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.9 port=20384 send=1 recv=1 valid=1\n"
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "+section 0 media=2 content=100 port=20384 send=1 recv=1 addr=192.0.2.9\n");
}

TEST(Hostile, C16_UnknownLetters) {
    std::string lines;
    for (int letter = 1; letter < 256; ++letter) {
        lines += std::string(1, static_cast<char>(letter)) + "=x\r\n";
    }
    EXPECT_TEXT(Changes(Everywhere(lines)), "");
    EXPECT_TEXT(Outcome(lines), kNothingOutcome);
}

TEST(Hostile, C16_LinesThatAreCutShort) {
    for (const char* const line :
         {"=x",     "=",   "==",   ":",        "a",       "a=",        "a=:",
          "a=x:",   "a=x", "m",    "m=",       "m=audio", "m=audio 1", "m=audio 1 RTP/AVP",
          "c",      "c=",  "c=IN", "c=IN IP4", "b",       "b=",        "b=AS",
          "b=TIAS", "v",   "o",    "s",        "t"}) {
        EXPECT_TEXT(Changes(Everywhere(std::string(line) + "\r\n")), "");
        EXPECT_TEXT(Outcome(std::string(line) + "\r\n"), kNothingOutcome);
    }
}

TEST(Hostile, C16_EveryBeginningOfEveryKeyword) {
    for (const std::string keyword :
         {"a=rtpmap:", "a=fmtp:", "a=crypto:", "a=ice-ufrag:", "a=ice-pwd:", "a=candidate:",
          "a=content:slides", "b=TIAS:", "b=AS:", "a=floorctrl:", "a=confid:", "a=userid:", "a=sendrecv",
          "a=sendonly", "a=recvonly", "a=inactive"}) {
        for (std::size_t length = 1; length <= keyword.size(); ++length) {
            const std::string line = keyword.substr(0, length) + "\r\n";
            EXPECT_TEXT(Outcome(line), kNothingOutcome);
            EXPECT_TEXT(Changes(With("t=0 0\r\n", "t=0 0\r\n" + line)), "");
            EXPECT_TEXT(Changes(With("9 0 101\r\n", "9 0 101\r\n" + line)),
                        line == "a=candidate:\r\n" ? "+0 candidate a=candidate:\n" : "");
        }
    }
}

TEST(Hostile, C17_TextThatLooksLikeAMediaLine) {
    EXPECT_TEXT(Changes(kConference + "i=talk about m=audio 1 RTP/AVP 0\r\n"),
                "+section 4 media=256 content=100 port=0 send=1 recv=1 addr=\n"
                "+4 line i=talk about m=audio 1 RTP/AVP 0\n"
                "+4 tias= ctrl= conf=0 user=0\n"
                "+4 crypto tag=0 suite=0 text= key=- salt=-\n"
                "+4 ice [] []\n"
                "+4 format 1 \n"
                "+4 format RTP/AVP \n"
                "+4 format 0 \n"
                "+i=talk 0 m=audio 1 RTP/AVP 0\\r\\n\n");
}

TEST(Hostile, C17_TextThatLooksLikeAnAddressOrALimit) {
    EXPECT_TEXT(Changes(With("t=0 0", "u=http://192.0.2.9/?c=1\r\nt=0 0")), "");
    EXPECT_TEXT(Changes(With("t=0 0", "u=http://192.0.2.9/?c=1 2 3\r\nt=0 0")),
                kAudioUsual + "+audio codec=64 payload=9 dtmf=101 addr=3 port=20384 send=1 recv=1 valid=1\n"
                              "-session addr=192.0.2.2 bandwidth=\n"
                              "+session addr=3 bandwidth=\n");
    EXPECT_TEXT(Changes(With("s=-", "s=talk about b=AS:5")), "-bandwidth=1000000\n"
                                                             "+bandwidth=5000\n"
                                                             "-session addr=192.0.2.2 bandwidth=\n"
                                                             "+session addr=192.0.2.2 bandwidth=5\n");
}

TEST(Hostile, C17_TextThatLooksLikeAnAttribute) {
    EXPECT_TEXT(Changes(With("a=sendrecv", "e=far@example.net (a=sendonly)")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=0 recv=1 valid=1\n"
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "+section 0 media=2 content=100 port=20384 send=0 recv=1 addr=\n"
                    "-a=sendrecv\\r\\n\n"
                    "+a=recvonly\\r\\n\n");
    EXPECT_TEXT(Changes(With("a=sendrecv", "i=a=rtpmap:9 X/1\r\na=sendrecv")), "");
    EXPECT_TEXT(Changes(With("a=sendrecv", "i=about a=fmtp:9 x\r\na=sendrecv")), "");
}

TEST(Hostile, C18_NoSection) {
    EXPECT_TEXT(FromNothing(kSessionBlock), "-session addr= bandwidth=\n"
                                            "+session addr=192.0.2.2 bandwidth=\n");
    EXPECT_TEXT(FromNothing(kSessionBlock + "b=AS:384\r\n"), "-bandwidth=0\n"
                                                             "+bandwidth=384000\n"
                                                             "-session addr= bandwidth=\n"
                                                             "+session addr=192.0.2.2 bandwidth=384\n");
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

TEST(Hostile, C19_SectionsFromOneToAHundredThousand) {
    const std::string one = AnswerToSections(1);
    EXPECT_TEXT(one, "v=0\r\n"
                     "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                     "s=-\r\n"
                     "c=IN IP4 192.0.2.1\r\n"
                     "b=AS:1000\r\n"
                     "t=0 0\r\n"
                     "m=audio 16384 RTP/AVP 0 101\r\n"
                     "b=TIAS:64000\r\n"
                     "a=rtpmap:0 PCMU/8000\r\n"
                     "a=rtpmap:101 telephone-event/8000\r\n"
                     "a=fmtp:101 0-15\r\n"
                     "a=sendrecv\r\n"
                     "a=rtcp:16385 IN IP4 192.0.2.1\r\n"
                     "m=video 16386 RTP/AVP 97 126\r\n"
                     "b=TIAS:936000\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=1;"
                     "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                     "a=rtpmap:126 H264/90000\r\n"
                     "a=fmtp:126 profile-level-id=42001F;max-mbps=108000;max-fs=3601;packetization-mode=0;"
                     "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                     "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
                     "a=label:8\r\n"
                     "a=content:main\r\n"
                     "m=video 16388 RTP/AVP 97 126\r\n"
                     "b=TIAS:936000\r\n"
                     "a=rtpmap:97 H264/90000\r\n"
                     "a=fmtp:97 profile-level-id=420028;max-br=1500;packetization-mode=1;"
                     "max-rcmd-nalu-size=32000;level-asymmetry-allowed=1\r\n"
                     "a=rtpmap:126 H264/90000\r\n"
                     "a=fmtp:126 profile-level-id=420028;max-br=1500;packetization-mode=0;"
                     "max-rcmd-nalu-size=0;level-asymmetry-allowed=1\r\n"
                     "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
                     "a=label:9\r\n"
                     "a=content:slides\r\n"
                     "m=application  UDP/BFCP *\r\n"
                     "a=floorid:2 mstrm:9\r\n"
                     "a=confid:15\r\n"
                     "a=userid:15\r\n");
    for (const std::size_t count : {2U, 3U, 16U, 64U, 10000U, 100000U}) {
        EXPECT_TEXT(AnswerToSections(count), one + Repeated("m=audio 0 RTP/AVP 0\r\n", count - 2));
    }
}

TEST(Hostile, C20_UnknownMedium) {
    EXPECT_TEXT(Changes(With("m=audio", "m=text")),
                kAudioLostInRecord +
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+section 0 media=256 content=100 port=20384 send=1 recv=1 addr=\n"
                    "+0 line m=text 20384 RTP/SAVP 9 0 101\n" +
                    kAudioLostInAnswer);
    EXPECT_TEXT(Changes(kConference + "m=image 6000 udptl t38\r\na=T38FaxVersion:0\r\n"),
                "+section 4 media=256 content=100 port=6000 send=1 recv=1 addr=\n"
                "+4 line m=image 6000 udptl t38\n"
                "+4 tias= ctrl= conf=0 user=0\n"
                "+4 crypto tag=0 suite=0 text= key=- salt=-\n"
                "+4 ice [] []\n"
                "+4 format t38 \n"
                "+m=image 0 udptl t38\\r\\n\n");
}

TEST(Hostile, C20_UnknownTransport) {
    for (const std::string transport : {"RTP/AVPF", "RTP/SAVPF", "UDP/TLS/RTP/SAVPF", "x", "/", "RTP/AVP/"}) {
        EXPECT_TEXT(Changes(With("20384 RTP/SAVP", "20384 " + transport)),
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+0 line m=audio 20384 " +
                        transport + " 9 0 101\n");
    }
}

TEST(Hostile, C20_FloorControlOverOtherTransports) {
    EXPECT_TEXT(Changes(With("UDP/BFCP", "TCP/BFCP")), "-3 line m=application 20390 UDP/BFCP *\n"
                                                       "+3 line m=application 20390 TCP/BFCP *\n"
                                                       "-m=application 0 UDP/BFCP *\\r\\n\n"
                                                       "+m=application 0 TCP/BFCP *\\r\\n\n");
    EXPECT_TEXT(Changes(With("UDP/BFCP", "udp/bfcp")), "-bfcp port=20390 conf=15 user=16 server=1\n"
                                                       "+bfcp port=0 conf=0 user=0 server=0\n"
                                                       "-3 line m=application 20390 UDP/BFCP *\n"
                                                       "+3 line m=application 20390 udp/bfcp *\n"
                                                       "-m=application 16390 UDP/BFCP *\\r\\n\n"
                                                       "-a=floorctrl:c-only\\r\\n\n"
                                                       "+m=application  UDP/BFCP *\\r\\n\n"
                                                       "-m=application 0 UDP/BFCP *\\r\\n\n"
                                                       "+m=application 0 udp/bfcp *\\r\\n\n");
}

TEST(Hostile, C21_WholeTextInTheOtherCase) {
    std::string swapped = kConference;
    for (char& c : swapped) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
            c = static_cast<char>(c ^ 0x20);
        }
    }
    EXPECT_TEXT(Outcome(swapped), kNothingOutcome);
}

TEST(Hostile, C21_TokensWhoseCaseDoesNotMatter) {
    EXPECT_TEXT(Changes(With("c=IN IP4 192.0.2.2", "c=in ip4 192.0.2.2")), "");
    EXPECT_TEXT(Changes(With("2 AES_CM_128_HMAC_SHA1_32 inline:", "2 AES_CM_128_HMAC_SHA1_32 INLINE:")), "");
    EXPECT_TEXT(Changes(With("a=rtpmap:9 G722/8000", "a=rtpmap:9 g722/8000")), "-0 format 9 G722/8000\n"
                                                                               "+0 format 9 g722/8000\n");
    EXPECT_TEXT(Changes(With("profile-level-id=42001F", "profile-level-id=42001f")),
                "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n"
                "+1 format 109 H264/90000 [profile-level-id=42001f] [max-mbps=108000] [max-fs=3601] "
                "[packetization-mode=1]\n");
}

TEST(Hostile, C21_TokensWhoseCaseMatters) {
    EXPECT_TEXT(Changes(With("m=audio", "m=AUDIO")),
                kAudioLostInRecord +
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+section 0 media=256 content=100 port=20384 send=1 recv=1 addr=\n"
                    "+0 line m=AUDIO 20384 RTP/SAVP 9 0 101\n" +
                    kAudioLostInAnswer);
    EXPECT_TEXT(Changes(With("telephone-event/8000", "TELEPHONE-EVENT/8000")),
                kAudioUsual +
                    "+audio codec=64 payload=9 dtmf=0 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                    "-0 format 101 telephone-event/8000 [0-15]\n"
                    "+0 format 101 TELEPHONE-EVENT/8000 [0-15]\n");
    EXPECT_TEXT(Changes(With("a=fmtp:101", "a=FMTP:101")), "-0 format 101 telephone-event/8000 [0-15]\n"
                                                           "+0 format 101 telephone-event/8000\n");
    EXPECT_TEXT(Changes(With("b=TIAS:64000", "b=tias:64000")), "-bandwidth=1000000\n"
                                                               "+bandwidth=936000\n"
                                                               "-0 tias=64000 ctrl= conf=0 user=0\n"
                                                               "+0 tias= ctrl= conf=0 user=0\n");
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only", "a=floorctrl:S-ONLY")),
                "-bfcp port=20390 conf=15 user=16 server=1\n"
                "+bfcp port=20390 conf=15 user=16 server=0\n"
                "-3 tias= ctrl=s-only conf=15 user=16\n"
                "+3 tias= ctrl=S-ONLY conf=15 user=16\n"
                "-a=floorctrl:c-only\\r\\n\n"
                "+a=floorctrl:s-only\\r\\n\n");
    EXPECT_TEXT(Changes(With("a=sendonly", "a=SendOnly")),
                "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
                "port=20386 "
                "send=0 recv=1 valid=1\n"
                "+main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
                "port=20386 "
                "send=1 recv=1 valid=1\n"
                "-section 1 media=1 content=0 port=20386 send=0 recv=1 addr=192.0.2.3\n"
                "+section 1 media=1 content=0 port=20386 send=1 recv=1 addr=192.0.2.3\n"
                "-a=recvonly\\r\\n\n"
                "+a=sendrecv\\r\\n\n");
}

TEST(Hostile, C21_EveryWordInTheOtherCase) {
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    for (std::size_t at = 0; at < kConference.size();) {
        std::string text = kConference;
        for (; at < text.size() && letter(text[at]); ++at) {
            text[at] = static_cast<char>(text[at] ^ 0x20);
        }
        if (text != kConference) {
            Outcome(text);
        }
        ++at;
    }
}

TEST(Hostile, C21_KeywordsWhoseCaseMatters) {
    EXPECT_TEXT(Changes(With("a=rtpmap:0", "a=RTPMAP:0")), "-0 format 0 PCMU/8000\n"
                                                           "+0 format 0 \n");
    EXPECT_TEXT(Changes(With("a=ice-ufrag", "a=ICE-UFRAG")),
                "-0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n"
                "+0 ice [] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n");
    EXPECT_TEXT(Changes(With("a=candidate", "a=CANDIDATE")),
                "-0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\n");
    EXPECT_TEXT(Changes(With("a=confid", "a=CONFID")), "-bfcp port=20390 conf=15 user=16 server=1\n"
                                                       "+bfcp port=20390 conf=0 user=16 server=1\n"
                                                       "-3 tias= ctrl=s-only conf=15 user=16\n"
                                                       "+3 tias= ctrl=s-only conf=0 user=16\n");
    EXPECT_TEXT(Changes(With("a=userid", "a=UserId")), "-bfcp port=20390 conf=15 user=16 server=1\n"
                                                       "+bfcp port=20390 conf=15 user=0 server=1\n"
                                                       "-3 tias= ctrl=s-only conf=15 user=16\n"
                                                       "+3 tias= ctrl=s-only conf=15 user=0\n");
    EXPECT_TEXT(Changes(With("t=0 0", "b=as:5\r\nt=0 0")), "");
}

TEST(Hostile, C21_FormatsWhoseCaseMatters) {
    const std::string usual =
        "-preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 "
        "send=1 recv=0 valid=1\n";
    const std::string formatUsual =
        "-2 format 109 H264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]\n";
    EXPECT_TEXT(
        Changes(With("H264/90000\r\na=fmtp:109 profile-level-id=420028",
                     "h264/90000\r\na=fmtp:109 profile-level-id=420028")),
        usual +
            "+preso codec=2 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr=192.0.2.4 port=20388 send=1 "
            "recv=0 valid=1\n" +
            formatUsual +
            "+2 format 109 h264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]\n");
    EXPECT_TEXT(
        Changes(With("max-br=1500;packetization-mode", "MAX-BR=1500;Packetization-Mode")),
        usual +
            "+preso codec=2 type=1 payload=109 mode=0 level=4 mbps=0 fs=0 br=0 addr=192.0.2.4 port=20388 "
            "send=1 recv=0 valid=1\n" +
            formatUsual +
            "+2 format 109 H264/90000 [profile-level-id=420028] [MAX-BR=1500] [Packetization-Mode=1]\n");
}

TEST(Hostile, C22_PortsOfEveryShape) {
    struct Row {
        const char* written;
        const char* read;
    };
    for (const Row& row : {Row{"5004/2", "5004"}, Row{"5004/0", "5004"}, Row{"4294967295", "-1"},
                           Row{"99999999999999999999", "-1"}, Row{"-1", "-1"}, Row{"+5004", "5004"},
                           Row{"65536", "65536"}, Row{"4294972300", "5004"}, Row{"5004x", "5004"}}) {
        EXPECT_TEXT(Changes(With("m=audio 20384", "m=audio " + std::string(row.written))),
                    kAudioUsual + "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=" + row.read +
                        " send=1 recv=1 valid=1\n"
                        "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                        "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                        "+section 0 media=2 content=100 port=" +
                        row.read +
                        " send=1 recv=1 addr=\n"
                        "+0 line m=audio " +
                        row.written + " RTP/SAVP 9 0 101\n");
    }
}

TEST(Hostile, C22_PortsThatReadZero) {
    for (const std::string port : {"/0", "/2", "0", "0/2", "x", "$", "4294967296", "-0"}) {
        EXPECT_TEXT(Changes(With("m=audio 20384", "m=audio " + port)),
                    kAudioUsual +
                        "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=0 send=0 recv=0 valid=1\n"
                        "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                        "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                        "+section 0 media=2 content=100 port=0 send=1 recv=1 addr=\n"
                        "+0 line m=audio " +
                        port + " RTP/SAVP 9 0 101\n-a=sendrecv\\r\\n\n+a=inactive\\r\\n\n");
    }
}

TEST(Hostile, C23_SectionsAddedDroppedAndReorderedInLaterRounds) {
    const std::vector<std::string> sections = Sections();
    ASSERT_EQ(sections.size(), 4U);
    const std::string many = Repeated("m=video 7000 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n", 20);
    const std::string rounds[] = {
        kConference,
        kConference + many,                                                    // added
        kSessionBlock + sections[0],                                           // dropped
        kSessionBlock + sections[3] + sections[2] + sections[1] + sections[0], // reordered
        sections[1] + sections[0],                                             // and no session block
        kSessionBlock,                                                         // all gone
        kSessionBlock + "b=AS:64\r\n" + sections[2],                           // one back
        kSessionBlock + sections[0] + sections[0] + sections[1] + sections[1] + many,
        kConference,
    };
    Endpoint near;
    for (const std::string& round : rounds) {
        Endpoint fresh;
        fresh.handler.strSessionIPAddr = near.handler.strSessionIPAddr;
        fresh.handler.m_iSessionVersion = near.handler.m_iSessionVersion;
        EXPECT_TEXT(Meet(near.handler, round), Meet(fresh.handler, round));
    }
    EXPECT_TEXT(Difference(kConferenceOutcome, Meet(near.handler, kConference)),
                "-o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\\r\\n\n"
                "+o=Quillmarshorizon 1000 11 IN IP4 192.0.2.1\\r\\n\n");
    ExpectAsFresh(near.handler);
}

/// The lines that kConference loses if its audio crypto line is read as another line.
const std::string kCryptoLostInRecord = "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
                                        "+srtp audio suite=0 key=- salt=-\n";
const std::string kCryptoLostInSection =
    "-0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 salt=away "
    "audiosalt\n"
    "+0 crypto tag=0 suite=0 text= key=- salt=-\n";
const std::string kCryptoLostInAnswer =
    "-m=audio 16384 RTP/SAVP 9 101\\r\\n\n"
    "+m=audio 16384 RTP/AVP 9 101\\r\\n\n"
    "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n";

TEST(Hostile, C24_KeyTextThatEndsInAKeyword) {
    // The third word of a line with "c=" in it is an address.
    EXPECT_TEXT(
        Changes(With("inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0",
                     "inline:c3VtIG9mIG5vIGtleXM5Nzc1NTg5Nmc=")),
        kAudioUsual +
            "+audio codec=64 payload=9 dtmf=101 addr=inline:c3VtIG9mIG5vIGtleXM5Nzc1NTg5Nmc= port=20384 "
            "send=1 recv=1 valid=1\n" +
            kCryptoLostInRecord +
            "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
            "+section 0 media=2 content=100 port=20384 send=1 recv=1 "
            "addr=inline:c3VtIG9mIG5vIGtleXM5Nzc1NTg5Nmc=\n" +
            kCryptoLostInSection + kCryptoLostInAnswer);
    // Three words are too few for a section.
    EXPECT_TEXT(Changes(With("inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0",
                             "inline:c3VtIG9mIG5vIGtleXM5Nzc1NTg5Nmm=")),
                kCryptoLostInRecord + kCryptoLostInSection + kCryptoLostInAnswer);
}

TEST(Hostile, C24_OtherBase64TextThatEndsInAKeyword) {
    EXPECT_TEXT(Changes(With("a=ice-pwd:x9cml/YzichV2+XlhiMu8g", "a=ice-pwd:x9cml/YzichV2+XlhiMum=")),
                "-0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n"
                "+0 ice [a=ice-ufrag:F7gI] []\n");
    EXPECT_TEXT(
        Changes(With(
            "packetization-mode=1\r\na=rtpmap:110",
            "packetization-mode=1;sprop-parameter-sets=Z0IAKeKQFAe2AtwEBAaQeJc=,aM48gA==\r\na=rtpmap:110")),
        "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
        "port=20386 "
        "send=0 recv=1 valid=1\n"
        "+main codec=2 type=0 payload=110 mode=0 level=2 mbps=0 fs=0 br=0 addr=192.0.2.3 port=20386 "
        "send=0 recv=1 valid=1\n"
        "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
        "[packetization-mode=1]\n"
        "+1 format 109 H264/90000\n");
}

TEST(Hostile, C24_KeywordInTheMiddleOfALine) {
    // An attribute of four words with "m=" in it opens a section after the last one.
    EXPECT_TEXT(Changes(kConference + "a=note: room=5 and more\r\n"),
                "+section 4 media=256 content=100 port=0 send=1 recv=1 addr=\n"
                "+4 line a=note: room=5 and more\n"
                "+4 tias= ctrl= conf=0 user=0\n"
                "+4 crypto tag=0 suite=0 text= key=- salt=-\n"
                "+4 ice [] []\n"
                "+4 format more \n"
                "+a=note: 0 and more\\r\\n\n");
    EXPECT_TEXT(Changes(With("a=label:8", "a=x-label:8 b=TIAS:5")), "-bandwidth=1000000\n"
                                                                    "+bandwidth=64005\n"
                                                                    "-1 tias=936000 ctrl= conf=0 user=0\n"
                                                                    "+1 tias=5 ctrl= conf=0 user=0\n");
}

} // namespace
