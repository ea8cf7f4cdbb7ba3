// Searches freed memory for key material.
//
// A Watch searches every block that its thread frees, before it is freed, for eight consecutive bytes of any
// key, salt or key text that the tests use.
#pragma once

#include "Capabilities.h"

#include <cstddef>
#include <string>
#include <vector>

namespace wipe {

/// Keys, salts and key texts of both endpoints.
std::vector<std::string> Secrets();

/// Returns at how many offsets of the memory eight bytes of a secret begin.
std::size_t CountWindows(const volatile unsigned char* bytes, std::size_t size);

class Watch {
public:
    Watch();
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    std::size_t blocks() const { return m_blocks; } ///< blocks that were freed
    std::size_t dirty() const { return m_dirty; }   ///< freed blocks that contained a secret
    std::string first() const;                      ///< the first bytes of the first such block

private:
    static void Inspect(const unsigned char* block, std::size_t size);

    std::size_t m_blocks = 0;
    std::size_t m_dirty = 0;
    std::size_t m_length = 0;
    unsigned char m_first[400] = {};
};

} // namespace wipe
