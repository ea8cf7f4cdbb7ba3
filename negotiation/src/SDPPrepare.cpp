// Stage: prepare, the repaired copy that the component reads.
// Input: the sections that are taken. Output: a description of just these.
// Appends to the text. Keys are read with their crypto lines and are not in it.
// Payload numbers are the component's own: what the far end calls them is kept in Taken.
// Test: tests/negotiation/SDPPrepareTest.cpp
#include "SDPPrepare.h"

#include "SDPAddress.h"
#include "SDPRepeat.h"

namespace negotiation {
namespace {

/// A value that cannot hold another line's keyword, which would take the line away from its row [P01].
std::string_view WithoutKeyword(std::string_view value) {
    return value.find('=') == std::string_view::npos ? value : std::string_view();
}

void WriteConnection(sdp::Writer& text, std::string_view address) {
    // Every section gets its address: one of the session would count for the next description as well [P18].
    if (!address.empty()) {
        text << "c=IN IP4 " << address << "\r\n";
    }
}

void WriteRtpmap(sdp::Writer& text, const sdp::AudioFormat& format) {
    text << "a=rtpmap:" << format.payload << " " << format.name << "\r\n";
}

void WriteAudioFormats(sdp::Writer& text, const Taken& taken) {
    const sdp::AudioFormat& codec = sdp::kAudioCodecs[taken.audio->meaning].format;
    const bool hasEvents = taken.formats->Find(kEvents) != nullptr;
    text << " " << codec.payload << (hasEvents ? " 101\r\n" : "\r\n");
    if (taken.audio->meaning == kG7221) {
        WriteRtpmap(text, codec);
        text << "a=fmtp:" << codec.payload << " " << codec.parameters << "\r\n";
    }
    if (hasEvents) {
        WriteRtpmap(text, sdp::kTelephoneEvent);
    }
}

void WriteFloor(sdp::Writer& text, Lines lines) {
    text << " *\r\na=floorctrl:" << WithoutKeyword(lines.Value(LineKind::FloorControl)) << "\r\n"
         << "a=confid:" << RepeatedValue(lines, LineKind::ConferenceId) << "\r\n"
         << "a=userid:" << RepeatedValue(lines, LineKind::UserId) << "\r\n";
}

void WriteSection(sdp::Writer& text, Lines lines, std::string_view address, Role role, const Taken& taken,
                  Repairs& repairs) {
    text << "m=" << kRoleMedia[role] << " " << taken.section->number
         << (role == kFloor ? " UDP/BFCP" : " RTP/AVP");
    if (role == kFloor) {
        WriteFloor(text, lines);
    } else if (role == kAudio) {
        WriteAudioFormats(text, taken);
    } else {
        WriteVideoFormat(text, *taken.video.first, repairs);
    }
    WriteConnection(text, address);
    if (role == kSlides) {
        text << "a=content:slides\r\n";
    }
}

/// The last direction of a block, as the component reads it; null for none.
const sdp::Direction* LastDirection(Lines lines) {
    const sdp::Direction* last = nullptr;
    for (const Line& line : lines) {
        if (line.kind != LineKind::Direction) {
            continue;
        }
        for (const sdp::Direction& direction : sdp::kDirections) {
            last = sdp::StartsWith(line.text, direction.keyword) ? &direction : last;
        }
    }
    return last;
}

} // namespace

std::string_view AddressOf(Lines lines, std::string_view otherwise) {
    const Line* const line = lines.Find(LineKind::Connection);
    if (line == nullptr) {
        return otherwise;
    }
    sdp::Words words(line->value);
    words.Next();
    words.Next();
    // A group address is followed by "/", its TTL and the number of groups (RFC 4566, 5.7).
    const std::string_view word = words.Next();
    const std::string_view address = word.substr(0, word.find('/'));
    return IsAddress(address) ? address : std::string_view();
}

std::string_view KeywordOf(Way way) {
    std::string_view keyword;
    for (const sdp::Direction& direction : sdp::kDirections) {
        if (direction.sends == way.send && direction.receives == way.receive) {
            keyword = direction.keyword;
        }
    }
    return keyword;
}

Way WayOf(const Description& description, const Section& section, Repairs& repairs) {
    const sdp::Direction* direction = LastDirection(description.Of(section));
    if (direction == nullptr) {
        const sdp::Direction* const session = LastDirection(description.Session());
        direction = session != nullptr && repairs.Use(RepairId::SessionDirection) ? session : nullptr;
    }
    return direction == nullptr ? Way{true, true} : Way{direction->sends, direction->receives};
}

void WritePrepared(sdp::Writer& text, const Description& description, const std::array<Taken, kRoles>& taken,
                   Repairs& repairs) {
    const std::string_view ofSession = AddressOf(description.Session());
    for (const Role role : {kAudio, kMain, kSlides, kFloor}) {
        if (taken[role].section != nullptr) {
            const Lines lines = description.Of(*taken[role].section);
            WriteSection(text, lines, AddressOf(lines, ofSession), role, taken[role], repairs);
        }
    }
}

} // namespace negotiation
