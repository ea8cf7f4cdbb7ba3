// "m=" lines open sections, "c=" lines set the address of the section opened last or of the session.
#include "SDPHandler.h"

#include "DocumentParts.h"
#include "Expect.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

// The section that one line opens in a new handler: the fields that a new section does not have, without the
// line itself, which it keeps byte for byte.
std::string Opened(const std::string& lineText) {
    SDPHandler handler;
    handler.ProcessMedia(lineText);
    if (handler.vecRemoteMediaSession.size() != 1) {
        return std::to_string(handler.vecRemoteMediaSession.size()) + " sections";
    }
    const MediaSession& section = *handler.vecRemoteMediaSession[0];
    EXPECT_EQ(section.strFullMLine, lineText);
    std::string fields;
    for (const std::string& field : documents::SectionLines(section)) {
        if (!documents::StartsWith(field, "strFullMLine = ")) {
            fields += field + "\n";
        }
    }
    return fields;
}

TEST(SDPParseMedia, AMediaLineOpensASection) {
    const std::pair<std::string, const char*> rows[] = {
        {"m=audio 0 RTP/AVP 0", "eMedia = 2\nformat = 0\n"},
        {"m=video 5002 RTP/SAVP 97 126",
         "eMedia = 1\neContent = 0\niPort = 5002\nformat = 97\nformat = 126\n"},
        {"m=application 5070 UDP/BFCP *", "eMedia = 3\niPort = 5070\nformat = *\n"},
        {"m=text 6000 RTP/AVP 98", "iPort = 6000\nformat = 98\n"},
        // A blank after "m=" moves every word one place on: the port is "audio".
        {"m= audio 5000 RTP/AVP 0", "format = RTP/AVP\nformat = 0\n"},
        // Any run of white space separates words.
        {" \tm=audio\t 5000\v\fRTP/AVP\r0\n \n8 ", "eMedia = 2\niPort = 5000\nformat = 0\nformat = 8\n"},
        {"m=audio  5000\tRTP/AVP 0  ", "eMedia = 2\niPort = 5000\nformat = 0\n"},
        // The port is the number at the start of the second word.
        {"m=audio 5000/2 RTP/AVP 0", "eMedia = 2\niPort = 5000\nformat = 0\n"},
        {"m=audio 65535 RTP/AVP 0", "eMedia = 2\niPort = 65535\nformat = 0\n"},
        {"m=audio 70000 RTP/AVP 0", "eMedia = 2\niPort = 70000\nformat = 0\n"},
        {"m=audio port RTP/AVP 0", "eMedia = 2\nformat = 0\n"},
        {"m=audio /2 RTP/AVP 0", "eMedia = 2\nformat = 0\n"},
        {"m=audio -1 RTP/AVP 0", "eMedia = 2\niPort = -1\nformat = 0\n"},
        {"m=audio +7 RTP/AVP 0", "eMedia = 2\niPort = 7\nformat = 0\n"},
        {"m=audio 0x10 RTP/AVP 0", "eMedia = 2\nformat = 0\n"},
        // Each word from the fourth on is a format of its own.
        {"m=audio 5000 RTP/AVP x", "eMedia = 2\niPort = 5000\nformat = x\n"},
        {"m=audio 5000 RTP/AVP 97 126 97 * abc 0097",
         "eMedia = 2\niPort = 5000\n"
         "format = 97\nformat = 126\nformat = 97\nformat = *\nformat = abc\nformat = 0097\n"},
        // A zero byte belongs to its word.
        {std::string("m=audio 50\0007 RTP/AVP 0\0x", 24), "eMedia = 2\niPort = 50\nformat = 0\\x00x\n"},
    };
    for (const auto& [line, section] : rows) {
        EXPECT_TEXT(Opened(line), section) << line;
    }
}

TEST(SDPParseMedia, TwoEqualFormatsAreTwoEntries) {
    SDPHandler handler;
    handler.ProcessMedia("m=audio 5000 RTP/AVP 97 97");
    const auto& formats = handler.vecRemoteMediaSession.at(0)->vecRtpMap;
    ASSERT_EQ(formats.size(), 2U);
    EXPECT_NE(formats[0], formats[1]);
}

TEST(SDPParseMedia, FirstWordIsComparedAsAWhole) {
    for (const char* word : {"m=audiox", "m=audi", "m=Audio", "M=audio", "xm=audio", "m=videos", "m=vide",
                             "m=applications", "m=app", "audio", "m="}) {
        EXPECT_TEXT(Opened(std::string(word) + " 5000 RTP/AVP 0"), "iPort = 5000\nformat = 0\n") << word;
    }
}

TEST(SDPParseMedia, TransportIsNotExamined) {
    for (const char* transport : {"RTP/AVP", "RTP/SAVPF", "TCP/BFCP", "nonsense", "0", "/"}) {
        EXPECT_TEXT(Opened(std::string("m=audio 5000 ") + transport + " 0"),
                    "eMedia = 2\niPort = 5000\nformat = 0\n")
            << transport;
    }
}

TEST(SDPParseMedia, FewerThanFourWordsOpenNothing) {
    for (const char* line : {"", " ", "m=audio", "m=audio 5000", "m=audio 5000 RTP/AVP",
                             "m=audio 5000 RTP/AVP ", " m=audio\t5000  RTP/AVP\r"}) {
        EXPECT_EQ(Opened(line), "0 sections") << line;
    }
}

TEST(SDPParseMedia, SectionsAreInTheOrderOfTheirLines) {
    SDPHandler handler;
    const char* const lines[] = {"m=video 1 RTP/AVP 97", "m=text 2 RTP/AVP 98", "m=audio 3 RTP/AVP 0",
                                 "m=audio 4 RTP/AVP 8"};
    for (const char* line : lines) {
        handler.ProcessMedia(line);
    }
    ASSERT_EQ(handler.vecRemoteMediaSession.size(), std::size(lines));
    for (std::size_t n = 0; n < std::size(lines); ++n) {
        EXPECT_EQ(handler.vecRemoteMediaSession[n]->strFullMLine, lines[n]);
        EXPECT_EQ(handler.vecRemoteMediaSession[n]->iPort, static_cast<int>(n) + 1);
    }
}

TEST(SDPParseMedia, AddressBeforeAnySectionIsTheSessions) {
    SDPHandler handler;
    handler.ProcessConnect("c=IN IP4 192.0.2.10");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.10");
    handler.ProcessConnect("c=IN IP4 192.0.2.11");
    EXPECT_EQ(handler.strSessionIPAddr, "192.0.2.11");
}

TEST(SDPParseMedia, AddressAfterASectionIsThatSectionsAlone) {
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

TEST(SDPParseMedia, LinesAfterAShortMediaLineApplyToWhatWasOpenBefore) {
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
