// Stage: prepare, the H.264 format of the repaired copy.
// Input: the format that is used. Output: its number, its rtpmap and its fmtp line as the component reads
// them. Appends to the text and to the list of repairs. The component takes a parameter for every name that
// occurs in it, and its last value counts.
// Test: tests/negotiation/SDPPrepareVideoTest.cpp
#include "SDPPrepare.h"

#include <algorithm>
#include <charconv>

namespace negotiation {
namespace {

/// The level as the component reads it: 1b is FF there, and 5.1 is its highest.
std::string_view LevelDigits(std::string_view profileLevelId, Repairs& repairs) {
    constexpr std::size_t length = 6;
    constexpr std::uint64_t highest = 51;
    constexpr std::uint64_t level1b = 9;
    constexpr std::uint64_t level11 = 11;
    constexpr std::uint64_t constraintSet3 = 0x10;
    const std::string_view written = profileLevelId.substr(std::min<std::size_t>(4, profileLevelId.size()));
    if (profileLevelId.size() != length) {
        return written;
    }
    const std::uint64_t level = sdp::HexNumber(written);
    const std::uint64_t profile = sdp::HexNumber(profileLevelId.substr(0, 2));
    const std::uint64_t constraints = sdp::HexNumber(profileLevelId.substr(2, 2));
    // RFC 6184, 8.1: in Baseline, Main and Extended level 11 with constraint_set3 is 1b, elsewhere 9 is.
    const bool isBelowHigh = profile == 0x42 || profile == 0x4D || profile == 0x58;
    if (level == level1b || (isBelowHigh && level == level11 && (constraints & constraintSet3) != 0)) {
        return repairs.Use(RepairId::UnlistedLevel) ? "FF" : written;
    }
    const bool isUnlisted = level > highest && level != 0xFF;
    return isUnlisted && repairs.Use(RepairId::UnlistedLevel) ? "33" : written;
}

/// Whether a parameter holds a keyword that takes the whole line away from its row [P01].
bool IsMisread(std::string_view piece) {
    return sdp::RowOf(piece) < SDPRow::Fmtp;
}

/// The row of a parameter's name, which counts in any case of letters; null for an unknown one.
const sdp::H264Parameter* KnownParameter(std::string_view name) {
    const auto* const found = std::find_if(
        std::begin(sdp::kH264Parameters), std::end(sdp::kH264Parameters),
        [name](const sdp::H264Parameter& parameter) { return EqualsNoCase(name, parameter.name); });
    return found == std::end(sdp::kH264Parameters) ? nullptr : found;
}

/// Whether the component would take an unknown parameter for a known one, "x-max-mbps" for "max-mbps".
bool IsMistaken(std::string_view name) {
    return std::any_of(
        std::begin(sdp::kH264Parameters), std::end(sdp::kH264Parameters),
        [name](const sdp::H264Parameter& parameter) { return sdp::Contains(name, parameter.name); });
}

/// Whether the record can hold a value: all but the level are numbers of 32 bits there.
bool FitsRecord(const sdp::H264Parameter& parameter, std::string_view value) {
    if (parameter.field == nullptr) {
        return !value.empty();
    }
    std::int32_t number = 0;
    const char* const last = value.data() + value.size();
    const auto [end, error] = std::from_chars(value.data(), last, number);
    return error == std::errc() && end == last && number >= 0;
}

/// Writes the known parameters of one format, each once: the first of a name decides, as in Parameter().
class VideoParameters {
public:
    VideoParameters(sdp::Writer& text, Repairs& repairs) : m_text(text), m_repairs(repairs) {}

    void Write(std::string_view piece) {
        if (IsMisread(piece) && m_repairs.Use(RepairId::KeywordInside)) {
            return;
        }
        std::string_view value = piece;
        const std::string_view name = Trim(TakePiece(value, '='));
        value = Trim(value);
        const sdp::H264Parameter* const known = KnownParameter(name);
        if (known == nullptr) {
            WriteUnknown(piece, name);
        } else if (IsFirst(*known) && FitsRecord(*known, value)) {
            WriteKnown(piece, name, value, *known);
        }
    }

private:
    bool IsFirst(const sdp::H264Parameter& known) {
        const unsigned bit = 1U << static_cast<unsigned>(&known - std::begin(sdp::kH264Parameters));
        const bool isFirst = (m_given & bit) == 0;
        m_given |= bit;
        return isFirst;
    }

    /// Nobody reads an unknown parameter. Without the repair the component may take it for a known one.
    void WriteUnknown(std::string_view piece, std::string_view name) {
        if (IsMistaken(name)) {
            m_repairs.Note(RepairId::KeywordInside);
        }
        if (!m_repairs.IsOn(RepairId::KeywordInside)) {
            m_text << piece << ";";
        }
    }

    void WriteKnown(std::string_view piece, std::string_view name, std::string_view value,
                    const sdp::H264Parameter& known) {
        const bool isClose = piece.size() == name.size() + 1 + value.size();
        const bool isRead = (name == known.name || m_repairs.Use(RepairId::LetterCase)) &&
                            (isClose || m_repairs.Use(RepairId::Blanks));
        if (!isRead) {
            m_text << piece << ";";
        } else if (known.field == nullptr) {
            m_text << known.name << "=" << value.substr(0, 4) << LevelDigits(value, m_repairs) << ";";
        } else {
            m_text << known.name << "=" << value << ";";
        }
    }

    sdp::Writer& m_text;
    Repairs& m_repairs;
    unsigned m_given = 0; ///< bit n: row n of the table was given
};

} // namespace

void WriteVideoFormat(sdp::Writer& text, const Format& format, Repairs& repairs) {
    const std::int32_t number = kOwnNumbers[format.meaning];
    text << " " << number << "\r\na=rtpmap:" << number << " " << sdp::kH264Name << "\r\n";
    if (format.parms.empty()) {
        return;
    }
    text << "a=fmtp:" << number << " ";
    VideoParameters parameters(text, repairs);
    EachParameter(format.parms, [&](std::string_view piece) { parameters.Write(piece); });
    text << "\r\n";
}

} // namespace negotiation
