// The ffmpeg command lines of the example call, whole, for streams as SDPNegotiator gives them.
#include "Commands.h"

#include "Capabilities.h"
#include "Expect.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Stream = SDPNegotiator::Stream;

Stream AudioStream() {
    Stream stream;
    stream.media = SDPNegotiator::Media::Audio;
    stream.state = SDPNegotiator::State::Start;
    stream.send = true;
    stream.receive = true;
    stream.address = "192.0.2.2";
    stream.port = 20000;
    stream.rtcpPort = 20001;
    stream.codec = PAYLOAD_G711U;
    stream.sendPayload = 0;
    stream.receivePayload = 0;
    return stream;
}

Stream VideoStream(VideoType_t role) {
    Stream stream = AudioStream();
    stream.media = SDPNegotiator::Media::Video;
    stream.role = role;
    stream.port = 20002;
    stream.rtcpPort = 20003;
    stream.codec = PAYLOAD_H264;
    stream.sendPayload = 97;
    stream.receivePayload = 109;
    stream.packetizationMode = 1;
    stream.pictures = {{{1920, 1080, 0}, {1280, 720, 0}, {640, 480, 8}, {352, 288, 30}}};
    return stream;
}

void Encrypt(Stream& stream) {
    stream.suite = support::kSuite32;
    support::WriteKey(stream.ourKey.key.data(), stream.ourKey.salt.data(), "near", "audio");
    support::WriteKey(stream.theirKey.key.data(), stream.theirKey.salt.data(), "away", "audio");
}

/// Each command with its whole line and what it reads, as a document.
std::string CommandText(const std::vector<Stream>& streams) {
    LocalSDP local = support::PresentationLocal();
    std::string text;
    for (const call::Command& command : call::CommandsFor(streams, local, 1000)) {
        text += command.name + "\n";
        for (const std::string& argument : command.arguments) {
            text += (argument.front() == '-' ? "\n  " : " ") + argument;
        }
        text += "\n" + command.input;
        text += command.extension.empty() ? "" : "writes ." + command.extension + "\n";
    }
    return text;
}

const char* const kReceiverStart = "\n  -hide_banner"
                                   "\n  -nostdin"
                                   "\n  -threads 1"
                                   "\n  -protocol_whitelist pipe,udp,rtp,srtp,crypto"
                                   "\n  -fflags nobuffer"
                                   "\n  -analyzeduration 300000"
                                   "\n  -probesize 20000"
                                   "\n  -f sdp"
                                   "\n  -i pipe:0";

const std::string kAudioReceiver = std::string(kReceiverStart) + "\n  -c:a pcm_s16le"
                                                                 "\n  -flush_packets 1\n"
                                                                 "v=0\r\n"
                                                                 "o=- 0 0 IN IP4 127.0.0.1\r\n"
                                                                 "s=-\r\n"
                                                                 "c=IN IP4 127.0.0.1\r\n"
                                                                 "t=0 0\r\n";

TEST(CallCommands, PcmuBothWays) {
    EXPECT_TEXT(CommandText({AudioStream()}),
                std::string("audio-send\n"
                            "\n  -hide_banner"
                            "\n  -nostdin"
                            "\n  -re"
                            "\n  -f lavfi"
                            "\n  -i sine=frequency=1000:sample_rate=8000:samples_per_frame=160"
                            "\n  -c:a pcm_mulaw"
                            "\n  -ac 1"
                            "\n  -payload_type 0"
                            "\n  -f rtp rtp://192.0.2.2:20000?rtcpport=20001&pkt_size=172\n"
                            "audio-receive\n") +
                    kAudioReceiver +
                    "m=audio 16384 RTP/AVP 0\r\n"
                    "a=rtpmap:0 PCMU/8000\r\n"
                    "writes .wav\n");
}

TEST(CallCommands, G722OverSrtpHasBothKeysAndRoomForTheTag) {
    Stream stream = AudioStream();
    stream.codec = PAYLOAD_G722;
    stream.sendPayload = 9;
    stream.receivePayload = 9;
    Encrypt(stream);
    EXPECT_TEXT(CommandText({stream}),
                std::string("audio-send\n"
                            "\n  -hide_banner"
                            "\n  -nostdin"
                            "\n  -re"
                            "\n  -f lavfi"
                            "\n  -i sine=frequency=1000:sample_rate=16000:samples_per_frame=320"
                            "\n  -c:a g722"
                            "\n  -ac 1"
                            "\n  -payload_type 9"
                            "\n  -srtp_out_suite AES_CM_128_HMAC_SHA1_32"
                            "\n  -srtp_out_params bmVhciBhdWRpbyBrZXkgMW5lYXIgYXVkaW9zYWx0"
                            "\n  -f rtp srtp://192.0.2.2:20000?rtcpport=20001&pkt_size=186\n"
                            "audio-receive\n") +
                    kAudioReceiver +
                    "m=audio 16384 RTP/SAVP 9\r\n"
                    "a=rtpmap:9 G722/8000\r\n"
                    "a=crypto:1 AES_CM_128_HMAC_SHA1_32 inline:YXdheSBhdWRpbyBrZXkgMWF3YXkgYXVkaW9zYWx0\r\n"
                    "writes .wav\n");
}

TEST(CallCommands, TheSuiteWithTheLongTagHasItsName) {
    Stream stream = AudioStream();
    Encrypt(stream);
    stream.suite = support::kSuite80;
    const std::string text = CommandText({stream});
    EXPECT_NE(text.find("-srtp_out_suite AES_CM_128_HMAC_SHA1_80"), std::string::npos) << text;
    EXPECT_NE(text.find("a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:"), std::string::npos) << text;
}

TEST(CallCommands, MainVideoInModeOneAndSlidesInModeZero) {
    Stream slides = VideoStream(VIDEOTYPE_PRESO);
    slides.packetizationMode = 0;
    slides.receive = false;
    Stream main = VideoStream(VIDEOTYPE_MAIN);
    EXPECT_TEXT(CommandText({main, slides}),
                std::string("main-send\n"
                            "\n  -hide_banner"
                            "\n  -nostdin"
                            "\n  -re"
                            "\n  -f lavfi"
                            "\n  -i testsrc=size=352x288:rate=15"
                            "\n  -c:v libx264"
                            "\n  -profile:v baseline"
                            "\n  -pix_fmt yuv420p"
                            "\n  -g 15"
                            "\n  -tune zerolatency"
                            "\n  -preset ultrafast"
                            "\n  -b:v 400k"
                            "\n  -payload_type 97"
                            "\n  -f rtp rtp://192.0.2.2:20002?rtcpport=20003&pkt_size=1200\n"
                            "main-receive\n") +
                    kReceiverStart +
                    "\n  -an"
                    "\n  -fps_mode passthrough"
                    "\n  -flush_packets 1"
                    "\n  -f framecrc\n"
                    "v=0\r\n"
                    "o=- 0 0 IN IP4 127.0.0.1\r\n"
                    "s=-\r\n"
                    "c=IN IP4 127.0.0.1\r\n"
                    "t=0 0\r\n"
                    "m=video 16386 RTP/AVP 109\r\n"
                    "a=rtpmap:109 H264/90000\r\n"
                    "writes .frames\n"
                    "slides-send\n"
                    "\n  -hide_banner"
                    "\n  -nostdin"
                    "\n  -re"
                    "\n  -f lavfi"
                    "\n  -i testsrc=size=640x480:rate=5"
                    "\n  -c:v libx264"
                    "\n  -profile:v baseline"
                    "\n  -pix_fmt yuv420p"
                    "\n  -g 5"
                    "\n  -tune zerolatency"
                    "\n  -preset ultrafast"
                    "\n  -b:v 400k"
                    "\n  -x264-params slice-max-size=1100"
                    "\n  -rtpflags h264_mode0"
                    "\n  -payload_type 97"
                    "\n  -f rtp rtp://192.0.2.2:20002?rtcpport=20003&pkt_size=1200\n");
}

TEST(CallCommands, TheRateStaysWithinTheFarEndsLimits) {
    Stream main = VideoStream(VIDEOTYPE_MAIN);
    main.receive = false;
    main.pictures[3].rate = 7;
    EXPECT_NE(CommandText({main}).find("testsrc=size=352x288:rate=7"), std::string::npos);
    main.pictures[3].rate = 0;
    EXPECT_EQ(CommandText({main}), "");
}

TEST(CallCommands, AnIPv6AddressStandsInBrackets) {
    Stream stream = AudioStream();
    stream.receive = false;
    stream.address = "2001:db8::2";
    EXPECT_NE(CommandText({stream}).find(" rtp://[2001:db8::2]:20000?rtcpport=20001"), std::string::npos);
}

TEST(CallCommands, OnlyTheAgreedDirectionsRun) {
    Stream stream = AudioStream();
    stream.state = SDPNegotiator::State::Held;
    stream.send = false;
    stream.receive = false;
    EXPECT_EQ(CommandText({stream}), "");
    stream.receive = true;
    EXPECT_EQ(CommandText({stream}).substr(0, 14), "audio-receive\n");
}

TEST(CallCommands, AStreamThatMustNotStartHasNoCommand) {
    for (const auto state : {SDPNegotiator::State::DeclinedByThem, SDPNegotiator::State::DeclinedByUs,
                             SDPNegotiator::State::NoCommonCodec, SDPNegotiator::State::NoUsableKey,
                             SDPNegotiator::State::NoAddress}) {
        Stream stream = AudioStream();
        stream.state = state;
        EXPECT_EQ(CommandText({stream}), "");
    }
}

TEST(CallCommands, CodecsWithoutAnEncoderAndFloorControlHaveNoCommand) {
    Stream g729 = AudioStream();
    g729.codec = PAYLOAD_G729;
    Stream floor = AudioStream();
    floor.media = SDPNegotiator::Media::FloorControl;
    EXPECT_EQ(CommandText({g729, floor}), "");
}

TEST(CallCommands, TheLogShowsNoKey) {
    Stream stream = AudioStream();
    stream.receive = false;
    Encrypt(stream);
    const std::vector<call::Command> commands = call::CommandsFor({stream}, support::AudioLocal(), 440);
    ASSERT_EQ(commands.size(), 1U);
    EXPECT_TEXT(
        call::Shown(commands[0]),
        "audio-send: ffmpeg -hide_banner -nostdin -re -f lavfi -i "
        "sine=frequency=440:sample_rate=8000:samples_per_frame=160 -c:a pcm_mulaw -ac 1 -payload_type 0 "
        "-srtp_out_suite AES_CM_128_HMAC_SHA1_32 -srtp_out_params ... -f rtp "
        "srtp://192.0.2.2:20000?rtcpport=20001&pkt_size=186");
}

/// All words of a text with one blank between two.
std::string Words(const std::string& text) {
    std::istringstream words(text);
    std::string joined;
    for (std::string word; words >> word;) {
        joined += (joined.empty() ? "" : " ") + word;
    }
    return joined;
}

/// The command line, with the key that the manual writes as KEY.
std::string LineOf(const call::Command& command) {
    std::string line = "ffmpeg";
    for (const std::string& argument : command.arguments) {
        line += " " + argument;
    }
    return std::regex_replace(line, std::regex("[A-Za-z0-9+/]{40}"), "KEY");
}

TEST(CallCommands, TheManualShowsTheseCommandLines) {
    std::ifstream file(COMMONMEDIA_SOURCE_DIR "/docs/engine.md");
    const std::string page = Words({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    Stream secure = AudioStream();
    secure.codec = PAYLOAD_G722;
    secure.sendPayload = 9;
    Encrypt(secure);
    const std::vector<call::Command> commands = call::CommandsFor(
        {AudioStream(), secure, VideoStream(VIDEOTYPE_MAIN)}, support::PresentationLocal(), 1000);
    ASSERT_EQ(commands.size(), 6U);
    for (const std::size_t shown : {0U, 2U, 3U, 4U}) {
        EXPECT_NE(page.find(LineOf(commands[shown])), std::string::npos) << LineOf(commands[shown]);
    }
}

} // namespace
