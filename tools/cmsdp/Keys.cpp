// Key bytes stay in the records, which wipe them; local copies are wiped here.
//
// Tests: tests/tool/KeysTest.cpp
#include "Keys.h"

#include "Outcome.h"
#include "Words.h"

#include <openssl/crypto.h>
#include <openssl/rand.h>

#include <algorithm>
#include <array>

namespace cmsdp {

namespace {

// A key and a salt that are wiped when they leave scope.
struct KeyBytes {
    std::array<unsigned char, baseSDP::kKeyLength + baseSDP::kSaltLength> bytes{};
    KeyBytes() = default;
    KeyBytes(const KeyBytes&) = delete;
    KeyBytes& operator=(const KeyBytes&) = delete;
    ~KeyBytes() { OPENSSL_cleanse(bytes.data(), bytes.size()); }

    unsigned char* key() { return bytes.data(); }
    unsigned char* salt() { return bytes.data() + baseSDP::kKeyLength; }
};

void Store(baseSDP& record, baseSDP::SRTP_M_LINE stream, KeyBytes& made) {
    record.setSRTPKey(stream, made.key());
    record.setSRTPSalt(stream, made.salt());
}

} // namespace

void MakeMissingKeys(Capabilities& capabilities) {
    if (!capabilities.srtp) {
        return;
    }
    for (const auto stream : {baseSDP::SRTP_AUDIO, baseSDP::SRTP_VIDEO, baseSDP::SRTP_VIDEO_PRESO}) {
        const bool wanted =
            capabilities.local.cryptoAlgo[stream] != Quor::media::rtp::CryptoParams::CRYPTO_NONE;
        if (wanted && !capabilities.keyGiven[stream]) {
            KeyBytes made;
            if (RAND_bytes(made.bytes.data(), static_cast<int>(made.bytes.size())) != 1) {
                throw ToolError(kFailed,
                                "the random generator gave no SRTP key; give keys in the local file");
            }
            Store(capabilities.local, stream, made);
        }
    }
}

std::string InlineKey(const baseSDP& record, baseSDP::SRTP_M_LINE stream) {
    std::string text;
    GetSRTPKey(text, record.bufSRTPKey[stream], record.bufSRTPSalt[stream]);
    return text;
}

bool SetInlineKey(baseSDP& record, baseSDP::SRTP_M_LINE stream, const std::string& text) {
    if (text.size() != kKeyText || !std::all_of(text.begin(), text.end(), IsBase64)) {
        return false;
    }
    KeyBytes read;
    if (!ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), read.key(), read.salt())) {
        return false;
    }
    Store(record, stream, read);
    return true;
}

bool KeyIsZero(const baseSDP& record, baseSDP::SRTP_M_LINE stream) {
    return InlineKey(record, stream) == std::string(kKeyText, 'A');
}

} // namespace cmsdp
