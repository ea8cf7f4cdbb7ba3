// The built-in side, and how a side becomes a handler.
//
// Tests: tests/tool/CapabilitiesTest.cpp
#include "Capabilities.h"

#include "Keys.h"
#include "Outcome.h"
#include "ReadFile.h"
#include "SDPTables.h"

#include <algorithm>

namespace cmsdp {

namespace {

constexpr auto kBuiltInSuite = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;

void FillVideo(VideoParms& video, std::int32_t port, const char* level) {
    video.eVideoCodec = static_cast<PayloadType_t>(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);
    video.iVideoRTPPort = port;
    video.strVideoLevel = level;
}

} // namespace

// The address is one that RFC 5737 sets aside for examples: an offer without an address is empty, and a real
// one is for the user to give. The suite is the one that two of these handlers agree on once SRTP is on.
Capabilities BuiltInCapabilities() {
    Capabilities c;
    c.floorControl = FloorControl::kAuto;
    c.servedSections = 4;
    LocalSDP& local = c.local;
    local.strDefaultIPAddr = "192.0.2.1";
    local.iMaxBandwidth = 1064000;
    local.iAudioRTPPort = 16384;
    local.eAudioCodec =
        static_cast<PayloadType_t>(PAYLOAD_G7221 | PAYLOAD_G722 | PAYLOAD_G711U | PAYLOAD_G729);
    local.listAudioCodecPriority = {PAYLOAD_G7221, PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729};
    local.iVideoPayloadMode1 = 97;
    local.iVideoPayloadMode0 = 126;
    FillVideo(local.m_VideoMain, 16386, "3.1");
    FillVideo(local.m_VideoPreso, 16388, "4");
    local.iVideoPresoControlPort = 16390;
    for (auto& suite : local.cryptoAlgo) {
        suite = kBuiltInSuite;
    }
    return c;
}

Capabilities BuiltInAnswerer() {
    constexpr std::int32_t apart = 1000;
    Capabilities c = BuiltInCapabilities();
    c.local.strDefaultIPAddr = "192.0.2.2";
    for (std::int32_t* const port : {&c.local.iAudioRTPPort, &c.local.m_VideoMain.iVideoRTPPort,
                                     &c.local.m_VideoPreso.iVideoRTPPort, &c.local.iVideoPresoControlPort}) {
        *port += apart;
    }
    return c;
}

Capabilities ReadCapabilities(const std::string& file, const Capabilities& base) {
    std::string json;
    try {
        json = ReadFile(file);
    } catch (const ReadError& error) {
        throw ToolError(kLocalFile, file + ": $: expected a readable JSON file, found: " + error.what() +
                                        "; write one with: cmsdp capabilities > FILE");
    }
    Capabilities c = ParseCapabilities(json, file, base);
    MakeMissingKeys(c);
    return c;
}

void Prepare(SDPHandler& handler, const Capabilities& capabilities) {
    handler.InitializeLocalSDP(capabilities.local);
    handler.SetBfcpSupport(capabilities.floorControl != FloorControl::kOff);
    handler.SetMaxSupportedSessions(capabilities.servedSections);
    handler.m_bSRTP = capabilities.srtp;
}

// An answer with floor control to an offer without it has a line without a port (B15), which strict readers
// refuse together with the whole answer.
bool SettleFloorControl(SDPHandler& handler, const Capabilities& capabilities) {
    const RemoteSections sections = handler.GetRemoteSections();
    const bool offered = std::any_of(sections.begin(), sections.end(),
                                     [](const MediaSession* section) { return sdp::IsBfcp(*section); });
    const bool wanted = capabilities.floorControl == FloorControl::kAuto
                            ? sections.empty() || offered
                            : capabilities.floorControl == FloorControl::kOn;
    handler.SetBfcpSupport(wanted);
    return wanted;
}

} // namespace cmsdp
