// The part of the media engine's public interface that session descriptions touch: the SRTP suites.
//
// The class is declared exactly as the engine declares it. This component uses only the nested enumeration.
#pragma once

#include "CommonMediaExport.h"

#include <cstdint>

namespace Quor::media::rtp {

/// The keying of one RTP stream as the media engine takes it.
class CryptoParams {
public:
    /// SRTP suites (RFC 4568, 6.2; RFC 6188; RFC 7714). The values are the engine's and never change.
    enum CRYPTO_PROFILE : std::int32_t {
        CRYPTO_NONE = 0,
        CRYPTO_AES_CM_128_HMAC_SHA1_32 = 1,
        CRYPTO_AES_CM_128_HMAC_SHA1_80 = 2,
        CRYPTO_AES_CM_256_HMAC_SHA1_80 = 3,
        CRYPTO_AEAD_AES_GCM_128 = 4,
        CRYPTO_AEAD_AES_GCM_256 = 5
    };

    CRYPTO_PROFILE cryptoAlgorithm; ///< suite of the stream
    std::uint8_t* key;              ///< master key; owned by whoever fills the record
    std::int32_t keyLen;            ///< bytes at `key`
    std::uint8_t* salt;             ///< master salt; owned by whoever fills the record
    std::int32_t saltLen;           ///< bytes at `salt`
    std::uint32_t cryptoFlags;      ///< engine flags; this component neither sets nor reads them
};

} // namespace Quor::media::rtp
