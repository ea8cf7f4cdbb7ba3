// Any bytes read and answered, and nothing else: no law but those of the sanitizers and of the standard
// library's assertions, so that a run tries as many texts as possible.
//
// Byte 0 chooses the switches and the sections served, byte 1 the audio codecs; the rest is the text.
#include "Input.h"
#include "Targets.h"

#include <SDPHandler.h>

namespace {

LocalSDP Capabilities() {
    LocalSDP local;
    local.strDefaultIPAddr = "192.0.2.1";
    local.listAudioCodecPriority = {PAYLOAD_G7221, PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729};
    local.iAudioRTPPort = 16384;
    for (VideoParms* const video : {&local.m_VideoMain, &local.m_VideoPreso}) {
        video->eVideoCodec = PayloadType_t(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);
        video->strVideoLevel = "3.1";
        video->iVideoRTPPort = 16386;
    }
    local.iVideoPresoControlPort = 16390;
    local.iVideoPayloadMode0 = 126;
    local.iVideoPayloadMode1 = 97;
    for (auto& suite : local.cryptoAlgo) {
        suite = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    }
    return local;
}

} // namespace

void FuzzVolume(const std::uint8_t* data, std::size_t size) {
    static const LocalSDP local = Capabilities();
    fuzz::Input input(data, size);
    const std::uint8_t switches = input.Byte();
    SDPHandler handler;
    handler.InitializeLocalSDP(local);
    handler.MyLocalSDP.eAudioCodec = PayloadType_t(input.Byte());
    handler.MyLocalSDP.fVideoTxMuted = (switches & 1U) != 0;
    handler.m_bSRTP = (switches & 2U) != 0;
    handler.SetBfcpSupport((switches & 4U) != 0);
    handler.SetMaxSupportedSessions(switches >> 3U);
    RemoteSDP remote;
    handler.ParseTheSDP(input.Rest(), remote);
    handler.GetLocalSDP();
}
