// A description cut once into lines: the session block and one range of lines per "m=" line.
//
// Nothing is copied: every view points into the text, which has to outlive the cut.
// Test: tests/negotiation/SDPSectionsTest.cpp
#pragma once

#include "SDPLines.h"
#include "SDPText.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace negotiation {

class Repairs;

/// What a line begins with, as far as this layer reads it.
enum class LineKind : std::uint8_t {
    Connection,
    Rtpmap,
    Fmtp,
    Crypto,
    Candidate,
    IceUfrag,
    IcePwd,
    Ice, ///< the other "a=ice-" lines
    Content,
    FloorControl,
    ConferenceId,
    UserId,
    FloorId,
    Label,
    Rtcp,
    Ptime,
    Direction,
    Bandwidth,
    Time,
    Media,
    None ///< a line that nobody here reads
};

struct Line {
    std::string_view text;
    std::string_view value; ///< text after the keyword, without blanks around it
    LineKind kind;
};

/// A range of lines.
class Lines {
public:
    Lines(const Line* first, const Line* last) : m_first(first), m_last(last) {}
    const Line* begin() const { return m_first; }
    const Line* end() const { return m_last; }

    /// The first line of a kind; null for none.
    const Line* Find(LineKind kind) const;
    /// Value of the first line of a kind; empty for none.
    std::string_view Value(LineKind kind) const;

private:
    const Line* m_first;
    const Line* m_last;
};

/// What this side serves, one section each. The first three are indices of the component's key rows.
enum Role : std::uint8_t { kAudio, kMain, kSlides, kFloor, kRoles, kNoRole = kRoles };

/// The first word of the "m=" line of each role.
inline constexpr std::string_view kRoleMedia[kRoles] = {"audio", "video", "video", "application"};

/// A profile of RTP that this side supports, without and with SRTP.
struct Transport {
    std::string_view plain;
    std::string_view secure;
};

/// Finds the pair that a transport belongs to; null for every other transport.
const Transport* FindTransport(std::string_view name);
/// True for the secure one of a pair.
bool IsSecure(std::string_view transport);

/// One "m=" line and where the lines of its section begin and end.
struct Section {
    std::string_view media;     ///< "audio"
    std::string_view port;      ///< "49170"
    std::string_view transport; ///< "RTP/AVP"
    std::string_view formats;   ///< "0 101"
    std::uint32_t first;        ///< its first line after the "m=" line
    std::uint32_t last;         ///< one past its last line
    const Transport* pair;      ///< null: a transport that this side does not support
    bool isSecure;              ///< the secure one of the pair
    Role role;                  ///< by medium, transport and content; kNoRole for none
    std::int32_t number;        ///< the port as a number; 0 for one that is rejected or is no port
};

struct Description {
    std::vector<Line> lines;
    std::vector<Section> sections;

    /// The lines before the first "m=" line.
    Lines Session() const;
    Lines Of(const Section& section) const {
        return {lines.data() + section.first, lines.data() + section.last};
    }
};

/// Cuts a text. Lines that nobody reads are left out.
Description Cut(std::string_view text, Repairs& repairs);

/// A text without the white space around it.
inline std::string_view Trim(std::string_view text) noexcept {
    text.remove_prefix(sdp::FindNoBlank(text));
    while (!text.empty() && sdp::IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}
bool EqualLetters(std::string_view a, std::string_view b) noexcept;
/// Whether two texts are equal but for the case of ASCII letters. Most that are compared differ in length.
inline bool EqualsNoCase(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() && (a == b || EqualLetters(a, b));
}
/// The text up to a separator, which is cut off `text` together with the piece. The last piece ends the text.
inline std::string_view TakePiece(std::string_view& text, char separator) noexcept {
    const std::size_t length = sdp::FindByte(text, separator);
    const std::string_view piece = text.substr(0, length);
    text.remove_prefix(std::min(text.size(), length + 1));
    return piece;
}
/// The number that a text is; -1 when it is not one of at most nine digits.
std::int32_t NumberOrNone(std::string_view text) noexcept;

} // namespace negotiation
