// Keys that are known and that no input can hold: they are made from a hash of the input itself, so a text
// that names one would have to be its own hash. Wherever a window of such a key turns up, it leaked.
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

/// A number that depends on every byte.
std::uint64_t Hash(const std::uint8_t* data, std::size_t size);

/// The next of a row of numbers without a visible pattern.
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

/// The far end's text with the key put behind every "inline:" of any letter case, and into the key's place of
/// every line that is read as an "a=crypto:" line, whatever seven characters stand where "inline:" should.
/// Elsewhere the text stays as it is: a far end that writes its key into an address raises no alarm.
std::string Plant(const std::string& text, const Key& key);

/// The same, and the key is put into every third word of that length, which in a "c=" line is the address and
/// in an "m=" line the transport, and into every second word of a line with "a=rtpmap": the command hides a
/// key wherever it shows one.
std::string PlantInWords(const std::string& text, const Key& key);

/// Watches texts for keys: for eight bytes of a key's material in a row, as they are or as hexadecimal
/// digits, and for eight characters in a row of its base64 text.
class Watch {
public:
    void Add(const Key& key);

    /// The first window of a key that stands in the text; empty when there is none.
    std::string Find(std::string_view text) const;

    /// No window stands in the text; `what` names the text.
    void Check(const char* what, std::string_view text) const;

private:
    static constexpr std::size_t kWindow = 8;

    void Add(const std::string& secret, std::size_t length, std::size_t step);

    // A text is searched for every window in one pass: the table tells at nearly every place that none
    // begins.
    std::bitset<65536> m_seen;
    std::vector<std::pair<std::uint64_t, std::string>> m_windows; ///< their first eight bytes as a number
};

/// Runs a target with a secret made from its input. Eight characters can meet by chance, once in some
/// billions of runs: a window that is found runs the target again with another secret, and only a second find
/// counts.
void RunWithSecret(const std::uint8_t* data, std::size_t size, void (*run)(Input, std::uint64_t));

} // namespace fuzz
