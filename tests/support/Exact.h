// Exact is a text in memory of its own. Tests: the tests of searches, under the address sanitizer.
#pragma once

#include <string_view>
#include <vector>

namespace support {

/// The text in an allocation of exactly its size: the address sanitizer sees a read before or after it.
class Exact {
public:
    explicit Exact(std::string_view text) : m_bytes(text.begin(), text.end()) {}
    std::string_view View() const { return {m_bytes.data(), m_bytes.size()}; }

private:
    std::vector<char> m_bytes;
};

} // namespace support
