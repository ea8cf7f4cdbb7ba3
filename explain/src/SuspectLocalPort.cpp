// Stage: suspects in the local ports: of a stream, and of two that overlap.
// Input: the local record. Output: suspects that blame a field.
// Touches the list of suspects.
// Test: tests/explain/judge_cases.py
#include "Suspect.h"

#include <algorithm>
#include <cstdlib>

namespace explain {

namespace {

using Topic = ExplainTopic;

constexpr Rule kOwnPort = {"E103", "", ExplainSeverity::Error, 5,
                           "A port is written as it is, and port 0 declines the section (RFC 3264, 6)."};

constexpr Rule kSamePorts = {"E134", "", ExplainSeverity::Error, 9,
                             "Ports are written as they are, and RTCP takes the port after each."};

bool IsPort(std::int32_t port) {
    return port > 0 && port < 65535;
}

/// A port from this one on that no stream overlaps, with the port after it for RTCP.
template <std::size_t N>
std::int32_t FreePort(const std::pair<const char*, std::int32_t> (&ports)[N], std::int32_t from) {
    constexpr std::int32_t step = 4;
    constexpr std::int32_t last = 65530;
    const auto overlaps = [&](std::int64_t port) {
        return std::any_of(std::begin(ports), std::end(ports),
                           [port](const auto& each) { return std::abs(each.second - port) <= 1; });
    };
    std::int32_t port = from > 0 && from < last - step * static_cast<std::int32_t>(N + 1) ? from : 16384;
    while (overlaps(port)) {
        port += step;
    }
    return port;
}

} // namespace

void FindLocalPort(Scene& scene, std::string_view file, std::string_view record, std::int32_t port,
                   const char* stream, Topic topic) {
    if (IsPort(port)) {
        return;
    }
    Suspect& suspect =
        BlameField(scene, kOwnPort, file, {record, " (", file, ") is ", port, "."},
                   {"set ", file, " to the RTP port"}, 16384 + static_cast<int>(file.size()) * 2);
    const bool isDeclined = port == 0;
    suspect.Know(topic, {isDeclined ? "Our text declines " : "Our text gives ", stream,
                         isDeclined ? " with port " : " the port ", port,
                         isDeclined      ? ", so nothing is received."
                         : port == 65535 ? ", after which there is no port for RTCP."
                                         : ", which is no port, so nothing is received."});
    if (topic == Topic::AudioReceive) {
        suspect.Know(Topic::Dtmf, {"Without a port for audio there are no tones in it."});
    }
}

void FindOverlap(Scene& scene) {
    const LocalSDP& local = scene.input.local;
    const std::pair<const char*, std::int32_t> ports[] = {
        {"audio.port", local.iAudioRTPPort},
        {"video.main.port", local.m_VideoMain.iVideoRTPPort},
        {"video.presentation.port", local.m_VideoPreso.iVideoRTPPort},
        {"floor_control.port", local.iVideoPresoControlPort}};
    constexpr Topic topics[] = {Topic::AudioReceive, Topic::MainReceive, Topic::Slides, Topic::Floor};
    for (std::size_t i = 0; i < std::size(ports); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const long distance = static_cast<long>(ports[i].second) - ports[j].second;
            if (ports[i].second == 0 || ports[j].second == 0 || distance > 1 ||
                distance < (i == 3 ? 0 : -1) || (i >= 2 && !scene.input.floorControl)) {
                continue;
            }
            Suspect& suspect = BlameField(
                scene, kSamePorts, ports[i].first,
                {LocalField(ports[i].first)->record, " (", ports[i].first, ") is ", ports[i].second,
                 ", beside ", ports[j].first, " ", ports[j].second, "."},
                {"set ", ports[i].first, " to a port of its own"}, FreePort(ports, ports[j].second));
            for (const std::size_t k : {i, j}) {
                suspect.Know(
                    topics[k],
                    {"Our text asks for two streams at ports that overlap, so they cannot be told apart."});
            }
        }
    }
}

} // namespace explain
