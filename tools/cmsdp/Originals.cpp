// Keys are found by the rule of Redact.h, everything else by its place in a line or by its form.
//
// Tests: tests/tool/redact.cases, RedactVerbTest.cpp
#include "Originals.h"

#include "Redact.h"
#include "Words.h"

#include <algorithm>
#include <string>

namespace cmsdp {

namespace {

using Kind = OriginalKind;

// A line that is being searched.
struct Line {
    std::string_view text;
    std::vector<std::string_view> words; // after the start of the row
    std::string_view value;              // all of them, with the blanks between
    std::size_t offset = 0;              // of the line in the text
    std::vector<Original>* found = nullptr;

    void Add(std::string_view piece, Kind kind) const {
        if (!piece.empty()) {
            const auto at = static_cast<std::size_t>(piece.data() - text.data());
            found->push_back({offset + at, piece, kind});
        }
    }
    std::string_view Word(std::size_t index) const {
        return index < words.size() ? words[index] : std::string_view();
    }
};

void AddAddress(const Line& line, std::string_view word) {
    const std::string_view address = word.substr(0, word.find_first_of("/%")); // TTL, zone
    if (address != "0.0.0.0" && address != "::" && address != "::1" && address != "*") {
        line.Add(address, KindOfAddress(address));
    }
}

void FindOrigin(const Line& line) {
    if (line.Word(0) != "-") {
        line.Add(line.Word(0), Kind::kUser);
    }
    AddAddress(line, line.Word(5));
}

void FindWords(const Line& line) {
    for (const std::string_view word : line.words) {
        if (KindOfAddress(word) == Kind::kAddress4) { // a line that is read as "c=" has its address here
            AddAddress(line, word);
        } else if (word != "-" && word.find('@') == std::string_view::npos) {
            line.Add(word, Kind::kWord);
        }
    }
}

void FindPages(const Line& line) {
    for (const std::string_view word : line.words) {
        line.Add(word, Kind::kPage);
    }
}

void FindConnection(const Line& line) {
    AddAddress(line, line.Word(2));
}

void FindRtcp(const Line& line) {
    AddAddress(line, line.Word(3));
}

void FindCandidate(const Line& line) {
    line.Add(line.Word(0), Kind::kFoundation);
    AddAddress(line, line.Word(4));
    for (std::size_t i = 5; i + 1 < line.words.size(); ++i) {
        if (line.words[i] == "raddr") {
            AddAddress(line, line.words[i + 1]);
        } else if (line.words[i] == "ufrag") {
            line.Add(line.words[i + 1], Kind::kCredential);
        }
    }
}

void FindCandidatesOfPeer(const Line& line) {
    for (std::size_t i = 1; i < line.words.size(); i += 3) {
        AddAddress(line, line.words[i]);
    }
}

void FindCredential(const Line& line) {
    line.Add(line.Word(0), Kind::kCredential);
}

void FindSource(const Line& line) {
    constexpr std::string_view name = "cname:";
    if (line.Word(1).substr(0, name.size()) == name) {
        line.Add(line.Word(1).substr(name.size()), Kind::kUser);
    }
}

struct Place {
    std::string_view example;
    std::string_view start; // in small letters
    void (*find)(const Line&);
};

constexpr Place kPlaces[] = {
    {"o=alice 1 1 IN IP4 192.0.2.10", "o=", FindOrigin},
    {"s=Weekly meeting", "s=", FindWords},
    {"i=Room 5", "i=", FindWords},
    {"u=http://www.example.com/", "u=", FindPages},
    {"e=Alice <alice@example.com>", "e=", FindWords},
    {"p=+1 617 555-6011", "p=", FindWords},
    {"c=IN IP4 233.252.0.1/127", "c=", FindConnection},
    {"a=rtcp:53020 IN IP4 192.0.2.10", "a=rtcp:", FindRtcp},
    {"a=candidate:1 1 UDP 2130706431 192.0.2.10 49170 typ host", "a=candidate:", FindCandidate},
    {"a=remote-candidates:1 192.0.2.10 49170", "a=remote-candidates:", FindCandidatesOfPeer},
    {"a=ice-ufrag:F7gI", "a=ice-ufrag:", FindCredential},
    {"a=ssrc:314159 cname:alice@example.com", "a=ssrc:", FindSource},
};

bool BeginsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(), [](char want, char have) {
               return want == (have >= 'A' && have <= 'Z' ? static_cast<char>(have - 'A' + 'a') : have);
           });
}

bool FindPlace(std::string_view text, std::size_t offset, std::string_view begun,
               std::vector<Original>& found) {
    bool isFound = false;
    for (const Place& place : kPlaces) {
        if (BeginsWith(begun, place.start)) {
            const std::string_view value = begun.substr(place.start.size());
            place.find({text, WordsOf(value), value, offset, &found});
            isFound = true;
        }
    }
    return isFound;
}

// In a line of a log something is in front of the line of a description.
void FindPlaces(std::string_view text, std::size_t offset, std::vector<Original>& found) {
    const std::string_view trimmed = Trimmed(text);
    if (FindPlace(text, offset, trimmed, found) || LooksLikeSdp(trimmed)) {
        return;
    }
    for (std::string_view word : WordsOf(trimmed)) {
        word.remove_prefix(std::min(word.find_first_not_of(">|\"'"), word.size()));
        const auto at = static_cast<std::size_t>(word.data() - trimmed.data());
        if (FindPlace(text, offset, trimmed.substr(at), found)) {
            return;
        }
    }
}

// The name of a suite that nobody registered: a key text in base64 has no underscore.
bool IsLikeASuite(std::string_view text) {
    return text.find('_') != std::string_view::npos && std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
           });
}

// The text up to a line end that is written out, as in a program text.
std::string_view BeforeWrittenEnd(std::string_view text) {
    return text.substr(0, std::min(text.find("\\r"), text.find("\\n")));
}

// The key texts of what may hold a key, such as "KEY|2^20|1:4;inline:KEY|1:4" (RFC 4568, 6.1).
void AddKeyTexts(std::string_view text, const Hidden& hidden, std::vector<Original>& found) {
    constexpr std::string_view method = "inline:";
    const std::string_view word = BeforeWrittenEnd(text.substr(hidden.offset, hidden.length));
    const std::size_t end = hidden.offset + word.size();
    if (IsLikeASuite(word)) {
        return;
    }
    for (std::size_t begin = hidden.offset; begin < end;) {
        std::size_t stop = std::min(text.find(';', begin), end);
        std::string_view part = text.substr(begin, stop - begin);
        if (BeginsWith(part, method)) {
            part.remove_prefix(method.size());
        }
        const std::size_t bar = std::min(part.find('|'), part.size());
        found.push_back(
            {static_cast<std::size_t>(part.data() - text.data()), part.substr(0, bar), Kind::kKey});
        // Lifetime and key identifier are numbers; other text in their place may be a key out of place.
        const std::string_view rest = part.substr(bar);
        if (rest.find_first_not_of("0123456789|^:") != std::string_view::npos) {
            found.push_back({static_cast<std::size_t>(rest.data() - text.data()), rest, Kind::kKey});
        }
        begin = stop + 1;
    }
}

void DropOverlaps(std::vector<Original>& found) {
    std::stable_sort(found.begin(), found.end(),
                     [](const Original& a, const Original& b) { return a.offset < b.offset; });
    std::size_t end = 0;
    const auto isCovered = [&end](const Original& original) {
        if (original.text.empty() || original.offset < end) {
            return true;
        }
        end = original.offset + original.text.size();
        return false;
    };
    found.erase(std::remove_if(found.begin(), found.end(), isCovered), found.end());
}

} // namespace

std::vector<Original> FindOriginals(std::string_view text, bool addresses) {
    std::vector<Original> found;
    for (const Hidden& hidden : FindHidden(text)) {
        if (hidden.kind == SecretKind::kSrtpKey) {
            AddKeyTexts(text, hidden, found);
        } else if (hidden.kind == SecretKind::kOtherKey) {
            found.push_back({hidden.offset, text.substr(hidden.offset, hidden.length), Kind::kKey});
        } else if (addresses) {
            found.push_back({hidden.offset, text.substr(hidden.offset, hidden.length), Kind::kCredential});
        }
    }
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        const std::string_view line = text.substr(begin, end - begin);
        FindKeyTexts(line, begin, found);
        if (addresses) {
            FindPlaces(line, begin, found);
            if (!LooksLikeSdp(line)) {
                FindMessageTexts(line, begin, found);
            }
            FindAddressTexts(line, begin, found);
        }
        begin = end + 1;
    }
    DropOverlaps(found);
    FindRepeats(text, found);
    DropOverlaps(found);
    return found;
}

} // namespace cmsdp
