// Stage: none; what an address is.
// Input: a word of a far end's text or of a wish. Output: yes or no.
// Touches nothing; allocates nothing and looks nothing up.
// Test: tests/negotiation/SDPAddressTest.cpp
#include "SDPAddress.h"

#include "InetPton.h"

#include <algorithm>

namespace negotiation {
namespace {

/// An IPv4 or IPv6 address, as opposed to a name.
bool IsNumeric(std::string_view text) {
    char ended[INET6_ADDRSTRLEN] = {};
    if (text.size() >= sizeof ended || text.find('\0') != std::string_view::npos) {
        return false;
    }
    std::copy(text.begin(), text.end(), ended);
    unsigned char bytes[sizeof(in6_addr)];
    return inet_pton(AF_INET, ended, bytes) == 1 || inet_pton(AF_INET6, ended, bytes) == 1;
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The last label of a name begins with a letter, which tells it from a number (RFC 1123, 2.1). A name has
/// four characters at least (RFC 4566, 9).
bool IsHostName(std::string_view text) {
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longest = 255;
    if (text.size() < shortest || text.size() > longest) {
        return false;
    }
    const std::string_view name = text.substr(0, text.size() - (text.back() == '.' ? 1 : 0));
    const std::size_t dot = name.rfind('.');
    const std::string_view last = dot == std::string_view::npos ? name : name.substr(dot + 1);
    return !last.empty() && IsLetter(last.front()) && std::all_of(name.begin(), name.end(), [](char c) {
        return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
    });
}

} // namespace

bool IsAddress(std::string_view text) noexcept {
    return IsNumeric(text) || IsHostName(text);
}

bool IsNowhere(std::string_view address) noexcept {
    return address.find_first_not_of("0.:") == std::string_view::npos && IsNumeric(address);
}

} // namespace negotiation
