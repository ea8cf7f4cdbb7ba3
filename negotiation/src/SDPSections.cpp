// Stage: cut, a text to the session block and its sections.
// Input: any bytes. Output: the lines that this layer reads, each with its kind and value.
// Touches nothing but the list of repairs.
// Test: tests/negotiation/SDPSectionsTest.cpp
#include "SDPSections.h"

#include "SDPPrefix.h"
#include "SDPRepairs.h"
#include "SDPRepeat.h"
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
    {"a=sendrecv", sdp::kDirections[3].keyword, LineKind::Direction, SDPRow::Direction},
    {"a=sendonly", sdp::kDirections[1].keyword, LineKind::Direction, SDPRow::Direction},
    {"a=recvonly", sdp::kDirections[2].keyword, LineKind::Direction, SDPRow::Direction},
    {"a=inactive", sdp::kDirections[0].keyword, LineKind::Direction, SDPRow::Direction},
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
};
constexpr std::size_t kKindCount = std::size(kKinds);

constexpr Transport kTransports[] = {
    {"RTP/AVP", "RTP/SAVP"},
    {"RTP/AVPF", "RTP/SAVPF"},
};

/// Whether the component would take a line for another row than the one of kKinds that it begins with.
bool IsMisread(std::string_view text, std::size_t kind) {
    // Only a second "=" can do that, and most lines have none.
    const std::size_t after = text.size() > 1 && text[1] == '=' ? 2 : 0;
    if (sdp::FindByte(text, '=', after) == text.size()) {
        return false;
    }
    const SDPRow other = sdp::StartsWith(text, "a=") ? SDPRow::Direction : SDPRow::None;
    return sdp::RowOf(text) != (kind == kKindCount ? other : kKinds[kind].row);
}

Line ReadLine(std::string_view text, Repairs& repairs) {
    const std::size_t index = RowAt<kKinds>(text);
    if (IsMisread(text, index)) {
        repairs.Note(RepairId::KeywordInside);
    }
    if (index == kKindCount) {
        return {text, {}, LineKind::None};
    }
    const std::string_view value = Trim(sdp::After(text, kKinds[index].keyword.size()));
    const bool isLonger = kKinds[index].kind == LineKind::Direction && !value.empty();
    return {text, value, isLonger ? LineKind::None : kKinds[index].kind};
}

/// A port as a number. The number of ports after a "/" asks for a layered stream; the first port is enough.
std::int32_t PortNumber(std::string_view port) {
    constexpr std::int32_t highest = 65535;
    const std::int32_t number = NumberOrNone(port.substr(0, port.find('/')));
    return number < 0 || number > highest ? 0 : number;
}

/// The role of a section without content lines.
Role MediaRole(const Section& section) {
    if (section.pair != nullptr) {
        return EqualsNoCase(section.media, "audio")   ? kAudio
               : EqualsNoCase(section.media, "video") ? kMain
                                                      : kNoRole;
    }
    const bool isFloor =
        EqualsNoCase(section.media, "application") && EqualsNoCase(section.transport, "UDP/BFCP");
    return isFloor ? kFloor : kNoRole;
}

Section ReadMedia(std::string_view value, std::size_t lines) {
    sdp::Words words(value);
    const auto first = static_cast<std::uint32_t>(lines);
    Section section{words.Next(), words.Next(), words.Next(), {}, first, first, nullptr, false, kNoRole, 0};
    section.formats = Trim(value.substr(value.size() - words.Left()));
    section.number = PortNumber(section.port);
    section.pair = FindTransport(section.transport);
    section.isSecure = section.pair != nullptr && EqualsNoCase(section.transport, section.pair->secure);
    section.role = MediaRole(section);
    return section;
}

void AddLine(Section& section, const Line& line, Repairs& repairs) {
    ++section.last;
    if (section.role == kMain && line.kind == LineKind::Content &&
        HasContent(line.value, "slides", repairs)) {
        section.role = kSlides;
    }
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

const Transport* FindTransport(std::string_view name) {
    for (const Transport& transport : kTransports) {
        if (EqualsNoCase(name, transport.plain) || EqualsNoCase(name, transport.secure)) {
            return &transport;
        }
    }
    return nullptr;
}

bool IsSecure(std::string_view transport) {
    const Transport* const pair = FindTransport(transport);
    return pair != nullptr && EqualsNoCase(transport, pair->secure);
}

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
    constexpr std::size_t usualSections = 4;
    description.lines.reserve(text.size() / usualLineLength);
    description.sections.reserve(usualSections);
    EachLine(text, repairs, [&](std::string_view content) {
        const Line line = ReadLine(content, repairs);
        if (line.kind == LineKind::Media) {
            description.sections.push_back(ReadMedia(line.value, description.lines.size()));
        } else if (line.kind != LineKind::None) {
            description.lines.push_back(line);
            if (!description.sections.empty()) {
                AddLine(description.sections.back(), line, repairs);
            }
        }
    });
    return description;
}

bool EqualLetters(std::string_view a, std::string_view b) noexcept {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [lower](char x, char y) { return lower(x) == lower(y); });
}

std::int32_t NumberOrNone(std::string_view text) noexcept {
    constexpr std::size_t safe = 9;
    if (text.empty() || text.size() > safe) {
        return -1;
    }
    std::int32_t number = 0;
    for (const char c : text) {
        if (!sdp::IsDigit(c)) {
            return -1;
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace negotiation
