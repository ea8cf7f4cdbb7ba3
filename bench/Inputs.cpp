#include "Inputs.h"

#include "Locals.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

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

namespace {

/// An attribute line of the text f; its candidates are at 10.0.0.0 and above.
std::string AttributeLine(int number) {
    const std::string n = std::to_string(number);
    switch (number % 4) {
    case 2:
        return "a=flag" + n + "\r\n";
    case 3:
        return "a=candidate:" + std::to_string(number % 1000) + " 1 UDP " +
               std::to_string(2130706431 - number) + " 10.0." + std::to_string(number / 256) + "." +
               std::to_string(number % 256) + " " + std::to_string(1024 + number) + " typ host\r\n";
    default:
        return "a=x-item-" + n + ":value " + n + " of the long list\r\n";
    }
}

/// The two sections with a megabyte of attribute lines. Figures are measured with these bytes, so the program
/// ends when their hash (FNV-1a, 64 bits) is another one.
std::string WithAttributes(std::string text) {
    constexpr int last = 26044;
    constexpr int inVideo = 13230; // the first one after the video section's own lines
    constexpr std::uint64_t expected = 0x1de0cc4b62c47241U;
    std::string audio;
    for (int number = 0; number < inVideo - 1; ++number) {
        audio += AttributeLine(number);
    }
    text.insert(text.find("m=video"), audio);
    for (int number = inVideo; number <= last; ++number) {
        text += AttributeLine(number);
    }
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    if (hash != expected) {
        std::fprintf(stderr, "the text f is not the one of the figures\n");
        std::exit(2);
    }
    return text;
}

} // namespace

std::string ReadInput(char letter) {
    for (const Input& input : kInputs) {
        if (input.letter == letter) {
            // Neither copied nor left behind: a hole in the heap would change what the allocations after it
            // cost.
            std::string text = ReadFile(std::string(BENCH_INPUT_DIR "/") + input.file);
            if (letter == 'f') {
                text = WithAttributes(std::move(text));
            }
            return text;
        }
    }
    std::fprintf(stderr, "there is no input %c\n", letter);
    std::exit(2);
}

LocalSDP Capabilities() {
    LocalSDP local = support::PresentationLocal();
    local.strMyIPAddr = "192.0.2.1";
    local.iMaxBandwidth = 1024000;
    local.m_VideoPreso = local.m_VideoMain;
    local.m_VideoPreso.eVideoType = VIDEOTYPE_PRESO;
    local.m_VideoPreso.iVideoRTPPort = 16388;
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
