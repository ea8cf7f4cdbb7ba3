// Keeps SRTP keys secret: wipes the memory that held one, masks key text in a text for people.
// Tests: tests/unit/SDPWipeTest.cpp, tests/unit/SDPMaskTest.cpp
#pragma once

#include "SDPSearch.h"

#include <openssl/crypto.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace sdp {

/// Zeroes the bytes. The compiler would remove a plain write to memory that is not read again.
template <typename T, std::size_t N>
void Wipe(T (&bytes)[N]) {
    OPENSSL_cleanse(bytes, sizeof bytes);
}

/// Zeroes the text in place and empties it. Called at the end of a key text and before another text replaces
/// it, so that no bytes of a longer previous key remain.
inline void Wipe(std::string& text) {
    if (!text.empty()) {
        OPENSSL_cleanse(&text[0], text.size());
        text.clear();
    }
}

/// Wipes a text when the scope ends, by return or by exception.
class WipedAtEnd {
public:
    explicit WipedAtEnd(std::string& text) : m_text(text) {}
    ~WipedAtEnd() { Wipe(m_text); }
    WipedAtEnd(const WipedAtEnd&) = delete;
    WipedAtEnd& operator=(const WipedAtEnd&) = delete;

private:
    std::string& m_text;
};

/// Masks key text: "inline:d0RmdmcmVCspe..." becomes "inline:***".
/// [G14] A far end that ends lines in LF alone can move a crypto line into any field. Dumps and traces end up
/// in logs and from there in public reports, so whatever follows "inline:" is replaced up to the next blank.
/// The letter case of the key method does not matter (RFC 5234, 2.3).
inline std::string Masked(std::string text) {
    constexpr std::string_view method = "inline";
    const auto equals = [](char lower, char c) { return lower == (c | 0x20); };
    std::string masked;
    std::size_t copied = 0; // bytes of `text` that were copied or replaced
    for (std::size_t colon = FindByte(text, ':'); colon < text.size();
         colon = FindByte(text, ':', std::max(colon + 1, copied))) {
        if (colon >= copied + method.size() && equals(method.back(), text[colon - 1]) &&
            std::equal(method.begin(), method.end(), &text[colon - method.size()], equals)) {
            masked.append(text, copied, colon + 1 - copied).append("***");
            copied = FindBlank(text, colon + 1);
        }
    }
    return copied == 0 ? std::move(text) : masked.append(text, copied);
}

} // namespace sdp
