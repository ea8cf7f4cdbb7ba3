// This program's operators new and delete. Blocks are filled when they are allocated, because each is
// searched as a whole, its unused end included, before it is freed.
#define ALLOCATIONS_FILL 0xa5
#include "oom/ReplacedNew.h"

#include "Watching.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace wipe {

namespace {

/// Eight bytes of a secret as one number, so that each offset of a block needs one comparison.
std::uint64_t Window(const unsigned char* bytes) {
    std::uint64_t window = 0;
    std::memcpy(&window, bytes, sizeof window);
    return window;
}

std::vector<std::uint64_t> AllWindows() {
    std::vector<std::uint64_t> windows;
    for (const std::string& secret : Secrets()) {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(secret.data());
        for (std::size_t at = 0; at + sizeof(std::uint64_t) <= secret.size(); ++at) {
            windows.push_back(Window(bytes + at));
        }
    }
    std::sort(windows.begin(), windows.end());
    return windows;
}

const std::vector<std::uint64_t>& Windows() {
    static const std::vector<std::uint64_t> windows = AllWindows();
    return windows;
}

Watch* g_watch = nullptr;

} // namespace

std::vector<std::string> Secrets() {
    std::vector<std::string> secrets;
    for (const char* const who : {"near", "away"}) {
        for (const char* const stream : {"audio", "video", "slide"}) {
            unsigned char key[baseSDP::kKeyLength];
            unsigned char salt[baseSDP::kSaltLength];
            support::WriteKey(key, salt, who, stream);
            std::string text;
            GetSRTPKey(text, key, salt);
            secrets.emplace_back(key, key + sizeof key);
            secrets.emplace_back(salt, salt + sizeof salt);
            secrets.push_back(text);
        }
    }
    return secrets;
}

// Volatile reads, because the compiler may assume anything about the bytes of a destroyed object.
std::size_t CountWindows(const volatile unsigned char* bytes, std::size_t size) {
    std::size_t found = 0;
    unsigned char window[sizeof(std::uint64_t)];
    for (std::size_t at = 0; at + sizeof window <= size; ++at) {
        for (std::size_t n = 0; n < sizeof window; ++n) {
            window[n] = bytes[at + n];
        }
        if (std::binary_search(Windows().begin(), Windows().end(), Window(window))) {
            ++found;
        }
    }
    return found;
}

Watch::Watch() {
    Windows();
    g_watch = this;
    allocations::counter.beforeFree = Inspect;
}

Watch::~Watch() {
    allocations::counter.beforeFree = nullptr;
    g_watch = nullptr;
}

void Watch::Inspect(const unsigned char* block, std::size_t size) {
    ++g_watch->m_blocks;
    const std::size_t found = CountWindows(block, size);
    if (found != 0 && g_watch->m_dirty++ == 0) {
        g_watch->m_length = std::min(size, sizeof g_watch->m_first);
        std::memcpy(g_watch->m_first, block, g_watch->m_length);
    }
}

std::string Watch::first() const {
    return std::string(m_first, m_first + m_length);
}

} // namespace wipe
