// Text to lines, and each line to the one reader that takes it: the thirteen rows, their order, and what
// happens to texts whose lines do not end as they should.
#include "SDPHandler.h"

#include "Describe.h"
#include "DocumentParts.h"
#include "Expect.h"
#include "RecordSamples.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

// A handler that has read `sdpText`, and the results.
struct Parsed {
    SDPHandler handler;
    RemoteSDP remote;
    int result;

    explicit Parsed(const std::string& sdpText) : result(handler.ParseTheSDP(sdpText, remote)) {}
    std::vector<MediaSession*>& Sections() { return handler.vecRemoteMediaSession; }
    MediaSession& Last() { return *handler.vecRemoteMediaSession.back(); }
};

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
    auto remote = samples::Filled<RemoteSDP>();
    EXPECT_EQ(handler.ParseTheSDP("", remote), 1);
    samples::ExpectSame(remote, samples::Filled<RemoteSDP>());
}

TEST(SDPParse, EveryOtherTextGivesZeroAndARecordThatWasReset) {
    for (const char* text :
         {"x", "\r", "\n", "\r\n", "\r\n\r\n", "v=0", "v=0\r\n", "no line at all", "m=\r\n", "c=\r\n"}) {
        SDPHandler handler;
        auto remote = samples::Filled<RemoteSDP>();
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

TEST(SDPParse, UnterminatedRestAfterASectionIsDropped) {
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

const std::string kSession = "v=0\r\n";
const std::string kVideo = "m=audio 5000 RTP/AVP 0\r\nm=video 5002 RTP/AVP 96 97\r\n";

// The session's fields and those of each section, the section's number in front.
std::vector<std::string> FieldsOf(SDPHandler& handler) {
    std::vector<std::string> fields = {"address = " + handler.strSessionIPAddr,
                                       "bandwidth = " + handler.strMaxSessionBandwidth};
    std::size_t number = 0;
    for (const MediaSession* const section : handler.vecRemoteMediaSession) {
        for (const std::string& field : documents::AllSectionLines(*section)) {
            fields.push_back(std::to_string(number) + " " + field);
        }
        ++number;
    }
    return fields;
}

// The fields that a line after `before` adds or changes; of a section that it opens, those that a new one
// does not have. Where they are none, every field is as it would be without the line.
std::string Changes(const std::string& before, const std::string& lineText) {
    Parsed without(before);
    Parsed with(before + lineText + "\r\n");
    std::vector<std::string> known = FieldsOf(without.handler);
    for (const std::string& field : documents::AllSectionLines(MediaSession())) {
        known.push_back(std::to_string(without.Sections().size()) + " " + field);
    }
    std::string changes;
    for (const std::string& field : FieldsOf(with.handler)) {
        const auto same = std::find(known.begin(), known.end(), field);
        if (same == known.end()) {
            changes += field + "\n";
        } else {
            known.erase(same); // the same format twice is two fields
        }
    }
    if (changes.empty()) {
        EXPECT_EQ(FieldsOf(with.handler), FieldsOf(without.handler)) << lineText;
    }
    return changes;
}

struct Row {
    std::string before;
    std::string line;
    const char* changes;
};

TEST(SDPParse, EachRowReadsItsLine) {
    const Row rows[] = {
        {kSession, "c=IN IP4 192.0.2.10", "address = 192.0.2.10\n"},
        {kVideo, "c=IN IP4 192.0.2.11", "1 strIPAddr = 192.0.2.11\n"},
        {kVideo, "m=application 5070 UDP/BFCP *",
         "2 eMedia = 3\n2 iPort = 5070\n2 format = *\n2 strFullMLine = m=application 5070 UDP/BFCP *\n"},
        {kVideo, "a=rtpmap:97 H264/90000", "1 format = 97 H264/90000\n"},
        {kVideo, "a=fmtp:97 max-fs=1;max-br=2", "1 parameter = max-fs=1\n1 parameter = max-br=2\n"},
        {kVideo, "a=crypto:3 AES_CM_128_HMAC_SHA1_32 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz",
         "1 bufSRTPKey = YS___semctl () {\n1 bufSRTPSalt = \\\\t220;}\\\\n}\\\\nunles\n"
         "1 cryptoAlgo = 1\n1 iCryptoTag = 3\n1 strBase64Key = WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\n"},
        {kVideo, "a=ice-ufrag:F7gI", "1 striceufrag = a=ice-ufrag:F7gI\n"},
        {kVideo, "a=ice-pwd:x9cml", "1 stricepwd = a=ice-pwd:x9cml\n"},
        {kVideo,
         "a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\r\n"
         "a=candidate:2 1 UDP 1694498815 192.0.2.3 45664 typ srflx\r\n"
         "a=candidate:3 2 UDP 2130706430 10.0.0.1 5001 typ host",
         "1 candidate = a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\n"
         "1 candidate = a=candidate:2 1 UDP 1694498815 192.0.2.3 45664 typ srflx\n"
         "1 candidate = a=candidate:3 2 UDP 2130706430 10.0.0.1 5001 typ host\n"},
        {kSession, "a=candidate:1 1 UDP 2130706431 10.0.0.1 5000 typ host\r\nm=text 5000 RTP/AVP 0",
         "0 iPort = 5000\n0 format = 0\n0 strFullMLine = m=text 5000 RTP/AVP 0\n"},
        {kVideo, "a=content:slides", "1 eContent = 1\n"},
        {kSession, "b=AS:384", "bandwidth = 384\n"},
        {kVideo, "b=TIAS:384000", "1 strMaxBandwidth = 384000\n"},
        {kVideo, "a=floorctrl:c-s", "1 strFloorctrl = c-s\n"},
        {kVideo, "a=confid:15", "1 iBfcpConfid = 15\n"},
        {kVideo, "a=userid:16", "1 iBfcpUserid = 16\n"},
        {kVideo, "a=sendonly", "1 fSend = 0\n"},
        // Without a colon.
        {kVideo, "a=rtpmapX97 H264/90000", "1 format = 97 H264/90000\n"},
        // Anywhere in the line.
        {kVideo, "zc=IN IP4 192.0.2.9", "1 strIPAddr = 192.0.2.9\n"},
        {kVideo, "s=b=TIAS:5", "1 strMaxBandwidth = 5\n"},
        {kVideo, "  a=userid:4", "1 iBfcpUserid = 4\n"},
        {kVideo, "i=see a=inactive", "1 fSend = 0\n1 fRecv = 0\n"},
        {kVideo, "xa=ice-pwd:p", "1 stricepwd = xa=ice-pwd:p\n"},
    };
    for (const Row& row : rows) {
        EXPECT_TEXT(Changes(row.before, row.line), row.changes) << row.line;
    }
}

// Every attribute that begins with "ice", and rtpmap without a colon, belong to a row that stores nothing of
// them. A later row for "a=inactive" does not get the line.
TEST(SDPParse, ARowTakesALineOfWhichItStoresNothing) {
    for (const char* name : {"a=ice-options:trickle", "a=ice-lite", "a=ice", "a=iceberg", "a=rtpmap"}) {
        EXPECT_TEXT(Changes(kVideo, std::string(name) + " a=inactive"), "") << name;
    }
}

// Without its colon, or one letter short, a keyword is none of its own, and the line is any other attribute.
TEST(SDPParse, KeywordsIncludeTheirColonAndLastLetter) {
    for (const char* name : {"a=fmtp", "a=crypto", "a=candidate", "a=content", "a=floorctrl", "a=confid",
                             "a=userid", "a=rtpma", "a=ic", "a=Ice", "a=rtp-map"}) {
        EXPECT_TEXT(Changes(kVideo, std::string(name) + " a=inactive"), "1 fSend = 0\n1 fRecv = 0\n") << name;
    }
}

TEST(SDPParse, LinesWithoutAnyKeywordChangeNothing) {
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
        EXPECT_TEXT(Changes(kVideo, line), "") << line;
    }
}

// In each line the keyword of the later row comes first.
TEST(SDPParse, TheEarlierRowTakesALineWithTwoKeywords) {
    const Row rows[] = {
        {kSession, "m=audio 5000 192.0.2.9 c=", "address = 192.0.2.9\n"},
        {kVideo, "a=rtpmap:97 H264/90000 m=x 98",
         "2 format = 98\n2 strFullMLine = a=rtpmap:97 H264/90000 m=x 98\n"},
        {kVideo, "a=fmtp:xx97 a=rtpmap:", "1 format = 97 a=rtpmap:\n"},
        {"m=video 5002 RTP/AVP xx97\r\n", "a=fmtp:xx97 a=rtpmap:", ""},
        {"m=video 5002 RTP/AVP o:4\r\n",
         "a=crypto:4 AES_CM_128_HMAC_SHA1_32 a=fmtp:", "0 parameter = AES_CM_128_HMAC_SHA1_32 a=fmtp:\n"},
        {kVideo, "a=ice-ufrag:7 SUITE a=crypto:", "1 iCryptoTag = 7\n"},
        {kVideo, "a=candidate:1 a=ice-ufrag:F", "1 striceufrag = a=candidate:1 a=ice-ufrag:F\n"},
        {kVideo, "a=content:slides a=candidate:1", "1 candidate = a=content:slides a=candidate:1\n"},
        {kVideo, "b=TIAS:5 a=content:slides", "1 eContent = 1\n"},
        {kVideo, "a=floorctrl:c-s b=TIAS:5", "1 strMaxBandwidth = 5\n"},
        {kVideo, "a=floorctrl:a=confid:4", "1 strFloorctrl = a=confid:4\n"},
        {kVideo, "a=userid:a=confid:4", "1 iBfcpConfid = 4\n"},
        {kVideo, "a=inactive a=userid:4", "1 iBfcpUserid = 4\n"},
        {kVideo, "a=inactive x 192.0.2.9 c=", "1 strIPAddr = 192.0.2.9\n"},
    };
    for (const Row& row : rows) {
        EXPECT_TEXT(Changes(row.before, row.line), row.changes) << row.line;
    }
}

} // namespace
