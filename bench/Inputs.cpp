#include "Inputs.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

namespace bench {

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file || text.empty()) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        std::exit(2);
    }
    return text;
}

std::string ReadInput(char letter) {
    for (const Input& input : kInputs) {
        if (input.letter == letter) {
            return ReadFile(std::string(BENCH_INPUT_DIR "/") + input.file);
        }
    }
    std::fprintf(stderr, "there is no input %c\n", letter);
    std::exit(2);
}

LocalSDP Capabilities() {
    LocalSDP local;
    local.strMyIPAddr = "192.0.2.1";
    local.strDefaultIPAddr = "192.0.2.1";
    local.eAudioCodec = PayloadType_t(PAYLOAD_G7221 | PAYLOAD_G722 | PAYLOAD_G711U | PAYLOAD_G729);
    local.listAudioCodecPriority = {PAYLOAD_G7221, PAYLOAD_G722, PAYLOAD_G711U, PAYLOAD_G729};
    local.iAudioRTPPort = 16384;
    local.iMaxBandwidth = 1024000;
    local.iVideoPayloadMode1 = 97;
    local.iVideoPayloadMode0 = 126;
    local.m_VideoMain.eVideoCodec = PayloadType_t(PAYLOAD_H264 | PAYLOAD_H264_PACKETIZATION_0);
    local.m_VideoMain.iVideoRTPPort = 16386;
    local.m_VideoMain.strVideoLevel = "3.1";
    local.m_VideoMain.iFmtpMaxMbps = 108000;
    local.m_VideoMain.iFmtpMaxFrameSize = 3600;
    local.m_VideoPreso = local.m_VideoMain;
    local.m_VideoPreso.eVideoType = VIDEOTYPE_PRESO;
    local.m_VideoPreso.iVideoRTPPort = 16388;
    local.iVideoPresoControlPort = 16390;
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        std::memset(local.bufSRTPKey[n], 'k' + n, baseSDP::kKeyLength);
        std::memset(local.bufSRTPSalt[n], 's' + n, baseSDP::kSaltLength);
        local.cryptoAlgo[n] = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    }
    return local;
}

void Begin(SDPHandler& handler, const LocalSDP& local) {
    handler.InitializeLocalSDP(local);
    handler.SetBfcpSupport(true);
    handler.m_bSRTP = true;
}

} // namespace bench
