// Text to lines, and each line to the one reader that takes it: the thirteen rows, their order, and what
// happens to texts whose lines do not end as they should.
#include "SDPHandler.h"

#include "Describe.h"
#include "Expect.h"
#include "Fields.h"
#include "RecordSamples.h"

#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

const char kKey[] = "WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz";

// A handler that has read `sdpText`, and the results.
struct Parsed {
    SDPHandler handler;
    RemoteSDP remote;
    int result;

    explicit Parsed(const std::string& sdpText) : result(handler.ParseTheSDP(sdpText, remote)) {}
    std::vector<MediaSession*>& Sections() { return handler.vecRemoteMediaSession; }
    MediaSession& Last() { return *handler.vecRemoteMediaSession.back(); }
};

// The state after one line that follows an audio and a video section.
struct InVideo : Parsed {
    explicit InVideo(const std::string& lineText)
        : Parsed("m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 96 97\r\n" + lineText + "\r\n") {}
};

std::string StateOf(SDPHandler& handler) {
    std::string state = "address " + handler.strSessionIPAddr + "\n";
    state += "bandwidth " + handler.strMaxSessionBandwidth + "\n";
    for (const MediaSession* ms : handler.vecRemoteMediaSession) {
        state += support::FieldsText(*ms) + "\n";
    }
    return state;
}

// --- the whole text ---

TEST(SDPParse, EmptyTextIsReportedAndClearsWhatWasHeld) {
    Parsed p("b=AS:384\r\nm=audio 5000 RTP/AVP 0\r\n");
    ASSERT_EQ(p.Sections().size(), 1U);
    ASSERT_EQ(p.handler.strMaxSessionBandwidth, "384");
    EXPECT_EQ(p.handler.ParseTheSDP("", p.remote), 1);
    EXPECT_TRUE(p.Sections().empty());
    EXPECT_EQ(p.handler.strMaxSessionBandwidth, "");
}

TEST(SDPParse, EmptyTextLeavesTheRecordUntouched) {
    SDPHandler handler;
    RemoteSDP remote = samples::Filled<RemoteSDP>();
    EXPECT_EQ(handler.ParseTheSDP("", remote), 1);
    samples::ExpectSame(remote, samples::Filled<RemoteSDP>());
}

TEST(SDPParse, EveryOtherTextGivesZeroAndARecordThatWasReset) {
    for (const char* text :
         {"x", "\r", "\n", "\r\n", "\r\n\r\n", "v=0", "v=0\r\n", "no line at all", "m=\r\n", "c=\r\n"}) {
        SDPHandler handler;
        RemoteSDP remote = samples::Filled<RemoteSDP>();
        EXPECT_EQ(handler.ParseTheSDP(text, remote), 0) << text;
        samples::ExpectNew(remote);
        EXPECT_TRUE(handler.IsOffer());
    }
}

TEST(SDPParse, TerminatedMediaLineOpensASection) {
    Parsed p("v=0\r\nm=audio 5000 RTP/AVP 0\r\n");
    EXPECT_EQ(p.result, 0);
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_TEXT(p.Last().strFullMLine, "m=audio 5000 RTP/AVP 0");
    EXPECT_TRUE(p.remote.fIsAudioValid);
}

TEST(SDPParse, UnterminatedLastLineIsDroppedAndTheRecordIsStillFilled) {
    Parsed p("b=AS:64\r\nm=audio 5000 RTP/AVP 0");
    EXPECT_EQ(p.result, 0);
    EXPECT_TRUE(p.Sections().empty());
    EXPECT_EQ(p.remote.iMaxBandwidth, 64000);
}

TEST(SDPParse, UnterminatedRestBehindASectionIsDropped) {
    for (const char* rest : {"a=sendonly", "a=sendonly\r", "a=sendonly\n", "a=sendonly\n\r"}) {
        Parsed p(std::string("m=audio 5000 RTP/AVP 0\r\n") + rest);
        ASSERT_EQ(p.Sections().size(), 1U);
        EXPECT_TRUE(p.Last().fSend);
        EXPECT_TRUE(p.Last().fRecv);
    }
}

TEST(SDPParse, TextWithLineFeedsAloneIsOneLineUpToTheFirstTerminator) {
    Parsed p("m=audio 5000 RTP/AVP 0\nm=video 5002 RTP/AVP 97\r\n");
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_TEXT(p.Last().strFullMLine, "m=audio 5000 RTP/AVP 0\nm=video 5002 RTP/AVP 97");
    ASSERT_EQ(p.Last().vecRtpMap.size(), 5U);
    EXPECT_EQ(p.Last().vecRtpMap[1]->strPayload, "m=video");
}

TEST(SDPParse, TextWithLineFeedsAloneAndNoTerminatorHasNoLine) {
    Parsed p("v=0\nm=audio 5000 RTP/AVP 0\na=sendonly\n");
    EXPECT_EQ(p.result, 0);
    EXPECT_TRUE(p.Sections().empty());
}

TEST(SDPParse, TerminatorIsTheTwoBytesInThisOrder) {
    Parsed reversed("v=0\n\rm=audio 5000 RTP/AVP 0\n\r");
    EXPECT_TRUE(reversed.Sections().empty());
    Parsed returns("v=0\rm=audio 5000 RTP/AVP 0\r");
    EXPECT_TRUE(returns.Sections().empty());
}

TEST(SDPParse, LoneCarriageReturnBelongsToItsLine) {
    Parsed p("m=audio 5000 RTP/AVP 0\r\n"
             "a=candidate:1\r\r\n"
             "a=candidate:2\ra=candidate:3\r\n");
    EXPECT_EQ(p.Last().vecCandidate, (Pieces{"a=candidate:1\r", "a=candidate:2\ra=candidate:3"}));
}

TEST(SDPParse, EmptyLinesAreIgnored) {
    Parsed p("\r\n\r\nm=audio 5000 RTP/AVP 0\r\n\r\n\r\na=candidate:1\r\n\r\n");
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_EQ(p.Last().vecCandidate, (Pieces{"a=candidate:1"}));
}

TEST(SDPParse, LinesWithoutAnyKeywordChangeNothing) {
    Parsed bare("m=audio 5000 RTP/AVP 0\r\n");
    for (const char* line : {"v=0",        "o=- 1 1 IN IP4 192.0.2.1",
                             "s=-",        "t=0 0",
                             "i=text",     "u=http://x",
                             "e=x@y",      "p=+1",
                             "r=1",        "z=0",
                             "k=prompt",   "text",
                             "a",          "a:b",
                             "A=inactive", "M=audio 1 2 3",
                             "C=IN IP4 x", "B=AS:1",
                             "c",          "c =IN IP4 x",
                             "="}) {
        Parsed p("m=audio 5000 RTP/AVP 0\r\n" + std::string(line) + "\r\n");
        EXPECT_TEXT(StateOf(p.handler), StateOf(bare.handler)) << line;
    }
}

TEST(SDPParse, SecondTextReplacesTheSectionsOfTheFirst) {
    Parsed p("m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 97\r\n");
    EXPECT_EQ(p.handler.ParseTheSDP("m=application 5070 UDP/BFCP *\r\n", p.remote), 0);
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_EQ(p.Last().eMedia, MEDIA_APPLICATION);
    EXPECT_FALSE(p.remote.fIsAudioValid);
    EXPECT_FALSE(p.remote.m_VideoMain.fIsVideoValid);
    EXPECT_EQ(p.remote.iVideoPresoControlPort, 5070);
}

TEST(SDPParse, CallersTextStaysAsItIs) {
    SDPHandler handler;
    RemoteSDP remote;
    const std::string sdpText = "m=audio 5000 RTP/AVP 0\r\n";
    std::string copied = sdpText;
    handler.ParseTheSDP(copied, remote);
    EXPECT_EQ(copied, sdpText);
}

TEST(SDPParse, ZeroBytesAreOrdinaryBytes) {
    Parsed p(std::string("m=audio 5000 RTP/AVP 0\r\na=candidate:\0x\r\n\0\r\na=candidate:2\r\n", 58));
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_EQ(p.Last().vecCandidate, (Pieces{std::string("a=candidate:\0x", 14), "a=candidate:2"}));
}

TEST(SDPParse, WholeDescriptionEndsInAWholeRecord) {
    Parsed p("v=0\r\n"
             "o=- 1 1 IN IP4 192.0.2.2\r\n"
             "s=-\r\n"
             "c=IN IP4 192.0.2.2\r\n"
             "t=0 0\r\n"
             "m=audio 5000 RTP/AVP 0 101\r\n"
             "a=rtpmap:101 telephone-event/8000\r\n"
             "m=video 5002 RTP/AVP 97\r\n"
             "c=IN IP4 192.0.2.3\r\n"
             "b=TIAS:384000\r\n"
             "a=rtpmap:97 H264/90000\r\n"
             "a=fmtp:97 profile-level-id=42801f;packetization-mode=1\r\n"
             "a=recvonly\r\n"
             "m=application 5070 UDP/BFCP *\r\n"
             "a=floorctrl:s-only\r\n"
             "a=confid:15\r\n"
             "a=userid:16\r\n");
    EXPECT_TEXT(
        support::Describe(p.remote),
        "audio codec=256 payload=0 dtmf=101 addr=192.0.2.2 port=5000 send=0 recv=0 valid=1\n"
        "main codec=2 type=0 payload=97 mode=1 level=3.1 mbps=0 fs=0 br=0 addr=192.0.2.3 port=5002 send=1 "
        "recv=0 valid=1\n"
        "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
        "bfcp port=5070 conf=15 user=16 server=1\n"
        "bandwidth=384000\n"
        "srtp audio suite=0 key=- salt=-\n"
        "srtp video suite=0 key=- salt=-\n"
        "srtp slide suite=0 key=- salt=-\n");
}

// --- the rows ---

TEST(SDPParse, Row01ConnectionLine) {
    Parsed session("c=IN IP4 192.0.2.10\r\n");
    EXPECT_EQ(session.handler.strSessionIPAddr, "192.0.2.10");
    InVideo media("c=IN IP4 192.0.2.11");
    EXPECT_EQ(media.Last().strIPAddr, "192.0.2.11");
    EXPECT_EQ(media.Sections()[0]->strIPAddr, "");
    EXPECT_EQ(media.handler.strSessionIPAddr, "");
}

TEST(SDPParse, Row02MediaLine) {
    InVideo p("m=application 5070 UDP/BFCP *");
    ASSERT_EQ(p.Sections().size(), 3U);
    EXPECT_EQ(p.Last().eMedia, MEDIA_APPLICATION);
}

TEST(SDPParse, Row03RtpmapLine) {
    InVideo p("a=rtpmap:97 H264/90000");
    EXPECT_EQ(p.Last().vecRtpMap[1]->strEncodingName, "H264/90000");
}

TEST(SDPParse, Row04FmtpLine) {
    InVideo p("a=fmtp:97 max-fs=1;max-br=2");
    EXPECT_EQ(p.Last().vecRtpMap[1]->vecFmtpParms, (Pieces{"max-fs=1", "max-br=2"}));
}

TEST(SDPParse, Row05CryptoLine) {
    InVideo p(std::string("a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:") + kKey);
    EXPECT_EQ(p.Last().cryptoAlgo, samples::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32);
    EXPECT_EQ(p.Last().iCryptoTag, 3);
    EXPECT_EQ(p.Last().strBase64Key, kKey);
}

TEST(SDPParse, Row06IceLines) {
    InVideo ufrag("a=ice-ufrag:F7gI");
    EXPECT_EQ(ufrag.Last().striceufrag, "a=ice-ufrag:F7gI");
    InVideo pwd("a=ice-pwd:x9cml");
    EXPECT_EQ(pwd.Last().stricepwd, "a=ice-pwd:x9cml");
}

TEST(SDPParse, Row06EveryAttributeBeginningWithIceGoesThere) {
    for (const char* name : {"a=ice-options:trickle", "a=ice-lite", "a=ice", "a=iceberg"}) {
        InVideo p(std::string(name) + " a=inactive");
        EXPECT_TRUE(p.Last().fSend) << name;
        EXPECT_TRUE(p.Last().fRecv) << name;
        EXPECT_EQ(p.Last().striceufrag, "");
        EXPECT_EQ(p.Last().stricepwd, "");
    }
}

TEST(SDPParse, Row07CandidateLine) {
    InVideo p("a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\r\n"
              "a=candidate:2 1 UDP 1694498815 192.0.2.3 45664 typ srflx\r\n"
              "a=candidate:3 2 UDP 2130706430 10.0.0.1 5001 typ host");
    EXPECT_EQ(p.Last().vecCandidate, (Pieces{"a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host",
                                             "a=candidate:2 1 UDP 1694498815 192.0.2.3 45664 typ srflx",
                                             "a=candidate:3 2 UDP 2130706430 10.0.0.1 5001 typ host"}));
    EXPECT_TRUE(p.Sections()[0]->vecCandidate.empty());
}

TEST(SDPParse, Row07CandidateBeforeAnyMediaLineIsDropped) {
    Parsed p("a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\r\nm=audio 5000 RTP/AVP 0\r\n");
    ASSERT_EQ(p.Sections().size(), 1U);
    EXPECT_TRUE(p.Last().vecCandidate.empty());
}

TEST(SDPParse, Row08ContentLine) {
    InVideo p("a=content:slides");
    EXPECT_EQ(p.Last().eContent, VIDEOTYPE_PRESO);
}

TEST(SDPParse, Row09BandwidthLine) {
    Parsed session("b=AS:384\r\n");
    EXPECT_EQ(session.handler.strMaxSessionBandwidth, "384");
    InVideo media("b=TIAS:384000");
    EXPECT_EQ(media.Last().strMaxBandwidth, "384000");
}

TEST(SDPParse, Row10FloorControlLine) {
    InVideo p("a=floorctrl:c-s");
    EXPECT_EQ(p.Last().strFloorctrl, "c-s");
}

TEST(SDPParse, Row11ConferenceLine) {
    InVideo p("a=confid:15");
    EXPECT_EQ(p.Last().iBfcpConfid, 15);
    EXPECT_EQ(p.Last().iBfcpUserid, 0);
}

TEST(SDPParse, Row12UserLine) {
    InVideo p("a=userid:16");
    EXPECT_EQ(p.Last().iBfcpUserid, 16);
    EXPECT_EQ(p.Last().iBfcpConfid, 0);
}

TEST(SDPParse, Row13EveryOtherAttribute) {
    InVideo p("a=sendonly");
    EXPECT_FALSE(p.Last().fSend);
    EXPECT_TRUE(p.Last().fRecv);
}

// Without its colon a keyword is none of its own, and the line is any other attribute.
TEST(SDPParse, KeywordsIncludeTheirColon) {
    for (const char* name :
         {"a=fmtp", "a=crypto", "a=candidate", "a=content", "a=floorctrl", "a=confid", "a=userid"}) {
        InVideo p(std::string(name) + " a=inactive");
        EXPECT_FALSE(p.Last().fSend) << name;
        EXPECT_FALSE(p.Last().fRecv) << name;
        EXPECT_TRUE(p.Last().vecCandidate.empty()) << name;
    }
}

// One letter short of a keyword is any other attribute, too.
TEST(SDPParse, KeywordsAreComparedToTheirLastLetter) {
    for (const char* name : {"a=rtpma", "a=ic", "a=Ice", "a=rtp-map"}) {
        InVideo p(std::string(name) + " a=inactive");
        EXPECT_FALSE(p.Last().fSend) << name;
        EXPECT_FALSE(p.Last().fRecv) << name;
    }
}

TEST(SDPParse, RtpmapNeedsNoColon) {
    InVideo p("a=rtpmap a=inactive");
    EXPECT_TRUE(p.Last().fSend);
    EXPECT_TRUE(p.Last().fRecv);
    InVideo longer("a=rtpmapX97 H264/90000");
    EXPECT_EQ(longer.Last().vecRtpMap[1]->strEncodingName, "H264/90000");
}

TEST(SDPParse, KeywordsAreFoundAnywhereInALine) {
    EXPECT_EQ(InVideo("zc=IN IP4 192.0.2.9").Last().strIPAddr, "192.0.2.9");
    EXPECT_EQ(InVideo("s=b=TIAS:5").Last().strMaxBandwidth, "5");
    EXPECT_EQ(InVideo("  a=userid:4").Last().iBfcpUserid, 4);
    EXPECT_FALSE(InVideo("i=see a=inactive").Last().fSend);
    EXPECT_EQ(InVideo("xa=ice-pwd:p").Last().stricepwd, "xa=ice-pwd:p");
}

// --- their order: in each line the later row's keyword stands first ---

TEST(SDPParse, ConnectionBeatsMedia) {
    Parsed p("m=audio 5000 192.0.2.9 c=\r\n");
    EXPECT_TRUE(p.Sections().empty());
    EXPECT_EQ(p.handler.strSessionIPAddr, "192.0.2.9");
}

TEST(SDPParse, MediaBeatsRtpmap) {
    InVideo p("a=rtpmap:97 H264/90000 m=x 98");
    ASSERT_EQ(p.Sections().size(), 3U);
    EXPECT_EQ(p.Last().eMedia, MEDIA_UNKNOWN);
    ASSERT_EQ(p.Last().vecRtpMap.size(), 1U);
    EXPECT_EQ(p.Last().vecRtpMap[0]->strPayload, "98");
    EXPECT_EQ(p.Sections()[1]->vecRtpMap[1]->strEncodingName, "");
}

TEST(SDPParse, RtpmapBeatsFmtp) {
    InVideo p("a=fmtp:xx97 a=rtpmap:");
    EXPECT_EQ(p.Last().vecRtpMap[1]->strEncodingName, "a=rtpmap:");

    Parsed listed("m=video 5002 RTP/AVP xx97\r\na=fmtp:xx97 a=rtpmap:\r\n");
    EXPECT_TRUE(listed.Last().vecRtpMap[0]->vecFmtpParms.empty());
}

TEST(SDPParse, FmtpBeatsCrypto) {
    Parsed p("m=video 5002 RTP/AVP o:4\r\na=crypto:4 AES_CM_128_HMAC_SHA1_32 a=fmtp:\r\n");
    EXPECT_EQ(p.Last().vecRtpMap[0]->vecFmtpParms, (Pieces{"AES_CM_128_HMAC_SHA1_32 a=fmtp:"}));
    EXPECT_EQ(p.Last().cryptoAlgo, samples::CryptoParams::CRYPTO_NONE);
    EXPECT_EQ(p.Last().iCryptoTag, 0);
}

TEST(SDPParse, CryptoBeatsIce) {
    InVideo p("a=ice-ufrag:7 SUITE a=crypto:");
    EXPECT_EQ(p.Last().iCryptoTag, 7);
    EXPECT_EQ(p.Last().striceufrag, "");
}

TEST(SDPParse, IceBeatsCandidate) {
    InVideo p("a=candidate:1 a=ice-ufrag:F");
    EXPECT_EQ(p.Last().striceufrag, "a=candidate:1 a=ice-ufrag:F");
    EXPECT_TRUE(p.Last().vecCandidate.empty());
}

TEST(SDPParse, CandidateBeatsContent) {
    InVideo p("a=content:slides a=candidate:1");
    EXPECT_EQ(p.Last().vecCandidate, (Pieces{"a=content:slides a=candidate:1"}));
    EXPECT_EQ(p.Last().eContent, VIDEOTYPE_MAIN);
}

TEST(SDPParse, ContentBeatsBandwidth) {
    InVideo p("b=TIAS:5 a=content:slides");
    EXPECT_EQ(p.Last().eContent, VIDEOTYPE_PRESO);
    EXPECT_EQ(p.Last().strMaxBandwidth, "");
}

TEST(SDPParse, BandwidthBeatsFloorControl) {
    InVideo p("a=floorctrl:c-s b=TIAS:5");
    EXPECT_EQ(p.Last().strMaxBandwidth, "5");
    EXPECT_EQ(p.Last().strFloorctrl, "");
}

TEST(SDPParse, FloorControlBeatsConference) {
    InVideo p("a=floorctrl:a=confid:4");
    EXPECT_EQ(p.Last().strFloorctrl, "a=confid:4");
    EXPECT_EQ(p.Last().iBfcpConfid, 0);
}

TEST(SDPParse, ConferenceBeatsUser) {
    InVideo p("a=userid:a=confid:4");
    EXPECT_EQ(p.Last().iBfcpConfid, 4);
    EXPECT_EQ(p.Last().iBfcpUserid, 0);
}

TEST(SDPParse, UserBeatsAnyOtherAttribute) {
    InVideo p("a=inactive a=userid:4");
    EXPECT_EQ(p.Last().iBfcpUserid, 4);
    EXPECT_TRUE(p.Last().fSend);
    EXPECT_TRUE(p.Last().fRecv);
}

TEST(SDPParse, FirstRowBeatsTheLast) {
    InVideo p("a=inactive x 192.0.2.9 c=");
    EXPECT_EQ(p.Last().strIPAddr, "192.0.2.9");
    EXPECT_TRUE(p.Last().fSend);
}

} // namespace
