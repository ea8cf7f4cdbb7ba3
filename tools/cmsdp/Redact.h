// Keys are live: whoever has the text of a call has its sound and picture, and texts end up in reports. With
// the password of ICE a stranger passes its connectivity checks (RFC 8445, 7).
//
// Tests: tests/tool/RedactTest.cpp
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cmsdp {

/// What a secret opens.
enum class SecretKind {
    kSrtpKey,    ///< of an "a=crypto:" attribute, or after "inline:"
    kOtherKey,   ///< of a line "k=" or an attribute "a=key-mgmt:"
    kIcePassword ///< of an attribute "a=ice-pwd:"
};

/// A piece of a text that may hold a secret.
struct Hidden {
    std::size_t offset;
    std::size_t length;
    SecretKind kind;
};

/// The places of secrets, in ascending order: the rest of a word after "inline:", in any letter case, and the
/// third word of an "a=crypto:" attribute without it, because seven characters of that word are skipped
/// unread (RFC 4568, 9.1 calls for "inline:" there). Its second word counts too unless it names a suite:
/// anything else in that place may be the key of an attribute whose words are jumbled.
///
/// Secrets that are no SRTP keys: the rest of a word after "a=ice-pwd:" (RFC 8839, 5.4), the word after
/// "a=key-mgmt:mikey" (RFC 4567, 3), the rest of a line after "k=base64:" or another method (RFC 4566, 5.12).
std::vector<Hidden> FindHidden(std::string_view text);

/// The text with "***" in place of each secret that FindHidden finds.
std::string Redact(std::string_view text);

/// Hides secrets in everything that one run shows, and remembers whether there was anything to hide.
class Secrets {
public:
    explicit Secrets(bool show) : m_show(show) {}

    /// The text as it may be shown: redacted, and with "***" for every base64 text that is long enough for a
    /// key. A misread line makes an address or a transport of one. In messages about the local side no word
    /// of the far end occurs, and a path can be as long: those are redacted only.
    std::string Hide(std::string_view text);
    /// A key text as it may be shown: itself or "***".
    std::string HideKey(std::string_view key);
    /// True when something was hidden so far.
    bool hidden() const { return m_hidden; }

private:
    bool m_show;
    bool m_hidden = false;
};

/// What to tell a user to whom something was not shown.
extern const char* const kHiddenNote;

} // namespace cmsdp
