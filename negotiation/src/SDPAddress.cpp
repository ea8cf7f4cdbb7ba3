// Stage: none; what an address is.
// Input: a word of a far end's text or of a wish. Output: yes or no.
// Touches nothing; allocates nothing and looks nothing up.
// Test: tests/negotiation/SDPAddressTest.cpp
#include "SDPAddress.h"

#include <algorithm>
#include <array>

#include <arpa/inet.h>
#include <netinet/in.h>

namespace negotiation {
namespace {

/// An IPv4 or IPv6 address; an IPv4 address leaves the bytes after its four at zero.
struct Address {
    bool isOne = false;
    std::array<unsigned char, sizeof(in6_addr)> bytes{};
};

Address Read(std::string_view text) {
    Address address;
    char ended[INET6_ADDRSTRLEN] = {};
    if (text.size() < sizeof ended && text.find('\0') == std::string_view::npos) {
        std::copy(text.begin(), text.end(), ended);
        address.isOne = inet_pton(AF_INET, ended, address.bytes.data()) == 1 ||
                        inet_pton(AF_INET6, ended, address.bytes.data()) == 1;
    }
    return address;
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
    return Read(text).isOne || IsHostName(text);
}

bool IsNowhere(std::string_view text) noexcept {
    const Address address = Read(text);
    return address.isOne && std::all_of(address.bytes.begin(), address.bytes.end(),
                                        [](unsigned char byte) { return byte == 0; });
}

} // namespace negotiation
