// Each piece of a description as a text of its own: the pieces in order are the description.
#include "Capabilities.h"
#include "Expect.h"

#include <SDPHandler.h>

#include <string>

namespace {

void StartConference(SDPHandler& h) {
    LocalSDP local = support::PresentationLocal();
    support::GiveKeys(local, "near", support::kSuite32);
    support::Start(h, local, 1000);
    h.m_bSRTP = true;
    h.SetBfcpSupport(true);
}

TEST(SDPBuildPieces, ThePiecesOfAnOfferInOrderAreTheOffer) {
    SDPHandler whole;
    StartConference(whole);
    SDPHandler h;
    StartConference(h);
    const std::string pieces = h.AddOfferPreamble() + h.AddAudio() + h.AddVideo(h.MyLocalSDP.m_VideoMain) +
                               h.AddVideo(h.MyLocalSDP.m_VideoPreso) + h.AddApplication() +
                               h.AddFloorControl();
    EXPECT_TEXT(pieces, whole.GetLocalSDP());
}

TEST(SDPBuildPieces, ThePiecesOfThePreambleInOrderAreThePreamble) {
    SDPHandler whole;
    StartConference(whole);
    SDPHandler h;
    StartConference(h);
    EXPECT_TEXT("v=0\r\n" + h.AddO() + "s=-\r\n" + h.AddC() + h.AddBandwidth() + "t=0 0\r\n",
                whole.AddOfferPreamble());
}

TEST(SDPBuildPieces, ThePiecesOfAVideoSectionInOrderAreTheSection) {
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

TEST(SDPBuildPieces, OnlyTheOriginLineAdvancesTheVersion) {
    SDPHandler h;
    StartConference(h);
    support::AddSection(h, MEDIA_AUDIO, 5000);
    h.AddC();
    h.AddAudio();
    h.AddVideo(h.MyLocalSDP.m_VideoMain);
    h.AddApplication();
    h.AddFloorControl();
    h.AddUnsupported();
    EXPECT_EQ(1U, h.m_iSessionVersion);
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n");
    h.AddOfferPreamble();
    EXPECT_EQ(3U, h.m_iSessionVersion);
}

TEST(SDPBuildPieces, APieceLongerThanItsRoomIsWhole) {
    SDPHandler h;
    h.MyLocalSDP.strDefaultIPAddr = std::string(5000, '1');
    EXPECT_TEXT(h.AddC(), "c=IN IP4 " + std::string(5000, '1') + "\r\n");
}

} // namespace
