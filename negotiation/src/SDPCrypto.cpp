// Stage: prepare, crypto lines.
// Input: the lines of one section. Output: the first line whose suite, key and parameters can be used.
// Touches nothing but the list of repairs.
// Test: tests/negotiation/SDPCryptoTest.cpp
#include "SDPCrypto.h"

#include "SDPHandler.h"

#include <algorithm>
#include <charconv>

namespace negotiation {
namespace {

bool DecodeKey(std::string_view text, Key& key) {
    // Thirty bytes need no padding.
    return text.size() == sdp::kKeyTextLength && text.find('=') == std::string_view::npos &&
           ExtractSRTPKey(reinterpret_cast<const unsigned char*>(text.data()), key.key.data(),
                          key.salt.data());
}

/// Session parameters that change nothing on the wire: the hint of a window size, and what its writer allows
/// to be ignored (RFC 4568, 6.3.6 and 6.3.7). Any other would have to be done.
bool IsHarmless(std::string_view parameter) {
    return sdp::StartsWith(parameter, "WSH=") || sdp::StartsWith(parameter, "-");
}

/// "2^20" or "1048576": how many packets a key may secure, 2^48 at most (RFC 4568, 6.1).
bool IsLifetime(std::string_view text) {
    constexpr std::string_view power = "2^";
    constexpr std::uint64_t highestPower = 48;
    const bool isPower = sdp::StartsWith(text, power);
    text.remove_prefix(isPower ? power.size() : 0);
    std::uint64_t number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    return error == std::errc() && end == last && number > 0 &&
           number <= (isPower ? highestPower : std::uint64_t{1} << highestPower);
}

/// "1:4": the value of an MKI and its length, 1 to 128 bytes (RFC 4568, 6.1).
bool IsMki(std::string_view text) {
    constexpr std::int32_t longest = 128;
    const std::string_view value = TakePiece(text, ':');
    const std::int32_t length = NumberOrNone(text);
    return !value.empty() && std::all_of(value.begin(), value.end(), sdp::IsDigit) && length > 0 &&
           length <= longest;
}

/// Reads the key parameters, "inline:KEY|2^20|1:4"; false when they cannot be used. Several keys cannot: the
/// engine holds one. Lifetime and MKI are given once at most.
bool ReadKey(std::string_view text, CryptoLine& crypto) {
    if (!EqualsNoCase(text.substr(0, sdp::kKeyMethod.size()), sdp::kKeyMethod) ||
        text.find(';') != std::string_view::npos) {
        return false;
    }
    text.remove_prefix(sdp::kKeyMethod.size());
    const std::string_view key = TakePiece(text, '|');
    while (!text.empty()) {
        const std::string_view piece = TakePiece(text, '|');
        const bool isMki = piece.find(':') != std::string_view::npos;
        std::string_view& place = isMki ? crypto.mki : crypto.lifetime;
        if (!place.empty() || !(isMki ? IsMki(piece) : IsLifetime(piece))) {
            return false;
        }
        place = piece;
    }
    return DecodeKey(key, crypto.key) && !IsZero(crypto.key);
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
        // Without the repair the last line of a section counts, as in the component.
        if (isUsable ? chosen.suite == sdp::CryptoParams::CRYPTO_NONE
                     : !repairs.Use(RepairId::UnusableCrypto)) {
            chosen = crypto;
        }
    }
    return chosen;
}

} // namespace negotiation
