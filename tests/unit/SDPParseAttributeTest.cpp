// Content, direction, bandwidth and floor control lines, each one value of the section opened last.
#include "SDPHandler.h"

#include "Expect.h"

#include <string>

namespace {

// A handler with a section of each kind; the one asked for is opened last.
struct Last {
    SDPHandler handler;

    explicit Last(const std::string& mediaLine) {
        handler.ProcessMedia("m=audio 4000 RTP/AVP 0");
        handler.ProcessMedia(mediaLine);
    }
    MediaSession& Get() { return *handler.vecRemoteMediaSession.at(1); }
    MediaSession& First() { return *handler.vecRemoteMediaSession.at(0); }
};

const char kVideo[] = "m=video 5002 RTP/AVP 97";
const char kAudio[] = "m=audio 5000 RTP/AVP 0";
const char kApplication[] = "m=application 5070 UDP/BFCP *";
const char kOther[] = "m=text 5072 RTP/AVP 98";

// --- content ---

TEST(SDPParseAttribute, SlidesMakeAVideoSectionThePresentation) {
    Last video(kVideo);
    video.handler.ProcessContent("a=content:slides");
    EXPECT_EQ(video.Get().eContent, VIDEOTYPE_PRESO);
}

TEST(SDPParseAttribute, MainMakesAVideoSectionMainAgain) {
    Last video(kVideo);
    video.handler.ProcessContent("a=content:slides");
    video.handler.ProcessContent("a=content:main");
    EXPECT_EQ(video.Get().eContent, VIDEOTYPE_MAIN);
}

TEST(SDPParseAttribute, MainComesBeforeSlidesWhereverTheyStand) {
    Last video(kVideo);
    video.handler.ProcessContent("a=content:slides");
    video.handler.ProcessContent("a=content:slides a=content:main");
    EXPECT_EQ(video.Get().eContent, VIDEOTYPE_MAIN);
}

TEST(SDPParseAttribute, ContentIsFoundAnywhereAndMayGoOn) {
    Last video(kVideo);
    video.handler.ProcessContent("x a=content:slides,alt");
    EXPECT_EQ(video.Get().eContent, VIDEOTYPE_PRESO);
    video.handler.ProcessContent("a=content:mainly");
    EXPECT_EQ(video.Get().eContent, VIDEOTYPE_MAIN);
}

TEST(SDPParseAttribute, OtherContentLeavesTheRole) {
    for (const char* line :
         {"a=content:alt", "a=content:speaker", "a=content:slide", "a=content:mai",
          "a=content:", "a=content:alt,slides", "a=content: slides", "A=CONTENT:SLIDES", ""}) {
        Last video(kVideo);
        video.handler.ProcessContent(line);
        EXPECT_EQ(video.Get().eContent, VIDEOTYPE_MAIN) << line;
        video.handler.ProcessContent("a=content:slides");
        video.handler.ProcessContent(line);
        EXPECT_EQ(video.Get().eContent, VIDEOTYPE_PRESO) << line;
    }
}

TEST(SDPParseAttribute, OnlyVideoSectionsHaveARole) {
    for (const char* mline : {kAudio, kApplication, kOther}) {
        Last section(mline);
        section.handler.ProcessContent("a=content:slides");
        EXPECT_EQ(section.Get().eContent, VIDEOTYPE_UNKNOWN) << mline;
        section.handler.ProcessContent("a=content:main");
        EXPECT_EQ(section.Get().eContent, VIDEOTYPE_UNKNOWN) << mline;
    }
}

// --- direction ---

struct DirectionRow {
    const char* line;
    bool fSend;
    bool fRecv;
};

TEST(SDPParseAttribute, DirectionsAreHeldFromThisSide) {
    const DirectionRow rows[] = {
        {"a=inactive", false, false},
        {"a=sendonly", false, true},
        {"a=recvonly", true, false},
        {"a=sendrecv", true, true},
    };
    for (const DirectionRow& row : rows) {
        for (const char* mline : {kVideo, kAudio, kApplication, kOther}) {
            // From both starting points, so that a flag that is not written shows.
            for (const bool comesBefore : {false, true}) {
                Last section(mline);
                section.Get().fSend = comesBefore;
                section.Get().fRecv = comesBefore;
                section.handler.ParseDirectionalAttribute(row.line);
                EXPECT_EQ(section.Get().fSend, row.fSend) << row.line << " in " << mline;
                EXPECT_EQ(section.Get().fRecv, row.fRecv) << row.line << " in " << mline;
                EXPECT_TRUE(section.First().fSend);
                EXPECT_TRUE(section.First().fRecv);
            }
        }
    }
}

TEST(SDPParseAttribute, FirstDirectionInTableOrderDecides) {
    const DirectionRow rows[] = {
        {"a=sendrecv a=inactive", false, false}, {"a=sendonly a=inactive", false, false},
        {"a=recvonly a=inactive", false, false}, {"a=recvonly a=sendonly", false, true},
        {"a=sendrecv a=sendonly", false, true},  {"a=sendrecv a=recvonly", true, false},
        {"a=inactive a=sendrecv", false, false},
    };
    for (const DirectionRow& row : rows) {
        Last section(kVideo);
        section.handler.ParseDirectionalAttribute(row.line);
        EXPECT_EQ(section.Get().fSend, row.fSend) << row.line;
        EXPECT_EQ(section.Get().fRecv, row.fRecv) << row.line;
    }
}

TEST(SDPParseAttribute, DirectionIsFoundAnywhereAndMayGoOn) {
    Last section(kAudio);
    section.handler.ParseDirectionalAttribute("xa=sendonlyx");
    EXPECT_FALSE(section.Get().fSend);
    EXPECT_TRUE(section.Get().fRecv);
}

TEST(SDPParseAttribute, OtherAttributesLeaveBothFlags) {
    for (const char* line : {"a=ptime:20", "a=label:9", "a=inactiv", "a=sendonl", "a=recvonl", "a=sendrec",
                             "sendonly", "a= sendonly", "A=SENDONLY", "a=", ""}) {
        Last section(kAudio);
        section.Get().fSend = false;
        section.handler.ParseDirectionalAttribute(line);
        EXPECT_FALSE(section.Get().fSend) << line;
        EXPECT_TRUE(section.Get().fRecv) << line;
    }
}

TEST(SDPParseAttribute, LaterDirectionReplacesTheEarlier) {
    Last section(kAudio);
    section.handler.ParseDirectionalAttribute("a=inactive");
    section.handler.ParseDirectionalAttribute("a=sendrecv");
    EXPECT_TRUE(section.Get().fSend);
    EXPECT_TRUE(section.Get().fRecv);
}

// --- bandwidth ---

TEST(SDPParseAttribute, SessionBandwidthIsTheTextAfterAs) {
    const std::pair<const char*, const char*> lines[] = {
        {"b=AS:384", "384"},       {"b=AS:384 ", "384 "},    {"b=AS:", ""},           {"b=AS:abc", "abc"},
        {"b=TIAS:64000", "64000"}, {"xAS:1 AS:2", "1 AS:2"}, {"b=X-AS:0512", "0512"},
    };
    for (const auto& [line, text] : lines) {
        SDPHandler handler;
        handler.strMaxSessionBandwidth = "before";
        handler.ProcessBandwidth(line);
        EXPECT_EQ(handler.strMaxSessionBandwidth, text) << line;
    }
}

TEST(SDPParseAttribute, SessionBandwidthOfAnotherKindIsIgnored) {
    for (const char* line : {"b=CT:384", "b=as:384", "b=AS 384", "b=A S:1", ""}) {
        SDPHandler handler;
        handler.ProcessBandwidth("b=AS:128");
        handler.ProcessBandwidth(line);
        EXPECT_EQ(handler.strMaxSessionBandwidth, "128") << line;
    }
}

TEST(SDPParseAttribute, LaterSessionBandwidthReplacesTheEarlier) {
    SDPHandler handler;
    handler.ProcessBandwidth("b=AS:1280000");
    handler.ProcessBandwidth("b=AS:64");
    EXPECT_EQ(handler.strMaxSessionBandwidth, "64");
}

TEST(SDPParseAttribute, MediaBandwidthIsTheTextAfterTias) {
    const std::pair<const char*, const char*> lines[] = {
        {"b=TIAS:384000", "384000"}, {"b=TIAS:384000 ", "384000 "},  {"b=TIAS:", ""},
        {"b=TIAS:abc", "abc"},       {"xTIAS:1 TIAS:2", "1 TIAS:2"},
    };
    for (const auto& [line, text] : lines) {
        Last section(kVideo);
        section.Get().strMaxBandwidth = "before";
        section.handler.ProcessBandwidth(line);
        EXPECT_EQ(section.Get().strMaxBandwidth, text) << line;
        EXPECT_EQ(section.First().strMaxBandwidth, "") << line;
        EXPECT_EQ(section.handler.strMaxSessionBandwidth, "") << line;
    }
}

TEST(SDPParseAttribute, MediaBandwidthOfAnotherKindIsIgnored) {
    for (const char* line : {"b=AS:384", "b=CT:384", "b=tias:384", "b=TIAS 384", "b=IAS:1", ""}) {
        Last section(kAudio);
        section.handler.strMaxSessionBandwidth = "held";
        section.handler.ProcessBandwidth("b=TIAS:64000");
        section.handler.ProcessBandwidth(line);
        EXPECT_EQ(section.Get().strMaxBandwidth, "64000") << line;
        EXPECT_EQ(section.handler.strMaxSessionBandwidth, "held") << line;
    }
}

TEST(SDPParseAttribute, LaterMediaBandwidthReplacesTheEarlier) {
    Last section(kApplication);
    section.handler.ProcessBandwidth("b=TIAS:1280000");
    section.handler.ProcessBandwidth("b=TIAS:64");
    EXPECT_EQ(section.Get().strMaxBandwidth, "64");
}

// --- floor control ---

TEST(SDPParseAttribute, FloorControlIsTheTextAfterItsKeyword) {
    const std::pair<const char*, const char*> lines[] = {
        {"a=floorctrl:c-s", "c-s"},
        {"a=floorctrl:c-only", "c-only"},
        {"a=floorctrl:s-only ", "s-only "},
        {"a=floorctrl:", ""},
        {"a=floorctrl: c-s", " c-s"},
        {"x a=floorctrl:c-s s-only", "c-s s-only"},
        {"a=floorctrl:a=floorctrl:x", "a=floorctrl:x"},
    };
    for (const auto& [line, text] : lines) {
        Last section(kApplication);
        section.Get().strFloorctrl = "before";
        section.handler.ProcessBfcpFloorCtrl(line);
        EXPECT_EQ(section.Get().strFloorctrl, text) << line;
    }
}

TEST(SDPParseAttribute, FloorControlWithoutItsKeywordChangesNothing) {
    Last section(kApplication);
    section.handler.ProcessBfcpFloorCtrl("a=floorctrl:c-s");
    section.handler.ProcessBfcpFloorCtrl("a=floorctrl");
    section.handler.ProcessBfcpFloorCtrl("floorctrl:s-only");
    section.handler.ProcessBfcpFloorCtrl("");
    EXPECT_EQ(section.Get().strFloorctrl, "c-s");
}

TEST(SDPParseAttribute, ConferenceAndUserAreTheNumbersAfterTheirKeywords) {
    Last section(kApplication);
    section.handler.ProcessBfcpConfid("a=confid:15");
    section.handler.ProcessBfcpUserid("a=userid:16");
    EXPECT_EQ(section.Get().iBfcpConfid, 15);
    EXPECT_EQ(section.Get().iBfcpUserid, 16);
    EXPECT_EQ(section.Get().iBfcpFloorid, 0);
    section.handler.ProcessBfcpConfid("xx a=confid:007");
    section.handler.ProcessBfcpUserid("xx a=userid:0");
    EXPECT_EQ(section.Get().iBfcpConfid, 7);
    EXPECT_EQ(section.Get().iBfcpUserid, 0);
}

TEST(SDPParseAttribute, ConferenceAndUserThatAreNoNumbersChangeNothing) {
    for (const char* value : {"abc", "", "-3", "+3", " 3", "3 ", "3x", "0x3", "3\r"}) {
        Last section(kApplication);
        section.handler.ProcessBfcpConfid("a=confid:15");
        section.handler.ProcessBfcpUserid("a=userid:16");
        section.handler.ProcessBfcpConfid(std::string("a=confid:") + value);
        section.handler.ProcessBfcpUserid(std::string("a=userid:") + value);
        EXPECT_EQ(section.Get().iBfcpConfid, 15) << value;
        EXPECT_EQ(section.Get().iBfcpUserid, 16) << value;
    }
}

TEST(SDPParseAttribute, ConferenceAndUserWithoutTheirKeywordsChangeNothing) {
    Last section(kApplication);
    for (const char* line : {"a=userid:4", "confid:4", "a=confid 4", "A=CONFID:4", ""}) {
        section.handler.ProcessBfcpConfid(line);
        EXPECT_EQ(section.Get().iBfcpConfid, 0) << line;
    }
    for (const char* line : {"a=confid:4", "userid:4", "a=userid 4", "A=USERID:4", ""}) {
        section.handler.ProcessBfcpUserid(line);
        EXPECT_EQ(section.Get().iBfcpUserid, 0) << line;
    }
}

TEST(SDPParseAttribute, NumbersBeyondTheFieldSaturateAndAreNarrowed) {
    Last section(kApplication);
    section.handler.ProcessBfcpConfid("a=confid:4294967311");
    section.handler.ProcessBfcpUserid("a=userid:99999999999999999999");
    EXPECT_EQ(section.Get().iBfcpConfid, 15);
    EXPECT_EQ(section.Get().iBfcpUserid, -1);
}

TEST(SDPParseAttribute, FloorControlValuesLandInAnyKindOfSection) {
    for (const char* mline : {kVideo, kAudio, kApplication, kOther}) {
        Last section(mline);
        section.handler.ProcessBfcpFloorCtrl("a=floorctrl:c-s");
        section.handler.ProcessBfcpConfid("a=confid:15");
        section.handler.ProcessBfcpUserid("a=userid:16");
        EXPECT_EQ(section.Get().strFloorctrl, "c-s") << mline;
        EXPECT_EQ(section.Get().iBfcpConfid, 15) << mline;
        EXPECT_EQ(section.Get().iBfcpUserid, 16) << mline;
        EXPECT_EQ(section.First().strFloorctrl, "");
        EXPECT_EQ(section.First().iBfcpConfid, 0);
        EXPECT_EQ(section.First().iBfcpUserid, 0);
    }
}

TEST(SDPParseAttribute, WithoutASectionNothingButTheSessionBandwidthIsKept) {
    SDPHandler handler;
    handler.ProcessContent("a=content:slides");
    handler.ParseDirectionalAttribute("a=inactive");
    handler.ProcessBfcpFloorCtrl("a=floorctrl:c-s");
    handler.ProcessBfcpConfid("a=confid:15");
    handler.ProcessBfcpUserid("a=userid:16");
    EXPECT_TRUE(handler.vecRemoteMediaSession.empty());
    EXPECT_EQ(handler.strMaxSessionBandwidth, "");
    handler.ProcessMedia(kVideo);
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->eContent, VIDEOTYPE_MAIN);
    EXPECT_TRUE(handler.vecRemoteMediaSession[0]->fSend);
    EXPECT_TRUE(handler.vecRemoteMediaSession[0]->fRecv);
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->strFloorctrl, "");
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->iBfcpConfid, 0);
    EXPECT_EQ(handler.vecRemoteMediaSession[0]->iBfcpUserid, 0);
}

// Lines whose second byte is no "=": the keyword is searched, in short lines and in long ones.
struct Elsewhere {
    const char* before;
    const char* after;
};
constexpr Elsewhere kElsewhere[] = {
    {"x ", ""},
    {"x x ", ""},
    {"x ", " and thirty bytes more at the line end"},
    {"twenty bytes in front ", ""},
    {"twenty bytes in front ", " and some after it"},
};

TEST(SDPParseAttribute, KeywordsAreFoundAfterTheStartOfALine) {
    for (const Elsewhere& row : kElsewhere) {
        SDPHandler h;
        h.ProcessMedia("m=video 5002 RTP/AVP 97");
        MediaSession& section = *h.vecRemoteMediaSession[0];
        const auto line = [&row](const char* keyword) {
            return std::string(row.before) + keyword + row.after;
        };
        h.ParseDirectionalAttribute(line("a=inactive"));
        EXPECT_FALSE(section.fSend) << line("a=inactive");
        EXPECT_FALSE(section.fRecv) << line("a=inactive");
        h.ProcessContent(line("a=content:slides"));
        EXPECT_EQ(section.eContent, VIDEOTYPE_PRESO) << line("a=content:slides");
        h.ProcessICEFragPwd(line("a=ice-pwd"));
        EXPECT_EQ(section.stricepwd, line("a=ice-pwd"));
    }
}

TEST(SDPParseAttribute, LinesWithoutAKeywordChangeNothing) {
    for (const char* const line :
         {"nine byte", "ten bytes.", "fourteen bytes", "eighteen bytes....",
          "no sign at all in forty bytes of a line..", "x =: a sign", "a sign = in a long line of some bytes",
          "a sign in the last bytes of a line: ="}) {
        SDPHandler h;
        h.ProcessMedia("m=video 5002 RTP/AVP 97");
        const MediaSession& section = *h.vecRemoteMediaSession[0];
        h.ParseDirectionalAttribute(line);
        h.ProcessContent(line);
        h.ProcessICEFragPwd(line);
        EXPECT_TRUE(section.fSend && section.fRecv) << line;
        EXPECT_EQ(section.eContent, VIDEOTYPE_MAIN) << line;
        EXPECT_EQ(section.striceufrag + section.stricepwd, "") << line;
    }
}

} // namespace
