// The types of the session description model: values of the enumerations, extents, and which of the records
// dispatch virtually. What every record does with its fields is in SDPRecordTest.cpp, and the operations of
// one record in SDPVideoTest.cpp, SDPBaseTest.cpp, SDPLocalTest.cpp, SDPRemoteTest.cpp and
// SDPSectionTest.cpp.
#include "SDP.h"

#include "TalmoMedia.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace {

using Quor::media::rtp::CryptoParams;

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

// SDPRecordTest.cpp shows the order of the fields and their values; both look alike for numbers and these.
TEST(SDPTypes, EnumeratedFieldsHaveTheirEnumeration) {
    static_assert(Same<decltype(VideoParms::eVideoCodec), PayloadType_t>);
    static_assert(Same<decltype(VideoParms::eVideoType), VideoType_t>);
    static_assert(Same<decltype(baseSDP::eAudioCodec), PayloadType_t>);
    static_assert(Same<decltype(baseSDP::cryptoAlgo), CryptoParams::CRYPTO_PROFILE[3]>);
    static_assert(Same<decltype(MediaSession::eMedia), MediaType_t>);
    static_assert(Same<decltype(MediaSession::eContent), VideoType_t>);
    static_assert(Same<decltype(MediaSession::cryptoAlgo), CryptoParams::CRYPTO_PROFILE>);
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
