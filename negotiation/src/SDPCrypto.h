// Crypto lines of a far end: which one can be used (RFC 4568).
//
// Test: tests/negotiation/SDPCryptoTest.cpp
#pragma once

#include "SDPRepairs.h"
#include "SDPSections.h"
#include "SDPTables.h"

#include <array>
#include <string_view>

namespace negotiation {

/// The suites that both sides can use, in the order of this side's tags. Their index numbers this side's
/// keys.
inline constexpr std::array<sdp::CRYPTO_PROFILE, 2> kBothSuites = {
    sdp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80, sdp::CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32};

/// Index of a suite in kBothSuites; their number for any other.
std::size_t SuiteIndex(sdp::CRYPTO_PROFILE suite) noexcept;

using Key = SDPNegotiator::Key;

/// Whether every byte is zero: no key, or what a generator leaves that does nothing.
inline bool IsZero(const Key& key) {
    return key.key == decltype(key.key){} && key.salt == decltype(key.salt){};
}

/// This side's keys: one per stream and suite, none of them all zero once made.
using Keys = std::array<std::array<Key, kBothSuites.size()>, baseSDP::SRTP_MAX>;

/// One usable line. The views point into the far end's text.
struct CryptoLine {
    std::string_view tag;
    sdp::CRYPTO_PROFILE suite = sdp::CryptoParams::CRYPTO_NONE; ///< CRYPTO_NONE: there is no usable line
    Key key;
    std::string_view lifetime; ///< "2^20"; empty: none
    std::string_view mki;      ///< "1:4"; empty: none
};

/// The first usable line of a section, in the far end's order (RFC 4568, 5.1.2).
CryptoLine ChooseCrypto(Lines lines, Repairs& repairs);

} // namespace negotiation
