#include "Side.h"

#include "Keys.h"

#include <cstring>
#include <limits>

namespace fuzz {

const std::int32_t kNumbers[16] = {16384,
                                   0,
                                   97,
                                   126,
                                   1,
                                   64000,
                                   63999,
                                   65534,
                                   65535,
                                   999,
                                   1024000,
                                   3600,
                                   std::numeric_limits<std::int32_t>::max(),
                                   -1,
                                   -64001,
                                   std::numeric_limits<std::int32_t>::min()};

namespace {

using CryptoParams = Quor::media::rtp::CryptoParams;

constexpr std::int32_t kAllAudio = PAYLOAD_G711U | PAYLOAD_G729 | PAYLOAD_G7221 | PAYLOAD_G722;

/// The first kPlainTexts are one word each and no keyword.
constexpr std::size_t kPlainTexts = 6;
const std::string& Text(std::size_t n) {
    static const std::string texts[16] = {"192.0.2.1",
                                          "",
                                          "2001:db8::1",
                                          "host.example",
                                          "%s%n%p%x",
                                          std::string(2000, 'a'),
                                          "two words",
                                          "\x80\xff\xc3\x28",
                                          std::string("a\0b", 3),
                                          "c=IN IP4 203.0.113.9",
                                          "m=audio 1 x 0",
                                          "a=inactive",
                                          "\t",
                                          "inline:inline:inline:",
                                          "\x1b[31m\xe2\x80\xae",
                                          "1 IN IP4 203.0.113.8"};
    return texts[n % 16];
}

const std::string& Level(std::size_t n) {
    static const std::string levels[16] = {"3.1", "1.b", "1", "5.1", "4", "",     "6",  "5.2",
                                           "2",   "1.3", "3", "3.",  "x", "1.b ", "10", "a=content:slides"};
    return levels[n % 16];
}

std::int32_t Codecs(std::size_t n) {
    static const std::int32_t sets[16] = {
        34, 2, 32, 0, 34, 4, 35, 38, 96, -1, 64, PAYLOAD_UNKNOWN, 0x7fffffff, 34, 256 | 32, 1};
    return sets[n % 16];
}

VideoType_t Role(VideoType_t own, std::size_t n) {
    static const VideoType_t roles[4] = {VIDEOTYPE_UNKNOWN, VIDEOTYPE_MAX, VIDEOTYPE_MAIN, VIDEOTYPE_PRESO};
    return n < 4 ? own : roles[n - 4];
}

std::list<int> Priority(std::size_t n) {
    switch (n % 8) {
    case 0:
        return {16, 64, 1, 8};
    case 1:
        return {};
    case 2:
        return {8, 1, 64, 16};
    case 3:
        return {1};
    case 4:
        return {2, 256, 0, -1, 17, 16, 1, 1};
    case 5:
        return {8, 64};
    case 6:
        return {0x7fffffff, 4, 32};
    default:
        return std::list<int>(300, 64);
    }
}

void GiveKeys(LocalSDP& local, std::uint64_t secret) {
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        const Key key(secret + static_cast<std::uint64_t>(n) + 1);
        std::memcpy(local.bufSRTPKey[n], key.material.data(), baseSDP::kKeyLength);
        std::memcpy(local.bufSRTPSalt[n], key.material.data() + baseSDP::kKeyLength, baseSDP::kSaltLength);
    }
}

} // namespace

Side AnySide(Input& input, std::uint64_t secret) {
    Side side;
    LocalSDP& local = side.local;
    const std::uint8_t switches = input.Byte();
    side.usesSrtp = (switches & 1U) != 0;
    side.usesBfcp = (switches & 2U) != 0;
    side.isTraced = (switches & 4U) != 0;
    side.plantsKeys = (switches & 8U) != 0;
    local.fVideoTxMuted = (switches & 16U) != 0;
    static constexpr std::uint32_t served[8] = {2, 4, 0, 1, 3, 256, 5, 0xffffffffU};
    side.served = served[switches >> 5U];

    const std::uint8_t codecs = input.Byte();
    // The byte says which of the four audio bits to clear, so 0 means all codecs.
    local.eAudioCodec =
        PayloadType_t((kAllAudio & ~((codecs & 1U ? PAYLOAD_G711U : 0) | (codecs & 2U ? PAYLOAD_G729 : 0) |
                                     (codecs & 4U ? PAYLOAD_G7221 : 0) | (codecs & 8U ? PAYLOAD_G722 : 0))) |
                      (codecs & 16U ? PAYLOAD_UNKNOWN : 0) | (codecs & 32U ? PAYLOAD_H264 : 0) |
                      (codecs & 64U ? std::numeric_limits<std::int32_t>::min() : 0));
    local.listAudioCodecPriority = Priority(input.Byte());

    const std::uint8_t videos = input.Byte();
    local.m_VideoMain.eVideoCodec = PayloadType_t(Codecs(videos & 15U));
    local.m_VideoPreso.eVideoCodec = PayloadType_t(Codecs(videos >> 4U));
    const std::uint8_t roles = input.Byte();
    local.m_VideoMain.eVideoType = Role(VIDEOTYPE_MAIN, roles & 7U);
    local.m_VideoPreso.eVideoType = Role(VIDEOTYPE_PRESO, (roles >> 3U) & 7U);
    const std::uint8_t levels = input.Byte();
    local.m_VideoMain.strVideoLevel = Level(levels & 15U);
    local.m_VideoPreso.strVideoLevel = Level(levels >> 4U);

    std::uint8_t suites = input.Byte();
    for (auto& suite : local.cryptoAlgo) {
        // Suite 1 comes first, because it is the suite that both sides use.
        suite = CryptoParams::CRYPTO_PROFILE((suites % 6 + 1) % 6);
        suites = static_cast<std::uint8_t>(suites / 6);
    }
    GiveKeys(local, secret);

    const std::uint8_t media = input.Byte();
    local.iAudioRTPPort = kNumbers[media & 15U];
    local.m_VideoMain.iVideoRTPPort = kNumbers[media >> 4U];
    const std::uint8_t slides = input.Byte();
    local.m_VideoPreso.iVideoRTPPort = kNumbers[slides & 15U];
    local.iVideoPresoControlPort = kNumbers[slides >> 4U];
    const std::uint8_t numbers = input.Byte();
    local.iMaxBandwidth = kNumbers[numbers & 15U];
    local.iVideoPayloadMode1 = kNumbers[numbers >> 4U];
    local.iVideoPayloadMode0 = 126;
    const std::uint8_t limits = input.Byte();
    local.m_VideoMain.iFmtpMaxFrameSize = kNumbers[limits & 15U];
    local.m_VideoMain.iFmtpMaxMbps = kNumbers[limits >> 4U];
    local.m_VideoMain.iFmtpMaxBitRate = local.m_VideoPreso.iFmtpMaxFrameSize = kNumbers[(limits + 1U) & 15U];

    const std::uint8_t texts = input.Byte();
    local.strDefaultIPAddr = Text(texts & 15U);
    local.strMyIPAddr = Text((texts >> 4U) + 1U);
    local.strOExtension = Text(static_cast<std::size_t>(texts >> 4U) * 3U + 1U);
    side.isPlain = (texts & 15U) < kPlainTexts && ((texts >> 4U) + 1U) % 16U < kPlainTexts &&
                   ((texts >> 4U) * 3U + 1U) % 16U < kPlainTexts;
    return side;
}

Side WholeSide(std::uint64_t secret) {
    const std::uint8_t bytes[kSideBytes] = {0x0b, 0, 0, 0, 0, 0, 0, 0, 0, 0x0a, 0, 0};
    Input input(bytes, sizeof bytes);
    return AnySide(input, secret);
}

void Prepare(SDPHandler& handler, const Side& side) {
    handler.InitializeLocalSDP(side.local);
    handler.m_bSRTP = side.usesSrtp;
    handler.SetBfcpSupport(side.usesBfcp);
    handler.SetMaxSupportedSessions(side.served);
}

} // namespace fuzz
