// SDPBuild: whole offers and answers, the lines before the first section, versions and gates.
#include "Capabilities.h"
#include "Expect.h"

#include <string>

using namespace support;

namespace {

TEST(SDPBuild, OfferOfAudioOnly) {
    SDPHandler h;
    Start(h, AudioLocal(), 123456);
    EXPECT_TEXT(h.GetOffer(), "v=0\r\n"
                              "o=Quillmarshorizon 123456 2 IN IP4 192.0.2.1\r\n"
                              "s=-\r\n"
                              "c=IN IP4 192.0.2.1\r\n"
                              "t=0 0\r\n"
                              "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                              "a=rtpmap:104 G7221/16000\r\n"
                              "a=fmtp:104 bitrate=32000\r\n"
                              "a=rtpmap:9 G722/8000\r\n"
                              "a=rtpmap:0 PCMU/8000\r\n"
                              "a=rtpmap:18 G729/8000\r\n"
                              "a=fmtp:18 annexb=no\r\n"
                              "a=rtpmap:101 telephone-event/8000\r\n"
                              "a=fmtp:101 0-15\r\n"
                              "a=sendrecv\r\n"
                              "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

const char* const kFullOffer =
    "v=0\r\n"
    "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
    "s=-\r\n"
    "c=IN IP4 192.0.2.1\r\n"
    "b=AS:1000\r\n"
    "t=0 0\r\n"
    "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
    "b=TIAS:64000\r\n"
    "a=rtpmap:104 G7221/16000\r\n"
    "a=fmtp:104 bitrate=32000\r\n"
    "a=rtpmap:9 G722/8000\r\n"
    "a=rtpmap:0 PCMU/8000\r\n"
    "a=rtpmap:18 G729/8000\r\n"
    "a=fmtp:18 annexb=no\r\n"
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
    "a=sendrecv\r\n"
    "a=rtcp:16387 IN IP4 192.0.2.1\r\n"
    "a=label:8\r\n"
    "a=content:main\r\n"
    "m=video 16388 RTP/AVP 97 126\r\n"
    "b=TIAS:936000\r\n"
    "a=rtpmap:97 H264/90000\r\n"
    "a=fmtp:97 profile-level-id=420028;max-br=1500;packetization-mode=1;max-rcmd-nalu-size=32000;"
    "level-asymmetry-allowed=1\r\n"
    "a=rtpmap:126 H264/90000\r\n"
    "a=fmtp:126 profile-level-id=420028;max-br=1500;packetization-mode=0;max-rcmd-nalu-size=0;"
    "level-asymmetry-allowed=1\r\n"
    "a=sendrecv\r\n"
    "a=rtcp:16389 IN IP4 192.0.2.1\r\n"
    "a=label:9\r\n"
    "a=content:slides\r\n"
    "m=application 16390 UDP/BFCP *\r\n"
    "a=floorctrl:c-s\r\n"
    "a=floorid:2 mstrm:9\r\n"
    "a=confid:15\r\n"
    "a=userid:15\r\n";

TEST(SDPBuild, OfferWithPresentation) {
    SDPHandler h;
    Start(h, PresentationLocal());
    h.SetBfcpSupport(true);
    EXPECT_TEXT(h.GetOffer(), kFullOffer);
}

TEST(SDPBuild, OfferWithoutFloorControlSupportEndsBehindMainVideo) {
    SDPHandler h;
    Start(h, PresentationLocal());
    const std::string fullText = kFullOffer;
    EXPECT_TEXT(h.GetOffer(), fullText.substr(0, fullText.find("m=video 16388")));
}

TEST(SDPBuild, OfferWithFloorControlSupportAndNoPresentationCodecKeepsTheChannel) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority.clear();
    Start(h, local);
    h.SetBfcpSupport(true);
    EXPECT_TEXT(h.GetOffer(), "v=0\r\n"
                              "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                              "s=-\r\n"
                              "c=IN IP4 192.0.2.1\r\n"
                              "t=0 0\r\n"
                              "m=application 0 UDP/BFCP *\r\n"
                              "a=floorctrl:c-s\r\n"
                              "a=floorid:2 mstrm:9\r\n"
                              "a=confid:15\r\n"
                              "a=userid:15\r\n");
}

TEST(SDPBuild, OfferOfACapabilityRecordThatNobodyFilled) {
    SDPHandler h;
    h.m_iSessionID = 1;
    h.SetDefaultLocalIPAddr("192.0.2.1");
    EXPECT_TEXT(h.GetOffer(), "v=0\r\n"
                              "o=Quillmarshorizon 1 2 IN IP4 192.0.2.1\r\n"
                              "s=-\r\n"
                              "c=IN IP4 192.0.2.1\r\n"
                              "t=0 0\r\n"
                              "m=video 0 RTP/AVP \r\n"
                              "a=label:8\r\n"
                              "a=content:main\r\n");
}

TEST(SDPBuild, WithoutADefaultAddressThereIsNoOfferAndNoNewVersion) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.strDefaultIPAddr = "";
    local.strMyIPAddr = "10.1.2.3";
    Start(h, local);
    EXPECT_TEXT(h.GetOffer(), "");
    EXPECT_TEXT(h.GetLocalSDP(), "");
    EXPECT_EQ(h.m_iSessionVersion, 1U);
}

TEST(SDPBuild, WithoutSectionsThereIsNoAnswerAndNoNewVersion) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.GetAnswer(), "");
    EXPECT_EQ(h.m_iSessionVersion, 1U);
}

TEST(SDPBuild, AnswerWithoutADefaultAddressIsStillWritten) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.strDefaultIPAddr = "";
    Start(h, local);
    AddFormat(AddSection(h, MEDIA_AUDIO, 5000), "0");
    EXPECT_TEXT(h.GetAnswer(), "v=0\r\n"
                               "o=Quillmarshorizon 1000 2 IN IP4 \r\n"
                               "s=-\r\n"
                               "c=IN IP4 \r\n"
                               "t=0 0\r\n"
                               "m=audio 16384 RTP/AVP 0 101\r\n"
                               "a=rtpmap:0 PCMU/8000\r\n"
                               "a=rtpmap:101 telephone-event/8000\r\n"
                               "a=fmtp:101 0-15\r\n"
                               "a=sendrecv\r\n"
                               "a=rtcp:16385 IN IP4 \r\n");
}

TEST(SDPBuild, GetLocalSDPOffersWithoutSectionsAndAnswersWithThem) {
    SDPHandler offering;
    SDPHandler answering;
    Start(offering, AudioLocal());
    Start(answering, AudioLocal());
    AddFormat(AddSection(answering, MEDIA_AUDIO, 5000), "18");
    EXPECT_TRUE(offering.IsOffer());
    EXPECT_FALSE(answering.IsOffer());
    EXPECT_TEXT(offering.GetLocalSDP(), "v=0\r\n"
                                        "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                        "s=-\r\n"
                                        "c=IN IP4 192.0.2.1\r\n"
                                        "t=0 0\r\n"
                                        "m=audio 16384 RTP/AVP 104 9 0 18 101\r\n"
                                        "a=rtpmap:104 G7221/16000\r\n"
                                        "a=fmtp:104 bitrate=32000\r\n"
                                        "a=rtpmap:9 G722/8000\r\n"
                                        "a=rtpmap:0 PCMU/8000\r\n"
                                        "a=rtpmap:18 G729/8000\r\n"
                                        "a=fmtp:18 annexb=no\r\n"
                                        "a=rtpmap:101 telephone-event/8000\r\n"
                                        "a=fmtp:101 0-15\r\n"
                                        "a=sendrecv\r\n"
                                        "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(answering.GetLocalSDP(), "v=0\r\n"
                                         "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                         "s=-\r\n"
                                         "c=IN IP4 192.0.2.1\r\n"
                                         "t=0 0\r\n"
                                         "m=audio 16384 RTP/AVP 18 101\r\n"
                                         "a=rtpmap:18 G729/8000\r\n"
                                         "a=fmtp:18 annexb=no\r\n"
                                         "a=rtpmap:101 telephone-event/8000\r\n"
                                         "a=fmtp:101 0-15\r\n"
                                         "a=sendrecv\r\n"
                                         "a=rtcp:16385 IN IP4 192.0.2.1\r\n");
}

// An answer to presentation, floor control, video, audio, text, in that order: all that is answered comes in
// our own order, what is left over comes last.
void AddFiveSections(SDPHandler& h) {
    MediaSession& preso = AddSection(h, MEDIA_VIDEO, 5008);
    preso.eContent = VIDEOTYPE_PRESO;
    preso.fSend = false;
    preso.strFullMLine = "m=video 5008 RTP/AVP 98";
    AddBfcpSection(h, 5006, "s-only");
    MediaSession& video = AddSection(h, MEDIA_VIDEO, 5002);
    video.strFullMLine = "m=video 5002 RTP/AVP 97 98";
    video.strIPAddr = "192.0.2.7";
    MediaSession& audio = AddSection(h, MEDIA_AUDIO, 5000);
    audio.strFullMLine = "m=audio 5000 RTP/AVP 9 0";
    AddFormat(audio, "9");
    AddFormat(audio, "0");
    AddSection(h, MEDIA_UNKNOWN, 5010).strFullMLine = "m=text 5010 RTP/AVP 99";
}

const std::string kFullAnswer =
    Replaced(kFullOffer, {{"104 9 0 18 101\r\n", "9 101\r\n"},
                          {"a=rtpmap:104 G7221/16000\r\n", ""},
                          {"a=fmtp:104 bitrate=32000\r\n", ""},
                          {"a=rtpmap:0 PCMU/8000\r\n", ""},
                          {"a=rtpmap:18 G729/8000\r\n", ""},
                          {"a=fmtp:18 annexb=no\r\n", ""},
                          {"a=sendrecv\r\na=rtcp:16389", "a=recvonly\r\na=rtcp:16389"},
                          {"a=floorctrl:c-s", "a=floorctrl:c-only"}}) +
    "m=video 0 RTP/AVP 97 98\r\n"
    "c=IN IP4 192.0.2.7\r\n"
    "m=audio 0 RTP/AVP 9 0\r\n"
    "m=text 0 RTP/AVP 99\r\n";

TEST(SDPBuild, AnswerKeepsItsOwnOrder) {
    SDPHandler h;
    Start(h, PresentationLocal());
    h.SetBfcpSupport(true);
    AddFiveSections(h);
    EXPECT_TEXT(h.GetAnswer(), kFullAnswer);
}

TEST(SDPBuild, AnswerWithoutFloorControlSupportLeavesThePresentationOut) {
    SDPHandler h;
    Start(h, PresentationLocal());
    AddFiveSections(h);
    const std::string& fullText = kFullAnswer;
    EXPECT_TEXT(h.GetAnswer(), fullText.substr(0, fullText.find("m=video 16388")) +
                                   "m=video 0 RTP/AVP 97 98\r\n"
                                   "c=IN IP4 192.0.2.7\r\n"
                                   "m=audio 0 RTP/AVP 9 0\r\n"
                                   "m=text 0 RTP/AVP 99\r\n");
}

// Answers to n text sections, none of which any builder answers; the preamble and the tail remain.
std::string AnswerTail(std::size_t sections, std::uint32_t supported) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.listAudioCodecPriority.clear();
    Start(h, local);
    h.m_iMaxSupportedSessions = supported;
    for (std::size_t i = 0; i < sections; ++i) {
        AddSection(h, MEDIA_UNKNOWN, 5000).strFullMLine = "m=text 5000 RTP/AVP " + std::to_string(i);
    }
    const std::string answer = h.GetAnswer();
    const std::string preamble = "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 192.0.2.1\r\n"
                                 "t=0 0\r\n";
    EXPECT_TEXT(answer.substr(0, preamble.size()), preamble);
    return answer.substr(preamble.size());
}

TEST(SDPBuild, TwoSectionsAreServedAndTheThirdIsRejected) {
    EXPECT_EQ(SDPHandler().m_iMaxSupportedSessions, 2U);
    EXPECT_TEXT(AnswerTail(1, 2), "");
    EXPECT_TEXT(AnswerTail(2, 2), "");
    EXPECT_TEXT(AnswerTail(3, 2), "m=text 0 RTP/AVP 2\r\n");
}

TEST(SDPBuild, TheNumberOfServedSectionsIsUnsigned) {
    EXPECT_TEXT(AnswerTail(2, 0), "m=text 0 RTP/AVP 0\r\nm=text 0 RTP/AVP 1\r\n");
    EXPECT_TEXT(AnswerTail(2, 0xFFFFFFFFU), "");
}

// The lines before the first section.

TEST(SDPBuild, PreambleWithoutBandwidth) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddOfferPreamble(), "v=0\r\n"
                                      "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                      "s=-\r\n"
                                      "c=IN IP4 192.0.2.1\r\n"
                                      "t=0 0\r\n");
}

TEST(SDPBuild, PreambleCarriesBandwidthBetweenAddressAndTime) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.iMaxBandwidth = 384000;
    Start(h, local);
    EXPECT_TEXT(h.AddOfferPreamble(), "v=0\r\n"
                                      "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n"
                                      "s=-\r\n"
                                      "c=IN IP4 192.0.2.1\r\n"
                                      "b=AS:384\r\n"
                                      "t=0 0\r\n");
}

TEST(SDPBuild, OriginWithAnOwnAddress) {
    SDPHandler h;
    Start(h, AudioLocal(), 123456);
    h.MyLocalSDP.strMyIPAddr = "10.1.2.3";
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 123456 2 IN IP4 10.1.2.3\r\n");
    EXPECT_TEXT(h.AddC(), "c=IN IP4 192.0.2.1\r\n");
    EXPECT_EQ(h.m_iSessionID, 123456);
}

TEST(SDPBuild, OriginWithoutAnOwnAddressTakesTheDefault) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuild, OriginWithAnExtension) {
    SDPHandler h;
    Start(h, AudioLocal());
    h.MyLocalSDP.strOExtension = "abc";
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon-abc 1000 2 IN IP4 192.0.2.1\r\n");
    h.MyLocalSDP.strOExtension = "x";
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon-x 1000 3 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuild, ConnectionLineWithoutAnAddressEndsInABlank) {
    SDPHandler h;
    h.MyLocalSDP.strMyIPAddr = "10.1.2.3";
    EXPECT_TEXT(h.AddC(), "c=IN IP4 \r\n");
}

TEST(SDPBuild, SessionIdIsWrittenUnsigned) {
    SDPHandler h;
    Start(h, AudioLocal(), -1);
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 4294967295 2 IN IP4 192.0.2.1\r\n");
    h.m_iSessionID = INT32_MIN;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 2147483648 3 IN IP4 192.0.2.1\r\n");
    h.m_iSessionID = INT32_MAX;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 2147483647 4 IN IP4 192.0.2.1\r\n");
    h.m_iSessionID = 0;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 0 5 IN IP4 192.0.2.1\r\n");
}

TEST(SDPBuild, VersionIsWrittenSignedAndWraps) {
    SDPHandler h;
    Start(h, AudioLocal());
    h.m_iSessionVersion = 0x7FFFFFFEU;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2147483647 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 -2147483648 IN IP4 192.0.2.1\r\n");
    h.m_iSessionVersion = 0xFFFFFFFEU;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 -1 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 0 IN IP4 192.0.2.1\r\n");
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 1 IN IP4 192.0.2.1\r\n");
    EXPECT_EQ(h.m_iSessionVersion, 1U);
}

std::string Origin(const std::string& description) {
    const std::string::size_type begin = description.find("o=");
    return description.substr(begin, description.find("\r\n", begin) - begin);
}

TEST(SDPBuild, OffersAndAnswersShareOneVersion) {
    SDPHandler h;
    Start(h, AudioLocal());
    EXPECT_EQ(Origin(h.GetOffer()), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1");
    EXPECT_EQ(Origin(h.GetOffer()), "o=Quillmarshorizon 1000 3 IN IP4 192.0.2.1");
    AddSection(h, MEDIA_AUDIO, 5000);
    EXPECT_EQ(Origin(h.GetAnswer()), "o=Quillmarshorizon 1000 4 IN IP4 192.0.2.1");
    EXPECT_EQ(Origin(h.GetLocalSDP()), "o=Quillmarshorizon 1000 5 IN IP4 192.0.2.1");
    h.ResetRemoteSDP();
    EXPECT_EQ(Origin(h.GetLocalSDP()), "o=Quillmarshorizon 1000 6 IN IP4 192.0.2.1");
    EXPECT_EQ(h.m_iSessionVersion, 6U);
}

TEST(SDPBuild, PiecesByThemselvesLeaveTheVersion) {
    SDPHandler h;
    Start(h, PresentationLocal());
    h.AddC();
    h.AddBandwidth();
    h.AddAudio();
    h.AddVideo(h.MyLocalSDP.m_VideoMain);
    h.AddApplication();
    h.AddFloorControl();
    h.AddUnsupported();
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

TEST(SDPBuild, APartLongerThanItsRoomIsWhole) {
    SDPHandler h;
    h.MyLocalSDP.strDefaultIPAddr = std::string(5000, '1');
    EXPECT_TEXT(h.AddC(), "c=IN IP4 " + std::string(5000, '1') + "\r\n");
}

} // namespace
