// Stage: none; the end of texts that carried key material.
// Input: where a text stands and its length. Output: zeros in its place.
// Touches only what it is handed.
// Arrays of known length are wiped where they stand, in SDPWipe.h.
// Test: tests/unit/SDPWipeTest.cpp
#include "SDPWipe.h"

#include <cstring>

void sdp::Zero(char* text, std::size_t length) {
    // OPENSSL_cleanse takes eight bytes at a time, and a whole description is long. The fill of the C library
    // does as well, as long as the compiler cannot see that nobody reads the zeros: it is made to fetch the
    // function from memory.
    static void* (*const volatile fill)(void*, int, std::size_t) = std::memset;
    // Pieces, because above two kilobytes the library changes to an instruction that is slow to start.
    constexpr std::size_t piece = 1024;
    for (; length > piece; text += piece, length -= piece) {
        fill(text, 0, piece);
    }
    fill(text, 0, length);
}
