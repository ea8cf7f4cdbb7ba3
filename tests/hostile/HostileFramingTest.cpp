// Hostile framing: how the text is split into lines, before any line is read.
#include "Hostile.h"

#include <fstream>
#include <iterator>

namespace {

using namespace hostile;

std::string AllReplaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

TEST(Hostile, C01_EmptyText) {
    EXPECT_TEXT(FromNothing(""), "-status=0\n"
                                 "+status=1\n");
}

TEST(Hostile, C01_EmptyTextLeavesTheRecordAndDropsTheSections) {
    Endpoint near;
    EXPECT_EQ(near.handler.ParseTheSDP(kConference, near.remote), 0);
    const std::string before = support::Describe(near.remote);
    EXPECT_FALSE(near.handler.IsOffer());
    EXPECT_EQ(near.handler.ParseTheSDP("", near.remote), 1);
    EXPECT_TEXT(support::Describe(near.remote), before);
    EXPECT_TRUE(near.handler.IsOffer());
    EXPECT_TEXT(DescribeHeld(near.handler, 200), "session addr=192.0.2.2 bandwidth=\n");
    ExpectAsFresh(near.handler);
}

TEST(Hostile, C02_OneByteOfEveryValue) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_TEXT(Outcome(std::string(1, static_cast<char>(byte))), kNothingOutcome);
    }
}

TEST(Hostile, C03_LastLineOfOneCharacter) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string last(1, static_cast<char>(byte));
        EXPECT_TEXT(Changes(kConference + last), "");
        EXPECT_TEXT(Changes(kConference + last + "\r\n"), "");
        EXPECT_TEXT(Outcome("\r\n" + last), kNothingOutcome);
    }
}

TEST(Hostile, C04_NoFinalLineEndLosesTheLastLine) {
    const std::string lost = "-bfcp port=20390 conf=15 user=16 server=1\n"
                             "+bfcp port=20390 conf=15 user=0 server=1\n"
                             "-3 tias= ctrl=s-only conf=15 user=16\n"
                             "+3 tias= ctrl=s-only conf=15 user=0\n";
    EXPECT_TEXT(Changes(kConference.substr(0, kConference.size() - 2)), lost);
    EXPECT_TEXT(Changes(kConference.substr(0, kConference.size() - 1)), lost);
    EXPECT_TEXT(Outcome("v=0"), kNothingOutcome);
}

TEST(Hostile, C04_TextCutAtEveryByteIsReadUpToItsLastLineEnd) {
    std::string whole = kNothingOutcome;
    for (std::size_t length = 1; length <= kConference.size(); ++length) {
        const std::string text = kConference.substr(0, length);
        if (text.back() == '\n') {
            whole = Outcome(text);
        } else {
            EXPECT_TEXT(Outcome(text), whole);
        }
    }
    EXPECT_TEXT(whole, kConferenceOutcome);
}

TEST(Hostile, C05_LineFeedAloneEndsNoLine) {
    EXPECT_TEXT(Outcome(AllReplaced(kConference, "\r\n", "\n")), kNothingOutcome);
}

TEST(Hostile, C05_CarriageReturnAloneEndsNoLine) {
    EXPECT_TEXT(Outcome(AllReplaced(kConference, "\r\n", "\r")), kNothingOutcome);
    EXPECT_TEXT(Outcome(AllReplaced(kConference, "\r\n", "\n\r")), kNothingOutcome);
}

TEST(Hostile, C05_MixedLineEndsJoinTwoLines) {
    EXPECT_TEXT(Changes(With("t=0 0\r\nm=audio", "t=0 0\nm=audio")),
                kAudioLostInRecord +
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+section 0 media=256 content=100 port=0 send=1 recv=1 addr=\n"
                    "+0 line t=0 0\\nm=audio 20384 RTP/SAVP 9 0 101\n"
                    "+0 format 20384 \n"
                    "+0 format RTP/SAVP \n" +
                    kAudioLostInAnswer);
    EXPECT_TEXT(Changes(With("a=sendrecv\r\n", "a=sendrecv\rx\n\ry\r\n")), "");
}

TEST(Hostile, C05_CarriageReturnTwiceStaysInEveryValue) {
    EXPECT_TEXT(
        Changes(AllReplaced(kConference, "\r\n", "\r\r\n")),
        "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
        "port=20386 "
        "send=0 recv=1 valid=1\n"
        "-preso codec=2 type=1 payload=109 mode=1 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 "
        "send=1 recv=0 valid=1\n"
        "-bfcp port=20390 conf=15 user=16 server=1\n"
        "-bandwidth=1000000\n"
        "+main codec=2 type=0 payload=110 mode=0 level=2 mbps=108000 fs=3601 br=0 addr=192.0.2.3 port=20386 "
        "send=0 recv=1 valid=1\n"
        "+preso codec=2 type=1 payload=109 mode=0 level=4 mbps=0 fs=0 br=1500 addr=192.0.2.4 port=20388 "
        "send=1 recv=0 valid=1\n"
        "+bfcp port=20390 conf=0 user=0 server=0\n"
        "+bandwidth=0\n"
        "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
        "-0 tias=64000 ctrl= conf=0 user=0\n"
        "+0 line m=audio 20384 RTP/SAVP 9 0 101\\r\n"
        "+0 tias=64000\\r ctrl= conf=0 user=0\n"
        "-0 ice [a=ice-ufrag:F7gI] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g]\n"
        "+0 ice [a=ice-ufrag:F7gI\\r] [a=ice-pwd:x9cml/YzichV2+XlhiMu8g\\r]\n"
        "-0 format 101 telephone-event/8000 [0-15]\n"
        "-0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\n"
        "+0 format 101 telephone-event/8000 [0-15\\r]\n"
        "+0 candidate a=candidate:1 1 UDP 2130706431 192.0.2.2 20384 typ host\\r\n"
        "-1 line m=video 20386 RTP/SAVP 109 110\n"
        "-1 tias=936000 ctrl= conf=0 user=0\n"
        "+1 line m=video 20386 RTP/SAVP 109 110\\r\n"
        "+1 tias=936000\\r ctrl= conf=0 user=0\n"
        "-1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
        "[packetization-mode=1]\n"
        "-1 format 110 H264/90000 [profile-level-id=420014] [packetization-mode=0]\n"
        "+1 format 109 H264/90000 [profile-level-id=42001F] [max-mbps=108000] [max-fs=3601] "
        "[packetization-mode=1\\r]\n"
        "+1 format 110 H264/90000 [profile-level-id=420014] [packetization-mode=0\\r]\n"
        "-2 line m=video 20388 RTP/SAVP 109\n"
        "+2 line m=video 20388 RTP/SAVP 109\\r\n"
        "-2 format 109 H264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1]\n"
        "+2 format 109 H264/90000 [profile-level-id=420028] [max-br=1500] [packetization-mode=1\\r]\n"
        "-3 line m=application 20390 UDP/BFCP *\n"
        "-3 tias= ctrl=s-only conf=15 user=16\n"
        "+3 line m=application 20390 UDP/BFCP *\\r\n"
        "+3 tias= ctrl=s-only\\r conf=0 user=0\n"
        "-a=floorctrl:c-only\\r\\n\n"
        "+a=floorctrl:s-only\\r\\n\n");
}

TEST(Hostile, C06_BlankLinesAnywhere) {
    EXPECT_TEXT(Changes("\r\n\r\n" + kConference), "");
    EXPECT_TEXT(Changes(AllReplaced(kConference, "\r\n", "\r\n\r\n")), "");
    EXPECT_TEXT(Changes(kConference + Repeated("\r\n", 1000)), "");
    EXPECT_TEXT(Outcome("\r\n"), kNothingOutcome);
    EXPECT_TEXT(Outcome(Repeated("\r\n", 1000)), kNothingOutcome);
}

TEST(Hostile, C07_NulBeforeTheColon) {
    EXPECT_TEXT(
        Changes(With("a=crypto:1 ", std::string("a=crypto\0:1 ", 12))),
        "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
        "+srtp audio suite=0 key=- salt=-\n"
        "-0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 "
        "salt=away "
        "audiosalt\n"
        "+0 crypto tag=0 suite=0 text= key=- salt=-\n"
        "-m=audio 16384 RTP/SAVP 9 101\\r\\n\n"
        "+m=audio 16384 RTP/AVP 9 101\\r\\n\n"
        "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
}

TEST(Hostile, C07_NulAfterTheColon) {
    EXPECT_TEXT(
        Changes(With("a=crypto:2 ", std::string("a=crypto:\0002 ", 12))),
        "-1 crypto tag=2 suite=1 text=YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0 key=away video key 1 "
        "salt=away "
        "videosalt\n"
        "+1 crypto tag=1 suite=1 text=YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0 key=away video key 1 "
        "salt=away "
        "videosalt\n"
        "-a=crypto:2 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\\r\\n\n"
        "+a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\\r\\n\n");
}

TEST(Hostile, C07_NulInsideANumber) {
    EXPECT_TEXT(Changes(With("m=audio 20384", std::string("m=audio 20\000384", 14))),
                "-audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20384 send=1 recv=1 valid=1\n"
                "+audio codec=64 payload=9 dtmf=101 addr=192.0.2.2 port=20 send=1 recv=1 valid=1\n"
                "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                "+section 0 media=2 content=100 port=20 send=1 recv=1 addr=\n"
                "+0 line m=audio 20\\x00384 RTP/SAVP 9 0 101\n");
    EXPECT_TEXT(Changes(With("b=TIAS:64000", std::string("b=TIAS:64\000000", 13))),
                "-bandwidth=1000000\n"
                "+bandwidth=936000\n"
                "-0 tias=64000 ctrl= conf=0 user=0\n"
                "+0 tias=64\\x00000 ctrl= conf=0 user=0\n");
    EXPECT_TEXT(Changes(With("a=confid:15", std::string("a=confid:1\0005", 12))),
                "-bfcp port=20390 conf=15 user=16 server=1\n"
                "+bfcp port=20390 conf=0 user=16 server=1\n"
                "-3 tias= ctrl=s-only conf=15 user=16\n"
                "+3 tias= ctrl=s-only conf=0 user=16\n");
}

TEST(Hostile, C07_NulAtEveryPosition) {
    for (std::size_t at = 0; at <= kConference.size(); ++at) {
        std::string text = kConference;
        Outcome(text.insert(at, 1, '\0'));
    }
    EXPECT_TEXT(Outcome(std::string(4096, '\0')), kNothingOutcome);
}

TEST(Hostile, C08_BytesBeyondAsciiAtEveryPosition) {
    for (std::size_t at = 0; at <= kConference.size(); ++at) {
        std::string text = kConference;
        Outcome(text.insert(at, 1, static_cast<char>(0x80 + at % 128)));
    }
    std::string all;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_TEXT(Outcome(all), kNothingOutcome);
    EXPECT_TEXT(Changes(With("t=0 0\r\n", "t=0 0\r\n" + all + "\r\n")), "");
}

TEST(Hostile, C08_BadUtf8StaysAsItIs) {
    // A continuation byte alone, an overlong slash, a surrogate, a character beyond Unicode.
    EXPECT_TEXT(Changes(With("c=IN IP4 192.0.2.3", "c=IN IP4 \xbf\xc0\xaf\xed\xa0\x80\xf7\xbf\xbf\xbf")),
                "-main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 addr=192.0.2.3 "
                "port=20386 "
                "send=0 recv=1 valid=1\n"
                "+main codec=2 type=0 payload=109 mode=1 level=3.1 mbps=108000 fs=3601 br=0 "
                "addr=\xbf\xc0\xaf\xed\xa0\x80\xf7\xbf\xbf\xbf port=20386 send=0 recv=1 valid=1\n"
                "-section 1 media=1 content=0 port=20386 send=0 recv=1 addr=192.0.2.3\n"
                "+section 1 media=1 content=0 port=20386 send=0 recv=1 "
                "addr=\\xbf\\xc0\\xaf\\xed\\xa0\\x80\\xf7\\xbf\\xbf\\xbf\n");
}

TEST(Hostile, C08_ByteOrderMarkCostsTheLineItStandsBefore) {
    EXPECT_TEXT(Changes("\xef\xbb\xbf" + kConference), "");
    EXPECT_TEXT(Changes(With("m=audio", "\xef\xbb\xbfm=audio")),
                kAudioLostInRecord +
                    "-section 0 media=2 content=100 port=20384 send=1 recv=1 addr=\n"
                    "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                    "+section 0 media=256 content=100 port=20384 send=1 recv=1 addr=\n"
                    "+0 line \\xef\\xbb\\xbfm=audio 20384 RTP/SAVP 9 0 101\n" +
                    kAudioLostInAnswer);
}

TEST(Hostile, C09_BlanksAndTabsThatAreCutAway) {
    EXPECT_TEXT(Changes(With("c=IN IP4 192.0.2.2", " \tc=IN \t IP4\t192.0.2.2\t ")), "");
    EXPECT_TEXT(Changes(With("a=rtpmap:9 G722/8000", "\t a=rtpmap:9 \t G722/8000 \t")), "");
    EXPECT_TEXT(Changes(With("a=sendonly", " \ta=sendonly\t ")), "");
    EXPECT_TEXT(Changes(With("a=content:slides", "\ta=content:slides ")), "");
    EXPECT_TEXT(Changes(With("a=confid:15", " a=confid:15")), "");
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only", "\ta=floorctrl:s-only")), "");
    EXPECT_TEXT(Changes(With("a=crypto:2 AES", " a=crypto:2\t\tAES")), "");
    EXPECT_TEXT(Changes(With("m=audio 20384 RTP/SAVP 9 0 101", "\tm=audio\t20384  RTP/SAVP 9\v0\f101 ")),
                "-0 line m=audio 20384 RTP/SAVP 9 0 101\n"
                "+0 line \\tm=audio\\t20384  RTP/SAVP 9\\x0b0\\x0c101 \n");
}

TEST(Hostile, C09_BlanksThatCostTheirLine) {
    const std::string noFormatParameters = "-0 format 101 telephone-event/8000 [0-15]\n"
                                           "+0 format 101 telephone-event/8000\n";
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", " a=fmtp:101 0-15")), noFormatParameters);
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", "\ta=fmtp:101 0-15")), noFormatParameters);
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", "a=fmtp:101\t0-15")), noFormatParameters);
    EXPECT_TEXT(Changes(With("a=fmtp:101 0-15", "a=fmtp: 101 0-15")), noFormatParameters);
    EXPECT_TEXT(Changes(With("b=TIAS:64000", "b=TIAS: 64000")), "-bandwidth=1000000\n"
                                                                "+bandwidth=936000\n"
                                                                "-0 tias=64000 ctrl= conf=0 user=0\n"
                                                                "+0 tias= 64000 ctrl= conf=0 user=0\n");
    EXPECT_TEXT(Changes(With("b=TIAS:64000", "b=TIAS:64000 ")), "-bandwidth=1000000\n"
                                                                "+bandwidth=936000\n"
                                                                "-0 tias=64000 ctrl= conf=0 user=0\n"
                                                                "+0 tias=64000  ctrl= conf=0 user=0\n");
    EXPECT_TEXT(Changes(With("a=userid:16", "a=userid:16\t")), "-bfcp port=20390 conf=15 user=16 server=1\n"
                                                               "+bfcp port=20390 conf=15 user=0 server=1\n"
                                                               "-3 tias= ctrl=s-only conf=15 user=16\n"
                                                               "+3 tias= ctrl=s-only conf=15 user=0\n");
    EXPECT_TEXT(Changes(With("a=floorctrl:s-only", "a=floorctrl:s-only ")),
                "-bfcp port=20390 conf=15 user=16 server=1\n"
                "+bfcp port=20390 conf=15 user=16 server=0\n"
                "-3 tias= ctrl=s-only conf=15 user=16\n"
                "+3 tias= ctrl=s-only  conf=15 user=16\n"
                "-a=floorctrl:c-only\\r\\n\n"
                "+a=floorctrl:s-only\\r\\n\n");
}

TEST(Hostile, C09_BlankBehindTheCryptoColonShiftsTheWords) {
    EXPECT_TEXT(
        Changes(With("a=crypto:1 ", "a=crypto: 1 ")),
        "-srtp audio suite=1 key=away audio key 1 salt=away audiosalt\n"
        "+srtp audio suite=0 key=- salt=-\n"
        "-0 crypto tag=1 suite=1 text=YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0 key=away audio key 1 "
        "salt=away "
        "audiosalt\n"
        "+0 crypto tag=1 suite=0 text= key=- salt=-\n"
        "-m=audio 16384 RTP/SAVP 9 101\\r\\n\n"
        "+m=audio 16384 RTP/AVP 9 101\\r\\n\n"
        "-a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0\\r\\n\n");
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
                        bytes + " bytes) \n");
    }
}

TEST(Hostile, C10_LongLineThatTheAnswerRepeats) {
    const std::string bulk(std::size_t{1} << 20U, '7');
    EXPECT_TEXT(Changes(With("UDP/BFCP *", "UDP/BFCP * " + bulk)),
                "-3 line m=application 20390 UDP/BFCP *\n"
                "+3 line m=application 20390 UDP/BFCP * 777777777...(1048607 bytes)\n"
                "+3 format 7777777777777777777777777777777777777777...(1048576 bytes) \n"
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

TEST(Hostile, C12_SipMessageAroundADescription) {
    const std::string head = "INVITE sip:near@192.0.2.1 SIP/2.0\r\n"
                             "Via: SIP/2.0/UDP 192.0.2.2:5060;branch=z9hG4bK776asdhds;rport\r\n"
                             "From: \"Far\" <sip:far@192.0.2.2>;tag=1928301774\r\n"
                             "To: <sip:near@192.0.2.1>\r\n"
                             "Content-Type: application/sdp\r\n"
                             "\r\n";
    EXPECT_TEXT(Outcome(head), kNothingOutcome);
    EXPECT_TEXT(Changes(head + kConference), "");
}

TEST(Hostile, C12_HttpResponseWhoseCookieNamesAnAddress) {
    EXPECT_TEXT(FromNothing("HTTP/1.1 200 OK\r\n"
                            "Cache-Control: max-age=0\r\n"
                            "Set-Cookie: c=1; Path=/; Secure\r\n"
                            "\r\n"
                            "<html><body class=\"m\"></body></html>\r\n"),
                "-session addr= bandwidth=\n"
                "+session addr=Path=/; bandwidth=\n");
}

TEST(Hostile, C12_ElfFile) {
    std::ifstream file("/proc/self/exe", std::ios::binary);
    std::string program{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_EQ(program.substr(1, 3), "ELF");
    program.resize(std::min(program.size(), std::size_t{1} << 20U));
    Outcome(program);
    Outcome(program + "\r\n");
    EXPECT_TEXT(Outcome(program.substr(0, 64)), kNothingOutcome);
}

} // namespace
