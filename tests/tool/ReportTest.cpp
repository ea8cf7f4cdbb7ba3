// Verdicts and reasons: one row per reason, near the least text that has it.
#include "Report.h"
#include "Expect.h"

#include <gtest/gtest.h>

namespace {

using cmsdp::AnythingNegotiated;
using cmsdp::BuiltInCapabilities;
using cmsdp::Capabilities;
using cmsdp::ReadInto;
using cmsdp::Report;
using cmsdp::WhyNothing;
using Quor::media::rtp::CryptoParams;

using Notes = std::vector<std::string>;

Report Read(const std::string& text, const Capabilities& c = BuiltInCapabilities()) {
    SDPHandler handler;
    cmsdp::Prepare(handler, c);
    return ReadInto(handler, c, cmsdp::Draft::Of("c=IN IP4 198.51.100.7\r\n" + text));
}

Capabilities With(void (*change)(Capabilities&)) {
    Capabilities c = BuiltInCapabilities();
    change(c);
    return c;
}

constexpr const char* kAudio = "m=audio 5004 RTP/AVP 0\r\n";
constexpr const char* kVideo = "m=video 5006 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n";
constexpr const char* kSlides = "m=video 5008 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=content:slides\r\n";
constexpr const char* kFloor = "m=application 5010 UDP/BFCP *\r\n";

// --- audio ------------------------------------------------------------------------------------------------

TEST(ReportAudio, Negotiated) {
    const Report report = Read(kAudio);
    EXPECT_TRUE(report.audio.negotiated);
    EXPECT_EQ(report.audio.why, "");
    EXPECT_TRUE(AnythingNegotiated(report));
}

TEST(ReportAudio, OnHoldIsNegotiated) {
    EXPECT_TRUE(Read(std::string(kAudio) + "a=inactive\r\n").audio.negotiated);
}

TEST(ReportAudio, NoSection) {
    EXPECT_EQ(Read("v=0\r\n").audio.why, "the far end has no audio section");
}

TEST(ReportAudio, PortZero) {
    const Report report = Read("m=audio 0 RTP/AVP 0\r\n");
    EXPECT_FALSE(report.audio.negotiated);
    EXPECT_EQ(report.audio.why, "the far end declines it with port 0");
}

TEST(ReportAudio, NoCodecInCommon) {
    EXPECT_EQ(Read("m=audio 5004 RTP/AVP 8 111\r\na=rtpmap:111 opus/48000/2\r\n").audio.why,
              "no codec in common: the far end lists PCMA (8), opus/48000/2 (111); this side takes G722 (9), "
              "G7221/16000 with bitrate=32000 in front, PCMU (0), G729 (18)");
}

TEST(ReportAudio, NoCodecOnThisSide) {
    const auto c = With([](Capabilities& side) { side.local.eAudioCodec = PayloadType_t(0); });
    EXPECT_EQ(Read(kAudio, c).audio.why,
              "no codec in common: the far end lists PCMU (0); this side takes no audio codec");
}

TEST(ReportAudio, EmptyPriorityList) {
    const auto c = With([](Capabilities& side) { side.local.listAudioCodecPriority.clear(); });
    EXPECT_EQ(Read(kAudio, c).audio.why, "this side has no audio section: audio.priority is empty");
}

TEST(ReportAudio, CodecMissingFromThePriorityList) {
    const auto c = With([](Capabilities& side) { side.local.listAudioCodecPriority = {PAYLOAD_G722}; });
    EXPECT_EQ(Read(kAudio, c).audio.why, "audio.priority of this side does not list G711U");
}

TEST(ReportAudio, PortZeroOnThisSide) {
    const auto c = With([](Capabilities& side) { side.local.iAudioRTPPort = 0; });
    EXPECT_EQ(Read(kAudio, c).audio.why, "this side declines it with port 0");
}

// --- main video -------------------------------------------------------------------------------------------

TEST(ReportVideo, Negotiated) {
    const Report report = Read(std::string(kAudio) + kVideo);
    EXPECT_TRUE(report.mainVideo.negotiated);
    EXPECT_EQ(report.mainVideo.why, "");
}

// The far end finds our audio section in the place of its video.
TEST(ReportVideo, MovedByOurAnswer) {
    const Report report = Read(kVideo);
    EXPECT_FALSE(report.mainVideo.negotiated);
    EXPECT_EQ(
        report.mainVideo.why,
        "line 2, B03: section 1 of the offer is section 2 of our answer, which has the audio section in its "
        "place; the far end matches sections by their place");
    EXPECT_FALSE(AnythingNegotiated(report));
}

TEST(ReportVideo, NoSection) {
    EXPECT_EQ(Read(kAudio).mainVideo.why, "the far end has no video section");
}

TEST(ReportVideo, NoSectionButSlides) {
    EXPECT_EQ(Read(kSlides).mainVideo.why, "the far end has no video section but the presentation");
}

TEST(ReportVideo, PortZero) {
    EXPECT_EQ(Read("m=video 0 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\n").mainVideo.why,
              "the far end declines it with port 0");
}

// The record is valid and says H.264 here; only its payload number tells.
TEST(ReportVideo, Vp8OnlyIsNotNegotiated) {
    const Report report = Read("m=video 5006 RTP/AVP 96\r\na=rtpmap:96 VP8/90000\r\n");
    EXPECT_TRUE(report.record.m_VideoMain.fIsVideoValid);
    EXPECT_FALSE(report.mainVideo.negotiated);
    EXPECT_EQ(report.mainVideo.why,
              "no codec in common: the far end lists VP8/90000 (96); this side takes H264/90000");
    EXPECT_FALSE(AnythingNegotiated(report));
}

TEST(ReportVideo, NoH264OnThisSide) {
    const auto c = With([](Capabilities& side) { side.local.m_VideoMain.eVideoCodec = PAYLOAD_VP8; });
    EXPECT_EQ(Read(kVideo, c).mainVideo.why, "this side lists no H.264 for it");
}

TEST(ReportVideo, PortZeroOnThisSide) {
    const auto c = With([](Capabilities& side) { side.local.m_VideoMain.iVideoRTPPort = 0; });
    EXPECT_EQ(Read(kVideo, c).mainVideo.why, "this side declines it with port 0");
}

// --- presentation and floor control -----------------------------------------------------------------------

TEST(ReportPresentation, Negotiated) {
    const Report report = Read(std::string(kAudio) + kVideo + kSlides + kFloor);
    EXPECT_TRUE(report.presentation.negotiated);
    EXPECT_TRUE(report.floorControl.negotiated);
    EXPECT_TRUE(AnythingNegotiated(report));
}

TEST(ReportPresentation, NoMarkedSection) {
    EXPECT_EQ(Read(kVideo).presentation.why, "the far end has no video section marked a=content:slides");
    EXPECT_EQ(Read(kVideo).presentation.notes, Notes{});
}

TEST(ReportPresentation, ASecondVideoWithoutTheMark) {
    const Report report = Read(std::string(kVideo) + kVideo);
    EXPECT_FALSE(report.presentation.negotiated);
    EXPECT_EQ(report.presentation.notes,
              Notes{"line 4, RFC 4796, 5: 2 video sections are not marked a=content:slides; the first is "
                    "main video, the others are not taken"});
}

TEST(ReportPresentation, ASecondVideoThatWasDeclinedIsNoMatter) {
    EXPECT_EQ(Read(std::string(kVideo) + "m=video 0 RTP/AVP 97\r\n").presentation.notes, Notes{});
}

TEST(ReportPresentation, SwitchedOffOnThisSide) {
    const auto c = With([](Capabilities& side) { side.floorControl = cmsdp::FloorControl::kOff; });
    const Report report = Read(std::string(kSlides) + kFloor, c);
    EXPECT_EQ(report.presentation.why,
              "floor_control.enabled is false on this side, which then has no presentation");
    EXPECT_EQ(report.floorControl.why, "floor_control.enabled is false on this side");
}

TEST(ReportPresentation, FloorControlAloneIsNoStream) {
    const auto c = With([](Capabilities& side) {
        side.local.listAudioCodecPriority.clear();
        side.local.m_VideoMain.eVideoCodec = PayloadType_t(0);
        side.local.m_VideoPreso.eVideoCodec = PayloadType_t(0);
    });
    const Report report = Read(kFloor, c);
    EXPECT_TRUE(report.floorControl.negotiated);
    EXPECT_FALSE(AnythingNegotiated(report));
}

TEST(ReportFloorControl, NoSection) {
    EXPECT_EQ(Read("m=application 5010 UDP/DTLS/SCTP webrtc-datachannel\r\n").floorControl.why,
              "the far end has no BFCP section");
}

TEST(ReportFloorControl, PortZero) {
    EXPECT_EQ(Read("m=application 0 UDP/BFCP *\r\n").floorControl.why, "the far end declines it with port 0");
}

TEST(ReportFloorControl, PortZeroOnThisSide) {
    const auto c = With([](Capabilities& side) { side.local.iVideoPresoControlPort = 0; });
    EXPECT_EQ(Read(kFloor, c).floorControl.why, "this side declines it with port 0");
}

TEST(ReportFloorControl, TheLastOfTwoStands) {
    const Report report = Read(std::string(kFloor) + "m=application 0 UDP/BFCP *\r\n");
    EXPECT_EQ(report.floorControl.why, "the far end declines it with port 0");
    EXPECT_EQ(report.floorControl.notes, Notes{"line 3, X11: the far end has 2 BFCP sections; the last one "
                                               "gives port, ids and role, and the others are not used"});
}

// --- keys -------------------------------------------------------------------------------------------------

constexpr const char* kKeyed = "m=audio 5004 RTP/SAVP 0\r\n"
                               "a=crypto:1 AES_CM_128_HMAC_SHA1_32 "
                               "inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n";

TEST(ReportSecurity, BothSidesAgree) {
    const auto c = With([](Capabilities& side) { side.srtp = true; });
    EXPECT_EQ(Read(kKeyed, c).audio.notes, Notes{});
    EXPECT_EQ(Read(kAudio).audio.notes, Notes{});
}

TEST(ReportSecurity, OffOnThisSide) {
    EXPECT_EQ(
        Read(kKeyed).audio.notes,
        Notes{"line 2, srtp: the far end gives a key, but SRTP is off on this side; our answer says RTP/AVP, "
              "which a far end that insists on it refuses"});
}

TEST(ReportSecurity, AnotherSuiteOnThisSide) {
    const auto c = With([](Capabilities& side) {
        side.srtp = true;
        side.local.cryptoAlgo[baseSDP::SRTP_AUDIO] = CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80;
    });
    EXPECT_EQ(Read(kKeyed, c).audio.notes,
              Notes{"line 2, B21: the suite of this side is AES_CM_128_HMAC_SHA1_80; our answer writes it "
                    "under the far end's tag, and both ends set up different ciphers"});
}

TEST(ReportSecurity, AKeyThatCannotBeRead) {
    EXPECT_EQ(
        Read("m=audio 5004 RTP/SAVP 0\r\na=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:tooshort\r\n").audio.notes,
        (Notes{
            "line 3, P12: the key is missing, unreadable or zero, and the record holds a key of zeros; the "
            "far end's media cannot be decrypted",
            "line 2, srtp: the far end gives a key, but SRTP is off on this side; our answer says RTP/AVP, "
            "which "
            "a far end that insists on it refuses"}));
}

TEST(ReportSecurity, OnlySuitesThatAreNotRead) {
    EXPECT_EQ(Read("m=audio 5004 RTP/SAVP 0\r\n"
                   "a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
                   "a=crypto:2 AES_256_CM_HMAC_SHA1_80 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n")
                  .audio.notes,
              Notes{"line 3, P10: not encrypted: the far end names AES_CM_128_HMAC_SHA1_80, "
                    "AES_256_CM_HMAC_SHA1_80; only "
                    "AES_CM_128_HMAC_SHA1_32 is read; our answer says RTP/AVP, which a far end that insists "
                    "on it refuses"});
}

TEST(ReportSecurity, AKeyInThePlaceOfTheSuiteIsNotShown) {
    EXPECT_EQ(
        Read("m=audio 5004 RTP/SAVP 0\r\n"
             "a=crypto:1 1234567WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz AES_CM_128_HMAC_SHA1_32\r\n")
            .audio.notes,
        Notes{"line 3, P10: not encrypted: the far end names an unknown suite; only AES_CM_128_HMAC_SHA1_32 "
              "is read; our answer says RTP/AVP, which a far end that insists on it refuses"});
    EXPECT_EQ(
        Read("m=audio 5004 RTP/SAVP 0\r\n"
             "a=crypto:1 NULL_HMAC_SHA1_80 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
             "a=crypto:2 AES_CM_128_HMAC_SHA1_80 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n"
             "a=crypto:3 NULL_HMAC_SHA1_32 inline:WVNfX19zZW1jdGwgKCkgewkyMjA7fQp9CnVubGVz\r\n")
            .audio.notes,
        Notes{"line 3, P10: not encrypted: the far end names AES_CM_128_HMAC_SHA1_80, 2 unknown suites; only "
              "AES_CM_128_HMAC_SHA1_32 is read; our answer says RTP/AVP, which a far end that insists on it "
              "refuses"});
}

TEST(ReportSecurity, Dtls) {
    EXPECT_EQ(Read("m=audio 5004 UDP/TLS/RTP/SAVPF 0\r\n").audio.notes,
              Notes{"line 2, P10: not encrypted: the far end wants DTLS (UDP/TLS/RTP/SAVPF), which is not "
                    "understood; our answer says RTP/AVP, which a far end that insists on it refuses"});
}

TEST(ReportSecurity, SavpWithoutAKey) {
    EXPECT_EQ(Read("m=audio 5004 RTP/SAVP 0\r\n").audio.notes,
              Notes{"line 2, P10: not encrypted: the far end wants RTP/SAVP and gives no key; our answer "
                    "says RTP/AVP, which a far end that insists on it refuses"});
}

TEST(ReportSecurity, OnOnThisSideOnly) {
    const auto c = With([](Capabilities& side) { side.srtp = true; });
    EXPECT_EQ(Read(kAudio, c).audio.notes, Notes{"line 2, P10: not encrypted: SRTP is switched on here, but "
                                                 "the far end gives no key; our answer says RTP/AVP"});
}

TEST(ReportSecurity, AStreamThatDidNotComeUpHasNoSuchNote) {
    EXPECT_EQ(Read("m=audio 0 RTP/SAVP 0\r\n").audio.notes, Notes{});
}

TEST(ReportSecurity, EachStreamHasItsOwn) {
    const Report report = Read("m=video 5006 RTP/SAVP 97\r\na=rtpmap:97 H264/90000\r\n"
                               "m=video 5008 RTP/AVP 97\r\na=rtpmap:97 H264/90000\r\na=content:slides\r\n");
    EXPECT_EQ(report.mainVideo.notes,
              Notes{"line 2, P10: not encrypted: the far end wants RTP/SAVP and gives no key; our answer "
                    "says RTP/AVP, which a far end that insists on it refuses"});
    EXPECT_EQ(report.presentation.notes, Notes{});
}

TEST(Report, SaysWhyNothingCameUp) {
    EXPECT_TEXT(
        WhyNothing(Read("m=audio 0 RTP/AVP 0\r\n")),
        "nothing was negotiated: audio: the far end declines it with port 0; main video: the far end has no "
        "video section; presentation: the far end has no video section marked a=content:slides");
}

TEST(Report, CarriesTheNotesOfTheText) {
    EXPECT_EQ(Read("a=x c=1 2 3\r\n").notes,
              Notes{"line 2, P01: read as a \"c=\" line, because it holds \"c=\"; its third word is now the "
                    "address of the session: \"a=x c=1 2 3\""});
}

} // namespace
