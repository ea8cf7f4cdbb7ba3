// Describe(record): every field of a record as one text, so that a test can state the whole outcome.
//
// Codecs, roles and suites are numbers, flags 0 or 1. A key row of zeros is "-", any other row its bytes; the
// spare byte at the end of a row is shown if it is not zero.
#pragma once

#include "Expect.h"

#include <SDP.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>

namespace support {

/// Describe of a RemoteSDP that was reset.
inline const char* const kFreshRemote =
    "audio codec=256 payload=0 dtmf=0 addr= port=0 send=0 recv=0 valid=0\n"
    "main codec=256 type=0 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "preso codec=256 type=1 payload=0 mode=0 level= mbps=0 fs=0 br=0 addr= port=0 send=0 recv=0 valid=0\n"
    "bfcp port=0 conf=0 user=0 server=0\n"
    "bandwidth=0\n"
    "srtp audio suite=0 key=- salt=-\n"
    "srtp video suite=0 key=- salt=-\n"
    "srtp slide suite=0 key=- salt=-\n";

inline std::string DescribeRow(const unsigned char* row, std::size_t length, std::size_t size) {
    if (std::all_of(row, row + size, [](unsigned char byte) { return byte == 0; })) {
        return "-";
    }
    const bool hasSpare = std::any_of(row + length, row + size, [](unsigned char byte) { return byte != 0; });
    return MakeVisible(std::string(row, row + (hasSpare ? size : length)));
}

inline std::string Describe(const VideoParms& parms) {
    std::ostringstream out;
    out << "codec=" << parms.eVideoCodec << " type=" << parms.eVideoType << " payload=" << parms.iVideoPayload
        << " mode=" << parms.iFmtpPacketizationMode << " level=" << parms.strVideoLevel
        << " mbps=" << parms.iFmtpMaxMbps << " fs=" << parms.iFmtpMaxFrameSize
        << " br=" << parms.iFmtpMaxBitRate << " addr=" << parms.strVideoIPAddr
        << " port=" << parms.iVideoRTPPort << " send=" << parms.fVideoSend << " recv=" << parms.fVideoRecv
        << " valid=" << parms.fIsVideoValid << "\n";
    return out.str();
}

inline std::string Describe(const RemoteSDP& remote) {
    static const char* const streams[baseSDP::SRTP_MAX] = {"audio", "video", "slide"};
    std::ostringstream out;
    out << "audio codec=" << remote.eAudioCodec << " payload=" << remote.iAudioPayload
        << " dtmf=" << remote.iDTMFPayload << " addr=" << remote.strAudioIPAddr
        << " port=" << remote.iAudioRTPPort << " send=" << remote.fAudioSend << " recv=" << remote.fAudioRecv
        << " valid=" << remote.fIsAudioValid << "\n";
    out << "main " << Describe(remote.m_VideoMain) << "preso " << Describe(remote.m_VideoPreso);
    out << "bfcp port=" << remote.iVideoPresoControlPort << " conf=" << remote.iBfcpConfid
        << " user=" << remote.iBfcpUserid << " server=" << remote.fBfcpIsServer << "\n";
    out << "bandwidth=" << remote.iMaxBandwidth << "\n";
    for (int n = 0; n < baseSDP::SRTP_MAX; ++n) {
        out << "srtp " << streams[n] << " suite=" << remote.cryptoAlgo[n]
            << " key=" << DescribeRow(remote.bufSRTPKey[n], baseSDP::kKeyLength, sizeof remote.bufSRTPKey[n])
            << " salt="
            << DescribeRow(remote.bufSRTPSalt[n], baseSDP::kSaltLength, sizeof remote.bufSRTPSalt[n]) << "\n";
    }
    return out.str();
}

} // namespace support
