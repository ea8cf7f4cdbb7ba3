// From agreed streams to ffmpeg command lines. The values come from SDPNegotiator::Stream and from our own
// ports; nothing here reads a description. Codecs for which ffmpeg has no encoder (G.729, G.722.1) get no
// process.
// Test: tests/call/CommandsTest.cpp, with whole command lines
#include "Commands.h"

#include <SDPHandler.h>

#include <algorithm>
#include <array>

namespace call {

namespace {

using Stream = SDPNegotiator::Stream;
using Arguments = std::vector<std::string>;

/// An audio codec as ffmpeg names it. Both are sent in packets of 20 ms.
struct AudioFormat {
    PayloadType_t codec;
    const char* encoding; ///< in "a=rtpmap:"
    const char* encoder;
    int rate;   ///< samples/s of the sound; the RTP clock of G.722 differs from it (RFC 3551, 4.5.2)
    int packet; ///< samples in 20 ms
};

constexpr std::array<AudioFormat, 2> kAudioFormats = {{
    {PAYLOAD_G711U, "PCMU/8000", "pcm_mulaw", 8000, 160},
    {PAYLOAD_G722, "G722/8000", "g722", 16000, 320},
}};

/// What ffmpeg keeps free at the end of a secure packet, whatever the length of the suite's tag.
constexpr int kTagRoom = 14;
constexpr int kAudioPacket = 172; ///< RTP header and 20 ms at 64 kbit/s
constexpr int kVideoPacket = 1200;

struct PictureSize {
    VideoType_t role;
    const char* name; ///< of the stream, in process names
    int width;
    int height;
    int rate; ///< pictures/s; less when the far end's limits allow less
};

constexpr std::array<PictureSize, 2> kPictures = {{
    {VIDEOTYPE_MAIN, "main", 352, 288, 15},
    {VIDEOTYPE_PRESO, "slides", 640, 480, 5},
}};

void Append(Arguments& arguments, Arguments more) {
    std::move(more.begin(), more.end(), std::back_inserter(arguments));
}

/// The begin of a command that plays a source made by ffmpeg itself, in real time.
Arguments FromSource(std::string source) {
    return {"-hide_banner", "-nostdin", "-re", "-f", "lavfi", "-i", std::move(source)};
}

bool IsSecure(const Stream& stream) {
    return stream.suite != Quor::media::rtp::CryptoParams::CRYPTO_NONE;
}

/// The suite's name (RFC 4568, 6.2). A stream has no other suites than these two.
std::string SuiteName(const Stream& stream) {
    return stream.suite == Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32
               ? "AES_CM_128_HMAC_SHA1_32"
               : "AES_CM_128_HMAC_SHA1_80";
}

std::string InlineText(const SDPNegotiator::Key& key) {
    std::string text;
    GetSRTPKey(text, key.key.data(), key.salt.data());
    return text;
}

/// Where to send, and how large a packet may be.
Arguments Destination(const Stream& stream, int packet) {
    Arguments arguments;
    if (IsSecure(stream)) {
        arguments = {"-srtp_out_suite", SuiteName(stream), "-srtp_out_params", InlineText(stream.ourKey)};
        packet += kTagRoom;
    }
    const bool isIPv6 = stream.address.find(':') != std::string::npos;
    const std::string host = isIPv6 ? "[" + stream.address + "]" : stream.address;
    Append(arguments,
           {"-f", "rtp",
            (IsSecure(stream) ? "srtp://" : "rtp://") + host + ":" + std::to_string(stream.port) +
                "?rtcpport=" + std::to_string(stream.rtcpPort) + "&pkt_size=" + std::to_string(packet)});
    return arguments;
}

/// The description of one stream to receive, as ffmpeg reads it.
std::string ReceiveDescription(const Stream& stream, const char* media, int port,
                               const std::string& encoding) {
    const std::string payload = std::to_string(stream.receivePayload);
    std::string text = "v=0\r\n"
                       "o=- 0 0 IN IP4 127.0.0.1\r\n"
                       "s=-\r\n"
                       "c=IN IP4 127.0.0.1\r\n"
                       "t=0 0\r\n";
    text += std::string("m=") + media + " " + std::to_string(port) +
            (IsSecure(stream) ? " RTP/SAVP " : " RTP/AVP ") + payload + "\r\n";
    text += "a=rtpmap:" + payload + " " + encoding + "\r\n";
    if (IsSecure(stream)) {
        text += "a=crypto:1 " + SuiteName(stream) + " inline:" + InlineText(stream.theirKey) + "\r\n";
    }
    return text;
}

Command Receiver(const std::string& name, std::string description, const Arguments& output,
                 const std::string& extension) {
    // One thread: with more, ffmpeg holds decoded pictures back, and a stop loses them.
    Arguments arguments = {"-hide_banner",
                           "-nostdin",
                           "-threads",
                           "1",
                           "-protocol_whitelist",
                           "pipe,udp,rtp,srtp,crypto",
                           "-fflags",
                           "nobuffer",
                           "-analyzeduration",
                           "300000",
                           "-probesize",
                           "20000",
                           "-f",
                           "sdp",
                           "-i",
                           "pipe:0"};
    Append(arguments, output);
    return {name + "-receive", std::move(arguments), std::move(description), extension};
}

void AddAudio(std::vector<Command>& commands, const Stream& stream, int port, int tone) {
    const auto* format = std::find_if(kAudioFormats.begin(), kAudioFormats.end(),
                                      [&](const AudioFormat& row) { return row.codec == stream.codec; });
    if (format == kAudioFormats.end()) {
        return;
    }
    if (stream.send) {
        Arguments arguments = FromSource("sine=frequency=" + std::to_string(tone) +
                                         ":sample_rate=" + std::to_string(format->rate) +
                                         ":samples_per_frame=" + std::to_string(format->packet));
        Append(arguments,
               {"-c:a", format->encoder, "-ac", "1", "-payload_type", std::to_string(stream.sendPayload)});
        Append(arguments, Destination(stream, kAudioPacket));
        commands.push_back({"audio-send", std::move(arguments), "", ""});
    }
    if (stream.receive) {
        commands.push_back(Receiver("audio", ReceiveDescription(stream, "audio", port, format->encoding),
                                    {"-c:a", "pcm_s16le", "-flush_packets", "1"}, "wav"));
    }
}

/// Pictures per second, within the far end's level and limits; 0 when the size is beyond them.
int RateOf(const Stream& stream, const PictureSize& size) {
    for (const SDPNegotiator::Picture& allowed : stream.pictures) {
        if (allowed.width == size.width && allowed.height == size.height) {
            return std::min(allowed.rate, size.rate);
        }
    }
    return 0;
}

void AddVideo(std::vector<Command>& commands, const Stream& stream, int port) {
    const PictureSize& size = stream.role == VIDEOTYPE_PRESO ? kPictures[1] : kPictures[0];
    const int rate = RateOf(stream, size);
    if (stream.send && rate > 0) {
        Arguments arguments = FromSource("testsrc=size=" + std::to_string(size.width) + "x" +
                                         std::to_string(size.height) + ":rate=" + std::to_string(rate));
        // A picture that can be decoded alone every second.
        Append(arguments,
               {"-c:v", "libx264", "-profile:v", "baseline", "-pix_fmt", "yuv420p", "-g",
                std::to_string(rate), "-tune", "zerolatency", "-preset", "ultrafast", "-b:v", "400k"});
        if (stream.packetizationMode == 0) {
            // Single NAL unit mode (RFC 6184, 6.2): every slice fits in a packet.
            Append(arguments, {"-x264-params", "slice-max-size=1100", "-rtpflags", "h264_mode0"});
        }
        Append(arguments, {"-payload_type", std::to_string(stream.sendPayload)});
        Append(arguments, Destination(stream, kVideoPacket));
        commands.push_back({std::string(size.name) + "-send", std::move(arguments), "", ""});
    }
    if (stream.receive) {
        commands.push_back(
            Receiver(size.name, ReceiveDescription(stream, "video", port, "H264/90000"),
                     {"-an", "-fps_mode", "passthrough", "-flush_packets", "1", "-f", "framecrc"}, "frames"));
    }
}

} // namespace

std::vector<Command> CommandsFor(const std::vector<Stream>& streams, const LocalSDP& local, int tone) {
    std::vector<Command> commands;
    for (const Stream& stream : streams) {
        if (stream.state != SDPNegotiator::State::Start && stream.state != SDPNegotiator::State::Held) {
            continue;
        }
        if (stream.media == SDPNegotiator::Media::Audio) {
            AddAudio(commands, stream, local.iAudioRTPPort, tone);
        }
        if (stream.media == SDPNegotiator::Media::Video) {
            const bool isSlides = stream.role == VIDEOTYPE_PRESO;
            AddVideo(commands, stream,
                     isSlides ? local.m_VideoPreso.iVideoRTPPort : local.m_VideoMain.iVideoRTPPort);
        }
    }
    return commands;
}

std::string Shown(const Command& command) {
    std::string shown = command.name + ": ffmpeg";
    bool isKey = false;
    for (const std::string& argument : command.arguments) {
        shown += " " + (isKey ? "..." : argument);
        isKey = argument == "-srtp_out_params";
    }
    return shown;
}

} // namespace call
