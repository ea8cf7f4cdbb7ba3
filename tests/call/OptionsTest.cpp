// The command line of the example call, and the capabilities that it describes.
#include "Options.h"

#include "Expect.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Parsed {
    bool goesOn = false;
    int status = -1;
    call::Options options;
    std::string output; ///< of --help and of a complaint
};

Parsed Parse(std::vector<const char*> words) {
    words.insert(words.begin(), "example_call");
    Parsed parsed;
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    parsed.goesOn =
        call::ParseOptions(static_cast<int>(words.size()), words.data(), parsed.options, parsed.status);
    parsed.output = ::testing::internal::GetCapturedStdout() + ::testing::internal::GetCapturedStderr();
    return parsed;
}

TEST(CallOptions, WithoutOptionsTheAgentWaitsForACall) {
    const Parsed parsed = Parse({});
    EXPECT_TRUE(parsed.goesOn);
    EXPECT_EQ(parsed.options.uri, "");
    EXPECT_EQ(parsed.options.sipPort, 17060);
    EXPECT_TRUE(parsed.options.requestsPictures);
    EXPECT_TRUE(parsed.options.steps.empty());
    EXPECT_EQ(call::SrtpOf(parsed.options), SDPNegotiator::Srtp::Off);
}

TEST(CallOptions, CapabilitiesFollowTheOptions) {
    const Parsed parsed = Parse({"--audio", "PCMU,G729", "--video", "mode0", "--suite", "32", "--srtp",
                                 "required", "--media-port", "40000", "--address", "192.0.2.1"});
    ASSERT_TRUE(parsed.goesOn) << parsed.output;
    const LocalSDP local = call::CapabilitiesOf(parsed.options);
    EXPECT_EQ(local.listAudioCodecPriority, (std::list<int>{PAYLOAD_G711U, PAYLOAD_G729}));
    EXPECT_EQ(local.eAudioCodec, PAYLOAD_G711U | PAYLOAD_G729);
    EXPECT_EQ(local.iAudioRTPPort, 40000);
    EXPECT_EQ(local.m_VideoMain.eVideoCodec, PAYLOAD_H264_PACKETIZATION_0);
    EXPECT_EQ(local.m_VideoMain.iVideoRTPPort, 40002);
    EXPECT_EQ(local.m_VideoPreso.eVideoCodec, 0);
    EXPECT_EQ(local.strDefaultIPAddr, "192.0.2.1");
    EXPECT_EQ(local.cryptoAlgo[baseSDP::SRTP_VIDEO],
              Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32);
    EXPECT_EQ(call::SrtpOf(parsed.options), SDPNegotiator::Srtp::Required);
}

TEST(CallOptions, WhoPresentsCanReceiveSlidesToo) {
    for (const char* option : {"--slides", "--present"}) {
        const LocalSDP local = call::CapabilitiesOf(Parse({option}).options);
        EXPECT_EQ(local.m_VideoPreso.eVideoCodec, PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0) << option;
        EXPECT_EQ(local.m_VideoPreso.iVideoRTPPort, 30004) << option;
        EXPECT_EQ(local.iVideoPresoControlPort, 30006) << option;
    }
}

TEST(CallOptions, ActionsAreInOrderOfTime) {
    const Parsed parsed = Parse(
        {"--hang-up-after", "9", "--hold-after", "2.5", "6", "--resume-after", "4", "--rekey-after", "4"});
    std::string steps;
    for (const call::Step& step : parsed.options.steps) {
        steps += std::to_string(step.after).substr(0, 3) + " " + call::NameOf(step.action) + "\n";
    }
    EXPECT_TEXT(steps, "2.5 hold\n"
                       "4.0 resume\n"
                       "4.0 rekey\n"
                       "6.0 hold\n"
                       "9.0 hang-up\n");
}

TEST(CallOptions, HelpEndsWithStatus0AndAnErrorWithStatus2) {
    const Parsed help = Parse({"--help"});
    EXPECT_FALSE(help.goesOn);
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--hold-after SECONDS"), std::string::npos) << help.output;
    for (const auto& words : std::vector<std::vector<const char*>>{{"--audio", "OPUS"},
                                                                   {"--srtp", "maybe"},
                                                                   {"--media-port", "65530"},
                                                                   {"--hold-after", "soon"},
                                                                   {"--x"}}) {
        const Parsed wrong = Parse(words);
        EXPECT_FALSE(wrong.goesOn) << words.front();
        EXPECT_EQ(wrong.status, 2) << words.front();
    }
}

} // namespace
