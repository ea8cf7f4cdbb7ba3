// Stage: prepare, crypto lines.
// Input: the lines of one section. Output: the first line whose suite, key and parameters can be used.
// Touches nothing but the list of repairs.
// Test: tests/negotiation/SDPCryptoTest.cpp
#include "SDPCrypto.h"

#include "SDPHandler.h"

#include <algorithm>

namespace negotiation {
namespace {

constexpr std::string_view kInline = "inline:";
constexpr std::size_t kKeyTextLength = 40;

bool DecodeKey(std::string_view text, Key& key) {
    // Thirty bytes need no padding.
    return text.size() == kKeyTextLength && text.find('=') == std::string_view::npos &&
           ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), key.key.data(),
                          key.salt.data());
}

/// Session parameters that change nothing on the wire: the hint of a window size, and what its writer allows
/// to be ignored (RFC 4568, 6.3.6 and 6.3.7). Any other would have to be done.
bool IsHarmless(std::string_view parameter) {
    return sdp::StartsWith(parameter, "WSH=") || sdp::StartsWith(parameter, "-");
}

/// Reads the key parameters, "inline:KEY|2^20|1:4"; false when they cannot be used. Several keys cannot: the
/// engine holds one.
bool ReadKey(std::string_view text, CryptoLine& crypto) {
    if (!EqualsNoCase(text.substr(0, kInline.size()), kInline) || text.find(';') != std::string_view::npos) {
        return false;
    }
    text.remove_prefix(kInline.size());
    const std::string_view key = TakePiece(text, '|');
    while (!text.empty()) {
        const std::string_view piece = TakePiece(text, '|');
        (piece.find(':') == std::string_view::npos ? crypto.lifetime : crypto.mki) = piece;
    }
    return DecodeKey(key, crypto.key);
}

/// Reads one line; without a suite when it cannot be used.
CryptoLine ReadCrypto(const Line& line, Repairs& repairs) {
    CryptoLine crypto;
    sdp::Words words(line.value);
    crypto.tag = words.Next();
    const sdp::Suite* const suite = sdp::FindNamed<sdp::kSuites>(words.Next());
    bool isUsable = NumberOrNone(crypto.tag) >= 0 && suite != nullptr &&
                    SuiteIndex(suite->profile) < kBothSuites.size() && ReadKey(words.Next(), crypto);
    for (std::string_view word = words.Next(); isUsable && !word.empty(); word = words.Next()) {
        isUsable = IsHarmless(word);
    }
    if (isUsable && (suite->isRead || repairs.Use(RepairId::EightyBitSuite))) {
        crypto.suite = suite->profile;
    }
    return crypto;
}

} // namespace

std::size_t SuiteIndex(sdp::CRYPTO_PROFILE suite) noexcept {
    return static_cast<std::size_t>(std::find(kBothSuites.begin(), kBothSuites.end(), suite) -
                                    kBothSuites.begin());
}

CryptoLine ChooseCrypto(Lines lines, Repairs& repairs) {
    CryptoLine chosen;
    for (const Line& line : lines) {
        if (line.kind != LineKind::Crypto) {
            continue;
        }
        const CryptoLine crypto = ReadCrypto(line, repairs);
        const bool isUsable = crypto.suite != sdp::CryptoParams::CRYPTO_NONE;
        // Without the repair the last line of a section stands, as the component has it.
        if (isUsable ? chosen.suite == sdp::CryptoParams::CRYPTO_NONE
                     : !repairs.Use(RepairId::UnusableCrypto)) {
            chosen = crypto;
        }
    }
    return chosen;
}

} // namespace negotiation
