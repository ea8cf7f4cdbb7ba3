// The types of the session description model: values of the enumerations, fields, their types, order and
// extents, and which of the records dispatch virtually. The operations are tested per record, in
// SDPVideoTest.cpp, SDPBaseTest.cpp, SDPLocalTest.cpp, SDPRemoteTest.cpp and SDPSectionTest.cpp.
#include "SDP.h"

#include "RecordSamples.h"
#include "TalmoMedia.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Quor::media::rtp::CryptoParams;
using samples::At;

template <typename A, typename B>
constexpr bool Same = std::is_same_v<A, B>;

TEST(SDPTypes, MediaKindsHaveTheirValues) {
    EXPECT_EQ(static_cast<int>(MEDIA_VIDEO), 1);
    EXPECT_EQ(static_cast<int>(MEDIA_AUDIO), 2);
    EXPECT_EQ(static_cast<int>(MEDIA_APPLICATION), 3);
    EXPECT_EQ(static_cast<int>(MEDIA_UNKNOWN), 256);
    static_assert(Same<MediaType_t, MediaType>);
}

TEST(SDPTypes, VideoRolesHaveTheirValues) {
    EXPECT_EQ(static_cast<int>(VIDEOTYPE_MAIN), 0);
    EXPECT_EQ(static_cast<int>(VIDEOTYPE_PRESO), 1);
    EXPECT_EQ(static_cast<int>(VIDEOTYPE_MAX), 2);
    EXPECT_EQ(static_cast<int>(VIDEOTYPE_UNKNOWN), 100);
    static_assert(Same<VideoType_t, VIDEOTYPE>);
}

TEST(SDPTypes, CodecsAreSingleBits) {
    EXPECT_EQ(static_cast<int>(PAYLOAD_G711U), 1);
    EXPECT_EQ(static_cast<int>(PAYLOAD_H264), 2);
    EXPECT_EQ(static_cast<int>(PAYLOAD_VP8), 4);
    EXPECT_EQ(static_cast<int>(PAYLOAD_G729), 8);
    EXPECT_EQ(static_cast<int>(PAYLOAD_G7221), 16);
    EXPECT_EQ(static_cast<int>(PAYLOAD_H264_PACKETIZATION_0), 32);
    EXPECT_EQ(static_cast<int>(PAYLOAD_G722), 64);
    EXPECT_EQ(static_cast<int>(PAYLOAD_UNKNOWN), 256);
    static_assert(Same<PayloadType_t, PayloadType>);
}

TEST(SDPTypes, KeyRowsHaveTheirIndices) {
    EXPECT_EQ(static_cast<int>(baseSDP::SRTP_AUDIO), 0);
    EXPECT_EQ(static_cast<int>(baseSDP::SRTP_VIDEO), 1);
    EXPECT_EQ(static_cast<int>(baseSDP::SRTP_VIDEO_PRESO), 2);
    EXPECT_EQ(static_cast<int>(baseSDP::SRTP_MAX), 3);
    static_assert(std::is_enum_v<baseSDP::SRTP_M_LINE>);
}

TEST(SDPTypes, SuitesHaveTheEnginesValues) {
    static_assert(std::is_enum_v<CryptoParams::CRYPTO_PROFILE>);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_NONE), 0);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32), 1);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80), 2);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80), 3);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_AEAD_AES_GCM_128), 4);
    EXPECT_EQ(static_cast<int>(CryptoParams::CRYPTO_AEAD_AES_GCM_256), 5);
}

TEST(SDPTypes, CryptoParamsIsLaidOutAsTheEngineHasIt) {
    static_assert(std::is_standard_layout_v<CryptoParams>);
    static_assert(Same<decltype(CryptoParams::cryptoAlgorithm), CryptoParams::CRYPTO_PROFILE>);
    static_assert(Same<decltype(CryptoParams::key), unsigned char*>);
    static_assert(Same<decltype(CryptoParams::keyLen), std::int32_t>);
    static_assert(Same<decltype(CryptoParams::salt), unsigned char*>);
    static_assert(Same<decltype(CryptoParams::saltLen), std::int32_t>);
    static_assert(Same<decltype(CryptoParams::cryptoFlags), std::uint32_t>);
    static_assert(sizeof(CryptoParams::CRYPTO_PROFILE) == 4);
    EXPECT_EQ(offsetof(CryptoParams, cryptoAlgorithm), 0U);
    EXPECT_EQ(offsetof(CryptoParams, key), sizeof(void*));
    EXPECT_EQ(offsetof(CryptoParams, keyLen), 2 * sizeof(void*));
    EXPECT_EQ(offsetof(CryptoParams, salt), 3 * sizeof(void*));
    EXPECT_EQ(offsetof(CryptoParams, saltLen), 4 * sizeof(void*));
    EXPECT_EQ(offsetof(CryptoParams, cryptoFlags), 4 * sizeof(void*) + 4);
}

TEST(SDPTypes, VideoParmsHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(VideoParms::iFmtpMaxMbps), std::int32_t>);
    static_assert(Same<decltype(VideoParms::iFmtpMaxFrameSize), std::int32_t>);
    static_assert(Same<decltype(VideoParms::iFmtpMaxBitRate), std::int32_t>);
    static_assert(Same<decltype(VideoParms::eVideoCodec), PayloadType_t>);
    static_assert(Same<decltype(VideoParms::eVideoType), VideoType_t>);
    static_assert(Same<decltype(VideoParms::iVideoRTPPort), std::int32_t>);
    static_assert(Same<decltype(VideoParms::strVideoLevel), std::string>);
    static_assert(Same<decltype(VideoParms::strVideoIPAddr), std::string>);
    static_assert(Same<decltype(VideoParms::iVideoPayload), std::int32_t>);
    static_assert(Same<decltype(VideoParms::iFmtpPacketizationMode), std::int32_t>);
    static_assert(Same<decltype(VideoParms::fVideoSend), bool>);
    static_assert(Same<decltype(VideoParms::fVideoRecv), bool>);
    static_assert(Same<decltype(VideoParms::fIsVideoValid), bool>);
    const VideoParms v;
    samples::ExpectAscending({At(v, v.iFmtpMaxMbps), At(v, v.iFmtpMaxFrameSize), At(v, v.iFmtpMaxBitRate),
                              At(v, v.eVideoCodec), At(v, v.eVideoType), At(v, v.iVideoRTPPort),
                              At(v, v.strVideoLevel), At(v, v.strVideoIPAddr), At(v, v.iVideoPayload),
                              At(v, v.iFmtpPacketizationMode), At(v, v.fVideoSend), At(v, v.fVideoRecv),
                              At(v, v.fIsVideoValid)});
    EXPECT_EQ(At(v, v.iFmtpMaxMbps), 0);
}

TEST(SDPTypes, BaseHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(baseSDP::eAudioCodec), PayloadType_t>);
    static_assert(Same<decltype(baseSDP::iAudioRTPPort), std::int32_t>);
    static_assert(Same<decltype(baseSDP::iVideoPresoControlPort), std::int32_t>);
    static_assert(Same<decltype(baseSDP::iBfcpConfid), std::int32_t>);
    static_assert(Same<decltype(baseSDP::iBfcpUserid), std::int32_t>);
    static_assert(Same<decltype(baseSDP::fBfcpIsServer), bool>);
    static_assert(Same<decltype(baseSDP::iMaxBandwidth), std::int32_t>);
    static_assert(Same<decltype(baseSDP::m_VideoMain), VideoParms>);
    static_assert(Same<decltype(baseSDP::m_VideoPreso), VideoParms>);
    static_assert(Same<decltype(baseSDP::bufSRTPKey), unsigned char[3][17]>);
    static_assert(Same<decltype(baseSDP::bufSRTPSalt), unsigned char[3][15]>);
    static_assert(Same<decltype(baseSDP::cryptoAlgo), CryptoParams::CRYPTO_PROFILE[3]>);
    const baseSDP b;
    EXPECT_EQ(At(b, b.eAudioCodec), 0);
    samples::ExpectAscending({At(b, b.eAudioCodec), At(b, b.iAudioRTPPort), At(b, b.iVideoPresoControlPort),
                              At(b, b.iBfcpConfid), At(b, b.iBfcpUserid), At(b, b.fBfcpIsServer),
                              At(b, b.iMaxBandwidth), At(b, b.m_VideoMain), At(b, b.m_VideoPreso),
                              At(b, b.bufSRTPKey), At(b, b.bufSRTPSalt), At(b, b.cryptoAlgo)});
}

TEST(SDPTypes, LocalHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(LocalSDP::strMyIPAddr), std::string>);
    static_assert(Same<decltype(LocalSDP::strOExtension), std::string>);
    static_assert(Same<decltype(LocalSDP::strDefaultIPAddr), std::string>);
    static_assert(Same<decltype(LocalSDP::iVideoPayloadMode0), std::int32_t>);
    static_assert(Same<decltype(LocalSDP::iVideoPayloadMode1), std::int32_t>);
    static_assert(Same<decltype(LocalSDP::fVideoTxMuted), bool>);
    static_assert(Same<decltype(LocalSDP::listAudioCodecPriority), std::list<std::int32_t>>);
    const LocalSDP s;
    samples::ExpectAscending({At(s, s.cryptoAlgo), At(s, s.strMyIPAddr), At(s, s.strOExtension),
                              At(s, s.strDefaultIPAddr), At(s, s.iVideoPayloadMode0),
                              At(s, s.iVideoPayloadMode1), At(s, s.fVideoTxMuted),
                              At(s, s.listAudioCodecPriority)});
}

TEST(SDPTypes, RemoteHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(RemoteSDP::strAudioIPAddr), std::string>);
    static_assert(Same<decltype(RemoteSDP::iAudioPayload), std::int32_t>);
    static_assert(Same<decltype(RemoteSDP::iDTMFPayload), std::int32_t>);
    static_assert(Same<decltype(RemoteSDP::fAudioSend), bool>);
    static_assert(Same<decltype(RemoteSDP::fAudioRecv), bool>);
    static_assert(Same<decltype(RemoteSDP::fIsAudioValid), bool>);
    const RemoteSDP r;
    samples::ExpectAscending({At(r, r.cryptoAlgo), At(r, r.strAudioIPAddr), At(r, r.iAudioPayload),
                              At(r, r.iDTMFPayload), At(r, r.fAudioSend), At(r, r.fAudioRecv),
                              At(r, r.fIsAudioValid)});
}

TEST(SDPTypes, RtpMapHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(RtpMap::strPayload), std::string>);
    static_assert(Same<decltype(RtpMap::strEncodingName), std::string>);
    static_assert(Same<decltype(RtpMap::vecFmtpParms), std::vector<std::string>>);
    const RtpMap rm;
    EXPECT_EQ(At(rm, rm.strPayload), 0);
    samples::ExpectAscending({At(rm, rm.strPayload), At(rm, rm.strEncodingName), At(rm, rm.vecFmtpParms)});
}

TEST(SDPTypes, MediaSessionHasTheseFieldsInThisOrder) {
    static_assert(Same<decltype(MediaSession::eMedia), MediaType_t>);
    static_assert(Same<decltype(MediaSession::eContent), VideoType_t>);
    static_assert(Same<decltype(MediaSession::iPort), std::int32_t>);
    static_assert(Same<decltype(MediaSession::strIPAddr), std::string>);
    static_assert(Same<decltype(MediaSession::vecRtpMap), std::vector<RtpMap*>>);
    static_assert(Same<decltype(MediaSession::fSend), bool>);
    static_assert(Same<decltype(MediaSession::fRecv), bool>);
    static_assert(Same<decltype(MediaSession::strFullMLine), std::string>);
    static_assert(Same<decltype(MediaSession::strVideoLevel), std::string>);
    static_assert(Same<decltype(MediaSession::strMaxBandwidth), std::string>);
    static_assert(Same<decltype(MediaSession::iVideoLabel), std::int32_t>);
    static_assert(Same<decltype(MediaSession::bufSRTPKey), unsigned char[17]>);
    static_assert(Same<decltype(MediaSession::bufSRTPSalt), unsigned char[15]>);
    static_assert(Same<decltype(MediaSession::cryptoAlgo), CryptoParams::CRYPTO_PROFILE>);
    static_assert(Same<decltype(MediaSession::iCryptoTag), std::int32_t>);
    static_assert(Same<decltype(MediaSession::strBase64Key), std::string>);
    static_assert(Same<decltype(MediaSession::iBfcpConfid), std::int32_t>);
    static_assert(Same<decltype(MediaSession::iBfcpUserid), std::int32_t>);
    static_assert(Same<decltype(MediaSession::iBfcpFloorid), std::int32_t>);
    static_assert(Same<decltype(MediaSession::strFloorctrl), std::string>);
    static_assert(Same<decltype(MediaSession::striceufrag), std::string>);
    static_assert(Same<decltype(MediaSession::stricepwd), std::string>);
    static_assert(Same<decltype(MediaSession::vecCandidate), std::vector<std::string>>);
    const MediaSession m;
    EXPECT_EQ(At(m, m.eMedia), 0);
    samples::ExpectAscending(
        {At(m, m.eMedia),        At(m, m.eContent),        At(m, m.iPort),        At(m, m.strIPAddr),
         At(m, m.vecRtpMap),     At(m, m.fSend),           At(m, m.fRecv),        At(m, m.strFullMLine),
         At(m, m.strVideoLevel), At(m, m.strMaxBandwidth), At(m, m.iVideoLabel),  At(m, m.bufSRTPKey),
         At(m, m.bufSRTPSalt),   At(m, m.cryptoAlgo),      At(m, m.iCryptoTag),   At(m, m.strBase64Key),
         At(m, m.iBfcpConfid),   At(m, m.iBfcpUserid),     At(m, m.iBfcpFloorid), At(m, m.strFloorctrl),
         At(m, m.striceufrag),   At(m, m.stricepwd),       At(m, m.vecCandidate)});
}

TEST(SDPTypes, KeyAndSaltLengthsLeaveOneSpareByte) {
    static_assert(baseSDP::kKeyLength == 16);
    static_assert(baseSDP::kSaltLength == 14);
    EXPECT_EQ(sizeof(baseSDP::bufSRTPKey), 3U * 17U);
    EXPECT_EQ(sizeof(baseSDP::bufSRTPSalt), 3U * 15U);
    EXPECT_EQ(sizeof(MediaSession::bufSRTPKey), 17U);
    EXPECT_EQ(sizeof(MediaSession::bufSRTPSalt), 15U);
}

TEST(SDPTypes, OnlyTheLocalDescriptionDispatchesVirtually) {
    static_assert(!std::is_polymorphic_v<VideoParms>);
    static_assert(!std::is_polymorphic_v<baseSDP>);
    static_assert(std::is_polymorphic_v<LocalSDP>);
    static_assert(!std::has_virtual_destructor_v<LocalSDP>);
    static_assert(!std::is_polymorphic_v<RemoteSDP>);
    static_assert(!std::is_polymorphic_v<RtpMap>);
    static_assert(!std::is_polymorphic_v<MediaSession>);
    static_assert(std::is_base_of_v<baseSDP, LocalSDP> && std::is_convertible_v<LocalSDP*, baseSDP*>);
    static_assert(std::is_base_of_v<baseSDP, RemoteSDP> && std::is_convertible_v<RemoteSDP*, baseSDP*>);
    static_assert(!std::is_base_of_v<RemoteSDP, LocalSDP> && !std::is_base_of_v<LocalSDP, RemoteSDP>);
}

TEST(SDPTypes, RecordsAreMadeAndCopiedWithoutArguments) {
    static_assert(std::is_default_constructible_v<VideoParms> && std::is_copy_constructible_v<VideoParms>);
    static_assert(std::is_default_constructible_v<baseSDP> && std::is_default_constructible_v<LocalSDP>);
    static_assert(std::is_default_constructible_v<RemoteSDP> && std::is_default_constructible_v<RtpMap>);
    static_assert(std::is_default_constructible_v<MediaSession>);
    static_assert(
        Same<decltype(std::declval<VideoParms&>() = std::declval<const VideoParms&>()), VideoParms&>);
    static_assert(Same<decltype(std::declval<baseSDP&>() = std::declval<const baseSDP&>()), baseSDP&>);
    static_assert(Same<decltype(std::declval<LocalSDP&>() = std::declval<const LocalSDP&>()), LocalSDP&>);
}

} // namespace
