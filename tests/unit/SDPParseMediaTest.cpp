// "m=" lines open sections, "c=" lines set the address of the section opened last or of the session.
#include "SDPHandler.h"

#include "Expect.h"
#include "RecordSamples.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using Pieces = std::vector<std::string>;

Pieces Payloads(const MediaSession& section) {
    Pieces payloads;
    for (const RtpMap* entry : section.vecRtpMap) {
        payloads.push_back(entry->strPayload);
    }
    return payloads;
}

// The section that one line opens in a new handler.
class OneLine {
public:
    explicit OneLine(const std::string& lineText) { m_handler.ProcessMedia(lineText); }
    std::size_t Count() const { return m_handler.vecRemoteMediaSession.size(); }
    const MediaSession& Section() const { return *m_handler.vecRemoteMediaSession.at(0); }

private:
    SDPHandler m_handler;
};

TEST(SDPParseMedia, AudioLineOpensAnAudioSection) {
    OneLine line("m=audio 0 RTP/AVP 0");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_AUDIO);
    EXPECT_EQ(line.Section().eContent, VIDEOTYPE_UNKNOWN);
    EXPECT_EQ(line.Section().iPort, 0);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"0"}));
}

TEST(SDPParseMedia, VideoLineOpensAMainVideoSection) {
    OneLine line("m=video 5002 RTP/SAVP 97 126");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_VIDEO);
    EXPECT_EQ(line.Section().eContent, VIDEOTYPE_MAIN);
    EXPECT_EQ(line.Section().iPort, 5002);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"97", "126"}));
    EXPECT_TEXT(line.Section().strFullMLine, "m=video 5002 RTP/SAVP 97 126");
}

TEST(SDPParseMedia, ApplicationLineOpensAnApplicationSection) {
    OneLine line("m=application 5070 UDP/BFCP *");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_APPLICATION);
    EXPECT_EQ(line.Section().eContent, VIDEOTYPE_UNKNOWN);
    EXPECT_EQ(line.Section().iPort, 5070);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"*"}));
}

TEST(SDPParseMedia, AnyOtherLineOpensASectionOfUnknownKind) {
    OneLine line("m=text 6000 RTP/AVP 98");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_UNKNOWN);
    EXPECT_EQ(line.Section().eContent, VIDEOTYPE_UNKNOWN);
    EXPECT_EQ(line.Section().iPort, 6000);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"98"}));
}

TEST(SDPParseMedia, FirstWordIsComparedAsAWhole) {
    for (const char* word : {"m=audiox", "m=audi", "m=Audio", "M=audio", "xm=audio", "m=videos", "m=vide",
                             "m=applications", "m=app", "audio", "m="}) {
        OneLine line(std::string(word) + " 5000 RTP/AVP 0");
        ASSERT_EQ(line.Count(), 1U);
        EXPECT_EQ(line.Section().eMedia, MEDIA_UNKNOWN) << word;
        EXPECT_EQ(line.Section().eContent, VIDEOTYPE_UNKNOWN) << word;
    }
}

TEST(SDPParseMedia, BlankBehindTheTypeShiftsEveryWord) {
    OneLine line("m= audio 5000 RTP/AVP 0");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_UNKNOWN);
    EXPECT_EQ(line.Section().iPort, 0);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"RTP/AVP", "0"}));
}

TEST(SDPParseMedia, RestOfANewSectionIsAsCreated) {
    OneLine line("m=video 5002 RTP/AVP 97");
    const MediaSession& section = line.Section();
    EXPECT_EQ(section.strIPAddr, "");
    EXPECT_TRUE(section.fSend);
    EXPECT_TRUE(section.fRecv);
    EXPECT_EQ(section.strVideoLevel, "");
    EXPECT_EQ(section.strMaxBandwidth, "");
    EXPECT_EQ(section.cryptoAlgo, samples::CryptoParams::CRYPTO_NONE);
    EXPECT_EQ(section.strBase64Key, "");
    EXPECT_EQ(section.iBfcpConfid, 0);
    EXPECT_EQ(section.iBfcpUserid, 0);
    EXPECT_EQ(section.iBfcpFloorid, 0);
    EXPECT_EQ(section.strFloorctrl, "");
    EXPECT_EQ(section.striceufrag, "");
    EXPECT_EQ(section.stricepwd, "");
    EXPECT_TRUE(section.vecCandidate.empty());
    EXPECT_EQ(section.vecRtpMap[0]->strEncodingName, "");
    EXPECT_TRUE(section.vecRtpMap[0]->vecFmtpParms.empty());
}

TEST(SDPParseMedia, FewerThanFourWordsOpenNothing) {
    for (const char* line : {"", " ", "m=audio", "m=audio 5000", "m=audio 5000 RTP/AVP",
                             "m=audio 5000 RTP/AVP ", " m=audio\t5000  RTP/AVP\r"}) {
        EXPECT_EQ(OneLine(line).Count(), 0U) << line;
    }
}

TEST(SDPParseMedia, FourWordsAreEnough) {
    OneLine line("m=audio 5000 RTP/AVP x");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"x"}));
}

TEST(SDPParseMedia, AnyRunOfWhiteSpaceSeparatesWords) {
    OneLine line(" \tm=audio\t 5000\v\fRTP/AVP\r0\n \n8 ");
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().eMedia, MEDIA_AUDIO);
    EXPECT_EQ(line.Section().iPort, 5000);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"0", "8"}));
}

TEST(SDPParseMedia, WholeLineIsKeptByteForByte) {
    EXPECT_TEXT(OneLine("m=audio  5000\tRTP/AVP 0  ").Section().strFullMLine, "m=audio  5000\tRTP/AVP 0  ");
}

TEST(SDPParseMedia, PortIsTheLeadingNumberOfTheSecondWord) {
    EXPECT_EQ(OneLine("m=audio 5000/2 RTP/AVP 0").Section().iPort, 5000);
    EXPECT_EQ(OneLine("m=audio 65535 RTP/AVP 0").Section().iPort, 65535);
    EXPECT_EQ(OneLine("m=audio 70000 RTP/AVP 0").Section().iPort, 70000);
    EXPECT_EQ(OneLine("m=audio port RTP/AVP 0").Section().iPort, 0);
    EXPECT_EQ(OneLine("m=audio /2 RTP/AVP 0").Section().iPort, 0);
    EXPECT_EQ(OneLine("m=audio -1 RTP/AVP 0").Section().iPort, -1);
    EXPECT_EQ(OneLine("m=audio +7 RTP/AVP 0").Section().iPort, 7);
    EXPECT_EQ(OneLine("m=audio 0x10 RTP/AVP 0").Section().iPort, 0);
}

TEST(SDPParseMedia, TransportIsNotExamined) {
    for (const char* transport : {"RTP/AVP", "RTP/SAVPF", "TCP/BFCP", "nonsense", "0", "/"}) {
        OneLine line(std::string("m=audio 5000 ") + transport + " 0");
        ASSERT_EQ(line.Count(), 1U);
        EXPECT_EQ(line.Section().eMedia, MEDIA_AUDIO);
        EXPECT_EQ(Payloads(line.Section()), (Pieces{"0"}));
        EXPECT_EQ(line.Section().strFullMLine, std::string("m=audio 5000 ") + transport + " 0");
    }
}

TEST(SDPParseMedia, EveryFurtherWordIsAPayloadEntryOfItsOwn) {
    OneLine line("m=video 5002 RTP/AVP 97 126 97 * abc 0097");
    EXPECT_EQ(Payloads(line.Section()), (Pieces{"97", "126", "97", "*", "abc", "0097"}));
    const std::vector<RtpMap*>& entries = line.Section().vecRtpMap;
    EXPECT_NE(entries[0], entries[2]);
}

TEST(SDPParseMedia, SectionsStandInOrderOfTheirLines) {
    SDPHandler handler;
    handler.ProcessMedia("m=video 1 RTP/AVP 97");
    handler.ProcessMedia("m=text 2 RTP/AVP 98");
    handler.ProcessMedia("m=audio 3 RTP/AVP 0");
    handler.ProcessMedia("m=audio 4 RTP/AVP 8");
    ASSERT_EQ(handler.vecRemoteMediaSession.size(), 4U);
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->iPort, 1);
    EXPECT_EQ(handler.vecRemoteMediaSession[1]->iPort, 2);
    EXPECT_EQ(handler.vecRemoteMediaSession[2]->iPort, 3);
    EXPECT_EQ(handler.vecRemoteMediaSession[3]->iPort, 4);
    EXPECT_EQ(Payloads(*handler.vecRemoteMediaSession[0]), (Pieces{"97"}));
    EXPECT_EQ(Payloads(*handler.vecRemoteMediaSession[3]), (Pieces{"8"}));
}

TEST(SDPParseMedia, AddressBeforeAnySectionIsTheSessions) {
    SDPHandler handler;
    handler.ProcessConnect("c=IN IP4 192.0.2.10");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    handler.ProcessConnect("c=IN IP4 192.0.2.11");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.11");
}

TEST(SDPParseMedia, AddressBehindASectionIsThatSectionsAlone) {
    SDPHandler handler;
    handler.ProcessConnect("c=IN IP4 192.0.2.10");
    handler.ProcessMedia("m=audio 5000 RTP/AVP 0");
    handler.ProcessConnect("c=IN IP4 192.0.2.11");
    handler.ProcessMedia("m=video 5002 RTP/AVP 97");
    handler.ProcessConnect("c=IN IP4 192.0.2.12");
    handler.ProcessConnect("c=IN IP4 192.0.2.13");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->strIPAddr, "192.0.2.11");
    EXPECT_EQ(handler.vecRemoteMediaSession[1]->strIPAddr, "192.0.2.13");
}

TEST(SDPParseMedia, AddressIsTheThirdWordAsItStands) {
    const std::pair<const char*, const char*> lines[] = {
        {"c=IN IP4 224.2.1.1/127", "224.2.1.1/127"},
        {"c=IN IP4 224.2.1.1/127/3", "224.2.1.1/127/3"},
        {"c=IN IP6 2001:db8::1", "2001:db8::1"},
        {"c=IN IP4 host.example.com extra words", "host.example.com"},
        {"c= IN IP4 192.0.2.1", "IP4"},
        {"  c=X\tY\t \tz  ", "z"},
        {"a b c=", "c="},
    };
    for (const auto& [line, address] : lines) {
        SDPHandler handler;
        handler.ProcessConnect(line);
        EXPECT_EQ(handler.strSessionIPAddr, address) << line;
    }
}

TEST(SDPParseMedia, FewerThanThreeWordsChangeNoAddress) {
    for (const char* line : {"", "c=", "c=IN", "c=IN IP4", "c=IN IP4 ", " c=IN \t IP4\r"}) {
        SDPHandler handler;
        handler.ProcessConnect("c=IN IP4 192.0.2.10");
        handler.ProcessConnect(line);
        EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10") << line;
        handler.ProcessMedia("m=audio 5000 RTP/AVP 0");
        handler.ProcessConnect("c=IN IP4 192.0.2.11");
        handler.ProcessConnect(line);
        EXPECT_EQ(handler.vecRemoteMediaSession[0]->strIPAddr, "192.0.2.11") << line;
    }
}

TEST(SDPParseMedia, LinesBehindAShortMediaLineApplyToWhatWasOpenBefore) {
    SDPHandler handler;
    handler.ProcessMedia("m=audio 5000 RTP/AVP");
    handler.ProcessConnect("c=IN IP4 192.0.2.10");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    handler.ProcessMedia("m=audio 5000 RTP/AVP 0");
    handler.ProcessMedia("m=video 5002 RTP/AVP");
    handler.ProcessConnect("c=IN IP4 192.0.2.11");
    ASSERT_EQ(handler.vecRemoteMediaSession.size(), 1U);
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->strIPAddr, "192.0.2.11");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
}

TEST(SDPParseMedia, AddressesReplaceLongerOnes) {
    SDPHandler handler;
    handler.ProcessConnect("c=IN IP6 2001:db8:0:0:0:0:0:1");
    handler.ProcessConnect("c=IN IP4 ::");
    EXPECT_EQ(handler.strSessionIPAddr, "::");
}

TEST(SDPParseMedia, ZeroBytesInsideWordsAreKept) {
    OneLine line(std::string("m=audio 50\0"
                             "7 RTP/AVP 0\0x",
                             24));
    ASSERT_EQ(line.Count(), 1U);
    EXPECT_EQ(line.Section().iPort, 50);
    EXPECT_EQ(Payloads(line.Section()), (Pieces{std::string("0\0x", 3)}));
    EXPECT_EQ(line.Section().strFullMLine.size(), 24U);
}

// The list is made large enough before the first format is: growing could fail and lose one.
TEST(SDPParseMedia, FormatsOfOneCharacterNeverGrowTheList) {
    for (const std::size_t formats : {1U, 7U, 8U, 9U, 10U, 11U, 100U, 1001U}) {
        SDPHandler h;
        std::string lineText = "m=audio 5000 RTP/AVP";
        for (std::size_t n = 0; n < formats; ++n) {
            lineText += " 0";
        }
        h.ProcessMedia(lineText);
        const std::vector<RtpMap*>& list = h.vecRemoteMediaSession[0]->vecRtpMap;
        ASSERT_EQ(list.size(), formats);
        EXPECT_EQ(list.capacity(), std::max<std::size_t>(8, formats)) << formats;
    }
}

} // namespace
