// A new handler reads every captured description and must give the whole record and the whole answer of its
// golden file. The golden files come from model.py, which shares no code with the component.
#include "Golden.h"

#include "Expect.h"
#include "Locals.h"

#include <SDPHandler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

const std::filesystem::path kCorpus = COMMONMEDIA_CORPUS_DIR;

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The file names of a folder without their extensions, in alphabetical order.
std::vector<std::string> Names(const char* folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus / folder)) {
        names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The golden file without its comment lines.
std::string Expected(const std::string& name) {
    const std::string text = ReadFile(kCorpus / "golden" / (name + ".txt"));
    const std::size_t begin = text.find("[remote]\n");
    EXPECT_NE(begin, std::string::npos) << name;
    return begin == std::string::npos ? text : text.substr(begin);
}

/// The same capabilities as corpus_capabilities() in model.py.
LocalSDP CorpusCapabilities() {
    LocalSDP local = support::PresentationLocal();
    local.strMyIPAddr = "192.0.2.1";
    local.iMaxBandwidth = 1024000;
    local.m_VideoPreso.strVideoLevel = "3.1";
    local.m_VideoPreso.iFmtpMaxBitRate = 0;
    local.m_VideoPreso.iFmtpMaxFrameSize = 3600;
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        std::memset(local.bufSRTPKey[n], 0x11 * (n + 1), baseSDP::kKeyLength);
        std::memset(local.bufSRTPSalt[n], 0xa0 + n, baseSDP::kSaltLength);
        local.cryptoAlgo[n] = Quor::media::rtp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32;
    }
    return local;
}

class Corpus : public ::testing::TestWithParam<std::string> {};

TEST_P(Corpus, YieldsItsGoldenResult) {
    SDPHandler handler;
    handler.InitializeLocalSDP(CorpusCapabilities());
    handler.m_bSRTP = true;
    handler.SetBfcpSupport(true);
    handler.m_iSessionID = 123456;
    RemoteSDP remote;
    EXPECT_EQ(0, handler.ParseTheSDP(ReadFile(kCorpus / "captures" / (GetParam() + ".sdp")), remote));
    EXPECT_TEXT(golden::GoldenText(remote, handler.GetLocalSDP()), Expected(GetParam()));
}

std::string TestName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Captures, Corpus, ::testing::ValuesIn(Names("captures")), TestName);

TEST(CorpusFolder, EveryCaptureHasAGoldenFileAndEveryGoldenFileACapture) {
    EXPECT_EQ(Names("captures"), Names("golden"));
    EXPECT_GE(Names("captures").size(), 116U);
}

} // namespace
