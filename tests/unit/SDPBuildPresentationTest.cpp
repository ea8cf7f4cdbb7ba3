// SDPBuildPresentation: the floor control channel and the sections that are rejected.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>
#include <vector>

using namespace support;

namespace {

const std::string kFixed = "a=floorid:2 mstrm:9\r\n"
                           "a=confid:15\r\n"
                           "a=userid:15\r\n";

// A handler whose own control port is 16390 and whose own BFCP identity is not the one that is written.
void StartFloor(SDPHandler& h) {
    Start(h, PresentationLocal());
    h.MyLocalSDP.iBfcpConfid = 3;
    h.MyLocalSDP.iBfcpUserid = 4;
    h.MyLocalSDP.fBfcpIsServer = true;
}

TEST(SDPBuildPresentation, OfferedChannel) {
    SDPHandler h;
    StartFloor(h);
    EXPECT_TEXT(h.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddFloorControl(), "a=floorctrl:c-s\r\n"
                                     "a=floorid:2 mstrm:9\r\n"
                                     "a=confid:15\r\n"
                                     "a=userid:15\r\n");
}

TEST(SDPBuildPresentation, OfferedPortIsWrittenAsItIs) {
    SDPHandler h;
    EXPECT_TEXT(h.AddApplication(), "m=application 0 UDP/BFCP *\r\n");
    h.MyLocalSDP.iVideoPresoControlPort = -1;
    EXPECT_TEXT(h.AddApplication(), "m=application -1 UDP/BFCP *\r\n");
}

TEST(SDPBuildPresentation, AnsweredChannelHasTheOwnPort) {
    SDPHandler h;
    StartFloor(h);
    AddBfcpSection(h, 5070);
    EXPECT_TEXT(h.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
}

TEST(SDPBuildPresentation, AnsweredChannelIsDeclinedWhereTheFarEndDeclined) {
    SDPHandler h;
    StartFloor(h);
    AddBfcpSection(h, 0);
    EXPECT_TEXT(h.AddApplication(), "m=application 0 UDP/BFCP *\r\n");
}

TEST(SDPBuildPresentation, AnsweredChannelTakesANegativePortForAnAcceptedOne) {
    SDPHandler h;
    StartFloor(h);
    AddBfcpSection(h, -1);
    EXPECT_TEXT(h.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
}

TEST(SDPBuildPresentation, AnswerWithoutAFarChannelHasNeitherPortNorRole) {
    SDPHandler h;
    StartFloor(h);
    AddSection(h, MEDIA_AUDIO, 5000);
    EXPECT_TEXT(h.AddApplication(), "m=application  UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddFloorControl(), kFixed);
}

TEST(SDPBuildPresentation, ApplicationSectionsWithoutBfcpAreNoChannel) {
    SDPHandler h;
    StartFloor(h);
    MediaSession& lower = AddSection(h, MEDIA_APPLICATION, 5070);
    lower.strFullMLine = "m=application 5070 UDP/bfcp *";
    lower.strFloorctrl = "s-only";
    AddSection(h, MEDIA_APPLICATION, 5072).strFullMLine = "m=application 5072 UDP/DTLS/SCTP webrtc";
    AddSection(h, MEDIA_APPLICATION, 5074);
    EXPECT_TEXT(h.AddApplication(), "m=application  UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddFloorControl(), kFixed);
}

TEST(SDPBuildPresentation, OtherMediaWithBfcpInTheirLineAreNoChannel) {
    SDPHandler h;
    StartFloor(h);
    for (const MediaType media : {MEDIA_AUDIO, MEDIA_VIDEO, MEDIA_UNKNOWN}) {
        AddSection(h, media, 5070).strFullMLine = "m=text 5070 UDP/BFCP *";
    }
    EXPECT_TEXT(h.AddApplication(), "m=application  UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddFloorControl(), kFixed);
}

TEST(SDPBuildPresentation, AnyBfcpTransportIsAChannel) {
    SDPHandler h;
    StartFloor(h);
    MediaSession& section = AddSection(h, MEDIA_APPLICATION, 5070);
    section.strFullMLine = "m=application 5070 TCP/TLS/BFCP *";
    section.strFloorctrl = "s-only";
    EXPECT_TEXT(h.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
    EXPECT_TEXT(h.AddFloorControl(), "a=floorctrl:c-only\r\n" + kFixed);
}

std::string Role(const std::vector<std::string>& roles) {
    SDPHandler h;
    StartFloor(h);
    for (const std::string& role : roles) {
        AddBfcpSection(h, 5070, role);
    }
    const std::string lines = h.AddFloorControl();
    EXPECT_TEXT(lines.substr(lines.size() - kFixed.size()), kFixed);
    return lines.substr(0, lines.size() - kFixed.size());
}

TEST(SDPBuildPresentation, TheAnswerIsClientOnlyToAServerAndServerOtherwise) {
    EXPECT_TEXT(Role({"s-only"}), "a=floorctrl:c-only\r\n");
    EXPECT_TEXT(Role({"c-only"}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({"c-s"}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({""}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({"s-only "}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({"S-ONLY"}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({"s-only c-only"}), "a=floorctrl:s-only\r\n");
}

TEST(SDPBuildPresentation, TheLastChannelGivesTheRole) {
    EXPECT_TEXT(Role({"s-only", "c-only"}), "a=floorctrl:s-only\r\n");
    EXPECT_TEXT(Role({"c-only", "s-only"}), "a=floorctrl:c-only\r\n");
    EXPECT_TEXT(Role({"c-only", "c-s", "s-only"}), "a=floorctrl:c-only\r\n");
}

TEST(SDPBuildPresentation, TheFirstChannelGivesThePort) {
    SDPHandler declined;
    StartFloor(declined);
    AddBfcpSection(declined, 0);
    AddBfcpSection(declined, 5070);
    EXPECT_TEXT(declined.AddApplication(), "m=application 0 UDP/BFCP *\r\n");
    SDPHandler accepted;
    StartFloor(accepted);
    AddSection(accepted, MEDIA_APPLICATION, 0);
    AddBfcpSection(accepted, 5070);
    AddBfcpSection(accepted, 0);
    EXPECT_TEXT(accepted.AddApplication(), "m=application 16390 UDP/BFCP *\r\n");
}

// Rejected sections.

struct Remote {
    std::string strFullMLine;
    std::string strIPAddr;
};

std::string Reject(std::uint32_t supported, const std::vector<Remote>& sections) {
    SDPHandler h;
    h.m_iMaxSupportedSessions = supported;
    for (const Remote& remote : sections) {
        MediaSession& section = AddSection(h, MEDIA_UNKNOWN, 5004);
        section.strFullMLine = remote.strFullMLine;
        section.strIPAddr = remote.strIPAddr;
    }
    return h.AddUnsupported();
}

TEST(SDPBuildPresentation, ARejectedSectionKeepsTransportAndFormats) {
    EXPECT_TEXT(Reject(0, {{"m=video 5004 RTP/AVP 97 98", "10.0.0.5"}}), "m=video 0 RTP/AVP 97 98\r\n"
                                                                         "c=IN IP4 10.0.0.5\r\n");
    EXPECT_TEXT(Reject(0, {{"m=audio 5004/2 RTP/SAVPF 0", ""}}), "m=audio 0 RTP/SAVPF 0\r\n");
}

TEST(SDPBuildPresentation, WordsOfARejectedSectionAreJoinedByOneBlank) {
    EXPECT_TEXT(Reject(0, {{"  m=video\t5004   RTP/AVP\t\t97 \n 98  ", ""}}), "m=video 0 RTP/AVP 97 98\r\n");
    EXPECT_TEXT(Reject(0, {{"m=video\v5004\fRTP/AVP\r97", ""}}), "m=video 0 RTP/AVP 97\r\n");
}

TEST(SDPBuildPresentation, ShortLinesOfRejectedSectionsEndAtThePort) {
    EXPECT_TEXT(Reject(0, {{"m=video", ""}}), "m=video 0\r\n");
    EXPECT_TEXT(Reject(0, {{"m=video 5004", "10.0.0.5"}}), "m=video 0\r\nc=IN IP4 10.0.0.5\r\n");
    EXPECT_TEXT(Reject(0, {{"m=video 5004 RTP/AVP", ""}}), "m=video 0 RTP/AVP\r\n");
}

TEST(SDPBuildPresentation, ARejectedSectionWithoutAWordIsSkipped) {
    EXPECT_TEXT(Reject(0, {{"", "10.0.0.5"}, {" \t ", ""}, {"m=text 1 RTP/AVP 9", ""}}),
                "m=text 0 RTP/AVP 9\r\n");
}

TEST(SDPBuildPresentation, OnlySectionsBeyondTheServedOnesAreRejected) {
    const std::vector<Remote> sections = {{"m=audio 5000 RTP/AVP 0", "10.0.0.1"},
                                          {"m=video 5002 RTP/AVP 97", "10.0.0.2"},
                                          {"m=video 5004 RTP/AVP 98", "10.0.0.3"},
                                          {"m=text 5006 RTP/AVP 99", ""}};
    EXPECT_TEXT(Reject(2, sections), "m=video 0 RTP/AVP 98\r\n"
                                     "c=IN IP4 10.0.0.3\r\n"
                                     "m=text 0 RTP/AVP 99\r\n");
    EXPECT_TEXT(Reject(3, sections), "m=text 0 RTP/AVP 99\r\n");
    EXPECT_TEXT(Reject(4, sections), "");
    EXPECT_TEXT(Reject(5, sections), "");
    EXPECT_TEXT(Reject(0xFFFFFFFFU, sections), "");
    EXPECT_TEXT(Reject(0, {}), "");
}

TEST(SDPBuildPresentation, ARejectedSectionIgnoresTheSessionAddress) {
    SDPHandler h;
    h.strSessionIPAddr = "10.9.9.9";
    h.m_iMaxSupportedSessions = 0;
    AddSection(h, MEDIA_VIDEO, 5004).strFullMLine = "m=video 5004 RTP/AVP 97";
    EXPECT_TEXT(h.AddUnsupported(), "m=video 0 RTP/AVP 97\r\n");
}

} // namespace
