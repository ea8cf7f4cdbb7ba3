// The deliberate behaviours of writing that call private operations, of commonmedia/DELIBERATE.md. Each test
// shows the surprising input with its whole outcome, and beside it the input that does what one expects. The
// others are in build.cases, those of the video section in DeliberateBuildVideoTest.cpp.
#include "Capabilities.h"
#include "Expect.h"

#include <cstdint>
#include <string>

using namespace support;

namespace {

// Reads a far end's text into a handler.
void Read(SDPHandler& h, const std::string& text) {
    RemoteSDP remote;
    EXPECT_EQ(h.ParseTheSDP(text, remote), 0);
}

TEST(Deliberate, B02_IdUnsignedVersionSigned) {
    SDPHandler h;
    Start(h, AudioLocal(), 1000);
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 1000 2 IN IP4 192.0.2.1\r\n");
    h.m_iSessionID = -2;
    h.m_iSessionVersion = 0xFFFFFFFDU;
    EXPECT_TEXT(h.AddO(), "o=Quillmarshorizon 4294967294 -2 IN IP4 192.0.2.1\r\n");
}

TEST(Deliberate, B08_BareRtpmapPrefix) {
    const SDPHandler h;
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_G711U), "a=rtpmap:0 PCMU/8000\r\n");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_VP8), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(PAYLOAD_UNKNOWN), "a=rtpmap:");
    EXPECT_TEXT(h.AddRTPMap(kAllAudio), "a=rtpmap:");
}

TEST(Deliberate, B13_SecureTestAndCryptoLineMatchDifferentSections) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    GiveKeys(local, "near", kSuite32);
    Start(h, local);
    h.m_bSRTP = true;
    const std::string crypto =
        "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:YXdheSB2aWRlbyBrZXkgMWF3YXkgdmlkZW9zYWx0\r\n";
    const std::string main = "m=video 5002 RTP/SAVP 97\r\n";
    const std::string preso = "m=video 5004 RTP/SAVP 97\r\na=content:slides\r\n";
    Read(h, main + crypto + preso);
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO));
    EXPECT_FALSE(h.UseSecureParms(baseSDP::SRTP_VIDEO_PRESO));
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO),
                "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:bmVhciB2aWRlbyBrZXkgMW5lYXIgdmlkZW9zYWx0\r\n");
    // Secure in its presentation alone, the far end makes main video secure, too, and leaves it keyless.
    Read(h, main + preso + crypto);
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO));
    EXPECT_TRUE(h.UseSecureParms(baseSDP::SRTP_VIDEO_PRESO));
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO), "");
    EXPECT_TEXT(h.AddCrypto(baseSDP::SRTP_VIDEO_PRESO),
                "a=crypto:5 AES_CM_128_HMAC_SHA1_32 inline:bmVhciBzbGlkZSBrZXkgMW5lYXIgc2xpZGVzYWx0\r\n");
}

TEST(Deliberate, B25_AddressesAreAlwaysWrittenAsIp4) {
    SDPHandler h;
    LocalSDP local = AudioLocal();
    local.eAudioCodec = PAYLOAD_G711U;
    local.listAudioCodecPriority = {PAYLOAD_G711U};
    local.strDefaultIPAddr = "2001:db8::1";
    Start(h, local);
    EXPECT_TEXT(h.GetLocalSDP(), "v=0\r\n"
                                 "o=Quillmarshorizon 1000 2 IN IP4 2001:db8::1\r\n"
                                 "s=-\r\n"
                                 "c=IN IP4 2001:db8::1\r\n"
                                 "t=0 0\r\n"
                                 "m=audio 16384 RTP/AVP 0 101\r\n"
                                 "a=rtpmap:0 PCMU/8000\r\n"
                                 "a=rtpmap:101 telephone-event/8000\r\n"
                                 "a=fmtp:101 0-15\r\n"
                                 "a=sendrecv\r\n"
                                 "a=rtcp:16385 IN IP4 2001:db8::1\r\n");
    RemoteSDP remote;
    h.m_iMaxSupportedSessions = 0;
    h.ParseTheSDP("m=text 6000 RTP/AVP 98\r\nc=IN IP6 2001:db8::2\r\n", remote);
    EXPECT_TEXT(h.AddUnsupported(), "m=text 0 RTP/AVP 98\r\nc=IN IP4 2001:db8::2\r\n");
    h.SetDefaultLocalIPAddr("192.0.2.1");
    EXPECT_TEXT(h.AddC(), "c=IN IP4 192.0.2.1\r\n");
}

} // namespace
