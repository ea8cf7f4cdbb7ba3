#include "Call.h"

using namespace call;

namespace {

/// The answer to an offer of audio and video.
std::string Streams(const std::string& answer, Srtp srtp = Srtp::Off) {
    SDPNegotiator side = Side(Local(), srtp);
    EXPECT_TRUE(side.Offer().isTaken);
    const auto accepted = side.Accept(answer);
    return accepted.isTaken ? Lines(side) : "refused: " + std::string(accepted.reason) + "\n";
}

constexpr std::string_view kKey = " inline:AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwd\n";

std::string Secure(std::string_view tagAndSuite) {
    return Far("m=audio 30000 RTP/SAVP 0\na=crypto:" + std::string(tagAndSuite) + std::string(kKey) +
               "m=video 0 RTP/SAVP 97\n");
}

TEST(Accept, TheAnswersNumbersAreSentTo) {
    EXPECT_TEXT(Streams(Far("m=audio 30000 RTP/AVP 98\na=rtpmap:98 PCMU/8000\n"
                            "m=video 30002 RTP/AVP 99\na=rtpmap:99 H264/90000\n"
                            "a=fmtp:99 packetization-mode=0;profile-level-id=42e00d\n")),
                R"(Start send receive 98/0 198.51.100.7:30000
Start send receive 99/96 198.51.100.7:30002
)");
}

TEST(Accept, AFaultCostsItsStream) {
    EXPECT_TEXT(Streams(Far("m=audio 30000 RTP/AVP 8\nm=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n")),
                R"(NoCommonCodec, this side supports no format of the section
Start send receive 97/97 198.51.100.7:30002
)");
    EXPECT_TEXT(Streams(Far("m=audio 0 RTP/AVP 0\nm=video 30002 RTP/AVP 97\na=rtpmap:97 H264/90000\n")),
                R"(DeclinedByThem, the far end's section has port 0
Start send receive 97/97 198.51.100.7:30002
)");
    EXPECT_TEXT(Streams(Text("v=0\no=far 7 1 IN IP4 198.51.100.7\ns=-\nt=0 0\nm=audio 30000 RTP/AVP 0\n"
                             "m=video 30002 RTP/AVP 97\nc=IN IP4 0.0.0.0\na=rtpmap:97 H264/90000\n")),
                R"(NoAddress 0/0, the far end gives no address
Held receive 97/97 0.0.0.0:30002, the far end's address is none to send to
)");
}

TEST(Accept, OtherSectionsCostTheWholeAnswer) {
    const std::string refused = "refused: the answer has other sections than the offer\n";
    EXPECT_TEXT(Streams(Far("m=audio 30000 RTP/AVP 0\n")), refused);
    EXPECT_TEXT(Streams(Far("m=video 30002 RTP/AVP 97\nm=audio 30000 RTP/AVP 0\n")), refused);
    EXPECT_TEXT(Streams(Far("m=audio 30000 RTP/SAVP 0\nm=video 30002 RTP/AVP 97\n")), refused);
    EXPECT_TEXT(Streams(""), refused);
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Offer().isTaken);
    EXPECT_FALSE(side.Accept(Far("")).isTaken);
    EXPECT_EQ(side.GetPhase(), Phase::OfferSent);
    EXPECT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
}

TEST(Accept, TheSuiteIsOneThatWasOfferedUnderItsTag) {
    EXPECT_TEXT(Streams(Secure("1 AES_CM_128_HMAC_SHA1_80"), Srtp::Wanted),
                R"(Start send receive 0/0 198.51.100.7:30000 _80
DeclinedByThem, the far end's section has port 0
)");
    EXPECT_TEXT(Streams(Secure("2 AES_CM_128_HMAC_SHA1_32"), Srtp::Wanted),
                R"(Start send receive 0/0 198.51.100.7:30000 _32
DeclinedByThem, the far end's section has port 0
)");
    EXPECT_TEXT(Streams(Secure("2 AES_CM_128_HMAC_SHA1_80"), Srtp::Wanted),
                R"(NoUsableKey, the crypto line is none of those that were offered
DeclinedByThem, the far end's section has port 0
)");
    EXPECT_TEXT(Streams(Secure("1 AES_256_CM_HMAC_SHA1_80"), Srtp::Wanted),
                R"(NoUsableKey, no crypto line of the section can be used
DeclinedByThem, the far end's section has port 0
)");
}

// One key in both ways: what one side sends could be sent back to it as the other's.
TEST(Accept, OurOwnKeySecuresNothing) {
    EXPECT_TEXT(Streams(Far("m=audio 30000 RTP/SAVP 0\na=crypto:1 AES_CM_128_HMAC_SHA1_80 "
                            "inline:CQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUm\nm=video 0 RTP/SAVP 97\n"),
                        Srtp::Wanted),
                R"(NoUsableKey 0/0 198.51.100.7:30000 _80, the far end's key is this side's own
DeclinedByThem, the far end's section has port 0
)");
}

TEST(Accept, WithEveryPortZeroAllIsHeld) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Answer(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
    LocalSDP none = AudioOnly();
    none.iAudioRTPPort = 0;
    ASSERT_TRUE(side.SetLocal(none).isTaken);
    EXPECT_TEXT(side.Offer().text, Text(R"(v=0
o=Quillmarshorizon 578437695752307201 2 IN IP4 192.0.2.1
s=-
c=IN IP4 192.0.2.1
t=0 0
m=audio 0 RTP/AVP 0
)"));
    ASSERT_TRUE(side.Accept(Far("m=audio 0 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(side), "Held, this side holds all streams at port 0\n");
}

TEST(Accept, AWishOfTheMeantimeIsStillToBeTold) {
    SDPNegotiator side = Side(AudioOnly());
    ASSERT_TRUE(side.Offer().isTaken);
    side.Hold(true);
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0\n")).isTaken);
    EXPECT_TEXT(Lines(side), "Held send 0/0 198.51.100.7:30000, this side holds the stream\n");
    EXPECT_TRUE(side.NeedsOffer());
    EXPECT_NE(side.Offer().text.find("a=sendonly"), std::string::npos);
    ASSERT_TRUE(side.Accept(Far("m=audio 30000 RTP/AVP 0\na=recvonly\n")).isTaken);
    EXPECT_FALSE(side.NeedsOffer());
}

} // namespace
