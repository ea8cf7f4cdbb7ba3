// Stage: shape, the far end's words in our texts.
// Input: sections and lines of the far end, any bytes. Output: the words that a strict reader takes.
// Touches the labels of a session.
// Test: tests/negotiation/SDPRepeatTest.cpp
#include "SDPRepeat.h"

#include <algorithm>
#include <bitset>
#include <set>

namespace negotiation {
namespace {

constexpr auto TokenBytes() {
    constexpr std::string_view separators = "\"(),/:;<=>?@[\\]";
    std::array<bool, 256> bytes{};
    for (std::size_t byte = '!'; byte < 0x7F; ++byte) {
        bytes[byte] = separators.find(static_cast<char>(byte)) == std::string_view::npos;
    }
    return bytes;
}

/// A token of RFC 4566, 9.
bool IsToken(std::string_view word) {
    static constexpr auto kTokenBytes = TokenBytes();
    return !word.empty() && std::all_of(word.begin(), word.end(),
                                        [](char c) { return kTokenBytes[static_cast<unsigned char>(c)]; });
}

/// Calls `isFound(piece)` for the pieces of a list until it is true.
template <typename IsFound>
bool AnyPiece(std::string_view list, char separator, IsFound isFound) {
    while (!list.empty()) {
        if (isFound(TakePiece(list, separator))) {
            return true;
        }
    }
    return false;
}

bool AreDigits(std::string_view word) {
    return !word.empty() && std::all_of(word.begin(), word.end(), sdp::IsDigit);
}

/// An id of floor control: 32 bits, ten digits (RFC 4582, 5.1).
bool IsId(std::string_view word) {
    constexpr std::size_t longest = 10;
    return AreDigits(word) && word.size() <= longest;
}

/// "2" or "2 mstrm:9 10", the words between single blanks (RFC 4583, 6).
bool IsFloor(std::string_view value) {
    if (!IsId(TakePiece(value, ' '))) {
        return false;
    }
    if (value.empty()) {
        return true;
    }
    std::string_view stream = TakePiece(value, ' ');
    return IsToken(TakePiece(stream, ':')) && IsToken(stream) &&
           !AnyPiece(value, ' ', [](std::string_view word) { return !IsToken(word); });
}

/// The id that a value begins with; empty for none.
std::string_view IdOf(std::string_view value) {
    const std::string_view id = TakePiece(value, ' ');
    return IsId(id) ? id : std::string_view();
}

} // namespace

bool CanBeRepeated(const Section& section) {
    return IsToken(section.media);
}

std::string_view RepeatedTransport(const Section& section) {
    const std::string_view transport = section.transport;
    const bool isOne = section.pair != nullptr ||
                       (!transport.empty() && transport.back() != '/' &&
                        !AnyPiece(transport, '/', [](std::string_view word) { return !IsToken(word); }));
    return isOne ? transport : "RTP/AVP";
}

std::string RepeatedFormats(const Section& section) {
    const bool isRtp = RepeatedTransport(section).find("RTP/") != std::string_view::npos;
    std::set<std::string_view> others;
    std::bitset<kMaxNumber + 1> numbers;
    std::string formats;
    formats.reserve(section.formats.size());
    sdp::Words words(section.formats);
    for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
        const std::int32_t number = PayloadNumber(word);
        const auto bit = static_cast<std::size_t>(std::max(number, 0));
        const bool isNew =
            number >= 0 ? !numbers[bit] : !isRtp && IsToken(word) && others.insert(word).second;
        if (isNew) {
            numbers[bit] = numbers[bit] || number >= 0;
            formats.append(formats.empty() ? "" : " ").append(word);
        }
    }
    return formats;
}

std::string RepeatedTimes(Lines session) {
    std::string times;
    for (const Line& line : session) {
        if (line.kind != LineKind::Time) {
            continue;
        }
        sdp::Words words(line.value);
        const std::string_view start = words.Next();
        const std::string_view stop = words.Next();
        if (AreDigits(start) && AreDigits(stop) && words.Next().empty()) {
            times.append("t=").append(start).append(" ").append(stop).append("\r\n");
        }
    }
    return times.empty() ? "t=0 0\r\n" : times;
}

std::string_view RepeatedValue(Lines lines, LineKind kind) {
    const std::string_view value = lines.Value(kind);
    if (kind == LineKind::Label) {
        return IsToken(value) ? value : std::string_view();
    }
    // A floor whose streams cannot be named keeps its id.
    return kind == LineKind::FloorId && IsFloor(value) ? value : IdOf(value);
}

std::string_view RepeatedContent(Lines lines) {
    std::string_view content;
    for (const Line& line : lines) {
        const bool isMain = line.kind == LineKind::Content && AnyPiece(line.value, ',', [&](auto word) {
                                if (content.empty() && IsToken(word)) {
                                    content = word;
                                }
                                return word == "main";
                            });
        if (isMain) {
            return {};
        }
    }
    return content;
}

bool HasContent(std::string_view list, std::string_view word, Repairs& repairs) {
    return AnyPiece(list, ',', [&](std::string_view piece) {
        return piece == word || (EqualsNoCase(piece, word) && repairs.Use(RepairId::LetterCase));
    });
}

void KeepLabelsApart(Session& session) {
    const std::size_t main = session.Open(kMain);
    const std::size_t slides = session.Open(kSlides);
    if (main == session.slots.size() || slides == session.slots.size()) {
        return;
    }
    constexpr std::string_view ownMain = sdp::kVideoRoles[0].label;
    constexpr std::string_view ownSlides = sdp::kVideoRoles[1].label;
    const auto labelOf = [&session](std::size_t place, std::string_view own) {
        const std::string& given = session.slots[place].label;
        return given.empty() ? own : std::string_view(given);
    };
    const std::string_view label = labelOf(main, ownMain);
    if (label == labelOf(slides, ownSlides)) {
        session.slots[slides].label = label == ownSlides ? ownMain : ownSlides;
    }
}

} // namespace negotiation
