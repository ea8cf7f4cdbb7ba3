// Known keys that no input contains, because they are made from a hash of the input. Wherever a part of such
// a key appears in an output, it leaked.
#pragma once

#include "Input.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

/// A hash of the bytes.
std::uint64_t Hash(const std::uint8_t* data, std::size_t size);

/// The next pseudo-random number.
std::uint64_t NextRandom(std::uint64_t& state);

/// 16 key bytes and 14 salt bytes.
struct Key {
    explicit Key(std::uint64_t secret);
    Key(const unsigned char* key, const unsigned char* salt);

    std::string material; ///< 30 bytes
    std::string text;     ///< the same in base64, 40 characters
};

/// Base64 without padding of a text whose length is a multiple of three.
std::string Base64(std::string_view bytes);

/// Returns the far end's text with the key after every "inline:" in any letter case, and as the key of every
/// line that is read as an "a=crypto:" line, whatever seven characters precede it. The rest of the text is
/// unchanged, so a far end that writes its own key into an address is not reported.
std::string Plant(const std::string& text, const Key& key);

/// The same, and the key also replaces the third word of each line if it has at least the key's length, which
/// is the address of a "c=" line and the transport of an "m=" line; in a line with "a=rtpmap" it replaces the
/// second word. The command must hide a key in all of these places.
std::string PlantInWords(const std::string& text, const Key& key);

/// Searches texts for windows of keys: eight consecutive bytes of a key's material, raw or as hexadecimal
/// digits, or eight consecutive characters of its base64 text.
class Watch {
public:
    void Add(const Key& key);

    /// Returns the first window of a key that occurs in the text, or an empty text.
    std::string Find(std::string_view text) const;

    /// Requires that no window occurs in the text; `what` names the text.
    void Check(const char* what, std::string_view text) const;

private:
    static constexpr std::size_t kWindow = 8;

    void Add(const std::string& secret, std::size_t length, std::size_t step);

    // One pass searches the text for all windows: at nearly every offset the table shows that none begins
    // there.
    std::bitset<65536> m_seen;
    std::vector<std::pair<std::uint64_t, std::string>> m_windows; ///< their first eight bytes as a number
};

/// Runs a target with a secret made from its input. A window can match by chance, once in some billions of
/// runs. After a match the target runs again with another secret, and only a second match is reported.
void RunWithSecret(const std::uint8_t* data, std::size_t size, void (*run)(Input, std::uint64_t));

} // namespace fuzz
