// What `cmsdp redact` replaces: the places of keys, addresses, names and ICE credentials in a text.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace cmsdp {

/// What a piece of a text is. Pieces of one kind are replaced in one way.
enum class OriginalKind {
    kKey,        ///< SRTP key text, or any other key
    kCredential, ///< ICE user fragment or password
    kFoundation, ///< of an ICE candidate: some ends make it of the address
    kUser,       ///< user name, or canonical name of an RTP source
    kWord,       ///< word of a session name or of another text for people
    kPage,       ///< address of a page, from "u="
    kHost,       ///< host name
    kAddress4,   ///< IPv4 address
    kAddress6,   ///< IPv6 address
    kNoAddress   ///< digits and dots that are no address
};

/// A piece of the text to replace. `text` is a view of it.
struct Original {
    std::size_t offset = 0;
    std::string_view text;
    OriginalKind kind = OriginalKind::kWord;
};

/// The pieces of a text in ascending order; they do not overlap. A text that is replaced in one place is a
/// piece wherever it occurs as a word; of a description only keys, long credentials, hosts with a dot, and
/// the attributes "a=x-". Without `addresses` only those that are keys. What identifies nobody is left out:
/// 0.0.0.0, "::", "::1", the name "-", a key of zeros.
std::vector<Original> FindOriginals(std::string_view text, bool addresses);

/// The addresses and the pairs user@host of a line, wherever they are; `offset` is that of the line.
void FindAddressTexts(std::string_view line, std::size_t offset, std::vector<Original>& found);

/// Base64 text as long as a key, as Secrets::Hide sees it. In format parameters it configures a codec (RFC
/// 6184, 8.1: sprop-parameter-sets) and is none.
void FindKeyTexts(std::string_view line, std::size_t offset, std::vector<Original>& found);

/// What a line of a SIP message names: display names, URIs, the sender in "Via:", and what a client
/// authenticates with. The line may be one of a log, with something in front of the header.
void FindMessageTexts(std::string_view line, std::size_t offset, std::vector<Original>& found);

/// Adds the places where the keys, credentials and names found so far occur once more.
void FindRepeats(std::string_view text, std::vector<Original>& found);

/// The kind of a word in the place of an address.
OriginalKind KindOfAddress(std::string_view word);

} // namespace cmsdp
