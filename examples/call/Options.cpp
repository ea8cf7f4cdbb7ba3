// Reads the command line with CLI11. Every choice of words is a table, and each action of a call is one row
// that gives its option, --NAME-after SECONDS. Test: tests/call/OptionsTest.cpp.
#include "Options.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <list>

namespace call {

namespace {

struct ActionName {
    Action action;
    const char* name;
    const char* help;
};

constexpr std::array<ActionName, 14> kActions = {{
    {Action::Hold, "hold", "put the far end on hold"},
    {Action::Resume, "resume", "take it off hold"},
    {Action::Mute, "mute", "mute the camera"},
    {Action::Unmute, "unmute", "send the camera again"},
    {Action::Present, "present", "send slides"},
    {Action::StopPresenting, "stop-presenting", "receive slides only"},
    {Action::HoldByPort, "hold-by-port", "set every port to 0"},
    {Action::ResumePorts, "resume-ports", "set the ports again"},
    {Action::StopVideo, "stop-video", "set the port of main video to 0"},
    {Action::NextCodec, "next-codec", "keep the second audio codec of --audio alone"},
    {Action::Rekey, "rekey", "make new keys"},
    {Action::Encrypt, "encrypt", "require SRTP from now on"},
    {Action::OfferAgain, "offer-again", "send an offer that changes nothing"},
    {Action::HangUp, "hang-up", "end the call"},
}};

struct AudioName {
    const char* name;
    PayloadType_t codec;
};

constexpr std::array<AudioName, 4> kAudio = {{
    {"G7221", PAYLOAD_G7221},
    {"G722", PAYLOAD_G722},
    {"PCMU", PAYLOAD_G711U},
    {"G729", PAYLOAD_G729},
}};

struct VideoName {
    const char* name;
    PayloadType_t codecs;
};

constexpr std::array<VideoName, 4> kVideo = {{
    {"both", PayloadType_t(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0)},
    {"mode0", PAYLOAD_H264_PACKETIZATION_0},
    {"mode1", PAYLOAD_H264},
    {"none", PayloadType_t(0)},
}};

struct SrtpName {
    const char* name;
    SDPNegotiator::Srtp policy;
};

constexpr std::array<SrtpName, 3> kSrtp = {{
    {"off", SDPNegotiator::Srtp::Off},
    {"wanted", SDPNegotiator::Srtp::Wanted},
    {"required", SDPNegotiator::Srtp::Required},
}};

template <typename Table>
std::vector<std::string> NamesIn(const Table& table) {
    std::vector<std::string> names;
    for (const auto& row : table) {
        names.emplace_back(row.name);
    }
    return names;
}

/// The row of that name; the command line lets only names of the table through.
template <typename Table>
const typename Table::value_type& RowOf(const Table& table, const std::string& name) {
    return *std::find_if(table.begin(), table.end(), [&](const auto& row) { return row.name == name; });
}

VideoParms VideoOf(const Options& options, VideoType_t role, int port) {
    VideoParms video;
    video.eVideoType = role;
    video.eVideoCodec = RowOf(kVideo, options.video).codecs;
    video.iVideoRTPPort = port;
    video.strVideoLevel = "3.1";
    return video;
}

void AddActions(CLI::App& app, std::list<std::vector<double>>& times) {
    for (const ActionName& row : kActions) {
        times.emplace_back();
        app.add_option("--" + std::string(row.name) + "-after", times.back(), row.help)
            ->type_name("SECONDS")
            ->group("During the call");
    }
}

std::vector<Step> StepsOf(const std::list<std::vector<double>>& times) {
    std::vector<Step> steps;
    auto row = kActions.begin();
    for (const std::vector<double>& due : times) {
        for (const double after : due) {
            steps.push_back({after, row->action});
        }
        ++row;
    }
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Step& one, const Step& other) { return one.after < other.after; });
    return steps;
}

} // namespace

bool ParseOptions(int argc, const char* const* argv, Options& options, int& status) {
    CLI::App app("A SIP agent: calls, or waits for one call, and sends and receives test media with ffmpeg.");
    std::list<std::vector<double>> times;
    app.add_option("--call", options.uri, "whom to call, sip:bob@127.0.0.1:15060");
    app.add_option("--address", options.address, "address of signalling and media");
    app.add_option("--sip-port", options.sipPort, "UDP port of signalling");
    app.add_option("--media-port", options.mediaPort, "first of the eight media ports")
        ->check(CLI::Range(1024, 65527));
    app.add_option("--directory", options.directory, "for texts, logs and what was heard and seen")
        ->check(CLI::ExistingDirectory);
    app.add_option("--audio", options.audio, "codecs, best first")
        ->delimiter(',')
        ->check(CLI::IsMember(NamesIn(kAudio)));
    app.add_option("--video", options.video, "H.264 packetization modes")
        ->check(CLI::IsMember(NamesIn(kVideo)));
    app.add_flag("--slides", options.hasSlides, "slides can be received");
    app.add_flag("--present", options.isPresenting, "slides are sent from the start");
    app.add_flag("--delayed", options.isDelayed, "call without an offer");
    app.add_option("--srtp", options.srtp, "policy")->check(CLI::IsMember(NamesIn(kSrtp)));
    app.add_option("--suite", options.suite, "tag length of the suite offered first")
        ->check(CLI::IsMember({"32", "80"}));
    app.add_option("--tone", options.tone, "frequency of the sound sent, Hz")->check(CLI::Range(100, 3500));
    app.add_option("--patience", options.patience, "seconds to wait for a call");
    app.add_option("--settle", options.settle, "seconds to wait for media before the times below count");
    app.add_flag("!--no-picture-requests", options.requestsPictures, "do not ask the far end for pictures");
    AddActions(app, times);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? 0 : 2;
        return false;
    }
    options.steps = StepsOf(times);
    return true;
}

LocalSDP CapabilitiesOf(const Options& options) {
    LocalSDP local;
    local.strDefaultIPAddr = options.address;
    local.iAudioRTPPort = options.mediaPort;
    int codecs = 0;
    for (const std::string& name : options.audio) {
        const PayloadType_t codec = RowOf(kAudio, name).codec;
        local.listAudioCodecPriority.push_back(codec);
        codecs |= codec;
    }
    local.eAudioCodec = PayloadType_t(codecs);
    local.m_VideoMain = VideoOf(options, VIDEOTYPE_MAIN, options.mediaPort + 2);
    local.m_VideoPreso = VideoOf(options, VIDEOTYPE_PRESO, options.mediaPort + 4);
    if (!options.hasSlides && !options.isPresenting) {
        local.m_VideoPreso.eVideoCodec = PayloadType_t(0);
    }
    local.iVideoPresoControlPort = options.mediaPort + 6;
    local.iMaxBandwidth = 1024000;
    using Suite = Quor::media::rtp::CryptoParams;
    for (auto& suite : local.cryptoAlgo) {
        suite = options.suite == "32" ? Suite::CRYPTO_AES_CM_128_HMAC_SHA1_32
                                      : Suite::CRYPTO_AES_CM_128_HMAC_SHA1_80;
    }
    return local;
}

SDPNegotiator::Srtp SrtpOf(const Options& options) {
    return RowOf(kSrtp, options.srtp).policy;
}

std::string NameOf(Action action) {
    return std::find_if(kActions.begin(), kActions.end(),
                        [&](const ActionName& row) { return row.action == action; })
        ->name;
}

} // namespace call
