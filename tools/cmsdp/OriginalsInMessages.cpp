// What a SIP message in a log names: display names, URIs, and what a client authenticates with.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Originals.h"

#include "SipHeaders.h"
#include "Words.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace cmsdp {

namespace {

using Kind = OriginalKind;

constexpr std::size_t kNone = std::string_view::npos;

// One line, or a part of it between line ends that are written out.
struct Piece {
    std::string_view text;
    std::size_t offset;
    std::vector<Original>* found;

    void Add(std::string_view part, Kind kind) const {
        if (!part.empty()) {
            found->push_back({offset + static_cast<std::size_t>(part.data() - text.data()), part, kind});
        }
    }
};

bool IsWordCharacter(char c) {
    return IsBase64(c) && c != '/' && c != '+';
}

std::string_view Stripped(std::string_view word) {
    constexpr std::string_view signs = "\"'\\,;<>()[]";
    const std::size_t begin = std::min(word.find_first_not_of(signs), word.size());
    return word.substr(begin, word.find_last_not_of(signs) + 1 - begin);
}

// "Alice Smith" <sip:alice@example.com>;tag=1, Bob <sip:bob@example.com>
void FindDisplayNames(const Piece& piece, std::string_view value) {
    for (std::size_t open = value.find('<'); open != kNone; open = value.find('<')) {
        std::string_view name = value.substr(0, open);
        const std::size_t quote = name.find('"');
        const std::size_t comma = name.rfind(',');
        name.remove_prefix(quote != kNone ? quote : comma != kNone ? comma : 0);
        for (const std::string_view word : WordsOf(name)) {
            if (word.find_first_of("@=") == kNone) {
                piece.Add(Stripped(word), Kind::kWord);
            }
        }
        value.remove_prefix(std::min(value.find('>', open), value.size() - 1) + 1);
    }
}

struct Parameter {
    std::string_view name;
    Kind kind;
};

// RFC 7616, 3.3 to 3.5
constexpr Parameter kDigest[] = {
    {"username", Kind::kUser},        {"realm", Kind::kHost},         {"nonce", Kind::kCredential},
    {"cnonce", Kind::kCredential},    {"opaque", Kind::kCredential},  {"response", Kind::kCredential},
    {"nextnonce", Kind::kCredential}, {"rspauth", Kind::kCredential},
};

// Digest username="alice", realm="example.com", nonce="9a7", response="e56"; Basic YWxpY2U6c2VjcmV0
void FindCredentials(const Piece& piece, std::string_view value) {
    const std::vector<std::string_view> words = WordsOf(value);
    const std::string scheme = words.empty() ? "" : LowerCase(words[0]);
    if (words.size() > 1 && (scheme == "basic" || scheme == "bearer")) {
        piece.Add(Stripped(words[1]), Kind::kCredential);
        return;
    }
    for (std::size_t equals = value.find('='); equals != kNone; equals = value.find('=', equals)) {
        std::size_t begin = equals;
        while (begin > 0 && IsWordCharacter(value[begin - 1])) {
            --begin;
        }
        const std::string name = LowerCase(value.substr(begin, equals - begin));
        std::size_t start = std::min(value.find_first_not_of("\\\"", equals + 1), value.size());
        const bool isQuoted = start > equals + 1;
        const std::size_t end =
            std::min(value.find_first_of(isQuoted ? "\\\"" : ", \t", start), value.size());
        const std::string_view held = value.substr(start, end - start);
        for (const Parameter& parameter : kDigest) {
            if (name == parameter.name && held.find('@') == kNone) {
                piece.Add(held, parameter.kind == Kind::kHost ? KindOfAddress(held) : parameter.kind);
            }
        }
        equals = std::max(end, equals + 1);
    }
}

struct Header {
    std::string_view name;
    void (*find)(const Piece&, std::string_view value);
};

constexpr Header kHeaders[] = {
    {"from", FindDisplayNames},
    {"f", FindDisplayNames},
    {"to", FindDisplayNames},
    {"t", FindDisplayNames},
    {"contact", FindDisplayNames},
    {"m", FindDisplayNames},
    {"reply-to", FindDisplayNames},
    {"referred-by", FindDisplayNames},
    {"diversion", FindDisplayNames},
    {"remote-party-id", FindDisplayNames},
    {"p-asserted-identity", FindDisplayNames},
    {"p-preferred-identity", FindDisplayNames},
    {"authorization", FindCredentials},
    {"proxy-authorization", FindCredentials},
    {"www-authenticate", FindCredentials},
    {"proxy-authenticate", FindCredentials},
    {"authentication-info", FindCredentials},
};

// A log may put something in front of a header; a compact name counts at the start of a line only.
void FindHeader(const Piece& piece) {
    bool isFirst = true;
    for (const std::string_view word : WordsOf(piece.text)) {
        const std::string_view named = word.substr(std::min(word.find_first_not_of(">|\"'"), word.size()));
        const std::size_t colon = named.find(':');
        const std::string name = colon == kNone ? "" : LowerCase(named.substr(0, colon));
        for (const Header& header : kHeaders) {
            if (name == header.name && (isFirst || name.size() > 1)) {
                const auto at = static_cast<std::size_t>(named.data() - piece.text.data()) + colon + 1;
                header.find(piece, piece.text.substr(at));
                return;
            }
        }
        isFirst = false;
    }
}

// sip:alice:secret@example.com, sip:example.com, tel:+16175556011
void FindUris(const Piece& piece) {
    static constexpr std::string_view schemes[] = {"sip:", "sips:", "tel:"};
    for (const std::string_view scheme : schemes) {
        for (std::size_t at = piece.text.find(scheme); at != kNone; at = piece.text.find(scheme, at)) {
            const std::size_t begin = at + scheme.size();
            const bool isWord = at == 0 || !IsWordCharacter(piece.text[at - 1]);
            at = begin;
            if (!isWord) {
                continue;
            }
            const std::size_t end =
                std::min(piece.text.find_first_of(" \t<>\"',\\", begin), piece.text.size());
            const std::string_view rest = piece.text.substr(begin, end - begin);
            const std::size_t sign = rest.find('@');
            const std::string_view host = rest.substr(0, rest.find_first_of(":;?/[]"));
            if (sign != kNone) {
                piece.Add(rest.substr(0, sign), Kind::kUser);
            } else if (host != "0.0.0.0") {
                piece.Add(host, scheme == "tel:" ? Kind::kUser : KindOfAddress(host));
            }
            at = end;
        }
    }
}

// Via: SIP/2.0/UDP client.example.com:5060;branch=z9hG4bK74bf9
void FindSender(const Piece& piece) {
    constexpr std::string_view protocol = "SIP/2.0/";
    const std::size_t at = piece.text.find(protocol);
    const std::vector<std::string_view> words =
        at == kNone ? std::vector<std::string_view>() : WordsOf(piece.text.substr(at));
    if (words.size() > 1) {
        const std::string_view host = words[1].substr(0, words[1].find_first_of(":;,["));
        if (host != "0.0.0.0") {
            piece.Add(host, KindOfAddress(host));
        }
    }
}

// Offset of the next line end that is written out, at or after `at`.
std::size_t WrittenEnd(std::string_view line, std::size_t at) {
    std::size_t sign = line.find('\\', at);
    while (sign < line.size() && line.substr(sign + 1, 1) != "r" && line.substr(sign + 1, 1) != "n") {
        sign = line.find('\\', sign + 1);
    }
    return std::min(sign, line.size());
}

} // namespace

void FindMessageTexts(std::string_view line, std::size_t offset, std::vector<Original>& found) {
    for (std::size_t begin = 0; begin < line.size();) {
        const std::size_t end = WrittenEnd(line, begin);
        const Piece piece = {line.substr(begin, end - begin), offset + begin, &found};
        FindHeader(piece);
        FindUris(piece);
        FindSender(piece);
        begin = end + 2;
    }
}

} // namespace cmsdp
