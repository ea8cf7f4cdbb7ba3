// Wiping of key material: the compiler removes a plain write to memory that is not read again.
// Test: tests/unit/SDPWipeTest.cpp
#pragma once

#include <openssl/crypto.h>

#include <cstddef>
#include <string>

namespace sdp {

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

} // namespace sdp
