// Records whose every field differs from a new record's and from its neighbours, and comparisons that go
// field by field. The tests of resets and copies share them.
#pragma once

#include "SDP.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>
#include <vector>

namespace samples {

using CryptoParams = Quor::media::rtp::CryptoParams;

/// A record made in memory that held other bytes before: a field that no constructor sets shows up.
template <typename Record>
class InDirtyMemory {
public:
    InDirtyMemory() {
        volatile unsigned char* const bytes = m_storage;
        for (std::size_t i = 0; i < sizeof m_storage; ++i) {
            bytes[i] = 0xA5;
        }
        m_record = ::new (static_cast<void*>(m_storage)) Record;
    }
    // Qualified, because LocalSDP dispatches virtually and its destructor does not.
    ~InDirtyMemory() { m_record->Record::~Record(); }
    InDirtyMemory(const InDirtyMemory&) = delete;
    InDirtyMemory& operator=(const InDirtyMemory&) = delete;

    Record& operator*() { return *m_record; }
    Record* operator->() { return m_record; }

private:
    alignas(Record) unsigned char m_storage[sizeof(Record)];
    Record* m_record;
};

/// The offset of a field in its record.
template <typename Record, typename Field>
std::ptrdiff_t At(const Record& record, const Field& field) {
    return reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&record);
}

inline void ExpectAscending(const std::vector<std::ptrdiff_t>& offsets) {
    for (std::size_t i = 1; i < offsets.size(); ++i) {
        EXPECT_LT(offsets[i - 1], offsets[i]) << "field " << i << " does not stand behind field " << (i - 1);
    }
}

/// Writes bytes that differ within a row, between rows and from zero, the spare byte included.
template <std::size_t Rows, std::size_t Length>
void FillRows(unsigned char (&rows)[Rows][Length], int first) {
    for (std::size_t n = 0; n < Rows; ++n) {
        for (std::size_t i = 0; i < Length; ++i) {
            rows[n][i] = static_cast<unsigned char>(static_cast<std::size_t>(first) + n * 20 + i);
        }
    }
}

template <std::size_t Rows, std::size_t Length>
void ExpectSameRows(const unsigned char (&actual)[Rows][Length],
                    const unsigned char (&expected)[Rows][Length]) {
    for (std::size_t n = 0; n < Rows; ++n) {
        for (std::size_t i = 0; i < Length; ++i) {
            EXPECT_EQ(int{actual[n][i]}, int{expected[n][i]}) << "row " << n << ", byte " << i;
        }
    }
}

template <std::size_t Rows, std::size_t Length>
void ExpectZeroRows(const unsigned char (&rows)[Rows][Length]) {
    const unsigned char zero[Rows][Length] = {};
    ExpectSameRows(rows, zero);
}

inline VideoParms Video(int first, VideoType_t role) {
    VideoParms parms;
    parms.iFmtpMaxMbps = first + 1;
    parms.iFmtpMaxFrameSize = first + 2;
    parms.iFmtpMaxBitRate = first + 3;
    parms.eVideoCodec = PAYLOAD_VP8;
    parms.eVideoType = role;
    parms.iVideoRTPPort = first + 4;
    parms.strVideoLevel = "level " + std::to_string(first);
    parms.strVideoIPAddr = "address " + std::to_string(first);
    parms.iVideoPayload = first + 5;
    parms.iFmtpPacketizationMode = first + 6;
    parms.fVideoSend = true;
    parms.fVideoRecv = true;
    parms.fIsVideoValid = true;
    return parms;
}

inline void FillBase(baseSDP& record) {
    record.eAudioCodec = PAYLOAD_G729;
    record.iAudioRTPPort = 101;
    record.iVideoPresoControlPort = 102;
    record.iBfcpConfid = 103;
    record.iBfcpUserid = 104;
    record.fBfcpIsServer = true;
    record.iMaxBandwidth = 105;
    record.m_VideoMain = Video(200, VIDEOTYPE_PRESO);
    record.m_VideoPreso = Video(300, VIDEOTYPE_MAIN);
    FillRows(record.bufSRTPKey, 1);
    FillRows(record.bufSRTPSalt, 100);
    record.cryptoAlgo[baseSDP::SRTP_AUDIO] = CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80;
    record.cryptoAlgo[baseSDP::SRTP_VIDEO] = CryptoParams::CRYPTO_AEAD_AES_GCM_128;
    record.cryptoAlgo[baseSDP::SRTP_VIDEO_PRESO] = CryptoParams::CRYPTO_AEAD_AES_GCM_256;
}

inline void FillLocal(LocalSDP& record) {
    FillBase(record);
    record.strMyIPAddr = "192.0.2.21";
    record.strOExtension = "extension";
    record.strDefaultIPAddr = "192.0.2.22";
    record.iVideoPayloadMode0 = 106;
    record.iVideoPayloadMode1 = 107;
    record.fVideoTxMuted = true;
    record.listAudioCodecPriority = {8, 1, 64};
}

inline void FillRemote(RemoteSDP& record) {
    FillBase(record);
    record.strAudioIPAddr = "192.0.2.23";
    record.iAudioPayload = 108;
    record.iDTMFPayload = 109;
    record.fAudioSend = true;
    record.fAudioRecv = true;
    record.fIsAudioValid = true;
}

inline void ExpectSameVideo(const VideoParms& actual, const VideoParms& expected) {
    EXPECT_EQ(actual.iFmtpMaxMbps, expected.iFmtpMaxMbps);
    EXPECT_EQ(actual.iFmtpMaxFrameSize, expected.iFmtpMaxFrameSize);
    EXPECT_EQ(actual.iFmtpMaxBitRate, expected.iFmtpMaxBitRate);
    EXPECT_EQ(actual.eVideoCodec, expected.eVideoCodec);
    EXPECT_EQ(actual.eVideoType, expected.eVideoType);
    EXPECT_EQ(actual.iVideoRTPPort, expected.iVideoRTPPort);
    EXPECT_EQ(actual.strVideoLevel, expected.strVideoLevel);
    EXPECT_EQ(actual.strVideoIPAddr, expected.strVideoIPAddr);
    EXPECT_EQ(actual.iVideoPayload, expected.iVideoPayload);
    EXPECT_EQ(actual.iFmtpPacketizationMode, expected.iFmtpPacketizationMode);
    EXPECT_EQ(actual.fVideoSend, expected.fVideoSend);
    EXPECT_EQ(actual.fVideoRecv, expected.fVideoRecv);
    EXPECT_EQ(actual.fIsVideoValid, expected.fIsVideoValid);
}

/// Everything that an assignment carries: all but the three BFCP fields.
inline void ExpectSameCarried(const baseSDP& actual, const baseSDP& expected) {
    EXPECT_EQ(actual.eAudioCodec, expected.eAudioCodec);
    EXPECT_EQ(actual.iAudioRTPPort, expected.iAudioRTPPort);
    EXPECT_EQ(actual.iVideoPresoControlPort, expected.iVideoPresoControlPort);
    EXPECT_EQ(actual.iMaxBandwidth, expected.iMaxBandwidth);
    {
        SCOPED_TRACE("main video");
        ExpectSameVideo(actual.m_VideoMain, expected.m_VideoMain);
    }
    {
        SCOPED_TRACE("presentation video");
        ExpectSameVideo(actual.m_VideoPreso, expected.m_VideoPreso);
    }
    {
        SCOPED_TRACE("key");
        ExpectSameRows(actual.bufSRTPKey, expected.bufSRTPKey);
    }
    {
        SCOPED_TRACE("salt");
        ExpectSameRows(actual.bufSRTPSalt, expected.bufSRTPSalt);
    }
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        EXPECT_EQ(actual.cryptoAlgo[n], expected.cryptoAlgo[n]) << "stream " << n;
    }
}

inline void ExpectSameBfcp(const baseSDP& actual, const baseSDP& expected) {
    EXPECT_EQ(actual.iBfcpConfid, expected.iBfcpConfid);
    EXPECT_EQ(actual.iBfcpUserid, expected.iBfcpUserid);
    EXPECT_EQ(actual.fBfcpIsServer, expected.fBfcpIsServer);
}

inline void ExpectSameOwn(const LocalSDP& actual, const LocalSDP& expected) {
    EXPECT_EQ(actual.strMyIPAddr, expected.strMyIPAddr);
    EXPECT_EQ(actual.strOExtension, expected.strOExtension);
    EXPECT_EQ(actual.strDefaultIPAddr, expected.strDefaultIPAddr);
    EXPECT_EQ(actual.iVideoPayloadMode0, expected.iVideoPayloadMode0);
    EXPECT_EQ(actual.iVideoPayloadMode1, expected.iVideoPayloadMode1);
    EXPECT_EQ(actual.fVideoTxMuted, expected.fVideoTxMuted);
    EXPECT_EQ(actual.listAudioCodecPriority, expected.listAudioCodecPriority);
}

inline void ExpectSameOwn(const RemoteSDP& actual, const RemoteSDP& expected) {
    EXPECT_EQ(actual.strAudioIPAddr, expected.strAudioIPAddr);
    EXPECT_EQ(actual.iAudioPayload, expected.iAudioPayload);
    EXPECT_EQ(actual.iDTMFPayload, expected.iDTMFPayload);
    EXPECT_EQ(actual.fAudioSend, expected.fAudioSend);
    EXPECT_EQ(actual.fAudioRecv, expected.fAudioRecv);
    EXPECT_EQ(actual.fIsAudioValid, expected.fIsAudioValid);
}

template <typename Record>
void ExpectSame(const Record& actual, const Record& expected) {
    ExpectSameCarried(actual, expected);
    ExpectSameBfcp(actual, expected);
    ExpectSameOwn(actual, expected);
}

/// The state of a new VideoParms, and of one after Reset, field by field.
inline void ExpectNewVideo(const VideoParms& parms, VideoType_t role) {
    EXPECT_EQ(parms.iFmtpMaxMbps, 0);
    EXPECT_EQ(parms.iFmtpMaxFrameSize, 0);
    EXPECT_EQ(parms.iFmtpMaxBitRate, 0);
    EXPECT_EQ(parms.eVideoCodec, PAYLOAD_UNKNOWN);
    EXPECT_EQ(parms.eVideoType, role);
    EXPECT_EQ(parms.iVideoRTPPort, 0);
    EXPECT_EQ(parms.strVideoLevel, "");
    EXPECT_EQ(parms.strVideoIPAddr, "");
    EXPECT_EQ(parms.iVideoPayload, 0);
    EXPECT_EQ(parms.iFmtpPacketizationMode, 0);
    EXPECT_FALSE(parms.fVideoSend);
    EXPECT_FALSE(parms.fVideoRecv);
    EXPECT_FALSE(parms.fIsVideoValid);
}

inline void ExpectNewBase(const baseSDP& record) {
    EXPECT_EQ(record.eAudioCodec, PAYLOAD_UNKNOWN);
    EXPECT_EQ(record.iAudioRTPPort, 0);
    EXPECT_EQ(record.iVideoPresoControlPort, 0);
    EXPECT_EQ(record.iBfcpConfid, 0);
    EXPECT_EQ(record.iBfcpUserid, 0);
    EXPECT_FALSE(record.fBfcpIsServer);
    EXPECT_EQ(record.iMaxBandwidth, 0);
    {
        SCOPED_TRACE("main video");
        ExpectNewVideo(record.m_VideoMain, VIDEOTYPE_MAIN);
    }
    {
        SCOPED_TRACE("presentation video");
        ExpectNewVideo(record.m_VideoPreso, VIDEOTYPE_PRESO);
    }
    ExpectZeroRows(record.bufSRTPKey);
    ExpectZeroRows(record.bufSRTPSalt);
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        EXPECT_EQ(record.cryptoAlgo[n], CryptoParams::CRYPTO_NONE) << "stream " << n;
    }
}

inline void ExpectNewLocal(const LocalSDP& record) {
    ExpectNewBase(record);
    EXPECT_EQ(record.strMyIPAddr, "");
    EXPECT_EQ(record.strOExtension, "");
    EXPECT_EQ(record.strDefaultIPAddr, "");
    EXPECT_EQ(record.iVideoPayloadMode0, 0);
    EXPECT_EQ(record.iVideoPayloadMode1, 0);
    EXPECT_FALSE(record.fVideoTxMuted);
    EXPECT_TRUE(record.listAudioCodecPriority.empty());
}

inline void ExpectNewRemote(const RemoteSDP& record) {
    ExpectNewBase(record);
    EXPECT_EQ(record.strAudioIPAddr, "");
    EXPECT_EQ(record.iAudioPayload, 0);
    EXPECT_EQ(record.iDTMFPayload, 0);
    EXPECT_FALSE(record.fAudioSend);
    EXPECT_FALSE(record.fAudioRecv);
    EXPECT_FALSE(record.fIsAudioValid);
}

} // namespace samples
