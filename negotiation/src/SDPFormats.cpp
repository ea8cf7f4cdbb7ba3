// Stage: prepare, the "m=" line's formats with their rtpmap and fmtp lines, and what each means.
// Input: the lines of one section. Output: payload numbers with their meaning.
// Touches nothing but the list of repairs.
// The names of codecs are those that the component writes.
// Test: tests/negotiation/SDPFormatsTest.cpp
#include "SDPFormats.h"

#include <algorithm>

namespace negotiation {
namespace {

constexpr std::string_view kBaseline = "42";
constexpr std::string_view kDefaultProfile = "4200";

static_assert(std::size(sdp::kAudioCodecs) == kEvents);
static_assert(sdp::kAudioCodecs[kG722].codec == PAYLOAD_G722 &&
              sdp::kAudioCodecs[kG7221].codec == PAYLOAD_G7221);
static_assert(sdp::kAudioCodecs[kG711U].codec == PAYLOAD_G711U &&
              sdp::kAudioCodecs[kG729].codec == PAYLOAD_G729);

/// The codec whose number a static number is; kMeanings for every other number.
Meaning StaticMeaning(std::int16_t number) {
    for (const Meaning audio : {kG722, kG711U, kG729}) {
        if (kOwnNumbers[audio] == number) {
            return audio;
        }
    }
    return kMeanings;
}

/// "PCMU/8000" of "PCMU/8000/1": one channel is the default (RFC 4566, 6).
std::string_view WithoutOneChannel(std::string_view name) {
    const std::size_t last = name.size() < 2 ? 0 : name.size() - 2;
    return name.substr(last) == "/1" ? name.substr(0, last) : name;
}

bool IsName(std::string_view name, std::string_view wanted, Repairs& repairs) {
    return name == wanted || (EqualsNoCase(name, wanted) && repairs.Use(RepairId::LetterCase));
}

/// A name under a static number that means the number's own codec.
struct Spelling {
    std::string_view name;
    Meaning meaning;
};

constexpr Spelling kSpellings[] = {
    {"G729a/8000", kG729}, // Annex A is the same on the wire (RFC 3551, 4.5.6)
    {"G722/16000", kG722}, // the sampling rate; the clock rate is 8000 (RFC 3551, 4.5.2)
    {"G722", kG722},       // without a clock rate
    {"PCMU", kG711U},      {"G729", kG729},
};

/// The codec that a static number has by such a name; kMeanings for none.
Meaning SpelledMeaning(const Format& format) {
    const auto* const found =
        std::find_if(std::begin(kSpellings), std::end(kSpellings), [&format](const Spelling& spelling) {
            return format.number == kOwnNumbers[spelling.meaning] && EqualsNoCase(format.name, spelling.name);
        });
    return found == std::end(kSpellings) ? kMeanings : found->meaning;
}

/// RFC 5577 makes the bit rate mandatory; this side supports one.
bool HasG7221Rate(std::string_view parms, Repairs& repairs) {
    constexpr std::string_view rate = sdp::kAudioCodecs[kG7221].format.parameters;
    constexpr std::size_t equals = rate.find('=');
    while (!parms.empty()) {
        const std::string_view piece = TakePiece(parms, ';');
        std::string_view value = piece;
        if (EqualsNoCase(Trim(TakePiece(value, '=')), rate.substr(0, equals))) {
            return piece == rate || (Trim(value) == rate.substr(equals + 1) && repairs.Use(RepairId::Blanks));
        }
    }
    return false;
}

Meaning NamedMeaning(const Format& format, Repairs& repairs) {
    const std::string_view name = WithoutOneChannel(format.name);
    if (IsName(name, sdp::kH264Name, repairs)) {
        const std::string_view mode = Parameter(format.parms, sdp::kPacketizationMode);
        return mode == "1" ? kMode1 : mode.empty() || mode == "0" ? kMode0 : kMeanings;
    }
    if (IsName(name, sdp::kTelephoneEvent.name, repairs)) {
        return kEvents;
    }
    for (const Meaning audio : {kG722, kG7221, kG711U, kG729}) {
        if (IsName(name, sdp::kAudioCodecs[audio].format.name, repairs)) {
            return audio != kG7221 || HasG7221Rate(format.parms, repairs) ? audio : kMeanings;
        }
    }
    const Meaning spelled = SpelledMeaning(format);
    return spelled != kMeanings && repairs.Use(RepairId::RenamedStatic) ? spelled : kMeanings;
}

Meaning MeaningOf(const Format& format, Repairs& repairs) {
    const Meaning byNumber = StaticMeaning(format.number);
    if (format.name.empty()) {
        return byNumber;
    }
    const Meaning byName = NamedMeaning(format, repairs);
    if (byName == byNumber) {
        return byName;
    }
    if (byNumber != kMeanings) {
        return repairs.Use(RepairId::RenamedStatic) ? byName : byNumber;
    }
    const bool isStatic = byName < kEvents && sdp::kAudioCodecs[byName].isStatic;
    return !isStatic || repairs.Use(RepairId::DynamicNumber) ? byName : kMeanings;
}

/// Whether a number of a running stream may go from one meaning to another: its codec stays (RFC
/// 3264, 8.3.2), and the packetization mode of H.264 is a parameter, so the far end's new offer decides on
/// it.
bool MayBecome(Meaning before, Meaning now) {
    const auto isH264 = [](Meaning meaning) { return meaning == kMode1 || meaning == kMode0; };
    return before == now || (isH264(before) && isH264(now));
}

/// Constrained by nothing, which is what a format without profile-level-id says, too.
std::string_view ProfileOf(std::string_view parms) {
    const std::string_view id = Parameter(parms, sdp::kProfileLevelId);
    constexpr std::size_t length = 6;
    const bool isWhole =
        id.size() == length && id.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
    return isWhole ? id.substr(0, kDefaultProfile.size()) : kDefaultProfile;
}

/// Whether the value of a line follows its keyword without a blank, or may all the same. Precondition: there
/// is a value.
bool IsClose(const Line& line, std::size_t keyword, Repairs& repairs) {
    return !sdp::IsBlank(line.text[keyword]) || repairs.Use(RepairId::Blanks);
}

} // namespace

Formats::Formats(const Section& section, Lines lines, Known known, Repairs& repairs) {
    m_index.fill(-1);
    constexpr std::size_t usualFormats = 16;
    m_formats.reserve(usualFormats);
    sdp::Words words(section.formats);
    for (std::string_view token = words.Next(); !token.empty(); token = words.Next()) {
        const std::int32_t number = PayloadNumber(token);
        if (number < 0) {
            continue;
        }
        std::int32_t& index = m_index[static_cast<std::size_t>(number)];
        if (index >= 0 && repairs.Use(RepairId::RepeatedNumber)) {
            continue;
        }
        // The lines of a number that is listed twice belong to its first entry.
        if (index < 0) {
            index = static_cast<std::int32_t>(m_formats.size());
        }
        m_formats.push_back({static_cast<std::int16_t>(number), kMeanings, {}, {}, {}});
    }
    for (const Line& line : lines) {
        if (line.kind == LineKind::Rtpmap) {
            ReadRtpmap(line, repairs);
        } else if (line.kind == LineKind::Fmtp) {
            ReadFmtp(line, repairs);
        }
    }
    for (Format& format : m_formats) {
        const Meaning before =
            known.bound == nullptr ? kMeanings : (*known.bound)[static_cast<std::size_t>(format.number)];
        format.meaning = MeaningOf(format, repairs);
        if (known.isFixed && before != kMeanings && !MayBecome(before, format.meaning)) {
            format.meaning = kMeanings;
        }
        if (format.meaning == kMode1 || format.meaning == kMode0) {
            format.profile = ProfileOf(format.parms);
        }
    }
}

const Format* Formats::Find(Meaning meaning) const {
    const auto found = std::find_if(m_formats.begin(), m_formats.end(),
                                    [meaning](const Format& format) { return format.meaning == meaning; });
    return found == m_formats.end() ? nullptr : &*found;
}

Format* Formats::Of(std::string_view number) {
    const std::int32_t payload = PayloadNumber(number);
    const std::int32_t index = payload < 0 ? -1 : m_index[static_cast<std::size_t>(payload)];
    return index < 0 ? nullptr : &m_formats[static_cast<std::size_t>(index)];
}

void Formats::ReadRtpmap(const Line& line, Repairs& repairs) {
    constexpr std::size_t keyword = std::string_view("a=rtpmap:").size();
    sdp::Words words(line.value);
    Format* const format = Of(words.Next());
    if (format != nullptr && IsClose(line, keyword, repairs)) {
        const std::string_view name = words.Next();
        format->name = name.empty() ? format->name : name;
    }
}

void Formats::ReadFmtp(const Line& line, Repairs& repairs) {
    constexpr std::size_t keyword = std::string_view("a=fmtp:").size();
    sdp::Words words(line.value);
    Format* const format = Of(words.Next());
    if (format == nullptr || !IsClose(line, keyword, repairs)) {
        return;
    }
    const std::string_view parms = Trim(line.value.substr(line.value.size() - words.Left()));
    if (format->parms.empty() || !repairs.Use(RepairId::JoinedParameters)) {
        format->parms = parms;
        return;
    }
    // The joined text grows in place, so many lines of one format cost no more than their length.
    const auto isOfFormat = [format](const Joined& joined) { return joined.format == format; };
    auto joined = std::find_if(m_joined.begin(), m_joined.end(), isOfFormat);
    if (joined == m_joined.end()) {
        joined = m_joined.insert(joined, {format, std::string(format->parms)});
    }
    joined->text += ';';
    joined->text += parms;
    format->parms = joined->text;
}

std::int32_t PayloadNumber(std::string_view token) {
    const std::int32_t number = NumberOrNone(token);
    const bool isPlain = token.size() == 1 || token.substr(0, 1) != "0";
    return isPlain && number <= kMaxNumber ? number : -1;
}

std::string_view Parameter(std::string_view parms, std::string_view key) {
    while (!parms.empty()) {
        std::string_view value = TakePiece(parms, ';');
        if (EqualsNoCase(Trim(TakePiece(value, '=')), key)) {
            return Trim(value);
        }
    }
    return {};
}

VideoFormats ChooseH264(const Formats& formats, bool takesMode1) {
    VideoFormats chosen;
    int best = -1;
    for (const Format& format : formats) {
        if (format.meaning != kMode0 && (format.meaning != kMode1 || !takesMode1)) {
            continue;
        }
        const bool isBaseline = format.profile.substr(0, kBaseline.size()) == kBaseline;
        const int rank = (isBaseline ? 2 : 0) + (format.meaning == kMode1 ? 1 : 0);
        if (rank > best) {
            best = rank;
            chosen.first = &format;
        }
    }
    for (const Format& format : formats) {
        const bool isOtherMode = chosen.first != nullptr && chosen.second == nullptr &&
                                 format.meaning != chosen.first->meaning &&
                                 (format.meaning == kMode0 || (format.meaning == kMode1 && takesMode1));
        if (isOtherMode && EqualsNoCase(format.profile, chosen.first->profile)) {
            chosen.second = &format;
        }
    }
    return chosen;
}

} // namespace negotiation
