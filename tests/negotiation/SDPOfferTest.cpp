#include "Call.h"
#include "Texts.h"

using namespace call;

namespace {

/// The "m=" lines of a text.
std::string MediaLines(const std::string& text) {
    std::string lines;
    for (std::size_t at = text.find("m="); at != std::string::npos; at = text.find("\nm=", at + 1)) {
        at += text[at] == '\n' ? 1 : 0;
        lines += text.substr(at, text.find('\r', at) - at) + "\n";
    }
    return lines;
}

// A number that was bound keeps its meaning for ever (RFC 3264, 8.3.2), so a format for which none is left is
// not offered.
TEST(Offer, WhenNumbersRunOutAFormatIsLeftOut) {
    LocalSDP local = Local();
    local.eAudioCodec = PAYLOAD_UNKNOWN;
    local.m_VideoPreso.iVideoRTPPort = 0;
    SDPNegotiator side = Side(local);
    for (int number = 96; number <= 127; ++number) {
        const std::string format = std::to_string(number);
        ASSERT_TRUE(side.Answer(Far("m=video 30002 RTP/AVP " + format + "\na=rtpmap:" + format +
                                    " H264/90000\na=fmtp:" + format + " packetization-mode=1\n"))
                        .isTaken);
    }
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=video 5006 RTP/AVP 127\n");
}

TEST(Offer, ABoundNumberIsGivenToNoOtherFormat) {
    LocalSDP local = Local();
    local.eAudioCodec = PAYLOAD_UNKNOWN;
    local.m_VideoPreso.iVideoRTPPort = 0;
    SDPNegotiator side = Side(local);
    ASSERT_TRUE(side.Answer(Far("m=video 30002 RTP/AVP 96\na=rtpmap:96 H264/90000\n"
                                "a=fmtp:96 packetization-mode=1\n"))
                    .isTaken);
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=video 5006 RTP/AVP 96 97\n");
}

// They called with PCMU and this side prefers G.722: a hold does not change the codec.
TEST(Offer, TheRunningCodecComesFirstUntilAnotherIsWished) {
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0 9\n")).isTaken);
    side.Hold(true);
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=audio 5004 RTP/AVP 0 9 104 18 101\n");
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0 9\na=recvonly\n")).isTaken);
    EXPECT_EQ(side.Streams()[0].changes, SDPNegotiator::kDirection);
    LocalSDP other = side.Local();
    other.listAudioCodecPriority = {PAYLOAD_G729, PAYLOAD_G711U};
    ASSERT_TRUE(side.SetLocal(other).isTaken);
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=audio 5004 RTP/AVP 18 0 101\nm=video 5006 RTP/AVP 97 96\n");
}

// Their hold is no wish of this side, so its own offer has the streams, and none that was declined before.
TEST(Offer, WhileTheyHoldAtPortZeroTheStreamsAreOffered) {
    SDPNegotiator side = Side(AudioOnly());
    const std::string held = Far("m=text 0 RTP/AVP 98\nm=audio 0 RTP/AVP 0\n");
    ASSERT_TRUE(side.Answer(Far("m=text 0 RTP/AVP 98\nm=audio 30000 RTP/AVP 0\n")).isTaken);
    ASSERT_TRUE(side.Answer(held).isTaken);
    ASSERT_TRUE(side.Answer(held).isTaken);
    EXPECT_FALSE(side.NeedsOffer());
    EXPECT_TEXT(side.Offer().text, Replaced(kAudioOffer, {{kFirstVersion, kThirdVersion},
                                                          {"t=0 0", "t=0 0\r\nm=text 0 RTP/AVP 98"}}));
    SDPNegotiator declined = side;
    ASSERT_TRUE(side.Accept(Far("m=text 0 RTP/AVP 98\nm=audio 30000 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(side), R"(DeclinedByUs, the section was offered at port 0
Start send receive 0/0 198.51.100.7:30000
)");
    EXPECT_EQ(side.Streams()[1].changes, SDPNegotiator::kStarted);
    ASSERT_TRUE(declined.Accept(held).isTaken);
    EXPECT_TEXT(MediaLines(declined.Offer().text), "m=text 0 RTP/AVP 98\nm=audio 0 RTP/AVP 0 101\n");
}

// At port 0 only a section of the same medium is still the stream that it was.
TEST(Offer, AStreamThatGaveItsSectionToAnotherMediumIsNotOffered) {
    const std::string audio = "m=audio 30000 RTP/AVP 0\n";
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(Far(audio + "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n")).isTaken);
    EXPECT_TEXT(MediaLines(side.Answer(Far(audio + "m=text 0 RTP/AVP 98\n")).text),
                "m=audio 5004 RTP/AVP 0\nm=text 0 RTP/AVP 98\n");
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=audio 5004 RTP/AVP 0 9 104 18 101\nm=text 0 RTP/AVP 98\n");
}

TEST(Offer, ACapabilityThatGoesAwayDuringTheirHoldIsNotOffered) {
    SDPNegotiator side = Side(Local());
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n" + video)).isTaken);
    ASSERT_TRUE(side.Answer(Far("m=audio 0 RTP/AVP 0\nm=video 0 RTP/AVP 97\n")).isTaken);
    ASSERT_TRUE(side.SetLocal(AudioOnly()).isTaken);
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=audio 5004 RTP/AVP 0 101\nm=video 0 RTP/AVP 97\n");
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0\nm=video 0 RTP/AVP 97\n")).isTaken);
    EXPECT_TEXT(Lines(side), R"(Start send receive 0/0 198.51.100.7:30000
DeclinedByUs, the section was offered at port 0
)");
}

TEST(Offer, AStreamThatWasSecureIsOfferedSecure) {
    const std::string secure = "m=audio 30000 RTP/SAVP 0\n"
                               "a=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                               "inline:AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwd\n";
    SDPNegotiator held = Side(AudioOnly(), Srtp::Wanted);
    ASSERT_TRUE(held.Answer(Far(secure)).isTaken);
    // The transport at port 0 is the far end's own, and says nothing of the stream.
    ASSERT_TRUE(held.Answer(Far("m=audio 0 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(MediaLines(held.Offer().text), "m=audio 5004 RTP/SAVP 0 101\n");
    // Beside a plain stream only new streams are plain.
    SDPNegotiator dropped = Side(Local(), Srtp::Wanted);
    const std::string video = "m=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n";
    ASSERT_TRUE(dropped.Answer(Far(secure + video)).isTaken);
    ASSERT_TRUE(dropped.Answer(Far("m=audio 0 RTP/SAVP 0\n" + video)).isTaken);
    ASSERT_TRUE(dropped.SetLocal(Local()).isTaken);
    dropped.Present(true);
    EXPECT_TEXT(MediaLines(dropped.Offer().text), "m=audio 5004 RTP/SAVP 9 104 0 18 101\n"
                                                  "m=video 5006 RTP/AVP 96 97\n"
                                                  "m=video 5008 RTP/AVP 97 96\n"
                                                  "m=application 5010 UDP/BFCP *\n");
}

TEST(Offer, TheOriginsAddressIsTheRecordsOwn) {
    LocalSDP local = AudioOnly();
    local.strMyIPAddr = "203.0.113.1";
    EXPECT_TEXT(Side(local).Offer().text, Replaced(kAudioOffer, kFirstVersion + "IN IP4 192.0.2.1",
                                                   kFirstVersion + "IN IP4 203.0.113.1"));
}

TEST(Offer, AStreamKeepsItsProfileAndARejectedSectionItsPlace) {
    SDPNegotiator side = Side(Local());
    ASSERT_TRUE(side.Answer(Far("m=text 30002 RTP/AVP 98\nm=audio 30000 RTP/AVPF 0\n")).isTaken);
    EXPECT_TEXT(MediaLines(side.Offer().text), "m=text 0 RTP/AVP 98\nm=audio 5004 RTP/AVPF 0 9 104 18 101\n");
}

} // namespace
