// Masks SRTP key text in a text for people: "inline:d0RmdmcmVCspe..." becomes "inline:***".
// Test: tests/unit/SDPMaskTest.cpp
#pragma once

#include "SDPSearch.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace sdp {

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
