// Stage: cut, a text to the session block and its sections.
// Input: any bytes. Output: the lines that this layer reads, each with its kind and value.
// Touches nothing but the list of repairs.
// Test: tests/negotiation/SDPSectionsTest.cpp
#include "SDPSections.h"

#include "SDPRepairs.h"
#include "SDPTables.h"

#include <algorithm>

namespace negotiation {
namespace {

struct Kind {
    std::string_view example;
    std::string_view keyword;
    LineKind kind;
    SDPRow row; ///< what the component takes such a line for
};

constexpr Kind kKinds[] = {
    {"a=rtpmap:97 H264/90000", "a=rtpmap:", LineKind::Rtpmap, SDPRow::Rtpmap},
    {"a=fmtp:97 packetization-mode=1", "a=fmtp:", LineKind::Fmtp, SDPRow::Fmtp},
    {"a=candidate:1 1 UDP 2130706431 192.0.2.10 49170 typ host", "a=candidate:", LineKind::Candidate,
     SDPRow::Candidate},
    {"c=IN IP4 192.0.2.10", "c=", LineKind::Connection, SDPRow::Connection},
    {"m=audio 49170 RTP/AVP 0 101", "m=", LineKind::Media, SDPRow::Media},
    {"b=TIAS:1920000", "b=", LineKind::Bandwidth, SDPRow::Bandwidth},
    {"t=0 0", "t=", LineKind::Time, SDPRow::None},
    {"a=crypto:1 AES_CM_128_HMAC_SHA1_80 inline:", "a=crypto:", LineKind::Crypto, SDPRow::Crypto},
    {"a=ice-ufrag:F7gI", "a=ice-ufrag:", LineKind::IceUfrag, SDPRow::Ice},
    {"a=ice-pwd:x9cml/YzichV2+XlhiMu8g", "a=ice-pwd:", LineKind::IcePwd, SDPRow::Ice},
    {"a=ice-options:trickle", "a=ice", LineKind::Ice, SDPRow::Ice},
    {"a=content:slides", "a=content:", LineKind::Content, SDPRow::Content},
    {"a=label:9", "a=label:", LineKind::Label, SDPRow::Direction},
    {"a=rtcp:49171 IN IP4 192.0.2.10", "a=rtcp:", LineKind::Rtcp, SDPRow::Direction},
    {"a=ptime:20", "a=ptime:", LineKind::Ptime, SDPRow::Direction},
    {"a=floorctrl:c-s", "a=floorctrl:", LineKind::FloorControl, SDPRow::FloorControl},
    {"a=confid:15", "a=confid:", LineKind::ConferenceId, SDPRow::ConferenceId},
    {"a=userid:15", "a=userid:", LineKind::UserId, SDPRow::UserId},
    {"a=floorid:2 mstrm:9", "a=floorid:", LineKind::FloorId, SDPRow::Direction},
    // The four directions are told apart by sdp::kDirections.
    {"a=sendrecv", "a=", LineKind::Direction, SDPRow::Direction},
};
constexpr std::size_t kKindCount = std::size(kKinds);

bool IsDirection(std::string_view line) {
    return std::any_of(std::begin(sdp::kDirections), std::end(sdp::kDirections),
                       [line](const sdp::Direction& direction) { return direction.keyword == line; });
}

Line ReadLine(std::string_view text, Repairs& repairs) {
    const std::size_t index = sdp::RowAtStart<kKinds>(text, std::make_index_sequence<kKindCount>());
    if (sdp::RowOf(text) != (index == kKindCount ? SDPRow::None : kKinds[index].row)) {
        repairs.Note(RepairId::KeywordInside);
    }
    if (index == kKindCount) {
        return {text, {}, LineKind::None};
    }
    const Kind& kind = kKinds[index];
    if (kind.kind == LineKind::Direction && !IsDirection(Trim(text))) {
        return {text, {}, LineKind::None};
    }
    return {text, Trim(sdp::Behind(text, kind.keyword.size())), kind.kind};
}

Section ReadMedia(std::string_view value, std::size_t lines) {
    sdp::Words words(value);
    const auto first = static_cast<std::uint32_t>(lines);
    Section section{words.Next(), words.Next(), words.Next(), {}, first, first};
    section.formats = Trim(value.substr(value.size() - words.Left()));
    return section;
}

/// Calls `visit(line)` for each line that is not empty. CR LF ends a line, and so do LF and CR alone when
/// that repair is on; the last line then needs no end.
template <typename Visit>
void EachLine(std::string_view text, Repairs& repairs, Visit visit) {
    if (!repairs.IsOn(RepairId::LineEnds)) {
        sdp::ForEachLine(text, [&](std::size_t at, std::size_t length) { visit(text.substr(at, length)); });
        return;
    }
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = sdp::FindEither(text, '\r', '\n', begin);
        const bool isCrLf = end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n';
        if (!isCrLf) {
            repairs.Note(RepairId::LineEnds);
        }
        if (end > begin) {
            visit(text.substr(begin, end - begin));
        }
        begin = end + (isCrLf ? 2 : 1);
    }
}

} // namespace

const Line* Lines::Find(LineKind kind) const {
    const Line* const found =
        std::find_if(m_first, m_last, [kind](const Line& line) { return line.kind == kind; });
    return found == m_last ? nullptr : found;
}

std::string_view Lines::Value(LineKind kind) const {
    const Line* const line = Find(kind);
    return line == nullptr ? std::string_view() : line->value;
}

Lines Description::Session() const {
    const std::size_t count = sections.empty() ? lines.size() : sections.front().first;
    return {lines.data(), lines.data() + count};
}

Description Cut(std::string_view text, Repairs& repairs) {
    constexpr std::size_t usualLineLength = 24;
    Description description;
    description.lines.reserve(text.size() / usualLineLength);
    EachLine(text, repairs, [&](std::string_view content) {
        const Line line = ReadLine(content, repairs);
        if (line.kind == LineKind::Media) {
            description.sections.push_back(ReadMedia(line.value, description.lines.size()));
        } else if (line.kind != LineKind::None) {
            description.lines.push_back(line);
            if (!description.sections.empty()) {
                ++description.sections.back().last;
            }
        }
    });
    return description;
}

std::string_view Trim(std::string_view text) noexcept {
    text.remove_prefix(sdp::FindNoBlank(text));
    while (!text.empty() && sdp::IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool EqualsNoCase(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
               return lower(x) == lower(y);
           });
}

std::string_view TakePiece(std::string_view& text, char separator) noexcept {
    const std::size_t length = sdp::FindByte(text, separator);
    const std::string_view piece = text.substr(0, length);
    text.remove_prefix(std::min(text.size(), length + 1));
    return piece;
}

std::int32_t NumberOrNone(std::string_view text) noexcept {
    constexpr std::size_t safe = 9;
    return text.empty() || text.size() > safe || sdp::Digits(text).size() != text.size() ? -1
                                                                                         : sdp::Number(text);
}

} // namespace negotiation
