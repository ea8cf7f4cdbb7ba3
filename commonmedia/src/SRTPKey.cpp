// Stage: parse and build; the key text of "a=crypto:" lines (RFC 4568, 6.1).
// Input: 16 key and 14 salt bytes, or 40 characters of base64. Output: the other of the two.
// Touches only its arguments; local buffers are wiped before it returns.
// Thirty bytes are a multiple of three, so the text has no padding.
// Test: tests/unit/SRTPKeyTest.cpp
#include "SDP.h"
#include "SDPHandler.h"
#include "SDPSecrecy.h"

#include <openssl/evp.h>

#include <cstring>

namespace {

constexpr int kMaterialLength = baseSDP::kKeyLength + baseSDP::kSaltLength;
constexpr int kTextLength = kMaterialLength / 3 * 4;

} // namespace

void GetSRTPKey(std::string& strBase64Key, const unsigned char* key, const unsigned char* salt) {
    unsigned char material[kMaterialLength + 1];
    unsigned char text[kTextLength + 1];
    std::memcpy(material, key, baseSDP::kKeyLength);
    std::memcpy(material + baseSDP::kKeyLength, salt, baseSDP::kSaltLength);
    EVP_EncodeBlock(text, material, kMaterialLength);
    sdp::Wipe(material);
    sdp::Wipe(strBase64Key);
    strBase64Key.assign(reinterpret_cast<const char*>(text), kTextLength);
    sdp::Wipe(text);
}

bool ExtractSRTPKey(const unsigned char* bufBase64Key, unsigned char* key, unsigned char* salt) {
    unsigned char material[kMaterialLength + 1];
    const bool isDecoded = EVP_DecodeBlock(material, bufBase64Key, kTextLength) == kMaterialLength;
    if (isDecoded) {
        std::memcpy(key, material, baseSDP::kKeyLength);
        std::memcpy(salt, material + baseSDP::kKeyLength, baseSDP::kSaltLength);
    }
    sdp::Wipe(material);
    return isDecoded;
}
