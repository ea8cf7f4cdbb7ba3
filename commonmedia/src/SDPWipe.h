// Wiping of key material, in a way that cannot be optimised away as a last write to dead memory can.
// Test: tests/unit/SDPWipeTest.cpp
#pragma once

#include <openssl/crypto.h>

#include <string>

namespace sdp {

/// Zeroes `length` bytes at `text`.
void Zero(char* text, std::size_t length);

template <typename T, std::size_t N>
void Wipe(T (&bytes)[N]) {
    OPENSSL_cleanse(bytes, sizeof bytes);
}

/// Zeroes the text in place and empties it. Called before a key text is replaced as well as at its end, so
/// that no longer predecessor stays behind the new text's length.
inline void Wipe(std::string& text) {
    if (!text.empty()) {
        Zero(&text[0], text.size());
        text.clear();
    }
}

/// Wipes a text when the scope that holds it ends, however it ends.
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
