// The name tables. A value without a name is shown as its number, so that no record is beyond description.
//
// Tests: tests/tool/NamesTest.cpp
#include "Names.h"

#include <algorithm>
#include <iterator>

namespace cmsdp {

using Quor::media::rtp::CryptoParams;

const NameTable& CodecNames() {
    static const NameTable table = {
        {"G711U", PAYLOAD_G711U}, {"H264_MODE_1", PAYLOAD_H264},
        {"VP8", PAYLOAD_VP8},     {"G729", PAYLOAD_G729},
        {"G7221", PAYLOAD_G7221}, {"H264_MODE_0", PAYLOAD_H264_PACKETIZATION_0},
        {"G722", PAYLOAD_G722},   {"UNKNOWN", PAYLOAD_UNKNOWN},
    };
    return table;
}

const NameTable& SuiteNames() {
    static const NameTable table = {
        {"none", CryptoParams::CRYPTO_NONE},
        {"AES_CM_128_HMAC_SHA1_32", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_32},
        {"AES_CM_128_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_128_HMAC_SHA1_80},
        {"AES_CM_256_HMAC_SHA1_80", CryptoParams::CRYPTO_AES_CM_256_HMAC_SHA1_80},
        {"AEAD_AES_GCM_128", CryptoParams::CRYPTO_AEAD_AES_GCM_128},
        {"AEAD_AES_GCM_256", CryptoParams::CRYPTO_AEAD_AES_GCM_256},
    };
    return table;
}

const NameTable& RoleNames() {
    static const NameTable table = {
        {"main", VIDEOTYPE_MAIN},
        {"presentation", VIDEOTYPE_PRESO},
        {"unknown", VIDEOTYPE_UNKNOWN},
    };
    return table;
}

std::string NameOf(const NameTable& table, std::int32_t value) {
    for (const NamedValue& row : table) {
        if (row.value == value) {
            return row.name;
        }
    }
    return std::to_string(value);
}

bool IsSuiteName(std::string_view word) {
    static constexpr std::string_view registered[] = {
        "AES_CM_128_HMAC_SHA1_80",   "AES_CM_128_HMAC_SHA1_32", "F8_128_HMAC_SHA1_80", // RFC 4568, 6.2
        "SEED_CTR_128_HMAC_SHA1_80", "SEED_128_CCM_80",         "SEED_128_GCM_96",     // RFC 5669
        "AES_192_CM_HMAC_SHA1_80",   "AES_192_CM_HMAC_SHA1_32",                        // RFC 6188
        "AES_256_CM_HMAC_SHA1_80",   "AES_256_CM_HMAC_SHA1_32",                        // RFC 6188
        "AEAD_AES_128_GCM",          "AEAD_AES_256_GCM",                               // RFC 7714
    };
    const NameTable& ours = SuiteNames();
    return std::find(std::begin(registered), std::end(registered), word) != std::end(registered) ||
           std::any_of(ours.begin(), ours.end(), [word](const NamedValue& row) {
               return row.value != CryptoParams::CRYPTO_NONE && word == row.name;
           });
}

std::string CodecInWords(PayloadType_t codec) {
    static const NameTable words = {
        {"G.711 mu-law", PAYLOAD_G711U},
        {"G.729", PAYLOAD_G729},
        {"G.722.1, 16 kHz, 32 kbit/s", PAYLOAD_G7221},
        {"G.722", PAYLOAD_G722},
        {"none", PAYLOAD_UNKNOWN},
    };
    return NameOf(words, codec);
}

std::string DirectionInWords(bool send, bool recv) {
    if (send) {
        return recv ? "sends and receives" : "sends only";
    }
    return recv ? "receives only" : "on hold";
}

} // namespace cmsdp
