// A second handler reads our codecs, ports, addresses, levels and keys from the offer that we write.
#include "Law.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <list>
#include <string>
#include <vector>

using namespace support;

namespace {

struct Codec {
    PayloadType payload;
    int number;
};
const Codec kCodecs[] = {{PAYLOAD_G711U, 0}, {PAYLOAD_G729, 18}, {PAYLOAD_G7221, 104}, {PAYLOAD_G722, 9}};

PayloadType_t CodecSet(unsigned subset) {
    int set = 0;
    for (unsigned i = 0; i < std::size(kCodecs); ++i) {
        set |= (subset >> i & 1U) != 0 ? int{kCodecs[i].payload} : 0;
    }
    return PayloadType_t(set);
}

// Reads a text into a handler with these audio codecs only.
RemoteSDP Read(const std::string& text, PayloadType_t codecs) {
    SDPHandler second;
    second.MyLocalSDP.eAudioCodec = codecs;
    RemoteSDP remote;
    EXPECT_EQ(second.ParseTheSDP(text, remote), 0);
    return remote;
}

// The first codec of the priority list that is in both sets.
void ExpectCodec(const RemoteSDP& remote, const std::array<Codec, 4>& priority, int common) {
    const auto chosen = std::find_if(priority.begin(), priority.end(),
                                     [&](const Codec& codec) { return (codec.payload & common) != 0; });
    const bool isChosen = chosen != priority.end();
    EXPECT_EQ(remote.eAudioCodec, isChosen ? chosen->payload : PAYLOAD_UNKNOWN);
    EXPECT_EQ(remote.iAudioPayload, isChosen ? chosen->number : 0);
    EXPECT_EQ(remote.iDTMFPayload, 101);
    EXPECT_EQ(remote.fAudioSend, isChosen);
    EXPECT_EQ(remote.fAudioRecv, isChosen);
    EXPECT_TRUE(remote.fIsAudioValid);
    EXPECT_EQ(remote.strAudioIPAddr, "192.0.2.1");
    EXPECT_EQ(remote.iAudioRTPPort, 16384);
}

TEST(LawOffer, EveryCodecSetInEveryPriorityIsReadAsOurFirstCommonCodec) {
    const std::vector<Switches> switches = AllSwitches();
    std::array<std::size_t, 4> order = {0, 1, 2, 3};
    std::size_t number = 0;
    do {
        std::array<Codec, 4> priority{};
        std::list<int> listed;
        for (std::size_t i = 0; i < order.size(); ++i) {
            priority[i] = kCodecs[order[i]];
            listed.push_back(priority[i].payload);
        }
        ++number;
        for (unsigned ours = 0; ours < 16; ++ours) {
            SDPHandler first;
            LocalSDP local = AudioLocal();
            local.eAudioCodec = CodecSet(ours);
            local.listAudioCodecPriority = listed;
            Start(first, local);
            // With the 24 orders each codec set meets each combination of switches.
            Set(first, switches[(ours + number) % switches.size()]);
            const std::string offer = first.GetLocalSDP();
            for (unsigned theirs = 0; theirs < 16; ++theirs) {
                ExpectCodec(Read(offer, CodecSet(theirs)), priority, CodecSet(ours) & CodecSet(theirs));
            }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

const char* const kLevels[] = {"1", "1.b", "1.1", "1.2", "1.3", "2",   "2.1", "2.2",
                               "3", "3.1", "3.2", "4",   "4.1", "4.2", "5",   "5.1"};

// Main video and presentation at every level with every set of modes; each is read as it was offered.
void ExpectStream(const VideoParms& read, const VideoParms& ours, const LocalSDP& local) {
    const bool hasMode1 = (ours.eVideoCodec & PAYLOAD_H264) != 0;
    EXPECT_EQ(read.strVideoLevel, ours.strVideoLevel);
    EXPECT_EQ(read.iFmtpMaxMbps, ours.iFmtpMaxMbps);
    EXPECT_EQ(read.iFmtpMaxBitRate, ours.iFmtpMaxBitRate);
    EXPECT_EQ(read.iFmtpMaxFrameSize, ours.iFmtpMaxFrameSize == 0 ? 0 : ours.iFmtpMaxFrameSize | 1);
    EXPECT_EQ(read.iFmtpPacketizationMode, hasMode1 ? 1 : 0);
    EXPECT_EQ(read.iVideoPayload, hasMode1 ? local.iVideoPayloadMode1 : local.iVideoPayloadMode0);
    EXPECT_EQ(read.iVideoRTPPort, ours.iVideoRTPPort);
    EXPECT_EQ(read.strVideoIPAddr, local.strDefaultIPAddr);
    EXPECT_EQ(read.eVideoType, ours.eVideoType);
    EXPECT_EQ(read.eVideoCodec, PAYLOAD_H264);
    EXPECT_TRUE(read.fVideoSend && read.fVideoRecv && read.fIsVideoValid);
}

TEST(LawOffer, EveryLevelAndLimitIsReadAsOurs) {
    for (const char* level : kLevels) {
        for (const PayloadType_t codec : {PAYLOAD_H264, PAYLOAD_H264_PACKETIZATION_0, kBothModes}) {
            for (const int limit : {0, 1, 2, 99, 2147483646}) {
                LocalSDP local = PresentationLocal();
                for (VideoParms* stream : {&local.m_VideoMain, &local.m_VideoPreso}) {
                    stream->eVideoCodec = codec;
                    stream->strVideoLevel = level;
                    stream->iFmtpMaxBitRate = stream->iFmtpMaxMbps = stream->iFmtpMaxFrameSize = limit;
                }
                SDPHandler first;
                Start(first, local);
                first.SetBfcpSupport(true);
                const RemoteSDP remote = Read(first.GetLocalSDP(), kAllAudio);
                ExpectStream(remote.m_VideoMain, local.m_VideoMain, local);
                ExpectStream(remote.m_VideoPreso, local.m_VideoPreso, local);
                EXPECT_EQ(remote.iVideoPresoControlPort, local.iVideoPresoControlPort);
                EXPECT_EQ(remote.iBfcpConfid, 15);
                EXPECT_EQ(remote.iBfcpUserid, 15);
                EXPECT_FALSE(remote.fBfcpIsServer);
            }
        }
    }
}

TEST(LawOffer, PortsAndAddressesAreReadAsOurs) {
    for (const int port : {1, 1024, 65534, 2147483646, -2}) {
        for (const char* address : {"192.0.2.77", "2001:db8::1", "host.example"}) {
            LocalSDP local = PresentationLocal();
            local.strDefaultIPAddr = address;
            local.strMyIPAddr = "10.0.0.1";
            local.iAudioRTPPort = local.iVideoPresoControlPort = port;
            local.m_VideoMain.iVideoRTPPort = local.m_VideoPreso.iVideoRTPPort = port;
            SDPHandler first;
            Start(first, local);
            first.SetBfcpSupport(true);
            const RemoteSDP remote = Read(first.GetLocalSDP(), kAllAudio);
            EXPECT_EQ(remote.iAudioRTPPort, port);
            EXPECT_EQ(remote.strAudioIPAddr, address);
            ExpectStream(remote.m_VideoMain, local.m_VideoMain, local);
            ExpectStream(remote.m_VideoPreso, local.m_VideoPreso, local);
            EXPECT_EQ(remote.iVideoPresoControlPort, port);
        }
    }
}

TEST(LawOffer, BandwidthIsReadInWholeKilobits) {
    for (const Switches& switches : AllSwitches()) {
        for (const int bits : {0, 1, 999, 1000, 63999, 64000, 64001, 384500, 2147483647}) {
            LocalSDP local = VideoLocal();
            local.iMaxBandwidth = bits;
            SDPHandler first;
            Start(first, local);
            Set(first, switches);
            EXPECT_EQ(Read(first.GetLocalSDP(), kAllAudio).iMaxBandwidth, bits / 1000 * 1000) << bits;
        }
    }
}

TEST(LawOffer, KeysOfTheReadSuiteAreReadAsOurs) {
    for (int seed = 0; seed < 256; ++seed) {
        LocalSDP local = PresentationLocal();
        for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
            for (int i = 0; i < baseSDP::kKeyLength; ++i) {
                local.bufSRTPKey[n][i] = static_cast<unsigned char>(seed + 31 * n + 7 * i);
            }
            for (int i = 0; i < baseSDP::kSaltLength; ++i) {
                local.bufSRTPSalt[n][i] = static_cast<unsigned char>(seed * 3 + n + 11 * i);
            }
            local.cryptoAlgo[n] = kSuite32;
        }
        SDPHandler first;
        Start(first, local);
        first.m_bSRTP = true;
        first.SetBfcpSupport(true);
        const RemoteSDP remote = Read(first.GetLocalSDP(), kAllAudio);
        for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
            EXPECT_EQ(remote.cryptoAlgo[n], kSuite32);
            EXPECT_TRUE(std::equal(local.bufSRTPKey[n], local.bufSRTPKey[n] + baseSDP::kKeyLength,
                                   remote.bufSRTPKey[n]))
                << seed << ' ' << n;
            EXPECT_TRUE(std::equal(local.bufSRTPSalt[n], local.bufSRTPSalt[n] + baseSDP::kSaltLength,
                                   remote.bufSRTPSalt[n]))
                << seed << ' ' << n;
        }
    }
}

TEST(LawOffer, AMutedCameraIsReadAsAFarEndThatOnlyReceives) {
    LocalSDP local = PresentationLocal();
    local.fVideoTxMuted = true;
    SDPHandler first;
    Start(first, local);
    first.SetBfcpSupport(true);
    const RemoteSDP remote = Read(first.GetLocalSDP(), kAllAudio);
    EXPECT_TRUE(remote.m_VideoMain.fVideoSend);
    EXPECT_FALSE(remote.m_VideoMain.fVideoRecv);
    EXPECT_TRUE(remote.m_VideoPreso.fVideoSend && remote.m_VideoPreso.fVideoRecv);
}

// The answer has the offerer's first common codec, and both sides then use it.
TEST(LawOffer, BothSidesEndWithTheSameAudioCodec) {
    for (const Switches& switches : AllSwitches()) {
        for (unsigned ours = 0; ours < 16; ++ours) {
            for (unsigned theirs = 0; theirs < 16; ++theirs) {
                SDPHandler first;
                SDPHandler second;
                LocalSDP local = AudioLocal();
                local.eAudioCodec = CodecSet(ours);
                Start(first, local);
                Set(first, switches);
                local = Away(AudioLocal());
                local.eAudioCodec = CodecSet(theirs);
                Start(second, local);
                Set(second, switches);
                RemoteSDP atFirst;
                RemoteSDP atSecond;
                second.ParseTheSDP(first.GetLocalSDP(), atSecond);
                first.ParseTheSDP(second.GetLocalSDP(), atFirst);
                EXPECT_EQ(atFirst.eAudioCodec, atSecond.eAudioCodec) << ours << ' ' << theirs;
                EXPECT_EQ(atFirst.iAudioPayload, atSecond.iAudioPayload) << ours << ' ' << theirs;
                EXPECT_EQ(atFirst.eAudioCodec == PAYLOAD_UNKNOWN, (ours & theirs) == 0)
                    << ours << ' ' << theirs;
            }
        }
    }
}

} // namespace
