// Every line that is written ends in CR LF; the only exceptions are the bare prefixes "a=rtpmap:",
// "a=label:" and "a=content:".
#include "Law.h"

#include "HostileTexts.h"

#include <functional>
#include <string>

using namespace support;

namespace {

// No line is empty, CR and LF occur in line ends only, and the last line ends in CR LF.
void ExpectWholeLines(const std::string& text) {
    std::string::size_type begin = 0;
    while (begin < text.size()) {
        const std::string::size_type end = text.find("\r\n", begin);
        ASSERT_NE(end, std::string::npos) << MakeVisible(text.substr(begin));
        const std::string line = text.substr(begin, end - begin);
        EXPECT_FALSE(line.empty()) << MakeVisible(text);
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << MakeVisible(line);
        begin = end + 2;
    }
}

// Checks every description and part of one that these capabilities give in answer to this text.
void ExpectWholeDescriptions(const LocalSDP& local, const std::string& text) {
    for (const Switches& switches : AllSwitches()) {
        SDPHandler h;
        Start(h, local);
        Set(h, switches);
        ExpectWholeLines(h.GetLocalSDP());
        RemoteSDP remote;
        h.ParseTheSDP(text, remote);
        ExpectWholeLines(h.GetLocalSDP());
        h.m_iMaxSupportedSessions = 0;
        ExpectWholeLines(h.GetLocalSDP());
    }
}

void ForEachLocal(const std::function<void(const LocalSDP&)>& visit) {
    visit(LocalSDP());
    visit(AudioLocal());
    visit(VideoLocal());
    visit(PresentationLocal());
    for (const CRYPTO_PROFILE suite : {kSuite32, kSuite80, kSuite256, kSuiteGcm128, kSuiteGcm256}) {
        LocalSDP local = PresentationLocal();
        GiveKeys(local, "near", suite);
        visit(local);
    }
    for (const int codec : {0, int{PAYLOAD_H264}, int{PAYLOAD_VP8}, int{PAYLOAD_H264_PACKETIZATION_0}, -1}) {
        LocalSDP local = PresentationLocal();
        local.m_VideoMain.eVideoCodec = local.m_VideoPreso.eVideoCodec = PayloadType_t(codec);
        local.eAudioCodec = PayloadType_t(codec);
        local.iAudioRTPPort = local.m_VideoMain.iVideoRTPPort = codec;
        local.iMaxBandwidth = codec;
        visit(local);
    }
}

TEST(LawLine, OffersAndAnswersAreWholeLines) {
    for (const char* text : {kRichText, kAddressless, "v=0\r\n"}) {
        ForEachLocal([&](const LocalSDP& local) { ExpectWholeDescriptions(local, text); });
    }
}

TEST(LawLine, AnswersToCapturedTextsAreWholeLines) {
    LocalSDP local = PresentationLocal();
    GiveKeys(local, "near", kSuite32);
    for (const std::string& text : CapturedTexts()) {
        ExpectWholeDescriptions(local, text);
    }
}

TEST(LawLine, AnswersToHostileTextsAreWholeLines) {
    LocalSDP local = PresentationLocal();
    GiveKeys(local, "near", kSuite32);
    for (const HostileText& hostile : ShortHostileTexts()) {
        ExpectWholeDescriptions(local, hostile.make(0));
        SDPHandler h;
        Start(h, AudioLocal());
        RemoteSDP remote;
        h.ParseTheSDP(hostile.make(0), remote);
        h.SetBfcpSupport(true);
        ExpectWholeLines(h.GetLocalSDP());
    }
}

TEST(LawLine, PiecesByThemselvesAreWholeLines) {
    SDPHandler h;
    LocalSDP local = PresentationLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    for (const std::string& piece : {h.AddOfferPreamble(),
                                     h.AddO(),
                                     h.AddC(),
                                     h.AddBandwidth(),
                                     h.AddBandwidthTIAS(true),
                                     h.AddBandwidthTIAS(false),
                                     h.AddAudio(),
                                     h.AddVideo(local.m_VideoMain),
                                     h.AddVideo(local.m_VideoPreso),
                                     h.AddLabel(VIDEOTYPE_MAIN),
                                     h.AddLabel(VIDEOTYPE_PRESO),
                                     h.AddContent(VIDEOTYPE_MAIN),
                                     h.AddContent(VIDEOTYPE_PRESO),
                                     h.AddH264Profile(local.m_VideoMain),
                                     h.AddH264ProfilePacketization0(local.m_VideoMain),
                                     h.AddCrypto(baseSDP::SRTP_AUDIO),
                                     h.AddCrypto(baseSDP::SRTP_VIDEO),
                                     h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO),
                                     h.AddApplication(),
                                     h.AddFloorControl(),
                                     h.AddDirectional(MEDIA_AUDIO, VIDEOTYPE_UNKNOWN),
                                     h.AddRTCPAttribute(5001),
                                     h.AddRTPMap(PAYLOAD_G711U),
                                     h.AddRTPMap(PAYLOAD_G729),
                                     h.AddRTPMap(PAYLOAD_G722),
                                     h.AddRTPMap(PAYLOAD_G7221),
                                     h.AddRTPMap(PAYLOAD_H264),
                                     h.AddRTPMap(PAYLOAD_H264_PACKETIZATION_0)}) {
        EXPECT_FALSE(piece.empty());
        ExpectWholeLines(piece);
    }
}

TEST(LawLine, TheBarePrefixesAreTheOnlyOnesWithoutALineEnd) {
    SDPHandler h;
    LocalSDP local = PresentationLocal();
    Start(h, local);
    for (int value = -1; value <= 300; ++value) {
        const std::string mapLine = h.AddRTPMap(PayloadType_t(value));
        const std::string label = h.AddLabel(VIDEOTYPE(value));
        const std::string content = h.AddContent(VIDEOTYPE(value));
        for (const std::string& piece : {mapLine, label, content}) {
            if (piece != "a=rtpmap:" && piece != "a=label:" && piece != "a=content:") {
                ExpectWholeLines(piece);
            }
        }
    }
    local.m_VideoMain.eVideoType = VIDEOTYPE_UNKNOWN;
    const std::string section = h.AddVideo(local.m_VideoMain);
    const std::string bare = "a=label:a=content:";
    ASSERT_GT(section.size(), bare.size());
    EXPECT_EQ(section.substr(section.size() - bare.size()), bare);
    ExpectWholeLines(section.substr(0, section.size() - bare.size()));
}

} // namespace
