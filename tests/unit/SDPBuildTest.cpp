// SDPBuild: the parts of a description, and what no description shows. Whole offers and answers are in
// build.cases, and the sections in the documents beside it; this file makes them tests.
#include "Capabilities.h"
#include "Documents.h"
#include "Expect.h"

#include <string>

using namespace support;

namespace {

[[maybe_unused]] const int kDocuments = documents::RegisterDocuments("unit");

TEST(SDPBuild, WithoutSectionsThereIsNoAnswerAndNoNewVersion) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.GetAnswer(), "");
    EXPECT_EQ(h.m_iSessionVersion, 1U);
}

// Each part of a description as a text of its own.

void StartConference(SDPHandler& h) {
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    support::Start(h, local, 1000);
    h.m_bSRTP = true;
    h.SetBfcpSupport(true);
}

TEST(SDPBuild, PartsOfAnOfferInOrderAreTheOffer) {
    SDPHandler whole;
    StartConference(whole);
    SDPHandler h;
    StartConference(h);
    const std::string parts = h.AddOfferPreamble() + h.AddAudio() + h.AddVideo(h.MyLocalSDP.m_VideoMain) +
                              h.AddVideo(h.MyLocalSDP.m_VideoPreso) + h.AddApplication() +
                              h.AddFloorControl();
    EXPECT_TEXT(parts, whole.GetLocalSDP());
}

TEST(SDPBuild, PartsOfThePreambleInOrderAreThePreamble) {
    SDPHandler whole;
    StartConference(whole);
    SDPHandler h;
    StartConference(h);
    EXPECT_TEXT("v=0\r\n" + h.AddO() + "s=-\r\n" + h.AddC() + h.AddBandwidth() + "t=0 0\r\n",
                whole.AddOfferPreamble());
}

TEST(SDPBuild, PartsOfAVideoSectionInOrderAreTheSection) {
    SDPHandler h;
    StartConference(h);
    const VideoParms& preso = h.MyLocalSDP.m_VideoPreso;
    EXPECT_TEXT("m=video 16388 RTP/SAVP 97 126\r\n" + h.AddBandwidthTIAS(true) +
                    h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO) + h.AddRTPMap(PAYLOAD_H264) +
                    h.AddH264Profile(preso) + h.AddRTPMap(PAYLOAD_H264_PACKETIZATION_0) +
                    h.AddH264ProfilePacketization0(preso) + h.AddDirectional(MEDIA_VIDEO, VIDEOTYPE_PRESO) +
                    h.AddRTCPAttribute(16389) + h.AddLabel(VIDEOTYPE_PRESO) + h.AddContent(VIDEOTYPE_PRESO),
                h.AddVideo(preso));
}

TEST(SDPBuild, OnlyTheOriginLineAdvancesTheVersion) {
    SDPHandler h;
    StartConference(h);
    for (int sections = 0; sections < 2; ++sections) {
        h.AddC();
        h.AddBandwidth();
        h.AddAudio();
        h.AddVideo(h.MyLocalSDP.m_VideoMain);
        h.AddApplication();
        h.AddFloorControl();
        h.AddUnsupported();
        EXPECT_EQ(1U, h.m_iSessionVersion);
        support::AddSection(h, MEDIA_AUDIO, 5000);
    }
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n");
    h.AddOfferPreamble();
    EXPECT_EQ(3U, h.m_iSessionVersion);
}

TEST(SDPBuild, APartLongerThanItsRoomIsWhole) {
    SDPHandler h;
    h.MyLocalSDP.strDefaultIPAddr = std::string(5000, '1');
    EXPECT_TEXT(h.AddC(), "c=IN IP4 " + std::string(5000, '1') + "\r\n");
}

} // namespace
