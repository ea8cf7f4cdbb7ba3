#include "Keys.h"

#include "Judged.h"
#include "Laws.h"
#include "SDPLines.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

constexpr std::size_t kKeyText = 40;
constexpr std::string_view kMethod = "inline:";

std::string Hexadecimal(std::string_view bytes, const char* digits) {
    std::string out;
    for (const char c : bytes) {
        out += digits[static_cast<unsigned char>(c) >> 4U];
        out += digits[static_cast<unsigned char>(c) & 0xfU];
    }
    return out;
}

/// Eight bytes as one number.
std::uint64_t Load(const char* at) {
    std::uint64_t number = 0;
    std::memcpy(&number, at, sizeof number);
    return number;
}

/// The index of a window in the table of a Watch.
std::size_t Place(std::uint64_t window) {
    return (window * 0x9e3779b97f4a7c15U) >> 48U;
}

/// True during the first run, when a match may still be a coincidence.
bool g_isSuspicionOnly = false;

struct Suspicion {};

bool IsWhite(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

/// Returns the word of that number, counted from 1, or an empty word if there are fewer.
std::string_view Word(std::string_view line, int number) {
    std::string_view word;
    std::size_t at = 0;
    for (int n = 0; n < number; ++n) {
        while (at < line.size() && IsWhite(line[at])) {
            ++at;
        }
        const std::size_t begin = at;
        while (at < line.size() && !IsWhite(line[at])) {
            ++at;
        }
        word = line.substr(begin, at - begin);
    }
    return word;
}

/// The number of the word that is read as a key, counted from 1, or 0 for none.
int WordThatIsRead(std::string_view line) {
    return sdp::RowOf(line) == SDPRow::Crypto ? 3 : 0;
}

int WordThatIsShown(std::string_view line) {
    return sdp::RowOf(line) == SDPRow::Rtpmap ? 2 : 3;
}

/// Accepts any letter case, as the masking does.
std::string PlantAfterMethod(const std::string& text, const Key& key) {
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
    std::string out;
    auto from = text.begin();
    while (true) {
        const auto found = std::search(from, text.end(), kMethod.begin(), kMethod.end(), same);
        if (found == text.end()) {
            return out.append(from, found);
        }
        const auto after = found + kMethod.size();
        out.append(from, after).append(key.text);
        from = after;
    }
}

std::string PlantIn(const std::string& text, const Key& key, int (*number)(std::string_view)) {
    std::string out = PlantAfterMethod(text, key);
    std::size_t from = 0;
    for (std::size_t end = out.find("\r\n"); end != std::string::npos; end = out.find("\r\n", from)) {
        const std::string_view line = std::string_view(out).substr(from, end - from);
        const std::string_view word = Word(line, number(line));
        if (word.size() >= kMethod.size() + kKeyText) {
            const auto at = static_cast<std::size_t>(word.data() - out.data()) + kMethod.size();
            out.replace(at, kKeyText, key.text);
        }
        from = end + 2;
    }
    return out;
}

} // namespace

std::uint64_t Hash(const std::uint8_t* data, std::size_t size) {
    std::uint64_t hash = 0xcbf29ce484222325U + size;
    for (std::size_t i = 0; i < size; ++i) {
        hash = (hash ^ data[i]) * 0x100000001b3U;
    }
    return hash;
}

std::uint64_t NextRandom(std::uint64_t& state) {
    state += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31U);
}

std::string Base64(std::string_view bytes) {
    static const char* const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i + 2 < bytes.size(); i += 3) {
        const auto byte = [&](std::size_t n) {
            return std::uint32_t{static_cast<unsigned char>(bytes[i + n])};
        };
        const std::uint32_t three = byte(0) << 16U | byte(1) << 8U | byte(2);
        for (const unsigned shift : {18U, 12U, 6U, 0U}) {
            out += alphabet[(three >> shift) & 63U];
        }
    }
    return out;
}

Key::Key(std::uint64_t secret) {
    while (material.size() < baseSDP::kKeyLength + baseSDP::kSaltLength) {
        material += static_cast<char>(NextRandom(secret) & 0xffU);
    }
    text = Base64(material);
}

Key::Key(const unsigned char* key, const unsigned char* salt)
    : material(std::string(key, key + baseSDP::kKeyLength) + std::string(salt, salt + baseSDP::kSaltLength)),
      text(Base64(material)) {}

std::string Plant(const std::string& text, const Key& key) {
    return PlantIn(text, key, WordThatIsRead);
}

std::string PlantInWords(const std::string& text, const Key& key) {
    return PlantIn(text, key, WordThatIsShown);
}

void Watch::Add(const Key& key) {
    Add(key.material, kWindow, 1);
    Add(key.text, kWindow, 1);
    // Two digits per byte.
    Add(Hexadecimal(key.material, "0123456789abcdef"), kWindow * 2, 2);
    Add(Hexadecimal(key.material, "0123456789ABCDEF"), kWindow * 2, 2);
}

void Watch::Add(const std::string& secret, std::size_t length, std::size_t step) {
    for (std::size_t at = 0; at + length <= secret.size(); at += step) {
        m_windows.emplace_back(Load(secret.data() + at), secret.substr(at, length));
        m_seen[Place(m_windows.back().first)] = true;
    }
}

std::string Watch::Find(std::string_view text) const {
    for (std::size_t at = 0; at + kWindow <= text.size(); ++at) {
        const std::uint64_t here = Load(text.data() + at);
        if (!m_seen[Place(here)]) {
            continue;
        }
        for (const auto& [start, window] : m_windows) {
            if (start == here && text.substr(at, window.size()) == window) {
                return window;
            }
        }
    }
    return {};
}

void Watch::Check(const char* what, std::string_view text) const {
    constexpr const char* law = "no part of a key leaves the component";
    if (!IsInForce(law)) {
        return;
    }
    const std::string found = Find(text);
    if (!found.empty() && g_isSuspicionOnly) {
        throw Suspicion();
    }
    if (!found.empty()) {
        Broken(law, "window of the key", found, what, text);
    }
}

void RunWithSecret(const std::uint8_t* data, std::size_t size, void (*run)(Input, std::uint64_t)) {
    std::uint64_t secret = Hash(data, size);
    g_isSuspicionOnly = true;
    try {
        run(Input(data, size), secret);
        return;
    } catch (const Suspicion&) {
        g_isSuspicionOnly = false;
    }
    NextRandom(secret);
    run(Input(data, size), ~secret);
}

} // namespace fuzz
