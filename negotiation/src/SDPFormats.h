// What the payload formats of a section mean.
//
// Test: tests/negotiation/SDPFormatsTest.cpp
#pragma once

#include "SDPRepairs.h"
#include "SDPSections.h"
#include "SDPTables.h"

#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace negotiation {

/// What a payload number can mean to both sides. The audio codecs come first, in the order of
/// sdp::kAudioCodecs.
enum Meaning : std::uint8_t { kG722, kG7221, kG711U, kG729, kEvents, kMode1, kMode0, kMeanings };

/// The numbers under which the component reads and writes each of them.
inline constexpr std::array<std::int16_t, kMeanings> kOwnNumbers = {9, 104, 0, 18, 101, 97, 96};

/// The payload number of each meaning in one text; -1 for one that is not listed.
using Numbers = std::array<std::int16_t, kMeanings>;
inline constexpr Numbers kNoNumbers = {-1, -1, -1, -1, -1, -1, -1};

/// Payload numbers are seven bits wide (RFC 3550, 5.1).
inline constexpr std::int32_t kMaxNumber = 127;

struct Format {
    std::int16_t number;    ///< 0 to 127
    Meaning meaning;        ///< kMeanings: none that this side knows
    std::string_view name;  ///< "H264/90000"; empty without an rtpmap line
    std::string_view parms; ///< "packetization-mode=1;max-fs=3600"
    /// H.264: first four digits of profile-level-id, profile and constraints (RFC 6184, 8.1).
    std::string_view profile;
};

/// What each payload number of a section meant so far in the call; kMeanings: nothing.
using Bound = std::array<Meaning, kMaxNumber + 1>;

/// What is known of the numbers of a section.
struct Known {
    const Bound* bound = nullptr; ///< null: nothing
    bool isFixed = false;         ///< the stream runs: no number changes its codec (RFC 3264, 8.3.2)
};

/// The formats of one section, in "m=" line order. Tokens that are no payload number are left out.
class Formats {
public:
    Formats(const Section& section, Lines lines, Known known, Repairs& repairs);

    std::vector<Format>::const_iterator begin() const { return m_formats.begin(); }
    std::vector<Format>::const_iterator end() const { return m_formats.end(); }

    /// The first format of a meaning; null for none.
    const Format* Find(Meaning meaning) const;

private:
    Format* Of(std::string_view number);
    void ReadRtpmap(const Line& line, Repairs& repairs);
    void ReadFmtp(const Line& line, Repairs& repairs);

    struct Joined {
        const Format* format;
        std::string text;
    };

    std::vector<Format> m_formats;
    std::array<std::int32_t, kMaxNumber + 1> m_index; ///< index of a number in m_formats; -1: not listed
    std::list<Joined> m_joined;                       ///< parameters that came in several lines
};

/// Calls `visit(piece)` for each parameter of an fmtp text, blanks around it cut.
template <typename Visit>
void EachParameter(std::string_view parms, Visit visit) {
    while (!parms.empty()) {
        const std::string_view piece = Trim(TakePiece(parms, ';'));
        if (!piece.empty()) {
            visit(piece);
        }
    }
}

/// The payload number that a format token is, written without leading zeros; -1 for none.
std::int32_t PayloadNumber(std::string_view token);

/// Value of a parameter of an fmtp text, whose name counts in any case of letters (RFC 6838, 4.3); empty when
/// it is not there.
std::string_view Parameter(std::string_view parms, std::string_view key);

/// The two H.264 formats of a stream.
struct VideoFormats {
    const Format* first = nullptr;  ///< the one that is used
    const Format* second = nullptr; ///< the other packetization mode of the same profile; null for none
};

/// Baseline profile comes before every other, mode 1 before mode 0, then the order of the section.
/// @param takesMode1  whether this side supports mode 1; mode 0 is always supported (RFC 6184, 6.1)
VideoFormats ChooseH264(const Formats& formats, bool takesMode1);

} // namespace negotiation
